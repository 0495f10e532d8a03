#include "swapfile.h"
#include "textdocument.h"
#include <QDataStream>
#include <QDir>
#include <QSaveFile>
#include <QTextDocument>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {
constexpr quint32 Magic = 0x56535732;            // "VSW2"
constexpr quint32 MagicWithoutTime = 0x56535731; // "VSW1"
const auto Suffix = u".swap"_s;
const auto LockSuffix = u".lock"_s;

QString newSwapPath(const QString &directory)
{
    QDir().mkpath(directory);
    return QDir(directory).filePath(QUuid::createUuid().toString(QUuid::Id128) + Suffix);
}

void writeSwapFile(const QString &path, const QString &filename, const QDateTime &fileTime, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << Magic << filename << QDateTime::currentDateTimeUtc() << fileTime << text.toUtf8();
    file.commit();
}

/// Reads all fields before the text, which can then be read from @p stream.
bool readHead(QDataStream &stream, RecoverableText &head)
{
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 magic = 0;
    stream >> magic;
    if (magic != Magic && magic != MagicWithoutTime)
        return false;
    stream >> head.filename >> head.time;
    if (magic == Magic)
        stream >> head.fileTime;
    head.time = head.time.toLocalTime();
    return stream.status() == QDataStream::Ok && !head.filename.isEmpty();
}

bool ownerIsAlive(const QString &swapFile)
{
    QLockFile lock(swapFile + LockSuffix);
    lock.setStaleLockTime(0);
    return !lock.tryLock();
}
} // namespace

SwapFile::SwapFile(const QString &directory, TextDocument *document)
    : m_document(document), m_path(newSwapPath(directory)), m_lock(m_path + LockSuffix)
{
    m_lock.setStaleLockTime(0);
    m_writer.setMaxThreadCount(1);
    m_timer.setSingleShot(true);
    m_timer.setInterval(Delay);
    connect(&m_timer, &QTimer::timeout, this, &SwapFile::write);
    connect(document->text(), &QTextDocument::contentsChanged, this, &SwapFile::textChanged);
    connect(document, &Document::documentModified, this, [this](bool modified) {
        if (!modified)
            remove();
    });
}

SwapFile::~SwapFile()
{
    remove();
}

void SwapFile::flush()
{
    if (m_timer.isActive()) {
        m_timer.stop();
        write();
    }
    m_writer.waitForDone();
}

/// Does not restart a running timer: the copy must be written even while the user keeps typing.
void SwapFile::textChanged()
{
    if (!m_timer.isActive())
        m_timer.start();
}

void SwapFile::write()
{
    if (!m_document->modified() || (!m_lock.isLocked() && !m_lock.tryLock()))
        return;
    m_writer.start([path = m_path, filename = m_document->filename(), fileTime = m_document->lastModified(),
                    text = m_document->wholeText()->toRawText(), standIns = m_document->standIns()]() mutable {
        text.replace(QChar::ParagraphSeparator, u'\n');
        standIns.takeOutOf(text);
        writeSwapFile(path, filename, fileTime, text);
    });
}

void SwapFile::remove()
{
    m_timer.stop();
    if (!m_lock.isLocked())
        return;
    m_writer.waitForDone();
    QFile::remove(m_path);
    m_lock.unlock();
}

bool RecoverableText::isNewerOnDisk() const
{
    return fileTime.isValid() && QFileInfo(filename).lastModified() > fileTime;
}

QList<RecoverableText> recoverableTexts(const QString &directory)
{
    QList<RecoverableText> texts;
    for (const QFileInfo &info : QDir(directory).entryInfoList({u'*' + Suffix}, QDir::Files)) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QDataStream stream(&file);
        RecoverableText text{info.filePath(), {}, {}, {}};
        if (readHead(stream, text) && !ownerIsAlive(info.filePath()))
            texts.append(text);
    }
    std::ranges::sort(texts, {}, [](const RecoverableText &text) { return std::pair(text.filename, text.time); });
    return texts;
}

std::optional<QString> recoverText(const RecoverableText &text)
{
    QFile file(text.swapFile);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QDataStream stream(&file);
    RecoverableText head;
    QByteArray bytes;
    if (!readHead(stream, head))
        return std::nullopt;
    stream >> bytes;
    if (stream.status() != QDataStream::Ok)
        return std::nullopt;
    return QString::fromUtf8(bytes);
}

void discardRecoverableText(const RecoverableText &text)
{
    QFile::remove(text.swapFile);
    QFile::remove(text.swapFile + LockSuffix);
}

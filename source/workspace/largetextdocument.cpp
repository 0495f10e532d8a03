#include "largetextdocument.h"
#include "varnelassert.h"
#include <atomic>
#include <QFileInfo>
#include <QSemaphore>
#include <thread>

namespace {
constexpr int ShortPatience = 2;
constexpr int IndexPatience = 30;  ///< milliseconds that opening waits for the index, which is enough for most files
constexpr int IndexInterval = 100; ///< milliseconds
constexpr int FileInterval = 1000; ///< milliseconds
constexpr qint64 QuicklyIndexed = 50'000'000; ///< bytes
constexpr qint64 ReadSize = 262'144;          ///< bytes
constexpr int MostContinuations = 3;          ///< bytes of a character behind its first one
constexpr QByteArrayView ByteOrderMark("\xef\xbb\xbf");

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

int continuations(QByteArrayView bytes)
{
    int count = 0;
    while (count < MostContinuations && count < bytes.size() && continuesCharacter(bytes[count]))
        ++count;
    return count;
}
} // namespace

/// What the thread that counts lines shares with the document. The thread may outlive the document.
struct LargeTextDocument::IndexJob
{
    std::shared_ptr<LargeFile> file;
    std::shared_ptr<SharedIndex> index;
    qint64 size;
    std::atomic<bool> running = true;
    QSemaphore done;

    void run()
    {
        std::vector<char> buffer(static_cast<size_t>(ReadSize));
        for (qint64 at = index->index.size(); running && at < size;) {
            const qint64 length = file->read(at, buffer.data(), std::min(ReadSize, size - at));
            if (length == 0)
                break; // the file has become shorter
            const QMutexLocker lock(&index->mutex);
            index->index.append({buffer.data(), size_t(length)});
            at += length;
        }
        done.release();
    }
};

LargeTextDocument::LargeTextDocument(DocumentTemplate *docTemplate) : Document(docTemplate)
{
    m_indexTimer.setInterval(IndexInterval);
    m_fileTimer.setInterval(FileInterval);
    connect(&m_indexTimer, &QTimer::timeout, this, &LargeTextDocument::takeIndex);
    connect(&m_fileTimer, &QTimer::timeout, this, &LargeTextDocument::checkFile);
}

LargeTextDocument::~LargeTextDocument()
{
    stopIndex();
}

bool LargeTextDocument::open(const QString &filename)
{
    m_filename = filename;
    if (!load())
        return false;
    m_fileTimer.start();
    return true;
}

bool LargeTextDocument::load()
{
    const std::shared_ptr<LargeFile> file = LargeFile::open(m_filename);
    if (!file)
        return false;
    stopIndex();
    m_file = file;
    m_lastModified = file->lastModified();
    m_presentSize = file->size();
    m_change = Change::None;
    m_index = std::make_shared<SharedIndex>();
    m_map = std::make_unique<LineMap>(m_file, m_file->size(), m_index);
    startIndex();
    return true;
}

bool LargeTextDocument::create(const QString &)
{
    VARNEL_ASSERT(false);
    return false;
}

bool LargeTextDocument::save()
{
    VARNEL_ASSERT(false);
    return false;
}

bool LargeTextDocument::saveAs(const QString &)
{
    VARNEL_ASSERT(false);
    return false;
}

QString LargeTextDocument::title()
{
    return QFileInfo(m_filename).fileName();
}

// Index -------------------------------------------------------------------

void LargeTextDocument::startIndex()
{
    m_job = std::make_shared<IndexJob>();
    m_job->file = m_file;
    m_job->index = m_index;
    m_job->size = m_map->size();
    std::thread([job = m_job] { job->run(); }).detach();
    m_indexTimer.start();
    const bool isQuick = m_job->size - m_map->exactBytes() < QuicklyIndexed;
    if (m_job->done.tryAcquire(1, isQuick ? IndexPatience : ShortPatience))
        m_job->done.release();
    takeIndex(); // which may be a part of it
}

void LargeTextDocument::stopIndex()
{
    m_indexTimer.stop();
    if (m_job)
        m_job->running = false;
    m_job.reset();
}

void LargeTextDocument::takeIndex()
{
    Q_EMIT renumbering();
    const bool done = m_job && m_job->done.available() > 0;
    if (done)
        stopIndex();
    m_map->takeIndex();
    if (done && !m_map->isExact())
        m_map->setSize(m_map->exactBytes()); // all that is left of the file
    Q_EMIT renumbered();
}

int LargeTextDocument::indexedPercent() const
{
    if (isIndexed())
        return 100;
    return int(m_map->exactBytes() * 100 / std::max<qint64>(1, m_map->size()));
}

// Lines -------------------------------------------------------------------

qint64 LargeTextDocument::size() const
{
    return m_map ? m_map->size() : 0;
}

int LargeTextDocument::lineCount()
{
    return m_map ? m_map->lineCount() : 0;
}

QString LargeTextDocument::line(int index)
{
    return storedLine(index).text;
}

/// A character that reaches over the border of two pieces of a line belongs to the first one.
LargeTextDocument::StoredLine LargeTextDocument::storedLine(int index)
{
    if (index < 0 || index >= lineCount())
        return {};
    StoredLine stored;
    stored.start = m_map->startOf(index);
    const bool isFirstPiece = stored.start == 0 || m_map->bytesAt(stored.start - 1, 1) == "\n";
    const QByteArray bytes = m_map->bytesAt(stored.start, LongestLine + MostContinuations);
    const QByteArrayView view(bytes);
    qint64 length = lineLength({bytes.data(), size_t(bytes.size())}, 0);
    if (length == LongestLine && view[length - 1] != '\n')
        length += continuations(view.sliced(length));
    qsizetype begun = isFirstPiece ? 0 : std::min<qint64>(length, continuations(view));
    if (stored.start == 0 && view.startsWith(ByteOrderMark))
        begun = ByteOrderMark.size();
    const QByteArrayView text = view.sliced(begun, length - begun);
    stored.start += begun;
    stored.isUtf8 = text.isValidUtf8();
    stored.text = stored.isUtf8 ? QString::fromUtf8(text) : QString::fromLatin1(text);
    stored.hasReturn = stored.text.endsWith(QStringLiteral("\r\n"));
    if (stored.hasReturn)
        stored.text.remove(stored.text.size() - 2, 1);
    return stored;
}

qint64 LargeTextDocument::offsetOf(const Place &place)
{
    const StoredLine stored = storedLine(place.line);
    const qsizetype column = std::clamp<qsizetype>(place.column, 0, stored.text.size());
    const QStringView before = QStringView(stored.text).first(column);
    const bool isBehindReturn = stored.hasReturn && column == stored.text.size();
    return stored.start + (stored.isUtf8 ? before.toUtf8().size() : before.size()) + (isBehindReturn ? 1 : 0);
}

LargeTextDocument::Place LargeTextDocument::placeOf(qint64 offset)
{
    if (lineCount() == 0)
        return {};
    Place place{m_map->lineAt(offset), 0};
    const StoredLine stored = storedLine(place.line);
    const QByteArray before = m_map->bytesAt(stored.start, std::max<qint64>(0, offset - stored.start));
    place.column = int(stored.isUtf8 ? QString::fromUtf8(before).size() : before.size());
    if (stored.hasReturn && place.column >= stored.text.size())
        --place.column; // both characters of the line end have the same column
    return place;
}

// Changes of the file -----------------------------------------------------

bool LargeTextDocument::reload()
{
    if (!load())
        return false;
    Q_EMIT reloaded();
    Q_EMIT fileChanged();
    return true;
}

void LargeTextDocument::setFollowing(bool following)
{
    if (following == m_following)
        return;
    m_following = following;
    Q_EMIT followingChanged(following);
    checkFile();
}

void LargeTextDocument::checkFile()
{
    if (!m_file)
        return;
    Change change = m_file->change();
    const qint64 present = change == Change::Gone ? 0 : m_file->presentSize();
    if (change == Change::Grown || change == Change::Shrunk) // since it was opened; what counts is what is shown
        change = present > size() ? Change::Grown : present < size() ? Change::Shrunk : Change::None;
    if (m_following && change == Change::Grown && !m_job) {
        m_presentSize = present;
        extend();
        change = Change::None;
    } else if (m_following && change != Change::None && change != Change::Grown && reload()) {
        return;
    }
    if (change == m_change && present == m_presentSize)
        return;
    m_change = change;
    m_presentSize = present;
    Q_EMIT fileChanged();
}

/// Only the new part of the file is counted. Numbers stay exact if it is short.
void LargeTextDocument::extend()
{
    Q_EMIT renumbering();
    m_map->setSize(m_presentSize);
    Q_EMIT renumbered();
    startIndex();
}

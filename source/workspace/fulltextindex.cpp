#include "fulltextindex.h"
#include "htmlwords.h"
#include "wholefile.h"
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 BlockLength = 65536;
constexpr qint64 HeadLength = 1'000'000; // where a document's title must be

/// Opens a document. Only regular files: a pipe would block, and a device may never end.
bool openDocument(QFile &file)
{
    if (QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly))
        return true;
    qWarning("FullTextIndex: cannot open file %s", qPrintable(file.fileName()));
    return false;
}

/// The shortest text between @p before and @p after, which are matched in any case.
std::optional<QString> textBetween(const QString &text, const QString &before, const QString &after)
{
    qsizetype start = text.indexOf(before, 0, Qt::CaseInsensitive);
    if (start < 0)
        return {};
    start += before.size();
    const qsizetype end = text.indexOf(after, start, Qt::CaseInsensitive);
    return end < 0 ? std::nullopt : std::optional(text.mid(start, end - start));
}
} // namespace

FullTextIndex::FullTextIndex(QObject *parent) : QObject(parent) {}

/// False if this object was deleted meanwhile.
bool FullTextIndex::letEventsRun()
{
    const QPointer<FullTextIndex> self(this);
    QApplication::processEvents();
    if (self)
        m_slice.start();
    return self;
}

/// Handles events when it is time to; false if this object was deleted meanwhile.
bool FullTextIndex::sliceEnded()
{
    return m_slice.elapsed() < SliceTime || letEventsRun();
}

bool FullTextIndex::listFiles(const QString &directory, QStringList *files)
{
    QStringList waiting{directory};
    QSet<QString> visited; // links may lead back
    while (!waiting.isEmpty()) {
        const QDir dir(waiting.takeLast());
        if (visited.contains(dir.canonicalPath()))
            continue;
        visited.insert(dir.canonicalPath());
        const QDir::Filters any = QDir::AllEntries | QDir::NoDotAndDotDot;
        for (const QString &name : dir.entryList({u"*.html"_s}, any | QDir::CaseSensitive))
            files->append(dir.filePath(name));
        const QStringList below = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (auto name = below.crbegin(); name != below.crend(); ++name)
            waiting.append(dir.filePath(*name));
        if (!sliceEnded())
            return false;
    }
    return true;
}

bool FullTextIndex::build(const QString &directory)
{
    m_slice.start();
    QStringList files;
    if (!listFiles(directory, &files))
        return false;
    const QPointer<FullTextIndex> self(this);
    WordIndex index(directory, files);
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (const auto percent = int(i * 100 / files.size()); percent % 5 == 0) {
            Q_EMIT indexing(percent, files[i]);
            if (!self || !letEventsRun())
                return false;
        }
        if (!indexFile(files[i], i, &index))
            return false;
    }
    m_index = std::move(index);
    return true;
}

bool FullTextIndex::indexFile(const QString &path, qsizetype docNumber, WordIndex *index)
{
    QFile file(path);
    if (!openDocument(file))
        return true;
    HtmlWords words([&](QByteArrayView word) { index->insert(word); });
    for (QByteArray block = file.read(BlockLength); !block.isEmpty();) {
        const QByteArray next = file.read(BlockLength);
        if (next.isEmpty())
            block.chop(1); // the last byte of a document is never a part of a word
        words.read(block);
        block = next;
        if (!sliceEnded())
            return false;
    }
    words.finish();
    index->endDocument(docNumber);
    return true;
}

bool FullTextIndex::save(const QString &filename) const
{
    return writeFileSafely(filename, m_index.toBytes());
}

bool FullTextIndex::load(const QString &filename)
{
    m_slice.start();
    const QByteArray bytes = readFile(filename).value_or(QByteArray());
    std::optional<WordIndex> index = WordIndex::fromBytes(bytes, [this] { return sliceEnded(); });
    QStringList present;
    if (!index || !listFiles(index->docPath(), &present))
        return false;
    QStringList indexed = index->docList();
    indexed.sort();
    present.sort();
    if (indexed != present)
        return false;
    m_index = std::move(*index);
    return true;
}

void FullTextIndex::getDocumentInfo(const QString &path, QString *title, QString *description)
{
    if (title)
        *title = path;
    if (description)
        description->clear();
    QFile file(path);
    if (!openDocument(file))
        return;
    const QString text = QString::fromUtf8(file.read(HeadLength));
    if (const auto found = textBetween(text, u"<title>"_s, u"</title>"_s); found && title)
        *title = *found;
    if (const auto found = textBetween(text, u"<meta name=\"description\" content=\""_s, u"\">"_s);
        found && description)
        *description = *found;
}

QString FullTextIndex::searchResultsPage(const QString &query) const
{
    const QList<WordIndex::Doc> found = m_index.find(query);
    QString page = tr("<html><head><title>Search Results</title></head><body>")
                   + tr("<h2>Search results for \"%1\":</h2>").arg(query.toHtmlEscaped());
    for (const WordIndex::Doc doc : found.mid(0, MostResults)) {
        const QString path = m_index.path(doc);
        QString title;
        QString description;
        getDocumentInfo(path, &title, &description);
        page += tr("<p><a href='%1'>%2</a><br>%3</p>").arg(path, title, description);
    }
    page += tr("<p>%1 matches.</p>").arg(found.size());
    if (found.size() > MostResults)
        page += tr("<p>Only the first 20 matches are displayed. Try refining your search terms.</p>");
    return page + tr("</body></html>");
}

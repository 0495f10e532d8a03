#include "filesearcher.h"
#include "searchpattern.h"
#include "textpieces.h"
#include <QCoreApplication>
#include <QDir>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype PieceSize = 16 << 20;     ///< bytes
constexpr qsizetype LineLength = 100;         ///< characters reported of a line
constexpr qsizetype LastLineLength = 100'000; ///< of the last line without a line end: as much as a window can show

/// "*.*" means every file, with or without a dot.
QStringList nameFilters(const QString &mask)
{
    QStringList filters = QDir::nameFiltersFromString(mask);
    filters.removeAll(QString());
    for (QString &filter : filters)
        filter = filter == u"*.*"_s ? u"*"_s : filter;
    return filters;
}

/// The reported text of the line from @p start to @p end, which is -1 if no line end follows.
QString lineText(const TextPiece &piece, qsizetype start, qsizetype end)
{
    const QString &text = piece.text;
    if (end >= 0)
        return text.mid(start, std::min(end - start, LineLength));
    const bool isLast = piece.isEnd && !text.contains(QChar(u'\0')); // a binary file has no lines
    return text.mid(start, isLast ? LastLineLength : LineLength);
}
} // namespace

/// The matches of consecutive lines.
class FileSearcher::FoundEvent : public QEvent
{
public:
    FoundEvent() : QEvent(MatchEvent) {}
    void add(FoundLine line)
    {
        m_length += line.text.size();
        m_lines.append(std::move(line));
    }
    [[nodiscard]] bool isFull() const { return m_lines.size() >= 100 || m_length >= LastLineLength; }
    [[nodiscard]] const QList<FoundLine> &lines() const { return m_lines; }

private:
    QList<FoundLine> m_lines;
    qsizetype m_length = 0;
};

FileSearcher::FileSearcher(QObject *parent) : QObject(parent) {}

FileSearcher::~FileSearcher()
{
    stop();
}

void FileSearcher::start(const QString &text, const QString &mask, const QString &folder, bool caseSensitive,
                         bool wholeWord, bool recursive, bool regExp)
{
    stop();
    m_text = wholeWord ? u"\\b"_s + text + u"\\b"_s : text;
    m_mask = mask;
    m_folder = folder;
    m_caseSensitive = caseSensitive;
    m_recursive = recursive;
    m_regExp = regExp || wholeWord;
    m_running = true;
    m_thread.reset(QThread::create([this] { run(); }));
    m_thread->start();
}

void FileSearcher::stop()
{
    m_running = false;
    if (m_thread)
        m_thread->wait();
}

bool FileSearcher::isRunning() const
{
    return m_thread && m_thread->isRunning();
}

// The worker --------------------------------------------------------------

void FileSearcher::run()
{
    m_pattern = std::make_unique<SearchPattern>(m_text, m_caseSensitive, m_regExp);
    m_visited.clear();
    if (m_pattern->isValid())
        searchFolder(m_folder);
    postFinished();
}

void FileSearcher::searchFolder(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (m_visited.contains(canonical))
        return;
    m_visited.insert(canonical);
    QDir directory(path);
    directory.setSorting(QDir::DirsFirst);
    for (const QString &name : directory.entryList(nameFilters(m_mask), QDir::Files)) {
        if (!m_running)
            return;
        searchFile(directory.filePath(name));
    }
    if (!m_recursive)
        return;
    for (const QString &name : directory.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!m_running)
            return;
        searchFolder(directory.filePath(name));
    }
}

void FileSearcher::searchFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    TextPieces pieces(file, PieceSize);
    int firstLine = 1;
    while (const std::optional<TextPiece> piece = pieces.next(m_running)) {
        searchPiece(path, *piece, firstLine);
        if (!piece->isEnd)
            firstLine += int(piece->text.count(u'\n'));
    }
}

void FileSearcher::searchPiece(const QString &path, const TextPiece &piece, int firstLine)
{
    const QString &text = piece.text;
    int line = firstLine;
    qsizetype lastLineStart = 0;
    for (qsizetype pos = m_pattern->find(piece, 0, m_running); pos >= 0;) {
        if (pos == text.size() && !piece.isEnd)
            return; // the line belongs to the next piece
        const qsizetype lineStart = pos == 0 ? 0 : text.lastIndexOf(u'\n', pos - 1) + 1;
        line += int(QStringView(text).sliced(lastLineStart, lineStart - lastLineStart).count(u'\n'));
        lastLineStart = lineStart;
        const qsizetype lineEnd = text.indexOf(u'\n', pos);
        postMatch({path, line, lineText(piece, lineStart, lineEnd)});
        if (lineEnd < 0)
            return;
        pos = m_pattern->find(piece, lineEnd + 1, m_running); // one result for each line
    }
}

void FileSearcher::postMatch(FoundLine line)
{
    const QMutexLocker locker(&m_mutex);
    if (!m_open || m_open->isFull()) {
        auto event = std::make_unique<FoundEvent>();
        m_open = event.get();
        m_waiting.push_back(std::move(event));
    }
    m_open->add(std::move(line));
    postNext();
}

void FileSearcher::postFinished()
{
    const QMutexLocker locker(&m_mutex);
    m_open = nullptr;
    m_waiting.push_back(std::make_unique<QEvent>(FinishedEvent));
    postNext();
}

/// Called with the mutex locked.
void FileSearcher::postNext()
{
    if (m_underWay || m_waiting.empty())
        return;
    std::unique_ptr<QEvent> event = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (event.get() == m_open)
        m_open = nullptr;
    m_underWay = true;
    QCoreApplication::postEvent(this, event.release());
}

// User-interface thread ---------------------------------------------------

bool FileSearcher::event(QEvent *event)
{
    if (event->type() == MatchEvent) {
        for (const FoundLine &found : static_cast<FoundEvent *>(event)->lines())
            Q_EMIT matchFound(found.filename, found.line, found.text);
    } else if (event->type() == FinishedEvent) {
        Q_EMIT finished();
    } else {
        return QObject::event(event);
    }
    const QMutexLocker locker(&m_mutex);
    m_underWay = false;
    postNext();
    return true;
}

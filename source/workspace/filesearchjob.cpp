#include "filesearchjob.h"
#include "filetextsearch.h"
#include "folderwalk.h"
#include "listedfile.h"
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <thread>

using namespace Qt::StringLiterals;

namespace {
constexpr size_t MostTasks = 256; ///< each may keep a folder open
constexpr qsizetype MostLinesOfEvent = 100;
constexpr qsizetype LongestEvent = 100'000; ///< characters
constexpr qsizetype LinesTogether = 64;     ///< handed over at once after the first line of a file

QString remark(FileTextSearch::Result result, const QString &file)
{
    const QString path = QDir::toNativeSeparators(file);
    return (result == FileTextSearch::Result::TooManySteps
                ? QObject::tr("%1 was not searched whole: the expression needs too many steps.")
                : QObject::tr("%1 was not searched whole: it could not be read."))
        .arg(path);
}
} // namespace

/// A file to be searched.
struct FileSearchJob::Task
{
    ListedFile file;
    QList<FoundLine> lines; ///< found and not reported yet
    bool done = false;
};

FileSearchJob::FileSearchJob(FileSearch search, QObject *receiver) : m_search(std::move(search)), m_receiver(receiver)
{
    for (auto it = m_search.editedTexts.cbegin(); it != m_search.editedTexts.cend(); ++it)
        m_editedNames.insert(QFileInfo(it.key()).fileName());
}

void FileSearchJob::start()
{
    const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
    for (unsigned i = 0; i < threads; ++i)
        std::thread([job = shared_from_this()] { job->searchFiles(); }).detach();
    std::thread([job = shared_from_this()] { job->walk(); }).detach();
}

void FileSearchJob::stop()
{
    m_running = false;
    const std::lock_guard lock(m_mutex);
    m_receiver = nullptr;
    m_found.clear();
    m_added.notify_all();
    m_ended.notify_all();
}

// The thread that lists the files -----------------------------------------

void FileSearchJob::walk()
{
    const QString error = FileTextSearch(m_search).error();
    if (!error.isEmpty())
        report({{}, 0, QObject::tr("The expression is not valid: %1").arg(error)});
    else if (m_search.files)
        for (const QString &path : *m_search.files)
            add(ListedFile(path));
    else if (!QFileInfo(m_search.folder).isDir())
        report({{}, 0, QObject::tr("The folder '%1' does not exist.").arg(QDir::toNativeSeparators(m_search.folder))});
    else
        walkFolders();

    std::unique_lock lock(m_mutex);
    m_allAdded = true;
    m_added.notify_all();
    waitForTasks(lock, 0);
    m_finished = true;
    postNext();
}

void FileSearchJob::walkFolders()
{
    FolderWalk walk(m_search.mask, m_search.recursive);
    walk.forEach(m_search.folder, m_running, [this](ListedFile file) { add(std::move(file)); });
    m_filesSkipped = walk.skipped();
    m_unreadable += walk.unreadableFolders();
}

void FileSearchJob::add(ListedFile file)
{
    std::unique_lock lock(m_mutex);
    if (m_tasks.size() == MostTasks)
        waitForTasks(lock, MostTasks / 2);
    m_tasks.push_back(std::make_shared<Task>(Task{std::move(file), {}, false}));
    m_added.notify_one();
}

/// Waits until at most @p most files are left.
void FileSearchJob::waitForTasks(std::unique_lock<std::mutex> &lock, size_t most)
{
    m_awaited = most;
    m_ended.wait(lock, [this, most] { return m_tasks.size() <= most || !m_running; });
}

/// Called with the mutex locked. Only the first file's lines may be reported before it was searched whole.
void FileSearchJob::drain()
{
    while (!m_tasks.empty()) {
        const std::shared_ptr<Task> first = m_tasks.front();
        for (FoundLine &line : first->lines) {
            if (m_reported == MostLines || !m_running)
                break;
            ++m_reported;
            m_found.push_back(std::move(line));
            if (m_reported == MostLines) {
                m_found.push_back({{}, 0, QObject::tr("The search ended after 100,000 lines.")});
                m_running = false;
                m_added.notify_all();
            }
        }
        first->lines.clear();
        if (!first->done)
            break;
        m_tasks.pop_front();
        --m_started;
    }
    postNext();
    if (m_tasks.size() <= m_awaited || !m_running)
        m_ended.notify_one();
}

void FileSearchJob::report(FoundLine line)
{
    const std::lock_guard lock(m_mutex);
    m_found.push_back(std::move(line));
    postNext();
}

// The threads that search -------------------------------------------------

void FileSearchJob::searchFiles()
{
    FileTextSearch engine(m_search);
    std::unique_lock lock(m_mutex);
    while (m_running) {
        if (m_started == m_tasks.size()) {
            if (m_allAdded)
                return;
            m_added.wait(lock);
            continue;
        }
        const std::shared_ptr<Task> task = m_tasks[m_started++];
        lock.unlock();
        search(engine, task);
        lock.lock();
        task->done = true;
        if (task == m_tasks.front())
            drain();
    }
}

void FileSearchJob::search(FileTextSearch &engine, const std::shared_ptr<Task> &task)
{
    QList<FoundLine> lines;
    bool isFirst = true;
    const auto receive = [&](int line, const QString &text) {
        lines.append({task->file.path(), line, text});
        if (std::exchange(isFirst, false) || lines.size() >= LinesTogether)
            flush(task, lines);
        return m_running.load();
    };
    const QString *edited = editedText(task->file);
    const FileTextSearch::Result result =
        edited ? engine.searchText(*edited, m_running, receive) : engine.search(task->file, m_running, receive);
    if (result == FileTextSearch::Result::NotOpened)
        ++m_unreadable;
    else if (result != FileTextSearch::Result::Whole)
        lines.append({{}, 0, remark(result, task->file.path())});
    flush(task, lines);
    ++m_filesSearched;
}

/// Null if the file is to be read. The canonical path of a file is only asked for if an edited one has its name.
const QString *FileSearchJob::editedText(const ListedFile &file) const
{
    if (m_search.editedTexts.isEmpty())
        return nullptr;
    const QFileInfo info(file.path());
    auto edited = m_search.editedTexts.constFind(info.filePath());
    if (edited == m_search.editedTexts.cend() && m_editedNames.contains(info.fileName()))
        edited = m_search.editedTexts.constFind(info.canonicalFilePath());
    return edited == m_search.editedTexts.cend() ? nullptr : &*edited;
}

void FileSearchJob::flush(const std::shared_ptr<Task> &task, QList<FoundLine> &lines)
{
    if (lines.isEmpty())
        return;
    const std::lock_guard lock(m_mutex);
    task->lines += std::exchange(lines, {});
    if (task == m_tasks.front())
        drain();
}

// Events ------------------------------------------------------------------

/// Called with the mutex locked.
void FileSearchJob::postNext()
{
    if (m_underWay || !m_receiver)
        return;
    std::unique_ptr<Event> event;
    if (!m_found.empty()) {
        event = std::make_unique<Event>(MatchEvent, shared_from_this());
        qsizetype length = 0;
        while (!m_found.empty() && event->lines.size() < MostLinesOfEvent && length < LongestEvent) {
            length += m_found.front().text.size();
            event->lines.append(std::move(m_found.front()));
            m_found.pop_front();
        }
    } else if (m_finished) { // the last event: delivered() is not called for it
        event = std::make_unique<Event>(FinishedEvent, shared_from_this());
    } else {
        return;
    }
    m_underWay = true;
    QCoreApplication::postEvent(m_receiver, event.release());
}

void FileSearchJob::delivered()
{
    const std::lock_guard lock(m_mutex);
    m_underWay = false;
    postNext();
}

#pragma once
#include "filesearch.h"
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <QEvent>
#include <QSet>
class FileTextSearch;
class ListedFile;
class QObject;

/// A line that a search reports; line 0 is a remark on the search itself.
struct FoundLine
{
    QString file;
    int line = 0;
    QString text;
};

/// One search in files, in threads of its own: one walks through the folders, the others search files and report the
/// results in the order of the files. The job lives until its last thread has ended, which may be long after its
/// receiver was deleted: a read of a file may block.
///
/// The results are posted to the receiver as events, one at a time: what is found while one is pending comes with the
/// next one. Therefore many matches do not block the window, and the threads never wait for it.
class FileSearchJob : public std::enable_shared_from_this<FileSearchJob>
{
public:
    static constexpr auto MatchEvent = QEvent::Type(1000);
    static constexpr auto FinishedEvent = QEvent::Type(1001);
    static constexpr int MostLines = 100'000; ///< the search ends with them

    class Event : public QEvent
    {
    public:
        Event(Type type, std::shared_ptr<const FileSearchJob> sender) : QEvent(type), job(std::move(sender)) {}
        const std::shared_ptr<const FileSearchJob> job; ///< kept, so that no other job gets its address
        QList<FoundLine> lines;                         ///< of a MatchEvent
    };

    FileSearchJob(FileSearch search, QObject *receiver);

    void start();
    /// No event is posted from now on. Does not wait for the threads.
    void stop();
    /// To be called when the receiver has handled a MatchEvent.
    void delivered();
    [[nodiscard]] bool isFinished() const { return m_finished; } ///< Nothing more will be found.
    [[nodiscard]] int filesSearched() const { return m_filesSearched; }
    [[nodiscard]] int filesSkipped() const { return m_filesSkipped; }
    [[nodiscard]] int unreadable() const { return m_unreadable; } ///< files and folders that could not be opened

private:
    struct Task;

    void walk();
    void walkFolders();
    void add(ListedFile file);
    void searchFiles();
    void search(FileTextSearch &engine, const std::shared_ptr<Task> &task);
    [[nodiscard]] const QString *editedText(const ListedFile &file) const;
    void flush(const std::shared_ptr<Task> &task, QList<FoundLine> &lines);
    void drain();
    void report(FoundLine line);
    void postNext();
    void waitForTasks(std::unique_lock<std::mutex> &lock, size_t most);

    const FileSearch m_search;
    QSet<QString> m_editedNames; ///< of the files with unsaved changes
    std::atomic<bool> m_running = true;
    std::atomic<bool> m_finished = false;
    std::atomic<int> m_filesSearched = 0;
    std::atomic<int> m_filesSkipped = 0;
    std::atomic<int> m_unreadable = 0;

    std::mutex m_mutex;              ///< protects the members below
    std::condition_variable m_added; ///< a task, or the last one, or the search has ended
    std::condition_variable m_ended; ///< enough tasks are done, or the search has ended
    QObject *m_receiver;
    std::deque<std::shared_ptr<Task>> m_tasks; ///< in the order in which their lines are reported
    size_t m_started = 0;                      ///< how many of them are searched or were
    size_t m_awaited = 0;                      ///< the walk waits until there are no more tasks than these
    bool m_allAdded = false;
    std::deque<FoundLine> m_found; ///< to be posted
    int m_reported = 0;
    bool m_underWay = false; ///< an event is posted and not handled yet
};

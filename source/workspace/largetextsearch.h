#pragma once
#include "bytesearch.h"
#include <atomic>
#include <memory>
#include <QObject>
#include <QTimer>
class LargeFile;

/// A search in a large file on a thread of its own. It finds the nearest match first, continuing at the other end
/// of the file, and then counts all of them. After five seconds a search waits until it is resumed.
///
/// The owner never waits for the thread, which a slow disk may block: the thread of a cancelled search ends by itself.
class LargeTextSearch : public QObject
{
    Q_OBJECT
public:
    static constexpr int TimeLimit = 5000; ///< milliseconds

    explicit LargeTextSearch(QObject *parent = nullptr);
    ~LargeTextSearch() override; ///< cancels the search

    void setTimeLimit(int milliseconds) { m_timeLimit = milliseconds; }
    /// Ends the present search and looks for the first match that begins at @p from or behind it, or if not @p forward
    /// for the last one before it.
    void start(const std::shared_ptr<const LargeFile> &file, qint64 size, const BytePattern &pattern, qint64 from,
               bool forward);
    void goOn(); ///< Searches without a limit from where the search is waiting.
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_job != nullptr; }

Q_SIGNALS:
    void progress(int percent);
    void waiting(int percent); ///< the limit has passed
    /// @p wrapped if the search was continued at the other end of the file.
    void found(qint64 offset, qint64 length, bool wrapped);
    void notFound();
    /// @p before is how many of the matches lie before the one that was found. Not final while the count still goes on.
    void counted(qint64 matches, qint64 before, bool final);

private:
    struct Job;
    void poll();

    int m_timeLimit = TimeLimit;
    std::shared_ptr<Job> m_job; ///< null while nothing runs
    bool m_reported = false;    ///< whether a match was found has been reported
    bool m_waitReported = false;
    QTimer m_timer;
};

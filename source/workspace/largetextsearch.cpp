#include "largetextsearch.h"
#include "largefile.h"
#include "largetextscan.h"
#include <condition_variable>
#include <mutex>
#include <QElapsedTimer>
#include <thread>

namespace {
constexpr int PollInterval = 30; ///< milliseconds
}

/// What the thread and its owner share.
struct LargeTextSearch::Job
{
    enum class Phase { Finding, Waiting, Counting, Done };

    std::shared_ptr<const LargeFile> file;
    qint64 size;
    BytePattern pattern;
    qint64 from;
    bool forward;
    int timeLimit;

    std::atomic<bool> running = true;
    std::atomic<Phase> phase = Phase::Finding;
    std::atomic<qint64> done = 0; ///< bytes
    std::atomic<qint64> matches = 0;
    std::atomic<qint64> before = 0;
    std::optional<ByteMatch> match; ///< written before the phase becomes Counting or Done
    bool wrapped = false;           ///< as match

    std::mutex mutex;
    std::condition_variable wakeUp;
    bool unlimited = false; ///< guarded by the mutex
    QElapsedTimer time;

    void run();
    void find();
    void count();
    bool goOn();
    /// @p before is how many bytes have been searched already.
    std::optional<ByteMatch> findBetween(const LargeTextScan &scan, qint64 start, qint64 end, qint64 before);
};

void LargeTextSearch::Job::run()
{
    time.start();
    find();
    if (match) {
        phase = Phase::Counting;
        count();
    }
    phase = Phase::Done;
}

/// Whether to read another block. Waits here when the time is over.
bool LargeTextSearch::Job::goOn()
{
    if (!running)
        return false;
    std::unique_lock lock(mutex);
    if (!unlimited && time.elapsed() >= timeLimit) {
        phase = Phase::Waiting;
        wakeUp.wait(lock, [this] { return unlimited || !running; });
        phase = Phase::Finding;
    }
    return running;
}

std::optional<ByteMatch> LargeTextSearch::Job::findBetween(const LargeTextScan &scan, qint64 start, qint64 end,
                                                           qint64 before)
{
    const auto step = [&](qint64 offset) {
        done = before + (forward ? offset - start : end - offset);
        return goOn();
    };
    return forward ? scan.next(start, end, step) : scan.previous(start, end, step);
}

void LargeTextSearch::Job::find()
{
    const LargeTextScan scan(file, size, pattern);
    match = forward ? findBetween(scan, from, size, 0) : findBetween(scan, 0, from, 0);
    if (match)
        return;
    wrapped = true;
    match = forward ? findBetween(scan, 0, from, size - from) : findBetween(scan, from, size, from);
}

void LargeTextSearch::Job::count()
{
    const LargeTextScan scan(file, size, pattern);
    const auto step = [this](qint64 offset) {
        done = offset;
        return running.load();
    };
    scan.forEach(step, [this](const ByteMatch &counted) {
        ++matches;
        if (counted.offset < match->offset)
            ++before;
    });
}

LargeTextSearch::LargeTextSearch(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(PollInterval);
    connect(&m_timer, &QTimer::timeout, this, &LargeTextSearch::poll);
}

LargeTextSearch::~LargeTextSearch()
{
    cancel();
}

void LargeTextSearch::start(const std::shared_ptr<const LargeFile> &file, qint64 size, const BytePattern &pattern,
                            qint64 from, bool forward)
{
    cancel();
    m_job = std::make_shared<Job>();
    m_job->file = file;
    m_job->size = size;
    m_job->pattern = pattern;
    m_job->from = std::clamp<qint64>(from, 0, size);
    m_job->forward = forward;
    m_job->timeLimit = m_timeLimit;
    m_reported = m_waitReported = false;
    std::thread([job = m_job] { job->run(); }).detach();
    m_timer.start();
}

void LargeTextSearch::goOn()
{
    if (!m_job)
        return;
    {
        const std::lock_guard lock(m_job->mutex);
        m_job->unlimited = true;
    }
    m_job->wakeUp.notify_all();
}

void LargeTextSearch::cancel()
{
    m_timer.stop();
    if (!m_job)
        return;
    {
        const std::lock_guard lock(m_job->mutex);
        m_job->running = false;
    }
    m_job->wakeUp.notify_all();
    m_job.reset();
}

/// Receivers may start another search.
void LargeTextSearch::poll()
{
    const std::shared_ptr<Job> job = m_job;
    const Job::Phase phase = job->phase;
    const int percent = job->size ? int(std::min<qint64>(100, job->done * 100 / job->size)) : 100;
    if (phase == Job::Phase::Finding || phase == Job::Phase::Waiting) {
        const bool waits = phase == Job::Phase::Waiting && !m_waitReported;
        m_waitReported = m_waitReported || waits;
        if (waits)
            Q_EMIT waiting(percent);
        else
            Q_EMIT progress(percent);
        return;
    }
    const bool isDone = phase == Job::Phase::Done;
    if (isDone) {
        m_timer.stop();
        m_job.reset();
    }
    if (!m_reported) {
        m_reported = true;
        if (job->match)
            Q_EMIT found(job->match->offset, job->match->length, job->wrapped);
        else
            Q_EMIT notFound();
    }
    if (!job->match || (m_job != job && !isDone) || (isDone && m_job))
        return;
    Q_EMIT progress(percent);
    Q_EMIT counted(job->matches, job->before, isDone);
}

#include "filesearcher.h"
#include "filesearchjob.h"
#include <QPointer>

FileSearcher::FileSearcher(QObject *parent) : QObject(parent) {}

FileSearcher::~FileSearcher()
{
    stop();
}

void FileSearcher::start(const QString &text, const QString &mask, const QString &folder, bool caseSensitive,
                         bool wholeWord, bool recursive, bool regExp)
{
    start({.text = text,
           .caseSensitive = caseSensitive,
           .wholeWord = wholeWord,
           .regExp = regExp,
           .folder = folder,
           .mask = mask,
           .recursive = recursive});
}

void FileSearcher::start(const FileSearch &search)
{
    stop();
    m_job = std::make_shared<FileSearchJob>(search, this);
    m_job->start();
}

void FileSearcher::stop()
{
    if (m_job)
        m_job->stop();
    m_job.reset();
}

bool FileSearcher::isRunning() const
{
    return m_job && !m_job->isFinished();
}

int FileSearcher::filesSearched() const
{
    return m_job ? m_job->filesSearched() : 0;
}

int FileSearcher::filesSkipped() const
{
    return m_job ? m_job->filesSkipped() : 0;
}

int FileSearcher::unreadable() const
{
    return m_job ? m_job->unreadable() : 0;
}

bool FileSearcher::event(QEvent *event)
{
    if (event->type() != FileSearchJob::MatchEvent && event->type() != FileSearchJob::FinishedEvent)
        return QObject::event(event);
    const std::shared_ptr<FileSearchJob> job = m_job; // a receiver may stop the search
    const auto *found = static_cast<const FileSearchJob::Event *>(event);
    if (!job || found->job != job)
        return true; // of a search that was stopped
    const QPointer<FileSearcher> self(this);
    for (const FoundLine &line : found->lines) {
        if (line.line > 0)
            Q_EMIT matchFound(line.file, line.line, line.text);
        else
            Q_EMIT remark(line.text);
        if (!self || m_job != job)
            return true;
    }
    if (event->type() == FileSearchJob::FinishedEvent)
        Q_EMIT finished();
    else
        job->delivered();
    return true;
}

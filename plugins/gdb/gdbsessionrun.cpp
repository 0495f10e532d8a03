#include "gdbsession.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int PauseLimit = 3000;
}

// The commands that run and pause the program. The rest of the class is in gdbsession.cpp.

void GdbSession::go(const QByteArray &command, TargetEvent ifRefused)
{
    if (!isStopped()) {
        announce(); // the host set its state to running with the command
        return;
    }
    apply(TargetEvent::Resumed);
    m_runLog.clear();
    m_gdb.send(command, [this, ifRefused](const MiRecord &answer) {
        if (answer.isError())
            runRefused(answer.errorText(), ifRefused);
    });
}

/// gdb may have moved the program on, over the breakpoint where it was.
void GdbSession::runRefused(const QString &error, TargetEvent event)
{
    if (m_state.phase != TargetState::Running)
        return;
    request(RunEvent::Stopped);
    clearTemporary(0);
    const QString log = m_runLog.simplified(); // has the reason if the error is only "Command aborted."
    const bool inLog = error.startsWith("Command aborted"_L1) && !log.isEmpty();
    Q_EMIT message(tr("The program cannot continue: %1\n").arg(inLog ? log : error), true);
    ++m_generation;
    apply(event);
    if (m_state.phase == TargetState::Stopped)
        m_gdb.send("-stack-info-frame", [this](const MiRecord &answer) {
            if (answer.isDone() && m_state.phase == TargetState::Stopped)
                takeFrame(answer.results[u"frame"]);
        });
}

/// During a restart, as in a script, the program runs when it has reached its start.
void GdbSession::resume()
{
    if (isBusy()) {
        const auto resumeStopped = [this] {
            if (isStopped())
                resume();
        };
        connect(&m_task, &BackgroundTask::ended, this, resumeStopped, Qt::SingleShotConnection);
        return;
    }
    go(m_target && m_target->severalCores() ? "-exec-continue --all" : "-exec-continue");
}

void GdbSession::step(const QByteArray &command)
{
    if (isStopped())
        request(RunEvent::StepStarted);
    go(command);
}

void GdbSession::runTo(const QString &location)
{
    if (!isStopped()) {
        announce();
        return;
    }
    const MiRecord answer = m_gdb.ask("-break-insert -t " + location.toUtf8());
    if (answer.isError()) {
        Q_EMIT message(tr("The program cannot be run to the cursor: %1\n").arg(answer.errorText()), true);
        announce();
        return;
    }
    m_temporary = answer.results[u"bkpt"].number(u"number");
    resume();
}

bool GdbSession::moveTo(quint64 address)
{
    if (!isStopped()
        || !m_gdb.ask("-data-evaluate-expression \"$pc = 0x" + QByteArray::number(address, 16) + '"').isDone())
        return false;
    (void)m_gdb.ask("-stack-select-frame 0");
    takeFrame(m_gdb.ask("-stack-info-frame").results[u"frame"]);
    ++m_generation;
    ++m_stopNumber;
    apply(TargetEvent::Stopped); // the host reads its windows again
    return true;
}

void GdbSession::pause()
{
    if (m_state.phase != TargetState::Running)
        return;
    m_gdb.send("-exec-interrupt --all");
    request(RunEvent::PauseRequested);
    QTimer::singleShot(PauseLimit, this, [this] {
        if (m_state.phase == TargetState::Running && m_request.pause == RunRequest::Pause::ByUser)
            reportFailedPause();
    });
}

void GdbSession::reportFailedPause()
{
    const QString title = m_target ? m_target->title() : QString();
    Q_EMIT message(tr("'%1' did not stop within %2 s.\n").arg(title, QString::number(PauseLimit / 1000)), true);
}

/// Stops the program and waits for it.
bool GdbSession::interrupt()
{
    m_gdb.send("-exec-interrupt --all");
    return waitForStop();
}

bool GdbSession::waitForStop()
{
    return m_gdb.waitUntil([this] { return m_state.phase != TargetState::Running; }, PauseLimit) && isStopped();
}

bool GdbSession::whilePaused(const std::function<void()> &work)
{
    if (m_state.phase != TargetState::Running) {
        work();
        return true;
    }
    const bool interrupted = m_request.pause == RunRequest::Pause::ByUser; // a second signal would stop it again
    request(RunEvent::OwnPauseRequested);
    const bool stopped = interrupted ? waitForStop() : interrupt();
    if (stopped)
        work();
    else
        reportFailedPause();
    endOwnPause();
    return stopped;
}

/// Resumes the program if it was stopped for an operation of our own only. A step cannot be resumed.
void GdbSession::endOwnPause()
{
    const bool hidden = m_request.pause == RunRequest::Pause::Hidden;
    request(RunEvent::OwnPauseEnded);
    if (!hidden)
        return;
    if (m_request.motion == RunRequest::Motion::Step) {
        request(RunEvent::Stopped);
        Q_EMIT message(tr("The step was interrupted.\n"), false);
        announce();
    } else if (isStopped()) {
        resume();
    }
}

bool GdbSession::canWakeUp() const
{
    return m_target && m_target->canWakeUp();
}

void GdbSession::wakeUp()
{
    if (!m_target || !isAlive())
        return;
    if (m_target->canWakeUp())
        m_target->wakeUp();
    else
        Q_EMIT message(tr("'%1' does not support waking up its processor.\n").arg(m_target->title()), true);
}

void GdbSession::resumeAll(const QList<GdbSession *> &sessions)
{
    for (GdbSession *session : sessions)
        session->resume();
}

void GdbSession::pauseAll(const QList<GdbSession *> &sessions)
{
    for (GdbSession *session : sessions)
        session->pause();
}

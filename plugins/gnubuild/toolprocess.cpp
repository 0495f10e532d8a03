#include "toolprocess.h"
#include <csignal>
#include <QFile>
#include <sys/prctl.h>
#include <unistd.h>
using namespace Qt::StringLiterals;

namespace {

/// A longer line is split, so that output without line ends does not fill the memory.
constexpr qsizetype LongestLine = 65536;

/// Runs in the new process: makes a process group, so that a stop reaches all children, and ends the process with
/// Varnel.
void setUpChild()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

void signalGroup(qint64 leader, int signal)
{
    if (leader > 1)
        ::kill(-pid_t(leader), signal);
}

} // namespace

ToolProcess::ToolProcess(int grace, QObject *parent) : QObject(parent)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setChildProcessModifier(setUpChild);
    m_killTimer.setInterval(grace);
    connect(&m_process, &QProcess::readyRead, this, &ToolProcess::readLines);
    connect(&m_process, &QProcess::finished, this, &ToolProcess::ended);
    connect(&m_process, &QProcess::errorOccurred, this, &ToolProcess::failed, Qt::QueuedConnection);
    connect(&m_killTimer, &QTimer::timeout, this, &ToolProcess::killByForce);
}

ToolProcess::~ToolProcess()
{
    m_process.disconnect(this);
    if (!isRunning())
        return;
    stop();
    if (!m_process.waitForFinished(m_killTimer.interval()))
        killByForce();
    if (!m_process.waitForFinished(m_killTimer.interval()))
        m_process.kill();
    m_process.waitForFinished();
    killGroups();
}

void ToolProcess::start(const Command &command)
{
    m_pending.clear();
    m_groups.clear();
    m_stopping = false;
    m_forced = false;
    m_process.setProcessEnvironment(command.environment);
    m_process.setWorkingDirectory(command.directory);
    m_process.start(command.program, command.arguments, QIODevice::ReadOnly);
}

void ToolProcess::stop()
{
    if (!isRunning() || m_stopping)
        return;
    m_stopping = true;
    m_groups = childGroups(m_process.processId());
    signalGroup(m_process.processId(), SIGTERM);
    m_killTimer.start();
}

void ToolProcess::killByForce()
{
    m_groups += childGroups(m_process.processId());
    killGroups();
    if (m_groups.isEmpty() || m_forced)
        signalGroup(m_process.processId(), SIGKILL); // it has no child whose end would end it
    m_forced = true;
}

void ToolProcess::killGroups() const
{
    for (const qint64 group : m_groups)
        signalGroup(group, SIGKILL);
}

void ToolProcess::readLines()
{
    m_pending += m_process.readAll();
    qsizetype done = 0;
    for (qsizetype end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n', done)) {
        const QByteArrayView bytes = QByteArrayView(m_pending).sliced(done, end - done);
        done = end + 1;
        Q_EMIT line(QString::fromUtf8(bytes.endsWith('\r') ? bytes.chopped(1) : bytes));
    }
    m_pending.remove(0, done);
    if (m_pending.size() > LongestLine)
        Q_EMIT line(QString::fromUtf8(std::exchange(m_pending, {})));
}

void ToolProcess::ended(int exitCode, QProcess::ExitStatus status)
{
    readLines();
    if (!m_pending.isEmpty())
        Q_EMIT line(QString::fromUtf8(std::exchange(m_pending, {})));
    m_killTimer.stop();
    killGroups();
    Q_EMIT finished(status == QProcess::NormalExit && exitCode == 0 && !m_stopping);
}

void ToolProcess::failed(QProcess::ProcessError error)
{
    if (error != QProcess::FailedToStart)
        return; // ended() follows
    Q_EMIT line(tr("Cannot run '%1': %2").arg(m_process.program(), m_process.errorString()));
    Q_EMIT finished(false);
}

QProcessEnvironment toolEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"NINJA_STATUS"_s, u"[%f/%t] "_s);
    return environment;
}

QList<qint64> childGroups(qint64 process)
{
    QList<qint64> groups;
    QFile file(u"/proc/%1/task/%1/children"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return groups;
    for (const QByteArray &child : file.readAll().split(' ')) {
        const qint64 id = child.toLongLong();
        if (id > 1 && ::getpgid(pid_t(id)) == pid_t(id))
            groups += id;
    }
    return groups;
}

#include "externaltool.h"
#include <csignal>
#include <fcntl.h>
#include <QFileInfo>
#include <QSet>
#include <QTimer>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
constexpr int StartWait = 100; ///< milliseconds; a command on a slow drive may take longer; errors are reported then
constexpr int StopWait = 2000; ///< milliseconds after which a process that has not ended is killed
/// Bytes that one read returns at most. With 64 KB of short lines the output window would be busy for 100 ms.
constexpr int PipeSize = 16384;

/// Runs in the new process: creates a process group, so that a stop also reaches its child processes.
void setUpChild()
{
    ::setpgid(0, 0);
    ::fcntl(STDOUT_FILENO, F_SETPIPE_SZ, PipeSize);
}

void signalGroup(qint64 leader, int signal)
{
    if (leader > 1)
        ::kill(-pid_t(leader), signal);
}

/// The destructor of QProcess ends the program, so these objects are deleted when their program has ended, or never.
void leaveRunning(QProcess *process)
{
    static auto &left = *new QSet<QProcess *>;
    left.insert(process);
    process->closeReadChannel(QProcess::StandardOutput); // what still arrives is dropped
    QObject::connect(process, &QProcess::finished, process, [process] {
        left.remove(process);
        process->deleteLater();
    });
}
} // namespace

ExternalTool::ExternalTool(const ToolEntry &entry, QObject *parent) : QObject(parent), m_entry(entry) {}

ExternalTool::~ExternalTool()
{
    if (m_process)
        leaveRunning(m_process.release());
}

bool ExternalTool::execute(const Macros &macros)
{
    if (m_process)
        return false;
    const QString arguments = expandMacros(m_entry.arguments, macros);
    const QString directory = expandMacros(m_entry.initialDir, macros);
    createProcess();
    m_process->setProgram(m_entry.command);
    m_process->setArguments(arguments.split(u' ', Qt::SkipEmptyParts));
    m_process->setWorkingDirectory(directory);
    Q_EMIT output(tr("Running '%1 %2'...\n").arg(m_entry.command, arguments));
    if (!directory.isEmpty() && !QFileInfo(directory).isDir()) {
        Q_EMIT output(tr("The directory '%1' does not exist\n").arg(directory));
        startFailed();
        return false;
    }
    Q_EMIT runningChanged(true);
    m_process->start(QIODevice::ReadOnly);
    if (m_process)
        m_process->waitForStarted(StartWait);
    return isRunning();
}

void ExternalTool::createProcess()
{
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setChildProcessModifier(setUpChild);
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &ExternalTool::readStdout);
    connect(m_process.get(), &QProcess::finished, this, &ExternalTool::processExited);
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            startFailed();
    });
    m_decoder = QStringDecoder(QStringDecoder::System);
    m_lines = 0;
    m_column = 0;
    m_stopping = false;
}

void ExternalTool::startFailed()
{
    Q_EMIT output(tr("Could not start process\n"));
    m_process.release()->deleteLater(); // its signal may be on the stack
    Q_EMIT runningChanged(false);
}

void ExternalTool::readStdout()
{
    const QString text = m_decoder.decode(m_process->readAllStandardOutput());
    if (text.isEmpty() || m_lines >= MostLines)
        return;
    Q_EMIT output(withinLimits(text));
    if (m_lines >= MostLines)
        Q_EMIT output(tr("Further output of '%1' is not shown\n").arg(m_process->program()));
}

/// The part of @p text that is still shown, with long lines divided. Text windows are slow with lines of megabytes.
QString ExternalTool::withinLimits(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    for (const QChar character : text) {
        const bool endsLine = character == u'\n' || character == u'\r';
        if (m_column == LongestLine && !endsLine) {
            shown += u'\n';
            ++m_lines;
            m_column = 0;
        }
        if (m_lines >= MostLines)
            break;
        shown += character;
        m_column = endsLine ? 0 : m_column + 1;
        m_lines += int(endsLine);
    }
    return shown;
}

void ExternalTool::processExited()
{
    readStdout();
    if (m_column > 0)
        Q_EMIT output(u"\n"_s);
    if (m_process->exitStatus() == QProcess::NormalExit)
        Q_EMIT output(tr("Process '%1' exited normally (%2)\n")
                          .arg(m_process->program(), QString::number(m_process->exitCode())));
    else
        Q_EMIT output(tr("Process '%1' exited prematurely\n").arg(m_process->program()));
    m_process.release()->deleteLater();
    Q_EMIT runningChanged(false);
}

void ExternalTool::stop()
{
    if (!m_process)
        return;
    const qint64 group = m_process->processId();
    signalGroup(group, m_stopping ? SIGKILL : SIGTERM);
    m_stopping = true;
    QTimer::singleShot(StopWait, this, [group] { signalGroup(group, SIGKILL); }); // also children that live on
}

QString expandMacros(QString text, const ExternalTool::Macros &macros)
{
    for (const auto &[name, value] : macros.asKeyValueRange())
        text.replace(u"$("_s + name + u')', value);
    return text;
}

#include "childprocess.h"
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {
constexpr int StartLimit = 5000;
constexpr int KillLimit = 2000;

/// Runs between fork and exec, where only async-signal-safe calls are allowed.
void leadOwnGroup()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
}
} // namespace

ChildProcess::ChildProcess(QObject *parent) : QProcess(parent)
{
    setChildProcessModifier(leadOwnGroup);
}

ChildProcess::~ChildProcess()
{
    end();
}

bool ChildProcess::launch(const QString &program, const QStringList &arguments, QString *error)
{
    start(program, arguments);
    if (waitForStarted(StartLimit))
        return true;
    *error = tr("Cannot run '%1': %2").arg(program, errorString());
    return false;
}

void ChildProcess::end(int limit)
{
    if (state() == NotRunning)
        return;
    blockSignals(true);
    if (limit <= 0 || !waitForFinished(limit)) {
        kill();
        waitForFinished(KillLimit);
    }
    blockSignals(false);
}

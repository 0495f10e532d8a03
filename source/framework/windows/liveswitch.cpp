#include "liveswitch.h"
#include "callplugin.h"
#include <QElapsedTimer>
#include <QPointer>

LiveSwitch::LiveSwitch(QWidget *parent) : RateSwitch(parent)
{
    setEnabled(false);
    connect(this, &RateSwitch::tick, this, &LiveSwitch::askForRefresh);
}

void LiveSwitch::setEnvironment(IExecutionEnvironment *environment)
{
    m_memory = queryPlugin<ILiveMemory>(environment);
    m_environment = shareInterface(environment);
    follow();
}

InterfacePtr<ILiveMemory> LiveSwitch::memory() const
{
    return shareInterface(m_memory.get());
}

void LiveSwitch::follow()
{
    const QPointer<LiveSwitch> self(this);
    const auto memory = shareInterface(m_memory.get());
    const bool can = memory && askPlugin<&ILiveMemory::canReadLive>(memory);
    if (self && memory == m_memory)
        setEnabled(can);
}

/// The environment is asked each time, because the state of the program is that of the current project, which may be
/// another one.
bool LiveSwitch::canReadNow()
{
    if (m_asking || !m_environment || !isEnabled())
        return false;
    const QPointer<LiveSwitch> self(this);
    const auto environment = shareInterface(m_environment.get());
    auto status = IExecutionEnvironment::ProgramUnknown;
    m_asking = true;
    readPlugin<&IExecutionEnvironment::programStatus>(status, environment);
    if (!self)
        return false;
    m_asking = false;
    return status == IExecutionEnvironment::ProgramRunning || status == IExecutionEnvironment::ProgramSleeping;
}

/// A slow refresh is followed by a pause of the same length, so that the window stays usable.
void LiveSwitch::askForRefresh()
{
    if (!m_rest.hasExpired())
        return;
    const QPointer<LiveSwitch> self(this);
    if (!canReadNow() || !isTicking())
        return;
    QElapsedTimer time;
    time.start();
    m_asking = true;
    Q_EMIT refresh();
    if (!self)
        return;
    m_asking = false;
    m_rest.setRemainingTime(time.elapsed());
}

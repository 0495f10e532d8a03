#include "liveswitch.h"
#include "callplugin.h"
#include <QActionGroup>
#include <QMenu>
#include <QPointer>

using namespace Qt::StringLiterals;

LiveSwitch::LiveSwitch(QWidget *parent) : QToolButton(parent)
{
    setText(tr("Live"));
    setObjectName(u"liveSwitch"_s);
    setToolTip(tr("Reads the target while the program runs, without stopping it."));
    setCheckable(true);
    setEnabled(false);
    setPopupMode(QToolButton::MenuButtonPopup);
    addRates();
    connect(this, &QToolButton::toggled, this, &LiveSwitch::startOrStop);
    connect(&m_timer, &QTimer::timeout, this, &LiveSwitch::tick);
}

void LiveSwitch::addRates()
{
    auto *menu = new QMenu(this);
    auto *group = new QActionGroup(menu);
    for (const int rate : {2, 5, 10}) {
        QAction *action = menu->addAction(tr("%1 times a second").arg(rate), this, [this, rate] { setRate(rate); });
        action->setCheckable(true);
        action->setChecked(rate == m_rate);
        group->addAction(action);
    }
    setMenu(menu);
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

void LiveSwitch::setRate(int rate)
{
    m_rate = rate;
    startOrStop();
}

void LiveSwitch::follow()
{
    const QPointer<LiveSwitch> self(this);
    const auto memory = shareInterface(m_memory.get());
    const bool can = memory && askPlugin<&ILiveMemory::canReadLive>(memory);
    if (!self || memory != m_memory)
        return;
    setEnabled(can);
    startOrStop();
}

void LiveSwitch::showEvent(QShowEvent *event)
{
    QToolButton::showEvent(event);
    startOrStop();
}

void LiveSwitch::hideEvent(QHideEvent *event)
{
    QToolButton::hideEvent(event);
    startOrStop();
}

void LiveSwitch::startOrStop()
{
    if (isChecked() && isEnabled() && isVisible())
        m_timer.start(1000 / m_rate);
    else
        m_timer.stop();
}

/// The environment is asked each time, because the state of the whole program is that of another project's.
void LiveSwitch::tick()
{
    if (m_asking || !m_environment)
        return;
    const QPointer<LiveSwitch> self(this);
    const auto environment = shareInterface(m_environment.get());
    auto status = IExecutionEnvironment::ProgramUnknown;
    m_asking = true;
    readPlugin<&IExecutionEnvironment::programStatus>(status, environment);
    const bool runs =
        status == IExecutionEnvironment::ProgramRunning || status == IExecutionEnvironment::ProgramSleeping;
    if (self && runs && m_timer.isActive())
        Q_EMIT refresh();
    if (self)
        m_asking = false;
}

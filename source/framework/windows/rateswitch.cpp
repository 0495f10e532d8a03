#include "rateswitch.h"
#include <QActionGroup>
#include <QEvent>
#include <QMenu>

using namespace Qt::StringLiterals;

RateSwitch::RateSwitch(QWidget *parent) : QToolButton(parent)
{
    setText(tr("Live"));
    setObjectName(u"liveSwitch"_s);
    setToolTip(tr("Reads the target while the program runs, without stopping it."));
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setPopupMode(QToolButton::MenuButtonPopup);
    addRates();
    connect(this, &QToolButton::toggled, this, &RateSwitch::startOrStop);
    connect(&m_timer, &QTimer::timeout, this, &RateSwitch::tick);
}

void RateSwitch::addRates()
{
    auto *menu = new QMenu(this);
    auto *group = new QActionGroup(menu);
    for (const int rate : {2, 5, 10}) {
        QAction *action = menu->addAction(tr("%1 times a second").arg(rate), this, [this, rate] { setRate(rate); });
        action->setCheckable(true);
        action->setData(rate);
        action->setChecked(rate == m_rate);
        group->addAction(action);
    }
    setMenu(menu);
}

void RateSwitch::setRate(int rate)
{
    for (QAction *action : menu()->actions()) {
        if (action->data().toInt() != rate)
            continue;
        action->setChecked(true);
        m_rate = rate;
        startOrStop();
    }
}

void RateSwitch::showEvent(QShowEvent *event)
{
    QToolButton::showEvent(event);
    startOrStop();
}

void RateSwitch::hideEvent(QHideEvent *event)
{
    QToolButton::hideEvent(event);
    startOrStop();
}

void RateSwitch::changeEvent(QEvent *event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        startOrStop();
}

void RateSwitch::startOrStop()
{
    if (isChecked() && isEnabled() && isVisible())
        m_timer.start(1000 / m_rate);
    else
        m_timer.stop();
}

#include "debugoptions.h"
#include "debugactiondialog.h"
#include <QCoreApplication>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DebugOptions)
};

QString keyOf(int event)
{
    return u"Debug/action"_s + QString::number(event);
}
} // namespace

QString debugQuestion(DebugEvent event)
{
    switch (event) {
    case RunEvent:
        return Text::tr("Do you want to start the current processor or all processors?");
    case PauseEvent:
        return Text::tr("Do you want to pause the current processor or all processors?");
    case RestartEvent:
        return Text::tr("Do you want to restart the current processor or all processors?");
    case WakeupEvent:
        return Text::tr("Do you want to wake up the current processor or all processors?");
    case BreakpointEvent:
        break;
    }
    return {};
}

QStringList debugActionTexts(DebugEvent event)
{
    switch (event) {
    case RunEvent:
        return {Text::tr("Start current processor"), Text::tr("Start all processors"), Text::tr("Ask")};
    case PauseEvent:
        return {Text::tr("Pause current processor"), Text::tr("Pause all processors"), Text::tr("Ask")};
    case RestartEvent:
        return {Text::tr("Restart current processor"), Text::tr("Restart all processors"), Text::tr("Ask")};
    case WakeupEvent:
        return {Text::tr("Wakeup current processor"), Text::tr("Wakeup all processors"), Text::tr("Ask")};
    case BreakpointEvent:
        return {Text::tr("Leave other processors running"), Text::tr("Pause all processors")};
    }
    return {};
}

DebugOptions::DebugOptions()
{
    for (int event = RunEvent; event <= BreakpointEvent; ++event)
        m_actions[event] = AllProcessors;
}

DebugAction DebugOptions::action(DebugEvent event) const
{
    return DebugAction(m_actions.value(event));
}

void DebugOptions::setAction(DebugEvent event, DebugAction action)
{
    m_actions[event] = action;
}

void DebugOptions::load(const QSettings &settings)
{
    for (int event = 0; settings.contains(keyOf(event)); ++event) {
        bool isNumber = false;
        const int action = settings.value(keyOf(event)).toInt(&isNumber);
        if (isNumber && action >= CurrentProcessor && action <= AskForProcessors)
            m_actions[event] = action;
    }
}

void DebugOptions::save(QSettings &settings) const
{
    for (auto it = m_actions.cbegin(); it != m_actions.cend(); ++it)
        settings.setValue(keyOf(it.key()), it.value());
}

DebugAction resolveAction(DebugOptions &options, DebugEvent event, QWidget *parent)
{
    const DebugAction stored = options.action(event);
    if (stored != AskForProcessors)
        return stored;
    DebugActionDialog dialog(debugQuestion(event), debugActionTexts(event), parent);
    if (dialog.exec() == QDialog::Rejected)
        return NoProcessor;
    const auto chosen = DebugAction(dialog.choice());
    if (dialog.dontAskAgain())
        options.setAction(event, chosen);
    return chosen;
}

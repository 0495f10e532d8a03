#pragma once
#include <QMap>
#include <QStringList>
class QSettings;
class QWidget;

/// What may concern one or all processors when there are several projects. The numbers are those of the settings.
enum DebugEvent { RunEvent = 0, PauseEvent = 1, RestartEvent = 2, WakeupEvent = 3, BreakpointEvent = 4 };

/// Which processors an event concerns.
enum DebugAction {
    CurrentProcessor = 0,
    AllProcessors = 1,
    AskForProcessors = 2,
    NoProcessor = 3 ///< the user was asked and gave none; never stored
};

/// The question by which the user is asked about @p event; empty for BreakpointEvent, which is never asked about.
[[nodiscard]] QString debugQuestion(DebugEvent event);
/// The words for the actions of @p event from CurrentProcessor on; BreakpointEvent has no words for asking.
[[nodiscard]] QStringList debugActionTexts(DebugEvent event);

/// The user's choice for each event. At first all processors are concerned.
class DebugOptions
{
public:
    DebugOptions();

    [[nodiscard]] DebugAction action(DebugEvent event) const;
    void setAction(DebugEvent event, DebugAction action);
    /// In the group "Debug". Numbers that are no actions leave what there is.
    void load(const QSettings &settings);
    void save(QSettings &settings) const;

private:
    QMap<int, int> m_actions;
};

/// The processors that @p event concerns. Asks the user if that is stored so, and stores the answer, in @p options
/// only, if the user does not want to be asked again.
[[nodiscard]] DebugAction resolveAction(DebugOptions &options, DebugEvent event, QWidget *parent);

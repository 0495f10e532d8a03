#pragma once
#include <QMap>
#include <QStringList>
class QSettings;
class QWidget;

/// Events that concern one or all processors if there are several projects. The numbers are those of the settings.
enum DebugEvent { RunEvent = 0, PauseEvent = 1, RestartEvent = 2, WakeupEvent = 3, BreakpointEvent = 4 };

/// Which processors an event concerns.
enum DebugAction {
    CurrentProcessor = 0,
    AllProcessors = 1,
    AskForProcessors = 2,
    NoProcessor = 3 ///< the user cancelled the question; never stored
};

/// The question to the user about @p event; empty for BreakpointEvent, for which there is no question.
[[nodiscard]] QString debugQuestion(DebugEvent event);
/// The texts for the actions of @p event from CurrentProcessor on; BreakpointEvent has none for the question.
[[nodiscard]] QStringList debugActionTexts(DebugEvent event);

/// The user's choice for each event. The default is all processors.
class DebugOptions
{
public:
    DebugOptions();

    [[nodiscard]] DebugAction action(DebugEvent event) const;
    void setAction(DebugEvent event, DebugAction action);
    /// Reads the group "Debug". Invalid numbers are ignored.
    void load(const QSettings &settings);
    void save(QSettings &settings) const;

private:
    QMap<int, int> m_actions;
};

/// The processors that @p event concerns. Asks the user if the options require that. If the user chooses not to be
/// asked again, stores the answer, in @p options only.
[[nodiscard]] DebugAction resolveAction(DebugOptions &options, DebugEvent event, QWidget *parent);

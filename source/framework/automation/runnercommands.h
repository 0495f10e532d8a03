#pragma once
#include <QPointer>
#include <QWidget>
class CommandWords;
class ObjectModel;

/// The commands of one test driver: each operates on the main widget and its children, and returns a reply.
///
/// Objects are found by their names; of equal names the first is used. The replies are fixed to the byte: some are
/// irregular, and drivers depend on them.
class RunnerCommands
{
public:
    RunnerCommands(QWidget *mainWidget, ObjectModel *objectModel);

    /// Executes one line. Returns the reply with its line end, or nothing for a command without a reply.
    ///
    /// A command can run an event loop, in which this object may be deleted.
    [[nodiscard]] QString execute(const QString &line);

    [[nodiscard]] bool isRecording() const { return m_recording; }

private:
    [[nodiscard]] QString postEvent(CommandWords &words) const;
    [[nodiscard]] QString record(CommandWords &words);
    [[nodiscard]] QString doAction(CommandWords &words) const;

    [[nodiscard]] QObject *findChild(const QString &name) const;
    [[nodiscard]] QObject *findObject(const QString &name) const;

    const QPointer<QWidget> m_mainWidget;
    const QPointer<ObjectModel> m_objectModel;
    bool m_recording = false;
};

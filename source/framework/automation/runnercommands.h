#pragma once
#include <QPointer>
#include <QWidget>
class CommandWords;
class ObjectModel;

/// The commands of one test driver: each acts on the main widget and what it holds, and gives its reply.
///
/// Objects are found by their plain names, the first one wins. The replies are fixed to the byte: some are irregular,
/// and drivers rely on it.
class RunnerCommands
{
public:
    RunnerCommands(QWidget *mainWidget, ObjectModel *objectModel);

    /// Carries out one line. Returns the reply with its line end, or nothing for a command that has no reply.
    ///
    /// A command can run an event loop of its own, in which this object may be destroyed.
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

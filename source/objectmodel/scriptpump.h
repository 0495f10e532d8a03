#pragma once
#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <QObject>
#include <QPointer>
#include <thread>

/// While it exists, a script that runs long does not block the window: events are processed between its instructions,
/// and while it sleeps or waits for a lock, a thread, a process or a connection. Of the user's input only the keys that
/// interrupt scripts, in the console, and the mouse on some widgets get through, and everything once a dialog is open.
/// Who ends the program interrupts the script; the program ends after it. If the script goes on, ending the program a
/// second time does not wait for it.
class ScriptPump : public QObject
{
    Q_OBJECT
public:
    /// @p widgets are those that the mouse can use.
    explicit ScriptPump(const QList<QPointer<QWidget>> &widgets);
    ~ScriptPump() override;

    /// Called by the interpreter in the script's thread. Does nothing after the end of the pump.
    static void processEvents();

Q_SIGNALS:
    void inputRefused(); ///< a key or a click of the user that has to wait

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void ask();
    [[nodiscard]] bool mayPass(QObject *object, const QEvent &event) const;

    const QList<QPointer<QWidget>> m_widgets;
    ScriptPump *const m_outer;
    QPointer<QObject> m_exit; ///< by what the user wants to end the program: a window or an action
    bool m_exitAsked = false; ///< that has interrupted the script; the next time it works at once
    bool m_ended = false;
    std::mutex m_mutex; ///< of m_ended
    std::condition_variable m_end;
    pthread_t m_scriptThread;
    std::thread m_thread; ///< asks the interpreter to call processEvents()
};

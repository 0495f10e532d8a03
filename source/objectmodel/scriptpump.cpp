#include "scriptpump.h"
#include "commandlinewindow.h"
#include "pythoncall.h"
#include "pythonreference.h"
#include <csignal>
#include <Python.h>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
constexpr auto Patience = 500ms; ///< during which events are not processed: most scripts end sooner
constexpr auto Interval = 50ms;
constexpr int Slice = 20;          ///< milliseconds
constexpr int WakeSignal = SIGURG; ///< without a handler it is ignored, so a script cannot end the program by taking it

ScriptPump *innermost = nullptr;
bool processing = false;

bool interruptsScripts(const QKeyEvent &event)
{
    return event.modifiers() == Qt::ControlModifier && (event.key() == Qt::Key_C || event.key() == Qt::Key_Z);
}

bool endsTheProgram(QObject *object, const QEvent &event)
{
    return event.type() == QEvent::Close ? qobject_cast<QMainWindow *>(object) != nullptr
                                         : event.type() == QEvent::Shortcut && object->objectName() == "fileExit"_L1;
}

void askForTheEnd(QObject *object)
{
    if (auto *action = qobject_cast<QAction *>(object))
        QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
    else
        QMetaObject::invokeMethod(static_cast<QWidget *>(object), &QWidget::close, Qt::QueuedConnection);
}

bool isInput(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::Shortcut
           || event.type() == QEvent::MouseButtonPress;
}

bool interruptedByTheEnd()
{
    if (!isPythonEnding())
        return false;
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    return true;
}

PyObject *handleSignal(PyObject *, PyObject *)
{
    ScriptPump::processEvents();
    if (Py_MakePendingCalls() < 0 || interruptedByTheEnd()) // a call that waits makes no pending calls by itself
        return nullptr;
    Py_RETURN_NONE;
}

void installHandler()
{
    static PyMethodDef handler{"processEvents", handleSignal, METH_VARARGS, nullptr};
    const PythonReference function(PyCFunction_New(&handler, nullptr));
    const PythonReference signals(PyImport_ImportModule("_signal"));
    const PythonReference former(
        signals ? PyObject_CallMethod(signals.get(), "signal", "iO", WakeSignal, function.get()) : nullptr);
    if (!former)
        PyErr_Clear(); // the script has replaced the module: it runs without events
}
} // namespace

ScriptPump::ScriptPump(const QList<QPointer<QWidget>> &widgets)
    : m_widgets(widgets), m_outer(std::exchange(innermost, this)), m_scriptThread(pthread_self())
{
    installHandler();
    m_thread = std::thread([this] { ask(); });
}

ScriptPump::~ScriptPump()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_end.notify_all();
    m_thread.join();
    innermost = m_outer;
    if (m_exit)
        askForTheEnd(m_exit);
}

/// A signal ends the blocking calls of the system, and Python then runs its handler; between two instructions as well.
void ScriptPump::ask()
{
    std::unique_lock lock(m_mutex);
    for (auto wait = Patience; !m_end.wait_for(lock, wait, [this] { return m_ended; }); wait = Interval)
        pthread_kill(m_scriptThread, WakeSignal);
}

void ScriptPump::processEvents()
{
    if (!innermost || processing)
        return;
    processing = true;
    const QPointer<ScriptPump> pump(innermost);
    QCoreApplication::instance()->installEventFilter(pump);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers, Slice);
    if (pump)
        QCoreApplication::instance()->removeEventFilter(pump);
    processing = false;
}

bool ScriptPump::eventFilter(QObject *object, QEvent *event)
{
    if (QApplication::activeModalWidget())
        return false;
    if (endsTheProgram(object, *event)) {
        if (std::exchange(m_exitAsked, true)) { // the script has ignored the interrupt
            m_exit = nullptr;
            return false;
        }
        m_exit = object;
        breakPython();
    }
    if (event->type() == QEvent::Close)
        event->ignore(); // else the window would be hidden
    const bool isRefused = event->type() == QEvent::Shortcut || (object->isWidgetType() && !mayPass(object, *event));
    if (isRefused && isInput(*event))
        Q_EMIT inputRefused();
    return isRefused;
}

bool ScriptPump::mayPass(QObject *object, const QEvent &event) const
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        return interruptsScripts(static_cast<const QKeyEvent &>(event)) && qobject_cast<CommandLineWindow *>(object);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return m_widgets.contains(qobject_cast<QWidget *>(object));
    case QEvent::Close:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Wheel:
        return false;
    default:
        return true;
    }
}

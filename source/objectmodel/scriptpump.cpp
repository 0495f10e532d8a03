#include "scriptpump.h"
#include "commandlinewindow.h"
#include "pythoncall.h"
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
constexpr int Slice = 20; ///< milliseconds

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

int interruptIfProgramEnds()
{
    if (!isPythonEnding())
        return 0;
    PyErr_SetNone(PyExc_KeyboardInterrupt);
    return -1;
}
} // namespace

ScriptPump::ScriptPump(const QList<QPointer<QWidget>> &widgets)
    : m_widgets(widgets), m_outer(std::exchange(innermost, this)), m_thread([this] { ask(); })
{}

ScriptPump::~ScriptPump()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_end.notify_all();
    PyThreadState *own = PyEval_SaveThread(); // the thread may wait for the interpreter
    m_thread.join();
    PyEval_RestoreThread(own);
    innermost = m_outer;
    if (m_exit)
        askForTheEnd(m_exit);
}

/// Python runs pending calls only after another thread has requested its lock.
void ScriptPump::ask()
{
    std::unique_lock lock(m_mutex);
    for (auto wait = Patience; !m_end.wait_for(lock, wait, [this] { return m_ended; }); wait = Interval) {
        lock.unlock();
        if (Py_AddPendingCall(processEvents, nullptr) == 0)
            PyGILState_Release(PyGILState_Ensure());
        lock.lock();
    }
}

/// Called by the interpreter, between two instructions of the script. It may come after the end of its pump.
int ScriptPump::processEvents(void *)
{
    if (!innermost || processing)
        return 0;
    processing = true;
    const QPointer<ScriptPump> pump(innermost);
    QCoreApplication::instance()->installEventFilter(pump);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers, Slice);
    if (pump)
        QCoreApplication::instance()->removeEventFilter(pump);
    processing = false;
    return interruptIfProgramEnds();
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
    return event->type() == QEvent::Shortcut || (object->isWidgetType() && !mayPass(object, *event));
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

#include "pythonthreads.h"
#include <chrono>
#include <Python.h>
#include <QBasicTimer>
#include <QCoreApplication>
#include <QPointer>
#include <thread>

using namespace std::chrono_literals;

namespace {
constexpr auto Pause = 8; ///< milliseconds between two shares, in which the window handles events
constexpr auto Share = 2ms;

bool hasThreads()
{
    PyThreadState *first = PyInterpreterState_ThreadHead(PyInterpreterState_Get());
    return first && PyThreadState_Next(first);
}

class ThreadTimer : public QObject
{
public:
    using QObject::QObject;
    void start() { m_timer.start(Pause, this); }

protected:
    void timerEvent(QTimerEvent *) override
    {
        if (!hasThreads())
            return m_timer.stop();
        PyThreadState *own = PyEval_SaveThread();
        std::this_thread::sleep_for(Share);
        PyEval_RestoreThread(own);
    }

private:
    QBasicTimer m_timer;
};
} // namespace

void letPythonThreadsRun()
{
    static QPointer<ThreadTimer> timer;
    if (!QCoreApplication::instance() || !hasThreads())
        return;
    if (!timer)
        timer = new ThreadTimer(QCoreApplication::instance());
    timer->start();
}

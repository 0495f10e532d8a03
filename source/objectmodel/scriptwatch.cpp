#include "scriptwatch.h"
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <Python.h>
#include <thread>

namespace {
constexpr std::chrono::milliseconds Interval{50};
}

struct ScriptWatch::State
{
    std::function<bool()> keepRunning;
    std::atomic<bool> queued = false;
    bool done = false;
    std::mutex mutex;
    std::condition_variable changed;
    std::thread thread;

    /// Python may run the call after the watch has ended, so it owns a reference to the state.
    static void queue(const std::shared_ptr<State> &state)
    {
        if (state->queued.exchange(true))
            return;
        auto owner = std::make_unique<std::shared_ptr<State>>(state);
        if (Py_AddPendingCall(call, owner.get()) == 0)
            (void)owner.release(); // NOLINT(bugprone-unused-return-value): call() deletes it
        else
            state->queued = false;
        // Python 3.11 does not run pending calls of other threads until its lock has changed hands.
        PyGILState_Release(PyGILState_Ensure());
    }

    static int call(void *argument)
    {
        const std::unique_ptr<std::shared_ptr<State>> owner(static_cast<std::shared_ptr<State> *>(argument));
        State &state = **owner;
        state.queued = false;
        if (state.done || state.keepRunning())
            return 0;
        PyErr_SetNone(PyExc_KeyboardInterrupt);
        return -1;
    }

    static void watch(const std::shared_ptr<State> &state)
    {
        std::unique_lock lock(state->mutex);
        while (!state->changed.wait_for(lock, Interval, [&] { return state->done; })) {
            lock.unlock();
            queue(state);
            lock.lock();
        }
    }
};

ScriptWatch::ScriptWatch(const std::function<bool()> &keepRunning)
    : m_state(keepRunning ? std::make_shared<State>() : nullptr)
{
    if (!m_state)
        return;
    m_state->keepRunning = keepRunning;
    m_state->thread = std::thread(State::watch, m_state);
}

ScriptWatch::~ScriptWatch()
{
    if (!m_state)
        return;
    {
        const std::scoped_lock lock(m_state->mutex);
        m_state->done = true;
    }
    m_state->changed.notify_all();
    Py_BEGIN_ALLOW_THREADS // the thread may be waiting for Python's lock
        m_state->thread.join();
    Py_END_ALLOW_THREADS
}

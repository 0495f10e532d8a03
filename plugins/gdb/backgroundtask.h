#pragma once
#include <exception>
#include <functional>
#include <memory>
#include <QObject>
#include <QTimer>

/// A function that runs in pieces on its caller's thread: where it waits, it is left, and the event loop goes on.
///
/// The function has a stack of its own, so it waits in any depth and reads like one that blocks. It ends by itself or
/// by cancel(), which makes its waits fail. All tasks belong to one thread.
///
/// While it waits, the functions on its stack are not complete. So it does not wait while a Whole exists, nor in an
/// event loop that it has started. Calls of other code, such as the host, which may run scripts, are made with a Whole.
class BackgroundTask : public QObject
{
    Q_OBJECT
public:
    explicit BackgroundTask(QObject *parent = nullptr);
    ~BackgroundTask() override; ///< Cancels the work. Not to be called by the work itself.

    /// Begins @p work, which runs until its first wait. A work that is still active is cancelled before. An exception
    /// of the work reaches the caller, or, after a wait, the event loop.
    void run(const std::function<void()> &work);
    /// Makes the present and all later waits of the work fail, and returns when it has ended; at once if the work
    /// itself is the caller. An exception of the work is printed.
    void cancel();
    void wake(); ///< Ends the present wait soon, from the event loop.
    [[nodiscard]] bool isActive() const { return m_context != nullptr; }
    [[nodiscard]] bool isCurrent() const { return s_current == this; } ///< Whether the caller is part of the work.
    [[nodiscard]] bool isCancelled() const { return m_cancelled; }     ///< The present work or the last one.

    /// Whether the caller is part of a work that may be left here.
    [[nodiscard]] static bool canPause();
    /// Leaves the work for a time in milliseconds, or until wake(). False if it was cancelled.
    static bool pause(int time);

    /// While one exists, the work is not left: others would see an intermediate state.
    class Whole
    {
    public:
        Whole() { ++s_whole; }
        ~Whole() { --s_whole; }
        Q_DISABLE_COPY_MOVE(Whole)
    };

Q_SIGNALS:
    void ended(); ///< also after cancel()

private:
    struct Context;

    static void begin();
    void enter();
    void leave();
    void finish();

    std::function<void()> m_work;
    std::unique_ptr<Context> m_context; ///< null while nothing runs
    std::exception_ptr m_exception;
    QTimer m_timer;
    int m_loopLevel = 0;    ///< of the event loop that has entered the work
    bool m_entered = false; ///< the stack of the work is in use
    bool m_done = false;
    bool m_cancelled = false;
    static inline BackgroundTask *s_current = nullptr;
    static inline int s_whole = 0;
};

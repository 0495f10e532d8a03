#include "backgroundtask.h"
#include <cxxabi.h>
#include <new>
#include <QPointer>
#include <QThread>
#include <sys/mman.h>
#include <ucontext.h>

#if defined(__SANITIZE_ADDRESS__)
#define VARNEL_STACK_CHECKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VARNEL_STACK_CHECKS 1
#endif
#endif

#ifdef VARNEL_STACK_CHECKS
#include <sanitizer/asan_interface.h>
#include <sanitizer/common_interface_defs.h>
#endif

namespace {
constexpr size_t StackSize = size_t(1) << 20; // touched only as far as it is used
constexpr size_t GuardSize = size_t(1) << 16; // a multiple of the page size

/// Memory for a stack. Below it are pages without access, so that an overflow ends the program where it happens.
class Stack
{
public:
    Stack()
        : m_memory(::mmap(nullptr, GuardSize + StackSize, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0))
    {
        if (m_memory == MAP_FAILED) // NOLINT(performance-no-int-to-ptr): the macro of the system
            throw std::bad_alloc();
        ::mprotect(m_memory, GuardSize, PROT_NONE);
    }
    ~Stack()
    {
#ifdef VARNEL_STACK_CHECKS
        __asan_unpoison_memory_region(begin(), StackSize); // the first function on it has not returned
#endif
        ::munmap(m_memory, GuardSize + StackSize);
    }
    Q_DISABLE_COPY_MOVE(Stack)

    [[nodiscard]] char *begin() const
    {
        return static_cast<char *>(m_memory) + GuardSize;
    }

private:
    void *const m_memory;
};

/// The exceptions that are being handled, which the C++ runtime keeps by thread. Each stack has its own.
struct HandledExceptions
{
    void *caught = nullptr;
    unsigned int uncaught = 0;

    static HandledExceptions &current() { return *reinterpret_cast<HandledExceptions *>(abi::__cxa_get_globals()); }
};
} // namespace

struct BackgroundTask::Context
{
    ucontext_t work{};
    ucontext_t caller{};
    Stack stack;
    HandledExceptions exceptions; ///< of the stack that is not in use
    // for the sanitizer, which has to know which stack is in use
    const void *callerStack = nullptr;
    size_t callerSize = 0;
    void *workFrames = nullptr;
};

BackgroundTask::BackgroundTask(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &BackgroundTask::enter);
}

BackgroundTask::~BackgroundTask()
{
    if (m_entered)
        qFatal("BackgroundTask::~BackgroundTask: called by its own work"); // whose stack would be freed
    blockSignals(true);
    cancel();
}

void BackgroundTask::run(const std::function<void()> &work)
{
    cancel();
    if (m_entered) {
        qWarning("BackgroundTask::run: called by its own work");
        return;
    }
    m_work = work;
    m_done = m_cancelled = false;
    m_context = std::make_unique<Context>();
    ::getcontext(&m_context->work);
    m_context->work.uc_stack.ss_sp = m_context->stack.begin();
    m_context->work.uc_stack.ss_size = StackSize;
    m_context->work.uc_link = nullptr;
    ::makecontext(&m_context->work, &BackgroundTask::begin, 0);
    enter();
}

void BackgroundTask::cancel()
{
    const QPointer<BackgroundTask> alive(this); // a receiver of ended() may delete it
    m_cancelled = m_cancelled || isActive();
    while (alive && isActive() && !m_entered) {
        try {
            enter();
        } catch (const std::exception &exception) {
            qWarning("BackgroundTask::cancel: %s", exception.what());
        } catch (...) {
            qWarning("BackgroundTask::cancel: unknown exception");
        }
    }
}

void BackgroundTask::wake()
{
    if (m_timer.isActive())
        m_timer.start(0);
}

bool BackgroundTask::canPause()
{
    return s_current && s_whole == 0 && QThread::currentThread()->loopLevel() == s_current->m_loopLevel;
}

bool BackgroundTask::pause(int time)
{
    BackgroundTask *task = s_current;
    if (!task->m_cancelled) {
        task->m_timer.start(time);
        task->leave();
    }
    return !task->m_cancelled;
}

/// The first function on the stack of the work. It never returns.
void BackgroundTask::begin()
{
    BackgroundTask *task = s_current;
#ifdef VARNEL_STACK_CHECKS
    __sanitizer_finish_switch_fiber(nullptr, &task->m_context->callerStack, &task->m_context->callerSize);
#endif
    try {
        task->m_work();
    } catch (...) {
        task->m_exception = std::current_exception();
    }
    task->m_done = true;
    task->leave();
    qFatal("BackgroundTask::begin: entered after its end"); // a return would end the program without a word
}

/// Goes on with the work, and returns when it waits or has ended.
void BackgroundTask::enter()
{
    m_timer.stop();
    BackgroundTask *outer = std::exchange(s_current, this);
    m_loopLevel = QThread::currentThread()->loopLevel();
    m_entered = true;
    std::swap(HandledExceptions::current(), m_context->exceptions);
#ifdef VARNEL_STACK_CHECKS
    void *frames = nullptr;
    __sanitizer_start_switch_fiber(&frames, m_context->stack.begin(), StackSize);
#endif
    ::swapcontext(&m_context->caller, &m_context->work);
#ifdef VARNEL_STACK_CHECKS
    __sanitizer_finish_switch_fiber(frames, nullptr, nullptr);
#endif
    std::swap(HandledExceptions::current(), m_context->exceptions);
    m_entered = false;
    s_current = outer;
    if (m_done)
        finish();
}

/// The last action with this object: a receiver of ended() may delete it.
void BackgroundTask::finish()
{
    m_context.reset();
    m_work = {};
    const std::exception_ptr exception = std::exchange(m_exception, {});
    Q_EMIT ended();
    if (exception)
        std::rethrow_exception(exception);
}

/// Returns to the caller of enter().
void BackgroundTask::leave()
{
    Context &context = *m_context;
#ifdef VARNEL_STACK_CHECKS
    __sanitizer_start_switch_fiber(m_done ? nullptr : &context.workFrames, context.callerStack, context.callerSize);
#endif
    ::swapcontext(&context.work, &context.caller);
#ifdef VARNEL_STACK_CHECKS
    __sanitizer_finish_switch_fiber(context.workFrames, &context.callerStack, &context.callerSize);
#endif
}

#include "backgroundtask.h"
#include <ucontext.h>

#if defined(__SANITIZE_ADDRESS__)
#define VARNEL_STACK_CHECKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VARNEL_STACK_CHECKS 1
#endif
#endif

#ifdef VARNEL_STACK_CHECKS
#include <sanitizer/common_interface_defs.h>
#endif

namespace {
constexpr size_t StackSize = size_t(1) << 20; // touched only as far as it is used
}

struct BackgroundTask::Context
{
    ucontext_t work{};
    ucontext_t caller{};
    std::unique_ptr<char[]> stack{new char[StackSize]};
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
    blockSignals(true);
    cancel();
}

void BackgroundTask::run(const std::function<void()> &work)
{
    cancel();
    m_work = work;
    m_done = m_cancelled = false;
    m_context = std::make_unique<Context>();
    ::getcontext(&m_context->work);
    m_context->work.uc_stack.ss_sp = m_context->stack.get();
    m_context->work.uc_stack.ss_size = StackSize;
    m_context->work.uc_link = nullptr;
    ::makecontext(&m_context->work, &BackgroundTask::begin, 0);
    enter();
}

void BackgroundTask::cancel()
{
    m_cancelled = m_cancelled || isActive();
    while (isActive() && !isCurrent())
        enter();
}

void BackgroundTask::wake()
{
    if (m_timer.isActive())
        m_timer.start(0);
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
}

/// Goes on with the work, and returns when it waits or has ended.
void BackgroundTask::enter()
{
    m_timer.stop();
    BackgroundTask *outer = std::exchange(s_current, this);
#ifdef VARNEL_STACK_CHECKS
    void *frames = nullptr;
    __sanitizer_start_switch_fiber(&frames, m_context->stack.get(), StackSize);
#endif
    ::swapcontext(&m_context->caller, &m_context->work);
#ifdef VARNEL_STACK_CHECKS
    __sanitizer_finish_switch_fiber(frames, nullptr, nullptr);
#endif
    s_current = outer;
    if (!m_done)
        return;
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

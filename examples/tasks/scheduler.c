/* A task that does not run has its registers on its own stack: the processor puts half of them there when an exception
   begins, PendSV_Handler the other half. To switch is to exchange the stack pointer between the two. */
#include "scheduler.h"

#define SYSTICK_CONTROL (*(volatile uint32_t *)0xE000E010u)
#define SYSTICK_RELOAD (*(volatile uint32_t *)0xE000E014u)
#define INTERRUPT_CONTROL (*(volatile uint32_t *)0xE000ED04u)
#define PEND_SWITCH (1u << 28)

enum { MOST_TASKS = 4 };

static struct task program; /* the first task has its stack already */
static struct task *tasks[MOST_TASKS] = {&program};
static uint32_t count = 1;
static uint32_t current;

/* Where a task begins. */
static void task_begin(void (*work)(void))
{
    work();
    for (;;)
        task_yield();
}

void task_add(struct task *task, void (*work)(void))
{
    uint32_t *top = task->stack + STACK_WORDS;
    *--top = 1u << 24;                   /* xPSR: Thumb state */
    *--top = (uint32_t)task_begin & ~1u; /* pc */
    for (int i = 0; i < 5; ++i)          /* lr, r12, r3, r2, r1 */
        *--top = 0;
    *--top = (uint32_t)work;    /* r0, the first argument */
    for (int i = 0; i < 8; ++i) /* r11 to r4 */
        *--top = 0;
    task->top = top;
    tasks[count] = task;
    ++count;
}

void task_switch_every(uint32_t processor_clocks)
{
    SYSTICK_RELOAD = processor_clocks - 1;
    SYSTICK_CONTROL = 7; /* on, with interrupt, at the processor's clock */
}

void task_yield(void)
{
    INTERRUPT_CONTROL = PEND_SWITCH;
    __asm__ volatile("dsb\n isb" ::: "memory");
}

void SysTick_Handler(void)
{
    INTERRUPT_CONTROL = PEND_SWITCH;
}

/* Called by PendSV_Handler: from the stack of the task that has run to that of the next one. */
__attribute__((used)) static uint32_t *next_stack(uint32_t *top)
{
    tasks[current]->top = top;
    current = current + 1 < count ? current + 1 : 0;
    return tasks[current]->top;
}

__attribute__((naked)) void PendSV_Handler(void)
{
    __asm__ volatile("push {r4-r11}\n"
                     "mov r0, sp\n"
                     "push {r3, lr}\n" /* the two keep the stack aligned */
                     "bl next_stack\n"
                     "pop {r3, lr}\n"
                     "mov sp, r0\n"
                     "pop {r4-r11}\n"
                     "bx lr\n");
}

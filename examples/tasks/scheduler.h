/* A scheduler for tasks that share the processor. */
#ifndef SCHEDULER_H
#define SCHEDULER_H

#include <stdint.h>

enum { STACK_WORDS = 128 };

struct task
{
    uint32_t *top; /* of the stack, while the task does not run */
    uint32_t stack[STACK_WORDS];
};

/* Adds a task. The program itself is the first task. */
void task_add(struct task *task, void (*work)(void));

/* From now on the tasks take turns, so many times per second. */
void task_switch_every(uint32_t processor_clocks);

/* Lets the next task run now. */
void task_yield(void);

#endif

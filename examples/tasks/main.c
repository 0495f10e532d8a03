/* Two tasks: one blinks, one reports. */
#include "scheduler.h"
#include "uart.h"

#define LAMPS (*(volatile uint32_t *)0x40028000u)

static struct task blinker;
static volatile uint32_t changes;
volatile uint32_t fault; /* set it to 1 in the debugger: the next step of the blinker causes a fault */

static void wait(uint32_t turns)
{
    for (uint32_t i = 0; i < turns; ++i)
        task_yield();
}

static void lamp_toggle(void)
{
    LAMPS = changes & 1;
    changes = changes + 1;
    if (fault)
        *(volatile uint32_t *)0x60000000u = changes;
}

static void blink(void)
{
    for (;;) {
        lamp_toggle();
        wait(100);
    }
}

int main(void)
{
    uint32_t reported = 0;
    uart_init();
    uart_text("tasks\n");
    task_add(&blinker, blink);
    task_switch_every(25000); /* a thousandth of a second */
    for (;;) {
        if (changes != reported) {
            reported = changes;
            uart_text("changes ");
            uart_number((int32_t)reported);
            uart_text("\n");
        }
        task_yield();
    }
}

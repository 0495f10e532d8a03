#include "board.h"

#define CORE_CLOCK 25000000u /* Hz */

#define SYSTICK_CONTROL (*(volatile uint32_t *)0xe000e010u)
#define SYSTICK_RELOAD (*(volatile uint32_t *)0xe000e014u)
#define SYSTICK_VALUE (*(volatile uint32_t *)0xe000e018u)

enum { SYSTICK_ENABLE = 1, SYSTICK_INTERRUPT = 2, SYSTICK_CORE_CLOCK = 4 };

struct uart
{
    volatile uint32_t data;
    volatile uint32_t state;
    volatile uint32_t control;
    volatile uint32_t interrupt;
    volatile uint32_t divider;
};

#define UART0 ((struct uart *)0x40004000u)

enum { UART_SEND_FULL = 1, UART_RECEIVED = 2 }; /* bits of the state */
enum { UART_SEND = 1, UART_RECEIVE = 2 }; /* bits of the control register */

volatile uint32_t board_ticks;

void board_init(void)
{
    UART0->divider = 16;
    UART0->control = UART_SEND | UART_RECEIVE;
    SYSTICK_RELOAD = CORE_CLOCK / TICKS_PER_SECOND - 1;
    SYSTICK_VALUE = 0;
    SYSTICK_CONTROL = SYSTICK_ENABLE | SYSTICK_INTERRUPT | SYSTICK_CORE_CLOCK;
}

void board_sleep(void)
{
    __asm volatile("wfi" ::: "memory");
}

void SysTick_Handler(void)
{
    ++board_ticks;
}

void uart_put(char c)
{
    while (UART0->state & UART_SEND_FULL)
        ;
    UART0->data = (uint8_t)c;
}

void uart_text(const char *text)
{
    while (*text)
        uart_put(*text++);
}

void uart_number(uint32_t value)
{
    char digits[10];
    int count = 0;
    do {
        digits[count++] = (char)('0' + value % 10);
        value /= 10;
    } while (value);
    while (count)
        uart_put(digits[--count]);
}

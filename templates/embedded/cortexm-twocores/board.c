#include "board.h"

#define CORE_CLOCK 20000000u /* Hz */

#define SYSTICK_CONTROL (*(volatile uint32_t *)0xe000e010u)
#define SYSTICK_RELOAD (*(volatile uint32_t *)0xe000e014u)
#define SYSTICK_VALUE (*(volatile uint32_t *)0xe000e018u)

enum { SYSTICK_ENABLE = 1, SYSTICK_CORE_CLOCK = 4, SYSTICK_REACHED_ZERO = 1 << 16 };

#define SECOND_CORE_VECTORS (*(volatile uint32_t *)0x50021114u)
#define CORES_THAT_WAIT (*(volatile uint32_t *)0x50021118u)

struct uart
{
    volatile uint32_t data;
    volatile uint32_t state;
    volatile uint32_t control;
    volatile uint32_t interrupt;
    volatile uint32_t divider;
};

#define UART0 ((struct uart *)0x50200000u)

enum { UART_SEND_FULL = 1 }; /* a bit of the state */
enum { UART_SEND = 1 };      /* a bit of the control register */

extern const uint32_t second_vectors[];

void board_init(void)
{
    UART0->divider = 16;
    UART0->control = UART_SEND;
    SYSTICK_RELOAD = CORE_CLOCK / 2 - 1;
    SYSTICK_VALUE = 0;
    SYSTICK_CONTROL = SYSTICK_ENABLE | SYSTICK_CORE_CLOCK;
}

void board_start_second_core(void)
{
    SECOND_CORE_VECTORS = (uint32_t)second_vectors;
    CORES_THAT_WAIT = 0;
}

void board_wait(void)
{
    while (!(SYSTICK_CONTROL & SYSTICK_REACHED_ZERO))
        ;
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

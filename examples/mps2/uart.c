#include "uart.h"

struct uart
{
    volatile uint32_t data;
    volatile uint32_t state;
    volatile uint32_t control;
    volatile uint32_t interrupt;
    volatile uint32_t divider;
};

#define UART0 ((struct uart *)0x40004000u)

enum { STATE_SEND_FULL = 1, STATE_RECEIVED = 2 };
enum { CONTROL_SEND = 1, CONTROL_RECEIVE = 2 };

void uart_init(void)
{
    UART0->divider = 16;
    UART0->control = CONTROL_SEND | CONTROL_RECEIVE;
}

void uart_put(char c)
{
    while (UART0->state & STATE_SEND_FULL)
        ;
    UART0->data = (uint8_t)c;
}

void uart_text(const char *text)
{
    while (*text)
        uart_put(*text++);
}

void uart_number(int32_t value)
{
    char digits[10];
    int count = 0;
    uint32_t rest = value < 0 ? 0u - (uint32_t)value : (uint32_t)value;
    if (value < 0)
        uart_put('-');
    do {
        digits[count++] = (char)('0' + rest % 10);
        rest /= 10;
    } while (rest);
    while (count)
        uart_put(digits[--count]);
}

void uart_tenths(int32_t value)
{
    if (value < 0) {
        uart_put('-');
        value = -value;
    }
    uart_number(value / 10);
    uart_put('.');
    uart_put((char)('0' + value % 10));
}

int uart_get(void)
{
    return UART0->state & STATE_RECEIVED ? (int)(UART0->data & 0xff) : -1;
}

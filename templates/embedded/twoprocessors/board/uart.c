#include "uart.h"

struct uart
{
    volatile uint32_t data;
    volatile uint32_t state;
    volatile uint32_t control;
    volatile uint32_t interrupt;
    volatile uint32_t divider;
};

enum { STATE_SEND_FULL = 1, STATE_RECEIVED = 2 };
enum { CONTROL_SEND = 1, CONTROL_RECEIVE = 2 };

static struct uart *const uarts[UART_COUNT] = {(struct uart *)0x40004000u, (struct uart *)0x40005000u};

void uart_init(void)
{
    for (int port = 0; port < UART_COUNT; ++port) {
        uarts[port]->divider = 16;
        uarts[port]->control = CONTROL_SEND | CONTROL_RECEIVE;
    }
}

void uart_put(int port, char c)
{
    while (uarts[port]->state & STATE_SEND_FULL)
        ;
    uarts[port]->data = (uint8_t)c;
}

void uart_text(int port, const char *text)
{
    while (*text)
        uart_put(port, *text++);
}

void uart_number(int port, uint32_t value)
{
    char digits[10];
    int count = 0;
    do {
        digits[count++] = (char)('0' + value % 10);
        value /= 10;
    } while (value);
    while (count)
        uart_put(port, digits[--count]);
}

char uart_get(int port)
{
    while (!(uarts[port]->state & STATE_RECEIVED))
        ;
    return (char)uarts[port]->data;
}

uint32_t uart_get_number(int port)
{
    uint32_t value = 0;
    for (char c = uart_get(port); c >= '0' && c <= '9'; c = uart_get(port))
        value = 10 * value + (uint32_t)(c - '0');
    return value;
}

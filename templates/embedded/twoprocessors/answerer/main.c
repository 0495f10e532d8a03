#include "uart.h"

/* Answers each number that the other board sends with its square. */
int main(void)
{
    uart_init();
    uart_text(CONSOLE, "answering\n");
    uart_put(LINK, '!');
    for (;;) {
        const uint32_t number = uart_get_number(LINK);
        const uint32_t answer = number * number;
        uart_number(LINK, answer);
        uart_put(LINK, '\n');
        uart_number(CONSOLE, number);
        uart_text(CONSOLE, " was asked\n");
    }
}

#include "uart.h"

/* Sends numbers to the other board, and shows its answers. */
int main(void)
{
    uart_init();
    uart_text(CONSOLE, "asking\n");
    uart_get(LINK); /* the other board is ready */
    for (uint32_t number = 1;; ++number) {
        uart_number(LINK, number);
        uart_put(LINK, '\n');
        const uint32_t answer = uart_get_number(LINK);
        uart_number(CONSOLE, number);
        uart_text(CONSOLE, " squared is ");
        uart_number(CONSOLE, answer);
        uart_put(CONSOLE, '\n');
        for (volatile uint32_t pause = 0; pause < 10000000; ++pause)
            ;
    }
}

#include "board.h"

/* Writes the time since the start to the serial port, once per second. */
int main(void)
{
    uint32_t seconds = 0;
    board_init();
    uart_text("started\n");
    for (;;) {
        while (board_ticks < (seconds + 1) * TICKS_PER_SECOND)
            board_sleep();
        ++seconds;
        uart_number(seconds);
        uart_text(" s\n");
    }
}

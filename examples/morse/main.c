/* Sends a text with a lamp, and writes its dots and dashes to the serial port. Characters from the serial port are sent
 * after it. */
#include "board.h"
#include "lamp.h"
#include "uart.h"

static struct lamp lamp;
static volatile char sign; /* started by the interrupt, not yet written to the serial port */

void board_tick(void)
{
    const char begun = lamp_step(&lamp);
    if (begun)
        sign = begun;
}

static void send(const char *text)
{
    board_lock();
    while (*text)
        lamp_send(&lamp, *text++);
    board_unlock();
}

int main(void)
{
    send("CQ DE VARNEL ");
    board_init();
    uart_text("morse\n");
    for (;;) {
        board_sleep();
        const int key = uart_get();
        if (key >= 0)
            send((const char[]){(char)key, 0});
        if (sign) {
            uart_put(sign);
            sign = 0;
        }
        if (lamp_is_idle(&lamp)) {
            uart_put('\n');
            send("CQ DE VARNEL ");
        }
    }
}

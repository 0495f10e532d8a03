/* The devices of the board that this program uses. */
#ifndef BOARD_H
#define BOARD_H

#include <stdint.h>

#define TICKS_PER_SECOND 10u

/* Number of ticks since the start of the program. */
extern volatile uint32_t board_ticks;

/* Sets up the serial port and the tick. */
void board_init(void);

/* Sleeps until the next interrupt. */
void board_sleep(void);

void uart_put(char c);
void uart_text(const char *text);
void uart_number(uint32_t value);

#endif

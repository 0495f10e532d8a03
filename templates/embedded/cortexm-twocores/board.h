/* The devices of the board that this program uses. */
#ifndef BOARD_H
#define BOARD_H

#include <stdint.h>

/* Sets up the serial port. */
void board_init(void);

/* The second core begins at second_main(). */
void board_start_second_core(void);

/* Waits for half a second. */
void board_wait(void);

void uart_put(char c);
void uart_text(const char *text);
void uart_number(uint32_t value);

#endif

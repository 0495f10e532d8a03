/* The serial ports of the board. */
#ifndef UART_H
#define UART_H

#include <stdint.h>

enum { CONSOLE, LINK, UART_COUNT }; /* the target console shows the first, the second leads to the other board */

/* Sets up both ports. */
void uart_init(void);

void uart_put(int port, char c);
void uart_text(int port, const char *text);
void uart_number(int port, uint32_t value);

/* Waits for the next character. */
char uart_get(int port);

/* Reads decimal digits up to the next other character. */
uint32_t uart_get_number(int port);

#endif

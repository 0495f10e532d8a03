/* The first serial port. */
#ifndef UART_H
#define UART_H

#include <stdint.h>

void uart_init(void);
void uart_put(char c);
void uart_text(const char *text);
void uart_number(int32_t value);

/* A number of tenths with its decimal point: 215 as "21.5". */
void uart_tenths(int32_t value);

/* The next received character, or -1. */
int uart_get(void);

#endif

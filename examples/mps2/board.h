/* The devices of an MPS2 board with a Cortex-M3 that the examples use. */
#ifndef BOARD_H
#define BOARD_H

#include <stdint.h>

#define CORE_CLOCK 25000000u /* Hz */
#define TICKS_PER_SECOND 100u

/* Number of ticks since the start of the program. */
extern volatile uint32_t board_ticks;

/* Sets up the serial port and the tick. */
void board_init(void);

/* Sleeps until the next interrupt. */
void board_sleep(void);

/* Code between the two calls is not interrupted. */
void board_lock(void);
void board_unlock(void);

/* Bits 0 and 1 are the two lamps. */
void board_set_lamps(uint32_t lamps);
uint32_t board_lamps(void);

/* Called by the interrupt of the tick; a program can define it. */
void board_tick(void);

#endif

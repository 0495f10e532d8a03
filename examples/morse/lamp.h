/* Sends letters in Morse code with a lamp; each tick is one step. */
#ifndef LAMP_H
#define LAMP_H

#include <stdbool.h>
#include <stdint.h>

enum lamp_state { LAMP_IDLE, LAMP_LIT, LAMP_GAP, LAMP_LETTER_GAP, LAMP_WORD_GAP };

struct lamp
{
    enum lamp_state state;
    uint32_t wait;    /* ticks until the state changes */
    const char *code; /* the remaining dots and dashes of the letter */
    char queue[64];   /* ring buffer of letters */
    uint32_t head;    /* number of letters read */
    uint32_t tail;    /* number of letters written */
};

/* Appends a letter to the queue; false if it is full. */
bool lamp_send(struct lamp *lamp, char letter);

/* Whether all letters have been sent. */
bool lamp_is_idle(const struct lamp *lamp);

/* Performs one tick. Returns '.', '-', ' ' or '/' when one starts, else 0. */
char lamp_step(struct lamp *lamp);

#endif

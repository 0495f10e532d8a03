/* Sends letters by a lamp, a step for each tick. */
#ifndef LAMP_H
#define LAMP_H

#include <stdbool.h>
#include <stdint.h>

enum lamp_state { LAMP_IDLE, LAMP_LIT, LAMP_GAP, LAMP_LETTER_GAP, LAMP_WORD_GAP };

struct lamp
{
    enum lamp_state state;
    uint32_t wait;    /* ticks until the state changes */
    const char *code; /* what of the letter is still to come */
    char queue[64];   /* letters, as a ring */
    uint32_t head;    /* letters taken out */
    uint32_t tail;    /* letters put in */
};

/* Puts a letter behind the others; false if there is no room. */
bool lamp_send(struct lamp *lamp, char letter);

/* Whether all was sent. */
bool lamp_is_idle(const struct lamp *lamp);

/* Goes on by a tick. Returns '.', '-', ' ' or '/' when one begins, else 0. */
char lamp_step(struct lamp *lamp);

#endif

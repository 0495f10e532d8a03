#include "lamp.h"
#include "board.h"
#include "code.h"

enum { DOT = 6, DASH = 3 * DOT, LETTER_GAP = 2 * DOT, WORD_GAP = 4 * DOT };

bool lamp_send(struct lamp *lamp, char letter)
{
    if (lamp->tail - lamp->head == sizeof lamp->queue)
        return false;
    lamp->queue[lamp->tail++ % sizeof lamp->queue] = letter;
    return true;
}

bool lamp_is_idle(const struct lamp *lamp)
{
    return lamp->state == LAMP_IDLE && lamp->head == lamp->tail;
}

static char enter(struct lamp *lamp, enum lamp_state state, uint32_t wait, char sign)
{
    lamp->state = state;
    lamp->wait = wait;
    board_set_lamps(state == LAMP_LIT);
    return sign;
}

static char next_sign(struct lamp *lamp)
{
    const char sign = *lamp->code++;
    return enter(lamp, LAMP_LIT, sign == '.' ? DOT : DASH, sign);
}

static char next_letter(struct lamp *lamp)
{
    if (lamp->head == lamp->tail)
        return enter(lamp, LAMP_IDLE, 0, 0);
    const char letter = lamp->queue[lamp->head++ % sizeof lamp->queue];
    lamp->code = code_of(letter);
    return *lamp->code ? next_sign(lamp) : enter(lamp, LAMP_WORD_GAP, WORD_GAP, '/');
}

char lamp_step(struct lamp *lamp)
{
    if (lamp->wait > 0 && --lamp->wait > 0)
        return 0;
    switch (lamp->state) {
    case LAMP_LIT:
        return enter(lamp, LAMP_GAP, DOT, 0);
    case LAMP_GAP:
        return *lamp->code ? next_sign(lamp) : enter(lamp, LAMP_LETTER_GAP, LETTER_GAP, ' ');
    default:
        return next_letter(lamp);
    }
}

/* The memory through which the cores exchange messages. */
#ifndef MAILBOX_H
#define MAILBOX_H

#include <stdint.h>

struct mailbox
{
    volatile uint32_t request; /* 0 when there is none */
    volatile uint32_t answer;  /* 0 when there is none */
};

extern struct mailbox mailbox;

#endif

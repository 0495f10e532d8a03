/* A simulated room with a heater and changing weather. */
#ifndef ROOM_H
#define ROOM_H

#include <stdint.h>

struct room
{
    int32_t temperature; /* millidegrees */
    int32_t outside;     /* millidegrees */
    uint32_t time;       /* tenths of a second */
};

void room_init(struct room *room);

/* Simulates a tenth of a second with the heater at @p power per mille. */
void room_step(struct room *room, int32_t power);

#endif

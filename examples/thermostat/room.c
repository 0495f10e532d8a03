#include "room.h"

enum { HEATING = 400, LOSS = 50, WEATHER_STEP = 300 };

static const int8_t weather[] = {4, 5, 7, 9, 10, 9, 6, 4, 2, 0, -2, 1};

void room_init(struct room *room)
{
    room->temperature = 15000;
    room->outside = 0;
    room->time = 0;
}

void room_step(struct room *room, int32_t power)
{
    const uint32_t hour = room->time++ / WEATHER_STEP % (sizeof weather / sizeof weather[0]);
    room->outside = weather[hour] * 1000;
    room->temperature += power * HEATING / 10000 - (room->temperature - room->outside) * LOSS / 100000;
}

#include "regulator.h"

static int32_t limited(int32_t value, int32_t lowest, int32_t highest)
{
    return value < lowest ? lowest : value > highest ? highest : value;
}

void regulator_init(struct regulator *regulator, int32_t target)
{
    regulator->target = target;
    regulator->proportional = 180;
    regulator->integral = 6;
    regulator->sum = 0;
    regulator->power = 0;
}

int32_t regulator_step(struct regulator *regulator, int32_t temperature)
{
    const int32_t error = regulator->target - temperature;
    const int32_t sum = regulator->sum + error;
    const int32_t wanted = regulator->proportional * error / 1000 + regulator->integral * (sum / 10) / 1000;
    regulator->power = limited(wanted, 0, 1000);
    if (regulator->power == wanted) /* at a limit the sum is not changed, to avoid integral windup */
        regulator->sum = sum;
    return regulator->power;
}

/* A proportional-integral regulator with integer arithmetic. */
#ifndef REGULATOR_H
#define REGULATOR_H

#include <stdint.h>

struct regulator
{
    int32_t target;       /* millidegrees */
    int32_t proportional; /* per mille of power per degree */
    int32_t integral;     /* per mille of power per degree and second */
    int32_t sum;          /* of errors: millidegrees times tenths of a second */
    int32_t power;        /* the last result, in per mille */
};

void regulator_init(struct regulator *regulator, int32_t target);

/* The power for the next tenth of a second, 0 to 1000, when @p temperature is measured. */
int32_t regulator_step(struct regulator *regulator, int32_t temperature);

#endif

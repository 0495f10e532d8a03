#include "library.h"

unsigned greatest_common_divisor(unsigned a, unsigned b)
{
    while (b != 0) {
        const unsigned rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

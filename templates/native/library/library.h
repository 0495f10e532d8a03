#ifndef LIBRARY_H
#define LIBRARY_H

/* The greatest common divisor of two numbers, or their sum if one of them is 0. */
unsigned greatest_common_divisor(unsigned a, unsigned b);

#endif

/* Text with the functions of a C library: printf, malloc, qsort. */
#include "uart.h"
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int by_length(const void *left, const void *right)
{
    return (int)strlen(*(char *const *)left) - (int)strlen(*(char *const *)right);
}

int main(void)
{
    uart_init();
    const char *const words[] = {"regulator", "lamp", "thermometer", "fan"};
    const size_t count = sizeof words / sizeof words[0];
    const char **sorted = malloc(sizeof words);
    memcpy(sorted, words, sizeof words);
    qsort(sorted, count, sizeof *sorted, by_length);
    for (size_t i = 0; i < count; ++i)
        printf("%2u. %-12s %5.1f %%\n", (unsigned)(i + 1), sorted[i], 100.0 * (double)strlen(sorted[i]) / 11.0);
    free(sorted);
    for (;;)
        ;
}

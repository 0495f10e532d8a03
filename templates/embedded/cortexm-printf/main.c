#include <stdio.h>

/* The output is sent to the debugger: the target console shows it. */
int main(void)
{
    setvbuf(stdout, NULL, _IOLBF, 0); /* show each line at once */
    puts("started");
    for (int i = 1; i <= 10; ++i)
        printf("%2d squared is %3d\n", i, i * i);
    return 0;
}

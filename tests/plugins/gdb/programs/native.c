#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct Point
{
    int x;
    int y;
};

struct Point origin = {3, 4};
volatile int loops;
volatile int stay = 1;

int twice(int value)
{
    int result = value * 2;
    return result;
}

void spin(void)
{
    while (stay)
        loops = loops + 1;
}

/* Writes more than the system buffers for a terminal, before main. */
__attribute__((constructor)) static void fill(void)
{
    const char *lines = getenv("FILL");
    for (int i = lines ? atoi(lines) : 0; i > 0; --i)
        puts("a line of text that is written before main");
}

int main(int count, char **arguments)
{
    int sum = 0;
    const char *command = count > 1 ? arguments[1] : "";
    puts("ready");
    fflush(stdout);
    for (int i = 0; i < 4; ++i)
        sum = sum + twice(i);
    origin.x = sum;
    if (strcmp(command, "spin") == 0)
        spin();
    if (strcmp(command, "crash") == 0)
        *(volatile int *)0 = 1;
    if (strcmp(command, "echo") == 0) {
        char line[32];
        if (fgets(line, sizeof line, stdin))
            printf("got %s", line);
    }
    if (strcmp(command, "read") == 0) {
        int letters = 0;
        while (getchar() != EOF)
            ++letters;
        printf("%d letters, %s\n", letters, getenv("GREETING") ? getenv("GREETING") : "none");
    }
    return 7;
}

#include <stdio.h>

int main(void)
{
    puts("Built by make");
    return 0;
}

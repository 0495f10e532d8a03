#include <stdio.h>

int sum;

int main(void)
{
    for (int number = 1; number <= 10; ++number) {
        sum += number;
        printf("The sum is %d.\n", sum);
    }
    return 0;
}

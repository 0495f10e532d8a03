#include <stdint.h>

#define UART_DATA (*(volatile uint32_t *)0x40004000)
#define UART_STATE (*(volatile uint32_t *)0x40004004)
#define UART_CTRL (*(volatile uint32_t *)0x40004008)
#define UART_BAUDDIV (*(volatile uint32_t *)0x40004010)
#define SYSTICK ((volatile uint32_t *)0xE000E010)

struct Point
{
    int x;
    int y;
};

volatile uint32_t ticks;
volatile uint32_t loops;
volatile int command;
struct Point origin = {3, 4};
const char banner[] = "ready\n";
uint8_t buffer[32] = {1, 2, 3, 4, 5, 6, 7, 8};

void tick(void)
{
    ticks = ticks + 1;
}

static void put(char letter)
{
    while (UART_STATE & 1) {
    }
    UART_DATA = (uint32_t)letter;
}

void print(const char *text)
{
    while (*text)
        put(*text++);
}

__attribute__((noinline)) int twice(int value)
{
    int result = value * 2;
    return result;
}

__attribute__((noinline)) void spin(void)
{
    for (;;)
        loops = loops + 1;
}

void crash(void)
{
    *(volatile uint32_t *)0x60000000 = 1;
}

void echo(void)
{
    for (;;) {
        if (UART_STATE & 2)
            put((char)(UART_DATA + 1));
    }
}

void doze(void)
{
    for (;;) {
        __asm__ volatile("wfi");
        loops = loops + 1;
    }
}

static int semihosting(int operation, const void *argument)
{
    register int r0 __asm__("r0") = operation;
    register const void *r1 __asm__("r1") = argument;
    __asm__ volatile("bkpt 0xab" : "+r"(r0) : "r"(r1) : "memory");
    return r0;
}

/* Writes to the standard output as a C library does. */
static void write_stream(const char *text, uint32_t length)
{
    static const char name[] = ":tt";
    const uint32_t open[] = {(uint32_t)name, 4, sizeof name - 1};
    const uint32_t write[] = {(uint32_t)semihosting(1, open), (uint32_t)text, length};
    semihosting(5, write);
}

void report(void)
{
    static const uint32_t end[] = {0x20026, 5};
    semihosting(4, "by semihosting\n");
    write_stream("by a stream\n", 12);
    semihosting(0x20, end);
}

#if defined CORE0
#define SECOND_CORE_VECTORS (*(volatile uint32_t *)0x50021114)
#define SECOND_CORE_WAITS (*(volatile uint32_t *)0x50021118)

/* The first core starts the second one. */
int main(void)
{
    SECOND_CORE_VECTORS = 0x10200000;
    SECOND_CORE_WAITS = 0;
    spin();
    return 0;
}
#elif defined CORE1
volatile uint32_t cores;

int main(void)
{
    for (;;)
        cores = cores + 1;
}
#else
int main(void)
{
    UART_BAUDDIV = 16;
    UART_CTRL = 3;
    print(banner);
    int sum = 0;
    for (int i = 0; i < 4; ++i)
        sum = sum + twice(i);
    origin.x = sum;
    if (command == 1 || command == 6)
        crash();
    if (command == 2)
        echo();
    if (command == 3) {
        SYSTICK[1] = 250000;
        SYSTICK[0] = 7;
        doze();
    }
    if (command == 5)
        report();
    spin(); /* for ever */
    return sum;
}
#endif

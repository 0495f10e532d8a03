#include "board.h"

#define TIMER_CLOCK 10000000u /* Hz */

#define TIMER_VALUE_LOW (*(volatile uint32_t *)0x0200bff8u)
#define TIMER_VALUE_HIGH (*(volatile uint32_t *)0x0200bffcu)
#define TIMER_COMPARE_LOW (*(volatile uint32_t *)0x02004000u)
#define TIMER_COMPARE_HIGH (*(volatile uint32_t *)0x02004004u)

#define UART_DATA (*(volatile uint8_t *)0x10000000u)
#define UART_STATE (*(volatile uint8_t *)0x10000005u)

enum { UART_SEND_EMPTY = 0x20 };                     /* bit of the state */
enum { MSTATUS_INTERRUPTS = 0x8, MIE_TIMER = 0x80 }; /* bits of the registers mstatus and mie */

#define CAUSE_TIMER 0x80000007u /* value of the register mcause */

volatile uint32_t board_ticks;

static uint64_t next_tick;

static uint64_t timer_value(void)
{
    uint32_t high;
    uint32_t low;
    do {
        high = TIMER_VALUE_HIGH;
        low = TIMER_VALUE_LOW;
    } while (high != TIMER_VALUE_HIGH);
    return (uint64_t)high << 32 | low;
}

static void set_next_tick(void)
{
    next_tick += TIMER_CLOCK / TICKS_PER_SECOND;
    TIMER_COMPARE_HIGH = 0xffffffffu; /* no interrupt between the writes */
    TIMER_COMPARE_LOW = (uint32_t)next_tick;
    TIMER_COMPARE_HIGH = (uint32_t)(next_tick >> 32);
}

void board_init(void)
{
    next_tick = timer_value();
    set_next_tick();
    __asm volatile("csrs mie, %0" ::"r"(MIE_TIMER));
    __asm volatile("csrs mstatus, %0" ::"r"(MSTATUS_INTERRUPTS));
}

void board_sleep(void)
{
    __asm volatile("wfi" ::: "memory");
}

/* All interrupts and faults arrive here. */
__attribute__((interrupt("machine"), aligned(4))) void trap_handler(void)
{
    uint32_t cause;
    __asm volatile("csrr %0, mcause" : "=r"(cause));
    while (cause != CAUSE_TIMER)
        ; /* an unexpected fault: the register mepc has its address */
    ++board_ticks;
    set_next_tick();
}

void uart_put(char c)
{
    while (!(UART_STATE & UART_SEND_EMPTY))
        ;
    UART_DATA = (uint8_t)c;
}

void uart_text(const char *text)
{
    while (*text)
        uart_put(*text++);
}

void uart_number(uint32_t value)
{
    char digits[10];
    int count = 0;
    do {
        digits[count++] = (char)('0' + value % 10);
        value /= 10;
    } while (value);
    while (count)
        uart_put(digits[--count]);
}

/* The compiler generates calls of these two functions. */
__attribute__((optimize("no-tree-loop-distribute-patterns"))) void *memset(void *to, int value, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i)
        ((uint8_t *)to)[i] = (uint8_t)value;
    return to;
}

__attribute__((optimize("no-tree-loop-distribute-patterns"))) void *memcpy(void *to, const void *from,
                                                                           unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i)
        ((uint8_t *)to)[i] = ((const uint8_t *)from)[i];
    return to;
}

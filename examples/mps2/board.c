#include "board.h"
#include "uart.h"

#define SYSTICK_CONTROL (*(volatile uint32_t *)0xe000e010u)
#define SYSTICK_RELOAD (*(volatile uint32_t *)0xe000e014u)
#define SYSTICK_VALUE (*(volatile uint32_t *)0xe000e018u)
#define LAMPS (*(volatile uint32_t *)0x40028000u)

enum { SYSTICK_ENABLE = 1, SYSTICK_INTERRUPT = 2, SYSTICK_CORE_CLOCK = 4 };

volatile uint32_t board_ticks;

void board_init(void)
{
    uart_init();
    SYSTICK_RELOAD = CORE_CLOCK / TICKS_PER_SECOND - 1;
    SYSTICK_VALUE = 0;
    SYSTICK_CONTROL = SYSTICK_ENABLE | SYSTICK_INTERRUPT | SYSTICK_CORE_CLOCK;
}

void board_sleep(void)
{
    __asm volatile("wfi" ::: "memory");
}

void board_lock(void)
{
    __asm volatile("cpsid i" ::: "memory");
}

void board_unlock(void)
{
    __asm volatile("cpsie i" ::: "memory");
}

void board_set_lamps(uint32_t lamps)
{
    LAMPS = lamps & 3;
}

uint32_t board_lamps(void)
{
    return LAMPS & 3;
}

__attribute__((weak)) void board_tick(void) {}

void SysTick_Handler(void)
{
    ++board_ticks;
    board_tick();
}

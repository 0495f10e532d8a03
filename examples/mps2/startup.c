/* The vector table, and the initialisation of memory between reset and main. */
#include "uart.h"

extern uint32_t load_data[], start_data[], end_data[], start_bss[], end_bss[], top_of_stack[];

int main(void);

void Reset_Handler(void)
{
    const uint32_t *from = load_data;
    for (uint32_t *to = start_data; to < end_data; ++to)
        *to = *from++;
    for (uint32_t *to = start_bss; to < end_bss; ++to)
        *to = 0;
    main();
    for (;;)
        ;
}

/* Unexpected fault: the stack has the address. */
void Fault_Handler(void)
{
    uart_text("\nfault\n");
    for (;;)
        ;
}

void Default_Handler(void)
{
    for (;;)
        ;
}

void PendSV_Handler(void) __attribute__((weak, alias("Default_Handler")));
void SysTick_Handler(void) __attribute__((weak, alias("Default_Handler")));

typedef void (*handler)(void);

/* The first entry is the stack pointer; those after the sixteenth are interrupts of the board. */
__attribute__((section(".vectors"), used)) static const handler vectors[16 + 32] = {
    (handler)top_of_stack, Reset_Handler,   Default_Handler, Fault_Handler,   Fault_Handler,   Fault_Handler,
    Fault_Handler,         Default_Handler, Default_Handler, Default_Handler, Default_Handler, Default_Handler,
    Default_Handler,       Default_Handler, PendSV_Handler,  SysTick_Handler,
};

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

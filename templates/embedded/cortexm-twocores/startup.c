/* The vector tables of both cores, and the initialisation of memory between reset and main. */
#include <stdint.h>

extern uint32_t load_data[], start_data[], end_data[], start_bss[], end_bss[];
extern uint32_t top_of_stack[], top_of_second_stack[];

int main(void);
void second_main(void);

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

/* Interrupts and faults without a handler stop here: the call stack shows where they came from. */
void Default_Handler(void)
{
    for (;;)
        ;
}

typedef void (*handler)(void);

/* The first entry is the stack pointer, the next fifteen are exceptions; the rest are interrupts of the board. */
__attribute__((section(".vectors"), used)) static const handler vectors[16 + 32] = {
    (handler)top_of_stack, Reset_Handler,   Default_Handler, Default_Handler, Default_Handler, Default_Handler,
    Default_Handler,       Default_Handler, Default_Handler, Default_Handler, Default_Handler, Default_Handler,
    Default_Handler,       Default_Handler, Default_Handler, Default_Handler,
};

/* The second core has its own stack, and finds the memory initialised. */
__attribute__((section(".second_vectors"), used)) const handler second_vectors[16 + 32] = {
    (handler)top_of_second_stack,
    second_main,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
    Default_Handler,
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

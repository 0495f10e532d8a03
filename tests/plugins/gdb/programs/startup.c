#include <stdint.h>

extern uint32_t dataStart[], dataEnd[], dataImage[], bssStart[], bssEnd[], stackTop[];
extern int main(void);
extern volatile int command;
extern void crash(void);
void tick(void);

#ifdef FILLER
/* In a section of its own before the data: the progress is reported within it and at the start of the data. */
__attribute__((section(".filler"), used)) static const char filler[FILLER] = {1};
#endif

void reset(void)
{
    uint32_t *from = dataImage;
    for (uint32_t *to = dataStart; to < dataEnd; ++to)
        *to = *from++;
    for (uint32_t *to = bssStart; to < bssEnd; ++to)
        *to = 0;
#ifdef HANG
    for (;;) {
    }
#endif
    main();
    for (;;) {
    }
}

void faultHandler(void)
{
    if (command == 6)
        crash();
    for (;;) {
    }
}

__attribute__((section(".vectors"), used)) static void *const vectors[16] = {
    stackTop, reset, faultHandler, faultHandler, faultHandler, faultHandler, faultHandler, 0,
    0, 0, 0, faultHandler, faultHandler, 0, faultHandler, tick,
};

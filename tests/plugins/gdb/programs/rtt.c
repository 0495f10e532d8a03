#include <stdint.h>

struct Buffer
{
    const char *name;
    char *start;
    uint32_t size;
    volatile uint32_t write;
    volatile uint32_t read;
    uint32_t flags;
};

/* Two buffers to the debugger and one to the program. The text is longer than the first. */
static char up[16];
static char other[16];
static char down[8];
struct Block
{
    char identifier[16];
    int32_t ups;
    int32_t downs;
    struct Buffer buffers[3];
} block;
volatile int command;

void tick(void) {}
void crash(void) {}

static void begin(void)
{
    static const char identifier[] = "TTR REGGES"; /* reversed: only the block itself has it in RAM */
    block.ups = 2;
    block.downs = 1;
    block.buffers[0] = (struct Buffer){"Terminal", up, sizeof up, 0, 0, 0};
    block.buffers[1] = (struct Buffer){"Other", other, sizeof other, 3, 0, 0};
    block.buffers[2] = (struct Buffer){"Terminal", down, sizeof down, 0, 0, 0};
    for (int i = 9; i >= 0; --i)
        block.identifier[i] = identifier[9 - i];
}

static void put(char letter)
{
    struct Buffer *buffer = &block.buffers[0];
    const uint32_t next = (buffer->write + 1) % sizeof up;
    while (next == buffer->read) {
    }
    up[buffer->write] = letter;
    buffer->write = next;
}

static int take(void)
{
    struct Buffer *buffer = &block.buffers[2];
    if (buffer->read == buffer->write)
        return -1;
    const char letter = down[buffer->read];
    buffer->read = (buffer->read + 1) % sizeof down;
    return letter;
}

int main(void)
{
    begin();
    for (const char *text = "ready: 0123456789abcdefghijklmnopqrstuvwxyz\n"; *text; ++text)
        put(*text); /* waits for the debugger */
    for (;;) {
        const int letter = take();
        if (letter >= 0)
            put(letter == '\n' ? '!' : (char)letter);
    }
}

/* A thermostat that heats a simulated room, and prints its state on the serial port. */
#include "board.h"
#include "regulator.h"
#include "room.h"
#include "uart.h"

struct sample
{
    uint32_t ticks;
    int32_t temperature;
    int32_t power;
};

enum { HISTORY = 32, FIRST_TARGET = 21000, STEP = 500 };

struct sample history[HISTORY]; /* ring buffer of the last samples */
uint32_t samples;               /* taken so far */

static struct room room;
static struct regulator regulator;

static void keep_sample(void)
{
    struct sample *sample = &history[samples++ % HISTORY];
    sample->ticks = board_ticks;
    sample->temperature = room.temperature;
    sample->power = regulator.power;
}

static void print_state(void)
{
    uart_text("room ");
    uart_tenths(room.temperature / 100);
    uart_text(" target ");
    uart_tenths(regulator.target / 100);
    uart_text(" power ");
    uart_tenths(regulator.power);
    uart_text(" %\n");
}

static void handle_key(int key)
{
    switch (key) {
    case '+':
        regulator.target += STEP;
        break;
    case '-':
        regulator.target -= STEP;
        break;
    case 'r':
        regulator_init(&regulator, FIRST_TARGET);
        break;
    }
}

static void regulate(void)
{
    room_step(&room, regulator_step(&regulator, room.temperature));
    board_set_lamps(regulator.power > 0);
    keep_sample();
}

int main(void)
{
    uint32_t done = 0;
    board_init();
    room_init(&room);
    regulator_init(&regulator, FIRST_TARGET);
    uart_text("thermostat\n");
    for (;;) {
        board_sleep();
        handle_key(uart_get());
        for (; board_ticks - done >= TICKS_PER_SECOND / 10; done += TICKS_PER_SECOND / 10) {
            regulate();
            if (samples % 10 == 0)
                print_state();
        }
    }
}

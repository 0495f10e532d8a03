#include <avr/interrupt.h>
#include <avr/io.h>
#include <avr/sleep.h>
#include <stdlib.h>
#include <util/atomic.h>

#define CORE_CLOCK 16000000ul /* Hz */
#define BAUD_RATE 9600ul
#define TIMER_DIVIDER 256ul
#define TICKS_PER_SECOND 10u

static volatile uint16_t ticks;

ISR(TIMER1_COMPA_vect)
{
    ++ticks;
}

static uint16_t ticks_now(void)
{
    uint16_t now;
    ATOMIC_BLOCK(ATOMIC_RESTORESTATE)
    {
        now = ticks;
    }
    return now;
}

static void board_init(void)
{
    UBRR0 = CORE_CLOCK / (16 * BAUD_RATE) - 1;
    UCSR0B = _BV(TXEN0);
    OCR1A = CORE_CLOCK / TIMER_DIVIDER / TICKS_PER_SECOND - 1;
    TCCR1B = _BV(WGM12) | _BV(CS12); /* counts up to OCR1A, at the clock divided by 256 */
    TIMSK1 = _BV(OCIE1A);
    sei();
}

static void uart_put(char c)
{
    loop_until_bit_is_set(UCSR0A, UDRE0);
    UDR0 = c;
}

static void uart_text(const char *text)
{
    while (*text)
        uart_put(*text++);
}

/* Writes the time since the start to the serial port, once per second. */
int main(void)
{
    uint16_t seconds = 0;
    uint16_t start = 0;
    board_init();
    uart_text("started\n");
    for (;;) {
        while ((uint16_t)(ticks_now() - start) < TICKS_PER_SECOND)
            sleep_mode();
        start += TICKS_PER_SECOND;
        ++seconds;
        char text[6];
        utoa(seconds, text, 10);
        uart_text(text);
        uart_text(" s\n");
    }
}

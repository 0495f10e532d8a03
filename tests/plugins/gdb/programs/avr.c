/* A program for an ATmega328P that writes to its serial port and counts. */
#include <avr/io.h>

volatile unsigned char count;

static void print(const char *text)
{
    for (; *text; ++text) {
        while (!(UCSR0A & _BV(UDRE0))) {
        }
        UDR0 = (unsigned char)*text;
    }
}

int main(void)
{
    UCSR0B = _BV(TXEN0);
    print("started\n");
    for (;;)
        ++count;
}

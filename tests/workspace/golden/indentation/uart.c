/*
  Serial port with two ring buffers. The interrupt moves bytes between the
  buffers and the port; the program reads and writes the buffers only.
  */
#include <stdbool.h>
#include <stdint.h>
#include <string.h>

#include "board.h"
#include "uart.h"

#define UART_BUFFER_SIZE 64
#define UART_MASK        (UART_BUFFER_SIZE - 1)

#if UART_BUFFER_SIZE & UART_MASK
#error "the size must be a power of two"
#endif

enum uart_error { UART_OK, UART_OVERRUN, UART_FRAMING, UART_PARITY };

struct ring
{
    volatile uint8_t head;
    volatile uint8_t tail;
    uint8_t data[UART_BUFFER_SIZE];
};

typedef void (*uart_handler)(int port, uint8_t byte);

static struct ring rx_ring;
static struct ring tx_ring;
static uart_handler handler;
static const char *const error_texts[] = { "no error", "overrun",
                                           "framing { ; error",
                                           "parity \" ) error" };

static bool ring_is_empty(const struct ring *ring)
{
    return ring->head == ring->tail;
}

static bool ring_is_full(const struct ring *ring) {
    return ((ring->head + 1) & UART_MASK) == ring->tail;
}

static void ring_put(struct ring *ring, uint8_t byte)
{
    ring->data[ring->head] = byte;
    ring->head = (ring->head + 1) & UART_MASK; // wraps around
}

static uint8_t ring_get(struct ring *ring)
{
    uint8_t byte;

    byte = ring->data[ring->tail];
    ring->tail = (ring->tail + 1) & UART_MASK;
    return byte;
}

void uart_init(uint32_t baud, enum uart_parity parity, int stop_bits,
               uart_handler new_handler)
{
    uint32_t divider = (BOARD_CLOCK + baud / 2) / baud;
    uint32_t mode = UART_MODE_8_BIT |
                    UART_MODE_INTERRUPT |
                    (stop_bits == 2 ? UART_MODE_2_STOP : 0);

    memset(&rx_ring, 0, sizeof(rx_ring));
    memset(&tx_ring,
           0,
           sizeof(tx_ring));
    handler = new_handler;

    switch (parity) {
    case PARITY_NONE:
        break;
    case PARITY_EVEN:
        mode |= UART_MODE_PARITY;
        break;
    case PARITY_ODD:
    case PARITY_MARK:
        mode |= UART_MODE_PARITY;
        mode |= UART_MODE_ODD;
        break;
    case PARITY_SPACE:
        if (stop_bits > 1)
            mode = 0;
        break;
    }

#ifdef BOARD_HAS_FIFO
    mode |= UART_MODE_FIFO;
#endif
    UART->DIVIDER = divider;
    UART->MODE = mode;
}

int uart_write(const void *data, size_t size)
{
    const uint8_t *bytes = data;
    size_t i;

    for (i = 0; i < size; i++) {
        while (ring_is_full(&tx_ring))
            ;
        ring_put(&tx_ring, bytes[i]);
    }
    if (size > 0)
        UART->INTERRUPT |= UART_TX_EMPTY;
    return (int)size;
}

int uart_read(void *data, size_t size)
{
    uint8_t *bytes = data;
    size_t count = 0;

    while (count < size && !ring_is_empty(&rx_ring))
        bytes[count++] = ring_get(&rx_ring);
    return (int)count;
}

int uart_write_text(const char *text) {
    if (!text) {
        return -1;
    } else if (!*text) {
        return 0;
    } else {
        size_t length = strlen(text);
        return uart_write(text, length);
    }
}

enum uart_error uart_error(void)
{
    uint32_t status = UART->STATUS;

    if (status & UART_STATUS_OVERRUN)
        return UART_OVERRUN;
    else if (status & UART_STATUS_FRAMING)
        return UART_FRAMING;
    else if (status & UART_STATUS_PARITY)
        return UART_PARITY;
    else
        return UART_OK;
}

const char *uart_error_text(enum uart_error error)
{
    if ((size_t)error >= sizeof(error_texts) / sizeof(error_texts[0]))
        return "unknown error";

    return error_texts[error];
}

void uart_interrupt(void)
{
    uint32_t status = UART->STATUS;

    if (status & UART_RX_FULL) {
        uint8_t byte = UART->DATA;

        if (handler != NULL)
            handler(0, byte);
        else if (!ring_is_full(&rx_ring))
            ring_put(&rx_ring, byte);
    }

    if (status & UART_TX_EMPTY) {
        if (ring_is_empty(&tx_ring)) {
            UART->INTERRUPT &= ~UART_TX_EMPTY;
        } else {
            UART->DATA = ring_get(&tx_ring);
        }
    }
}

static int checksum(const uint8_t *bytes, int count)
{
    int sum = 0;
    int i;

    for (i = 0;
         i < count;
         i++)
        sum += bytes[i];

    do {
        sum = (sum & 0xff) + (sum >> 8);
    } while (sum > 0xff);

    return sum;
}

int uart_self_test(void)
{
    static const uint8_t pattern[] = { 0x55, 0xaa, 0x00, 0xff };
    uint8_t answer[sizeof(pattern)];
    int attempt;

    for (attempt = 0; attempt < 3; attempt++) {
        int i;

        if (uart_write(pattern, sizeof(pattern)) != sizeof(pattern))
            goto failed;
        for (i = 0; i < (int)sizeof(pattern); i++)
            if (uart_read(answer + i, 1) != 1)
                goto failed;
        if (checksum(answer, sizeof(answer)) == checksum(pattern, sizeof(pattern)) &&
            memcmp(answer, pattern, sizeof(pattern)) == 0)
            return 0;
    }
    return 1;

    failed:
    uart_init(9600,
              PARITY_NONE,
              1,
              handler);
    return -1;
}

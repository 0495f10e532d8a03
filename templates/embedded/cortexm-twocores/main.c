/* The first core. */
#include "board.h"
#include "mailbox.h"

struct mailbox mailbox;

static uint32_t ask(uint32_t number)
{
    mailbox.request = number;
    while (!mailbox.answer)
        ;
    uint32_t answer = mailbox.answer;
    mailbox.answer = 0;
    return answer;
}

int main(void)
{
    board_init();
    board_start_second_core();
    for (uint32_t number = 1;; ++number) {
        uint32_t answer = ask(number);
        uart_number(number);
        uart_text(" squared is ");
        uart_number(answer);
        uart_text("\n");
        board_wait();
    }
}

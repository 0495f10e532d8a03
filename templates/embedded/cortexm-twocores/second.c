/* The second core. */
#include "mailbox.h"

void second_main(void)
{
    for (;;) {
        uint32_t number = mailbox.request;
        if (!number)
            continue;
        mailbox.request = 0;
        mailbox.answer = number * number;
    }
}

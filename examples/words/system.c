/* What the C library needs of the board: a place to write to, and memory for malloc. It expects the other functions of
   an operating system, too, and gets an error from them. */
#include "uart.h"
#include <errno.h>
#include <sys/stat.h>

extern char end_bss[];

void *_sbrk(int bytes)
{
    static char *end = end_bss;
    register char *stack __asm__("sp");
    if (end + bytes > stack - 1024) { /* leaves room for the stack */
        errno = ENOMEM;
        return (void *)-1;
    }
    end += bytes;
    return end - bytes;
}

int _write(int file, const char *text, int length)
{
    (void)file;
    for (int i = 0; i < length; ++i)
        uart_put(text[i]);
    return length;
}

int _read(int file, char *text, int length)
{
    (void)file;
    (void)text;
    (void)length;
    return 0; /* the end of the input */
}

int _fstat(int file, struct stat *status)
{
    (void)file;
    status->st_mode = S_IFCHR; /* a terminal: lines are written at once */
    return 0;
}

int _isatty(int file)
{
    (void)file;
    return 1;
}

int _close(int file)
{
    (void)file;
    return -1;
}

int _lseek(int file, int offset, int origin)
{
    (void)file;
    (void)offset;
    (void)origin;
    return 0;
}

int _kill(int process, int number)
{
    (void)process;
    (void)number;
    errno = EINVAL;
    return -1;
}

int _getpid(void)
{
    return 1;
}

void _exit(int code)
{
    (void)code;
    for (;;)
        ;
}

/* A thread that waits, and a recursion. */
#include <pthread.h>
#include <unistd.h>

static volatile int ready;

static void *work(void *argument)
{
    int kept = *(int *)argument;
    ready = 1;
    pause();
    return argument + kept;
}

static int descend(int depth)
{
    if (depth == 0)
        return 1; /* the innermost call */
    return descend(depth - 1) + 1;
}

int main(void)
{
    pthread_t thread;
    int value = 42;
    pthread_create(&thread, 0, work, &value);
    while (!ready)
        usleep(1000);
    return descend(299) == 300;
}

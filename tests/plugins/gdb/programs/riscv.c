/* A program for the RISC-V board "virt" that counts. */
volatile unsigned int count;
int numbers[100];

__attribute__((naked, section(".start"))) void start(void)
{
    __asm__("la sp, stackTop\n"
            "j main");
}

int main(void)
{
    for (int i = 0; i < 100; ++i)
        numbers[i] = i;
    for (;;)
        ++count;
}

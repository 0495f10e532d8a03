/* The start of the program: stack, interrupt vector and zeroed memory, then main. */
    .section .text.start
    .globl  _start
_start:
    csrr    t0, mhartid         /* further processors of the board sleep */
    bnez    t0, sleep
    .option push
    .option norelax
    la      gp, __global_pointer$
    .option pop
    la      sp, top_of_stack
    la      t0, trap_handler
    csrw    mtvec, t0
    la      t0, start_bss
    la      t1, end_bss
clear:
    bgeu    t0, t1, run
    sw      zero, 0(t0)
    addi    t0, t0, 4
    j       clear
run:
    call    main
sleep:
    wfi
    j       sleep

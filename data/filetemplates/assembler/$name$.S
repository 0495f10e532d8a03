    .section .text.$identifier$
    .globl  $identifier$
    .type   $identifier$, %function
$identifier$:
    $cursor$
    .size   $identifier$, . - $identifier$

/* The Morse alphabet. */
#ifndef CODE_H
#define CODE_H

/* The dots and dashes of a letter or digit, "" for anything else. */
const char *code_of(char letter);

#endif

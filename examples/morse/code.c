#include "code.h"

static const char *const letters[] = {".-",   "-...", "-.-.", "-..",  ".",   "..-.", "--.",  "....", "..",
                                      ".---", "-.-",  ".-..", "--",   "-.",  "---",  ".--.", "--.-", ".-.",
                                      "...",  "-",    "..-",  "...-", ".--", "-..-", "-.--", "--.."};
static const char *const digits[] = {"-----", ".----", "..---", "...--", "....-",
                                     ".....", "-....", "--...", "---..", "----."};

const char *code_of(char letter)
{
    if (letter >= 'a' && letter <= 'z')
        return letters[letter - 'a'];
    if (letter >= 'A' && letter <= 'Z')
        return letters[letter - 'A'];
    if (letter >= '0' && letter <= '9')
        return digits[letter - '0'];
    return "";
}

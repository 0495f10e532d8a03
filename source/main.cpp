#include "entry.h"

int main(int argc, char **argv)
{
    return runVarnel(argc, argv);
}

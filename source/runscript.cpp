#include "scriptprogram.h"

int main(int argc, char **argv)
{
    return runVarnelScript(argc, argv);
}

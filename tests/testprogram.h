#pragma once

// Lets the tests of a folder share one executable: what each of their files calls main becomes one of the programs that
// the executable can run. It is part of the precompiled header of tests, hence no file includes it.

using TestMain = int (*)(int, char **);

/// Makes the test in the source file at @p path known to the executable. Returns their number.
int registerTest(const char *path, TestMain run);

namespace {
struct TestProgram
{
    static const int registered;
    static int run(int argc, char **argv);
};
} // namespace

// What stands before it is "int", written by a macro of Qt or by the file itself.
#define main(...) \
    const TestProgram::registered = registerTest(__FILE__, TestProgram::run); \
    int TestProgram::run(__VA_ARGS__)

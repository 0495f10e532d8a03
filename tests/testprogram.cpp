// The main function of the tests of a folder:
//
//   NAME [ARGUMENTS]
//
// runs the test NAME. A test that starts its own executable once more gets the same test: the environment has its name.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

using TestMain = int (*)(int, char **);
int registerTest(const char *path, TestMain run);

namespace {
constexpr const char *Variable = "VARNEL_TEST_PROGRAM";

std::map<std::string, TestMain> &tests()
{
    static std::map<std::string, TestMain> all;
    return all;
}

int listTests()
{
    std::fputs("Name one of these tests:\n", stderr);
    for (const auto &[name, run] : tests())
        std::fprintf(stderr, "  %s\n", name.c_str());
    return 2;
}
} // namespace

int registerTest(const char *path, TestMain run)
{
    tests().emplace(std::filesystem::path(path).stem().string(), run);
    return int(tests().size());
}

int main(int argc, char **argv)
{
    if (argc > 1 && tests().count(argv[1]) > 0) {
        setenv(Variable, argv[1], 1);
        return tests().at(argv[1])(argc - 1, argv + 1);
    }
    const char *name = std::getenv(Variable);
    const auto test = tests().find(name ? name : "");
    return test == tests().end() ? listTests() : test->second(argc, argv);
}

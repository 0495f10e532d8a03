// Evaluates the expressions on its command line, or sample expressions without arguments. "name=expression" sets a
// variable.
#include "parser.h"
#include <iostream>
#include <stdexcept>
#include <vector>

static double work(const std::string &text, Variables &variables)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos)
        return parse(text)->evaluate(variables);
    const double value = parse(text.substr(equals + 1))->evaluate(variables);
    variables[text.substr(0, equals)] = value;
    return value;
}

int main(int argc, char **argv)
{
    std::vector<std::string> texts(argv + 1, argv + argc);
    if (texts.empty())
        texts = {"1 + 2 * 3", "radius=2.5", "pi * radius ^ 2", "(1 + 5 ^ 0.5) / 2"};
    Variables variables = {{"pi", 3.14159265358979}, {"e", 2.71828182845905}};
    int failures = 0;
    for (const std::string &text : texts) {
        try {
            const double value = work(text, variables);
            std::cout << text << " = " << value << std::endl;
        } catch (const std::exception &error) {
            std::cout << text << ": " << error.what() << std::endl;
            ++failures;
        }
    }
    return failures;
}

// Splits the text of an expression into tokens.
#pragma once
#include <string>

struct Token
{
    enum Kind { Number, Name, Operator, Open, Close, End };
    Kind kind = End;
    double number = 0;
    std::string text;
};

class Lexer
{
public:
    explicit Lexer(const std::string &text);
    const Token &current() const { return m_current; }
    void next();

private:
    const std::string m_text;
    std::size_t m_position = 0;
    Token m_current;
};

#include "parser.h"
#include "lexer.h"
#include <stdexcept>

namespace {

class Parser
{
public:
    explicit Parser(const std::string &text) : m_lexer(text) {}

    ExpressionPtr parse()
    {
        ExpressionPtr result = sum();
        if (m_lexer.current().kind != Token::End)
            throw std::runtime_error("unexpected '" + m_lexer.current().text + "'");
        return result;
    }

private:
    ExpressionPtr sum()
    {
        ExpressionPtr result = product();
        while (isOperator("+-")) {
            const char sign = takeOperator();
            result = makeOperation(sign, std::move(result), product());
        }
        return result;
    }

    ExpressionPtr product()
    {
        ExpressionPtr result = power();
        while (isOperator("*/")) {
            const char sign = takeOperator();
            result = makeOperation(sign, std::move(result), power());
        }
        return result;
    }

    ExpressionPtr power()
    {
        ExpressionPtr result = operand();
        if (!isOperator("^"))
            return result;
        const char sign = takeOperator();
        return makeOperation(sign, std::move(result), power());
    }

    ExpressionPtr operand()
    {
        const Token token = m_lexer.current();
        if (isOperator("-")) {
            takeOperator();
            return makeOperation('-', makeNumber(0), power());
        }
        m_lexer.next();
        switch (token.kind) {
        case Token::Number:
            return makeNumber(token.number);
        case Token::Name:
            return makeVariable(token.text);
        case Token::Open:
            return inBrackets();
        default:
            throw std::runtime_error("a number, a name or a bracket is missing");
        }
    }

    ExpressionPtr inBrackets()
    {
        ExpressionPtr result = sum();
        if (m_lexer.current().kind != Token::Close)
            throw std::runtime_error("')' is missing");
        m_lexer.next();
        return result;
    }

    bool isOperator(const std::string &signs) const
    {
        const Token &token = m_lexer.current();
        return token.kind == Token::Operator && signs.find(token.text) != std::string::npos;
    }

    char takeOperator()
    {
        const char sign = m_lexer.current().text[0];
        m_lexer.next();
        return sign;
    }

    Lexer m_lexer;
};

} // namespace

ExpressionPtr parse(const std::string &text)
{
    return Parser(text).parse();
}

#include "lexer.h"
#include <cctype>
#include <stdexcept>

Lexer::Lexer(const std::string &text) : m_text(text)
{
    next();
}

void Lexer::next()
{
    while (m_position < m_text.size() && std::isspace(static_cast<unsigned char>(m_text[m_position])))
        ++m_position;
    if (m_position == m_text.size()) {
        m_current = Token{};
        return;
    }
    const std::size_t start = m_position;
    const char c = m_text[m_position];
    if (std::isdigit(static_cast<unsigned char>(c)) || c == '.') {
        std::size_t length = 0;
        const double number = std::stod(m_text.substr(start), &length);
        m_position += length;
        m_current = {Token::Number, number, {}};
    } else if (std::isalpha(static_cast<unsigned char>(c))) {
        while (m_position < m_text.size() && std::isalpha(static_cast<unsigned char>(m_text[m_position])))
            ++m_position;
        m_current = {Token::Name, 0, m_text.substr(start, m_position - start)};
    } else {
        ++m_position;
        const Token::Kind kind = c == '(' ? Token::Open : c == ')' ? Token::Close : Token::Operator;
        m_current = {kind, 0, std::string(1, c)};
    }
}

#include "htmlwords.h"
#include <QChar>

namespace {
constexpr qsizetype ShortestWord = 2;

/// For each byte of Latin-1 the letter or digit in lower case, which is Latin-1 as well; 0 for other characters.
std::array<char, 256> lettersAndDigits()
{
    std::array<char, 256> result = {};
    for (size_t byte = 0; byte < result.size(); ++byte) {
        const QChar character = QLatin1Char(char(byte));
        if (character.isLetterOrNumber())
            result.at(byte) = char(character.toLower().unicode());
    }
    return result;
}

const std::array<char, 256> LettersAndDigits = lettersAndDigits();
} // namespace

HtmlWords::HtmlWords(std::function<void(QByteArrayView)> found) : m_found(std::move(found)) {}

void HtmlWords::read(QByteArrayView bytes)
{
    const char *const letters = LettersAndDigits.data();
    char *const word = m_word.data();
    qsizetype length = m_length; // local, because this runs for each byte
    for (const char byte : bytes) {
        if (m_inTag) {
            m_inTag = byte != '>';
        } else if (const char letter = letters[uchar(byte)]; letter && length < LongestWord) {
            word[length++] = letter;
        } else {
            m_inTag = byte == '<';
            m_length = length;
            endWord();
            length = 0;
        }
    }
    m_length = length;
}

void HtmlWords::endWord()
{
    if (m_length >= ShortestWord)
        m_found(QByteArrayView(m_word.data(), m_length));
    m_length = 0;
}

void HtmlWords::finish()
{
    endWord();
}

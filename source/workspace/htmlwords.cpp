#include "htmlwords.h"
#include <QChar>

namespace {
constexpr qsizetype ShortestWord = 2;
}

HtmlWords::HtmlWords(std::function<void(const QByteArray &)> found) : m_found(std::move(found)) {}

void HtmlWords::read(QByteArrayView bytes)
{
    for (const char byte : bytes)
        readByte(byte);
}

void HtmlWords::readByte(char byte)
{
    const QChar character = QChar::fromLatin1(byte);
    if (m_inTag) {
        m_inTag = byte != '>';
    } else if (byte == '<') {
        endWord();
        m_inTag = true;
    } else if (character.isLetterOrNumber() && m_length < LongestWord) {
        m_word.at(size_t(m_length++)) = char(character.toLower().unicode()); // Latin-1 as well
    } else {
        endWord();
    }
}

void HtmlWords::endWord()
{
    if (m_length >= ShortestWord)
        m_found(QByteArray(m_word.data(), m_length));
    m_length = 0;
}

void HtmlWords::finish()
{
    endWord();
}

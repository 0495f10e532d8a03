#include "standins.h"

namespace {
constexpr QStringView Reserved = u"\u2029\uFDD0\uFDD1";

/// Characters without a meaning that no font has: the other noncharacters, then those for private use.
QString charactersNotIn(const QString &text)
{
    QString free;
    const auto add = [&](char16_t first, char16_t last) {
        for (char16_t c = first; c <= last && free.size() < Reserved.size(); ++c) {
            if (!text.contains(QChar(c)))
                free += QChar(c);
        }
    };
    add(u'\uFDD2', u'\uFDEF');
    add(u'\uE000', u'\uF8FF');
    return free;
}
} // namespace

void StandIns::putInto(QString &text)
{
    const auto isReserved = [](QChar c) { return Reserved.contains(c); };
    if (m_characters.isEmpty() && std::ranges::none_of(text, isReserved))
        return;
    if (m_characters.isEmpty())
        m_characters = charactersNotIn(text);
    for (qsizetype i = 0; i < m_characters.size(); ++i)
        text.replace(Reserved[i], m_characters[i]);
}

void StandIns::takeOutOf(QString &text) const
{
    for (qsizetype i = 0; i < m_characters.size(); ++i)
        text.replace(m_characters[i], Reserved[i]);
}

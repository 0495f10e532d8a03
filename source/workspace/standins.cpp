#include "standins.h"

namespace {
constexpr QStringView Reserved = u"\u2029\uFDD0\uFDD1";

/// Characters without a meaning that no font has: the other noncharacters, then those for private use.
QString charactersNotIn(QStringView text, QStringView others)
{
    QString free;
    const auto add = [&](char16_t first, char16_t last) {
        for (char16_t c = first; c <= last && free.size() < Reserved.size(); ++c) {
            if (!text.contains(QChar(c)) && !others.contains(QChar(c)))
                free += QChar(c);
        }
    };
    add(u'\uFDD2', u'\uFDEF');
    add(u'\uE000', u'\uF8FF');
    return free;
}
} // namespace

bool StandIns::areNeededFor(QStringView text)
{
    return std::ranges::any_of(text, [](QChar c) { return Reserved.contains(c); });
}

void StandIns::putInto(QString &text, QStringView others)
{
    if (!areNeededFor(text))
        return;
    if (m_characters.isEmpty())
        m_characters = charactersNotIn(text, others);
    for (qsizetype i = 0; i < m_characters.size(); ++i)
        text.replace(Reserved[i], m_characters[i]);
}

void StandIns::takeOutOf(QString &text) const
{
    for (qsizetype i = 0; i < m_characters.size(); ++i)
        text.replace(m_characters[i], Reserved[i]);
}

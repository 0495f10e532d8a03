#include "commandwords.h"
#include <QString>

CommandWords::CommandWords(QStringView line) : m_left(line)
{
    if (m_left.endsWith(u'\n'))
        m_left.chop(1);
    if (m_left.endsWith(u'\r')) // only one: a second one is the text of a Return key
        m_left.chop(1);
}

QString CommandWords::word()
{
    const auto isSpace = [](QChar c) { return c.isSpace(); };
    const auto begin = std::find_if_not(m_left.begin(), m_left.end(), isSpace);
    const auto end = std::find_if(begin, m_left.end(), isSpace);
    m_left = QStringView(end, m_left.end());
    return QStringView(begin, end).toString();
}

QString CommandWords::name()
{
    QString name = word();
    if (!name.startsWith(u'"'))
        return name;
    for (QString last = name; !last.endsWith(u'"');) {
        last = word();
        if (last.isEmpty())
            break;
        name += u' ' + last;
    }
    return name.remove(u'"');
}

std::optional<int> CommandWords::number()
{
    bool ok = false;
    const int number = word().toInt(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

QString CommandWords::rest()
{
    return std::exchange(m_left, {}).mid(1).toString();
}

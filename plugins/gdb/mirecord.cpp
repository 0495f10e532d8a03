#include "mirecord.h"
#include <limits>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

MiValue MiValue::operator[](QStringView name) const
{
    for (const Member &member : m_members) {
        if (member.name == name)
            return member.value;
    }
    return {};
}

bool MiValue::contains(QStringView name) const
{
    return !(*this)[name].isNull();
}

int MiValue::number(QStringView name, int fallback) const
{
    bool valid = false;
    const int value = text(name).toInt(&valid);
    return valid ? value : fallback;
}

quint64 MiValue::address(QStringView name) const
{
    return text(name).toULongLong(nullptr, 0);
}

QList<MiValue> MiValue::items() const
{
    QList<MiValue> values;
    for (const Member &member : m_members)
        values.append(member.value);
    return values;
}

namespace {
constexpr int DeepestLevel = 64;

/// Reads values from the start of a text. After a failure nothing more is read.
class MiReader
{
public:
    explicit MiReader(QByteArrayView text) : m_rest(text) {}

    [[nodiscard]] bool failed() const { return m_failed; }
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }

    bool take(char letter)
    {
        if (m_failed || m_rest.isEmpty() || m_rest.front() != letter)
            return false;
        m_rest = m_rest.sliced(1);
        return true;
    }

    QByteArray takeName()
    {
        qsizetype length = 0;
        while (length < m_rest.size() && isNameLetter(m_rest[length]))
            ++length;
        QByteArray name = m_rest.first(length).toByteArray();
        m_rest = m_rest.sliced(length);
        return name;
    }

    int takeToken()
    {
        qsizetype length = 0;
        while (length < m_rest.size() && m_rest[length] >= '0' && m_rest[length] <= '9')
            ++length;
        bool valid = false;
        const int token = m_rest.first(length).toByteArray().toInt(&valid);
        m_rest = m_rest.sliced(length);
        return valid ? token : -1;
    }

    QString takeString()
    {
        QByteArray bytes;
        m_failed = !take('"') || m_failed;
        while (!m_failed && !take('"')) {
            if (m_rest.isEmpty())
                m_failed = true;
            else
                bytes.append(takeLetter());
        }
        return QString::fromUtf8(bytes);
    }

    MiValue takeValue(int level)
    {
        if (level > DeepestLevel)
            m_failed = true;
        if (take('{'))
            return {MiValue::Kind::Tuple, takeMembers('}', level)};
        if (take('['))
            return {MiValue::Kind::List, takeMembers(']', level)};
        return MiValue(takeString());
    }

    /// The members up to @p end, or up to the end of the text if @p end is 0.
    QList<MiValue::Member> takeMembers(char end, int level)
    {
        QList<MiValue::Member> members;
        while (!m_failed && !take(end) && (end || !atEnd())) {
            if (!members.isEmpty() && !take(','))
                m_failed = true;
            else
                members.append(takeMember(level));
        }
        return members;
    }

private:
    static bool isNameLetter(char letter)
    {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9')
               || letter == '-' || letter == '_';
    }

    MiValue::Member takeMember(int level)
    {
        const QByteArray name = takeName();
        if (!name.isEmpty() && !take('='))
            m_failed = true;
        return {QString::fromLatin1(name), takeValue(level + 1)};
    }

    char takeLetter()
    {
        if (!take('\\')) {
            const char letter = m_rest.front();
            m_rest = m_rest.sliced(1);
            return letter;
        }
        if (m_rest.isEmpty())
            return '\\';
        if (m_rest.front() >= '0' && m_rest.front() <= '7')
            return takeOctal();
        const char letter = m_rest.front();
        m_rest = m_rest.sliced(1);
        return escaped(letter);
    }

    /// A byte as up to three octal digits, used for bytes of non-ASCII characters.
    char takeOctal()
    {
        int value = 0;
        for (int digits = 0; digits < 3 && !m_rest.isEmpty() && m_rest.front() >= '0' && m_rest.front() <= '7';
             ++digits) {
            value = value * 8 + (m_rest.front() - '0');
            m_rest = m_rest.sliced(1);
        }
        return char(value);
    }

    static char escaped(char letter)
    {
        switch (letter) {
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case 'r':
            return '\r';
        case 'a':
            return '\a';
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'v':
            return '\v';
        case 'e':
            return '\033';
        default:
            return letter;
        }
    }

    QByteArrayView m_rest;
    bool m_failed = false;
};

MiRecord::Kind kindOf(char letter)
{
    switch (letter) {
    case '^':
        return MiRecord::Kind::Result;
    case '*':
        return MiRecord::Kind::Exec;
    case '+':
        return MiRecord::Kind::Status;
    case '=':
        return MiRecord::Kind::Notify;
    case '~':
        return MiRecord::Kind::Console;
    case '@':
        return MiRecord::Kind::Target;
    case '&':
        return MiRecord::Kind::Log;
    default:
        return MiRecord::Kind::Other;
    }
}

bool isStream(MiRecord::Kind kind)
{
    return kind == MiRecord::Kind::Console || kind == MiRecord::Kind::Target || kind == MiRecord::Kind::Log;
}

/// Reads what follows the letter of the kind.
bool readBody(MiReader *reader, MiRecord *record)
{
    if (isStream(record->kind)) {
        record->text = reader->takeString();
        return record->token < 0 && !reader->failed() && reader->atEnd();
    }
    record->className = QString::fromLatin1(reader->takeName());
    const bool more = reader->take(',');
    if (record->className.isEmpty() || (!more && !reader->atEnd()))
        return false;
    record->results = {MiValue::Kind::Tuple, more ? reader->takeMembers('\0', 0) : QList<MiValue::Member>()};
    return !reader->failed();
}
} // namespace

MiRecord parseMiRecord(QByteArrayView line)
{
    while (!line.isEmpty() && (line.back() == '\n' || line.back() == '\r'))
        line.chop(1);
    if (line == "(gdb)" || line == "(gdb) ")
        return {.kind = MiRecord::Kind::Prompt, .token = -1, .className = {}, .results = {}, .text = {}};
    MiRecord record;
    MiReader reader(line);
    record.token = reader.takeToken();
    for (const char letter : {'^', '*', '+', '=', '~', '@', '&'}) {
        if (reader.take(letter)) {
            record.kind = kindOf(letter);
            break;
        }
    }
    if (record.kind != MiRecord::Kind::Other && readBody(&reader, &record))
        return record;
    MiRecord other;
    other.text = QString::fromUtf8(line.toByteArray());
    return other;
}

QByteArray miQuoted(const QString &text)
{
    QByteArray quoted = "\"";
    for (const char letter : text.toUtf8()) {
        if (letter == '"' || letter == '\\')
            quoted += '\\';
        if (letter == '\n')
            quoted += "\\n";
        else
            quoted += letter;
    }
    return quoted + '"';
}

quint64 pointerValue(const QString &text)
{
    static const QRegularExpression pointer(u"^\\(.*\\) (0x[0-9a-f]+)( <.*>)?$"_s);
    const QRegularExpressionMatch match = pointer.match(text);
    return (match.hasMatch() ? match.captured(1) : text.section(u' ', 0, 0)).toULongLong(nullptr, 0);
}

#include "hextext.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
struct TypedNumber
{
    qsizetype prefixLength;
    QString digits;
};

std::optional<TypedNumber> parse(const QString &text)
{
    static const QRegularExpression number(uR"(^\s*(0x|0X|0)?([0-9a-fA-F]*)\z)"_s);
    const QRegularExpressionMatch match = number.match(text);
    if (!match.hasMatch())
        return {};
    return TypedNumber{match.capturedLength(1), match.captured(2)};
}

int digitCount(int bits)
{
    return (std::max(bits, 1) + 3) / 4;
}
} // namespace

quint32 maskedToWidth(quint32 value, int bits)
{
    return bits < 32 ? value & ((1u << std::max(bits, 0)) - 1) : value;
}

QString hexText(quint32 value, int bits)
{
    return "0x"_L1 + QString::number(value, 16).toUpper().rightJustified(digitCount(bits), u'0');
}

quint32 hexValue(const QString &text)
{
    const auto number = parse(text);
    if (!number)
        return 0;
    constexpr int bases[] = {10, 8, 16};
    return number->digits.toUInt(nullptr, bases[number->prefixLength]);
}

int byteCount(int bits)
{
    return (std::max(bits, 0) + 7) / 8;
}

QString longHexText(const QByteArray &value, int bits)
{
    QByteArray highestFirst = value;
    std::reverse(highestFirst.begin(), highestFirst.end());
    return "0x"_L1 + QString::fromLatin1(highestFirst.toHex().toUpper()).right(digitCount(bits));
}

QByteArray longHexValue(const QString &text, int bits)
{
    QByteArray value(byteCount(bits), '\0');
    const auto number = parse(text);
    if (!number || number->prefixLength != 2)
        return value;
    QByteArray bytes = QByteArray::fromHex(number->digits.toLatin1()); // an odd count gets a leading 0
    std::reverse(bytes.begin(), bytes.end());
    bytes.truncate(value.size());
    return value.replace(0, bytes.size(), bytes);
}

QStringList flagNames(const QString &format)
{
    if (format.contains(u','))
        return format.split(u',');
    QStringList names;
    for (const QChar name : format)
        names += name;
    return names;
}

quint32 flagMask(const QStringList &names)
{
    return maskedToWidth(~0u, int(names.size()));
}

QString flagText(quint32 value, const QString &format)
{
    QStringList names = flagNames(format);
    for (qsizetype i = 0; i < names.size(); ++i) {
        const qsizetype bit = names.size() - 1 - i;
        if (bit > 31 || !(value >> bit & 1))
            names[i] = u"-"_s;
    }
    return names.join(format.contains(u',') ? u","_s : QString());
}

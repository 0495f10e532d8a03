#include "numberformat.h"
#include "hextext.h"
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
constexpr int WidestNumber = 32;

quint32 signBit(int bits)
{
    return 1u << (bits - 1);
}

QString signedText(quint32 value, int bits)
{
    const qint64 number = value & signBit(bits) ? qint64(value) - (qint64(1) << bits) : qint64(value);
    const QString text = QString::number(number);
    return text.startsWith(u'-') ? text : u'+' + text;
}

QString fractionalText(quint32 value, int bits)
{
    double result = value & signBit(bits) ? -1.0 : 0.0;
    double weight = 0.5;
    for (int bit = bits - 2; bit >= 0; --bit, weight /= 2) {
        if (value >> bit & 1)
            result += weight;
    }
    return QString::number(result, 'g', 6);
}

/// Numbers below -1 become -1, those of 1 and above the largest fraction.
quint32 fractionalValue(double number, int bits)
{
    quint32 value = 0;
    if (number < 0) {
        value = signBit(bits);
        number += 1.0;
    }
    double weight = 0.5;
    for (int bit = bits - 2; bit >= 0; --bit, weight /= 2) {
        if (weight <= number) {
            value |= 1u << bit;
            number -= weight;
        }
    }
    return value;
}

std::optional<quint32> numberIn(const QString &text, int base)
{
    bool valid = false;
    const quint32 value = text.toUInt(&valid, base);
    return valid ? std::optional(value) : std::nullopt;
}

/// A number with a sign or with a prefix.
std::optional<quint32> markedNumber(const QString &text)
{
    if (text.startsWith(u'+') || text.startsWith(u'-')) {
        bool valid = false;
        const int value = text.toInt(&valid, 10);
        return valid ? std::optional(quint32(value)) : std::nullopt;
    }
    if (text.startsWith("0x"_L1, Qt::CaseInsensitive))
        return numberIn(text.mid(2), 16);
    if (text.startsWith("0b"_L1, Qt::CaseInsensitive))
        return numberIn(text.mid(2), 2);
    return std::nullopt;
}
} // namespace

QString numberText(quint32 value, int bits, int format)
{
    bits = std::clamp(bits, 1, WidestNumber);
    value = maskedToWidth(value, bits);
    switch (format) {
    case SignedFormat:
        return signedText(value, bits);
    case UnsignedFormat:
        return QString::number(value);
    case FractionalFormat:
        return fractionalText(value, bits);
    case HexadecimalFormat:
        return hexText(value, bits);
    case BinaryFormat:
        return "0b"_L1 + QString::number(value, 2).rightJustified(bits, u'0');
    default:
        return u"Unsupported format"_s;
    }
}

quint32 numberValue(const QString &text, int bits)
{
    if (const auto number = markedNumber(text))
        return *number;
    if (text.contains(u'.'))
        return fractionalValue(text.toDouble(), std::clamp(bits, 1, WidestNumber));
    return numberIn(text, 10).value_or(0);
}

bool isNumberText(const QString &text)
{
    if (markedNumber(text))
        return true;
    bool valid = false;
    if (text.contains(u'.'))
        (void)text.toDouble(&valid);
    else
        (void)text.toUInt(&valid, 10);
    return valid;
}

bool fitsWidth(quint32 value, int bits)
{
    if (bits >= WidestNumber)
        return true;
    const qint64 limit = qint64(1) << std::max(bits, 1);
    const auto number = qint32(value);
    return value < limit || (number < 0 && number >= -limit / 2);
}

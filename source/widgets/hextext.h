#pragma once
#include <QByteArray>
#include <QStringList>

// Numbers of target registers as users read and type them.

/// @p value without the bits above @p bits; a width of 32 or more keeps all.
[[nodiscard]] quint32 maskedToWidth(quint32 value, int bits);

/// "0x" and as many upper-case digits as @p bits need: "0x0AB" for 12 bits.
[[nodiscard]] QString hexText(quint32 value, int bits);
/// The number in a typed text: "0x10" is 16, "010" is octal, "10" is decimal; any other text, as "FF", is 0.
[[nodiscard]] quint32 hexValue(const QString &text);

/// The number of bytes for a value of @p bits.
[[nodiscard]] int byteCount(int bits);
/// The same for a value of any width, whose bytes begin with the lowest one.
[[nodiscard]] QString longHexText(const QByteArray &value, int bits);
/// byteCount() bytes, the lowest one first. Only digits behind "0x" count; all else is zero.
[[nodiscard]] QByteArray longHexValue(const QString &text, int bits);

/// The names of bits, the last one being that of bit 0. They are separated by commas or are single characters.
[[nodiscard]] QStringList flagNames(const QString &format);
/// All bits that have a name.
[[nodiscard]] quint32 flagMask(const QStringList &names);
/// The names of the bits that are set and "-" for the others: "Z-C-", or "RX,-,TX" for names separated by commas.
[[nodiscard]] QString flagText(quint32 value, const QString &format);

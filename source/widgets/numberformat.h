#pragma once
#include <QString>

// Numbers of up to 32 bits in the formats that the user can choose for a register.

/// How a number is shown. Other values than these have no text.
enum NumberFormat {
    SignedFormat = 0,
    UnsignedFormat = 1,
    FractionalFormat = 2, ///< two's complement with the binary point behind the sign bit: -1 to just below 1
    HexadecimalFormat = 3,
    BinaryFormat = 4
};

/// The lowest @p bits of @p value in one NumberFormat: "-1", "255", "-0.5", "0x0FF", "0b0101". Signed numbers that are
/// not negative begin with "+". A width outside 1 to 32 counts as the nearest of these.
[[nodiscard]] QString numberText(quint32 value, int bits, int format);

/// The number in a typed text, which may have any format: "+5" and "-5" are decimal, "0x1F" and "0b101" have
/// their prefix, a text with "." is a fraction of a number of @p bits, and all else is decimal; 0 for any other text.
/// The result may have more bits than @p bits.
[[nodiscard]] quint32 numberValue(const QString &text, int bits);

/// Whether numberValue() finds a number in the text.
[[nodiscard]] bool isNumberText(const QString &text);

/// Whether a number of @p bits, with or without a sign, can have the value.
[[nodiscard]] bool fitsWidth(quint32 value, int bits);

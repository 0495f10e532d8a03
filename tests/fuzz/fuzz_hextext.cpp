// Any text as a number in hexadecimal digits and as names of flags. The first byte is the width.
#include "hextext.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int bits = size > 0 ? data[0] : 0;
    const QString text =
        size > 1 ? QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1)) : QString();
    const quint32 value = maskedToWidth(hexValue(text), bits);
    if (bits > 0 && hexValue(hexText(value, bits)) != value)
        qFatal("A number is read otherwise than it is shown.");
    const QByteArray bytes = longHexValue(text, bits);
    if (bytes.size() != byteCount(bits))
        qFatal("A long number has another width.");
    if (bits > 0 && bits % 8 == 0 && longHexValue(longHexText(bytes, bits), bits) != bytes)
        qFatal("A long number is read otherwise than it is shown.");
    const QStringList names = flagNames(text);
    const QString none = flagText(0, text);
    if (none.count(u'-') != names.size())
        qFatal("A flag that is not set is shown.");
    (void)flagText(~0u, text);
    if (names.size() < 32 && flagMask(names) >> names.size() != 0)
        qFatal("A flag without a name counts.");
    return 0;
}

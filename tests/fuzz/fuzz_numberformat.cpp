// Any text as a number in one of the formats of registers. The first byte is the width.
#include "hextext.h"
#include "numberformat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int bits = size > 0 ? int8_t(data[0]) : 0;
    const QString text =
        size > 1 ? QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1)) : QString();
    const int width = bits < 1 ? 1 : bits > 32 ? 32 : bits;
    const quint32 value = maskedToWidth(numberValue(text, bits), width);
    for (int format = SignedFormat; format <= BinaryFormat; ++format) {
        const QString shown = numberText(value, bits, format);
        if (format != FractionalFormat && maskedToWidth(numberValue(shown, bits), width) != value)
            qFatal("A number is read otherwise than it is shown.");
    }
    if (text.contains(u'.') && !text.startsWith(u'0') && numberValue(text, width) >> (width - 1) > 1)
        qFatal("A fraction has more bits than its width.");
    return 0;
}

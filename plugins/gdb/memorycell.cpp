#include "memorycell.h"
#include "imemory.h"

int memoryCellWidth(int mode)
{
    switch (mode) {
    case IMemory::Byte:
        return 1;
    case IMemory::Word16:
        return 2;
    case IMemory::Word24:
        return 3;
    case IMemory::Word32:
        return 4;
    default:
        return 0;
    }
}

uint memoryCellValue(QByteArrayView bytes, bool bigEndian)
{
    uint value = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        value = value << 8 | uchar(bytes[bigEndian ? i : bytes.size() - 1 - i]);
    return value;
}

QByteArray memoryCellBytes(uint value, int width, bool bigEndian)
{
    QByteArray bytes(width, '\0');
    for (int i = 0; i < width; ++i)
        bytes[bigEndian ? width - 1 - i : i] = char(value >> (8 * i));
    return bytes;
}

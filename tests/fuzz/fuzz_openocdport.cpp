#include "debugserver.h"
#include "memorycell.h"
#include "openocdport.h"

/// The bytes of an answer are those of the numbers in it.
static void checkBytes(const QByteArray &text, int width, bool bigEndian)
{
    const int length = int(text.simplified().count(' ') + 1) * width;
    const QByteArray bytes = openOcdBytes(text, width, length, bigEndian);
    if (bytes.isEmpty())
        return;
    if (bytes.size() != length || !openOcdBytes(text, width, length - width, bigEndian).isEmpty())
        __builtin_trap();
    QByteArrayList words;
    for (qsizetype at = 0; at < length; at += width)
        words += QByteArray::number(memoryCellValue(QByteArrayView(bytes).sliced(at, width), bigEndian));
    if (openOcdBytes(words.join(' '), width, length, bigEndian) != bytes)
        __builtin_trap();
}

/// OpenOCD's output has its answers, too; they are left out of it also if it arrives in pieces.
static void checkOutput(const QByteArray &bytes)
{
    const QString text = QString::fromLatin1(bytes) + QStringLiteral("\n.");
    OpenLine whole;
    const QString expected = withoutNumbers(text, &whole);
    for (const qsizetype split : {qsizetype(1), text.size() / 3, text.size() / 2}) {
        OpenLine rest;
        const QString first = withoutNumbers(text.first(split), &rest);
        if (first + withoutNumbers(text.sliced(split), &rest) != expected || rest.held != whole.held)
            __builtin_trap();
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray received(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype ends = received.count('\x1a');
    checkOutput(received);
    qsizetype answers = 0;
    while (const std::optional<QByteArray> text = takeOpenOcdAnswer(&received)) {
        ++answers;
        for (const int width : {1, 2, 4}) {
            checkBytes(*text, width, false);
            checkBytes(*text, width, true);
        }
    }
    if (answers != ends || received.contains('\x1a'))
        __builtin_trap();
    return 0;
}

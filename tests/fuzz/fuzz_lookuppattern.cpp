// The first line of the input as a lookup pattern, the rest as a line of output.
#include "lookuppattern.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = input.section(u'\n', 1);
    for (const bool greedy : {false, true}) {
        LookupPattern pattern;
        const bool taken = pattern.set(input.section(u'\n', 0, 0), greedy);
        const std::optional<LookupPlace> place = pattern.find(text);
        if (place && !text.contains(place->file))
            qFatal("The file is not part of the text.");
        if (!taken && place != LookupPattern().find(text))
            qFatal("A refused pattern changes the result.");
    }
    return 0;
}

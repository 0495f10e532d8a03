// Any bytes as a table of contents of the help.
#include "helpcontents.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto contents = readHelpContents(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (contents && contents->kind != HelpEntry::Document)
        qFatal("The contents have no root.");
    return 0;
}

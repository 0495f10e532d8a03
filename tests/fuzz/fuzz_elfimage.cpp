#include "elfimage.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    (void)readElfImage(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}

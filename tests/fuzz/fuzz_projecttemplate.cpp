#include "projecttemplate.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const ProjectTemplate info = parseTemplate(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    if (info.displayName.size() > 200 || info.description.size() > 1000)
        abort();
    return 0;
}

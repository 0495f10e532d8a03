#include "svdfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QList<SvdPeripheral> peripherals;
    QString error;
    (void)readSvd(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)), &peripherals, &error);
    return 0;
}

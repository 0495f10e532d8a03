// Any text as an address of memory. The first bytes are the region.
#include "memorylayout.h"
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    struct
    {
        quint64 low = 0;
        quint64 high = 0;
    } limits;
    if (size < sizeof(limits))
        return 0;
    std::memcpy(&limits, data, sizeof(limits));
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data) + sizeof(limits), qsizetype(size - sizeof(limits)));
    MemoryRegion64 region;
    region.lowAddress = std::min(limits.low, limits.high);
    region.highAddress = std::max(limits.low, limits.high);
    const quint64 address = addressInRegion(typedMemoryAddress(text), region, 16);
    if (address < region.lowAddress || address > region.highAddress)
        qFatal("An address lies outside of its region.");
    const QString shown = memoryAddressText(address, addressDigits(region));
    if (typedMemoryAddress(shown) != address)
        qFatal("An address is read otherwise than it is shown.");
    return 0;
}

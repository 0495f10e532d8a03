#include "breakpointlist.h"
#include "mirecord.h"
#include "targetstate.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const MiRecord record = parseMiRecord(QByteArrayView(data, qsizetype(size)));
    (void)stopReason(record);
    (void)breakpointPlaces(record.results[u"bkpt"], false);
    return 0;
}

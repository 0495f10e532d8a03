#include "faultreport.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(FaultReport)
};

struct Cause
{
    uint bit;
    const char *name;
    const char *text;
};

constexpr uint MemoryAddressValid = 1u << 7;
constexpr uint BusAddressValid = 1u << 15;
constexpr uint Escalated = 1u << 30;

/// The bits of CFSR.
constexpr Cause ConfigurableCauses[] = {
    {0, "IACCVIOL", QT_TRANSLATE_NOOP("FaultReport", "an instruction was fetched where that is not allowed")},
    {1, "DACCVIOL", QT_TRANSLATE_NOOP("FaultReport", "data was accessed where that is not allowed")},
    {3, "MUNSTKERR",
     QT_TRANSLATE_NOOP("FaultReport", "the return from an exception read a stack where that is not allowed")},
    {4, "MSTKERR", QT_TRANSLATE_NOOP("FaultReport", "an exception wrote to a stack where that is not allowed")},
    {5, "MLSPERR", QT_TRANSLATE_NOOP("FaultReport", "floating point registers were saved where that is not allowed")},
    {8, "IBUSERR", QT_TRANSLATE_NOOP("FaultReport", "an instruction was fetched from an address without memory")},
    {9, "PRECISERR", QT_TRANSLATE_NOOP("FaultReport", "data was accessed at an address without memory or device")},
    {10, "IMPRECISERR",
     QT_TRANSLATE_NOOP("FaultReport", "a delayed write to an address without memory or device; the faulting "
                                      "instruction is an earlier one")},
    {11, "UNSTKERR", QT_TRANSLATE_NOOP("FaultReport", "the return from an exception read a stack without memory")},
    {12, "STKERR", QT_TRANSLATE_NOOP("FaultReport", "an exception wrote to a stack without memory")},
    {13, "LSPERR", QT_TRANSLATE_NOOP("FaultReport", "floating point registers were saved where there is no memory")},
    {16, "UNDEFINSTR", QT_TRANSLATE_NOOP("FaultReport", "the instruction is undefined")},
    {17, "INVSTATE",
     QT_TRANSLATE_NOOP("FaultReport", "the processor was not in Thumb state, as after a jump to an even address")},
    {18, "INVPC", QT_TRANSLATE_NOOP("FaultReport", "the return from an exception had an invalid return value")},
    {19, "NOCP", QT_TRANSLATE_NOOP("FaultReport", "a coprocessor or floating point unit is missing or disabled")},
    {20, "STKOF", QT_TRANSLATE_NOOP("FaultReport", "the stack limit was exceeded")},
    {24, "UNALIGNED", QT_TRANSLATE_NOOP("FaultReport", "data was accessed at an unaligned address")},
    {25, "DIVBYZERO", QT_TRANSLATE_NOOP("FaultReport", "a division by zero")},
};

/// The bits of HFSR.
constexpr Cause HardCauses[] = {
    {1, "VECTTBL", QT_TRANSLATE_NOOP("FaultReport", "the vector of an exception could not be read")},
    {31, "DEBUGEVT", QT_TRANSLATE_NOOP("FaultReport", "a breakpoint instruction without a debugger")},
};

QString exceptionName(uint number)
{
    static const QStringList names = {
        {}, {}, u"NMI"_s, u"HardFault"_s, u"MemManage fault"_s, u"BusFault"_s, u"UsageFault"_s, u"SecureFault"_s};
    if (number >= 16)
        return Text::tr("Interrupt %1").arg(number - 16);
    const QString name = names.value(int(number));
    return name.isEmpty() ? Text::tr("Exception %1").arg(number) : name;
}

QString hex(uint value)
{
    return u"0x"_s + QString::number(value, 16).rightJustified(8, u'0');
}

template <size_t N>
QString causesOf(uint bits, const Cause (&causes)[N])
{
    QString text;
    for (const Cause &cause : causes) {
        if (bits >> cause.bit & 1)
            text += u"    %1: %2\n"_s.arg(QLatin1StringView(cause.name), Text::tr(cause.text));
    }
    return text;
}

QString addresses(const FaultRecord &record)
{
    QString text;
    if (record.configurable & MemoryAddressValid)
        text += u"    MMFAR: "_s + Text::tr("the address was %1").arg(hex(record.memoryAddress)) + u'\n';
    if (record.configurable & BusAddressValid)
        text += u"    BFAR: "_s + Text::tr("the address was %1").arg(hex(record.busAddress)) + u'\n';
    return text;
}
} // namespace

QString faultReport(const FaultRecord &record)
{
    QString text = exceptionName(record.exception);
    if (record.exception == FirstFault && record.hard & Escalated)
        text += Text::tr(", escalated from another fault");
    if (record.hasFrame)
        text += record.place.isEmpty() ? Text::tr(" at %1").arg(hex(record.programCounter))
                                       : Text::tr(" at %1, %2").arg(hex(record.programCounter), record.place);
    text += u'\n';
    if (record.exception < FirstFault || record.exception > LastFault)
        return text; // the fault registers describe an older fault
    text += causesOf(record.hard, HardCauses) + causesOf(record.configurable, ConfigurableCauses) + addresses(record);
    return text + u"    CFSR %1, HFSR %2\n"_s.arg(hex(record.configurable), hex(record.hard));
}

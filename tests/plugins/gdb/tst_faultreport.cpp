#include "faultreport.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FaultReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void faultIsExplained_data();
    void faultIsExplained();
    void eachCauseIsExplained_data();
    void eachCauseIsExplained();
};

void tst_FaultReport::faultIsExplained_data()
{
    const auto record = [](uint exception, uint configurable, uint hard, const QString &place) {
        return FaultRecord{exception, configurable, hard, 0x1000, 0x60000000, 0x234, true, place};
    };
    QTest::addColumn<FaultRecord>("fault");
    QTest::addColumn<QString>("expected");
    QTest::newRow("bus fault with its address")
        << record(3, 0x8200, 0x40000000, u"crash (main.c, 7)"_s)
        << u"HardFault, escalated from another fault at 0x00000234, crash (main.c, 7)\n"
           "    PRECISERR: data was accessed at an address without memory or device\n"
           "    BFAR: the address was 0x60000000\n"
           "    CFSR 0x00008200, HFSR 0x40000000\n"_s;
    QTest::newRow("address that is not valid is not shown")
        << record(5, 0x400, 0, {})
        << u"BusFault at 0x00000234\n"
           "    IMPRECISERR: a delayed write to an address without memory or device; the faulting instruction is an "
           "earlier one\n"
           "    CFSR 0x00000400, HFSR 0x00000000\n"_s;
    QTest::newRow("memory fault") << record(4, 0x82, 0, {})
                                  << u"MemManage fault at 0x00000234\n"
                                     "    DACCVIOL: data was accessed where that is not allowed\n"
                                     "    MMFAR: the address was 0x00001000\n"
                                     "    CFSR 0x00000082, HFSR 0x00000000\n"_s;
    QTest::newRow("two causes") << record(6, 0x02010000, 0, {})
                                << u"UsageFault at 0x00000234\n"
                                   "    UNDEFINSTR: the instruction is undefined\n"
                                   "    DIVBYZERO: a division by zero\n"
                                   "    CFSR 0x02010000, HFSR 0x00000000\n"_s;
    QTest::newRow("vector") << record(3, 0, 2, {})
                            << u"HardFault at 0x00000234\n"
                               "    VECTTBL: the vector of an exception could not be read\n"
                               "    CFSR 0x00000000, HFSR 0x00000002\n"_s;
    QTest::newRow("frame is not known") << FaultRecord{3, 0, 0, 0, 0, 0, false, {}}
                                        << u"HardFault\n    CFSR 0x00000000, HFSR 0x00000000\n"_s;
    QTest::newRow("interrupt in a common handler") << record(21, 0x200, 0, {}) << u"Interrupt 5 at 0x00000234\n"_s;
    QTest::newRow("non-maskable interrupt") << record(2, 0, 0, {}) << u"NMI at 0x00000234\n"_s;
    QTest::newRow("other exception") << record(11, 0, 0, {}) << u"Exception 11 at 0x00000234\n"_s;
}

void tst_FaultReport::faultIsExplained()
{
    QFETCH(FaultRecord, fault);
    QTEST(faultReport(fault), "expected");
}

void tst_FaultReport::eachCauseIsExplained_data()
{
    QTest::addColumn<int>("bit"); // of CFSR
    QTest::addColumn<QString>("expected");
    const auto row = [](int bit, const char *name, const QString &text) {
        QTest::newRow(name) << bit << u"    %1: %2"_s.arg(QLatin1String(name), text);
    };
    row(0, "IACCVIOL", u"an instruction was fetched where that is not allowed"_s);
    row(1, "DACCVIOL", u"data was accessed where that is not allowed"_s);
    row(3, "MUNSTKERR", u"the return from an exception read a stack where that is not allowed"_s);
    row(4, "MSTKERR", u"an exception wrote to a stack where that is not allowed"_s);
    row(5, "MLSPERR", u"floating point registers were saved where that is not allowed"_s);
    row(8, "IBUSERR", u"an instruction was fetched from an address without memory"_s);
    row(9, "PRECISERR", u"data was accessed at an address without memory or device"_s);
    row(10, "IMPRECISERR",
        u"a delayed write to an address without memory or device; the faulting instruction is an earlier one"_s);
    row(11, "UNSTKERR", u"the return from an exception read a stack without memory"_s);
    row(12, "STKERR", u"an exception wrote to a stack without memory"_s);
    row(13, "LSPERR", u"floating point registers were saved where there is no memory"_s);
    row(16, "UNDEFINSTR", u"the instruction is undefined"_s);
    row(17, "INVSTATE", u"the processor was not in Thumb state, as after a jump to an even address"_s);
    row(18, "INVPC", u"the return from an exception had an invalid return value"_s);
    row(19, "NOCP", u"a coprocessor or floating point unit is missing or disabled"_s);
    row(20, "STKOF", u"the stack limit was exceeded"_s);
    row(24, "UNALIGNED", u"data was accessed at an unaligned address"_s);
    row(25, "DIVBYZERO", u"a division by zero"_s);
    QTest::newRow("DEBUGEVT") << -1 << u"    DEBUGEVT: a breakpoint instruction without a debugger"_s; // of HFSR
}

void tst_FaultReport::eachCauseIsExplained()
{
    QFETCH(int, bit);
    FaultRecord record;
    record.exception = FirstFault;
    record.configurable = bit < 0 ? 0 : 1u << bit;
    record.hard = bit < 0 ? 1u << 31 : 0;
    QTEST(faultReport(record).section(u'\n', 1, 1), "expected");
    QCOMPARE(faultReport(record).count(u'\n'), 3); // the exception, its cause, the registers
}

QTEST_APPLESS_MAIN(tst_FaultReport)
#include "tst_faultreport.moc"

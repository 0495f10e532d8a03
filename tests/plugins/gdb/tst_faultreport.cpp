#include "faultreport.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FaultReport : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void faultIsExplained_data();
    void faultIsExplained();
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

QTEST_APPLESS_MAIN(tst_FaultReport)
#include "tst_faultreport.moc"

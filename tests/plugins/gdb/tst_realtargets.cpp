#include "livesession.h"

using Env = IExecutionEnvironment;

/// What the windows of the debugger need, on one target of each processor family.
class RealTargetsTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QMap<QString, QString> m_options; ///< by the family

    static int regionAt(const QList<MemoryRegion> &regions, uint address)
    {
        for (const MemoryRegion &region : regions) {
            if (address >= region.lowAddress && address <= region.highAddress)
                return region.id;
        }
        return -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QString cortex = m_programs.firmware(u"cortex.elf"_s);
        const QString avr = m_programs.avr(u"avr.elf"_s);
        const QString riscv = m_programs.riscv(u"riscv.elf"_s);
        const QString native = m_programs.native(u"native"_s);
        for (const QString &image : {cortex, avr, riscv, native})
            QVERIFY(!image.isEmpty());
        m_options = {
            {u"cortex"_s, u"qemu:mps2-an385;image="_s + cortex},
            {u"avr"_s, u"remote:127.0.0.1:1234;server=simavr -m atmega328p -f 16000000 -g $(Program);image="_s + avr},
            {u"riscv"_s, u"qemu:virt;qemuArguments=-bios none;image="_s + riscv},
            {u"native"_s, u"native:"_s + native}};
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void registersAndMemoryAreWrittenAndReadBack_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QString>("wide"); // a general register
        QTest::addColumn<uint>("wideValue");
        QTest::addColumn<QString>("variable"); // a global one
        QTest::newRow("Cortex-M3") << u"cortex"_s << u"r5"_s << 0xcafe0001U << u"loops"_s;
        QTest::newRow("AVR") << u"avr"_s << u"r17"_s << 0xa5U << u"count"_s;
        QTest::newRow("RISC-V") << u"riscv"_s << u"s3"_s << 0x89abcdefU << u"count"_s;
        QTest::newRow("x86-64") << u"native"_s << u"r12"_s << 0x12345678U << u"loops"_s;
    }
    void registersAndMemoryAreWrittenAndReadBack()
    {
        QFETCH(QString, family);
        QFETCH(QString, wide);
        QFETCH(uint, wideValue);
        QFETCH(QString, variable);
        LiveSession session(m_options.value(family));
        QVERIFY(session.start());
        const auto registers = session.get<IRegisters>();
        registers->setValue(wide, wideValue, 0);
        QCOMPARE(registers->value(wide, 0), wideValue);
        QVERIFY(session.evaluate(u"$"_s + wide + u",x"_s).endsWith(QString::number(wideValue, 16)));
        const QString address =
            session.evaluate(u'&' + variable); // of an AVR: no number, which would be one of its code
        const uint at = uint(address.mid(address.indexOf("0x"_L1)).section(u' ', 0, 0).toULongLong(nullptr, 16));
        const auto memory = session.get<IMemory>();
        const int region = regionAt(memory->regions(), at);
        QVERIFY2(region >= 0, qPrintable(address));
        QCOMPARE(memory->write(region, IMemory::Byte, at, 0x5a, false), int(IMemory::Success));
        uint value = 0;
        QCOMPARE(memory->read(region, IMemory::Byte, at, &value), int(IMemory::Success));
        QCOMPARE(value, 0x5au);
        QVERIFY(session.evaluate(variable).startsWith(u"90"_s));
        session.env->stop();
    }

    void deviceThatWasSetActs()
    {
        constexpr uint Control = 0x40002028; // of BLOCK1
        constexpr uint Enabled32Bits = 0xc2;
        LiveSession session(m_options.value(u"cortex"_s) + u";svdFile="_s + Programs::source(u"board.svd"_s));
        QVERIFY(session.start());
        const auto devices = session.get<IPeripherals>();
        const auto memory = session.get<IMemory>();
        devices->setValue(u"BLOCK1.LOAD"_s, u"BLOCK1.LOAD"_s, 0x700000);
        QCOMPARE(devices->value(u"DUALTIMER"_s, u"BLOCK1.LOAD"_s), 0x700000u);
        const int region = regionAt(memory->regions(), Control);
        QCOMPARE(memory->write(region, IMemory::Word32, Control, Enabled32Bits, false), int(IMemory::Success));
        const uint before = devices->value(u"DUALTIMER"_s, u"BLOCK1.VALUE"_s);
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramRunning));
        QTRY_VERIFY(devices->value(u"DUALTIMER"_s, u"BLOCK1.VALUE"_s) != before); // the timer counts
        session.env->pause();
        QVERIFY(session.waitFor(Env::ProgramPaused));
        const uint paused = devices->value(u"DUALTIMER"_s, u"BLOCK1.VALUE"_s);
        QCOMPARE(devices->value(u"DUALTIMER"_s, u"BLOCK1.VALUE"_s), paused);
    }

    void fieldThatWasSetStartsTheTimer()
    {
        LiveSession session(m_options.value(u"cortex"_s) + u";svdFile="_s + Programs::source(u"board.svd"_s));
        QVERIFY(session.start());
        const auto devices = session.get<IPeripherals>();
        const auto fields = session.get<IPeripheralFields>()->details(u"DUALTIMER"_s, u"BLOCK0.CONTROL"_s).fields;
        const auto setField = [&](const QString &name) { // as the window does
            const auto field = std::ranges::find(fields, name, &PeripheralFieldInfo::name);
            QVERIFY(field != fields.end());
            const uint control = devices->value(u"DUALTIMER"_s, u"BLOCK0.CONTROL"_s);
            devices->setValue(u"BLOCK0.CONTROL"_s, u"BLOCK0.CONTROL"_s, control | 1u << field->lowBit);
        };
        const auto runAndPause = [&] {
            session.env->run();
            QVERIFY(session.waitFor(Env::ProgramRunning));
            session.env->pause();
            QVERIFY(session.waitFor(Env::ProgramPaused));
        };
        devices->setValue(u"BLOCK0.LOAD"_s, u"BLOCK0.LOAD"_s, 0x70000000);
        setField(u"SIZE"_s);
        setField(u"MODE"_s);
        const uint before = devices->value(u"DUALTIMER"_s, u"BLOCK0.VALUE"_s);
        runAndPause();
        QCOMPARE(devices->value(u"DUALTIMER"_s, u"BLOCK0.VALUE"_s), before);
        setField(u"ENABLE"_s);
        runAndPause();
        QVERIFY(devices->value(u"DUALTIMER"_s, u"BLOCK0.VALUE"_s) < before);
    }

    void longFlagsAndVectorRegistersAreWrittenAndReadBack()
    {
        LiveSession session(m_options.value(u"native"_s));
        QVERIFY(session.start());
        const auto registers = session.get<IRegisters>();
        registers->setValue(u"r12"_s, 0x89abcdef, 0);
        registers->setValue(u"r12"_s, 0x01234567, 1);
        QCOMPARE(session.evaluate(u"$r12,x"_s), u"0x123456789abcdef"_s);
        QCOMPARE(registers->value(u"r12"_s, 1), 0x01234567u);
        constexpr uint Carry = 1;
        registers->setValue(u"eflags"_s, registers->value(u"eflags"_s, 0) ^ Carry, 0);
        const bool carries = registers->value(u"eflags"_s, 0) & Carry;
        QCOMPARE(session.evaluate(u"$eflags"_s).contains(u"CF"_s), carries);
        for (int word = 0; word < 4; ++word)
            registers->setValue(u"xmm3"_s, 0x11111111u * uint(word + 1), word);
        for (int word = 0; word < 4; ++word)
            QCOMPARE(registers->value(u"xmm3"_s, word), 0x11111111u * uint(word + 1));
        QCOMPARE(session.evaluate(u"$xmm3.v4_int32[2],x"_s), u"0x33333333"_s);
    }

    void registersOf80BitsAreReadOnly()
    {
        LiveSession session(m_options.value(u"native"_s));
        QVERIFY(session.start());
        const auto registers = session.get<IRegisters>();
        const QList<RegisterInfo> list = registers->registers();
        const auto entry = std::ranges::find(list, u"st0"_s, &RegisterInfo::name);
        QVERIFY(entry != list.end());
        QCOMPARE(entry->width, 80u);
        QVERIFY(entry->readOnly);
        const uint before = registers->value(u"st0"_s, 0);
        registers->setValue(u"st0"_s, ~before, 0);
        QCOMPARE(registers->value(u"st0"_s, 0), before);
    }

    void hundredWatchesAreEvaluated_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<QString>("expression");
        QTest::newRow("Cortex-M3") << u"cortex"_s << u"loops + %1"_s;
        QTest::newRow("AVR") << u"avr"_s << u"count + %1"_s;
        QTest::newRow("RISC-V") << u"riscv"_s << u"numbers[%1] + %1"_s;
        QTest::newRow("x86-64") << u"native"_s << u"loops + %1"_s;
    }
    void hundredWatchesAreEvaluated()
    {
        QFETCH(QString, family);
        QFETCH(QString, expression);
        LiveSession session(m_options.value(family));
        QVERIFY(session.start());
        for (int i = 0; i < 100; ++i)
            QCOMPARE(session.evaluate(expression.arg(i)), QString::number(i));
    }

    void missingMemoryAndMissingRegistersAreNoErrors_data()
    {
        QTest::addColumn<QString>("family");
        for (const QString &family : m_options.keys())
            QTest::newRow(qPrintable(family)) << family;
    }
    void missingMemoryAndMissingRegistersAreNoErrors()
    {
        QFETCH(QString, family);
        LiveSession session(m_options.value(family));
        QVERIFY(session.start());
        QCOMPARE(session.get<IRegisters>()->value(u"none"_s, 0), 0u);
        uint value = 0;
        QCOMPARE(session.get<IMemory>()->read(999, IMemory::Byte, 0, &value), int(IMemory::NoMemory));
        QCOMPARE(session.get<IMemory>()->write(999, IMemory::Byte, 0, 1, false), int(IMemory::NoMemory));
    }
};

QTEST_MAIN(RealTargetsTest)
#include "tst_realtargets.moc"

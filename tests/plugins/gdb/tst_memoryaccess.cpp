#include "fakegdb.h"
#include "imemory64.h"
#include "livesession.h"
#include "mirecord.h"

/// Blocks of memory of which parts cannot be read, devices, and addresses above 32 bits.
class MemoryAccessTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_firmware;
    QString m_native;

    [[nodiscard]] QString remote(const FakeGdb &gdb, const QString &regions) const
    {
        return u"remote:host:1;image=%1;gdb=%2;runTo=;regions=%3"_s.arg(m_firmware, gdb.path(), regions);
    }
    static FakeGdb::Answer bytesAt(uint address, const QString &contents)
    {
        return {u"-data-read-memory-bytes 0x%1 "_s.arg(address, 0, 16),
                {u"TOKEN^done,memory=[{begin=\"0x%1\",offset=\"0x0\",end=\"0x0\",contents=\"%2\"}]"_s.arg(
                    QString::number(address, 16), contents)}};
    }
    /// "value" of each cell that was read, "?" and its status for the others.
    static QString text(const MemoryBlock &block)
    {
        QStringList cells;
        for (const MemoryBlockCell &cell : block)
            cells += cell.status == IMemory::Success ? QString::number(cell.value, 16) : u"?%1"_s.arg(cell.status);
        return cells.join(u' ');
    }
    static QString text(const MemoryBlock64 &block)
    {
        MemoryBlock cells;
        for (const MemoryBlockCell64 &cell : block)
            cells.append({uint(cell.value), cell.status});
        return text(cells);
    }
    static QString block(const LiveSession &session, int region, int mode, uint address, int count)
    {
        MemoryBlock cells;
        session.get<IMemory>()->readBlock(region, mode, address, count, cells);
        return text(cells);
    }
    static quint64 number(const LiveSession &session, const QString &expression)
    {
        return session.evaluate(u"(unsigned long)("_s + expression + u"),x"_s).toULongLong(nullptr, 16);
    }
    /// The region of an address above 4 GB; negative if there is none.
    static int regionAt(const LiveSession &session, quint64 address)
    {
        for (const MemoryRegion64 &region : session.get<IMemory64>()->regions()) {
            if (address >= region.lowAddress && address <= region.highAddress)
                return region.id;
        }
        return -1;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_firmware = m_programs.firmware(u"firmware.elf"_s);
        m_native = m_programs.native(u"demo"_s);
        QVERIFY(!m_firmware.isEmpty() && !m_native.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void partsOfABlockThatCanBeReadAreShown_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("cells");
        QTest::newRow("bytes") << int(IMemory::Byte) << u"?2 ?2 11 22 33 ?2 44 55"_s;
        QTest::newRow("16 bits") << int(IMemory::Word16) << u"?2 2211 ?2 5544"_s;
        QTest::newRow("32 bits") << int(IMemory::Word32) << u"?2 ?2"_s;
    }
    void partsOfABlockThatCanBeReadAreShown()
    {
        QFETCH(int, mode);
        const FakeGdb gdb({{u"-data-read-memory-bytes"_s,
                            {u"TOKEN^done,memory=[{begin=\"0x12\",offset=\"0x2\",end=\"0x15\",contents=\"112233\"},"
                             "{begin=\"0x16\",offset=\"0x6\",end=\"0x18\",contents=\"4455\"}]"_s}}});
        LiveSession session(remote(gdb, u"RAM:0:1K:ram"_s));
        QVERIFY(session.start());
        QTEST(block(session, 0, mode, 0x10, 8 / memoryCellWidth(mode)), "cells");
    }

    void rangesOutsideOfTheBlockAreIgnored()
    {
        const FakeGdb gdb({{u"-data-read-memory-bytes"_s,
                            {u"TOKEN^done,memory=[{begin=\"0xc\",contents=\"aabbccdd\"},{begin=\"0x12\","
                             "contents=\"112233445566\"},{begin=\"0x8000000000000000\",contents=\"ee\"}]"_s}}});
        LiveSession session(remote(gdb, u"RAM:0:1K:ram"_s));
        QVERIFY(session.start());
        QCOMPARE(block(session, 0, IMemory::Byte, 0x10, 4), u"?2 ?2 11 22"_s);
    }

    void blockEndsWithItsRegion()
    {
        const FakeGdb gdb({bytesAt(0x3fe, u"0102"_s)});
        LiveSession session(remote(gdb, u"RAM:0:1K:ram"_s));
        QVERIFY(session.start());
        QCOMPARE(block(session, 0, IMemory::Byte, 0x3fe, 4), u"1 2 ?2 ?2"_s);
        QCOMPARE(block(session, 0, IMemory::Byte, 0x400, 2), u"?2 ?2"_s);
        QCOMPARE(block(session, 1, IMemory::Byte, 0, 1), u"?2"_s);
        QCOMPARE(block(session, 0, 3, 0, 1), u"?2"_s); // no mode
        QCOMPARE(block(session, 0, IMemory::Byte, 0, 0), QString());
        QCOMPARE(block(session, 0, IMemory::Byte, 0, -1), QString());
    }

    void devicesAreReadInSingleAccesses()
    {
        const FakeGdb gdb({bytesAt(0x40000000, u"01000000"_s),
                           FakeGdb::error(u"-data-read-memory-bytes 0x40000004"_s, u"no"_s),
                           bytesAt(0x40000008, u"03000000"_s)});
        QStringList reads; // the session writes to it until its end
        LiveSession session(remote(gdb, u"IO:0x40000000:64:io"_s));
        QVERIFY(session.start());
        connect(session.env->session()->gdb(), &MiConnection::dialogue, this, [&](const QString &line, bool fromUs) {
            if (fromUs)
                reads += line.section(u' ', 1).trimmed();
        });
        // A register that cannot be read does not hide the one behind it.
        QCOMPARE(block(session, 0, IMemory::Word32, 0x40000000, 3), u"1 ?2 3"_s);
        QCOMPARE(reads, (QStringList{u"0x40000000 4"_s, u"0x40000004 4"_s, u"0x40000008 4"_s}));
        reads.clear();
        block(session, 0, IMemory::Word16, 0x40000000, 2);
        QCOMPARE(reads, (QStringList{u"0x40000000 2"_s, u"0x40000002 2"_s})); // neither joined nor split
    }

    /// A window reads for a limited time while it is redrawn; scripts get the whole block.
    void slowDevicesEndABlockOfAWindow()
    {
        const FakeGdb gdb({{u"-data-read-memory-bytes 0x40000000"_s,
                            {u"SLEEP 0.06"_s, u"TOKEN^done,memory=[{begin=\"0x40000000\",contents=\"01000000\"}]"_s}},
                           bytesAt(0x40000004, u"02000000"_s)});
        LiveSession session(remote(gdb, u"IO:0x40000000:64:io"_s));
        QVERIFY(session.start());
        MemoryBlock64 wide;
        session.get<IMemory64>()->readBlock(0, IMemory::Word32, 0x40000000, 2, wide);
        QCOMPARE(text(wide), u"1 ?2"_s);
        QCOMPARE(block(session, 0, IMemory::Word32, 0x40000000, 2), u"1 2"_s);
    }

    void regionThatDoesNotAnswerHasNoMemory()
    {
        LiveSession session(u"qemu:mps2-an385;image="_s + m_firmware,
                            {{u"gdbRegions"_s, u"Hole:0x60000000:4K:ram;Data:0x20000000:4M:ram"_s}});
        QVERIFY(session.start());
        QVERIFY(!session.evaluate(u"loops=5"_s).startsWith(u"error"_s));
        const auto loops = uint(number(session, u"&loops"_s));
        QCOMPARE(block(session, 0, IMemory::Word32, 0x60000000, 3), u"?2 ?2 ?2"_s);
        QCOMPARE(block(session, 1, IMemory::Word32, loops, 1), u"5"_s);
        const auto memory = session.get<IMemory>();
        uint value = 0;
        QCOMPARE(memory->read(0, IMemory::Word32, 0x60000000, &value), int(IMemory::NoMemory));
        queryInterface<IMemoryVerify>(memory.get())->setVerify(true);
        QCOMPARE(memory->write(0, IMemory::Word32, 0x60000000, 1, true), int(IMemory::NoMemory));
        QCOMPARE(memory->write(1, IMemory::Word32, loops, 6, true), int(IMemory::Success));
        QCOMPARE(session.events.serious, QString());
    }

    void addressesAbove32BitsAreReadAndWritten()
    {
        LiveSession session(u"native:"_s + m_native);
        QVERIFY(session.start());
        const auto memory = session.get<IMemory64>();
        QVERIFY(memory);
        const quint64 stack = number(session, u"&sum"_s);
        QVERIFY(stack > 0xffffffff);
        const int region = regionAt(session, stack);
        QVERIFY(region >= 0);
        QVERIFY(!session.evaluate(u"sum=0x12345678"_s).startsWith(u"error"_s));
        quint64 value = 0;
        QCOMPARE(memory->read(region, IMemory::Word32, stack, &value), int(IMemory::Success));
        QCOMPARE(value, quint64(0x12345678));
        QCOMPARE(memory->read(region, IMemory::Word32, stack, nullptr), int(IMemory::BadPointer));
        QCOMPARE(memory->write(region, IMemory::Word16, stack, 0xaaaa, true), int(IMemory::Success));
        QCOMPARE(session.evaluate(u"sum,x"_s), u"0x1234aaaa"_s);
        MemoryBlock64 cells{{1, 0}, {2, 0}};
        memory->writeBlock(region, IMemory::Byte, stack, 2, cells, true);
        QCOMPARE(text(cells), u"1 2"_s);
        memory->readBlock(region, IMemory::Byte, stack, 4, cells);
        QCOMPARE(text(cells), u"1 2 34 12"_s);
        QCOMPARE(memory->read(region, IMemory::Word32, stack & 0xffffffff, &value), int(IMemory::NoMemory));
        QCOMPARE(memory->write(999, IMemory::Byte, stack, 1, true), int(IMemory::NoMemory));
        memory->writeBlock(region, 3, stack, 1, cells, true); // no mode
        QCOMPARE(cells.first().status, int(IMemory::NoMemory));
    }

    void bothInterfacesHaveTheSameRegions()
    {
        LiveSession session(u"native:"_s + m_native);
        QVERIFY(session.start());
        const QList<MemoryRegion> narrow = session.get<IMemory>()->regions();
        const QList<MemoryRegion64> wide = session.get<IMemory64>()->regions();
        QCOMPARE(wide.size(), narrow.size());
        for (qsizetype i = 0; i < wide.size(); ++i) {
            QCOMPARE(wide[i].id, narrow[i].id);
            QCOMPARE(wide[i].name, narrow[i].name);
            QCOMPARE(uint(wide[i].lowAddress), narrow[i].lowAddress);
            QCOMPARE(wide[i].readOnly, narrow[i].readOnly);
            QCOMPARE(wide[i].modes, narrow[i].modes);
        }
    }
};

QTEST_MAIN(MemoryAccessTest)
#include "tst_memoryaccess.moc"

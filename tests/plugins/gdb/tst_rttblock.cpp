#include "memorycell.h"
#include "rttblock.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// The bytes of a control block.
class BlockBytes
{
public:
    explicit BlockBytes(const RttLayout &layout, uint ups = 1, uint downs = 1) : m_layout(layout)
    {
        m_bytes = rttIdentifier().toByteArray().leftJustified(16, '\0');
        number(ups);
        number(downs);
    }
    void number(uint value) { m_bytes += memoryCellBytes(value, 4, m_layout.bigEndian); }
    void pointer(quint64 value)
    {
        if (m_layout.pointerSize == 4)
            return number(uint(value));
        number(uint(m_layout.bigEndian ? value >> 32 : value));
        number(uint(m_layout.bigEndian ? value : value >> 32));
    }
    void buffer(quint64 start, uint size, uint write, uint read)
    {
        pointer(0x99);
        pointer(start);
        for (const uint value : {size, write, read, 2u})
            number(value);
    }
    [[nodiscard]] QByteArray bytes() const { return m_bytes; }

private:
    const RttLayout m_layout;
    QByteArray m_bytes;
};
} // namespace

Q_DECLARE_METATYPE(RttLayout)

/// The control block for text in memory.
class RttBlockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void blockIsRead_data()
    {
        QTest::addColumn<RttLayout>("layout");
        QTest::addColumn<quint64>("start");
        QTest::addColumn<uint>("offset"); // of the first write offset
        QTest::addColumn<uint>("length"); // of a buffer
        QTest::newRow("32 bits") << RttLayout{4, false} << quint64(0x20000100) << 36u << 24u;
        QTest::newRow("64 bits") << RttLayout{8, false} << quint64(0x1234567820000100) << 44u << 32u;
        QTest::newRow("big endian") << RttLayout{4, true} << quint64(0x20000100) << 36u << 24u;
        QTest::newRow("64 bits, big endian") << RttLayout{8, true} << quint64(0x1234567820000100) << 44u << 32u;
    }
    void blockIsRead()
    {
        QFETCH(RttLayout, layout);
        QFETCH(quint64, start);
        QFETCH(uint, offset);
        QFETCH(uint, length);
        BlockBytes block(layout, 2, 3);
        block.buffer(start, 1024, 7, 5);
        block.buffer(1, 2, 3, 4);
        block.buffer(start + 0x1000, 16, 15, 14);
        QCOMPARE(rttLength(block.bytes(), layout), std::optional(24 + 3 * int(length)));
        const std::optional<RttBlock> read = parseRttBlock(block.bytes(), 0x1000, layout);
        QVERIFY(read && read->down);
        QCOMPARE(read->up, (RttBuffer{start, 1024, 7, 5, 0x1000 + offset, 0x1000 + offset + 4}));
        const quint64 second = 0x1000 + offset + 2 * length;
        QCOMPARE(*read->down, (RttBuffer{start + 0x1000, 16, 15, 14, second, second + 4}));
        QVERIFY(!parseRttBlock(block.bytes().chopped(1), 0x1000, layout));
    }

    void blockWithoutInputIsRead()
    {
        BlockBytes block({}, 1, 0);
        block.buffer(0x100, 8, 0, 0);
        QCOMPARE(rttLength(block.bytes(), {}), std::optional(48));
        const std::optional<RttBlock> read = parseRttBlock(block.bytes(), 0, {});
        QVERIFY(read && !read->down);
    }

    void otherBytesAreNoBlock()
    {
        QVERIFY(!rttLength({}, {}));
        QVERIFY(!rttLength(BlockBytes({}).bytes().first(23), {}));
        QVERIFY(!rttLength(QByteArray(24, '\1'), {}));
        QVERIFY(!rttLength(BlockBytes({}, 0, 1).bytes(), {}));
        QVERIFY(!rttLength(BlockBytes({}, 65, 1).bytes(), {}));
        QVERIFY(!rttLength(BlockBytes({}, 1, 65).bytes(), {}));
        QVERIFY(!rttLength(BlockBytes({}, 0xffffffff, 1).bytes(), {}));
        QVERIFY(rttLength(BlockBytes({}, 64, 64).bytes(), {}));
        QVERIFY(!parseRttBlock(BlockBytes({}).bytes(), 0, {}));
        QVERIFY(!parseRttBlock({}, 0, {}));
    }

    void roomOfABuffer_data()
    {
        QTest::addColumn<uint>("write");
        QTest::addColumn<uint>("read");
        QTest::addColumn<uint>("readable");
        QTest::addColumn<uint>("writable");
        QTest::newRow("empty at the start") << 0u << 0u << 0u << 7u; // one byte stays free
        QTest::newRow("empty") << 3u << 3u << 0u << 5u;              // to the end, then again from the start
        QTest::newRow("empty at the end") << 7u << 7u << 0u << 1u;
        QTest::newRow("some") << 5u << 2u << 3u << 3u;
        QTest::newRow("full from the start") << 7u << 0u << 7u << 0u;
        QTest::newRow("full") << 3u << 4u << 4u << 0u;
        QTest::newRow("over the end") << 2u << 6u << 2u << 3u;
        QTest::newRow("the rest at the start") << 2u << 0u << 2u << 5u;
    }
    void roomOfABuffer()
    {
        QFETCH(uint, write);
        QFETCH(uint, read);
        const RttBuffer buffer{0x100, 8, write, read, 0, 0};
        QVERIFY(buffer.isValid());
        QTEST(buffer.readable(), "readable");
        QTEST(buffer.writable(), "writable");
        QCOMPARE(buffer.advanced(6, 1), 7u);
        QCOMPARE(buffer.advanced(6, 2), 0u);
    }

    void offsetsOutsideTheBufferAreInvalid()
    {
        QVERIFY(!(RttBuffer{0x100, 0, 0, 0, 0, 0}).isValid());
        QVERIFY(!(RttBuffer{0x100, 8, 8, 0, 0, 0}).isValid());
        QVERIFY(!(RttBuffer{0x100, 8, 0, 8, 0, 0}).isValid());
        QVERIFY((RttBuffer{0x100, 8, 7, 7, 0, 0}).isValid());
    }
};

QTEST_APPLESS_MAIN(RttBlockTest)
#include "tst_rttblock.moc"

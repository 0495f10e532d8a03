#include "fakeopenocd.h"
#include "openocdport.h"
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTcpServer>

/// The memory of a target through OpenOCD.
class OpenOcdPortTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int Patient = 10000;

    static QByteArray readOnce(OpenOcdPort &port, quint64 address, int length)
    {
        std::optional<QByteArray> result;
        port.read(address, length, [&](const QByteArray &bytes) { result = bytes; });
        [&] { QTRY_VERIFY(result.has_value()); }();
        return result.value_or("no answer");
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void widthOfAnAccess_data()
    {
        QTest::addColumn<quint64>("address");
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("width");
        QTest::newRow("byte") << quint64(0x1000) << 1 << 1;
        QTest::newRow("half word") << quint64(0x1002) << 2 << 2;
        QTest::newRow("word") << quint64(0x1004) << 4 << 4;
        QTest::newRow("unaligned word") << quint64(0x1002) << 4 << 2;
        QTest::newRow("odd address") << quint64(0x1001) << 4 << 1;
        QTest::newRow("block of words") << quint64(0x1000) << 64 << 4;
        QTest::newRow("odd length") << quint64(0x1000) << 7 << 1;
    }
    void widthOfAnAccess()
    {
        QFETCH(quint64, address);
        QFETCH(int, length);
        QTEST(accessWidth(address, length), "width");
    }

    void accessesUseTheWidestWords()
    {
        FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), false, Patient);
        QVERIFY(port.writeNow(0x100, QByteArray::fromHex("0102030405060708")));
        QVERIFY(port.writeNow(0x102, QByteArray::fromHex("aabb")));
        QVERIFY(port.writeNow(0x105, QByteArray::fromHex("cc")));
        QByteArray bytes;
        QVERIFY(port.readNow(0x100, 8, &bytes));
        QCOMPARE(bytes.toHex(), QByteArray("0102aabb05cc0708"));
        QCOMPARE(readOnce(port, 0x101, 3).toHex(), QByteArray("02aabb"));
        QCOMPARE(server.commands(), u"< write_memory 0x100 32 {0x4030201 0x8070605}\n"
                                    "< write_memory 0x102 16 {0xbbaa}\n"
                                    "< write_memory 0x105 8 {0xcc}\n"
                                    "< read_memory 0x100 32 2\n"
                                    "< read_memory 0x101 8 3\n"_s);
    }

    /// OpenOCD writes and reads numbers, in the order of bytes of its target.
    void bigEndianWordsAreTurned()
    {
        FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), true, Patient);
        QVERIFY(port.writeNow(0, QByteArray::fromHex("01020304")));
        QCOMPARE(server.commands(), u"< write_memory 0x0 32 {0x1020304}\n"_s);
        QByteArray bytes;
        QVERIFY(port.readNow(0, 4, &bytes));
        QCOMPARE(bytes.toHex(), QByteArray("01020304"));
    }

    void failuresHaveNoBytes()
    {
        FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), false, Patient);
        QByteArray bytes("old");
        QVERIFY(!port.readNow(0x10000, 4, &bytes));
        QCOMPARE(bytes, QByteArray());
        QVERIFY(!port.readNow(0, 0, &bytes));
        QVERIFY(!port.writeNow(0x10000, "x"));
        QCOMPARE(readOnce(port, 0x10000, 4), QByteArray());
        std::optional<bool> written;
        port.write(0x10000, "x", [&](bool success) { written = success; });
        QTRY_VERIFY(written.has_value());
        QVERIFY(!*written);
        QVERIFY(port.isUsable()); // the next address may be readable
        QVERIFY(port.readNow(0, 4, &bytes));
    }

    void answersComeInTheirOrder()
    {
        FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), false, Patient);
        QStringList order;
        port.write(0, "\1\2\3\4", [&](bool) { order.append(u"write"_s); });
        port.read(0, 4, [&](const QByteArray &bytes) {
            order.append(QString::fromLatin1(bytes.toHex()));
            QByteArray again;
            if (port.readNow(1, 1, &again)) // inside the receiver of an answer
                order.append(QString::fromLatin1(again.toHex()));
        });
        QTRY_COMPARE(order, (QStringList{u"write"_s, u"01020304"_s, u"02"_s}));
    }

    void lateAnswerDoesNotKeepTheNextOnesWaiting()
    {
        const FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), false);
        std::optional<bool> written;
        port.write(0, "\1\2\3\4", [&](bool success) { written = success; });
        QTRY_VERIFY(written.has_value());
        QByteArray bytes;
        server.delay(2000);
        QVERIFY(!port.readNow(0, 4, &bytes));
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 100; ++i)
            QVERIFY(!port.readNow(0, 4, &bytes));
        QVERIFY2(timer.elapsed() < 1000, QByteArray::number(timer.elapsed())); // 100 waits would last for 10 s
        server.delay(0);
        bool isRead = false; // after the late answer
        QTRY_VERIFY_WITH_TIMEOUT(isRead || (isRead = port.readNow(0, 4, &bytes)), 20000);
        QCOMPARE(bytes.toHex(), QByteArray("01020304"));
    }

    void endOfTheServerAnswersAll()
    {
        FakeOpenOcd server;
        OpenOcdPort port(u"127.0.0.1"_s, server.port(), false, Patient);
        const QSignalSpy failed(&port, &OpenOcdPort::failed);
        QByteArray bytes;
        QVERIFY(port.readNow(0, 4, &bytes));
        server.delay(5000);
        int answers = 0;
        port.read(0, 4, [&](const QByteArray &read) { answers += read.isEmpty(); });
        port.write(0, "x", [&](bool success) { answers += !success; });
        server.end();
        QTRY_COMPARE(answers, 2);
        QCOMPARE(failed.size(), 1);
        QVERIFY(!port.isUsable());
        QVERIFY(!port.readNow(0, 4, &bytes));
        port.write(0, "x", [&](bool success) { answers += !success; });
        QCOMPARE(answers, 3);
    }

    void refusedConnectionIsReported()
    {
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost));
        const quint16 port = probe.serverPort();
        probe.close();
        OpenOcdPort memory(u"127.0.0.1"_s, port, false);
        const QSignalSpy failed(&memory, &OpenOcdPort::failed);
        QVERIFY(memory.isUsable());
        QByteArray bytes;
        QVERIFY(!memory.readNow(0, 4, &bytes));
        QTRY_COMPARE(failed.size(), 1);
        QVERIFY(!memory.isUsable());
    }

    void serverThatWritesWithoutEndIsLeft()
    {
        QTcpServer flood;
        QVERIFY(flood.listen(QHostAddress::LocalHost));
        OpenOcdPort memory(u"127.0.0.1"_s, flood.serverPort(), false);
        int answers = 0;
        memory.read(0, 4, [&](const QByteArray &) { ++answers; });
        QTRY_VERIFY(flood.hasPendingConnections());
        QTcpSocket *client = flood.nextPendingConnection();
        client->write(QByteArray(3 << 20, 'x'));
        QTRY_COMPARE(answers, 1);
        QVERIFY(!memory.isUsable());
    }

    void deletedPortAnswersNothing()
    {
        FakeOpenOcd server;
        auto port = std::make_unique<OpenOcdPort>(u"127.0.0.1"_s, server.port(), false, Patient);
        int answers = 0;
        port->read(0, 4, [&](const QByteArray &) { ++answers; });
        port.reset();
        QTest::qWait(50);
        QCOMPARE(answers, 0);
    }
};

QTEST_MAIN(OpenOcdPortTest)
#include "tst_openocdport.moc"

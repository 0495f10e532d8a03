#include "svdfile.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_SvdFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void registersAreRead_data();
    void registersAreRead();
    void fieldsAreRead_data();
    void fieldsAreRead();
    void invalidDescriptionIsRefused_data();
    void invalidDescriptionIsRefused();
};

namespace {
QByteArray device(const QByteArray &peripherals, const QByteArray &defaults = {})
{
    return "<device>" + defaults + "<peripherals>" + peripherals + "</peripherals></device>";
}

/// "NAME@address/width" and the letters r, w, c (reading changes), z (ones clear), by peripherals.
QString text(const QList<SvdPeripheral> &peripherals)
{
    QString lines;
    for (const SvdPeripheral &peripheral : peripherals) {
        QStringList parts{peripheral.name + u':'};
        for (const SvdRegister &device : peripheral.registers)
            parts.append(u"%1@%2/%3%4%5%6%7"_s.arg(device.name, QString::number(device.address, 16))
                             .arg(device.width)
                             .arg(device.readable ? u"r"_s : QString(), device.writable ? u"w"_s : QString(),
                                  device.readingChanges ? u"c"_s : QString(), device.onesClear ? u"z"_s : QString()));
        lines += parts.join(u' ') + u'\n';
    }
    return lines;
}
} // namespace

void tst_SvdFile::registersAreRead_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("expected");
    const QByteArray simple = "<peripheral><name>A</name><baseAddress>0x100</baseAddress><registers>"
                              "<register><name>Y</name><addressOffset>4</addressOffset></register>"
                              "<register><name>X</name><addressOffset>0</addressOffset><size>8</size></register>"
                              "</registers></peripheral>";
    QTest::newRow("by address") << device(simple) << u"A: X@100/8rw Y@104/32rw\n"_s;
    QTest::newRow("settings are handed down")
        << device(simple, "<size>16</size><access>read-only</access>") << u"A: X@100/8r Y@104/16r\n"_s;
    QTest::newRow("no registers") << device("<peripheral><name>A</name></peripheral>") << u"A:\n"_s;
    QTest::newRow("access") << device(
        "<peripheral><name>A</name><registers>"
        "<register><name>W</name><access>write-only</access></register>"
        "<register><name>O</name><access>writeOnce</access><addressOffset>4</addressOffset></register>"
        "<register><name>C</name><readAction>clear</readAction><addressOffset>8</addressOffset></register>"
        "<register><name>Z</name><modifiedWriteValues>oneToClear</modifiedWriteValues><addressOffset>12</"
        "addressOffset></register>"
        "<register><name>F</name><addressOffset>16</addressOffset><fields><field><name>f</name><readAction>set</"
        "readAction></field></fields></register>"
        "</registers></peripheral>")
                            << u"A: W@0/32w O@4/32w C@8/32rwc Z@c/32rwz F@10/32rwc\n"_s;
    QTest::newRow("derived") << device(
        simple + "<peripheral derivedFrom=\"A\"><name>B</name><baseAddress>#11_</baseAddress></peripheral>")
                             << u"A: X@100/8rw Y@104/32rw\nB: X@0/8rw Y@4/32rw\n"_s;
    QTest::newRow("derived from a later one")
        << device("<peripheral derivedFrom=\"A\"><name>B</name><baseAddress>512</baseAddress></peripheral>" + simple)
        << u"B: X@200/8rw Y@204/32rw\nA: X@100/8rw Y@104/32rw\n"_s;
    QTest::newRow("derived with registers of its own")
        << device(simple
                  + "<peripheral derivedFrom=\"A\"><name>B</name><baseAddress>0</baseAddress><registers>"
                    "<register><name>X</name><addressOffset>8</addressOffset></register></registers></peripheral>")
        << u"A: X@100/8rw Y@104/32rw\nB: Y@4/32rw X@8/32rw\n"_s;
    QTest::newRow("a register derived by its path")
        << device(simple
                  + "<peripheral><name>B</name><registers><register "
                    "derivedFrom=\"A.X\"><name>Z</name></register></registers></peripheral>")
        << u"A: X@100/8rw Y@104/32rw\nB: Z@0/8rw\n"_s;
    QTest::newRow("a circle of derivations")
        << device("<peripheral derivedFrom=\"B\"><name>A</name></peripheral><peripheral "
                  "derivedFrom=\"A\"><name>B</name></peripheral>")
        << u"A:\nB:\n"_s;
    QTest::newRow("derived from nothing")
        << device("<peripheral derivedFrom=\"Q\"><name>A</name></peripheral>") << u"A:\n"_s;
    QTest::newRow("array") << device(
        "<peripheral><name>A</name><registers><register><dim>3</dim><dimIncrement>4</dimIncrement><name>R[%s]</name>"
        "<addressOffset>0x10</addressOffset></register></registers></peripheral>")
                           << u"A: R[0]@10/32rw R[1]@14/32rw R[2]@18/32rw\n"_s;
    QTest::newRow("array with names") << device("<peripheral><name>A</name><registers><register><dim>2</"
                                                "dim><dimIncrement>2</dimIncrement><dimIndex>L, R</dimIndex>"
                                                "<size>16</size><name>CH%s</name></register></registers></peripheral>")
                                      << u"A: CHL@0/16rw CHR@2/16rw\n"_s;
    QTest::newRow("array with a range of letters")
        << device("<peripheral><dim>2</dim><dimIncrement>0x100</dimIncrement><dimIndex>A-B</dimIndex><name>P%s</"
                  "name><baseAddress>4K</baseAddress>"
                  "<registers><register><name>X</name></register></registers></peripheral>")
        << u"PA: X@1000/32rw\nPB: X@1100/32rw\n"_s;
    QTest::newRow("clusters in clusters")
        << device("<peripheral><name>A</name><registers><cluster><dim>2</dim><dimIncrement>0x20</"
                  "dimIncrement><name>B%s</name><addressOffset>0x40</addressOffset>"
                  "<cluster><name>C</name><addressOffset>8</addressOffset><register><name>X</name><addressOffset>4</"
                  "addressOffset></register></cluster>"
                  "</cluster></registers></peripheral>")
        << u"A: B0.C.X@4c/32rw B1.C.X@6c/32rw\n"_s;
}

void tst_SvdFile::registersAreRead()
{
    QFETCH(QByteArray, contents);
    QList<SvdPeripheral> peripherals;
    QString error;
    QVERIFY2(readSvd(contents, &peripherals, &error), qPrintable(error));
    QTEST(text(peripherals), "expected");
}

void tst_SvdFile::fieldsAreRead_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("expected");
    QTest::newRow("offset and width") << QByteArray("<bitOffset>4</bitOffset><bitWidth>3</bitWidth>") << u"f 4+3"_s;
    QTest::newRow("offset alone") << QByteArray("<bitOffset>4</bitOffset>") << u"f 4+1"_s;
    QTest::newRow("first and last") << QByteArray("<lsb>8</lsb><msb>15</msb>") << u"f 8+8"_s;
    QTest::newRow("range") << QByteArray("<bitRange>[31:16]</bitRange>") << u"f 16+16"_s;
    QTest::newRow("range the wrong way round") << QByteArray("<bitRange>[0:7]</bitRange>") << u"f 7+1"_s;
    QTest::newRow("read-only") << QByteArray("<bitOffset>4</bitOffset><access>read-only</access>") << u"f 4+1 r"_s;
    QTest::newRow("write-only") << QByteArray("<bitOffset>4</bitOffset><access>write-only</access>") << u"f 4+1 w"_s;
    QTest::newRow("names") << QByteArray(
        "<bitOffset>0</bitOffset><enumeratedValues><enumeratedValue><name>On</name><value>0b1</value></enumeratedValue>"
        "<enumeratedValue><name>Rest</name><isDefault>true</isDefault></enumeratedValue></enumeratedValues>")
                           << u"f 0+1 1=On"_s;
    QTest::newRow("array") << QByteArray(
        "<dim>2</dim><dimIncrement>4</dimIncrement><bitOffset>0</bitOffset><bitWidth>2</bitWidth>")
                           << u"f 0+2, f 4+2"_s;
}

void tst_SvdFile::fieldsAreRead()
{
    QFETCH(QByteArray, field);
    QList<SvdPeripheral> peripherals;
    QString error;
    QVERIFY(readSvd(device("<peripheral><name>A</name><registers><register><name>R</name><fields><field><name>f</name>"
                           + field + "</field></fields></register></registers></peripheral>"),
                    &peripherals, &error));
    QStringList parts;
    for (const SvdField &read : peripherals.first().registers.first().fields) {
        QString part = u"%1 %2+%3"_s.arg(read.name).arg(read.lowBit).arg(read.width);
        if (!read.readable || !read.writable)
            part += read.readable ? u" r"_s : u" w"_s;
        for (const auto &[value, name] : read.names)
            part += u" %1=%2"_s.arg(value).arg(name);
        parts.append(part);
    }
    QTEST(parts.join(u", "_s), "expected");
}

void tst_SvdFile::invalidDescriptionIsRefused_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("hello");
    QTest::newRow("another root") << QByteArray("<project/>");
    QTest::newRow("cut off") << QByteArray("<device><peripherals><peripheral>");
    QTest::newRow("too deep") << "<device>" + QByteArray("<a>").repeated(100) + QByteArray("</a>").repeated(100)
                                     + "</device>";
}

void tst_SvdFile::invalidDescriptionIsRefused()
{
    QFETCH(QByteArray, contents);
    QList<SvdPeripheral> peripherals;
    QString error;
    QVERIFY(!readSvd(contents, &peripherals, &error));
    QVERIFY(!error.isEmpty());
}

QTEST_APPLESS_MAIN(tst_SvdFile)
#include "tst_svdfile.moc"

#include "numberformat.h"
#include <cmath>
#include <QTest>

using namespace Qt::StringLiterals;

class NumberFormatTest : public QObject
{
    Q_OBJECT

private:
    /// The greatest number of a width.
    static quint32 allBits(int bits) { return quint32((quint64(1) << bits) - 1); }
    static quint32 masked(quint32 value, int bits) { return value & allBits(bits); }

    /// Interesting numbers of a width: each bit alone, runs of bits from both ends, and a pattern.
    static QList<quint32> samples(int bits)
    {
        QList<quint32> values{0, allBits(bits), masked(0xaaaaaaaa, bits), masked(0x12345678, bits)};
        for (int bit = 0; bit < bits; ++bit)
            values << (1u << bit) << masked(~(1u << bit), bits) << allBits(bit) << masked(~allBits(bit), bits);
        return values;
    }

    static void addWidths()
    {
        QTest::addColumn<int>("bits");
        for (int bits = 1; bits <= 32; ++bits)
            QTest::newRow(qPrintable(QString::number(bits))) << bits;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void numberIsShownInEachFormat_data()
    {
        QTest::addColumn<quint32>("value");
        QTest::addColumn<int>("bits");
        QTest::addColumn<QString>("texts"); // in the order of the format numbers
        QTest::newRow("8 bits, all set") << 0xffu << 8 << u"-1 255 -0.0078125 0xFF 0b11111111"_s;
        QTest::newRow("zero with a sign") << 0u << 8 << u"+0 0 0 0x00 0b00000000"_s;
        QTest::newRow("16 bits, lowest number") << 0x8000u << 16 << u"-32768 32768 -1 0x8000 0b1000000000000000"_s;
        QTest::newRow("16 bits, a half") << 0x4000u << 16 << u"+16384 16384 0.5 0x4000 0b0100000000000000"_s;
        QTest::newRow("16 bits, smallest fraction") << 1u << 16 << u"+1 1 3.05176e-05 0x0001 0b0000000000000001"_s;
        QTest::newRow("12 bits, three digits") << 0xabcu << 12 << u"-1348 2748 -0.658203 0xABC 0b101010111100"_s;
        QTest::newRow("13 bits, four digits") << 0xabcu << 13 << u"+2748 2748 0.670898 0x0ABC 0b0101010111100"_s;
        QTest::newRow("12 bits, higher ones hidden") << 0xfabcu << 12 << u"-1348 2748 -0.658203 0xABC 0b101010111100"_s;
        QTest::newRow("32 bits, all set")
            << 0xffffffffu << 32 << u"-1 4294967295 -4.65661e-10 0xFFFFFFFF 0b11111111111111111111111111111111"_s;
        QTest::newRow("32 bits, lowest number")
            << 0x80000000u << 32 << u"-2147483648 2147483648 -1 0x80000000 0b10000000000000000000000000000000"_s;
        QTest::newRow("32 bits, highest number")
            << 0x7fffffffu << 32 << u"+2147483647 2147483647 1 0x7FFFFFFF 0b01111111111111111111111111111111"_s;
        QTest::newRow("one bit, set") << 1u << 1 << u"-1 1 -1 0x1 0b1"_s;
        QTest::newRow("one bit, clear") << 0u << 1 << u"+0 0 0 0x0 0b0"_s;
        QTest::newRow("no width counts as one bit") << 3u << 0 << u"-1 1 -1 0x1 0b1"_s;
        QTest::newRow("a negative width counts as one bit") << 3u << -7 << u"-1 1 -1 0x1 0b1"_s;
        QTest::newRow("a width of 99 counts as 32 bits")
            << 5u << 99 << u"+5 5 2.32831e-09 0x00000005 0b00000000000000000000000000000101"_s;
    }

    void numberIsShownInEachFormat()
    {
        QFETCH(quint32, value);
        QFETCH(int, bits);
        QStringList texts;
        for (const int format : {SignedFormat, UnsignedFormat, FractionalFormat, HexadecimalFormat, BinaryFormat})
            texts += numberText(value, bits, format);
        QTEST(texts.join(u' '), "texts");
    }

    void unknownFormatIsNamed()
    {
        QCOMPARE(numberText(5, 8, 5), u"Unsupported format"_s);
        QCOMPARE(numberText(5, 8, -1), u"Unsupported format"_s);
    }

    void shownNumberIsReadAsTheSameInAnyWidth_data() { addWidths(); }

    void shownNumberIsReadAsTheSameInAnyWidth()
    {
        QFETCH(int, bits);
        for (const quint32 value : samples(bits)) {
            for (const int format : {SignedFormat, UnsignedFormat, HexadecimalFormat, BinaryFormat}) {
                const QString text = numberText(value, bits, format);
                QVERIFY2(masked(numberValue(text, bits), bits) == value, qPrintable(text));
            }
        }
    }

    void numbersAgreeWithTheirDefinitionInAnyWidth_data() { addWidths(); }

    void numbersAgreeWithTheirDefinitionInAnyWidth()
    {
        QFETCH(int, bits);
        for (const quint32 value : samples(bits)) {
            const bool isNegative = value > allBits(bits) / 2 && value != 0;
            const qint64 number = isNegative ? qint64(value) - qint64(allBits(bits)) - 1 : qint64(value);
            QCOMPARE(numberText(value, bits, SignedFormat),
                     (number < 0 ? QString() : u"+"_s) + QString::number(number));
            QCOMPARE(numberText(value, bits, FractionalFormat),
                     QString::number(double(number) / std::ldexp(1.0, bits - 1), 'g', 6));
            QCOMPARE(numberText(value, bits, HexadecimalFormat).size(), 2 + (bits + 3) / 4);
            QCOMPARE(numberText(value, bits, BinaryFormat).size(), 2 + bits);
        }
    }

    void fractionIsReadToItsLastBitInAnyWidth_data() { addWidths(); }

    void fractionIsReadToItsLastBitInAnyWidth()
    {
        QFETCH(int, bits);
        for (const quint32 value : samples(bits)) {
            const qint64 number = value & 1u << (bits - 1) ? qint64(value) - qint64(allBits(bits)) - 1 : qint64(value);
            const QString text = QString::number(double(number) / std::ldexp(1.0, bits - 1), 'f', 40);
            QVERIFY2(numberValue(text, bits) == value, qPrintable(text));
        }
    }

    void typedTextIsRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("bits");
        QTest::addColumn<quint32>("value");
        QTest::newRow("decimal") << u"10"_s << 16 << 10u;
        QTest::newRow("leading zero is decimal") << u"010"_s << 16 << 10u;
        QTest::newRow("plus") << u"+5"_s << 16 << 5u;
        QTest::newRow("minus keeps all bits") << u"-1"_s << 16 << 0xffffffffu;
        QTest::newRow("plus above 31 bits") << u"+4294967295"_s << 32 << 0xffffffffu;
        QTest::newRow("minus above 31 bits") << u"-4294967295"_s << 32 << 0u;
        QTest::newRow("lowest number") << u"-2147483648"_s << 32 << 0x80000000u;
        QTest::newRow("too long") << u"4294967296"_s << 32 << 0u;
        QTest::newRow("hexadecimal") << u"0x1f"_s << 16 << 31u;
        QTest::newRow("capital prefix") << u"0X1F"_s << 16 << 31u;
        QTest::newRow("too long in hexadecimal") << u"0x100000000"_s << 32 << 0u;
        QTest::newRow("binary") << u"0b101"_s << 16 << 5u;
        QTest::newRow("capital binary prefix") << u"0B101"_s << 16 << 5u;
        QTest::newRow("other digits in binary") << u"0b102"_s << 16 << 0u;
        QTest::newRow("prefix alone") << u"0x"_s << 16 << 0u;
        QTest::newRow("letters without prefix") << u"FF"_s << 16 << 0u;
        QTest::newRow("empty") << QString() << 16 << 0u;
        QTest::newRow("sign alone") << u"-"_s << 16 << 0u;
        QTest::newRow("two signs") << u"+-5"_s << 16 << 0u;
        QTest::newRow("a half") << u"0.5"_s << 16 << 0x4000u;
        QTest::newRow("minus a half") << u"-0.5"_s << 16 << 0xc000u;
        QTest::newRow("minus one as fraction") << u"-1.0"_s << 16 << 0x8000u;
        QTest::newRow("exponent") << u"3.05176e-05"_s << 16 << 1u;
        QTest::newRow("fraction of one bit") << u"-0.5"_s << 1 << 1u;
        QTest::newRow("fraction of 32 bits") << u"-0.5"_s << 32 << 0xc0000000u;
        QTest::newRow("any fraction is in range: above") << u"5.5"_s << 16 << 0x7fffu;
        QTest::newRow("any fraction is in range: below") << u"-5.5"_s << 16 << 0x8000u;
        QTest::newRow("any fraction is in range: huge") << u"1.e300"_s << 16 << 0x7fffu;
        QTest::newRow("point alone") << u"."_s << 16 << 0u;
        QTest::newRow("two points") << u"0.5.5"_s << 16 << 0u;
        QTest::newRow("point after a prefix") << u"0x.5"_s << 16 << 0u;
    }

    void typedTextIsRead()
    {
        QFETCH(QString, text);
        QFETCH(int, bits);
        QTEST(numberValue(text, bits), "value");
    }

    void textThatIsNoNumberIsKnown_data()
    {
        QTest::addColumn<bool>("isNumber");
        for (const char *text : {"0", "10", "-1", "+4294967295", "0x1f", "0B101", "0.5", "-.5", "1.e3"})
            QTest::newRow(text) << true;
        for (const char *text : {"0x000x44", "FF", "", "-", "0x", "0x100000000", "4294967296", "0b102", ".", "0.5.5"})
            QTest::newRow(text) << false;
    }

    void textThatIsNoNumberIsKnown() { QTEST(isNumberText(QString::fromLatin1(QTest::currentDataTag())), "isNumber"); }

    void widthFitsNumbersWithAndWithoutSign()
    {
        for (const quint32 value : {0u, 0xffu, 0x80u, quint32(-1), quint32(-128)})
            QVERIFY2(fitsWidth(value, 8), qPrintable(QString::number(value)));
        for (const quint32 value : {0x100u, 0xffffu, 0x80000000u, quint32(-129)})
            QVERIFY2(!fitsWidth(value, 8), qPrintable(QString::number(value)));
        QVERIFY(fitsWidth(0xffffffff, 32));
        QVERIFY(fitsWidth(0x80000000, 32));
        QVERIFY(!fitsWidth(0x7fffffff + 2u, 31 - 1));
        QVERIFY(fitsWidth(1, 1));
        QVERIFY(!fitsWidth(2, 1));
    }
};

QTEST_MAIN(NumberFormatTest)
#include "tst_numberformat.moc"

#include "hextext.h"
#include <QTest>

using namespace Qt::StringLiterals;

class HexTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void textHasAsManyDigitsAsTheWidthNeeds_data()
    {
        QTest::addColumn<quint32>("value");
        QTest::addColumn<int>("bits");
        QTest::addColumn<QString>("text");
        QTest::newRow("8 bits") << 10u << 8 << u"0x0A"_s;
        QTest::newRow("12 bits") << 0xabcu << 12 << u"0xABC"_s;
        QTest::newRow("13 bits") << 0xabcu << 13 << u"0x0ABC"_s;
        QTest::newRow("16 bits") << 0u << 16 << u"0x0000"_s;
        QTest::newRow("32 bits") << 0xfedcba98u << 32 << u"0xFEDCBA98"_s;
        QTest::newRow("one bit") << 1u << 1 << u"0x1"_s;
        QTest::newRow("no bits") << 0u << 0 << u"0x0"_s;
    }

    void textHasAsManyDigitsAsTheWidthNeeds()
    {
        QFETCH(quint32, value);
        QFETCH(int, bits);
        QTEST(hexText(value, bits), "text");
    }

    void valueIsReadInTheBaseOfItsPrefix_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint32>("value");
        QTest::newRow("zero") << u"0"_s << 0u;
        QTest::newRow("hexadecimal") << u"0x10"_s << 16u;
        QTest::newRow("upper-case prefix") << u"0XfF"_s << 255u;
        QTest::newRow("octal") << u"010"_s << 8u;
        QTest::newRow("decimal") << u"10"_s << 10u;
        QTest::newRow("blanks in front") << u"  0x10"_s << 16u;
        QTest::newRow("blank behind") << u"0x10 "_s << 0u;
        QTest::newRow("bare digits above 9") << u"FF"_s << 0u;
        QTest::newRow("no octal digit") << u"08"_s << 0u;
        QTest::newRow("prefix alone") << u"0x"_s << 0u;
        QTest::newRow("empty") << QString() << 0u;
        QTest::newRow("sign") << u"-1"_s << 0u;
        QTest::newRow("two prefixes") << u"0x0x1"_s << 0u;
        QTest::newRow("too large") << u"0x1FFFFFFFF"_s << 0u;
        QTest::newRow("largest") << u"0xffffffff"_s << 0xffffffffu;
    }

    void valueIsReadInTheBaseOfItsPrefix()
    {
        QFETCH(QString, text);
        QTEST(hexValue(text), "value");
    }

    void widthMasksUnder32BitsOnly()
    {
        QCOMPARE(maskedToWidth(0xfabc, 12), 0xabcu);
        QCOMPARE(maskedToWidth(0xffffffff, 31), 0x7fffffffu);
        QCOMPARE(maskedToWidth(0xffffffff, 32), 0xffffffffu);
        QCOMPARE(maskedToWidth(0xffffffff, 64), 0xffffffffu);
        QCOMPARE(maskedToWidth(1, 0), 0u);
        QCOMPARE(maskedToWidth(1, -1), 0u);
    }

    void longTextShowsTheLowDigits()
    {
        QCOMPARE(longHexText(QByteArray::fromHex("efcdab8967452301"), 64), u"0x0123456789ABCDEF"_s);
        QCOMPARE(longHexText(QByteArray::fromHex("efcdab8967"), 36), u"0x789ABCDEF"_s);
        QCOMPARE(longHexText(QByteArray(5, '\0'), 36), u"0x000000000"_s);
    }

    void longValueTakesOnlyTextsWithPrefix_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("full") << u"0x0123456789"_s << QByteArray::fromHex("8967452301");
        QTest::newRow("odd count") << u"0x123"_s << QByteArray::fromHex("2301000000");
        QTest::newRow("upper-case prefix") << u"0XAB"_s << QByteArray::fromHex("ab00000000");
        QTest::newRow("too long keeps the low bytes") << u"0xFF0123456789"_s << QByteArray::fromHex("8967452301");
        QTest::newRow("zero") << u"0"_s << QByteArray(5, '\0');
        QTest::newRow("decimal") << u"12"_s << QByteArray(5, '\0');
        QTest::newRow("octal") << u"012"_s << QByteArray(5, '\0');
        QTest::newRow("bare digits") << u"AB"_s << QByteArray(5, '\0');
        QTest::newRow("prefix alone") << u"0x"_s << QByteArray(5, '\0');
        QTest::newRow("no number") << u"0xzz"_s << QByteArray(5, '\0');
    }

    void longValueTakesOnlyTextsWithPrefix()
    {
        QFETCH(QString, text);
        QTEST(longHexValue(text, 40), "bytes");
    }

    void flagsAreSingleCharactersOrSeparatedByCommas()
    {
        QCOMPARE(flagNames(u"ZNCV"_s), QStringList({u"Z"_s, u"N"_s, u"C"_s, u"V"_s}));
        QCOMPARE(flagNames(u"RX,TX,ERR"_s), QStringList({u"RX"_s, u"TX"_s, u"ERR"_s}));
        QCOMPARE(flagNames(u"A,,B"_s).size(), 3); // a bit without a name keeps its place
        QCOMPARE(flagNames(QString()), QStringList());
    }

    void lastFlagIsBitZero()
    {
        QCOMPARE(flagText(10, u"ZNCV"_s), u"Z-C-"_s);
        QCOMPARE(flagText(5, u"RX,TX,ERR"_s), u"RX,-,ERR"_s);
        QCOMPARE(flagText(0, QString()), QString());
        QCOMPARE(flagMask(flagNames(u"ZNCV"_s)), 15u);
    }

    void flagsBeyond32AreNeverSet()
    {
        const QString format(40, u'x');
        QCOMPARE(flagMask(flagNames(format)), 0xffffffffu);
        QCOMPARE(flagText(0xffffffff, format), QString(8, u'-') + QString(32, u'x'));
    }
};

QTEST_MAIN(HexTextTest)
#include "tst_hextext.moc"

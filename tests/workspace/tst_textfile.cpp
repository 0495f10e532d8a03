#include "textfile.h"
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTextFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void bytesAreUnchangedByReadingAndWriting_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("written");
        const auto same = [](const char *name, const QByteArray &bytes, const QString &text) {
            QTest::newRow(name) << bytes << text << bytes;
        };
        same("empty", "", u""_s);
        same("plain", "a\nb\n", u"a\nb\n"_s);
        same("no last line end", "a\nb", u"a\nb"_s);
        same("utf-8", "caf\xC3\xA9\n", u"café\n"_s);
        same("beyond the first plane", "\xF0\x9F\x90\x9B\n", u"\U0001F41B\n"_s);
        same("crlf", "a\r\nb\r\n", u"a\nb\n"_s);
        same("crlf without last line end", "a\r\nb", u"a\nb"_s);
        same("byte order mark", "\xEF\xBB\xBFx\r\n", u"x\n"_s);
        same("only a byte order mark", "\xEF\xBB\xBF", u""_s);
        same("two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBFx", u"\uFEFFx"_s);
        same("no-break space",
             "a\xC2\xA0"
             "b",
             u"a\u00A0b"_s);
        same("latin-1", "caf\xE9\n", u"café\n"_s);
        same("latin-1 with crlf", "caf\xE9\r\n", u"café\n"_s);
        same("byte order mark before invalid bytes", "\xEF\xBB\xBF\xE9\n", u"ï»¿é\n"_s);
        same("every byte", QByteArray("\x00\x01\x7F\x80\xFF", 5), QString::fromLatin1("\x00\x01\x7F\x80\xFF", 5));
        same("utf-16 little endian",
             QByteArray("\xFF\xFE"
                        "a\0\r\0\n\0",
                        8),
             u"a\n"_s);
        same("utf-16 big endian", QByteArray("\xFE\xFF\0a\0\n", 6), u"a\n"_s);
        same("odd number of bytes behind an utf-16 mark",
             "\xFF\xFE"
             "a",
             u"ÿþa"_s);
        QTest::newRow("mixed line ends") << QByteArray("a\r\nb\n") << u"a\nb\n"_s << QByteArray("a\nb\n");
        QTest::newRow("lone carriage returns") << QByteArray("a\rb") << u"a\nb"_s << QByteArray("a\nb");
        QTest::newRow("lone return among pairs") << QByteArray("a\r\nb\r") << u"a\nb\n"_s << QByteArray("a\nb\n");
    }
    void bytesAreUnchangedByReadingAndWriting()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, text);
        QFETCH(const QByteArray, written);
        DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.text, text);
        QCOMPARE(encodeText(decoded.text, decoded.format), written);
    }

    void latin1IsDetected()
    {
        QCOMPARE(decodeText("caf\xE9").format.encoding, TextFileFormat::Latin1);
        QCOMPARE(decodeText("caf\xC3\xA9").format.encoding, TextFileFormat::Utf8);
        QVERIFY(decodeText("x").format == newTextFileFormat());
    }

    void mixedLineEndsAreNoted()
    {
        QVERIFY(decodeText("a\r\nb\n").format.mixed);
        QVERIFY(decodeText("a\rb").format.mixed);
        QVERIFY(!decodeText("a\r\nb\r\n").format.mixed);
        QVERIFY(!decodeText("a\nb\n").format.mixed);
    }

    void filesWithNulBytesAreBinaryUnlessTheyAreUtf16()
    {
        const QTemporaryDir directory;
        const auto isBinary = [&directory](const QByteArray &bytes) {
            QFile file(directory.filePath(u"a"_s));
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
                qFatal("cannot write");
            file.close();
            return isBinaryFile(file.fileName());
        };
        QVERIFY(isBinary(QByteArray("\x7F"
                                    "ELF\0\r\n",
                                    7)));
        QVERIFY(!isBinary("a\xE9\r\n"));
        QVERIFY(!isBinary(""));
        QVERIFY(!isBinary(QByteArray("\xFE\xFF\0a\0\n", 6)));
        QVERIFY(!isBinaryFile(directory.path()));
        QVERIFY(!isBinaryFile(directory.filePath(u"missing"_s)));
    }

    void textOutsideLatin1BecomesUtf8()
    {
        TextFileFormat format{TextFileFormat::Latin1, false, false};
        QCOMPARE(encodeText(u"é\u20AC", format), QByteArray("\xC3\xA9\xE2\x82\xAC"));
        QCOMPARE(format.encoding, TextFileFormat::Utf8);
    }
};

QTEST_GUILESS_MAIN(TestTextFile)
#include "tst_textfile.moc"

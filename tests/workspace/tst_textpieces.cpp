#include "boxanswers.h"
#include "textfile.h"
#include "textpieces.h"
#include <QBuffer>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

class TextPiecesTest : public QObject
{
    Q_OBJECT

private:
    const std::atomic<bool> m_running = true;

    QList<TextPiece> pieces(QByteArray bytes, qsizetype size) const
    {
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        TextPieces reader(file, size);
        QList<TextPiece> read;
        while (const auto piece = reader.next(m_running))
            read << *piece;
        return read;
    }

    static QString joined(const QList<TextPiece> &pieces)
    {
        QString text;
        for (const TextPiece &piece : pieces)
            text += piece.text;
        return text;
    }

private Q_SLOTS:
    void init() { failOnWarnings(); }

    void smallFileIsOnePiece_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("text") << "a\nb"_ba << u"a\nb"_s;
        QTest::newRow("lines of DOS") << "a\r\nb"_ba << u"a\nb"_s;
        QTest::newRow("Latin-1") << "\xE4"_ba << u"ä"_s;
        QTest::newRow("zeroes stay") << QByteArray("a\0b", 3) << QString(u"a\0b"_s);
        QTest::newRow("UTF-16") << QByteArray("\xFE\xFF\0a\0\n", 6) << u"a\n"_s;
        QTest::newRow("half a character becomes a replacement character")
            << QByteArray("\xFF\xFE\x3D\xD8x\0", 6) << u"?x"_s;
    }

    void smallFileIsOnePiece()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        const QList<TextPiece> read = pieces(bytes, 1000);
        QCOMPARE(read.size(), 1);
        QCOMPARE(read.first().text, text);
        QVERIFY(read.first().isStart);
        QVERIFY(read.first().isEnd);
    }

    void largeFileIsSplitAfterLineEnds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("expected");
        const auto utf16 = [](const QString &text, bool bigEndian) {
            TextFileFormat format{bigEndian ? TextFileFormat::Utf16BE : TextFileFormat::Utf16LE, true};
            return encodeText(text, format);
        };
        QTest::newRow("lines") << "one\ntwo\nthree\nfour\n"_ba << QStringList{u"one\ntwo\nthree\n"_s, u"four\n"_s};
        QTest::newRow("lines of DOS") << "one\r\ntwo\r\nthree\r\n"_ba << QStringList{u"one\ntwo\n"_s, u"three\n"_s};
        QTest::newRow("a line longer than a piece")
            << "0123456789abcdefgh\nij"_ba << QStringList{u"0123456789abcde"_s, u"fgh\nij"_s};
        QTest::newRow("between characters if there is no line end")
            << u"aäöüäöüäöü"_s.toUtf8() << QStringList{u"aäöüäöüä"_s, u"öü"_s};
        QTest::newRow("UTF-16LE") << utf16(u"one\ntwo\nthree"_s, false)
                                  << QStringList{u"one\n"_s, u"two\n"_s, u"three"_s, QString()};
        QTest::newRow("UTF-16BE") << utf16(u"one\ntwo\nthree"_s, true)
                                  << QStringList{u"one\n"_s, u"two\n"_s, u"three"_s, QString()};
        QTest::newRow("bytes of a line end in two characters")
            << utf16(u"\u000A\u0A00\u0A00\u0A00\u0A00\u0A00\u0A00\u0A00"_s, true)
            << QStringList{u"\n"_s, u"\u0A00\u0A00\u0A00\u0A00\u0A00\u0A00"_s, u"\u0A00"_s};
    }

    void largeFileIsSplitAfterLineEnds()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, expected);
        QStringList texts;
        const QList<TextPiece> read = pieces(bytes, 8);
        for (const TextPiece &piece : read) {
            QCOMPARE(piece.isStart, texts.isEmpty() || (texts.last().endsWith(u'\n') && !piece.text.isEmpty()));
            texts << piece.text;
            QCOMPARE(piece.isEnd, texts.size() == read.size());
        }
        QCOMPARE(texts, expected);
    }

    void piecesGiveTheWholeText_data()
    {
        QTest::addColumn<TextFileFormat>("format");
        QTest::newRow("UTF-8") << TextFileFormat{TextFileFormat::Utf8, true};
        QTest::newRow("UTF-16LE") << TextFileFormat{TextFileFormat::Utf16LE, true};
        QTest::newRow("UTF-16BE") << TextFileFormat{TextFileFormat::Utf16BE, true};
    }

    void piecesGiveTheWholeText()
    {
        QFETCH(TextFileFormat, format);
        QRandomGenerator random(1);
        const QString letters = u"ab\n\nä\u0A0A\u0A00ß"_s;
        for (int i = 0; i < 300; ++i) {
            QString text;
            for (int length = random.bounded(120); length > 0; --length)
                text += letters[random.bounded(letters.size())];
            const QByteArray bytes = encodeText(text, format);
            QCOMPARE(joined(pieces(bytes, 8 + random.bounded(40))), decodeText(bytes).text);
        }
    }

    void randomBytesAreReadToTheEnd()
    {
        QRandomGenerator random(2);
        for (int i = 0; i < 300; ++i) {
            QByteArray bytes(random.bounded(200), '\0');
            for (char &byte : bytes)
                byte = random.bounded(4) ? char(random.bounded(256)) : "\n\xFF\xFE\x80"[random.bounded(4)];
            const QList<TextPiece> read = pieces(bytes, 8);
            QVERIFY(read.last().isEnd);
            for (const TextPiece &piece : read)
                QVERIFY(piece.text.isValidUtf16());
        }
    }

    void cancelledReaderReturnsNothing()
    {
        QByteArray bytes("a\nb\n");
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        TextPieces reader(file, 8);
        const std::atomic<bool> running = false;
        QVERIFY(!reader.next(running));
    }
};

QTEST_APPLESS_MAIN(TextPiecesTest)
#include "tst_textpieces.moc"

#include "htmlwords.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QStringList wordsOf(QByteArrayView page, qsizetype blockLength)
{
    QStringList words;
    HtmlWords reader([&words](QByteArrayView word) { words.append(QString::fromLatin1(word)); });
    for (qsizetype i = 0; i < page.size(); i += blockLength)
        reader.read(page.sliced(i, std::min(blockLength, page.size() - i)));
    reader.finish();
    return words;
}
} // namespace

class TestHtmlWords : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void wordsOfAPage_data()
    {
        QTest::addColumn<QByteArray>("page");
        QTest::addColumn<QString>("words");
        QTest::newRow("empty") << QByteArray() << u""_s;
        QTest::newRow("lower case") << QByteArray("Foo BAR") << u"foo|bar"_s;
        QTest::newRow("single letters are no words") << QByteArray("a b cd e") << u"cd"_s;
        QTest::newRow("tags and attributes") << QByteArray("one<a href='two'>three</a>four") << u"one|three|four"_s;
        QTest::newRow("a tag that does not end") << QByteArray("one <two three") << u"one"_s;
        QTest::newRow("> outside a tag") << QByteArray("one>two") << u"one|two"_s;
        QTest::newRow("< in a tag") << QByteArray("<a < b>two") << u"two"_s;
        QTest::newRow("digits") << QByteArray("0x1234, r2d2") << u"0x1234|r2d2"_s;
        QTest::newRow("other characters") << QByteArray("read_write;a-b3\nc'd e.f4") << u"read|write|b3|f4"_s;
        QTest::newRow("Latin-1") << QByteArray("\xc4pfel \xd7ray") << u"\u00e4pfel|ray"_s;
        QTest::newRow("a zero byte") << QByteArray("one\0two", 7) << u"one|two"_s;
        QTest::newRow("63 characters") << QByteArray(63, 'a') << QString(63, u'a');
        QTest::newRow("64 characters") << QByteArray(64, 'a') << QString(63, u'a');
        QTest::newRow("70 characters") << QByteArray(70, 'a') << QString(63, u'a') + u"|aaaaaa"_s;
        QTest::newRow("65 characters, one is left") << QByteArray(65, 'a') << QString(63, u'a');
    }

    void wordsOfAPage()
    {
        QFETCH(QByteArray, page);
        QFETCH(QString, words);
        QCOMPARE(wordsOf(page, 1000).join(u'|'), words);
        QCOMPARE(wordsOf(page, 1).join(u'|'), words); // the same in blocks of any length
    }

    void pageBeginsWithoutTheEndOfTheOneBeforeIt()
    {
        QByteArrayList words;
        HtmlWords reader([&words](QByteArrayView word) { words.append(word.toByteArray()); });
        reader.read("one two");
        reader.finish();
        reader.read("three");
        reader.finish();
        QCOMPARE(words, (QByteArrayList{"one", "two", "three"}));
    }
};

QTEST_MAIN(TestHtmlWords)
#include "tst_htmlwords.moc"

#include "shellwords.h"
#include <QProcess>
#include <QTest>
using namespace Qt::StringLiterals;

class TestShellWords : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void textIsSplitIntoWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("nothing") << u""_s << QStringList();
        QTest::newRow("blanks") << u" \t\n "_s << QStringList();
        QTest::newRow("words") << u" -O2  -g "_s << QStringList{u"-O2"_s, u"-g"_s};
        QTest::newRow("single quotes keep all") << u"-D'A=\"x\\ $y\"'"_s << QStringList{u"-DA=\"x\\ $y\""_s};
        QTest::newRow("double quotes take some escapes") << u"\"a\\\"b\\\\c\\d$\""_s << QStringList{u"a\"b\\c\\d$"_s};
        QTest::newRow("backslash takes the next character") << u"a\\ b\\'c"_s << QStringList{u"a b'c"_s};
        QTest::newRow("a last backslash is itself") << u"a\\"_s << QStringList{u"a\\"_s};
        QTest::newRow("an empty word") << u"a '' b"_s << QStringList{u"a"_s, u""_s, u"b"_s};
        QTest::newRow("parts of one word") << u"a'b c'\"d\"e"_s << QStringList{u"ab cde"_s};
        QTest::newRow("nothing is expanded")
            << u"$HOME *.c `x` ~"_s << QStringList{u"$HOME"_s, u"*.c"_s, u"`x`"_s, u"~"_s};
        QTest::newRow("non-ASCII") << u"-Igrüße"_s << QStringList{u"-Igrüße"_s};
    }

    void textIsSplitIntoWords()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, words);
        QCOMPARE(splitShellWords(text), words);
    }

    void unclosedQuoteIsRefused()
    {
        QVERIFY(!splitShellWords(u"a 'b"_s));
        QVERIFY(!splitShellWords(u"a \"b\\\""_s));
    }

    void wordIsQuotedOnlyIfNecessary_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("quoted");
        QTest::newRow("plain") << u"-DA=1,b:c/d.e%f@g+h"_s << u"-DA=1,b:c/d.e%f@g+h"_s;
        QTest::newRow("empty") << u""_s << u"''"_s;
        QTest::newRow("blank") << u"a b"_s << u"'a b'"_s;
        QTest::newRow("quote") << u"it's"_s << u"'it'\\''s'"_s;
        QTest::newRow("dollar") << u"$x"_s << u"'$x'"_s;
        QTest::newRow("home") << u"~x"_s << u"'~x'"_s;
    }

    void wordIsQuotedOnlyIfNecessary()
    {
        QFETCH(QString, word);
        QFETCH(QString, quoted);
        QCOMPARE(quoteShellWord(word), quoted);
    }

    void shellReadsQuotedWordsUnchanged()
    {
        const QStringList words = {u"a b"_s, u"it's"_s, u"$HOME"_s, u"\"\\`x`*?"_s, u"ä;&|<>()#"_s, u""_s};
        QProcess shell;
        shell.start(u"/bin/sh"_s, {u"-c"_s, u"printf '%s\\n' "_s + joinShellWords(words)});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(QString::fromUtf8(shell.readAll()), words.join(u'\n') + u'\n');
        QCOMPARE(splitShellWords(joinShellWords(words)), words);
    }
};

QTEST_GUILESS_MAIN(TestShellWords)
#include "tst_shellwords.moc"

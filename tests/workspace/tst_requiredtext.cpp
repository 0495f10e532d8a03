#include "requiredtext.h"
#include "searchpattern.h"
#include <QTest>

using namespace Qt::StringLiterals;

class RequiredTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsPartOfEveryMatch_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &expression, const QString &expected) {
            QTest::newRow(name) << expression << expected;
        };
        row("text", u"snd_pcm"_s, u"snd_pcm"_s);
        row("the longest part", u"snd_[a-z]+_params"_s, u"_params"_s);
        row("the first of two", u"ab.cd"_s, u"ab"_s);
        row("words", uR"(\bmain\b)"_s, u"main"_s);
        row("escaped characters", uR"(a\.c\(\))"_s, u"a.c()"_s);
        row("optional character", u"abc?d"_s, u"ab"_s);
        row("repeated character", u"abc*d"_s, u"ab"_s);
        row("character at least once", u"abc+d"_s, u"abc"_s);
        row("lazy and possessive", u"ab+?cd++e"_s, u"ab"_s);
        row("numbers", u"abc{2,3}def"_s, u"def"_s);
        row("number", u"abcd{0}e"_s, u"abc"_s);
        row("brace that is a character", u"struct {ab"_s, u"struct "_s);
        row("group", u"ab(cdef)gh"_s, u"ab"_s);
        row("class", u"ab[xy]cde"_s, u"cde"_s);
        row("empty look-ahead", u"ab(?=)cde"_s, u"cde"_s);
        row("optional group", u"(cdef)?gh"_s, u"gh"_s);
        row("alternatives in a group", u"ab(cdef|x)gh"_s, u"ab"_s);
        row("alternatives", u"abc|def"_s, {});
        row("class with a bracket", u"[]|)a]bc"_s, u"bc"_s);
        row("excluding class with a bracket", u"[^]|)a]bc"_s, u"bc"_s);
        row("class with an escaped bracket", uR"([\]|)a]bc)"_s, u"bc"_s);
        row("class with a name", u"[[:alpha:]|]bc"_s, u"bc"_s);
        row("class with the start of a name", u"[[:]a|b]cdef"_s, {});
        row("look-ahead", u"(?!abcd)ef"_s, u"ef"_s);
        row("look-behind", u"(?<=abcd)ef"_s, u"ef"_s);
        row("options", u"(?i)abcd"_s, {});
        row("options of a group", u"(?i:abcd)ef"_s, {});
        row("named group", u"(?<n>abcd)ef"_s, {});
        row("quoted text", uR"(\Qa|b\E)"_s, {});
        row("quoted text in a class", uR"([\Q]\E|]ab)"_s, {});
        row("hexadecimal character", uR"(\x41bc)"_s, {});
        row("verbs", u"(*ACCEPT)abc"_s, {});
        row("letters outside ASCII", u"größer"_s, u"gr"_s);
        row("nothing", u".*"_s, {});
        row("empty", {}, {});
        row("open group", u"(abc"_s, {});
        row("open class", u"[abc"_s, {});
        row("closed group", u"abc)"_s, {});
        row("backslash at the end", u"abc\\"_s, {});
    }

    void textIsPartOfEveryMatch()
    {
        QFETCH(QString, expression);
        QFETCH(QString, expected);
        QCOMPARE(requiredText(expression, true), expected);
    }

    void lettersWithAFormOutsideAsciiAreNoPartIfCaseIsIgnored()
    {
        QCOMPARE(requiredText(u"abskcde"_s, false), u"cde"_s);
        QCOMPARE(requiredText(u"ABSKCDE"_s, false), u"CDE"_s);
    }

    /// Which letters these are depends on the library of expressions.
    void noOtherLetterHasAFormOutsideAscii()
    {
        QString others;
        for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
            if (c < 0xD800 || c > 0xDFFF)
                others += QString::fromUcs4(&c, 1);
        }
        const std::atomic<bool> running = true;
        const auto find = [&](const QString &expression) {
            return SearchPattern(expression, false, true).find({others}, 0, running);
        };
        QCOMPARE(find(u"[a-jl-rt-z0-9_]"_s), -1);
        QVERIFY(find(u"[ks]"_s) >= 0);
    }
};

QTEST_APPLESS_MAIN(RequiredTextTest)
#include "tst_requiredtext.moc"

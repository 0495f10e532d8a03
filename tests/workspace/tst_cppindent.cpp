#include "cppindent.h"
#include "painted.h"
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Golden = QStringLiteral(VARNEL_SOURCE_DIR "/tests/workspace/golden/indentation/");

int column(const QString &text, QChar typedIn = {}, int tabSize = 4)
{
    return indentForBottomLine(text.split(u'\n'), typedIn, tabSize);
}

QString indented(const QStringList &above, const QString &line, int tabSize = 4)
{
    const QString text = line.trimmed();
    const int column = indentForBottomLine(above + QStringList(line), QChar(), tabSize);
    return text.isEmpty() ? QString() : QString(column, u' ') + text;
}
} // namespace

class tst_CppIndent : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void typedSourcesAreIndentedAsTheGoldenFiles_data();
    void typedSourcesAreIndentedAsTheGoldenFiles();
    void columnOfTheLastLineIsAsExpected_data();
    void columnOfTheLastLineIsAsExpected();
    void typedCharacterSelectsTheRules_data();
    void typedCharacterSelectsTheRules();
    void tabSizeIsTheBlockLevel_data();
    void tabSizeIsTheBlockLevel();
    void noLinesGiveColumnZero();
    void readsBackFortyLines();
    void readsBackFourHundredLinesForAComment();
    void blankLinesDoNotCountForTheLimit();
    void readsFewLinesOfAHugeText();
    void modesOtherThanSmartOnlyCopy();
    void smartModeRewritesTheLine();
    void outputsMayBeNull();
    void lineThatIsIndentedRightIsNotChanged();
    void hostileTextsGiveAValidColumn();
};

void tst_CppIndent::typedSourcesAreIndentedAsTheGoldenFiles_data()
{
    QTest::addColumn<QString>("path");
    const QFileInfoList files = QDir(Golden).entryInfoList(QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QFileInfo &file : files)
        QTest::newRow(qPrintable(file.fileName())) << file.filePath();
}

// As if typed: Return gives an empty line its column, the text is typed after it, and the command indents the line
// again.
void tst_CppIndent::typedSourcesAreIndentedAsTheGoldenFiles()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList expected = QString::fromUtf8(file.readAll()).split(u'\n');
    QStringList typed;
    for (const QString &line : expected) {
        const QString entered = QString(column((typed + QStringList(QString())).join(u'\n')), u' ') + line.trimmed();
        typed.append(indented(typed, entered));
    }
    for (qsizetype i = 0; i < expected.size(); ++i)
        QCOMPARE(typed[i], expected[i]);
}

void tst_CppIndent::columnOfTheLastLineIsAsExpected_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("empty document") << u""_s << 0;
    QTest::newRow("first line") << u"    a"_s << 0;
    QTest::newRow("below a statement") << u"    a;\nb"_s << 4;
    QTest::newRow("below an opening brace") << u"void f() {\nb"_s << 4;
    QTest::newRow("below a brace of its own line") << u"  int f()\n  {\nb"_s << 6;
    QTest::newRow("brace left of its head") << u"  int f()\n{\nb"_s << 6;
    QTest::newRow("brace alone on its line is no reference") << u"  a;\n      {\nb"_s << 6;
    QTest::newRow("closing brace alone on its line is no reference") << u"  a;\n  {\n    b;\n      }\nc"_s << 2;
    QTest::newRow("below a closed block") << u"  if (a) {\n    b;\n  }\nc"_s << 2;
    QTest::newRow("closing brace") << u"  if (a) {\n    b;\n}"_s << 0;
    QTest::newRow("closing brace of a function") << u"void f()\n{\n    a;\n}"_s << 0;
    QTest::newRow("column is never negative") << u"  a;\n}"_s << 0;

    QTest::newRow("below an if") << u"  if ( x )\nb"_s << 6;
    QTest::newRow("below the body of an if") << u"  if ( x )\n      b;\nc"_s << 2;
    QTest::newRow("below an else") << u"  if ( x )\n    b;\n  else\nc"_s << 6;
    QTest::newRow("below the body of an else") << u"  a;\n  if ( x )\n    b;\n  else\n    c;\nd"_s << 2;
    QTest::newRow("below a while") << u"while ( x )\nb"_s << 4;
    QTest::newRow("below a for") << u"for ( a; b; c )\nd"_s << 4;
    QTest::newRow("below a catch") << u"} catch ( a )\nd"_s << 4;
    QTest::newRow("below the body of nested ifs") << u"z;\nif ( x )\n  if ( y )\n    b;\nc"_s << 0;
    QTest::newRow("below an if of two lines") << u"  if ( x &&\n       y )\nb"_s << 6;
    QTest::newRow("brace below an if") << u"z;\n  if ( x )\n{"_s << 0;
    QTest::newRow("call is no control statement") << u"  f( x )\nb"_s << 10;
    QTest::newRow("word within a word is no keyword") << u"  xif ( x )\nb"_s << 10;
    QTest::newRow("a } else keeps the depth") << u"  if ( a ) {\n    b;\n  } else {\n    c;\n  }\nd"_s << 2;
    QTest::newRow("below a } else {") << u"  if ( a ) {\n    b;\n  } else {\nc"_s << 6;

    QTest::newRow("in parentheses") << u"  foo( a,\nb"_s << 7;
    QTest::newRow("in brackets") << u"  x[ a +\nb"_s << 5;
    QTest::newRow("after a parenthesis at the end of the line") << u"  foo(\nb"_s << 10;
    QTest::newRow("in inner parentheses") << u"foo( a, bar( b,\nc"_s << 13;
    QTest::newRow("behind inner parentheses") << u"foo( a, bar( b ),\nc"_s << 5;
    QTest::newRow("second line in parentheses") << u"foo( a,\n     b,\nc"_s << 5;
    QTest::newRow("in the braces of a list") << u"int x[] = { 1,\n2"_s << 12;
    QTest::newRow("brace that ends the line of an open parenthesis") << u"  foo( a, {\n  b ),\nc"_s << 0;
    QTest::newRow("below a line that ends in an open parenthesis and a brace") << u"  x;\n  foo( a, {\nc"_s << 6;
    QTest::newRow("closing brace without its partner") << u"  } + a +\nb"_s << 0;
    QTest::newRow("behind an assignment") << u"  x = a +\nb"_s << 6;
    QTest::newRow("behind an operator assignment") << u"  x += a +\nb"_s << 7;
    QTest::newRow("equals at the end of the line does not align") << u"  x =\ny"_s << 10;
    QTest::newRow("not-equal does not align") << u"  x != a +\nb"_s << 10;
    QTest::newRow("less-or-equal does not align") << u"  x <= a +\nb"_s << 10;
    QTest::newRow("first sign of an equality aligns") << u"  x == a +\nb"_s << 5;
    QTest::newRow("equals before a comma does not align") << u"  int x = 1,\ny"_s << 10;
    QTest::newRow("equals at the end of a further line") << u"  a +\n    x =\ny"_s << 4;
    QTest::newRow("equals of a list does not align") << u"  x = 1,\ny"_s << 10;
    QTest::newRow("equals in parentheses does not align") << u"  foo( a = b ) +\nc"_s << 10;
    QTest::newRow("equals in braces does not align") << u"  x{ a = b } +\nc"_s << 10;
    QTest::newRow("equals with an open parenthesis does not align") << u"x = f( a ) + (\nb"_s << 8;
    QTest::newRow("unfinished line") << u"  a +\nb"_s << 10;
    QTest::newRow("third line of an expression") << u"  a +\n    b +\nc"_s << 4;
    QTest::newRow("continuation is 8 columns") << u"  int\nb"_s << 10;
    QTest::newRow("brace below an unfinished line") << u"  int f()\n{"_s << 2;
    QTest::newRow("broken for head") << u"  for ( a;\nb"_s << 8;
    QTest::newRow("third line of a broken for head") << u"  for ( a;\n        b;\nc"_s << 8;
    QTest::newRow("tab in a line above") << u"\tfoo( a,\nb"_s << 9;
    QTest::newRow("tab behind a character") << u"a\t= b +\nc"_s << 6;
    QTest::newRow("tab in a string") << u"x = \"\t\"; y( a,\nb"_s << 14;
    QTest::newRow("unfinished line behind an if") << u"  if ( x ) a +\nb"_s << 10;
    QTest::newRow("below the body of an if of two lines") << u"  if ( x )\n    a +\n      b;\nc"_s << 2;
    QTest::newRow("Q_OBJECT is no unfinished line") << u"class A {\n    Q_OBJECT\nb"_s << 4;

    QTest::newRow("directive") << u"void f() {\n    #if"_s << 0;
    QTest::newRow("directive above is no code") << u"    a;\n#endif\nb"_s << 4;
    QTest::newRow("directive with a brace") << u"    a;\n# define x {\nb"_s << 4;
    QTest::newRow("directive in a call") << u"foo( a,\n#if 1\nb"_s << 5;

    QTest::newRow("case left of the body") << u"switch ( a ) {\ncase 1:"_s << 0;
    QTest::newRow("case right of the body keeps its column") << u"switch ( a ) {\n      case 1:"_s << 6;
    QTest::newRow("below a case") << u"switch ( a ) {\ncase 1:\nb"_s << 4;
    QTest::newRow("case with a body is no case label") << u"switch ( a ) {\ncase 1: b;"_s << 4;
    QTest::newRow("default with a blank") << u"switch ( a ) {\ndefault :"_s << 0;
    QTest::newRow("default without a blank is at the column of the body") << u"switch ( a ) {\ndefault:"_s << 4;
    QTest::newRow("label is ignored, its code is not") << u"  foo: a(\nb"_s << 15;
    QTest::newRow("several labels") << u"  a: b: c(\nd"_s << 16;
    QTest::newRow("label of its own line") << u"    a;\nfoo:\nb"_s << 4;
    QTest::newRow("scope is no label") << u"  a::b;\nc"_s << 2;
    QTest::newRow("access specifier is at the column of the body") << u"class A {\npublic:"_s << 4;

    QTest::newRow("bare comment start") << u"  /*\n"_s << 4;
    QTest::newRow("comment with text") << u"  /*   a\n"_s << 7;
    QTest::newRow("comment behind code") << u"x; /* a\n"_s << 6;
    QTest::newRow("third line of a comment") << u"/*\n     a\n"_s << 5;
    QTest::newRow("line in a comment keeps its column") << u"/*\n a"_s << 1;
    QTest::newRow("closing brace in a comment keeps its column") << u"/*\n   }"_s << 3;
    QTest::newRow("directive in a comment keeps its column") << u"/*\n   #"_s << 3;
    QTest::newRow("below a comment") << u"    a;\n/* b {\n c ( */\nd"_s << 4;
    QTest::newRow("code before a comment") << u"    a; /* b\n c */\nd"_s << 4;
    QTest::newRow("code behind a comment") << u"/* b\n c */ d;\ne"_s << 6;
    QTest::newRow("comment within a line") << u"    a /* { */;\nb"_s << 4;
    QTest::newRow("line comment") << u"    a; // {\nb"_s << 4;
    QTest::newRow("string with a brace") << u"    a(\"{\");\nb"_s << 4;
    QTest::newRow("character with a brace") << u"    a('{');\nb"_s << 4;
    QTest::newRow("escaped quote in a string") << u"    a(\"\\\"{\");\nb"_s << 4;
    QTest::newRow("comment start in a string") << u"    a(\"/*\");\nb"_s << 4;
    QTest::newRow("single quote is no string") << u"    a('{);\nb"_s << 8;
}

void tst_CppIndent::columnOfTheLastLineIsAsExpected()
{
    QFETCH(QString, text);
    QTEST(column(text), "expected");
}

void tst_CppIndent::typedCharacterSelectsTheRules_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("typedIn");
    QTest::addColumn<int>("expected");
    const QString brace = u"void f() {\n    a;\n}"_s;
    QTest::newRow("brace typed") << brace << QChar(u'}') << 0;
    QTest::newRow("something else than the brace") << brace << QChar(u'a') << 4;
    const QString directive = u"void f() {\n    a;\n#"_s;
    QTest::newRow("hash typed") << directive << QChar(u'#') << 0;
    QTest::newRow("something else than the hash") << directive << QChar(u'}') << 4;
    const QString label = u"switch ( a ) {\ncase 1:"_s;
    QTest::newRow("colon typed") << label << QChar(u':') << 0;
    QTest::newRow("something else than the colon") << label << QChar(u'1') << 4;
}

void tst_CppIndent::typedCharacterSelectsTheRules()
{
    QFETCH(QString, text);
    QFETCH(QChar, typedIn);
    QTEST(column(text, typedIn), "expected");
}

void tst_CppIndent::tabSizeIsTheBlockLevel_data()
{
    QTest::addColumn<int>("tabSize");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("block of two") << 2 << u"f() {\na"_s << 2;
    QTest::newRow("block of eight") << 8 << u"f() {\na"_s << 8;
    QTest::newRow("tabs of eight above") << 8 << u"\ta;\nb"_s << 8;
    QTest::newRow("continuation stays at eight") << 2 << u"a +\nb"_s << 8;
    QTest::newRow("no tab size counts as one") << 0 << u"\tf() {\na"_s << 2;
}

void tst_CppIndent::tabSizeIsTheBlockLevel()
{
    QFETCH(int, tabSize);
    QFETCH(QString, text);
    QTEST(column(text, {}, tabSize), "expected");
}

void tst_CppIndent::noLinesGiveColumnZero()
{
    QCOMPARE(indentForBottomLine(QStringList(), QChar(), 4), 0);
}

void tst_CppIndent::readsBackFortyLines()
{
    QCOMPARE(column(u"  f( a,\n"_s + u"b,\n"_s.repeated(38) + u"c ) +\nd"_s), 10);
    QCOMPARE(column(u"  f( a,\n"_s + u"b,\n"_s.repeated(39) + u"c ) +\nd"_s), 0);
    QCOMPARE(column(u"if ( a &&\n"_s + u"b &&\n"_s.repeated(38) + u"c )\nd"_s), 4);
    QCOMPARE(column(u"if ( a &&\n"_s + u"b &&\n"_s.repeated(39) + u"c )\nd"_s), 0);
    QCOMPARE(column(u"    a;\n"_s + u"Q_OBJECT\n"_s.repeated(39) + u"b"_s), 4);
    QCOMPARE(column(u"    a;\n"_s + u"Q_OBJECT\n"_s.repeated(40) + u"b"_s), 0);
}

void tst_CppIndent::readsBackFourHundredLinesForAComment()
{
    QCOMPARE(column(u"/*\n"_s + u"   a\n"_s.repeated(399) + u"}"_s), 0);
    QCOMPARE(column(u"/*\n"_s + u"   a\n"_s.repeated(399) + u"  b"_s), 2);
    QCOMPARE(column(u"/*\n"_s + u"   a\n"_s.repeated(400) + u"  b"_s), 3);
}

void tst_CppIndent::blankLinesDoNotCountForTheLimit()
{
    QCOMPARE(column(u"foo( a,\n"_s + u"\n// {\n/* } */\n#if\n"_s.repeated(100) + u"b"_s), 5);
}

void tst_CppIndent::readsFewLinesOfAHugeText()
{
    int asked = 0;
    const auto lineAt = [&asked](int line) {
        ++asked;
        return line % 10 == 9 ? u"    a += f( b );"_s : u"    c;"_s;
    };
    QCOMPARE(indentForBottomLine(lineAt, 300'000, QChar(), 4), 4);
    QVERIFY(asked < 450);
}

void tst_CppIndent::modesOtherThanSmartOnlyCopy()
{
    CppIndent indent;
    const auto document = plainDocument(u"  if (a)\nb"_s);
    int newIndent = -1;
    indent.setIndentMode(TextIndent::NoIndent);
    indent.indent(document.get(), document->lastBlock(), nullptr, &newIndent);
    QCOMPARE(newIndent, 0);
    indent.setIndentMode(TextIndent::CopyPrevious);
    indent.indent(document.get(), document->lastBlock(), nullptr, &newIndent);
    QCOMPARE(newIndent, 2);
    QCOMPARE(document->lastBlock().text(), u"  b"_s);
    QVERIFY(!indent.changesIndent(u"  }"_s));
    indent.setIndentMode(TextIndent::Smart);
    QVERIFY(indent.changesIndent(u"  }"_s));
    QVERIFY(!indent.changesIndent(u"  x}"_s));
}

void tst_CppIndent::smartModeRewritesTheLine()
{
    CppIndent indent;
    indent.setIndentMode(TextIndent::Smart);
    indent.setKeepTabs(true);
    const auto document = plainDocument(u"  if (a)\n   b\n c"_s);
    int oldIndent = -1;
    int newIndent = -1;
    indent.indent(document.get(), document->findBlockByNumber(1), &oldIndent, &newIndent);
    QCOMPARE(document->toPlainText(), u"  if (a)\n\t  b\n c"_s);
    QCOMPARE(oldIndent, 3);
    QCOMPARE(newIndent, 3);
}

void tst_CppIndent::outputsMayBeNull()
{
    CppIndent indent;
    indent.setIndentMode(TextIndent::Smart);
    const auto document = plainDocument(u"{\n  a;\n}"_s);
    indent.indent(document.get(), document->findBlockByNumber(2));
    QCOMPARE(document->toPlainText(), u"{\n  a;\n}"_s);
}

void tst_CppIndent::lineThatIsIndentedRightIsNotChanged()
{
    CppIndent indent;
    indent.setIndentMode(TextIndent::Smart);
    const auto document = plainDocument(u"  if (a)\n      b;"_s);
    indent.indent(document.get(), document->lastBlock());
    QVERIFY(!document->isUndoAvailable());
}

void tst_CppIndent::hostileTextsGiveAValidColumn()
{
    QVERIFY(column(QString(200'000, u'(') + u"\na"_s) > 0);
    QVERIFY(column(u"\"\\"_s.repeated(100'000) + u"\na"_s) >= 0);
    QVERIFY(column(QString(200'000, u'{') + u"\na"_s) >= 0);
    QVERIFY(column(u"case a "_s.repeated(50'000) + u"\na"_s) >= 0);
}

QTEST_MAIN(tst_CppIndent)
#include "tst_cppindent.moc"

#include "baseindent.h"
#include "painted.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_BaseIndent : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void defaultsAreCopyingFourColumnsAndBlanks();
    void tabSizeIsAtLeastOne();
    void indentsTheLastLine_data();
    void indentsTheLastLine();
    void outputsMayBeNull();
    void indentingIsOneStepForUndo();
    void indentedLineIsNotChanged();
    void whiteSpaceHasTheGivenWidth_data();
    void whiteSpaceHasTheGivenWidth();
};

void tst_BaseIndent::defaultsAreCopyingFourColumnsAndBlanks()
{
    const BaseIndent indent;
    QCOMPARE(indent.indentMode(), 1);
    QCOMPARE(indent.tabSize(), 4);
    QVERIFY(!indent.keepTabs());
}

void tst_BaseIndent::tabSizeIsAtLeastOne()
{
    BaseIndent indent;
    indent.setTabSize(0);
    QCOMPARE(indent.tabSize(), 1);
    indent.setTabSize(-3);
    QCOMPARE(indent.tabSize(), 1);
}

void tst_BaseIndent::indentsTheLastLine_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("keepTabs");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<int>("oldIndent");
    QTest::addColumn<int>("newIndent");
    QTest::newRow("line above is copied") << 1 << false << u"  a\nb"_s << u"  b"_s << 0 << 2;
    QTest::newRow("tab above counts the tab size") << 1 << false << u"\ta\nb"_s << u"    b"_s << 0 << 4;
    QTest::newRow("tab and blank above") << 1 << false << u" \t a\nb"_s << u"      b"_s << 0 << 6;
    QTest::newRow("kept tabs are counted as characters") << 1 << true << u"      a\nb"_s << u"\t  b"_s << 0 << 3;
    QTest::newRow("mode 2 copies as well") << 2 << false << u"  a\nb"_s << u"  b"_s << 0 << 2;
    QTest::newRow("mode 0 leaves the line") << 0 << false << u"  a\nb"_s << u"b"_s << 0 << 0;
    QTest::newRow("mode 0 measures the line") << 0 << false << u"a\n\t b"_s << u"\t b"_s << 5 << 5;
    QTest::newRow("indented line is unchanged") << 1 << false << u"    a\n b"_s << u" b"_s << 1 << 1;
    QTest::newRow("first line is unchanged") << 1 << false << u"a"_s << u"a"_s << 0 << 0;
    QTest::newRow("blank first line is unchanged") << 1 << false << u"   "_s << u"   "_s << 0 << 0;
    QTest::newRow("blank line above gives column 0") << 1 << false << u"    \nb"_s << u"b"_s << 0 << 0;
    QTest::newRow("empty line") << 1 << false << u"  a\n"_s << u"  "_s << 0 << 2;
    QTest::newRow("blank line gets no blank behind its indentation")
        << 1 << false << u"  a\n      "_s << u"  "_s << 6 << 2;
    QTest::newRow("blank line at column 0") << 1 << false << u"a\n  \t"_s << u""_s << 3 << 0;
}

void tst_BaseIndent::indentsTheLastLine()
{
    QFETCH(int, mode);
    QFETCH(bool, keepTabs);
    QFETCH(QString, text);
    BaseIndent indent;
    indent.setIndentMode(mode);
    indent.setKeepTabs(keepTabs);
    const auto document = plainDocument(text);
    int oldIndent = -1;
    int newIndent = -1;
    indent.indent(document.get(), document->lastBlock(), &oldIndent, &newIndent);
    QTEST(document->lastBlock().text(), "lastLine");
    QTEST(oldIndent, "oldIndent");
    QTEST(newIndent, "newIndent");
}

void tst_BaseIndent::outputsMayBeNull()
{
    BaseIndent indent;
    const auto document = plainDocument(u"  a\nb"_s);
    indent.indent(document.get(), document->lastBlock());
    QCOMPARE(document->toPlainText(), u"  a\n  b"_s);
}

void tst_BaseIndent::indentingIsOneStepForUndo()
{
    BaseIndent indent;
    const auto document = plainDocument(u"   a\n  "_s);
    indent.indent(document.get(), document->lastBlock());
    QCOMPARE(document->toPlainText(), u"   a\n   "_s);
    document->undo();
    QCOMPARE(document->toPlainText(), u"   a\n  "_s);
    QVERIFY(!document->isUndoAvailable());
}

void tst_BaseIndent::indentedLineIsNotChanged()
{
    BaseIndent indent;
    const auto document = plainDocument(u"a\nb"_s);
    indent.indent(document.get(), document->lastBlock());
    QVERIFY(!document->isUndoAvailable());
}

void tst_BaseIndent::whiteSpaceHasTheGivenWidth_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("tabSize");
    QTest::addColumn<bool>("keepTabs");
    QTest::addColumn<QString>("expected");
    QTest::newRow("blanks") << 10 << 4 << false << u"          "_s;
    QTest::newRow("two tabs and two blanks") << 10 << 4 << true << u"\t\t  "_s;
    QTest::newRow("tabs only") << 8 << 4 << true << u"\t\t"_s;
    QTest::newRow("less than a tab") << 3 << 4 << true << u"   "_s;
    QTest::newRow("tab size 1") << 2 << 1 << true << u"\t\t"_s;
    QTest::newRow("nothing") << 0 << 4 << true << u""_s;
    QTest::newRow("never negative") << -4 << 4 << true << u""_s;
}

void tst_BaseIndent::whiteSpaceHasTheGivenWidth()
{
    QFETCH(int, columns);
    QFETCH(int, tabSize);
    QFETCH(bool, keepTabs);
    QTEST(indentText(columns, tabSize, keepTabs), "expected");
}

QTEST_MAIN(tst_BaseIndent)
#include "tst_baseindent.moc"

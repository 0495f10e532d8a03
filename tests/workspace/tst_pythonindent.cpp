#include "painted.h"
#include "pythonindent.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PythonIndent : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void indentsTheLastLine_data();
    void indentsTheLastLine();
    void outputsMayBeNull();
};

void tst_PythonIndent::indentsTheLastLine_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("lastLine");
    QTest::addColumn<int>("newIndent");
    QTest::addColumn<int>("oldIndent");
    QTest::newRow("below a statement") << 2 << u"  a = 1\nb"_s << u"  b"_s << 2 << 0;
    QTest::newRow("below a colon") << 2 << u"if a:\nb"_s << u"    b"_s << 4 << 0;
    QTest::newRow("below an indented colon") << 2 << u"  if a:\nb"_s << u"      b"_s << 6 << 0;
    QTest::newRow("blanks after the colon") << 2 << u"if a: \t \nb"_s << u"    b"_s << 4 << 0;
    QTest::newRow("comment after the colon") << 2 << u"if a: # b\nc"_s << u"c"_s << 0 << 0;
    QTest::newRow("below an empty line") << 2 << u"if a:\n\nb"_s << u"b"_s << 0 << 0;
    QTest::newRow("below a blank line with no colon") << 2 << u"    \nb"_s << u"b"_s << 0 << 0;
    QTest::newRow("new empty line") << 2 << u"if a:\n"_s << u"    "_s << 4 << 0;
    QTest::newRow("indented line is unchanged") << 2 << u"if a:\n  b"_s << u"  b"_s << 2 << 2;
    QTest::newRow("first line") << 2 << u"b"_s << u"b"_s << 0 << 0;
    QTest::newRow("mode 1 only copies") << 1 << u"  if a:\nb"_s << u"  b"_s << 2 << 0;
    QTest::newRow("mode 0 does not change the line") << 0 << u"  if a:\nb"_s << u"b"_s << 0 << 0;
}

void tst_PythonIndent::indentsTheLastLine()
{
    QFETCH(int, mode);
    QFETCH(QString, text);
    PythonIndent indent;
    indent.setIndentMode(mode);
    const auto document = plainDocument(text);
    int oldIndent = -1;
    int newIndent = -1;
    indent.indent(document.get(), document->lastBlock(), &oldIndent, &newIndent);
    QTEST(document->lastBlock().text(), "lastLine");
    QTEST(newIndent, "newIndent");
    QTEST(oldIndent, "oldIndent");
}

void tst_PythonIndent::outputsMayBeNull()
{
    PythonIndent indent;
    indent.setIndentMode(TextIndent::Smart);
    const auto document = plainDocument(u"if a:\nb"_s);
    indent.indent(document.get(), document->lastBlock());
    QCOMPARE(document->toPlainText(), u"if a:\n    b"_s);
}

QTEST_MAIN(tst_PythonIndent)
#include "tst_pythonindent.moc"

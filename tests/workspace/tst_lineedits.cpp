#include "boxanswers.h"
#include "lineedits.h"
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

/// A text in which "[" and "]" are the ends of the selection, or "|" the cursor.
class LineEditsTest : public QObject
{
    Q_OBJECT

    QTextDocument m_text;

    QTextCursor selection(QString text)
    {
        const qsizetype cursor = text.indexOf(u'|');
        const qsizetype start = text.indexOf(u'[');
        const qsizetype end = text.indexOf(u']') - 1;
        m_text.setPlainText(text.remove(QRegularExpression(u"[\\[\\]|]"_s)));
        QTextCursor selected(&m_text);
        selected.setPosition(int(cursor >= 0 ? cursor : start));
        if (cursor < 0)
            selected.setPosition(int(end), QTextCursor::KeepAnchor);
        return selected;
    }

private Q_SLOTS:
    void init() { failOnWarnings(); }

    void linesAreCommented_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("the cursor's line") << u"a\nb|\nc"_s << u"a\n// b\nc"_s;
        QTest::newRow("selected lines") << u"[a\nb]\nc"_s << u"// a\n// b\nc"_s;
        QTest::newRow("the column of the least indentation")
            << u"[    if\n  a\n\n    b]"_s << u"  //   if\n  // a\n\n  //   b"_s;
        QTest::newRow("a selection that ends at the start of a line") << u"[a\n]b"_s << u"// a\nb"_s;
        QTest::newRow("only blank lines") << u"[  \n ]"_s << u"  \n "_s;
        QTest::newRow("a comment") << u"// a|"_s << u"// // a"_s;
    }
    void linesAreCommented()
    {
        QFETCH(QString, before);
        commentLines(selection(before), u"//"_s);
        QTEST(m_text.toPlainText(), "after");
    }

    void linesAreUncommented_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("found");
        QTest::newRow("with a blank") << u"  // a|"_s << u"  a"_s << true;
        QTest::newRow("without a blank") << u"//a|"_s << u"a"_s << true;
        QTest::newRow("only the marker") << u"//|"_s << QString() << true;
        QTest::newRow("two blanks") << u"//  a|"_s << u" a"_s << true;
        QTest::newRow("some lines") << u"[// a\nb // c\n  //d]"_s << u"a\nb // c\n  d"_s << true;
        QTest::newRow("none") << u"a // b|"_s << u"a // b"_s << false;
    }
    void linesAreUncommented()
    {
        QFETCH(QString, before);
        QTEST(uncommentLines(selection(before), u"//"_s), "found");
        QTEST(m_text.toPlainText(), "after");
    }

    void linesAreIndentedAndUnindented_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<bool>("tabs");
        QTest::addColumn<QString>("indented");
        QTest::addColumn<QString>("unindented");
        QTest::newRow("blanks") << u"[a\n  b\n\n      c]"_s << false << u"    a\n      b\n\n          c"_s
                                << u"a\nb\n\n  c"_s;
        QTest::newRow("tabs") << u"[a\n\tb\n\t\tc]"_s << true << u"\ta\n\t\tb\n\t\t\tc"_s << u"a\nb\n\tc"_s;
        QTest::newRow("blanks before a tab") << u"[  \ta\nb]"_s << true << u"\t  \ta\n\tb"_s << u"a\nb"_s;
        QTest::newRow("the start of a line without a selection") << u"[]a\nb"_s << false << u"    a\nb"_s << u"a\nb"_s;
        QTest::newRow("a line of a tab only") << u"[\t\na]"_s << false << u"\t\n    a"_s << u"\na"_s;
        QTest::newRow("a tab behind as many blanks")
            << u"[    \ta\nb]"_s << false << u"        \ta\n    b"_s << u"\ta\nb"_s;
    }
    void linesAreIndentedAndUnindented()
    {
        QFETCH(QString, before);
        QFETCH(bool, tabs);
        indentLines(selection(before), {4, tabs});
        QTEST(m_text.toPlainText(), "indented");
        unindentLines(selection(before), {4, tabs});
        QTEST(m_text.toPlainText(), "unindented");
    }

    void changeIsOneStepForUndo()
    {
        const QTextCursor selected = selection(u"[a\nb\nc]"_s);
        const QSignalSpy changed(&m_text, &QTextDocument::contentsChanged);
        commentLines(selected, u"#"_s);
        QCOMPARE(selected.selectedText().count(u'#'), 2); // the selection keeps its text: the first sign is before it
        QVERIFY(!changed.isEmpty());
        m_text.undo();
        QCOMPARE(m_text.toPlainText(), u"a\nb\nc"_s);
    }

    void selectionOfSeveralLinesIsRecognised()
    {
        QVERIFY(!selectsSeveralLines(selection(u"a|\nb"_s)));
        QVERIFY(!selectsSeveralLines(selection(u"[a]\nb"_s)));
        QVERIFY(selectsSeveralLines(selection(u"[a\nb]"_s)));
    }
};

QTEST_MAIN(LineEditsTest)
#include "tst_lineedits.moc"

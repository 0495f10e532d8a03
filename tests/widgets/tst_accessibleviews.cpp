#include "accessibleviews.h"
#include "linesource.h"
#include "markerwidget.h"
#include "textlineview.h"
#include "textparaview.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
struct Lines : ILineSource
{
    QString line(int index) override { return lines.value(index); }
    int lineCount() override { return int(lines.size()); }

    QStringList lines{u"one\n"_s, u"two &amp; <b>2</b>\n"_s, u"three\n"_s};
};

struct Paras : IParaSource
{
    QStringList para(int index) override { return {u"para %1"_s.arg(index)}; }
    int paraCount() override { return 3; }
};

QAccessibleTextInterface *textOf(QWidget &view)
{
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&view);
    return accessible ? accessible->textInterface() : nullptr;
}
} // namespace

class AccessibleViewsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void marksAreWords_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << 0 << QString();
        QTest::newRow("enabled") << int(MarkerWidget::EnabledBreakpoint) << u"Line 3: breakpoint"_s;
        QTest::newRow("disabled and current") << int(MarkerWidget::DisabledBreakpoint | MarkerWidget::CurrentLine)
                                              << u"Line 3: disabled breakpoint, next statement"_s;
        QTest::newRow("several") << int(MarkerWidget::MultipleBreakpoint | MarkerWidget::Alternate)
                                 << u"Line 3: several breakpoints"_s;
        QTest::newRow("found") << int(MarkerWidget::Lookup) << u"Line 3: found line"_s;
    }
    void marksAreWords()
    {
        QFETCH(const int, bits);
        QTEST(marksText({{3, bits}}), "expected");
    }

    void marginNamesItsMarks()
    {
        Lines source;
        TextLineView view(&source);
        MarkerWidget margin(&view);
        margin.setMarker(1, MarkerWidget::EnabledBreakpoint, true, false);
        margin.setMarker(2, MarkerWidget::CurrentLine, true, false);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&margin);
        QCOMPARE(accessible->role(), QAccessible::Indicator);
        QCOMPARE(accessible->text(QAccessible::Name), u"Margin"_s);
        QCOMPARE(accessible->text(QAccessible::Value), u"Line 1: breakpoint; Line 2: next statement"_s);
    }

    void linesAreReadOnlyText()
    {
        Lines source;
        TextLineView view(&source);
        view.resize(400, 200);
        view.show();
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&view);
        QCOMPARE(accessible->role(), QAccessible::EditableText);
        QVERIFY(accessible->state().readOnly && accessible->state().multiLine);
        QVERIFY(accessible->text(QAccessible::Value).startsWith(u"one\ntwo & 2\nthree"));
        QAccessibleTextInterface *text = textOf(view);
        QCOMPARE(text->text(4, 7), u"two"_s);
        int start = 0;
        int end = 0;
        QCOMPARE(text->textAtOffset(5, QAccessible::WordBoundary, &start, &end), u"two"_s);
    }

    void cursorOfLinesIsFollowedAndMoved()
    {
        Lines source;
        TextLineView view(&source);
        view.resize(400, 200);
        view.show();
        view.setCursor(1, 2);
        QAccessibleTextInterface *text = textOf(view);
        QCOMPARE(text->cursorPosition(), 6);
        text->setCursorPosition(1);
        QCOMPARE(view.cursorPlace(), (TextLineView::Place{0, 1}));
        text->setSelection(0, 4, 7);
        QCOMPARE(view.selectedText(), u"two"_s);
        QCOMPARE(text->selectionCount(), 1);
        int start = 0;
        int end = 0;
        text->selection(0, &start, &end);
        QCOMPARE(std::pair(start, end), std::pair(4, 7));
        text->removeSelection(0);
        QCOMPARE(text->selectionCount(), 0);
    }

    void pointsLeadToCharactersAndBack()
    {
        Lines source;
        TextLineView view(&source);
        view.resize(400, 200);
        view.show();
        QAccessibleTextInterface *text = textOf(view);
        QCOMPARE(text->offsetAtPoint(text->characterRect(5).center()), 5);
        QCOMPARE(text->offsetAtPoint(view.mapToGlobal(QPoint(-5, -5))), -1);
    }

    void positionsOutOfRangeAreHarmless()
    {
        Lines source;
        TextLineView view(&source);
        view.resize(400, 200);
        view.show();
        QAccessibleTextInterface *text = textOf(view);
        text->setCursorPosition(100000);
        text->setCursorPosition(-3);
        text->setSelection(0, -5, 100000);
        text->setSelection(7, 0, 1);
        QVERIFY(text->characterCount() > 0);
    }

    void paragraphsAreReadOnlyText()
    {
        Paras source;
        TextParaView view(&source);
        view.resize(400, 200);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QAccessibleTextInterface *text = textOf(view);
        QCOMPARE(text->text(0, 6), u"para 0"_s);
        view.setCursor({1, 0, 2});
        QCOMPARE(text->cursorPosition(), 9);
        text->setCursorPosition(1);
        QCOMPARE(view.cursorPlace(), (TextParaView::Place{0, 0, 1}));
    }
};

QTEST_MAIN(AccessibleViewsTest)
#include "tst_accessibleviews.moc"

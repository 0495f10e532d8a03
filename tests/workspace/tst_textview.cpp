#include "editorcolours.h"
#include "editorfixture.h"
#include "paintcounter.h"
#include "recordingprinter.h"
#include "textformats.h"
#include "textmarkerwidget.h"
#include "textpattern.h"
#include "textprint.h"
#include "textsplitterwidget.h"
#include <cmath>
#include <QClipboard>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QPageSize>
#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrinter>
#include <QRubberBand>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QStyle>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
using Calls = QList<QVariantList>;

QString numbered(int lines)
{
    QStringList texts;
    for (int i = 1; i <= lines; ++i)
        texts << u"line %1"_s.arg(i);
    return texts.join(u'\n');
}

TextMarkerWidget *marginOf(TextViewEdit *edit)
{
    return edit->findChild<TextMarkerWidget *>();
}

/// The colours of the four corners of the margin's picture on a line, by the numbers of FakeHost; "." for none.
QString pictureAt(TextViewEdit *edit, int line)
{
    const QImage image = marginOf(edit)->grab().toImage();
    QString found;
    for (const TextViewEdit::Line &shown : edit->linesAt(0, edit->viewport()->height())) {
        if (shown.block.blockNumber() != line - 1)
            continue;
        const int middle = qRound(shown.rect.top() + (shown.rect.height() - 12) / 2) + 6;
        for (const QPoint corner :
             {QPoint(2, middle - 4), QPoint(11, middle - 4), QPoint(2, middle + 4), QPoint(11, middle + 4)}) {
            QChar sign = u'.';
            for (int number = 0; number < 9; ++number) {
                if (image.pixelColor(corner).rgb() == FakeHost::colour(number).rgb())
                    sign = QChar(u'0' + number);
            }
            found += sign;
        }
    }
    return found;
}

void sendToolTip(QWidget *widget, const QPoint &position)
{
    QHelpEvent event(QEvent::ToolTip, position, widget->mapToGlobal(position));
    QApplication::sendEvent(widget, &event);
}

/// The visible contrast of two colours, from 1 to 21.
double contrast(const QColor &one, const QColor &two)
{
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](float part) {
            return part <= 0.04045f ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(one), luminance(two)});
    return (light + 0.05) / (dark + 0.05);
}

/// The painted picture of a widget.
class PaintedRegion : public QObject
{
public:
    explicit PaintedRegion(QWidget *widget) : QObject(widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent *>(event)->region();
        return false;
    }

    QRegion painted;
};
} // namespace

class TestTextView : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void sideInterfacesAreFoundByName()
    {
        EditorFixture f;
        QCOMPARE(viewInterface<IViewWithMarkers>(f.view.get()), static_cast<IViewWithMarkers *>(f.view.get()));
        QCOMPARE(viewInterface<ITextNavigation>(f.view.get()), static_cast<ITextNavigation *>(f.view.get()));
        QCOMPARE(viewInterface<ISourceView>(f.view.get()), static_cast<ISourceView *>(f.view.get()));
        void *out = &f;
        QVERIFY(!f.view->queryInterface(u"ISomething"_s, &out));
        QCOMPARE(out, nullptr);
    }

    void paneHasNoFrameButMarginAndScrollBars()
    {
        EditorFixture f;
        QCOMPARE(f.edit()->frameShape(), QFrame::NoFrame);
        QVERIFY(f.edit()->verticalScrollBar()->isVisible() && f.edit()->horizontalScrollBar()->isVisible());
        QCOMPARE(f.edit()->viewport()->x(), 18);
        QCOMPARE(marginOf(f.edit())->geometry(), QRect(0, 0, 18, f.edit()->viewport()->height()));
        QCOMPARE(f.edit()->palette().color(QPalette::Base), QColor(u"ivory"_s));
        const auto *handle = f.edit()->findChild<TextSplitterWidget *>();
        QCOMPARE(handle->cursor().shape(), Qt::SplitVCursor);
        QCOMPARE(int(handle->cursor().shape()), 11);
        QCOMPARE(handle->toolTip(), u"Drag down to split the window"_s);
        QCOMPARE(handle->height(), handle->style()->pixelMetric(QStyle::PM_SplitterWidth));
    }

    void focusEmitsTheAvailableCommands()
    {
        EditorFixture f(u"some text"_s);
        QGuiApplication::clipboard()->setText(u"clip"_s);
        QPushButton elsewhere(f.view.get());
        elsewhere.show();
        elsewhere.setFocus();
        f.putCursor(0, 0, 0, 4);
        QStringList emitted;
        const auto note = [&emitted](const char *name) {
            return [&emitted, name](bool on) { emitted << QLatin1String(name) + (on ? u" 1"_s : u" 0"_s); };
        };
        connect(f.view.get(), &View::viewActivated, this, [&emitted] { emitted << u"activated"_s; });
        connect(f.view.get(), &View::undoAvailable, this, note("undo"));
        connect(f.view.get(), &View::redoAvailable, this, note("redo"));
        connect(f.view.get(), &View::copyAvailable, this, note("copy"));
        connect(f.view.get(), &View::cutAvailable, this, note("cut"));
        connect(f.view.get(), &View::pasteAvailable, this, note("paste"));
        connect(f.view.get(), &View::backAvailable, this, note("back"));
        connect(f.view.get(), &View::forwardAvailable, this, note("forward"));
        connect(f.view.get(), &View::previousAvailable, this, note("previous"));
        connect(f.view.get(), &View::nextAvailable, this, note("next"));
        connect(f.view.get(), &View::cursorPositionChanged, this,
                [&emitted](int para, int index) { emitted << u"%1,%2"_s.arg(para).arg(index); });
        QGuiApplication::clipboard()->setText(u"other"_s);
        QCOMPARE(emitted, QStringList()); // the actions are those of another view
        f.view->setFocus();
        QCOMPARE(emitted.join(u'|'),
                 u"activated|undo 0|redo 0|copy 1|cut 1|paste 1|back 0|forward 0|previous 0|next 0|0,4"_s);
        emitted.clear();
        QTest::keyClick(f.edit(), Qt::Key_Delete);
        QVERIFY(emitted.contains(u"undo 1"_s));
        QVERIFY(emitted.contains(u"copy 0"_s) && emitted.contains(u"cut 0"_s));
        QVERIFY(emitted.contains(u"0,0"_s));
        emitted.clear();
        f.view->undo();
        QCOMPARE(emitted.mid(emitted.size() - 2), (QStringList{u"undo 0"_s, u"redo 1"_s}));
        f.view->redo();
        QCOMPARE(emitted.mid(emitted.size() - 2), (QStringList{u"undo 1"_s, u"redo 0"_s}));
        emitted.clear();
        QGuiApplication::clipboard()->clear();
        QVERIFY(emitted.contains(u"paste 0"_s));
    }

    void editCommandsChangeTheCurrentPane()
    {
        EditorFixture f(u"one two"_s);
        f.view->split();
        QCOMPARE(f.view->currentEdit(), f.edit(1));
        f.putCursor(0, 0, 0, 4);
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"one "_s);
        f.view->cut();
        QCOMPARE(f.text(), u"two"_s);
        f.view->paste();
        QCOMPARE(f.text(), u"one two"_s);
        f.view->undo();
        QCOMPARE(f.text(), u"two"_s);
        f.view->redo();
        QCOMPARE(f.text(), u"one two"_s);
        f.putCursor(0, 3);
        f.view->remove(); // nothing is selected
        QCOMPARE(f.text(), u"one two"_s);
        f.putCursor(0, 3, 0, 7);
        f.view->remove();
        QCOMPARE(f.text(), u"one"_s);
        f.view->selectAll();
        QCOMPARE(f.selection(1), u"0,0-0,3"_s);
        f.view->insert(u"x\ny"_s);
        QCOMPARE(f.text(), u"x\ny"_s);
        QCOMPARE(f.selection(1), u"1,1"_s);
        int para = -1;
        int index = -1;
        f.view->getCursorPosition(&para, &index);
        QCOMPARE(para, 1);
        QCOMPARE(index, 1);
    }

    void cursorMovesByScriptNumbers_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("moved");
        QTest::addColumn<QString>("selected");
        const auto row = [](int action, const QString &moved, const QString &selected) {
            QTest::addRow("%d", action) << action << moved << selected;
        };
        row(0, u"1,4"_s, u"1,4-1,5"_s);
        row(1, u"1,6"_s, u"1,5-1,6"_s);
        row(2, u"1,4"_s, u"1,4-1,5"_s);
        row(3, u"1,8"_s, u"1,5-1,8"_s);
        row(4, u"0,5"_s, u"0,5-1,5"_s);
        row(5, u"2,5"_s, u"1,5-2,5"_s);
        row(6, u"1,0"_s, u"1,0-1,5"_s);
        row(7, u"1,11"_s, u"1,5-1,11"_s);
        row(8, u"0,0"_s, u"0,0-1,5"_s);
        row(9, u"2,11"_s, u"1,5-2,11"_s);
        row(10, u"1,5"_s, u"1,5"_s);
        row(-1, u"1,5"_s, u"1,5"_s);
        row(std::numeric_limits<int>::max(), u"1,5"_s, u"1,5"_s);
        row(std::numeric_limits<int>::min(), u"1,5"_s, u"1,5"_s);
    }
    void cursorMovesByScriptNumbers()
    {
        QFETCH(const int, action);
        EditorFixture f(u"aaa bbb ccc\naaa bbb ccc\naaa bbb ccc"_s);
        f.putCursor(1, 5);
        f.view->moveCursor(TextView::CursorAction(action), false);
        QTEST(f.selection(), "moved");
        f.putCursor(1, 5);
        f.view->moveCursor(TextView::CursorAction(action), true);
        QTEST(f.selection(), "selected");
    }

    void tabInsertsBlanksUpToTheNextStop_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("keepTabs");
        QTest::addColumn<QString>("expected");
        QTest::newRow("column 5 of size 4") << 5 << false << u"12345   67"_s;
        QTest::newRow("on a stop") << 4 << false << u"1234    567"_s;
        QTest::newRow("start") << 0 << false << u"    1234567"_s;
        QTest::newRow("tabs kept") << 5 << true << u"12345\t67"_s;
    }
    void tabInsertsBlanksUpToTheNextStop()
    {
        QFETCH(const int, index);
        QFETCH(const bool, keepTabs);
        EditorFixture f(u"1234567"_s);
        f.docTemplate.indenter()->setKeepTabs(keepTabs);
        f.putCursor(0, index);
        QTest::keyClick(f.edit(), Qt::Key_Tab);
        QTEST(f.text(), "expected");
        f.view->undo();
        QCOMPARE(f.text(), u"1234567"_s);
    }

    void tabStopsCountCharactersAndReplaceTheSelection()
    {
        EditorFixture f(u"\tab"_s);
        f.docTemplate.indenter()->setKeepTabs(false);
        f.putCursor(0, 1);
        QTest::keyClick(f.edit(), Qt::Key_Tab);
        QCOMPARE(f.text(), u"\t   ab"_s); // the tab before is one character
        f.view->undo();
        f.putCursor(0, 1, 0, 3);
        QTest::keyClick(f.edit(), Qt::Key_Tab);
        QCOMPARE(f.text(), u"\t   "_s);
        f.view->undo(); // one step
        QCOMPARE(f.text(), u"\tab"_s);
    }

    void tabIndentsTheSelectedLines()
    {
        EditorFixture f(u"one\ntwo"_s);
        f.docTemplate.indenter()->setKeepTabs(false);
        f.putCursor(0, 1, 1, 2);
        QTest::keyClick(f.edit(), Qt::Key_Tab);
        QCOMPARE(f.text(), u"    one\n    two"_s);
        QTest::keyClick(f.edit(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(f.text(), u"one\ntwo"_s);
    }

    void keysWithControlDoNotIndent()
    {
        EditorFixture f(u"{\n one\n two\n}"_s);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.docTemplate.indenter()->setKeepTabs(false);
        f.putCursor(1, 1, 2, 2);
        QTest::keyClick(f.edit(), Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(f.edit(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        f.putCursor(1, 4);
        QTest::keyClick(f.edit(), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(f.text(), u"{\n one\n two\n}"_s);
    }

    void keysWithoutIndenterAreThoseOfTheToolkit()
    {
        const FormatTable formats = testFormats();
        TextDocumentTemplate docTemplate(u"T"_s, u"d"_s, {}, {}, std::make_unique<SyntaxHighlighter>(&formats),
                                         nullptr);
        const std::unique_ptr<TextDocument> document(static_cast<TextDocument *>(docTemplate.createDocument()));
        const std::unique_ptr<TextView> view(static_cast<TextView *>(docTemplate.createView(document.get())));
        document->text()->setPlainText(u"  a"_s);
        view->currentEdit()->moveCursor(QTextCursor::End);
        QTest::keyClick(view->currentEdit(), Qt::Key_Return);
        QTest::keyClick(view->currentEdit(), Qt::Key_Tab);
        view->indentSelection();
        QCOMPARE(document->text()->toPlainText(), u"  a\n\t"_s);
        document->text()->setPlainText(u"a\nb"_s);
        view->currentEdit()->selectAll();
        QTest::keyClick(view->currentEdit(), Qt::Key_Tab);
        QCOMPARE(document->text()->toPlainText(), u"    a\n    b"_s);
        QTest::keyClick(view->currentEdit(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(document->text()->toPlainText(), u"a\nb"_s);
        const QTemporaryDir directory;
        QSettings settings(directory.filePath(u"s.ini"_s), QSettings::IniFormat);
        settings.setValue(u"Editor/LineNumbers"_s, 0);
        docTemplate.readSettings(settings);
        QVERIFY(!docTemplate.showsLineNumbers());
    }

    void returnIndentsTheNewLineInOneStep()
    {
        EditorFixture f(u"int f()\n{"_s);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.putCursor(1, 1);
        QTest::keyClick(f.edit(), Qt::Key_Return);
        QTest::keyClicks(f.edit(), u"x"_s);
        QCOMPARE(f.text(), u"int f()\n{\n    x"_s);
        f.view->undo();
        f.view->undo();
        QCOMPARE(f.text(), u"int f()\n{"_s);
        f.putCursor(1, 1);
        QTest::keyClick(f.edit(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(f.document->text()->blockCount(), 3); // no other kind of line break
        QVERIFY(!f.document->text()->toRawText().contains(QChar::LineSeparator));
    }

    void typedCharacterIndentsItsLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("opening brace") << u"int a;\nvoid f()\n        "_s << u"{"_s << u"int a;\nvoid f()\n{"_s;
        QTest::newRow("closing brace") << u"void f()\n{\n    x;\n    "_s << u"}"_s << u"void f()\n{\n    x;\n}"_s;
        QTest::newRow("closing brace and more")
            << u"void f()\n{\n    x;\n    "_s << u"};"_s << u"void f()\n{\n    x;\n};"_s;
        QTest::newRow("brace behind other text") << u"void f()\n{\n  x"_s << u" }"_s << u"void f()\n{\n  x }"_s;
        QTest::newRow("preprocessor") << u"void f()\n{\n    "_s << u"#if"_s << u"void f()\n{\n#if"_s;
        QTest::newRow("case label") << u"switch ( a ) {\n    "_s << u"case 1:"_s << u"switch ( a ) {\ncase 1:"_s;
        QTest::newRow("scope") << u"switch ( a ) {\n      "_s << u"case a::"_s << u"switch ( a ) {\n      case a::"_s;
        QTest::newRow("another colon") << u"void f()\n{\n  "_s << u"a ? b :"_s << u"void f()\n{\n  a ? b :"_s;
    }
    void typedCharacterIndentsItsLine()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, typed);
        EditorFixture f(text);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.edit()->moveCursor(QTextCursor::End);
        QTest::keyClicks(f.edit(), typed);
        QTEST(f.text(), "expected");
        QVERIFY(f.edit()->textCursor().atEnd());
    }

    void typedBraceAndItsIndentationAreOneStep()
    {
        const QString text = u"void f()\n{\n    x;\n    "_s;
        EditorFixture f(text);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.edit()->moveCursor(QTextCursor::End);
        QTest::keyClicks(f.edit(), u"}"_s);
        f.view->undo();
        QCOMPARE(f.text(), text);
        QTest::keyClicks(f.edit(), u" }z"_s);
        QCOMPARE(f.text(), u"void f()\n{\n    x;\n}z"_s);
        for (const QString &left : {u"void f()\n{\n    x;\n}"_s, text + u' ', text}) {
            f.view->undo();
            QCOMPARE(f.text(), left);
        }
        f.edit()->setPlainText(u"void f()\n{\n"_s);
        f.edit()->moveCursor(QTextCursor::End);
        QTest::keyClicks(f.edit(), u"}z"_s); // which needs no other indentation
        f.view->undo();
        QCOMPARE(f.text(), u"void f()\n{\n}"_s);
    }

    void typedBraceIndentsInSmartModeOnly()
    {
        for (const int mode : {TextIndent::NoIndent, TextIndent::CopyPrevious}) {
            EditorFixture f(u"void f()\n{\n    x;\n    "_s);
            f.docTemplate.indenter()->setIndentMode(mode);
            f.edit()->moveCursor(QTextCursor::End);
            QTest::keyClicks(f.edit(), u"}"_s);
            QCOMPARE(f.text(), u"void f()\n{\n    x;\n    }"_s);
        }
    }

    void indentCommandIndentsTheSelectedLines()
    {
        EditorFixture f(u"int f()\n{\nx;\n  y;\n}"_s);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.putCursor(2, 0, 3, 2);
        f.view->indentSelection();
        QCOMPARE(f.text(), u"int f()\n{\n    x;\n    y;\n}"_s);
        QVERIFY(f.edit()->textCursor().hasSelection());
        f.putCursor(3, 0);
        QTimer::singleShot(0, this, [&f] { f.view.reset(); }); // events are processed between the lines
        f.view->indentSelection();
        QVERIFY(!f.view);
    }

    void indentingEndsWithThePane()
    {
        EditorFixture f(u"int f()\n{\nx;\n  y;\n}"_s);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.view->split();
        f.putCursor(2, 0, 3, 2);
        QTimer::singleShot(0, f.view.get(), &TextView::closePane);
        f.view->indentSelection();
        QCOMPARE(f.view->edits().size(), 1);
        QCOMPARE(f.text(), u"int f()\n{\n    x;\n  y;\n}"_s);
    }

    void indentingEndsWithTheText()
    {
        EditorFixture f(u"  int a;\nint f()\n{\nx;\n  y;\n}"_s);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        f.putCursor(2, 0, 5, 1);
        QTimer::singleShot(0, this, [&f] {
            QTextCursor cursor(f.document->text()->findBlockByNumber(1));
            cursor.movePosition(QTextCursor::EndOfBlock);
            cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        });
        f.view->indentSelection();
        QCOMPARE(f.text(), u"  int a;\nint f()"_s); // the first line was not selected
    }

    void indentingKeepsTheSelectionOnItsLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("anchor");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("indented");
        QTest::addColumn<QString>("selection");
        const QString text = u"int f()\n{\nx;\n}\n"_s;
        const QString indented = u"int f()\n{\n    x;\n}\n"_s;
        QTest::newRow("to an empty last line") << text << 0 << 15 << indented << u"0,0-4,0"_s;
        QTest::newRow("upward") << text << 15 << 0 << indented << u"0,0-4,0"_s;
        QTest::newRow("whole lines") << text << 10 << 13 << u"int f()\n{\n    x;\n}\n"_s << u"2,0-3,0"_s;
        QTest::newRow("an empty line within a block")
            << u"f() {\nx;\n\ny;\n}"_s << 6 << 12 << u"f() {\n    x;\n    \n    y;\n}"_s << u"1,0-3,2"_s;
        QTest::newRow("lines that become shorter")
            << u"f() {\n          x;\n}"_s << 8 << 18 << u"f() {\n    x;\n}"_s << u"1,2-1,6"_s;
        QTest::newRow("nothing selected") << text << 10 << 10 << u"int f()\n{\n    x;\n}\n"_s << u"2,4"_s;
    }
    void indentingKeepsTheSelectionOnItsLines()
    {
        QFETCH(const QString, text);
        QFETCH(const int, anchor);
        QFETCH(const int, position);
        EditorFixture f(text);
        f.docTemplate.indenter()->setIndentMode(TextIndent::Smart);
        QTextCursor cursor(f.document->text());
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        f.edit()->setTextCursor(cursor);
        f.view->indentSelection();
        QTEST(f.text(), "indented");
        QTEST(f.selection(), "selection");
        const QTextCursor after = f.edit()->textCursor();
        QCOMPARE(after.position() < after.anchor(), position < anchor);
        f.view->indentSelection(); // does nothing without the view
        QTEST(f.text(), "indented");
        QTEST(f.selection(), "selection");
    }

    void doubleClickSelectsTheWordOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("expected");
        QTest::newRow("word") << u"one two three"_s << 5 << u"two"_s;
        QTest::newRow("bracket after") << u"call(x)"_s << 1 << u"call"_s;
        QTest::newRow("underscore at the end is dropped") << u"name_ x"_s << 1 << u"name"_s;
        QTest::newRow("one character stays") << u"((( x"_s << 0 << u"("_s;
    }
    void doubleClickSelectsTheWordOnly()
    {
        QFETCH(const QString, text);
        QFETCH(const int, index);
        EditorFixture f(text);
        f.putCursor(0, index);
        const QPoint at = f.edit()->cursorRect().center() + QPoint(2, 0);
        QTest::mouseDClick(f.edit()->viewport(), Qt::LeftButton, {}, at);
        QTEST(f.view->selectedText(), "expected");
    }

    void rightPressOutsideTheSelectionMovesTheCursor()
    {
        EditorFixture f(u"one\ntwo\nthree"_s);
        f.putCursor(2, 3);
        const QPoint there = f.edit()->cursorRect().center();
        f.putCursor(0, 0);
        QTest::mousePress(f.edit()->viewport(), Qt::RightButton, {}, there);
        QCOMPARE(f.selection(), u"2,3"_s);
        f.putCursor(1, 0, 2, 5);
        QTest::mousePress(f.edit()->viewport(), Qt::RightButton, {}, there);
        QCOMPARE(f.selection(), u"1,0-2,5"_s);
    }

    void rightPressBesideTheSelectionInItsLineMovesTheCursor()
    {
        EditorFixture f(u"one two three"_s);
        f.putCursor(0, 10);
        const QPoint behind = f.edit()->cursorRect().center();
        f.putCursor(0, 1);
        const QPoint before = f.edit()->cursorRect().center();
        f.putCursor(0, 4, 0, 7);
        QTest::mousePress(f.edit()->viewport(), Qt::RightButton, {}, behind);
        QCOMPARE(f.selection(), u"0,10"_s);
        f.putCursor(0, 4, 0, 7);
        QTest::mousePress(f.edit()->viewport(), Qt::RightButton, {}, before);
        QCOMPARE(f.selection(), u"0,1"_s);
    }

    void middlePressKeepsTheCursor()
    {
        EditorFixture f(u"one\ntwo\nthree"_s);
        f.putCursor(2, 3);
        const QPoint there = f.edit()->cursorRect().center();
        f.putCursor(0, 0);
        QTest::mousePress(f.edit()->viewport(), Qt::MiddleButton, {}, there);
        QCOMPARE(f.selection(), u"0,0"_s);
    }

    void lineFarAwayIsShownAtTheSamePlaceFromAboveAndBelow()
    {
        EditorFixture f(u"line\n"_s.repeated(1000));
        f.view->gotoLine(500);
        const int shown = f.edit()->verticalScrollBar()->value();
        f.view->gotoLine(1000);
        QVERIFY(f.edit()->verticalScrollBar()->value() > shown);
        f.view->gotoLine(500);
        QCOMPARE(f.edit()->verticalScrollBar()->value(), shown);
    }

    void typingReplacesSeveralSelectedLines()
    {
        EditorFixture f(u"one\ntwo\nthree"_s);
        f.putCursor(0, 1, 2, 2);
        QTest::keyClick(f.edit(), Qt::Key_X);
        QCOMPARE(f.document->text()->toPlainText(), u"oxree"_s);
        f.edit()->undo();
        f.putCursor(0, 1, 2, 2);
        QTest::keyClick(f.edit(), Qt::Key_Delete);
        QCOMPARE(f.document->text()->toPlainText(), u"oree"_s);
    }

    void tabWithControlInsertsNothing()
    {
        EditorFixture f(u"text"_s);
        QTest::keyClick(f.edit(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(f.document->text()->toPlainText(), u"text"_s);
    }

    void contextMenuEndsWithTheSharedActions()
    {
        EditorFixture f(u"one\ntwo"_s);
        const auto texts = [&f] {
            QStringList texts;
            const auto menu = f.edit()->contextMenu({});
            for (QAction *action : menu->actions())
                texts << (action->isSeparator() ? u"-"_s : action->text().section(u'\t', 0, 0).remove(u'&'));
            return texts.join(u' ');
        };
        QCOMPARE(texts(), u"Undo Redo - Cut Copy Paste Delete - Select All - Toggle Breakpoint"_s);
        QAction run(u"Run to Cursor"_s);
        f.host.actions.insert(u"debugRunToCursor"_s, &run);
        QCOMPARE(texts(), u"Undo Redo - Cut Copy Paste Delete - Select All - Run to Cursor Toggle Breakpoint"_s);
        QSignalSpy toggled(f.view.get(), &TextView::toggleBreakpoint);
        f.putCursor(1, 0);
        const auto menu = f.edit()->contextMenu({});
        QCOMPARE(menu->actions().last()->text(), u"Toggle Breakpoint\tF9"_s);
        menu->actions().last()->trigger();
        QCOMPARE(Calls(toggled), Calls({{2}}));
    }

    void viewWithoutMarkersOffersNoBreakpoint()
    {
        EditorFixture f(u"one"_s);
        struct PlainView : TextView
        {
            using TextView::TextView;
            bool queryInterface(const QString &, void **out) override
            {
                *out = nullptr;
                return false;
            }
        };
        PlainView view(f.document.get());
        const auto menu = view.currentEdit()->contextMenu({});
        QCOMPARE(menu->actions().size(), 9); // with two separators
        QVERIFY(menu->actions().last()->text().contains(u"Select All"_s));
    }

    void draggedFilesAreNotAccepted_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("text") << u"some text"_s << true;
        QTest::newRow("file") << u"file:/x/a.c"_s << false;
        QTest::newRow("file within text") << u"see file:/x/a.c"_s << true;
    }
    void draggedFilesAreNotAccepted()
    {
        QFETCH(const QString, text);
        EditorFixture f;
        QMimeData data;
        data.setText(text);
        QDragEnterEvent event({30, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(f.edit()->viewport(), &event);
        QTEST(event.isAccepted(), "accepted");
        QDragLeaveEvent leave;
        QApplication::sendEvent(f.edit()->viewport(), &leave);
    }

    void draggedLocationsAreNotAccepted()
    {
        EditorFixture f;
        QMimeData data;
        data.setUrls({QUrl(u"https://example.org/a.c"_s)});
        QDragEnterEvent event({30, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(f.edit()->viewport(), &event);
        QVERIFY(!event.isAccepted());
    }

    void marginPaintsMarkersOverEachOther_data()
    {
        QTest::addColumn<int>("marker");
        QTest::addColumn<bool>("alternate");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << 0 << false << u"...."_s;
        QTest::newRow("enabled") << 0x01 << false << u"0000"_s;
        QTest::newRow("enabled, alternate") << 0x01 << true << u"1111"_s;
        QTest::newRow("disabled") << 0x02 << false << u"2222"_s;
        QTest::newRow("disabled, alternate") << 0x02 << true << u"3333"_s;
        QTest::newRow("multiple") << 0x04 << false << u"4444"_s;
        QTest::newRow("multiple, alternate") << 0x04 << true << u"5555"_s;
        QTest::newRow("current line") << 0x08 << true << u"6..."_s;
        QTest::newRow("lookup") << 0x10 << true << u"...7"_s;
        QTest::newRow("caller") << 0x20 << true << u".8.."_s;
        QTest::newRow("all over a breakpoint") << 0x3A << false << u"6827"_s;
    }
    void marginPaintsMarkersOverEachOther()
    {
        QFETCH(const int, marker);
        QFETCH(const bool, alternate);
        EditorFixture f(numbered(100));
        for (int bit = 1; bit <= 0x20; bit *= 2) {
            if (marker & bit)
                f.view->setMarker(53, bit, true, alternate);
        }
        f.view->gotoLine(55);
        QTEST(pictureAt(f.edit(), 53), "expected");
        QCOMPARE(pictureAt(f.edit(), 54), u"...."_s);
    }

    void positionIsReportedAlsoIfTheCursorIsAlreadyInTheLine()
    {
        EditorFixture f(numbered(100));
        f.view->gotoLine(55);
        QSignalSpy moved(f.view.get(), &View::cursorPositionChanged);
        f.view->gotoLine(55);
        QCOMPARE(moved, (QList<QVariantList>{{54, 0}}));
        f.view->gotoLine(7);
        QCOMPARE(moved.value(1), (QVariantList{6, 0}));
        QCOMPARE(moved.size(), 2);
    }

    void twoBreakpointsOnALineFailAnAssertion_data()
    {
        QTest::addColumn<int>("marker");
        QTest::addColumn<QString>("text");
        QTest::newRow("multiple and another")
            << 0x05
            << u"(paragData->marker & TextView::DisabledBreakpointMarker) == 0 && (paragData->marker & "
               "TextView::EnabledBreakpointMarker) == 0"_s;
        QTest::newRow("enabled and disabled")
            << 0x03
            << u"(paragData->marker & TextView::MultipleBreakpointMarker) == 0 && (paragData->marker & "
               "TextView::DisabledBreakpointMarker) == 0"_s;
    }
    void twoBreakpointsOnALineFailAnAssertion()
    {
        QFETCH(const int, marker);
        QFETCH(const QString, text);
        EditorFixture f(u"x"_s);
        f.view->setMarker(1, marker, true, false);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^ASSERT: \""_s + QRegularExpression::escape(text) + u"\" in "_s));
        marginOf(f.edit())->grab();
        f.view->clearMarkers(0xFF);
    }

    void clickOnTheMarginTogglesABreakpoint()
    {
        EditorFixture f(u"one\ntwo"_s);
        QSignalSpy toggled(f.view.get(), &TextView::toggleBreakpoint);
        const QList<TextViewEdit::Line> lines = f.edit()->linesAt(0, 400);
        QTest::mouseClick(marginOf(f.edit()), Qt::LeftButton, {}, {9, int(lines.at(1).rect.center().y())});
        QCOMPARE(Calls(toggled), Calls({{2}}));
        QTest::mouseClick(marginOf(f.edit()), Qt::LeftButton, {}, {9, int(lines.at(1).rect.bottom()) + 20});
        QCOMPARE(toggled.size(), 1); // there is no line
        QTest::mouseClick(marginOf(f.edit()), Qt::RightButton, {}, {9, int(lines.at(1).rect.center().y())});
        QCOMPARE(toggled.size(), 1);
    }

    void marginShowsToolTipsForBreakpointsOnly()
    {
        EditorFixture f(u"one\ntwo\nthree"_s);
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.view->setMarker(1, TextView::CurrentLineMarker, true, false);
        f.view->setMarker(2, TextView::DisabledBreakpointMarker, true, false);
        f.host.toolTip = u"<b>Breakpoint status</b><br>"_s;
        const auto heightOf = [&f](int line) { return int(f.edit()->linesAt(0, 400).at(line - 1).rect.center().y()); };
        sendToolTip(marginOf(f.edit()), {5, heightOf(1)});
        sendToolTip(marginOf(f.edit()), {5, heightOf(3)});
        sendToolTip(marginOf(f.edit()), {5, 300});
        QVERIFY(f.host.asked.isEmpty());
        sendToolTip(marginOf(f.edit()), {5, heightOf(2)});
        QCOMPARE(f.host.asked, QStringList{f.path(u"a.c"_s) + u":2"_s});
        QCOMPARE(QToolTip::text(), f.host.toolTip);
    }

    void marginKnowsTheMarkersOnScreen()
    {
        EditorFixture f(u"one\ntwo\nthree"_s);
        f.view->setMarker(2, TextView::EnabledBreakpointMarker, true, false);
        QCOMPARE(marginOf(f.edit())->markers(), (QMap<int, int>{{2, TextView::EnabledBreakpointMarker}}));
    }

    void marginWithoutAHostShowsNoToolTip()
    {
        EditorFixture f(u"one"_s);
        f.docTemplate.setEditorHost(nullptr);
        f.view->setMarker(1, TextView::EnabledBreakpointMarker, true, false);
        QToolTip::showText({}, u"before"_s);
        sendToolTip(marginOf(f.edit()), {5, 5});
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void markerAtTheCursorMustBeVisible()
    {
        EditorFixture f(numbered(200));
        f.view->setMarker(100, TextView::EnabledBreakpointMarker, true, false);
        f.view->gotoLine(100);
        QVERIFY(f.view->hasMarkerAtCursor(TextView::EnabledBreakpointMarker));
        QVERIFY(!f.view->hasMarkerAtCursor(TextView::DisabledBreakpointMarker));
        f.edit()->verticalScrollBar()->setValue(0);
        QVERIFY(f.view->hasMarker(100, TextView::EnabledBreakpointMarker));
        QVERIFY(!f.view->hasMarkerAtCursor(TextView::EnabledBreakpointMarker));
    }

    void partlyVisibleLineCountsAsInvisible()
    {
        EditorFixture f(numbered(200));
        f.view->setMarker(10, TextView::EnabledBreakpointMarker, true, false);
        f.putCursor(9, 0);
        const int bottom = int(std::ceil(f.edit()->linesAt(0, f.edit()->viewport()->height()).at(9).rect.bottom()));
        const auto setViewportHeight = [&f](int height) {
            f.view->resize(f.view->width(), f.view->height() + height - f.edit()->viewport()->height());
            QCoreApplication::processEvents();
            f.edit()->verticalScrollBar()->setValue(0);
        };
        setViewportHeight(bottom);
        QVERIFY(f.view->hasMarkerAtCursor(TextView::EnabledBreakpointMarker));
        setViewportHeight(bottom - f.document->lineSpacing() / 2);
        QVERIFY(!f.view->hasMarkerAtCursor(TextView::EnabledBreakpointMarker));
    }

    void openingBracketBeforeTheCursorIsNotMarked()
    {
        const EditorFixture f(u"((a))\n"_s);
        for (const QChar bracket : {u'(', u'[', u'{'}) {
            f.document->text()->setPlainText(u"((a))\n"_s.replace(u'(', bracket));
            f.putCursor(0, 1);
            f.putCursor(0, 2);
            QVERIFY(f.document->bracketMatch().isNull());
        }
    }

    void noBracketIsMarkedInATargetLine()
    {
        EditorFixture f(u"int f()\n{\n}\n"_s);
        f.putCursor(1, 0);
        QVERIFY(!f.document->bracketMatch().isNull());
        f.view->gotoLine(3);
        QVERIFY(f.document->bracketMatch().isNull());
        f.view->gotoLine(2);
        QVERIFY(f.document->bracketMatch().isNull());
    }

    void targetLineHasLinesAroundIt_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("para");
        QTest::newRow("down") << 100 << 99;
        QTest::newRow("first") << 1 << 0;
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("after the end") << 900 << 199;
    }
    void targetLineHasLinesAroundIt()
    {
        QFETCH(const int, line);
        QFETCH(const int, para);
        EditorFixture f(numbered(200));
        for (const int from : {50, 150}) {
            f.view->gotoLine(from);
            f.view->gotoLine(line);
            QCOMPARE(f.selection(), u"%1,0"_s.arg(para));
            const QList<TextViewEdit::Line> lines = f.edit()->linesAt(0, f.edit()->viewport()->height());
            const int first = lines.first().block.blockNumber();
            const int last = lines.last().block.blockNumber();
            QVERIFY(first <= std::max(0, para - 4));
            QVERIFY(last >= std::min(199, para + 4));
        }
    }

    void lineThatIsVisibleScrollsAsFarAsNeeded()
    {
        EditorFixture f(numbered(200));
        const int onScreen = f.edit()->viewport()->height() / f.document->lineSpacing();
        QVERIFY(onScreen > 9);
        const auto topAfter = [&f](int line) {
            f.edit()->verticalScrollBar()->setValue(50);
            f.view->gotoLine(line + 1);
            return f.edit()->verticalScrollBar()->value();
        };
        QCOMPARE(topAfter(50 + 4), 50);
        QCOMPARE(topAfter(50 + 3), 49);
        QCOMPARE(topAfter(50 + onScreen - 5), 50);
        QCOMPARE(topAfter(50 + onScreen - 4), 51);
    }

    void jumpToALineOffTheScreenCentresIt_data()
    {
        QTest::addColumn<bool>("finds");
        QTest::newRow("go to line") << false;
        QTest::newRow("find") << true;
    }
    void jumpToALineOffTheScreenCentresIt()
    {
        QFETCH(const bool, finds);
        const EditorFixture f(numbered(400));
        const auto jump = [&] {
            if (finds)
                QVERIFY(f.view->find(u"251"_s, true, false, true, false));
            else
                f.view->gotoLine(f.document->text()->find(u"251"_s).blockNumber() + 1);
        };
        jump();
        const int line = f.edit()->textCursor().blockNumber();
        const QList<TextViewEdit::Line> shown = f.edit()->linesAt(0, f.edit()->viewport()->height() - 1);
        const int middle = (shown.first().block.blockNumber() + shown.last().block.blockNumber()) / 2;
        QVERIFY2(std::abs(line - middle) <= 1, qPrintable(u"%1 %2"_s.arg(line).arg(middle)));
        const int top = f.edit()->verticalScrollBar()->value();
        f.edit()->moveCursor(QTextCursor::Up);
        jump(); // it is visible now
        QCOMPARE(f.edit()->verticalScrollBar()->value(), top);
    }

    void statementAndCallerHaveBandsOfTheirOwn()
    {
        const EditorFixture f(numbered(20));
        f.view->setMarker(3, TextView::CurrentLineMarker, true, false);
        f.view->setMarker(5, TextView::CallerMarker, true, false);
        f.view->setMarker(7, TextView::EnabledBreakpointMarker, true, false);
        const QImage image = f.edit()->viewport()->grab().toImage();
        const EditorColours colours = editorColours(f.document->paperColour());
        const QList<TextViewEdit::Line> lines = f.edit()->linesAt(0, image.height() - 2);
        for (int i = 0; i < 10; ++i) {
            const QColor found = image.pixelColor(image.width() - 2, int(lines[i].rect.center().y()));
            const QColor expected = i == 2 ? colours.statement : i == 4 ? colours.caller : f.document->paperColour();
            QCOMPARE(found.name(), expected.name());
        }
    }

    void lineOfTheCursorHasABandIfItIsWanted_data()
    {
        QTest::addColumn<bool>("isWanted");
        QTest::newRow("wanted") << true;
        QTest::newRow("not wanted") << false;
    }
    void lineOfTheCursorHasABandIfItIsWanted()
    {
        QFETCH(const bool, isWanted);
        EditorFixture f(numbered(20));
        QSettings settings(f.path(u"settings.ini"_s), QSettings::IniFormat);
        settings.setValue(u"Editor/CurrentLine"_s, isWanted ? 1 : 0);
        f.docTemplate.readSettings(settings);
        const QList<TextViewEdit::Line> lines = f.edit()->linesAt(0, 300);
        const int edge = f.edit()->viewport()->width() - 2;
        const auto ends = [&](auto &&accept) {
            QList<int> found;
            for (int i = 0; i < 10; ++i) {
                if (accept(QPoint(edge, int(lines[i].rect.center().y()))))
                    found << i;
            }
            return found;
        };
        const QColor paper = f.document->paperColour();
        const auto bands = [&] {
            const QImage image = f.edit()->viewport()->grab().toImage();
            return ends([&](QPoint point) { return image.pixelColor(point) != paper; });
        };
        const auto painted = [&](int line, int index) {
            QCoreApplication::processEvents();
            const PaintCounter paints(f.edit()->viewport());
            f.putCursor(line, index);
            if (!QTest::qWaitFor([&] { return paints.count > 0; }))
                return QList{-1};
            return ends([&](QPoint point) { return paints.region.contains(point); });
        };
        f.putCursor(2, 0);
        QCOMPARE(bands(), isWanted ? QList{2} : QList<int>());
        QCOMPARE(painted(5, 0), isWanted ? (QList{2, 5}) : QList<int>());
        QCOMPARE(painted(5, 2), QList<int>());
        QCOMPARE(bands(), isWanted ? QList{5} : QList<int>());
    }

    void splitKeepsTheLineOfTheCursorVisible_data()
    {
        QTest::addColumn<int>("height");
        QTest::newRow("low upper pane") << 60;
        QTest::newRow("low lower pane") << 320;
    }
    void splitKeepsTheLineOfTheCursorVisible()
    {
        QFETCH(const int, height);
        const EditorFixture f(numbered(200));
        const QTextBlock last = f.edit()->blockAt(f.edit()->viewport()->height() - f.document->lineSpacing() - 2);
        f.putCursor(last.blockNumber(), 0);
        f.view->splitAt(f.edit(), height);
        for (const TextViewEdit *pane : f.view->edits())
            QVERIFY(pane->viewport()->rect().contains(pane->cursorRect()));
    }

    void splitLeavesAPaneWhoseCursorIsOffTheScreen()
    {
        const EditorFixture f(numbered(200));
        f.edit()->verticalScrollBar()->setValue(100);
        f.view->split();
        QCOMPARE(f.edit(0)->verticalScrollBar()->value(), 100);
        QCOMPARE(f.edit(1)->verticalScrollBar()->value(), 100);
    }

    void closedPaneLeavesItsHeightToTheOthers()
    {
        const EditorFixture f(numbered(50));
        f.view->closePane(); // the only one stays
        QCOMPARE(f.view->edits().size(), 1);
        const int height = f.edit()->height();
        f.view->split();
        const QPointer<TextViewEdit> second = f.edit(1);
        QSignalSpy activated(f.view.get(), &View::viewActivated);
        f.view->closePane();
        QVERIFY(!second);
        QCOMPARE(f.view->currentEdit(), f.edit(0));
        QVERIFY(f.edit(0)->hasFocus());
        QVERIFY(!activated.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(f.edit(0)->height(), height);
        f.view->split();
        f.edit(0)->setFocus();
        f.view->closePane(); // what remains is searched
        QCOMPARE(f.view->edits().size(), 1);
        QVERIFY(f.view->find(u"7"_s, true, false, true, false));
        QVERIFY(f.edit(0)->textCursor().hasSelection());
    }

    /// Its text moves in both panes.
    void matchesAreMarkedInANewPane()
    {
        const EditorFixture f(numbered(50));
        f.view->markMatches(std::make_shared<TextPattern>(u"line"_s, TextPattern::Options()));
        f.view->split();
        QCoreApplication::processEvents();
        f.edit(0)->setFocus(); // no cursor blinks in the other one
        const auto picture = [&f] { return f.edit(1)->viewport()->grab().toImage(); };
        const QImage marked = picture();
        QCOMPARE(picture(), marked);
        f.view->markMatches(nullptr);
        QVERIFY(picture() != marked);
    }

    void marginWithAPatternIsPaintedWhole()
    {
        const EditorFixture f;
        QWidget *margin = marginOf(f.edit());
        QPalette palette = margin->palette();
        palette.setBrush(QPalette::Button, QBrush(Qt::red, Qt::Dense4Pattern));
        palette.setColor(QPalette::Window, Qt::blue);
        margin->setPalette(palette);
        const QImage picture = margin->grab().toImage();
        QSet<QRgb> colours;
        for (int y = 100; y < 120; ++y) {
            for (int x = 0; x < picture.width(); ++x)
                colours.insert(picture.pixel(x, y));
        }
        QCOMPARE(colours, (QSet<QRgb>{QColor(Qt::red).rgb(), QColor(Qt::blue).rgb()}));
    }

    void marginIsPaintedWithoutWhatIsBehindIt()
    {
        const EditorFixture f(numbered(50));
        QCoreApplication::processEvents();
        const PaintCounter margin(marginOf(f.edit()));
        const PaintCounter behind(f.edit());
        marginOf(f.edit())->update();
        QTRY_COMPARE(margin.count, 1);
        QCOMPARE(behind.count, 0);
    }

    void markingMatchesRepaintsTheText()
    {
        const EditorFixture f(numbered(50));
        QCoreApplication::processEvents();
        f.edit()->clearFocus(); // no cursor blinks
        QCoreApplication::processEvents();
        const PaintCounter paints(f.edit()->viewport());
        f.view->markMatches(std::make_shared<TextPattern>(u"line"_s, TextPattern::Options()));
        QTRY_COMPARE(paints.count, 1);
        f.view->markMatches(nullptr);
        QTRY_COMPARE(paints.count, 2);
    }

    void placeOfTheCursorIsThatOfTheCurrentPane()
    {
        const EditorFixture f(numbered(50));
        f.view->gotoLine(20);
        f.view->split();
        QCOMPARE(f.view->currentEdit(), f.edit(1));
        f.view->gotoLine(3);
        const QSignalSpy moved(f.view.get(), &View::cursorPositionChanged);
        f.view->insertText(u"new\n"_s);
        QCOMPARE(f.edit(0)->textCursor().blockNumber(), 20);
        QVERIFY(!moved.isEmpty());
        for (const QVariantList &place : moved)
            QCOMPARE(place, (QVariantList{3, 0}));
    }

    void readOnlyTextCannotBeCommented()
    {
        EditorFixture f(u"// one\ntwo\n"_s);
        f.docTemplate.setLineComment(u"//"_s);
        f.edit()->setReadOnly(true); // by a script
        QVERIFY(!f.view->uncommentSelection());
        QVERIFY(!f.view->commentSelection());
        QVERIFY(!f.view->unindentSelection());
        QCOMPARE(f.text(), u"// one\ntwo\n"_s);
    }

    void readOnlyTextCannotBeIndented()
    {
        EditorFixture f(u"  one\n  two\n"_s);
        f.edit()->setReadOnly(true);
        f.putCursor(0, 0, 1, 3);
        QTest::keyClick(f.edit(), Qt::Key_Tab);
        QTest::keyClick(f.edit(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(f.text(), u"  one\n  two\n"_s);
    }

    void closedPaneIsReportedAlsoWithoutTheFocus()
    {
        const EditorFixture f(numbered(50));
        f.view->split();
        f.view->hide(); // it gets no events of the focus
        QSignalSpy activated(f.view.get(), &View::viewActivated);
        f.view->closePane();
        QCOMPARE(activated.size(), 1);
        QCOMPARE(f.view->edits().size(), 1);
    }

    void expressionThatTakesTooLongIsNotMarkedInFurtherLines()
    {
        const EditorFixture f(QString(60, u'a') + u"!\naaa\n"_s);
        const auto shown = [&f] { return f.edit()->viewport()->grab().toImage(); };
        f.edit()->clearFocus(); // no cursor, which may blink
        const QImage unmarked = shown();
        const auto mark = [&f](const QString &expression) {
            f.view->markMatches(std::make_shared<TextPattern>(expression, TextPattern::Options{{}, true}));
        };
        mark(u"a+$"_s);
        QVERIFY(shown() != unmarked);
        mark(u"(a+)+$"_s);
        QCOMPARE(shown(), unmarked);
        mark(u"a+$"_s);
        QVERIFY(shown() != unmarked);
    }

    void manyMatchesOfATextStayMarked()
    {
        const EditorFixture f((QString(3000, u'a') + u'\n').repeated(60));
        const auto shown = [&f] { return f.edit()->viewport()->grab().toImage(); };
        f.edit()->clearFocus();
        const QImage unmarked = shown();
        f.view->markMatches(std::make_shared<TextPattern>(u"a"_s, TextPattern::Options()));
        const QImage marked = shown();
        QVERIFY(marked != unmarked);
        QCOMPARE(shown(), marked);
    }

    void panesHaveNamesForTestDrivers()
    {
        const EditorFixture f;
        f.document->create(f.path(u"my file.v2.c"_s));
        f.view->split();
        QStringList names;
        for (TextViewEdit *pane : f.view->edits())
            names << pane->objectName() << pane->viewport()->objectName() << marginOf(pane)->objectName();
        QCOMPARE(names, (QStringList{u"my-file"_s, u"my-file/text"_s, u"my-file/margin"_s, u"my-file2"_s,
                                     u"my-file2/text"_s, u"my-file2/margin"_s}));
        f.view->insertText(u"words"_s);
        QCOMPARE(f.edit()->property("text").toString(), u"words"_s);
    }

    void eachPaneOfATextHasAnotherName()
    {
        const EditorFixture f;
        f.document->create(f.path(u"a.c"_s));
        const auto names = [](const TextView &view) {
            QStringList result;
            for (const TextViewEdit *pane : view.edits())
                result << pane->objectName();
            return result.join(u' ');
        };
        f.view->split();
        f.view->split();
        QCOMPARE(names(*f.view), u"a a2 a3"_s);
        f.view->setCurrentEdit(f.edit(1));
        f.view->closePane();
        f.view->split();
        QCOMPARE(names(*f.view), u"a a3 a2"_s);
        const TextView second(f.document.get());
        QCOMPARE(names(second), u"a4"_s);
    }

    void paneOfAHiddenFileHasAName_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name");
        QTest::newRow("hidden") << u".clang-format"_s << u"clang-format"_s;
        QTest::newRow("hidden, with a suffix") << u".my rc.local"_s << u"my-rc"_s;
        QTest::newRow("several dots") << u"..a.c"_s << u"a"_s;
    }
    void paneOfAHiddenFileHasAName()
    {
        QFETCH(const QString, file);
        const EditorFixture f;
        f.document->create(f.path(file));
        QTEST(f.edit()->objectName(), "name");
    }

    void namesOfPanesFollowTheFile()
    {
        const EditorFixture f;
        f.document->create(f.path(u"old.c"_s));
        f.view->split();
        QCOMPARE(f.edit(1)->accessibleName(), u"Text of old.c"_s);
        QVERIFY(f.document->saveAs(f.path(u"new.c"_s)));
        QCOMPARE(f.edit(1)->objectName(), u"new2"_s);
        QCOMPARE(f.edit(1)->accessibleName(), u"Text of new.c"_s);
        QCOMPARE(marginOf(f.edit())->objectName(), u"new/margin"_s);
    }

    void hiddenViewCanBeSplit()
    {
        EditorFixture f(numbered(200));
        f.view->hide();
        f.view->splitAt(f.edit(), 200);
        f.view->show();
        QTRY_VERIFY(f.edit(1)->isVisible());
        QTRY_VERIFY(std::abs(f.edit(0)->height() - 200) < 10);
    }

    void splitPaneLeavesTheHeightsOfTheOthers()
    {
        EditorFixture f(numbered(200));
        f.view->splitAt(f.edit(), 300);
        const int low = f.edit(1)->height();
        f.view->splitAt(f.edit(0), 200);
        QCOMPARE(f.view->edits().size(), 3);
        QVERIFY(std::abs(f.edit(0)->height() - 200) < 10);
        QVERIFY(std::abs(f.edit(1)->height() - 100) < 10);
        QVERIFY(std::abs(f.edit(2)->height() - low) < 10);
    }

    void collapsedPaneTakesNoHeightOfASplit()
    {
        EditorFixture f(numbered(200));
        f.view->split();
        f.view->findChild<QSplitter *>()->setSizes({395, 5});
        QTRY_VERIFY(f.edit(1)->isHidden());
        f.view->splitAt(f.edit(0), 200);
        QVERIFY(std::abs(f.edit(0)->height() - 200) < 10);
        QVERIFY(f.edit(2)->height() > 100);
    }

    void searchShowsItsMatchWhenTheFirstPaneIsCollapsed()
    {
        EditorFixture f(numbered(200));
        f.view->split();
        f.view->findChild<QSplitter *>()->setSizes({5, 395});
        QTRY_VERIFY(f.edit(0)->isHidden());
        QVERIFY(f.view->find(u"151"_s, true, false, true, false));
        QCOMPARE(f.edit(1)->textCursor().selectedText(), u"151"_s);
        QVERIFY(f.edit(1)->viewport()->rect().intersects(f.edit(1)->cursorRect()));
        QVERIFY(!f.view->selectionOnScreen().isEmpty());
        f.view->replace(u"151"_s, u"found"_s, true, false, true, true, false);
        QVERIFY(f.document->text()->findBlockByNumber(150).text().contains(u"found"_s));
    }

    void splitPanesShareTheText()
    {
        EditorFixture f(numbered(200));
        f.view->gotoLine(100);
        f.edit()->verticalScrollBar()->setValue(95); // both panes can show the cursor there
        const int top = f.edit()->verticalScrollBar()->value();
        f.view->split();
        QCOMPARE(f.view->edits().size(), 2);
        QCOMPARE(f.edit(1)->document(), f.document->text());
        QVERIFY(f.edit(1)->hasFocus());
        QCOMPARE(f.edit(1)->verticalScrollBar()->value(), top); // it shows the same lines
        QVERIFY(std::abs(f.edit(0)->height() - f.edit(1)->height()) < 10);
        QCOMPARE(f.view->findChild<QSplitter *>()->orientation(), Qt::Vertical);

        f.edit(1)->verticalScrollBar()->setValue(0);
        f.view->gotoLine(1);
        f.edit(0)->setFocus();
        QTest::keyClicks(f.edit(0), u"typed"_s);
        QVERIFY(f.document->text()->findBlockByNumber(99).text().startsWith(u"typed"_s));
        QCOMPARE(f.edit(1)->verticalScrollBar()->value(), 0);
        QCOMPARE(f.selection(1), u"0,0"_s);
    }

    void splittingAtAHeightDividesThePane()
    {
        EditorFixture f(numbered(50));
        const int height = f.edit()->height();
        f.view->splitAt(f.edit(), 100);
        QVERIFY(std::abs(f.edit(0)->height() - 100) <= 5);
        QVERIFY(f.edit(1)->height() > height - 120);
    }

    void handleSplitsWhereItIsDropped()
    {
        EditorFixture f(numbered(50));
        auto *handle = f.edit()->findChild<TextSplitterWidget *>();
        const QSignalSpy started(handle, &TextSplitterWidget::dragStarted);
        QTest::mousePress(handle, Qt::RightButton);
        QTest::mouseRelease(handle, Qt::RightButton);
        QCOMPARE(started.size(), 0);
        QCOMPARE(f.view->edits().size(), 1);
        QTest::mousePress(handle, Qt::LeftButton);
        const QPoint target = handle->mapFromGlobal(f.edit()->mapToGlobal(QPoint(10, 150)));
        QMouseEvent move(QEvent::MouseMove, target, handle->mapToGlobal(target), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(handle, &move);
        const auto *band = f.edit()->findChild<QRubberBand *>();
        QVERIFY(band && band->isVisible());
        QTest::mouseRelease(handle, Qt::LeftButton, {}, target);
        QVERIFY(!f.edit()->findChild<QRubberBand *>());
        QCOMPARE(f.view->edits().size(), 2);
        QVERIFY(std::abs(f.edit(0)->height() - 150) <= 5);
    }

    void draggedHandleStaysInsideThePane_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<bool>("atBottom");
        QTest::newRow("above") << -50 << false;
        QTest::newRow("below") << 5000 << true;
    }
    void draggedHandleStaysInsideThePane()
    {
        QFETCH(const int, height);
        QFETCH(const bool, atBottom);
        EditorFixture f(numbered(50));
        auto *handle = f.edit()->findChild<TextSplitterWidget *>();
        QTest::mousePress(handle, Qt::LeftButton);
        const QPoint target = f.edit()->mapToGlobal(QPoint(10, height));
        QMouseEvent move(QEvent::MouseMove, handle->mapFromGlobal(target), target, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(handle, &move);
        const int lowest = f.edit()->viewport()->height() - handle->height();
        const auto *band = f.edit()->findChild<QRubberBand *>();
        QCOMPARE(band->geometry(), QRect(0, atBottom ? lowest : 0, f.edit()->width(), handle->height()));
        QTest::mouseRelease(handle, Qt::LeftButton, {}, handle->mapFromGlobal(target));
    }

    void storedHeightsOfPanesAreUsed()
    {
        EditorFixture f(numbered(50));
        f.view->setPaneHeights({100, 250});
        QCOMPARE(f.view->edits().size(), 2);
        const QList<int> heights = f.view->paneHeights();
        QCOMPARE(heights.size(), 2);
        QVERIFY(heights[1] > 2 * heights[0]);
    }

    void endOfAnInsertedTextIsVisible()
    {
        EditorFixture f;
        f.view->insertText(numbered(200));
        QVERIFY(f.edit(0)->verticalScrollBar()->value() > 0);
        QVERIFY(f.edit(0)->viewport()->rect().contains(f.edit(0)->cursorRect()));
    }

    void lowPaneCollapsesAndStaysInTheList()
    {
        EditorFixture f(numbered(50));
        f.view->split();
        f.view->findChild<QSplitter *>()->setSizes({380, 10});
        QTRY_VERIFY(f.edit(1)->isHidden());
        QCOMPARE(f.view->edits().size(), 2);
        QVERIFY(f.edit(0)->hasFocus());
        QCOMPARE(f.view->currentEdit(), f.edit(0));
        f.view->split();
        QCOMPARE(f.view->edits().size(), 3);
        QVERIFY(f.edit(1)->isHidden());
        QCOMPARE(f.view->paneHeights().size(), 2);
        QVERIFY(std::abs(f.edit(0)->height() - f.edit(2)->height()) < 10);
    }

    void lowPaneMayBeClosedBeforeItCollapses()
    {
        const EditorFixture f(numbered(50));
        f.view->split();
        f.view->split();
        QCOMPARE(f.view->currentEdit(), f.edit(2));
        const QPointer<TextViewEdit> low = f.edit(2);
        f.view->findChild<QSplitter *>()->setSizes({200, 180, 10});
        QVERIFY(!low->isHidden());
        f.view->closePane();
        QVERIFY(!low);
        const QList<TextViewEdit *> shown = f.view->shownEdits();
        QCOMPARE(shown.size(), 2);
        QCoreApplication::processEvents();
        QCOMPARE(f.view->shownEdits(), shown);
        QCOMPARE(f.view->currentEdit(), shown.first());
    }

    void commandsLeaveACollapsedPaneAlsoWithoutTheFocus()
    {
        const EditorFixture f(numbered(50));
        f.view->split();
        QCOMPARE(f.view->currentEdit(), f.edit(1));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        f.view->findChild<QSplitter *>()->setSizes({380, 10});
        QTRY_VERIFY(f.edit(1)->isHidden());
        QCOMPARE(f.view->currentEdit(), f.edit(0));
    }

    void lastPaneDoesNotCollapse()
    {
        EditorFixture f(numbered(50));
        f.view->resize(300, 10);
        QCoreApplication::processEvents();
        QVERIFY(!f.edit()->isHidden());
    }

    void findAndReplaceUseTheFirstPane()
    {
        EditorFixture f(u"one two"_s);
        f.view->split();
        QVERIFY(f.view->find(u"two"_s, true, false, true, false));
        QCOMPARE(f.selection(0), u"0,4-0,7"_s);
        QCOMPARE(f.selection(1), u"0,0"_s);
        QCOMPARE(f.view->selectedText(), u"two"_s);
        QVERIFY(f.view->replace(u"two"_s, u"2"_s, true, false, true, false, true));
        QCOMPARE(f.text(), u"one 2"_s);
    }

    void findStartsAtTheSelection_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("fromCursor");
        QTest::addColumn<QString>("expected"); // empty: not found
        QTest::newRow("forward from the start") << u"2,0"_s << true << false << u"0,0-0,2"_s;
        QTest::newRow("backward from the end") << u"0,0"_s << false << false << u"2,1-2,3"_s;
        QTest::newRow("forward from the cursor") << u"0,1"_s << true << true << u"0,3-0,5"_s;
        QTest::newRow("forward from a selection's end") << u"0,0-0,2"_s << true << true << u"0,3-0,5"_s;
        QTest::newRow("forward to the next line") << u"0,4"_s << true << true << u"2,1-2,3"_s;
        QTest::newRow("forward from the end") << u"2,3"_s << true << true << QString();
        QTest::newRow("backward from the cursor") << u"0,5"_s << false << true << u"0,3-0,5"_s;
        QTest::newRow("backward from a match") << u"0,3-0,5"_s << false << true << u"0,0-0,2"_s;
        QTest::newRow("backward to the line above") << u"2,2"_s << false << true << u"0,3-0,5"_s;
        QTest::newRow("backward from the start") << u"0,0"_s << false << true << QString();
        QTest::newRow("backward too near the start") << u"0,1"_s << false << true << QString();
    }
    void findStartsAtTheSelection()
    {
        QFETCH(const QString, from);
        QFETCH(const bool, forward);
        QFETCH(const bool, fromCursor);
        QFETCH(const QString, expected);
        EditorFixture f(u"ab ab\n\n.ab"_s);
        const QStringList ends = from.split(u'-');
        const QString &last = ends.size() == 2 ? ends.last() : QString();
        f.putCursor(ends.first().section(u',', 0, 0).toInt(), ends.first().section(u',', 1).toInt(),
                    last.isEmpty() ? -1 : last.section(u',', 0, 0).toInt(), last.section(u',', 1).toInt());
        QCOMPARE(f.view->find(u"AB"_s, false, false, forward, fromCursor), !expected.isEmpty());
        QCOMPARE(f.selection(), expected.isEmpty() ? from : expected);
        QVERIFY(!f.view->find(u"AB"_s, true, false, forward, fromCursor));
    }

    void rejectedWordEndsTheSearchOfItsLine()
    {
        EditorFixture f(u"abab ab"_s);
        QVERIFY(!f.view->find(u"ab"_s, true, true, true, false));
        f.putCursor(0, 4);
        QVERIFY(f.view->find(u"ab"_s, true, true, true, true));
    }

    void replaceSelectsTheNextMatch()
    {
        EditorFixture f(u"ab cd ab\nab"_s);
        f.putCursor(0, 0);
        QVERIFY(f.view->find(u"ab"_s, true, false, true, false));
        QVERIFY(f.view->replace(u"ab"_s, u"xyz"_s, true, false, true, true, false));
        QCOMPARE(f.text(), u"xyz cd ab\nab"_s);
        QCOMPARE(f.selection(), u"0,7-0,9"_s);
        QVERIFY(f.view->replace(u"ab"_s, u"-"_s, true, false, true, true, false));
        QVERIFY(!f.view->replace(u"ab"_s, u"-"_s, true, false, true, true, false)); // no match is left after it
        QCOMPARE(f.text(), u"xyz cd -\n-"_s);
        QVERIFY(!f.view->replace(u"ab"_s, u"-"_s, true, false, true, true, false));
    }

    void replaceAllIsOneStepForUndo()
    {
        EditorFixture f(u"ab\nabab\nAB x"_s);
        f.putCursor(2, 0);
        QVERIFY(f.view->replace(u"ab"_s, u"abc"_s, false, false, true, true, true));
        QCOMPARE(f.text(), u"abc\nabcabc\nabc x"_s);
        f.view->undo();
        QCOMPARE(f.text(), u"ab\nabab\nAB x"_s);
        QVERIFY(!f.view->replace(u"none"_s, u"x"_s, false, false, true, true, true));
    }

    void replaceInSelectionKeepsLinesAndColumnsOfTheSelection()
    {
        EditorFixture f(u"ab ab\nab\nab ab\nab"_s);
        f.putCursor(0, 2, 2, 3);
        QVERIFY(f.view->replaceInSelection(u"ab"_s, u"longer"_s, true, false));
        QCOMPARE(f.text(), u"ab longer\nlonger\nlonger ab\nab"_s); // the last match is not selected as a whole
        QCOMPARE(f.view->replacedCount(), 3);
        QCOMPARE(f.selection(), u"0,2-2,3"_s); // as selected before
        f.view->undo();
        f.putCursor(3, 0, 3, 2);
        QVERIFY(f.view->replaceInSelection(u"ab"_s, u""_s, true, false));
        QCOMPARE(f.selection(), u"3,0"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"paraFrom != -1\" in "_s));
        QVERIFY(!f.view->replaceInSelection(u"ab"_s, u"x"_s, true, false));
    }

    void matchingBracketsAreShownInEveryPane()
    {
        EditorFixture f(u"f(x)"_s);
        f.view->split();
        f.putCursor(0, 4);
        for (int i = 0; i < 2; ++i) {
            QTRY_COMPARE(f.edit(i)->extraSelections().size(), 1);
            QCOMPARE(f.edit(i)->extraSelections().at(0).cursor.selectedText(), u"(x)"_s);
            QCOMPARE(f.edit(i)->extraSelections().at(0).format.background().color(), QColor(u"lightcyan"_s));
        }
        f.putCursor(0, 0);
        QTRY_VERIFY(f.edit(0)->extraSelections().isEmpty());
        f.putCursor(0, 1);
        QTRY_VERIFY(!f.edit(0)->extraSelections().isEmpty());
        f.view->gotoLine(1);
        QTRY_VERIFY(f.edit(0)->extraSelections().isEmpty());
    }

    /// The margin does not depend on the text of a line, and the brackets can be shown later.
    void keyWaitsForTheTextOnly()
    {
        EditorFixture f(u"f(x\n"_s.repeated(30));
        f.view->resize(600, 400);
        f.view->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.view.get()));
        auto *margin = f.edit()->findChild<TextMarkerWidget *>();
        QVERIFY(margin);
        f.putCursor(5, 3);
        QCoreApplication::processEvents();
        const PaintCounter marginPaints(margin);
        const PaintCounter textPaints(f.edit()->viewport());
        QTest::keyClick(f.edit(), ')');
        QVERIFY(f.edit()->extraSelections().isEmpty());
        QTRY_VERIFY(textPaints.count > 0);
        QTRY_COMPARE(f.edit()->extraSelections().size(), 1);
        QCOMPARE(marginPaints.count, 0);
        QTest::keyClick(f.edit(), Qt::Key_Return);
        QTRY_VERIFY(marginPaints.count > 0); // the numbers below have moved
    }

    void typedCharacterRepaintsItsLineOnly()
    {
        EditorFixture f(u"int x; // one\n"_s.repeated(30));
        f.putCursor(5, 3);
        auto &region = *new PaintedRegion(f.edit()->viewport());
        f.edit()->viewport()->update();
        QTest::keyClick(f.edit(), Qt::Key_A); // the first one changes the title
        QTRY_VERIFY(!region.painted.isEmpty());
        region.painted = {};
        QTest::keyClick(f.edit(), Qt::Key_B);
        QTRY_VERIFY(!region.painted.isEmpty());
        QCOMPARE(f.text().split(u'\n').at(5), u"intab x; // one"_s);
        QVERIFY(region.painted.boundingRect().height() < 3 * f.document->lineSpacing());
    }

    void onlyEditedLinesKeepTheirGlyphs()
    {
        EditorFixture f(u"one\ntwo"_s);
        const QTextBlock first = f.document->text()->firstBlock();
        QTest::keyClick(f.edit(), Qt::Key_Down);
        QTest::keyClick(f.edit(), Qt::Key_Up);
        QVERIFY(!first.layout()->cacheEnabled());
        QTest::keyClick(f.edit(), Qt::Key_A);
        QVERIFY(first.layout()->cacheEnabled());
        QVERIFY(!first.next().layout()->cacheEnabled());
    }

    void matchedBracketsAreReadableOnDarkPaper()
    {
        TextFormats dark;
        QVERIFY(dark.loadFromFile(QStringLiteral(VARNEL_SOURCE_DIR "/config/textformats-dark.xml")));
        EditorFixture f(u"a (x) b"_s);
        f.formats = dark.formatTable();
        f.document->notifyViews(nullptr, true);
        f.putCursor(0, 2);
        QTRY_VERIFY(!f.edit()->extraSelections().isEmpty());
        const QTextCharFormat match = f.edit()->extraSelections().at(0).format;
        QVERIFY(contrast(match.background().color(), f.document->paperColour()) > 1.05); // it is visible
        QVERIFY(!match.hasProperty(QTextFormat::ForegroundBrush));                       // the text keeps its colours
        for (int id = FormatId::Standard; id <= FormatId::Label; ++id)
            QVERIFY(contrast(match.background().color(), f.formats[id].foreground().color()) > 3);
    }

    void matchedBracketsFollowTheColourOfThePaper()
    {
        EditorFixture f(u"a (x) b"_s);
        f.putCursor(0, 2);
        QTRY_VERIFY(!f.edit()->extraSelections().isEmpty());
        f.formats[FormatId::Background].setForeground(Qt::black);
        f.document->notifyViews(nullptr, true);
        QCOMPARE(f.edit()->extraSelections().at(0).format.background().color(), editorColours(Qt::black).bracket);
    }

    void updateRepaintsTheText()
    {
        EditorFixture f(numbered(50));
        QCoreApplication::processEvents();
        f.edit()->clearFocus(); // no cursor blinks
        QCoreApplication::processEvents();
        const PaintCounter paints(f.edit()->viewport());
        f.view->update(nullptr, false);
        QTRY_COMPARE(paints.count, 1);
    }

    void linesHaveTheirColoursWhenTheyAreShown()
    {
        EditorFixture f(u"int x;\n"_s.repeated(20'000));
        f.view->gotoLine(15'000);
        f.edit()->viewport()->grab();
        const QTextBlock line = f.document->text()->findBlockByNumber(14'999);
        QVERIFY(!line.layout()->formats().isEmpty());
    }

    void focusedPaneOfTheSourceIsNotUpdated_data()
    {
        QTest::addColumn<bool>("fromHere");
        QTest::addColumn<bool>("full");
        QTest::addColumn<QString>("painted");
        QTest::newRow("change made in this view") << true << false << u"first"_s;
        QTest::newRow("change made in another view") << false << false << u"first second"_s;
        QTest::newRow("changed formats") << true << true << u"first second"_s;
    }
    void focusedPaneOfTheSourceIsNotUpdated()
    {
        QFETCH(const bool, fromHere);
        QFETCH(const bool, full);
        EditorFixture f(u"text"_s);
        f.view->split();
        QCoreApplication::processEvents();
        QVERIFY(f.edit(1)->hasFocus());
        const auto &first = *new PaintedRegion(marginOf(f.edit(0)));
        const auto &second = *new PaintedRegion(marginOf(f.edit(1)));
        f.view->update(fromHere ? f.view.get() : nullptr, full);
        QCoreApplication::processEvents();
        QStringList painted;
        if (!first.painted.isEmpty())
            painted << u"first"_s;
        if (!second.painted.isEmpty())
            painted << u"second"_s;
        QTEST(painted.join(u' '), "painted");
    }

    void fullUpdateAppliesFormats()
    {
        EditorFixture f(u"text"_s);
        f.formats[FormatId::Background].setForeground(Qt::darkBlue);
        f.formats[FormatId::Standard].setForeground(Qt::yellow);
        f.formats[FormatId::Standard].setFontPointSize(20);
        f.view->update(nullptr, false);
        QCOMPARE(f.edit()->palette().color(QPalette::Base), QColor(u"ivory"_s));
        f.document->notifyViews(nullptr, true);
        QCOMPARE(f.edit()->palette().color(QPalette::Base), QColor(Qt::darkBlue));
        QCOMPARE(f.edit()->palette().color(QPalette::Text), QColor(Qt::yellow));
        QCOMPARE(f.document->text()->defaultFont().pointSize(), 20);
        QCOMPARE(f.edit()->font().pointSize(), 20);
        const QImage picture = f.edit()->viewport()->grab().toImage();
        int yellow = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                yellow += picture.pixelColor(x, y) == QColor(Qt::yellow);
        }
        QVERIFY(yellow > 0);
    }

    void fontOfTheWindowDoesNotReachTheText()
    {
        EditorFixture f(u"text"_s);
        QFont font = f.view->font();
        font.setUnderline(true);
        f.view->setFont(font);
        QVERIFY(!f.document->text()->defaultFont().underline());
        QCOMPARE(f.document->text()->defaultFont().pointSize(), 10);
        const QFont before = QApplication::font();
        QApplication::setFont(font);
        const bool changed = f.document->text()->defaultFont().underline();
        QApplication::setFont(before);
        QVERIFY(!changed);
    }

    void splitHandleLooksLikeAButton()
    {
        EditorFixture f;
        const QImage picture = f.edit()->findChild<TextSplitterWidget *>()->grab().toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y)
            colours.insert(picture.pixel(picture.width() / 2, y));
        QVERIFY(colours.size() > 1); // it has an edge
    }

    void textFillsPages_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lines") << numbered(150);
        QTest::newRow("tabs are as wide as on screen") << u"\tone\ttwo\n"_s.repeated(149);
        QTest::newRow("long lines are broken") << u"some words "_s.repeated(11 * 150 / 2);
    }
    void textFillsPages()
    {
        QFETCH(const QString, text);
        EditorFixture f(text);
        QPrinter printer(QPrinter::HighResolution);
        const QString path = f.path(u"out.pdf"_s);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setFullPage(true);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printText(*f.document->text(), printer);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray pdf = file.readAll();
        QVERIFY(pdf.startsWith("%PDF"));
        QCOMPARE(pdf.count("/Type /Page\n"), 3);
    }

    void pagesHaveMarginsOfAnInchAndANumber()
    {
        EditorFixture f(numbered(50));
        PageRecorder recorder;
        RecordingPrinter printer(&recorder);
        QFont font = f.document->text()->defaultFont();
        font.setPointSize(8);
        f.document->text()->setDefaultFont(font);
        printText(*f.document->text(), printer);
        QStringList lines;
        QStringList numbers;
        for (const PageRecorder::Drawn &drawn : std::as_const(recorder.drawn)) {
            if (drawn.baseline.y() < 700) {
                QCOMPARE(drawn.baseline.x(), 100);
                QVERIFY(drawn.baseline.y() > 100);
                lines << drawn.text;
            } else {
                QVERIFY(drawn.baseline.x() > 480 && drawn.baseline.x() < 500);      // on the right
                QVERIFY(drawn.baseline.y() > 705 && drawn.baseline.y() < 705 + 20); // five pixels below
                numbers << u"%1:%2"_s.arg(drawn.page).arg(drawn.text);
            }
            QCOMPARE(drawn.points, 8);
        }
        QCOMPARE(lines.join(u'\n'), numbered(50));
        QCOMPARE(numbers, (QStringList{u"1:1"_s, u"2:2"_s}));
    }

    void longWordIsPrintedWhole()
    {
        EditorFixture f(QString(300, u'x'));
        PageRecorder recorder;
        RecordingPrinter printer(&recorder);
        printText(*f.document->text(), printer);
        QString text;
        for (const PageRecorder::Drawn &drawn : std::as_const(recorder.drawn)) {
            if (drawn.text.startsWith(u'x')) {
                QVERIFY(drawn.text.size() < 200); // a page is not wider
                text += drawn.text;
            }
        }
        QCOMPARE(text.size(), 300);
    }

    void printingShowsTheDialog()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        bool asked = false;
        QTimer::singleShot(0, this, [&asked] {
            if (auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget())) {
                asked = dialog->printer()->fullPage() && dialog->printer()->docName() == u"a.c"_s;
                dialog->reject();
            }
        });
        f.view->print();
        QVERIFY(asked);
        QVERIFY(!f.view->findChild<QPrintDialog *>());
    }

    void acceptedDialogPrintsTheText()
    {
        const EditorFixture f(u"text"_s);
        const QString file = f.path(u"printed.pdf"_s);
        QTimer::singleShot(0, this, [&file] {
            if (auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget())) {
                dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
                dialog->printer()->setOutputFileName(file);
                dialog->done(QDialog::Accepted);
            }
        });
        f.view->print();
        QVERIFY(QFileInfo(file).size() > 0);
    }

    void printingEndsWithTheView()
    {
        EditorFixture f(u"text"_s);
        const QString file = f.path(u"printed.pdf"_s);
        QTimer::singleShot(0, this, [&] {
            if (auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget())) {
                dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
                dialog->printer()->setOutputFileName(file);
                dialog->done(QDialog::Accepted);
                f.view.reset();
            }
        });
        f.view->print();
        QVERIFY(!f.view);
        QVERIFY(!QFileInfo::exists(file));
    }

    void closedViewDoesNotAffectTheTextOfOthers()
    {
        EditorFixture f(u"one\ntwo"_s);
        const std::unique_ptr<View> second(f.docTemplate.createView(f.document.get()));
        second->show();
        f.view->split();
        f.view.reset();
        static_cast<TextView *>(second.get())->insertText(u"x"_s);
        QCOMPARE(f.text(), u"xone\ntwo"_s);
    }
};

QTEST_MAIN(TestTextView)
#include "tst_textview.moc"

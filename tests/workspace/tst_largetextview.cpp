#include "editorcolours.h"
#include "largefixture.h"
#include "paintcounter.h"
#include "processcounts.h"
#include "tabbedviewmanager.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
using Calls = QList<QVariantList>;

QByteArray numbered(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += "line " + QByteArray::number(i) + '\n';
    return bytes;
}

template <typename Widget>
Widget *part(const LargeFixture &f, const char *name)
{
    auto *found = f.view->findChild<Widget *>(QLatin1String(name));
    if (!found)
        qFatal("no widget of that name");
    return found;
}

QString result(const LargeFixture &f)
{
    return part<QLabel>(f, "LargeTextResult")->text();
}

QString notice(const LargeFixture &f)
{
    return part<QLabel>(f, "LargeTextNotice")->text();
}

QString status(const LargeFixture &f)
{
    return part<QLabel>(f, "LargeTextStatus")->text();
}

void click(const LargeFixture &f, const char *name)
{
    QTest::mouseClick(part<QToolButton>(f, name), Qt::LeftButton);
}

QString selection(const LargeFixture &f)
{
    const TextLineView::Place a = f.lines()->selectionStart();
    const TextLineView::Place b = f.lines()->selectionEnd();
    return u"%1,%2-%3,%4"_s.arg(a.line).arg(a.column).arg(b.line).arg(b.column);
}
} // namespace

class LargeTextViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    // Kind ------------------------------------------------------------------

    void kindTakesEveryName()
    {
        LargeTextDocumentTemplate kind({}, nullptr);
        QVERIFY(kind.canOpen(u"a.c"_s));
        QVERIFY(kind.canOpen(u"disassembler:0x1:fw"_s));
        QVERIFY(!kind.canCreate());
        QVERIFY(kind.name().isEmpty() && kind.description().isEmpty() && kind.extension().isEmpty());
    }

    void fileAboveTheEditorsLimitOpensReadOnlyWithOneMessage()
    {
        LargeFixture f;
        Workspace workspace;
        TabbedViewManager views;
        workspace.setViewManager(&views);
        auto *text = new TextDocumentTemplate(u"Text"_s, {}, {}, {}, std::make_unique<SyntaxHighlighter>(), nullptr);
        text->highlighter()->setFormats(&f.formats);
        workspace.addTemplate(text);
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        workspace.addTemplate(new LargeTextDocumentTemplate(QIcon(pixmap), &f.formats));
        const QString file = f.writeSparse(u"a.py"_s, 10'000'001);
        {
            BoxAnswers boxes({QMessageBox::Ok});
            QVERIFY(workspace.openDocument(file, true));
            QCOMPARE(boxes.texts, QStringList{u"The file is too large to open for editing.\n\n"
                                              "It will be opened read-only."_s});
            QCOMPARE(boxes.captions, QStringList{u"File Open"_s});
            QCOMPARE(boxes.icons, QList<QMessageBox::Icon>{QMessageBox::Information});
        }
        QVERIFY(qobject_cast<LargeTextView *>(views.currentView()));
        QVERIFY(!views.currentView()->windowIcon().isNull());
        {
            BoxAnswers boxes({}); // the open document is shown again
            QVERIFY(workspace.openDocument(file, true));
        }
        {
            BoxAnswers boxes({QMessageBox::Ok}); // the notice comes for each view
            views.newView();
            QCOMPARE(boxes.texts.size(), 1);
        }
        const QString small = f.writeSparse(u"b.py"_s, 10'000'000);
        QVERIFY(workspace.templates().first()->canOpen(small));
        views.closeAll();
    }

    void fileWithNulBytesOpensReadOnlyWithOneMessage()
    {
        LargeFixture f;
        Workspace workspace;
        TabbedViewManager views;
        workspace.setViewManager(&views);
        auto *text = new TextDocumentTemplate(u"Text"_s, {}, {}, {}, std::make_unique<SyntaxHighlighter>(), nullptr);
        text->highlighter()->setFormats(&f.formats);
        workspace.addTemplate(text);
        workspace.addTemplate(new LargeTextDocumentTemplate({}, &f.formats));
        BoxAnswers boxes({QMessageBox::Ok});
        QVERIFY(workspace.openDocument(f.write(u"fw.elf"_s, QByteArray("\x7F"
                                                                       "ELF\0\r\n\n",
                                                                       8)),
                                       true));
        QCOMPARE(boxes.texts, QStringList{u"The file contains NUL bytes, so it is probably not a text.\n\n"
                                          "It will be opened read-only."_s});
        QVERIFY(qobject_cast<LargeTextView *>(views.currentView()));
        views.closeAll();
    }

    void documentDeletedDuringTheMessageGetsNoView()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "a\n")));
        QTimer::singleShot(0, this, [&] { f.document.reset(); });
        BoxAnswers boxes({QMessageBox::Ok});
        QCOMPARE(f.docTemplate.createView(f.document.get()), nullptr);
    }

    // View ------------------------------------------------------------------

    void offersMarkersAndNavigationOnly()
    {
        LargeFixture f;
        f.openAndShow("a\n");
        QVERIFY(viewInterface<IViewWithMarkers>(f.view.get()));
        QVERIFY(viewInterface<ITextNavigation>(f.view.get()));
        QVERIFY(!viewInterface<ISourceView>(f.view.get()));
    }

    void fullUpdateTakesOverTheFormats()
    {
        LargeFixture f;
        f.openAndShow(numbered(5));
        QCOMPARE(f.lines()->palette().color(QPalette::Base), QColor(u"ivory"_s));
        QCOMPARE(f.lines()->palette().color(QPalette::Text), QColor(Qt::black));
        f.formats[FormatId::Standard].setFontPointSize(20);
        f.formats[FormatId::Standard].setForeground(QColor(Qt::blue));
        f.formats[FormatId::Background].setForeground(QColor(Qt::yellow));
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.lines()->font().pointSize(), 10);
        f.document->notifyViews(nullptr, true);
        QCOMPARE(f.lines()->font().pointSize(), 20);
        QCOMPARE(f.lines()->palette().color(QPalette::Base), QColor(Qt::yellow));
        QCOMPARE(f.lines()->palette().color(QPalette::Text), QColor(Qt::blue));
        QCOMPARE(f.view->findChild<MarkerWidget *>()->lineHeight(), f.lines()->lineHeight());
    }

    void viewNeedsNoFormats()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "text\n")));
        LargeTextView view(f.document.get(), nullptr, nullptr);
        view.show();
        QCOMPARE(view.lineView()->visibleText(), u"text\n"_s);
    }

    void viewOfADocumentWithoutAFileIsEmpty()
    {
        LargeFixture f;
        f.document.reset(static_cast<LargeTextDocument *>(f.docTemplate.createDocument()));
        f.show();
        QVERIFY(!f.view->find(u"a"_s, true, false, true, true));
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"a"_s);
        f.view->findAgain(true);
        QCOMPARE(result(f), QString());
        QVERIFY(!f.view->findBar()->search().isRunning());
    }

    void focusEmitsTheAvailableCommands()
    {
        LargeFixture f;
        f.openAndShow(numbered(5));
        QStringList order;
        connect(f.view.get(), &View::viewActivated, this, [&] { order << u"activated"_s; });
        const auto note = [&](void (View::*signal)(bool), const QString &name) {
            connect(f.view.get(), signal, this, [&, name](bool on) { order << name + (on ? u" on"_s : u" off"_s); });
        };
        note(&View::copyAvailable, u"copy"_s);
        note(&View::cutAvailable, u"cut"_s);
        note(&View::undoAvailable, u"undo"_s);
        note(&View::redoAvailable, u"redo"_s);
        note(&View::pasteAvailable, u"paste"_s);
        note(&View::backAvailable, u"back"_s);
        note(&View::forwardAvailable, u"forward"_s);
        note(&View::previousAvailable, u"previous"_s);
        note(&View::nextAvailable, u"next"_s);
        connect(f.view.get(), &View::cursorPositionChanged, this,
                [&](int line, int column) { order << u"at %1,%2"_s.arg(line).arg(column); });
        f.lines()->setCursor(3, 2);
        order.clear();
        f.lines()->clearFocus();
        f.view->setFocus();
        const QStringList off{u"cut off"_s,  u"undo off"_s,    u"redo off"_s,     u"paste off"_s,
                              u"back off"_s, u"forward off"_s, u"previous off"_s, u"next off"_s};
        QCOMPARE(order, QStringList{u"activated"_s} + QStringList{u"copy off"_s} + off + QStringList{u"at 3,2"_s});
        order.clear();
        f.lines()->setSelection({1, 1}, {2, 2});
        QCOMPARE(order, QStringList{u"copy on"_s} + off);
    }

    void viewMayBeClosedWhenItIsActivated()
    {
        LargeFixture f;
        f.openAndShow(numbered(5));
        f.lines()->clearFocus();
        connect(f.view.get(), &View::viewActivated, this, [&](View *view) {
            f.view.release();
            delete view;
        });
        QFocusEvent event(QEvent::FocusIn);
        QApplication::sendEvent(f.lines(), &event);
        QVERIFY(!f.view);
    }

    void marginStandsBesideTheLines()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        const auto *margin = f.view->findChild<MarkerWidget *>();
        const auto matches = [&] {
            const QWidget *lines = f.lines()->viewport();
            const QRect text(lines->mapTo(f.view.get(), QPoint()), lines->size());
            return margin->geometry().topLeft() == QPoint(2, 2) && margin->width() == 18
                   && text.left() == margin->geometry().right() + 1 && text.top() == 2
                   && std::abs(text.bottom() - margin->geometry().bottom()) <= 2;
        };
        QVERIFY(matches());
        QCOMPARE(f.lines()->accessibleName(), u"Text of large"_s);
        f.view->resize(300, 200);
        QVERIFY(matches());
        f.view->resize(3000, 300);
        QTRY_VERIFY(matches());
    }

    void marginFollowsTheLines()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        auto *margin = f.view->findChild<MarkerWidget *>();
        QSignalSpy toggled(f.view.get(), &LargeTextView::toggleBreakpoint);
        f.lines()->setContentsPos(0, 100ll * f.lines()->lineHeight());
        QCOMPARE(margin->offset(), 100ll * f.lines()->lineHeight());
        QTest::mouseClick(margin, Qt::LeftButton, {}, {5, f.lines()->lineHeight() + 2});
        QCOMPARE(toggled, Calls({{102}}));
    }

    void marginShowsTheToolTipOfALine()
    {
        LargeFixture f;
        f.host.toolTip = u"two breakpoints"_s;
        f.openAndShow(numbered(500));
        viewInterface<IViewWithMarkers>(f.view.get())
            ->setMarker(102, IViewWithMarkers::EnabledBreakpointMarker, true, false);
        f.lines()->setContentsPos(0, 100ll * f.lines()->lineHeight());
        auto *margin = f.view->findChild<MarkerWidget *>();
        const QPoint place(5, f.lines()->lineHeight() + 2);
        QHelpEvent event(QEvent::ToolTip, place, margin->mapToGlobal(place));
        QApplication::sendEvent(margin, &event);
        QCOMPARE(f.host.asked, QStringList(f.path(u"large.log"_s) + u":102"_s));
        QCOMPARE(QToolTip::text(), u"two breakpoints"_s);
        QToolTip::hideText();
    }

    void updateRepaintsTheMargin()
    {
        LargeFixture f;
        f.openAndShow(numbered(5));
        QCoreApplication::processEvents();
        const PaintCounter paints(f.view->findChild<MarkerWidget *>());
        f.document->notifyViews(nullptr, false); // for example, other pictures
        QTRY_VERIFY(paints.count > 0);
    }

    void marksStayOnTheirNumbers()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(3, 0x01, true, true);
        markers->setMarker(4, 0x08, true, false);
        QVERIFY(markers->hasMarker(3, 0x01));
        markers->clearMarkers(0x08);
        QVERIFY(!markers->hasMarker(4, 0x08));
        f.lines()->setCursor(2, 0);
        QVERIFY(markers->hasMarkerAtCursor(0x07));
        QVERIFY(!markers->hasMarkerAtCursor(0x08));
        f.lines()->setContentsPos(0, 100ll * f.lines()->lineHeight());
        QVERIFY(!markers->hasMarkerAtCursor(0x07)); // the cursor is not on screen
    }

    void statementAndCallerHaveBandsOfTheirOwn()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        f.lines()->clearFocus(); // no cursor that blinks
        const QColor paper = f.lines()->palette().color(QPalette::Base);
        const EditorColours colours = editorColours(paper);
        const auto colourOfLine = [&](int line) {
            const QImage picture = f.lines()->viewport()->grab().toImage();
            const int bottom = int(qint64(line) * f.lines()->lineHeight() - f.lines()->contentsY()) - 1;
            const QColor belowText = picture.pixelColor(f.lines()->charWidth(), bottom);
            return belowText == picture.pixelColor(picture.width() - 5, bottom) ? belowText : QColor();
        };
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(2, 0x08, true, false);
        markers->setMarker(4, 0x20, true, false);
        markers->setMarker(5, 0x01, true, false);
        for (int line = 1; line <= 5; ++line)
            QCOMPARE(colourOfLine(line), line == 2 ? colours.statement : line == 4 ? colours.caller : paper);
        f.lines()->setContentsPos(0, 1);
        QCOMPARE(colourOfLine(2), colours.statement);
        QCoreApplication::processEvents();
        const PaintCounter paints(f.lines()->viewport());
        markers->clearMarkers(0x08);
        QTRY_COMPARE(paints.count, 1);
        QCOMPARE(colourOfLine(2), paper);
        const int painted = paints.count;
        markers->setMarker(4, 0x08, true, false); // it has called itself
        QTRY_VERIFY(paints.count > painted);
        QCOMPARE(colourOfLine(4), colours.statement);
    }

    void copiesTheSelectionAndNothingElse()
    {
        LargeFixture f;
        f.openAndShow(numbered(50));
        QGuiApplication::clipboard()->setText(u"before"_s);
        f.view->copy();
        f.view->cut();
        f.view->paste();
        f.view->undo();
        f.view->redo();
        f.view->remove();
        f.view->split();
        f.view->print();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
        f.lines()->setSelection({1, 2}, {3, 1});
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"ne 1\nline 2\nl"_s);
        QCOMPARE(f.view->selectedText(), u"ne 1\nline 2\nl"_s);
    }

    void selectionThatIsTooLargeIsNotCopied()
    {
        LargeFixture f;
        f.openAndShow(QByteArray("a line that is repeated very often to get to a large file\n").repeated(300'000));
        QTRY_VERIFY(f.document->isIndexed());
        QGuiApplication::clipboard()->setText(u"before"_s);
        f.view->selectAll();
        BoxAnswers boxes({QMessageBox::Ok});
        f.view->copy();
        QVERIFY(boxes.texts.value(0).startsWith(u"The selection is too large to be copied."_s));
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
    }

    void linesCountFromOneAtTheInterface()
    {
        LargeFixture f;
        f.openAndShow(numbered(50));
        f.view->gotoLine(7);
        int para = -1;
        int index = -1;
        f.view->getCursorPosition(&para, &index);
        QCOMPARE(para, 6);
        QCOMPARE(index, 0);
        f.view->gotoLine(50); // the bound is strict
        QCOMPARE(f.cursor(), u"6,0"_s);
        f.view->gotoLine(49);
        QCOMPARE(f.cursor(), u"48,0"_s);
    }

    void cursorGoesToALineWhenItsNumberIsKnown()
    {
        LargeFixture f;
        QVERIFY(f.open(
            f.write(u"a.log"_s, QByteArray(100, '\n') + QByteArray("0123456789 0123456789\n").repeated(8'000'000))));
        f.show();
        f.view->gotoLine(8'000'000);
        QVERIFY(f.document->isIndexed() || f.lines()->cursorPlace().line > 1'000'000); // an estimate
        Q_EMIT f.document->renumbering();                                              // a part has been counted
        Q_EMIT f.document->renumbered();
        QTRY_VERIFY(f.document->isIndexed());
        QTRY_COMPARE(f.cursor(), u"7999999,0"_s);
        QVERIFY(f.lines()->isCursorVisible());
    }

    // Find as the program's dialog uses it ------------------------------------

    void findsFromTheCursor_data()
    {
        QTest::addColumn<QString>("cursor");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("fromCursor");
        QTest::addColumn<QString>("found"); ///< empty if nothing is
        const auto row = [](const char *name, const char *cursor, const char *text, bool caseSensitive, bool forward,
                            bool fromCursor, const char *found) {
            QTest::newRow(name) << QString::fromLatin1(cursor) << QString::fromLatin1(text) << caseSensitive << forward
                                << fromCursor << QString::fromLatin1(found);
        };
        row("forward, cursor behind the match", "0,0", "beta", true, true, true, "0,10");
        row("forward skips the cursor's column", "0,6", "beta", true, true, true, "1,4");
        row("forward from the start", "2,0", "alpha", true, true, false, "0,5");
        row("backward, cursor before the match", "2,3", "beta", true, false, true, "1,0");
        row("backward from within a match", "1,2", "beta", true, false, true, "1,0");
        row("backward from the start of a line", "1,0", "beta", true, false, true, "0,6");
        row("backward without cursor looks at the first line only", "2,3", "beta", true, false, false, "");
        row("backward without cursor finds the very start", "2,3", "alpha", true, false, false, "0,0");
        row("without case", "0,8", "BETA", false, true, true, "1,4");
        row("with case", "0,0", "BETA", true, true, true, "");
        row("whole words are not heeded", "0,0", "bet", true, true, true, "0,9");
        row("not there", "0,0", "delta", true, true, true, "");
        row("empty", "0,0", "", true, true, true, "");
        row("behind the last", "1,2", "beta", true, true, true, "");
        row("markup is searched as it is stored", "0,0", "<b>", true, true, true, "2,0");
        row("text behind markup", "0,0", "x", true, true, true, "2,1");
        row("backward to text behind markup", "2,1", "x", true, false, true, "2,0");
        row("line end", "0,0", "gamma\n", true, true, true, "1,11");
        row("not across lines", "0,0", "beta\nbeta", true, true, true, "");
    }

    void findsFromTheCursor()
    {
        QFETCH(QString, cursor);
        QFETCH(QString, text);
        QFETCH(bool, caseSensitive);
        QFETCH(bool, forward);
        QFETCH(bool, fromCursor);
        QFETCH(QString, found);
        LargeFixture f;
        f.openAndShow("alpha beta\nbeta gamma\n<b>x</b>\n");
        f.lines()->setCursor(cursor.section(u',', 0, 0).toInt(), cursor.section(u',', 1).toInt());
        QCOMPARE(f.view->find(text, caseSensitive, true, forward, fromCursor), !found.isEmpty());
        QCOMPARE(f.cursor(), found.isEmpty() ? cursor : found);
        QVERIFY(!f.lines()->hasSelection());
    }

    void foundLineIsCentredUnlessItWasVisible_data()
    {
        QTest::addColumn<bool>("ofUser");
        QTest::newRow("find") << false;
        QTest::newRow("find bar") << true;
    }

    void foundLineIsCentredUnlessItWasVisible()
    {
        QFETCH(const bool, ofUser);
        LargeFixture f;
        f.openAndShow(numbered(1000));
        const int height = f.lines()->lineHeight();
        const auto find = [&](int line, bool forward) {
            const QString text = u"line %1"_s.arg(line);
            if (!ofUser) {
                QVERIFY(f.view->find(text, true, false, forward, true));
            } else {
                part<QLineEdit>(f, "LargeTextFindWhat")->setText(text);
                f.view->findAgain(forward);
            }
            QTRY_COMPARE(f.lines()->cursorPlace().line, line);
        };
        const auto isCentred = [&](int line) {
            const qint64 middle = f.lines()->contentsY() + f.lines()->visibleHeight() / 2;
            return std::abs(middle - qint64(height) * line) <= height;
        };
        find(500, true);
        QVERIFY(isCentred(500));
        f.lines()->gotoLine(901);
        find(300, false);
        QVERIFY(isCentred(300));
        const qint64 top = f.lines()->contentsY();
        find(int((top + f.lines()->visibleHeight()) / height) - 1, true);
        QCOMPARE(f.lines()->contentsY(), top);
        find(int((top + height - 1) / height), false);
        QCOMPARE(f.lines()->contentsY(), top);
    }

    void findIgnoresTextInTwoPiecesOfALine()
    {
        LargeFixture f;
        f.openAndShow(QByteArray(996, 'x') + "needle and needle\n");
        QVERIFY(f.view->find(u"needle"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"1,14"_s); // the first one is in two pieces
        QVERIFY(!f.view->find(u"needle"_s, true, false, false, true) || f.cursor() == u"1,8"_s);
    }

    void findStopsAfterItsTimeLimitAndCanBeContinued()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, {}, "needle\n")));
        f.show();
        QCOMPARE(LargeTextView::FindTimeLimit, 5000);
        f.view->setFindTimeLimit(0); // over at once
        QVERIFY(!f.view->find(QString(), true, false, true, true));
        QVERIFY(!f.view->findBar()->isVisible());
        QVERIFY(!f.view->find(u"needle"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"0,0"_s);
        QVERIFY(f.view->findBar()->isVisible());
        QCOMPARE(result(f), u"Not found so far"_s);
        QVERIFY(part<QProgressBar>(f, "LargeTextProgress")->value() < 50);
        QVERIFY(f.lines()->hasFocus());
        click(f, "LargeTextGoOn");
        QTRY_COMPARE(result(f), u"1 of 1"_s);
        QVERIFY(f.lines()->cursorPlace().line > 50'000);
        QCOMPARE(f.lines()->selectedText(), u"needle"_s);
    }

    // Find bar ----------------------------------------------------------------

    void noticeKeepsADistanceFromTheStatus()
    {
        LargeFixture f;
        QVERIFY(f.open(f.write(u"a.log"_s, "one\n")));
        f.show();
        const auto *shown = part<QLabel>(f, "LargeTextStatus");
        QVERIFY(part<QLabel>(f, "LargeTextNotice")->geometry().left() >= shown->geometry().right() + 12);
    }

    void findBarFindsAndCounts()
    {
        LargeFixture f;
        f.openAndShow("Cat cat concat\ncat dog\nCAT\n");
        click(f, "LargeTextFind");
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        QVERIFY(what->hasFocus());
        QString whenFound;
        connect(f.view->findBar(), &LargeTextFindBar::found, this, [&] { whenFound = result(f); });
        QTest::keyClicks(what, u"cat"_s);
        QTest::keyClick(what, Qt::Key_Enter, Qt::KeypadModifier);
        QTRY_COMPARE(result(f), u"1 of 5"_s);
        QCOMPARE(whenFound, u"Counting..."_s);
        QCOMPARE(selection(f), u"0,0-0,3"_s);
        QVERIFY(what->hasFocus());
        QTest::keyClick(what, Qt::Key_Return);
        QTRY_COMPARE(result(f), u"2 of 5"_s);
        QCOMPARE(selection(f), u"0,4-0,7"_s);
        QTest::keyClick(what, Qt::Key_Return, Qt::ShiftModifier);
        QTRY_COMPARE(result(f), u"1 of 5"_s);
        QTest::keyClick(what, Qt::Key_Return, Qt::ShiftModifier);
        QTRY_COMPARE(result(f), u"5 of 5, past the end of the file"_s);
        QCOMPARE(selection(f), u"2,0-2,3"_s);

        part<QCheckBox>(f, "LargeTextMatchCase")->setChecked(true);
        part<QCheckBox>(f, "LargeTextWholeWords")->setChecked(true);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"1 of 2, past the end of the file"_s);
        QCOMPARE(selection(f), u"0,4-0,7"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(selection(f), u"1,0-1,3"_s);
        click(f, "LargeTextPrevious");
        QTRY_COMPARE(selection(f), u"0,4-0,7"_s);

        QTest::keyClick(what, Qt::Key_Escape);
        QVERIFY(!f.view->findBar()->isVisible());
        QVERIFY(f.lines()->hasFocus());
        click(f, "LargeTextFind"); // the selection is proposed
        QCOMPARE(what->text(), u"cat"_s);
    }

    void matchBehindMarkupIsSelectedWhereItIsShown()
    {
        LargeFixture f;
        f.openAndShow("<b>uart</b> &lt;cat&gt; <i>cat</i>\n");
        f.view->startFind({u"cat"_s}, true, false);
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        QCOMPARE(selection(f), u"0,6-0,9"_s);
        QCOMPARE(f.view->selectedText(), u"cat"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(result(f), u"2 of 2"_s);
        QCOMPARE(selection(f), u"0,11-0,14"_s);
        QTest::keyClick(f.lines(), Qt::Key_Home);
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        f.view->startFind({u"b>"_s}, true, false); // in tags, which are not shown
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(result(f), u"2 of 2"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3, Qt::ShiftModifier);
        QTRY_COMPARE(result(f), u"1 of 2"_s);
    }

    void functionKeyRepeatsTheSearch()
    {
        LargeFixture f;
        f.openAndShow("cat\ncat\ndog cat\n");
        f.view->startFind({u"cat"_s}, true, false);
        QTRY_COMPARE(result(f), u"1 of 3"_s);
        QVERIFY(f.lines()->hasFocus());
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(result(f), u"2 of 3"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3, Qt::ShiftModifier);
        QTRY_COMPARE(result(f), u"1 of 3"_s);
        f.view->startFind({u"cat"_s}, false, false); // from the end
        QTRY_COMPARE(result(f), u"3 of 3"_s);
        f.view->startFind({}, true, true);
        QCOMPARE(result(f), QString());
    }

    void functionKeyShowsTheFindBar()
    {
        LargeFixture f;
        f.openAndShow("dog\n");
        QTest::keyClick(f.lines(), Qt::Key_F3); // there is nothing to repeat
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        QVERIFY(f.view->findBar()->isVisible());
        QVERIFY(what->hasFocus());
        what->setText(u"needle"_s);
        QTest::keyClick(what, Qt::Key_Escape);
        QVERIFY(!f.view->findBar()->isVisible());
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QVERIFY(f.view->findBar()->isVisible());
        QVERIFY(f.lines()->hasFocus());
        QTRY_COMPARE(result(f), u"Not found"_s);
    }

    void nothingIsFoundInAnEmptyFile()
    {
        LargeFixture f;
        f.openAndShow("");
        f.view->openFindBar();
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        what->setText(u"needle"_s);
        QTest::keyClick(what, Qt::Key_Return);
        QTRY_COMPARE(result(f), u"Not found"_s);
    }

    void functionKeyInTheFindBarRepeatsTheSearch()
    {
        LargeFixture f;
        f.openAndShow("cat\ncat\ndog cat\n");
        f.view->openFindBar();
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        what->setText(u"cat"_s);
        QTest::keyClick(what, Qt::Key_F3);
        QTRY_COMPARE(result(f), u"1 of 3"_s);
        QTest::keyClick(what, Qt::Key_F3);
        QTRY_COMPARE(result(f), u"2 of 3"_s);
        QTest::keyClick(what, Qt::Key_F3, Qt::ShiftModifier);
        QTRY_COMPARE(result(f), u"1 of 3"_s);
        QVERIFY(what->hasFocus());
    }

    void searchBeginsBesideTheSelection()
    {
        LargeFixture f;
        f.openAndShow("cat cat cat\n");
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"cat"_s);
        for (int i = 0; i < 7; ++i)
            QTest::keyClick(f.lines(), Qt::Key_Right);
        for (int i = 0; i < 7; ++i)
            QTest::keyClick(f.lines(), Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(selection(f), u"0,0-0,7"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(selection(f), u"0,8-0,11"_s);
        QTest::keyClick(f.lines(), Qt::Key_Home);
        for (int i = 0; i < 4; ++i)
            QTest::keyClick(f.lines(), Qt::Key_Right);
        for (int i = 0; i < 7; ++i)
            QTest::keyClick(f.lines(), Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(selection(f), u"0,4-0,11"_s);
        QTest::keyClick(f.lines(), Qt::Key_F3, Qt::ShiftModifier);
        QTRY_COMPARE(selection(f), u"0,0-0,3"_s);
    }

    void searchBeginsAtTheLineThatWasGoneTo()
    {
        LargeFixture f;
        f.openAndShow("cat\ncat\ncat\ndog\n");
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"cat"_s);
        f.view->gotoLine(3);
        QTest::keyClick(f.lines(), Qt::Key_F3);
        QTRY_COMPARE(selection(f), u"2,0-2,3"_s);
    }

    void findBarKeepsItsTextUnlessTextIsSelected()
    {
        LargeFixture f;
        f.openAndShow("cat dog\n");
        QVERIFY(!f.view->findBar()->isVisible());
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        what->setText(u"needle"_s);
        f.view->openFindBar();
        QCOMPARE(what->text(), u"needle"_s);
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(f.lines(), Qt::Key_Right, Qt::ShiftModifier);
        f.view->openFindBar();
        QCOMPARE(what->text(), u"cat"_s);
    }

    void textThatASmallFileDoesNotContainIsNotSearchedFurther()
    {
        LargeFixture f;
        f.openAndShow("cat dog\n");
        QVERIFY(!f.view->find(u"needle"_s, true, false, true, true));
        QVERIFY(!f.view->findBar()->isVisible());
        QVERIFY(!part<QToolButton>(f, "LargeTextGoOn")->isVisibleTo(f.view->findBar()));
    }

    void closedFindBarHasEndedItsSearch_data()
    {
        QTest::addColumn<int>("timeLimit");
        QTest::addColumn<QString>("state");
        QTest::newRow("searching") << LargeTextSearch::TimeLimit << u"Searching..."_s;
        QTest::newRow("waiting") << 0 << u"Not found so far"_s;
    }

    void closedFindBarHasEndedItsSearch()
    {
        QFETCH(int, timeLimit);
        QFETCH(QString, state);
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(timeLimit);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), state);
        QTest::keyClick(part<QLineEdit>(f, "LargeTextFindWhat"), Qt::Key_Escape);
        QVERIFY(!f.view->findBar()->search().isRunning());
        f.view->openFindBar();
        QCOMPARE(result(f), QString());
        for (const char *name : {"LargeTextCancel", "LargeTextGoOn"})
            QVERIFY(!part<QToolButton>(f, name)->isVisible());
        QVERIFY(!part<QProgressBar>(f, "LargeTextProgress")->isVisible());
    }

    void searchThatRanOutOfTimeIsNotOfferedAgainInAClosedFindBar()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, {}, "needle\n")));
        f.show();
        f.view->setFindTimeLimit(0);
        QVERIFY(!f.view->find(u"needle"_s, true, false, true, true));
        click(f, "LargeTextClose");
        f.view->openFindBar();
        QVERIFY(!part<QToolButton>(f, "LargeTextGoOn")->isVisible());
        QCOMPARE(result(f), QString());
    }

    void searchBackwardThatRanOutOfTimeShowsHowFarItCameAndCanBeCancelled()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, "needle\n")));
        f.show();
        QTest::keyClick(f.lines(), Qt::Key_End, Qt::ControlModifier);
        f.view->setFindTimeLimit(0);
        QVERIFY(!f.view->find(u"needle"_s, true, false, false, true));
        QCOMPARE(result(f), u"Not found so far"_s);
        QVERIFY(part<QProgressBar>(f, "LargeTextProgress")->value() < 50);
        click(f, "LargeTextCancel");
        QCOMPARE(result(f), u"Cancelled"_s);
        QVERIFY(!part<QToolButton>(f, "LargeTextGoOn")->isVisible());
    }

    void barThatIsOpenedAgainKeepsTheOfferToGoOn()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, {}, "needle\n")));
        f.show();
        f.view->setFindTimeLimit(0);
        QVERIFY(!f.view->find(u"needle"_s, true, false, true, true));
        f.view->openFindBar();
        QCOMPARE(result(f), u"Not found so far"_s);
        QVERIFY(part<QToolButton>(f, "LargeTextGoOn")->isVisible());
    }

    void searchGoesOnWhereItWaits()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, "needle\n\n", "needle\n")));
        f.show();
        f.view->findBar()->search().setTimeLimit(0);
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.lines()->setCursor(1, 0);
        f.view->findAgain(true);
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        click(f, "LargeTextGoOn");
        QTRY_COMPARE(result(f), u"2 of 2"_s);
    }

    void newSearchEndsTheOneThatWaits()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(0);
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(true);
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        const qsizetype threads = threadCount();
        f.view->findAgain(true);
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        QTRY_VERIFY(threadCount() <= threads);
        click(f, "LargeTextCancel");
    }

    void waitingIsReportedOnce()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000)));
        const auto start = [&](LargeTextSearch &search) {
            search.setTimeLimit(0);
            QSignalSpy waiting(&search, &LargeTextSearch::waiting);
            search.start(f.document->file(), f.document->size(), {u"needle"_s}, 0, true);
            QTRY_COMPARE(waiting.size(), 1);
            QVERIFY(waiting.first().first().toInt() < 50); // percent
        };
        LargeTextSearch search;
        start(search);
        QSignalSpy again(&search, &LargeTextSearch::waiting);
        for (int i = 0; i < 2; ++i) { // as long as it takes for others to report it
            LargeTextSearch other;
            start(other);
        }
        QCOMPARE(again.size(), 0);
    }

    void searchThatHasNotBegunCannotGoOn()
    {
        LargeTextSearch search;
        search.goOn();
        QVERIFY(!search.isRunning());
    }

    void searchForNothingIsNotContinued()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 50'000'000, {}, "needle\n")));
        f.show();
        f.view->setFindTimeLimit(0);
        QVERIFY(!f.view->find(u"needle"_s, true, false, true, true));
        part<QLineEdit>(f, "LargeTextFindWhat")->clear();
        click(f, "LargeTextGoOn");
        QCOMPARE(result(f), u"Not found so far"_s);
        QVERIFY(!f.view->findBar()->search().isRunning());
    }

    void findsBehindAByteOrderMark()
    {
        LargeFixture f;
        f.openAndShow("\xef\xbb\xbf"
                      "a a\n");
        f.lines()->setCursor(0, 1);
        QVERIFY(f.view->find(u"a"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"0,3"_s);
        QVERIFY(!f.view->find(u"a"_s, true, false, true, true));
        f.lines()->setCursor(0, 0);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"a"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"2 of 2"_s);
        QCOMPARE(selection(f), u"0,2-0,3"_s);
    }

    void findBarFindsMatchesOverTwoPieces()
    {
        LargeFixture f;
        f.openAndShow(QByteArray(996, 'x') + "needle\n");
        f.view->openFindBar();
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        what->setText(u"needle"_s);
        QTest::keyClick(what, Qt::Key_Return);
        QTRY_COMPARE(result(f), u"1 of 1"_s);
        QCOMPARE(selection(f), u"0,996-1,3"_s);
    }

    void matchOverTheBorderOfABlockIsFound()
    {
        constexpr int Block = 262'144; // bytes that a search reads in one go
        QByteArray bytes = "123456789\n" + (QByteArray(63, '.') + '\n').repeated(2 * Block / 64);
        bytes.replace(Block - 3, 6, "needle");
        LargeFixture f;
        f.openAndShow(bytes);
        QVERIFY(f.view->find(u"needle"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"4096,57"_s);
        f.lines()->setCursor(f.document->lineCount() - 1, 0);
        QVERIFY(f.view->find(u"NEEDLE"_s, false, false, false, true));
        QCOMPARE(f.cursor(), u"4096,51"_s);
        f.view->startFind({u"Needle"_s, false, true}, true, false);
        QTRY_COMPARE(result(f), u"1 of 1"_s);
        QCOMPARE(selection(f), u"4096,51-4096,57"_s);
    }

    void missingTextIsReportedAsNotFound()
    {
        LargeFixture f;
        f.openAndShow(numbered(50));
        f.view->openFindBar();
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        QTest::keyClick(what, Qt::Key_Return); // nothing to look for
        QCOMPARE(result(f), QString());
        what->setText(u"needle"_s);
        QTest::keyClick(what, Qt::Key_Return);
        QTRY_COMPARE(result(f), u"Not found"_s);
        QVERIFY(!part<QToolButton>(f, "LargeTextCancel")->isVisible());
        QCOMPARE(f.cursor(), u"0,0"_s);
    }

    void longSearchCanBeCancelledOrContinued()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(50);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QVERIFY(part<QProgressBar>(f, "LargeTextProgress")->isVisible());
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        QVERIFY(part<QToolButton>(f, "LargeTextGoOn")->isVisible());
        click(f, "LargeTextGoOn");
        QCOMPARE(result(f), u"Searching..."_s);
        QSignalSpy progress(&f.view->findBar()->search(), &LargeTextSearch::progress);
        QTRY_VERIFY(progress.size() > 2); // beyond the limit of two intervals
        QCOMPARE(result(f), u"Searching..."_s);
        click(f, "LargeTextCancel");
        QCOMPARE(result(f), u"Cancelled"_s);
        QVERIFY(!part<QProgressBar>(f, "LargeTextProgress")->isVisible());
        QVERIFY(part<QProgressBar>(f, "LargeTextProgress")->value() < 0); // the next search begins without progress
        QVERIFY(!f.view->findBar()->search().isRunning());
    }

    void searchWithinItsTimeLimitDoesNotWait()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(1'000'000);
        QSignalSpy waiting(&f.view->findBar()->search(), &LargeTextSearch::waiting);
        QSignalSpy progress(&f.view->findBar()->search(), &LargeTextSearch::progress);
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(true);
        QTRY_VERIFY(progress.size() > 2);
        QCOMPARE(waiting.size(), 0);
        QCOMPARE(part<QProgressBar>(f, "LargeTextProgress")->value(), progress.last().first().toInt());
        QVERIFY(!part<QToolButton>(f, "LargeTextGoOn")->isVisible());
        click(f, "LargeTextCancel");
    }

    void barThatIsOpenedAgainKeepsASearchThatWaits()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(0);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        f.view->openFindBar();
        QCOMPARE(result(f), u"Not found so far"_s);
        QVERIFY(part<QToolButton>(f, "LargeTextGoOn")->isVisible());
        click(f, "LargeTextCancel");
        f.view->openFindBar();
        QCOMPARE(result(f), QString());
    }

    void findBarHasItsButtonsAndKeys()
    {
        LargeFixture f;
        f.openAndShow(numbered(10));
        for (const auto &[name, text] : {std::pair("LargeTextFind", u"Find..."_s),
                                         {"LargeTextPrevious", u"Previous"_s},
                                         {"LargeTextNext", u"Next"_s},
                                         {"LargeTextGoOn", u"Go on"_s},
                                         {"LargeTextCancel", u"Cancel"_s},
                                         {"LargeTextClose", u"Close"_s}})
            QCOMPARE(part<QToolButton>(f, name)->text(), text);
        f.view->openFindBar();
        auto *what = part<QLineEdit>(f, "LargeTextFindWhat");
        QCOMPARE(what->placeholderText(), u"Find in the file"_s);
        QTest::keyClicks(what, u"old"_s);
        QTest::keyClick(what, Qt::Key_F9);
        QVERIFY(f.view->findBar()->isVisible());
        f.view->openFindBar();
        QTest::keyClicks(what, u"line 3"_s); // replaces the old text
        QTest::keyClick(what, Qt::Key_Return);
        QTRY_COMPARE(result(f), u"1 of 1"_s);
        QVERIFY(!part<QProgressBar>(f, "LargeTextProgress")->isVisible());
        QVERIFY(!part<QToolButton>(f, "LargeTextCancel")->isVisible());
    }

    void matchIsReportedOnceWhileTheOthersAreCounted()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30, "needle")));
        f.show();
        const LargeTextSearch &search = f.view->findBar()->search();
        const QSignalSpy found(&search, &LargeTextSearch::found);
        const QSignalSpy counted(&search, &LargeTextSearch::counted);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QTRY_VERIFY(counted.size() > 3);
        QCOMPARE(result(f), u"1 so far"_s);
        QCOMPARE(found.size(), 1);
        const qsizetype threads = threadCount();
        click(f, "LargeTextCancel");
        QTRY_VERIFY(threadCount() < threads);
    }

    void matchIsShownWhole()
    {
        LargeFixture f;
        f.openAndShow(QByteArray(120, 'x') + " needle");
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(true);
        QTRY_COMPARE(selection(f), u"0,121-0,127"_s);
        const int right = f.lines()->contentsX() + f.lines()->viewport()->width();
        QVERIFY(f.lines()->contentsX() > 0);
        QVERIFY(f.lines()->contentsX() <= 121 * f.lines()->charWidth());
        QVERIFY(right >= 127 * f.lines()->charWidth());
    }

    void matchLeftOfTheScreenIsShownWhole()
    {
        LargeFixture f;
        f.openAndShow(QByteArray(50, 'x') + "needle" + QByteArray(300, 'x') + '\n');
        QTest::keyClick(f.lines(), Qt::Key_End);
        QVERIFY(f.lines()->contentsX() > 56 * f.lines()->charWidth());
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(false);
        QTRY_COMPARE(selection(f), u"0,50-0,56"_s);
        QVERIFY(f.lines()->contentsX() <= 50 * f.lines()->charWidth());
    }

    void keyThatTheViewDoesNotUseReachesTheWindow()
    {
        LargeFixture f;
        f.openAndShow("text");
        QKeyEvent used(QEvent::KeyPress, Qt::Key_F3, {});
        QKeyEvent unused(QEvent::KeyPress, Qt::Key_F9, {});
        QApplication::sendEvent(f.view.get(), &used);
        QApplication::sendEvent(f.view.get(), &unused);
        QVERIFY(used.isAccepted());
        QVERIFY(!unused.isAccepted());
    }

    void viewMayBeClosedDuringASearch()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(0);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        const qsizetype threads = threadCount();
        f.view.reset();
        f.document.reset();
        QTRY_VERIFY(threadCount() <= threads - 2); // the search and the count of the lines
    }

    // Changes of the file -------------------------------------------------------

    void statusShowsSizeAndLines()
    {
        LargeFixture f;
        f.openAndShow(numbered(1500));
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(status(f),
                 QLocale().formattedDataSize(f.document->size()) + u", "_s + QLocale().toString(1500) + u" lines"_s);
        QVERIFY(!part<QToolButton>(f, "LargeTextReload")->isVisible());
        LargeFixture unready;
        QVERIFY(unready.open(unready.writeSparse(u"a.log"_s, 100ll << 30)));
        unready.show();
        QVERIFY2(status(unready).contains(u"counting lines: "_s), qPrintable(status(unready)));
    }

    void statusShowsTheLinesWhenTheyHaveBeenCounted()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 999ll * 200'000)));
        f.show();
        QTRY_VERIFY(f.document->isIndexed());
        QTRY_VERIFY2(status(f).endsWith(QLocale().toString(200'000) + u" lines"_s), qPrintable(status(f)));
    }

    void changedFileIsOfferedForReloading()
    {
        LargeFixture f;
        f.openAndShow(numbered(100));
        f.lines()->setCursor(50, 3);
        f.write(u"large.log"_s, numbered(40));
        f.document->checkFile();
        QCOMPARE(notice(f), u"The file has become shorter."_s);
        QCOMPARE(part<QLabel>(f, "LargeTextNotice")->toolTip(), notice(f)); // it may be cut off
        QCOMPARE(part<QToolButton>(f, "LargeTextReload")->text(), u"Reload"_s);
        click(f, "LargeTextReload");
        QCOMPARE(notice(f), QString());
        QCOMPARE(f.document->lineCount(), 40);
        QCOMPARE(f.lines()->contentsHeight(), 40ll * f.lines()->lineHeight());
        f.write(u"large.log"_s, "x\n", QIODevice::Append);
        f.document->checkFile();
        QVERIFY(notice(f).startsWith(u"The file has grown by 2 "_s));
        QVERIFY(QFile::remove(f.path(u"large.log"_s)));
        f.document->checkFile();
        QCOMPARE(notice(f), u"The file has been deleted or moved."_s);
        QVERIFY(!part<QToolButton>(f, "LargeTextReload")->isEnabled());
        f.write(u"large.log"_s, numbered(3));
        f.document->checkFile();
        QCOMPARE(notice(f), u"The file has been replaced by another one."_s);
        click(f, "LargeTextReload");
        QCOMPARE(f.document->lineCount(), 3);
    }

    void reloadingKeepsThePlaceOnTheScreen()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        f.lines()->setContentsPos(0, 200ll * f.lines()->lineHeight());
        f.write(u"large.log"_s, "more\n", QIODevice::Append);
        f.document->checkFile();
        click(f, "LargeTextReload");
        QCOMPARE(f.document->lineCount(), 501);
        QCOMPARE(f.lines()->contentsY(), 200ll * f.lines()->lineHeight());
    }

    void reloadingAtTheEndShowsTheNewEnd()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        f.lines()->setContentsPos(0, f.lines()->bottomContentsY());
        f.write(u"large.log"_s, numbered(100), QIODevice::Append);
        QVERIFY(f.document->reload());
        QCOMPARE(f.document->lineCount(), 600);
        QCOMPARE(f.lines()->contentsY(), f.lines()->bottomContentsY());
    }

    void reloadedFileThatWasWholeOnTheScreenIsShownFromItsStart()
    {
        LargeFixture f;
        f.openAndShow(numbered(3));
        f.write(u"large.log"_s, numbered(500));
        QVERIFY(f.document->reload());
        QCOMPARE(f.document->lineCount(), 500);
        QVERIFY(f.lines()->bottomContentsY() > 0);
        QCOMPARE(f.lines()->contentsY(), 0);
    }

    void reloadingKeepsTheResultOfASearch()
    {
        LargeFixture f;
        f.openAndShow("needle\nneedle\n");
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(true);
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        QVERIFY(f.document->reload());
        QCOMPARE(result(f), u"1 of 2"_s);
    }

    void searchAfterReloadingBeginsAtTheCursor()
    {
        LargeFixture f;
        f.openAndShow("some needle\n");
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        f.view->findAgain(true);
        QTRY_COMPARE(result(f), u"1 of 1"_s);
        f.write(u"large.log"_s, "a\nneedle\nneedle\n");
        f.document->checkFile();
        click(f, "LargeTextReload");
        f.view->findAgain(true); // not behind the place of the old match
        QTRY_COMPARE(result(f), u"1 of 2"_s);
        QCOMPARE(selection(f), u"1,0-1,6"_s);
    }

    void reloadingCancelsASearch()
    {
        LargeFixture f;
        QVERIFY(f.open(f.writeSparse(u"a.log"_s, 100ll << 30)));
        f.show();
        f.view->findBar()->search().setTimeLimit(0);
        f.view->openFindBar();
        part<QLineEdit>(f, "LargeTextFindWhat")->setText(u"needle"_s);
        click(f, "LargeTextNext");
        QTRY_COMPARE(result(f), u"Not found so far"_s);
        f.write(u"a.log"_s, numbered(40));
        f.document->checkFile();
        click(f, "LargeTextReload");
        QCOMPARE(f.document->lineCount(), 40);
        QCOMPARE(result(f), u"Cancelled"_s); // its places are those of the old file
        QVERIFY(!part<QToolButton>(f, "LargeTextGoOn")->isVisible());
    }

    void rewrittenFileIsOfferedForReloading()
    {
        LargeFixture f;
        f.openAndShow("one\n");
        QFile file(f.path(u"large.log"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.write("two\n");
        file.flush();
        file.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime);
        f.document->checkFile();
        QCOMPARE(notice(f), u"The file has been changed."_s);
    }

    void fileThatCannotBeReloadedStays()
    {
        LargeFixture f;
        f.openAndShow(numbered(10));
        QVERIFY(QFile::remove(f.path(u"large.log"_s)));
        QVERIFY(QDir(f.directory.path()).mkdir(u"large.log"_s));
        f.document->checkFile();
        click(f, "LargeTextReload");
        QCOMPARE(notice(f), u"The file cannot be read."_s);
        QCOMPARE(f.document->line(9), u"line 9\n"_s);
    }

    void truncatedFileCanBePaintedSearchedAndCopied()
    {
        LargeFixture f;
        f.openAndShow(numbered(300'000));
        QTRY_VERIFY(f.document->isIndexed());
        QVERIFY(QFile::resize(f.path(u"large.log"_s), 100));
        for (const int line : {0, 150'000, 299'990}) {
            f.lines()->setContentsPos(0, qint64(line) * f.lines()->lineHeight());
            QVERIFY(!f.view->grab().isNull());
        }
        QTest::keyClick(f.lines(), Qt::Key_End, Qt::ControlModifier);
        QVERIFY(!f.view->find(u"line 9999"_s, true, false, true, false));
        f.view->selectAll();
        f.view->copy();
    }

    void followingKeepsTheEndOnScreen()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        part<QCheckBox>(f, "LargeTextFollow")->click();
        QVERIFY(f.document->isFollowing());
        QCOMPARE(f.lines()->contentsY(), f.lines()->bottomContentsY());
        f.write(u"large.log"_s, numbered(100), QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 600);
        QCOMPARE(f.lines()->contentsHeight(), 600ll * f.lines()->lineHeight());
        QCOMPARE(f.lines()->contentsY(), f.lines()->bottomContentsY());
        f.lines()->setContentsPos(0, 100ll * f.lines()->lineHeight()); // the user scrolls away from the end
        f.write(u"large.log"_s, numbered(100), QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 700);
        QCOMPARE(f.lines()->contentsY(), 100ll * f.lines()->lineHeight());
        QVERIFY(notice(f).isEmpty());
    }

    void followedFileThatOutgrowsTheScreenIsShownAtItsEnd()
    {
        LargeFixture f;
        f.openAndShow(numbered(3));
        f.document->setFollowing(true);
        f.write(u"large.log"_s, numbered(500), QIODevice::Append);
        f.document->checkFile();
        QVERIFY(f.lines()->bottomContentsY() > 0);
        QCOMPARE(f.lines()->contentsY(), f.lines()->bottomContentsY());
    }

    void followedFileThatBeginsAgainIsShownAtItsEnd()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        f.document->setFollowing(true);
        f.lines()->setContentsPos(0, 0); // the new text is not at the place that was read
        f.write(u"new.log"_s, numbered(900));
        QCOMPARE(rename(qPrintable(f.path(u"new.log"_s)), qPrintable(f.path(u"large.log"_s))), 0);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 900);
        QCOMPARE(f.lines()->contentsY(), f.lines()->bottomContentsY());
    }

    void onlyTheStartOfFollowingShowsTheEnd()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        auto *follow = part<QCheckBox>(f, "LargeTextFollow");
        f.document->setFollowing(true);
        QVERIFY(follow->isChecked());
        QCOMPARE(follow->toolTip(), u"Shows what is written to the file, as it is written"_s);
        f.lines()->setContentsPos(0, 0);
        f.document->setFollowing(true); // as before
        QCOMPARE(f.lines()->contentsY(), 0ll);
        f.document->setFollowing(false);
        QVERIFY(!follow->isChecked());
        QCOMPARE(f.lines()->contentsY(), 0ll);
    }

    void movedCursorIsReported()
    {
        LargeFixture f;
        f.openAndShow("one\ntwo\n");
        const QSignalSpy positions(f.view.get(), &View::cursorPositionChanged);
        QTest::keyClick(f.lines(), Qt::Key_Down);
        QTest::keyClick(f.lines(), Qt::Key_Right);
        QCOMPARE(positions.size(), 2);
        QCOMPARE(positions.last(), (QVariantList{1, 1}));
    }

    void lineThatWasGoneToIsNotShownAgainWhenTheFileGrows()
    {
        LargeFixture f;
        f.openAndShow(numbered(500));
        f.document->setFollowing(true);
        QTRY_VERIFY(f.document->isIndexed());
        f.view->gotoLine(5);
        f.lines()->setContentsPos(0, 200ll * f.lines()->lineHeight());
        f.write(u"large.log"_s, "more\n", QIODevice::Append);
        f.document->checkFile();
        QCOMPARE(f.document->lineCount(), 501);
        QCOMPARE(f.lines()->contentsY(), 200ll * f.lines()->lineHeight());
    }

    void positionIsReportedAgainWhenTheCursorsLineGetsItsNumber()
    {
        LargeFixture f;
        const QByteArray bytes = QByteArray(200'000, '\n') + (QByteArray(119, 'x') + '\n').repeated(500'000);
        QVERIFY(f.open(f.write(u"a.log"_s, bytes)));
        f.show();
        QSignalSpy positions(f.view.get(), &View::cursorPositionChanged);
        QTest::keyClick(f.lines(), Qt::Key_End, Qt::ControlModifier);
        const LargeTextView other(f.document.get(), nullptr, nullptr); // does not have the focus
        other.lineView()->setCursor(f.lines()->cursorPlace().line, 0);
        const QSignalSpy otherPositions(&other, &View::cursorPositionChanged);
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(positions.last(), (QVariantList{699'999, 119}));
        QCOMPARE(other.lineView()->cursorPlace().line, 699'999);
        QCOMPARE(otherPositions.size(), 0);
    }

    void shownLinesStayWhenTheyGetTheirNumbers()
    {
        LargeFixture f;
        QByteArray bytes = QByteArray(200'000, '\n');
        for (int i = 0; i < 6'000'000; ++i)
            bytes += "numbered line " + QByteArray::number(i) + '\n';
        QVERIFY(f.open(f.write(u"a.log"_s, bytes)));
        f.show();
        f.lines()->setContentsPos(0, f.lines()->bottomContentsY() / 2);
        const QString shown = f.lines()->visibleText();
        QTRY_VERIFY(f.document->isIndexed());
        QCOMPARE(f.lines()->visibleText(), shown);
        QCOMPARE(f.document->lineCount(), 6'200'000);
    }
};

QTEST_MAIN(LargeTextViewTest)
#include "tst_largetextview.moc"

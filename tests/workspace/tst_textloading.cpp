#include "cpphighlighter.h"
#include "editorfixture.h"
#include "filebytes.h"
#include "swapfile.h"
#include "textloading.h"
#include "viewplace.h"
#include <functional>
#include <QClipboard>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QSignalSpy>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {
constexpr int Lines = 20'000;

/// The lines "int a1;" to "int a20000;", each ended by @p lineEnd.
QByteArray numbered(const QByteArray &lineEnd = "\n")
{
    QByteArray text;
    for (int i = 1; i <= Lines; ++i)
        text += "int a" + QByteArray::number(i) + "; // some words" + lineEnd;
    return text;
}

QString lineText(int line)
{
    return u"int a%1; // some words"_s.arg(line);
}

/// An editor that has just opened a large file: only the first lines are there, until events are processed.
struct LargeFixture : EditorFixture
{
    explicit LargeFixture(const QByteArray &bytes = numbered(),
                          std::unique_ptr<SyntaxHighlighter> highlighter = nullptr)
        : EditorFixture({}, std::move(highlighter))
    {
        put(file(), bytes);
        if (!document->open(file()) || !document->isLoading())
            qFatal("the file is not being loaded");
    }

    [[nodiscard]] QString file() const { return path(u"large.c"_s); }
    [[nodiscard]] bool waitForEnd() const
    {
        return QTest::qWaitFor([this] { return !document->isLoading(); }, 60'000);
    }
    [[nodiscard]] int loadedLines() const { return document->text()->blockCount(); }
    /// The whole text, without making it be loaded.
    [[nodiscard]] QByteArray shown() const { return text().toUtf8(); }
};

/// Counts the lines that it was asked to highlight.
class CountingHighlighter : public CppHighlighter
{
public:
    explicit CountingHighlighter(int &count) : m_count(count) {}
    void process(QTextDocument *document, QTextBlock block, int from, bool invalidate) override
    {
        ++m_count;
        CppHighlighter::process(document, block, from, invalidate);
    }

private:
    int &m_count;
};
/// What of a widget is painted.
class PaintedArea : public QObject
{
public:
    QRegion region;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};
} // namespace

class TestTextLoading : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void firstLinesAreThereAtOnceAndTheRestFollows()
    {
        const LargeFixture f;
        QVERIFY(f.loadedLines() > 500);
        QVERIFY(f.loadedLines() < Lines / 2);
        QCOMPARE(f.document->text()->findBlockByNumber(499).text(), lineText(500));
        QVERIFY(f.document->loading()->percent() > 0 && f.document->loading()->percent() < 50);
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.shown(), numbered());
        QCOMPARE(f.loadedLines(), Lines + 1);
    }

    void loadingAdvancesWhileEventsAreProcessed()
    {
        const LargeFixture f(numbered().repeated(10));
        QList<int> percents;
        QObject::connect(f.document->loading(), &TextLoading::grown, f.document.get(),
                         [&] { percents << f.document->loading()->percent(); });
        const QSignalSpy active(f.document->loading(), &TextLoading::activeChanged);
        QVERIFY(f.waitForEnd());
        QVERIFY(percents.size() >= 2);
        QVERIFY(std::ranges::is_sorted(percents));
        QCOMPARE(percents.last(), 100);
        QCOMPARE(active, (QList<QVariantList>{{false}}));
        QCOMPARE(f.shown(), numbered().repeated(10));
    }

    void printingWhileAFileIsLoadedPrintsTheWholeFile()
    {
        const LargeFixture f;
        const auto print = [&f](const QString &name) {
            const QString path = f.path(name);
            QTimer::singleShot(0, f.view.get(), [path] {
                auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
                if (!dialog)
                    return;
                dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
                dialog->printer()->setOutputFileName(path);
                dialog->done(QDialog::Accepted);
            });
            f.view->print();
            return contents(path).count("/Type /Page\n");
        };
        QVERIFY(f.document->isLoading());
        const qsizetype pages = print(u"loading.pdf"_s);
        QVERIFY(f.waitForEnd());
        QVERIFY(pages > Lines / 100);
        QCOMPARE(pages, print(u"loaded.pdf"_s));
        QCOMPARE(f.shown(), numbered());
    }

    void highlighterThatThrowsDoesNotEndTheLoading()
    {
        class Throwing : public CppHighlighter
        {
        public:
            void process(QTextDocument *document, QTextBlock block, int from, bool invalidate) override
            {
                if (block.text() == lineText(400))
                    throw std::runtime_error("boom");
                CppHighlighter::process(document, block, from, invalidate);
            }
        };
        const LargeFixture f(numbered(), std::make_unique<Throwing>());
        QTest::ignoreMessage(QtWarningMsg, "SyntaxHighlighter::process: an exception has left the plug-in (boom)");
        f.document->ensureProcessed(f.document->text()->findBlockByNumber(450));
        QVERIFY(f.document->isLoading());
        QVERIFY(!f.document->text()->firstBlock().layout()->formats().isEmpty());
        QVERIFY(f.document->text()->findBlockByNumber(450).layout()->formats().isEmpty());
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.shown(), numbered());
        f.putCursor(0, 0);
        QTest::keyClicks(f.edit(), u"x"_s);
        QVERIFY(f.shown().startsWith("xint a1;"));
        QVERIFY(f.document->save());
        QCOMPARE(contents(f.file()), 'x' + numbered());
    }

    void smallerFilesAreLoadedAtOnce_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("loading");
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("at the limit") << QByteArray("1234567\n").repeated(25'000) << false;
        QTest::newRow("above it") << QByteArray("1234567\n").repeated(25'000) + 'x' << true;
        QTest::newRow("one line") << QByteArray(300'000, 'x') << false;
        QTest::newRow("returns only") << QByteArray("1234567\r").repeated(30'000) << false;
    }
    void smallerFilesAreLoadedAtOnce()
    {
        QFETCH(const QByteArray, bytes);
        const EditorFixture f;
        put(f.path(u"a.c"_s), bytes);
        const QSignalSpy active(f.document->loading(), &TextLoading::activeChanged);
        QVERIFY(f.document->open(f.path(u"a.c"_s)));
        QTEST(f.document->isLoading(), "loading");
        QCOMPARE(active.size(), f.document->isLoading() ? 1 : 0);
        QVERIFY(f.document->text()->isUndoRedoEnabled() != f.document->isLoading());
        QVERIFY(QTest::qWaitFor([&] { return !f.document->isLoading(); }, 60'000));
        QCOMPARE(f.text().toUtf8(), QByteArray(bytes).replace('\r', '\n'));
        QVERIFY(!f.document->modified());
        QVERIFY(f.document->text()->isUndoRedoEnabled());
    }

    void loadingIsNoChange()
    {
        const LargeFixture f;
        const QSignalSpy modified(f.document.get(), &Document::documentModified);
        const QSignalSpy undo(f.view.get(), &View::undoAvailable);
        QVERIFY(!f.document->text()->isModified());
        QVERIFY(f.waitForEnd());
        QVERIFY(!f.document->modified());
        QVERIFY(!f.document->text()->isModified());
        QCOMPARE(modified.size(), 0);
        QVERIFY(!undo.contains(QVariantList{true}));
        QVERIFY(!f.document->text()->isUndoAvailable());
        f.view->insert(u"x"_s);
        QVERIFY(f.document->modified());
        QVERIFY(f.document->text()->isUndoAvailable());
        f.view->undo();
        QVERIFY(!f.document->modified());
        QCOMPARE(f.shown(), numbered());
    }

    void textThatIsLoadingCannotBeTyped_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("text");
        QTest::newRow("letter") << int(Qt::Key_X) << u"x"_s;
        QTest::newRow("return") << int(Qt::Key_Return) << u"\r"_s;
        QTest::newRow("enter") << int(Qt::Key_Enter) << u"\r"_s;
        QTest::newRow("tab") << int(Qt::Key_Tab) << u"\t"_s;
        QTest::newRow("back tab") << int(Qt::Key_Backtab) << QString();
        QTest::newRow("delete") << int(Qt::Key_Delete) << u"\x7F"_s;
        QTest::newRow("backspace") << int(Qt::Key_Backspace) << u"\b"_s;
        QTest::newRow("brace") << int(Qt::Key_BraceRight) << u"}"_s;
    }
    void textThatIsLoadingCannotBeTyped()
    {
        QFETCH(const int, key);
        QFETCH(const QString, text);
        const LargeFixture f;
        f.docTemplate.indenter()->setKeepTabs(false);
        f.putCursor(3, 2);
        const auto press = [&] {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
            QCoreApplication::sendEvent(f.edit(), &event);
        };
        QVERIFY(f.edit()->isReadOnly());
        press();
        QVERIFY(f.document->isLoading());
        QVERIFY(f.edit()->hasFocus());
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.shown(), numbered());
        QVERIFY(!f.edit()->isReadOnly());
        f.putCursor(3, 2);
        press();
        QVERIFY(key == Qt::Key_Backtab || f.shown() != numbered());
    }

    void cursorMovesWhileTheTextIsLoading()
    {
        const LargeFixture f;
        f.putCursor(0, 0);
        QTest::keyClick(f.edit(), Qt::Key_Down);
        QTest::keyClick(f.edit(), Qt::Key_Right);
        QCOMPARE(f.selection(), u"1,1"_s);
        QTest::keyClick(f.edit(), Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(f.selection(), u"0,0"_s);
        QTest::keyClick(f.edit(), Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(f.selection(), u"%1,0"_s.arg(Lines));
    }

    void keyThatSelectsAllSelectsWhatIsMissing()
    {
        const LargeFixture f;
        QTest::keySequence(f.edit(), QKeySequence::SelectAll);
        QCOMPARE(f.view->selectedText().toUtf8(), numbered());
    }

    void pagesThatAreMissingAreLoadedForTheCursor()
    {
        const LargeFixture f;
        const int last = f.loadedLines() - 1;
        f.putCursor(last, 0);
        QTest::keyClick(f.edit(), Qt::Key_PageDown);
        QVERIFY(f.document->isLoading() || f.loadedLines() == Lines + 1);
        QVERIFY(f.edit()->textCursor().blockNumber() > last + 5);
    }

    void editCommandsAreOfferedAtTheEnd()
    {
        QGuiApplication::clipboard()->setText(u"text"_s);
        const LargeFixture f;
        f.putCursor(0, 0, 0, 3);
        const QSignalSpy paste(f.view.get(), &View::pasteAvailable);
        const QSignalSpy cut(f.view.get(), &View::cutAvailable);
        QFocusEvent focus(QEvent::FocusIn);
        QCoreApplication::sendEvent(f.edit(), &focus);
        QCOMPARE(paste.last(), QVariantList{false});
        QCOMPARE(cut.last(), QVariantList{false});
        QVERIFY(f.waitForEnd());
        QCOMPARE(paste.last(), QVariantList{true});
        QCOMPARE(cut.last(), QVariantList{true});
    }

    void whoNeedsTheWholeTextGetsIt_data()
    {
        using Use = std::function<void(const LargeFixture &)>;
        QTest::addColumn<Use>("use");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const Use &use, const QByteArray &expected = numbered()) {
            QTest::newRow(name) << use << expected;
        };
        const QByteArray text = numbered();
        const QByteArray withoutFirst = text.sliced(text.indexOf('\n') + 1);
        row("raw text", [](const LargeFixture &f) { QCOMPARE(f.document->rawText().count(u';'), Lines); });
        row("text for test drivers",
            [](const LargeFixture &f) { QCOMPARE(f.edit()->property("text").toString().toUtf8(), numbered()); });
        row("save", [](const LargeFixture &f) {
            put(f.file(), "x");
            QVERIFY(f.document->save());
            QCOMPARE(contents(f.file()), numbered());
        });
        row("save as", [](const LargeFixture &f) {
            QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
            QCOMPARE(contents(f.path(u"b.c"_s)), numbered());
            QVERIFY(!f.document->modified());
        });
        row("format", [](const LargeFixture &f) {
            f.document->changeFileFormat({TextFileFormat::Utf8, false, true});
            QVERIFY(f.document->modified());
            QVERIFY(!f.document->isLoading());
            QVERIFY(f.document->save());
            QCOMPARE(contents(f.file()), numbered("\r\n"));
        });
        row(
            "recover", [](const LargeFixture &f) { f.document->recover(u"other"_s); }, "other");
        row("find", [](const LargeFixture &f) {
            QVERIFY(f.view->find(u"a20000"_s, true, true, true, true));
            QCOMPARE(f.selection(), u"19999,4-19999,10"_s);
        });
        row("find backwards", [](const LargeFixture &f) {
            QVERIFY(f.view->find(u"words"_s, true, true, false, false));
            QCOMPARE(f.edit()->textCursor().blockNumber(), Lines - 1);
        });
        row(
            "replace all",
            [](const LargeFixture &f) { QVERIFY(f.view->replace(u"a20000"_s, u"b"_s, true, true, true, false, true)); },
            QByteArray(text).replace("a20000", "b"));
        row("select all", [](const LargeFixture &f) {
            f.view->selectAll();
            QCOMPARE(f.view->selectedText().toUtf8(), numbered());
        });
        row("copy of all", [](const LargeFixture &f) {
            f.edit()->selectAll();
            f.view->copy();
            QCOMPARE(QGuiApplication::clipboard()->text().toUtf8(), numbered());
        });
        row("to the end", [](const LargeFixture &f) {
            f.view->moveCursor(TextView::MoveEnd, false);
            QCOMPARE(f.selection(), u"20000,0"_s);
        });
        row(
            "insert", [](const LargeFixture &f) { f.view->insertText(u"new "_s); }, "new " + text);
        row(
            "paste",
            [](const LargeFixture &f) {
                QGuiApplication::clipboard()->setText(u"new "_s);
                f.view->paste();
            },
            "new " + text);
        row(
            "cut",
            [](const LargeFixture &f) {
                f.putCursor(0, 0, 1, 0);
                f.view->cut();
            },
            withoutFirst);
        row(
            "delete",
            [](const LargeFixture &f) {
                f.putCursor(0, 0, 1, 0);
                f.view->remove();
            },
            withoutFirst);
        row(
            "comment", [](const LargeFixture &f) { QVERIFY(f.view->commentSelection()); }, "// " + text);
        row("unindent", [](const LargeFixture &f) { QVERIFY(f.view->unindentSelection()); });
        row("indent", [](const LargeFixture &f) { f.view->indentSelection(); });
    }
    void whoNeedsTheWholeTextGetsIt()
    {
        QFETCH(const std::function<void(const LargeFixture &)>, use);
        QFETCH(const QByteArray, expected);
        LargeFixture f;
        f.docTemplate.setLineComment(u"//"_s);
        f.putCursor(0, 0);
        use(f);
        QVERIFY(!f.document->isLoading());
        QCOMPARE(f.shown(), expected);
    }

    void linesBeyondAreReached()
    {
        const LargeFixture f;
        f.view->gotoLine(15'000);
        QVERIFY(f.document->isLoading()); // it waits for this line only
        QCOMPARE(f.selection(), u"14999,0"_s);
        QCOMPARE(f.edit()->textCursor().block().text(), lineText(15'000));
        f.view->gotoLine(1'000'000);
        QCOMPARE(f.selection(), u"20000,0"_s);
        QVERIFY(!f.document->isLoading());
    }

    void markersStayAtTheirLines()
    {
        const LargeFixture f;
        const int last = f.loadedLines(); // empty until the next slice
        const int enabled = TextView::EnabledBreakpointMarker;
        for (const int line : {3, last, 12'345})
            f.view->setMarker(line, enabled, true, false);
        const QString expected = u"3:%3 %1:%3 %2:%3"_s.arg(last).arg(12'345).arg(enabled, 0, 16);
        QVERIFY(f.document->isLoading());
        QCOMPARE(f.markers(), expected);
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.markers(), expected);
        QVERIFY(f.view->hasMarker(last, enabled));
        f.view->setMarker(Lines + 2, enabled, true, false); // not in the text
        QCOMPARE(f.markers(), expected);
    }

    void cursorAndScrollPositionAreKept_data()
    {
        QTest::addColumn<bool>("selects");
        QTest::addColumn<bool>("atEnd");
        QTest::newRow("cursor") << false << false;
        QTest::newRow("selection") << true << false;
        QTest::newRow("cursor at the end of the part") << false << true;
        QTest::newRow("selection up to the end of the part") << true << true;
    }
    void cursorAndScrollPositionAreKept()
    {
        QFETCH(const bool, selects);
        QFETCH(const bool, atEnd);
        const LargeFixture f;
        const int line = atEnd ? f.loadedLines() - 1 : 200;
        f.putCursor(selects ? line - 3 : line, 0, selects ? line : -1, 0);
        f.view->split();
        const QString place = f.selection(0);
        QCOMPARE(f.selection(1), place);
        f.edit(0)->verticalScrollBar()->setValue(100);
        f.edit(1)->verticalScrollBar()->setValue(line - 5);
        const int below = f.edit(1)->verticalScrollBar()->value();
        QVERIFY(f.document->isLoading());
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.selection(0), place);
        QCOMPARE(f.selection(1), place);
        QCOMPARE(f.edit(0)->verticalScrollBar()->value(), 100);
        QCOMPARE(f.edit(1)->verticalScrollBar()->value(), below);
        QVERIFY(f.edit(0)->viewport()->updatesEnabled());
        QVERIFY(f.edit(1)->viewport()->updatesEnabled());
    }

    void selectionFromTheEndOfThePartIsKept()
    {
        const LargeFixture f;
        const int last = f.loadedLines() - 1;
        f.putCursor(last, 0, last - 3, 0);
        const QString place = f.selection();
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.selection(), place);
    }

    void selectionOfAllGrowsWithTheText()
    {
        const LargeFixture f;
        f.edit()->selectAll(); // as the context menu
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.view->selectedText().toUtf8(), numbered());
    }

    /// Others do not repaint the screen.
    void linesThatComeIntoViewArePainted()
    {
        const LargeFixture f((QByteArray(5'000, 'x') + '\n').repeated(60)); // the margin keeps its width
        QVERIFY(f.loadedLines() < 10);
        QCoreApplication::sendPostedEvents();
        PaintedArea painted;
        f.edit()->viewport()->installEventFilter(&painted);
        f.document->wholeText();
        QVERIFY(f.edit()->linesAt(0, f.edit()->viewport()->height()).size() > 15);
        const QRect below(0, f.edit()->viewport()->height() - 50, 10, 10);
        QTRY_VERIFY(painted.region.intersects(below));
    }

    void linesBelowTheScreenDoNotRepaintIt()
    {
        const LargeFixture f;
        f.document->loadTo(f.loadedLines() + 1000); // the margin gets its width
        QCoreApplication::sendPostedEvents();
        PaintedArea painted;
        f.edit()->viewport()->installEventFilter(&painted);
        const int before = f.loadedLines();
        f.document->loadTo(before + 1000);
        QVERIFY(f.loadedLines() > before && f.document->isLoading());
        QCoreApplication::sendPostedEvents();
        QVERIFY(painted.region.isEmpty());
    }

    void panesThatAreNotUpdatedStaySo()
    {
        const LargeFixture f;
        f.view->setUpdatesEnabled(false);
        f.document->wholeText();
        QVERIFY(!f.edit()->viewport()->updatesEnabled());
        f.view->setUpdatesEnabled(true);
        QVERIFY(f.edit()->viewport()->updatesEnabled());
    }

    void allPanesAreReadOnlyUntilTheEnd()
    {
        LargeFixture f;
        f.view->split();
        const std::unique_ptr<View> second(f.docTemplate.createView(f.document.get()));
        TextViewEdit *other = static_cast<TextView *>(second.get())->edits().first();
        for (const TextViewEdit *edit : {f.edit(0), f.edit(1), other})
            QVERIFY(edit->isReadOnly());
        f.document->wholeText();
        for (const TextViewEdit *edit : {f.edit(0), f.edit(1), other})
            QVERIFY(!edit->isReadOnly());
        f.document->wholeText(); // costs nothing
        QCOMPARE(f.shown(), numbered());
    }

    void viewsCanBeClosedWhileTheTextIsLoading()
    {
        LargeFixture f;
        std::unique_ptr<View> second(f.docTemplate.createView(f.document.get()));
        second.reset();
        QVERIFY(f.document->isLoading());
        f.document->loadTo(3'000);
        f.view.reset();
        f.document.reset();
        QCoreApplication::processEvents();
    }

    void fileCanBeOpenedAgainWhileItIsLoading()
    {
        const LargeFixture f;
        put(f.file(), "short\n");
        QVERIFY(f.document->open(f.file()));
        QVERIFY(!f.document->isLoading());
        QVERIFY(!f.edit()->isReadOnly());
        QCoreApplication::processEvents();
        QCOMPARE(f.shown(), QByteArray("short\n"));
        put(f.file(), numbered("\r\n"));
        QVERIFY(f.document->open(f.file()));
        QVERIFY(f.edit()->isReadOnly());
        put(f.file(), numbered());
        QVERIFY(f.document->open(f.file())); // the former text is not continued
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.shown(), numbered());
        QVERIFY(!f.document->fileFormat().crlf);
    }

    void fileMayChangeWhileItIsLoading()
    {
        const LargeFixture f;
        put(f.file(), "changed\n");
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.shown(), numbered());
    }

    void bytesAreTheSameAfterASave_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("saved");
        const auto row = [](const char *name, const QByteArray &bytes, const QByteArray &saved = {}) {
            QTest::newRow(name) << bytes << (saved.isNull() ? bytes : saved);
        };
        const QByteArray mark = "\xEF\xBB\xBF";
        row("plain", numbered());
        row("without a last line end", numbered() + "end");
        row("CRLF", numbered("\r\n"));
        row("mark and CRLF", mark + numbered("\r\n"));
        row("mixed", numbered() + "a\r\nb\rc\n" + numbered("\r\n"), numbered() + "a\nb\nc\n" + numbered());
        row("empty lines", QByteArray(300'000, '\n'));
        row("several bytes for a character", QByteArray("\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80\n").repeated(30'000));
        row("a mark at the start of each line", QByteArray(mark + "x\n").repeated(60'000));
        row("Latin-1", QByteArray("\xE9\xFF caf\xE9\n").repeated(40'000));
        row("Latin-1 at the end only", numbered() + "\xE9");
        row("Latin-1 with CRLF", QByteArray("\xE9\xFF caf\xE9\r\n").repeated(40'000));
        row("null characters", QByteArray("a\0b\n", 4).repeated(80'000));
        row("stand-ins at the end", numbered() + "\xE2\x80\xA9 \xEF\xB7\x90 \xEF\xB7\x91\n");
        row("stand-ins at the start, others at the end",
            "\xEF\xB7\x91 \xE2\x80\xA9\n" + numbered() + "\xEF\xB7\x92 \xEF\xB7\x93\n");
        row("line separators", QByteArray("a\xE2\x80\xA8z\n").repeated(50'000));
        const QByteArray utf16 = QByteArray("a\0=\xD8\0\xDE\n\0", 8).repeated(40'000); // U+1F600
        row("UTF-16", "\xFF\xFE" + utf16);
        row("UTF-16 with CRLF", "\xFF\xFE" + QByteArray("=\xD8\0\xDE\r\0\n\0", 8).repeated(40'000));
    }
    void bytesAreTheSameAfterASave()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, saved);
        const LargeFixture f(bytes);
        QVERIFY(f.waitForEnd());
        StandIns standIns;
        DecodedText whole = decodeText(bytes);
        standIns.putInto(whole.text);
        QCOMPARE(f.document->rawText().replace(QChar::ParagraphSeparator, u'\n'), whole.text);
        QVERIFY(f.document->fileFormat() == whole.format);
        QVERIFY(f.document->save());
        QVERIFY(contents(f.file()) == saved);
    }

    void placeOfAViewIsRestoredBeyondTheFirstLines()
    {
        const LargeFixture f;
        restorePlace(f.view.get(), {{{200, 9'000, 3, 8'995}, {200, 2, 1, 1}}, 1});
        QVERIFY(f.document->isLoading()); // it waits for these lines only
        QCOMPARE(f.selection(0), u"9000,3"_s);
        QCOMPARE(f.edit(0)->verticalScrollBar()->value(), 8'995);
        QCOMPARE(f.selection(1), u"2,1"_s);
        QVERIFY(f.waitForEnd());
        QCOMPARE(f.selection(0), u"9000,3"_s);
        QCOMPARE(f.edit(0)->verticalScrollBar()->value(), 8'995);
    }

    /// Who shows whether a text is modified must not show it for a moment.
    void readingAgainReportsNoModification()
    {
        const LargeFixture f;
        QVERIFY(f.waitForEnd());
        const QSignalSpy modified(f.document.get(), &Document::documentModified);
        QVERIFY(f.document->open(f.file()));
        QVERIFY(f.document->isLoading());
        QVERIFY(f.waitForEnd());
        QVERIFY(!modified.contains(QVariantList{true}));
    }

    void noCopyIsWrittenUntilTheTextIsChanged()
    {
        LargeFixture f;
        const QString state = f.path(u"state"_s);
        SwapFile swap(state, f.document.get());
        QVERIFY(f.waitForEnd());
        swap.flush();
        QVERIFY(recoverableTexts(state).isEmpty());
        QVERIFY(QDir(state).entryList({u"*.swap"_s}, QDir::Files).isEmpty());
        f.view->insert(u"x"_s);
        swap.flush();
        QCOMPARE(QDir(state).entryList({u"*.swap"_s}, QDir::Files).size(), 1);
    }

    void onlyShownLinesAreHighlighted()
    {
        int count = 0;
        const LargeFixture f(numbered(), std::make_unique<CountingHighlighter>(count));
        f.document->wholeText();
        QVERIFY(count < 1'000);
        f.document->ensureProcessed(f.document->text()->lastBlock());
        QVERIFY(count > Lines);
    }

    void partnerOfABracketMayCome()
    {
        const LargeFixture f("{\n" + numbered() + "}\n");
        f.putCursor(0, 0);
        QVERIFY(f.document->bracketMatch().isNull());
        QVERIFY(f.waitForEnd());
        QTRY_VERIFY(!f.document->bracketMatch().isNull());
        QCOMPARE(f.document->text()->findBlock(f.document->bracketMatch().selectionEnd()).blockNumber(), Lines + 1);
    }

    void bracketMatchStaysWhileTheTextIsLoading()
    {
        const LargeFixture f("{ }\n" + numbered());
        f.putCursor(0, 0);
        QVERIFY(!f.document->bracketMatch().isNull());
        f.document->loadTo(10'000);
        QVERIFY(f.document->isLoading());
        QVERIFY(!f.document->bracketMatch().isNull());
    }
};

QTEST_MAIN(TestTextLoading)
#include "tst_textloading.moc"

#include "cpphighlighter.h"
#include "highlightdriver.h"
#include "lineranges.h"
#include "painted.h"
#include <QAbstractEventDispatcher>
#include <QAbstractTextDocumentLayout>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {
// Counts the lines that it runs.
class CountingHighlighter : public CppHighlighter
{
public:
    using CppHighlighter::CppHighlighter;

    void process(QTextDocument *document, QTextBlock block, int start, bool invalidate) override
    {
        ++runs;
        CppHighlighter::process(document, block, start, invalidate);
    }

    int takeRuns() { return std::exchange(runs, 0); }

    int runs = 0;
};

struct Editor
{
    explicit Editor(const QString &text = {})
        : document(plainDocument(text)), driver(std::make_unique<HighlightDriver>(document.get(), &highlighter))
    {}

    [[nodiscard]] QTextBlock block(int number) const { return document->findBlockByNumber(number); }

    void format(int first, int last) const { driver->ensureFormatted({first, last}); }
    void format(int line) const { format(line, line); }
    void formatAll() const
    {
        driver->ensureProcessed(document->lastBlock()); // without the delay after a key
        format(0, document->blockCount() - 1);
    }
    [[nodiscard]] bool hasFormats(int line) const { return !block(line).layout()->formats().isEmpty(); }

    void finish()
    {
        formatAll();
        highlighter.runs = 0;
    }

    void replace(int position, int length, const QString &text) const
    {
        QTextCursor cursor(document.get());
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        cursor.insertText(text);
    }

    FormatTable formats = readableFormats();
    CountingHighlighter highlighter{&formats};
    std::unique_ptr<QTextDocument> document;
    std::unique_ptr<HighlightDriver> driver;
};

QString paintedFromScratch(const QString &text, SyntaxHighlighter &highlighter)
{
    const auto document = plainDocument(text);
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next())
        highlighter.process(document.get(), block, 0);
    return painted(*document);
}

QString lines(int count)
{
    return u"int x;\n"_s.repeated(count);
}
} // namespace

class tst_HighlightDriver : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void removedLinesLeaveTheOthers()
    {
        LineRanges ranges;
        ranges.add({2, 9});
        ranges.remove({5, 4}); // nothing
        QVERIFY(ranges.contains({2, 9}));
        ranges.remove({8, 20});
        QVERIFY(ranges.contains({2, 7}));
        QCOMPARE(ranges.ranges().size(), 1);
        ranges.remove({4, 5});
        QVERIFY(ranges.contains({2, 3}) && ranges.contains({6, 7}) && !ranges.contains({3, 4}));
        QCOMPARE(ranges.count(), 4);
        QList<int> taken;
        while (!ranges.isEmpty())
            taken += ranges.takeFirst();
        QCOMPARE(taken, QList({2, 3, 6, 7}));
    }

    void rangesFollowTheirLines_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("oldLast");
        QTest::addColumn<int>("inserted");
        QTest::addColumn<QList<int>>("lines"); ///< of 4 to 6 and 10 to 12
        QTest::newRow("above") << 1 << 1 << 2 << QList({6, 7, 8, 12, 13, 14});
        QTest::newRow("below") << 20 << 20 << 2 << QList({4, 5, 6, 10, 11, 12});
        QTest::newRow("between") << 8 << 8 << 2 << QList({4, 5, 6, 12, 13, 14});
        QTest::newRow("line of a range") << 5 << 5 << 1 << QList({4, 5, 6, 7, 11, 12, 13});
        QTest::newRow("last line") << 6 << 6 << 2 << QList({4, 5, 6, 7, 8, 12, 13, 14});
        QTest::newRow("end of one to start of the other") << 6 << 10 << -3 << QList({4, 5, 6, 7, 8, 9});
        QTest::newRow("removed lines above") << 1 << 3 << -2 << QList({2, 3, 4, 8, 9, 10});
    }
    void rangesFollowTheirLines()
    {
        QFETCH(const int, first);
        QFETCH(const int, oldLast);
        QFETCH(const int, inserted);
        LineRanges ranges;
        ranges.add({4, 6});
        ranges.add({10, 12});
        ranges.replaceLines(first, oldLast, inserted);
        QList<int> lines;
        while (!ranges.isEmpty())
            lines += ranges.takeFirst();
        QTEST(lines, "lines");
    }

    void rangesThatBecomeOneAreRunOnce()
    {
        LineRanges ranges;
        ranges.add({4, 6});
        ranges.add({10, 12});
        ranges.add({20, 20});
        ranges.replaceLines(3, 13, -9);
        QList<int> lines;
        while (!ranges.isEmpty())
            lines += ranges.takeFirst();
        QCOMPARE(lines, QList({3, 4, 11}));
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void changedLineIsHighlightedAtOnce();
    void onlyTheFirstScreenOfAPasteIsHighlightedAtOnce();
    void linesAreHighlightedDownToTheRequestedOne();
    void restIsHighlightedWhenIdle();
    void idleRunsAreShort();
    void restIsNotHighlightedDuringTyping_data();
    void restIsNotHighlightedDuringTyping();
    void invisibleLinesCauseNoUpdate();
    void typingRunsOneLineAtAnyPlace();
    void openedCommentMarksOnlyTheNextLine();
    void visibleLinesBelowAKeyFollowALittleLater();
    void linesBelowAreNotDelayedForNewFormatsOrPlaces();
    void closedCommentStopsAtAnUnchangedState();
    void returnRunsAFewLines();
    void joiningLinesRunsTheLineAfter();
    void lineEndsFarBehindInALongLineAreHeeded();
    void onlyTheStartOfALongLineIsRunAgainUnlessAllOfItIsRead();
    void changeBelowDueLinesIsRunAfterThem();
    void dueLinesMoveWithTheText_data();
    void dueLinesMoveWithTheText();
    void changedFormatsHighlightEveryLineAgain();
    void oneHighlighterServesManyDocuments();
    void highlightingDoesNotModifyTheDocument();
    void undoIsHighlighted();
    void onlyLinesNearTheScreenHaveFormats();
    void twoPlacesOfOneTextHaveFormats();
    void pastedLinesFarFromTheScreenGetNoFormats();
    void changedLinesFarFromTheScreenGetTheirFormatsWhenShown();
    void linesOfALongChangeKeepNoOldFormats();
    void formatsThatAreRemovedCauseNoUpdate();
    void exceptionLeavesTheRestPlainUntilTheFormatsChange();
    void driverMayBeDeletedBeforeItsDocument();
    void randomEditsGiveTheResultOfACompleteRun_data();
    void randomEditsGiveTheResultOfACompleteRun();
};

void tst_HighlightDriver::changedLineIsHighlightedAtOnce()
{
    const Editor editor(u"x\nint"_s);
    editor.formatAll();
    editor.replace(0, 1, u"return 1;"_s);
    QCOMPARE(painted(editor.block(0)), u"666666131"_s);
    QCOMPARE(painted(editor.block(1)), u"666"_s);
}

void tst_HighlightDriver::onlyTheFirstScreenOfAPasteIsHighlightedAtOnce()
{
    Editor editor;
    editor.finish();
    editor.replace(0, 0, lines(50));
    QVERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    editor.finish();
    editor.replace(0, 0, lines(5000));
    QVERIFY(editor.highlighter.takeRuns() <= 200);
    QVERIFY(editor.driver->isProcessed(editor.block(60)));
    QVERIFY(!editor.driver->isProcessed(editor.block(4000)));
}

void tst_HighlightDriver::linesAreHighlightedDownToTheRequestedOne()
{
    Editor editor(lines(1000));
    QVERIFY(!editor.driver->isProcessed(editor.block(0)));
    editor.format(0, 9);
    QCOMPARE(editor.highlighter.takeRuns(), 10);
    QCOMPARE(painted(editor.block(9)), u"666111"_s);
    QVERIFY(editor.driver->isProcessed(editor.block(9)));
    QVERIFY(!editor.driver->isProcessed(editor.block(10)));
    editor.driver->ensureProcessed(editor.block(9));
    QCOMPARE(editor.highlighter.takeRuns(), 0);
}

void tst_HighlightDriver::restIsHighlightedWhenIdle()
{
    Editor editor(lines(5000));
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    QCOMPARE(editor.highlighter.takeRuns(), 5001);
    editor.replace(0, 0, u"/*"_s);
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    editor.format(4999);
    QCOMPARE(painted(editor.block(4999)), u"222222"_s);
    QCOMPARE(editor.document->lastBlock().userState(), 4);
}

void tst_HighlightDriver::idleRunsAreShort()
{
    Editor editor(lines(300'000));
    QTRY_VERIFY(editor.highlighter.runs > 0);
    QVERIFY(!editor.driver->isProcessed(editor.document->lastBlock()));
}

void tst_HighlightDriver::restIsNotHighlightedDuringTyping_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("position");
    QTest::newRow("short line") << u"int x;"_s << 0;
    QTest::newRow("behind the start of a long line") << QString(15'000, u'x') << 14'000;
}

void tst_HighlightDriver::restIsNotHighlightedDuringTyping()
{
    QFETCH(const QString, line);
    QFETCH(const int, position);
    const Editor editor(line + u'\n' + lines(5000));
    const auto interval = [&editor] {
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(editor.driver.get());
        return timers.isEmpty() ? -1 : timers.first().interval;
    };
    QCOMPARE(interval(), 0);
    editor.replace(position, 0, u"a"_s);
    QVERIFY(interval() > 0);
    QTRY_COMPARE(interval(), -1);
    QVERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
}

void tst_HighlightDriver::invisibleLinesCauseNoUpdate()
{
    const Editor editor(lines(3));
    QAbstractTextDocumentLayout *layout = editor.document->documentLayout();
    layout->blockBoundingRect(editor.block(0));
    const QSignalSpy lineUpdates(layout, &QAbstractTextDocumentLayout::updateBlock);
    const QSignalSpy updates(layout, &QAbstractTextDocumentLayout::update);
    editor.formatAll();
    QCOMPARE(lineUpdates.size() + updates.size(), 1);
}

void tst_HighlightDriver::typingRunsOneLineAtAnyPlace()
{
    Editor editor(lines(10'000));
    for (const int line : {0, 5000, 9999}) {
        editor.finish();
        editor.replace(editor.block(line).position(), 0, u"a"_s);
        QVERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
        QCOMPARE(editor.highlighter.takeRuns(), 1);
    }
}

void tst_HighlightDriver::openedCommentMarksOnlyTheNextLine()
{
    Editor editor(lines(10'000));
    editor.finish();
    editor.replace(0, 0, u"/*"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 1);
    QCOMPARE(painted(editor.block(0)), u"22222222"_s);
    QCOMPARE(editor.block(1).userState(), -1);
    QVERIFY(!editor.driver->isProcessed(editor.block(1)));
    QVERIFY(!editor.driver->isProcessed(editor.document->lastBlock()));
    editor.driver->ensureProcessed(editor.block(30));
    QCOMPARE(editor.highlighter.takeRuns(), 30);
    QCOMPARE(painted(editor.block(30)), u"222222"_s);
    QCOMPARE(painted(editor.block(31)), u"666111"_s);
}

void tst_HighlightDriver::visibleLinesBelowAKeyFollowALittleLater()
{
    Editor editor(lines(100));
    editor.finish();
    editor.replace(0, 0, u"/*"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 1);
    editor.format(0, 30); // as a pane that paints the key
    QCOMPARE(editor.highlighter.takeRuns(), 0);
    QCOMPARE(painted(editor.block(0)), u"22222222"_s);
    QCOMPARE(painted(editor.block(30)), u"666111"_s);
    editor.format(0, 20); // another pane
    editor.replace(0, 0, u" "_s);
    QCOMPARE(editor.highlighter.takeRuns(), 1);
    QTRY_COMPARE(painted(editor.block(30)), u"222222"_s);
    editor.format(0, 40); // the delay is over
    QCOMPARE(painted(editor.block(40)), u"222222"_s);
}

void tst_HighlightDriver::linesBelowAreNotDelayedForNewFormatsOrPlaces()
{
    Editor editor(lines(100));
    editor.format(0, 20);
    editor.highlighter.takeRuns();
    editor.replace(0, 0, u"/*"_s);
    editor.format(30, 40); // scrolled to lines without formats
    QCOMPARE(painted(editor.block(10)), u"222222"_s);
    QCOMPARE(painted(editor.block(35)), u"222222"_s);

    editor.replace(0, 2, {});
    editor.driver->rehighlight();
    editor.format(0, 20);
    QCOMPARE(painted(editor.block(20)), u"666111"_s);

    editor.replace(0, 0, u"/*\n"_s); // several lines: no key
    editor.format(0, 20);
    QCOMPARE(painted(editor.block(20)), u"222222"_s);
}

void tst_HighlightDriver::closedCommentStopsAtAnUnchangedState()
{
    Editor editor(lines(10'000));
    editor.finish();
    editor.replace(0, 0, u"/*"_s);
    editor.driver->ensureProcessed(editor.block(30));
    editor.replace(2, 0, u"*/"_s);
    QVERIFY(!editor.driver->isProcessed(editor.document->lastBlock()));
    editor.driver->ensureProcessed(editor.document->lastBlock());
    QVERIFY(editor.highlighter.takeRuns() < 100);
    editor.formatAll();
    QCOMPARE(painted(*editor.document), paintedFromScratch(editor.document->toPlainText(), editor.highlighter));
}

void tst_HighlightDriver::returnRunsAFewLines()
{
    Editor editor(lines(10'000));
    editor.finish();
    editor.replace(3, 0, u"\n"_s);
    editor.driver->ensureProcessed(editor.document->lastBlock());
    QVERIFY(editor.highlighter.takeRuns() <= 4);
}

void tst_HighlightDriver::joiningLinesRunsTheLineAfter()
{
    Editor editor(u"/* a\n*/\nint b;"_s);
    editor.finish();
    editor.replace(4, 3, {}); // the first line keeps its text and its end state
    editor.formatAll();
    QCOMPARE(painted(editor.block(1)), u"222222"_s);
}

void tst_HighlightDriver::lineEndsFarBehindInALongLineAreHeeded()
{
    const QString longLine = u"int x; "_s.repeated(2000);
    const Editor replaced(longLine + u"\nint y;\nint z;"_s);
    replaced.formatAll();
    replaced.replace(12'000, 2004, u"\n/*"_s); // one line end for another
    replaced.formatAll();
    QCOMPARE(painted(replaced.block(1)), u"22222"_s);
    QCOMPARE(painted(replaced.block(2)), u"222222"_s);
    const Editor joined(longLine + u"\n/* y\nint z;"_s);
    joined.formatAll();
    joined.replace(14'000, 1, {});
    joined.formatAll();
    QCOMPARE(painted(joined.block(1)), u"666111"_s);
}

void tst_HighlightDriver::onlyTheStartOfALongLineIsRunAgainUnlessAllOfItIsRead()
{
    class WholeLines : public CountingHighlighter
    {
    public:
        using CountingHighlighter::CountingHighlighter;
        [[nodiscard]] bool readsStartsOnly() const override { return false; }
    };
    Editor editor(QString(15'000, u'x'));
    WholeLines whole(&editor.formats);
    HighlightDriver driver(editor.document.get(), &whole);
    editor.finish();
    driver.ensureFormatted({0, 0});
    whole.runs = 0;
    editor.replace(14'000, 0, u"a"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 0);
    QCOMPARE(whole.takeRuns(), 1);
    editor.replace(100, 0, u"a"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 1);
}

void tst_HighlightDriver::changeBelowDueLinesIsRunAfterThem()
{
    Editor editor(lines(10'000));
    editor.replace(editor.block(9000).position(), 0, u"a"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 0);
    editor.format(9000);
    QCOMPARE(painted(editor.block(9000)), u"1111111"_s);
}

void tst_HighlightDriver::dueLinesMoveWithTheText_data()
{
    QTest::addColumn<int>("removed");
    QTest::addColumn<QString>("inserted");
    QTest::newRow("lines inserted above") << 0 << lines(10);
    QTest::newRow("lines removed above") << int(lines(10).size()) << QString();
}

void tst_HighlightDriver::dueLinesMoveWithTheText()
{
    QFETCH(int, removed);
    QFETCH(QString, inserted);
    Editor editor(lines(1000));
    editor.finish();
    editor.replace(editor.block(500).position(), 0, u"/*"_s);
    editor.replace(0, removed, inserted);
    editor.driver->ensureProcessed(editor.document->lastBlock());
    QVERIFY(editor.highlighter.takeRuns() < 530);
    editor.formatAll();
    QCOMPARE(painted(*editor.document), paintedFromScratch(editor.document->toPlainText(), editor.highlighter));
}

void tst_HighlightDriver::changedFormatsHighlightEveryLineAgain()
{
    Editor editor(u"int\nint"_s);
    editor.finish();
    editor.formats[FormatId::Keyword] = editor.formats[FormatId::Label];
    editor.driver->rehighlight();
    QCOMPARE(painted(editor.block(1)), u"666"_s);
    QTRY_COMPARE(painted(editor.block(1)), u"888"_s);
}

void tst_HighlightDriver::oneHighlighterServesManyDocuments()
{
    Editor editor(u"/* a"_s);
    const auto other = plainDocument(u"int"_s);
    HighlightDriver driver(other.get(), &editor.highlighter);
    editor.formatAll();
    driver.ensureFormatted({0, 0});
    editor.replace(4, 0, u"\nb"_s);
    QTextCursor(other.get()).insertText(u"x"_s);
    QCOMPARE(painted(editor.block(1)), u"2"_s);
    QCOMPARE(painted(other->lastBlock()), u"1111"_s);
}

void tst_HighlightDriver::highlightingDoesNotModifyTheDocument()
{
    Editor editor(lines(300));
    editor.document->setModified(false);
    QSignalSpy changes(editor.document.get(), &QTextDocument::contentsChange);
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    QCOMPARE(changes.count(), 0);
    QVERIFY(!editor.document->isModified());
    QVERIFY(!editor.document->isUndoAvailable());

    editor.replace(0, 0, u"/"_s);
    QCOMPARE(changes.takeFirst(), (QVariantList{0, 0, 1}));
    editor.finish();
    editor.replace(1, 0, u"*"_s);
    QCOMPARE(changes.takeFirst(), (QVariantList{1, 0, 1}));
    editor.finish();
    QVERIFY(changes.isEmpty());
}

void tst_HighlightDriver::undoIsHighlighted()
{
    Editor editor(lines(3));
    editor.finish();
    const QString before = painted(*editor.document);
    editor.replace(0, 15, u"/*"_s);
    editor.finish();
    QVERIFY(painted(*editor.document) != before);
    editor.document->undo();
    editor.finish();
    QCOMPARE(painted(*editor.document), before);
}

void tst_HighlightDriver::onlyLinesNearTheScreenHaveFormats()
{
    const Editor editor(lines(5000));
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    for (const int first : {0, 1000, 2000, 3000, 4000}) {
        for (int page = 0; page < 20; ++page)
            editor.format(first + page * 50, first + page * 50 + 49);
    }
    QVERIFY(editor.hasFormats(4999));
    QVERIFY(editor.hasFormats(4900));
    int formatted = 0;
    for (int line = 0; line < 5000; ++line)
        formatted += editor.hasFormats(line) ? 1 : 0;
    QVERIFY(formatted <= 1100);
    QVERIFY(!editor.hasFormats(0));
    QCOMPARE(stateAndBrackets(editor.block(0)), u"0"_s);
    editor.format(0, 49);
    QCOMPARE(painted(editor.block(49)), u"666111"_s);
}

void tst_HighlightDriver::twoPlacesOfOneTextHaveFormats()
{
    Editor editor(lines(5000));
    editor.format(0, 49);
    editor.format(4000, 4049);
    editor.highlighter.runs = 0;
    editor.format(0, 49);
    editor.format(4000, 4049);
    QCOMPARE(editor.highlighter.takeRuns(), 0);
    QVERIFY(editor.hasFormats(0) && editor.hasFormats(4049));
}

void tst_HighlightDriver::pastedLinesFarFromTheScreenGetNoFormats()
{
    const Editor editor(lines(50));
    editor.format(0, 50);
    editor.replace(0, 0, lines(5000));
    QVERIFY(editor.hasFormats(0));
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    QVERIFY(!editor.hasFormats(2000));
    editor.format(2000, 2050);
    QCOMPARE(painted(editor.block(2000)), u"666111"_s);
}

void tst_HighlightDriver::changedLinesFarFromTheScreenGetTheirFormatsWhenShown()
{
    const Editor editor(lines(5000));
    editor.format(0, 49);
    QTRY_VERIFY(editor.driver->isProcessed(editor.document->lastBlock()));
    editor.replace(editor.block(3000).position(), 0, u"/*"_s);
    QVERIFY(!editor.hasFormats(3000));
    editor.format(3000, 3010);
    QCOMPARE(painted(editor.block(3000)), u"22222222"_s);
    QCOMPARE(painted(editor.block(3010)), u"222222"_s);
}

void tst_HighlightDriver::linesOfALongChangeKeepNoOldFormats()
{
    const Editor editor(lines(300));
    editor.formatAll();
    QTextCursor cursor(editor.document.get());
    cursor.beginEditBlock();
    for (int line = 0; line < 300; ++line) {
        cursor.setPosition(editor.block(line).position());
        cursor.insertText(u"x"_s);
    }
    cursor.endEditBlock();
    QVERIFY(editor.hasFormats(0));
    editor.driver->ensureProcessed(editor.document->lastBlock());
    QVERIFY(!editor.hasFormats(250));
    editor.formatAll();
    QCOMPARE(painted(editor.block(250)), u"1111111"_s);
}

void tst_HighlightDriver::formatsThatAreRemovedCauseNoUpdate()
{
    const Editor editor(lines(5000));
    QAbstractTextDocumentLayout *layout = editor.document->documentLayout();
    editor.format(0, 900);
    for (int line = 0; line < 50; ++line)
        layout->blockBoundingRect(editor.block(line));
    const QSignalSpy lineUpdates(layout, &QAbstractTextDocumentLayout::updateBlock);
    const QSignalSpy updates(layout, &QAbstractTextDocumentLayout::update);
    QSignalSpy changes(editor.document.get(), &QTextDocument::contentsChange);
    editor.format(4000, 4150);
    QVERIFY(!editor.hasFormats(0));
    QCOMPARE(lineUpdates.size() + updates.size(), 0);
    editor.replace(0, 0, u"x"_s); // the removal is no part of later changes
    QCOMPARE(changes.takeFirst(), (QVariantList{0, 0, 1}));
    QVERIFY(changes.isEmpty());
}

void tst_HighlightDriver::exceptionLeavesTheRestPlainUntilTheFormatsChange()
{
    class Throwing : public CppHighlighter
    {
    public:
        using CppHighlighter::CppHighlighter;
        void process(QTextDocument *document, QTextBlock block, int start, bool invalidate) override
        {
            CppHighlighter::process(document, block, start, invalidate);
            if (block.text() == "bad"_L1)
                throw std::runtime_error("boom");
        }
    };
    const FormatTable formats = readableFormats();
    Throwing highlighter(&formats);
    const auto document = plainDocument(u"int\nbad\nint\nbad"_s);
    HighlightDriver driver(document.get(), &highlighter);
    const char *message = "SyntaxHighlighter::process: an exception has left the plug-in (boom)";
    QTest::ignoreMessage(QtWarningMsg, message); // once for the document
    driver.ensureFormatted({0, 3});
    QCOMPARE(painted(document->firstBlock()), u"666"_s);
    for (int line = 1; line < 4; ++line) {
        QVERIFY(document->findBlockByNumber(line).layout()->formats().isEmpty());
        QCOMPARE(document->findBlockByNumber(line).userState(), 0);
    }
    QTest::ignoreMessage(QtWarningMsg, message);
    driver.rehighlight();
    driver.ensureProcessed(document->lastBlock());
}

void tst_HighlightDriver::driverMayBeDeletedBeforeItsDocument()
{
    Editor editor(lines(3));
    editor.driver.reset();
    editor.replace(0, 0, u"x"_s);
    QCOMPARE(editor.highlighter.takeRuns(), 0);
}

void tst_HighlightDriver::randomEditsGiveTheResultOfACompleteRun_data()
{
    QTest::addColumn<int>("seed");
    for (const int seed : {1, 2, 3, 4, 5, 6})
        QTest::addRow("seed %d", seed) << seed;
}

void tst_HighlightDriver::randomEditsGiveTheResultOfACompleteRun()
{
    static const QStringList pieces{u"/*"_s,   u"*/"_s,   u"\n"_s,      u"\""_s,   u"'"_s,   u"//"_s,   u"#"_s,
                                    u"\\"_s,   u"("_s,    u"]"_s,       u"int "_s, u"x: "_s, u"1"_s,    u"\n\n"_s,
                                    u"/*\n"_s, u"*/\n"_s, u"a\nb\nc"_s, u"*"_s,    u"/"_s,   lines(150)};
    QFETCH(int, seed);
    QRandomGenerator random(seed);
    Editor editor(lines(20));
    for (int edit = 0; edit < 2000; ++edit) {
        const int length = editor.document->characterCount() - 1;
        const int most = length > 3000 ? 400 : 12; // so that the text stays small
        QTextCursor several(editor.document.get());
        const bool together = random.bounded(8) == 0;
        if (together)
            several.beginEditBlock();
        for (int i = 0; i < (together ? 3 : 1); ++i) {
            const int size = editor.document->characterCount() - 1;
            const int position = random.bounded(size + 1);
            const int removed = random.bounded(3) > 0 ? 0 : std::min(random.bounded(most), size - position);
            editor.replace(position, removed,
                           random.bounded(3) == 0 ? QString() : pieces[random.bounded(pieces.size())]);
        }
        if (together)
            several.endEditBlock();
        switch (random.bounded(10)) {
        case 0:
            editor.document->undo();
            break;
        case 1:
            editor.document->redo();
            break;
        case 2:
            editor.driver->ensureProcessed(editor.block(random.bounded(editor.document->blockCount())));
            break;
        case 4: {
            const int first = random.bounded(editor.document->blockCount());
            editor.format(first, std::min(first + random.bounded(40), editor.document->blockCount() - 1));
            break;
        }
        case 3:
            QCoreApplication::processEvents();
            break;
        default:
            break;
        }
        if (edit % 50 == 0 || edit == 1999) {
            editor.formatAll();
            QCOMPARE(painted(*editor.document), paintedFromScratch(editor.document->toPlainText(), editor.highlighter));
        }
    }
}

QTEST_MAIN(tst_HighlightDriver)
#include "tst_highlightdriver.moc"

#include "outputpage.h"
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
using namespace Qt::StringLiterals;

/// A window that receives the key events that its child ignores.
class Surroundings : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

class TestOutputPage : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Surroundings> m_surroundings;
    OutputPage *m_page = nullptr;

    void show() const
    {
        m_page->resize(400, 200);
        m_surroundings->resize(400, 200);
        m_surroundings->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_surroundings.get()));
    }
    void output(const QStringList &texts) const
    {
        for (const QString &text : texts)
            m_page->outputLine(text);
    }
    QPoint pointInLine(int line) const
    {
        return m_page->cursorRect(QTextCursor(m_page->document()->findBlockByNumber(line))).center();
    }
    void press(int line, Qt::MouseButton button) const
    {
        QTest::mousePress(m_page->viewport(), button, Qt::NoModifier, pointInLine(line));
        QTest::mouseRelease(m_page->viewport(), button, Qt::NoModifier, pointInLine(line));
    }
    QString currentPlace() const
    {
        QString file;
        int line = -1;
        return m_page->lookup(file, line) ? u"%1, %2"_s.arg(file).arg(line) : u"-"_s;
    }
    bool atEnd() const
    {
        return m_page->verticalScrollBar()->maximum() > 0
               && m_page->verticalScrollBar()->value() == m_page->verticalScrollBar()->maximum();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_surroundings = std::make_unique<Surroundings>();
        m_page = new OutputPage(m_surroundings.get());
    }

    void pageIsAPlainReadOnlyPane()
    {
        QCOMPARE(m_page->frameShape(), QFrame::NoFrame);
        QCOMPARE(m_page->lineWrapMode(), QPlainTextEdit::NoWrap);
        QVERIFY(!m_page->isUndoRedoEnabled());
        QVERIFY(!m_page->acceptDrops());
        QVERIFY(!m_page->viewport()->acceptDrops());
    }

    // Output

    void linesAreShown_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a line") << QStringList{u"a\n"_s} << u"a"_s;
        QTest::newRow("lines") << QStringList{u"a\n"_s, u"b\n"_s} << u"a\nb"_s;
        QTest::newRow("pieces build up a line") << QStringList{u"ab"_s, u"c\n"_s, u"d\n"_s} << u"abc\nd"_s;
        QTest::newRow("a piece after a line starts the next") << QStringList{u"a\n"_s, u"b"_s} << u"a\nb"_s;
        QTest::newRow("an empty line between lines") << QStringList{u"a\n"_s, u"\n"_s, u"b\n"_s} << u"a\n\nb"_s;
        QTest::newRow("two empty lines") << QStringList{u"a\n"_s, u"\n"_s, u"\n"_s, u"b\n"_s} << u"a\n\n\nb"_s;
        QTest::newRow("an empty line alone is inserted") << QStringList{u"\n"_s} << u"\n"_s;
        QTest::newRow("a line end ends pieces") << QStringList{u"a"_s, u"\n"_s, u"b\n"_s} << u"a\nb"_s;
        QTest::newRow("pieces, then an empty line") << QStringList{u"a"_s, u"\n"_s, u"\n"_s, u"b\n"_s} << u"a\n\nb"_s;
        QTest::newRow("several lines at once") << QStringList{u"a\nb\n"_s, u"c\n"_s} << u"a\nb\nc"_s;
        QTest::newRow("several lines, the last open") << QStringList{u"a\nb"_s, u"c\n"_s, u"d\n"_s} << u"a\nbc\nd"_s;
        QTest::newRow("nothing") << QStringList{u"a\n"_s, u""_s, u"b\n"_s, u"c\n"_s} << u"a\nb\nc"_s;
        QTest::newRow("line ends of another system") << QStringList{u"a\r\n"_s, u"b\r\n"_s} << u"a\nb"_s;
        QTest::newRow("markup is text") << QStringList{u"<b>a</b>\n"_s, u"<i>"_s} << u"<b>a</b>\n<i>"_s;
    }
    void linesAreShown()
    {
        QFETCH(QStringList, texts);
        QFETCH(QString, shown);
        output(texts);
        QCOMPARE(m_page->toPlainText(), shown);
        QCoreApplication::processEvents();
        QCOMPARE(m_page->toPlainText(), shown);
    }

    void clearedPageStartsAgain()
    {
        output({u"a\n"_s, u"b\n"_s});
        m_page->clear();
        QCOMPARE(m_page->toPlainText(), QString());
        output({u"c\n"_s, u"d\n"_s});
        QCOMPARE(m_page->toPlainText(), u"c\nd"_s);
    }

    /// As after a build that was stopped in a line.
    void clearedPageHasNoOpenLine()
    {
        output({u"a\n"_s, u"open"_s});
        m_page->clear();
        m_page->outputLine(u"placed\n"_s, LookupPlace{u"x.c"_s, 7, 0});
        QCOMPARE(m_page->toPlainText(), u"placed"_s);
        output({u"open"_s});
        m_page->clear();
        m_page->replaceLines(u"o"_s, {{u"owned"_s, {}, {}}});
        QCOMPARE(m_page->toPlainText(), u"owned"_s);
    }

    void linesOfAnOwnerAreReplaced_data()
    {
        QTest::addColumn<QStringList>("before");
        QTest::addColumn<QStringList>("after");
        QTest::addColumn<QString>("shown");
        QTest::newRow("alone") << QStringList() << QStringList() << u"2"_s;
        QTest::newRow("between lines") << QStringList{u"a\n"_s} << QStringList{u"b\n"_s} << u"a\nb\n2"_s;
        QTest::newRow("before an open line") << QStringList() << QStringList{u"b"_s} << u"b\n2"_s;
        QTest::newRow("empty lines") << QStringList{u"a\n"_s, u"\n"_s} << QStringList{u"\n"_s, u"b\n"_s}
                                     << u"a\n\n\nb\n2"_s;
        QTest::newRow("behind a whole text") << QStringList{u"a\nb\n"_s} << QStringList() << u"a\nb\n2"_s;
    }
    void linesOfAnOwnerAreReplaced()
    {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        QFETCH(QString, shown);
        output(before);
        m_page->replaceLines(u"o"_s, {{u"0"_s, {}, {}}, {u"1"_s, LookupPlace{u"x.c"_s, 7, 0}, {}}});
        output(after);
        m_page->replaceLines(u"o"_s, {{u"2"_s, LookupPlace{u"y.c"_s, 8, 0}, {}}});
        QCOMPARE(m_page->toPlainText(), shown);
        QVERIFY(m_page->lookupMessage(false));
        QCOMPARE(m_page->textCursor().selectedText(), u"2"_s);
        m_page->replaceLines(u"o"_s, {});
        QCOMPARE(m_page->toPlainText(), shown.chopped(shown.size() > 1 ? 2 : 1));
    }

    void otherLinesKeepTheirPlacesAndAreNotReportedAgain()
    {
        QSignalSpy spy(m_page, &OutputPage::lineAdded);
        m_page->outputLine(u"a\n"_s, {u"a.c"_s, 3, 0});
        m_page->replaceLines(u"o"_s, {{u"1"_s, {}, {}}});
        m_page->replaceLines(u"p"_s, {{u"2"_s, LookupPlace{u"p.c"_s, 4, 0}, {}}});
        m_page->replaceLines(u"o"_s, {});
        QCOMPARE(spy.size(), 3);
        QCOMPARE(m_page->toPlainText(), u"a\n2"_s);
        QStringList places;
        connect(m_page, &OutputPage::lookupSource, m_page, [&](const QString &file) { places += file; });
        QVERIFY(m_page->lookupMessage(true));
        QVERIFY(m_page->lookupMessage(true));
        QCOMPARE(places, (QStringList{u"a.c"_s, u"p.c"_s}));
        m_page->replaceLines(u"p"_s, {});
        QCOMPARE(m_page->toPlainText(), u"a"_s);
    }

    void onlyPartsOfLinesMoveTheCursorToTheEnd()
    {
        output({u"a\n"_s, u"b\n"_s});
        QTextCursor cursor = m_page->textCursor();
        cursor.setPosition(0);
        cursor.setPosition(1, QTextCursor::KeepAnchor);
        m_page->setTextCursor(cursor);
        output({u"c\n"_s});
        QCOMPARE(m_page->textCursor().selectedText(), u"a"_s);
        output({u"d"_s});
        QVERIFY(!m_page->textCursor().hasSelection());
        QVERIFY(m_page->textCursor().atEnd());
    }

    void endIsFollowedUnlessTheUserHasScrolledUp()
    {
        show();
        for (int i = 0; i < 1000; ++i)
            m_page->outputLine(u"line %1\n"_s.arg(i));
        QTRY_VERIFY(atEnd());
        m_page->verticalScrollBar()->setValue(10);
        output({u"more\n"_s});
        QTRY_COMPARE(m_page->verticalScrollBar()->maximum(), 1001 - m_page->verticalScrollBar()->pageStep());
        QCOMPARE(m_page->verticalScrollBar()->value(), 10);
        output({u"a piece"_s});
        QTRY_VERIFY(atEnd());
    }
    void firstErrorIsShownFromTheEnd_data()
    {
        QTest::addColumn<int>("error"); ///< its line; below 0 there is none
        QTest::addColumn<bool>("scrolled");
        QTest::addColumn<int>("first"); ///< line that is shown then; below 0 the last lines
        QTest::newRow("in the middle") << 30 << false << 28;
        QTest::newRow("first line") << 0 << false << 0;
        QTest::newRow("visible at the end") << 98 << false << -1;
        QTest::newRow("only warnings") << -1 << false << -1;
        QTest::newRow("the user reads something else") << 30 << true << 50;
    }

    void firstErrorIsShownFromTheEnd()
    {
        QFETCH(int, error);
        QFETCH(bool, scrolled);
        QFETCH(int, first);
        m_page->setDiagnostics(true);
        show();
        for (int i = 0; i < 100; ++i) {
            const QString kind = i == error || (error >= 0 && i == error + 40) ? u"error"_s : u"warning"_s;
            m_page->outputLine(u"a.c(%1): %2: x\n"_s.arg(i).arg(kind));
        }
        QTRY_VERIFY(atEnd());
        if (scrolled)
            m_page->verticalScrollBar()->setValue(50);
        const int cursor = m_page->textCursor().position();
        m_page->showFirstError();
        QCOMPARE(m_page->verticalScrollBar()->value(), first < 0 ? m_page->verticalScrollBar()->maximum() : first);
        QCOMPARE(m_page->textCursor().position(), cursor);
        QVERIFY(!m_page->textCursor().hasSelection());
    }

    void endStaysVisibleAfterAResize()
    {
        show();
        for (int i = 0; i < 100; ++i)
            m_page->outputLine(u"line\n"_s);
        QTRY_VERIFY(atEnd());
        m_page->resize(400, 100);
        QVERIFY(atEnd());
        m_page->verticalScrollBar()->setValue(10);
        m_page->resize(400, 80);
        QCOMPARE(m_page->verticalScrollBar()->value(), 10);
    }
    void manyLinesAreLaidOutTogether()
    {
        show();
        const QSignalSpy layouts(m_page->document()->documentLayout(),
                                 &QAbstractTextDocumentLayout::documentSizeChanged);
        for (int i = 0; i < 200; ++i)
            m_page->outputLine(u"line\n"_s);
        QVERIFY2(layouts.size() < 50, qPrintable(QString::number(layouts.size())));
        QTRY_COMPARE(m_page->document()->documentLayout()->documentSize().height(), 200.0);
    }
    void outputDuringTheLayoutIsKept()
    {
        bool answered = false;
        connect(m_page, &QPlainTextEdit::textChanged, this, [&] {
            if (!std::exchange(answered, true))
                m_page->outputLine(u"answer\n"_s);
        });
        output({u"question\n"_s});
        QTRY_COMPARE(m_page->toPlainText(), u"question\nanswer"_s);
    }

    // Lookup

    void lookupNextLineGoesThroughTheLines_data()
    {
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("place");
        QTest::newRow("the first line from the start") << 0 << u"a.c, 1"_s;
        QTest::newRow("the next line") << 1 << u"b.c, 2"_s;
        QTest::newRow("a line without a place is not skipped") << 2 << u"-"_s;
        QTest::newRow("after it") << 3 << u"c.c, 3"_s;
        QTest::newRow("after the last the first") << 4 << u"a.c, 1"_s;
    }
    void lookupNextLineGoesThroughTheLines()
    {
        QFETCH(int, steps);
        QFETCH(QString, place);
        output({u"a.c(1)\n"_s, u"  b.c(2): x\n"_s, u"note\n"_s, u"c.c(3)\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        for (int i = 0; i < steps; ++i)
            m_page->lookupNextLine();
        QCOMPARE(currentPlace(), place);
        if (steps > 0)
            QCOMPARE(lookups.size(), steps >= 2 ? steps - 1 : steps);
    }
    void lookupSelectsTheLineAndEmitsThePlace()
    {
        output({u"a.c(1)\n"_s, u"  b.c(2): x\n"_s, u"note\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        m_page->lookupNextLine();
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"b.c"_s, 2, 0}}));
        QCOMPARE(m_page->textCursor().selectedText(), u"  b.c(2): x"_s);
        m_page->lookupNextLine();
        QCOMPARE(lookups.size(), 1);
        QCOMPARE(m_page->textCursor().selectedText(), u"  b.c(2): x"_s); // lines without a place change nothing
    }
    void failedLookupDoesNotChangeItsArguments()
    {
        QString file = u"before"_s;
        int line = 7;
        QVERIFY(!m_page->lookup(file, line));
        QCOMPARE(file, u"before"_s);
        QCOMPARE(line, 7);
    }
    void givenPatternIsUsed()
    {
        output({u"12: a.c\n"_s});
        QVERIFY(m_page->setLookupPattern(u"(line): (file)"_s, true));
        QCOMPARE(currentPlace(), u"a.c, 12"_s);
        QVERIFY(!m_page->setLookupPattern(u"(file)(file)(line)"_s, true));
        QCOMPARE(currentPlace(), u"-"_s);
    }
    void currentLineMayBeAfterTheEndOfAClearedPage()
    {
        output({u"a.c(1)\n"_s, u"b.c(2)\n"_s, u"c.c(3)\n"_s});
        m_page->lookupNextLine();
        m_page->lookupNextLine();
        m_page->clear();
        QCOMPARE(currentPlace(), u"-"_s);
        output({u"d.c(4)\n"_s});
        m_page->lookupNextLine();
        QCOMPARE(currentPlace(), u"d.c, 4"_s);
    }

    // Messages

    void messagesAreGoneThroughInBothDirections()
    {
        QVERIFY(m_page->setLookupPattern(u"(file):(line):"_s, false));
        m_page->setDiagnostics(true);
        output({u"[1/2] Compiling a.c\n"_s, u"a.c: In function 'f':\n"_s, u"a.c:3:9: error: x\n"_s,
                u"a.c:4:1: note: y\n"_s, u"b.c:5:2: warning: z\n"_s, u"main.c:6: undefined reference to `g'\n"_s});
        QCOMPARE(m_page->countsText(), u"2 errors, 1 warning"_s);
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        for (const bool forward : {true, true, true, true, false, false})
            QVERIFY(m_page->lookupMessage(forward));
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"a.c"_s, 3, 9},
                                                  {u"b.c"_s, 5, 2},
                                                  {u"main.c"_s, 6, 0},
                                                  {u"a.c"_s, 3, 9}, // after the last the first
                                                  {u"main.c"_s, 6, 0},
                                                  {u"b.c"_s, 5, 2}}));
        m_page->clear();
        QVERIFY(!m_page->lookupMessage(true));
        output({u"c.c:7:1: error: x\n"_s, u"d.c:8:1: error: x\n"_s});
        QVERIFY(m_page->lookupMessage(true)); // a new build begins with its first message
        QCOMPARE(lookups.last().at(0).toString(), u"c.c"_s);
    }

    /// Tools that run other tools write their output as it arrives.
    void linesOfOneTextAreExaminedOneByOne()
    {
        QVERIFY(m_page->setLookupPattern(u"(file):(line):"_s, false));
        m_page->setDiagnostics(true);
        QStringList added;
        connect(m_page, &OutputPage::lineAdded, this, [&](const QString &line) { added.append(line); });
        output({u"a.c:1: error: x\nb.c:2: error: y\r\nc.c:3: warning: z\n"_s});
        QCOMPARE(added, (QStringList{u"a.c:1: error: x"_s, u"b.c:2: error: y"_s, u"c.c:3: warning: z"_s}));
        QCOMPARE(m_page->countsText(), u"2 errors, 1 warning"_s);
        output({u"d.c:4: error: w\ntext\n"_s});
        QCOMPARE(m_page->countsText(), u"3 errors, 1 warning"_s);
        QCOMPARE(added.size(), 5);
    }

    void messagesOfMissingFilesAreSkipped()
    {
        QVERIFY(m_page->setLookupPattern(u"(file):(line)[:,]"_s, false));
        m_page->setDiagnostics(true);
        output({u"a.c:1:2: error: x\n"_s, u"make: *** [Makefile:3: all] Error 1\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        const auto isFile = [](const QString &file) { return file == "a.c"_L1; };
        QVERIFY(m_page->lookupMessage(true, isFile));
        QVERIFY(m_page->lookupMessage(true, isFile));
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"a.c"_s, 1, 2}, {u"a.c"_s, 1, 2}}));
        QVERIFY(!m_page->lookupMessage(true, [](const QString &) { return false; }));
    }

    void everyPlaceIsAMessageWithoutDiagnostics()
    {
        output({u"a.c(1): x\n"_s, u"text\n"_s, u"b.c(2): y\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        QVERIFY(m_page->lookupMessage(false));
        QVERIFY(m_page->lookupMessage(false));
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"b.c"_s, 2, 0}, {u"a.c"_s, 1, 0}}));
        QCOMPARE(m_page->countsText(), QString());
    }

    void lineWithAPlaceEndsAnOpenLine()
    {
        output({u"open"_s});
        m_page->outputLine(u"x\n"_s, {u"a.c"_s, 4, 2});
        QCOMPARE(m_page->toPlainText(), u"open\nx"_s);
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        QVERIFY(m_page->lookupMessage(true));
        QVERIFY(m_page->lookupMessage(true));
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"a.c"_s, 4, 2}, {u"a.c"_s, 4, 2}}));
    }

    void errorsAndWarningsAreColoured()
    {
        QVERIFY(m_page->setLookupPattern(u"(file):(line):"_s, false));
        m_page->setDiagnostics(true);
        output({u"a.c:3: error: x\n"_s, u"text\n"_s, u"a.c:4: war"_s, u"ning: in two parts\n"_s});
        const auto colour = [this](int line) {
            const auto formats = m_page->document()->findBlockByNumber(line).layout()->formats();
            return formats.isEmpty() ? QColor() : formats.first().format.foreground().color();
        };
        const QColor error = colour(0);
        QVERIFY(error.isValid() && error.red() > error.green() + 80);
        QVERIFY(!colour(1).isValid());
        QVERIFY(colour(2).isValid() && colour(2) != error);
        QPalette dark = m_page->palette();
        dark.setColor(QPalette::Base, Qt::black);
        m_page->setPalette(dark);
        QVERIFY(colour(0).lightness() > error.lightness()); // readable on the new paper
    }

    void doubleClickAndReturnLeadToTheSource()
    {
        show();
        output({u"a.c(1)\n"_s, u"text\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        const auto point = [this](int line) {
            return m_page->cursorRect(QTextCursor(m_page->document()->findBlockByNumber(line))).center();
        };
        QTest::mouseDClick(m_page->viewport(), Qt::LeftButton, {}, point(0));
        QCOMPARE(lookups.size(), 1);
        press(1, Qt::LeftButton);
        QTest::keyClick(m_page, Qt::Key_Return);
        QCOMPARE(lookups.size(), 1); // that line has no place
        QTest::keyClick(m_page, Qt::Key_Up);
        QTest::keyClick(m_page, Qt::Key_Return);
        QCOMPARE(lookups.size(), 2);
    }

    // Mouse, menu and keys

    void pressMakesItsLineTheCurrentOne_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("left") << Qt::LeftButton;
        QTest::newRow("right") << Qt::RightButton;
    }
    void pressMakesItsLineTheCurrentOne()
    {
        QFETCH(Qt::MouseButton, button);
        show();
        output({u"a.c(1)\n"_s, u"b.c(2)\n"_s, u"c.c(3)\n"_s});
        QTRY_COMPARE(m_page->document()->documentLayout()->documentSize().height(), 3.0);
        press(1, button);
        QCOMPARE(currentPlace(), u"b.c, 2"_s);
        QCOMPARE(m_page->textCursor().blockNumber(), 1);
    }
    void rightPressKeepsTheSelection()
    {
        show();
        output({u"a.c(1)\n"_s, u"b.c(2)\n"_s});
        QTRY_COMPARE(m_page->document()->documentLayout()->documentSize().height(), 2.0);
        m_page->selectAll();
        press(1, Qt::RightButton);
        QCOMPARE(m_page->textCursor().selectedText(), u"a.c(1)\u2029b.c(2)"_s);
        QCOMPARE(currentPlace(), u"b.c, 2"_s);
    }

    void contextMenuEnablesPossibleCommands_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("menu");
        QTest::newRow("nothing to do") << false << u"note\n"_s
                                       << u"(&Copy)|Select &All|-|Clear|-|(Lookup source line)"_s;
        QTest::newRow("a selection") << true << u"note\n"_s << u"&Copy|Select &All|-|Clear|-|(Lookup source line)"_s;
        QTest::newRow("a place") << false << u"a.c(1)\n"_s << u"(&Copy)|Select &All|-|Clear|-|Lookup source line"_s;
    }
    void contextMenuEnablesPossibleCommands()
    {
        QFETCH(bool, selected);
        QFETCH(QString, text);
        QFETCH(QString, menu);
        output({text});
        if (selected)
            m_page->selectAll();
        const std::unique_ptr<QMenu> popup(m_page->createPopupMenu());
        QStringList entries;
        for (const QAction *action : popup->actions())
            entries.append(action->isSeparator() ? u"-"_s
                           : action->isEnabled() ? action->text()
                                                 : u'(' + action->text() + u')');
        QCOMPARE(entries.join(u'|'), menu);
    }
    void contextMenuRunsItsCommands()
    {
        output({u"a.c(1)\n"_s});
        const QSignalSpy lookups(m_page, &OutputPage::lookupSource);
        for (const int entry : {5, 1, 0, 3}) {
            const std::unique_ptr<QMenu> menu(m_page->createPopupMenu());
            menu->actions().at(entry)->trigger();
        }
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"a.c"_s, 1, 0}}));
        QCOMPARE(QGuiApplication::clipboard()->text(), u"a.c(1)"_s);
        QCOMPARE(m_page->toPlainText(), QString());
    }
    void contextMenuOpens()
    {
        show();
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()");
        QTest::ignoreMessage(QtWarningMsg, "This plugin does not support grabbing the keyboard");
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), m_page->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(m_page->viewport(), &event);
        QPointer<QWidget> menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        menu->close();
        QTRY_VERIFY(!menu);
    }

    void onlyNavigationAndCopyKeysAreHandled_data()
    {
        QTest::addColumn<QKeyCombination>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        const auto row = [](const char *name, QKeyCombination key, bool taken, const QString &text = {}) {
            QTest::newRow(name) << key << text << taken;
        };
        row("copy", Qt::CTRL | Qt::Key_C, true);
        row("copy by the alternative key", Qt::CTRL | Qt::Key_Insert, true);
        row("Home", Qt::Key_Home, true);
        row("End", Qt::Key_End, true);
        row("Left", Qt::Key_Left, true);
        row("Up", Qt::Key_Up, true);
        row("Right", Qt::Key_Right, true);
        row("Down", Qt::Key_Down, true);
        row("Page Up", Qt::Key_PageUp, true);
        row("Page Down", Qt::Key_PageDown, true);
        row("selecting", Qt::SHIFT | Qt::Key_Down, true);
        row("the start of the text", Qt::CTRL | Qt::Key_Home, true);
        row("a letter", Qt::Key_C, false, u"c"_s);
        row("Insert", Qt::Key_Insert, false);
        row("Select All", Qt::CTRL | Qt::Key_A, false);
        row("Paste", Qt::CTRL | Qt::Key_V, false);
        row("Return", Qt::Key_Return, false, u"\r"_s);
        row("Backspace", Qt::Key_Backspace, false, u"\b"_s);
        row("Delete", Qt::Key_Delete, false);
        row("Tab", Qt::CTRL | Qt::Key_Tab, false);
        row("Escape", Qt::Key_Escape, false);
        row("a function key", Qt::Key_F4, false);
    }
    void onlyNavigationAndCopyKeysAreHandled()
    {
        QFETCH(QKeyCombination, key);
        QFETCH(QString, text);
        QFETCH(bool, taken);
        output({u"a\n"_s, u"b\n"_s});
        QKeyEvent shortcut(QEvent::ShortcutOverride, key.key(), key.keyboardModifiers(), text);
        shortcut.ignore();
        QApplication::sendEvent(m_page, &shortcut);
        QCOMPARE(shortcut.isAccepted(), taken);
        QKeyEvent event(QEvent::KeyPress, key.key(), key.keyboardModifiers(), text);
        QApplication::sendEvent(m_page, &event);
        QCOMPARE(m_surroundings->keys, taken ? QList<int>{} : QList<int>{key.key()});
        QCOMPARE(m_page->toPlainText(), u"a\nb"_s);
    }
    void cursorIsVisible()
    {
        output({u"a\n"_s, u"b\n"_s});
        QVERIFY(m_page->textInteractionFlags() & Qt::TextSelectableByKeyboard);
        m_page->moveCursor(QTextCursor::Start);
        QTest::keyClick(m_page, Qt::Key_Down);
        QCOMPARE(m_page->textCursor().blockNumber(), 1);
    }
    void textCannotBeEdited()
    {
        QGuiApplication::clipboard()->setText(u"x"_s);
        m_page->paste();
        m_page->cut();
        QCOMPARE(m_page->toPlainText(), QString());
    }
};

QTEST_MAIN(TestOutputPage)
#include "tst_outputpage.moc"

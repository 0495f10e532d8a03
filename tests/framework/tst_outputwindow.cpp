#include "beepcount.h"
#include "commandlinewindow.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pythonruntime.h"
#include "scriptdirectories.h"
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
using namespace Qt::StringLiterals;

int &beepCount()
{
    static int count = 0;
    return count;
}

/// In place of the toolkit's one, which no platform reports.
void QApplication::beep()
{
    ++beepCount();
}

class TestOutputWindow : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<OutputWindow> m_window;

    QTabWidget *tabs() const { return m_window->findChild<QTabWidget *>(); }
    CommandLineWindow *console() const { return m_window->findChild<CommandLineWindow *>(); }
    QStringList captions() const
    {
        QStringList captions;
        for (int i = 0; i < tabs()->count(); ++i)
            captions.append(tabs()->tabText(i));
        return captions;
    }
    QString text(uint page) const { return m_window->page(page)->toPlainText(); }
    void startConsole(const QByteArray &startup = {}) const
    {
        const QTemporaryDir directory;
        if (!startup.isNull())
            write(directory.filePath(u"startup.py"_s), startup);
        m_window->startConsole({directory.path(), QString()});
    }
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    void enter(const QStringList &lines) const
    {
        for (const QString &line : lines) {
            QTest::keyClicks(console(), line);
            QTest::keyClick(console(), Qt::Key_Return);
        }
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(startPython()); }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_window = std::make_unique<OutputWindow>();
    }
    void cleanup() { m_window.reset(); }

    // Layout

    void windowHasThreePagesAndTheConsole()
    {
        QCOMPARE(captions(), (QStringList{u"Build"_s, u"Debug"_s, u"Find In Files"_s}));
        startConsole();
        QCOMPARE(captions().last(), u"Command Window"_s);
        QCOMPARE(tabs()->widget(3), console());
        QVERIFY(!m_window->page(3));
        QCOMPARE(tabs()->currentIndex(), 0);
    }
    void windowIsAFrameWithTabsAtTheBottom()
    {
        QCOMPARE(m_window->minimumSize(), QSize(200, 100));
        auto *frame = qobject_cast<QFrame *>(m_window->layout()->itemAt(0)->widget());
        QVERIFY(frame);
        QCOMPARE(frame->frameStyle(), QFrame::StyledPanel | QFrame::Sunken);
        QCOMPARE(frame->lineWidth(), 1);
        QCOMPARE(frame->layout()->contentsMargins(), QMargins(3, 3, 3, 3));
        QCOMPARE(frame->layout()->spacing(), 6);
        QCOMPARE(frame->layout()->count(), 1);
        QCOMPARE(frame->layout()->itemAt(0)->widget(), tabs());
        QCOMPARE(tabs()->tabPosition(), QTabWidget::South);
        QCOMPARE(tabs()->tabShape(), QTabWidget::Triangular);
    }
    void artworkIsShownBesideThePagesOnWhite()
    {
        QPixmap artwork(30, 20);
        artwork.fill(Qt::red);
        m_window = std::make_unique<OutputWindow>(nullptr, artwork);
        QLayout *layout = tabs()->parentWidget()->layout();
        const auto *label = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QVERIFY(label);
        QCOMPARE(label->pixmap().size(), QSize(30, 20));
        QCOMPARE(label->frameStyle(), QFrame::StyledPanel | QFrame::Raised);
        QCOMPARE(label->lineWidth(), 2);
        QVERIFY(label->autoFillBackground());
        QCOMPARE(label->palette().color(label->backgroundRole()), QColor(Qt::white));
        QCOMPARE(layout->itemAt(1)->widget(), tabs());
    }
    void textHasAFixedPitchFont()
    {
        startConsole();
        for (const QWidget *pane : {static_cast<QWidget *>(m_window->page(0)), static_cast<QWidget *>(console())}) {
            QCOMPARE(pane->font().family(), u"Courier"_s);
            QCOMPARE(pane->font().pointSize(), 9);
        }
    }

    // Pages by number and by name

    void lineIsAddedToItsPage()
    {
        m_window->outputLine(OutputWindow::Debug, u"stopped\n"_s);
        QCOMPARE(text(1), u"stopped"_s);
        QCOMPARE(tabs()->currentIndex(), 0);
        QCOMPARE(text(0) + text(2), QString());
    }
    void seriousLineBeepsAndShowsItsPage()
    {
        beepCount() = 0;
        m_window->outputLine(OutputWindow::Debug, u"lost\n"_s, false);
        QCOMPARE(beepCount(), 0);
        QCOMPARE(tabs()->currentIndex(), 0);
        m_window->outputLine(OutputWindow::FindInFiles, u"lost\n"_s, true);
        QCOMPARE(beepCount(), 1);
        QCOMPARE(tabs()->currentIndex(), 2);
        QCOMPARE(text(2), u"lost"_s);
    }
    void unknownNameCreatesAPage()
    {
        startConsole();
        m_window->outputLine(u"Tools"_s, u"a\n"_s);
        QCOMPARE(captions().last(2), (QStringList{u"Command Window"_s, u"Tools"_s}));
        QCOMPARE(tabs()->currentIndex(), 0);
        QCOMPARE(text(3), u"a"_s);
        m_window->outputLine(u"Tools"_s, u"b\n"_s, true);
        QCOMPARE(tabs()->currentWidget(), m_window->page(3));
        QCOMPARE(text(3), u"a\nb"_s);
        QCOMPARE(tabs()->count(), 5);
    }
    void knownNameSelectsThePageWithThatCaption()
    {
        beepCount() = 0;
        m_window->outputLine(u"Debug"_s, u"a\n"_s, true);
        QCOMPARE(beepCount(), 1);
        QCOMPARE(text(1), u"a"_s);
        QCOMPARE(tabs()->currentIndex(), 1);
        m_window->outputLine(u"debug"_s, u"b\n"_s); // case is significant
        QCOMPARE(text(1), u"a"_s);
        QCOMPARE(text(3), u"b"_s);
    }
    void lineIsAddedToTheFirstOfTwoPagesWithOneName()
    {
        m_window->addPage(u"Twice"_s);
        m_window->addPage(u"Twice"_s);
        m_window->outputLine(u"Twice"_s, u"a\n"_s);
        QCOMPARE(text(3), u"a"_s);
        QCOMPARE(text(4), QString());
    }
    void pageNameIsShownLiterally()
    {
        m_window->outputLine(u"Search & Replace"_s, u"a\n"_s);
        QCOMPARE(captions().last(), u"Search && Replace"_s);
        m_window->outputLine(u"Search & Replace"_s, u"b\n"_s);
        QCOMPARE(text(3), u"a\nb"_s);
    }
    void pagesAfterANumberAreRemoved()
    {
        startConsole();
        m_window->addPage(u"A"_s);
        m_window->addPage(u"B"_s);
        m_window->removePagesAfter(3);
        QCOMPARE(captions().last(2), (QStringList{u"Command Window"_s, u"A"_s}));
        QVERIFY(m_window->page(3));
        QVERIFY(!m_window->page(4));
        m_window->removePagesAfter(OutputWindow::FindInFiles);
        m_window->removePagesAfter(OutputWindow::FindInFiles);
        QCOMPARE(captions().last(), u"Command Window"_s);
        m_window->outputLine(u"C"_s, u"c\n"_s);
        QCOMPARE(text(3), u"c"_s);
    }
    void pageIsClearedAndShown()
    {
        m_window->outputLine(OutputWindow::Build, u"a\n"_s);
        m_window->outputLine(OutputWindow::Debug, u"b\n"_s);
        m_window->clearPage(OutputWindow::Build);
        QCOMPARE(text(0), QString());
        QCOMPARE(text(1), u"b"_s);
        m_window->displayPage(OutputWindow::Debug);
        QCOMPARE(tabs()->currentIndex(), 1);
    }
    void numberOutOfRangeFailsAnAssertion_data()
    {
        QTest::addColumn<int>("operation");
        QTest::newRow("display") << 0;
        QTest::newRow("clear") << 1;
        QTest::newRow("output") << 2;
    }
    void numberOutOfRangeFailsAnAssertion()
    {
        QFETCH(int, operation);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"ASSERT: \"pageNum < m_pages.size\\(\\)\""_s));
        if (operation == 0)
            m_window->displayPage(3);
        else if (operation == 1)
            m_window->clearPage(3);
        else
            m_window->outputLine(3, u"a\n"_s, true);
        QVERIFY(!m_window->page(3));
    }

    // Lookup and selection

    void everyPageEmitsItsPlaces()
    {
        m_window->addPage(u"Tools"_s);
        const QSignalSpy lookups(m_window.get(), &OutputWindow::lookupSource);
        for (uint page = 0; page < 4; ++page) {
            m_window->outputLine(page, u"a%1.c(%1)\n"_s.arg(page));
            m_window->displayPage(page);
            m_window->lookupNextLine();
        }
        QCOMPARE(lookups,
                 (QList<QList<QVariant>>{{u"a0.c"_s, 0, 0}, {u"a1.c"_s, 1, 0}, {u"a2.c"_s, 2, 0}, {u"a3.c"_s, 3, 0}}));
    }
    void patternIsForTheBuildPageOnly()
    {
        QVERIFY(m_window->setLookupPattern(u"(line): (file)"_s, false));
        const QSignalSpy lookups(m_window.get(), &OutputWindow::lookupSource);
        for (const uint page : {OutputWindow::Build, OutputWindow::Debug}) {
            m_window->displayPage(page);
            m_window->outputLine(page, u"12: a.c\n"_s);
            m_window->lookupNextLine();
            m_window->outputLine(page, u"b.c(13)\n"_s);
            m_window->lookupNextLine();
        }
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"a.c"_s, 12, 0}, {u"b.c"_s, 13, 0}}));
        QVERIFY(!m_window->setLookupPattern(u"(file)"_s, false));
    }
    void errorsAndWarningsAreCountedOnTheTab()
    {
        m_window->setLookupPattern(u"(file):(line):"_s, false);
        m_window->outputLine(OutputWindow::Build, u"a.c:1:2: error: x\n"_s);
        QCOMPARE(captions().first(), u"Build (1 error)"_s);
        m_window->outputLine(OutputWindow::Build, u"a.c:3:2: warning: x\n"_s);
        m_window->outputLine(OutputWindow::Build, u"a.c:4:2: fatal error: x\n"_s);
        QCOMPARE(captions().first(), u"Build (2 errors, 1 warning)"_s);
        m_window->outputLine(OutputWindow::Debug, u"a.c:1:2: error: x\n"_s);
        QCOMPARE(captions().at(1), u"Debug"_s);        // counts belong to builds
        m_window->outputLine(u"Build"_s, u"more\n"_s); // the page is still found by its name
        m_window->clearPage(OutputWindow::Build);
        QCOMPARE(captions(), (QStringList{u"Build"_s, u"Debug"_s, u"Find In Files"_s}));
    }

    void messageIsLookedUpOnTheShownPage()
    {
        const QSignalSpy lookups(m_window.get(), &OutputWindow::lookupSource);
        m_window->outputLine(OutputWindow::FindInFiles, u"no place\n"_s);
        m_window->outputLine(OutputWindow::FindInFiles, u"strange(7).c(3):x\n"_s, {u"/strange(7).c"_s, 3});
        m_window->displayPage(OutputWindow::FindInFiles);
        QVERIFY(m_window->lookupMessage(true));
        QCOMPARE(lookups, (QList<QList<QVariant>>{{u"/strange(7).c"_s, 3, 0}}));
        m_window->displayPage(OutputWindow::Debug);
        QVERIFY(!m_window->lookupMessage(true));
    }

    void consoleIgnoresLookupAndSelectAll()
    {
        startConsole();
        for (uint page = 0; page < 3; ++page)
            m_window->outputLine(page, u"a.c(1)\n"_s);
        tabs()->setCurrentWidget(console());
        const QSignalSpy lookups(m_window.get(), &OutputWindow::lookupSource);
        m_window->lookupNextLine();
        m_window->selectAll();
        QVERIFY(lookups.isEmpty());
        QVERIFY(!console()->textCursor().hasSelection());
        QVERIFY(!m_window->page(0)->textCursor().hasSelection());
    }
    void selectAllSelectsTheShownPage()
    {
        m_window->outputLine(OutputWindow::Build, u"a\n"_s);
        m_window->outputLine(OutputWindow::Debug, u"b\n"_s);
        m_window->displayPage(OutputWindow::Debug);
        m_window->selectAll();
        QCOMPARE(m_window->page(1)->textCursor().selectedText(), u"b"_s);
        QVERIFY(!m_window->page(0)->textCursor().hasSelection());
    }

    // Looks

    void fontAndColoursApplyToAllPanes_data()
    {
        QTest::addColumn<bool>("before");
        QTest::newRow("existing panes") << false;
        QTest::newRow("panes that are added later") << true;
    }
    void fontAndColoursApplyToAllPanes()
    {
        QFETCH(bool, before);
        const auto change = [this] {
            m_window->setFont(QFont(u"Monospace"_s, 14));
            m_window->setTextColour(Qt::red);
            m_window->setPaperColour(Qt::blue);
        };
        if (before)
            change();
        startConsole();
        m_window->addPage(u"Tools"_s);
        if (!before)
            change();
        for (const QWidget *pane :
             std::initializer_list<QWidget *>{m_window->page(0), m_window->page(2), m_window->page(3), console()}) {
            QCOMPARE(pane->font().family(), u"Monospace"_s);
            QCOMPARE(pane->font().pointSize(), 14);
            QCOMPARE(pane->palette().color(QPalette::Text), QColor(Qt::red));
            QCOMPARE(pane->palette().color(QPalette::Base), QColor(Qt::blue));
        }
    }

    // Console

    void startUpScriptRunsInTheConsole()
    {
        startConsole("greeting = 'hello'\nprint(greeting)\n");
        const QStringList lines = console()->toPlainText().split(u'\n');
        QVERIFY2(lines.first().startsWith(u"Varnel Command Line (Python 3."_s), qPrintable(lines.first()));
        QVERIFY(lines.at(1).startsWith(u"Running file '"_s));
        QVERIFY(lines.at(1).endsWith(u"/startup.py'..."_s));
        QCOMPARE(lines.mid(2), (QStringList{u"hello"_s, u"OK"_s, u">>> "_s}));
    }
    void missingStartUpScriptPrintsBannerAndPrompt()
    {
        startConsole();
        const QStringList lines = console()->toPlainText().split(u'\n');
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines.last(), u">>> "_s);
    }
    void startUpScriptOfTheUserReplacesTheInstalledOne()
    {
        const QTemporaryDir installed;
        const QTemporaryDir user;
        write(installed.filePath(u"startup.py"_s), "print('installed')");
        write(user.filePath(u"startup.py"_s), "print('own')");
        m_window->startConsole({installed.path(), user.path()});
        QVERIFY(console()->toPlainText().contains(u"\nown\nOK\n"_s));
        QVERIFY(!console()->toPlainText().contains(u"installed"_s));
    }
    void linesAreExecutedAndCompleted()
    {
        startConsole("wheel_count = 4");
        QTest::keyClicks(console(), u"whee"_s);
        QTest::keyClick(console(), Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClick(console(), Qt::Key_Return);
        QVERIFY2(console()->toPlainText().endsWith(u">>> wheel_count\n4\n>>> "_s),
                 qPrintable(console()->toPlainText()));
    }
    void blockIsIndentedAndRunsAfterAnEmptyLine()
    {
        startConsole();
        for (const QString &line : {u"for i in (1, 2):"_s, u"print(i)"_s, u""_s}) {
            QTest::keyClicks(console(), line);
            QTest::keyClick(console(), Qt::Key_Return);
        }
        QVERIFY2(console()->toPlainText().endsWith(u">>> for i in (1, 2):\n... \tprint(i)\n... \t\n1\n2\n>>> "_s),
                 qPrintable(console()->toPlainText()));
    }
    void breakKeyInterruptsPython()
    {
        startConsole();
        QTest::keyClick(console(), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClicks(console(), u"1"_s);
        QTest::keyClick(console(), Qt::Key_Return);
        QVERIFY2(console()->toPlainText().endsWith(u">>> 1\n1\nKeyboardInterrupt\n>>> "_s),
                 qPrintable(console()->toPlainText()));
    }
    void stopButtonInterruptsTheStatementThatRuns()
    {
        startConsole();
        m_window->show();
        auto *button = m_window->findChild<QToolButton *>(u"stopScriptButton"_s);
        QVERIFY(button);
        QVERIFY(!button->isVisible());
        bool shown = false;
        QTimer::singleShot(0, button, [&] { // as soon as the statement lets events through
            shown = button->isVisible();
            QTest::mouseClick(button, Qt::LeftButton);
        });
        enter({u"while True: pass"_s});
        QVERIFY(shown);
        QVERIFY(!button->isVisible());
        QVERIFY2(console()->toPlainText().endsWith(u"KeyboardInterrupt\n>>> "_s), qPrintable(console()->toPlainText()));
    }

    void interruptKeyEndsTheStatementThatRuns()
    {
        startConsole();
        m_window->show();
        QTimer::singleShot(0, console(), [this] { QTest::keyClick(console(), Qt::Key_C, Qt::ControlModifier); });
        enter({u"while True: pass"_s});
        QVERIFY2(console()->toPlainText().endsWith(u"KeyboardInterrupt\n>>> "_s), qPrintable(console()->toPlainText()));
    }

    void clickAtItsTabGivesTheConsoleTheFocus()
    {
        startConsole();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_window->displayPage(OutputWindow::Debug);
        m_window->page(OutputWindow::Debug)->setFocus();
        QTabBar *bar = tabs()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tabs()->indexOf(console())).center());
        QCOMPARE(tabs()->currentWidget(), console());
        QTRY_VERIFY(console()->hasFocus());
        m_window->page(OutputWindow::Debug)->setFocus();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(0).center());
        QCoreApplication::processEvents();
        QVERIFY(!console()->hasFocus());
    }

    void inputOfAScriptIsTypedInTheConsole()
    {
        startConsole();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        const QTemporaryDir directory;
        const QString script = directory.filePath(u"ask.py"_s);
        write(script, "name = input('Name: ')\nprint('Hello', name)\n");
        m_window->displayPage(OutputWindow::Debug);
        bool raised = false;
        bool focused = false;
        QTimer::singleShot(0, console(), [&] {
            raised = tabs()->currentWidget() == console();
            focused = console()->hasFocus();
            QTest::keyClicks(console(), u"Ann"_s);
            QTest::keyClick(console(), Qt::Key_Return);
        });
        QVERIFY(m_window->runScript(script));
        QVERIFY(raised);
        QVERIFY(focused);
        QVERIFY2(console()->toPlainText().contains(u"Name: Ann\nHello Ann\n"_s), qPrintable(console()->toPlainText()));
    }

    void inputWithoutAVisibleWindowIsAnError()
    {
        startConsole();
        const QTemporaryDir directory;
        write(directory.filePath(u"ask.py"_s), "input()\n");
        QVERIFY(!m_window->runScript(directory.filePath(u"ask.py"_s)));
        QVERIFY2(console()->toPlainText().contains(u"Error"_s), qPrintable(console()->toPlainText()));
    }

    void scriptsRunInTheConsole_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("good");
        QTest::newRow("good") << "print('done')"_ba << true;
        QTest::newRow("raises") << "print('done')\nraise ValueError"_ba << false;
    }
    void scriptsRunInTheConsole()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, good);
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"run.py"_s);
        write(path, script);
        QVERIFY(!m_window->runScript(path)); // no console yet
        startConsole();
        QCOMPARE(m_window->runScript(path), good);
        QVERIFY(console()->toPlainText().contains(u"\ndone\n"_s));
    }
};

QTEST_MAIN(TestOutputWindow)
#include "tst_outputwindow.moc"

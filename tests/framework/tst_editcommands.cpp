#include "commandlinewindow.h"
#include "editcommands.h"
#include "navigator.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "windowfixture.h"
#include <QClipboard>
#include <QComboBox>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
/// An active window with an open file that has the focus.
struct EditedFile : WindowFixture
{
    explicit EditedFile(const QByteArray &content = "one\ntwo\nthree\n")
    {
        QGuiApplication::clipboard()->clear();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        open(u"a.c"_s, content);
        view()->setFocus();
    }

    [[nodiscard]] int line() const { return view()->currentEdit()->textCursor().blockNumber() + 1; }
    void focusOutput() const { window->outputWindow()->page(OutputWindow::Build)->setFocus(); }
};
} // namespace

class EditCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void undoAndRedoActOnTheFile()
    {
        const EditedFile f;
        f.type(u"new "_s);
        f.window->editUndo();
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
        f.window->editRedo();
        QCOMPARE(f.text(), u"new one\ntwo\nthree\n"_s);
    }

    void uncommentWithoutACommentShowsAMessage()
    {
        const EditedFile f("one\n");
        f.window->editComment();
        QVERIFY(f.text() != u"one\n"_s);
        f.window->editUncomment();
        QCOMPARE(f.text(), u"one\n"_s);
        QCOMPARE(f.status(), QString());
        f.window->editUncomment();
        QCOMPARE(f.status(), u"No selected line is a comment"_s);
    }

    void cutCopyPasteAndRemoveActOnTheFile()
    {
        const EditedFile f("one");
        f.window->editSelectAll();
        f.window->editCopy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"one"_s);
        f.window->editCut();
        QCOMPARE(f.text(), QString());
        f.window->editPaste();
        f.window->editPaste();
        QCOMPARE(f.text(), u"oneone"_s);
        f.window->editSelectAll();
        f.window->editRemove();
        QCOMPARE(f.text(), QString());
    }

    void commandsWithoutTheFocusDoNotChangeTheFile()
    {
        const EditedFile f;
        f.type(u"new "_s);
        f.window->editSelectAll();
        f.focusOutput();
        for (const auto command : {&MainWindow::editUndo, &MainWindow::editRedo, &MainWindow::editCut,
                                   &MainWindow::editCopy, &MainWindow::editPaste, &MainWindow::editRemove})
            (f.window.get()->*command)();
        QCOMPARE(f.text(), u"new one\ntwo\nthree\n"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString());
    }

    void redoWithoutTheFocusDoesNotChangeTheFile()
    {
        const EditedFile f;
        f.type(u"new "_s);
        f.window->editUndo();
        f.focusOutput();
        f.window->editRedo();
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void commandsWithoutAnyFocusLeaveTheOutputAlone()
    {
        const EditedFile f;
        f.window->outputWindow()->outputLine(OutputWindow::Build, u"out\n"_s);
        f.focusOutput();
        f.window->editSelectAll();
        QApplication::focusWidget()->clearFocus();
        f.window->editCopy();
        QCOMPARE(QGuiApplication::clipboard()->text(), QString());
        QPlainTextEdit *page = f.window->outputWindow()->page(OutputWindow::Build);
        page->moveCursor(QTextCursor::Start);
        f.window->editSelectAll();
        QVERIFY(!page->textCursor().hasSelection());
    }

    void pasteWithoutAnyFocusLeavesTheConsoleAlone()
    {
        const EditedFile f;
        auto *console = f.window->findChild<CommandLineWindow *>(u"commandWindow"_s);
        QVERIFY(console);
        f.window->findChild<QTabWidget *>(u"outputTabs"_s)->setCurrentWidget(console);
        console->setFocus();
        console->moveCursor(QTextCursor::End);
        QGuiApplication::clipboard()->setText(u"typed"_s);
        QApplication::focusWidget()->clearFocus();
        const QString before = console->toPlainText();
        f.window->editPaste();
        QCOMPARE(console->toPlainText(), before);
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void selectAllActsOnTheOutputPageThatHasTheFocus()
    {
        const EditedFile f;
        f.window->outputWindow()->outputLine(OutputWindow::Build, u"out\n"_s);
        f.focusOutput();
        f.window->editSelectAll();
        QCOMPARE(f.window->outputWindow()->page(OutputWindow::Build)->textCursor().selectedText(), u"out"_s);
        QVERIFY(!f.view()->currentEdit()->textCursor().hasSelection());
    }

    void copyActsOnTheOutputPageThatHasTheFocus()
    {
        const EditedFile f;
        QSignalSpy available(f.window.get(), &AvailabilityWindow::copyAvailable);
        QSignalSpy pasteAvailable(f.window.get(), &AvailabilityWindow::pasteAvailable);
        f.window->outputWindow()->outputLine(OutputWindow::Build, u"out\n"_s);
        f.focusOutput();
        QVERIFY(!available.last().at(0).toBool());
        QVERIFY(!pasteAvailable.last().at(0).toBool());
        f.window->editSelectAll();
        QVERIFY(available.last().at(0).toBool());
        f.window->editCopy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"out"_s);
        f.view()->setFocus();
        QVERIFY(!available.last().at(0).toBool());
        f.focusOutput();
        QVERIFY(available.last().at(0).toBool());
    }

    void copyAndPasteActOnTheConsoleThatHasTheFocus()
    {
        const EditedFile f;
        auto *console = f.window->findChild<CommandLineWindow *>(u"commandWindow"_s);
        QVERIFY(console);
        f.window->findChild<QTabWidget *>(u"outputTabs"_s)->setCurrentWidget(console);
        QSignalSpy pasteAvailable(f.window.get(), &AvailabilityWindow::pasteAvailable);
        console->setFocus();
        QVERIFY(pasteAvailable.last().at(0).toBool());
        console->moveCursor(QTextCursor::End);
        QGuiApplication::clipboard()->setText(u"typed"_s);
        f.window->editPaste();
        QVERIFY(console->toPlainText().endsWith(u"typed"_s));
        console->selectAll(); // the command ignores the console
        f.window->editCopy();
        QCOMPARE(QGuiApplication::clipboard()->text(), console->toPlainText());
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void cutPasteAndRemoveActOnTheTreeFirst()
    {
        const EditedFile f;
        f.writeProject(u"fw.vnp"_s, {u"main.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        tree->setFocus();
        const auto selectFile = [tree] {
            QTreeWidgetItem *item = tree->topLevelItem(0)->child(0);
            item->setExpanded(true);
            tree->setCurrentItem(item->child(0));
        };
        selectFile();
        QVERIFY(tree->hasFocus());
        const Project *project = f.window->projectWorkspace()->currentProject();
        f.window->editCut();
        QVERIFY(project->files({}, nullptr).isEmpty());
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        f.window->editPaste();
        QCOMPARE(project->files({}, nullptr).size(), 1);
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
        selectFile();
        QTimer::singleShot(0, tree, [] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Ok)->click();
        });
        f.window->editRemove();
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
        QVERIFY(project->files({}, nullptr).isEmpty());
    }

    void indentingActsOnTheCurrentView()
    {
        const EditedFile f("int f()\n{\nreturn 1;\n}");
        f.window->editSelectAll();
        f.focusOutput();
        f.window->editIndent();
        QCOMPARE(f.text(), u"int f()\n{\n\treturn 1;\n}"_s);
    }

    void commandsWithoutAViewDoNothing()
    {
        const WindowFixture f;
        f.window->editUndo();
        f.window->editSelectAll();
        f.window->editIndent();
        f.window->find(u"x"_s, false, false, true, true);
        f.window->editLookupNextLine();
        f.answers->type(u"3"_s);
        f.window->viewGotoLine();
        QCOMPARE(f.answers->shown.size(), 1);
    }

    // Go to line

    void theLineMayBeASymbolAnAddressOrANumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::newRow("number") << u"10"_s << 10;
        QTest::newRow("address") << u"0x10"_s << 17;
        QTest::newRow("address, upper case") << u"0X1F"_s << 32;
        QTest::newRow("symbol") << u"main"_s << 42;
        QTest::newRow("no number") << u"abc"_s << 0;
        QTest::newRow("number and more") << u"10a"_s << 0;
        QTest::newRow("symbol that looks like a number") << u"7"_s << 43;
        QTest::newRow("too large") << u"99999999999"_s << 0;
    }

    void theLineMayBeASymbolAnAddressOrANumber()
    {
        QFETCH(QString, text);
        const auto lineOfSymbol = [](const QString &name) { return name == "main"_L1 ? 42 : name == "7"_L1 ? 43 : 0; };
        QTEST(lineOfText(text, lineOfSymbol), "line");
    }

    void goingToALineAsksForIt()
    {
        const EditedFile f(QByteArray("\n").repeated(50));
        f.answers->type(u"0x10"_s);
        f.window->viewGotoLine();
        QCOMPARE(f.answers->shown, QStringList(u"Varnel|Enter line number:"_s));
        QCOMPARE(f.line(), 17);
        f.answers->type(u"10"_s);
        f.window->viewGotoLine();
        QCOMPARE(f.line(), 10);
        QVERIFY(!f.view()->hasMarker(10, IViewWithMarkers::LookupMarker));
        f.answers->type(QString());
        f.window->viewGotoLine();
        QCOMPARE(f.line(), 10);
        f.answers->type(u"none"_s);
        f.window->viewGotoLine();
        QCOMPARE(f.line(), 1);
    }

    void cancelledQuestionKeepsTheCursor()
    {
        const EditedFile f;
        f.answers->type(u"3"_s);
        f.window->viewGotoLine();
        f.answers->meet([](QDialog *dialog) { dialog->reject(); });
        f.window->viewGotoLine();
        QCOMPARE(f.line(), 3);
    }

    // Finding

    void searchContinuesOnceAtTheStartOfTheText()
    {
        const EditedFile f("one two one");
        f.window->searchBoxFindAgain(u"one"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectionStart(), 0);
        f.window->searchBoxFindAgain(u"one"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectionStart(), 8);
        QCOMPARE(f.status(), QString());
        f.window->searchBoxFindAgain(u"one"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectionStart(), 0);
        QCOMPARE(f.status(), u"Passed the end of the file"_s);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void searchBoxSearchesFromTheStartOfTheText()
    {
        const EditedFile f("one two one");
        f.view()->gotoColumn(6);
        f.window->searchBoxFind(u"o"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectionStart(), 0);
        f.window->searchBoxFind(u"on"_s); // the user types on
        QCOMPARE(f.view()->currentEdit()->textCursor().selectionStart(), 0);
    }

    void missingTextShowsAMessage()
    {
        const EditedFile f;
        f.answers->press(QMessageBox::Ok);
        f.window->find(u"four"_s, true, true, true, true);
        QCOMPARE(f.answers->shown, QStringList(u"Cannot find the string four."_s));
        QCOMPARE(f.answers->lastBox(), u"warning Find [Ok]"_s);
        QCOMPARE(f.status(), QString());
    }

    void searchBoxShowsAMessageForEachMissingText()
    {
        EditedFile f;
        f.installation.write(u"config/uiconfig.xml"_s, R"(<ui><actions><action name="editFind"/></actions><toolbars>
                             <toolbar name="edit"><action name="editFind"/></toolbar></toolbars></ui>)");
        f.restart();
        f.open(u"a.c"_s);
        auto *box = f.window->findChild<QComboBox *>(u"searchBox"_s);
        box->setEditText(u"t"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectedText(), u"t"_s);
        f.answers->press(QMessageBox::Ok);
        box->setEditText(u"tx"_s);
        f.answers->press(QMessageBox::Ok);
        box->setEditText(u"txx"_s);
        QCOMPARE(f.answers->shown, (QStringList{u"Cannot find the string tx."_s, u"Cannot find the string txx."_s}));
        f.window->fileCloseAll();
        QVERIFY(!box->isEnabled());
    }
};

int main(int argc, char **argv)
{
    EditCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_editcommands.moc"

#include "../base/blockedfile.h"
#include "commandlinewindow.h"
#include "dockwindow.h"
#include "filesearcher.h"
#include "findinfilesdialog.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "productmenus.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include "searchbox.h"
#include "shortcutspage.h"
#include <optional>
#include <QAbstractItemView>
#include <QComboBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolTip>
#include <QTreeWidget>
#include <QWindow>

// From the parts of the window to its actions and other parts, with the menus of the product.

using namespace Qt::StringLiterals;

namespace {
class ProductWindow : public ProductMenus
{
public:
    [[nodiscard]] ProjectTree *tree() const { return window->findChild<ProjectTree *>(); }
    [[nodiscard]] DockWindow *dock(const QString &name) const { return window->findChild<DockWindow *>(name); }

    void openProject(const QStringList &files) const
    {
        writeProject(u"fw.vnp"_s, files);
        QVERIFY(window->openWorkspace(writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
    }

    /// Selects a row below the project.
    void selectInTree(const QString &text) const
    {
        tree()->expandAll();
        for (ListViewItem *item = tree()->firstChild(); item; item = item->itemBelow()) {
            if (item->text(0) == text)
                tree()->setCurrentItem(item);
        }
    }

    /// The mark of a row that is shown.
    [[nodiscard]] QString markOf(const QString &text) const
    {
        for (ListViewItem *item = tree()->firstChild(); item; item = item->itemBelow()) {
            if (item->text(0) == text)
                return static_cast<const ProjectTreeItem *>(item)->mark();
        }
        return u"not shown"_s;
    }

    [[nodiscard]] QString output(uint page) const { return window->outputWindow()->page(page)->toPlainText(); }

    /// Fills in the dialog for finding in files.
    static void searchFor(QDialog *dialog, const QString &text, const QString &folder,
                          FindInFilesDialog::Scope scope = FindInFilesDialog::Folder, const QString &mask = u"*.*"_s)
    {
        dialog->findChild<QComboBox *>(u"ScopeCombo"_s)->setCurrentIndex(scope);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(text);
        dialog->findChild<QComboBox *>(u"LookInCombo"_s)->setEditText(folder);
        dialog->findChild<QComboBox *>(u"FileTypesCombo"_s)->setEditText(mask);
        dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
    }
};

const auto EditActions = u"editUndo editRedo editCut editCopy editPaste"_s;
} // namespace

class WindowConnectionsTest : public QObject
{
    Q_OBJECT

private:
    /// All of it is selected and on the clipboard then.
    static void copyInAChangedText(const ProductWindow &f)
    {
        f.open(u"a.c"_s, "one two");
        f.view()->setFocus();
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_X);
        f.action(u"editSelectAll"_s)->trigger();
        f.action(u"editCopy"_s)->trigger();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void dockWindowsBeginAtTheirPlaces()
    {
        const ProductWindow f;
        QStringList docks;
        for (DockWindow *dock : f.window->findChildren<DockWindow *>())
            docks += u"%1 '%2' %3 %4"_s.arg(dock->objectName(), dock->windowTitle())
                         .arg(f.window->dockWidgetArea(dock))
                         .arg(dock->isVisible() ? u"shown"_s : u"hidden"_s);
        const auto line = [](const char *name, const char *title, Qt::DockWidgetArea area, const char *state) {
            return u"%1 '%2' %3 %4"_s.arg(QLatin1StringView(name), QLatin1StringView(title))
                .arg(area)
                .arg(QLatin1StringView(state));
        };
        QCOMPARE(docks, (QStringList{
                            line("navigatorDockWindow", "Navigator", Qt::LeftDockWidgetArea, "shown"),
                            line("outputDockWindow", "Output", Qt::BottomDockWidgetArea, "shown"),
                            line("registerDockWindow", "Registers", Qt::RightDockWidgetArea, "hidden"),
                            line("peripheralDockWindow", "Peripherals", Qt::RightDockWidgetArea, "hidden"),
                            line("watchDockWindow", "Watches", Qt::RightDockWidgetArea, "hidden"),
                            line("memoryDockWindow", "Memory", Qt::TopDockWidgetArea, "hidden"),
                            line("callStackDockWindow", "Call Stack", Qt::RightDockWidgetArea, "hidden"),
                            line("variablesDockWindow", "Variables", Qt::RightDockWidgetArea, "hidden"),
                            line("pythonOutputDockWindow", "Python Output", Qt::RightDockWidgetArea, "hidden"),
                            line("breakpointsDockWindow", "Breakpoints", Qt::BottomDockWidgetArea, "hidden"),
                            line("processorDockWindow", "Processors", Qt::BottomDockWidgetArea, "hidden"),
                            line("liveDockWindow", "Live", Qt::BottomDockWidgetArea, "hidden"),
                        }));
        QCOMPARE(f.window->corner(Qt::BottomLeftCorner), Qt::LeftDockWidgetArea);
        QVERIFY(f.window->isDockNestingEnabled());
        QVERIFY(!f.window->windowIcon().isNull());
    }

    void onlyCommandsThatNeedNothingAreEnabledAtFirst()
    {
        const ProductWindow f;
        QStringList enabled;
        for (const QAction *action : f.window->actions()) {
            if (action->isEnabled() && !action->objectName().isEmpty())
                enabled += action->objectName();
        }
        QCOMPARE(enabled.join(u' '),
                 u"fileNew fileOpen fileSaveAll fileExit editFindInFiles editLookupNextLine editNextMessage "
                 "editPreviousMessage viewNavigator viewOutput projectNew projectOpen debugBreakpoints "
                 "debugViewDisassembly debugToggleRegisterWindow debugToggleWatchWindow debugToggleMemoryWindow "
                 "toolsMacroNew toolsMacroEdit toolsRecordScript toolsCustomise toolsOptions helpSearch helpHome "
                 "helpAbout helpPlugins helpReport debugToggleCallStackWindow debugToggleVariablesWindow "
                 "debugToggleBreakpointsWindow debugToggleProcessorWindow debugToggleLiveWindow viewZoomIn "
                 "viewZoomOut viewZoomReset"_s);
    }

    void editActionsFollowTheText()
    {
        const ProductWindow f;
        f.open(u"a.c"_s, "one");
        f.view()->setFocus();
        QCOMPARE(f.enabled(EditActions), QString());
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_X);
        QCOMPARE(f.enabled(EditActions), u"editUndo"_s);
        f.action(u"editUndo"_s)->trigger();
        QCOMPARE(f.enabled(EditActions), u"editRedo"_s);
        f.action(u"editSelectAll"_s)->trigger();
        QCOMPARE(f.enabled(EditActions), u"editRedo editCut editCopy"_s);
        f.action(u"editCopy"_s)->trigger();
        QCOMPARE(f.enabled(EditActions), u"editRedo editCut editCopy editPaste"_s);
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_Left);
        QCOMPARE(f.enabled(EditActions), u"editRedo editPaste"_s);
    }

    void editActionsFollowTheFocus()
    {
        const ProductWindow f;
        copyInAChangedText(f);
        const QString inText = u"editUndo editCut editCopy editPaste"_s;
        QCOMPARE(f.enabled(EditActions), inText);
        OutputPage *page = f.window->outputWindow()->page(OutputWindow::Build);
        f.window->outputWindow()->displayPage(OutputWindow::Build);
        page->setFocus();
        QVERIFY(page->hasFocus());
        QCOMPARE(f.enabled(EditActions), QString());
        page->outputLine(u"text\n"_s);
        page->selectAll();
        QCOMPARE(f.enabled(EditActions), u"editCopy"_s);
        f.view()->setFocus();
        QCOMPARE(f.enabled(EditActions), inText);
        f.window->findChild<SearchBox *>()->setFocus();
        QVERIFY(!f.view()->currentEdit()->hasFocus());
        QCOMPARE(f.enabled(EditActions), QString());
        f.view()->insertText(u"more"_s);
        f.view()->selectAll(); // as a search does
        QCOMPARE(f.enabled(EditActions), QString());
        f.view()->setFocus();
        QCOMPARE(f.enabled(EditActions), inText);
        f.action(u"editUndo"_s)->trigger();
        QVERIFY(f.action(u"editRedo"_s)->isEnabled());
        page->setFocus();
        QCOMPARE(f.enabled(EditActions), u"editCopy"_s);
    }

    void selectAllIsEnabledWhereItActs()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s});
        const QAction *selectAll = f.action(u"editSelectAll"_s);
        QVERIFY(!selectAll->isEnabled());
        f.open(u"a.c"_s);
        f.view()->setFocus();
        QVERIFY(selectAll->isEnabled());
        f.tree()->setFocus();
        QVERIFY(f.tree()->hasFocus());
        QVERIFY(!selectAll->isEnabled());
        f.view()->setFocus();
        QVERIFY(selectAll->isEnabled());
        f.tree()->setFocus();
        OutputWindow *output = f.window->outputWindow();
        output->displayPage(OutputWindow::Build);
        output->page(OutputWindow::Build)->setFocus();
        QVERIFY(selectAll->isEnabled());
        f.window->menuBar()->setFocus(); // the command is for the widget that had the focus
        QVERIFY(selectAll->isEnabled());
        auto *tabs = f.window->findChild<QTabWidget *>(u"outputTabs"_s);
        tabs->tabBar()->setFocus();
        QVERIFY(selectAll->isEnabled());
        tabs->setCurrentIndex(tabs->count() - 1); // the console
        QVERIFY(!output->currentPage());
        QVERIFY(!selectAll->isEnabled());
        tabs->setCurrentIndex(0);
        QVERIFY(selectAll->isEnabled());
        f.window->findChild<SearchBox *>()->setFocus();
        QVERIFY(!selectAll->isEnabled());
        f.open(u"b.c"_s);
        f.view()->setFocus();
        QVERIFY(selectAll->isEnabled());
        f.tree()->setFocus();
        QVERIFY(!selectAll->isEnabled());
        f.window->viewManager()->findChild<QTabBar *>()->setFocus(); // beside the view, which does not get the focus
        QVERIFY(selectAll->isEnabled());
        f.window->fileCloseAll();
        QVERIFY(!selectAll->isEnabled());
    }

    void editActionsAreDisabledAfterTheLastFileIsClosed()
    {
        const ProductWindow f;
        copyInAChangedText(f);
        QVERIFY(!f.enabled(EditActions).isEmpty());
        f.document()->setModified(false);
        f.window->fileClose();
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(f.enabled(EditActions), QString());
    }

    void openMenuKeepsTheEditActionsOfTheText()
    {
        const ProductWindow f;
        f.open(u"a.c"_s, "one two");
        f.view()->setFocus();
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_X);
        f.window->menuBar()->setFocus();
        QVERIFY(!f.view()->currentEdit()->hasFocus());
        QCOMPARE(f.enabled(EditActions), u"editUndo"_s);
    }

    void openDialogKeepsTheEditActionsOfTheText()
    {
        const ProductWindow f;
        f.open(u"a.c"_s, "one two");
        f.view()->setFocus();
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_X);
        f.action(u"editFind"_s)->trigger();
        QTRY_VERIFY(!f.view()->currentEdit()->hasFocus()); // the dialog has it
        QCOMPARE(f.enabled(EditActions), u"editUndo"_s);
        f.view()->insertText(u"more"_s);
        f.view()->selectAll(); // as the dialog does with a match
        QCOMPARE(f.enabled(EditActions), u"editUndo editCut editCopy"_s);
    }

    void cutAndPasteFollowTheTree()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s});
        f.tree()->setFocus();
        f.selectInTree(u"main.c"_s);
        QCOMPARE(f.enabled(u"editCut editRemove editPaste"_s), u"editCut editRemove"_s);
        f.action(u"editCut"_s)->trigger();
        f.selectInTree(f.window->projectWorkspace()->currentProject()->displayName());
        QCOMPARE(f.enabled(u"editCut editRemove editPaste"_s), u"editPaste"_s);
        f.open(u"a.c"_s);
        f.view()->setFocus();
        f.tree()->setFocus();
        QCOMPARE(f.enabled(u"editCut editRemove editPaste"_s), u"editPaste"_s);
    }

    void undoFollowsTheTreeAndTheText()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s});
        f.open(u"a.c"_s, "one");
        f.type(u"new "_s);
        f.view()->undo();
        f.type(u"x"_s);
        f.tree()->setFocus();
        f.selectInTree(u"main.c"_s);
        QCOMPARE(f.enabled(u"editUndo editRedo"_s), QString());
        f.action(u"editCut"_s)->trigger();
        QCOMPARE(f.enabled(u"editUndo editRedo"_s), u"editUndo"_s);
        f.action(u"editUndo"_s)->trigger();
        QCOMPARE(f.window->projectWorkspace()->currentProject()->rootFiles().size(), 1);
        QCOMPARE(f.text(), u"xone"_s);
        QCOMPARE(f.enabled(u"editUndo editRedo"_s), QString());
        f.view()->setFocus();
        QCOMPARE(f.enabled(u"editUndo editRedo"_s), u"editUndo"_s);
        f.action(u"editUndo"_s)->trigger();
        QCOMPARE(f.text(), u"one"_s);
        f.tree()->setFocus();
        QCOMPARE(f.enabled(u"editUndo editRedo"_s), QString()); // what was undone in the text stays there
    }

    void commandsOfTheTreeComeBackWithItsFocus()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s, u"b.c"_s});
        f.open(u"a.c"_s, "one");
        f.tree()->setFocus();
        f.selectInTree(u"main.c"_s);
        f.action(u"editCut"_s)->trigger();
        f.selectInTree(u"b.c"_s);
        const QString commands = u"editUndo editRedo editCut editPaste"_s;
        const QString inTree = f.enabled(commands);
        QVERIFY2(inTree.startsWith(u"editUndo editCut"_s), qPrintable(inTree));
        f.view()->setFocus();
        QVERIFY(f.enabled(commands) != inTree);
        f.tree()->setFocus();
        QCOMPARE(f.enabled(commands), inTree);
    }

    void modifiedFilesAreMarkedInTheTree()
    {
        const ProductWindow f;
        f.write(u"src/main.c"_s, "int a;\n");
        f.write(u"src/uart.c"_s, "int b;\n");
        f.openProject({u"src/main.c"_s, u"src/uart.c"_s});
        QVERIFY(f.window->openFile(f.path(u"src/main.c"_s), false));
        const auto marks = [&f] { return f.markOf(u"main.c"_s) + u'|' + f.markOf(u"uart.c"_s); };
        QTRY_COMPARE(marks(), u"|"_s);
        f.type(u"x"_s);
        QTRY_COMPARE(marks(), u" *|"_s);
        f.window->fileSave();
        QTRY_COMPARE(marks(), u"|"_s);
        f.type(u"y"_s);
        QTRY_COMPARE(marks(), u" *|"_s);
        f.answers->press(QMessageBox::No);
        f.window->fileClose();
        QTRY_COMPARE(marks(), u"|"_s);
    }

    void saveAndCloseFollowTheView()
    {
        const ProductWindow f;
        const auto names = u"fileSave fileSaveAs windowSplit windowClosePane"_s;
        QCOMPARE(f.enabled(names), QString());
        f.open(u"a.c"_s);
        QCOMPARE(f.enabled(names), u"fileSaveAs windowSplit"_s);
        f.type(u"x"_s);
        QCOMPARE(f.enabled(names), u"fileSave fileSaveAs windowSplit"_s);
        QVERIFY(f.document()->save());
        QCOMPARE(f.enabled(names), u"fileSaveAs windowSplit"_s);
        f.type(u"x"_s);
        f.view()->setFocus();
        f.action(u"windowSplit"_s)->trigger();
        QCOMPARE(f.enabled(names), u"fileSave fileSaveAs windowSplit windowClosePane"_s);
        f.action(u"windowClosePane"_s)->trigger();
        QCOMPARE(f.view()->edits().size(), 1);
        QCOMPARE(f.enabled(names), u"fileSave fileSaveAs windowSplit"_s);
    }

    void saveFollowsOnlyTheViewInFront()
    {
        const ProductWindow f;
        f.open(u"a.c"_s);
        Document *behind = f.document();
        f.open(u"b.c"_s);
        behind->setModified(true);
        QVERIFY(!f.action(u"fileSave"_s)->isEnabled());
        f.window->windowNext();
        QCOMPARE(f.document(), behind);
        QVERIFY(f.action(u"fileSave"_s)->isEnabled());
    }

    void currentFileIsShownInTheNavigator()
    {
        const ProductWindow f;
        f.write(u"src/main.c"_s, "int a;\n");
        f.openProject({u"src/main.c"_s});
        f.dock(u"navigatorDockWindow"_s)->hide();
        QVERIFY(f.window->openFile(f.path(u"src/main.c"_s), false));
        f.action(u"viewShowInNavigator"_s)->trigger();
        QVERIFY(f.dock(u"navigatorDockWindow"_s)->isVisible());
        QVERIFY(f.tree()->selectedFile());
        f.open(u"other.c"_s);
        f.action(u"viewShowInNavigator"_s)->trigger();
        QCOMPARE(f.status(), u"No project of the workspace contains this file"_s);
    }

    void navigatorStaysAsItIsWithoutAFile()
    {
        const ProductWindow f;
        f.dock(u"navigatorDockWindow"_s)->hide();
        f.action(u"viewShowInNavigator"_s)->setEnabled(true);
        f.action(u"viewShowInNavigator"_s)->trigger();
        QVERIFY(!f.dock(u"navigatorDockWindow"_s)->isVisible());
        QCOMPARE(f.status(), QString());
    }

    void propertiesOfAFileAreShownFromTheTree()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s});
        f.selectInTree(u"main.c"_s);
        f.answers->meet([](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"propertyEditorDialog"_s);
            dialog->reject();
        });
        f.tree()->showFileProperties();
        QVERIFY(f.answers->allGiven());
    }

    void formatOfTheFileIsOfferedByACommand()
    {
        const ProductWindow f;
        QVERIFY(!f.action(u"viewFileFormat"_s)->isEnabled());
        f.open(u"a.c"_s);
        f.action(u"viewFileFormat"_s)->trigger();
        auto *menu = f.window->findChild<QMenu *>(u"fileFormatMenu"_s);
        QVERIFY(menu->isVisible());
        QVERIFY(!menu->actions().isEmpty());
        menu->close();
    }

    void valueAtTheCursorIsShownByACommand()
    {
        const ProductWindow f;
        f.open(u"a.c"_s, " \n");
        f.view()->setFocus();
        f.action(u"debugShowValue"_s)->setEnabled(true);
        f.action(u"debugShowValue"_s)->trigger();
        QVERIFY(QToolTip::text().contains(u"There is no expression at the cursor."_s));
        QToolTip::hideText();
    }

    void positionOfTheCursorIsShownWhileThereIsAText()
    {
        const ProductWindow f;
        f.open(u"a.c"_s);
        f.view()->setFocus();
        const auto *label = f.window->findChild<QLabel *>(u"cursorLabel"_s);
        QCOMPARE(label->property("text"), u" Ln 1, Col 1"_s);
        f.window->fileCloseAll();
        QCOMPARE(label->property("text"), QString());
    }

    void positionOfTheCursorStaysWhenAnotherFileIsClosed()
    {
        const ProductWindow f;
        f.open(u"a.c"_s);
        f.open(u"b.c"_s, "1\n2\n3\n");
        f.view()->setFocus();
        f.view()->gotoLine(3);
        const auto *label = f.window->findChild<QLabel *>(u"cursorLabel"_s);
        QCOMPARE(label->property("text"), u" Ln 3, Col 1"_s);
        f.window->viewManager()->closeDocument(f.window->workspace()->findDocument(f.path(u"a.c"_s)));
        QCOMPARE(f.openFiles(), QStringList(u"b.c"_s));
        QCOMPARE(label->property("text"), u" Ln 3, Col 1"_s);
    }

    void windowThatIsDeletedOpensNothing()
    {
        ProductWindow f;
        f.openProject({u"a.c"_s});
        const QString file = f.write(u"a.c"_s, "int a;\n");
        const QString other = f.writeWorkspace(u"other.vnw"_s, {});
        QList<bool> opened;
        connect(&f.window->activity(), &Activity::workspaceClosed, qApp, [&, window = f.window.get()] {
            opened = {window->openFile(file, true), window->openProject(f.path(u"fw.vnp"_s), true),
                      window->openWorkspace(other, true)};
        });
        f.window.reset();
        QCOMPARE(opened, (QList<bool>{false, false, false}));
    }

    void findNextWithoutATextAsksForIt()
    {
        const ProductWindow f;
        f.open(u"a.c"_s);
        f.action(u"editFindNext"_s)->trigger();
        QVERIFY(f.window->findChild<QDialog *>(u"findDialog"_s)->isVisible());
        QCOMPARE(f.answers->shown, QStringList());
    }

    void searchBoxDoesNotCompleteWhatIsTyped()
    {
        const ProductWindow f;
        f.open(u"a.c"_s, "needle nine\n");
        f.window->resize(1800, 700); // no tool bar is cut
        auto *box = f.window->findChild<SearchBox *>();
        QTRY_VERIFY(box->isVisible());
        box->setFocus();
        QTest::keyClicks(box, u"needle"_s);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(box->count(), 1);
        box->lineEdit()->clear();
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        box->setFocus();
        QVERIFY(box->hasFocus());
        QTest::keyClicks(box, u"n"_s);
        QCOMPARE(box->currentText(), u"n"_s);
    }

    void scriptRaisesTheOutputWhenItIsNeeded_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("floats");
        for (const bool floats : {false, true}) {
            const char *place = floats ? "floating" : "docked";
            QTest::addRow("waits for a line, %s", place) << QByteArray("input()\n") << floats;
            QTest::addRow("has to be stopped, %s", place) << QByteArray("while True:\n    pass\n") << floats;
        }
    }

    void scriptRaisesTheOutputWhenItIsNeeded()
    {
        QFETCH(const QByteArray, script);
        QFETCH(const bool, floats);
        const ProductWindow f;
        f.write(u"s.py"_s, script);
        QDockWidget *dock = f.dock(u"outputDockWindow"_s);
        dock->setFloating(floats);
        dock->hide();
        bool isRaised = false;
        QTimer::singleShot(0, f.window.get(), [&] {
            QTest::keyClick(f.window.get(), Qt::Key_X); // the window seems to be dead
            auto *stop = dock->findChild<QAbstractButton *>(u"stopScriptButton"_s);
            isRaised = dock->isVisible() && stop->isVisible();
            dock->show();
            stop->click();
        });
        QVERIFY(!f.window->outputWindow()->runScript(f.path(u"s.py"_s)));
        QVERIFY(isRaised);
    }

    void searchInFilesRaisesTheOutput()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "one\nneedle\n");
        f.dock(u"outputDockWindow"_s)->hide();
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QVERIFY(f.dock(u"outputDockWindow"_s)->isVisible());
        QTRY_COMPARE(
            f.output(OutputWindow::FindInFiles),
            u"Searching for 'needle'...\n%1(2):needle\n1 occurrence has been found."_s.arg(f.path(u"src/a.c"_s)));
        QCOMPARE(f.window->outputWindow()->currentPage(), f.window->outputWindow()->page(OutputWindow::FindInFiles));
        QVERIFY(!f.action(u"editStopFindInFiles"_s)->isEnabled());
    }

    void searchReadsTextsAsTheyAreEdited()
    {
        const ProductWindow f;
        f.open(u"src/a.c"_s, "one\n");
        f.type(u"needle "_s);
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(f.output(OutputWindow::FindInFiles).contains(u"a.c(1):needle one"_s));
    }

    void editedTextIsReadThroughALink()
    {
        const ProductWindow f;
        f.open(u"src/a.c"_s, "one\n");
        f.type(u"needle "_s);
        QVERIFY(QFile::link(f.path(u"src"_s), f.path(u"linked"_s)));
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"linked"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(f.output(OutputWindow::FindInFiles),
                     u"Searching for 'needle'...\n%1(1):needle one\n1 occurrence has been found."_s.arg(
                         f.path(u"linked/a.c"_s)));
    }

    void textEditedThroughALinkIsReadInItsFolder()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "one\n");
        QVERIFY(QFile::link(f.path(u"src"_s), f.path(u"linked"_s)));
        QVERIFY(f.window->openFile(f.path(u"linked/a.c"_s), false));
        f.type(u"needle "_s);
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(
            f.output(OutputWindow::FindInFiles),
            u"Searching for 'needle'...\n%1(1):needle one\n1 occurrence has been found."_s.arg(f.path(u"src/a.c"_s)));
    }

    void editedTextOfADeletedFileIsRead()
    {
        const ProductWindow f;
        f.open(u"src/a.c"_s, "one\n");
        f.type(u"needle "_s);
        QVERIFY(QFile::remove(f.path(u"src/a.c"_s)));
        f.answers->meet([](QDialog *dialog) {
            ProductWindow::searchFor(dialog, u"needle"_s, {}, FindInFilesDialog::OpenDocuments);
        });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(
            f.output(OutputWindow::FindInFiles),
            u"Searching for 'needle'...\n%1(1):needle one\n1 occurrence has been found."_s.arg(f.path(u"src/a.c"_s)));
    }

    /// It may have changed outside of the editor.
    void fileOfAnUnchangedTextIsRead()
    {
        const ProductWindow f;
        f.open(u"src/a.c"_s, "one\n");
        f.changeOutside(u"src/a.c"_s, "needle\n", -10); // not newer, or the window would ask
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(
            f.output(OutputWindow::FindInFiles),
            u"Searching for 'needle'...\n%1(1):needle\n1 occurrence has been found."_s.arg(f.path(u"src/a.c"_s)));
    }

    void foundTextsMayContainPlaceholders()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "%1 %2\n%3 %1\n");
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"%1"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        const QString path = f.path(u"src/a.c"_s);
        QTRY_COMPARE(f.output(OutputWindow::FindInFiles), u"Searching for '%1'...\n"_s + path + u"(1):%1 %2\n"_s + path
                                                              + u"(2):%3 %1\n2 occurrences have been found."_s);
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"%4"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(f.output(OutputWindow::FindInFiles), u"Searching for '%4'...\n0 occurrences have been found."_s);
    }

    void fileOfTwoProjectsIsSearchedOnce()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "needle\n");
        f.writeProject(u"fw.vnp"_s, {u"src/a.c"_s});
        f.writeProject(u"lib.vnp"_s, {u"src/a.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
        f.answers->meet(
            [](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, {}, FindInFilesDialog::AllProjects); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY2(f.output(OutputWindow::FindInFiles).endsWith(u"\n1 occurrence has been found."_s),
                     qPrintable(f.output(OutputWindow::FindInFiles)));
    }

    void searchCoversTheChosenFiles_data()
    {
        QTest::addColumn<FindInFilesDialog::Scope>("scope");
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("found");
        QTest::newRow("current project") << FindInFilesDialog::CurrentProject << u"*.*"_s << u"a.c a.h"_s;
        QTest::newRow("all projects") << FindInFilesDialog::AllProjects << u"*.*"_s << u"a.c a.h lib.c"_s;
        QTest::newRow("headers") << FindInFilesDialog::AllProjects << u"*.h; *.txt"_s << u"a.h"_s;
        QTest::newRow("mask without a name") << FindInFilesDialog::CurrentProject << u";"_s << u"a.c a.h"_s;
        QTest::newRow("open documents") << FindInFilesDialog::OpenDocuments << u"*.*"_s << u"open.txt"_s;
        QTest::newRow("open sources") << FindInFilesDialog::OpenDocuments << u"*.c"_s << u""_s;
        QTest::newRow("folder") << FindInFilesDialog::Folder << u"*.*"_s << u"a.c a.h lib.c open.txt stray.c"_s;
    }

    void searchCoversTheChosenFiles()
    {
        QFETCH(FindInFilesDialog::Scope, scope);
        QFETCH(QString, mask);
        QFETCH(QString, found);
        const ProductWindow f;
        for (const QString &name : {u"a.c"_s, u"a.h"_s, u"lib.c"_s, u"stray.c"_s})
            f.write(u"src/"_s + name, "needle\n");
        f.write(u"fw.vnp"_s, "<project><file path='src/a.c'/><folder name='outer'><folder name='inner'>"
                             "<file path='src/a.h'/></folder></folder><properties currentconfiguration='Default'>"
                             "<configuration name='Default'/></properties></project>");
        f.writeProject(u"lib.vnp"_s, {u"src/lib.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
        f.open(u"src/open.txt"_s, "needle\n");
        f.window->openHelp(f.write(u"page.html"_s, "needle\n"));
        f.answers->meet(
            [&](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s), scope, mask); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(f.output(OutputWindow::FindInFiles).endsWith(u"found."_s));
        QStringList names;
        for (const QString &line : f.output(OutputWindow::FindInFiles).split(u'\n')) {
            if (line.endsWith(u"(1):needle"_s))
                names += QFileInfo(line.section(u'(', 0, -2)).fileName();
        }
        names.sort();
        QCOMPARE(names.join(u' '), found);
    }

    void filesAreSearchedInTheOrderOfTheProject()
    {
        const ProductWindow f;
        for (const QString &name : {u"z.c"_s, u"m.c"_s, u"a.c"_s})
            f.write(name, "needle\n");
        f.write(u"fw.vnp"_s, "<project><folder name='outer'><folder name='inner'><file path='a.c'/></folder>"
                             "<file path='m.c'/></folder><file path='z.c'/><properties currentconfiguration='Default'>"
                             "<configuration name='Default'/></properties></project>");
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.answers->meet([&](QDialog *dialog) {
            ProductWindow::searchFor(dialog, u"needle"_s, {}, FindInFilesDialog::CurrentProject);
        });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(f.output(OutputWindow::FindInFiles).endsWith(u"found."_s));
        QStringList names;
        for (const QString &line : f.output(OutputWindow::FindInFiles).split(u'\n').filter(u"(1):"_s))
            names += QFileInfo(line.section(u'(', 0, -2)).fileName();
        QCOMPARE(names, (QStringList{u"z.c"_s, u"m.c"_s, u"a.c"_s}));
    }

    void expressionThatIsNotValidIsReportedInTheOutput()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "one\n");
        f.answers->meet([&f](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"RegExpCheck"_s)->setChecked(true);
            ProductWindow::searchFor(dialog, u"("_s, f.path(u"src"_s));
        });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(f.output(OutputWindow::FindInFiles).endsWith(u"\n0 occurrences have been found."_s));
        const QString remark = f.output(OutputWindow::FindInFiles).section(u'\n', 1, 1);
        QVERIFY2(remark.startsWith(u"The expression is not valid: "_s), qPrintable(remark));
    }

    void projectIsSearchedWholeUnlessAMaskIsGiven()
    {
        const ProductWindow f;
        const QStringList names{u"src/a.c"_s, u"src/b.cpp"_s, u"src/c.s"_s, u"src/d.S"_s, u"src/e.inc"_s};
        for (const QString &name : names)
            f.write(name, "needle\n");
        f.openProject(names);
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"ScopeCombo"_s)->setCurrentIndex(FindInFilesDialog::CurrentProject);
            dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
            dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
        });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY2(f.output(OutputWindow::FindInFiles).endsWith(u"\n5 occurrences have been found."_s),
                     qPrintable(f.output(OutputWindow::FindInFiles)));
    }

    void filesThatTheMaskLeavesOutAreCounted_data()
    {
        QTest::addColumn<FindInFilesDialog::Scope>("scope");
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("remark");
        QTest::newRow("project") << FindInFilesDialog::CurrentProject << u"*.c; *.h;*.asm"_s
                                 << u"2 files of other types have not been searched.\n"_s;
        QTest::newRow("folder") << FindInFilesDialog::Folder << u"*.c; *.h;*.asm"_s
                                << u"3 files of other types have not been searched.\n"_s;
        QTest::newRow("one") << FindInFilesDialog::CurrentProject << u"*.c; *.s"_s
                             << u"1 file of another type has not been searched.\n"_s;
        QTest::newRow("none") << FindInFilesDialog::Folder << u"*"_s << QString();
    }

    void filesThatTheMaskLeavesOutAreCounted()
    {
        QFETCH(FindInFilesDialog::Scope, scope);
        QFETCH(QString, mask);
        QFETCH(QString, remark);
        const ProductWindow f;
        for (const QString &name : {u"src/a.c"_s, u"src/b.cpp"_s, u"src/c.s"_s, u"src/d.txt"_s})
            f.write(name, "one\n");
        f.openProject({u"src/a.c"_s, u"src/b.cpp"_s, u"src/c.s"_s});
        f.answers->meet(
            [&](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s), scope, mask); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_COMPARE(f.output(OutputWindow::FindInFiles),
                     u"Searching for 'needle'...\n"_s + remark + u"0 occurrences have been found."_s);
    }

    void searchOffersTheProjectsAndTheFolderOfTheWorkspace()
    {
        const ProductWindow f;
        QStringList offers;
        const auto look = [&offers](QDialog *dialog) {
            const auto *scopes = dialog->findChild<QComboBox *>(u"ScopeCombo"_s);
            const auto isOffered = [scopes](int scope) {
                return scopes->model()->flags(scopes->model()->index(scope, 0)) & Qt::ItemIsEnabled;
            };
            offers = {isOffered(FindInFilesDialog::CurrentProject) ? u"current"_s : u"-"_s,
                      isOffered(FindInFilesDialog::AllProjects) ? u"all"_s : u"-"_s,
                      dialog->findChild<QComboBox *>(u"LookInCombo"_s)->currentText()};
            dialog->reject();
        };
        f.answers->meet(look);
        f.action(u"editFindInFiles"_s)->trigger();
        QCOMPARE(offers, (QStringList{u"-"_s, u"-"_s, QString()}));
        f.openProject({});
        f.answers->meet(look);
        f.action(u"editFindInFiles"_s)->trigger();
        QCOMPARE(offers, (QStringList{u"current"_s, u"all"_s, QFileInfo(f.path(u"all.vnw"_s)).path()}));
    }

    void boxOfConfigurationsFollowsTheProject()
    {
        const ProductWindow f;
        f.openProject({});
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        Project *project = f.window->projectWorkspace()->currentProject();
        QVERIFY(!box->isEnabled());
        project->properties()->addConfiguration(u"Release"_s);
        project->setCurrentConfiguration(u"Release"_s);
        QCOMPARE(box->currentText(), u"Release"_s);
        QVERIFY(box->isEnabled());
    }

    void onlyConfigurationCannotBeChosenInTheMenu()
    {
        const ProductWindow f;
        f.openProject({});
        const auto entries = [&f] {
            auto *menu = f.window->findChild<QMenu *>(u"buildConfigurationsMenu"_s);
            Q_EMIT menu->aboutToShow();
            QStringList texts;
            for (const QAction *entry : menu->actions())
                texts.append(entry->text() + (entry->isEnabled() ? u"+"_s : u"-"_s));
            return texts.join(u' ');
        };
        QVERIFY2(entries().endsWith(u" Default-"_s), qPrintable(entries()));
        f.window->projectWorkspace()->currentProject()->properties()->addConfiguration(u"Release"_s);
        QVERIFY2(entries().endsWith(u" Default+ Release+"_s), qPrintable(entries()));
        f.window->activity().setState(StateBuilding);
        QVERIFY2(entries().endsWith(u" Default- Release-"_s), qPrintable(entries()));
    }

    /// The entries are those of the moment in which the menu was shown.
    void entryOfARemovedConfigurationDoesNothing()
    {
        const ProductWindow f;
        f.openProject({});
        Project *project = f.window->projectWorkspace()->currentProject();
        project->properties()->addConfiguration(u"Release"_s);
        auto *menu = f.window->findChild<QMenu *>(u"buildConfigurationsMenu"_s);
        Q_EMIT menu->aboutToShow();
        const QPointer<QAction> entry = menu->actions().last();
        QCOMPARE(entry->text(), u"Release"_s);
        QVERIFY(project->properties()->removeConfiguration(u"Release"_s));
        QVERIFY(entry);
        entry->trigger();
        QCOMPARE(project->currentConfiguration(), u"Default"_s);
    }

    void entryOfAConfigurationWithoutAProjectDoesNothing()
    {
        const ProductWindow f;
        f.openProject({});
        f.window->projectWorkspace()->currentProject()->properties()->addConfiguration(u"Release"_s);
        auto *menu = f.window->findChild<QMenu *>(u"buildConfigurationsMenu"_s);
        Q_EMIT menu->aboutToShow();
        const QPointer<QAction> entry = menu->actions().last();
        f.discard();
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(entry);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"project\" in "_s));
        entry->trigger();
        QVERIFY(f.answers->shown.isEmpty());
    }

    void configurationChosenTooLateIsNotShown()
    {
        const ProductWindow f;
        f.openProject({});
        Project *project = f.window->projectWorkspace()->currentProject();
        project->properties()->addConfiguration(u"Release"_s);
        project->setCurrentConfiguration(u"Release"_s);
        f.window->activity().setState(StateBuilding);
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        box->setCurrentIndex(0); // its list was open when the build began
        Q_EMIT box->activated(0);
        QCOMPARE(project->currentConfiguration(), u"Release"_s);
        QCOMPARE(box->currentText(), u"Release"_s);
    }

    void removedConfigurationCannotBeChosenInTheBox()
    {
        const ProductWindow f;
        f.openProject({});
        Project *project = f.window->projectWorkspace()->currentProject();
        project->properties()->addConfiguration(u"Release"_s);
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        box->showPopup();
        QVERIFY(project->properties()->removeConfiguration(u"Release"_s));
        QCOMPARE(box->itemText(1), u"Release"_s);
        Q_EMIT box->activated(1); // its list was open
        QCOMPARE(project->currentConfiguration(), u"Default"_s);
        QCOMPARE(box->count(), 1);
    }

    /// The dialog that edits the configurations does not report what it has changed.
    void boxOfConfigurationsShowsThoseThatWereAdded()
    {
        const ProductWindow f;
        f.openProject({});
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        Project *project = f.window->projectWorkspace()->currentProject();
        project->properties()->addConfiguration(u"Release"_s);
        QEvent activation(QEvent::ActivationChange); // of the window, when the dialog closes
        QCoreApplication::sendEvent(box, &activation);
        QCOMPARE(box->count(), 2);
        project->properties()->addConfiguration(u"Test"_s);
        box->showPopup();
        QVERIFY(box->view()->isVisible());
        QCOMPARE(box->count(), 3);
        box->hidePopup();
    }

    void openBoxOfConfigurationsKeepsItsRow()
    {
        const ProductWindow f;
        f.openProject({});
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        f.window->projectWorkspace()->currentProject()->properties()->addConfiguration(u"Release"_s);
        box->showPopup();
        QTest::keyClick(box->view(), Qt::Key_Down);
        QCOMPARE(box->view()->currentIndex().row(), 1);
        QEvent activation(QEvent::ActivationChange);
        QCoreApplication::sendEvent(box, &activation);
        QCOMPARE(box->view()->currentIndex().row(), 1);
        box->hidePopup();
    }

    void textAtTheCursorIsProposedForASearch_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<QString>("text");
        QTest::newRow("word") << 2 << 2 << u"needle"_s;
        QTest::newRow("word with an underscore in front") << 19 << 19 << u"_x"_s;
        QTest::newRow("selection") << 3 << 9 << u"dle on"_s;
        QTest::newRow("selected signs") << 12 << 14 << u"(t"_s;
        QTest::newRow("several lines") << 3 << 14 << u"before"_s;
        QTest::newRow("no word") << 12 << 12 << u"before"_s;
    }

    void textAtTheCursorIsProposedForASearch()
    {
        QFETCH(int, start);
        QFETCH(int, end);
        QFETCH(QString, text);
        const ProductWindow f;
        f.open(u"a.c"_s, "needle one\n (two) _x\n");
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"before"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTextCursor cursor = f.view()->currentEdit()->textCursor();
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        f.view()->currentEdit()->setTextCursor(cursor);
        QString proposed;
        f.answers->meet([&proposed](QDialog *dialog) {
            proposed = dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->currentText();
            dialog->reject();
        });
        f.action(u"editFindInFiles"_s)->trigger();
        QCOMPARE(proposed, text);
    }

    /// The search cannot end by itself: the last file is blocked.
    void searchShowsItsProgressUntilItIsStopped()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "one\nneedle\n");
        f.write(u"src/b.c"_s, "needle\n");
        const BlockedFile blocked(f.path(u"src/b.c"_s));
        QVERIFY2(blocked.blocks(), "the file system cannot block a file");
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QVERIFY(f.action(u"editStopFindInFiles"_s)->isEnabled());
        QTRY_COMPARE(f.status(), u"Searching: 1 files, 1 lines found"_s);
        const QString found = u"Searching for 'needle'...\n%1(2):needle"_s.arg(f.path(u"src/a.c"_s));
        QCOMPARE(f.output(OutputWindow::FindInFiles), found);
        f.action(u"editStopFindInFiles"_s)->trigger();
        QCOMPARE(f.output(OutputWindow::FindInFiles),
                 found + u"\nThe search was stopped. 1 occurrence has been found."_s);
        QCOMPARE(f.status(), QString());
        QVERIFY(!f.action(u"editStopFindInFiles"_s)->isEnabled());
        QVERIFY(blocked.isWantedByOthers()); // nothing has waited for the file
    }

    void matchesOfASearchThatWasStoppedAreDropped()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "needle\n");
        std::optional<BlockedFile> blocked(f.path(u"src/a.c"_s));
        QVERIFY2(blocked->blocks(), "the file system cannot block a file");
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(blocked->isWantedByOthers());
        f.action(u"editStopFindInFiles"_s)->trigger();
        const QString stopped = f.output(OutputWindow::FindInFiles);
        blocked.reset();
        for (int i = 0; i < 3; ++i) { // the reading of the other search ends meanwhile
            FileSearcher other;
            const QSignalSpy finished(&other, &FileSearcher::finished);
            other.start({.text = u"needle"_s, .folder = f.path(u"src"_s), .mask = u"*"_s});
            QTRY_COMPARE(finished.size(), 1);
        }
        QCOMPARE(f.output(OutputWindow::FindInFiles), stopped);
    }

    void searchThatHasEndedIsNotStoppedByClosing()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "needle\n");
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"needle"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QTRY_VERIFY(f.output(OutputWindow::FindInFiles).endsWith(u"1 occurrence has been found."_s));
        const QString ended = f.output(OutputWindow::FindInFiles);
        f.open(u"a.c"_s);
        f.type(u"new "_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->close();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.output(OutputWindow::FindInFiles), ended);
    }

    void closingStopsTheSearchBeforeItAsks()
    {
        const ProductWindow f;
        f.write(u"src/a.c"_s, "needle\n");
        const BlockedFile blocked(f.path(u"src/a.c"_s)); // the search cannot end by itself
        QVERIFY2(blocked.blocks(), "the file system cannot block a file");
        f.open(u"a.c"_s);
        f.type(u"new "_s);
        f.answers->meet([&f](QDialog *dialog) { ProductWindow::searchFor(dialog, u"y"_s, f.path(u"src"_s)); });
        f.action(u"editFindInFiles"_s)->trigger();
        QString outputAtTheQuestion;
        f.answers->meet([&](QDialog *dialog) {
            outputAtTheQuestion = f.output(OutputWindow::FindInFiles);
            dialog->reject();
        });
        f.window->close();
        QVERIFY2(outputAtTheQuestion.contains(u"The search was stopped."_s), qPrintable(outputAtTheQuestion));
        QVERIFY(f.window->isVisible()); // the question was cancelled
    }

    void fileOfTheTreeOpens()
    {
        const ProductWindow f;
        f.write(u"main.c"_s, "one\n");
        f.openProject({u"main.c"_s});
        f.selectInTree(u"main.c"_s);
        Q_EMIT f.tree()->itemDoubleClicked(f.tree()->currentItem(), 0);
        QCOMPARE(f.openFiles(), QStringList(u"main.c"_s));
    }

    void scriptOfTheTreeRuns()
    {
        const ProductWindow f;
        f.write(u"boot.py"_s, "open(r'" + f.path(u"done"_s).toUtf8() + "', 'w').write('yes')\n");
        f.openProject({u"boot.py"_s});
        f.selectInTree(u"boot.py"_s);
        f.tree()->runPyFile();
        QCOMPARE(f.read(u"done"_s), QByteArray("yes"));
    }

    void fileToCompileIsThatOfTheTreeOrOfTheView()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s, u"uart.c"_s});
        const auto text = [&f] { return f.action(u"buildCompileFile"_s)->text().remove(u'&'); };
        f.open(u"other.c"_s);
        QVERIFY2(text().contains(u"other.c"_s), qPrintable(text()));
        f.selectInTree(u"uart.c"_s);
        QVERIFY2(text().contains(u"uart.c"_s), qPrintable(text()));
        f.open(u"third.c"_s);
        QVERIFY2(text().contains(u"third.c"_s), qPrintable(text()));
        QVERIFY(f.document()->saveAs(f.path(u"fourth.c"_s)));
        QVERIFY2(text().contains(u"fourth.c"_s), qPrintable(text()));
        f.selectInTree(u"main.c"_s);
        f.type(u"x"_s); // changes the title of the view, but not its file
        QVERIFY2(text().contains(u"main.c"_s), qPrintable(text()));
        f.document()->setModified(false);
        f.window->fileCloseAll();
        QVERIFY2(!text().contains(u".c"_s), qPrintable(text()));
    }

    void fileToCompileHasTheNameAsWhichItWasSaved()
    {
        const ProductWindow f;
        f.openProject({u"main.c"_s, u"uart.c"_s});
        const auto text = [&f] { return f.action(u"buildCompileFile"_s)->text().remove(u'&'); };
        const auto saveAs = [&f](const QString &name) {
            f.answers->choose({f.path(name)});
            f.window->fileSaveAs();
        };
        f.open(u"old.c"_s);
        saveAs(u"new.c"_s);
        QVERIFY2(text().contains(u"new.c"_s), qPrintable(text()));
        f.type(u"x"_s);
        saveAs(u"newest.c"_s);
        QVERIFY2(text().contains(u"newest.c"_s), qPrintable(text()));
        f.selectInTree(u"uart.c"_s);
        saveAs(u"last.c"_s);
        QVERIFY2(text().contains(u"uart.c"_s), qPrintable(text())); // it was chosen
    }

    void menuOfDebugWindowsShowsWhichAreOpen()
    {
        const ProductWindow f;
        f.openProject({});
        QAction *toggle = f.action(u"debugToggleWatchWindow"_s);
        DockWindow *watches = f.dock(u"watchDockWindow"_s);
        auto *menu = f.window->findChild<QMenu *>(u"debugWindowsMenu"_s);
        for (const bool shown : {true, false}) {
            watches->setVisible(shown);
            Q_EMIT menu->aboutToShow();
            QCOMPARE(toggle->isChecked(), shown);
        }
        toggle->trigger();
        QVERIFY(watches->isVisible());
    }

    void menuViewShowsWhichDocksAreOpen()
    {
        const ProductWindow f;
        auto *menu = f.window->findChild<QMenu *>(u"viewMenu"_s);
        for (const bool shown : {false, true}) {
            f.dock(u"navigatorDockWindow"_s)->setVisible(shown);
            f.dock(u"outputDockWindow"_s)->setVisible(!shown);
            Q_EMIT menu->aboutToShow();
            QCOMPARE(f.action(u"viewNavigator"_s)->isChecked(), shown);
            QCOMPARE(f.action(u"viewOutput"_s)->isChecked(), !shown);
            QCOMPARE(f.dock(u"navigatorDockWindow"_s)->isVisible(), shown); // the menu has not changed it
            QCOMPARE(f.dock(u"outputDockWindow"_s)->isVisible(), !shown);
        }
    }

    void customisingShowsThePageOfTheKeys()
    {
        const ProductWindow f;
        bool shown = false;
        f.answers->meet([&shown](QDialog *dialog) {
            shown = dialog->findChild<ShortcutsPage *>()->isVisible();
            dialog->reject();
        });
        f.action(u"toolsCustomise"_s)->trigger();
        QVERIFY(shown);
    }

    void keysOfTheDialogHoldAtOnce()
    {
        const ProductWindow f;
        const QKeySequence sequence(u"Ctrl+Alt+Shift+F12"_s);
        f.answers->meet([&](QDialog *dialog) {
            auto *tree = dialog->findChild<QTreeWidget *>(u"commandTree"_s);
            tree->setCurrentItem(tree->findItems(u"Find"_s, Qt::MatchExactly).value(0));
            dialog->findChild<QKeySequenceEdit *>(u"keysEdit"_s)->setKeySequence(sequence);
            dialog->findChild<QPushButton *>(u"replaceButton"_s)->click();
            dialog->findChild<QPushButton *>(u"OKButton"_s)->click();
        });
        f.action(u"toolsCustomise"_s)->trigger();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.action(u"editFind"_s)->shortcut(), sequence);
    }

    void layoutIsKeptFromOneRunToTheNext()
    {
        ProductWindow f;
        const bool shown = f.dock(u"navigatorDockWindow"_s)->isVisible();
        QVERIFY(shown);
        f.dock(u"navigatorDockWindow"_s)->hide();
        f.window->findChild<QToolBar *>(u"editToolbar"_s)->hide();
        f.restart();
        QVERIFY(!f.dock(u"navigatorDockWindow"_s)->isVisible());
        QVERIFY(!f.window->findChild<QToolBar *>(u"editToolbar"_s)->isVisible());
        QVERIFY(f.dock(u"outputDockWindow"_s)->isVisible());
    }

    void formatsAreStoredAtTheEnd()
    {
        ProductWindow f;
        const auto stored = [&f] {
            const QStringList keys = f.settings()->allKeys();
            return std::ranges::any_of(keys, [](const QString &key) { return key.contains(u"Standard text"_s); });
        };
        for (const QString &key : f.settings()->allKeys()) { // the window has ended before
            if (key.contains(u"Standard text"_s))
                f.settings()->remove(key);
        }
        QVERIFY(!stored());
        f.restart();
        QVERIFY(stored());
    }

    void linesOfTheConsoleAreKeptFromOneRunToTheNext()
    {
        ProductWindow f;
        f.window->outputWindow()->setConsoleHistory({u"first"_s, u"second"_s});
        f.restart();
        QCOMPARE(f.window->outputWindow()->consoleHistory(), (QStringList{u"first"_s, u"second"_s}));
        QStringList many;
        for (int i = 0; i < 600; ++i)
            many << QString::number(i);
        f.window->outputWindow()->setConsoleHistory(many);
        f.restart();
        QCOMPARE(f.window->outputWindow()->consoleHistory(), many.last(500));
    }

    void consoleUsesTheVirtualEnvironmentOfTheSettings()
    {
        ProductWindow f;
        f.settings()->setValue(u"Python/VirtualEnvironment"_s, u"/nowhere"_s);
        f.restart();
        const auto *console = f.window->findChild<CommandLineWindow *>();
        QVERIFY(console);
        QVERIFY2(console->toPlainText().contains(u"The virtual environment '/nowhere' has no packages"_s),
                 qPrintable(console->toPlainText()));
    }

    void saveAllContinuesAfterAFileThatCannotBeWritten()
    {
        const ProductWindow f;
        f.open(u"gone/a.c"_s, "a");
        f.type(u"1"_s);
        f.open(u"b.c"_s, "b");
        f.type(u"2"_s);
        QVERIFY(QDir(f.path(u"gone"_s)).removeRecursively());
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.read(u"b.c"_s), QByteArray("2b"));
        QCOMPARE(f.openFiles(), (QStringList{u"a.c (deleted) *"_s, u"b.c"_s}));
    }

    void controlTabReachesTheThirdFile()
    {
        const ProductWindow f;
        for (const QString &name : {u"a.c"_s, u"b.c"_s, u"c.c"_s})
            f.open(name);
        f.view()->setFocus();
        QWindow *handle = f.window->windowHandle();
        QTest::keyPress(handle, Qt::Key_Tab, Qt::ControlModifier); // a click would release Control, too
        QTest::keyPress(handle, Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyRelease(handle, Qt::Key_Control);
        QStringList reached{f.window->viewManager()->currentView()->title()};
        QTest::keyPress(handle, Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyRelease(handle, Qt::Key_Control);
        reached << f.window->viewManager()->currentView()->title();
        QCOMPARE(reached, (QStringList{u"a.c"_s, u"c.c"_s}));
    }

    void tabOfAFileThatCannotBeClosedStays()
    {
        const ProductWindow f;
        f.open(u"a.c"_s);
        f.type(u"x"_s);
        f.open(u"b.c"_s);
        f.answers->press(QMessageBox::Cancel);
        auto *tabs = f.window->findChild<QTabBar *>(u"viewManagerTabBar"_s);
        Q_EMIT tabs->tabCloseRequested(0);
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c"_s}));
        QCOMPARE(tabs->currentIndex(), 0);
        Q_EMIT tabs->tabCloseRequested(1);
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }
};

int main(int argc, char **argv)
{
    WindowConnectionsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windowconnections.moc"

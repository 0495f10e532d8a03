#include "largetextview.h"
#include "ordinaryuser.h"
#include "windowfixture.h"
#include "windowmenus.h"
#include <QPrintDialog>
#include <QScrollBar>
#include <QSignalSpy>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
const auto SourceFilter = u"Source Files (*.c *.cpp *.h);;Python Files (*.py);;All Files (*.*)"_s;
const auto AskOkCancel = u"information Varnel [Ok Cancel]"_s;
const auto Warn = u"warning Varnel [Ok]"_s;

void selectRecent(const WindowFixture &f, int index)
{
    f.window->findChild<WindowMenus *>()->recentFileSelected(index);
}
} // namespace

class FileCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Opening

    void openingBeginsInTheLastDirectory()
    {
        const WindowFixture f;
        const QString file = f.write(u"src/main.c"_s, "int a;\n");
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"src"_s));
        f.answers->choose({file});
        f.window->fileOpen();
        QCOMPARE(f.answers->shown, QStringList(u"openFileDialog|Open File|"_s + SourceFilter));
        QCOMPARE(f.answers->directory, f.path(u"src"_s));
        QCOMPARE(f.openFiles(), QStringList(u"main.c"_s));
    }

    void severalFilesMayBeOpenedAtOnce()
    {
        const WindowFixture f;
        const QStringList files{f.write(u"src/a.c"_s, "a"), f.write(u"src/b.py"_s, "b"), f.write(u"src/c"_s, "c")};
        f.answers->choose(files);
        f.window->fileOpen();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c"_s, u"b.py"_s, u"c"_s}));
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"src"_s));
        f.window->close();
        QCOMPARE(f.recent(u"File"_s), (QStringList{u"c"_s, u"b.py"_s, u"a.c"_s}));
    }

    void aCancelledOpenChangesNothing()
    {
        const WindowFixture f;
        f.answers->choose({});
        f.window->fileOpen();
        QVERIFY(f.openFiles().isEmpty());
        QVERIFY(!f.settings()->contains(u"Paths/Files"_s));
    }

    void aRelativePathBelongsToTheCurrentProject()
    {
        const WindowFixture f;
        f.write(u"fw/src/main.c"_s, "int a;\n");
        f.writeProject(u"fw/fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw/fw.vnp"_s}), false));
        QVERIFY(f.window->openFile(u"gone/../src/main.c"_s, true));
        QCOMPARE(f.document()->filename(), f.path(u"fw/src/main.c"_s));
        f.window->close();
        QCOMPARE(f.settings()->value(u"RecentFiles/File0"_s).toString(), f.path(u"fw/src/main.c"_s));
    }

    void emptyPathFailsAnAssertion()
    {
        const WindowFixture f;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"!path.isEmpty\\(\\)\" in "_s));
        QVERIFY(!f.window->openFile(QString(), true));
    }

    void lookedUpSourceIsMarked()
    {
        const WindowFixture f;
        const QString file = f.write(u"main.c"_s, "one\ntwo\nthree\n");
        f.window->lookupSource(file, 2);
        int line = -1;
        int column = -1;
        f.view()->getCursorPosition(&line, &column);
        QCOMPARE(line, 1);
        QVERIFY(f.view()->hasMarker(2, IViewWithMarkers::LookupMarker));
        f.window->lookupSource(file, 3);
        QVERIFY(!f.view()->hasMarker(2, IViewWithMarkers::LookupMarker));
        QVERIFY(f.view()->hasMarker(3, IViewWithMarkers::LookupMarker));
    }

    void lookedUpColumnIsThatOfATerminal()
    {
        const WindowFixture f;
        const QString file = f.write(u"main.c"_s, "one\n\tint two;\n");
        const auto column = [&f] { return f.view()->currentEdit()->textCursor().positionInBlock(); };
        f.window->lookupSource(file, 2, 13);
        QCOMPARE(column(), 5); // behind the tab and "int "
        f.window->lookupSource(file, 2);
        QCOMPARE(column(), 0);
    }

    /// The place was read from the output of a tool, which the user cannot have meant as a new file.
    void lookedUpFileThatDoesNotExistIsNotCreated()
    {
        const WindowFixture f;
        f.window->lookupSource(f.path(u"make: *** [Makefile"_s), 3);
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(f.status(), u"The file %1 does not exist"_s.arg(f.path(u"make: *** [Makefile"_s)));
    }

    void missingFileShowsAQuestionWhetherToCreateIt()
    {
        const WindowFixture f;
        f.answers->press(QMessageBox::No);
        QVERIFY(!f.window->openFile(f.path(u"gone.c"_s), true));
        QCOMPARE(f.answers->shown, QStringList(u"The following file does not exist:\n"_s + f.path(u"gone.c"_s)
                                               + u"\n\nDo you want to create it?"_s));
        f.window->close();
        QVERIFY(f.recent(u"File"_s).isEmpty());
    }

    void directoryIsNotOpenedAsAFile()
    {
        const WindowFixture f;
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->openFile(f.path({}), false));
        QCOMPARE(f.answers->shown, QStringList(u"The following file could not be opened:\n"_s + f.path({})));
        QVERIFY(f.openFiles().isEmpty());
    }

    // Recent files

    void fifthRecentFileRemovesTheOldest()
    {
        const WindowFixture f;
        for (const QString &name : {u"1.c"_s, u"2.c"_s, u"3.c"_s, u"4.c"_s, u"5.c"_s})
            QVERIFY(f.window->openFile(f.write(name, "x"), true));
        f.window->close();
        QCOMPARE(f.recent(u"File"_s), (QStringList{u"5.c"_s, u"4.c"_s, u"3.c"_s, u"2.c"_s}));
    }

    void fileThatTheProgramOpensIsNotRecent()
    {
        const WindowFixture f;
        QVERIFY(f.window->openFile(f.write(u"1.c"_s, "x"), true));
        QVERIFY(f.window->openFile(f.write(u"2.c"_s, "x"), false));
        f.window->close();
        QCOMPARE(f.recent(u"File"_s), QStringList(u"1.c"_s));
    }

    void aRecentFileMovesToTheFrontWhenItIsChosen()
    {
        const WindowFixture f;
        for (const QString &name : {u"1.c"_s, u"2.c"_s, u"3.c"_s})
            QVERIFY(f.window->openFile(f.write(name, "x"), true));
        f.window->fileCloseAll();
        selectRecent(f, 2);
        QCOMPARE(f.openFiles(), QStringList(u"1.c"_s));
        f.window->close();
        QCOMPARE(f.recent(u"File"_s), (QStringList{u"1.c"_s, u"3.c"_s, u"2.c"_s}));
    }

    void aRecentFileThatCannotBeOpenedLeavesTheList()
    {
        const WindowFixture f;
        for (const QString &name : {u"1.c"_s, u"2.c"_s})
            QVERIFY(f.window->openFile(f.write(name, "x"), true));
        f.window->fileCloseAll();
        QFile::remove(f.path(u"2.c"_s));
        f.answers->press(QMessageBox::No);
        f.answers->press(QMessageBox::Ok);
        selectRecent(f, 0);
        QCOMPARE(f.answers->shown.value(1),
                 u"The file could not be opened.\n\nIt will be removed from the Recent Files list."_s);
        QCOMPARE(f.answers->lastBox(), Warn);
        f.window->close();
        QCOMPARE(f.settings()->value(u"RecentFiles/File0"_s).toString(), f.path(u"1.c"_s));
    }

    void aRemovedLastEntryComesBackAtTheNextStart()
    {
        WindowFixture f;
        for (const QString &name : {u"1.c"_s, u"2.c"_s})
            QVERIFY(f.window->openFile(f.write(name, "x"), true));
        f.window->fileCloseAll();
        f.restart();
        QFile::remove(f.path(u"1.c"_s));
        f.answers->press(QMessageBox::No);
        f.answers->press(QMessageBox::Ok);
        selectRecent(f, 1);
        f.restart();
        f.write(u"1.c"_s, "x");
        selectRecent(f, 1);
        QCOMPARE(f.openFiles(), QStringList(u"1.c"_s));
    }

    // Closing

    void closingAFileClosesAllItsViews()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.open(u"b.c"_s);
        f.window->windowNew();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c"_s, u"b.c:1"_s, u"b.c:2"_s}));
        f.window->fileClose();
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void closingAllAsksForEachChangedFile()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.type(u"1"_s);
        f.open(u"b.c"_s, "b");
        f.open(u"c.c"_s, "c");
        f.type(u"2"_s);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Cancel);
        f.window->fileCloseAll();
        QCOMPARE(f.answers->shown,
                 (QStringList{f.path(u"a.c"_s) + u" has changed.\n\nDo you want to save the changes?"_s,
                              f.path(u"c.c"_s) + u" has changed.\n\nDo you want to save the changes?"_s}));
        QCOMPARE(f.openFiles(), QStringList(u"c.c *"_s));
        QCOMPARE(f.read(u"a.c"_s), QByteArray("1a"));
    }

    void commandsWithoutAFileDoNothing()
    {
        const WindowFixture f;
        f.window->fileClose();
        f.window->fileCloseAll();
        f.window->fileSave();
        f.window->fileSaveAs();
        f.window->filePrint();
        f.window->fileRevert();
        QVERIFY(f.window->fileSaveAll());
        QVERIFY(f.answers->shown.isEmpty());
    }

    // Reverting

    void revertingAsksFirst()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"new "_s);
        const QString question = u"Are you sure that you want to revert to the saved version of:\n\n"_s
                                 + f.path(u"a.c"_s) + u"\n\nYou will lose your changes that are not saved."_s;
        f.answers->press(QMessageBox::Cancel);
        f.window->fileRevert();
        QCOMPARE(f.answers->shown, QStringList(question));
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QCOMPARE(f.text(), u"new old"_s);
        f.answers->press(QMessageBox::Ok);
        f.window->fileRevert();
        QCOMPARE(f.text(), u"old"_s);
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void returnRevertsOnlyATextWithoutChanges_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("namesChanges");
        QTest::addColumn<QString>("text");
        QTest::newRow("unmodified") << QString() << false << u"newer"_s;
        QTest::newRow("modified") << u"mine "_s << true << u"mine old"_s;
    }
    void returnRevertsOnlyATextWithoutChanges()
    {
        QFETCH(const QString, typed);
        QFETCH(const bool, namesChanges);
        QFETCH(const QString, text);
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        if (!typed.isEmpty())
            f.type(typed);
        f.write(u"a.c"_s, "newer");
        QString question;
        f.answers->meet([&question](QDialog *dialog) {
            question = qobject_cast<QMessageBox *>(dialog)->text();
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        f.window->fileRevert();
        QCOMPARE(question.contains(u"You will lose your changes"_s), namesChanges);
        QCOMPARE(f.text(), text);
    }

    void revertingWithoutAFileKeepsTheText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        QFile::remove(f.path(u"a.c"_s));
        f.answers->press(QMessageBox::Ok);
        f.window->fileRevert();
        QCOMPARE(f.answers->shown, QStringList(u"The following file does not exist:\n"_s + f.path(u"a.c"_s)
                                               + u"\n\nThe text stays open as it is."_s));
        QCOMPARE(f.answers->lastBox(), Warn);
        QCOMPARE(f.text(), u"mine old"_s);
        QCOMPARE(f.openFiles(), QStringList(u"a.c (deleted) *"_s));
    }

    void fileRemovedDuringTheQuestionKeepsTheText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.answers->meet([&f](QDialog *dialog) {
            QFile::remove(f.path(u"a.c"_s));
            qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Ok)->click();
        });
        f.answers->press(QMessageBox::Ok);
        f.window->fileRevert();
        QVERIFY(f.answers->shown.value(0).endsWith(u"The text stays open as it is."_s));
        QCOMPARE(f.text(), u"old"_s);
    }

    void revertingKeepsCursorPanesAndScrollPosition()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("line\n").repeated(300));
        f.view()->split();
        QCoreApplication::processEvents();
        const QList<int> heights = f.view()->paneHeights();
        const auto place = [](TextViewEdit *pane, int line, int top) {
            QTextCursor cursor = pane->textCursor();
            cursor.setPosition(pane->document()->findBlockByNumber(line).position() + 2);
            pane->setTextCursor(cursor);
            pane->verticalScrollBar()->setValue(top);
        };
        place(f.view()->edits().at(0), 30, 25);
        place(f.view()->edits().at(1), 210, 205);
        f.answers->press(QMessageBox::Ok);
        f.window->fileRevert();
        QCoreApplication::processEvents();
        QStringList places;
        for (const TextViewEdit *pane : f.view()->shownEdits())
            places << u"%1,%2 %3"_s.arg(pane->textCursor().blockNumber())
                          .arg(pane->textCursor().positionInBlock())
                          .arg(pane->verticalScrollBar()->value());
        QCOMPARE(places, (QStringList{u"30,2 25"_s, u"210,2 205"_s}));
        QCOMPARE(f.view()->currentEdit(), f.view()->edits().at(1));
        QCOMPARE(f.window->focusWidget(), f.view()->edits().at(1));
        QCOMPARE(f.view()->paneHeights(), heights);
    }

    void reloadedFileBehindAnotherKeepsItsCursor()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.view()->gotoLine(3);
        f.open(u"b.c"_s);
        QVERIFY(f.window->workspace()->reopenDocument(f.path(u"a.c"_s)));
        QCOMPARE(f.view()->title(), u"a.c"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 2);
    }

    void cursorBeyondTheEndOfAShorterFileMovesToItsEnd()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("line\n").repeated(300));
        f.view()->gotoLine(250);
        f.write(u"a.c"_s, "one\ntwo");
        f.answers->press(QMessageBox::Ok);
        f.window->fileRevert();
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
    }

    // Saving

    void saveIsAvailableWhileTheFileHasChanges()
    {
        const WindowFixture f;
        QSignalSpy available(f.window.get(), &AvailabilityWindow::saveAvailable);
        const auto isAvailable = [&available] { return available.last().at(0).toBool(); };
        f.open(u"a.c"_s, "old");
        QVERIFY(!isAvailable());
        f.type(u"new "_s);
        QVERIFY(isAvailable());
        f.open(u"b.c"_s);
        QVERIFY(!isAvailable());
        f.window->fileClose();
        QVERIFY(isAvailable());
        f.window->fileSave();
        QVERIFY(!isAvailable());
        f.type(u"x"_s);
        QVERIFY(isAvailable());
        f.window->editUndo(); // without the focus
        f.view()->undo();
        QVERIFY(!isAvailable());
    }

    void savingAsProposesThePresentName()
    {
        const WindowFixture f;
        f.open(u"src/a.c"_s);
        QStringList proposed;
        f.answers->meet([&proposed](QDialog *dialog) {
            proposed = qobject_cast<QFileDialog *>(dialog)->selectedFiles();
            dialog->reject();
        });
        f.window->fileSaveAs();
        QCOMPARE(proposed, QStringList(f.path(u"src/a.c"_s)));
    }

    void savingWritesTheFile()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"new "_s);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("new old"));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void savingOverANewerFileAsksFirst_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("overwritten") << int(QMessageBox::Ok) << QByteArray("mine old");
        QTest::newRow("left") << int(QMessageBox::Cancel) << QByteArray("theirs");
    }

    void savingOverANewerFileAsksFirst()
    {
        QFETCH(int, button);
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        f.changeOutside(u"a.c"_s, "theirs");
        f.answers->press(QMessageBox::StandardButton(button));
        f.window->fileSave();
        QCOMPARE(f.answers->shown, QStringList(u"A newer version of this file exists on disk:\n\n"_s + f.path(u"a.c"_s)
                                               + u"\n\nAre you sure that you want to overwrite the newer version?"_s));
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QTEST(f.read(u"a.c"_s), "content");
        f.activate(); // it was reported before
        QCOMPARE(f.answers->shown.size(), 1);
    }

    void fileThatIsClosedDuringTheQuestionIsNotSaved()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        f.changeOutside(u"a.c"_s, "theirs");
        f.answers->prepend([&f](QDialog *box) {
            f.document()->setModified(false);
            f.window->viewManager()->closeAll();
            static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click();
        });
        f.window->fileSave();
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(f.read(u"a.c"_s), QByteArray("theirs"));
    }

    void closingOverANewerFileAsksBeforeItSaves_data()
    {
        QTest::addColumn<bool>("overwrites");
        QTest::newRow("overwrites") << true;
        QTest::newRow("keeps") << false;
    }
    void closingOverANewerFileAsksBeforeItSaves()
    {
        QFETCH(const bool, overwrites);
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        f.changeOutside(u"a.c"_s, "other");
        f.answers->press(QMessageBox::Yes);
        f.answers->press(overwrites ? QMessageBox::Ok : QMessageBox::Cancel);
        f.window->fileClose();
        QCOMPARE(f.answers->shown.value(1), u"A newer version of this file exists on disk:\n\n"_s + f.path(u"a.c"_s)
                                                + u"\n\nAre you sure that you want to overwrite the newer version?"_s);
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QCOMPARE(f.openFiles(), overwrites ? QStringList() : QStringList(u"a.c *"_s));
        QCOMPARE(f.read(u"a.c"_s), QByteArray(overwrites ? "mine old" : "other"));
    }

    void savingUnderAnotherName()
    {
        const WindowFixture f;
        f.open(u"src/a.c"_s, "old");
        f.type(u"new "_s);
        QDir().mkpath(f.path(u"other"_s));
        f.answers->choose({f.path(u"other/b.kor"_s)});
        f.window->fileSaveAs();
        QCOMPARE(f.answers->shown, QStringList(u"saveFileDialog|Save File|Source Files (*.c *.cpp *.h *.kor);;"
                                               "Python Files (*.py);;All Files (*.*)"_s));
        QCOMPARE(f.answers->directory, f.path(u"src"_s));
        QCOMPARE(f.read(u"other/b.kor"_s), QByteArray("new old"));
        QCOMPARE(f.read(u"src/a.c"_s), QByteArray("old"));
        QCOMPARE(f.openFiles(), QStringList(u"b.kor"_s));
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"other"_s));
    }

    void saveAsOnAnOpenFileAsksAndClosesIt_data()
    {
        QTest::addColumn<bool>("modified");
        QTest::addColumn<bool>("byLink");
        QTest::addColumn<bool>("agrees");
        QTest::addColumn<QString>("question");
        const QString closes = u"The following file is open:\n\n%1\n\n"
                               "Are you sure that you want to close it and to overwrite it?"_s;
        const QString discards = u"The following file is open and has unsaved changes:\n\n%1\n\n"
                                 "Are you sure that you want to discard them and to overwrite the file?"_s;
        QTest::newRow("unmodified, yes") << false << false << true << closes;
        QTest::newRow("unmodified, no") << false << false << false << closes;
        QTest::newRow("modified, yes") << true << false << true << discards;
        QTest::newRow("modified, no") << true << false << false << discards;
        QTest::newRow("by a symbolic link") << true << true << true << discards;
    }
    void saveAsOnAnOpenFileAsksAndClosesIt()
    {
        QFETCH(const bool, modified);
        QFETCH(const bool, byLink);
        QFETCH(const bool, agrees);
        QFETCH(const QString, question);
        const WindowFixture f;
        f.open(u"a.c"_s, "a");
        if (modified)
            f.type(u"unsaved "_s);
        f.open(u"b.c"_s, "b");
        QVERIFY(QFile::link(f.path(u"a.c"_s), f.path(u"link.c"_s)));
        const QString path = f.path(byLink ? u"link.c"_s : u"a.c"_s);
        f.answers->choose({path});
        f.answers->press(QMessageBox::Yes); // the file dialog asks whether to overwrite
        f.answers->press(agrees ? QMessageBox::Ok : QMessageBox::Cancel);
        f.window->fileSaveAs();
        QCOMPARE(f.answers->shown.last(), question.arg(path));
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QCOMPARE(f.read(u"a.c"_s), QByteArray(agrees ? "b" : "a"));
        const QString other = modified ? u"a.c *"_s : u"a.c"_s;
        const QStringList kept{other, u"b.c"_s};
        QCOMPARE(f.openFiles(), agrees ? QStringList(QFileInfo(path).fileName()) : kept);
    }

    void failedSaveAsOnAnOpenFileKeepsBothDocuments()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.type(u"unsaved "_s);
        const QPointer<Document> other = f.document();
        f.open(u"b.c"_s, "b");
        QFile::setPermissions(f.path(u"a.c"_s), QFile::ReadOwner);
        f.answers->choose({f.path(u"a.c"_s)});
        f.answers->press(QMessageBox::Yes); // the file dialog asks whether to overwrite
        f.answers->press(QMessageBox::Ok);
        f.answers->press(QMessageBox::Ok);
        f.window->fileSaveAs();
        QVERIFY(f.answers->shown.last().startsWith(u"The following file could not be written:\n"_s));
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c *"_s}));
        QVERIFY(other);
        QCOMPARE(static_cast<TextDocument *>(other.data())->text()->toPlainText(), u"unsaved a"_s);
        QCOMPARE(f.document()->filename(), f.path(u"b.c"_s));
    }

    void saveAsOnTheDocumentsOwnFileAsksNothingMore()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.type(u"new "_s);
        f.answers->choose({f.path(u"a.c"_s)});
        f.answers->press(QMessageBox::Yes);
        f.window->fileSaveAs();
        QCOMPARE(f.answers->shown.size(), 2);
        QCOMPARE(f.read(u"a.c"_s), QByteArray("new a"));
    }

    void aCancelledSaveAsChangesNothing()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.answers->choose({});
        f.window->fileSaveAs();
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        QVERIFY(!f.settings()->contains(u"Paths/Files"_s));
    }

    void savingAllWritesFilesProjectsAndTheWorkspace()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.open(u"a.c"_s, "a");
        f.type(u"1"_s);
        f.open(u"b.c"_s, "b");
        f.type(u"2"_s);
        f.window->projectWorkspace()->currentProject()->addFiles({f.path(u"a.c"_s)}, nullptr);
        f.window->projectWorkspace()->setModified(true);
        QVERIFY(f.window->fileSaveAll());
        QCOMPARE(f.read(u"a.c"_s), QByteArray("1a"));
        QCOMPARE(f.read(u"b.c"_s), QByteArray("2b"));
        QVERIFY(f.read(u"fw.vnp"_s).contains("a.c"));
        QVERIFY(!f.window->projectWorkspace()->isModified());
        QVERIFY(!f.window->projectWorkspace()->currentProject()->isModified());
    }

    void savingAllOverNewerFilesIsCancelledAsAWhole()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.window->projectWorkspace()->currentProject()->setModified(true);
        for (const QString &name : {u"a.c"_s, u"b.c"_s, u"c.c"_s}) {
            f.open(name, "old");
            f.type(u"mine "_s);
        }
        f.changeOutside(u"a.c"_s, "theirs");
        f.changeOutside(u"c.c"_s, "theirs");
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.answers->shown.size(), 1);
        const QStringList lines = f.answers->shown.first().split(u'\n');
        QCOMPARE(lines.first(), u"Newer versions of the following files exists on disk:"_s);
        QCOMPARE(lines.last(), u"Are you sure that you want to overwrite them?"_s);
        QStringList paths = lines.mid(2, lines.size() - 4);
        paths.sort();
        QCOMPARE(paths, (QStringList{f.path(u"a.c"_s), f.path(u"c.c"_s)}));
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QCOMPARE(f.read(u"a.c"_s), QByteArray("theirs"));
        QCOMPARE(f.read(u"b.c"_s), QByteArray("old"));
        QVERIFY(f.window->projectWorkspace()->currentProject()->isModified());
        f.activate(); // they were reported before
        QCOMPARE(f.answers->shown.size(), 1);
    }

    void savingAllOverNewerFilesIsDoneIfConfirmed()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        f.window->windowNew();
        f.changeOutside(u"a.c"_s, "theirs");
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.window->fileSaveAll());
        QCOMPARE(f.answers->shown.value(0).count(f.path(u"a.c"_s)), 1); // although it has two views
        QCOMPARE(f.read(u"a.c"_s), QByteArray("mine old"));
    }

    // Files that cannot be written

    void failedSaveOfAReadOnlyFileKeepsTheDocumentModified()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"new "_s);
        QFile::setPermissions(f.path(u"a.c"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Ok);
        f.window->fileSave();
        QCOMPARE(f.answers->shown, QStringList(u"The following file could not be written:\n"_s + f.path(u"a.c"_s)
                                               + u"\n\nPlease check that this file is not read-only and you have "
                                                 "permission to write to it."_s));
        QCOMPARE(f.answers->lastBox(), Warn);
        QCOMPARE(f.read(u"a.c"_s), QByteArray("old"));
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.text(), u"new old"_s);
    }

    void failedSaveOnAFullDiskKeepsTheText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "text");
        f.type(u"new "_s);
        f.answers->choose({u"/dev/full"_s});
        f.answers->press(QMessageBox::Yes); // the file dialog asks whether to overwrite
        f.answers->press(QMessageBox::Ok);
        f.window->fileSaveAs();
        QVERIFY(f.answers->shown.last().startsWith(u"The following file could not be written:\n/dev/full\n"_s));
        QVERIFY(f.document()->modified());
        QCOMPARE(f.text(), u"new text"_s);
    }

    void savingInADeletedDirectoryShowsAMessage()
    {
        const WindowFixture f;
        f.open(u"gone/a.c"_s, "old");
        f.type(u"new "_s);
        QDir(f.path(u"gone"_s)).removeRecursively();
        f.answers->press(QMessageBox::Ok);
        f.window->fileSave();
        QVERIFY(f.answers->shown.value(0).startsWith(u"The following file could not be written:"_s));
        QVERIFY(f.document()->modified());
        QCOMPARE(f.openFiles(), QStringList(u"a.c (deleted) *"_s));
    }

    void deletedDirectoryIsNotUsedByTheFileDialog()
    {
        const WindowFixture f;
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"gone"_s));
        f.answers->choose({});
        f.window->fileOpen();
        QCOMPARE(f.answers->directory, QDir(f.installation.path({})).path());
    }

    // Insert file

    void insertingAFilePutsItsTextAtTheCursor()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        const QString file = f.write(u"more/b.txt"_s, "new\r\ntext ");
        f.settings()->setValue(u"Paths/Files"_s, f.path({}));
        f.answers->choose({file});
        f.window->editInsertFile();
        QCOMPARE(f.answers->shown, QStringList(u"insertFileDialog|Insert File|All Files (*.*)"_s));
        QCOMPARE(f.text(), u"new\ntext old"_s);
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"more"_s));
        QVERIFY(f.document()->modified());
    }

    void textInAnOlderEncodingIsInsertedDecoded()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "");
        f.answers->choose({f.write(u"b.txt"_s, "Gr\xfc\xdf"
                                               "e")});
        f.window->editInsertFile();
        QCOMPARE(f.text(), u"Gr\u00fc\u00dfe"_s);
    }

    void insertedCharactersThatTheEditorCannotHoldSurviveASave_data()
    {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("inserted");
        const QString reserved = u"a\u2029b\uFDD0c\uFDD1d"_s;
        QTest::newRow("into a plain text") << u"old"_s << reserved;
        QTest::newRow("into a text with such characters") << reserved << reserved;
        QTest::newRow("into a text with the characters that may stand for them")
            << u"\uFDD2\uFDD3\uFDD4\uFDD5"_s << reserved;
        QTest::newRow("several lines") << u"old"_s << u"a\u2029\nb\n"_s;
    }
    void insertedCharactersThatTheEditorCannotHoldSurviveASave()
    {
        QFETCH(const QString, old);
        QFETCH(const QString, inserted);
        const WindowFixture f;
        f.open(u"a.c"_s, old.toUtf8());
        f.answers->choose({f.write(u"b.txt"_s, inserted.toUtf8())});
        f.window->editInsertFile();
        f.window->fileSave();
        QCOMPARE(QString::fromUtf8(f.read(u"a.c"_s)), inserted + old);
    }

    void pipeIsNotInserted()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QCOMPARE(::mkfifo(QFile::encodeName(f.path(u"pipe"_s)).constData(), 0600), 0);
        f.answers->choose({f.path(u"pipe"_s)});
        f.answers->press(QMessageBox::Ok);
        f.window->editInsertFile();
        QCOMPARE(f.answers->shown.value(1), u"Could not open file:/n/n"_s + f.path(u"pipe"_s));
        QCOMPARE(f.text(), u"old"_s);
    }

    void failedInsertShowsAMessageWithSlashesForLineBreaks()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        const QString file = f.write(u"secret"_s, "text");
        QFile::setPermissions(file, {});
        f.answers->choose({file});
        f.answers->press(QMessageBox::Ok);
        f.window->editInsertFile();
        QCOMPARE(f.answers->shown.value(1), u"Could not open file:/n/n"_s + file);
        QCOMPARE(f.answers->lastBox(), Warn);
        QCOMPARE(f.text(), u"old"_s);
    }

    void aCancelledInsertChangesNothing()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.answers->choose({});
        f.window->editInsertFile();
        QCOMPARE(f.text(), u"old"_s);
        QVERIFY(!f.settings()->contains(u"Paths/Files"_s));
    }

    // Others

    void commandsOnWholeTextsAreDisabledForLargeFiles_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("print") << u"filePrint"_s;
        QTest::newRow("save as") << u"fileSaveAs"_s;
    }
    void commandsOnWholeTextsAreDisabledForLargeFiles()
    {
        QFETCH(const QString, command);
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s, u"<ui><actions><action name='%1'><enable signal='viewHasFocus'/>"
                                                       "</action></actions></ui>"_s.arg(command)
                                                           .toUtf8());
        f.restart();
        f.open(u"a.c"_s);
        auto *action = f.window->findChild<QAction *>(command);
        QVERIFY(action);
        QVERIFY(action->isEnabled());
        f.answers->press(QMessageBox::Ok); // it is too large for the editor
        f.open(u"large.log"_s, QByteArray(10'000'001, '\n'));
        QVERIFY(qobject_cast<LargeTextView *>(f.window->viewManager()->currentView()));
        QVERIFY(!action->isEnabled());
        f.window->fileSaveAs(); // a script calls the slot of a disabled action as well
        QVERIFY(f.answers->allGiven());
        f.window->fileClose();
        QVERIFY(action->isEnabled()); // for a.c again
    }

    void printCommandOpensThePrintDialogOfTheCurrentView()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        bool asked = false;
        f.answers->meet([&asked](QDialog *dialog) {
            asked = qobject_cast<QPrintDialog *>(dialog);
            dialog->reject();
        });
        f.window->filePrint();
        QVERIFY(asked);
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unwritable for this user");
    FileCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_filecommands.moc"

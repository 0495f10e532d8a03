#include "session.h"
#include "sessionkeeper.h"
#include "windowfixture.h"
#include <QDirIterator>
#include <QScopeGuard>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {
const QByteArray HundredLines = QByteArray("line of text\n").repeated(100);

void putCursor(TextViewEdit *edit, int line, int column)
{
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(edit->document()->findBlockByNumber(line).position() + column);
    edit->setTextCursor(cursor);
}

QString cursorIn(const TextViewEdit *edit)
{
    const QTextCursor cursor = edit->textCursor();
    return u"%1,%2"_s.arg(cursor.blockNumber()).arg(cursor.positionInBlock());
}

/// Ends the program and starts it again like the user.
void restart(WindowFixture &f)
{
    f.restart();
    f.window->continueLastRun();
}

QStringList sessionFiles(const WindowFixture &f)
{
    QStringList files;
    QDirIterator walk(f.installation.path(u"state"_s), {u"*.json"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}

void damage(const WindowFixture &f, const QByteArray &content)
{
    for (const QString &path : sessionFiles(f)) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
}
} // namespace

class SessionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void filesAreRestoredInOrderWithTheCurrentOne()
    {
        WindowFixture f;
        for (const QString &name : {u"a.c"_s, u"b.c"_s, u"c.c"_s})
            f.open(name);
        f.window->openFile(f.path(u"b.c"_s));
        restart(f);
        QCOMPARE(f.openFiles(), (QStringList{u"a.c"_s, u"b.c"_s, u"c.c"_s}));
        QCOMPARE(f.view()->title(), u"b.c"_s);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void cursorAndScrollPositionAreRestored()
    {
        WindowFixture f;
        f.open(u"a.c"_s, HundredLines);
        putCursor(f.view()->currentEdit(), 70, 5);
        f.view()->currentEdit()->verticalScrollBar()->setValue(60);
        const int top = f.view()->currentEdit()->verticalScrollBar()->value();
        restart(f);
        QCOMPARE(cursorIn(f.view()->currentEdit()), u"70,5"_s);
        QCOMPARE(f.view()->currentEdit()->verticalScrollBar()->value(), top);
    }

    void panesAreRestored_data()
    {
        QTest::addColumn<int>("active");
        QTest::newRow("the upper one in use") << 0;
        QTest::newRow("the lower one in use") << 1;
    }

    void panesAreRestored()
    {
        QFETCH(int, active);
        WindowFixture f;
        f.open(u"a.c"_s, HundredLines);
        f.window->windowSplit();
        QCOMPARE(f.view()->shownEdits().size(), 2);
        putCursor(f.view()->shownEdits()[0], 10, 1);
        putCursor(f.view()->shownEdits()[1], 20, 2);
        f.view()->setCurrentEdit(f.view()->shownEdits()[active]);
        restart(f);
        QCOMPARE(f.view()->shownEdits().size(), 2);
        QCOMPARE(f.view()->currentEdit(), f.view()->shownEdits()[active]);
        QCOMPARE(cursorIn(f.view()->shownEdits()[0]), u"10,1"_s);
        QCOMPARE(cursorIn(f.view()->shownEdits()[1]), u"20,2"_s);
    }

    void severalViewsOfAFileAreRestoredInOrder()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.open(u"b.c"_s);
        f.window->openFile(f.path(u"a.c"_s));
        f.window->windowNew();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c:1"_s, u"b.c"_s, u"a.c:2"_s}));
        restart(f);
        QCOMPARE(f.openFiles().size(), 3);
        QCOMPARE(f.openFiles()[1], u"b.c"_s);
        QCOMPARE(f.window->workspace()->documents().size(), 2);
    }

    void missingFileIsNotRestored()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.open(u"b.c"_s);
        f.write(u"keep"_s, "");
        QVERIFY(f.window->close());
        QFile::remove(f.path(u"b.c"_s));
        restart(f);
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void aFileThatBecameShorterOpensAtItsEnd()
    {
        WindowFixture f;
        f.open(u"a.c"_s, HundredLines);
        putCursor(f.view()->currentEdit(), 70, 5);
        QVERIFY(f.window->close());
        f.write(u"a.c"_s, "ab\ncd");
        restart(f);
        QCOMPARE(cursorIn(f.view()->currentEdit()), u"1,2"_s);
    }

    void workspaceIsRestoredWithItsFiles()
    {
        WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.open(u"a.c"_s);
        restart(f);
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        f.window->close();
        QVERIFY(f.recent(u"Workspace"_s).isEmpty());
    }

    void workspaceThatIsOpenIsRememberedAtOnce()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {}), false));
        QCOMPARE(f.window->sessions().lastWorkspace(), f.path(u"all.vnw"_s));
        QVERIFY(f.window->closeWorkspace());
        QCOMPARE(f.window->sessions().lastWorkspace(), QString());
    }

    void eachWorkspaceHasFilesOfItsOwn()
    {
        const WindowFixture f;
        const QString first = f.writeWorkspace(u"1.vnw"_s, {});
        const QString second = f.writeWorkspace(u"2.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(first, false));
        f.open(u"a.c"_s);
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.window->openWorkspace(second, false));
        QVERIFY(f.openFiles().isEmpty());
        f.open(u"b.c"_s);
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.window->openWorkspace(first, false));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void aFileThatIsOpenAlreadyGetsNoSecondView()
    {
        const WindowFixture f;
        const QString path = f.writeWorkspace(u"all.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(path, false));
        f.open(u"a.c"_s);
        QVERIFY(f.window->closeWorkspace());
        f.open(u"a.c"_s);
        QVERIFY(f.window->openWorkspace(path, false));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void missingWorkspaceIsReportedInTheStatusBar()
    {
        WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {}), false));
        QVERIFY(f.window->close());
        QFile::remove(f.path(u"all.vnw"_s));
        restart(f);
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.status(), u"The workspace %1 could not be opened."_s.arg(f.path(u"all.vnw"_s)));
    }

    void disabledSessionsAreNeitherStoredNorRestored()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        restart(f);
        f.window->sessions().disable();
        f.open(u"b.c"_s);
        restart(f);
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        f.restart();
        f.window->sessions().disable();
        f.window->continueLastRun();
        QVERIFY(f.openFiles().isEmpty());
    }

    void lastWorkspaceStaysClosedInARunWithoutSessions()
    {
        WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {}), false));
        f.restart();
        f.window->sessions().disable();
        f.window->continueLastRun();
        QVERIFY(!f.window->projectWorkspace());
    }

    void workspaceOfARunWithoutSessionsIsNotOpenedAgain()
    {
        WindowFixture f;
        f.window->sessions().disable();
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {}), false));
        restart(f);
        QVERIFY(!f.window->projectWorkspace());
    }

    void commandLineDisablesSessions()
    {
        // the calls of the entry function
        WindowFixture f;
        const QString path = f.writeWorkspace(u"all.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(path, false));
        f.open(u"a.c"_s);
        f.restart();
        f.window->sessions().disable();
        QVERIFY(f.window->openWorkspace(path, false));
        QVERIFY(f.openFiles().isEmpty());
    }

    /// The next run may begin in another directory, where the same name means another file.
    void fileOpenedByARelativeNameIsNotRestored()
    {
        WindowFixture f;
        f.write(u"a.c"_s, "one\n");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(f.path(QString())));
        const auto leave = qScopeGuard([before] { QDir::setCurrent(before); });
        QVERIFY(f.window->openFile(u"a.c"_s, false));
        f.open(u"b.c"_s);
        restart(f);
        QCOMPARE(f.openFiles(), QStringList(u"b.c"_s));
    }

    void cancelledCloseOpensTheClosedViewsAgain()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.view()->gotoLine(2);
        f.open(u"b.c"_s);
        f.type(u"new"_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), (QStringList{u"a.c"_s, u"b.c *"_s}));
        QCOMPARE(f.view()->title(), u"b.c *"_s);
        f.window->viewManager()->activateView(f.window->viewManager()->views().last(), true);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
    }

    void cancelledCloseMakesTheSameFileCurrentAgain()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.open(u"b.c"_s);
        f.open(u"c.c"_s);
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().at(1), true);
        QCOMPARE(f.view()->title(), u"b.c"_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c"_s, u"c.c"_s}));
        QCOMPARE(f.view()->title(), u"b.c"_s);
    }

    void closedViewInFrontIsInFrontAfterACancelledClose()
    {
        const WindowFixture f;
        for (const QString &name : {u"a.c"_s, u"b.c"_s, u"c.c"_s})
            f.open(name);
        ViewManager &views = *f.window->viewManager();
        views.activateView(views.arrangedViews().first(), true);
        f.window->sessions().beginClosing();
        for (const QString &name : {u"a.c"_s, u"b.c"_s})
            views.closeDocument(f.window->workspace()->findDocument(f.path(name)));
        f.window->sessions().cancelClosing();
        QCOMPARE(f.openFiles().size(), 3);
        QCOMPARE(f.view()->title(), u"a.c"_s);
    }

    void cancelAtASecondQuestionClosesNothing()
    {
        WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.type(u"new "_s);
        f.open(u"b.c"_s, "b");
        f.type(u"new "_s);
        f.open(u"c.c"_s);
        const QList<View *> views = f.window->viewManager()->arrangedViews();
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.window->viewManager()->arrangedViews(), views);
        QCOMPARE(f.openFiles().filter(u"*"_s).size(), 1); // the first that was asked about is saved
        QCOMPARE(f.read(u"a.c"_s) == "new a", f.read(u"b.c"_s) == "b");
        QCOMPARE(f.view()->title(), u"c.c"_s);
    }

    void answersOfACancelledCloseAreForgotten()
    {
        WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.type(u"new "_s);
        f.open(u"b.c"_s, "b");
        f.type(u"new "_s);
        f.answers->press(QMessageBox::No);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c *"_s}));
        f.answers->press(QMessageBox::Cancel);
        f.window->viewManager()->closeDocument(f.window->workspace()->findDocument(f.path(u"b.c"_s)));
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c *"_s}));
        QVERIFY(f.answers->allGiven());
    }

    void changesAreKeptIfTheQuestionAboutTheWorkspaceIsCancelled()
    {
        WindowFixture f;
        f.writeProject(u"fw.vnp"_s, {u"a.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.open(u"a.c"_s, "a");
        f.type(u"new "_s);
        f.window->activity().currentProject()->setModified(true);
        f.answers->press(QMessageBox::No);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QCOMPARE(f.text(), u"new a"_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->fileClose();
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }

    void eachDocumentIsAskedAboutOnce()
    {
        WindowFixture f;
        f.open(u"a.c"_s, "a");
        f.window->windowNew();
        f.type(u"new "_s);
        f.answers->press(QMessageBox::No);
        QVERIFY(f.window->close());
        QVERIFY(f.answers->allGiven());
        QVERIFY(f.answers->shown.size() == 1);
        QCOMPARE(f.read(u"a.c"_s), "a");
    }

    void viewOfAFileThatIsOpenComesBackAfterACancelledClose()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.view()->gotoLine(2);
        f.window->windowNew();
        f.view()->gotoLine(3);
        f.window->sessions().beginClosing();
        f.window->windowClose();
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        f.window->sessions().cancelClosing();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c:1"_s, u"a.c:2"_s}));
        QList<int> lines;
        for (View *view : f.window->viewManager()->arrangedViews())
            lines.append(qobject_cast<TextView *>(view)->currentEdit()->textCursor().blockNumber());
        QCOMPARE(lines, (QList<int>{1, 2}));
    }

    void cancelledCloseLeavesTheViewsThatAreOpen()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.open(u"b.c"_s);
        f.window->windowNew();
        const QStringList before = f.openFiles();
        QCOMPARE(before.size(), 3);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), before);
    }

    void cancelledCloseOpensTheSecondViewOfAFileAgain()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.window->windowNew();
        const QStringList before = f.openFiles();
        QCOMPARE(before.size(), 2);
        f.answers->press(QMessageBox::Cancel); // for the last view of the file
        QVERIFY(!f.window->close());
        QCOMPARE(f.openFiles(), before);
    }

    void viewOfADeletedFileComesBackAfterACancelledClose()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.window->windowNew();
        f.window->sessions().beginClosing();
        f.window->windowClose();
        QVERIFY(QFile::remove(f.path(u"a.c"_s)));
        f.window->sessions().cancelClosing();
        QCOMPARE(f.openFiles().size(), 2);
        f.write(u"a.c"_s, "one\n"); // or closing would ask
    }

    void workspaceClosedAfterACancelledCloseKeepsItsFiles()
    {
        const WindowFixture f;
        const QString workspace = f.writeWorkspace(u"all.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(workspace, false));
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        f.document()->setModified(false);
        QVERIFY(f.window->closeWorkspace());
        f.window->viewManager()->closeAll();
        QVERIFY(f.window->openWorkspace(workspace, false));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void cancelledQuestionAboutTheWorkspaceKeepsItOpenWithItsViews()
    {
        WindowFixture f;
        f.writeProject(u"fw.vnp"_s, {u"a.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.open(u"a.c"_s);
        f.window->activity().currentProject()->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(f.window->projectWorkspace());
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void cancelledQuestionAboutTheWorkspaceKeepsAWindowWithoutFiles()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {f.writeProject(u"fw.vnp"_s)}), false));
        f.window->projectWorkspace()->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
    }

    /// As when a file is named on the command line.
    void runForNamedFilesLeavesTheLastRunAlone()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.restart();
        f.window->sessions().skipLastRun();
        f.window->continueLastRun({f.write(u"b.c"_s, "two\n")});
        QCOMPARE(f.openFiles(), QStringList(u"b.c"_s));
        restart(f);
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void namedWorkspaceIsTheLastOneAfterwards()
    {
        WindowFixture f;
        f.writeProject(u"fw.vnp"_s, {u"a.c"_s});
        const QString workspace = f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s});
        f.window->sessions().skipLastRun();
        QVERIFY(f.window->openWorkspace(workspace, false));
        f.open(u"a.c"_s);
        restart(f);
        QVERIFY(f.window->projectWorkspace());
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void damagedSessionIsIgnored_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("files");
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("no JSON") << QByteArray::fromHex("00ff7b5b") << 0;
        QTest::newRow("cut off") << QByteArray("{'version': 1, 'files': [{'pa") << 0;
        QTest::newRow("another version") << QByteArray("{'version': 2, 'files': [{'path': 'A'}]}") << 0;
        QTest::newRow("other types") << QByteArray("{'version': 1, 'active': 'x', 'files': {'path': 7}}") << 0;
        QTest::newRow("no paths") << QByteArray("{'version': 1, 'active': 9, 'files': [1, {}, {'path': 5}, null]}")
                                  << 0;
        QTest::newRow("a directory") << QByteArray("{'version': 1, 'files': [{'path': '/'}]}") << 0;
        QTest::newRow("wild numbers") << QByteArray(
            "{'version': 1, 'active': -7, 'files': [{'path': 'A', 'activePane': 77, 'panes': [ "
            "{'height': -5, 'line': -1, 'column': 99999999, 'top': 2147483647}, "
            "{'height': 1e30, 'line': 2147483647, 'column': -3, 'top': -9}]}]}")
                                      << 1;
    }

    void damagedSessionIsIgnored()
    {
        QFETCH(QByteArray, content);
        WindowFixture f;
        f.open(u"a.c"_s);
        QVERIFY(f.window->close());
        damage(f, content.replace("A", f.path(u"a.c"_s).toUtf8()).replace('\'', '"'));
        f.window = std::make_unique<MainWindow>();
        f.window->show();
        f.window->continueLastRun();
        QTEST(int(f.openFiles().size()), "files");
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(f.window->close());
    }

    void unwritableSessionIsReported()
    {
        WindowFixture f;
        f.installation.write(u"state"_s, "a file where the directory should be");
        f.open(u"a.c"_s);
        QTest::ignoreMessage(QtWarningMsg, "SessionKeeper::save: the open files cannot be remembered");
        QVERIFY(f.window->close());
    }

    void storedSessionIsLoadedUnchanged()
    {
        const QTemporaryDir directory;
        const SessionStore store(directory.filePath(u"sub/sessions"_s));
        const Session session{
            {{u"/a b/\u00e9.c"_s, {{100, 5, 6, 2}, {50, 0, 0, 0}}}, {u"/x"_s, {}}}, 1, {{u"part"_s, u"value"_s}}};
        QVERIFY(store.save(u"/w/all.vnw"_s, session));
        QCOMPARE(store.load(u"/w/all.vnw"_s), session);
        QCOMPARE(store.load(u"/w/../w/all.vnw"_s), session);
        QCOMPARE(store.load(u"/w/other.vnw"_s), Session());
        QCOMPARE(store.load({}), Session());
    }
};

int main(int argc, char **argv)
{
    SessionTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_session.moc"

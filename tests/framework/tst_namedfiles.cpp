#include "folderproject.h"
#include "projectfile.h"
#include "sessionkeeper.h"
#include "viewmanager.h"
#include "windowfixture.h"
#include <QInputDialog>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QStringList names(const QStringList &paths)
{
    QStringList result;
    for (const QString &path : paths)
        result.append(QFileInfo(path).fileName());
    return result;
}

/// The files of the first project, as they are stored.
QStringList filesOfProject(const WindowFixture &f)
{
    QStringList result;
    for (const ProjectFile *file : f.window->activity().projects().value(0)->files({}, nullptr))
        result.append(file->path());
    result.sort();
    return result;
}

/// A window whose installation has the shipped templates.
struct FolderFixture : WindowFixture
{
    FolderFixture() { QFile::link(QStringLiteral(VARNEL_SOURCE_DIR "/templates"), templates()); }
    QString templates() const { return installation.path(u"templates"_s); }
};
} // namespace

class NamedFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void filesAreOpenedInTheirOrder()
    {
        const WindowFixture f;
        f.window->continueLastRun({f.write(u"b.c"_s, "b"), f.write(u"a.c"_s, "a")});
        QCOMPARE(f.openFiles(), (QStringList{u"b.c"_s, u"a.c"_s}));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void openedFilesAreRecent()
    {
        WindowFixture f;
        f.window->continueLastRun({f.write(u"a.c"_s, "a")});
        f.restart();
        QCOMPARE(f.recent(u"File"_s), QStringList(u"a.c"_s));
    }

    void workspaceAndProjectAreOpenedAndComeIntoTheRecentOnes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("workspace") << u"one.vnw"_s;
        QTest::newRow("project") << u"one.vnp"_s;
    }
    void workspaceAndProjectAreOpenedAndComeIntoTheRecentOnes()
    {
        QFETCH(QString, name);
        WindowFixture f;
        f.writeProject(u"one.vnp"_s);
        if (name.endsWith(u'w'))
            f.writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s});
        f.window->continueLastRun({f.path(name)});
        QCOMPARE(f.projects(), QStringList(u"one"_s));
        f.restart();
        QCOMPARE(f.recent(u"Workspace"_s), QStringList(u"one.vnw"_s));
    }

    void onlyTheFirstWorkspaceIsOpenedAndAllFiles()
    {
        const WindowFixture f;
        f.writeProject(u"one.vnp"_s);
        f.writeProject(u"two.vnp"_s);
        const QString one = f.writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s});
        const QString two = f.writeWorkspace(u"two.vnw"_s, {u"two.vnp"_s});
        f.window->continueLastRun({f.write(u"a.c"_s, "a"), one, two, f.write(u"b.c"_s, "b")});
        QCOMPARE(f.projects(), QStringList(u"one"_s));
        QCOMPARE(f.openFiles(), (QStringList{u"a.c"_s, u"b.c"_s}));
    }

    void openableFilesOfADirectory_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("empty") << QStringList() << QStringList();
        QTest::newRow("neither") << QStringList{u"main.c"_s, u"a.vnx"_s} << QStringList();
        QTest::newRow("a project with its workspace") << QStringList{u"a.vnp"_s, u"a.vnw"_s} << QStringList{u"a.vnw"_s};
        QTest::newRow("workspaces first") << QStringList{u"a.vnp"_s, u"b.vnw"_s, u"c.vnp"_s, u"c.vnw"_s}
                                          << QStringList{u"b.vnw"_s, u"c.vnw"_s, u"a.vnp"_s};
        QTest::newRow("capitals") << QStringList{u"A.vnp"_s, u"A.VNW"_s, u"B.VNP"_s} << QStringList{u"A.VNW"_s};
        QTest::newRow("not in folders below") << QStringList{u"sub/a.vnp"_s} << QStringList();
    }
    void openableFilesOfADirectory()
    {
        QFETCH(QStringList, present);
        const WindowFixture f;
        for (const QString &name : present)
            f.write(name, "");
        QTEST(names(openableFiles(f.path(QString()))), "expected");
    }

    void endingOfAWorkspaceMayBeInCapitals_data()
    {
        QTest::addColumn<QString>("named");
        QTest::newRow("workspace") << u"d/ALL.VNW"_s;
        QTest::newRow("directory") << u"d"_s;
    }
    void endingOfAWorkspaceMayBeInCapitals()
    {
        QFETCH(QString, named);
        const WindowFixture f;
        f.writeProject(u"d/sub/one.vnp"_s);
        f.writeWorkspace(u"d/ALL.VNW"_s, {u"sub/one.vnp"_s});
        f.window->continueLastRun({f.path(named)});
        QCOMPARE(f.projects(), QStringList(u"one"_s));
        QVERIFY(!f.window->viewManager()->currentView());
    }

    void directoryWithOneWorkspaceOpensIt()
    {
        const WindowFixture f;
        f.writeProject(u"d/one.vnp"_s);
        f.writeWorkspace(u"d/one.vnw"_s, {u"one.vnp"_s});
        f.window->continueLastRun({f.path(u"d"_s)});
        QCOMPARE(f.projects(), QStringList(u"one"_s));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void directoryWithSeveralAsksWhichToOpen()
    {
        const WindowFixture f;
        f.writeProject(u"d/one.vnp"_s);
        f.writeProject(u"d/two.vnp"_s);
        f.writeWorkspace(u"d/all.vnw"_s, {u"one.vnp"_s, u"two.vnp"_s});
        f.answers->type(u"two.vnp"_s);
        f.window->continueLastRun({f.path(u"d"_s)});
        QCOMPARE(f.answers->shown, QStringList(u"Varnel|Which of these do you want to open?"_s));
        QCOMPARE(f.projects(), QStringList(u"two"_s));
    }

    void choiceOffersTheWorkspaceAndTheProjectsByName()
    {
        const WindowFixture f;
        f.writeProject(u"d/one.vnp"_s);
        f.writeWorkspace(u"d/all.vnw"_s, {u"one.vnp"_s});
        QStringList offered;
        f.answers->meet([&offered](QDialog *dialog) {
            if (const auto *input = qobject_cast<QInputDialog *>(dialog))
                offered = input->comboBoxItems();
            dialog->reject();
        });
        f.window->continueLastRun({f.path(u"d"_s)});
        QCOMPARE(offered, (QStringList{u"all.vnw"_s, u"one.vnp"_s}));
    }

    void declinedChoiceOpensNothing()
    {
        const WindowFixture f;
        f.writeProject(u"d/one.vnp"_s);
        f.writeProject(u"d/two.vnp"_s);
        f.answers->meet([](QDialog *dialog) { dialog->reject(); });
        f.window->continueLastRun({f.path(u"d"_s)});
        QVERIFY(f.projects().isEmpty());
    }

    void directoryWithoutProjectBecomesOneIfTheUserAgrees()
    {
        const FolderFixture f;
        f.write(u"motor/main.c"_s, "int main;");
        f.write(u"motor/inc/board.h"_s, "");
        f.write(u"motor/notes.txt"_s, "");
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun({f.path(u"motor"_s)});
        QCOMPARE(f.projects(), QStringList(u"motor"_s));
        QCOMPARE(filesOfProject(f), (QStringList{u"inc/board.h"_s, u"main.c"_s}));
        QVERIFY(QFileInfo::exists(f.path(u"motor/motor.vnw"_s)));
        QVERIFY(f.answers->shown.value(0).startsWith(u"There is no workspace and no project in the folder '"));
    }

    void declinedOfferLeavesTheDirectoryAlone()
    {
        const WindowFixture f;
        f.write(u"motor/main.c"_s, "");
        f.answers->press(QMessageBox::No);
        f.window->continueLastRun({f.path(u"motor"_s)});
        QCOMPARE(QDir(f.path(u"motor"_s)).entryList(QDir::Files), QStringList(u"main.c"_s));
    }

    void projectThatCannotBeCreatedIsReported()
    {
        const FolderFixture f;
        f.write(u"d/main.c"_s, "");
        QVERIFY(QDir().mkpath(f.path(u"d/d.vnp"_s))); // a folder in the place of the project
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        f.window->continueLastRun({f.path(u"d"_s)});
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.answers->shown.value(1),
                 u"The project could not be created.\n\nPlease make sure that the folder '%1' can be written."_s.arg(
                     f.path(u"d"_s)));
        QCOMPARE(f.answers->lastBox(), u"warning Varnel [Ok]"_s);
        QVERIFY(f.projects().isEmpty());
    }

    void windowThatIsDeletedWhileAProjectIsCreatedEndsTheCommand()
    {
        WindowFixture f;
        f.write(u"d/main.c"_s, "");
        f.installation.write(u"templates/existing/folder/folderproject.py"_s,
                             "def createProject(name, template, folder):\n    while True:\n        pass\n");
        f.answers->meet([&f](QDialog *dialog) {
            QTimer::singleShot(0, f.answers.get(), [&f] { f.window.reset(); }); // while the script works
            qobject_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
        });
        MainWindow *window = f.window.get();
        window->continueLastRun({f.path(u"d"_s)});
        QVERIFY(!f.window);
        QCOMPARE(f.answers->shown, QStringList());
    }

    void progressOfAProjectThatIsCreatedEndsBeforeTheMessage()
    {
        const WindowFixture f;
        f.write(u"d/main.c"_s, "");
        f.installation.write(u"templates/existing/folder/folderproject.py"_s,
                             "import os\ndef createProject(name, template, folder):\n"
                             "    while not os.path.exists(os.path.join(folder, 'go')):\n        pass\n");
        const auto progress = [&f] { return f.window->findChild<QDialog *>(u"workProgressDialog"_s); };
        f.answers->press(QMessageBox::Yes);
        f.answers->meet([&](QDialog *dialog) {
            QCOMPARE(dialog, progress());
            f.write(u"d/go"_s, "");
        });
        bool isOpen = true;
        f.answers->meet([&](QDialog *dialog) {
            isOpen = progress();
            dialog->accept();
        });
        f.window->continueLastRun({f.path(u"d"_s)});
        QVERIFY(f.answers->allGiven());
        QVERIFY(!isOpen);
    }

    void sourceThatIsLookedUpWhileTheWindowIsDeletedIsNotOpened()
    {
        WindowFixture f;
        f.writeProject(u"one.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s}), false));
        const QString source = f.write(u"a.c"_s, "a");
        MainWindow *window = f.window.get();
        bool looked = false;
        bool opened = false;
        connect(&window->activity(), &Activity::workspaceClosing, window, [&] {
            window->lookupSource(source, 1, 1);
            opened = !window->viewManager()->arrangedViews().isEmpty();
            looked = true;
        });
        f.window.reset();
        QVERIFY(looked);
        QVERIFY(!opened);
    }

    void projectOfAFolderHasTheSettingsOfItsBuildSystem()
    {
        const FolderFixture f;
        f.write(u"d/main.cpp"_s, "int main() {}");
        f.write(u"d/inc/a.hpp"_s, "");
        f.write(u"d/compile_commands.json"_s, QByteArray("[{\"directory\": \"@\", \"file\": \"main.cpp\", \"command\": "
                                                         "\"g++ -DA=1 -Iinc -c main.cpp\"}]")
                                                  .replace("@", f.path(u"d"_s).toUtf8()));
        const QString path = createFolderProject(f.path(u"d"_s), f.templates());
        QCOMPARE(path, f.path(u"d/d.vnp"_s));
        const QByteArray xml = f.read(u"d/d.vnp"_s);
        QVERIFY(xml.contains("buildenvironmentname=\"GNU Host\""));
        QVERIFY(xml.contains("<property key=\"buildIncludes\">inc</property>"));
        QVERIFY(xml.contains("<property key=\"buildDefines\">A=1</property>"));
        QCOMPARE(xml.count("<file "), 2);
    }

    void projectOfAFolderOverwritesNothing()
    {
        const FolderFixture f;
        f.write(u"d/d.vnp"_s, "mine");
        QVERIFY(createFolderProject(f.path(u"d"_s), f.templates()).isEmpty());
        QCOMPARE(f.read(u"d/d.vnp"_s), "mine");
    }

    void makefileOfAFolderIsNotRun()
    {
        const FolderFixture f;
        f.write(u"d/Makefile"_s, "X := $(shell touch ran)\nall: main.c\n\tcc main.c\n");
        f.write(u"d/main.c"_s, "int main(void) {}");
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun({f.path(u"d"_s)});
        QCOMPARE(f.projects(), QStringList(u"d"_s));
        QVERIFY(!QFileInfo::exists(f.path(u"d/ran"_s)));
    }

    void windowThatClosesDuringTheQuestionEndsTheCommand()
    {
        WindowFixture f;
        f.write(u"d/main.c"_s, "");
        f.answers->meet([&f](QDialog *) { f.window.reset(); });
        MainWindow *window = f.window.get();
        window->continueLastRun({f.path(u"d"_s), f.write(u"a.c"_s, "")});
        QVERIFY(!QFileInfo::exists(f.path(u"d/d.vnp"_s)));
    }

    void filesAreNotOpenedInAWindowThatWasClosed()
    {
        const WindowFixture f;
        f.write(u"d/main.c"_s, "");
        f.answers->meet([&f](QDialog *dialog) {
            f.window->close();
            dialog->reject();
        });
        f.window->continueLastRun({f.path(u"d"_s), f.write(u"a.c"_s, "")});
        QVERIFY(!f.window->isVisible());
        QCOMPARE(f.openFiles(), QStringList());
    }

    void workspaceThatIsOpenedAfterTheWindowWasClosedIsClosedWithIt()
    {
        WindowFixture f;
        const QString project = f.writeProject(u"d/one.vnp"_s);
        f.writeWorkspace(u"d/one.vnw"_s, {u"one.vnp"_s});
        f.answers->meet([&f](QDialog *dialog) { // "It will be opened instead of the specified project."
            f.window->close();
            dialog->reject();
        });
        QVERIFY(f.window->openProject(project, false));
        QVERIFY(!f.window->isVisible());
        QVERIFY(f.window->projectWorkspace());
        const QSignalSpy closing(&f.window->activity(), &Activity::workspaceClosing);
        f.window.reset(); // without a warning of the assertions
        QCOMPARE(closing.size(), 1);
    }

    void namedWorkspaceGetsItsFilesBackAndNotThoseOfTheLastRun()
    {
        WindowFixture f;
        f.writeProject(u"one.vnp"_s);
        const QString workspace = f.writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s});
        f.window->continueLastRun({workspace});
        f.open(u"a.c"_s);
        f.restart();
        f.open(u"b.c"_s); // the last run is without a workspace
        f.restart();
        f.window->sessions().skipLastRun();
        f.window->continueLastRun({workspace});
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }

    void runWithNamedFilesOnlyKeepsTheLastRun()
    {
        WindowFixture f;
        f.writeProject(u"one.vnp"_s);
        f.window->continueLastRun({f.writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s})});
        f.restart();
        f.window->sessions().skipLastRun();
        f.window->continueLastRun({f.write(u"b.c"_s, "")});
        QVERIFY(f.projects().isEmpty());
        f.restart();
        f.window->continueLastRun();
        QCOMPARE(f.projects(), QStringList(u"one"_s));
    }
};

int main(int argc, char **argv)
{
    NamedFilesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_namedfiles.moc"

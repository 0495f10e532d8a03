#include "navigator.h"
#include "ordinaryuser.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttree.h"
#include "windowfixture.h"

// Project and workspace files that are foreign, read-only, or changed by other programs.

using namespace Qt::StringLiterals;

namespace {
const auto AskOkCancel = u"information Varnel [Ok Cancel]"_s;

/// A window with the workspace "all.vnw" of the projects "fw" and "lib".
class Fixture : public WindowFixture
{
public:
    Fixture()
    {
        writeProject(u"fw.vnp"_s, {u"main.c"_s});
        writeProject(u"lib.vnp"_s);
        QVERIFY(window->openWorkspace(writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
    }

    [[nodiscard]] Project *project(int index) const { return window->projectWorkspace()->project(index); }
    void change(int index) const { project(index)->addFiles({path(u"added.c"_s)}, nullptr); }
    /// Writes a project as another program would.
    void changeProjectOutside(const QString &name, const QByteArray &file) const
    {
        changeOutside(name, "<project><file path='" + file
                                + "'/><properties currentconfiguration='Default'><configuration name='Default'/>"
                                  "</properties></project>");
    }
    [[nodiscard]] static QStringList filesOf(const Project *project)
    {
        QStringList names;
        for (const ProjectFile *file : project->files(QString(), nullptr))
            names.append(file->path());
        return names;
    }
    [[nodiscard]] QString reloadQuestion(const QString &name) const
    {
        return path(name) + u"\n\nThis file has been modified outside of the editor. Do you want to reload it?"_s;
    }
    [[nodiscard]] QString overwriteQuestion(const QString &name) const
    {
        return u"A newer version of this file exists on disk:\n\n%1\n\n"
               "Are you sure that you want to overwrite the newer version?"_s.arg(path(name));
    }
};
} // namespace

class ProjectFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Foreign content

    void foreignProjectIsCopiedBeforeItIsOverwritten_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("foreign");
        QTest::newRow("ours") << QByteArray("<project><folder name='a'><extension name='c'/><file path='b'/></folder>"
                                            "<properties><configuration name='D'><x key='k'>v</x></configuration>"
                                            "</properties></project>")
                              << false;
        QTest::newRow("root") << QByteArray("<svg/>") << true;
        QTest::newRow("element") << QByteArray("<project><option/></project>") << true;
        QTest::newRow("element of a folder")
            << QByteArray("<project><folder name='a'><folder name='b'><x/></folder></folder></project>") << true;
        QTest::newRow("element of a file") << QByteArray("<project><file path='a'><x/></file></project>") << true;
        QTest::newRow("element of the properties")
            << QByteArray("<project><properties><x/></properties></project>") << true;
        QTest::newRow("declaration") << QByteArray("<?xml version='1.0'?>\n<project/>") << false;
        QTest::newRow("comment") << QByteArray("<project><!-- mine --></project>") << true;
        QTest::newRow("processing instruction") << QByteArray("<?xml version='1.0'?><?style mine?><project/>") << true;
        QTest::newRow("attribute") << QByteArray("<project mine='1'/>") << true;
        QTest::newRow("attribute of a folder")
            << QByteArray("<project><folder name='a'><folder name='b' mine='1'/></folder></project>") << true;
        QTest::newRow("attribute of a file") << QByteArray("<project><file path='a' mine='1'/></project>") << true;
        QTest::newRow("attribute of the properties") << QByteArray("<project><properties mine='1'/></project>") << true;
        QTest::newRow("attribute of a configuration")
            << QByteArray("<project><properties><configuration name='D' mine='1'/></properties></project>") << true;
    }
    void foreignProjectIsCopiedBeforeItIsOverwritten()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const bool, foreign);
        const WindowFixture f;
        Project project({}, {});
        QVERIFY(project.load(f.write(u"fw.vnp"_s, content)));
        QVERIFY(project.save());
        QCOMPARE(f.read(u"fw.vnp~"_s), foreign ? content : QByteArray());
        QVERIFY(QFile::remove(f.path(u"fw.vnp~"_s)) == foreign);
        QVERIFY(project.save());
        QVERIFY(!QFile::exists(f.path(u"fw.vnp~"_s))); // only the first time
    }

    void foreignFileThatCannotBeCopiedIsNotOverwritten()
    {
        const WindowFixture f;
        Project project({}, {});
        QVERIFY(project.load(f.write(u"fw.vnp"_s, "<svg/>")));
        QVERIFY(QDir().mkpath(f.path(u"fw.vnp~"_s)));
        QVERIFY(!project.save());
        QCOMPARE(f.read(u"fw.vnp"_s), QByteArray("<svg/>"));
    }

    void foreignWorkspaceIsCopiedBeforeItIsOverwritten_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("foreign");
        QTest::newRow("ours") << QByteArray("<workspace></workspace>") << false;
        QTest::newRow("root") << QByteArray("<list/>") << true;
        QTest::newRow("element") << QByteArray("<workspace><window/></workspace>") << true;
        QTest::newRow("comment") << QByteArray("<workspace><!-- mine --></workspace>") << true;
        QTest::newRow("attribute") << QByteArray("<workspace mine='1'/>") << true;
    }
    void foreignWorkspaceIsCopiedBeforeItIsOverwritten()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const bool, foreign);
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.write(u"all.vnw"_s, content), false));
        f.window->projectSave();
        QCOMPARE(f.read(u"all.vnw~"_s), foreign ? content : QByteArray());
    }

    // Opening what is no project

    void projectThatCannotBeReadLeavesNoWorkspaceFile_data()
    {
        QTest::addColumn<QByteArray>("content"); // none: the file does not exist
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("no XML") << QByteArray("int main;");
        QTest::newRow("a picture") << QByteArray("<svg/>");
    }
    void projectThatCannotBeReadLeavesNoWorkspaceFile()
    {
        QFETCH(const QByteArray, content);
        const WindowFixture f;
        if (!content.isEmpty())
            f.write(u"main.c"_s, content);
        QVERIFY(!f.window->openProject(f.path(u"main.c"_s), true));
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(!QFile::exists(f.path(u"main.vnw"_s)));
        QCOMPARE(f.status(), u"The project %1 could not be opened."_s.arg(f.path(u"main.c"_s)));
    }

    void projectWithoutASuffixHasNoWorkspaceElsewhere()
    {
        const WindowFixture f;
        f.writeProject(u"other/fw.vnp"_s, {});
        f.write(u"other/fw.vnw"_s, "<workspace><project path=\"fw.vnp\"/></workspace>");
        f.write(u"other/fw.d/project"_s, "<project/>");
        QVERIFY(!f.window->openProject(f.path(u"other/fw.d/project"_s), true));
        QVERIFY(!f.window->projectWorkspace());
        f.write(u"other/new.d/project"_s, "<project/>");
        QVERIFY(!f.window->openProject(f.path(u"other/new.d/project"_s), true));
        QVERIFY(!QFile::exists(f.path(u"other/new.vnw"_s)));
    }

    void projectInAReadOnlyDirectoryIsOpenedWithoutAWorkspaceFile()
    {
        const WindowFixture f;
        const QString path = f.writeProject(u"media/fw.vnp"_s, {u"main.c"_s});
        QFile::setPermissions(f.path(u"media"_s), QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(f.window->openProject(path, true));
        QFile::setPermissions(f.path(u"media"_s), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QVERIFY(!QFile::exists(f.path(u"media/fw.vnw"_s)));
        QVERIFY(f.window->fileSaveAll()); // a build needs this
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(f.window->close());
        QCOMPARE(f.recent(u"Workspace"_s), QStringList());
    }

    void projectThatAWorkspaceListsTwiceIsOpenedOnce()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(QFile::link(f.path(u"fw.vnp"_s), f.path(u"link.vnp"_s)));
        f.writeProject(u"lib.vnp"_s);
        const QString file = f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"./fw.vnp"_s, u"lib.vnp"_s, u"link.vnp"_s});
        QVERIFY(f.window->openWorkspace(file, false));
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QCOMPARE(f.window->activity().currentProject()->name(), u"fw"_s);
        QVERIFY(!f.window->projectWorkspace()->isModified());
    }

    void eachMissingProjectIsListed()
    {
        const WindowFixture f;
        const QString file = f.writeWorkspace(u"all.vnw"_s, {u"gone.vnp"_s, u"lost.vnp"_s});
        QVERIFY(!f.window->openWorkspace(file, false));
        QCOMPARE(f.projects(), (QStringList{u"(gone)"_s, u"(lost)"_s}));
        QCOMPARE(f.status(),
                 u"These projects could not be loaded: %1, %2"_s.arg(f.path(u"gone.vnp"_s), f.path(u"lost.vnp"_s)));
    }

    void projectInAReadOnlyDirectoryIsOpenedAgainAtTheNextStart()
    {
        WindowFixture f;
        const QString path = f.writeProject(u"media/fw.vnp"_s, {u"main.c"_s});
        f.write(u"media/main.c"_s, "int main;\n");
        QFile::setPermissions(f.path(u"media"_s), QFile::ReadOwner | QFile::ExeOwner);
        QVERIFY(f.window->openProject(path, false));
        QVERIFY(f.window->openFile(f.path(u"media/main.c"_s), false));
        f.restart();
        f.window->continueLastRun();
        QFile::setPermissions(f.path(u"media"_s), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QCOMPARE(f.openFiles(), QStringList(u"main.c"_s));
    }

    // Files changed by other programs

    void changedProjectIsReloadedOnRequest()
    {
        const Fixture f;
        auto *tree = f.window->findChild<ProjectTree *>();
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown, QStringList(f.reloadQuestion(u"fw.vnp"_s)));
        QCOMPARE(Fixture::filesOf(f.project(0)), QStringList(u"other.c"_s));
        QVERIFY(!f.project(0)->isModified());
        QCOMPARE(f.window->findChild<ProjectTree *>(), tree);
        QCOMPARE(tree->topLevelItem(0)->child(0)->child(0)->text(0), u"other.c"_s);
        f.activate();
        QCOMPARE(f.answers->shown.size(), 1);
    }

    void reloadIsGivenUpIfTheWorkspaceStaysOpen()
    {
        const Fixture f;
        f.change(1);
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Cancel); // the question about the changed project
        f.activate();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QVERIFY(f.project(1)->isModified());
    }

    void refusedReloadIsNotOfferedAgainButSavingAsks()
    {
        const Fixture f;
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.answers->press(QMessageBox::No);
        f.activate();
        f.activate();
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(Fixture::filesOf(f.project(0)), QStringList(u"main.c"_s));
        f.answers->press(QMessageBox::Cancel);
        f.window->projectSave();
        QCOMPARE(f.answers->shown.last(), f.overwriteQuestion(u"fw.vnp"_s));
        QVERIFY(f.read(u"fw.vnp"_s).contains("other.c"));
        f.answers->press(QMessageBox::Ok);
        f.window->projectSave();
        QVERIFY(f.read(u"fw.vnp"_s).contains("main.c"));
        f.window->projectSave(); // it is not newer any more
        QVERIFY(f.answers->allGiven());
    }

    void changedProjectWithUnsavedChangesIsNotOfferedForReloading()
    {
        const Fixture f;
        f.change(0);
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(Fixture::filesOf(f.project(0)).contains(u"added.c"_s));
    }

    void brokenProjectIsNotReloaded()
    {
        const Fixture f;
        f.changeOutside(u"fw.vnp"_s, "<project><file");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(Fixture::filesOf(f.project(0)), QStringList(u"main.c"_s));
        QCOMPARE(f.status(), u"The project %1 could not be opened."_s.arg(f.path(u"fw.vnp"_s)));
    }

    void changedWorkspaceWithUnsavedChangesIsNotOfferedForReloading()
    {
        const Fixture f;
        f.window->projectWorkspace()->setModified(true);
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(f.window->projectWorkspace()->isModified());
    }

    void changedWorkspaceIsOpenedAgainOnRequest()
    {
        const Fixture f;
        f.changeOutside(u"all.vnw"_s, "<workspace><project path='lib.vnp'/></workspace>");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown, QStringList(f.reloadQuestion(u"all.vnw"_s)));
        QCOMPARE(f.projects(), QStringList(u"lib"_s));
    }

    void savingAllAsksForANewerWorkspace()
    {
        const Fixture f;
        f.window->projectWorkspace()->setModified(true);
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.answers->shown,
                 QStringList(u"Newer versions of the following files exists on disk:\n\n%1\n\n"
                             "Are you sure that you want to overwrite them?"_s.arg(f.path(u"all.vnw"_s))));
        QCOMPARE(f.read(u"all.vnw"_s), QByteArray("<workspace/>"));
    }

    void savingAllAsksOnceForAllNewerFiles()
    {
        const Fixture f;
        f.change(0);
        f.change(1);
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.changeProjectOutside(u"lib.vnp"_s, "other.c");
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.answers->shown, QStringList(u"Newer versions of the following files exists on disk:\n\n%1\n%2\n\n"
                                               "Are you sure that you want to overwrite them?"_s.arg(
                                                   f.path(u"fw.vnp"_s), f.path(u"lib.vnp"_s))));
        QVERIFY(f.read(u"fw.vnp"_s).contains("other.c"));
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.window->fileSaveAll());
        QVERIFY(f.answers->allGiven());
        QVERIFY(f.read(u"fw.vnp"_s).contains("added.c"));
        QVERIFY(f.read(u"lib.vnp"_s).contains("added.c"));
    }

    void projectThatChangesInASessionIsOfferedAfterIt()
    {
        const Fixture f;
        f.window->activity().setState(StateRunning);
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.activate();
        QCOMPARE(f.answers->shown, QStringList());
        f.window->activity().setState(StateIdle);
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown, QStringList(f.reloadQuestion(u"fw.vnp"_s)));
        QCOMPARE(Fixture::filesOf(f.project(0)), QStringList(u"other.c"_s));
    }

    void projectIsNotReloadedInASessionThatBeginsDuringTheQuestion()
    {
        const Fixture f;
        const QStringList before = Fixture::filesOf(f.project(0));
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.answers->meet([&f](QDialog *box) {
            f.window->activity().setState(StateRunning);
            qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click();
        });
        f.activate();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(Fixture::filesOf(f.project(0)), before);
        f.window->activity().setState(StateIdle);
    }

    void projectThatIsClosedDuringTheQuestionIsNotReloaded()
    {
        const Fixture f;
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.answers->meet([&f](QDialog *box) {
            f.window->closeWorkspace();
            qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click();
        });
        f.activate();
        QVERIFY(f.answers->allGiven());
        QVERIFY(f.projects().isEmpty());
    }

    /// A message box that closes makes the window active again.
    void changedProjectsAreOfferedOneAfterTheOther()
    {
        const Fixture f;
        f.changeProjectOutside(u"fw.vnp"_s, "a.c");
        f.changeProjectOutside(u"lib.vnp"_s, "b.c");
        int open = 0;
        int mostOpen = 0;
        const auto answer = [&](QDialog *box) {
            mostOpen = std::max(mostOpen, ++open);
            f.activate();
            --open;
            qobject_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click();
        };
        f.answers->meet(answer);
        f.answers->meet(answer);
        f.activate();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(mostOpen, 1);
        QCOMPARE(Fixture::filesOf(f.project(0)), QStringList(u"a.c"_s));
        QCOMPARE(Fixture::filesOf(f.project(1)), QStringList(u"b.c"_s));
    }

    void savingAllDoesNotAskAboutFilesThatItLeavesAlone()
    {
        const Fixture f;
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.change(1);
        QVERIFY(f.window->fileSaveAll());
        QCOMPARE(f.answers->shown, QStringList());
        QCOMPARE(f.read(u"all.vnw"_s), QByteArray("<workspace/>"));
        QVERIFY(f.read(u"fw.vnp"_s).contains("other.c"));
        QVERIFY(f.read(u"lib.vnp"_s).contains("added.c"));
    }

    void closingAsksBeforeItOverwritesANewerProject()
    {
        const Fixture f;
        f.change(0);
        f.changeProjectOutside(u"fw.vnp"_s, "other.c");
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->closeWorkspace());
        QCOMPARE(f.answers->shown.last(), f.overwriteQuestion(u"fw.vnp"_s));
        QCOMPARE(f.answers->lastBox(), AskOkCancel);
        QVERIFY(f.window->projectWorkspace());
        QVERIFY(f.read(u"fw.vnp"_s).contains("other.c"));
    }

    // Removing a project with changes

    void removingAModifiedProjectOffersToSaveIt_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("yes") << QMessageBox::Yes << true << QStringList{u"lib"_s};
        QTest::newRow("no") << QMessageBox::No << false << QStringList{u"lib"_s};
        QTest::newRow("cancel") << QMessageBox::Cancel << false << QStringList{u"fw"_s, u"lib"_s};
    }
    void removingAModifiedProjectOffersToSaveIt()
    {
        QFETCH(const QMessageBox::StandardButton, answer);
        QFETCH(const bool, saved);
        QFETCH(const QStringList, left);
        const Fixture f;
        f.change(0);
        auto *tree = f.window->findChild<ProjectTree *>();
        tree->clearSelection();
        tree->topLevelItem(0)->child(0)->setSelected(true);
        f.answers->press(QMessageBox::Ok);
        f.answers->press(answer);
        tree->removeProject();
        QCOMPARE(f.answers->shown.last(),
                 u"You have made changes to the 'all' workspace and/or one of the projects it contains.\n\n"
                 "Do you want to save the changes?"_s);
        QCOMPARE(f.read(u"fw.vnp"_s).contains("added.c"), saved);
        QCOMPARE(f.projects(), left);
    }
};

int main(int argc, char *argv[])
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unwritable for this user");
    ProjectFilesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_projectfiles.moc"

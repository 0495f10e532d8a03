#include "activity.h"
#include "fakeservices.h"
#include "ibuildenvironment.h"
#include "interfaceobject.h"
#include "iprojectpopulate.h"
#include "lastdirectories.h"
#include "ordinaryuser.h"
#include "population.h"
#include "projectcommands.h"
#include "projectfile.h"
#include "projectsaving.h"
#include "tabbedviewmanager.h"
#include "windowfixture.h"
#include "windowmenus.h"
#include <csignal>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QScopeGuard>
#include <QTimer>
#include <QTreeWidget>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {
const auto AskToSave = u"information Varnel [Yes No Cancel]"_s;
const auto Warn = u"warning Varnel [Ok]"_s;
const auto WorkspaceFilter = u"Workspaces (*.vnw);;Projects (*.vnp);;All Files (*.*)"_s;
const QByteArray Script = "<properties><configuration name='Default'><property key='runAtProjectLoad'>1</property>"
                          "</configuration></properties>";

QString changesIn(const QString &workspace)
{
    return u"You have made changes to the '%1' workspace and/or one of the projects it contains.\n\n"
           "Do you want to save the changes?"_s.arg(workspace);
}

QString projectNotSaved(const QString &name)
{
    return u"The project ' - %1' could not be saved.\n\nPlease make sure that the project file is not read-only."_s.arg(
        name);
}

void selectRecent(const WindowFixture &f, int index)
{
    f.window->findChild<WindowMenus *>()->recentWorkspaceSelected(index);
}

bool treeIsShown(const WindowFixture &f)
{
    return f.window->findChild<QWidget *>(u"ProjectTree"_s);
}

/// A workspace "all.vnw" of the projects "fw" and "lib".
QString writeTwoProjects(const WindowFixture &f)
{
    f.writeProject(u"fw/fw.vnp"_s, {u"main.c"_s});
    f.writeProject(u"lib/lib.vnp"_s);
    return f.writeWorkspace(u"all.vnw"_s, {u"fw/fw.vnp"_s, u"lib/lib.vnp"_s});
}

Project *project(const WindowFixture &f, int index = 0)
{
    return f.window->projectWorkspace()->project(index);
}

/// Records the configuration that it is to populate.
class PopulatingEnvironment : public InterfaceObject<IBuildEnvironment, IProjectPopulate>
{
public:
    PopulatingEnvironment(QString name, QStringList *log) : m_name(std::move(name)), m_log(log) {}
    bool initialise(IBuildEvents *, const QString &) override { return true; }
    void setProject(IProject *) override {}
    void compile(const QString &, const QString &) override {}
    bool canCompile(const QString &, const QString &) override { return true; }
    void build(const QStringList &, bool) override {}
    void clean(const QStringList &) override {}
    void stop() override {}
    bool isUpToDate(const QString &) override { return true; }
    void populate(const QString &configuration) override { m_log->append(m_name + u' ' + configuration); }

private:
    const QString m_name;
    QStringList *const m_log;
};

/// The commands with services and an activity that record events. Each loaded project whose name is in `populating`
/// is bound to an environment that offers to populate it.
class BareCommands : public FakeServices
{
public:
    BareCommands()
    {
        const auto write = [this](const QString &text) { return [this, text] { log.append(text); }; };
        QObject::connect(&activity, &Activity::projectLoaded, &context, [this](Project *project) { bind(project); });
        QObject::connect(&activity, &Activity::workspaceOpened, &context, write(u"show"_s));
        QObject::connect(&activity, &Activity::projectsChanged, &context, write(u"changed"_s));
        QObject::connect(&activity, &Activity::workspaceReady, &context, write(u"files"_s));
        QObject::connect(&activity, &Activity::workspaceClosing, &context, write(u"clear"_s));
        QObject::connect(&activity, &Activity::workspaceClosed, &context, write(u"closed"_s));
        QObject::connect(&activity, &Activity::stateEntered, &context,
                         [this](ActivityState state) { log.append(u"state %1"_s.arg(state)); });
        QObject::connect(&commands, &ProjectCommands::sessionEndRequested, &context, write(u"stop"_s));
        repopulate.setVisible(false);
    }

    ViewManager *viewManager() const override { return views.get(); }
    QSettings &settings() const override { return const_cast<QSettings &>(m_settings); }
    LastDirectories &directories() override { return m_directories; }
    QAction *action(const QString &name) const override
    {
        return name == "projectRepopulate"_L1 ? const_cast<QAction *>(&repopulate) : nullptr;
    }
    void runPyFile(const QString &path) override
    {
        log.append(u"run %1 in %2"_s.arg(QFileInfo(path).fileName(), activity.currentProject()->name()));
    }
    void fireEvent(const QString &name) override { log.append(name); }

    QObject context;
    QStringList log;
    QStringList populating;
    QStringList populated;
    QAction repopulate;
    Activity activity;

private:
    void bind(Project *project)
    {
        log.append(u"bind "_s + project->name());
        if (!populating.contains(project->name()))
            return;
        auto *environment = new PopulatingEnvironment(project->name(), &populated);
        project->setBuildInterface(environment);
        environment->release();
    }

    QSettings m_settings{QDir::temp().filePath(u"unused.ini"_s), QSettings::IniFormat};
    LastDirectories m_directories{&m_settings, QDir::tempPath()};
    std::unique_ptr<ViewManager> views = std::make_unique<TabbedViewManager>();

public:
    ProjectCommands commands{activity, *this};
};

/// Records the text of a status bar each time it is painted.
class PaintedStatus : public QObject
{
public:
    explicit PaintedStatus(QStatusBar *bar) : m_bar(bar) { bar->installEventFilter(this); }

    QStringList shown;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && shown.value(shown.size() - 1) != m_bar->currentMessage())
            shown.append(m_bar->currentMessage());
        return false;
    }

private:
    QStatusBar *const m_bar;
};
} // namespace

class ProjectCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Opening workspaces

    void openingAWorkspaceShowsItsProjects()
    {
        const WindowFixture f;
        const QString path = writeTwoProjects(f);
        QVERIFY(f.window->openWorkspace(path, true));
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 0);
        QCOMPARE(f.window->activity().state(), StateIdle);
        QCOMPARE(f.window->windowTitle(), u"Varnel - all"_s);
        QVERIFY(treeIsShown(f));
        QVERIFY(!f.window->projectWorkspace()->isModified());
        QCOMPARE(f.status(), QString());
        for (const QString &key : {u"Paths/Workspaces"_s, u"Paths/Projects"_s, u"Paths/Files"_s})
            QCOMPARE(f.settings()->value(key).toString(), QFileInfo(path).path());
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s), QStringList(u"all.vnw"_s));
    }

    void workspaceIsAddedToTheRecentOnesOnRequestOnly()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.window->close();
        QVERIFY(f.recent(u"Workspace"_s).isEmpty());
    }

    void aWorkspaceWithoutProjectsOpens()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"none.vnw"_s, {}), false));
        QVERIFY(f.projects().isEmpty());
        QCOMPARE(f.window->activity().state(), StateIdle);
        QVERIFY(f.window->closeWorkspace());
    }

    void invalidWorkspaceFileIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << u"gone.vnw"_s;
        QTest::newRow("no XML") << u"bad.vnw"_s;
        QTest::newRow("a directory") << u"."_s;
        QTest::newRow("unreadable") << u"secret.vnw"_s;
    }

    void invalidWorkspaceFileIsRefused()
    {
        QFETCH(QString, name);
        const WindowFixture f;
        f.write(u"bad.vnw"_s, "<workspace><project");
        QFile::setPermissions(f.writeWorkspace(u"secret.vnw"_s, {}), {});
        QVERIFY(!f.window->openWorkspace(f.path(name), true));
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.window->activity().state(), StateNoWorkspace);
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.status(), u"The workspace %1 could not be opened."_s.arg(f.path(name)));
        f.window->close();
        QVERIFY(f.recent(u"Workspace"_s).isEmpty());
    }

    void refusedWorkspaceKeepsTheOpenOneInStateNoWorkspace()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        QVERIFY(!f.window->openWorkspace(f.path(u"gone.vnw"_s), false));
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QCOMPARE(f.window->activity().state(), StateNoWorkspace);
    }

    void aWorkspaceMayReplaceTheOpenOne()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.writeProject(u"app.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"other.vnw"_s, {u"app.vnp"_s}), false));
        QCOMPARE(f.projects(), QStringList(u"app"_s));
    }

    void emptyPathFailsAnAssertion()
    {
        const WindowFixture f;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"!path.isEmpty\\(\\)\" in "_s));
        QVERIFY(!f.window->openWorkspace(QString(), true));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"!path.isEmpty\\(\\)\" in "_s));
        QVERIFY(!f.window->openProject(QString(), true));
        QCOMPARE(f.status(), QString()); // nothing of that name is reported as missing
    }

    void aBadProjectLeavesTheWorkspaceOpenWithTheResultFalse_data()
    {
        QTest::addColumn<QByteArray>("bad");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("no XML") << QByteArray("<project><file");
    }

    void aBadProjectLeavesTheWorkspaceOpenWithTheResultFalse()
    {
        QFETCH(QByteArray, bad);
        const WindowFixture f;
        f.write(u"mark.py"_s, "open('ran', 'w')\n");
        f.writeProject(u"fw.vnp"_s, {u"mark.py"_s}, Script);
        if (!bad.isEmpty())
            f.write(u"bad.vnp"_s, bad);
        const QString path = f.writeWorkspace(u"all.vnw"_s, {u"bad.vnp"_s, u"fw.vnp"_s});
        const QString directory = QDir::currentPath();
        QDir::setCurrent(f.path({}));
        QVERIFY(!f.window->openWorkspace(path, true));
        QDir::setCurrent(directory);
        QCOMPARE(f.projects(), (QStringList{u"(bad)"_s, u"fw"_s}));
        QCOMPARE(f.window->activity().state(), StateIdle);
        QVERIFY(treeIsShown(f));
        QVERIFY(!QFile::exists(f.path(u"ran"_s))); // start files do not run here
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.status(), u"These projects could not be loaded: "_s + f.path(u"bad.vnp"_s));
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s), QStringList(u"all.vnw"_s));
    }

    void statusBarShowsTheProgress()
    {
        const WindowFixture f;
        const QString path = writeTwoProjects(f);
        QCoreApplication::processEvents();
        const PaintedStatus status(f.window->statusBar());
        QVERIFY(f.window->openWorkspace(path, false));
        QCOMPARE(
            status.shown,
            (QStringList{
                u"Opening %1..."_s.arg(path), u"Opening the project fw..."_s, u"Opening the project lib..."_s, {}}));
        QCOMPARE(f.status(), QString());
    }

    void dropDownIsShownForTwoOrMoreProjects()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="debugStepInto"/></actions><toolbars><toolbar name="debug">
                             <action name="debugStepInto"/></toolbar></toolbars></ui>)");
        f.restart();
        auto *box = f.window->findChild<QComboBox *>(u"projectDropdown"_s);
        QTRY_VERIFY(!box->isVisible());
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        QTRY_VERIFY(box->isVisible());
        QCOMPARE(box->count(), 2);
        QCOMPARE(box->currentText(), u"fw"_s);
        f.window->projectWorkspace()->setCurrentProject(1);
        QCOMPARE(box->currentText(), u"lib"_s);
        Q_EMIT box->activated(0);
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 0);
        QVERIFY(f.window->closeWorkspace());
        QTRY_VERIFY(!box->isVisible());
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {u"fw/fw.vnp"_s}), false));
        QTRY_VERIFY(!box->isVisible());
    }

    void theConfigurationDropDownFollowsTheCurrentProject()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="buildStopBuild"/></actions><toolbars><toolbar name="build">
                             <action name="buildStopBuild"/></toolbar></toolbars></ui>)");
        f.restart();
        auto *box = f.window->findChild<QComboBox *>(u"configurationDropdown"_s);
        QTRY_VERIFY(!box->isVisible());
        f.write(u"a.vnp"_s, "<project><properties currentconfiguration=\"Release\"><configuration name=\"Debug\"/>"
                            "<configuration name=\"Release\"/></properties></project>");
        f.write(u"b.vnp"_s, "<project/>");
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"a.vnp"_s, u"b.vnp"_s}), false));
        QTRY_VERIFY(box->isVisible());
        QCOMPARE(box->count(), 2);
        QCOMPARE(box->currentText(), u"Release"_s);
        QVERIFY(box->isEnabled());
        Q_EMIT box->activated(0);
        QCOMPARE(project(f, 0)->currentConfiguration(), u"Debug"_s);
        QCOMPARE(box->currentText(), u"Debug"_s);
        f.window->activity().setState(StateBuilding);
        QVERIFY(!box->isEnabled());
        Q_EMIT box->activated(1); // too late
        QCOMPARE(project(f, 0)->currentConfiguration(), u"Debug"_s);
        f.window->activity().setState(StateIdle);
        f.window->projectWorkspace()->setCurrentProject(1);
        QCOMPARE(box->currentText(), u"Default"_s);
        QVERIFY(!box->isEnabled()); // there is no other one
        f.window->projectWorkspace()->setCurrentProject(0);
        project(f, 0)->properties()->addConfiguration(u"Test"_s);
        project(f, 0)->setCurrentConfiguration(u"Test"_s);
        f.activate();
        QEvent event(QEvent::ActivationChange); // a dialog was closed
        QCoreApplication::sendEvent(box, &event);
        QCOMPARE(box->currentText(), u"Test"_s);
        f.answers->press(QMessageBox::No);
        QVERIFY(f.window->closeWorkspace());
        QTRY_VERIFY(!box->isVisible());
    }

    void theDropDownShowsActiveProjectsAndCountsAll()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="debugStepInto"/></actions><toolbars><toolbar name="debug">
                             <action name="debugStepInto"/></toolbar></toolbars></ui>)");
        f.restart();
        for (const QString &name : {u"a.vnp"_s, u"b.vnp"_s, u"c.vnp"_s})
            f.writeProject(name);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"a.vnp"_s, u"b.vnp"_s, u"c.vnp"_s}), false));
        project(f, 0)->setActive(false);
        auto *box = f.window->findChild<QComboBox *>(u"projectDropdown"_s);
        QCOMPARE(box->count(), 2);
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 1);
        QCOMPARE(box->currentText(), u"c"_s); // b is the current project, but its index is 0 now
        Q_EMIT box->activated(0);
        QCOMPARE(f.window->projectWorkspace()->currentProject()->name(), u"a"_s);
    }

    void startFilesAreRunInTheirOrder()
    {
        const WindowFixture f;
        const auto script = [&f](const char *text) {
            return "open('" + f.path(u"log"_s).toUtf8() + "', 'a').write('" + text + " ')\n";
        };
        f.write(u"fw/boot.py"_s, script("boot"));
        f.write(u"fw/other.py"_s, script("other"));
        f.write(u"lib/tools/init.py"_s, script("init"));
        f.writeProject(u"fw/fw.vnp"_s, {u"boot.py"_s}, Script);
        f.writeProject(u"plain/plain.vnp"_s, {u"../fw/other.py"_s});
        f.writeProject(u"lib/lib.vnp"_s, {u"tools/init.py"_s, u"main.c"_s}, Script);
        f.window->runScriptsUnasked();
        QVERIFY(f.window->openWorkspace(
            f.writeWorkspace(u"all.vnw"_s, {u"fw/fw.vnp"_s, u"plain/plain.vnp"_s, u"lib/lib.vnp"_s}), false));
        QCOMPARE(f.read(u"log"_s), QByteArray("boot init "));
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 0);
    }

    void exceptionInAStartFileDoesNotStopTheOpening()
    {
        const WindowFixture f;
        f.window->runScriptsUnasked();
        f.write(u"boot.py"_s, "raise ValueError\n");
        f.writeProject(u"fw.vnp"_s, {u"boot.py"_s}, Script);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
    }

    void openingAWorkspaceHasItsStepsInOrder()
    {
        const WindowFixture f;
        BareCommands bare;
        bare.populating = QStringList(u"lib"_s);
        bare.commands.runScriptsUnasked();
        f.writeProject(u"fw/fw.vnp"_s);
        f.writeProject(u"lib/lib.vnp"_s, {u"boot.py"_s}, Script);
        QVERIFY(bare.commands.openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw/fw.vnp"_s, u"lib/lib.vnp"_s}), false));
        QCOMPARE(bare.log.join(u", "_s),
                 u"bind fw, bind lib, show, changed, state 1, files, run boot.py in lib, onWorkspaceLoaded"_s);
        QVERIFY(bare.repopulate.isVisible());
        QCOMPARE(bare.activity.workspace()->currentProjectIndex(), 0);
        bare.log.clear();
        QVERIFY(bare.commands.closeWorkspace());
        QCOMPARE(bare.log.join(u", "_s), u"clear, state 0, closed"_s);
    }

    void aBadProjectEndsTheStepsBeforePopulating()
    {
        const WindowFixture f;
        BareCommands bare;
        bare.populating = QStringList(u"lib"_s);
        f.writeProject(u"lib.vnp"_s);
        QVERIFY(!bare.commands.openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"gone.vnp"_s, u"lib.vnp"_s}), false));
        QCOMPARE(bare.log.join(u", "_s), u"bind lib, show, changed, state 1, files"_s);
        QVERIFY(bare.commands.closeWorkspace());
    }

    void openingPopulatesTheCurrentProjectForAnotherOnesRequest()
    {
        const WindowFixture f;
        BareCommands bare;
        bare.populating = QStringList{u"fw"_s, u"lib"_s};
        f.writeProject(u"fw.vnp"_s);
        f.write(u"lib.vnp"_s,
                "<project><properties currentconfiguration='Default'><configuration name='Default'>"
                "<property key='projectAutoPopulate'>1</property></configuration></properties></project>");
        QVERIFY(bare.commands.openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
        QCOMPARE(bare.populated, QStringList(u"fw Default"_s));
        bare.activity.workspace()->setCurrentProject(1);
        populate(bare.activity.currentProject());
        QCOMPARE(bare.populated, (QStringList{u"fw Default"_s, u"lib Default"_s}));
        QVERIFY(bare.commands.closeWorkspace());
    }

    void closingStopsADebugSessionFirst_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("log");
        for (int state = 1; state <= 7; ++state)
            QTest::addRow("%d", state) << state
                                       << (state >= StateRunning ? u"stop, "_s : QString())
                                              + u"clear, state 0, closed"_s;
    }

    void closingStopsADebugSessionFirst()
    {
        QFETCH(int, state);
        const WindowFixture f;
        BareCommands bare;
        QVERIFY(bare.commands.openWorkspace(f.writeWorkspace(u"all.vnw"_s, {}), false));
        bare.activity.setState(ActivityState(state));
        bare.log.clear();
        QVERIFY(bare.commands.closeWorkspace());
        QTEST(bare.log.join(u", "_s), "log");
    }

    // Opening projects

    void projectWithoutWorkspaceGetsOneInItsDirectory()
    {
        const WindowFixture f;
        QVERIFY(f.window->openProject(f.writeProject(u"dir.d/fw.vnp"_s), true));
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QCOMPARE(f.window->projectWorkspace()->fileName(), f.path(u"dir.d/fw.vnw"_s));
        QVERIFY(f.read(u"dir.d/fw.vnw"_s).contains("fw.vnp"));
        QVERIFY(f.answers->shown.isEmpty());
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s), QStringList(u"fw.vnw"_s)); // never a project
    }

    void workspaceThatCannotBeSavedIsOpenedAndLeftUnsaved()
    {
        const WindowFixture f;
        const QString project = f.writeProject(u"d/fw.vnp"_s);
        QFile::setPermissions(f.path(u"d"_s), QFile::ReadOwner | QFile::ExeOwner);
        const auto writable = qScopeGuard([&f] { // to be removed
            QFile::setPermissions(f.path(u"d"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        });
        QVERIFY(f.window->openProject(project, true));
        QCOMPARE(f.projects(), QStringList(u"fw"_s));
        QCOMPARE(f.settings()->value(u"Session/Workspace"_s).toString(), project); // the next start can open this
        QVERIFY(f.window->fileSaveAll());                                          // as before each build
        QVERIFY(f.window->closeWorkspace());
        QCOMPARE(f.answers->shown, QStringList());
        QVERIFY(!QFileInfo::exists(f.path(u"d/fw.vnw"_s)));
    }

    void projectWithAWorkspaceOpensTheWorkspaceWithAMessage()
    {
        const WindowFixture f;
        f.writeProject(u"lib.vnp"_s);
        f.writeWorkspace(u"fw.vnw"_s, {u"lib.vnp"_s});
        f.answers->press(QMessageBox::Ok);
        QVERIFY(f.window->openProject(f.writeProject(u"fw.vnp"_s), false));
        QCOMPARE(f.answers->shown,
                 QStringList(u"A corresponding workspace has been found.\n\nIt will be opened instead of the "
                             "specified project."_s));
        QCOMPARE(f.answers->lastBox(), u"information Varnel [Ok]"_s);
        QCOMPARE(f.projects(), QStringList(u"lib"_s));
    }

    void projectInAMissingDirectoryIsRefused()
    {
        const WindowFixture f;
        QVERIFY(!f.window->openProject(f.path(u"gone/fw.vnp"_s), true));
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.status(), u"The project %1 could not be opened."_s.arg(f.path(u"gone/fw.vnp"_s)));
    }

    // Properties

    void propertiesOfAFileOfTwoProjectsAreThoseOfTheCurrentOne()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s, {u"main.c"_s});
        f.write(u"lib.vnp"_s, "<project><file path='main.c'/><properties currentconfiguration='Release'>"
                              "<configuration name='Release'/></properties></project>");
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
        f.open(u"main.c"_s);
        QStringList shown;
        for (const int current : {1, 0}) {
            f.window->projectWorkspace()->setCurrentProject(current);
            f.answers->meet([&shown](QDialog *dialog) {
                shown += dialog->findChild<QComboBox *>(u"ConfigurationsCombo"_s)->itemText(0);
                dialog->reject();
            });
            f.window->fileProperties();
        }
        QCOMPARE(shown, (QStringList{u"Active (Release)"_s, u"Active (Default)"_s}));
    }

    // The open command

    void theOpenCommandAsksForAWorkspaceOrAProject_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QStringList>("projects");
        QTest::newRow("workspace") << u"w/all.vnw"_s << QStringList{u"fw"_s, u"lib"_s};
        QTest::newRow("project") << u"w/fw.vnp"_s << QStringList(u"fw"_s);
        QTest::newRow("another extension") << u"w/all.xml"_s << QStringList(u"lib"_s);
    }

    void theOpenCommandAsksForAWorkspaceOrAProject()
    {
        QFETCH(QString, chosen);
        const WindowFixture f;
        f.writeProject(u"w/fw.vnp"_s);
        f.writeProject(u"w/lib.vnp"_s);
        f.writeWorkspace(u"w/all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s});
        f.writeWorkspace(u"w/all.xml"_s, {u"lib.vnp"_s});
        f.settings()->setValue(u"Paths/Workspaces"_s, f.path({}));
        f.answers->choose({f.path(chosen)});
        f.window->projectOpen();
        QCOMPARE(f.answers->shown, QStringList(u"openWorkspaceDialog|Open Workspace|"_s + WorkspaceFilter));
        QCOMPARE(QDir(f.answers->directory), QDir(f.path({})));
        QTEST(f.projects(), "projects");
        for (const QString &key : {u"Paths/Workspaces"_s, u"Paths/Projects"_s, u"Paths/Files"_s})
            QCOMPARE(f.settings()->value(key).toString(), f.path(u"w"_s));
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s).size(), 1);
    }

    void theOpenCommandStartsWhereTheLastChoiceWasAlsoIfThatCouldNotBeOpened()
    {
        const WindowFixture f;
        f.write(u"w/bad.vnw"_s, "no workspace");
        f.answers->choose({f.path(u"w/bad.vnw"_s)});
        f.window->projectOpen();
        f.answers->choose({});
        f.window->projectOpen();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(QDir(f.answers->directory), QDir(f.path(u"w"_s)));
    }

    void theOpenCommandClosesTheOpenWorkspaceFirst()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.answers->choose({});
        f.window->projectOpen();
        QVERIFY(!f.window->projectWorkspace());
    }

    void theOpenCommandStopsIfClosingIsRefused()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        f.window->projectOpen();
        QCOMPARE(f.answers->shown, QStringList(changesIn(u"all"_s)));
        QVERIFY(f.window->projectWorkspace());
    }

    void windowThatIsDeletedByAPendingEventEndsTheOpening_data()
    {
        QTest::addColumn<bool>("isProject");
        QTest::newRow("workspace") << false;
        QTest::newRow("project") << true;
    }

    void windowThatIsDeletedByAPendingEventEndsTheOpening()
    {
        QFETCH(const bool, isProject);
        WindowFixture f;
        const QString project = f.writeProject(u"fw.vnp"_s);
        const QString workspace = isProject ? QString() : f.writeWorkspace(u"fw.vnw"_s, {u"fw.vnp"_s});
        MainWindow *window = f.window.get();
        QTimer::singleShot(0, f.answers.get(), [&f] { f.window.reset(); });
        QVERIFY(!(isProject ? window->openProject(project, true) : window->openWorkspace(workspace, true)));
        QVERIFY(!f.window);
        QVERIFY(!isProject || !QFileInfo::exists(f.path(u"fw.vnw"_s)));
        QCOMPARE(f.answers->shown, QStringList());
    }

    void windowThatIsDeletedDuringTheMessageAboutAWorkspaceEndsTheOpening()
    {
        WindowFixture f;
        f.writeWorkspace(u"fw.vnw"_s, {u"fw.vnp"_s});
        f.answers->meet([&f](QDialog *) { f.window.reset(); });
        MainWindow *window = f.window.get();
        QVERIFY(!window->openProject(f.writeProject(u"fw.vnp"_s), false));
        QVERIFY(!f.window);
    }

    void windowThatIsDeletedByAPendingEventEndsTheStart()
    {
        WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), true));
        f.window->close();
        f.restart();
        MainWindow *window = f.window.get();
        QTimer::singleShot(0, f.answers.get(), [&f] { f.window.reset(); });
        window->continueLastRun();
        QVERIFY(!f.window);
    }

    // Recent workspaces

    void recentWorkspaceIsKeptInAWindowThatAPendingEventDeletes()
    {
        WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {}), true));
        QVERIFY(f.window->closeWorkspace());
        QTimer::singleShot(0, f.answers.get(), [&f] { f.window.reset(); });
        selectRecent(f, 0);
        QVERIFY(!f.window);
        QCOMPARE(f.answers->shown, QStringList());
    }

    void aRecentWorkspaceIsOpenedAndMovesToTheFront()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), true));
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {u"fw/fw.vnp"_s}), true));
        selectRecent(f, 1);
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s), (QStringList{u"all.vnw"_s, u"one.vnw"_s}));
    }

    void aRecentWorkspaceThatCannotBeOpenedLeavesTheList()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"gone.vnw"_s, {}), true));
        QVERIFY(f.window->closeWorkspace());
        QFile::remove(f.path(u"gone.vnw"_s));
        f.answers->press(QMessageBox::Ok);
        selectRecent(f, 0);
        QCOMPARE(f.answers->shown,
                 QStringList(u"The workspace could not be opened.\n\nIt will be removed from the Recent Workspaces "
                             "list."_s));
        QCOMPARE(f.answers->lastBox(), Warn);
        f.window->close();
        QVERIFY(f.recent(u"Workspace"_s).isEmpty());
    }

    void recentWorkspaceWithAMissingProjectIsOpenAndStaysInTheList()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), true));
        const QString missing = project(f)->fileName();
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(QFile::remove(missing));
        f.answers->press(QMessageBox::Ok);
        selectRecent(f, 0);
        QVERIFY(f.window->projectWorkspace());
        QVERIFY2(!f.answers->shown.join(u'\n').contains(u"removed"_s), qPrintable(f.answers->shown.join(u'\n')));
        f.window->close();
        QCOMPARE(f.recent(u"Workspace"_s), QStringList(u"all.vnw"_s));
    }

    void recentWorkspaceIsNotOpenedIfClosingIsRefused()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), true));
        project(f)->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        selectRecent(f, 0);
        QCOMPARE(f.answers->shown, QStringList(changesIn(u"all"_s)));
        QVERIFY(project(f)->isModified());
    }

    // Closing

    void closingWithoutAWorkspaceSucceeds()
    {
        const WindowFixture f;
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.answers->shown.isEmpty());
    }

    void closingRemovesTheTreeAndTheViews()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.open(u"a.c"_s);
        f.window->projectClose();
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(!treeIsShown(f));
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(f.window->activity().state(), StateNoWorkspace);
        QCOMPARE(f.window->windowTitle(), u"Varnel"_s);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void closingAsksOnceForAllChanges_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<bool>("saved");
        QTest::newRow("yes") << int(QMessageBox::Yes) << true << true;
        QTest::newRow("no") << int(QMessageBox::No) << true << false;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false << false;
    }

    void closingAsksOnceForAllChanges()
    {
        QFETCH(int, button);
        QFETCH(bool, saved);
        const WindowFixture f;
        const QString path = writeTwoProjects(f);
        QVERIFY(f.window->openWorkspace(path, false));
        for (int i = 0; i < 2; ++i)
            project(f, i)->addFiles({f.path(u"new.c"_s)}, nullptr);
        auto *added = new Project({}, {});
        added->load(f.writeProject(u"app.vnp"_s));
        f.window->projectWorkspace()->addProject(added);
        f.answers->press(QMessageBox::StandardButton(button));
        QTEST(f.window->closeWorkspace(), "closed");
        QCOMPARE(f.answers->shown, QStringList(changesIn(u"all"_s)));
        QCOMPARE(f.answers->lastBox(), AskToSave);
        QTEST(!f.window->projectWorkspace(), "closed");
        QCOMPARE(f.read(u"fw/fw.vnp"_s).contains("new.c"), saved);
        QCOMPARE(f.read(u"lib/lib.vnp"_s).contains("new.c"), saved);
        QCOMPARE(f.read(u"all.vnw"_s).contains("app.vnp"), saved);
    }

    void aProjectThatCannotBeSavedKeepsTheWorkspaceOpen()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f, 0)->addFiles({f.path(u"new.c"_s)}, nullptr);
        project(f, 1)->addFiles({f.path(u"new.c"_s)}, nullptr);
        QFile::setPermissions(f.path(u"fw/fw.vnp"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->closeWorkspace());
        QCOMPARE(f.answers->shown, (QStringList{changesIn(u"all"_s), projectNotSaved(u"fw"_s)}));
        QCOMPARE(f.answers->lastBox(), Warn);
        QVERIFY(project(f, 0)->isModified());
        QVERIFY(!f.read(u"lib/lib.vnp"_s).contains("new.c")); // the first failure ends it
    }

    void changedWorkspaceStaysOpenWithItsLastProjectThatCannotBeSaved()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f, 1)->addFiles({f.path(u"new.c"_s)}, nullptr);
        f.window->projectWorkspace()->setModified(true);
        QFile::setPermissions(f.path(u"lib/lib.vnp"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->closeWorkspace());
        QCOMPARE(f.answers->shown, (QStringList{changesIn(u"all"_s), projectNotSaved(u"lib"_s)}));
        QVERIFY(f.window->projectWorkspace()->isModified());
    }

    void failedSaveNamesTheReasonIfItIsNotThePermissions()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->addFiles({f.path(QString(10'000, u'x'))}, nullptr);
        QVERIFY(QDir(f.path(u"lib"_s)).removeRecursively());
        project(f, 1)->setModified(true);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{8'000, before.rlim_max};
        signal(SIGXFSZ, SIG_IGN);
        f.answers->press(QMessageBox::Ok);
        f.answers->press(QMessageBox::Ok);
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool savedLarge = saveProject(f.window.get(), project(f, 0));
        setrlimit(RLIMIT_FSIZE, &before);
        const bool savedLost = saveProject(f.window.get(), project(f, 1));
        QVERIFY(!savedLarge);
        QVERIFY(!savedLost);
        QCOMPARE(f.answers->shown, (QStringList{projectNotSaved(u"fw"_s) + u"\n\nFile too large"_s,
                                                projectNotSaved(u"lib"_s) + u"\n\nNo such file or directory"_s}));
        project(f, 0)->setModified(false);
        project(f, 1)->setModified(false);
    }

    void aWorkspaceThatCannotBeSavedStaysOpen()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.window->projectWorkspace()->setModified(true);
        QFile::setPermissions(f.path(u"all.vnw"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->closeWorkspace());
        QCOMPARE(f.answers->shown.value(1), u"The workspace could not be saved.\n\nPlease make sure that the workspace "
                                            "file is not read-only."_s);
        QCOMPARE(f.answers->lastBox(), Warn);
        QVERIFY(f.window->projectWorkspace());
    }

    void documentThatRefusesGivesFalseAndTheWorkspaceIsClosed()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->closeWorkspace());
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }

    void closingSucceedsIfTheWorkspaceClosesDuringTheQuestion()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->addFiles({f.path(u"new.c"_s)}, nullptr);
        f.answers->meet([&f](QDialog *dialog) {
            f.discard();
            static_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
        });
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(!f.read(u"fw/fw.vnp"_s).contains("new.c"));
    }

    void windowStaysOpenIfTheWorkspaceDoes()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
        QVERIFY(f.window->projectWorkspace());
    }

    void windowStaysOpenIfADocumentDoes()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
        QVERIFY(f.window->projectWorkspace());
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }

    void windowThatStaysOpenForgetsTheAnswers()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->setModified(true);
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.answers->press(QMessageBox::No);     // the file
        f.answers->press(QMessageBox::Cancel); // the project
        QVERIFY(!f.window->close());
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->close());
        QCOMPARE(f.answers->shown.size(), 3);
        QCOMPARE(f.answers->shown.last(), f.answers->shown.first());
    }

    // Saving

    void savingWritesUnmodifiedProjectsToo()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        for (const QString &name : {u"fw/fw.vnp"_s, u"lib/lib.vnp"_s, u"all.vnw"_s})
            QFile::remove(f.path(name));
        f.window->projectSave();
        QVERIFY(f.read(u"fw/fw.vnp"_s).contains("main.c"));
        QVERIFY(!f.read(u"lib/lib.vnp"_s).isEmpty());
        QVERIFY(f.read(u"all.vnw"_s).contains("lib.vnp"));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void savingContinuesAfterAFailure()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f, 0)->addFiles({f.path(u"new.c"_s)}, nullptr);
        project(f, 1)->addFiles({f.path(u"new.c"_s)}, nullptr);
        f.window->projectWorkspace()->setModified(true);
        QFile::setPermissions(f.path(u"fw/fw.vnp"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.answers->shown, QStringList(projectNotSaved(u"fw"_s)));
        QVERIFY(f.read(u"lib/lib.vnp"_s).contains("new.c"));
        QVERIFY(!f.window->projectWorkspace()->isModified());
        f.answers->press(QMessageBox::Ok);
        f.window->projectSave();
        QCOMPARE(f.answers->shown.size(), 2);
    }

    void failedSaveOfTheWorkspaceShowsAMessage()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.window->projectWorkspace()->setModified(true);
        QFile::setPermissions(f.path(u"all.vnw"_s), QFile::ReadOwner);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->fileSaveAll());
        QCOMPARE(f.answers->shown, QStringList(u"The workspace could not be saved.\n\nPlease make sure that the "
                                               "workspace file is not read-only."_s));
    }

    void aProjectThatCouldNotBeLoadedIsNotOverwritten()
    {
        const WindowFixture f;
        f.write(u"bad.vnp"_s, "<project><file path='precious.c'/>");
        QVERIFY(!f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"bad.vnp"_s}), false));
        f.answers->press(QMessageBox::Ok);
        f.window->projectSave();
        QCOMPARE(f.answers->shown, QStringList(projectNotSaved(u"bad"_s)));
        QCOMPARE(f.read(u"bad.vnp"_s), QByteArray("<project><file path='precious.c'/>"));
        QVERIFY(f.read(u"all.vnw"_s).contains("bad.vnp"));
    }

    // Inserting

    void filesAreAddedToTheCurrentProject()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.settings()->setValue(u"Paths/Files"_s, f.path(u"fw"_s));
        f.answers->choose({f.write(u"src/a.c"_s, "a"), f.write(u"src/b.c"_s, "b")});
        f.window->projectInsertFiles();
        QCOMPARE(f.answers->shown, QStringList(u"addFilesDialog|Add Files to Project|Source Files (*.c *.cpp *.h);;"
                                               "Python Files (*.py);;All Files (*.*)"_s));
        QCOMPARE(f.answers->directory, f.path(u"fw"_s));
        QCOMPARE(project(f, 0)->files({}, nullptr).size(), 3);
        QVERIFY(project(f, 1)->files({}, nullptr).isEmpty());
        QVERIFY(project(f, 0)->isModified());
        QCOMPARE(f.settings()->value(u"Paths/Files"_s).toString(), f.path(u"src"_s));
        f.answers->choose({});
        f.window->projectInsertFiles();
        QCOMPARE(project(f, 0)->files({}, nullptr).size(), 3);
    }

    void filesAreAddedToTheProjectSelectedInTheFocusedTree()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        auto *tree = f.window->findChild<QTreeWidget *>(u"ProjectTree"_s);
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        tree->setFocus();
        tree->setCurrentItem(tree->topLevelItem(0)->child(1));
        const QString file = f.write(u"a.c"_s, "a");
        f.answers->choose({file});
        f.window->projectInsertFilesAlt();
        QCOMPARE(project(f, 1)->files({}, nullptr).size(), 1);
        f.open(u"b.c"_s);
        f.view()->setFocus();
        f.answers->choose({file});
        f.window->projectInsertFilesAlt();
        QCOMPARE(project(f, 0)->files({}, nullptr).size(), 2);
    }

    void insertedProjectIsTheLastAndTheCurrentOne()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.settings()->setValue(u"Paths/Projects"_s, f.path(u"lib"_s));
        f.answers->choose({f.writeProject(u"app/app.vnp"_s)});
        f.window->projectInsertProject();
        QCOMPARE(f.answers->shown,
                 QStringList(u"insertProjectDialog|Insert Project into Workspace|Project Files (*.vnp)"_s));
        QCOMPARE(f.answers->directory, f.path(u"lib"_s));
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s, u"app"_s}));
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 2);
        QVERIFY(f.window->projectWorkspace()->isModified());
        QCOMPARE(f.settings()->value(u"Paths/Projects"_s).toString(), f.path(u"app"_s));
    }

    void filesAreNotInsertedIntoAProjectThatClosesDuringTheQuestion()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.write(u"fw/more.c"_s, "");
        f.answers->meet([&f](QDialog *dialog) {
            auto *chooser = qobject_cast<QFileDialog *>(dialog);
            f.window->closeWorkspace();
            chooser->setDirectory(f.path(u"fw"_s));
            chooser->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(u"more.c"_s);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        f.window->projectInsertFiles();
        QVERIFY(f.answers->allGiven());
        QVERIFY(!f.window->projectWorkspace());
        QVERIFY(!f.read(u"fw/fw.vnp"_s).contains("more.c"));
    }

    void cancelledInsertChangesNothing()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.settings()->setValue(u"Paths/Projects"_s, f.path(u"lib"_s));
        f.answers->choose({});
        f.window->projectInsertProject();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QVERIFY(!f.window->projectWorkspace()->isModified());
        QCOMPARE(f.settings()->value(u"Paths/Projects"_s).toString(), f.path(u"lib"_s));
    }

    void projectThatIsOpenAlreadyBecomesTheCurrentOne_data()
    {
        QTest::addColumn<bool>("byLink");
        QTest::newRow("by its path") << false;
        QTest::newRow("by a symbolic link") << true;
    }
    void projectThatIsOpenAlreadyBecomesTheCurrentOne()
    {
        QFETCH(const bool, byLink);
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.window->projectWorkspace()->setCurrentProject(0);
        QString path = f.window->projectWorkspace()->project(1)->fileName();
        if (byLink) {
            QVERIFY(QFile::link(path, f.path(u"link.vnp"_s)));
            path = f.path(u"link.vnp"_s);
        }
        f.answers->choose({path});
        f.window->projectInsertProject();
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s}));
        QCOMPARE(f.window->projectWorkspace()->currentProjectIndex(), 1);
        QCOMPARE(f.status(), u"The project 'lib' is in the workspace already."_s);
    }

    void projectThatDisappearsIsNotTakenForAnotherMissingOne()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        QVERIFY(QFile::remove(f.window->projectWorkspace()->project(0)->fileName()));
        const QString file = f.writeProject(u"app.vnp"_s);
        f.answers->meet([&file](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(file);
            connect(dialog, &QDialog::finished, dialog, [&file] { QVERIFY(QFile::remove(file)); });
            QMetaObject::invokeMethod(dialog, "accept");
        });
        f.window->projectInsertProject();
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s, u"(app)"_s}));
        QCOMPARE(f.status(), u"These projects could not be loaded: "_s + file);
    }

    void unloadableProjectIsInserted()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        f.answers->choose({f.write(u"bad.vnp"_s, "<project><file")});
        f.window->projectInsertProject();
        QCOMPARE(f.projects(), (QStringList{u"fw"_s, u"lib"_s, u"(bad)"_s}));
        QCOMPARE(f.status(), u"These projects could not be loaded: "_s + f.path(u"bad.vnp"_s));
    }

    void commandsWithoutAWorkspaceFailAnAssertion_data()
    {
        QTest::addColumn<QByteArray>("command");
        for (const char *command : {"projectSave", "projectInsertFiles", "projectInsertFilesAlt",
                                    "projectInsertProject", "projectRepopulate"})
            QTest::newRow(command) << QByteArray(command);
    }

    void commandsWithoutAWorkspaceFailAnAssertion()
    {
        QFETCH(QByteArray, command);
        const WindowFixture f;
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^ASSERT: \"(m_projectWorkspace|workspace|project)\" in "_s));
        QMetaObject::invokeMethod(f.window.get(), command.constData());
        QVERIFY(f.answers->shown.isEmpty());
    }

    void aConfigurationIsChosenByItsNumber()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(writeTwoProjects(f), false));
        project(f)->properties()->addConfiguration(u"Release"_s);
        f.window->findChild<WindowMenus *>()->activateConfiguration(1);
        QCOMPARE(project(f)->currentConfiguration(), u"Release"_s);
        QVERIFY(project(f)->isModified());
    }
};

int main(int argc, char **argv)
{
    if (!becomeOrdinaryUser())
        qFatal("files cannot be made unwritable for this user");
    ProjectCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_projectcommands.moc"

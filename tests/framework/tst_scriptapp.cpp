#include "commandlinewindow.h"
#include "dockwindow.h"
#include "eventhandlers.h"
#include "objectmodel.h"
#include "outputwindow.h"
#include "propertyitem.h"
#include "propertylist.h"
#include "pythonoutputpanel.h"
#include "scriptapp.h"
#include "scriptfixture.h"
#include <QAbstractEventDispatcher>
#include <QAction>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
using namespace Qt::StringLiterals;

namespace {
constexpr auto Destroyed = "RuntimeError: Object has been destroyed";
}

/// The object "app": its collection of projects, its events, its dialogs and the panel "Python Output".
class ScriptAppTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Projects

    void projects_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("result");
        QTest::newRow("count") << u"len(app.projects)"_s << u"2"_s;
        QTest::newRow("first") << u"app.projects[0].name"_s << u"'sample'"_s;
        QTest::newRow("bool is an index") << u"app.projects[True].name"_s << u"'Samba'"_s;
        QTest::newRow("same object each time")
            << u"app.projects is app.projects and app.projects[0] is app.projects['sample']"_s << u"True"_s;
        QTest::newRow("index at the end") << u"app.projects[2]"_s << u"IndexError: Index out of range"_s;
        QTest::newRow("negative index") << u"app.projects[-1]"_s << u"IndexError: Index out of range"_s;
        QTest::newRow("huge index") << u"app.projects[2**70]"_s << u"IndexError: Index out of range"_s;
        QTest::newRow("huge negative index") << u"app.projects[-2**70]"_s << u"IndexError: Index out of range"_s;
        QTest::newRow("ambiguous") << u"app.projects['sam']"_s << u"KeyError: Key 'sam' is ambiguous"_s;
        QTest::newRow("empty key") << u"app.projects['']"_s << u"KeyError: Key '' is ambiguous"_s;
        QTest::newRow("no regard to case") << u"app.projects['SAMP'].name"_s << u"'sample'"_s;
        QTest::newRow("part of the name") << u"app.projects['mb'].name"_s << u"'Samba'"_s;
        QTest::newRow("regular expressions are not special")
            << u"app.projects['s.m']"_s << u"KeyError: Key not found"_s;
        QTest::newRow("unknown") << u"app.projects['x']"_s << u"KeyError: Key not found"_s;
        QTest::newRow("bytes") << u"app.projects[b'sample']"_s << u"TypeError"_s;
        QTest::newRow("float") << u"app.projects[0.0]"_s << u"TypeError"_s;
        QTest::newRow("None") << u"app.projects[None]"_s << u"TypeError"_s;
        QTest::newRow("slice") << u"app.projects[0:1]"_s << u"TypeError"_s;
        QTest::newRow("assignment of an item") << u"app.projects[0] = 1"_s << u"SystemError"_s;
        QTest::newRow("deletion of an item") << u"del app.projects[0]"_s << u"SystemError"_s;
        QTest::newRow("reserved name") << u"app.projects.keys"_s << u"SystemError"_s;
        QTest::newRow("other name") << u"app.projects.values"_s << u"AttributeError: values"_s;
        QTest::newRow("assignment of an attribute")
            << u"app.projects.a = 1"_s << u"AttributeError: Attribute not supported"_s;
        QTest::newRow("deletion of an attribute")
            << u"del app.projects.keys"_s << u"AttributeError: Attribute not supported"_s;
        QTest::newRow("documentation") << u"app.projects.__doc__"_s << u"'Documentation for Projects Object'"_s;
        QTest::newRow("loop") << u"[project.name for project in app.projects]"_s << u"['sample', 'Samba']"_s;
        QTest::newRow("contains") << u"app.projects[1] in app.projects"_s << u"True"_s;
        QTest::newRow("current project") << u"app.currentProject is app.projects[0]"_s << u"True"_s;
    }
    void projects()
    {
        QFETCH(QString, code);
        QFETCH(QString, result);
        ScriptFixture f;
        f.openWorkspace();
        const QString actual = f.attempt(code);
        QCOMPARE(result.endsWith(u"Error"_s) ? actual.section(u':', 0, 0) : actual, result);
    }

    void exactNameIsNotPreferred()
    {
        ScriptFixture f;
        f.writeProject(u"a.vnp"_s);
        f.writeProject(u"ab.vnp"_s);
        f.writeProject(u"abc.vnp"_s);
        f.writeWorkspace(u"three.vnw"_s, {u"a.vnp"_s, u"ab.vnp"_s, u"abc.vnp"_s});
        QVERIFY(f.window->openWorkspace(f.path(u"three.vnw"_s), false));
        QCOMPARE(f.attempt(u"app.projects['a']"_s), u"KeyError: Key 'a' is ambiguous"_s);
        QCOMPARE(f.attempt(u"app.projects['abc'].name"_s), u"'abc'"_s);
    }

    void withoutWorkspace_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("result");
        QTest::newRow("projects") << u"app.projects"_s << u"None"_s;
        QTest::newRow("current project") << u"app.currentProject"_s << u"None"_s;
        QTest::newRow("state") << u"app.state"_s << u"0"_s;
        QTest::newRow("save") << u"app.saveWorkspace()"_s << u"RuntimeError: No workspace is open"_s;
        QTest::newRow("close") << u"app.closeWorkspace()"_s << u"None"_s;
        QTest::newRow("open a missing file")
            << u"app.openWorkspace('/nowhere/x.vnw')"_s << u"OSError: Cannot open workspace '/nowhere/x.vnw'"_s;
        QTest::newRow("open nothing") << u"app.openWorkspace('')"_s << u"OSError: Cannot open workspace ''"_s;
        QTest::newRow("open a directory") << u"app.openWorkspace('/')"_s << u"OSError: Cannot open workspace '/'"_s;
        QTest::newRow("current project of another kind")
            << u"app.currentProject = 5"_s << u"TypeError: Project expected"_s;
        QTest::newRow("no current project") << u"app.currentProject = None"_s << u"TypeError: Project expected"_s;
        QTest::newRow("unknown action") << u"app.doAction('nosuch')"_s << u"SystemError"_s;
    }
    void withoutWorkspace()
    {
        QFETCH(QString, code);
        QFETCH(QString, result);
        ScriptFixture f;
        const QString actual = f.attempt(code);
        QCOMPARE(result.endsWith(u"Error"_s) ? actual.section(u':', 0, 0) : actual, result);
    }

    void objectsOfAClosedWorkspace()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.run("projects = app.projects; project = app.projects[0]; iterator = iter(projects); next(iterator)\n"
              "folder, properties = project.folders[0], project.properties\n"
              "file, fileProperties = folder.files[0], project.files[0].properties");
        QCOMPARE(f.attempt(u"app.closeWorkspace()"_s), u"None"_s);
        QCOMPARE(f.attempt(u"len(projects)"_s), u"0"_s);
        QCOMPARE(f.attempt(u"projects[0]"_s).section(u':', 0, 0), u"SystemError"_s);
        QCOMPARE(f.attempt(u"list(projects)"_s), u"[]"_s);
        QCOMPARE(f.attempt(u"next(iterator)"_s).section(u':', 0, 0), u"StopIteration"_s);
        for (const QString &code :
             {u"project.name"_s, u"project.save()"_s, u"project.build()"_s, u"project.addFile('a')"_s,
              u"project.files"_s, u"project.configurations"_s, u"folder.name"_s, u"folder.files"_s, u"file.path"_s,
              u"file.properties"_s, u"properties.property('a', 'b')"_s, u"fileProperties.setProperty('a', 'b', 'c')"_s})
            QCOMPARE(f.attempt(code), QString::fromLatin1(Destroyed));
        QCOMPARE(f.attempt(u"folder.test('x')"_s), u"'x'"_s);
        QCOMPARE(f.attempt(u"app.currentProject = project"_s), u"RuntimeError: No workspace is open"_s);
        f.openWorkspace();
        QCOMPARE(f.attempt(u"app.projects is projects or app.projects[0] is project"_s), u"False"_s);
        QCOMPARE(f.attempt(u"len(projects)"_s), u"0"_s);
        QCOMPARE(f.attempt(u"app.currentProject = project"_s), QString::fromLatin1(Destroyed));
    }

    void removedProjectLeavesTheCollection()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.run("first, second = app.projects; iterator = iter(app.projects); next(iterator)");
        ProjectWorkspace *workspace = f.window->projectWorkspace();
        workspace->removeProject(workspace->project(1));
        QCOMPARE(f.attempt(u"next(iterator, 'end')"_s), u"'end'"_s);
        QCOMPARE(f.attempt(u"second.name"_s), QString::fromLatin1(Destroyed));
        QCOMPARE(f.attempt(u"app.currentProject = second"_s), QString::fromLatin1(Destroyed));
        // Another project may be created at the address of the old one.
        f.run("kept = [second]");
        for (int i = 0; i < 20; ++i) {
            auto *project = new Project(u"next"_s, f.path(QString()));
            workspace->addProject(project);
            QCOMPARE(f.attempt(u"app.projects[1].name"_s), u"'next'"_s);
            f.run("kept.append(app.projects[1])");
            workspace->removeProject(project);
        }
        QCOMPARE(f.attempt(u"len(set(map(id, kept)))"_s), u"21"_s);
    }

    void iteratorStaysAtTheEnd()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.attempt(u"type(iter(app.projects)).__name__"_s), u"'projects-iterator'"_s);
        f.run("i = iter(app.projects)");
        QCOMPARE(f.attempt(u"i is iter(i)"_s), u"True"_s);
        QCOMPARE(f.attempt(u"i.next().name, next(i).name"_s), u"('sample', 'Samba')"_s);
        QCOMPARE(f.attempt(u"next(i)"_s).section(u':', 0, 0), u"StopIteration"_s);
        f.window->projectWorkspace()->addProject(new Project(u"late"_s, f.path(QString())));
        QCOMPARE(f.attempt(u"i.next()"_s).section(u':', 0, 0), u"StopIteration"_s);
        QCOMPARE(f.attempt(u"[p.name for p in app.projects]"_s), u"['sample', 'Samba', 'late']"_s);
    }

    void currentProjectIsSetByName()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[1]"_s), u"done"_s);
        QCOMPARE(f.window->activity().currentProject()->name(), u"Samba"_s);
        f.window->activity().projects().first()->setActive(false);
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[0]"_s), u"AttributeError: Project is not active"_s);
        QCOMPARE(f.window->activity().currentProject()->name(), u"Samba"_s);
        QCOMPARE(f.attempt(u"del app.currentProject"_s).section(u':', 0, 0), u"AttributeError"_s);
    }

    /// Also if the object is that of another project of that name.
    void currentProjectIsTheFirstOfThatName()
    {
        ScriptFixture f;
        for (const QString &name : {u"a/x.vnp"_s, u"b/x.vnp"_s, u"other.vnp"_s})
            f.writeProject(name);
        f.writeWorkspace(u"names.vnw"_s, {u"a/x.vnp"_s, u"b/x.vnp"_s, u"other.vnp"_s});
        QVERIFY(f.window->openWorkspace(f.path(u"names.vnw"_s), false));
        const QList<QPointer<Project>> projects = f.window->activity().projects();
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[2]"_s), u"done"_s);
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[1]"_s), u"done"_s);
        QCOMPARE(f.window->activity().currentProject(), projects[0].data());
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[2]"_s), u"done"_s);
        projects[0]->setActive(false);
        QCOMPARE(f.attempt(u"app.currentProject = app.projects[1]"_s), u"AttributeError: Project is not active"_s);
        QVERIFY(projects[1]->isActive());
        QCOMPARE(f.window->activity().currentProject(), projects[2].data());
    }

    // Workspaces

    void opensSavesAndCloses()
    {
        ScriptFixture f;
        QCOMPARE(f.run("app.openWorkspace(" + f.quoted(u"two.vnw"_s) + ")"), QString());
        QCOMPARE(f.projects(), (QStringList{u"sample"_s, u"Samba"_s}));
        f.run("first = app.projects; app.projects[0].properties.setProperty('level', '7', 'Debug')");
        QCOMPARE(f.attempt(u"app.projects[0].isModified"_s), u"1"_s);
        QCOMPARE(f.attempt(u"app.saveWorkspace()"_s), u"None"_s);
        QCOMPARE(f.attempt(u"app.projects[0].isModified"_s), u"0"_s);
        QVERIFY(f.read(u"sample.vnp"_s).contains("<property key=\"level\">7</property>"));
        QCOMPARE(f.run("app.openWorkspace(" + f.quoted(u"two.vnw"_s) + ")"), QString());
        QCOMPARE(f.attempt(u"app.projects is first"_s), u"False"_s);
        QCOMPARE(f.attempt(u"app.closeWorkspace()"_s), u"None"_s);
        QVERIFY(!f.window->projectWorkspace());
    }

    void openAsksForUnsavedChanges()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.run("app.projects[0].properties.setProperty('level', '7', 'Debug')");
        f.answers->press(QMessageBox::Cancel);
        const QString result = f.attempt(u"app.openWorkspace(%1)"_s.arg(QString::fromUtf8(f.quoted(u"two.vnw"_s))));
        QCOMPARE(result, u"OSError: Cannot open workspace '%1'"_s.arg(f.path(u"two.vnw"_s)));
        QVERIFY(f.window->activity().projects().first()->isModified());
        f.answers->press(QMessageBox::Cancel);
        QCOMPARE(f.attempt(u"app.closeWorkspace()"_s), u"OSError: Could not close workspace"_s);
        QVERIFY(f.window->projectWorkspace());
    }

    void workspaceWithABadProjectIsNotOpened()
    {
        ScriptFixture f;
        f.write(u"bad.vnp"_s, "<project");
        f.writeWorkspace(u"bad.vnw"_s, {u"bad.vnp"_s});
        QVERIFY(f.attempt(u"app.openWorkspace(%1)"_s.arg(QString::fromUtf8(f.quoted(u"bad.vnw"_s))))
                    .startsWith(u"OSError: Cannot open workspace"_s));
        QCOMPARE(f.attempt(u"app.saveWorkspace()"_s), u"OSError: The project 'bad' could not be saved"_s);
        QCOMPARE(f.read(u"bad.vnp"_s), "<project"_ba);
    }

    void failedSavesAreNamed()
    {
        ScriptFixture f;
        f.openWorkspace();
        QVERIFY(QFile::remove(f.path(u"two.vnw"_s)));
        QVERIFY(QDir().mkdir(f.path(u"two.vnw"_s)));
        QCOMPARE(f.attempt(u"app.saveWorkspace()"_s), u"OSError: The workspace could not be saved"_s);
        QVERIFY(QFile::remove(f.path(u"Samba.vnp"_s)));
        QVERIFY(QDir().mkdir(f.path(u"Samba.vnp"_s)));
        QCOMPARE(f.attempt(u"app.saveWorkspace()"_s), u"OSError: The project 'Samba' could not be saved"_s);
    }

    void newerFileIsNotOverwrittenWithoutQuestion()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.changeOutside(u"sample.vnp"_s, "<project/>");
        f.answers->press(QMessageBox::No);
        QCOMPARE(f.attempt(u"app.saveWorkspace()"_s), u"OSError: The project 'sample' could not be saved"_s);
        QCOMPARE(f.read(u"sample.vnp"_s), "<project/>"_ba);
        QVERIFY(f.answers->allGiven());
    }

    void state()
    {
        ScriptFixture f;
        f.openWorkspace();
        const std::pair<ActivityState, QString> states[] = {
            {StateIdle, u"0"_s},   {StateBuilding, u"1"_s}, {StateInitialising, u"2"_s}, {StateRunning, u"2"_s},
            {StatePaused, u"2"_s}, {StateFinished, u"2"_s}, {StateUnknown, u"2"_s}};
        for (const auto &[state, number] : states) {
            f.window->activity().setState(state);
            QCOMPARE(f.attempt(u"app.state"_s), number);
        }
        f.window->activity().setState(StateIdle);
    }

    // Events

    void handlersAreChecked()
    {
        ScriptFixture f;
        for (const QString &name : {u"onWorkspaceLoaded"_s, u"onCurrentProjectChanged"_s}) {
            QCOMPARE(f.attempt(u"app.%1"_s.arg(name)), u"None"_s);
            QCOMPARE(f.attempt(u"app.%1 = len"_s.arg(name)), u"done"_s);
            QCOMPARE(f.attempt(u"app.%1 = 5"_s.arg(name)), u"TypeError: Function expected"_s);
            QCOMPARE(f.attempt(u"app.%1 is len"_s.arg(name)), u"True"_s);
            QCOMPARE(f.attempt(u"app.%1 = None"_s.arg(name)), u"done"_s);
            QCOMPARE(f.attempt(u"app.%1"_s.arg(name)), u"None"_s);
        }
    }

    void eventsAreFired()
    {
        ScriptFixture f;
        f.run("app.onWorkspaceLoaded = lambda: print('loaded', app.currentProject.name, len(app.projects), app.state)\n"
              "app.onCurrentProjectChanged = lambda: print('current', app.currentProject.name)");
        f.openWorkspace();
        QCOMPARE(f.printed(), u"loaded sample 2 0\n"_s);
        QCOMPARE(f.run("app.currentProject = app.projects['samb']"), u"current Samba\n"_s);
        QCOMPARE(f.run("app.currentProject = app.projects[1]"), QString());
        f.window->projectWorkspace()->setCurrentProject(0);
        QCOMPARE(f.printed(), u"current sample\n"_s);
    }

    void handlerThatRaisesIsPrinted()
    {
        ScriptFixture f;
        f.run("def fail(): raise ValueError('from the handler')\napp.onWorkspaceLoaded = fail");
        f.openWorkspace();
        const QString shown = f.printed();
        QVERIFY2(shown.endsWith(u"ValueError: from the handler\n"_s), qPrintable(shown));
        QVERIFY(shown.startsWith(u"Traceback"_s));
        QCOMPARE(f.projects().size(), 2);
    }

    void handlerMayCloseTheWorkspace()
    {
        ScriptFixture f;
        f.run("app.onWorkspaceLoaded = app.closeWorkspace");
        f.window->openWorkspace(f.path(u"two.vnw"_s), false);
        QVERIFY(!f.window->projectWorkspace());
        f.run("app.onWorkspaceLoaded = None\napp.onCurrentProjectChanged = app.closeWorkspace");
        f.openWorkspace();
        QCOMPARE(f.run("app.currentProject = app.projects[1]"), QString());
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.attempt(u"app.state"_s), u"0"_s);
    }

    void handlerMayOpenAnotherWorkspace()
    {
        ScriptFixture f;
        f.writeWorkspace(u"one.vnw"_s, {u"Samba.vnp"_s});
        f.run("def loaded():\n"
              "    app.onWorkspaceLoaded = None\n"
              "    app.openWorkspace("
              + f.quoted(u"one.vnw"_s) + ")\napp.onWorkspaceLoaded = loaded");
        f.window->openWorkspace(f.path(u"two.vnw"_s), false);
        QCOMPARE(f.printed(), QString());
        QCOMPARE(f.projects(), QStringList{u"Samba"_s});
    }

    void handlerMayChangeTheProjectAgain()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.run("depth = 0\n"
                       "def swap():\n"
                       "    global depth\n"
                       "    depth += 1\n"
                       "    if depth < 20: app.currentProject = app.projects[(depth + 1) % 2]\n"
                       "app.onCurrentProjectChanged = swap\n"
                       "app.currentProject = app.projects[1]\n"
                       "print(depth)"),
                 u"20\n"_s);
    }

    void endlessRecursionOfAHandlerIsPrinted()
    {
        ScriptFixture f;
        f.run("def again(): again()\napp.onWorkspaceLoaded = again");
        f.openWorkspace();
        QVERIFY(f.printed().contains(u"RecursionError"_s));
    }

    // Actions, events and dialogs

    void actionsAreTriggered()
    {
        ScriptFixture f;
        f.installation.write(u"config/uiconfig.xml"_s, "<ui><actions><action name='editCopy'/></actions></ui>");
        f.restart();
        QAction *action = f.window->findChild<QAction *>(u"editCopy"_s);
        QVERIFY(action);
        action->setEnabled(false);
        const QSignalSpy spy(action, &QAction::triggered);
        QCOMPARE(f.attempt(u"varnel.app.doAction('editCopy')"_s), u"None"_s);
        QCOMPARE(spy.count(), 1);
    }

    void actionKeepsItsCheckMark()
    {
        ScriptFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             "<ui><actions><action name='toolsRecordScript' slot='none' toggle='off'/></actions></ui>");
        f.restart();
        auto *action = f.window->findChild<QAction *>(u"toolsRecordScript"_s);
        QVERIFY(action && action->isCheckable());
        const bool checked = action->isChecked();
        const QSignalSpy triggered(action, &QAction::triggered);
        const QSignalSpy toggled(action, &QAction::toggled);
        QCOMPARE(f.attempt(u"varnel.app.doAction('toolsRecordScript')"_s), u"None"_s);
        QCOMPARE(action->isChecked(), checked);
        QCOMPARE(triggered.count(), 1);
        QCOMPARE(toggled.count(), 0);
    }

    /// Each runs once, though the script is in the middle of the first one.
    void actionMayTriggerAnother()
    {
        ScriptFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             "<ui><actions><action name='editCopy'/><action name='editCut'/></actions></ui>");
        f.restart();
        auto *copy = f.window->findChild<QAction *>(u"editCopy"_s);
        auto *cut = f.window->findChild<QAction *>(u"editCut"_s);
        QVERIFY(copy && cut);
        QStringList calls;
        connect(copy, &QAction::triggered, copy, [&] {
            calls.append(u"copy"_s);
            if (calls.size() == 1)
                QCOMPARE(f.attempt(u"varnel.app.doAction('editCut')"_s), u"None"_s);
        });
        connect(cut, &QAction::triggered, cut, [&] { calls.append(u"cut"_s); });
        QCOMPARE(f.attempt(u"varnel.app.doAction('editCopy')"_s), u"None"_s);
        QCOMPARE(calls, (QStringList{u"copy"_s, u"cut"_s}));
    }

    void eventTimeIsLimited()
    {
        QCOMPARE(eventTime(0), 0);
        QCOMPARE(eventTime(250), 250);
        QCOMPARE(eventTime(-1), 3000);
        QCOMPARE(eventTime(-5), 3000);
        QCOMPARE(eventTime(1L << 40), 2147483647);
    }

    void eventsAreProcessed()
    {
        ScriptFixture f;
        bool handled = false;
        QMetaObject::invokeMethod(
            qApp, [&handled] { handled = true; }, Qt::QueuedConnection);
        QCOMPARE(f.attempt(u"app.processEvents()"_s), u"None"_s);
        QVERIFY(handled);
        QCOMPARE(f.attempt(u"app.processEvents(1)"_s), u"None"_s);
    }

    void eventsAreHandledForTheWholeTime()
    {
        ScriptFixture f;
        bool handled = false;
        int waits = 0;
        const QObject context; // of the connection
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &context,
                [&] { ++waits; });
        QTimer::singleShot(50, qApp, [&handled] { handled = true; });
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(f.attempt(u"app.processEvents(200)"_s), u"None"_s);
        QVERIFY(timer.elapsed() >= 200);
        QVERIFY(handled);
        QVERIFY(waits > 0); // it does not spin
    }

    void negativeTimeIsThreeSeconds()
    {
        ScriptFixture f;
        bool handled = false;
        QTimer::singleShot(50, qApp, [&handled] {
            handled = true;
            breakPython();
        });
        QVERIFY(f.run("app.processEvents(-5)\nprint('not reached')").endsWith(u"KeyboardInterrupt\n"_s));
        QVERIFY(handled);
    }

    void otherThreadsRunWhileEventsAreHandled()
    {
        ScriptFixture f;
        QCOMPARE(f.run("import threading, time\nsteps = []\n"
                       "def work():\n    for i in range(5): time.sleep(0.001); steps.append(i)\n"
                       "thread = threading.Thread(target=work); thread.start()\n"
                       "app.processEvents(1000)\nprint(steps)\nthread.join()"),
                 u"[0, 1, 2, 3, 4]\n"_s);
    }

    void workspaceMayCloseWhileEventsAreProcessed()
    {
        ScriptFixture f;
        f.openWorkspace();
        QMetaObject::invokeMethod(
            qApp, [&f] { f.window->closeWorkspace(); }, Qt::QueuedConnection);
        QCOMPARE(f.run("project = app.projects[0]\napp.processEvents()\nprint(attempt('project.name'))"),
                 QString::fromLatin1(Destroyed) + u'\n');
    }

    void messageBox_data()
    {
        QTest::addColumn<QString>("buttons");
        QTest::addColumn<int>("pressed");
        QTest::addColumn<QString>("result");
        QTest::newRow("one") << u"mbOk"_s << int(QMessageBox::Ok) << u"1"_s;
        QTest::newRow("two") << u"mbYes, mbNo"_s << int(QMessageBox::No) << u"4"_s;
        QTest::newRow("three") << u"mbAbort, mbRetry, mbIgnore"_s << int(QMessageBox::Ignore) << u"7"_s;
        QTest::newRow("gap") << u"mbCancel, mbNone, mbYes"_s << int(QMessageBox::Yes) << u"3"_s;
        QTest::newRow("the same twice") << u"mbRetry, mbRetry"_s << int(QMessageBox::Retry) << u"6"_s;
        QTest::newRow("none") << u"mbNone"_s << int(QMessageBox::Ok) << u"1"_s;
        QTest::newRow("unknown number") << u"99, -1"_s << int(QMessageBox::Ok) << u"1"_s;
    }
    void messageBox()
    {
        QFETCH(QString, buttons);
        QFETCH(int, pressed);
        ScriptFixture f;
        f.answers->press(QMessageBox::StandardButton(pressed));
        QTEST(f.attempt(u"app.messageBox('Title', '<b>Prompt</b>', %1)"_s.arg(buttons)), "result");
        QCOMPARE(f.answers->shown, QStringList{u"<b>Prompt</b>"_s});
        QCOMPARE(f.answers->boxes.last().caption, u"Title"_s);
        QCOMPARE(f.answers->boxes.last().icon, QMessageBox::Information);
    }

    void messageBoxStaysWhenTheWorkspaceCloses()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.answers->meet([&f](QDialog *dialog) {
            f.window->closeWorkspace();
            dialog->reject();
        });
        QCOMPARE(f.run("project = app.projects[0]\n"
                       "print(app.messageBox('a', 'b', mbOk, mbCancel), app.projects, attempt('project.name'))"),
                 u"2 None "_s + QString::fromLatin1(Destroyed) + u'\n');
    }

    void inputBox()
    {
        ScriptFixture f;
        f.answers->type(u"ä€"_s);
        QCOMPARE(f.attempt(u"app.inputBox('Title', 'Prompt')"_s), u"'ä€'"_s);
        QCOMPARE(f.answers->shown, QStringList{u"Title|Prompt"_s});
        f.answers->meet([](QDialog *dialog) { dialog->accept(); });
        QCOMPARE(f.attempt(u"app.inputBox('Title', 'Prompt', 'default')"_s), u"'default'"_s);
        f.answers->meet([](QDialog *dialog) { dialog->reject(); });
        QCOMPARE(f.attempt(u"app.inputBox('Title', 'Prompt', 'default')"_s), u"None"_s);
        f.answers->type({});
        QCOMPARE(f.attempt(u"app.inputBox('Title', 'Prompt', 'default')"_s), u"''"_s);
    }

    void openFileDialog()
    {
        ScriptFixture f;
        f.write(u"a.txt"_s, "x");
        f.answers->choose({f.path(u"a.txt"_s)});
        QCOMPARE(f.attempt(u"app.openFileDialog('Choose', %1, 'Texts (*.txt)')"_s.arg(
                     QString::fromUtf8(f.quoted(QString())))),
                 u"'%1'"_s.arg(f.path(u"a.txt"_s)));
        QCOMPARE(f.answers->shown, QStringList{u"openFileDialog|Choose|Texts (*.txt)"_s});
        QCOMPARE(QDir(f.answers->directory), QDir(f.path(QString())));
        f.answers->choose({});
        QCOMPARE(f.attempt(u"app.openFileDialog('Choose')"_s), u"''"_s);
    }

    // The panel

    void outputPanel()
    {
        ScriptFixture f;
        auto *dock = f.window->findChild<DockWindow *>(u"pythonOutputDockWindow"_s);
        QVERIFY(dock->isHidden());
        QCOMPARE(dock->windowTitle(), u"Python Output"_s);
        QCOMPARE(f.attempt(u"app.outputWindow.show()"_s), u"None"_s);
        QVERIFY(dock->isVisible());
        QCOMPARE(f.attempt(u"app.outputWindow.hide()"_s), u"None"_s);
        QVERIFY(dock->isHidden());
        auto *list = f.window->findChild<PropertyList *>(u"pythonOutputList"_s);
        QCOMPARE(list->headerItem()->text(0) + u'|' + list->headerItem()->text(1), u"Python|Value"_s);
        f.run("w = app.outputWindow; w['b'] = '1'; w['a'] = '2'; w['b'] = 'ä€'");
        QCOMPARE(list->topLevelItemCount(), 2);
        QCOMPARE(list->firstChild()->name() + u'=' + list->firstChild()->value().toString(), u"b=ä€"_s);
        QCOMPARE(f.attempt(u"w['b'] + w['a']"_s), u"'ä€2'"_s);
        f.run("w.clear(); w['c'] = '3'");
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(f.attempt(u"w['a']"_s), u"KeyError: Attempt to read unknown property 'a'"_s);
    }

    void outputPanelRefuses_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("result");
        QTest::newRow("unknown name") << u"w['x']"_s << u"KeyError: Attempt to read unknown property 'x'"_s;
        QTest::newRow("empty text") << u"w['empty']"_s << u"KeyError: Attempt to read unknown property 'empty'"_s;
        QTest::newRow("number as a name") << u"w[1]"_s << u"TypeError"_s;
        QTest::newRow("number as a value") << u"w['a'] = 1"_s << u"TypeError"_s;
        QTest::newRow("None as a value") << u"w['a'] = None"_s << u"TypeError"_s;
        QTest::newRow("number as a name to write") << u"w[1] = 'a'"_s << u"TypeError"_s;
        QTest::newRow("length") << u"len(w)"_s << u"TypeError"_s;
        QTest::newRow("removal of an unknown name") << u"w.clearProperty('x')"_s << u"None"_s;
    }
    void outputPanelRefuses()
    {
        QFETCH(QString, code);
        QFETCH(QString, result);
        ScriptFixture f;
        f.run("w = app.outputWindow; w['a'] = 'old'; w['empty'] = ''");
        const QString actual = f.attempt(code);
        QCOMPARE(result.endsWith(u"Error"_s) ? actual.section(u':', 0, 0) : actual, result);
        QCOMPARE(f.attempt(u"w['a']"_s), u"'old'"_s);
        f.run("w.clearProperty('a')");
        QCOMPARE(f.attempt(u"w['a']"_s), u"KeyError: Attempt to read unknown property 'a'"_s);
    }

    // The console

    void consoleUsesTheObjects()
    {
        ScriptFixture f;
        f.run("sys.stdout, sys.stderr = streams");
        auto *console = f.window->findChild<CommandLineWindow *>();
        QVERIFY(console);
        console->setFocus();
        QTest::keyClicks(console, u"from varnel import *"_s);
        QTest::keyClick(console, Qt::Key_Return);
        QTest::keyClicks(console, u"app.st"_s);
        QTest::keyClick(console, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClick(console, Qt::Key_Return);
        QVERIFY2(console->toPlainText().contains(u">>> app.state\n0\n>>> "_s), qPrintable(console->toPlainText()));
        QTest::keyClicks(console, u"app.nosuch"_s);
        QTest::keyClick(console, Qt::Key_Return);
        QVERIFY(console->toPlainText().contains(u"AttributeError: 'App' object has no attribute 'nosuch'"_s));
    }
};

QTEST_APPLESS_MAIN(ScriptAppTest)
#include "tst_scriptapp.moc"

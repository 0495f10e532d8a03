#include "cpphighlighter.h"
#include "cppindent.h"
#include "debugfixture.h"
#include "imultiprocessorsync.h"
#include "textdocumenttemplate.h"
#include "textview.h"
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const auto CannotStart = u"message Cannot start debugger.||Please see Debug Output window for details."_s;
const auto NeedsRebuilding = u"message The project 'fw' needs rebuilding.||Do you want rebuild the project before "
                             "continuing? [Yes No Cancel]"_s;
} // namespace

/// Sessions from their start to their end, and run control of one and of several processors.
class DebugControlTest : public QObject, protected DebugFixture
{
    Q_OBJECT

private:
    FormatTable m_formats;

    void call(const QString &command)
    {
        QVERIFY(QMetaObject::invokeMethod(m_control.get(), command.toLatin1().constData(), Qt::DirectConnection));
    }

    /// Opens a text file as the editor does.
    void openText(const QString &name)
    {
        auto *text =
            new TextDocumentTemplate({}, {}, {}, {}, std::make_unique<CppHighlighter>(), std::make_unique<CppIndent>());
        text->highlighter()->setFormats(&m_formats);
        m_documents->addTemplate(text);
        m_template->refuses = "";
        QVERIFY(m_documents->openDocument(writeFile(path(name), "one\ntwo\n"), true));
        QVERIFY(qobject_cast<TextView *>(m_views->currentView()));
        m_template->refuses = nullptr;
    }

    void setAllActions(DebugAction action)
    {
        for (const DebugEvent event : {RunEvent, PauseEvent, RestartEvent, WakeupEvent, BreakpointEvent})
            m_control->options().setAction(event, action);
    }

    /// A processor with @p operations of IMultiProcessorSync, in a group of its own.
    void addSynchronised(const QString &name, int operations)
    {
        addProcessor(name, {IMultiProcessorSync::Iid});
        scriptOf(name).group = u"probe of "_s + name;
        scriptOf(name).syncOperations = operations;
    }

    /// An action of the user or of a script during a nested event loop.
    void doMeanwhile(const QString &event, const Project *current, const Project *other)
    {
        note(u"meanwhile"_s);
        if (event == u"close workspace"_s)
            closeWorkspace();
        if (event == u"close window"_s)
            closeWindow();
        if (event == u"stop session"_s)
            m_control->debugStop();
        if (event == u"stop build"_s)
            m_build->buildStopBuild();
        if (event == u"remove all"_s || event == u"remove current"_s)
            m_workspace->removeProject(current);
        if (event == u"remove all"_s || event == u"remove other"_s)
            m_workspace->removeProject(other);
    }

    /// Calls @p act from an event loop that ends then.
    void runInLoop(const std::function<void()> &act)
    {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            act();
            loop.quit();
        });
        loop.exec();
    }

    /// Starts a session of the project "fw" and calls @p act in the nested event loop @p loop.
    void startInto(const QString &loop, StubScript &build, const std::function<void()> &act)
    {
        StubScript &processor = scriptOf(u"fw"_s);
        build.upToDate = !loop.startsWith(u"rebuild"_s);
        if (loop == u"saving"_s) {
            m_whileSaving = act;
        } else if (loop == u"check"_s) {
            build.on[u"isUpToDate"_s] = [this, act] { runInLoop(act); };
        } else if (loop == u"rebuild question, Yes"_s) {
            buildsLater(build, u"build"_s, false);
            expectBox(QMessageBox::Yes, act);
        } else if (loop == u"rebuild question, No"_s) {
            expectBox(QMessageBox::No, act);
        } else if (loop == u"rebuild"_s) {
            expectBox(QMessageBox::Yes);
            buildsLater(build, u"build"_s, true, [&build, act] {
                build.upToDate = true;
                act();
            });
        } else if (loop == u"build for debugging"_s) {
            build.offers.insert(IDebugBuild::Iid);
            buildsLater(build, u"buildForDebug"_s, true, act);
        } else if (loop == u"start"_s) {
            processor.on[u"start"_s] = [this, act] { later(act); };
        } else {
            processor.started = false;
            expectBox(QMessageBox::Ok, act);
        }
        m_control->debugRun();
    }

    /// The same in a session.
    void controlInto(const QString &loop, const Project *current, const Project *other,
                     const std::function<void()> &act)
    {
        be(loop.contains(u"again"_s) || loop.contains(u"question"_s) ? StatePaused : StateRunning);
        if (loop.startsWith(u"question of "_s)) {
            setAllActions(AskForProcessors);
            expectQuestion("Button2", false, act);
            return call(loop.section(u' ', -1));
        }
        expectBox(QMessageBox::Ok, act);
        if (loop == u"hit message"_s)
            return report(other, IExecutionEnvironment::ProgramBreakpointHit);
        scriptOf(current->name()).location = {};
        if (loop == u"no source message, again"_s)
            m_control->debugShowNext();
        else
            report(current, IExecutionEnvironment::ProgramPaused);
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    // The start of a session

    void theFirstCommandSavesStartsAndRuns()
    {
        addBuild(addProcessor(u"fw"_s));
        m_output->addPage(u"Extra"_s);
        m_output->outputLine(OutputWindow::Build, u"old\n"_s);
        m_output->outputLine(OutputWindow::Debug, u"old\n"_s);
        m_output->outputLine(OutputWindow::FindInFiles, u"found\n"_s);
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\n"
                          "fileSaveAll\n"
                          "fw-build.isUpToDate(Debug)\n"
                          "state 3\n"
                          "fw.start(false)\n"
                          "state 4\n"
                          "fw.run()"_s);
        QCOMPARE(output(OutputWindow::Build), QString());
        QCOMPARE(output(OutputWindow::Debug), u"Initialising execution environment for project 'fw'"_s);
        QCOMPARE(output(OutputWindow::FindInFiles), u"found"_s);
        QVERIFY(!m_output->page(3));
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Debug));
    }

    void laterCommandsDoNotStartTheSessionAgain_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("initialising") << 3;
        QTest::newRow("running") << 4;
        QTest::newRow("paused") << 5;
        QTest::newRow("finished") << 6;
        QTest::newRow("unknown") << 7;
    }

    void laterCommandsDoNotStartTheSessionAgain()
    {
        QFETCH(int, state);
        addProcessor(u"fw"_s);
        be(ActivityState(state));
        m_control->debugRun();
        QCOMPARE(story(), u"state 4\nfw.run()"_s);
    }

    void failedSaveEndsTheStart()
    {
        addBuild(addProcessor(u"fw"_s));
        m_output->outputLine(OutputWindow::Debug, u"old\n"_s);
        m_savesAll = false;
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\nfileSaveAll\nstate 1"_s);
        QCOMPARE(output(OutputWindow::Debug), u"old"_s);
    }

    void outOfDateProjectShowsAQuestion_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<QString>("rest");
        QTest::newRow("No") << QMessageBox::No << u"state 3\nfw.start(false)\nstate 4\nfw.run()"_s;
        QTest::newRow("Cancel") << QMessageBox::Cancel << u"state 1"_s;
    }

    void outOfDateProjectShowsAQuestion()
    {
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(QString, rest);
        addBuild(addProcessor(u"fw"_s)).upToDate = false;
        m_output->outputLine(OutputWindow::Debug, u"old\n"_s);
        expectBox(answer);
        m_control->debugRun();
        QCOMPARE(story(),
                 u"showOutputDock\nfileSaveAll\nfw-build.isUpToDate(Debug)\n"_s + NeedsRebuilding + u'\n' + rest);
        QCOMPARE(output(OutputWindow::Debug).startsWith(u"old"_s), answer == QMessageBox::Cancel);
    }

    void yesBuildsAndChecksAgain_data()
    {
        QTest::addColumn<bool>("success");
        QTest::addColumn<bool>("upToDate");
        QTest::addColumn<QString>("rest");
        QTest::newRow("built") << true << true << u"state 3\nfw.start(false)\nstate 4\nfw.run()"_s;
        QTest::newRow("the build finds nothing to do and fails")
            << false << true << u"state 3\nfw.start(false)\nstate 4\nfw.run()"_s;
        QTest::newRow("still not up to date") << true << false << u"state 1"_s;
    }

    void yesBuildsAndChecksAgain()
    {
        QFETCH(bool, success);
        QFETCH(bool, upToDate);
        QFETCH(QString, rest);
        StubScript &build = addBuild(addProcessor(u"fw"_s));
        build.upToDate = false;
        buildsLater(build, u"build"_s, success, [&] { build.upToDate = upToDate; });
        expectBox(QMessageBox::Yes);
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\n"
                          "fileSaveAll\n"
                          "fw-build.isUpToDate(Debug)\n"_s
                              + NeedsRebuilding
                              + u"\nshowOutputDock\n"
                                "fileSaveAll\n"
                                "state 2\n"
                                "fw-build.build([Debug], false)\n"
                                "state 1\n"
                                "checkFileChanges\n"
                                "fw-build.isUpToDate(Debug)\n"_s
                              + rest);
    }

    void aModifiedDocumentNeedsRebuildingWithoutAskingThePlugin()
    {
        addBuild(addProcessor(u"fw"_s));
        open(u"main.c"_s)->document()->setModified(true);
        expectBox(QMessageBox::Cancel);
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\nfileSaveAll\n"_s + NeedsRebuilding + u"\nstate 1"_s);
        m_views->currentDocument()->setModified(false);
    }

    void onlyTheCurrentProjectMustBeUpToDate()
    {
        addBuild(addProcessor(u"dsp"_s)).upToDate = false;
        addBuild(addProcessor(u"fw"_s));
        m_control->debugRun();
        QCOMPARE(effects(), u"showOutputDock\n"
                            "fileSaveAll\n"
                            "fw-build.isUpToDate(Debug)\n"
                            "state 3\n"
                            "dsp.start(false)\n"
                            "state 3\n"
                            "fw.start(false)\n"
                            "state 4\n"
                            "dsp.run()\n"
                            "fw.run()"_s);
    }

    void exceptionOfTheBuildEnvironmentIsReported()
    {
        addBuild(addProcessor(u"fw"_s)).on[u"isUpToDate"_s] = throwError;
        expectException("IBuildEnvironment::isUpToDate");
        expectBox(QMessageBox::Cancel);
        m_control->debugRun();
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }

    // The build before a session

    void checkThatFindsWorkInAClosedWorkspaceEndsTheStart()
    {
        StubScript &build = addBuild(addProcessor(u"fw"_s));
        build.upToDate = false;
        build.on[u"isUpToDate"_s] = [this] { runInLoop([this] { closeWorkspace(); }); };
        m_control->debugRun(); // no question
        QCOMPARE(m_activity->state(), StateNoWorkspace);
        story();
    }

    void aBuildForDebuggingComesBeforeTheStart()
    {
        StubScript &build = addBuild(addProcessor(u"fw"_s), {IDebugBuild::Iid});
        bool buildPageInFront = false;
        buildsLater(build, u"buildForDebug"_s, true,
                    [&] { buildPageInFront = m_output->currentPage() == m_output->page(OutputWindow::Build); });
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\n"
                          "fileSaveAll\n"
                          "fw-build.isUpToDate(Debug)\n"
                          "state 2\n"
                          "fw-build.buildForDebug(Debug)\n"
                          "state 1\n"
                          "checkFileChanges\n"
                          "state 3\n"
                          "fw.start(false)\n"
                          "state 4\n"
                          "fw.run()"_s);
        QVERIFY(buildPageInFront);
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Debug));
    }

    void aBuildThatFailsEndsTheStart_data()
    {
        QTest::addColumn<bool>("throws");
        QTest::newRow("reported") << false;
        QTest::newRow("thrown") << true;
    }

    void aBuildThatFailsEndsTheStart()
    {
        QFETCH(bool, throws);
        StubScript &build = addBuild(addProcessor(u"fw"_s), {IDebugBuild::Iid});
        buildsLater(build, u"buildForDebug"_s, false);
        if (throws) {
            build.on[u"buildForDebug"_s] = throwError;
            expectException("IDebugBuild::buildForDebug");
        }
        expectBox();
        m_control->debugRun();
        QVERIFY(story().endsWith(u"fw-build.buildForDebug(Debug)\nstate 1\ncheckFileChanges\nstate 3\n"_s + CannotStart
                                 + u"\nstate 1"_s));
    }

    void aBuildThatTheUserStopsEndsTheStartSilently_data()
    {
        QTest::addColumn<bool>("success");
        QTest::newRow("as a failure") << false;
        QTest::newRow("although it succeeds") << true;
    }

    void aBuildThatTheUserStopsEndsTheStartSilently()
    {
        QFETCH(bool, success);
        StubScript &build = addBuild(addProcessor(u"fw"_s), {IDebugBuild::Iid});
        buildsLater(build, u"buildForDebug"_s, success, [&] { m_build->buildStopBuild(); });
        m_control->debugRun();
        QVERIFY(story().endsWith(u"fw-build.buildForDebug(Debug)\nfw-build.stop()\nstate 1\ncheckFileChanges\nstate 3\n"
                                 "state 1"_s));
    }

    void aRebuildThatTheUserStopsEndsTheStartSilently_data()
    {
        QTest::addColumn<bool>("upToDate");
        QTest::newRow("before its end") << false;
        QTest::newRow("when all was done") << true;
    }

    void aRebuildThatTheUserStopsEndsTheStartSilently()
    {
        QFETCH(bool, upToDate);
        StubScript &build = addBuild(addProcessor(u"fw"_s));
        build.upToDate = false;
        buildsLater(build, u"build"_s, false, [&] {
            m_build->buildStopBuild();
            build.upToDate = upToDate;
        });
        expectBox(QMessageBox::Yes);
        m_control->debugRun();
        const QString events = story();
        QVERIFY(events.endsWith(u"state 1"_s));
        QVERIFY(!events.contains(u"fw.start"_s));
    }

    void stopOfAnEarlierBuildDoesNotEndTheStart()
    {
        addBuild(addProcessor(u"fw"_s));
        m_build->buildStopBuild();
        m_control->debugRun();
        QVERIFY(story().endsWith(u"fw.start(false)\nstate 4\nfw.run()"_s));
    }

    void eachProjectIsBuiltAndStartedInItsTurn()
    {
        for (const QString &name : {u"fw"_s, u"dsp"_s}) {
            StubScript &build = addBuild(addProcessor(name), {IDebugBuild::Iid});
            buildsLater(build, u"buildForDebug"_s, true);
        }
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\n"
                          "fileSaveAll\n"
                          "dsp-build.isUpToDate(Debug)\n"
                          "state 2\n"
                          "fw-build.buildForDebug(Debug)\n"
                          "state 1\n"
                          "checkFileChanges\n"
                          "state 3\n"
                          "fw.start(false)\n"
                          "state 2\n"
                          "dsp-build.buildForDebug(Debug)\n"
                          "state 1\n"
                          "checkFileChanges\n"
                          "state 3\n"
                          "dsp.start(false)\n"
                          "state 4\n"
                          "fw.run()\n"
                          "dsp.run()"_s);
    }

    // Reasons why a session does not start

    void aProjectWithoutEnvironmentCannotStart()
    {
        addProject(u"fw"_s, {}, {});
        story();
        m_control->options().setAction(RunEvent, AskForProcessors);
        expectBox();
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\nfileSaveAll\nstate 3\n"_s + CannotStart + u"\nstate 1"_s);
        QCOMPARE(output(OutputWindow::Debug), u"Initialising execution environment for project 'fw'\n"
                                              "No execution environment available for project 'fw'"_s);
    }

    void aProjectWithoutEnvironmentIsNotBuiltForDebugging()
    {
        addBuild(addProject(u"fw"_s, {}, {}), {IDebugBuild::Iid});
        expectBox();
        m_control->debugRun();
        QVERIFY(!story().contains(u"buildForDebug"_s));
    }

    void failedStartOfTheEnvironmentEndsTheStart_data()
    {
        QTest::addColumn<bool>("throws");
        QTest::newRow("returns false") << false;
        QTest::newRow("thrown") << true;
    }

    void failedStartOfTheEnvironmentEndsTheStart()
    {
        QFETCH(bool, throws);
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).started = false;
        if (throws) {
            scriptOf(u"fw"_s).on[u"start"_s] = throwError;
            expectException("IExecutionEnvironment::start");
        }
        expectBox();
        m_control->debugRun();
        QCOMPARE(story(), u"showOutputDock\nfileSaveAll\nstate 3\nfw.start(false)\n"_s + CannotStart + u"\nstate 1"_s);
    }

    void failedStartStopsEarlierEnvironments()
    {
        for (const QString &name : {u"one"_s, u"two"_s, u"three"_s})
            addProcessor(name);
        scriptOf(u"two"_s).started = false;
        expectBox();
        m_control->debugRun();
        QCOMPARE(effects(), u"showOutputDock\n"
                            "fileSaveAll\n"
                            "state 3\n"
                            "one.start(false)\n"
                            "state 3\n"
                            "two.start(false)\n"_s
                                + CannotStart + u"\none.stop()\nstate 1"_s);
    }

    /// Reports that are pending after the start of a project are handled before the next step, also after a failure.
    void pendingReportsAreHandledAfterEachProject()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        const auto reportsLater = [this](const Project *project) {
            return [this, project] { later([this, project] { report(project, 3); }); };
        };
        scriptOf(u"one"_s).on[u"start"_s] = reportsLater(one);
        scriptOf(u"two"_s).on[u"start"_s] = reportsLater(two);
        m_control->debugRun();
        QVERIFY(effects().endsWith(
            u"one.start(false)\nstate 3\ntwo.start(false)\nstate 7\nstate 4\none.run()\ntwo.run()"_s));
        StubScript &build = addBuild(m_workspace->project(1), {IDebugBuild::Iid});
        buildsLater(build, u"buildForDebug"_s, false, [&] {
            m_build->buildStopBuild();
            later([&] { report(two, 3); });
        });
        be(StateIdle);
        m_control->debugRun();
        QVERIFY(effects().endsWith(u"checkFileChanges\nstate 3\nstate 7\none.stop()\nstate 1"_s));
    }

    void aSessionThatEndsAtOnceIsNotRun()
    {
        const Project *project = addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).on[u"start"_s] = [&] {
            later([&] {
                report(project, 0);
                m_control->debugStop();
            });
        };
        m_control->debugRun();
        QVERIFY(effects().endsWith(u"fw.start(false)\nstate 5\nfw.stop()\nstate 1\nfire onStopped"_s));
    }

    void withoutAnyProjectLeftNoSessionIsStarted()
    {
        const Project *project = addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).on[u"start"_s] = [&] { later([&] { m_workspace->removeProject(project); }); };
        m_control->debugRun();
        QVERIFY(effects().endsWith(u"fw.start(false)\nfw.stop()\nfire onCurrentProjectChanged\nstate 1"_s));
    }

    void pluginMayCloseTheWorkspaceInsideTheCall_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("operation");
        QTest::newRow("start") << u"debugRun"_s << u"start"_s;
        QTest::newRow("run") << u"debugRun"_s << u"run"_s;
        QTest::newRow("step") << u"debugStepInto"_s << u"stepInto"_s;
        QTest::newRow("pause") << u"debugPause"_s << u"pause"_s;
        QTest::newRow("stop") << u"debugStop"_s << u"stop"_s;
        QTest::newRow("restart") << u"debugRestart"_s << u"restart"_s;
        QTest::newRow("wake up") << u"debugWakeup"_s << u"wakeUp"_s;
    }

    void pluginMayCloseTheWorkspaceInsideTheCall()
    {
        QFETCH(QString, command);
        QFETCH(QString, operation);
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        open(u"main.c"_s);
        scriptOf(u"two"_s).on[operation] = [this, operation] {
            scriptOf(u"two"_s).on.remove(operation); // it may be called again
            closeWorkspace();
        };
        be(operation == u"start"_s ? StateIdle : StatePaused);
        call(command);
        QCOMPARE(m_activity->state(), StateNoWorkspace);
        QCOMPARE(m_stub->objectCount(), 0);
        story();
    }

    void commandsWithoutAProjectFailAnAssertion_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &command : {u"debugRun"_s, u"debugRunToCursor"_s, u"debugStepOver"_s, u"debugStepInto"_s})
            QTest::newRow(qPrintable(command)) << command;
    }

    void commandsWithoutAProjectFailAnAssertion()
    {
        QFETCH(QString, command);
        openText(u"notes.txt"_s);
        expectAssert(u"currentProject()"_s);
        call(command);
        dropWorkspace();
        expectAssert(u"currentProject()"_s);
        call(command);
        QCOMPARE(story(), QString());
    }

    void commandsWithoutAnEnvironmentDoNothing_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &command : {u"debugAttach"_s, u"debugPause"_s, u"debugStop"_s, u"debugRestart"_s,
                                       u"debugWakeup"_s, u"debugToggleBreakpoint"_s, u"debugViewDisassembly"_s})
            QTest::newRow(qPrintable(command)) << command;
    }

    void commandsWithoutAnEnvironmentDoNothing()
    {
        QFETCH(QString, command);
        call(command);
        addProject(u"fw"_s, {}, {});
        be(StatePaused);
        call(command);
        dropWorkspace();
        be(StateNoWorkspace);
        call(command);
        QCOMPARE(story(), QString());
    }

    // Attaching

    void attachingFiresScriptEventsBeforeAndAfter()
    {
        StubScript &build = addBuild(addProcessor(u"fw"_s), {IDebugBuild::Iid});
        scriptOf(u"fw"_s).canAttach = true;
        m_control->debugAttach();
        QCOMPARE(story(), u""
                          "fire onPreAttach\n"
                          "showOutputDock\n"
                          "fileSaveAll\n"
                          "fw-build.isUpToDate(Debug)\n"
                          "state 3\n"
                          "fw.start(true)\n"
                          "fw.programStatus()\n"
                          "fw.currentLocation()\n"
                          "openFile main.c\n"
                          "state 5\n"
                          "fire onAttach"_s);
        QVERIFY(build.on.isEmpty());
    }

    void failedAttachFiresNoSecondEvent()
    {
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).canAttach = true;
        scriptOf(u"fw"_s).started = false;
        expectBox();
        m_control->debugAttach();
        QVERIFY(story().endsWith(u"fw.start(true)\n"_s + CannotStart + u"\nstate 1"_s));
    }

    void attachingNeedsTheIdleStateAndASupportingTarget_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("canAttach");
        QTest::newRow("cannot") << 1 << false;
        for (const int state : {2, 3, 4, 5, 6, 7})
            QTest::addRow("state %d", state) << state << true;
    }

    void attachingNeedsTheIdleStateAndASupportingTarget()
    {
        QFETCH(int, state);
        QFETCH(bool, canAttach);
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).canAttach = canAttach;
        be(ActivityState(state));
        m_control->debugAttach();
        QVERIFY(!story().contains(u"fire"_s));
    }

    void exceptionInCanAttachEndsTheAttach()
    {
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).on[u"canAttach"_s] = throwError;
        expectException("IExecutionEnvironment::canAttach");
        m_control->debugAttach();
        QCOMPARE(story(), QString());
    }

    void aScriptMayCloseTheWorkspaceBeforeTheAttachment()
    {
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).canAttach = true;
        m_onEvent[u"onPreAttach"_s] = [this] { closeWorkspace(); };
        m_control->debugAttach();
        QCOMPARE(story(), u"fire onPreAttach\nstate 0"_s);
    }

    // One processor or all

    void withOneProcessorNoQuestionIsShown_data()
    {
        QTest::addColumn<int>("action");
        QTest::newRow("current") << 0;
        QTest::newRow("all") << 1;
        QTest::newRow("ask") << 2;
    }

    void withOneProcessorNoQuestionIsShown()
    {
        QFETCH(int, action);
        addSynchronised(u"fw"_s, 0xf000f);
        setAllActions(DebugAction(action));
        be(StatePaused);
        m_control->debugRun();
        m_control->debugPause();
        m_control->debugWakeup();
        be(StatePaused);
        m_control->debugRun();
        m_control->debugPause();
        m_control->debugWakeup();
        QCOMPARE(story(), u"state 4\nfw.run()\nfw.pause()\nfw.wakeUp()"_s);
        be(StatePaused);
        m_control->debugRestart();
        QCOMPARE(effects(), u"fw.restart()\nstate 5\nfire onRestart"_s);
    }

    void commandsFollowTheActionForSeveralProcessors_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char *name, const QString &command, int action, const QString &expected) {
            QTest::newRow(name) << command << action << expected;
        };
        add("run the current one", u"debugRun"_s, 0, u"state 4\ntwo.run()"_s);
        add("run all", u"debugRun"_s, 1, u"state 4\none.run()\ntwo.run()\nthree.run()"_s);
        add("pause the current one", u"debugPause"_s, 0, u"two.pause()"_s);
        add("pause all", u"debugPause"_s, 1, u"one.pause()\ntwo.pause()\nthree.pause()"_s);
        add("wake the current one up", u"debugWakeup"_s, 0, u"two.wakeUp()"_s);
        add("wake all up", u"debugWakeup"_s, 1, u"one.wakeUp()\ntwo.wakeUp()\nthree.wakeUp()"_s);
        add("restart the current one", u"debugRestart"_s, 0, u"two.restart()\nstate 5\nfire onRestart"_s);
        add("restart all", u"debugRestart"_s, 1,
            u"one.restart()\ntwo.restart()\nthree.restart()\nstate 5\nfire onRestart"_s);
    }

    void commandsFollowTheActionForSeveralProcessors()
    {
        QFETCH(QString, command);
        QFETCH(int, action);
        QFETCH(QString, expected);
        for (const QString &name : {u"one"_s, u"two"_s, u"three"_s})
            addProcessor(name);
        addProject(u"none"_s, {}, {}); // has no environment and is skipped
        m_workspace->setCurrentProject(1);
        setAllActions(DebugAction(action));
        be(StatePaused);
        call(command);
        QCOMPARE(effects(), expected);
    }

    void commandsAskForOneOrAllProcessors_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("all");
        QTest::addColumn<QString>("none");
        QTest::newRow("run") << u"debugRun"_s
                             << u"question Do you want to start the current processor or all processors? "
                                "[Start current processor|Start all processors]"_s
                             << u"state 4\ntwo.run()"_s << u"state 4\none.run()\ntwo.run()"_s << QString();
        QTest::newRow("pause") << u"debugPause"_s
                               << u"question Do you want to pause the current processor or all processors? "
                                  "[Pause current processor|Pause all processors]"_s
                               << u"two.pause()"_s << u"one.pause()\ntwo.pause()"_s << QString();
        QTest::newRow("restart") << u"debugRestart"_s
                                 << u"question Do you want to restart the current processor or all processors? "
                                    "[Restart current processor|Restart all processors]"_s
                                 << u"two.restart()\nstate 5\nfire onRestart"_s
                                 << u"one.restart()\ntwo.restart()\nstate 5\nfire onRestart"_s << u"fire onRestart"_s;
        QTest::newRow("wake up") << u"debugWakeup"_s
                                 << u"question Do you want to wake up the current processor or all processors? "
                                    "[Wakeup current processor|Wakeup all processors]"_s
                                 << u"two.wakeUp()"_s << u"one.wakeUp()\ntwo.wakeUp()"_s << QString();
    }

    void commandsAskForOneOrAllProcessors()
    {
        QFETCH(QString, command);
        QFETCH(QString, question);
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        setAllActions(AskForProcessors);
        const auto asked = [&](const char *button, bool dontAskAgain = false) {
            be(StatePaused);
            expectQuestion(button, dontAskAgain);
            call(command);
            return effects();
        };
        const auto answer = [&](const QString &rest) { return rest.isEmpty() ? question : question + u'\n' + rest; };
        QFETCH(QString, one);
        QFETCH(QString, all);
        QFETCH(QString, none);
        QCOMPARE(asked("Button1"), answer(one));
        QCOMPARE(asked("Button2"), answer(all));
        QCOMPARE(asked(nullptr), answer(none));
        QCOMPARE(asked(nullptr, true), answer(none)); // a tick without a choice stores nothing
        QCOMPARE(asked("Button1", true), answer(one));
        be(StatePaused);
        call(command);
        QCOMPARE(effects(), one);
    }

    void theChoiceIsKeptInMemoryOnly()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        m_control->options().setAction(PauseEvent, AskForProcessors);
        be(StateRunning);
        expectQuestion("Button2", true);
        m_control->debugPause();
        QCOMPARE(m_control->options().action(PauseEvent), AllProcessors);
        QCOMPARE(m_control->options().action(RunEvent), AllProcessors);
        const QSettings settings(path(u"settings.ini"_s), QSettings::IniFormat);
        QVERIFY(settings.allKeys().isEmpty());
        story();
    }

    void aSessionThatIsStartedButNotRunHasTheStatusOfItsProcessor()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        m_control->options().setAction(RunEvent, AskForProcessors);
        expectQuestion(nullptr);
        m_control->debugRun();
        QCOMPARE(m_activity->state(), StatePaused);
        QVERIFY(!story().contains(u"run()"_s));
    }

    void aSessionThatIsStartedButNotRestartedHasTheStatusOfItsProcessor()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        m_control->options().setAction(RestartEvent, AskForProcessors);
        expectQuestion(nullptr);
        m_control->debugRestart();
        QCOMPARE(m_activity->state(), StatePaused);
        QVERIFY(!story().contains(u"restart()"_s));
    }

    /// The compilation goes on without the session, and its end leads to the idle state.
    void stopDuringACompilationEndsTheSessionOnly()
    {
        Project *project = addProcessor(u"fw"_s, {}, u"main.c"_s);
        addBuild(project);
        m_build->setCurrentFile(path(u"main.c"_s));
        be(StatePaused);
        m_build->buildCompileFile();
        QCOMPARE(m_activity->stateBehindBuild(), StatePaused);
        story();
        m_control->debugStop();
        QVERIFY(story().contains(u"fw.stop()"_s));
        QCOMPARE(m_activity->state(), StateBuilding);
        QCOMPARE(m_activity->stateBehindBuild(), StateIdle);
        m_build->buildFinished(true);
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void breakpointsOfARunningProgramAreNotChangedDuringACompilation()
    {
        Project *project = addProcessor(u"fw"_s, {IBreakpoints::Iid}, u"main.c"_s);
        addBuild(project);
        open(u"main.c"_s);
        m_build->setCurrentFile(path(u"main.c"_s));
        be(StateRunning);
        m_build->buildCompileFile();
        expectBox();
        m_control->toggleBreakpoint(3);
        QVERIFY(story().contains(u"message Breakpoints cannot be modified while the processor is running."_s));
        m_build->buildFinished(true);
        QCOMPARE(m_activity->state(), StateRunning);
    }

    /// The report of the current project comes while the other one has not started yet.
    void stateOfTheCurrentProjectCountsAfterAllHaveStarted_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("attach") << u"debugAttach"_s;
        QTest::newRow("run, and cancel of the question") << u"debugRun"_s;
    }

    void stateOfTheCurrentProjectCountsAfterAllHaveStarted()
    {
        QFETCH(QString, command);
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        m_activity->workspace()->setCurrentProject(0);
        for (const Project *project : {one, two}) {
            StubScript &script = scriptOf(project->name());
            script.canAttach = true;
            script.on[u"start"_s] = [this, project] { report(project, IExecutionEnvironment::ProgramPaused); };
        }
        m_control->options().setAction(RunEvent, AskForProcessors);
        if (command == u"debugRun")
            expectQuestion(nullptr);
        call(command);
        QCOMPARE(m_activity->state(), StatePaused);
        QVERIFY(!story().contains(u".run()"_s));
    }

    void exceptionsInRunControlAreReported_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("operation");
        QTest::newRow("run") << u"debugRun"_s << u"run"_s;
        QTest::newRow("pause") << u"debugPause"_s << u"pause"_s;
        QTest::newRow("restart") << u"debugRestart"_s << u"restart"_s;
        QTest::newRow("wake up") << u"debugWakeup"_s << u"wakeUp"_s;
        QTest::newRow("stop") << u"debugStop"_s << u"stop"_s;
    }

    void exceptionsInRunControlAreReported()
    {
        QFETCH(QString, command);
        QFETCH(QString, operation);
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        scriptOf(u"one"_s).on[operation] = throwError;
        be(StatePaused);
        expectException(qPrintable(u"IExecutionEnvironment::"_s + operation));
        call(command);
        QVERIFY(story().contains(u"two."_s + operation)); // the others go on
    }

    // All at once, in hardware

    void leaderOperatesAllProcessors_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QString>("single");
        QTest::newRow("run") << u"debugRun"_s << 1 << u"syncRun"_s << u"run"_s;
        QTest::newRow("pause") << u"debugPause"_s << 2 << u"syncPause"_s << u"pause"_s;
        QTest::newRow("restart") << u"debugRestart"_s << 4 << u"syncRestart"_s << u"restart"_s;
        QTest::newRow("wake up") << u"debugWakeup"_s << 8 << u"syncWakeup"_s << u"wakeUp"_s;
    }

    void leaderOperatesAllProcessors()
    {
        QFETCH(QString, command);
        QFETCH(int, bit);
        QFETCH(QString, operation);
        QFETCH(QString, single);
        addSynchronised(u"one"_s, bit << 16);
        addSynchronised(u"two"_s, bit | bit << 16);
        addSynchronised(u"three"_s, bit | bit << 16);
        addProcessor(u"plain"_s); // does not take part
        be(StatePaused);
        call(command);
        const QString events = effects();
        QVERIFY(events.contains(u"one.groupId()\ntwo.groupId()\nthree.groupId()\n"
                                "one.supportedOperations(probe of one)\n"
                                "two.supportedOperations(probe of two)\n"
                                "one.supportedOperations(probe of two)\n"
                                "two.supportedOperations(probe of two)\n"
                                "three.supportedOperations(probe of two)\n"
                                "two."_s
                                + operation + u"()"_s));
        QVERIFY(!events.contains(u'.' + single + u"()"_s));
    }

    void ifOneCannotFollowEachProcessorIsCalled()
    {
        addSynchronised(u"one"_s, 0x10001);
        addSynchronised(u"two"_s, 0x00001);
        be(StatePaused);
        m_control->debugRun();
        const QString events = story();
        QVERIFY(events.endsWith(u"one.run()\ntwo.run()"_s));
        QVERIFY(!events.contains(u"sync"_s));
    }

    void theCurrentProcessorAloneIsNotSynchronised()
    {
        addSynchronised(u"one"_s, 0xf000f);
        addSynchronised(u"two"_s, 0xf000f);
        setAllActions(CurrentProcessor);
        be(StateRunning);
        m_control->debugPause();
        QCOMPARE(story(), u"two.pause()"_s);
    }

    void exceptionsInSynchronisationAreReported_data()
    {
        QTest::addColumn<QString>("throws");
        QTest::addColumn<QByteArray>("operation");
        QTest::newRow("group") << u"groupId"_s << QByteArray("IMultiProcessorSync::groupId");
        QTest::newRow("operations") << u"supportedOperations"_s
                                    << QByteArray("IMultiProcessorSync::supportedOperations");
    }

    void exceptionsInSynchronisationAreReported()
    {
        QFETCH(QString, throws);
        QFETCH(QByteArray, operation);
        addSynchronised(u"one"_s, 0xf000f);
        addProcessor(u"two"_s);
        scriptOf(u"one"_s).on[throws] = throwError;
        be(StateRunning);
        expectException(operation.constData());
        m_control->debugPause();
        QCOMPARE(m_activity->state(), StateRunning);
        story();
    }

    void afterAnExceptionOfTheLeaderOthersAreNotCalled()
    {
        addSynchronised(u"one"_s, 0xf000f);
        addProcessor(u"two"_s);
        scriptOf(u"one"_s).on[u"syncPause"_s] = throwError;
        be(StateRunning);
        expectException("IMultiProcessorSync::syncPause");
        m_control->debugPause();
        QVERIFY(!story().contains(u"two.pause()"_s));
    }

    // The cursor and steps

    void runningToTheCursorTakesTheFullPath()
    {
        addProcessor(u"fw"_s);
        openText(u"notes.txt"_s);
        m_line = 12;
        m_control->debugRunToCursor();
        QCOMPARE(story(), u"showOutputDock\nfileSaveAll\nstate 3\nfw.start(false)\nstate 4\nfw.runTo(notes.txt, 12)"_s);
        be(StateFinished);
        m_line = 2;
        m_control->debugRunToCursor();
        QStringList lines = m_story + m_stub->takeCalls();
        lines.removeAll(u"fw.canAttach()"_s);
        QCOMPARE(lines, (QStringList{u"state 4"_s, u"fw.runTo(%1, 2)"_s.arg(path(u"notes.txt"_s))}));
        m_story.clear();
    }

    void runningToTheCursorNeedsATextView()
    {
        addProcessor(u"fw"_s);
        m_control->debugRunToCursor(); // no view is open
        open(u"main.c"_s);
        m_control->debugRunToCursor();
        QCOMPARE(story(), QString());
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void runningToTheCursorIsForTheCurrentProcessor()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        openText(u"notes.txt"_s);
        be(StateFinished);
        m_control->debugRunToCursor();
        QCOMPARE(story(), u"state 4\ntwo.runTo(notes.txt, 1)"_s);
    }

    void stepsTakeTheRelativePath_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("operation");
        QTest::newRow("over") << u"debugStepOver"_s << u"stepOver"_s;
        QTest::newRow("into") << u"debugStepInto"_s << u"stepInto"_s;
    }

    void stepsTakeTheRelativePath()
    {
        QFETCH(QString, command);
        QFETCH(QString, operation);
        addProcessor(u"other"_s);
        const Project *project = addProcessor(u"fw"_s);
        setAllActions(AllProcessors);
        be(StateFinished);
        call(command); // nothing is open
        QCOMPARE(story(), u"state 4\nfw.%1()"_s.arg(operation));
        open(u"main.c"_s);
        be(StateFinished);
        call(command);
        QCOMPARE(m_stub->takeCalls(), QStringList(u"fw.%1(main.c)"_s.arg(operation)));
        open(disassemblyOf(project));
        be(StateFinished);
        call(command);
        QCOMPARE(m_stub->takeCalls(), QStringList(u"fw.%1(%2)"_s.arg(operation, disassemblyOf(project))));
        be(StateIdle);
        call(command);
        QVERIFY(
            effects().startsWith(u"showOutputDock\nfileSaveAll\nstate 3\nother.start(false)\nstate 3\nfw.start(false)\n"
                                 "state 4\nfw."_s
                                 + operation));
    }

    void exceptionsInStepsAreReported()
    {
        addProcessor(u"fw"_s);
        openText(u"notes.txt"_s);
        for (const QString &operation : {u"runTo"_s, u"stepOver"_s, u"stepInto"_s})
            scriptOf(u"fw"_s).on[operation] = throwError;
        be(StateFinished);
        expectException("IExecutionEnvironment::runTo");
        m_control->debugRunToCursor();
        expectException("IExecutionEnvironment::stepOver");
        m_control->debugStepOver();
        expectException("IExecutionEnvironment::stepInto");
        m_control->debugStepInto();
        QCOMPARE(m_activity->state(), StateRunning);
        story();
    }

    // Restart and stop

    void restartingNeedsOneOfThreeStates_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("expected");
        const auto restart = u"fw.restart()\nstate 5\nfire onRestart"_s;
        QTest::newRow("idle") << 1 << u"showOutputDock\nfileSaveAll\nstate 3\nfw.start(false)\n"_s + restart;
        QTest::newRow("building") << 2 << QString();
        QTest::newRow("initialising") << 3 << QString();
        QTest::newRow("running") << 4 << QString();
        QTest::newRow("paused") << 5 << restart;
        QTest::newRow("finished") << 6 << restart;
        QTest::newRow("unknown") << 7 << QString();
    }

    void restartingNeedsOneOfThreeStates()
    {
        QFETCH(int, state);
        addProcessor(u"fw"_s);
        be(ActivityState(state));
        m_control->debugRestart();
        QTEST(effects(), "expected");
    }

    void failedStartDoesNotRestart()
    {
        addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).started = false;
        expectBox();
        m_control->debugRestart();
        QVERIFY(story().endsWith(CannotStart + u"\nstate 1"_s));
    }

    void stoppingEndsTheSessionOfAllProjects_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("stops");
        for (const int state : {1, 2, 3, 4, 5, 6, 7})
            QTest::addRow("state %d", state) << state << (state >= 4);
    }

    void stoppingEndsTheSessionOfAllProjects()
    {
        QFETCH(int, state);
        QFETCH(bool, stops);
        addProcessor(u"one"_s);
        addProject(u"none"_s, {}, {});
        addProcessor(u"two"_s);
        be(ActivityState(state));
        m_control->debugStop();
        QCOMPARE(story(), stops ? u"one.stop()\ntwo.stop()\nstate 1\nfire onStopped"_s : QString());
    }

    void stoppingNeedsACurrentEnvironment()
    {
        addProcessor(u"one"_s);
        addProject(u"none"_s, {}, {});
        be(StateRunning);
        m_control->debugStop();
        QCOMPARE(story(), QString());
    }

    void stoppingRemovesTheReportsOfTheProcessors()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        const auto reports = [this](const Project *project) {
            m_control->statusInfo(u"text"_s, 0, project->executionInterface());
            report(project, 4);
        };
        be(StateRunning);
        reports(one);
        reports(two);
        scriptOf(u"one"_s).on[u"stop"_s] = [&] { reports(one); }; // reports during stop()
        scriptOf(u"two"_s).on[u"stop"_s] = [&] { reports(two); };
        m_control->debugStop();
        story();
        m_workspace->setCurrentProject(0);
        QCOMPARE(effects(), u"fire onCurrentProjectChanged"_s);
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void stoppingRemovesReportsEvenWithoutASession()
    {
        const Project *one = addProcessor(u"one"_s);
        addProcessor(u"two"_s);
        report(one, 4);
        m_control->debugStop();
        m_workspace->setCurrentProject(0);
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }

    // Events during nested event loops

    void workspaceMayCloseInEveryNestedLoop_data()
    {
        QTest::addColumn<QString>("loop");
        QTest::addColumn<QString>("event");
        for (const QString &loop :
             {u"saving"_s, u"check"_s, u"rebuild question, Yes"_s, u"rebuild question, No"_s, u"rebuild"_s,
              u"build for debugging"_s, u"start"_s, u"start message"_s, u"question of debugRun"_s,
              u"question of debugPause"_s, u"question of debugRestart"_s, u"question of debugWakeup"_s,
              u"hit message"_s, u"no source message"_s, u"no source message, again"_s}) {
            for (const QString &event : {u"close workspace"_s, u"close window"_s, u"remove all"_s, u"remove current"_s,
                                         u"remove other"_s, u"stop session"_s, u"stop build"_s})
                QTest::addRow("%s, %s", qPrintable(event), qPrintable(loop)) << loop << event;
        }
    }

    void workspaceMayCloseInEveryNestedLoop()
    {
        QFETCH(QString, loop);
        QFETCH(QString, event);
        Project *other = addProcessor(u"other"_s);
        Project *current = addProcessor(u"fw"_s);
        StubScript &build = addBuild(current);
        open(u"main.c"_s);
        const auto act = [=, this] { doMeanwhile(event, current, other); };
        const bool starts = loop == u"saving"_s || loop == u"check"_s || loop.startsWith(u"rebuild"_s)
                            || loop.startsWith(u"build"_s) || loop.startsWith(u"start"_s);
        if (starts)
            startInto(loop, build, act);
        else
            controlInto(loop, current, other, act);

        const QStringList calls = effects().section(u"meanwhile"_s, 1).split(u'\n').filter(u"()"_s);
        if (event.startsWith(u"close"_s)) {
            QCOMPARE(m_activity->state(), StateNoWorkspace);
            QCOMPARE(m_stub->objectCount(), 0);
            QCOMPARE(calls.filter(u".stop()"_s), calls);
        } else if (event == u"remove all"_s) {
            QVERIFY(m_activity->state() != StateRunning || loop == u"hit message"_s);
            QCOMPARE(m_stub->objectCount(), 0);
            QCOMPARE(calls.filter(u".stop()"_s), calls);
        } else if (event == u"remove current"_s) {
            const QStringList removed = calls.filter(u"fw"_s);
            QCOMPARE(removed.filter(u".stop()"_s), removed);
        } else if (event == u"remove other"_s) {
            const QStringList removed = calls.filter(u"other"_s);
            QCOMPARE(removed.filter(u".stop()"_s), removed);
        } else if (calls.contains(u"fw.stop()"_s)) {
            QCOMPARE(calls.last(), u"fw.stop()"_s);
        } else if (event == u"stop build"_s && starts && !loop.endsWith(u"Yes"_s)) {
            QCOMPARE(m_activity->state(), StateIdle);
            QCOMPARE(calls.filter(u"fw"_s), QStringList(u"fw-build.stop()"_s));
            QCOMPARE(calls.filter(u".stop()"_s), calls); // of processors that were started before
        }
    }
};

QTEST_MAIN(DebugControlTest)
#include "tst_debugcontrol.moc"

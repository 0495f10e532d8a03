#include "debugfixture.h"
#include "iprogressivestart.h"
#include "iwakeup.h"
#include <QProgressDialog>
#include <QTest>

using namespace Qt::StringLiterals;

/// What happens while a session of two processors is starting: the first has started and is paused, the second has not
/// started yet or is just starting.
class SessionStartTest : public QObject, protected DebugFixture
{
    Q_OBJECT

private:
    Project *m_one = nullptr;
    Project *m_two = nullptr;
    StubScript *m_twoBuild = nullptr;
    QStringList m_shown;            ///< in the status bar
    bool m_reportsMeanwhile = true; ///< the first processor reports during the start of the second one

    void showMessage(const QString &text, int) override { m_shown.append(text); }

    static void moments()
    {
        QTest::addColumn<QString>("moment");
        for (const char *moment :
             {"between the starts", "build of the second", "start of the second", "background of the second"})
            QTest::newRow(moment) << QString::fromLatin1(moment);
    }

    void runInLoop(const std::function<void()> &act)
    {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            act();
            loop.quit();
        });
        loop.exec();
    }
    void reportsPaused(const QString &label, Project *project)
    {
        scriptOf(label).on[u"start"_s] = [this, project] {
            later([this, project] { report(project, IExecutionEnvironment::ProgramPaused); });
        };
    }
    InterfacePtr<IStartProgress> progress() { return shareInterface(m_stub->object(u"two"_s)->progress.get()); }
    void finish(bool success)
    {
        later([this, success] {
            if (auto *state = m_stub->object(u"two"_s); state && state->progress)
                std::exchange(state->progress, {})->finished(success, {});
        });
    }

    /// Starts both and calls @p act in one of the moments. A start in the background ends after that.
    void startInto(const QString &moment, const std::function<void()> &act)
    {
        const auto acts = [this, act] {
            note(u"meanwhile"_s);
            act();
        };
        const auto reportsAndActs = [this, acts] {
            if (m_reportsMeanwhile)
                report(m_one, IExecutionEnvironment::ProgramPaused);
            acts();
        };
        StubScript &two = scriptOf(u"two"_s);
        if (moment.startsWith(u"between"_s)) {
            scriptOf(u"one"_s).on[u"start"_s] = [=, this] {
                later([=, this] {
                    report(m_one, IExecutionEnvironment::ProgramPaused);
                    acts();
                });
            };
        } else if (moment.startsWith(u"build"_s)) {
            m_twoBuild->offers.insert(IDebugBuild::Iid);
            buildsLater(*m_twoBuild, u"buildForDebug"_s, true, acts);
        } else if (moment.startsWith(u"start"_s)) {
            two.on[u"start"_s] = [=, this] { runInLoop(reportsAndActs); };
        } else {
            two.offers.insert(IProgressiveStart::Iid);
            two.on[u"startInBackground"_s] = [=, this] {
                later([=, this] {
                    acts();
                    finish(true);
                });
            };
        }
        m_control->debugRun();
    }
    /// The calls of environments since the moment.
    QStringList callsAfter()
    {
        QStringList calls = effects().section(u"meanwhile\n"_s, 1).split(u'\n').filter(u"("_s);
        calls.removeIf([](const QString &call) { return call.startsWith(u"two-build"_s); });
        return calls;
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_one = addProcessor(u"one"_s);
        m_two = addProcessor(u"two"_s);
        m_twoBuild = &addBuild(m_two);
        m_workspace->setCurrentProject(m_one);
        reportsPaused(u"one"_s, m_one);
        m_shown.clear();
        m_reportsMeanwhile = true;
        story();
    }
    void cleanup()
    {
        if (auto *state = m_stub->object(u"two"_s))
            state->progress.reset();
        tearDown();
    }

    void stopEndsTheStart_data() { moments(); }
    void stopEndsTheStart()
    {
        QFETCH(QString, moment);
        startInto(moment, [this] { m_control->debugStop(); });
        const QString all = effects().section(u"meanwhile\n"_s, 1);
        QStringList expected{u"one.stop()"_s, u"two.stop()"_s};
        if (moment.startsWith(u"background"_s))
            expected.prepend(u"two.cancelStart()"_s);
        if (moment.startsWith(u"start"_s)) // it has started after the stop
            expected.append(u"two.stop()"_s);
        QStringList calls = all.split(u'\n').filter(u"("_s);
        calls.removeIf([](const QString &call) { return call.startsWith(u"two-build"_s); });
        QCOMPARE(calls, expected);
        QCOMPARE(all.count(u"fire onStopped"_s), 1);
        QVERIFY(!all.contains(u"state 3"_s) && !all.contains(u"state 4"_s));
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY(!m_window->findChild<QProgressDialog *>());
    }

    /// The next session is not disturbed by the end of the last one.
    void sessionStartsAgainAfterAStop_data() { moments(); }
    void sessionStartsAgainAfterAStop()
    {
        QFETCH(QString, moment);
        startInto(moment, [this] { m_control->debugStop(); });
        scriptOf(u"one"_s).on.clear();
        scriptOf(u"two"_s).on.clear();
        scriptOf(u"two"_s).offers.remove(IProgressiveStart::Iid);
        m_twoBuild->offers.remove(IDebugBuild::Iid);
        m_twoBuild->on.clear();
        story();
        m_control->debugRun();
        QCOMPARE(m_activity->state(), StateRunning);
        QVERIFY(effects().endsWith(u"one.run()\ntwo.run()"_s));
    }

    void stopInTheBuildOfTheSecondStopsTheBuild()
    {
        startInto(u"build of the second"_s, [this] { m_control->debugStop(); });
        QVERIFY(effects().contains(u"two-build.stop()"_s));
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void closingTheWorkspaceStopsWhatHasStarted_data()
    {
        QTest::addColumn<QString>("moment");
        QTest::addColumn<bool>("window");
        for (const char *moment :
             {"between the starts", "build of the second", "start of the second", "background of the second"}) {
            QTest::addRow("workspace, %s", moment) << QString::fromLatin1(moment) << false;
            QTest::addRow("window, %s", moment) << QString::fromLatin1(moment) << true;
        }
    }
    void closingTheWorkspaceStopsWhatHasStarted()
    {
        QFETCH(QString, moment);
        QFETCH(bool, window);
        startInto(moment, [this, window] { window ? closeWindow() : closeWorkspace(); });
        const QStringList calls = callsAfter();
        QVERIFY(calls.contains(u"one.stop()"_s));
        for (const QString &call : calls)
            QVERIFY2(call.endsWith(u".stop()"_s) || call == u"two.cancelStart()"_s, qPrintable(call));
        QCOMPARE(calls.contains(u"two.cancelStart()"_s), moment.startsWith(u"background"_s));
        QCOMPARE(m_activity->state(), StateNoWorkspace);
        QCOMPARE(m_stub->objectCount(), 0);
    }

    /// Before there is any report, so that the workspace is closed in the initialising state.
    void closingTheWorkspaceBeforeAReportStopsWhatHasStarted()
    {
        scriptOf(u"one"_s).on.clear();
        startInto(u"background of the second"_s, [this] {
            QCOMPARE(m_activity->state(), StateInitialising);
            closeWorkspace();
        });
        QCOMPARE(callsAfter(), (QStringList{u"two.cancelStart()"_s, u"one.stop()"_s, u"two.stop()"_s}));
        QCOMPARE(m_activity->state(), StateNoWorkspace);
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void anotherWorkspaceThatWasOpenedMeanwhileIsNotTouched()
    {
        startInto(u"background of the second"_s, [this] {
            m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(path(u"other.vnw"_s)));
            m_activity->setState(StateBuilding);
        });
        QCOMPARE(m_activity->state(), StateBuilding);
        m_activity->setState(StateIdle);
    }

    void removedProjectIsNotStarted_data() { moments(); }
    void removedProjectIsNotStarted()
    {
        QFETCH(QString, moment);
        if (moment.startsWith(u"between"_s))
            expectBox(); // there is nothing to be started
        startInto(moment, [this] { m_workspace->removeProject(m_two); });
        const QStringList calls = callsAfter();
        if (moment.startsWith(u"start"_s)) { // one processor is left
            QCOMPARE(calls, QStringList{u"one.run()"_s});
            return m_control->debugStop();
        }
        QVERIFY(calls.contains(u"one.stop()"_s));
        QCOMPARE(calls.contains(u"two.cancelStart()"_s), moment.startsWith(u"background"_s));
        QCOMPARE(calls.filter(u"start"_s), QStringList());
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void removalOfTheFirstLeavesTheSecond_data() { moments(); }
    void removalOfTheFirstLeavesTheSecond()
    {
        QFETCH(QString, moment);
        startInto(moment, [this] { m_workspace->removeProject(m_one); });
        const QStringList calls = callsAfter();
        QCOMPARE(calls.filter(u"one."_s), QStringList{u"one.stop()"_s}); // its target does not go on
        QCOMPARE(calls.last(), u"two.run()"_s);
        QCOMPARE(m_activity->state(), StateRunning);
        m_control->debugStop();
    }

    /// The status of the project that becomes the current one is no reason to use a program that is being written.
    void anotherCurrentProjectLeavesTheBuildOfTheSecond()
    {
        ActivityState during = StateIdle;
        startInto(u"build of the second"_s, [&] {
            m_workspace->setCurrentProject(m_two);
            m_workspace->setCurrentProject(m_one);
            during = m_activity->state();
        });
        QCOMPARE(during, StateBuilding);
        const QString calls = callsAfter().join(u' ');
        QVERIFY2(calls.indexOf(u"two.start(false) "_s) < calls.indexOf(u"one.run()"_s), qPrintable(calls));
        m_control->debugStop();
    }

    void buildThatBeginsInTheCheckOfTheProjectKeepsTheSessionBack()
    {
        StubScript &oneBuild = addBuild(m_one);
        oneBuild.on[u"isUpToDate"_s] = [this] { runInLoop([this] { m_build->buildBuild(); }); };
        m_control->debugRun();
        QCOMPARE(m_activity->state(), StateBuilding);
        QCOMPARE(story().count(u"start("_s), 0);
        m_build->buildFinished(true);
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void stoppedBuildEndsTheStartOfAll_data() { moments(); }
    void stoppedBuildEndsTheStartOfAll()
    {
        QFETCH(QString, moment);
        startInto(moment, [this] { m_build->buildStopBuild(); });
        const QStringList calls = callsAfter();
        QVERIFY(calls.contains(u"one.stop()"_s));
        QCOMPARE(calls.contains(u"two.stop()"_s), moment.contains(u"start of"_s) || moment.contains(u"background"_s));
        QCOMPARE(calls.filter(u".run()"_s), QStringList());
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void commandsDoNotReachAProcessorThatHasNotStarted_data()
    {
        QTest::addColumn<QString>("moment");
        QTest::addColumn<QString>("command");
        for (const char *moment : {"between the starts", "start of the second", "background of the second"}) {
            for (const char *command : {"debugRun", "debugStepOver", "debugStepInto", "debugRunToCursor",
                                        "debugRestart", "debugPause", "debugWakeup", "debugAttach", "all run",
                                        "all pause", "second run", "second pause", "first pause", "hit"})
                QTest::addRow("%s, %s", command, moment) << QString::fromLatin1(moment) << QString::fromLatin1(command);
        }
    }
    void commandsDoNotReachAProcessorThatHasNotStarted()
    {
        QFETCH(QString, moment);
        QFETCH(QString, command);
        scriptOf(u"one"_s).canAttach = true;
        open(u"main.c"_s);
        startInto(moment, [&] {
            if (command == u"all run")
                m_control->runAllProcessors();
            else if (command == u"all pause")
                m_control->pauseAllProcessors();
            else if (command == u"second run")
                m_control->runProcessor(m_two);
            else if (command == u"second pause")
                m_control->pauseProcessor(m_two);
            else if (command == u"first pause")
                m_control->pauseProcessor(m_one);
            else if (command == u"hit")
                report(m_one, IExecutionEnvironment::ProgramBreakpointHit);
            else
                QVERIFY(QMetaObject::invokeMethod(m_control.get(), command.toLatin1().constData()));
            note(u"command done"_s);
        });
        const QString all = effects().section(u"meanwhile\n"_s, 1);
        const QStringList before = all.section(u"command done"_s, 0, 0).split(u'\n').filter(u"("_s);
        QCOMPARE(before.filter(u"two."_s), QStringList());
        QCOMPARE(before.filter(u"one."_s).size(),
                 int(command.endsWith(u"ause"_s) && command != u"second pause") + int(command == u"debugWakeup"));
        QVERIFY(!all.contains(u"fire onRestart"_s) && !all.contains(u"fire onPreAttach"_s));
        QVERIFY(all.endsWith(u"one.run()\ntwo.run()"_s)); // the start goes on
        m_control->debugStop();
    }

    void stopCancelsAStartInTheBackground()
    {
        m_workspace->removeProject(m_one);
        bool available = false;
        connect(m_activity.get(), &Activity::availabilityChanged, m_window.get(),
                [&](const ActivityAvailability &now) { available = now.stop; });
        startInto(u"background"_s, [&] {
            QVERIFY(available);
            QCOMPARE(m_activity->state(), StateInitialising);
            progress()->progress(u"Loading"_s, -1);
            progress()->progress(u"Loading"_s, 40);
            m_control->debugStop();
            QVERIFY(!available);
        });
        QCOMPARE(callsAfter(), (QStringList{u"two.cancelStart()"_s, u"two.stop()"_s}));
        QCOMPARE(m_activity->state(), StateIdle);
        QCOMPARE(m_shown, (QStringList{u"Loading"_s, u"Loading 40 %"_s, QString()}));
        QVERIFY(!m_window->findChild<QProgressDialog *>());
    }

    void progressAfterTheEndIsNotShown()
    {
        m_workspace->removeProject(m_one);
        InterfacePtr<IStartProgress> kept;
        startInto(u"background"_s, [&] {
            kept = progress();
            m_control->debugStop();
        });
        kept->progress(u"Loading"_s, 40);
        kept->finished(true, {});
        QCOMPARE(m_shown, QStringList());
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }

    /// In the initialising state only a start in the background can be stopped.
    void stopDoesNotEndAPlainStartWithoutAReport()
    {
        scriptOf(u"one"_s).on.clear();
        m_reportsMeanwhile = false;
        startInto(u"start of the second"_s, [this] { m_control->debugStop(); });
        QCOMPARE(callsAfter(), (QStringList{u"one.run()"_s, u"two.run()"_s}));
        m_control->debugStop();
        story();
    }
};

QTEST_MAIN(SessionStartTest)
#include "tst_sessionstart.moc"

#include "multiwatchwindow.h"
#include "processorscriptfixture.h"
#include "scriptdirectories.h"
#include "watchwindow.h"
#include <QAction>
#include <QTimer>

// The command "Record Script" and the replay of what it has written, in the whole program.

using namespace Qt::StringLiterals;

namespace {
using Status = IExecutionEnvironment::ProgramStatus;

constexpr auto Actions = "<ui><actions>"
                         "<action name='toolsRecordScript' slot='none' toggle='off'><text>Record Script</text></action>"
                         "<action name='viewOutput' toggle='on'><text>Output</text></action>"
                         "<action name='debugToggleBreakpoint'><text>Toggle</text></action>"
                         "<action name='debugRunToCursor'><text>Run to Cursor</text></action>"
                         "<action name='debugRun'><text>Run</text><enable signal='runAvailable'/></action>"
                         "<action name='debugStop'><text>Stop</text><enable signal='stopAvailable'/></action>"
                         "<action name='buildBuild'><text>Build</text></action>"
                         "<action name='debugStepOver'><text>Step Over</text><enable signal='showNextAvailable'/>"
                         "</action></actions></ui>";

/// A processor that keeps breakpoints and stops a moment after each start.
class Recording : public ProcessorScriptFixture
{
public:
    explicit Recording(int projects = 1) : ProcessorScriptFixture(projects)
    {
        installation.write(u"config/uiconfig.xml"_s, Actions);
        StubScript &script = scriptOf(u"fw"_s);
        script.on[u"setBreakpoint"_s] = [this] { keepBreakpoint(); };
        script.on[u"start"_s] = [] { stopSoon(IExecutionEnvironment::ProgramPaused); };
        script.on[u"run"_s] = [] { stopSoon(IExecutionEnvironment::ProgramBreakpointHit); };
        script.on[u"stepOver"_s] = [] { report(u"fw"_s, IExecutionEnvironment::ProgramPaused); };
        startAgain();
    }

    /// The tool chain builds the project "fw" a moment after each command.
    void makeBuildable()
    {
        scriptOf(u"cc"_s).on[u"build"_s] = [] {
            QTimer::singleShot(0, qApp, [] { stub()->object(u"cc"_s)->buildEvents->buildFinished(true); });
        };
        discard(); // it is read again from the file
        write(u"fw.vnp"_s,
              "<project executionenvironment='{fw}' buildenvironment='{cc}'><file path='main.c'/>"
              "<properties currentconfiguration='Debug'><configuration name='Debug'/></properties></project>");
        startAgain();
    }

    /// A fresh window, without breakpoints and watches, and no workspace unless @p workspace is true.
    void startAgain(bool workspace = true)
    {
        discard();
        restart();
        scriptOf(u"fw"_s).breakpoints.clear();
        QVERIFY(window->openWorkspace(path(u"all.vnw"_s), false)); // and with it the watches
        watchDock()->setWatches({});
        if (!workspace)
            QVERIFY(window->closeWorkspace());
        useNames();
        stub()->takeCalls();
    }

    void trigger(const QString &name) const
    {
        auto *action = window->findChild<QAction *>(name);
        QVERIFY(action && action->isEnabled());
        action->trigger();
    }
    void record() const { trigger(u"toolsRecordScript"_s); }
    /// Ends the recording. Returns the statements, a line each.
    QString recorded()
    {
        record();
        source = view() ? text() : QString();
        return source.section(u"():\n"_s, 1).remove(u"    "_s);
    }

    [[nodiscard]] MultiWatchWindow *watchDock() const { return window->findChild<MultiWatchWindow *>(); }
    [[nodiscard]] WatchWindow *watches() const { return watchDock()->findChild<WatchWindow *>(); }

    /// What a replay must bring back.
    [[nodiscard]] QString state() const
    {
        QString text = u"state %1, front %2, watches %3"_s.arg(window->activity().state())
                           .arg(QFileInfo(document() ? document()->filename() : QString()).fileName(),
                                watches()->watches().join(u'|'));
        for (const BreakpointRecord &record : scriptOf(u"fw"_s).breakpoints)
            text += u", %1:%2=%3"_s.arg(QFileInfo(record.locations.first().file).fileName())
                        .arg(record.locations.first().line)
                        .arg(record.state);
        return text;
    }

    QString source;

private:
    static void stopSoon(Status status)
    {
        QTimer::singleShot(0, qApp, [status] { report(u"fw"_s, status); });
    }

    /// "fw.setBreakpoint(FILE, LINE, STATE)"
    static void keepBreakpoint()
    {
        const QString call = stub()->takeCalls().last();
        const QStringList words = call.section(u'(', 1).chopped(1).split(u", "_s);
        QList<BreakpointRecord> &kept = scriptOf(u"fw"_s).breakpoints;
        const BreakpointLocation place{words[0], words[1].toInt()};
        kept.removeIf([&](const BreakpointRecord &record) {
            return record.locations.first().file == place.file && record.locations.first().line == place.line;
        });
        if (words[2].toInt() != BreakpointRemoved)
            kept.append({{place}, words[2].toInt()});
        stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
    }
};
} // namespace

class ScriptRecorderTest : public QObject
{
    Q_OBJECT

private:
    static constexpr auto Session = "app.editor.openDocument(replay.path(\"main.c\"))\n"
                                    "app.debugger.processors[\"fw\"].setBreakpoint(replay.path(\"main.c\"), 2)\n"
                                    "replay.setWatches(\"fw\", [\"1+1\", \"a[\\\"ü\\\\\\\"]\"])\n"
                                    "replay.trigger(\"debugRun\")\n"
                                    "replay.waitFor(\"paused\")\n"
                                    "replay.trigger(\"debugStepOver\")\n"
                                    "replay.waitFor(\"paused\")\n";

    static void recordSession(Recording &f)
    {
        f.record();
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        f.view()->gotoLine(2);
        f.trigger(u"debugToggleBreakpoint"_s);
        f.watches()->addItem(u"1+1"_s);
        f.watches()->addItem(u"a[\"ü\\\"]"_s);
        f.trigger(u"debugRun"_s);
        QTRY_COMPARE(f.window->activity().state(), StatePaused);
        f.trigger(u"debugStepOver"_s);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support|IDEApplication::loadPixmap)"_s));
    }

    void sessionIsReplayedInAFreshWindow()
    {
        Recording f;
        recordSession(f);
        const QString before = f.state();
        QCOMPARE(f.recorded(),
                 u"replay.useWorkspace(\"%1\")\n"_s.arg(f.path(u"all.vnw"_s)) + QString::fromUtf8(Session));
        QVERIFY(f.document()->filename().endsWith(u"/recorded1.py"_s));
        for (const bool isOpen : {true, false}) {
            f.startAgain(isOpen);
            QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
            QCOMPARE(f.state(), before);
        }
    }

    void recordingGetsANameThatNoScriptHas()
    {
        Recording f;
        const QDir user = IDEApplication::instance()->scriptDirectories().user;
        QVERIFY(user.mkpath(u"."_s));
        QFile old(user.filePath(u"recorded1.py"_s));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();
        f.record();
        f.trigger(u"buildBuild"_s);
        f.record();
        QVERIFY(f.document()->filename().endsWith(u"/recorded2.py"_s)); // the file of that name is not open
        f.record();
        f.trigger(u"buildBuild"_s);
        f.record();
        QVERIFY(f.document()->filename().endsWith(u"/recorded3.py"_s)); // the one before is not saved
    }

    void changedBreakpoints()
    {
        Recording f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        f.view()->gotoLine(3);
        f.trigger(u"debugToggleBreakpoint"_s);
        f.record();
        f.trigger(u"debugToggleBreakpoint"_s);
        f.trigger(u"debugToggleBreakpoint"_s);
        const QString processor = u"app.debugger.processors[\"fw\"]."_s;
        const QString place = u"(replay.path(\"main.c\"), 3)\n"_s;
        QCOMPARE(f.recorded().section(u'\n', 1),
                 processor + u"disableBreakpoint"_s + place + processor + u"removeBreakpoint"_s + place);
    }

    void breakpointsThatChangeWhileTheTargetRunsAreNotRecorded()
    {
        Recording f;
        f.record();
        f.window->activity().setState(StateRunning);
        Recording::scriptOf(u"fw"_s).breakpoints = {{{{f.path(u"main.c"_s), 1}}, BreakpointEnabled}};
        Recording::stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        f.window->activity().setState(StateIdle);
        const QString statements = f.recorded();
        QVERIFY2(!statements.contains(u"Breakpoint"_s), qPrintable(statements));
    }

    void breakpointWithoutAPlaceIsNotRecorded()
    {
        Recording f;
        f.record();
        Recording::scriptOf(u"fw"_s).breakpoints = {{{}, BreakpointEnabled}};
        Recording::stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        Recording::scriptOf(u"fw"_s).breakpoints.clear();
        const QString statements = f.recorded();
        QVERIFY2(!statements.contains(u"Breakpoint"_s), qPrintable(statements));
    }

    void breakpointInTheDisassemblyIsRecordedByItsAddress()
    {
        Recording f;
        f.record();
        f.run("p.setBreakpoint('disassembler:', 0x80000010)\np.disableBreakpoint('disassembler:', 0x80000011)\n"
              "p.removeBreakpoint('disassembler:', 0x80000011)\n");
        const QString lines = f.recorded().section(u'\n', 1).remove(u"app.debugger.processors[\"fw\"]."_s);
        QCOMPARE(lines, u"setBreakpoint(\"disassembler:\", 2147483664)\n"
                        "disableBreakpoint(\"disassembler:\", 2147483665)\n"
                        "removeBreakpoint(\"disassembler:\", 2147483665)\n"_s);
    }

    void nothingToRecordOpensNoEditor()
    {
        Recording f;
        f.record();
        QCOMPARE(f.recorded(), QString());
        QCOMPARE(f.status(), u"Nothing was recorded."_s);
        QVERIFY(f.openFiles().isEmpty());
        f.trigger(u"viewOutput"_s); // not recorded any more
        f.record();
        QCOMPARE(f.recorded(), QString());
    }

    void switchedCommandIsRecordedWithItsState()
    {
        Recording f;
        f.record();
        f.trigger(u"viewOutput"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.setChecked(\"viewOutput\", False)\n"_s);
        QCOMPARE(f.status(), u"The recording is in the editor."_s);
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
        QVERIFY(!f.window->findChild<QAction *>(u"viewOutput"_s)->isChecked());
    }

    void runToCursorIsRecordedWithItsLine()
    {
        Recording f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        f.view()->gotoLine(3);
        f.record();
        f.trigger(u"debugRunToCursor"_s);
        QVERIFY(
            f.recorded().contains(u"app.editor.currentDocument.gotoLine(3)\nreplay.trigger(\"debugRunToCursor\")\n"_s));
    }

    void runToCursorWithoutATextIsRecordedWithoutALine()
    {
        Recording f;
        f.record();
        f.trigger(u"debugRunToCursor"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.trigger(\"debugRunToCursor\")\n"_s);
    }

    void workspaceIsClosedAndOpenedDuringTheRecording()
    {
        Recording f;
        f.record();
        f.watches()->addItem(u"x"_s);
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        QCOMPARE(f.recorded(),
                 u"replay.useWorkspace(\"%1\")\nreplay.setWatches(\"fw\", [\"x\"])\napp.closeWorkspace()\n"
                 "app.openDocument\napp.openWorkspace(\"%1\")\n"_s.arg(f.path(u"all.vnw"_s))
                     .replace(u"app.openDocument"_s, u"app.editor.openDocument(\"%1\")"_s.arg(f.path(u"main.c"_s))));
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
        QVERIFY(f.window->projectWorkspace());
    }

    void workspaceIsClosedAtTheEnd()
    {
        Recording f;
        f.record();
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.recorded().endsWith(u"\napp.closeWorkspace()\n"_s));
    }

    void nextStatementThatIsShownIsNotRecorded()
    {
        Recording f;
        f.write(u"other.c"_s, "one\ntwo\n");
        ScriptedProcessors::scriptOf(u"fw"_s).location = {u"other.c"_s, 1};
        f.record();
        f.trigger(u"debugRun"_s);
        QTRY_COMPARE(f.window->activity().state(), StatePaused);
        QCOMPARE(f.document()->title(), u"other.c"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.trigger(\"debugRun\")\nreplay.waitFor(\"paused\")\n"_s);
    }

    void secondProjectIsRecordedWithItsProcessor()
    {
        Recording f(2);
        f.record();
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        f.window->projectWorkspace()->setCurrentProject(1);
        f.view()->gotoLine(2);
        f.trigger(u"debugToggleBreakpoint"_s);
        f.run("debugger.processors['fw'].setBreakpoint('" + f.path(u"main.c"_s).toUtf8() + "', 3)");
        const QString before = f.state();
        const QString statements = f.recorded().section(u'\n', 1);
        QCOMPARE(statements.count(u"app.currentProject = app.projects[1]\n"_s), 1);
        QVERIFY2(statements.contains(u"processors[\"fw\"].setBreakpoint(replay.path(\"main.c\"), 3)\n"_s),
                 qPrintable(statements));
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
        QCOMPARE(f.window->activity().currentProject()->name(), u"dsp"_s);
        QCOMPARE(f.state(), before);
    }

    /// The file is opened for the project that is the current one then, and breakpoints need their file.
    void changesOfOneMomentAreRecordedInTheOrderInWhichTheyAreReplayed()
    {
        Recording f(2);
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), true));
        f.open(u"other.c"_s);
        f.record();
        f.window->viewManager()->activateView(f.window->viewManager()->views().last(), true);
        f.window->projectWorkspace()->setCurrentProject(1);
        f.watches()->addItem(u"x"_s);
        Recording::scriptOf(u"fw"_s).breakpoints = {{{{f.path(u"main.c"_s), 2}}, BreakpointEnabled}};
        f.trigger(u"viewOutput"_s);
        QCOMPARE(f.recorded().section(u'\n', 1),
                 u"app.currentProject = app.projects[1]\napp.editor.openDocument(replay.path(\"main.c\"))\n"
                 "app.debugger.processors[\"fw\"].setBreakpoint(replay.path(\"main.c\"), 2)\n"
                 "replay.setWatches(\"fw\", [\"x\"])\nreplay.setChecked(\"viewOutput\", False)\n"_s);
    }

    void fileThatDoesNotExistYetIsNotRecorded()
    {
        Recording f;
        f.record();
        QVERIFY(f.window->workspace()->openOrCreate(f.path(u"new.c"_s)));
        f.trigger(u"viewOutput"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.setChecked(\"viewOutput\", False)\n"_s);
    }

    void buildIsRecordedWithItsEnd()
    {
        Recording f;
        f.makeBuildable();
        f.record();
        f.trigger(u"buildBuild"_s);
        QTRY_COMPARE(f.window->activity().state(), StateIdle);
        f.trigger(u"viewOutput"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.trigger(\"buildBuild\")\nreplay.waitFor(\"idle\")\n"
                                                 "replay.setChecked(\"viewOutput\", False)\n"_s);
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
        QCOMPARE(f.stub()->takeCalls().filter(u"cc.build("_s).size(), 1);
        QCOMPARE(f.window->activity().state(), StateIdle);
    }

    void recordingMayBeginInASession()
    {
        Recording f;
        f.trigger(u"debugRun"_s);
        QTRY_COMPARE(f.window->activity().state(), StatePaused);
        f.record();
        f.trigger(u"debugStepOver"_s);
        f.trigger(u"debugStop"_s);
        const QString statements = f.recorded().section(u'\n', 1);
        QVERIFY2(statements.startsWith(u"replay.trigger(\"debugStepOver\")\nreplay.waitFor(\"paused\")\n"
                                       "replay.trigger(\"debugStop\")\n"_s),
                 qPrintable(statements));
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"),
                 u"RuntimeError: The command 'debugStepOver' is not available in the state 'idle'"_s);
        f.trigger(u"debugRun"_s);
        QTRY_COMPARE(f.window->activity().state(), StatePaused);
        QCOMPARE(f.run("recorded1()\n"), QString());
        QCOMPARE(f.window->activity().state(), StateIdle);
    }

    void stateBeforeTheRecordingIsNotWaitedFor()
    {
        Recording f;
        f.trigger(u"debugRun"_s);
        QTRY_COMPARE(f.window->activity().state(), StatePaused);
        f.trigger(u"debugStop"_s);
        QTRY_COMPARE(f.window->activity().state(), StateIdle);
        f.record();
        f.trigger(u"viewOutput"_s);
        QCOMPARE(f.recorded().section(u'\n', 1), u"replay.setChecked(\"viewOutput\", False)\n"_s);
    }

    void fileOutsideTheFolderIsRecordedByItsWholePath()
    {
        const QTemporaryDir elsewhere;
        Recording f;
        QFile file(elsewhere.filePath(u"far.c"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("one\n") > 0);
        file.close();
        f.record();
        QVERIFY(f.window->openFile(file.fileName(), true));
        QCOMPARE(f.recorded().section(u'\n', 1), u"app.editor.openDocument(\"%1\")\n"_s.arg(file.fileName()));
        f.startAgain();
        QCOMPARE(f.run(f.source.toUtf8() + "\nrecorded1()\n"), QString());
        QCOMPARE(f.document()->filename(), file.fileName());
    }

    void targetThatDoesNotStopEndsTheReplayInTime()
    {
        Recording f;
        f.scriptOf(u"fw"_s).on.remove(u"run"_s);
        f.scriptOf(u"fw"_s).on[u"start"_s] = [] {
            QTimer::singleShot(0, qApp, [] { Recording::report(u"fw"_s, IExecutionEnvironment::ProgramRunning); });
        };
        QCOMPARE(f.run("from varnelreplay import replay\nreplay.trigger('debugRun')\nreplay.waitFor('paused', 0.2)\n"),
                 u"TimeoutError: The program has not become 'paused' in 0.2 seconds: it is 'running'"_s);
    }

    void errorsNameTheReason_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<QString>("error");
        QTest::newRow("disabled") << "replay.trigger('debugStop')"_ba
                                  << u"RuntimeError: The command 'debugStop' is not available in the state 'idle'"_s;
        QTest::newRow("unknown") << "replay.trigger('noSuch')"_ba << u"KeyError: There is no command 'noSuch'"_s;
        QTest::newRow("no toggle") << "replay.setChecked('debugRun', True)"_ba
                                   << u"ValueError: The command 'debugRun' cannot be switched on and off"_s;
        QTest::newRow("state that does not come")
            << "replay.waitFor('running', 0.05)"_ba
            << u"TimeoutError: The program has not become 'running' in 0.05 seconds: it is 'idle'"_s;
        QTest::newRow("unknown state") << "replay.waitFor('asleep')"_ba << u"ValueError: There is no state 'asleep'"_s;
        QTest::newRow("project that is not open")
            << "replay.setWatches('none', [])"_ba << u"KeyError: There is no project 'none'"_s;
        QTest::newRow("workspace that does not exist")
            << "replay.useWorkspace('/none.vnw')"_ba << u"OSError: Cannot open workspace '/none.vnw'"_s;
        QTest::newRow("no workspace") << "app.closeWorkspace(); replay.path('a')"_ba
                                      << u"RuntimeError: No workspace is open"_s;
    }

    void errorsNameTheReason()
    {
        QFETCH(QByteArray, statement);
        Recording f;
        QTEST(f.run("from varnelreplay import replay\n" + statement + '\n'), "error");
    }

    void objectThatIsKeptLongerThanTheWindowRaises()
    {
        Recording f;
        QCOMPARE(f.run("from varnelreplay import replay\nkept = replay\n"), QString());
        f.startAgain();
        for (const char *call : {"kept.trigger('debugRun')", "kept.waitFor('idle')", "kept.path('a')"})
            QCOMPARE(f.run(QByteArray(call) + '\n'), u"RuntimeError: Object has been destroyed"_s);
    }
};

int main(int argc, char **argv)
{
    ScriptRecorderTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptrecorder.moc"

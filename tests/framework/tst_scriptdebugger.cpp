#include "scriptrows.h"

// The object `app.debugger` and its events in scripts, in the whole program.

using namespace Qt::StringLiterals;

namespace {
/// Sets handlers that record the event, the state and whether a workspace is open.
constexpr auto Listen = "def note(name):\n"
                        "    return lambda: events.append('%s %d' % (name, app.state))\n"
                        "for name in ('onPreAttach', 'onAttach', 'onStopped', 'onRestart', 'onBreakpointHit'):\n"
                        "    setattr(debugger, name, note(name))\n";

QString events()
{
    const QString text = ProcessorScriptFixture::eval("', '.join(events)");
    ProcessorScriptFixture::run("events.clear()");
    return text.mid(1, text.size() - 2);
}
} // namespace

class ScriptDebuggerTest : public QObject
{
    Q_OBJECT
private:
    SharedScripts m_scripts;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_scripts.init();
    }

    void typesAreThoseOfTheTable()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("import importlib.util, sys\n"
                       "sys.dont_write_bytecode = True\n"
                       "data = '" VARNEL_SOURCE_DIR "/tests/objectmodel/data/'\n"
                       "spec = importlib.util.spec_from_file_location('checktypes', data + 'checktypes.py')\n"
                       "checktypes = importlib.util.module_from_spec(spec)\n"
                       "spec.loader.exec_module(checktypes)\n"),
                 QString());
        QCOMPARE(f.eval("list(checktypes.check(data + 'scripttypes.tsv', debugger=True))"), u"[]"_s);
    }

    void attributes_data()
    {
        addScriptRows({
            {"type", "", "type(debugger) is varnel.Debugger, type(debugger).__doc__",
             "(True, 'An object providing access to the Varnel debugger')"},
            {"is always the same", "", "app.debugger is debugger", "True"},
            {"cannot be created", "", "varnel.Debugger()", "TypeError:"},
            {"updates at first", "", "debugger.uiUpdatesEnabled", "1"},
            {"updates switched off", "debugger.uiUpdatesEnabled = 0", "debugger.uiUpdatesEnabled", "0"},
            {"updates switched on by any number", "debugger.uiUpdatesEnabled = 0; debugger.uiUpdatesEnabled = -3",
             "debugger.uiUpdatesEnabled", "1"},
            {"updates as a bool", "debugger.uiUpdatesEnabled = False", "debugger.uiUpdatesEnabled", "0"},
            {"updates as a fraction", "debugger.uiUpdatesEnabled = 0.9", "debugger.uiUpdatesEnabled", "0"},
            {"updates as a text", "", "setattr(debugger, 'uiUpdatesEnabled', '1')", "TypeError:"},
            {"documentation of updates", "", "varnel.Debugger.uiUpdatesEnabled.__doc__",
             "'Set to 0 to disable UI updates, 1 to enable UI updates [RW] '"},
            {"documentation of a method", "", "debugger.attach.__doc__",
             "'Attaches the debugger. Takes Varnel into debugging mode.'"},
            {"documentation of a handler", "", "varnel.Debugger.onAttach.__doc__",
             "'Event handler called when the debugger is attched [RW]'"},
            {"methods take no arguments", "", "debugger.stop(1)", "TypeError:"},
            {"methods return None", "", "debugger.stop()", "None"},
            {"no handler", "", "debugger.onStopped", "None"},
            {"handler", "f = lambda: 0\ndebugger.onStopped = f", "debugger.onStopped is f", "True"},
            {"removed handler", "debugger.onStopped = print\ndebugger.onStopped = None", "debugger.onStopped", "None"},
            {"handler that is no function", "", "setattr(debugger, 'onStopped', 5)", "TypeError: Function expected"},
            {"processors are read only", "", "setattr(debugger, 'processors', 5)", "AttributeError:"},
        });
    }
    void attributes() { m_scripts.checkRow(); }

    // Events

    void attachFiresBeforeAndAfter()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.scriptOf(u"fw"_s).on[u"start"_s] = [] { ProcessorScriptFixture::run("events.append('start')"); };
        QCOMPARE(f.eval("debugger.attach()"), u"None"_s);
        QCOMPARE(events(), u"onPreAttach 0, start, onAttach 2"_s);
        QCOMPARE(f.calls(), u"fw.start(true) dsp.start(true)"_s);
    }

    void attachThatFailsFiresTheFirstEventOnly()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.scriptOf(u"dsp"_s).started = false;
        f.answers->press(QMessageBox::Ok);
        f.run("debugger.attach()");
        QCOMPARE(events(), u"onPreAttach 0"_s);
    }

    void attachThatIsNotPossibleFiresNothing()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.scriptOf(u"fw"_s).canAttach = false;
        f.run("debugger.attach()");
        f.scriptOf(u"fw"_s).canAttach = true;
        f.window->activity().setState(StatePaused);
        f.run("debugger.attach()");
        QCOMPARE(events(), QString());
        QCOMPARE(f.calls(), QString());
    }

    void stopFiresAfterAllProcessorsStopped()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.window->activity().setState(StatePaused);
        f.scriptOf(u"dsp"_s).on[u"stop"_s] = [] { ProcessorScriptFixture::run("events.append('stop')"); };
        f.run("debugger.stop()");
        QCOMPARE(events(), u"stop, onStopped 0"_s);
        QCOMPARE(f.calls(), u"fw.stop() dsp.stop()"_s);
        f.run("debugger.stop()");
        QCOMPARE(events(), QString()); // nothing to stop
    }

    void restartFiresAtItsEnd()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.run("debugger.restart()");
        QCOMPARE(events(), u"onRestart 2"_s);
        QCOMPARE(f.calls(), u"fw.start(false) dsp.start(false) fw.restart() dsp.restart()"_s);
        QCOMPARE(f.window->activity().state(), StatePaused);
        f.window->activity().setState(StateRunning);
        f.run("debugger.restart()");
        QCOMPARE(events(), QString()); // a running program is not restarted
    }

    void breakpointHitFiresInTheNewState()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        f.window->activity().setState(StateRunning);
        f.run("debugger.onBreakpointHit = lambda: events.append(p.currentProgramLocation[0])");
        f.report(u"fw"_s, IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(events(), u"main.c"_s);
        QCOMPARE(f.window->activity().state(), StatePaused);
        f.report(u"fw"_s, IExecutionEnvironment::ProgramPaused);
        QCOMPARE(events(), QString());
    }

    void breakpointHitOfTheOtherProcessorFiresAfterTheSwitch()
    {
        const ProcessorScriptFixture f;
        f.window->activity().setState(StateRunning);
        f.run("debugger.onBreakpointHit = lambda: events.append(debugger.currentProcessor.project.name)");
        f.answers->press(QMessageBox::Ok);
        f.report(u"dsp"_s, IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(events(), u"dsp"_s);
    }

    void handlersOutliveTheWorkspace()
    {
        const ProcessorScriptFixture f;
        f.run(Listen);
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        QCOMPARE(f.eval("app.debugger is debugger, app.debugger.onStopped is debugger.onStopped"), u"(False, True)"_s);
        f.window->activity().setState(StatePaused);
        f.run("app.debugger.stop()");
        QCOMPARE(events(), u"onStopped 0"_s);
    }

    // A handler that changes what is going on

    void handlersMayChangeTheSession_data()
    {
        QTest::addColumn<QString>("event");
        QTest::addColumn<QByteArray>("action");
        QTest::addColumn<int>("state");
        const QList<std::pair<QString, int>> stop{{u"onPreAttach"_s, StateInitialising},
                                                  {u"onAttach"_s, StateIdle},
                                                  {u"onStopped"_s, StateIdle},
                                                  {u"onRestart"_s, StateIdle},
                                                  {u"onBreakpointHit"_s, StateIdle}};
        for (const auto &[event, state] : stop) {
            const QByteArray name = event.toLatin1();
            QTest::newRow(name + " stops") << event << QByteArray("app.debugger.stop()") << state;
            QTest::newRow(name + " restarts") << event << QByteArray("app.debugger.restart()") << int(StatePaused);
            QTest::newRow(name + " closes") << event << QByteArray("app.closeWorkspace()") << int(StateNoWorkspace);
            QTest::newRow(name + " reopens")
                << event << QByteArray("app.closeWorkspace()\n    app.openWorkspace(path)") << int(StateIdle);
            QTest::newRow(name + " fails") << event << QByteArray("unknown") << -1;
            QTest::newRow(name + " processes events") << event << QByteArray("app.processEvents()") << -1;
        }
    }

    void handlersMayChangeTheSession()
    {
        QFETCH(QString, event);
        QFETCH(QByteArray, action);
        QFETCH(int, state);
        const ProcessorScriptFixture f;
        for (const QString &name : {u"fw"_s, u"dsp"_s}) // as a real target does
            f.scriptOf(name).on[u"start"_s] = [&f, name] { f.report(name, IExecutionEnvironment::ProgramPaused); };
        f.run("path = '" + f.path(u"all.vnw"_s).toUtf8() + "'");
        QCOMPARE(f.run("def handler():\n    debugger." + event.toLatin1() + " = None\n    events.append('called')\n    "
                       + action + "\ndebugger." + event.toLatin1() + " = handler"),
                 QString());
        if (event == u"onPreAttach" || event == u"onAttach")
            f.run("debugger.attach()");
        else if (event == u"onRestart")
            f.run("debugger.restart()");
        else {
            f.window->activity().setState(StateRunning);
            event == u"onStopped" ? (void)f.run("debugger.stop()")
                                  : f.report(u"fw"_s, IExecutionEnvironment::ProgramBreakpointHit);
        }
        QCOMPARE(events(), u"called"_s);
        if (state >= 0 && event != u"onPreAttach")
            QCOMPARE(int(f.window->activity().state()), state);
        if (f.window->activity().state() == StateNoWorkspace) {
            QCOMPARE(f.stub()->objectCount(), 0);
            return;
        }
        // What comes next works as ever.
        f.run("app.debugger.stop()\n");
        QCOMPARE(f.eval("app.debugger.currentProcessor.evaluate('1+1')"), u"'2'"_s);
        QCOMPARE(f.run("app.debugger.attach()"), QString());
        QCOMPARE(f.window->activity().state(), StatePaused);
    }

    void handlerThatCallsItselfForeverEnds()
    {
        const ProcessorScriptFixture f;
        f.run("debugger.onRestart = debugger.restart\ndebugger.restart()");
        QCOMPARE(f.window->activity().state(), StatePaused);
        f.run("debugger.onRestart = None");
        QCOMPARE(f.eval("p.evaluate('1+1')"), u"'2'"_s);
    }

    void statementsMayCloseTheWorkspaceWhileASessionStarts()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).on[u"start"_s] = [&] { ProcessorScriptFixture::run("app.closeWorkspace()"); };
        f.run("debugger.attach()");
        QTRY_COMPARE(f.window->activity().state(), StateNoWorkspace); // when the call has returned
        QCOMPARE(f.stub()->objectCount(), 0);
    }

    void scriptSeesTheProgramWhileItProcessesEvents()
    {
        const ProcessorScriptFixture f(1);
        f.window->activity().setState(StatePaused);
        f.scriptOf(u"fw"_s).programStatus = IExecutionEnvironment::ProgramRunning;
        f.scriptOf(u"fw"_s).on[u"run"_s] = [&] {
            f.report(u"fw"_s, IExecutionEnvironment::ProgramRunning);
            QTimer::singleShot(1, f.window.get(), [&] {
                f.scriptOf(u"fw"_s).programStatus = IExecutionEnvironment::ProgramPaused;
                f.report(u"fw"_s, IExecutionEnvironment::ProgramBreakpointHit);
            });
        };
        QCOMPARE(f.run("debugger.onBreakpointHit = lambda: events.append('hit')\np.run()\n"
                       "while p.programStatus == 1: app.processEvents()\n"),
                 QString());
        QCOMPARE(events(), u"hit"_s);
        QCOMPARE(f.window->activity().state(), StatePaused);
    }
};

int main(int argc, char **argv)
{
    ScriptDebuggerTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptdebugger.moc"

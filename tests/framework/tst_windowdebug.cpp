#include "../plugins/stub/stub.h"
#include "activity.h"
#include "currentlocation.h"
#include "disassemblerview.h"
#include "dockwindow.h"
#include "editorhost.h"
#include "eventhandlers.h"
#include "ibuildenvironment.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "iexecutionevents.h"
#include "iextensioncommands.h"
#include "inextstatement.h"
#include "iregisters.h"
#include "isourcemapping.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "markedviews.h"
#include "multiwatchwindow.h"
#include "objectmodel.h"
#include "projecttree.h"
#include "projecttreeitem.h"
#include "pythonreference.h"
#include "registerwidget.h"
#include "scripthost.h"
#include "textdocumenttemplate.h"
#include "textparaview.h"
#include "watchwindow.h"
#include "windowfixture.h"
#include <functional>
#include <Python.h>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QTreeWidget>
#include <stdexcept>
#include <utility>

// Debug sessions in the main window, from a plug-in's report to the display.

using namespace Qt::StringLiterals;

namespace {
StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

StubScript &script(const QString &label)
{
    return stub()->script(u'{' + label + u'}');
}

/// The plug-in objects of the tests: processors named "fw" and "dsp", a tool chain named "cc", and those of @p more.
struct Plugins
{
    explicit Plugins(const std::function<void()> &more)
    {
        stub()->reset();
        for (const QString &name : {u"fw"_s, u"dsp"_s}) {
            script(name).label = name;
            script(name).offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid};
            script(name).location = {u"main.c"_s, 2};
        }
        script(u"cc"_s).label = u"cc"_s;
        script(u"cc"_s).offers = {IBuildEnvironment::Iid};
        if (more)
            more();
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
};

/// A main window with these plug-ins, and a workspace "all" with the projects "fw" and "dsp", or the first alone.
class DebugWindow : private Plugins, public WindowFixture
{
public:
    explicit DebugWindow(int projects = 1, const std::function<void()> &more = {}) : Plugins(more)
    {
        write(u"main.c"_s, "one\ntwo\nthree\n");
        QStringList files;
        for (const QString &name : QStringList{u"fw"_s, u"dsp"_s}.first(projects)) {
            files += name + u".vnp"_s;
            write(files.last(), "<project buildenvironment='{cc}' executionenvironment='{" + name.toLatin1()
                                    + "}'><file path='main.c'/><properties currentconfiguration='Debug'>"
                                      "<configuration name='Debug'/></properties></project>");
        }
        QVERIFY(window->openWorkspace(writeWorkspace(u"all.vnw"_s, files), false));
        calls();
    }

    /// The commands to processors and tool chains since the last call.
    static QString calls()
    {
        QStringList calls = stub()->takeCalls();
        calls.removeIf([](const QString &call) {
            const QStringList questions{u"breakpoints"_s,   u"currentLocation"_s, u"canAttach"_s,  u"canCompile"_s,
                                        u"programStatus"_s, u"isUpToDate"_s,      u"initialise"_s, u"commands"_s,
                                        u"setProject"_s,    u"workspaceChanged"_s};
            return questions.contains(call.section(u'.', 1).section(u'(', 0, 0));
        });
        return calls.join(u' ');
    }

    static void report(const QString &name, IExecutionEnvironment::ProgramStatus status)
    {
        stub()->object(name)->executionEvents->programStatusChanged(status);
    }
    static void say(const QString &name, const QString &text, int position)
    {
        stub()->object(name)->executionEvents->statusInfo(text, position);
    }

    [[nodiscard]] QString caption() const { return window->windowTitle(); }

    /// The texts of the status labels from the cursor's on, "-" for a hidden one.
    [[nodiscard]] QString labels() const
    {
        QList<QLabel *> labels = window->statusBar()->findChildren<QLabel *>();
        labels.removeIf([](const QLabel *label) { return label->objectName() == u"cursorLabel"_s; });
        std::ranges::sort(labels, [](const QLabel *a, const QLabel *b) { return a->x() > b->x(); });
        QStringList texts;
        for (const QLabel *label : std::as_const(labels)) {
            if (!label->isHidden())
                texts.append(label->text());
        }
        return texts.join(u' ');
    }

    /// The markers of the lines of the view in front.
    [[nodiscard]] QString marks() const
    {
        QStringList texts;
        for (int line = 1; line <= 3; ++line) {
            for (const int marker : {1, 2, 4, 8}) {
                if (view()->hasMarker(line, marker))
                    texts.append(u"%1=%2"_s.arg(line).arg(marker));
            }
        }
        return texts.join(u' ');
    }

    [[nodiscard]] DockWindow *dock(const char *name) const
    {
        return window->findChild<DockWindow *>(QString::fromLatin1(name));
    }

    /// Records the script events in Python.
    void listen() const
    {
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        const PythonReference list(PyRun_String("events = []", Py_file_input, globals, globals));
        for (const QByteArray name : {"onPreAttach", "onAttach", "onStopped", "onRestart", "onBreakpointHit",
                                      "onCurrentProjectChanged", "onWorkspaceLoaded"}) {
            const QByteArray code = "lambda: events.append('" + name + "')";
            const PythonReference handler(PyRun_String(code.constData(), Py_eval_input, globals, globals));
            QVERIFY(window->objectModel().host().eventHandlers().setHandler(QString::fromLatin1(name), handler.get()));
        }
    }
    static QString events()
    {
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        const PythonReference text(PyRun_String("' '.join(events)", Py_eval_input, globals, globals));
        const PythonReference clear(PyRun_String("events.clear()", Py_file_input, globals, globals));
        return QString::fromUtf8(PyUnicode_AsUTF8(text.get()));
    }
};

/// A plug-in's document that does something when it is asked whether its file is newer.
class NewerDocument : public EmptyDocument
{
public:
    NewerDocument(DocumentTemplate *kind, std::function<void()> action)
        : EmptyDocument(kind), m_action(std::move(action))
    {}
    bool isNewerOnDisk() override
    {
        m_action();
        return true;
    }

private:
    const std::function<void()> m_action;
};

class NewerTemplate : public MarkedTemplate
{
public:
    explicit NewerTemplate(std::function<void()> action) : m_action(std::move(action)) {}
    bool canOpen(const QString &filename) override { return filename.endsWith(u".own"_s); }
    Document *createDocument() override { return new NewerDocument(this, m_action); }

private:
    const std::function<void()> m_action;
};
} // namespace

class WindowDebugTest : public QObject
{
    Q_OBJECT

private:
    /// The disassembly of a paused project with one instruction.
    static void showDisassembly(DebugWindow &f)
    {
        script(u"fw"_s).offers += {IDisassembly::Iid, IMemory::Iid};
        script(u"fw"_s).regions = {{u"code"_s, 0, 0, 0, 0, 0, false, IMemory::Byte}};
        script(u"fw"_s).instructions = {{0, u"nop"_s}};
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        f.window->activity().setState(StatePaused);
        f.window->debugViewDisassembly();
    }

private Q_SLOTS:
    void commandBetweenTwoStartsReachesNoProcessor()
    {
        DebugWindow f(2);
        ActivityState state = StateIdle;
        script(u"fw"_s).on[u"start"_s] = [&] {
            QTimer::singleShot(0, f.window.get(), [&] { // before the next processor is started
                DebugWindow::report(u"fw"_s, IExecutionEnvironment::ProgramPaused);
                state = f.window->activity().state();
                f.window->debugStepOver();
            });
        };
        f.window->debugRun();
        QCOMPARE(state, StatePaused);
        QCOMPARE(DebugWindow::calls(), u"fw.start(false) dsp.start(false) fw.run() dsp.run()"_s);
        QCOMPARE(f.window->activity().state(), StateRunning);
    }

    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // A session

    void watchesComeBackWithTheirWorkspace()
    {
        DebugWindow f;
        auto *watches = f.window->findChild<WatchWindow *>(u"fw/watches"_s);
        QVERIFY(watches);
        watches->addItem(u"counter,x"_s);
        f.restart();
        f.window->continueLastRun();
        watches = f.window->findChild<WatchWindow *>(u"fw/watches"_s);
        QVERIFY(watches);
        QCOMPARE(watches->watches(), QStringList(u"counter,x"_s));
    }

    void acceptedFormatsReachTheDebugWindows()
    {
        const DebugWindow f;
        const auto *watches = f.window->findChild<WatchWindow *>(u"fw/watches"_s);
        QVERIFY(watches);
        f.installation.write(
            u"config/textformats.xml"_s,
            "<f><section name='Text editor'><format name='Standard text' fontFamily='Monospace' "
            "fontSize='9'/></section><section name='Workspace'><format name='Normal text' "
            "fontFamily='Monospace' fontSize='21' bgColour='ffffcc' bold='1' italic='1'/></section></f>");
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"DefaultsButton"_s)->click();
            dialog->findChild<QAbstractButton *>(u"OKButton"_s)->click();
        });
        f.window->toolsOptions();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(watches->font().pointSize(), 21);
        QVERIFY(watches->font().bold() && watches->font().italic());
        QCOMPARE(watches->palette().color(QPalette::Base).name(), u"#ffffcc"_s);
        QCOMPARE(f.window->findChild<QWidget *>(u"pythonOutputList"_s)->font().pointSize(), 21);
    }

    void aSessionFromItsStartToItsEnd()
    {
        const DebugWindow f;
        QCOMPARE(f.caption(), u"Varnel - all"_s);
        f.window->debugRun();
        QCOMPARE(f.calls(), u"fw.start(false) fw.run()"_s);
        QCOMPARE(f.caption(), u"Varnel - all [running]"_s);
        f.report(u"fw"_s, IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(f.caption(), u"Varnel - all [paused]"_s);
        QCOMPARE(f.openFiles(), QStringList(u"main.c"_s));
        QCOMPARE(f.marks(), u"2=8"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
        f.view()->gotoLine(3);
        f.window->debugShowNext();
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
        f.window->debugStepOver();
        QCOMPARE(f.calls(), u"fw.stepOver(main.c)"_s);
        f.report(u"fw"_s, IExecutionEnvironment::ProgramFinished);
        QCOMPARE(f.caption(), u"Varnel - all [finished]"_s);
        f.report(u"fw"_s, IExecutionEnvironment::ProgramUnknown);
        QCOMPARE(f.caption(), u"Varnel - all [unknown]"_s);
        f.window->debugStop();
        QCOMPARE(f.calls(), u"fw.stop()"_s);
        QCOMPARE(f.caption(), u"Varnel - all"_s);
        QCOMPARE(f.window->activity().state(), StateIdle);
        QCOMPARE(f.marks(), QString());
        QVERIFY(f.recent(u"File"_s).isEmpty());
    }

    /// Commands that cannot do anything are disabled.
    void commandsFollowTheViewAndTheEnvironment()
    {
        const DebugWindow f;
        QString available;
        const auto note = [&](const QString &name, bool on) {
            available.remove(name + u' ');
            if (on)
                available += name + u' ';
        };
        QObject receiver;
        connect(f.window.get(), &MainWindow::runToCursorAvailable, &receiver, [&](bool on) { note(u"cursor"_s, on); });
        connect(f.window.get(), &MainWindow::setNextAvailable, &receiver, [&](bool on) { note(u"next"_s, on); });
        connect(f.window.get(), &MainWindow::wakeupAvailable, &receiver, [&](bool on) { note(u"wake"_s, on); });
        f.window->activity().setState(StatePaused); // shows the next statement
        QCOMPARE(available, u"wake cursor "_s);
        f.window->viewManager()->closeAll();
        QCOMPARE(available, u"wake "_s);
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        QCOMPARE(available, u"wake cursor "_s);
        script(u"fw"_s).offers += INextStatement::Iid;
        script(u"fw"_s).offers += IWakeUp::Iid;
        script(u"fw"_s).canWakeUp = false;
        f.window->activity().setState(StateRunning);
        QCOMPARE(available, QString());
        f.window->activity().setState(StatePaused);
        QCOMPARE(available, u"next cursor "_s);
        f.window->viewManager()->closeAll();
        QCOMPARE(available, QString());
        script(u"fw"_s).canWakeUp = true;
        f.window->activity().setState(StateRunning);
        QCOMPARE(available, u"wake "_s);
    }

    void commandsCallTheEnvironment_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("calls");
        QTest::newRow("run") << QByteArray("debugRun") << u"fw.run()"_s;
        QTest::newRow("run to cursor") << QByteArray("debugRunToCursor") << u"fw.runTo(main.c, 3)"_s;
        QTest::newRow("step over") << QByteArray("debugStepOver") << u"fw.stepOver(main.c)"_s;
        QTest::newRow("step into") << QByteArray("debugStepInto") << u"fw.stepInto(main.c)"_s;
        QTest::newRow("pause") << QByteArray("debugPause") << u"fw.pause()"_s;
        QTest::newRow("stop") << QByteArray("debugStop") << u"fw.stop()"_s;
        QTest::newRow("restart") << QByteArray("debugRestart") << u"fw.restart()"_s;
        QTest::newRow("wake up") << QByteArray("debugWakeup") << u"fw.wakeUp()"_s;
        QTest::newRow("toggle breakpoint")
            << QByteArray("debugToggleBreakpoint") << u"fw.setBreakpoint(main.c, 3, 1)"_s;
        QTest::newRow("show next statement") << QByteArray("debugShowNext") << QString();
        QTest::newRow("view disassembly, which is not offered") << QByteArray("debugViewDisassembly") << QString();
        QTest::newRow("attach, in a session") << QByteArray("debugAttach") << QString();
    }

    void commandsCallTheEnvironment()
    {
        QFETCH(QByteArray, command);
        const DebugWindow f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        f.window->activity().setState(StatePaused);
        f.window->viewManager()->gotoLine(3, false);
        f.calls();
        QVERIFY(QMetaObject::invokeMethod(f.window.get(), command.constData()));
        QTEST(f.calls().remove(QFileInfo(f.path(u"main.c"_s)).path() + u'/'), "calls");
    }

    void commandsCallTheToolChain_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("call");
        QTest::newRow("compile") << QByteArray("buildCompileFile") << u"cc.compile(main.c, Debug)"_s;
        QTest::newRow("build") << QByteArray("buildBuild") << u"cc.build([Debug], false)"_s;
        QTest::newRow("rebuild") << QByteArray("buildRebuild") << u"cc.build([Debug], true)"_s;
        QTest::newRow("clean") << QByteArray("buildClean") << u"cc.clean([Debug])"_s;
        QTest::newRow("build the selected project") << QByteArray("buildBuildAlt") << u"cc.build([Debug], false)"_s;
        QTest::newRow("rebuild the selected project") << QByteArray("buildRebuildAlt") << u"cc.build([Debug], true)"_s;
        QTest::newRow("clean the selected project") << QByteArray("buildCleanAlt") << u"cc.clean([Debug])"_s;
    }

    void commandsCallTheToolChain()
    {
        QFETCH(QByteArray, command);
        DebugWindow f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        if (command.endsWith("Alt")) {
            auto *tree = f.window->findChild<ProjectTree *>();
            tree->setFocus();
            tree->setCurrentItem(tree->firstChild()->firstChild());
        }
        QVERIFY(QMetaObject::invokeMethod(f.window.get(), command.constData()));
        QTEST(f.calls().remove(QFileInfo(f.path(u"main.c"_s)).path() + u'/'), "call");
        QCOMPARE(f.window->activity().state(), StateBuilding);
        f.window->buildStopBuild();
        QCOMPARE(f.calls(), u"cc.stop()"_s);
    }

    void scriptBuildsOrRebuilds_data()
    {
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<QString>("call");
        QTest::newRow("build") << QByteArray("0") << u"cc.build([Debug], false)"_s;
        QTest::newRow("rebuild") << QByteArray("1") << u"cc.build([Debug], true)"_s;
    }

    void scriptBuildsOrRebuilds()
    {
        QFETCH(QByteArray, argument);
        const DebugWindow f;
        f.write(u"build.py"_s, "from varnel import app\napp.currentProject.build(" + argument + ")\n");
        f.calls();
        f.window->runPyFile(f.path(u"build.py"_s));
        QTEST(f.calls(), "call");
        f.window->buildStopBuild();
    }

    void scriptEventsAreFired()
    {
        const DebugWindow f(2);
        f.listen();
        script(u"fw"_s).canAttach = true;
        f.window->debugAttach();
        QCOMPARE(f.events(), u"onPreAttach onAttach"_s);
        f.report(u"fw"_s, IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(f.events(), u"onBreakpointHit"_s);
        f.window->debugRestart();
        QCOMPARE(f.events(), u"onRestart"_s);
        f.window->projectWorkspace()->setCurrentProject(1);
        QCOMPARE(f.events(), u"onCurrentProjectChanged"_s);
        f.window->debugStop();
        QCOMPARE(f.events(), u"onStopped"_s);
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        QCOMPARE(f.events(), u"onWorkspaceLoaded"_s);
    }

    /// The state of the program may arrive while its environment is asked what it offers.
    void commandsFollowTheStateThatIsReportedLast()
    {
        const DebugWindow f;
        script(u"fw"_s).offers.insert(IWakeUp::Iid);
        f.window->activity().setState(StatePaused);
        const QSignalSpy pause(f.window.get(), &MainWindow::pauseAvailable);
        bool reported = false;
        script(u"fw"_s).on[u"canWakeUp"_s] = [&reported] {
            if (!std::exchange(reported, true))
                DebugWindow::report(u"fw"_s, IExecutionEnvironment::ProgramFinished);
        };
        f.window->activity().setState(StateRunning);
        QCOMPARE(f.window->activity().state(), StateFinished);
        QCOMPARE(pause.last(), QVariantList{false});
    }

    void chosenPlaceOfTheCallStackIsShown()
    {
        const DebugWindow f;
        f.window->activity().setState(StatePaused);
        QCOMPARE(f.openFiles(), QStringList(u"main.c"_s));
        f.open(u"other.c"_s);
        auto *stack = f.dock("callStackDockWindow")->findChild<MultiWidget *>();
        Q_EMIT stack->placeChosen(f.window->activity().currentEnvironment().get());
        QCOMPARE(f.view()->title(), u"main.c"_s);
    }

    void closingTheWorkspaceEndsTheSession()
    {
        const DebugWindow f;
        f.listen();
        f.window->debugRun();
        f.calls();
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.calls().contains(u"fw.stop()"_s));
        QCOMPARE(f.events(), u"onStopped"_s);
        QCOMPARE(f.window->activity().state(), StateNoWorkspace);
        QCOMPARE(f.caption(), u"Varnel"_s);
        QCOMPARE(stub()->objectCount(), 0);
    }

    void closingTheWorkspaceEndsTheSessionBehindACompilation()
    {
        const DebugWindow f;
        f.window->activity().setState(StatePaused);
        f.window->activity().setState(StateBuilding);
        f.calls();
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(f.calls().contains(u"fw.stop()"_s));
    }

    void exceptionInTheSearchForASymbolEndsGoToLine()
    {
        const DebugWindow f;
        script(u"fw"_s).offers.insert(ISourceMapping::Iid);
        script(u"fw"_s).on[u"symbolAddress"_s] = [] { throw std::runtime_error("boom"); };
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        f.view()->gotoLine(3);
        QTest::ignoreMessage(QtWarningMsg, "ISourceMapping::symbolAddress: an exception has left the plug-in (boom)");
        f.answers->type(u"main"_s);
        f.window->viewGotoLine();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 0); // the text is no number, either
    }

    void disassemblyCannotBePrinted()
    {
        DebugWindow f;
        f.installation.write(u"config/uiconfig.xml"_s, R"(<ui><actions><action name="filePrint"><enable
                             signal="viewHasFocus"/></action></actions></ui>)");
        script(u"fw"_s).offers.insert(IDisassembly::Iid);
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        const auto *print = f.window->findChild<QAction *>(u"filePrint"_s);
        QVERIFY(print->isEnabled());
        f.window->debugViewDisassembly();
        QVERIFY(qobject_cast<DisassemblerView *>(f.window->viewManager()->currentView()));
        QVERIFY(!print->isEnabled());
    }

    void disassemblyIsReadAgainAfterAValueWasWritten()
    {
        DebugWindow f;
        showDisassembly(f);
        QVERIFY(qobject_cast<DisassemblerView *>(f.window->viewManager()->currentView()));
        const auto *paras = f.window->viewManager()->currentView()->findChild<TextParaView *>();
        QTRY_COMPARE(paras->property("text").toString(), u"nop\n"_s);
        script(u"fw"_s).instructions = {{0, u"ret"_s}};
        Q_EMIT f.window->findChild<MultiWatchWindow *>()->doUpdate(); // one of its panes has written a value
        QTRY_COMPARE(paras->property("text").toString(), u"ret\n"_s);
    }

    void registersAreReadWhenTheProgramPauses()
    {
        DebugWindow f;
        script(u"fw"_s).offers += IRegisters::Iid;
        script(u"fw"_s).registers = {{u"r0"_s, 8, {}, 4, 4, {}, false}};
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        f.window->activity().setState(StatePaused);
        f.window->activity().setState(StateRunning);
        const auto *registers = f.window->findChild<RegisterWidget *>(u"fw/registers"_s);
        QVERIFY(registers && registers->isVisible());
        QCOMPARE(registers->text(), u"r0 = 0x00\n"_s);
        script(u"fw"_s).registerValues[u"r0"_s] = {{0, 1}};
        f.window->activity().setState(StatePaused);
        QCOMPARE(registers->text(), u"r0 = 0x01\n"_s);
    }

    void watchesAreReadWhenTheProgramPauses()
    {
        const DebugWindow f;
        auto *watches = f.window->findChild<WatchWindow *>(u"fw/watches"_s);
        QVERIFY(watches);
        watches->addItem(u"counter"_s);
        script(u"fw"_s).values[u"counter"_s] = u"1"_s;
        f.window->activity().setState(StatePaused);
        f.dock("watchDockWindow")->bringUp();
        QTRY_VERIFY(watches->text().startsWith(u"counter = 1\n"_s));
        f.window->activity().setState(StateRunning);
        script(u"fw"_s).values[u"counter"_s] = u"2"_s;
        f.window->activity().setState(StatePaused);
        QTRY_VERIFY(watches->text().startsWith(u"counter = 2\n"_s));
    }

    void startingSessionIsNotStopped()
    {
        const DebugWindow f;
        f.window->activity().setState(StateInitialising);
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(!f.calls().contains(u"stop"_s));
    }

    void storedActionsAreUsed()
    {
        DebugWindow f(2);
        f.settings()->setValue(u"Debug/action0"_s, 0);
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        f.calls();
        f.window->debugRun();
        QCOMPARE(f.calls(), u"fw.start(false) dsp.start(false) fw.run()"_s);
    }

    // What plug-ins add to the window

    void commandsOfPluginsCanBeGivenKeys()
    {
        const DebugWindow f;
        for (const QString &label : {u"fw"_s, u"cc"_s})
            script(label).offers.insert(IExtensionCommands::Iid);
        script(u"fw"_s).commands = {{u"trace"_s, u"&Trace..."_s, {}}};
        script(u"cc"_s).commands = {{u"size"_s, u"Si&ze"_s, {}}};
        QStringList offered;
        f.answers->meet([&offered](QDialog *dialog) {
            const auto *tree = dialog->findChild<QTreeWidget *>(u"commandTree"_s);
            for (int row = 0; row < tree->topLevelItemCount(); ++row)
                offered.append(tree->topLevelItem(row)->text(0) + u" of "_s + tree->topLevelItem(row)->text(1));
            dialog->reject();
        });
        f.window->toolsOptions();
        QVERIFY2(offered.contains(u"Trace of Debug"_s), qPrintable(offered.join(u'\n')));
        QVERIFY2(offered.contains(u"Size of Build"_s), qPrintable(offered.join(u'\n')));
    }

    void commandsAndDockWindowsOfPluginsAreInTheMenus()
    {
        DebugWindow f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><menus><menu name="buildMenu" displayname="Build"/>
                             <menu name="debugWindowsMenu" displayname="Windows"/></menus></ui>)");
        script(u"cc"_s).offers.insert(IExtensionCommands::Iid);
        script(u"cc"_s).commands = {{u"size"_s, u"Si&ze"_s, {}}};
        script(u"fw"_s).offers.insert(IDockExtension::Iid);
        script(u"fw"_s).widgets = [] {
            auto *widget = new QWidget;
            widget->setWindowTitle(u"Trace"_s);
            return QList<QWidget *>{widget};
        };
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        f.calls();
        const auto choose = [&f](const QString &menuName, const QString &text) {
            auto *menu = f.window->findChild<QMenu *>(menuName);
            Q_EMIT menu->aboutToShow();
            for (QAction *entry : menu->actions()) {
                if (entry->text().remove(u'&') == text)
                    return entry->trigger();
            }
            QFAIL(qPrintable(text));
        };
        choose(u"buildMenu"_s, u"Size"_s);
        QCOMPARE(f.calls(), u"cc.execute(size)"_s);
        QVERIFY(f.dock("pluginTrace")->isHidden());
        choose(u"debugWindowsMenu"_s, u"Trace"_s);
        QVERIFY(!f.dock("pluginTrace")->isHidden());
    }

    void windowThatIsClosedDuringACallOfAPluginStaysUntilItsEnd()
    {
        const DebugWindow f;
        f.window->activity().setState(StateRunning);
        bool isVisible = false;
        script(u"fw"_s).on[u"pause"_s] = [&] {
            f.window->close();
            isVisible = f.window->isVisible();
        };
        f.window->debugPause();
        QVERIFY(isVisible);
        QTRY_VERIFY(!f.window->isVisible());
    }

    void documentThatAnotherOneClosesIsNotAskedAbout_data()
    {
        QTest::addColumn<bool>("isFirst");
        QTest::newRow("before its turn") << true;
        QTest::newRow("after its turn") << false;
    }

    void documentThatAnotherOneClosesIsNotAskedAbout()
    {
        QFETCH(const bool, isFirst);
        std::function<void()> action = [] {};
        const DebugWindow f(1, [&action] {
            script(u"own"_s).type = IPluginObject::CustomDocument;
            script(u"own"_s).offers = {ICustomDocumentPlugin::Iid};
            script(u"own"_s).documentTemplate = [&action] { return new NewerTemplate([&action] { action(); }); };
        });
        f.open(u"a.c"_s, "old");
        f.changeOutside(u"a.c"_s, "theirs");
        f.open(u"b.own"_s);
        View *own = f.window->viewManager()->currentView();
        if (isFirst)
            Q_EMIT own->viewActivated(own); // as a view that gets the focus does
        action = [&f] {
            if (Document *text = f.window->workspace()->findDocument(f.path(u"a.c"_s)))
                f.window->viewManager()->closeDocument(text);
        };
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->fileSaveAll());
        QVERIFY(f.answers->allGiven());
        QVERIFY2(f.answers->shown.value(0).contains(f.path(u"b.own"_s)), qPrintable(f.answers->shown.value(0)));
        QCOMPARE(f.openFiles(), QStringList(u"b.own"_s));
    }

    void pageOfOptionsOfAPluginIsInTheDialog_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("calls");
        QTest::newRow("accepted") << u"OKButton"_s << u"host.title() host.createPage() host.apply()"_s;
        QTest::newRow("cancelled") << u"CancelButton"_s << u"host.title() host.createPage()"_s;
    }

    void pageOfOptionsOfAPluginIsInTheDialog()
    {
        QFETCH(const QString, button);
        const DebugWindow f;
        QVERIFY(f.window->closeWorkspace());
        script(u"fw"_s).offers.insert(IWorkspaceClient::Iid);
        script(u"fw"_s).usesHost = true;
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        f.calls();
        f.answers->meet([&](QDialog *dialog) { dialog->findChild<QAbstractButton *>(button)->click(); });
        f.window->toolsOptions();
        QVERIFY(f.answers->allGiven());
        QTEST(f.calls().split(u' ').filter(u"host."_s).join(u' '), "calls");
    }

    void contentsThatAToolChainSendsReplaceThoseOfTheProject()
    {
        const DebugWindow f;
        stub()->object(u"cc"_s)->buildEvents->xmlFeedback(
            u"<project><file path='new.c'/><properties currentconfiguration='Debug'><configuration name='Debug'/>"
            "</properties></project>"_s);
        QTRY_COMPARE(f.window->activity().currentProject()->rootFiles().value(0)->path(), u"new.c"_s);
    }

    void missingMakefileGeneratorIsReportedOnce()
    {
        const DebugWindow f;
        f.answers->press(QMessageBox::Ok);
        f.window->projectGenerateMakefile();
        QCOMPARE(f.answers->shown,
                 QStringList(u"No Makefile can be generated.\n\nThe build environment of the project does not support "
                             "it."_s));
    }

    void searchBoxSearchesInADisassembly()
    {
        DebugWindow f;
        showDisassembly(f);
        auto *view = qobject_cast<DisassemblerView *>(f.window->viewManager()->currentView());
        QVERIFY(view);
        f.window->searchBoxFind(u"nop"_s);
        QTRY_COMPARE(view->selectedText(), u"nop"_s);
    }

    // Several projects

    void theDropDownFollowsAHit()
    {
        DebugWindow f(2);
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="debugStepInto"/></actions><toolbars><toolbar name="a">
                             <action name="debugStepInto"/></toolbar></toolbars></ui>)");
        f.restart();
        QVERIFY(f.window->openWorkspace(f.path(u"all.vnw"_s), false));
        const auto *box = f.window->findChild<QComboBox *>(u"projectDropdown"_s);
        QCOMPARE(box->currentText(), u"fw"_s);
        f.window->activity().setState(StateRunning);
        f.answers->press(QMessageBox::Ok);
        f.report(u"dsp"_s, IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(f.answers->shown, QStringList(u"A breakpoint has been hit in project 'dsp'.\n\nThe current project "
                                               "will be switched."_s));
        QCOMPARE(f.answers->lastBox(), u"information Varnel [Ok]"_s);
        QCOMPARE(box->currentText(), u"dsp"_s);
        QCOMPARE(f.caption(), u"Varnel - all [paused]"_s);
    }

    // The status bar

    void statusTextsAreOrderedByPosition()
    {
        const DebugWindow f;
        f.window->activity().setState(StateRunning);
        f.say(u"fw"_s, u"first"_s, 0);
        QCOMPARE(f.labels(), u"first"_s);
        f.say(u"fw"_s, u"fourth"_s, 3);
        f.say(u"fw"_s, u"third"_s, 2);
        f.say(u"fw"_s, u"second"_s, 1);
        QCoreApplication::processEvents();
        QTRY_COMPARE(f.labels(), u"first second third fourth"_s);
        for (const int position : {-1, 4, 1000})
            f.say(u"fw"_s, u"nowhere"_s, position);
        QCOMPARE(f.labels(), u"first second third fourth"_s);
        f.say(u"fw"_s, u"changed"_s, 1);
        QTRY_COMPARE(f.labels(), u"first changed third fourth"_s);
    }

    void longStatusTextIsShortenedAndDoesNotWidenTheWindow()
    {
        const DebugWindow f;
        f.window->activity().setState(StateRunning);
        const int width = f.window->minimumSizeHint().width();
        const QString text = u"loading "_s + QString(500, u'x');
        f.say(u"fw"_s, text, 0);
        QCoreApplication::processEvents();
        QVERIFY2(f.labels().startsWith(u"loading xxx"_s) && f.labels().endsWith(u'…'), qPrintable(f.labels()));
        QVERIFY(f.window->minimumSizeHint().width() <= std::max(width, 700));
        const QList<QLabel *> labels = f.window->statusBar()->findChildren<QLabel *>();
        QVERIFY(std::ranges::any_of(labels, [&](const QLabel *label) { return label->toolTip() == text; }));
        f.say(u"fw"_s, u"short"_s, 0);
        QVERIFY(std::ranges::none_of(labels, [&](const QLabel *label) { return label->toolTip() == text; }));
    }

    void statusTextsAreHiddenOutsideASession_data()
    {
        QTest::addColumn<int>("state");
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state)
            QTest::addRow("%d", state) << state;
    }

    void statusTextsAreHiddenOutsideASession()
    {
        QFETCH(int, state);
        const DebugWindow f;
        f.window->activity().setState(state == StateRunning ? StateFinished : StateRunning);
        f.say(u"fw"_s, u"text"_s, 0);
        f.window->activity().setState(ActivityState(state));
        const bool inSession = isDebugState(ActivityState(state)) || state == StateBuilding; // a compilation in it
        QCOMPARE(f.labels(), inSession ? u"text"_s : QString());
    }

    void statusTextStaysWhenTheStateIsSetAgain()
    {
        const DebugWindow f;
        f.say(u"fw"_s, u"text"_s, 0);
        f.window->activity().setState(f.window->activity().state());
        QCOMPARE(f.labels(), u"text"_s);
    }

    void closingTheWindowStopsABuildBeforeItAsks()
    {
        const DebugWindow f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        f.window->buildBuild();
        QCOMPARE(f.window->activity().state(), StateBuilding);
        f.calls();
        f.type(u"new "_s);
        QString callsAtTheQuestion;
        f.answers->meet([&](QDialog *dialog) {
            callsAtTheQuestion = f.calls();
            dialog->reject();
        });
        f.window->close();
        QCOMPARE(callsAtTheQuestion, u"cc.stop()"_s);
        QVERIFY(f.window->isVisible()); // the question was cancelled
    }

    // A change of state

    void stateChangeUpdatesTheWindowInOrder()
    {
        const DebugWindow f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        f.window->activity().setState(StatePaused);
        f.say(u"fw"_s, u"text"_s, 0);
        f.dock("outputDockWindow")->hide();
        QStringList seen;
        const QObject ears;
        const auto look = [&] {
            return u"state %1, marks '%2', output %3, label %4, caption '%5'"_s.arg(f.window->activity().state())
                .arg(f.marks(), f.dock("outputDockWindow")->isHidden() ? u"off"_s : u"on"_s, f.labels(), f.caption());
        };
        connect(f.window.get(), &MainWindow::projectOpenAvailable, &ears, [&] { seen += look(); });
        connect(f.window.get(), &MainWindow::attachAvailable, &ears, [&] { seen += look(); });
        connect(f.window.get(), &MainWindow::compileAvailable, &ears, [&] { seen += look(); });
        f.window->activity().setState(StateIdle);
        seen += look();
        const auto before = u"state 5, marks '', output on, label text, caption 'Varnel - all [paused]'"_s;
        QCOMPARE(
            seen.join(u'\n'),
            (QStringList{before, before, u"state 1, marks '', output on, label , caption 'Varnel - all [paused]'"_s,
                         u"state 1, marks '', output on, label , caption 'Varnel - all'"_s})
                .join(u'\n'));
    }

    void windowsAreUpdatedBeforeTheStateIsSet()
    {
        const DebugWindow f;
        f.window->activity().setState(StateRunning);
        int state = -1;
        script(u"fw"_s).on[u"currentLocation"_s] = [&] {
            if (state < 0)
                state = f.window->activity().state();
        };
        f.window->activity().setState(StatePaused);
        QCOMPARE(state, int(StateRunning));
        QCOMPARE(f.marks(), u"2=8"_s);
    }

    void firstSessionShowsTheWindowsOfADebugger()
    {
        DebugWindow f;
        const QStringList names{u"callStackDockWindow"_s, u"variablesDockWindow"_s, u"watchDockWindow"_s,
                                u"registerDockWindow"_s};
        const auto shown = [&f, &names] {
            QStringList found = names;
            found.removeIf([&f](const QString &name) { return f.dock(name.toLatin1().constData())->isHidden(); });
            return found;
        };
        QCOMPARE(shown(), QStringList());
        f.window->activity().setState(StatePaused);
        QCOMPARE(shown(), names);
        QCoreApplication::processEvents();
        QVERIFY(f.dock("variablesDockWindow")->height() > f.dock("callStackDockWindow")->height());
        f.dock("registerDockWindow")->hide();
        f.window->activity().setState(StateIdle);
        QCOMPARE(shown(), QStringList());
        f.window->activity().setState(StatePaused); // as the user has left it
        QCOMPARE(shown(), names.first(3));
        f.window->activity().setState(StateIdle);
    }

    void firstSessionInALowWindowDoesNotEnlargeIt()
    {
        const DebugWindow f;
        for (const char *name : {"callStackDockWindow", "variablesDockWindow", "watchDockWindow"})
            f.dock(name)->widget()->setMinimumHeight(150);
        const QSize size(900, 500);
        f.window->resize(size);
        QCoreApplication::processEvents();
        f.window->activity().setState(StatePaused);
        QCoreApplication::processEvents();
        QCOMPARE(f.window->size(), size);
        QVERIFY(f.window->tabifiedDockWidgets(f.dock("variablesDockWindow")).contains(f.dock("watchDockWindow")));
        const auto inFront = [&f](const char *name) { return !f.dock(name)->visibleRegion().isEmpty(); };
        QVERIFY(inFront("callStackDockWindow"));
        QVERIFY(!inFront("watchDockWindow")); // there are no watches yet
        f.window->activity().setState(StateIdle);
    }

    void docksMoveOnlyAtStartAndEndOfASession_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("moves");
        QTest::newRow("idle to building") << 1 << 2 << false;
        QTest::newRow("building to idle") << 2 << 1 << false;
        QTest::newRow("idle to initialising") << 1 << 3 << true;
        QTest::newRow("initialising to running") << 3 << 4 << false;
        QTest::newRow("running to paused") << 4 << 5 << false;
        QTest::newRow("paused to idle") << 5 << 1 << true;
        QTest::newRow("session to a compilation in it") << 3 << 2 << false;
        QTest::newRow("idle to idle") << 1 << 1 << false;
    }

    void docksMoveOnlyAtStartAndEndOfASession()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, moves);
        const DebugWindow f;
        f.window->activity().setState(ActivityState(from));
        f.settings()->remove(u"Geometry"_s);
        f.window->activity().setState(ActivityState(to));
        const QStringList keys = f.settings()->allKeys().filter(u"Geometry/"_s);
        QCOMPARE(!keys.isEmpty(), moves);
        const auto saved = isDebugState(ActivityState(from)) ? u"Geometry/Debugger"_s : u"Geometry/Editor"_s;
        QCOMPARE(keys.filter(saved), keys);
    }

    void projectAddedInASessionLeavesTheDebugWindowsWhereTheyAre()
    {
        const DebugWindow f;
        script(u"dsp"_s).offers.insert(IDockExtension::Iid);
        script(u"dsp"_s).widgets = [] {
            auto *widget = new QWidget;
            widget->setWindowTitle(u"Trace"_s);
            return QList<QWidget *>{widget};
        };
        DockWindow *memory = f.dock("memoryDockWindow");
        f.window->activity().setState(StatePaused);
        memory->show();
        auto project = std::make_unique<Project>(QString(), QString());
        QVERIFY(project->load(f.write(u"dsp.vnp"_s, "<project executionenvironment='{dsp}'><properties/></project>")));
        f.window->activity().addProject(std::move(project));
        QVERIFY(f.dock("pluginTrace"));
        QVERIFY(memory->isVisible());
        f.window->activity().setState(StateIdle);
        QVERIFY(!memory->isVisible());
    }

    void stateReplacedDuringTheMessageIsNotEntered_data()
    {
        QTest::addColumn<QString>("event");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("caption");
        QTest::newRow("workspace closed") << u"close"_s << 0 << u"Varnel"_s;
        QTest::newRow("session stopped") << u"stop"_s << 1 << u"Varnel - all"_s;
        QTest::newRow("program runs on") << u"run"_s << 4 << u"Varnel - all [running]"_s;
        QTest::newRow("nothing") << u"nothing"_s << 5 << u"Varnel - all [paused]"_s;
    }

    void stateReplacedDuringTheMessageIsNotEntered()
    {
        QFETCH(QString, event);
        const DebugWindow f;
        script(u"fw"_s).location = {u"gone.c"_s, 1};
        f.window->activity().setState(StateRunning);
        bool showNext = false;
        const QObject ears;
        connect(f.window.get(), &MainWindow::showNextAvailable, &ears, [&](bool available) { showNext |= available; });
        f.answers->meet([&](QDialog *dialog) {
            if (event == u"close"_s)
                f.window->closeWorkspace();
            else if (event == u"stop"_s)
                f.window->debugStop();
            else if (event == u"run"_s)
                f.report(u"fw"_s, IExecutionEnvironment::ProgramRunning);
            dialog->accept();
        });
        f.report(u"fw"_s, IExecutionEnvironment::ProgramPaused);
        QTEST(int(f.window->activity().state()), "state");
        QTEST(f.caption(), "caption");
        QCOMPARE(showNext, event == u"nothing"_s);
        QVERIFY(f.answers->allGiven());
    }

    // The window closes

    void theWindowMayCloseWhileASessionStarts_data()
    {
        QTest::addColumn<QString>("loop");
        QTest::newRow("rebuild question") << u"question"_s;
        QTest::newRow("rebuild") << u"build"_s;
        QTest::newRow("build for debugging") << u"buildForDebug"_s;
        QTest::newRow("start") << u"start"_s;
        QTest::newRow("message") << u"message"_s;
    }

    void theWindowMayCloseWhileASessionStarts()
    {
        QFETCH(QString, loop);
        const DebugWindow f;
        const auto closeLater = [&] { QTimer::singleShot(0, f.window.get(), [&] { f.window->close(); }); };
        script(u"cc"_s).upToDate = loop != u"question"_s && loop != u"build"_s;
        if (loop == u"question"_s || loop == u"message"_s)
            f.answers->meet([&](QDialog *dialog) {
                f.window->close();
                qobject_cast<QMessageBox *>(dialog)->buttons().first()->click();
            });
        else if (loop == u"build"_s)
            f.answers->press(QMessageBox::Yes);
        script(u"cc"_s).on[u"build"_s] = closeLater;
        if (loop == u"buildForDebug"_s)
            script(u"cc"_s).offers.insert(IDebugBuild::Iid);
        script(u"cc"_s).on[u"buildForDebug"_s] = closeLater;
        script(u"fw"_s).started = loop == u"start"_s;
        if (loop == u"start"_s)
            script(u"fw"_s).on[u"start"_s] = closeLater;
        f.window->debugRun();
        QVERIFY(!f.window->isVisible());
        QCOMPARE(f.window->activity().state(), StateNoWorkspace);
        QCOMPARE(stub()->objectCount(), 0);
        QVERIFY(!f.calls().contains(u"fw.run"_s));
        QVERIFY(f.answers->allGiven());
    }

    // Markers

    void openedAndReloadedFilesAreMarked()
    {
        const DebugWindow f;
        f.window->activity().setState(StatePaused);
        f.window->viewManager()->closeAll();
        script(u"fw"_s).breakpoints = {{{{u"main.c"_s, 3}}, BreakpointDisabled}};
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        QCOMPARE(f.marks(), u"2=8 3=2"_s);
        f.window->viewManager()->closeAll();
        f.answers->choose({f.path(u"main.c"_s)});
        f.window->fileOpen();
        QCOMPARE(f.marks(), u"2=8 3=2"_s);
        script(u"fw"_s).location = {u"main.c"_s, 1};
        forgetCurrentLocations(); // as after a step
        QVERIFY(f.window->workspace()->reopenDocument(f.path(u"main.c"_s)));
        QCOMPARE(f.marks(), u"1=8 3=2"_s);
        f.window->activity().setState(StateRunning);
        script(u"fw"_s).breakpoints.clear();
        QVERIFY(f.window->workspace()->reopenDocument(f.path(u"main.c"_s)));
        QCOMPARE(f.marks(), QString());
    }

    void breakpointsReportedByThePluginAreMarked()
    {
        const DebugWindow f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        script(u"fw"_s).breakpoints = {{{{u"main.c"_s, 3}}, BreakpointEnabled}};
        stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        QCOMPARE(f.marks(), u"3=1"_s);
    }

    void markerToolTipShowsTheBreakpointState()
    {
        const DebugWindow f(2);
        script(u"dsp"_s).breakpoints = {{{{u"main.c"_s, 3}}, BreakpointDisabled}};
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        EditorHost *host = f.view()->textDocument()->textTemplate()->editorHost();
        QCOMPARE(host->markerToolTip(f.path(u"main.c"_s), 3), u"<b>Breakpoint status</b><br>Disabled [dsp]<br>"_s);
        QCOMPARE(host->markerToolTip(f.path(u"main.c"_s), 2), QString());
    }

    void aClickInTheMarginToggles()
    {
        const DebugWindow f;
        QVERIFY(f.window->openFile(f.path(u"main.c"_s), false));
        f.calls();
        Q_EMIT f.view()->toggleBreakpoint(2);
        QCOMPARE(f.calls(), u"fw.setBreakpoint(%1, 2, 1)"_s.arg(f.path(u"main.c"_s)));
    }
};

int main(int argc, char **argv)
{
    WindowDebugTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windowdebug.moc"

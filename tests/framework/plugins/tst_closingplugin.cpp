#include "../../plugins/stub/stub.h"
#include "activity.h"
#include "ibreakpointdetails.h"
#include "ibuildenvironment.h"
#include "icallstack.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include "imemoryverify.h"
#include "imultiprocessorsync.h"
#include "inextstatement.h"
#include "iperipheralfields.h"
#include "iprogressivestart.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "ivariables.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "multiwatchwindow.h"
#include "windowfixture.h"
#include "windowuser.h"
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPluginLoader>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
const QSet<QUuid> executionInterfaces{IExecutionEnvironment::Iid,
                                      IBreakpoints::Iid,
                                      ISourceMapping::Iid,
                                      ISymbolLookup::Iid,
                                      IDisassembly::Iid,
                                      IDisassemblyAddress::Iid,
                                      IMemory::Iid,
                                      IMemoryVerify::Iid,
                                      IRegisters::Iid,
                                      IPeripherals::Iid,
                                      ICallStack::Iid,
                                      IVariables::Iid,
                                      IBreakpointDetails::Iid,
                                      INextStatement::Iid,
                                      IMultiProcessorSync::Iid,
                                      IDockExtension::Iid,
                                      IExtensionCommands::Iid,
                                      IPropertyDefinitions::Iid,
                                      IWakeUp::Iid,
                                      IWorkspaceClient::Iid};
const QSet<QUuid> buildInterfaces{IBuildEnvironment::Iid,  IDebugBuild::Iid,          IProjectPopulate::Iid,
                                  IExtensionCommands::Iid, IPropertyDefinitions::Iid, IWorkspaceClient::Iid};

StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

/// The calls of all interfaces that the program makes in the user's story below.
QStringList allCalls()
{
    return QStringLiteral(
               "create queryInterface setProject initialise setQueryInterface widgets workspaceChanged "
               "canCompile canAttach breakpoints details build clean compile populate commands execute "
               "isUpToDate buildForDebug start run runTo stepInto stepOver pause restart wakeUp canWakeUp "
               "stop programStatus currentLocation setBreakpoint setNextStatement symbolAt symbolAddress addressOf "
               "startInBackground cancelStart regions readBlock registers value peripherals evaluate text "
               "sourceLines currentPlace requestThreads requestFrames setCurrentPlace requestScope "
               "requestChildren requestValue features dataBreakpoints limits")
        .split(u' ');
}

/// What the plug-in does in a call.
struct Deed
{
    const char *name;
    const char *text;
};
const QList<Deed> deeds{{"close", "closes the workspace"},
                        {"userCloses", "runs an event loop, in which the user closes the workspace"},
                        {"userExits", "runs an event loop, in which the user ends the program"}};
} // namespace

/// A plug-in in whose calls the workspace is closed, or the program is ended.
class ClosingPluginTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowFixture> f;
    QString m_deed;
    QStringList m_pending;     ///< calls in which the deed was not done yet
    QStringList m_done;        ///< those in which it was done in this story
    bool m_background = false; ///< sessions start in the background
    bool m_cancels = false;    ///< and the user cancels
    bool m_typed = false;      ///< the workspace was open long enough
    bool m_ending = false;     ///< what the deed closes is not closed yet
    int m_depth = 0;

    [[nodiscard]] bool endsStory() const { return m_deed == "close"_L1 || m_deed.startsWith(u"user"_s); }

    static void prepareScripts()
    {
        stub()->reset();
        StubScript &sim = stub()->script(u"{sim}"_s);
        sim.label = u"sim"_s;
        sim.offers = executionInterfaces;
        sim.canAttach = true;
        sim.location = {u"main.c"_s, 2};
        sim.regions = {{u"RAM"_s, 1, 0, 0, 0x100, 0x1ff, false, IMemory::Byte}};
        sim.registers = {{u"r0"_s, 32, {}, 4, 4, {}, false}};
        sim.peripherals = {{u"UART"_s, {{u"DR"_s, 32, false}}}};
        sim.instructions = {{0, u"nop"_s}};
        sim.values = {{u"counter"_s, u"1"_s}};
        sim.breakpoints = {{{{u"main.c"_s, 1}}, BreakpointEnabled}};
        sim.sourceLines = {{0x100, {u"main.c"_s, 2}}};
        sim.symbols = {{u"main"_s, 0x100}};
        sim.place = StackPlace{1, 0};
        sim.threads = {{1, u"main"_s, {}, false}, {2, u"idle"_s, {}, false}};
        sim.frames[1] = {{0, 0x100, u"main"_s, u"main.c"_s, 2, {}}};
        sim.scopeVariables[IVariables::Locals] = {{u"p"_s, u"p"_s, u"Point"_s, u"{...}"_s, true, false, 1, 0},
                                                  {u"i"_s, u"i"_s, u"int"_s, u"1"_s, true, true, 0, 0}};
        sim.members[u"p"_s] = {{u"x"_s, u"p.x"_s, u"int"_s, u"1"_s, true, true, 0, 0}};
        sim.detailFeatures = IBreakpointDetails::Condition | IBreakpointDetails::DataWrite;
        StubScript &tools = stub()->script(u"{cc}"_s);
        tools.label = u"cc"_s;
        tools.offers = buildInterfaces;
        for (StubScript *script : {&sim, &tools})
            script->commands = {{u"id"_s, u"Command"_s, {}, true, false}};
    }

    /// The bad deed, the first time that the call is made in a story; exceptions are thrown each time.
    void act(const QString &call)
    {
        const bool first = !m_done.contains(call);
        if (m_depth > 0 || m_ending || !first)
            return;
        if (first)
            m_done.append(call);
        m_ending = endsStory();
        ++m_depth;
        const auto end = qScopeGuard([this] { --m_depth; });
        if (m_deed == "close"_L1 && f->window && f->window->projectWorkspace())
            f->window->closeWorkspace();
        if (m_deed.startsWith(u"user"_s)) {
            QEventLoop loop;
            if (m_deed == "userCloses"_L1)
                QTimer::singleShot(0, f->window.get(), [this] { f->window->closeWorkspace(); });
            if (m_deed == "userExits"_L1)
                QTimer::singleShot(0, f->window.get(), [this] { f->window->close(); });
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
            loop.exec();
        }
    }

    void misbehaveInPendingCalls()
    {
        m_done.clear();
        m_ending = false;
        m_typed = false;
        prepareScripts();
        StubScript &sim = stub()->script(u"{sim}"_s);
        sim.sourceLines.insert(0x101, {f->path(u"main.c"_s), 2}); // as it is looked up
        sim.symbols.insert(u"function"_s, 0x101);
        if (m_background)
            stub()->script(u"{sim}"_s).offers += IProgressiveStart::Iid;
        for (const QString &feature : {u"{sim}"_s, u"{cc}"_s}) {
            for (const QString &call : std::as_const(m_pending))
                stub()->script(feature).on.insert(call, [this, call] { act(call); });
        }
    }

    /// What was closed in a call is closed some time after it.
    void waitForEnd() const
    {
        if (!m_ending)
            return;
        const QDeadlineTimer limit(1000);
        while ((f->window->projectWorkspace() || (m_deed == "userExits"_L1 && f->window->isVisible()))
               && !limit.hasExpired())
            QTest::qWait(1);
    }

    void finishBuild()
    {
        QCoreApplication::processEvents();
        StubObjectState *tools = stub()->object(u"cc"_s);
        if (f->window->activity().state() == StateBuilding && tools && tools->buildEvents)
            tools->buildEvents->buildFinished(true);
    }

    void cancelStart() const
    {
        if (auto *dialog = f->window->findChild<QProgressDialog *>(u"startProgressDialog"_s))
            dialog->findChild<QPushButton *>()->click();
    }

    void finishStart() const
    {
        StubObjectState *sim = stub()->object(u"sim"_s);
        if (m_cancels)
            cancelStart();
        else if (sim && sim->progress) {
            const auto progress = shareInterface(sim->progress.get());
            sim->progress.reset();
            progress->finished(true, {});
        }
    }

    void startSession()
    {
        QTimer finish; // the build before the session
        connect(&finish, &QTimer::timeout, this, [this] {
            finishBuild();
            finishStart();
        });
        finish.start(1);
        f->window->debugRun();
    }

    void stopAt(IExecutionEnvironment::ProgramStatus status) const
    {
        QCoreApplication::processEvents();
        finishStart();
        if (StubObjectState *sim = stub()->object(u"sim"_s); sim && sim->executionEvents)
            sim->executionEvents->programStatusChanged(status);
    }

    /// Makes what was closed in a call available again, for the rest of the story.
    void reopen(bool debugging)
    {
        while (endsStory() && !f->window->projectWorkspace()) {
            m_ending = false;
            if (!f->window->isVisible())
                f->restart();
            f->window->openWorkspace(f->path(u"all.vnw"_s), false);
            waitForEnd();
        }
        if (!debugging || !endsStory() || f->window->activity().isDebugging())
            return;
        startSession();
        waitForEnd();
        if (f->window->activity().isDebugging())
            stopAt(IExecutionEnvironment::ProgramPaused);
        waitForEnd();
        if (!f->window->projectWorkspace())
            reopen(debugging);
    }

    /// A step is repeated after each call in which the workspace was closed.
    void take(bool debugging, const std::function<void()> &command)
    {
        qsizetype done = -1;
        while (done != m_done.size() && !QTest::currentTestFailed()) {
            reopen(debugging);
            done = m_done.size();
            if (!f->window->projectWorkspace() || (debugging && !f->window->activity().isDebugging()))
                return;
            command();
            finishBuild();
            waitForEnd();
            if (!endsStory())
                return;
        }
    }

    /// Opens the workspace, builds, debugs and closes. Commands that are not available now are skipped, as their
    /// actions are disabled.
    void story()
    {
        const auto step = [this](const std::function<void()> &command) { take(false, command); };
        const auto debugging = [this](const std::function<void()> &command) { take(true, command); };
        f->window->openWorkspace(f->path(u"all.vnw"_s), false);
        waitForEnd();
        step([&] { f->window->openFile(f->path(u"main.c"_s), false); });
        step([&] {
            m_typed = f->view();
            if (m_typed)
                f->type(u"typed "_s);
            if (m_deed == "userExits"_L1)
                f->window->fileSaveAll(); // so that there is no question
        });
        step([&] { f->window->buildBuild(); });
        step([&] { f->window->buildClean(); });
        step([&] { f->window->buildCompileFile(); });
        step([&] { f->window->projectRepopulate(); });
        step([&] { startSession(); });
        debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
        debugging([&] { showDebugWindows(); });
        debugging([&] { useRows(*f->window); });
        debugging([&] { f->window->debugToggleBreakpoint(); });
        debugging([&] { f->window->debugStepOver(); });
        debugging([&] { stopAt(IExecutionEnvironment::ProgramBreakpointHit); });
        debugging([&] { f->window->debugStepInto(); });
        debugging([&] { f->window->debugPause(); });
        debugging([&] { f->window->debugWakeup(); });
        debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
        debugging([&] { f->window->debugRunToCursor(); });
        debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
        debugging([&] { f->window->findChild<QAction *>(u"debugSetNext"_s)->trigger(); });
        debugging([&] { goToSymbol(); });
        debugging([&] { f->window->debugRestart(); });
        debugging([&] { f->window->debugViewDisassembly(); });
        debugging([&] { f->window->debugShowNext(); });
        debugging([&] { f->window->debugStop(); });
        step([&] {
            for (const QPointer<QMenu> &menu : menus(*f->window))
                useMenu(menu);
        });
        f->window->fileSaveAll();
        if (f->window->projectWorkspace())
            f->window->closeWorkspace();
        QCoreApplication::processEvents();
        f->window->viewManager()->closeAll();
    }

    void misbehaveInAStory()
    {
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        misbehaveInPendingCalls();
        story();
        for (const QString &call : std::as_const(m_done)) {
            m_pending.removeAll(call);
        }
        const QString where = m_deed + u": "_s + m_done.join(u' ');
        if (m_deed == "userExits"_L1) {
            prepareScripts();
            f->restart(); // as the user does
        }
        QVERIFY2(f->read(u"main.c"_s).contains("typed") == m_typed, qPrintable(where));
        QCOMPARE(f->window->activity().state(), StateNoWorkspace);
        QCOMPARE(stub()->objectCount(), 0);
    }

    void goToSymbol() const
    {
        QTimer::singleShot(0, f->window.get(), [] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (auto *edit = dialog ? dialog->findChild<QLineEdit *>() : nullptr) {
                edit->setText(u"main"_s);
                dialog->accept();
            }
        });
        f->window->viewGotoLine();
    }

    void showDebugWindows() const
    {
        MainWindow *window = f->window.get();
        window->debugToggleRegisterWindow(true);
        window->debugToggleMemoryWindow(true);
        window->debugTogglePeripheralWindow(true);
        window->debugToggleWatchWindow(true);
        for (const char *name : {"debugToggleCallStackWindow", "debugToggleVariablesWindow",
                                 "debugToggleBreakpointsWindow", "debugToggleProcessorWindow"}) {
            if (auto *action = window->findChild<QAction *>(QString::fromLatin1(name)); action && !action->isChecked())
                action->trigger();
        }
        if (auto *watches = window->findChild<MultiWatchWindow *>())
            watches->setWatches({{f->path(u"fw.vnp"_s), QJsonArray{u"counter"_s}}});
        QCoreApplication::processEvents();
        window->grab(); // the windows read what they paint
    }

private Q_SLOTS:
    void init()
    {
        m_background = false;
        m_cancels = false;
        m_ending = false;
        prepareScripts();
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        f = std::make_unique<WindowFixture>();
        f->installation.write(u"config/uiconfig.xml"_s,
                              R"(<ui><actions><action name="buildBuild"/><action name="debugRun"/><action
                              name="debugSetNext" slot="none"/></actions><menus>
                              <menu name="buildMenu"><action name="buildBuild"/></menu>
                              <menu name="debugMenu"><action name="debugRun"/></menu></menus></ui>)");
        f->restart();
        f->write(u"fw.vnp"_s, "<project buildenvironment='{cc}' executionenvironment='{sim}'><file path='main.c'/>"
                              "<properties currentconfiguration='Debug'><configuration name='Debug'/></properties>"
                              "</project>");
        f->writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s});
    }
    void cleanup()
    {
        for (const QString &feature : {u"{sim}"_s, u"{cc}"_s})
            stub()->script(feature).on.clear();
        f.reset();
    }

    void programSurvives_data()
    {
        QTest::addColumn<QString>("deed");
        for (const Deed &deed : deeds)
            QTest::newRow(deed.name) << QString::fromLatin1(deed.name);
    }

    /// Repeats the story until no further call is made. The last one shows that the program can do everything again
    /// with a plug-in that behaves.
    void programSurvives()
    {
        QFETCH(QString, deed);
        m_deed = deed;
        m_pending = allCalls();
        for (const auto &[background, cancels] : {std::pair(false, false), {true, false}, {true, true}}) {
            m_background = background;
            m_cancels = cancels;
            do
                misbehaveInAStory();
            while (!m_done.isEmpty() && !QTest::currentTestFailed());
        }
    }

    void exitDuringAMisbehavingSessionEndsTheProgram_data() { programSurvives_data(); }

    void exitDuringAMisbehavingSessionEndsTheProgram()
    {
        QFETCH(QString, deed);
        QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto restore = qScopeGuard([&] { qInstallMessageHandler(previous); });
        m_deed = deed;
        m_done.clear();
        QVERIFY(f->window->openWorkspace(f->path(u"all.vnw"_s), false));
        startSession();
        stopAt(IExecutionEnvironment::ProgramPaused);
        QVERIFY(f->window->activity().isDebugging());
        for (const QString &call : {u"stop"_s, u"canAttach"_s, u"breakpoints"_s, u"currentLocation"_s})
            stub()->script(u"{sim}"_s).on.insert(call, [this, call] { act(call); });
        QVERIFY(f->window->close());
        QCOMPARE(stub()->objectCount(), 0);
    }
};

int main(int argc, char **argv)
{
    ClosingPluginTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_closingplugin.moc"

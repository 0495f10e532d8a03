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
#include "outputpage.h"
#include "outputwindow.h"
#include "windowfixture.h"
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

const QString NotCalled = u"not called"_s;

/// What the plug-in does in a call.
struct Deed
{
    const char *name;
    const char *text;
};
const QList<Deed> deeds{{"throw", "throws an exception"},
                        {"slow", "answers late"},
                        {"loop", "runs an event loop of its own"},
                        {"report", "sends all reports, with an unreadable project among them"},
                        {"thread", "sends reports from another thread"},
                        {"close", "closes the workspace"},
                        {"userCloses", "runs an event loop, in which the user closes the workspace"},
                        {"userExits", "runs an event loop, in which the user ends the program"},
                        {"silent", "reports nothing until the user gives up"}};

/// Longer than the delays of the program's own timers, so that these are due when the call returns.
constexpr int SlowMilliseconds = 25;
/// Longer than all of these timers; for a few calls only.
constexpr int VerySlowMilliseconds = 5000;
} // namespace

/// A plug-in that does something wrong in each of its calls, while the user works, closes and exits.
class MisbehavingPluginTest : public QObject
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
    bool m_silent = false;     ///< the plug-in sends no reports any more
    int m_depth = 0;
    unsigned long m_slowness = SlowMilliseconds;
    QString m_shown;                                 ///< on the output pages
    QMap<QString, QMap<QString, QString>> m_results; ///< by call and deed
    inline static QSet<QString> reportedCalls;       ///< "Class::function", from which exceptions were caught

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

    static void sendReports()
    {
        if (StubObjectState *sim = stub()->object(u"sim"_s); sim && sim->executionEvents) {
            const auto events = shareInterface(sim->executionEvents.get());
            events->programStatusChanged(IExecutionEnvironment::ProgramPaused);
            events->statusInfo(u"text"_s, 1);
            events->breakpointsChanged();
            events->processorStatusChanged({});
            events->feedback(u"feedback\n"_s, {}, false);
        }
        if (StubObjectState *tools = stub()->object(u"cc"_s); tools && tools->buildEvents) {
            const auto events = shareInterface(tools->buildEvents.get());
            events->xmlFeedback(u"<project"_s);
            events->feedback(u"feedback\n"_s);
            events->buildFinished(false);
        }
    }

    /// The bad deed, the first time that the call is made in a story; exceptions are thrown each time.
    void act(const QString &call)
    {
        const bool first = !m_done.contains(call);
        if (m_depth > 0 || m_ending || m_silent || (!first && m_deed != "throw"_L1))
            return;
        if (first)
            m_done.append(call);
        m_ending = endsStory();
        ++m_depth;
        const auto end = qScopeGuard([this] { --m_depth; });
        if (m_deed == "throw"_L1)
            throw std::runtime_error("bad deed");
        if (m_deed == "slow"_L1)
            QThread::msleep(m_slowness);
        if (m_deed == "report"_L1)
            sendReports();
        if (m_deed == "close"_L1 && f->window && f->window->projectWorkspace())
            f->window->closeWorkspace();
        m_silent = m_deed == "silent"_L1;
        if (m_deed == "loop"_L1 || m_deed.startsWith(u"user"_s)) {
            QEventLoop loop;
            if (m_deed == "userCloses"_L1)
                QTimer::singleShot(0, f->window.get(), [this] { f->window->closeWorkspace(); });
            if (m_deed == "userExits"_L1)
                QTimer::singleShot(0, f->window.get(), [this] { f->window->close(); });
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
            loop.exec();
        }
        if (m_deed == "thread"_L1) {
            const std::unique_ptr<QThread> thread(QThread::create(&MisbehavingPluginTest::sendReports));
            thread->start();
            thread->wait();
        }
    }

    void misbehaveInPendingCalls()
    {
        m_done.clear();
        m_silent = false;
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

    [[nodiscard]] QString output() const
    {
        const OutputWindow *output = f->window->findChild<OutputWindow *>();
        return output->page(OutputWindow::Build)->toPlainText() + output->page(OutputWindow::Debug)->toPlainText();
    }

    /// A user whom a silent plug-in keeps waiting stops what runs, and closes the workspace if that has no effect.
    void finishBuild()
    {
        QCoreApplication::processEvents();
        if (m_silent) {
            giveUp();
            m_silent = false;
            return;
        }
        StubObjectState *tools = stub()->object(u"cc"_s);
        if (f->window->activity().state() == StateBuilding && tools && tools->buildEvents)
            tools->buildEvents->buildFinished(true);
    }

    void cancelStart() const
    {
        if (auto *dialog = f->window->findChild<QProgressDialog *>(u"startProgressDialog"_s))
            dialog->findChild<QPushButton *>()->click();
    }

    void giveUp() const
    {
        MainWindow *window = f->window.get();
        cancelStart();
        if (window->activity().state() == StateBuilding)
            window->buildStopBuild();
        if (window->activity().state() == StateBuilding)
            window->closeWorkspace();
    }

    void finishStart() const
    {
        StubObjectState *sim = stub()->object(u"sim"_s);
        if (m_cancels)
            cancelStart();
        else if (!m_silent && sim && sim->progress) {
            const auto progress = shareInterface(sim->progress.get());
            sim->progress.reset();
            progress->finished(true, {});
        }
    }

    void startSession(bool attach)
    {
        QTimer finish; // the build before the session
        connect(&finish, &QTimer::timeout, this, [this] {
            finishBuild();
            finishStart();
        });
        finish.start(1);
        attach ? f->window->debugAttach() : f->window->debugRun();
    }

    void stopAt(IExecutionEnvironment::ProgramStatus status) const
    {
        QCoreApplication::processEvents();
        finishStart();
        if (StubObjectState *sim = stub()->object(u"sim"_s); sim && sim->executionEvents && !m_silent)
            sim->executionEvents->programStatusChanged(status);
    }

    /// The result of a call in the words of the table.
    [[nodiscard]] QString resultOf(const QString &call) const
    {
        QStringList reported;
        for (const QString &operation : std::as_const(reportedCalls)) {
            if (operation.endsWith(u"::"_s + call))
                reported.append(u'`' + operation + u'`');
        }
        reported.sort();
        return m_deed == "throw"_L1 ? u"reported: "_s + reported.join(u", "_s) : u"the program goes on"_s;
    }

    static void noteException(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        static const QRegularExpression report(u"^(\\w+::\\w+): an exception has left the plug-in"_s);
        if (const auto match = report.match(message); match.hasMatch())
            reportedCalls.insert(match.captured(1));
    }

    [[nodiscard]] QString table() const
    {
        QString text = u"| call |"_s;
        QString line = u"|---|"_s;
        for (const Deed &deed : deeds) {
            text += u' ' + QString::fromLatin1(deed.text) + u" |"_s;
            line += u"---|"_s;
        }
        text += u'\n' + line + u'\n';
        for (const QString &call : allCalls()) {
            text += u"| `"_s + call + u"` |"_s;
            for (const Deed &deed : deeds)
                text += u' ' + m_results[call].value(QString::fromLatin1(deed.name), NotCalled) + u" |"_s;
            text += u'\n';
        }
        return text;
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
        startSession(false);
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
            m_shown += output();
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
        m_shown.clear();
        f->window->openWorkspace(f->path(u"all.vnw"_s), false);
        waitForEnd();
        m_shown += output();
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
        for (const bool attach : {false, true}) {
            if (attach && m_deed != "throw"_L1)
                break; // the other calls are the same
            step([&] { startSession(attach); });
            debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
            debugging([&] { showDebugWindows(); });
            debugging([&] { useRows(); });
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
        }
        step([&] {
            for (const QPointer<QMenu> &menu : menus(*f->window))
                useMenu(menu);
        });
        f->window->fileSaveAll();
        if (f->window->projectWorkspace())
            f->window->closeWorkspace();
        QCoreApplication::processEvents();
        f->window->viewManager()->closeAll();
        m_shown += output();
    }

    void misbehaveInAStory()
    {
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        misbehaveInPendingCalls();
        reportedCalls.clear();
        story();
        for (const QString &call : std::as_const(m_done)) {
            m_pending.removeAll(call);
            m_results[call][m_deed] = resultOf(call);
        }
        const QString where = m_deed + u": "_s + m_done.join(u' ');
        if (m_deed == "throw"_L1 && !m_done.isEmpty())
            QVERIFY2(m_shown.contains(u"The plug-in 'Stub' has failed in "_s), qPrintable(where));
        if (m_deed == "userExits"_L1) {
            prepareScripts();
            f->restart(); // as the user does
        }
        QVERIFY2(f->read(u"main.c"_s).contains("typed") == m_typed, qPrintable(where));
        QCOMPARE(f->window->activity().state(), StateNoWorkspace);
        QCOMPARE(stub()->objectCount(), 0);
    }

    static QList<QPointer<QMenu>> menus(const MainWindow &window)
    {
        const QList<QMenu *> menus = window.findChildren<QMenu *>();
        return {menus.cbegin(), menus.cend()};
    }

    /// Opens a menu, and chooses the plug-in's command in it.
    static void useMenu(const QPointer<QMenu> &menu)
    {
        if (menu)
            Q_EMIT menu->aboutToShow();
        const QList<QAction *> actions = menu ? menu->actions() : QList<QAction *>();
        for (const QPointer<QAction> action : actions) {
            if (action && action->text() == "Command"_L1)
                action->trigger();
        }
    }

    /// Opens rows of the debugger's lists, and chooses another function.
    void useRows() const
    {
        for (const char *name : {"callStack", "variables"}) {
            const QPointer<QTreeWidget> list = f->window->findChild<QTreeWidget *>(QString::fromLatin1(name));
            if (!list || !list->topLevelItem(0))
                continue;
            list->topLevelItem(0)->setExpanded(true);
            QCoreApplication::processEvents();
            if (list && list->topLevelItem(0))
                list->setCurrentItem(list->topLevelItem(0)->child(0));
            if (list)
                QTest::keyClick(list, Qt::Key_Return);
            QCoreApplication::processEvents();
        }
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
        m_silent = false;
        m_ending = false;
        m_slowness = SlowMilliseconds;
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
        const QtMessageHandler previous = qInstallMessageHandler(&MisbehavingPluginTest::noteException);
        const auto restore = qScopeGuard([&] { qInstallMessageHandler(previous); });
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

    void callOfFiveSecondsOnlyKeepsTheUserWaiting_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"start", "currentLocation", "stop"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void callOfFiveSecondsOnlyKeepsTheUserWaiting()
    {
        QFETCH(QString, call);
        m_deed = u"slow"_s;
        m_slowness = VerySlowMilliseconds;
        m_pending = QStringList{call};
        misbehaveInAStory();
        QCOMPARE(m_done, QStringList{call});
    }

    /// The documentation contains the results. With VARNEL_WRITE_DOCS this writes them.
    void tableOfResultsIsDocumented()
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-misbehaviour.md"));
        const bool writes = qEnvironmentVariableIsSet("VARNEL_WRITE_DOCS");
        QVERIFY(file.open(writes ? QIODevice::ReadWrite : QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const qsizetype start = text.indexOf(u"| call |"_s);
        QVERIFY(start > 0);
        if (m_results.isEmpty() || m_results.first().size() < deeds.size())
            QSKIP("the other functions of this test were not run");
        if (writes) {
            file.resize(0);
            file.seek(0);
            file.write((text.left(start) + table()).toUtf8());
        } else {
            QCOMPARE(text.mid(start).split(u'\n'), table().split(u'\n'));
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
        startSession(false);
        stopAt(IExecutionEnvironment::ProgramPaused);
        QVERIFY(f->window->activity().isDebugging());
        for (const QString &call : {u"stop"_s, u"canAttach"_s, u"delete"_s, u"breakpoints"_s, u"currentLocation"_s})
            stub()->script(u"{sim}"_s).on.insert(call, [this, call] {
                if (call != "delete"_L1 || m_deed == "report"_L1) // a destructor must not throw
                    act(call);
            });
        QVERIFY(f->window->close());
        QCOMPARE(stub()->objectCount(), 0);
    }
};

int main(int argc, char **argv)
{
    MisbehavingPluginTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_misbehavingplugin.moc"

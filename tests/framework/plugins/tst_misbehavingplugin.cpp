#include "activity.h"
#include "callsofplugins.h"
#include "listview.h"
#include "memorywindow.h"
#include "multiwatchwindow.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "peripheralwidget.h"
#include "pluginmisdeeds.h"
#include "projectproperties.h"
#include "propertylist.h"
#include "rateswitch.h"
#include "windowfixture.h"
#include "windowuser.h"
#include <algorithm>
#include <QDeadlineTimer>
#include <QHelpEvent>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPluginLoader>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
const QString NotCalled = u"not called"_s;
const QString NoMeaning = u"–"_s;

/// Longer than the delays of the program's own timers, so that these are due when the call returns.
constexpr int SlowMilliseconds = 25;
/// Longer than all of these timers; for one call only.
constexpr int VerySlowMilliseconds = 5000;

/// Uses what scripts can use of a processor. Each statement may fail, and may close the workspace.
constexpr const char *Script = R"py(
from varnel import app

def processor():
    return app.debugger.processors['fw']

def memory():
    memory = processor().memory
    memory.currentRegion = 'RAM'
    memory.currentMode = 'Byte'
    return memory

for statement in '''
processor().processorStatus, processor().programStatus
processor().extension
processor().currentProgramLocation
processor().evaluate('counter')
processor().getSymbolAddress('main')
processor().getSourceLines(0x100)
processor().getSourceAddress('main.c', 2)
processor().getSymbol(0x100)
processor().registers.keys, processor().registers['r0']
processor().registers['r0'] = 5
processor().peripherals.keys, processor().peripherals['UART']['DR']
processor().peripherals['UART']['DR'] = 5
memory()[0x100]
memory()[0x100:0x104]
memory().disassemble(0x100)
memory()[0x100] = 1
memory()[0x100:0x102] = [1, 2]
memory().verify
memory().verify = 1
'''.strip().splitlines():
    try:
        exec(statement)
    except Exception:
        pass
)py";
} // namespace

/// A plug-in that does something wrong in each of its calls, while the user works, closes and exits.
class MisbehavingPluginTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowFixture> f;
    QString m_deed;
    QSet<QString> m_pending; ///< calls in which the deed was not done yet
    QStringList m_done;      ///< those in which it was done in this story
    OfferedInterfaces m_offered = OfferedInterfaces::Simple;
    bool m_cancels = false; ///< the user cancels starts in the background
    bool m_typed = false;   ///< the workspace was open long enough
    bool m_silent = false;  ///< the plug-in sends no reports any more
    int m_depth = 0;
    unsigned long m_slowness = SlowMilliseconds;
    QString m_shown;                           ///< on the output pages
    QMap<QString, QString> m_results;          ///< of the deed, by call
    inline static QSet<QString> reportedCalls; ///< from which exceptions were caught

    /// The bad deed, the first time that the call is made in a story; exceptions are thrown each time.
    void act(const QString &call)
    {
        if (!m_pending.contains(call))
            return;
        const bool first = !m_done.contains(call);
        if (m_depth > 0 || m_silent || (!first && m_deed != "throw"_L1))
            return;
        if (first)
            m_done.append(call);
        const bool hasWindow = f && f->window; // not while the program starts
        ++m_depth;
        const auto end = qScopeGuard([this] { --m_depth; });
        if (m_deed == "throw"_L1)
            throw std::runtime_error("bad deed");
        if (m_deed == "slow"_L1)
            QThread::msleep(m_slowness);
        if (m_deed == "null"_L1 || m_deed == "empty"_L1)
            stub()->hooks().result = m_deed == "null"_L1 ? StubHooks::Null : StubHooks::Empty;
        if (m_deed == "report"_L1)
            sendAllReports();
        if (m_deed == "host"_L1 && hasWindow)
            callAllServices(f->path(u"other.c"_s));
        m_silent = m_deed == "silent"_L1 && hasWindow;
        if (m_deed == "loop"_L1) {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
            loop.exec();
        }
        if (m_deed == "thread"_L1) {
            const std::unique_ptr<QThread> thread(QThread::create(&sendAllReports));
            thread->start();
            thread->wait();
        }
    }

    void misbehaveInPendingCalls()
    {
        m_done.clear();
        m_silent = false;
        m_typed = false;
        prepareMisbehavingScripts(m_offered);
        StubScript &sim = stub()->script(u"{sim}"_s);
        sim.sourceLines.insert(0x101, {f->path(u"main.c"_s), 2}); // as it is looked up
        sim.symbols.insert(u"function"_s, 0x101);
        sim.wideLines.insert(0x101, {f->path(u"main.c"_s), 2});
        sim.wideSymbols.insert(u"function"_s, 0x101);
        stub()->hooks().onCall = [this](const QString &call) { act(call); };
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
        if (m_deed != "throw"_L1)
            return u"goes on"_s;
        if (reportedCalls.contains(call))
            return u"reported"_s;
        return reportedCalls.contains(u"PluginManager::loadLibrary"_s) ? u"reported with the path of the library"_s
                                                                       : u"not reported"_s;
    }

    static void noteException(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        static const QRegularExpression report(u"^(\\w+::\\w+)(?: \\(.*\\))?: an exception has left the plug-in"_s);
        if (const auto match = report.match(message); match.hasMatch())
            reportedCalls.insert(match.captured(1));
    }

    /// What the table of the documentation has to contain for the deed, by call.
    [[nodiscard]] QMap<QString, QString> column() const
    {
        QMap<QString, QString> cells;
        for (const PluginCallInfo &call : callsOfPlugins()) {
            const bool hasMeaning = m_deed == "null"_L1    ? call.hasPointer
                                    : m_deed == "empty"_L1 ? call.hasResult
                                                           : !call.isReserved;
            cells.insert(call.name, hasMeaning ? m_results.value(call.name, NotCalled) : NoMeaning);
        }
        return cells;
    }

    /// With a second processor if they can act together.
    [[nodiscard]] QString workspaceFile() const
    {
        return f->path(m_offered == OfferedInterfaces::Wide ? u"two.vnw"_s : u"all.vnw"_s);
    }

    /// Commands that are not available now are skipped, as their actions are disabled.
    void take(bool debugging, const std::function<void()> &command)
    {
        if (!f->window->projectWorkspace() || (debugging && !f->window->activity().isDebugging()))
            return;
        command();
        finishBuild();
        m_shown += output();
    }

    /// Opens the workspace, builds, debugs and closes. Commands that are not available now are skipped, as their
    /// actions are disabled.
    void story()
    {
        const auto step = [this](const std::function<void()> &command) { take(false, command); };
        const auto debugging = [this](const std::function<void()> &command) { take(true, command); };
        m_shown.clear();
        f->window->openWorkspace(workspaceFile(), false);
        m_shown += output();
        step([&] { f->window->openFile(f->path(u"main.c"_s), false); });
        step([&] {
            f->window->openFile(f->path(u"main.c"_s), false); // the plug-in may have opened another one
            m_typed = f->view() && f->document()->filename() == f->path(u"main.c"_s);
            if (m_typed)
                f->type(u"typed "_s);
        });
        step([&] { f->window->buildBuild(); });
        step([&] {
            f->window->buildRebuild();
            f->window->buildStopBuild();
        });
        step([&] { f->window->buildClean(); });
        step([&] { f->window->buildCompileFile(); });
        step([&] { f->window->projectRepopulate(); });
        step([&] { f->window->projectGenerateMakefile(); });
        step([&] { f->window->projectProperties(); });
        step([&] { acceptOptions(); });
        step([&] { cancelProgress(); });
        step([&] { changeProject(); });
        for (const bool attach : {false, true}) {
            if (attach && m_deed != "throw"_L1)
                break; // the other calls are the same
            step([&] { startSession(attach); });
            debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
            debugging([&] { showDebugWindows(); });
            debugging([&] { useRows(*f->window); });
            debugging([&] { changeValues(); });
            debugging([&] { f->window->runPyFile(f->path(u"use.py"_s)); });
            debugging([&] { readWhileRunning(); });
            debugging([&] { stopAt(IExecutionEnvironment::ProgramPaused); });
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
            m_pending.remove(call);
            m_results[call] = resultOf(call);
        }
        const QString where = m_deed + u": "_s + m_done.join(u' ');
        if (m_deed == "throw"_L1 && !m_done.isEmpty())
            QVERIFY2(m_shown.contains(u"The plug-in 'Stub' has failed in "_s), qPrintable(where));
        QVERIFY2(f->read(u"main.c"_s).contains("typed") == m_typed, qPrintable(where));
        QCOMPARE(f->window->activity().state(), StateNoWorkspace);
        if (stub()->objectCount() > 0 && m_deed == "host"_L1)
            f->restart(); // documents that the plug-in has opened may refer to it until then
        QVERIFY2(stub()->objectCount() == 0, qPrintable(where));
    }

    /// Changes what the windows show, each by the function that the user's input calls.
    void changeValues() const
    {
        if (auto *memory = f->window->findChild<MemoryWindow *>()) {
            for (int index = 0; index < 16; ++index) // addresses are wide or narrow
                memory->hexChanged(0, index, 1);
            memory->userUpdateMemory();
        }
        if (auto *peripherals = f->window->findChild<PeripheralWidget *>())
            usePeripherals(peripherals);
        const QPointer<ListView> variables =
            qobject_cast<ListView *>(f->window->findChild<QTreeWidget *>(u"variables"_s));
        if (!variables || !variables->topLevelItem(0))
            return;
        variables->setCurrentItem(variables->topLevelItem(0));
        QTest::keyClick(variables, Qt::Key_F2);
        if (QLineEdit *edit = variables ? variables->renameEdit() : nullptr) {
            edit->setText(u"5"_s);
            QTest::keyClick(edit, Qt::Key_Return);
        }
        QCoreApplication::processEvents();
    }

    static void usePeripherals(PeripheralWidget *widget)
    {
        const QPointer<PropertyList> list = widget->findChild<PropertyList *>();
        QTreeWidgetItem *peripheral = list ? list->topLevelItem(0) : nullptr;
        if (!peripheral)
            return;
        const QPoint point = list->visualItemRect(peripheral).center();
        QHelpEvent tip(QEvent::ToolTip, point, list->viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(list->viewport(), &tip);
        if (list && list->topLevelItem(0)) // the register of a single peripheral
            widget->readNow(static_cast<PropertyItem *>(list->topLevelItem(0)));
    }

    /// Switches the windows to reading while the program runs, and lets it run until they have done so once.
    void readWhileRunning() const
    {
        for (RateSwitch *live : f->window->findChildren<RateSwitch *>())
            live->setChecked(true);
        if (auto *watches = f->window->findChild<MultiWatchWindow *>())
            watches->update();
        if (!f->window->projectWorkspace())
            return;
        f->window->debugRun();
        stub()->script(u"{sim}"_s).programStatus = IExecutionEnvironment::ProgramRunning;
        const QList<RateSwitch *> switches = f->window->findChildren<RateSwitch *>();
        for (const QPointer<RateSwitch> &live : QList<QPointer<RateSwitch>>(switches.cbegin(), switches.cend())) {
            if (live)
                Q_EMIT live->tick();
        }
        stub()->script(u"{sim}"_s).programStatus = IExecutionEnvironment::ProgramPaused;
    }

    /// Presses OK in the dialog of options, which has a page of the plug-in.
    void acceptOptions() const
    {
        QTimer::singleShot(0, f->window.get(), [] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                dialog->accept();
        });
        f->window->toolsOptions();
    }

    void cancelProgress() const
    {
        for (QToolButton *button : f->window->statusBar()->findChildren<QToolButton *>()) {
            if (button->parentWidget()->objectName().startsWith(u"PluginProgress"_s) && button->isEnabled())
                return button->click();
        }
    }

    /// Changes files, a property and the configurations of the project, and which project is current.
    void changeProject() const
    {
        const QPointer<Project> project = f->window->activity().projects().first();
        if (project)
            project->addFiles({f->path(u"new.c"_s)}, nullptr);
        if (project)
            project->properties()->setProperty(u"key"_s, QString::number(m_done.size()), u"Debug"_s);
        if (project)
            project->setCurrentConfiguration(project->currentConfiguration() == "Debug"_L1 ? u"Release"_s : u"Debug"_s);
        for (const int current : {1, 0}) {
            if (ProjectWorkspace *workspace = f->window->projectWorkspace())
                workspace->setCurrentProject(std::min(current, int(f->window->activity().projects().size()) - 1));
        }
        if (project)
            (void)project->save();
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

    /// The table of the documentation as its cells, by call and deed. The first row contains the texts of the deeds.
    struct Table
    {
        QString head; ///< the text before it
        QMap<QString, QMap<QString, QString>> cells;
        QStringList calls; ///< in the order of the rows
    };

    static QString documentation() { return QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-misbehaviour.md"); }

    static Table readTable()
    {
        QFile file(documentation());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        const QString text = QString::fromUtf8(file.readAll());
        const qsizetype start = text.indexOf(u"| call |"_s);
        Table table{text.left(start), {}, {}};
        QStringList rows = text.mid(start).split(u'\n', Qt::SkipEmptyParts);
        const QStringList deeds = cellsOf(rows.value(0)).mid(1);
        for (const QString &row : rows.mid(2)) {
            const QStringList cells = cellsOf(row);
            const QString call = QString(cells[0]).remove(u'`');
            table.calls.append(call);
            for (const PluginDeed &deed : pluginDeeds)
                table.cells[call][QString::fromLatin1(deed.name)] =
                    cells.value(deeds.indexOf(QString::fromLatin1(deed.text)) + 1);
        }
        return table;
    }

    static QStringList cellsOf(const QString &row)
    {
        QStringList cells;
        for (const QString &cell : row.split(u'|').mid(1))
            cells.append(cell.trimmed());
        return cells;
    }

    static void writeTable(const Table &table)
    {
        QString text = table.head + u"| call |"_s;
        QString line = u"|---|"_s;
        for (const PluginDeed &deed : pluginDeeds) {
            text += u' ' + QString::fromLatin1(deed.text) + u" |"_s;
            line += u"---|"_s;
        }
        text += u'\n' + line + u'\n';
        for (const PluginCallInfo &call : callsOfPlugins()) {
            text += u"| `"_s + call.name + u"` |"_s;
            for (const PluginDeed &deed : pluginDeeds)
                text += u' ' + table.cells[call.name].value(QString::fromLatin1(deed.name)) + u" |"_s;
            text += u'\n';
        }
        QFile file(documentation());
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    /// The documentation contains the results of the deed. With VARNEL_WRITE_DOCS this writes them.
    void compareWithDocumentation() const
    {
        Table table = readTable();
        const QMap<QString, QString> results = column();
        if (qEnvironmentVariableIsSet("VARNEL_WRITE_DOCS")) {
            for (auto result = results.cbegin(); result != results.cend(); ++result)
                table.cells[result.key()][m_deed] = result.value();
            writeTable(table);
        }
        for (auto result = results.cbegin(); result != results.cend(); ++result)
            QCOMPARE(result.key() + u": "_s + table.cells[result.key()].value(m_deed),
                     result.key() + u": "_s + result.value());
    }

    /// Misbehaves while the program starts.
    void misbehaveAtStart()
    {
        m_offered = OfferedInterfaces::Simple;
        f.reset();
        do {
            m_done.clear();
            reportedCalls.clear();
            prepareMisbehavingScripts(m_offered);
            stub()->hooks().onCall = [this](const QString &call) { act(call); };
            showSplashScreen();
            makeWindow();
            stub()->hooks() = {};
            QVERIFY2(f->window->isVisible(), qPrintable(m_done.join(u' ')));
            for (const QString &call : std::as_const(m_done)) {
                m_pending.remove(call);
                m_results[call] = resultOf(call);
            }
            f.reset();
        } while (!m_done.isEmpty() && !QTest::currentTestFailed());
    }

    /// Shows the logos of the plug-ins.
    static void showSplashScreen()
    {
        const Installation installation;
        installation.copy(QStringLiteral(TESTBRANDING), u"bin/libbranding.so"_s);
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        Arguments arguments;
        const IDEApplication application(arguments.count(), arguments.values(), installation.paths());
    }

    void makeWindow()
    {
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        f = std::make_unique<WindowFixture>();
        f->installation.write(u"config/uiconfig.xml"_s,
                              R"(<ui><actions><action name="buildBuild"/><action name="debugRun"/><action
                              name="debugSetNext" slot="none"/></actions><menus>
                              <menu name="buildMenu"><action name="buildBuild"/></menu>
                              <menu name="debugMenu"><action name="debugRun"/></menu></menus></ui>)");
        f->restart();
        const QByteArray contents = "<file path='main.c'/><properties currentconfiguration='Debug'><configuration "
                                    "name='Debug'/><configuration name='Release'/></properties></project>";
        f->write(u"fw.vnp"_s, "<project buildenvironment='{cc}' executionenvironment='{sim}'>" + contents);
        f->write(u"two.vnp"_s, "<project executionenvironment='{two}'>" + contents);
        f->writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s});
        f->writeWorkspace(u"two.vnw"_s, {u"fw.vnp"_s, u"two.vnp"_s});
        f->write(u"other.c"_s, "one\ntwo\nthree\n");
        f->write(u"use.py"_s, Script);
    }

private Q_SLOTS:
    void init()
    {
        m_offered = OfferedInterfaces::Simple;
        m_cancels = false;
        m_silent = false;
        m_slowness = SlowMilliseconds;
        m_results.clear();
        prepareMisbehavingScripts(m_offered);
        makeWindow();
    }
    void cleanup()
    {
        stub()->hooks() = {};
        f.reset();
    }

    void tableContainsAllCalls()
    {
        QStringList calls;
        for (const PluginCallInfo &call : callsOfPlugins())
            calls.append(call.name);
        QVERIFY(calls.size() > 100);
        QCOMPARE(readTable().calls, calls);
    }

    void programSurvives_data()
    {
        QTest::addColumn<QString>("deed");
        for (const PluginDeed &deed : pluginDeeds)
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
        m_pending.clear();
        for (const PluginCallInfo &call : callsOfPlugins()) {
            if (deed == "null"_L1 ? call.hasPointer : deed == "empty"_L1 ? call.hasResult : true)
                m_pending.insert(call.name);
        }
        misbehaveAtStart();
        makeWindow();
        using enum OfferedInterfaces;
        for (const auto &[offered, cancels] : {std::pair(Simple, false), {Wide, false}, {Wide, true}}) {
            m_offered = offered;
            m_cancels = cancels;
            do
                misbehaveInAStory();
            while (!m_done.isEmpty() && !QTest::currentTestFailed());
        }
        compareWithDocumentation();
    }

    void callOfFiveSecondsOnlyKeepsTheUserWaiting_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"IExecutionEnvironment::currentLocation"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void callOfFiveSecondsOnlyKeepsTheUserWaiting()
    {
        QFETCH(QString, call);
        m_deed = u"slow"_s;
        m_slowness = VerySlowMilliseconds;
        m_pending = {call};
        misbehaveInAStory();
        QCOMPARE(m_done, QStringList{call});
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
        QVERIFY(f->window->openWorkspace(workspaceFile(), false));
        startSession(false);
        stopAt(IExecutionEnvironment::ProgramPaused);
        QVERIFY(f->window->activity().isDebugging());
        m_pending = {u"IExecutionEnvironment::stop"_s, u"IExecutionEnvironment::canAttach"_s,
                     u"IBreakpoints::breakpoints"_s, u"IExecutionEnvironment::currentLocation"_s};
        stub()->hooks().onCall = [this](const QString &call) { act(call); };
        if (m_deed == "report"_L1) // a destructor must not throw
            stub()->script(u"{sim}"_s).on[u"delete"_s] = &sendAllReports;
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

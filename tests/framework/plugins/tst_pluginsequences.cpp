#include "activity.h"
#include "callsofplugins.h"
#include "memorywindow.h"
#include "multiwatchwindow.h"
#include "peripheralwidget.h"
#include "pluginmisdeeds.h"
#include "projectproperties.h"
#include "propertylist.h"
#include "rateswitch.h"
#include "windowfixture.h"
#include <algorithm>
#include <QDockWidget>
#include <QHelpEvent>
#include <QJsonArray>
#include <QLineEdit>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
/// Replaces equal lines behind each other by one with their number.
QStringList collapsed(const QStringList &lines)
{
    QStringList result;
    for (qsizetype at = 0; at < lines.size();) {
        qsizetype next = at;
        while (next < lines.size() && lines[next] == lines[at])
            ++next;
        result.append(next - at > 1 ? lines[at] + u" (%1 times)"_s.arg(next - at) : lines[at]);
        at = next;
    }
    return result;
}
} // namespace

/// The charts of docs/plugin-sequences.md are what the program does.
class PluginSequencesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowFixture> f;
    QStringList m_chart;

    /// The interfaces that a story needs besides the ones that all have.
    static QSet<QUuid> offersOf(const QString &story)
    {
        static const QHash<QString, QSet<QUuid>> offers{
            {u"commands"_s, {IExtensionCommands::Iid}},
            {u"docks"_s, {IDockExtension::Iid}},
            {u"background"_s, {IProgressiveStart::Iid}},
            {u"stack"_s, {ICallStack::Iid, IVariables::Iid}},
            {u"peripherals"_s, {IPeripherals::Iid, IPeripheralFields::Iid}},
            {u"details"_s, {IBreakpointDetails::Iid}},
            {u"live"_s, {ILiveMemory::Iid}},
            {u"next"_s, {INextStatement::Iid, ISourceMapping::Iid, ISymbolLookup::Iid, IWakeUp::Iid}},
            {u"disassembly"_s, {IDisassembly::Iid, IDisassemblyAddress::Iid, IDisassemblyFetch::Iid}},
            {u"wide"_s, {IMemory64::Iid, ISymbols64::Iid}},
            {u"scripts"_s, {IMemoryVerify::Iid, IDisassembly::Iid}},
            {u"requests"_s, {IMemoryRequests::Iid, IRegisterRequests::Iid, IEvaluationRequests::Iid}},
            {u"sync"_s, {IMultiProcessorSync::Iid}}};
        return offers.value(story);
    }

    /// The full workspace of the misbehaving plug-in, with the interfaces of the story only.
    static void prepareRichScripts(const QString &story)
    {
        prepareMisbehavingScripts(OfferedInterfaces::Simple);
        StubScript &fw = stub()->script(u"{sim}"_s);
        StubScript &cc = stub()->script(u"{cc}"_s);
        fw.label = u"fw"_s;
        fw.offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid, IMemory::Iid, IRegisters::Iid};
        fw.offers += offersOf(story);
        fw.usesHost = story == "host"_L1;
        fw.peripheralDetails[u"DR"_s].fields = {{u"READY"_s, 0, 1, true, false, {}, {}}};
        fw.canAttach = false;
        if (story == "disassembly"_L1) // so that the window shows all of it
            fw.regions = {{u"ROM"_s, 1, 0, 0, 0x100, 0x103, true, IMemory::Byte}};
        fw.widgets = [] {
            auto *widget = new QWidget;
            widget->setWindowTitle(u"Probe"_s);
            return QList<QWidget *>{widget};
        };
        cc.offers = {IBuildEnvironment::Iid, IDebugBuild::Iid};
        if (fw.usesHost)
            fw.offers += IWorkspaceClient::Iid;
        if (story == "commands"_L1)
            cc.offers += IExtensionCommands::Iid;
        if (story == "project"_L1)
            cc.offers += {IProjectPopulate::Iid, IPropertyDefinitions::Iid, IMakefileGenerator::Iid};
        stub()->hooks().recordsAll = true;
    }

    static void prepareScripts(bool second)
    {
        stub()->reset();
        for (const QString &name : second ? QStringList{u"fw"_s, u"two"_s} : QStringList{u"fw"_s}) {
            StubScript &fw = stub()->script(u'{' + name + u'}');
            fw.label = name;
            fw.offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid, IMemory::Iid, IRegisters::Iid,
                         IWorkspaceClient::Iid};
            fw.location = {u"main.c"_s, 2};
            fw.regions = {{u"RAM"_s, 1, 0, 0, 0x100, 0x1ff, false, IMemory::Byte}};
            fw.registers = {{u"r0"_s, 32, {}, 4, 4, {}, false}};
            if (second)
                fw.offers << IMultiProcessorSync::Iid;
            fw.group = u"probe"_s;
            fw.syncOperations = 0xf000f;
        }
        StubScript &cc = stub()->script(u"{cc}"_s);
        cc.label = u"cc"_s;
        cc.offers = {IBuildEnvironment::Iid, IDebugBuild::Iid, IWorkspaceClient::Iid};
    }

    static void startBuildsBeforeSessions()
    {
        stub()->script(u"{cc}"_s).on[u"buildForDebug"_s] = [] {
            QTimer::singleShot(0, qApp, [] { stub()->object(u"cc"_s)->buildEvents->buildFinished(true); });
        };
    }

    /// Windows are refreshed some time after a report.
    bool isRefreshDue() const
    {
        const QList<QTimer *> timers = f->window->findChildren<QTimer *>();
        return std::ranges::any_of(timers, [](const QTimer *timer) {
            return timer->isActive() && timer->isSingleShot() && timer->interval() < 1000;
        });
    }

    void takeCalls()
    {
        const QDeadlineTimer limit(5000);
        do { // answers come from the event loop, and may lead to refreshes
            for (int round = 0; round < 20; ++round)
                QCoreApplication::processEvents();
        } while (isRefreshDue() && !limit.hasExpired());
        static const QRegularExpression address(u"0x[0-9a-f]+"_s);
        // numbers of what a window shows, which depends on the font, and times
        static const QRegularExpression size(
            u"((?:readBlock|readLive|requestMemory)\\(\\d+, \\d+, \\d+|fetch\\(\\d+), \\d+"_s);
        const QStringList calls = stub()->takeCalls();
        for (QString call : calls)
            m_chart.append(
                u"    "_s
                + call.replace(f->path(QString()), u"PROJECT"_s).replace(address, u"…"_s).replace(size, u"\\1, …"_s));
    }
    void user(const QString &deed, const std::function<void()> &act)
    {
        m_chart.append(u"User: "_s + deed);
        act();
        takeCalls();
    }
    void report(IExecutionEnvironment::ProgramStatus status, const QString &name)
    {
        m_chart.append(u"Plug-in: programStatusChanged(%1)"_s.arg(name));
        stub()->object(u"fw"_s)->executionEvents->programStatusChanged(status);
        takeCalls();
    }
    void finishBuild()
    {
        m_chart.append(u"Plug-in: buildFinished(true)"_s);
        stub()->object(u"cc"_s)->buildEvents->buildFinished(true);
        takeCalls();
    }
    void openWorkspace()
    {
        user(u"opens the workspace"_s, [this] { QVERIFY(f->window->openWorkspace(f->path(u"all.vnw"_s), false)); });
    }
    void openFile()
    {
        user(u"opens main.c"_s, [this] { f->window->openFile(f->path(u"main.c"_s), false); });
    }
    void startSession()
    {
        user(u"starts the debugger (F5)"_s, [this] { f->window->debugRun(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
    }

    /// Shows a window of the debugger that has an action.
    void show(const QString &action) const
    {
        if (auto *shows = f->window->findChild<QAction *>(action); shows && !shows->isChecked())
            shows->trigger();
        QCoreApplication::processEvents();
        f->window->grab();
    }
    void openMenus() const
    {
        const QList<QMenu *> menus = f->window->findChildren<QMenu *>();
        for (const QPointer<QMenu> &menu : QList<QPointer<QMenu>>(menus.cbegin(), menus.cend())) {
            if (menu)
                Q_EMIT menu->aboutToShow();
        }
    }
    QTreeWidget *list(const QString &name) const { return f->window->findChild<QTreeWidget *>(name); }

    // The stories

    void documents()
    {
        user(u"starts the program"_s, [this] { f->restart(); });
    }
    void commands()
    {
        user(u"opens the menus \"Build\" and \"Debug\""_s, [this] { openMenus(); });
        user(u"chooses both commands"_s, [this] {
            for (QAction *action : f->window->findChildren<QAction *>()) {
                if (action->text() == "Command"_L1)
                    action->trigger();
            }
        });
    }
    void docks() { openWorkspace(); }
    void project()
    {
        user(u"adds the missing files (Repopulate)"_s, [this] { f->window->projectRepopulate(); });
        user(u"opens the properties"_s, [this] { f->window->projectProperties(); });
        user(u"generates a Makefile"_s, [this] { f->window->projectGenerateMakefile(); });
    }
    void background()
    {
        const auto later = [this](const std::function<void()> &act) {
            QTimer::singleShot(0, f->window.get(), [this, act] {
                takeCalls();
                act();
            });
        };
        user(u"starts the debugger (F5)"_s, [&] {
            stub()->script(u"{sim}"_s).on[u"startInBackground"_s] = [&] {
                later([this] {
                    m_chart.append(u"Plug-in: progress(Loading, 50)"_s);
                    const auto progress = shareInterface(stub()->object(u"fw"_s)->progress.get());
                    progress->progress(u"Loading"_s, 50);
                    m_chart.append(u"Plug-in: finished(true)"_s);
                    progress->finished(true, {});
                });
            };
            f->window->debugRun();
        });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
        user(u"stops the session"_s, [this] { f->window->debugStop(); });
        user(u"starts again and cancels"_s, [&] {
            stub()->script(u"{sim}"_s).on[u"startInBackground"_s] = [&] {
                later([this] {
                    auto *dialog = f->window->findChild<QProgressDialog *>(u"startProgressDialog"_s);
                    QVERIFY(dialog);
                    dialog->findChild<QPushButton *>()->click();
                });
            };
            f->window->debugRun();
        });
    }
    void stack()
    {
        user(u"shows the call stack and the variables"_s, [this] {
            show(u"debugToggleCallStackWindow"_s);
            show(u"debugToggleVariablesWindow"_s);
        });
        startSession();
        user(u"opens the members of a variable"_s,
             [this] { list(u"variables"_s)->topLevelItem(1)->setExpanded(true); });
        user(u"chooses another function"_s, [this] {
            list(u"callStack"_s)->setCurrentItem(list(u"callStack"_s)->topLevelItem(0)->child(0));
            QTest::keyClick(list(u"callStack"_s), Qt::Key_Return);
        });
    }
    void peripherals()
    {
        startSession();
        user(u"shows the peripherals"_s, [this] {
            f->window->debugTogglePeripheralWindow(true);
            f->window->grab();
        });
        auto *widget = f->window->findChild<PeripheralWidget *>();
        user(u"points at a register"_s, [&] {
            auto *list = widget->findChild<PropertyList *>();
            const QPoint point = list->visualItemRect(list->topLevelItem(0)).center();
            QHelpEvent tip(QEvent::ToolTip, point, list->viewport()->mapToGlobal(point));
            QCoreApplication::sendEvent(list->viewport(), &tip);
        });
        user(u"reads it by its context menu"_s, [&] {
            widget->readNow(static_cast<PropertyItem *>(widget->findChild<PropertyList *>()->topLevelItem(0)));
        });
    }
    void details()
    {
        user(u"shows the breakpoints"_s, [this] { show(u"debugToggleBreakpointsWindow"_s); });
        user(u"closes the workspace"_s, [this] { f->window->closeWorkspace(); });
        stub()->script(u"{sim}"_s).dataBreakpoints.clear(); // a new object has none
        openWorkspace();
    }
    void requests()
    {
        startSession();
        user(u"shows the memory"_s, [this] {
            f->window->debugToggleMemoryWindow(true);
            f->window->grab();
        });
        user(u"watches an expression"_s, [this] {
            auto *dock = f->window->findChild<QDockWidget *>(u"watchDockWindow"_s);
            dock->show();
            dock->raise();
            QCoreApplication::processEvents();
            f->window->findChild<MultiWatchWindow *>()->setWatches({{f->path(u"fw.vnp"_s), QJsonArray{u"counter"_s}}});
            f->window->grab();
        });
        user(u"steps over a line (F10)"_s, [this] { f->window->debugStepOver(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
    }
    void live()
    {
        startSession();
        user(u"switches the memory window to \"Live\""_s, [this] {
            f->window->debugToggleMemoryWindow(true);
            f->window->grab();
            auto *rate = f->window->findChild<MemoryWindow *>()->findChild<RateSwitch *>();
            rate->setChecked(true);
            rate->findChild<QTimer *>()->setInterval(std::chrono::hours(1)); // the story reads when it wants to
        });
        user(u"continues (F5)"_s, [this] { f->window->debugRun(); });
        stub()->script(u"{sim}"_s).programStatus = IExecutionEnvironment::ProgramRunning;
        user(u"waits for the next reading"_s,
             [this] { Q_EMIT f->window->findChild<MemoryWindow *>()->findChild<RateSwitch *>()->tick(); });
    }
    void next()
    {
        user(u"shows the list of processors"_s, [this] { show(u"debugToggleProcessorWindow"_s); });
        startSession();
        user(u"goes to a symbol"_s, [this] {
            QTimer::singleShot(0, f->window.get(), [] {
                auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
                dialog->findChild<QLineEdit *>()->setText(u"main"_s);
                dialog->accept();
            });
            f->window->viewGotoLine();
        });
        user(u"sets the next statement"_s, [this] { f->window->findChild<QAction *>(u"debugSetNext"_s)->trigger(); });
    }
    void disassembly()
    {
        startSession();
        user(u"shows the disassembly"_s, [this] {
            f->window->debugViewDisassembly();
            f->window->grab();
        });
    }
    void wide()
    {
        user(u"shows the list of processors"_s, [this] { show(u"debugToggleProcessorWindow"_s); });
        startSession();
        user(u"shows the memory"_s, [this] {
            f->window->debugToggleMemoryWindow(true);
            f->window->grab();
        });
        user(u"changes a byte and writes it"_s, [this] {
            auto *memory = f->window->findChild<MemoryWindow *>();
            for (int index = 0; index < 16; ++index)
                memory->hexChanged(0, index, 1);
            memory->userUpdateMemory();
        });
    }
    void host()
    {
        user(u"adds a file to the project"_s,
             [this] { f->window->activity().currentProject()->addFiles({f->path(u"new.c"_s)}, nullptr); });
        user(u"changes a property"_s, [this] {
            f->window->activity().currentProject()->properties()->setProperty(u"key"_s, u"1"_s, u"Debug"_s);
        });
        user(u"chooses another configuration"_s,
             [this] { f->window->activity().currentProject()->setCurrentConfiguration(u"Release"_s); });
        user(u"accepts the dialog \"Options\""_s, [this] {
            QTimer::singleShot(0, f->window.get(),
                               [] { qobject_cast<QDialog *>(QApplication::activeModalWidget())->accept(); });
            f->window->toolsOptions();
        });
        QTRY_VERIFY(f->window->statusBar()->findChild<QWidget *>(u"PluginProgress1"_s));
        user(u"cancels the progress in the status bar"_s, [this] {
            for (QToolButton *button : f->window->statusBar()->findChildren<QToolButton *>()) {
                if (button->parentWidget()->objectName().startsWith(u"PluginProgress"_s))
                    button->click();
            }
        });
        f->discard();
    }
    void scripts()
    {
        startSession();
        f->write(u"use.py"_s, "from varnel import app\nmemory = app.debugger.processors['fw'].memory\n"
                              "memory.currentRegion = 'RAM'\nmemory.currentMode = 'Byte'\nmemory.verify = 1\n"
                              "memory[0x100] = 1\nmemory[0x100:0x102] = [1, 2]\nmemory.disassemble(0x100)\n");
        user(u"runs a script that writes memory"_s, [this] { f->window->runPyFile(f->path(u"use.py"_s)); });
    }

    void open() { openWorkspace(); }
    void file()
    {
        openFile();
        user(u"closes it"_s, [this] { f->window->fileClose(); });
    }
    void build()
    {
        openFile();
        user(u"builds"_s, [this] { f->window->buildBuild(); });
        finishBuild();
        user(u"compiles main.c"_s, [this] { f->window->buildCompileFile(); });
        finishBuild();
        user(u"cleans"_s, [this] { f->window->buildClean(); });
        finishBuild();
        user(u"builds and stops the build"_s, [this] {
            f->window->buildBuild();
            f->window->buildStopBuild();
        });
        finishBuild();
    }
    void session()
    {
        startSession();
        user(u"steps over a line (F10)"_s, [this] { f->window->debugStepOver(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
        user(u"continues (F5)"_s, [this] { f->window->debugRun(); });
        report(IExecutionEnvironment::ProgramBreakpointHit, u"ProgramBreakpointHit"_s);
        user(u"restarts"_s, [this] { f->window->debugRestart(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
        user(u"stops the session"_s, [this] { f->window->debugStop(); });
    }
    void breakpoints()
    {
        openFile();
        user(u"toggles a breakpoint (F9)"_s, [this] { f->window->debugToggleBreakpoint(); });
        m_chart.append(u"Plug-in: breakpointsChanged()"_s);
        stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        takeCalls();
    }
    void windows()
    {
        startSession();
        user(u"shows the registers"_s, [this] {
            f->window->debugToggleRegisterWindow(true);
            f->window->grab();
        });
        user(u"steps over a line (F10)"_s, [this] { f->window->debugStepOver(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
    }
    void sync()
    {
        startSession();
        user(u"pauses"_s, [this] {
            f->window->debugRun();
            f->window->debugPause();
        });
    }
    void close()
    {
        startSession();
        user(u"closes the workspace"_s, [this] { f->window->closeWorkspace(); });
    }

private Q_SLOTS:
    void cleanup() { f.reset(); }

    void chartIsRecorded_data()
    {
        QTest::addColumn<QString>("story");
        for (const char *story :
             {"documents",  "open",        "docks",       "file",    "project",     "commands", "build",    "session",
              "background", "breakpoints", "details",     "windows", "peripherals", "wide",     "requests", "live",
              "stack",      "next",        "disassembly", "sync",    "scripts",     "host",     "close"})
            QTest::newRow(story) << QString::fromLatin1(story);
    }

    /// With VARNEL_WRITE_DOCS this writes the charts.
    void chartIsRecorded()
    {
        QFETCH(QString, story);
        static const QHash<QString, void (PluginSequencesTest::*)()> stories{
            {u"open"_s, &PluginSequencesTest::open},
            {u"file"_s, &PluginSequencesTest::file},
            {u"build"_s, &PluginSequencesTest::build},
            {u"session"_s, &PluginSequencesTest::session},
            {u"breakpoints"_s, &PluginSequencesTest::breakpoints},
            {u"windows"_s, &PluginSequencesTest::windows},
            {u"sync"_s, &PluginSequencesTest::sync},
            {u"documents"_s, &PluginSequencesTest::documents},
            {u"docks"_s, &PluginSequencesTest::docks},
            {u"project"_s, &PluginSequencesTest::project},
            {u"commands"_s, &PluginSequencesTest::commands},
            {u"background"_s, &PluginSequencesTest::background},
            {u"details"_s, &PluginSequencesTest::details},
            {u"peripherals"_s, &PluginSequencesTest::peripherals},
            {u"wide"_s, &PluginSequencesTest::wide},
            {u"requests"_s, &PluginSequencesTest::requests},
            {u"live"_s, &PluginSequencesTest::live},
            {u"stack"_s, &PluginSequencesTest::stack},
            {u"next"_s, &PluginSequencesTest::next},
            {u"disassembly"_s, &PluginSequencesTest::disassembly},
            {u"scripts"_s, &PluginSequencesTest::scripts},
            {u"host"_s, &PluginSequencesTest::host},
            {u"close"_s, &PluginSequencesTest::close}};
        const bool second = story == "sync"_L1;
        static const QStringList simple{u"open"_s,        u"file"_s,    u"build"_s, u"session"_s,
                                        u"breakpoints"_s, u"windows"_s, u"sync"_s,  u"close"_s};
        const bool rich = !simple.contains(story);
        if (rich)
            prepareRichScripts(story);
        else
            prepareScripts(second);
        startBuildsBeforeSessions();
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        f = std::make_unique<WindowFixture>();
        if (story == "next"_L1 || story == "commands"_L1) {
            f->installation.write(u"config/uiconfig.xml"_s,
                                  R"(<ui><actions><action name="buildBuild"/><action name="debugRun"/><action
                                  name="debugSetNext" slot="none"/></actions><menus>
                                  <menu name="buildMenu"><action name="buildBuild"/></menu>
                                  <menu name="debugMenu"><action name="debugRun"/></menu></menus></ui>)");
            f->restart();
        }
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        const QByteArray contents = "<file path='main.c'/><properties currentconfiguration='Debug'><configuration "
                                    "name='Debug'/></properties></project>";
        f->write(u"fw.vnp"_s, "<project buildenvironment='{cc}' executionenvironment='"
                                  + QByteArray(rich ? "{sim}" : "{fw}") + "'>" + contents);
        f->write(u"two.vnp"_s, "<project executionenvironment='{two}'>" + contents);
        f->writeWorkspace(u"all.vnw"_s, second ? QStringList{u"fw.vnp"_s, u"two.vnp"_s} : QStringList{u"fw.vnp"_s});
        stub()->takeCalls();
        m_chart.clear();
        if (story != "open"_L1 && story != "docks"_L1 && story != "documents"_L1) {
            openWorkspace();
            m_chart.clear();
        }
        (this->*stories[story])();
        compareWithDocumentation(story, collapsed(m_chart).join(u'\n') + u'\n');
    }

    /// Each interface that plug-ins implement is called in one of the charts, with a function that no other interface
    /// has if there is one: the charts do not contain the names of interfaces.
    void allInterfacesHaveAChart()
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-sequences.md"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QHash<QString, QSet<QString>> owners; // of the functions
        QHash<QString, QStringList> functions;
        for (const PluginCallInfo &call : callsOfPlugins()) {
            if (call.isReserved)
                continue;
            owners[call.name.section(u"::"_s, 1)].insert(call.name.section(u"::"_s, 0, 0));
            functions[call.name.section(u"::"_s, 0, 0)].append(call.name.section(u"::"_s, 1));
        }
        // called while the program looks for plug-ins, not by what the user does
        const QSet<QString> without{u"IPluginFactory"_s, u"IPluginObject"_s, u"QUnknownInterface"_s};
        QStringList missing;
        for (auto each = functions.cbegin(); each != functions.cend(); ++each) {
            QStringList known = each.value();
            known.removeIf([&](const QString &function) { return owners[function].size() > 1; });
            if (known.isEmpty())
                known = each.value();
            const auto isShown = [&](const QString &function) { return text.contains(u'.' + function + u'('); };
            if (!without.contains(each.key()) && std::ranges::none_of(known, isShown))
                missing.append(each.key());
        }
        QCOMPARE(missing, QStringList());
    }

private:
    static void compareWithDocumentation(const QString &story, const QString &chart)
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-sequences.md"));
        const bool writes = qEnvironmentVariableIsSet("VARNEL_WRITE_DOCS");
        QVERIFY(file.open(writes ? QIODevice::ReadWrite : QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        const QString head = u"```sequence "_s + story + u'\n';
        const qsizetype start = text.indexOf(head) + head.size();
        const qsizetype end = text.indexOf(u"```"_s, start);
        QVERIFY(text.contains(head) && end >= start);
        if (writes) {
            text.replace(start, end - start, chart);
            file.resize(0);
            file.seek(0);
            file.write(text.toUtf8());
        } else {
            QCOMPARE(text.mid(start, end - start).split(u'\n'), chart.split(u'\n'));
        }
    }
};

int main(int argc, char **argv)
{
    PluginSequencesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pluginsequences.moc"

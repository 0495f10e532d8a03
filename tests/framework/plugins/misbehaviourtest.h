#pragma once
#include "activity.h"
#include "callsofplugins.h"
#include "listview.h"
#include "memorywindow.h"
#include "multiwatchwindow.h"
#include "peripheralwidget.h"
#include "pluginmisdeeds.h"
#include "projectproperties.h"
#include "propertylist.h"
#include "rateswitch.h"
#include "windowfixture.h"
#include "windowuser.h"
#include <algorithm>
#include <functional>
#include <memory>
#include <QHelpEvent>
#include <QJsonArray>
#include <QLineEdit>
#include <QMap>
#include <QProgressDialog>
#include <QPushButton>
#include <QSet>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// A user who works with a plug-in that does something wrong in its calls.
class MisbehaviourTest : public QObject
{
protected:
    std::unique_ptr<WindowFixture> f;
    QString m_deed;
    QSet<QString> m_pending; ///< calls in which the deed was not done yet
    QStringList m_done;      ///< those in which it was done in this story
    OfferedInterfaces m_offered = OfferedInterfaces::Simple;
    bool m_cancels = false;  ///< the user cancels starts in the background
    bool m_attaches = false; ///< there is a second session, which attaches
    bool m_typed = false;    ///< the workspace was open long enough
    bool m_silent = false;   ///< the plug-in sends no reports any more
    int m_depth = 0;
    QMap<QString, QString> m_results; ///< of the deed, by call

    virtual void act(const QString &call) = 0; ///< In each call of the plug-in.
    /// A step of the story, which is skipped if it is not possible now, as its action is disabled.
    virtual void take(bool debugging, const std::function<void()> &command) = 0;
    virtual void opened() = 0; ///< The workspace was opened, for the first time in the story.
    virtual void typed() {}    ///< Text was typed.
    virtual void finishBuild()
    {
        QCoreApplication::processEvents();
        StubObjectState *tools = stub()->object(u"cc"_s);
        if (f->window->activity().state() == StateBuilding && tools && tools->buildEvents)
            tools->buildEvents->buildFinished(true);
    }

    /// Uses what scripts can use of a processor. Each statement may fail, and may close the workspace.
    static constexpr const char *Script = R"py(
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

    /// With a second processor if they can act together.
    [[nodiscard]] QString workspaceFile() const
    {
        return f->path(m_offered == OfferedInterfaces::Wide ? u"two.vnw"_s : u"all.vnw"_s);
    }

    /// Opens the workspace, builds, debugs and closes. Commands that are not available now are skipped, as their
    /// actions are disabled.
    void story()
    {
        const auto step = [this](const std::function<void()> &command) { take(false, command); };
        const auto debugging = [this](const std::function<void()> &command) { take(true, command); };
        f->window->openWorkspace(workspaceFile(), false);
        opened();
        step([&] { f->window->openFile(f->path(u"main.c"_s), false); });
        step([&] {
            f->window->openFile(f->path(u"main.c"_s), false); // the plug-in may have opened another one
            m_typed = f->view() && f->document()->filename() == f->path(u"main.c"_s);
            if (m_typed)
                f->type(u"typed "_s);
            typed();
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
            if (attach && !m_attaches)
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
        const QList<RateSwitch *> switches = f->window->findChildren<RateSwitch *>();
        const QList<QPointer<RateSwitch>> rates(switches.cbegin(), switches.cend());
        for (const QPointer<RateSwitch> &live : rates) {
            if (live)
                live->setChecked(true);
        }
        if (auto *watches = f->window->findChild<MultiWatchWindow *>())
            watches->update();
        if (!f->window->activity().isDebugging())
            return; // it was stopped in one of these calls
        f->window->debugRun();
        stub()->script(u"{sim}"_s).programStatus = IExecutionEnvironment::ProgramRunning;
        for (const QPointer<RateSwitch> &live : rates) {
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
};

#include "dockwindow.h"
#include "fakeservices.h"
#include "idockextension.h"
#include "iworkspaceclient.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pluginbinder.h"
#include "stubfixture.h"
#include <QAbstractButton>
#include <QAction>
#include <QMainWindow>
#include <QTest>

using namespace Qt::StringLiterals;

/// The binding of projects to plug-in objects, and the events from plug-ins to the window.
class PluginBinderTest : public QObject, protected StubFixture, public FakeServices
{
    Q_OBJECT

private:
    std::unique_ptr<QMainWindow> m_window;
    OutputWindow *m_output = nullptr;
    QAction *m_peripherals = nullptr;
    std::unique_ptr<PluginBinder> m_binder;
    QStringList m_reports;
    QStringList m_layout; ///< the dock windows when the layout was saved and restored

    // WindowServices
    IPluginObject *createPlugin(const QString &feature) const override { return create(feature); }
    OutputWindow *outputWindow() const override { return m_output; }
    QAction *action(const QString &name) const override { return m_window->findChild<QAction *>(name); }
    QWidget *dialogParent() override { return m_window.get(); }
    void saveDockLayout() override { m_layout += u"save "_s + dockNames(); }
    void restoreDockLayout() override { m_layout += u"restore "_s + dockNames(); }
    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area) override
    {
        auto *dock = new DockWindow(objectName, caption, m_window.get());
        m_window->addDockWidget(area, dock);
        return dock;
    }

    QString dockNames() const
    {
        QStringList names;
        for (const QDockWidget *dock : m_binder->extensionDocks())
            names += dock->objectName();
        return names.join(u' ');
    }

    void makeBinder()
    {
        m_binder = std::make_unique<PluginBinder>(*m_activity, *this);
        const auto nameOf = [this](IExecutionEnvironment *environment) {
            for (int i = 0; i < m_workspace->count(); ++i) {
                if (m_workspace->project(i)->executionInterface() == environment)
                    return m_workspace->project(i)->name();
            }
            return u"none"_s;
        };
        connect(m_binder.get(), &PluginBinder::buildFinished, this,
                [this](bool success) { m_reports += u"finished %1"_s.arg(success); });
        connect(m_binder.get(), &PluginBinder::xmlFeedback, this,
                [this](const QString &xml) { m_reports += u"xml "_s + xml; });
        connect(m_binder.get(), &PluginBinder::processorStatusChanged, this, [=, this](auto status, auto *environment) {
            m_reports += u"processor %1 of %2"_s.arg(status).arg(nameOf(environment));
        });
        connect(m_binder.get(), &PluginBinder::programStatusChanged, this, [=, this](auto status, auto *environment) {
            m_reports += u"program %1 of %2"_s.arg(status).arg(nameOf(environment));
        });
        connect(m_binder.get(), &PluginBinder::statusInfo, this,
                [=, this](const QString &text, int position, auto *environment) {
                    m_reports += u"status %1 at %2 of %3"_s.arg(text).arg(position).arg(nameOf(environment));
                });
        connect(m_binder.get(), &PluginBinder::breakpointsChanged, this,
                [=, this](auto *environment) { m_reports += u"breakpoints of "_s + nameOf(environment); });
    }

    QString page(uint number) const { return m_output->page(number)->toPlainText(); }
    QStringList calls() { return m_stub->takeCalls(); }
    QStringList reports() { return std::exchange(m_reports, {}); }
    StubObjectState &object(const QString &label) { return *m_stub->object(label); }

    /// A project with the plug-in "sim" that is not in the workspace.
    std::unique_ptr<Project> makeProject(const QString &file)
    {
        const QString name = path(file);
        QDir().mkpath(QFileInfo(name).path());
        auto project = std::make_unique<Project>(QString(), QString());
        project->load(writeFile(name, "<project executionenvironment='{sim}' executionenvironmentname='sim tools'/>"));
        return project;
    }

    static void replaceInFile(const QString &name, const QByteArray &text, const QByteArray &other)
    {
        QByteArray content = bytesOf(name);
        QVERIFY(content.contains(text));
        writeFile(name, content.replace(text, other));
    }

    static bool setFileTime(const QString &name, const QDateTime &time)
    {
        QFile file(name);
        return file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime);
    }

    static QWidget *widget(const QString &title)
    {
        auto *widget = new QWidget;
        widget->setWindowTitle(title);
        widget->resize(80, 60);
        return widget;
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_window = std::make_unique<QMainWindow>();
        m_output = new OutputWindow(m_window.get());
        m_peripherals = new QAction(m_window.get());
        m_peripherals->setObjectName(u"debugTogglePeripheralWindow"_s);
        m_peripherals->setVisible(false);
        makeBinder();
    }

    void cleanup()
    {
        dropWorkspace();
        m_binder.reset();
        tearDown();
        m_window.reset();
        m_reports.clear();
        m_layout.clear();
    }

    // The order of calls

    void aProjectWithoutEnvironmentsGetsNoneAndNoMessage()
    {
        buildScript(u"gcc"_s);
        Project *project = addProject(u"fw"_s, {}, {});
        m_binder->bindProjectPlugins(project);
        QVERIFY(!project->buildInterface());
        QVERIFY(!project->executionInterface());
        QCOMPARE(calls(), QStringList());
        QCOMPARE(takeMessages(), QStringList());
    }

    void buildEnvironmentGetsEventsThenProjectThenWorkspace()
    {
        buildScript(u"gcc"_s, {IWorkspaceClient::Iid});
        Project *project = addProject(u"fw"_s, u"gcc"_s, {});
        m_binder->bindProjectPlugins(project);
        QCOMPARE(calls(),
                 (QStringList{u"gcc.initialise(gcc option)"_s, u"gcc.setProject(fw)"_s, u"gcc.setQueryInterface()"_s}));
        QVERIFY(project->buildInterface());
        QVERIFY(!project->executionInterface());
    }

    void anExecutionEnvironmentGetsItsProjectWhenInitialised()
    {
        executionScript(u"sim"_s, {IWorkspaceClient::Iid});
        Project *project = addProject(u"fw"_s, {}, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        QCOMPARE(calls(), (QStringList{u"sim.initialise(fw, sim option)"_s, u"sim.setQueryInterface()"_s}));
        QVERIFY(!project->buildInterface());
        QVERIFY(project->executionInterface());
    }

    void buildEnvironmentIsBoundFirst()
    {
        buildScript(u"gcc"_s);
        executionScript(u"sim"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, u"sim"_s));
        QCOMPARE(calls(), (QStringList{u"gcc.initialise(gcc option)"_s, u"gcc.setProject(fw)"_s,
                                       u"sim.initialise(fw, sim option)"_s}));
    }

    void commonFeatureCreatesTwoObjects()
    {
        script(u"all"_s, {IBuildEnvironment::Iid, IExecutionEnvironment::Iid});
        Project *project = addProject(u"fw"_s, u"all"_s, u"all"_s);
        m_binder->bindProjectPlugins(project);
        QCOMPARE(m_stub->objectCount(), 2);
        QVERIFY(project->buildInterface());
        QVERIFY(project->executionInterface());
    }

    void environmentIsSetBeforeItIsInitialised()
    {
        StubScript &gcc = buildScript(u"gcc"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, {});
        gcc.on[u"initialise"_s] = [&] { QVERIFY(project->buildInterface()); };
        m_binder->bindProjectPlugins(project);
        QCOMPARE(calls().size(), 2);
    }

    void executionEnvironmentIsReleasedFirstWithItsProject()
    {
        QStringList gone;
        buildScript(u"gcc"_s).on[u"delete"_s] = [&] { gone += u"gcc"_s; };
        executionScript(u"sim"_s).on[u"delete"_s] = [&] { gone += u"sim"_s; };
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        QCOMPARE(m_stub->objectCount(), 2);
        m_workspace->removeProject(project);
        QCOMPARE(gone, (QStringList{u"sim"_s, u"gcc"_s}));
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void aWorkspaceThatIsOpenedAgainGetsNewObjects()
    {
        buildScript(u"gcc"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        const quintptr first = quintptr(m_stub->object(u"gcc"_s)->buildEvents.get());
        QVERIFY(first);
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(path(u"all.vnw"_s)));
        m_workspace = m_activity->workspace();
        QCOMPARE(m_stub->objectCount(), 0);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        QCOMPARE(m_stub->objectCount(), 1);
        QCOMPARE(calls().count(u"gcc.initialise(gcc option)"_s), 2);
    }

    // Failures

    void missingBuildEnvironmentShowsAMessageAndTheOtherIsBound()
    {
        executionScript(u"sim"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        answer();
        m_binder->bindProjectPlugins(project);
        QCOMPARE(takeMessages(), QStringList{u"information Varnel: The workspace contains a project that requires the "
                                             "gcc tools build environment, which is not installed.\n"
                                             "You will not be able to build the project."_s});
        QVERIFY(!project->buildInterface());
        QVERIFY(project->executionInterface());
    }

    void missingExecutionEnvironmentShowsAMessage()
    {
        buildScript(u"gcc"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        answer();
        m_binder->bindProjectPlugins(project);
        QCOMPARE(takeMessages(), QStringList{u"information Varnel: The workspace contains a project that requires the "
                                             "sim tools execution environment, which is not installed.\n"
                                             "You will not be able to debug or run the project."_s});
        QVERIFY(project->buildInterface());
        QVERIFY(!project->executionInterface());
    }

    void featuresAreComparedExactly()
    {
        buildScript(u"GCC"_s);
        answer();
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        QCOMPARE(takeMessages().size(), 1);
    }

    void pluginWithoutTheMainInterfaceIsIgnoredSilently()
    {
        script(u"other"_s, {IWorkspaceClient::Iid});
        Project *project = addProject(u"fw"_s, u"other"_s, u"other"_s);
        m_binder->bindProjectPlugins(project);
        QVERIFY(!project->buildInterface());
        QVERIFY(!project->executionInterface());
        QCOMPARE(calls(), QStringList());
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void aBuildEnvironmentThatFailsToInitialiseStaysBound()
    {
        buildScript(u"gcc"_s, {IWorkspaceClient::Iid}).initialised = false;
        Project *project = addProject(u"fw"_s, u"gcc"_s, {});
        answer();
        m_binder->bindProjectPlugins(project);
        QCOMPARE(takeMessages(), QStringList{u"information Varnel: The build system could not be initialised.\n\n"
                                             "Please see Build Output window for details."_s});
        QCOMPARE(calls(),
                 (QStringList{u"gcc.initialise(gcc option)"_s, u"gcc.setProject(fw)"_s, u"gcc.setQueryInterface()"_s}));
        QVERIFY(project->buildInterface());
    }

    void anExecutionEnvironmentThatFailsToInitialiseStaysBound()
    {
        executionScript(u"sim"_s, {IWorkspaceClient::Iid, IPeripherals::Iid}).initialised = false;
        Project *project = addProject(u"fw"_s, {}, u"sim"_s);
        answer();
        m_binder->bindProjectPlugins(project);
        QCOMPARE(takeMessages(), QStringList{u"information Varnel: The debugger could not be initialised.\n\n"
                                             "Please see Debug Output window for details."_s});
        QCOMPARE(calls(), (QStringList{u"sim.initialise(fw, sim option)"_s, u"sim.setQueryInterface()"_s}));
        QVERIFY(project->executionInterface());
        QVERIFY(m_peripherals->isVisible());
    }

    void projectRemovedDuringAMessageIsNotBound()
    {
        buildScript(u"gcc"_s).initialised = false;
        executionScript(u"sim"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        QTimer::singleShot(0, this, [&] { m_workspace->removeProject(project); });
        answer();
        m_binder->bindProjectPlugins(project);
        QCOMPARE(calls(), QStringList{u"gcc.initialise(gcc option)"_s});
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void exceptionsOfThePluginAreReported_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QStringList>("messages");
        const QStringList none;
        const QStringList missing{
            u"information Varnel: The workspace contains a project that requires the x tools build "
            "environment, which is not installed.\nYou will not be able to build the project."_s,
            u"information Varnel: The workspace contains a project that requires the x tools "
            "execution environment, which is not installed.\n"
            "You will not be able to debug or run the project."_s};
        const QStringList failed{u"information Varnel: The build system could not be initialised.\n\n"
                                 "Please see Build Output window for details."_s,
                                 u"information Varnel: The debugger could not be initialised.\n\n"
                                 "Please see Debug Output window for details."_s};
        QTest::newRow("create") << u"create"_s << u"IPluginFactory::create IPluginFactory::create"_s << missing;
        QTest::newRow("initialise") << u"initialise"_s
                                    << u"IBuildEnvironment::initialise IExecutionEnvironment::initialise"_s << failed;
        QTest::newRow("setProject") << u"setProject"_s << u"IBuildEnvironment::setProject"_s << none;
        QTest::newRow("setQueryInterface")
            << u"setQueryInterface"_s << u"IWorkspaceClient::setQueryInterface IWorkspaceClient::setQueryInterface"_s
            << none;
        QTest::newRow("widgets") << u"widgets"_s << u"IDockExtension::widgets"_s << none;
        QTest::newRow("workspaceChanged")
            << u"workspaceChanged"_s << u"IWorkspaceClient::workspaceChanged IWorkspaceClient::workspaceChanged"_s
            << none;
    }

    void exceptionsOfThePluginAreReported()
    {
        QFETCH(QString, call);
        QFETCH(QString, operation);
        QFETCH(QStringList, messages);
        script(u"x"_s, {IBuildEnvironment::Iid, IExecutionEnvironment::Iid, IWorkspaceClient::Iid, IDockExtension::Iid})
            .on[call] = throwError;
        for (const QString &each : operation.split(u' '))
            expectException(qPrintable(each));
        answer(QMessageBox::Ok, messages.size());
        Project *project = addProject(u"fw"_s, u"x"_s, u"x"_s);
        m_binder->bindProjectPlugins(project);
        Q_EMIT m_activity->projectsChanged();
        QCOMPARE(takeMessages(), messages);
        QCOMPARE(m_stub->objectCount(), call == u"create"_s ? 0 : 2);
    }

    // Reports of a build environment

    void buildFinishedAndXmlFeedbackAreForwarded()
    {
        buildScript(u"gcc"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        object(u"gcc"_s).buildEvents->buildFinished(true);
        object(u"gcc"_s).buildEvents->buildFinished(false);
        object(u"gcc"_s).buildEvents->xmlFeedback(u"<project/>"_s);
        QCOMPARE(reports(), (QStringList{u"finished 1"_s, u"finished 0"_s, u"xml <project/>"_s}));
    }

    void buildFeedbackGoesToTheBuildPageAlsoWhileInitialising()
    {
        StubScript &gcc = buildScript(u"gcc"_s);
        gcc.on[u"initialise"_s] = [&] { object(u"gcc"_s).buildEvents->feedback(u"no compiler\n"_s); };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        object(u"gcc"_s).buildEvents->feedback(u"ab"_s);
        object(u"gcc"_s).buildEvents->feedback(u"c\n"_s);
        QCOMPARE(page(OutputWindow::Build), u"no compiler\nabc\n"_s);
        QCOMPARE(page(OutputWindow::Debug), QString());
    }

    void onlyThePluginHoldsTheEventsObject()
    {
        buildScript(u"gcc"_s);
        executionScript(u"sim"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, u"sim"_s));
        const QPointer<QObject> build = dynamic_cast<QObject *>(object(u"gcc"_s).buildEvents.get());
        const QPointer<QObject> execution = dynamic_cast<QObject *>(object(u"sim"_s).executionEvents.get());
        QVERIFY(build && execution);
        object(u"gcc"_s).buildEvents.reset();
        QVERIFY(!build);
        object(u"sim"_s).executionEvents.reset();
        QVERIFY(!execution);
    }

    void hostReleasesTheBuildEventsAfterInitialise()
    {
        QPointer<QObject> events;
        bool goneInTime = false;
        StubScript &gcc = buildScript(u"gcc"_s);
        gcc.on[u"initialise"_s] = [&] {
            events = dynamic_cast<QObject *>(object(u"gcc"_s).buildEvents.get());
            object(u"gcc"_s).buildEvents.reset();
            QVERIFY(events);
        };
        gcc.on[u"setProject"_s] = [&] { goneInTime = events.isNull(); };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        QVERIFY(goneInTime);
    }

    void reportsAfterTheEndOfTheProjectAreIgnored()
    {
        buildScript(u"gcc"_s);
        executionScript(u"sim"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        const auto gcc = shareInterface(project->buildInterface());
        const auto sim = shareInterface(project->executionInterface());
        m_workspace->removeProject(project);
        QCOMPARE(m_stub->objectCount(), 2);
        object(u"gcc"_s).buildEvents->buildFinished(true);
        object(u"gcc"_s).buildEvents->feedback(u"late\n"_s);
        object(u"sim"_s).executionEvents->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        object(u"sim"_s).executionEvents->feedback(u"late\n"_s, {}, true);
        QCOMPARE(reports(), QStringList());
        QCOMPARE(page(OutputWindow::Build) + page(OutputWindow::Debug), QString());
        QCOMPARE(object(u"gcc"_s).project->name(), QString());
    }

    // Reports of an execution environment

    void reportsContainTheirEnvironment()
    {
        executionScript(u"sim"_s);
        executionScript(u"probe"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        m_binder->bindProjectPlugins(addProject(u"dsp"_s, {}, u"probe"_s));
        object(u"probe"_s).executionEvents->processorStatusChanged(IExecutionEnvironment::ProcessorStatus(7));
        object(u"sim"_s).executionEvents->programStatusChanged(IExecutionEnvironment::ProgramBreakpointHit);
        object(u"probe"_s).executionEvents->statusInfo(u"123 cycles"_s, 2);
        object(u"sim"_s).executionEvents->breakpointsChanged();
        QCOMPARE(reports(), (QStringList{u"processor 7 of dsp"_s, u"program 5 of fw"_s,
                                         u"status 123 cycles at 2 of dsp"_s, u"breakpoints of fw"_s}));
    }

    void reportsDuringInitialiseAreForwarded()
    {
        StubScript &sim = executionScript(u"sim"_s);
        sim.on[u"initialise"_s] = [&] { object(u"sim"_s).executionEvents->statusInfo(u"USB"_s, 0); };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        QCOMPARE(reports(), QStringList{u"status USB at 0 of fw"_s});
    }

    void debugFeedbackIsShownOnTheNamedPage()
    {
        executionScript(u"sim"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        IExecutionEvents *events = object(u"sim"_s).executionEvents.get();
        events->feedback(u"loaded\n"_s, {}, false);
        events->feedback(u"hello\n"_s, u"UART"_s, false);
        events->feedback(u"linked\n"_s, u"Build"_s, false);
        QCOMPARE(page(OutputWindow::Debug), u"loaded"_s);
        QCOMPARE(page(OutputWindow::Build), u"linked"_s);
        QCOMPARE(page(3), u"hello"_s);
    }

    void seriousFeedbackShowsItsPage()
    {
        executionScript(u"sim"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        IExecutionEvents *events = object(u"sim"_s).executionEvents.get();
        events->feedback(u"slow\n"_s, {}, false);
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Build));
        events->feedback(u"lost\n"_s, {}, true);
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Debug));
    }

    // Peripherals

    void shownPeripheralCommandStaysVisible()
    {
        executionScript(u"plain"_s);
        executionScript(u"sim"_s, {IPeripherals::Iid});
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"plain"_s));
        QVERIFY(!m_peripherals->isVisible());
        Project *project = addProject(u"dsp"_s, {}, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        QVERIFY(m_peripherals->isVisible());
        m_workspace->removeProject(project);
        m_binder->bindProjectPlugins(addProject(u"io"_s, {}, u"plain"_s));
        QVERIFY(m_peripherals->isVisible());
    }

    void missingPeripheralCommandIsAccepted()
    {
        delete m_peripherals;
        executionScript(u"sim"_s, {IPeripherals::Iid});
        Project *project = addProject(u"fw"_s, {}, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        QVERIFY(project->executionInterface());
    }

    // Dock windows

    void widgetsOfAnEnvironmentBecomeHiddenDockWindowsAtTheRight()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            const QList<QWidget *> widgets{widget(u"Trace"_s), widget(u"LEDs"_s)};
            widgets[1]->hide();
            return widgets;
        };
        m_window->show();
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        QCOMPARE(m_layout, (QStringList{u"save "_s, u"restore pluginTrace pluginLEDs"_s}));
        const QList<QDockWidget *> docks = m_binder->extensionDocks();
        QCOMPARE(docks.size(), 2);
        for (const QDockWidget *dock : docks) {
            QVERIFY(dock->isHidden());
            QVERIFY(!dock->widget()->isHidden());
            QVERIFY(dock->features().testFlag(QDockWidget::DockWidgetClosable));
            QCOMPARE(m_window->dockWidgetArea(const_cast<QDockWidget *>(dock)), Qt::RightDockWidgetArea);
        }
        QCOMPARE(docks[0]->windowTitle(), u"Trace"_s);
        QCOMPARE(docks[1]->windowTitle(), u"LEDs"_s);
    }

    void nullAmongTheWidgetsIsSkipped()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            return QList<QWidget *>{nullptr, widget(u"Trace"_s), nullptr};
        };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        QCOMPARE(dockNames(), u"pluginTrace"_s);
    }

    void withSeveralProjectsTheirCaptionsNameTheProject()
    {
        for (const QString &label : {u"sim"_s, u"probe"_s}) {
            executionScript(label, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        }
        Project *fw = addProject(u"fw"_s, {}, u"sim"_s);
        Project *dsp = addProject(u"dsp"_s, {}, u"probe"_s);
        m_binder->bindProjectPlugins(fw);
        m_binder->bindProjectPlugins(dsp);
        QCOMPARE(dockNames(), u"pluginTrace pluginTrace-dsp"_s); // each has its own position in the layout
        QCOMPARE(m_binder->extensionDocks()[0]->windowTitle(), u"Trace (fw)"_s);
        QCOMPARE(m_binder->extensionDocks()[1]->windowTitle(), u"Trace (dsp)"_s);
    }

    void namesOfProjectsAndWindowsAreShownAsTheyAre()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            return QList<QWidget *>{widget(u"Pins 1.2"_s)};
        };
        m_activity->addProject(makeProject(u"fw.vnp"_s));
        m_activity->addProject(makeProject(u"a & b.vnp"_s));
        QCOMPARE(dockNames(), u"pluginPins-1-2 pluginPins-1-2-a---b"_s);
        QCOMPARE(m_binder->extensionDockEntries()[1].text, u"Pins 1.2 (a && b)"_s); // a menu text
    }

    /// A project is bound before it is in the workspace then.
    void docksOfInsertedProjectsHaveNamesOfTheirOwn()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        for (const QString &file : {u"fw.vnp"_s, u"dsp.vnp"_s, u"other/dsp.vnp"_s})
            m_activity->addProject(makeProject(file));
        QCOMPARE(m_activity->projects().size(), 3);
        QCOMPARE(dockNames(), u"pluginTrace pluginTrace-dsp pluginTrace-dsp-2"_s);
        QStringList titles;
        for (const MenuEntry &entry : m_binder->extensionDockEntries())
            titles += entry.text;
        QCOMPARE(titles, (QStringList{u"Trace"_s, u"Trace (dsp)"_s, u"Trace (dsp) 2"_s}));
    }

    void widgetsThatAskForItAreNamedByTheirProject()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            QWidget *console = widget(u"Console"_s);
            console->setObjectName(u"console"_s);
            console->setProperty("namedByProject", true);
            (new QWidget(console))->setObjectName(u"input"_s);
            (new QWidget(console))->setObjectName(u"qt_viewport"_s);
            QWidget *trace = widget(u"Trace"_s);
            trace->setObjectName(u"trace"_s);
            return QList<QWidget *>{console, trace};
        };
        for (const QString &file : {u"my dsp.vnp"_s, u"other/my dsp.vnp"_s})
            m_activity->addProject(makeProject(file));
        QStringList names;
        for (const QDockWidget *dock : m_binder->extensionDocks()) {
            names += dock->widget()->objectName();
            for (const QWidget *part : dock->widget()->findChildren<QWidget *>())
                names += part->objectName();
        }
        QCOMPARE(names.join(u' '), u"my-dsp/console my-dsp/input qt_viewport trace "
                                   "my-dsp-2/console my-dsp-2/input qt_viewport trace"_s);
    }

    // The end of a binding

    void removedProjectLosesItsDocksAndObjects()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        m_activity->addProject(makeProject(u"fw.vnp"_s));
        m_activity->addProject(makeProject(u"dsp.vnp"_s));
        m_layout.clear();
        m_workspace->removeProject(m_workspace->project(1));
        QCOMPARE(dockNames(), u"pluginTrace"_s);
        QCOMPARE(m_layout, QStringList(u"save pluginTrace pluginTrace-dsp"_s));
        QCOMPARE(m_stub->objectCount(), 1);
        m_activity->addProject(makeProject(u"dsp.vnp"_s));
        QCOMPARE(dockNames(), u"pluginTrace pluginTrace-dsp"_s);
    }

    void projectThatIsReloadedWithAnotherOptionLosesItsObjects()
    {
        buildScript(u"gcc"_s);
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        Project *project = addProject(u"fw"_s, u"gcc"_s, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        const auto build = shareInterface(object(u"gcc"_s).buildEvents.get());
        const auto execution = shareInterface(object(u"sim"_s).executionEvents.get());
        const QPointer<QDockWidget> dock = m_binder->extensionDocks().first();
        replaceInFile(path(u"fw.vnp"_s), "gcc option", "other option");
        m_activity->reloadProject(project);
        QVERIFY(!dock);
        QCOMPARE(dockNames(), u"pluginTrace"_s);
        QCOMPARE(m_binder->extensionDockEntries().size(), 1);
        QCOMPARE(m_stub->objectCount(), 2);
        build->buildFinished(false);
        build->feedback(u"late\n"_s);
        execution->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        execution->feedback(u"late\n"_s, {}, false);
        QCOMPARE(reports(), QStringList());
        QCOMPARE(page(OutputWindow::Build) + page(OutputWindow::Debug), QString());
        object(u"gcc"_s).buildEvents->buildFinished(true);
        QCOMPARE(reports(), QStringList(u"finished 1"_s));
    }

    void projectThatIsReloadedWithTheSameEnvironmentsKeepsItsObjects()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        Project *project = addProject(u"fw"_s, {}, u"sim"_s);
        m_binder->bindProjectPlugins(project);
        const QPointer<QDockWidget> dock = m_binder->extensionDocks().first();
        m_activity->reloadProject(project);
        QVERIFY(dock);
        object(u"sim"_s).executionEvents->breakpointsChanged();
        QCOMPARE(reports(), QStringList(u"breakpoints of fw"_s));
    }

    void workspaceMayCloseWhileAnInsertedProjectIsBound()
    {
        StubScript &sim = executionScript(u"sim"_s, {IDockExtension::Iid});
        sim.widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        sim.on[u"initialise"_s] = [&] { dropWorkspace(); };
        m_activity->addProject(makeProject(u"fw.vnp"_s));
        QCOMPARE(dockNames(), QString());
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void refusedSaveOfAPluginIsReported()
    {
        buildScript(u"gcc"_s);
        Project *project = addProject(u"fw"_s, u"gcc"_s, {});
        m_binder->bindProjectPlugins(project);
        m_binder->bindProjectPlugins(project);
        QVERIFY(setFileTime(path(u"fw.vnp"_s), QDateTime::currentDateTime().addSecs(60)));
        QVERIFY(!object(u"gcc"_s).project->save());
        QCOMPARE(
            page(OutputWindow::Build),
            u"A plug-in cannot save %1: the file has been modified outside of the editor."_s.arg(path(u"fw.vnp"_s)));
    }

    void widgetWithATranslatedTitleStatesTheNameOfItsDock()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            QWidget *trace = widget(u"Spur"_s);
            trace->setProperty("dockName", u"Trace"_s);
            return QList<QWidget *>{trace};
        };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        QCOMPARE(dockNames(), u"pluginTrace"_s);
        QCOMPARE(m_binder->extensionDocks()[0]->windowTitle(), u"Spur"_s);
    }

    void onlyExecutionEnvironmentsHaveDockWindows()
    {
        buildScript(u"gcc"_s, {IDockExtension::Iid});
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, {}));
        QCOMPARE(m_layout, QStringList());
        QVERIFY(!calls().contains(u"gcc.widgets()"_s));
    }

    void choosingADockWindowShowsItAndHidesIt()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            return QList<QWidget *>{widget(u"Trace"_s), widget(u"LEDs"_s)};
        };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        const auto shown = [&] {
            QString text;
            for (const MenuEntry &entry : m_binder->extensionDockEntries())
                text += (entry.checked.value() ? u"[x] "_s : u"[ ] "_s) + entry.text + u' ';
            return text.trimmed();
        };
        QCOMPARE(shown(), u"[ ] Trace [ ] LEDs"_s);
        m_binder->toggleExtensionDock(1);
        QCOMPARE(shown(), u"[ ] Trace [x] LEDs"_s);
        m_binder->toggleExtensionDock(0);
        m_binder->toggleExtensionDock(1);
        QCOMPARE(shown(), u"[x] Trace [ ] LEDs"_s);
        m_binder->toggleExtensionDock(2);
        m_binder->toggleExtensionDock(-1);
        QCOMPARE(shown(), u"[x] Trace [ ] LEDs"_s);
    }

    void ownerOfDockWindowsIsKeptUntilTheyAreDeleted()
    {
        QPointer<QWidget> trace;
        bool widgetWasGone = false;
        StubScript &sim = executionScript(u"sim"_s, {IDockExtension::Iid});
        sim.widgets = [&] {
            trace = widget(u"Trace"_s);
            return QList<QWidget *>{trace};
        };
        sim.on[u"delete"_s] = [&] { widgetWasGone = trace.isNull(); };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        bool widgetOutlivedTheWorkspace = false;
        connect(m_workspace, &QObject::destroyed, this, [&] { widgetOutlivedTheWorkspace = trace; });
        dropWorkspace();
        QVERIFY(widgetOutlivedTheWorkspace);
        QVERIFY(widgetWasGone);
        QCOMPARE(m_binder->extensionDocks().size(), 0);
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void dockWindowsOfAReplacedWorkspaceAreDeleted()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] { return QList<QWidget *>{widget(u"Trace"_s)}; };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        QCOMPARE(m_binder->extensionDocks().size(), 1);
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>());
        m_workspace = m_activity->workspace();
        QCOMPARE(m_binder->extensionDocks().size(), 0);
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void environmentWithoutWidgetsIsDeletedWithItsProject()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid});
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        dropWorkspace();
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void deletedDockWindowIsRemovedFromTheList()
    {
        executionScript(u"sim"_s, {IDockExtension::Iid}).widgets = [] {
            return QList<QWidget *>{widget(u"Trace"_s), widget(u"LEDs"_s)};
        };
        m_binder->bindProjectPlugins(addProject(u"fw"_s, {}, u"sim"_s));
        delete m_binder->extensionDocks().first();
        QCOMPARE(dockNames(), u"pluginLEDs"_s);
    }

    // Changes of the workspace

    void environmentsAreNotifiedOfWorkspaceChangesBuildFirst()
    {
        buildScript(u"gcc"_s, {IWorkspaceClient::Iid});
        executionScript(u"sim"_s, {IWorkspaceClient::Iid});
        buildScript(u"deaf"_s);
        executionScript(u"probe"_s, {IWorkspaceClient::Iid});
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, u"sim"_s));
        m_binder->bindProjectPlugins(addProject(u"dsp"_s, u"deaf"_s, u"probe"_s));
        addProject(u"doc"_s, {}, {});
        calls();
        Q_EMIT m_activity->projectsChanged();
        QCOMPARE(calls(), (QStringList{u"gcc.workspaceChanged()"_s, u"sim.workspaceChanged()"_s,
                                       u"probe.workspaceChanged()"_s}));
    }

    void workspaceMayCloseDuringTheNotification()
    {
        buildScript(u"gcc"_s, {IWorkspaceClient::Iid}).on[u"workspaceChanged"_s] = [&] { dropWorkspace(); };
        executionScript(u"sim"_s, {IWorkspaceClient::Iid});
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, u"sim"_s));
        Q_EMIT m_activity->projectsChanged();
        QCOMPARE(m_stub->objectCount(), 0);
        Q_EMIT m_activity->projectsChanged();
    }

    void pluginFindsInterfacesOfOtherProjects()
    {
        buildScript(u"gcc"_s, {IWorkspaceClient::Iid});
        executionScript(u"sim"_s);
        m_binder->bindProjectPlugins(addProject(u"fw"_s, u"gcc"_s, u"sim"_s));
        Project *dsp = addProject(u"dsp"_s, {}, u"sim"_s);
        m_binder->bindProjectPlugins(dsp);
        const InterfacePtr<IQueryPluginInterface> query = shareInterface(object(u"gcc"_s).query.get());
        QCOMPARE(query->interfaceCount(IExecutionEnvironment::Iid), 1);
        QUnknownInterface *found = nullptr;
        QCOMPARE(query->queryInterface(IExecutionEnvironment::Iid, &found, 1), QS_OK);
        QCOMPARE(found, static_cast<QUnknownInterface *>(dsp->executionInterface()));
        found->release();
    }

    void nullProjectFailsAnAssertion()
    {
        expectAssert(u"project"_s);
        m_binder->bindProjectPlugins(nullptr);
    }
};

QTEST_MAIN(PluginBinderTest)
#include "tst_pluginbinder.moc"

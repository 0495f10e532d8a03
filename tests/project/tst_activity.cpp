#include "../emptyenvironment.h"
#include "activity.h"
#include "ibuildenvironment.h"
#include "interfaceobject.h"
#include "modeltext.h"
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
/// An environment that can be attached to, and that calls a function when this is queried.
class FakeEnvironment : public EmptyEnvironment<>
{
public:
    bool canAttach() override
    {
        if (const auto action = std::exchange(whenAsked, {}))
            action();
        return true;
    }

    std::function<void()> whenAsked;
};

class FakeBuild : public InterfaceObject<IBuildEnvironment>
{
public:
    bool initialise(IBuildEvents *, const QString &) override { return true; }
    void setProject(IProject *) override {}
    void compile(const QString &, const QString &) override {}
    bool canCompile(const QString &, const QString &) override { return true; }
    void build(const QStringList &, bool) override {}
    void clean(const QStringList &) override {}
    void stop() override {}
    bool isUpToDate(const QString &) override { return true; }
};
} // namespace

class ActivityTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Activity> m_activity;
    QStringList m_log; ///< the signals in their order

    std::unique_ptr<Project> makeProject(const QString &name, const QByteArray &xml = "<project/>")
    {
        auto project = std::make_unique<Project>(QString(), QString());
        project->load(writeFile(m_directory->filePath(name + u".vnp"_s), xml));
        return project;
    }

    /// A workspace with these projects, the first of which is the current one.
    std::unique_ptr<ProjectWorkspace> makeWorkspace(const QStringList &names)
    {
        QByteArray xml = "<workspace>";
        for (const QString &name : names) {
            writeFile(m_directory->filePath(name + u".vnp"_s), "<project/>");
            xml += "<project path='" + name.toUtf8() + ".vnp'/>";
        }
        const QString file = writeFile(m_directory->filePath(u"all.vnw"_s), xml + "</workspace>");
        auto workspace = std::make_unique<ProjectWorkspace>();
        workspace->load(file);
        return workspace;
    }

    QStringList names() const
    {
        QStringList result;
        for (const QPointer<Project> &project : m_activity->projects())
            result.append(project->name());
        return result;
    }

    QStringList takeLog() { return std::exchange(m_log, {}); }

    void writeSignals()
    {
        const Activity *activity = m_activity.get();
        const auto write = [this](const QString &text) { return [this, text] { m_log.append(text); }; };
        const auto state = [this](const QString &text) {
            return [this, text](ActivityState next) {
                m_log.append(u"%1 %2 in %3"_s.arg(text).arg(next).arg(m_activity->state()));
            };
        };
        connect(activity, &Activity::stateEntering, this, state(u"entering"_s));
        connect(activity, &Activity::stateChanging, this, state(u"changing"_s));
        connect(activity, &Activity::availabilityChanged, this, write(u"availability"_s));
        connect(activity, &Activity::stateEntered, this, state(u"entered"_s));
        connect(activity, &Activity::projectLoaded, this,
                [this](const Project *project) { m_log.append(u"loaded "_s + project->name()); });
        connect(activity, &Activity::workspaceOpened, this, write(u"opened"_s));
        connect(activity, &Activity::projectsChanged, this, write(u"projects"_s));
        connect(activity, &Activity::projectActivityChanged, this, write(u"activity"_s));
        connect(activity, &Activity::currentProjectChanged, this, write(u"current"_s));
        connect(activity, &Activity::workspaceReady, this, write(u"ready"_s));
        connect(activity, &Activity::workspaceClosing, this,
                [this] { m_log.append(m_activity->workspace() ? u"closing"_s : u"closing without"_s); });
        connect(activity, &Activity::workspaceClosed, this,
                [this] { m_log.append(m_activity->workspace() ? u"closed with"_s : u"closed"_s); });
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_activity = std::make_unique<Activity>();
        m_log.clear();
        writeSignals();
    }

    void cleanup()
    {
        if (m_activity->workspace())
            m_activity->closeWorkspace();
        m_activity.reset();
    }

    // State

    void newStateEmitsFourSignalsInOrder()
    {
        m_activity->setState(StateBuilding);
        QCOMPARE(takeLog(),
                 (QStringList{u"entering 2 in 1"_s, u"changing 2 in 1"_s, u"availability"_s, u"entered 2 in 2"_s}));
    }

    void sameStateEmitsNoStateChanging()
    {
        m_activity->setState(StateIdle);
        QCOMPARE(takeLog(), (QStringList{u"entering 1 in 1"_s, u"entered 1 in 1"_s}));
    }

    void changeReplacedWhileEnteringIsDropped()
    {
        bool once = true;
        connect(m_activity.get(), &Activity::stateEntering, this, [&](ActivityState next) {
            if (next == StatePaused && std::exchange(once, false))
                m_activity->setState(StateFinished);
        });
        m_activity->setState(StatePaused);
        QCOMPARE(m_activity->state(), StateFinished);
        QCOMPARE(m_log.filter(u"entered"_s), QStringList{u"entered 6 in 6"_s});
    }

    void reportDuringThePluginCallReplacesTheChange()
    {
        auto *environment = new FakeEnvironment;
        auto workspace = makeWorkspace({u"fw"_s});
        workspace->project(0)->setExecutionInterface(environment);
        m_activity->openWorkspace(std::move(workspace));
        environment->whenAsked = [this] { m_activity->setState(StateFinished); };
        takeLog();
        m_activity->setState(StatePaused);
        environment->release();
        QCOMPARE(m_activity->state(), StateFinished);
        QCOMPARE(m_log.filter(u"entered"_s), QStringList{u"entered 6 in 6"_s});
        QCOMPARE(m_log.count(u"availability"_s), 1);
    }

    void debuggingNeedsAProjectAndADebugState()
    {
        m_activity->setState(StatePaused);
        QVERIFY(!m_activity->isDebugging());
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        QVERIFY(!m_activity->isDebugging());
        m_activity->setState(StateInitialising);
        QVERIFY(m_activity->isDebugging());
    }

    // Workspace

    void openingEmitsProjectsThenTheWorkspaceThenIdle()
    {
        m_activity->setState(StateNoWorkspace);
        takeLog();
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"lib"_s}));
        QCOMPARE(takeLog(),
                 (QStringList{u"loaded fw"_s, u"loaded lib"_s, u"opened"_s, u"projects"_s, u"entering 1 in 0"_s,
                              u"changing 1 in 0"_s, u"availability"_s, u"entered 1 in 1"_s, u"ready"_s}));
        QCOMPARE(names(), (QStringList{u"fw"_s, u"lib"_s}));
        QCOMPARE(m_activity->currentProject()->name(), u"fw"_s);
    }

    void unreadableProjectIsNotEmitted()
    {
        auto workspace = makeWorkspace({u"fw"_s, u"lib"_s});
        QVERIFY(QFile::remove(m_directory->filePath(u"lib.vnp"_s)));
        QVERIFY(workspace->load(workspace->fileName()));
        m_activity->openWorkspace(std::move(workspace));
        QCOMPARE(m_log.filter(u"loaded"_s), QStringList{u"loaded fw"_s});
        QCOMPARE(names().size(), 2);
    }

    void workspaceIsDeletedBetweenTheTwoSignalsOfClosing()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        connect(m_activity->workspace(), &QObject::destroyed, this,
                [this] { m_log.append(m_activity->workspace() ? u"deleted in reach"_s : u"deleted"_s); });
        takeLog();
        m_activity->closeWorkspace();
        QCOMPARE(takeLog(), (QStringList{u"closing"_s, u"deleted"_s, u"entering 0 in 1"_s, u"changing 0 in 1"_s,
                                         u"availability"_s, u"entered 0 in 0"_s, u"closed"_s}));
        QVERIFY(m_activity->projects().isEmpty());
        QVERIFY(!m_activity->currentProject());
        QVERIFY(!m_activity->currentEnvironment());
    }

    void anotherWorkspaceReplacesTheOpenOneWithoutClosedSignal()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        const QPointer<ProjectWorkspace> first(m_activity->workspace());
        takeLog();
        m_activity->openWorkspace(makeWorkspace({u"lib"_s}));
        QVERIFY(!first);
        QCOMPARE(m_log.first(), u"closing"_s);
        QVERIFY(!m_log.contains(u"closed"_s));
        QCOMPARE(names(), QStringList{u"lib"_s});
    }

    void aReceiverMayCloseTheWorkspaceThatIsBeingOpened_data()
    {
        QTest::addColumn<int>("step");
        QTest::newRow("loaded") << 0;
        QTest::newRow("opened") << 1;
        QTest::newRow("projects") << 2;
        QTest::newRow("idle") << 3;
    }

    void aReceiverMayCloseTheWorkspaceThatIsBeingOpened()
    {
        QFETCH(int, step);
        const auto close = [this] {
            if (m_activity->workspace())
                m_activity->closeWorkspace();
        };
        if (step == 0)
            connect(m_activity.get(), &Activity::projectLoaded, this, close);
        else if (step == 1)
            connect(m_activity.get(), &Activity::workspaceOpened, this, close);
        else if (step == 2)
            connect(m_activity.get(), &Activity::projectsChanged, this, close);
        else
            connect(m_activity.get(), &Activity::stateEntered, this, close);
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"lib"_s}));
        QVERIFY(!m_activity->workspace());
        QVERIFY(!m_log.contains(u"ready"_s));
        QCOMPARE(m_activity->state(), StateNoWorkspace);
    }

    void closingWithoutAWorkspaceFailsAnAssertion()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"m_workspace\""_s));
        m_activity->closeWorkspace();
        QVERIFY(m_log.isEmpty());
    }

    // Projects

    void firstProjectOfAnEmptyWorkspaceEmitsAvailability()
    {
        m_activity->openWorkspace(makeWorkspace({}));
        QSignalSpy available(m_activity.get(), &Activity::availabilityChanged);
        m_activity->addProject(makeProject(u"fw"_s));
        QCOMPARE(available.size(), 1);
        QVERIFY(available.first().first().value<ActivityAvailability>().build);
        QCOMPARE(m_activity->currentProject()->name(), u"fw"_s);
    }

    void batchBuildNeedsABuildEnvironmentOfTheCurrentProject()
    {
        const auto build = InterfacePtr<IBuildEnvironment>(new FakeBuild);
        connect(m_activity.get(), &Activity::projectLoaded, this, [&](Project *project) {
            if (project->name() == "fw"_L1)
                project->setBuildEnvironment(build.get());
        });
        QSignalSpy available(m_activity.get(), &Activity::availabilityChanged);
        const auto isAvailable = [&] { return available.takeLast().first().value<ActivityAvailability>().batchBuild; };
        m_activity->setState(StateNoWorkspace); // as at the start of the program
        QVERIFY(!isAvailable());
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"doc"_s}));
        QVERIFY(isAvailable());
        m_activity->workspace()->setCurrentProject(1);
        QVERIFY(!isAvailable());
        m_activity->workspace()->setCurrentProject(0);
        QVERIFY(isAvailable());
        m_activity->setState(StateBuilding);
        QVERIFY(!isAvailable());
    }

    void projectLoadedIsEmittedBeforeAProjectIsAdded()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        takeLog();
        m_activity->addProject(makeProject(u"lib"_s));
        QCOMPARE(takeLog(), (QStringList{u"loaded lib"_s, u"projects"_s, u"current"_s, u"availability"_s}));
    }

    void aProjectForAWorkspaceThatIsClosedMeanwhileIsDropped()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        connect(m_activity.get(), &Activity::projectLoaded, this, [this] { m_activity->closeWorkspace(); });
        m_activity->addProject(makeProject(u"lib"_s));
        QVERIFY(!m_activity->workspace());
    }

    void aRemovedProjectLeavesANullPointerInAnEarlierList()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"lib"_s}));
        const QList<QPointer<Project>> before = m_activity->projects();
        m_activity->workspace()->removeProject(before.first());
        QVERIFY(!before.first());
        QCOMPARE(names(), QStringList{u"lib"_s});
    }

    void projectIsUnboundBeforeItsEnvironmentsAreReleased_data()
    {
        QTest::addColumn<bool>("removed");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("removed") << true << QStringList{u"removing fw in fw lib"_s, u"unbinding fw, bound"_s};
        QTest::newRow("reloaded") << false << QStringList{u"unbinding fw, bound"_s};
    }

    void projectIsUnboundBeforeItsEnvironmentsAreReleased()
    {
        QFETCH(bool, removed);
        QFETCH(QStringList, expected);
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"lib"_s}));
        const QPointer<Project> project = m_activity->projects().first();
        const auto environment = InterfacePtr<IExecutionEnvironment>(new FakeEnvironment);
        project->setExecutionInterface(environment.get());
        QStringList log;
        connect(m_activity.get(), &Activity::projectRemoving, this,
                [&](const Project *each) { log += u"removing "_s + each->name() + u" in "_s + names().join(u' '); });
        connect(m_activity.get(), &Activity::projectUnbinding, this, [&](const Project *each) {
            log += u"unbinding "_s + each->name() + (each->executionInterface() ? u", bound"_s : u", free"_s);
        });
        if (removed) {
            m_activity->workspace()->removeProject(project);
        } else {
            m_activity->reloadProject(project);
            QCOMPARE(log, QStringList()); // it names the same environments
            writeFile(project->fileName(), "<project executionenvironmentoption='other'/>");
            m_activity->reloadProject(project);
            QVERIFY(!project->executionInterface());
        }
        QCOMPARE(log, expected);
    }

    void workspaceMayCloseWhileAProjectIsUnbound()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s}));
        const QPointer<Project> project = m_activity->projects().first();
        connect(m_activity.get(), &Activity::projectUnbinding, this, [this] { m_activity->closeWorkspace(); });
        writeFile(project->fileName(), "<project executionenvironmentoption='other'/>");
        m_activity->reloadProject(project);
        QVERIFY(!project);
        QVERIFY(!m_activity->workspace());
    }

    void environmentsAreThoseOfTheProjectsThatHaveOne()
    {
        m_activity->openWorkspace(makeWorkspace({u"fw"_s, u"doc"_s, u"dsp"_s}));
        QVERIFY(!m_activity->currentEnvironment());
        const auto first = InterfacePtr<IExecutionEnvironment>(new FakeEnvironment);
        const auto last = InterfacePtr<IExecutionEnvironment>(new FakeEnvironment);
        m_activity->projects()[0]->setExecutionInterface(first.get());
        m_activity->projects()[2]->setExecutionInterface(last.get());
        const auto environments = m_activity->environments();
        QCOMPARE(environments.size(), size_t(2));
        QCOMPARE(environments[0].get(), first.get());
        QCOMPARE(environments[1].get(), last.get());
        QCOMPARE(m_activity->currentEnvironment().get(), first.get());
        m_activity->workspace()->setCurrentProject(1);
        QVERIFY(!m_activity->currentEnvironment());
    }
};

QTEST_MAIN(ActivityTest)
#include "tst_activity.moc"

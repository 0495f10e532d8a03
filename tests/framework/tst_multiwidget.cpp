#include "../emptyenvironment.h"
#include "../project/modeltext.h"
#include "activity.h"
#include "debugpane.h"
#include "iexecutionenvironment.h"
#include "multiwidget.h"
#include <functional>
#include <QLayout>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
class FakeEnvironment : public EmptyEnvironment<>
{
public:
    explicit FakeEnvironment(int *alive) : m_alive(alive) { ++*alive; }

private:
    ~FakeEnvironment() override { --*m_alive; }
    int *m_alive;
};

class FakePane : public DebugPane
{
public:
    FakePane(QWidget *parent, IExecutionEnvironment *environment)
        : DebugPane(parent), environment(shareInterface(environment))
    {}
    void releaseEnvironment() override { environment.reset(); }
    void setPaused(bool value) override { paused = value; }
    void update() override { ++updates; }

    InterfacePtr<IExecutionEnvironment> environment;
    int updates = 0;
    bool paused = false;
};

class FakeMultiWidget : public MultiWidget
{
public:
    using MultiWidget::MultiWidget;
    DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) override
    {
        if (!force && unsuitable.contains(environment))
            return nullptr;
        auto *pane = new FakePane(parent, environment);
        if (const auto action = std::exchange(onCreate, nullptr))
            action();
        return pane;
    }

    std::function<void()> onCreate;            ///< while the first pane is created: its plug-in may call back
    QList<IExecutionEnvironment *> unsuitable; ///< those without the data for the panes
};
} // namespace

class MultiWidgetTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Activity> m_activity;
    QPointer<ProjectWorkspace> m_workspace;
    std::unique_ptr<FakeMultiWidget> m_widget;
    QHash<const IExecutionEnvironment *, QString> m_names; ///< of the projects
    int m_environments = 0;                                ///< number of existing ones

    Project *addProject(const QString &name, bool withEnvironment = true)
    {
        auto *project = new Project({}, {});
        project->load(writeFile(m_directory->filePath(name + u".vnp"_s),
                                "<project executionenvironmentname='Sim of the board'/>"));
        if (withEnvironment) {
            auto *environment = new FakeEnvironment(&m_environments);
            m_names.insert(environment, name);
            project->setExecutionInterface(environment);
            environment->release();
        }
        m_workspace->addProject(project);
        return project;
    }

    QString nameOf(const QWidget *pane) const
    {
        const auto *fake = static_cast<const FakePane *>(pane);
        return fake->environment ? m_names.value(fake->environment.get()) : u"idle"_s;
    }

    /// Panes on the screen: "fw" alone, "[fw] lib" in tabs with the current one in brackets.
    QString shown() const
    {
        const auto *tabs = m_widget->findChild<QTabWidget *>();
        QStringList texts;
        for (DebugPane *pane : m_widget->widgets()) {
            const bool isCurrent = tabs->indexOf(pane) >= 0 && pane == tabs->currentWidget();
            texts += isCurrent ? u"["_s + nameOf(pane) + u"]"_s : nameOf(pane);
        }
        return texts.join(u' ') + (tabs->isVisible() ? u" in tabs"_s : QString());
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_activity = std::make_unique<Activity>();
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/all.vnw"_s));
        m_workspace = m_activity->workspace();
        m_widget = std::make_unique<FakeMultiWidget>(*m_activity);
        m_widget->show();
    }

    void cleanup()
    {
        m_widget.reset();
        if (m_workspace)
            m_activity->closeWorkspace();
        m_activity.reset();
        QCOMPARE(m_environments, 0);
    }

    void widgetIsEmptyAtFirst()
    {
        QVERIFY(m_widget->widgets().isEmpty());
        QCOMPARE(m_widget->layout()->contentsMargins(), QMargins());
        QCOMPARE(m_widget->layout()->spacing(), 0);
    }

    void workspaceWithoutProjectsHasAnIdlePane()
    {
        m_activity->closeWorkspace();
        QCOMPARE(shown(), u"idle"_s);
        QVERIFY(m_widget->widgets().constFirst()->isVisible());
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/other.vnw"_s));
        QCOMPARE(shown(), u"idle"_s);
        m_activity->closeWorkspace();
    }

    void singlePaneHasNoTabs()
    {
        addProject(u"fw"_s);
        m_widget->workspaceChanged();
        QCOMPARE(shown(), u"fw"_s);
        QVERIFY(m_widget->widgets().constFirst()->isVisible());
        QCOMPARE(m_widget->widgets().constFirst()->parentWidget(), m_widget.get());
    }

    void severalPanesHaveTabsAtTheBottom()
    {
        addProject(u"fw"_s);
        addProject(u"lib"_s);
        m_widget->workspaceChanged();
        QCOMPARE(shown(), u"fw [lib] in tabs"_s);
        const auto *tabs = m_widget->findChild<QTabWidget *>();
        QCOMPARE(tabs->tabPosition(), QTabWidget::South);
        QCOMPARE(tabs->tabText(0), u"Sim - fw"_s);
        QCOMPARE(tabs->tabToolTip(0), u"Sim of the board"_s);
    }

    void plugInThatChangesTheWorkspaceWhileItsPaneIsCreated_data()
    {
        QTest::addColumn<int>("projects");
        QTest::addColumn<QString>("expected");
        QTest::newRow("single pane") << 1 << u"fw"_s;
        QTest::newRow("tabs") << 2 << u"fw [lib] in tabs"_s;
    }

    /// Each pane has one reference to the environment; those of the project and of this test are the others.
    void plugInThatChangesTheWorkspaceWhileItsPaneIsCreated()
    {
        QFETCH(int, projects);
        const Project *project = addProject(u"fw"_s);
        if (projects > 1)
            addProject(u"lib"_s);
        m_widget->onCreate = [this] { Q_EMIT m_activity->projectActivityChanged(); };
        m_widget->workspaceChanged();
        QTEST(shown(), "expected");
        const auto environment = shareInterface(project->executionInterface());
        environment->addRef();
        QCOMPARE(environment->release(), 3u);
    }

    /// Commands separate object names by blanks and dots.
    void nameOfAPaneHasNoBlankAndNoDot()
    {
        addProject(u"my fw.v2"_s);
        m_widget->workspaceChanged();
        QCOMPARE(m_widget->widgets().constFirst()->objectName(), u"my-fw-v2/"_s);
    }

    void projectsOfOneNameAreToldApartByANumber()
    {
        addProject(u"fw"_s);
        for (const QString &directory : {u"left"_s, u"right"_s}) {
            QVERIFY(QDir(m_directory->path()).mkdir(directory));
            addProject(directory + u"/fw"_s);
        }
        m_widget->workspaceChanged();
        const auto *tabs = m_widget->findChild<QTabWidget *>();
        QStringList names;
        QStringList texts;
        for (DebugPane *pane : m_widget->widgets()) {
            names += pane->objectName();
            texts += tabs->tabText(tabs->indexOf(pane));
        }
        QCOMPARE(names, (QStringList{u"fw/"_s, u"fw-2/"_s, u"fw-3/"_s}));
        QCOMPARE(texts, (QStringList{u"Sim - fw"_s, u"Sim - fw 2"_s, u"Sim - fw 3"_s}));
    }

    void ampersandInANameIsNoShortcut()
    {
        addProject(u"a&b"_s);
        addProject(u"lib"_s);
        m_widget->workspaceChanged();
        QCOMPARE(m_widget->findChild<QTabWidget *>()->tabText(0), u"Sim - a&&b"_s);
    }

    void panesAreCreatedForActiveProjectsThatOfferThem_data()
    {
        QTest::addColumn<int>("inactive"); // bit 0 for the first project, bit 1 for the second
        QTest::addColumn<int>("unsuitable");
        QTest::addColumn<int>("bare");
        QTest::addColumn<QString>("expected");
        QTest::newRow("all") << 0 << 0 << 0 << u"fw [lib] in tabs"_s;
        QTest::newRow("one of two active: one page") << 1 << 0 << 0 << u"[lib] in tabs"_s;
        QTest::newRow("none active") << 3 << 0 << 0 << u" in tabs"_s;
        QTest::newRow("one does not offer it") << 0 << 2 << 0 << u"[fw] in tabs"_s;
        QTest::newRow("one without environment") << 0 << 0 << 1 << u"[lib] in tabs"_s;
    }

    void panesAreCreatedForActiveProjectsThatOfferThem()
    {
        QFETCH(int, inactive);
        QFETCH(int, unsuitable);
        QFETCH(int, bare);
        QFETCH(QString, expected);
        for (const int bit : {1, 2}) {
            Project *project = addProject(bit == 1 ? u"fw"_s : u"lib"_s, !(bare & bit));
            project->setActive(!(inactive & bit));
            if (unsuitable & bit)
                m_widget->unsuitable += project->executionInterface();
        }
        m_widget->workspaceChanged();
        QCOMPARE(shown(), expected);
    }

    void skippedSingleProjectGivesNoPane()
    {
        addProject(u"fw"_s)->setActive(false);
        m_widget->workspaceChanged();
        QCOMPARE(shown(), QString());
    }

    void currentPageIsTheIndexInTheWorkspace()
    {
        Project *first = addProject(u"first"_s);
        addProject(u"second"_s);
        addProject(u"third"_s);
        first->setActive(false);
        m_widget->workspaceChanged();
        m_workspace->setCurrentProject(1); // "second", whose page is number 0
        QCOMPARE(shown(), u"second [third] in tabs"_s);
        m_workspace->setCurrentProject(0);
        QCOMPARE(shown(), u"[second] third in tabs"_s);
        m_workspace->setCurrentProject(2); // there is no such page
        QCOMPARE(shown(), u"[second] third in tabs"_s);
    }

    void panesFollowTheWorkspace()
    {
        Project *fw = addProject(u"fw"_s);
        m_widget->workspaceChanged();
        Project *lib = addProject(u"lib"_s);
        QCOMPARE(shown(), u"fw [lib] in tabs"_s);
        fw->setActive(false);
        QCOMPARE(shown(), u"[lib] in tabs"_s);
        m_workspace->removeProject(fw);
        QCOMPARE(shown(), u"lib"_s);
        m_workspace->removeProject(lib);
        QCOMPARE(shown(), u"idle"_s);
    }

    void anotherWorkspaceReplacesThePanes()
    {
        addProject(u"fw"_s);
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/other.vnw"_s));
        QCOMPARE(shown(), u"idle"_s);
        QCOMPARE(m_environments, 0);
        m_activity->closeWorkspace();
    }

    void environmentIsReleasedBeforeTheWorkspaceIsDeleted()
    {
        addProject(u"fw"_s);
        QCOMPARE(shown(), u"fw"_s);
        QObject::connect(m_workspace, &QObject::destroyed, this, [&] { QCOMPARE(m_environments, 0); });
        m_activity->closeWorkspace();
        QCOMPARE(shown(), u"idle"_s);
        m_widget->currentProjectChanged();
        QCOMPARE(m_environments, 0);
    }

    void updateCallsEveryPaneAndRebuildsNone()
    {
        addProject(u"fw"_s);
        addProject(u"lib"_s);
        m_widget->workspaceChanged();
        const QList<DebugPane *> panes = m_widget->widgets();
        m_widget->update();
        for (const DebugPane *pane : panes)
            QCOMPARE(static_cast<const FakePane *>(pane)->updates, 1);
        Q_EMIT panes[0]->doUpdate();
        for (const DebugPane *pane : panes)
            QCOMPARE(static_cast<const FakePane *>(pane)->updates, 2);
        QCOMPARE(m_widget->widgets(), panes);
    }

    void everyPaneGetsThePausedState()
    {
        addProject(u"fw"_s);
        m_widget->setPaused(true);
        const auto paused = [&] { return static_cast<FakePane *>(m_widget->widgets().constFirst())->paused; };
        QVERIFY(paused());
        addProject(u"lib"_s); // makes new panes
        QVERIFY(paused());
        m_widget->setPaused(false);
        QVERIFY(!paused());
    }

    void paneThatCausesARebuildReleasesItsEnvironment()
    {
        addProject(u"fw"_s);
        m_widget->workspaceChanged();
        const QPointer<FakePane> pane = static_cast<FakePane *>(m_widget->widgets().constFirst());
        connect(pane, &DebugPane::doUpdate, this, [&] {
            m_workspace->removeProject(m_workspace->project(0));
            QVERIFY(pane);
            QVERIFY(!pane->isVisible());
            QCOMPARE(pane->parentWidget(), nullptr);
            QCOMPARE(m_environments, 0);
        });
        Q_EMIT pane->doUpdate();
        QCOMPARE(shown(), u"idle"_s);
        QTRY_VERIFY(!pane);
    }
};

QTEST_MAIN(MultiWidgetTest)
#include "tst_multiwidget.moc"

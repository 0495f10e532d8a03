#include "iprojectpopulate.h"
#include "population.h"
#include "stubfixture.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The population of projects and the start of their scripts when a workspace has been opened.
class PopulationTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    /// A project with the configuration "Debug"; @p autoPopulate is the value of its property, null for none.
    Project *add(const QString &name, bool offers, const QString &autoPopulate = {})
    {
        buildScript(name, offers ? QSet<QUuid>{IProjectPopulate::Iid} : QSet<QUuid>{});
        Project *project = addProject(name, {}, {}, u"<properties><configuration name=\"Debug\"/></properties>"_s);
        if (!autoPopulate.isNull())
            project->properties()->setProperty(u"projectAutoPopulate"_s, autoPopulate, u"Debug"_s);
        const InterfacePtr<IPluginObject> object(create(u'{' + name + u'}'));
        project->setBuildEnvironment(queryInterface<IBuildEnvironment>(object.get()).get());
        return project;
    }

    void addFile(Project *project, const QString &path, const QString &run = {},
                 const QString &configuration = u"Debug"_s)
    {
        auto *file = new ProjectFile(path.section(u'/', -1), path);
        project->addFile(file);
        if (!run.isNull())
            file->properties()->setProperty(u"runAtProjectLoad"_s, run, configuration);
    }

    /// Runs the scripts and returns "current project: file" for each.
    QString run()
    {
        QStringList runs;
        runProjectScripts(*m_activity, [&](const QString &path) {
            runs += m_workspace->currentProject()->name() + u": "_s + QDir(m_directory->path()).relativeFilePath(path);
            QVERIFY(QDir::isAbsolutePath(path));
        });
        return runs.join(u", "_s);
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void aProjectIsPopulatedInItsCurrentConfiguration()
    {
        Project *project = add(u"fw"_s, true);
        populate(project);
        project->setCurrentConfiguration(u"Release"_s);
        populate(project);
        QCOMPARE(m_stub->takeCalls(), (QStringList{u"fw.populate(Debug)"_s, u"fw.populate(Release)"_s}));
    }

    void populateWithoutTheInterfaceDoesNothing()
    {
        populate(add(u"fw"_s, false));
        populate(addProject(u"plain"_s, {}, {}));
        populate(nullptr);
        QCOMPARE(m_stub->takeCalls(), QStringList());
    }

    void exceptionsOfThePluginAreReported()
    {
        Project *project = add(u"fw"_s, true);
        m_stub->script(u"{fw}"_s).on[u"populate"_s] = throwError;
        expectException("IProjectPopulate::populate");
        populate(project);
    }

    void currentProjectIsPopulatedOnceForEachRequest_data()
    {
        QTest::addColumn<QStringList>("projects"); // "+" before the name: offers to populate; then the property
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("calls");
        QTest::addColumn<bool>("offered");
        QTest::newRow("none") << QStringList{} << -1 << QString() << false;
        QTest::newRow("no project requests it") << QStringList{u"+a"_s, u"+b"_s} << 0 << QString() << true;
        QTest::newRow("no environment offers it") << QStringList{u"a 1"_s, u"b"_s} << 0 << QString() << false;
        QTest::newRow("the current one asks") << QStringList{u"+a 1"_s, u"+b"_s} << 0 << u"a"_s << true;
        QTest::newRow("another one asks") << QStringList{u"+a"_s, u"+b 1"_s} << 0 << u"a"_s << true;
        QTest::newRow("both ask") << QStringList{u"+a 1"_s, u"+b 1"_s} << 1 << u"b b"_s << true;
        QTest::newRow("asks, the current one does not offer")
            << QStringList{u"a"_s, u"+b 1"_s} << 0 << QString() << true;
        QTest::newRow("other values") << QStringList{u"+a 0"_s, u"+b true"_s, u"+c 11"_s} << 0 << QString() << true;
    }

    void currentProjectIsPopulatedOnceForEachRequest()
    {
        QFETCH(QStringList, projects);
        QFETCH(int, current);
        QFETCH(QString, calls);
        QFETCH(bool, offered);
        for (QString project : projects) {
            const bool offers = project.startsWith(u'+');
            const QStringList parts = project.remove(u'+').split(u' ');
            add(parts[0], offers, parts.value(1));
        }
        if (current >= 0)
            m_workspace->setCurrentProject(current);
        QCOMPARE(populateWorkspace(*m_activity), offered);
        QCOMPARE(m_stub->takeCalls().replaceInStrings(u".populate(Debug)"_s, QString()).join(u' '), calls);
    }

    void populatingMayCloseTheWorkspace()
    {
        add(u"fw"_s, true, u"1"_s);
        m_stub->script(u"{fw}"_s).on[u"populate"_s] = [&] { dropWorkspace(); };
        add(u"lib"_s, true, u"1"_s);
        m_workspace->setCurrentProject(0);
        QVERIFY(populateWorkspace(*m_activity));
        QCOMPARE(m_stub->objectCount(), 0);
        QVERIFY(!populateWorkspace(*m_activity));
    }

    void scriptsWithThePropertyRunInTheirProject()
    {
        Project *a = add(u"a"_s, false);
        addFile(a, u"boot.py"_s, u"1"_s);
        addFile(a, u"main.c"_s, u"1"_s);
        addFile(a, u"tool.py"_s);
        addFile(a, u"off.py"_s, u"0"_s);
        addFile(a, u"release.py"_s, u"1"_s, u"Release"_s);
        addFile(a, u"../UP.PY"_s, u"1"_s);
        Project *b = add(u"b"_s, false);
        auto *folder = new ProjectFolder(u"scripts"_s);
        b->addFolder(folder, false);
        auto *deep = new ProjectFile(u"deep.py"_s, u"scripts/deep.py"_s);
        folder->addFile(deep);
        deep->properties()->setProperty(u"runAtProjectLoad"_s, u"1"_s, u"Debug"_s);
        addFile(b, path(u"absolute.py"_s), u"1"_s);
        QCOMPARE(run(), u"a: boot.py, a: ../UP.PY, b: absolute.py, b: scripts/deep.py"_s);
        QCOMPARE(m_workspace->currentProjectIndex(), 0);
    }

    void propertyOfTheProjectAppliesToAllItsScripts()
    {
        Project *project = add(u"a"_s, false);
        project->properties()->setProperty(u"runAtProjectLoad"_s, u"1"_s, u"Debug"_s);
        addFile(project, u"boot.py"_s);
        addFile(project, u"not.py"_s, u"0"_s);
        QCOMPARE(run(), u"a: boot.py"_s);
    }

    void afterTheScriptsTheFirstProjectIsCurrent()
    {
        add(u"a"_s, false);
        add(u"b"_s, false);
        QCOMPARE(m_workspace->currentProjectIndex(), 1);
        QCOMPARE(run(), QString());
        QCOMPARE(m_workspace->currentProjectIndex(), 0);
    }

    void anEmptyWorkspaceHasNoScripts() { QCOMPARE(run(), QString()); }

    void aScriptMayRemoveItsProjectAndCloseTheWorkspace()
    {
        Project *a = add(u"a"_s, false);
        addFile(a, u"one.py"_s, u"1"_s);
        addFile(a, u"two.py"_s, u"1"_s);
        Project *b = add(u"b"_s, false);
        addFile(b, u"three.py"_s, u"1"_s);
        QStringList runs;
        runProjectScripts(*m_activity, [&](const QString &path) {
            if (runs.isEmpty())
                m_workspace->removeProject(a);
            runs += QFileInfo(path).fileName();
        });
        QCOMPARE(runs, (QStringList{u"one.py"_s, u"three.py"_s}));
        runs.clear();
        runProjectScripts(*m_activity, [&](const QString &path) {
            runs += QFileInfo(path).fileName();
            dropWorkspace();
        });
        QCOMPARE(runs, QStringList{u"three.py"_s});
        runProjectScripts(*m_activity, [](const QString &) { QFAIL("nothing is open"); });
    }
};

QTEST_MAIN(PopulationTest)
#include "tst_population.moc"

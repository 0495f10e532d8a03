#include "../project/modeltext.h"
#include "builddecisions.h"
#include "ibuildenvironment.h"
#include "interfaceobject.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The decisions of the build commands, without windows and plug-ins.
class BuildDecisionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void compileTextContainsTheFileName_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << u"&Compile %1"_s << QString() << u"&Compile file"_s;
        QTest::newRow("absolute") << u"&Compile %1"_s << u"/work/src/main.c"_s << u"&Compile main.c"_s;
        QTest::newRow("relative") << u"&Compile %1"_s << u"../lib/q15.c"_s << u"&Compile q15.c"_s;
        QTest::newRow("bare") << u"&Compile %1"_s << u"main.c"_s << u"&Compile main.c"_s;
        QTest::newRow("with a percent sign") << u"%1 (%1)"_s << u"a%1.c"_s << u"a%1.c (a%1.c)"_s;
        QTest::newRow("a text without %1") << u"Compile"_s << u"main.c"_s << u"Compile"_s;
    }

    void compileTextContainsTheFileName()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, file);
        QFETCH(QString, text);
        QCOMPARE(compileText(pattern, file), text);
    }

    void aFileBelongsToTheCurrentProjectFirst_data()
    {
        QTest::addColumn<QString>("owners"); // the projects a, b and c that have the file
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("project");
        QTest::newRow("no project") << QString() << 0 << QString();
        QTest::newRow("one, current") << u"b"_s << 1 << u"b"_s;
        QTest::newRow("one, not current") << u"b"_s << 2 << u"b"_s;
        QTest::newRow("all, the first current") << u"abc"_s << 0 << u"a"_s;
        QTest::newRow("all, the last current") << u"abc"_s << 2 << u"c"_s;
        QTest::newRow("two, neither current") << u"bc"_s << 0 << u"b"_s;
    }

    void aFileBelongsToTheCurrentProjectFirst()
    {
        QFETCH(QString, owners);
        QFETCH(int, current);
        QFETCH(QString, project);
        ProjectWorkspace workspace(u"/work/all.vnw"_s);
        for (const QChar name : u"abc"_s) {
            auto *each = new Project(name, u"/work"_s);
            if (owners.contains(name))
                each->addFiles({u"/work/main.c"_s}, nullptr);
            workspace.addProject(each);
        }
        workspace.setCurrentProject(current);
        const Project *found = compilingProject(&workspace, u"/work/main.c"_s);
        QCOMPARE(found ? found->name() : QString(), project);
    }

    void withoutWorkspaceNoProjectCompilesAFile() { QVERIFY(!compilingProject(nullptr, u"/work/main.c"_s)); }

    void compilingIsPossibleInEveryStateExceptBuilding_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("asked");
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state)
            QTest::newRow(qPrintable(QString::number(state))) << state << (state != StateBuilding);
    }

    void compilingIsPossibleInEveryStateExceptBuilding()
    {
        QFETCH(int, state);
        QFETCH(bool, asked);
        class Environment : public InterfaceObject<IBuildEnvironment>
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
        Project project(u"fw"_s, u"/work"_s);
        const InterfacePtr<IBuildEnvironment> environment(new Environment);
        project.setBuildEnvironment(environment.get());
        QCOMPARE(mayCompile(ActivityState(state), u"main.c"_s, &project), asked);
        QVERIFY(!mayCompile(ActivityState(state), QString(), &project));
        QVERIFY(!mayCompile(ActivityState(state), u"main.c"_s, nullptr));
        project.setBuildEnvironment(nullptr);
        QVERIFY(!mayCompile(ActivityState(state), u"main.c"_s, &project));
    }

    void theBuildPatternIsThatOfTheCurrentConfiguration()
    {
        Project project(u"fw"_s, u"/work"_s);
        QCOMPARE(buildMatch(project), QString());
        project.properties()->setProperty(u"buildMatch"_s, u"(file):(line)"_s, u"Debug"_s);
        project.properties()->setProperty(u"buildMatch"_s, u"(line) (file)"_s, u"Release"_s);
        project.setCurrentConfiguration(u"Release"_s);
        QCOMPARE(buildMatch(project), u"(line) (file)"_s);
        project.setCurrentConfiguration(u"Debug"_s);
        QCOMPARE(buildMatch(project), u"(file):(line)"_s);
        project.setCurrentConfiguration(u"Test"_s);
        QCOMPARE(buildMatch(project), QString());
    }
};

QTEST_GUILESS_MAIN(BuildDecisionsTest)
#include "tst_builddecisions.moc"

#include <ibuildenvironment.h>
#include <ibuildevents.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <iprojectproperties.h>
#include <pluginfactory.h>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr const char *Makefile = "$(CONFIG)/program: main.c\n"
                                 "\tmkdir -p $(CONFIG) && cc -o $@ $<\n"
                                 "main.o: main.c\n"
                                 "\tcc -c $<\n"
                                 "clean:\n"
                                 "\trm -rf $(CONFIG)\n"
                                 "sleep:\n"
                                 "\tsleep 1000\n";

/// What Varnel would receive.
class Events : public InterfaceObject<IBuildEvents>
{
public:
    void buildFinished(bool success) override { results += success; }
    void feedback(const QString &text) override { output += text; }
    void xmlFeedback(const QString &) override {}

    QList<bool> results;
    QString output;
};

/// The properties that the user has set.
class Properties : public InterfaceObject<IProjectProperties>
{
public:
    explicit Properties(const QMap<QString, QString> &values) : m_values(values) {}
    QString property(QString key, QString, bool) override { return m_values.value(key); }
    void setProperty(QString, QString, QString) override {}
    QStringList configurations() override { return {}; }
    QStringList propertyKeys(QString) override { return {}; }
    bool isModified() override { return false; }
    void setModified(bool) override {}

private:
    const QMap<QString, QString> m_values;
};

/// A project in a directory.
class Project : public InterfaceObject<IProject>
{
public:
    explicit Project(const QString &path) : m_path(path) {}
    QString name() override { return u"test"_s; }
    QString basePath() override { return m_path; }
    QList<IProjectFolder *> folders() override { return {}; }
    QList<IProjectFile *> files() override { return {}; }
    IProjectProperties *properties() override { return new Properties(values); }
    QString currentConfiguration() override { return u"Debug"_s; }
    bool isModified() override { return false; }
    bool save() override { return false; }
    void addFiles(QStringList) override {}
    QString displayName() override { return u"test"_s; }
    bool isActive() override { return true; }
    void setActive(bool) override {}

    QMap<QString, QString> values;

private:
    const QString m_path;
};
} // namespace

class MakeBuildTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_directory;
    InterfacePtr<Events> m_events;
    InterfacePtr<Project> m_project;
    InterfacePtr<IBuildEnvironment> m_build;

    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_directory->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    [[nodiscard]] bool exists(const QString &name) const { return QFile::exists(m_directory->filePath(name)); }

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        write(u"Makefile"_s, Makefile);
        write(u"main.c"_s, "int main(void) { return 0; }\n");
        auto *factory = qobject_cast<IPluginFactory *>(QPluginLoader(QStringLiteral(PLUGIN_LIBRARY)).instance());
        const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().constFirst()));
        m_build = queryInterface<IBuildEnvironment>(object.get());
        m_events.reset(new Events);
        m_project.reset(new Project(m_directory->path()));
        QVERIFY(m_build->initialise(m_events.get(), {}));
        m_build->setProject(m_project.get());
    }

    void buildMakesEachConfigurationAndCleanRemovesThem()
    {
        QVERIFY(!m_build->isUpToDate(u"Debug"_s));
        m_build->build({u"Debug"_s, u"Release"_s}, false);
        QTRY_COMPARE_WITH_TIMEOUT(m_events->results, QList<bool>{true}, 30000);
        QVERIFY(exists(u"Debug/program"_s) && exists(u"Release/program"_s));
        QVERIFY(m_build->isUpToDate(u"Debug"_s));
        m_build->clean({u"Debug"_s});
        QTRY_COMPARE_WITH_TIMEOUT(m_events->results, (QList<bool>{true, true}), 30000);
        QVERIFY(!exists(u"Debug/program"_s) && exists(u"Release/program"_s));
    }

    void compileMakesTheObjectOfTheFile()
    {
        QVERIFY(m_build->canCompile(u"main.c"_s, u"Debug"_s) && !m_build->canCompile(u"main.h"_s, u"Debug"_s));
        m_build->compile(u"main.c"_s, u"Debug"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_events->results, QList<bool>{true}, 30000);
        QVERIFY(exists(u"main.o"_s));
    }

    void failureEndsTheOtherConfigurations()
    {
        write(u"main.c"_s, "int main(void) { return missing; }\n");
        m_build->build({u"Debug"_s, u"Release"_s}, false);
        QTRY_COMPARE_WITH_TIMEOUT(m_events->results, QList<bool>{false}, 30000);
        QVERIFY(m_events->output.contains(u"main.c:1:25: error: "_s));
        QVERIFY(!m_events->output.contains(u"CONFIG=Release"_s));
    }

    void stoppedBuildIsFinished()
    {
        m_project->values = {{u"makeArguments"_s, u"sleep"_s}, {u"makeJobs"_s, u"1"_s}};
        m_build->build({u"Debug"_s}, false);
        QTRY_VERIFY_WITH_TIMEOUT(m_events->output.contains(u"sleep 1000\n"_s), 30000);
        QVERIFY(m_events->output.contains(u"-j1 CONFIG=Debug sleep\n"_s));
        m_build->stop();
        QTRY_COMPARE_WITH_TIMEOUT(m_events->results, QList<bool>{false}, 30000);
    }

    void emptyListIsFinishedAtOnce()
    {
        m_build->build({}, false);
        QCOMPARE(m_events->results, QList<bool>{true});
    }
};

QTEST_MAIN(MakeBuildTest)
#include "tst_makebuild.moc"

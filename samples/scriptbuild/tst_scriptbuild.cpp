#include <ibuildenvironment.h>
#include <ibuildevents.h>
#include <interfaceobject.h>
#include <pluginfactory.h>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
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
} // namespace

/// The build environment with small scripts.
class ScriptBuildTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_directory;
    InterfacePtr<Events> m_events;
    InterfacePtr<IBuildEnvironment> m_build;

    /// Makes the script that the project would name.
    bool useScript(const QByteArray &text)
    {
        QFile script(m_directory.filePath(u"script"_s));
        return script.open(QIODevice::WriteOnly) && script.write("#!/bin/sh\n" + text) > 0
               && script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
               && (script.close(), m_build->initialise(m_events.get(), script.fileName()));
    }

    /// A process that has ended may wait for its parent to notice.
    static bool isAlive(const QString &process)
    {
        QFile status(u"/proc/%1/stat"_s.arg(process));
        return status.open(QIODevice::ReadOnly) && !status.readAll().contains(") Z ");
    }

private Q_SLOTS:
    void init()
    {
        auto *factory = qobject_cast<IPluginFactory *>(QPluginLoader(QStringLiteral(PLUGIN_LIBRARY)).instance());
        const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().constFirst()));
        m_build = queryInterface<IBuildEnvironment>(object.get());
        QVERIFY(m_build);
        m_events.reset(new Events);
    }

    void scriptGetsTheWorkAndTheConfigurations()
    {
        QVERIFY(useScript("echo $@"));
        m_build->build({u"Debug"_s, u"Release"_s}, true);
        QTRY_COMPARE(m_events->results, QList<bool>{true});
        QCOMPARE(m_events->output, u"rebuild Debug Release\n"_s);
    }

    void failureOfTheScriptIsThatOfTheBuild()
    {
        QVERIFY(useScript("echo no >&2; exit 1"));
        m_build->compile(u"main.c"_s, u"Debug"_s);
        QTRY_COMPARE(m_events->results, QList<bool>{false});
        QCOMPARE(m_events->output, u"no\n"_s);
    }

    void stoppedBuildFails()
    {
        QVERIFY(useScript("exec sleep 1000"));
        m_build->build({u"Debug"_s}, false);
        m_build->stop();
        QTRY_COMPARE(m_events->results, QList<bool>{false});
    }

    void stopEndsWhatTheScriptHasStarted()
    {
        QVERIFY(useScript("sleep 1000 & echo $!; wait"));
        m_build->build({u"Debug"_s}, false);
        QTRY_VERIFY(m_events->output.endsWith(u'\n'));
        const QString process = m_events->output.trimmed();
        QVERIFY(isAlive(process));
        m_build->stop();
        QTRY_COMPARE(m_events->results, QList<bool>{false});
        QTRY_VERIFY(!isAlive(process));
    }

    void nothingIsBuiltWithoutAConfiguration()
    {
        QVERIFY(useScript("echo $@"));
        m_build->build({}, false);
        QCOMPARE(m_events->results, QList<bool>{true});
        QCOMPARE(m_events->output, QString());
    }

    void emptyOptionIsRefused() { QVERIFY(!m_build->initialise(m_events.get(), {})); }
};

QTEST_MAIN(ScriptBuildTest)
#include "tst_scriptbuild.moc"

#include <ibuildenvironment.h>
#include <ibuildevents.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <pluginfactory.h>
#include <QPixmap>
#include <QProcess>

using namespace Qt::StringLiterals;

/// Builds by running the script that the project has as its option, in the project's directory: as
/// "script build Debug Release", with "rebuild" or "clean" instead of "build", or as "script compile main.c Debug".
class ScriptBuild : public QObject, public InterfaceObject<IPluginObject, IBuildEnvironment>
{
    Q_OBJECT
public:
    ScriptBuild()
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        connect(&m_process, &QProcess::readyRead, this, &ScriptBuild::forwardLines);
        connect(&m_process, &QProcess::finished, this, &ScriptBuild::scriptFinished);
        connect(&m_process, &QProcess::errorOccurred, this, &ScriptBuild::scriptFailed);
    }
    ~ScriptBuild() override { m_process.disconnect(); } // no events after the last release()

    int type() override { return Environment; }

    bool initialise(IBuildEvents *events, const QString &option) override
    {
        m_events = shareInterface(events);
        m_script = option;
        if (m_script.isEmpty())
            m_events->feedback(
                u"The project's build environment option is empty. It must be the path of a script.\n"_s);
        return !m_script.isEmpty();
    }
    void setProject(IProject *project) override { m_process.setWorkingDirectory(project->basePath()); }
    void compile(const QString &file, const QString &configuration) override
    {
        run({u"compile"_s, file, configuration});
    }
    bool canCompile(const QString &file, const QString &) override { return file.endsWith(u".c"_s); }
    void build(const QStringList &configurations, bool rebuild) override
    {
        run(QStringList(rebuild ? u"rebuild"_s : u"build"_s) + configurations);
    }
    void clean(const QStringList &configurations) override { run(QStringList(u"clean"_s) + configurations); }
    void stop() override { m_process.kill(); }
    bool isUpToDate(const QString &) override { return true; } // it is not known

private:
    void run(const QStringList &arguments) { m_process.start(m_script, arguments); }
    void forwardLines()
    {
        while (m_process.canReadLine())
            m_events->feedback(QString::fromLocal8Bit(m_process.readLine()));
    }
    void scriptFinished(int exitCode, QProcess::ExitStatus status)
    {
        if (const QByteArray rest = m_process.readAll(); !rest.isEmpty())
            m_events->feedback(QString::fromLocal8Bit(rest) + u'\n');
        m_events->buildFinished(status == QProcess::NormalExit && exitCode == 0);
    }
    void scriptFailed(QProcess::ProcessError error)
    {
        if (error != QProcess::FailedToStart)
            return; // the signal finished() follows
        m_events->feedback(u"Cannot run '%1': %2\n"_s.arg(m_script, m_process.errorString()));
        m_events->buildFinished(false);
    }

    InterfacePtr<IBuildEvents> m_events;
    QString m_script;
    QProcess m_process;
};

/// The root object of the library.
class Factory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"@FEATURE@"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new ScriptBuild : nullptr;
    }
    QString name() override { return u"@NAME@"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkGreen);
        return picture;
    }
};

#include "plugin.moc"

#include <csignal>
#include <ibuildenvironment.h>
#include <ibuildevents.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <pluginfactory.h>
#include <QProcess>
#include <unistd.h>

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
        m_process.setChildProcessModifier([] { ::setpgid(0, 0); }); // a group of its own, for stop()
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
                tr("The project's build environment option is empty. It must be the path of a script.\n"));
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
        if (configurations.isEmpty())
            return m_events->buildFinished(true); // nothing is to be built
        run(QStringList(rebuild ? u"rebuild"_s : u"build"_s) + configurations);
    }
    void clean(const QStringList &configurations) override { run(QStringList(u"clean"_s) + configurations); }
    /// Ends the programs that the script has started as well: they would go on otherwise.
    void stop() override
    {
        if (const auto group = pid_t(m_process.processId()); group > 0)
            ::kill(-group, SIGKILL);
        m_process.kill(); // it may not have its group yet
    }
    bool isUpToDate(const QString &) override
    {
        return true;
    } // unknown to this class: Varnel does not offer a build before debugging

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
        m_events->feedback(tr("Cannot run '%1': %2\n").arg(m_script, m_process.errorString()));
        m_events->buildFinished(false);
    }

    InterfacePtr<IBuildEvents> m_events;
    QString m_script;
    QProcess m_process;
};

/// The root object of the plug-in library.
class ScriptBuildFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"{0b7a3c52-9f51-4c0e-8a52-6f1d3ce0a7d4}"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new ScriptBuild : nullptr;
    }
    QString name() override { return u"Script Build"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkGreen);
        return picture;
    }
};

#include "scriptbuild.moc"

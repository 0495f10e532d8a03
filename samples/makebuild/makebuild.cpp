#include <ibuildenvironment.h>
#include <ibuildevents.h>
#include <ihost.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <iprojectproperties.h>
#include <ipropertydefinitions.h>
#include <iqueryplugininterface.h>
#include <iworkspaceclient.h>
#include <pluginfactory.h>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

using namespace Qt::StringLiterals;

/// Builds with make. The option of the build environment is the name of the makefile, relative to the project; empty
/// for "Makefile". The variable CONFIG is the name of the configuration.
class MakeBuild
    : public QObject,
      public InterfaceObject<IPluginObject, IBuildEnvironment, IPropertyDefinitions, IWorkspaceClient, IProgressCancel>
{
    Q_OBJECT
public:
    MakeBuild()
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        connect(&m_process, &QProcess::readyRead, this, &MakeBuild::readLines);
        connect(&m_process, &QProcess::finished, this, &MakeBuild::makeFinished);
        connect(&m_process, &QProcess::errorOccurred, this, &MakeBuild::makeFailed);
    }
    ~MakeBuild() override
    {
        m_process.disconnect(); // no events after the last release()
        m_process.kill();
        m_process.waitForFinished(1000);
    }

    int type() override { return Environment; }

    bool initialise(IBuildEvents *events, const QString &option) override
    {
        m_events = shareInterface(events);
        m_makefile = option.isEmpty() ? u"Makefile"_s : option;
        return true;
    }
    void setProject(IProject *project) override
    {
        m_project = shareInterface(project);
        m_process.setWorkingDirectory(project->basePath());
        if (!QFileInfo::exists(project->basePath() + u'/' + m_makefile))
            m_events->feedback(tr("There is no '%1' in the folder of the project.\n").arg(m_makefile));
    }
    void setQueryInterface(IQueryPluginInterface *query) override { m_host = ::queryInterface<IHost>(query); }
    void workspaceChanged() override {}

    // Each command is a list of runs of make, one after the other

    void compile(const QString &file, const QString &configuration) override
    {
        begin({{configuration, {u"-B"_s, objectOf(file)}}});
    }
    bool canCompile(const QString &file, const QString &) override
    {
        return QStringList{u"c"_s, u"cpp"_s, u"S"_s}.contains(QFileInfo(file).suffix());
    }
    void build(const QStringList &configurations, bool rebuild) override
    {
        QList<Run> runs;
        for (const QString &configuration : configurations)
            runs.append({configuration, rebuild ? QStringList{u"-B"_s} : QStringList()});
        begin(runs);
    }
    void clean(const QStringList &configurations) override
    {
        QList<Run> runs;
        for (const QString &configuration : configurations)
            runs.append({configuration, {u"clean"_s}});
        begin(runs);
    }
    void stop() override
    {
        m_runs.clear();
        m_process.terminate(); // make removes the target that it was making
    }
    /// "make -q" makes nothing. It gets half a second, because the window waits for the answer.
    bool isUpToDate(const QString &configuration) override
    {
        QProcess question;
        question.setWorkingDirectory(m_process.workingDirectory());
        question.start(u"make"_s, arguments({configuration, {u"-q"_s}}));
        if (question.waitForFinished(500))
            return question.exitStatus() == QProcess::NormalExit && question.exitCode() == 0;
        question.kill();
        question.waitForFinished(500);
        return false;
    }
    void cancelled(int) override { stop(); }

    QString propertyDefinitions() override
    {
        return uR"(<properties><group name="Make"><propertygroup name="Make"><appliesto selector="project"/>
<property key="makeArguments" name="Arguments" type="text" defaultvalue="">
<description>Further arguments for make, separated by spaces: targets, and variables such as V=1.</description>
</property>
<property key="makeJobs" name="Jobs" type="integer" defaultvalue="0">
<description>The number of jobs at the same time; 0 is one for each processor.</description>
</property></propertygroup></group></properties>)"_s;
    }

private:
    struct Run
    {
        QString configuration;
        QStringList arguments;
    };

    [[nodiscard]] static QString objectOf(const QString &file)
    {
        return file.left(file.size() - QFileInfo(file).suffix().size()) + u'o';
    }
    [[nodiscard]] QString property(const QString &key, const QString &configuration) const
    {
        const InterfacePtr<IProjectProperties> store(m_project->properties());
        return store ? store->property(key, configuration, false) : QString();
    }
    [[nodiscard]] QStringList arguments(const Run &run) const
    {
        const int jobs = property(u"makeJobs"_s, run.configuration).toInt();
        const QStringList extra = QProcess::splitCommand(property(u"makeArguments"_s, run.configuration));
        const QString configuration = u"CONFIG="_s + run.configuration;
        const QString jobText = u"-j%1"_s.arg(jobs > 0 ? jobs : QThread::idealThreadCount());
        return QStringList{u"-f"_s, m_makefile, jobText, configuration} + run.arguments + extra;
    }

    void begin(const QList<Run> &runs)
    {
        m_runs = runs;
        m_succeeded = true;
        m_problems.clear();
        if (m_host && !runs.isEmpty())
            m_progress = m_host->beginProgress(tr("make"), this);
        next();
    }
    void next()
    {
        if (m_runs.isEmpty())
            return end();
        const QStringList words = arguments(m_runs.takeFirst());
        m_events->feedback(u"make "_s + words.join(u' ') + u'\n');
        m_process.start(u"make"_s, words);
    }
    void end()
    {
        if (m_host && m_progress)
            m_host->endProgress(std::exchange(m_progress, 0));
        if (m_host)
            m_host->setDiagnostics(tr("Problems"), m_problems);
        m_events->buildFinished(m_succeeded);
    }

    void readLines()
    {
        while (m_process.canReadLine())
            readLine(QString::fromLocal8Bit(m_process.readLine()));
    }
    /// Messages of the compiler are also collected for the list of problems.
    void readLine(const QString &line)
    {
        static const QRegularExpression message(u"^([^:]+):(\\d+):(\\d+): (?:fatal )?(error|warning|note): (.*)$"_s);
        m_events->feedback(line);
        if (const auto match = message.match(line.trimmed()); match.hasMatch())
            m_problems.append({.severity = severity(match.captured(4)),
                               .file = match.captured(1),
                               .line = match.captured(2).toInt(),
                               .column = match.captured(3).toInt(),
                               .text = match.captured(5),
                               .code = {}});
    }
    [[nodiscard]] static int severity(const QString &word)
    {
        return word == "error"_L1 ? Diagnostic::Error : word == "warning"_L1 ? Diagnostic::Warning : Diagnostic::Note;
    }
    void makeFinished(int exitCode, QProcess::ExitStatus status)
    {
        if (const QByteArray rest = m_process.readAll(); !rest.isEmpty())
            readLine(QString::fromLocal8Bit(rest) + u'\n');
        if (status != QProcess::NormalExit || exitCode != 0) {
            m_succeeded = false;
            m_runs.clear(); // the other configurations would fail likewise
        }
        next();
    }
    void makeFailed(QProcess::ProcessError error)
    {
        if (error != QProcess::FailedToStart)
            return; // the signal finished() follows
        m_events->feedback(tr("Cannot run make: %1\n").arg(m_process.errorString()));
        m_succeeded = false;
        m_runs.clear();
        end();
    }

    InterfacePtr<IBuildEvents> m_events;
    InterfacePtr<IProject> m_project;
    InterfacePtr<IHost> m_host;
    QString m_makefile;
    QProcess m_process;
    QList<Run> m_runs; ///< those that have not begun
    QList<Diagnostic> m_problems;
    int m_progress = 0;
    bool m_succeeded = true;
};

/// The root object of the plug-in library.
class MakeBuildFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"{a4f0e6a2-52d6-4f0c-8f1e-0c6d1f9b7e35}"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new MakeBuild : nullptr;
    }
    QString name() override { return u"Make"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkRed);
        return picture;
    }
};

#include "makebuild.moc"

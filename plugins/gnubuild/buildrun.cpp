#include "buildrun.h"
#include "buildcheck.h"
#include "gnuproject.h"
#include "ninjafile.h"
#include "regularfile.h"
#include "textoutput.h"
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
using namespace Qt::StringLiterals;

namespace {

const QString DatabaseName = u"/compile_commands.json"_s;

QString compilationDatabaseName(const BuildDescription &description)
{
    return description.absolute(description.configurationDirectory + DatabaseName);
}

/// Links the database into the directory of all configurations, where editors look for that of the current one.
void linkDatabase(const BuildDescription &description)
{
    const QFileInfo directory(description.absolute(description.configurationDirectory));
    updateLink(directory.path() + DatabaseName, directory.fileName() + DatabaseName);
}

/// A name as it is, from the form in which ninja passes it to the shell: 'host'\''s x'.
QString withoutQuotes(const QString &word)
{
    QString name;
    bool quoted = false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        if (word[i] == u'\'')
            quoted = !quoted;
        else if (word[i] == u'\\' && !quoted && i + 1 < word.size())
            name += word[++i];
        else
            name += word[i];
    }
    return name;
}

/// "[1/9] Compiling main.c" in the language of the program. The file of ninja stays the same in all languages, or a
/// change of the language would make it build again.
QString stepText(const QString &line)
{
    static const QRegularExpression step(u"\\A(\\[\\d+/\\d+\\] )(Compiling|Linking|Making) (.*)\\z"_s);
    const QRegularExpressionMatch match = step.match(line);
    if (!match.hasMatch())
        return line;
    const QStringView work = match.capturedView(2);
    const QString text = work == "Compiling"_L1 ? BuildRun::tr("Compiling %1")
                         : work == "Linking"_L1 ? BuildRun::tr("Linking %1")
                                                : BuildRun::tr("Making %1");
    return match.captured(1) + text.arg(withoutQuotes(match.captured(3)));
}
} // namespace

BuildRun::BuildRun(QObject *parent) : QObject(parent)
{
    connect(&m_process, &ToolProcess::line, this, &BuildRun::showLine);
    connect(&m_process, &ToolProcess::finished, this, &BuildRun::stepEnded);
}

BuildRun::WorkPtr BuildRun::newWork(GnuProject *project, const QString &configuration)
{
    auto work = std::make_shared<Work>();
    work->project = project;
    work->configuration = configuration;
    return work;
}

void BuildRun::addBuild(GnuProject *project, const QString &configuration, bool rebuild)
{
    WorkPtr needed;
    for (GnuProject *each : project->buildOrder(configuration)) {
        const WorkPtr work = newWork(each, configuration);
        work->needed = needed;
        needed = addOneBuild(work, rebuild && each == project);
    }
}

BuildRun::WorkPtr BuildRun::addOneBuild(const WorkPtr &work, bool rebuild)
{
    addStep(work, &BuildRun::describe);
    addStep(work, &BuildRun::preBuild);
    if (rebuild) {
        addStep(work, &BuildRun::listOutputs);
        addStep(work, &BuildRun::removeListed);
    }
    addStep(work, &BuildRun::listStale);
    addStep(work, &BuildRun::removeListed);
    addStep(work, &BuildRun::makeAll);
    addStep(work, &BuildRun::listSections);
    addStep(work, &BuildRun::showUsage);
    return work;
}

void BuildRun::addClean(GnuProject *project, const QString &configuration)
{
    const WorkPtr work = newWork(project, configuration);
    work->description = project->describeTarget(configuration);
    addStep(work, &BuildRun::listOutputs);
    addStep(work, &BuildRun::removeListed);
}

void BuildRun::addCompile(GnuProject *project, const QString &configuration, const QString &file)
{
    const WorkPtr work = newWork(project, configuration);
    addStep(work, &BuildRun::describe);
    addStep(work, &BuildRun::preBuild); // it may generate the file, or what that includes
    m_steps += {work, [this, work, file](ToolProcess::Command &command) { return makeObject(*work, file, command); }};
}

void BuildRun::addStep(const WorkPtr &work, Prepare prepare)
{
    m_steps +=
        {work, [this, work, prepare](ToolProcess::Command &command) { return (this->*prepare)(*work, command); }};
}

void BuildRun::start()
{
    m_running = true;
    m_stopped = false;
    m_success = true;
    m_diagnostics = Diagnostics();
    m_linked.clear();
    QMetaObject::invokeMethod(this, &BuildRun::nextStep, Qt::QueuedConnection);
}

void BuildRun::stop()
{
    if (!m_running)
        return;
    m_stopped = true;
    m_process.stop();
}

void BuildRun::nextStep()
{
    while (!m_steps.isEmpty() && !m_stopped) {
        const Step step = m_steps.takeFirst();
        m_work = step.work;
        if (m_work->needed && m_work->needed->failed)
            m_work->failed = true;
        if (m_work->failed)
            continue;
        ToolProcess::Command command;
        const Outcome outcome = m_work->project ? step.prepare(command) : Outcome::Fail;
        if (outcome == Outcome::Run)
            return m_process.start(command);
        m_work->failed = outcome == Outcome::Fail;
        m_success = m_success && !m_work->failed;
    }
    finish();
}

void BuildRun::stepEnded(bool success)
{
    if (std::exchange(m_work->collecting, false) && !success)
        showLines(std::exchange(m_work->collected, {})); // messages, instead of a list
    m_work->failed = !success;
    m_success = m_success && success;
    nextStep();
}

void BuildRun::finish()
{
    m_steps.clear();
    m_work.reset();
    m_running = false;
    const bool counted = m_diagnostics.errors() + m_diagnostics.warnings() > 0; // else the tools did not run
    const QString counts = tr("Errors: %1, warnings: %2").arg(m_diagnostics.errors()).arg(m_diagnostics.warnings());
    if (m_stopped)
        Q_EMIT line(tr("Stopped."));
    else if (!m_success)
        Q_EMIT line(counted ? tr("Failed. %1").arg(counts) : tr("Failed."));
    else
        Q_EMIT line(counted ? tr("Done. %1").arg(counts) : tr("Done."));
    Q_EMIT finished(m_success && !m_stopped);
}

void BuildRun::showLines(const QStringList &lines)
{
    for (const QString &each : lines)
        Q_EMIT line(each);
}

void BuildRun::showLine(const QString &text)
{
    if (m_work->collecting) {
        m_work->collected += text;
        return;
    }
    if (withoutQuotes(text).endsWith(u"] Linking "_s + m_work->description.output))
        m_linked += m_work->description.output;
    if (text == u"ninja: no work to do.")
        Q_EMIT line(tr("Everything is up to date."));
    else
        Q_EMIT line(m_diagnostics.take(stepText(text), m_work->description.directory));
}

BuildRun::Outcome BuildRun::describe(Work &work, ToolProcess::Command &)
{
    QStringList problems;
    Q_EMIT line(tr("Project '%1', configuration '%2'").arg(work.project->name(), work.configuration));
    work.description = work.project->describe(work.configuration, problems);
    problems += toolProblems(work.description);
    work.ninjaFile = ninjaFile(work.description);
    showLines(problems);
    return problems.isEmpty() ? Outcome::Skip : Outcome::Fail;
}

BuildRun::Outcome BuildRun::preBuild(Work &work, ToolProcess::Command &command)
{
    const BuildDescription &description = work.description;
    if (description.preBuild.isEmpty())
        return Outcome::Skip;
    command = {u"/bin/sh"_s, {u"-c"_s, description.preBuild}, description.directory, toolEnvironment()};
    command.environment.insert(u"OUTPUT"_s, description.output);
    command.environment.insert(u"BUILD_DIRECTORY"_s, description.configurationDirectory);
    command.environment.insert(u"CONFIGURATION"_s, description.configuration);
    Q_EMIT line(description.preBuild);
    return Outcome::Run;
}

BuildRun::Outcome BuildRun::listOutputs(Work &work, ToolProcess::Command &command)
{
    if (!QFileInfo::exists(work.description.absolute(work.description.ninjaFileName())))
        return Outcome::Skip; // not built yet
    command = ninjaCommand(work.description, {u"-n"_s, u"-t"_s, u"clean"_s});
    work.collecting = true;
    return Outcome::Run;
}

BuildRun::Outcome BuildRun::listStale(Work &work, ToolProcess::Command &command)
{
    const BuildDescription &description = work.description;
    const QString path = description.absolute(description.ninjaFileName());
    const bool isFirst = !QFileInfo::exists(path);
    if (isFirst || hasContents(path, work.ninjaFile))
        return Outcome::Skip;
    if (!writeFiles(work))
        return Outcome::Fail;
    command = ninjaCommand(description, {u"-n"_s, u"-t"_s, u"cleandead"_s});
    work.collecting = true;
    return Outcome::Run;
}

/// Removes what ninja would remove, but nothing outside the configuration's directory: an output name may lead to a
/// file that is not ours.
BuildRun::Outcome BuildRun::removeListed(Work &work, ToolProcess::Command &)
{
    const BuildDescription &description = work.description;
    const QString directory = description.absolute(description.configurationDirectory);
    int removed = 0;
    for (const QString &each : std::exchange(work.collected, {})) {
        const QString name = each.startsWith(u"Remove "_s) ? each.sliced(7) : QString();
        const QString path = description.absolute(name);
        if (name.isEmpty() || !QFileInfo(path).isFile())
            continue;
        if (!isInside(path, directory))
            Q_EMIT line(tr("'%1' is not removed, because it is not in the directory '%2'.")
                            .arg(name, description.configurationDirectory));
        else if (QFile::remove(path))
            ++removed;
        else
            Q_EMIT line(tr("'%1' cannot be removed.").arg(name));
    }
    if (removed > 0)
        Q_EMIT line(tr("Files removed: %1").arg(removed));
    return Outcome::Skip;
}

BuildRun::Outcome BuildRun::makeAll(Work &work, ToolProcess::Command &command)
{
    const QStringList problems = fileProblems(work.description);
    showLines(problems);
    if (!problems.isEmpty() || !writeFiles(work))
        return Outcome::Fail;
    command = ninjaCommand(work.description, {});
    return Outcome::Run;
}

BuildRun::Outcome BuildRun::makeObject(Work &work, const QString &file, ToolProcess::Command &command)
{
    const BuildDescription &description = work.description;
    const QString path = description.absolute(file);
    const auto source = std::find_if(description.sources.begin(), description.sources.end(),
                                     [&](const SourceFile &each) { return description.absolute(each.path) == path; });
    if (source == description.sources.end()) {
        Q_EMIT line(tr("The file '%1' is not compiled in the configuration '%2'.").arg(file, work.configuration));
        return Outcome::Fail;
    }
    if (!writeFiles(work))
        return Outcome::Fail;
    QFile::remove(description.absolute(source->object));
    command = ninjaCommand(description, {source->object});
    return Outcome::Run;
}

/// After a link, for a program of another computer.
BuildRun::Outcome BuildRun::listSections(Work &work, ToolProcess::Command &command)
{
    command = sectionsCommand(work.description);
    if (!work.description.makesMap || !m_linked.contains(work.description.output) || !isProgram(command.program))
        return Outcome::Skip;
    work.collecting = true;
    return Outcome::Run;
}

BuildRun::Outcome BuildRun::showUsage(Work &work, ToolProcess::Command &)
{
    const QList<SectionSize> sections = readSections(std::exchange(work.collected, {}).join(u'\n'));
    if (!sections.isEmpty())
        Q_EMIT line(usageLine(sections, readRegionsOf(work.description)));
    return Outcome::Skip;
}

bool BuildRun::writeFiles(const Work &work)
{
    const BuildDescription &description = work.description;
    const QString database = compilationDatabaseName(description);
    QString error;
    const QString path = description.absolute(description.ninjaFileName());
    const Written written = writeIfChanged(path, work.ninjaFile, &error);
    if (written == Written::Failed) {
        Q_EMIT line(tr("Cannot write '%1': %2").arg(path, error));
        return false;
    }
    if (written == Written::Changed || !QFileInfo::exists(database))
        writeIfChanged(database, compilationDatabase(description));
    if (work.project->project()->currentConfiguration() == work.configuration)
        linkDatabase(description);
    return true;
}

ToolProcess::Command sectionsCommand(const BuildDescription &description)
{
    return {description.prefix + u"objdump"_s,
            {u"-h"_s, u"-w"_s, withoutLeadingDash(description.output, description.directory)},
            description.directory,
            toolEnvironment()};
}

QList<MemorySize> readRegionsOf(const BuildDescription &description)
{
    QFile map(description.absolute(description.mapFileName()));
    return openRegularFile(map) ? readRegions(map) : QList<MemorySize>();
}

ToolProcess::Command ninjaCommand(const BuildDescription &description, const QStringList &arguments)
{
    QStringList words = {u"-f"_s, description.ninjaFileName()};
    if (description.jobs > 0)
        words += {u"-j"_s, QString::number(description.jobs)};
    if (description.keepGoing)
        words += {u"-k"_s, u"0"_s};
    if (description.showCommands)
        words += u"-v"_s;
    ToolProcess::Command command{u"ninja"_s, words + arguments, description.directory, toolEnvironment()};
    if (!description.distccHosts.isNull())
        command.environment.insert(u"DISTCC_HOSTS"_s, description.distccHosts);
    return command;
}

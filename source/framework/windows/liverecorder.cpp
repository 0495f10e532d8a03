#include "liverecorder.h"
#include "activity.h"
#include "callplugin.h"
#include "ilivememory.h"
#include "project.h"
#include <algorithm>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// The environment of a project while it is asked.
struct LiveRecorder::Processor
{
    InterfacePtr<ILiveMemory> memory;
    bool runs = false;
};

LiveRecorder::LiveRecorder(const Activity &activity, QObject *parent) : QObject(parent), m_activity(activity)
{
    connect(&activity, &Activity::projectsChanged, this, &LiveRecorder::dropGoneProjects);
    const auto forget = [this] {
        clear();
        m_time = 0;
    };
    connect(&activity, &Activity::workspaceClosed, this, forget);
    connect(&activity, &Activity::workspaceReplaced, this, forget);
}

// Variables -----------------------------------------------------------------------------------------------------------

int LiveRecorder::add(Project *project, const QString &expression, bool plotted)
{
    const QString text = expression.simplified();
    for (int i = 0; i < m_variables.size(); ++i) {
        if (m_variables[i].project == project && m_variables[i].expression == text)
            return i;
    }
    if (!project || text.isEmpty() || m_variables.size() >= MostVariables)
        return -1;
    LiveVariable variable;
    variable.project = project;
    variable.expression = text;
    variable.style = freeStyle();
    variable.plotted = plotted;
    m_variables.append(variable);
    ++m_changes;
    Q_EMIT variablesChanged();
    return int(m_variables.size()) - 1;
}

/// The first style that no other variable has, so that a curve keeps its colour.
int LiveRecorder::freeStyle() const
{
    int style = 0;
    while (std::ranges::any_of(m_variables, [style](const LiveVariable &each) { return each.style == style; }))
        ++style;
    return style;
}

void LiveRecorder::remove(int index)
{
    if (index < 0 || index >= m_variables.size())
        return;
    m_variables.removeAt(index);
    ++m_changes;
    Q_EMIT variablesChanged();
}

void LiveRecorder::setPlotted(int index, bool plotted)
{
    if (index < 0 || index >= m_variables.size() || m_variables[index].plotted == plotted)
        return;
    m_variables[index].plotted = plotted;
    Q_EMIT variablesChanged();
}

void LiveRecorder::clear()
{
    m_variables.clear();
    ++m_changes;
    Q_EMIT variablesChanged();
}

void LiveRecorder::clearRecording()
{
    for (LiveVariable &variable : m_variables)
        variable.series = std::make_shared<TimeSeries>();
    m_time = 0;
    Q_EMIT variablesChanged();
}

void LiveRecorder::dropGoneProjects()
{
    const QList<QPointer<Project>> open = m_activity.projects();
    const auto isGone = [&open](const LiveVariable &each) { return !each.project || !open.contains(each.project); };
    if (m_variables.removeIf(isGone) == 0)
        return;
    ++m_changes;
    Q_EMIT variablesChanged();
}

QJsonArray LiveRecorder::stored() const
{
    QJsonArray array;
    for (const LiveVariable &each : m_variables) {
        if (each.project)
            array.append(QJsonObject{{u"project"_s, each.project->fileName()},
                                     {u"expression"_s, each.expression},
                                     {u"plotted"_s, each.plotted}});
    }
    return array;
}

void LiveRecorder::restore(const QJsonArray &stored)
{
    clear();
    const QList<QPointer<Project>> projects = m_activity.projects();
    for (const auto &value : stored) {
        const QJsonObject object = value.toObject();
        const QString file = object.value(u"project"_s).toString();
        const auto project = std::ranges::find_if(
            projects, [&file](const QPointer<Project> &each) { return each && each->fileName() == file; });
        if (project != projects.end())
            add(*project, object.value(u"expression"_s).toString(), object.value(u"plotted"_s).toBool(true));
    }
}

// Reading -------------------------------------------------------------------------------------------------------------

void LiveRecorder::record()
{
    read(false);
}

void LiveRecorder::readAll()
{
    for (LiveVariable &variable : m_variables)
        variable.tried = false;
    read(true);
}

void LiveRecorder::advanceClock()
{
    if (m_clock.isValid() && m_running)
        m_time += m_clock.elapsed();
    m_clock.start();
    m_running = false;
}

void LiveRecorder::read(bool all)
{
    if (m_asking || m_variables.isEmpty())
        return;
    advanceClock();
    const QPointer<LiveRecorder> self(this);
    m_asking = true;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && !readProcessor(project, all))
            break;
    }
    if (!self)
        return;
    m_asking = false;
    Q_EMIT valuesChanged();
}

/// False if this object or the list has changed meanwhile.
bool LiveRecorder::readProcessor(Project *project, bool all)
{
    const auto belongs = [project](const LiveVariable &each) { return each.project == project; };
    if (std::ranges::none_of(m_variables, belongs))
        return true;
    const QPointer<LiveRecorder> self(this);
    const int changes = m_changes;
    const auto environment = shareInterface(project->executionInterface());
    Processor processor;
    auto status = IExecutionEnvironment::ProgramUnknown;
    bool can = false;
    if (environment) {
        processor.memory = queryPlugin<ILiveMemory>(environment);
        readPlugin<&IExecutionEnvironment::programStatus>(status, environment);
        can = askPlugin<&ILiveMemory::canReadLive>(processor.memory);
    }
    if (!self || m_changes != changes)
        return false;
    processor.runs =
        can && (status == IExecutionEnvironment::ProgramRunning || status == IExecutionEnvironment::ProgramSleeping);
    m_running = m_running || processor.runs;
    for (int i = 0; i < m_variables.size(); ++i) {
        if (!belongs(m_variables[i]))
            continue;
        if (!can)
            m_variables[i].state = processor.memory ? LiveVariable::NoSession : LiveVariable::NotSupported;
        if (!processor.runs && !(can && all))
            m_variables[i].series->addGap(m_time);
        else if (!readVariable(i, processor))
            return false;
    }
    return true;
}

/// A variable that cannot be read may have to be located first, once after each stop. False if this object or the list
/// has changed meanwhile.
bool LiveRecorder::readVariable(int index, const Processor &processor)
{
    const QPointer<LiveRecorder> self(this);
    const int changes = m_changes;
    const QString expression = m_variables[index].expression;
    const bool prepares = !m_variables[index].tried;
    QString text;
    const auto evaluate = [&] { return askPlugin<&ILiveMemory::evaluateLive>(processor.memory, expression, text); };
    bool read = evaluate();
    if (!read && prepares && self && m_changes == changes)
        read = askPlugin<&ILiveMemory::prepareLive>(processor.memory, expression) && self && m_changes == changes
               && evaluate();
    if (!self || m_changes != changes)
        return false;
    LiveVariable &variable = m_variables[index];
    variable.tried = !read;
    variable.state = read ? LiveVariable::Readable : LiveVariable::Unreadable;
    if (read)
        variable.text = text;
    const std::optional<double> number = read ? liveNumber(expression, text) : std::nullopt;
    variable.series->add(m_time, number.value_or(std::numeric_limits<double>::quiet_NaN()));
    return true;
}

// Texts ---------------------------------------------------------------------------------------------------------------

std::optional<double> liveNumber(const QString &expression, const QString &text)
{
    static const QRegularExpression format(u",\\s*([ot])\\s*\\z"_s);
    const QString word = text.trimmed().section(u' ', 0, 0);
    if (word == "true"_L1 || word == "false"_L1)
        return word == "true"_L1;
    bool valid = false;
    double number = 0;
    if (const QRegularExpressionMatch match = format.match(expression); match.hasMatch())
        number = double(word.toULongLong(&valid, match.captured(1) == "t"_L1 ? 2 : 8));
    else if (word.startsWith("0x"_L1))
        number = double(word.toULongLong(&valid, 16));
    else
        number = word.toDouble(&valid);
    return valid ? std::optional(number) : std::nullopt;
}

namespace {
QByteArray cell(const QString &text)
{
    return '"' + QString(text).replace(u'"', u"\"\""_s).toUtf8() + '"';
}

/// The first time of the rest of any column; nothing at the end of all.
std::optional<qint64> nextTime(const QList<LiveColumn> &columns, const QList<qsizetype> &places)
{
    std::optional<qint64> next;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const QList<TimeSeries::Sample> &samples = columns[i].series.samples();
        if (places[i] < samples.size())
            next = std::min(next.value_or(samples[places[i]].time), samples[places[i]].time);
    }
    return next;
}
} // namespace

QByteArray liveCsv(const QList<LiveColumn> &columns)
{
    QByteArray text = cell(LiveRecorder::tr("Seconds"));
    for (const LiveColumn &column : columns)
        text += ',' + cell(column.name);
    text += '\n';
    QList<qsizetype> places(columns.size(), 0);
    for (auto time = nextTime(columns, places); time; time = nextTime(columns, places)) {
        text += QByteArray::number(double(*time) / 1000, 'f', 3);
        for (qsizetype i = 0; i < columns.size(); ++i) {
            text += ',';
            const QList<TimeSeries::Sample> &samples = columns[i].series.samples();
            if (places[i] >= samples.size() || samples[places[i]].time != *time)
                continue;
            const TimeSeries::Sample &sample = samples[places[i]++];
            if (!sample.isGap())
                text += QByteArray::number(sample.value, 'g', QLocale::FloatingPointShortest);
        }
        text += '\n';
    }
    return text;
}

#include "storedbreakpoints.h"
#include "activity.h"
#include "breakpointdetails.h"
#include "breakpointlines.h"
#include "callplugin.h"
#include "programplace.h"
#include "project.h"
#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {
// An environment's details

QJsonObject withDetails(QJsonObject json, const BreakpointDetails &details)
{
    if (!details.condition.isEmpty())
        json.insert(u"condition"_s, details.condition);
    if (details.hitCount > 0)
        json.insert(u"hitCount"_s, qint64(details.hitCount));
    if (!details.logText.isEmpty())
        json.insert(u"logText"_s, details.logText);
    if (details.thread != 0)
        json.insert(u"thread"_s, details.thread);
    if (details.temporary)
        json.insert(u"temporary"_s, true);
    return json;
}

BreakpointDetails detailsIn(const QJsonObject &json)
{
    BreakpointDetails details;
    details.condition = json[u"condition"].toString();
    details.hitCount = uint(qBound(0.0, json[u"hitCount"].toDouble(), double(UINT_MAX)));
    details.logText = json[u"logText"].toString();
    details.thread = json[u"thread"].toInteger();
    details.temporary = json[u"temporary"].toBool();
    return details;
}

bool isPlain(const BreakpointDetails &details)
{
    return withDetails({}, details).isEmpty();
}

int stateIn(const QJsonObject &json)
{
    return json[u"state"].toInt() == BreakpointDisabled ? BreakpointDisabled : BreakpointEnabled;
}

// Breakpoints at lines and addresses

/// With the line in the file beside that in the text if they differ.
QJsonObject placeOf(const QString &file, const BreakpointLines::KeptLine &kept)
{
    QJsonObject json{{u"file"_s, file}, {u"line"_s, kept.line}};
    if (kept.savedAt.isValid()) {
        json.insert(u"fileLine"_s, kept.fileLine);
        json.insert(u"savedAt"_s, kept.savedAt.toMSecsSinceEpoch());
    }
    return json;
}

/// The line in @p file, which may have been saved since the line was kept.
int lineIn(const QString &file, const QJsonObject &json)
{
    const bool unsaved = json.contains(u"fileLine"_s)
                         && QFileInfo(file).lastModified().toMSecsSinceEpoch() == json[u"savedAt"_s].toInteger();
    return json[unsaved ? u"fileLine"_s : u"line"_s].toInt();
}

QJsonArray linesOf(const Project &project, IExecutionEnvironment *environment, const BreakpointLines &lines)
{
    QJsonArray all;
    const auto breakpoints = queryPlugin<IBreakpoints>(environment);
    for (const BreakpointRecord &record : askPlugin<&IBreakpoints::breakpoints>(breakpoints)) {
        if (record.locations.isEmpty() || (record.state != BreakpointEnabled && record.state != BreakpointDisabled))
            continue;
        const BreakpointLocation place = record.locations.first();
        const QString file = isDisassemblyName(place.file) ? anyDisassembly() : project.relativePath(place.file);
        const QString path = QDir::cleanPath(QDir(project.basePath()).absoluteFilePath(place.file));
        QJsonObject json = placeOf(file, lines.lineToKeep(path, place.line));
        json.insert(u"state"_s, record.state);
        all.append(withDetails(json, detailsOf(environment, record)));
    }
    return all;
}

/// False if the environment refuses it.
bool setLine(const Project &project, IExecutionEnvironment *environment, const QJsonObject &json)
{
    const QString stored = json[u"file"].toString();
    const QString file = isDisassemblyName(stored) ? stored : project.absolutePath(stored);
    const int line = lineIn(file, json);
    if (stored.isEmpty() || line < 1)
        return true; // not written by this program
    int result = -1;
    readPlugin<&IBreakpoints::setBreakpoint>(result, queryPlugin<IBreakpoints>(environment), file, line, stateIn(json));
    const BreakpointDetails details = detailsIn(json);
    const auto offer = queryPlugin<IBreakpointDetails>(environment);
    QString reason;
    return result == 0
           && (isPlain(details) || !offer
               || askPlugin<&IBreakpointDetails::setDetails>(offer, file, line, details, reason));
}

// Breakpoints at data

QJsonArray dataOf(IExecutionEnvironment *environment)
{
    QJsonArray all;
    const auto details = queryPlugin<IBreakpointDetails>(environment);
    for (const DataBreakpoint &data : askPlugin<&IBreakpointDetails::dataBreakpoints>(details))
        all.append(withDetails({{u"expression"_s, data.expression},
                                {u"address"_s, u"0x"_s + QString::number(data.address, 16)}, // 64 bits are no number
                                {u"size"_s, qint64(data.size)},
                                {u"access"_s, data.access},
                                {u"state"_s, data.state}},
                               data.details));
    return all;
}

/// The number of such a data breakpoint in an environment that keeps them itself, 0 for none: it must not be doubled.
int existingData(const InterfacePtr<IBreakpointDetails> &offer, const DataBreakpoint &data)
{
    const auto all = askPlugin<&IBreakpointDetails::dataBreakpoints>(offer);
    const auto found = std::ranges::find_if(all, [&](const DataBreakpoint &each) {
        return each.access == data.access && each.expression == data.expression
               && (!data.expression.isEmpty() || each.address == data.address);
    });
    return found == all.end() ? 0 : found->id;
}

bool setData(IExecutionEnvironment *environment, const QJsonObject &json)
{
    DataBreakpoint data;
    data.expression = json[u"expression"].toString();
    data.address = json[u"address"].toString().toULongLong(nullptr, 0);
    data.size = uint(qBound(0.0, json[u"size"].toDouble(), double(UINT_MAX)));
    data.access = qBound(int(DataBreakpoint::Read), json[u"access"].toInt(), int(DataBreakpoint::ReadWrite));
    data.state = stateIn(json);
    data.details = detailsIn(json);
    const auto offer = queryPlugin<IBreakpointDetails>(environment);
    if (!offer || (data.expression.isEmpty() && data.address == 0))
        return true;
    data.id = existingData(offer, data);
    QString reason;
    return askPlugin<&IBreakpointDetails::setDataBreakpoint>(offer, data, reason);
}
} // namespace

StoredBreakpoints::StoredBreakpoints(Activity &activity, const BreakpointLines &lines, QObject *parent)
    : QObject(parent), m_activity(activity), m_lines(lines)
{}

/// A project whose environment is missing this time keeps its breakpoints.
QJsonObject StoredBreakpoints::value() const
{
    QJsonObject all;
    for (const QPointer<Project> &project : m_activity.projects()) {
        const auto environment = shareInterface(project ? project->executionInterface() : nullptr);
        if (queryPlugin<IBreakpoints>(environment.get())) {
            const QString file = project->fileName();
            const QJsonArray lines = linesOf(*project, environment.get(), m_lines);
            const QJsonArray data = dataOf(environment.get());
            if (!lines.isEmpty() || !data.isEmpty())
                all.insert(file, QJsonObject{{u"lines"_s, lines}, {u"data"_s, data}});
        } else if (project && m_stored.contains(project->fileName())) {
            all.insert(project->fileName(), m_stored.value(project->fileName()));
        }
    }
    return all;
}

void StoredBreakpoints::restore(const QJsonObject &stored)
{
    m_stored = stored;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project)
            restore(project, stored.value(project->fileName()).toObject());
    }
    if (!stored.isEmpty())
        Q_EMIT restored();
}

void StoredBreakpoints::restore(Project *project, const QJsonObject &stored)
{
    const QPointer<Project> alive(project); // a plug-in may close the workspace
    const auto environment = shareInterface(project->executionInterface());
    if (!queryPlugin<IBreakpoints>(environment.get()))
        return;
    const QJsonArray lines = stored[u"lines"].toArray();
    for (const auto &each : lines) {
        const QJsonObject json = each.toObject();
        if (alive && !setLine(*project, environment.get(), json))
            Q_EMIT refused(tr("The breakpoint at %1, %2 could not be set again.\n")
                               .arg(json[u"file"].toString(), QString::number(json[u"line"].toInt())));
    }
    const QJsonArray data = stored[u"data"].toArray();
    for (const auto &each : data) {
        const QJsonObject json = each.toObject();
        if (alive && !setData(environment.get(), json))
            Q_EMIT refused(tr("The breakpoint at the data '%1' could not be set again.\n")
                               .arg(json[u"expression"].toString(json[u"address"].toString())));
    }
}

#include "databreakpoints.h"
#include "breakpointcommands.h"
#include "gdbsession.h"
#include <algorithm>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

QList<DataBreakpoint> DataBreakpoints::all() const
{
    QList<DataBreakpoint> points;
    for (const Entry &entry : m_entries)
        points.append(entry.point);
    return points;
}

DataBreakpoints::Entry *DataBreakpoints::find(int id)
{
    const auto found = std::ranges::find(m_entries, id, [](const Entry &entry) { return entry.point.id; });
    return found == m_entries.end() ? nullptr : &*found;
}

DataBreakpoints::Entry *DataBreakpoints::findNumber(int number)
{
    const auto found = std::ranges::find(m_entries, number, &Entry::number);
    return number == 0 || found == m_entries.end() ? nullptr : &*found;
}

bool DataBreakpoints::set(DataBreakpoint &breakpoint, QString &reason)
{
    Entry *known = find(breakpoint.id);
    if (breakpoint.id != 0 && !known) {
        reason = tr("There is no such breakpoint.");
        return false;
    }
    if (breakpoint.state == BreakpointRemoved) {
        if (known) {
            drop(*known);
            m_entries.removeAt(known - m_entries.data());
        }
        return true;
    }
    Entry entry{breakpoint, 0};
    entry.point.details.problem.clear();
    entry.point.details.set = true;
    if (m_session->isAlive() && !insert(&entry, &reason))
        return false;
    if (known) {
        drop(*known);
        *known = entry;
    } else {
        entry.point.id = breakpoint.id = ++m_lastId;
        m_entries.append(entry);
    }
    return true;
}

bool DataBreakpoints::insert(Entry *entry, QString *reason)
{
    static const QRegularExpression created(u"atchpoint (\\d+): "_s);
    const BreakpointDetails &details = entry->point.details;
    QString output;
    MiRecord answer;
    const bool paused = m_session->whilePaused([&] {
        answer = m_session->gdb()->askConsole(watchCommand(entry->point), &output);
        entry->number = created.match(output).captured(1).toInt();
        const QByteArray number = QByteArray::number(entry->number);
        if (answer.isDone() && entry->number != 0 && !details.condition.isEmpty())
            answer = m_session->gdb()->ask("-break-condition " + number + ' ' + miQuoted(details.condition));
        if (answer.isDone() && entry->number != 0 && details.hitCount > 1)
            answer = m_session->gdb()->ask("-break-after " + number + ' ' + QByteArray::number(details.hitCount - 1));
    });
    *reason = !paused ? tr("The program cannot be paused.") : answer.errorText();
    const bool inserted = paused && answer.isDone() && entry->number != 0;
    if (inserted && output.contains(u"Hardware"_s, Qt::CaseInsensitive))
        return entry->point.state == BreakpointEnabled || enable(*entry, reason);
    if (inserted)
        *reason = tr("The target cannot watch these data."); // gdb would execute instruction by instruction
    drop(*entry);
    entry->number = 0;
    return false;
}

bool DataBreakpoints::enable(const Entry &entry, QString *reason)
{
    const QByteArray command = entry.point.state == BreakpointEnabled ? "-break-enable " : "-break-disable ";
    MiRecord answer;
    const bool paused =
        m_session->whilePaused([&] { answer = m_session->gdb()->ask(command + QByteArray::number(entry.number)); });
    *reason = answer.errorText();
    return paused && answer.isDone();
}

void DataBreakpoints::drop(const Entry &entry)
{
    if (entry.number == 0 || !m_session->isAlive())
        return;
    m_session->whilePaused([&] { (void)m_session->gdb()->ask("-break-delete " + QByteArray::number(entry.number)); });
}

void DataBreakpoints::insertAll()
{
    for (Entry &entry : m_entries) {
        BreakpointDetails &details = entry.point.details;
        if (entry.number != 0)
            continue;
        details.hits = 0;
        details.problem.clear();
        details.set = insert(&entry, &details.problem);
        if (!details.set)
            Q_EMIT message(
                tr("The data breakpoint '%1' cannot be set: %2\n").arg(entry.point.expression, details.problem), false);
    }
}

void DataBreakpoints::forget()
{
    for (Entry &entry : m_entries)
        entry.number = 0;
}

int DataBreakpoints::used() const
{
    return int(std::ranges::count_if(
        m_entries, [](const Entry &entry) { return entry.number != 0 && entry.point.state == BreakpointEnabled; }));
}

bool DataBreakpoints::takeHits(int number, uint hits)
{
    Entry *entry = findNumber(number);
    if (entry)
        entry->point.details.hits = hits;
    return entry;
}

bool DataBreakpoints::takeRefusal(int number, const QString &text)
{
    Entry *entry = findNumber(number);
    if (entry) {
        entry->point.details.set = false;
        entry->point.details.problem = text;
    }
    return entry;
}

void DataBreakpoints::clearRefusals()
{
    for (Entry &entry : m_entries) {
        if (entry.number == 0)
            continue;
        entry.point.details.set = true;
        entry.point.details.problem.clear();
    }
}

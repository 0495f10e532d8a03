#include "breakpointlist.h"
#include "gdbsession.h"
#include "sourcepaths.h"
#include "symboltable.h"
#include <algorithm>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {
bool same(const BreakpointLocation &left, const BreakpointLocation &right)
{
    return left.file == right.file && left.line == right.line;
}

void appendOnce(const BreakpointLocation &location, QList<BreakpointLocation> *list)
{
    const bool there =
        std::any_of(list->begin(), list->end(), [&](const auto &known) { return same(known, location); });
    if (!there)
        list->append(location);
}

QString atLocation(const BreakpointLocation &location)
{
    if (isDisassembly(location.file))
        return u"*0x"_s + QString::number(uint(location.line) - 1, 16);
    return QDir::toNativeSeparators(location.file) + u", "_s + QString::number(location.line);
}
} // namespace

QList<BreakpointLocation> breakpointPlaces(const MiValue &breakpoint, bool onlyAddresses)
{
    QList<MiValue> places = breakpoint[u"locations"].items();
    if (places.isEmpty())
        places.append(breakpoint);
    QList<BreakpointLocation> found;
    for (const MiValue &place : places) {
        if (!onlyAddresses && place.contains(u"fullname"))
            appendOnce({place.text(u"fullname"), place.number(u"line")}, &found);
    }
    for (const MiValue &place : places) {
        if (const quint64 address = place.address(u"addr"); place.text(u"addr").startsWith("0x"_L1))
            appendOnce({u"disassembler:"_s, int(uint(address) + 1)}, &found);
    }
    return found;
}

QList<BreakpointLocation> BreakpointList::Entry::places() const
{
    return locations.isEmpty() ? QList<BreakpointLocation>{wanted} : locations;
}

BreakpointList::BreakpointList(GdbSession *session, SymbolTable *symbols, QUnknownInterface *whole)
    : Facet(whole), m_session(session), m_symbols(symbols)
{
    connect(session, &GdbSession::breakpointRecord, this, &BreakpointList::handleRecord);
}

QList<BreakpointRecord> BreakpointList::breakpoints()
{
    QList<BreakpointRecord> records;
    for (const Entry &entry : m_entries)
        records.append({entry.places(), entry.state});
    return records;
}

int BreakpointList::setBreakpoint(const QString &file, int line, int state)
{
    const BreakpointLocation location = normalised(file, line);
    Entry *entry = find(location);
    if (state == BreakpointMultiple)
        return entry ? 0 : 1;
    int result = 0;
    if (state == BreakpointRemoved)
        result = entry ? remove(entry) : 0;
    else
        result = entry ? change(entry, state) : add(location, state);
    Q_EMIT changed();
    return result;
}

BreakpointLocation BreakpointList::normalised(const QString &file, int line) const
{
    if (isDisassembly(file))
        return {u"disassembler:"_s, line};
    return {QDir::cleanPath(QDir(m_basePath).absoluteFilePath(file)), line};
}

BreakpointList::Entry *BreakpointList::find(const BreakpointLocation &location)
{
    const auto names = [&](const Entry &entry) {
        const QList<BreakpointLocation> places = entry.places();
        return same(entry.wanted, location)
               || std::any_of(places.begin(), places.end(), [&](const auto &place) { return same(place, location); });
    };
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), names);
    return found == m_entries.end() ? nullptr : &*found;
}

bool BreakpointList::insert(Entry *entry, QString *error, bool pending)
{
    QByteArray command = "-break-insert ";
    if (pending)
        command += "-f ";
    if (entry->state == BreakpointDisabled)
        command += "-d ";
    if (isDisassembly(entry->wanted.file))
        command += "*0x" + QByteArray::number(m_symbols->widen(uint(entry->wanted.line) - 1), 16);
    else
        command += "--source " + miQuoted(m_symbols->gdbFile(entry->wanted.file)) + " --line "
                   + QByteArray::number(entry->wanted.line);
    MiRecord answer;
    const bool paused = m_session->whilePaused([&] { answer = m_session->gdb()->ask(command); });
    *error = paused ? answer.errorText() : tr("the program cannot be paused");
    if (!paused || answer.isError())
        return false;
    entry->number = answer.results[u"bkpt"].number(u"number");
    takePlaces(answer.results[u"bkpt"], entry);
    return true;
}

int BreakpointList::add(const BreakpointLocation &location, int state)
{
    Entry entry{location, state, 0, {}};
    QString error;
    if (m_session->isAlive() && !insert(&entry, &error)) {
        Q_EMIT message(tr("No breakpoint can be set at %1: %2\n").arg(atLocation(location), error), false);
        return 1;
    }
    if (Entry *present = entry.number ? find(entry.places().first()) : nullptr) {
        drop(&entry); // the line has no code, and the line that gdb chose has a breakpoint already
        return change(present, state);
    }
    m_entries.append(entry);
    return 0;
}

int BreakpointList::change(Entry *entry, int state)
{
    entry->state = state;
    if (!m_session->isAlive())
        return 0;
    QString error;
    if (entry->number == 0) {
        if (insert(entry, &error))
            return 0;
        Q_EMIT message(tr("No breakpoint can be set at %1: %2\n").arg(atLocation(entry->wanted), error), false);
        return 1;
    }
    const QByteArray command = state == BreakpointEnabled ? "-break-enable " : "-break-disable ";
    MiRecord answer;
    const bool paused =
        m_session->whilePaused([&] { answer = m_session->gdb()->ask(command + QByteArray::number(entry->number)); });
    return paused && answer.isDone() ? 0 : 1;
}

int BreakpointList::remove(Entry *entry)
{
    drop(entry);
    m_entries.removeAt(entry - m_entries.data());
    return 0;
}

void BreakpointList::drop(const Entry *entry)
{
    if (entry->number == 0 || !m_session->isAlive())
        return;
    m_session->whilePaused([&] { (void)m_session->gdb()->ask("-break-delete " + QByteArray::number(entry->number)); });
}

void BreakpointList::insertAll()
{
    const bool loadsLibraries = m_session->program().elf.isNative();
    for (Entry &entry : m_entries) {
        QString error;
        QString ignored;
        if (insert(&entry, &error))
            continue;
        if (loadsLibraries && insert(&entry, &ignored, true))
            Q_EMIT message(tr("The breakpoint at %1 waits until the program loads a library with this line.\n")
                               .arg(atLocation(entry.wanted)),
                           false);
        else
            Q_EMIT message(tr("The breakpoint at %1 cannot be set: %2\n").arg(atLocation(entry.wanted), error), false);
    }
    Q_EMIT changed();
}

void BreakpointList::forget()
{
    for (Entry &entry : m_entries) {
        entry.number = 0;
        entry.locations.clear();
    }
}

void BreakpointList::takePlaces(const MiValue &breakpoint, Entry *entry)
{
    entry->locations = breakpointPlaces(breakpoint, isDisassembly(entry->wanted.file));
    for (BreakpointLocation &place : entry->locations) {
        if (isDisassembly(place.file))
            continue;
        if (const QString local = m_symbols->localFile(place.file); !local.isEmpty())
            place.file = local;
    }
}

void BreakpointList::handleRecord(const MiRecord &record)
{
    const MiValue breakpoint = record.results[u"bkpt"];
    const int number = breakpoint.number(u"number");
    for (Entry &entry : m_entries) {
        if (number == 0 || entry.number != number)
            continue;
        const QList<BreakpointLocation> before = entry.locations;
        takePlaces(breakpoint, &entry);
        if (!std::equal(before.begin(), before.end(), entry.locations.begin(), entry.locations.end(),
                        same)) // gdb also reports changes of the hit count
            QMetaObject::invokeMethod(this, &BreakpointList::changed, Qt::QueuedConnection);
    }
}

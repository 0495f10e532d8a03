#include "breakpointlist.h"
#include "backgroundtask.h"
#include "breakpointcommands.h"
#include "disassemblyplace.h"
#include "gdbsession.h"
#include "symboltable.h"
#include <algorithm>
#include <QDir>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr quint64 FlashPatchControl = 0xE0002000; // FP_CTRL
constexpr quint64 WatchControl = 0xE0001000;      // DWT_CTRL

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
        return u"*0x"_s + QString::number(addressOfLine(location.line), 16);
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
            appendOnce(placeOfAddress(address), &found);
    }
    return found;
}

QList<BreakpointLocation> BreakpointList::Entry::places() const
{
    return locations.isEmpty() ? QList<BreakpointLocation>{wanted} : locations;
}

BreakpointList::BreakpointList(GdbSession *session, SymbolTable *symbols, QUnknownInterface *whole)
    : Facet(whole), m_session(session), m_symbols(symbols), m_data(session)
{
    connect(session, &GdbSession::breakpointRecord, this, &BreakpointList::handleRecord);
    connect(session, &GdbSession::changed, this, &BreakpointList::sessionChanged);
    connect(session->gdb(), &MiConnection::failed, this, &BreakpointList::takeRefusals);
    connect(session->gdb(), &MiConnection::logText, this, &BreakpointList::takeRefusals);
    connect(session->gdb(), &MiConnection::console, this, &BreakpointList::printLog);
    connect(&m_data, &DataBreakpoints::message, this, &BreakpointList::message);
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
        return {anyDisassembly(), line};
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
    QByteArray location;
    if (isDisassembly(entry->wanted.file))
        location = "*0x" + QByteArray::number(m_symbols->widen(addressOfLine(entry->wanted.line)), 16);
    else
        location = "--source " + miQuoted(m_symbols->gdbFile(entry->wanted.file)) + " --line "
                   + QByteArray::number(entry->wanted.line);
    MiRecord answer;
    const bool paused = m_session->whilePaused([&] { answer = insertAt(*entry, location, pending); });
    *error = paused ? answer.errorText() : tr("the program cannot be paused");
    entry->details.hits = 0;
    entry->details.set = paused && !answer.isError();
    entry->details.problem = entry->details.set ? QString() : *error;
    if (!entry->details.set)
        return false;
    entry->number = answer.results[u"bkpt"].number(u"number");
    takePlaces(answer.results[u"bkpt"], entry);
    return true;
}

/// gdb checks the expressions of a text only when it prints them, and an error stops the program without a report. As
/// conditions they are checked at once.
MiRecord BreakpointList::insertAt(const Entry &entry, const QByteArray &location, bool pending)
{
    const auto command = [&](const BreakpointDetails &details, bool enabled) {
        QByteArray text = insertCommand(details, enabled, location);
        return pending ? text.insert(text.indexOf(' '), " -f") : text;
    };
    for (const QString &expression : logFormat(entry.details.logText).expressions) {
        BreakpointDetails probe;
        probe.condition = u'(' + expression + u"),1"_s;
        const MiRecord answer = m_session->gdb()->ask(command(probe, false));
        if (answer.isError())
            return answer;
        (void)m_session->gdb()->ask("-break-delete " + answer.results[u"bkpt"].text(u"number").toLatin1());
    }
    return m_session->gdb()->ask(command(entry.details, entry.state == BreakpointEnabled));
}

int BreakpointList::add(const BreakpointLocation &location, int state)
{
    Entry entry{location, state, 0, {}, {}, false};
    QString error;
    if (m_session->isAlive() && !insert(&entry, &error)) {
        Q_EMIT message(tr("No breakpoint can be set at %1: %2\n").arg(atLocation(location), error), false);
        return 1;
    }
    if (Entry *present = entry.number ? find(entry.places().first()) : nullptr) {
        drop(&entry); // the line has no code, and the line that gdb chose has a breakpoint already
        return change(present, state);
    }
    entry.isOutdated = m_session->isBusy();
    m_entries.append(entry);
    return 0;
}

int BreakpointList::change(Entry *entry, int state)
{
    entry->state = state;
    entry->isOutdated = m_session->isBusy();
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
    if (entry->number != 0 && m_session->isBusy())
        m_obsolete.append(entry->number);
    if (entry->number == 0 || !m_session->isAlive())
        return;
    m_session->whilePaused([&] { (void)m_session->gdb()->ask("-break-delete " + QByteArray::number(entry->number)); });
}

void BreakpointList::catchUp()
{
    for (const int number : std::exchange(m_obsolete, {}))
        (void)m_session->gdb()->ask("-break-delete " + QByteArray::number(number));
    for (Entry &entry : m_entries) {
        if (std::exchange(entry.isOutdated, false))
            (void)change(&entry, entry.state);
    }
}

void BreakpointList::insertAll()
{
    const BackgroundTask::Whole whole; // the list does not change meanwhile
    const bool loadsLibraries = m_session->program().elf.isNative();
    for (Entry &entry : m_entries) {
        QString error;
        QString ignored;
        entry.isOutdated = false;
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

void BreakpointList::insertAllData()
{
    m_data.insertAll();
    Q_EMIT changed();
}

void BreakpointList::forget()
{
    for (Entry &entry : m_entries) {
        entry.number = 0;
        entry.locations.clear();
    }
    m_obsolete.clear();
    m_limits = {};
    m_data.forget();
    m_log.clear();
    m_refusedAtStop = -1;
}

// Details -------------------------------------------------------------------------------------------------------------

bool BreakpointList::details(const QString &file, int line, BreakpointDetails &details)
{
    const Entry *entry = find(normalised(file, line));
    if (entry)
        details = entry->details;
    return entry;
}

/// The old one is removed when the new one is inserted, so that a refusal changes nothing.
bool BreakpointList::setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason)
{
    const BreakpointLocation location = normalised(file, line);
    Entry *entry = find(location);
    if (!entry) {
        reason = tr("There is no breakpoint at this line.");
        return false;
    }
    Entry replacement = *entry;
    replacement.number = 0;
    replacement.details = details;
    replacement.details.hits = 0;
    replacement.details.set = true;
    replacement.details.problem.clear();
    if (m_session->isAlive()) {
        if (!insert(&replacement, &reason))
            return false;
        entry = find(location); // gdb may have deleted it meanwhile
        if (entry)
            drop(entry);
    } else if (m_session->isBusy()) {
        replacement.isOutdated = true;
        drop(entry);
    }
    if (entry)
        *entry = replacement;
    else
        m_entries.append(replacement);
    Q_EMIT changed();
    return true;
}

bool BreakpointList::setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason)
{
    if (!m_data.set(breakpoint, reason))
        return false;
    Q_EMIT changed();
    return true;
}

void BreakpointList::readLimits()
{
    m_limits = {};
    const ElfImage &elf = m_session->program().elf;
    const bool isPersonalComputer =
        QSysInfo::currentCpuArchitecture() == "x86_64"_L1 || QSysInfo::currentCpuArchitecture() == "i386"_L1;
    if (elf.isNative() && isPersonalComputer) { // its debug registers
        m_limits.data = 4;
        m_limits.dataSize = 8;
    }
    uint flashPatch = 0;
    uint watch = 0;
    if (elf.machine == ElfImage::Arm && !elf.isNative() && !m_session->target()->isEmulated()
        && m_session->gdb()->ask("-data-evaluate-expression \"(unsigned int)$xpsr\"").isDone() // a Cortex-M
        && m_session->readWord(FlashPatchControl, &flashPatch) && m_session->readWord(WatchControl, &watch))
        m_limits = cortexLimits(flashPatch, watch);
}

BreakpointLimits BreakpointList::limits()
{
    BreakpointLimits limits = m_limits;
    limits.dataUsed = m_data.used();
    if (limits.hardware >= 0)
        limits.hardwareUsed =
            int(std::ranges::count_if(m_entries, [this](const Entry &entry) { return needsHardware(entry); }));
    return limits;
}

/// Whether it is set in read-only memory, where a breakpoint cannot be an instruction.
bool BreakpointList::needsHardware(const Entry &entry) const
{
    const auto isReadOnly = [this](quint64 address) {
        return std::ranges::any_of(m_session->program().elf.segments, [address](const ElfImage::Segment &segment) {
            return !segment.writable && address >= segment.address && address - segment.address < segment.size;
        });
    };
    return entry.number != 0 && entry.state == BreakpointEnabled
           && std::ranges::any_of(entry.locations, [&](const BreakpointLocation &place) {
                  return isDisassembly(place.file) && isReadOnly(addressOfLine(place.line));
              });
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
    if (record.className == "breakpoint-deleted"_L1)
        return removeDeleted(record.results.number(u"id"));
    const MiValue breakpoint = record.results[u"bkpt"];
    const int number = breakpoint.number(u"number");
    const uint hits = breakpoint.text(u"times").toUInt();
    m_hitsChanged = m_data.takeHits(number, hits) || m_hitsChanged;
    for (Entry &entry : m_entries) {
        if (number == 0 || entry.number != number)
            continue;
        m_hitsChanged = m_hitsChanged || entry.details.hits != hits;
        entry.details.hits = hits;
        const QList<BreakpointLocation> before = entry.locations;
        takePlaces(breakpoint, &entry);
        if (!std::equal(before.begin(), before.end(), entry.locations.begin(), entry.locations.end(),
                        same)) // gdb also reports changes of the hit count
            QMetaObject::invokeMethod(this, &BreakpointList::changed, Qt::QueuedConnection);
    }
}

/// Those for one hit are removed with it; others by a command of the user.
void BreakpointList::removeDeleted(int number)
{
    const auto isDeleted = [number](const Entry &entry) { return number != 0 && entry.number == number; };
    if (m_entries.removeIf(isDeleted) > 0)
        QMetaObject::invokeMethod(this, &BreakpointList::changed, Qt::QueuedConnection);
}

/// Some targets refuse breakpoints only when the program is to run.
void BreakpointList::takeRefusals(const QString &text)
{
    for (const int number : refusedBreakpoints(text)) {
        const QString problem = tr("The target cannot set it: %1").arg(text.simplified());
        bool isOurs = m_data.takeRefusal(number, problem);
        for (Entry &entry : m_entries) {
            if (entry.number != number)
                continue;
            entry.details.set = false;
            entry.details.problem = problem;
            isOurs = true;
        }
        if (isOurs && std::exchange(m_refusedAtStop, m_session->stopNumber()) != m_session->stopNumber())
            QMetaObject::invokeMethod(this, &BreakpointList::changed, Qt::QueuedConnection);
    }
}

/// If the program has run since the target refused breakpoints, none are refused any more.
void BreakpointList::sessionChanged()
{
    if (!m_session->isStopped())
        return;
    const bool hasRun = m_refusedAtStop >= 0 && m_refusedAtStop != m_session->stopNumber();
    if (hasRun) {
        m_refusedAtStop = -1;
        m_data.clearRefusals();
        for (Entry &entry : m_entries) {
            if (entry.number == 0)
                continue;
            entry.details.set = true;
            entry.details.problem.clear();
        }
    }
    if (std::exchange(m_hitsChanged, false) || hasRun)
        Q_EMIT changed();
}

/// gdb prints the line of a breakpoint with a text in pieces.
void BreakpointList::printLog(const QString &text)
{
    constexpr qsizetype longest = 10000;
    if (m_log.isEmpty() && !text.startsWith(LogMark))
        return;
    m_log += text;
    if (!m_log.endsWith(u'\n') && m_log.size() < longest)
        return;
    const QString line = std::exchange(m_log, {}).mid(LogMark.size());
    Q_EMIT message(line.endsWith(u'\n') ? line : line + u'\n', false);
}

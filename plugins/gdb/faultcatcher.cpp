#include "faultcatcher.h"
#include "gdbsession.h"

using namespace Qt::StringLiterals;

namespace {
constexpr quint64 VectorTableOffset = 0xE000ED08;
constexpr quint64 ConfigurableFaultStatus = 0xE000ED28;
constexpr quint64 HardFaultStatus = 0xE000ED2C;
constexpr quint64 MemManageAddress = 0xE000ED34;
constexpr quint64 BusFaultAddress = 0xE000ED38;
constexpr quint64 DebugMonitorControl = 0xE000EDFC; // DEMCR
constexpr uint VectorCatch = 0x7F0;                 // of all faults
constexpr uint OnProcessStack = 4;                  // in the return value of an exception
constexpr uint ExceptionMask = 0x1FF;               // in xPSR
constexpr uint StackedProgramCounter = 0x18;        // offset in the stacked frame

bool isCode(const ElfImage &elf, uint address)
{
    return std::any_of(elf.segments.begin(), elf.segments.end(), [address](const ElfImage::Segment &segment) {
        return segment.executable && address >= segment.address && address - segment.address < segment.size;
    });
}
} // namespace

FaultCatcher::FaultCatcher(GdbSession *session, QObject *parent) : QObject(parent), m_session(session)
{
    connect(session, &GdbSession::symbolsLoaded, this, [this] {
        m_handlers.clear(); // they belong to the gdb of the last session
        arm();
    });
    connect(session, &GdbSession::programLoaded, this, &FaultCatcher::arm); // the program may have moved its vectors
    connect(session, &GdbSession::changed, this, &FaultCatcher::check);
}

void FaultCatcher::reset(bool enabled)
{
    m_enabled = enabled;
    m_handlers.clear();
    m_checked = -1;
}

void FaultCatcher::arm()
{
    bool isCortexM = false;
    if (!m_enabled || m_session->program().elf.machine != ElfImage::Arm || m_session->program().elf.isNative()
        || !m_session->isStopped())
        return;
    (void)readRegister("xpsr", &isCortexM);
    if (!isCortexM)
        return;
    const bool byBreakpoint = m_session->target()->isEmulated();
    for (const uint handler : handlers()) {
        if (m_handlers.contains(handler))
            continue;
        m_handlers.insert(handler);
        if (byBreakpoint)
            m_session->gdb()->send("-break-insert *0x" + QByteArray::number(handler, 16));
    }
    uint control = 0;
    if (!byBreakpoint && m_session->readWord(DebugMonitorControl, &control))
        m_session->gdb()->send("-data-evaluate-expression \"*(unsigned int *)0xE000EDFC = "
                               + QByteArray::number(control | VectorCatch) + '"');
}

/// The addresses in the vectors of the faults that are code of the program.
QList<uint> FaultCatcher::handlers()
{
    uint table = 0;
    m_session->readWord(VectorTableOffset, &table);
    QList<uint> found;
    for (int vector = FirstFault; vector <= LastFault; ++vector) {
        uint handler = 0;
        if (m_session->readWord(table + quint64(vector) * 4, &handler)
            && isCode(m_session->program().elf, handler & ~1u))
            found.append(handler & ~1u);
    }
    return found;
}

void FaultCatcher::check()
{
    const GdbSession::Frame frame = m_session->frame();
    if (!m_session->isStopped() || m_session->generation() == m_checked || frame.level != 0
        || !m_handlers.contains(uint(frame.address)))
        return;
    m_checked = m_session->generation();
    const FaultRecord record = readRecord();
    if (record.exception != 0) // else the program calls the function itself
        Q_EMIT message(faultReport(record), true);
}

FaultRecord FaultCatcher::readRecord()
{
    bool known = false;
    FaultRecord record;
    record.exception = readRegister("xpsr", &known) & ExceptionMask;
    m_session->readWord(ConfigurableFaultStatus, &record.configurable);
    m_session->readWord(HardFaultStatus, &record.hard);
    m_session->readWord(MemManageAddress, &record.memoryAddress);
    m_session->readWord(BusFaultAddress, &record.busAddress);
    const bool onProcessStack = readRegister("lr", &known) & OnProcessStack;
    const uint stack = readRegister(onProcessStack ? "psp" : "sp", &known); // not all servers have psp
    record.hasFrame = known && m_session->readWord(quint64(stack) + StackedProgramCounter, &record.programCounter);
    if (record.hasFrame)
        record.place = placeOf(record.programCounter);
    return record;
}

/// "FUNCTION (FILE, LINE)" as far as it is known.
QString FaultCatcher::placeOf(uint address)
{
    const MiRecord answer = m_session->gdb()->ask("-stack-list-frames 0 3");
    for (const MiValue &frame : answer.results[u"stack"].items()) {
        if (frame.address(u"addr") != address)
            continue;
        const QString file = frame.text(u"file").section(u'/', -1);
        return file.isEmpty() ? frame.text(u"func")
                              : u"%1 (%2, %3)"_s.arg(frame.text(u"func"), file, frame.text(u"line"));
    }
    return {};
}

uint FaultCatcher::readRegister(const QByteArray &name, bool *known)
{
    const MiRecord answer = m_session->gdb()->ask("-data-evaluate-expression \"(unsigned int)$" + name + '"');
    return answer.results.text(u"value").toUInt(known);
}

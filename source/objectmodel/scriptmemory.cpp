#include "scriptmemory.h"
#include "idisassembly.h"
#include "imemory64.h"
#include "imemoryverify.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// A slice for which Python could not make a list anyway, such as one of the whole address space.
constexpr uint MostCells = 1u << 26;

void raiseFailed(const QString &text)
{
    raisePython(PyExc_OSError, text);
}

/// Raises an exception for the first cell that was not read or written. An environment may return too few cells.
void checkCells(const MemorySlice &slice, const MemoryBlock &cells)
{
    for (uint i = 0; i < slice.cells; ++i) {
        const int status = i < uint(cells.size()) ? cells.at(i).status : -1;
        if (status != IMemory::Success)
            raiseFailed(memoryBlockErrorText(status, slice.address + i));
    }
}
} // namespace

ScriptMemory::ScriptMemory(const ScriptTarget &target) : m_target(target), m_mode(firstMemoryMode(region())) {}

// Regions and modes

QList<MemoryRegion> ScriptMemory::allRegions() const
{
    const auto memory = m_target.get<IMemory>();
    return askTarget<&IMemory::regions>(memory);
}

QStringList ScriptMemory::regions() const
{
    QStringList names;
    for (const MemoryRegion &region : allRegions())
        names.append(region.name);
    return names;
}

MemoryRegion ScriptMemory::region() const
{
    return allRegions().value(m_region);
}

std::pair<quint64, quint64> ScriptMemory::addresses() const
{
    const MemoryRegion narrow = region();
    if (const auto memory = m_target.find<IMemory64>()) {
        for (const MemoryRegion64 &wide : askTarget<&IMemory64::regions>(memory)) {
            if (wide.id == narrow.id && wide.name == narrow.name)
                return {wide.lowAddress, wide.highAddress};
        }
    }
    return {narrow.lowAddress, narrow.highAddress};
}

void ScriptMemory::setRegion(const QString &name)
{
    const QList<MemoryRegion> all = allRegions();
    const auto found = std::ranges::find(all, name, &MemoryRegion::name);
    if (found == all.end())
        raisePython(PyExc_ValueError, u"Attempt to set unknown memory region"_s);
    m_region = int(found - all.begin());
    if (!(found->modes & uint(m_mode)))
        m_mode = firstMemoryMode(*found);
}

int ScriptMemory::mode() const
{
    const MemoryRegion current = region(); // raises the error of a target that is gone
    if (m_mode == 0)
        m_mode = firstMemoryMode(current);
    return m_mode;
}

void ScriptMemory::setMode(const QString &name)
{
    const int mode = memoryModeOfName(name);
    if (mode == 0)
        raisePython(PyExc_ValueError, u"Attempt to set unknown memory mode"_s);
    if (!(region().modes & uint(mode)))
        raisePython(PyExc_ValueError, u"That mode is not valid"_s);
    m_mode = mode;
}

/// Reading or writing needs a region.
MemoryRegion ScriptMemory::requireRegion() const
{
    const QList<MemoryRegion> all = allRegions();
    if (m_region >= all.size())
        raisePython(PyExc_RuntimeError, u"The memory region does not exist"_s);
    return all.at(m_region);
}

// Optional interfaces

namespace {
InterfacePtr<IMemoryVerify> verifyOf(const ScriptTarget &target)
{
    InterfacePtr<IMemoryVerify> verify = queryPlugin<IMemoryVerify>(target.get<IMemory>());
    if (!verify)
        verify = target.find<IMemoryVerify>();
    if (!verify)
        raisePython(PyExc_AttributeError, u"Memory does not support verify mode"_s);
    return verify;
}
} // namespace

bool ScriptMemory::verify() const
{
    const auto interface = verifyOf(m_target);
    return askTarget<&IMemoryVerify::verify>(interface);
}

void ScriptMemory::setVerify(bool verify) const
{
    const auto interface = verifyOf(m_target);
    runTarget<&IMemoryVerify::setVerify>(interface, verify);
}

QString ScriptMemory::disassemble(uint address) const
{
    const auto disassembly = queryPlugin<IDisassembly>(m_target.get<IMemory>());
    if (!disassembly)
        return {};
    const int id = region().id;
    return plainInstruction(askTarget<&IDisassembly::disassemble>(disassembly, address, id));
}

// Words

uint ScriptMemory::read(uint address) const
{
    const int id = requireRegion().id;
    const int mode = this->mode();
    const auto memory = m_target.get<IMemory>();
    uint value = 0;
    const int status = askTarget<&IMemory::read>(memory, id, mode, address, &value);
    if (status != IMemory::Success)
        raiseFailed(status == IMemory::WriteToRom ? memoryErrorText(-1) : memoryErrorText(status));
    return value;
}

void ScriptMemory::write(uint address, uint value) const
{
    const int id = requireRegion().id;
    const int mode = this->mode();
    const auto memory = m_target.get<IMemory>();
    const int status = askTarget<&IMemory::write>(memory, id, mode, address, value, true);
    if (status != IMemory::Success)
        raiseFailed(memoryErrorText(status));
    m_target.model().notifyDebugWindows(ObjectModel::DataWindows);
}

// Slices

MemorySlice ScriptMemory::slice(qint64 first, qint64 end) const
{
    const MemoryRegion region = requireRegion();
    const std::optional<MemorySlice> slice = memorySlice(region, mode(), first, end);
    if (!slice)
        raisePython(PyExc_IndexError, u"Index error"_s);
    if (slice->cells > MostCells)
        raisePython(PyExc_MemoryError, u"Memory slice is too large"_s);
    return *slice;
}

MemoryBlock ScriptMemory::read(const MemorySlice &slice) const
{
    MemoryBlock cells;
    if (slice.cells == 0)
        return cells;
    const int id = requireRegion().id;
    const auto memory = m_target.get<IMemory>();
    const int mode = this->mode();
    runTarget<&IMemory::readBlock>(memory, id, mode, slice.address, int(slice.cells), cells);
    checkCells(slice, cells);
    cells.resize(slice.cells);
    return cells;
}

void ScriptMemory::write(const MemorySlice &slice, MemoryBlock cells) const
{
    if (slice.cells == 0)
        return;
    const int id = requireRegion().id;
    const int mode = this->mode();
    const auto memory = m_target.get<IMemory>();
    runTarget<&IMemory::writeBlock>(memory, id, mode, slice.address, int(slice.cells), cells, false);
    checkCells(slice, cells);
    m_target.model().notifyDebugWindows(ObjectModel::DataWindows);
}

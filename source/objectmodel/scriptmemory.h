#pragma once
#include "memoryslice.h"
#include "scripttarget.h"
#include "scripttypes.h"
#include <utility>

/// The memory of a target in scripts (`Memory`). Its functions raise Python exceptions.
///
/// It remembers the position of its region in the list of regions, which is read again for each operation, because a
/// target may get other regions with another program.
class ScriptMemory
{
public:
    explicit ScriptMemory(const ScriptTarget &target);

    [[nodiscard]] QStringList regions() const;
    [[nodiscard]] MemoryRegion region() const; ///< The current one; an empty one if the target has none.
    /// The lowest and the highest address of the region, whole where the environment offers IMemory64.
    [[nodiscard]] std::pair<quint64, quint64> addresses() const;
    void setRegion(const QString &name);
    [[nodiscard]] int mode() const; ///< An IMemory::Mode, or 0.
    void setMode(const QString &name);
    [[nodiscard]] bool verify() const;
    void setVerify(bool verify) const;
    [[nodiscard]] QString disassemble(uint address) const;

    [[nodiscard]] uint read(uint address) const;
    void write(uint address, uint value) const;
    /// See ::memorySlice(). Raises an exception for bounds that are out of order.
    [[nodiscard]] MemorySlice slice(qint64 first, qint64 end) const;
    [[nodiscard]] MemoryBlock read(const MemorySlice &slice) const;
    void write(const MemorySlice &slice, MemoryBlock cells) const;

private:
    [[nodiscard]] QList<MemoryRegion> allRegions() const;
    [[nodiscard]] MemoryRegion requireRegion() const;

    const ScriptTarget m_target;
    int m_region = 0;
    mutable int m_mode = 0; ///< 0 until the target has a region
};

[[nodiscard]] py::object bindMemory();

#pragma once
#include <QList>
#include <QString>

/// A range of the target's memory of one kind.
struct TargetRegion
{
    enum class Kind { Ram, Rom, Io };

    QString name;
    quint64 start = 0;
    quint64 length = 0;
    Kind kind = Kind::Ram;

    [[nodiscard]] quint64 end() const { return start + length; } ///< the first address behind it
    [[nodiscard]] bool contains(quint64 address) const { return address >= start && address - start < length; }
    bool operator==(const TargetRegion &) const = default;
};

/// What memory a target has. The stubs that gdb talks to do not say reliably what an access came to, so this table
/// does.
class RegionTable
{
public:
    RegionTable() = default;
    explicit RegionTable(const QList<TargetRegion> &regions) : m_regions(regions) {}

    [[nodiscard]] const QList<TargetRegion> &regions() const { return m_regions; }
    [[nodiscard]] bool isEmpty() const { return m_regions.isEmpty(); }
    /// The region at an address, null if there is none. The first one that has it counts.
    [[nodiscard]] const TargetRegion *at(quint64 address) const;

    /// The table with the region of an address first: the one that the disassembly window shows.
    [[nodiscard]] RegionTable withCodeFirst(quint64 codeAddress) const;

private:
    QList<TargetRegion> m_regions;
};

/// Reads "name:start:length:kind" entries separated by ";", the kind being "ram", "rom" or "io". Numbers are decimal or
/// "0x...", with K or M behind them for 1024 and its square. Entries that cannot be read go to @p bad.
[[nodiscard]] RegionTable parseRegions(const QString &text, QStringList *bad);
/// The map of an emulated board that we know by name; empty for others.
[[nodiscard]] RegionTable boardRegions(const QString &machine);
/// Reads what QEMU's "info mtree -f" prints: the processor's view, neighbours of one name and kind joined.
[[nodiscard]] RegionTable parseMemoryTree(const QString &text);
/// Reads what gdb's "info mem" prints.
[[nodiscard]] RegionTable parseMemoryAttributes(const QString &text);
/// Reads /proc/PID/maps; what no program may read is left out.
[[nodiscard]] RegionTable parseProcessMaps(const QString &text);

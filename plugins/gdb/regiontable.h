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

    [[nodiscard]] quint64 end() const { return start + length; } ///< the first address after it
    [[nodiscard]] bool contains(quint64 address) const { return address >= start && address - start < length; }
    bool operator==(const TargetRegion &) const = default;
};

/// The memory of a target. The result of an access is taken from this table, because debug servers do not report it
/// reliably.
class RegionTable
{
public:
    RegionTable() = default;
    explicit RegionTable(const QList<TargetRegion> &regions) : m_regions(regions) {}

    [[nodiscard]] const QList<TargetRegion> &regions() const { return m_regions; }
    [[nodiscard]] bool isEmpty() const { return m_regions.isEmpty(); }
    /// The first region that contains an address; null if there is none.
    [[nodiscard]] const TargetRegion *at(quint64 address) const;

private:
    QList<TargetRegion> m_regions;
};

/// Reads "name:start:length:kind" entries separated by ";", where kind is "ram", "rom" or "io". Numbers are decimal or
/// "0x...", with an optional suffix K (1024) or M (1024 * 1024). Invalid entries are appended to @p bad.
[[nodiscard]] RegionTable parseRegions(const QString &text, QStringList *bad);
/// The memory map of a common emulated board by its name; empty for others.
[[nodiscard]] RegionTable boardRegions(const QString &machine);
/// Reads the output of QEMU's "info mtree -f": the regions of the first processor, adjacent ones of the same name and
/// kind joined.
[[nodiscard]] RegionTable parseMemoryTree(const QString &text);
/// Reads the output of gdb's "info mem".
[[nodiscard]] RegionTable parseMemoryAttributes(const QString &text);
/// Reads /proc/PID/maps, without unreadable mappings.
[[nodiscard]] RegionTable parseProcessMaps(const QString &text);

#pragma once
#include <QList>
#include <QString>
class QIODevice;

/// The memory that one section of a program needs on the target.
struct SectionSize
{
    QString name;
    quint64 address = 0;     ///< at run time
    quint64 loadAddress = 0; ///< of its contents or initial values
    quint64 size = 0;        ///< in bytes
    bool inFlash = false;    ///< its contents or initial values are in the loaded image
    bool inRam = false;      ///< it is writable

    bool operator==(const SectionSize &) const = default;
};

/// A memory region of a linker script.
struct MemorySize
{
    QString name;
    quint64 start = 0;
    quint64 size = 0; ///< in bytes

    bool operator==(const MemorySize &) const = default;
};

/// The sections that need memory, in the order of @p text, the output of "objdump -h -w". Sections of EEPROM and fuses
/// are neither in flash nor in RAM.
[[nodiscard]] QList<SectionSize> readSections(const QString &text);

/// The regions in a map of the linker; empty if its script defines none.
[[nodiscard]] QList<MemorySize> readRegions(QIODevice &map);

/// A table of the sections with a line of sums, and the use of the regions; each line ends with a line feed.
[[nodiscard]] QString sizeReport(const QList<SectionSize> &sections, const QList<MemorySize> &regions = {});

/// One line: the use of each region that is used at all or, without regions, of flash and RAM.
[[nodiscard]] QString usageLine(const QList<SectionSize> &sections, const QList<MemorySize> &regions);

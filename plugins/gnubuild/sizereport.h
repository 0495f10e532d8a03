#pragma once
#include <QList>
#include <QString>

/// The memory that one section of a program needs on the target.
struct SectionSize
{
    QString name;
    quint64 address = 0;  ///< at run time
    quint64 size = 0;     ///< in bytes
    bool inFlash = false; ///< its contents or initial values are in the loaded image
    bool inRam = false;   ///< it is writable

    bool operator==(const SectionSize &) const = default;
};

/// The sections that need memory, in the order of @p text, the output of "objdump -h -w".
[[nodiscard]] QList<SectionSize> readSections(const QString &text);

/// A table of the sections with a line of sums; each line ends with a line feed.
[[nodiscard]] QString sizeReport(const QList<SectionSize> &sections);

#pragma once
#include <QList>
#include <QString>

/// What one section of a program takes in the memory of its target.
struct SectionSize
{
    QString name;
    quint64 address = 0;  ///< where it is at run time
    quint64 size = 0;     ///< in bytes
    bool inFlash = false; ///< it, or its first values, are part of the loaded image
    bool inRam = false;   ///< it can be written

    bool operator==(const SectionSize &) const = default;
};

/// The sections that take memory, in the order of @p text, which is what "objdump -h -w" prints.
[[nodiscard]] QList<SectionSize> readSections(const QString &text);

/// A table of the sections with a line of sums, each line with its end.
[[nodiscard]] QString sizeReport(const QList<SectionSize> &sections);

#include "sizereport.h"
#include <QCoreApplication>
#include <QIODevice>
#include <QRegularExpression>
using namespace Qt::StringLiterals;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

QString tableLine(const QString &name, const QString &address, const QString &size, const QString &memory)
{
    return name.leftJustified(20) + u' ' + address.rightJustified(12) + u' ' + size.rightJustified(10) + u"  "_s
           + memory + u'\n';
}

QString memoryOf(const SectionSize &section)
{
    if (section.inFlash && section.inRam)
        return Text::tr("flash, RAM");
    if (section.inFlash || section.inRam)
        return section.inFlash ? Text::tr("flash") : Text::tr("RAM");
    return section.name == u".eeprom" ? Text::tr("EEPROM") : Text::tr("fuses");
}

bool isInOtherMemory(const QString &name)
{
    static const QStringList names = {u".eeprom"_s, u".fuse"_s, u".lock"_s, u".signature"_s, u".user_signatures"_s};
    return names.contains(name);
}

bool contains(const MemorySize &region, quint64 address)
{
    return address >= region.start && address - region.start < region.size;
}

quint64 usedOf(const MemorySize &region, const QList<SectionSize> &sections)
{
    quint64 used = 0;
    for (const SectionSize &section : sections) {
        if (contains(region, section.address) || (section.inFlash && contains(region, section.loadAddress)))
            used += section.size;
    }
    return used;
}

QStringList regionTexts(const QList<SectionSize> &sections, const QList<MemorySize> &regions)
{
    QStringList texts;
    for (const MemorySize &region : regions) {
        const quint64 used = usedOf(region, sections);
        if (used == 0)
            continue;
        texts += Text::tr("%1: %2 of %3 bytes (%4 %)")
                     .arg(region.name, QString::number(used), QString::number(region.size),
                          QString::number(double(used) * 100 / double(region.size), 'f', 1));
    }
    return texts;
}

QString sumsText(const QList<SectionSize> &sections)
{
    quint64 flash = 0;
    quint64 ram = 0;
    for (const SectionSize &section : sections) {
        flash += section.inFlash ? section.size : 0;
        ram += section.inRam ? section.size : 0;
    }
    return Text::tr("Flash: %1 bytes, RAM: %2 bytes").arg(flash).arg(ram);
}

} // namespace

QList<SectionSize> readSections(const QString &text)
{
    static const QRegularExpression section(
        uR"(^ *\d+ +(\S+) +([0-9a-f]+) +([0-9a-f]+) +([0-9a-f]+) +[0-9a-f]+ +2\*\*\d+ +(.*)$)"_s,
        QRegularExpression::MultilineOption);
    QList<SectionSize> sections;
    for (const auto &match : section.globalMatch(text)) {
        const QStringList flags = match.captured(5).trimmed().split(u", "_s);
        const quint64 size = match.captured(2).toULongLong(nullptr, 16);
        if (!flags.contains(u"ALLOC"_s) || size == 0)
            continue;
        const bool other = isInOtherMemory(match.captured(1));
        sections += {match.captured(1),
                     match.captured(3).toULongLong(nullptr, 16),
                     match.captured(4).toULongLong(nullptr, 16),
                     size,
                     !other && flags.contains(u"LOAD"_s),
                     !other && !flags.contains(u"READONLY"_s)};
    }
    return sections;
}

QList<MemorySize> readRegions(QIODevice &map)
{
    static const QRegularExpression region(uR"(^(\S+) +0x([0-9a-f]+) +0x([0-9a-f]+))"_s);
    QList<MemorySize> regions;
    bool inTable = false;
    while (!map.atEnd()) {
        const QString line = QString::fromUtf8(map.readLine());
        if (line.startsWith(u"Linker script and memory map"_s))
            break;
        inTable = inTable || line.startsWith(u"Memory Configuration"_s);
        const auto match = region.match(line);
        if (inTable && match.hasMatch() && match.captured(1) != u"*default*")
            regions += {match.captured(1), match.captured(2).toULongLong(nullptr, 16),
                        match.captured(3).toULongLong(nullptr, 16)};
    }
    return regions;
}

QString sizeReport(const QList<SectionSize> &sections, const QList<MemorySize> &regions)
{
    QString text = tableLine(Text::tr("Section"), Text::tr("Address"), Text::tr("Bytes"), Text::tr("Memory"));
    for (const SectionSize &section : sections)
        text += tableLine(section.name, u"0x"_s + QString::number(section.address, 16).rightJustified(8, u'0'),
                          QString::number(section.size), memoryOf(section));
    text += sumsText(sections) + u'\n';
    for (const QString &line : regionTexts(sections, regions))
        text += line + u'\n';
    return text;
}

QString usageLine(const QList<SectionSize> &sections, const QList<MemorySize> &regions)
{
    const QStringList texts = regionTexts(sections, regions);
    return texts.isEmpty() ? sumsText(sections) : texts.join(u", "_s);
}

#include "sizereport.h"
#include <QCoreApplication>
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
    return section.inFlash ? Text::tr("flash") : Text::tr("RAM");
}

} // namespace

QList<SectionSize> readSections(const QString &text)
{
    static const QRegularExpression section(
        uR"(^ *\d+ +(\S+) +([0-9a-f]+) +([0-9a-f]+) +[0-9a-f]+ +[0-9a-f]+ +2\*\*\d+ +(.*)$)"_s,
        QRegularExpression::MultilineOption);
    QList<SectionSize> sections;
    for (const auto &match : section.globalMatch(text)) {
        const QStringList flags = match.captured(4).trimmed().split(u", "_s);
        const quint64 size = match.captured(2).toULongLong(nullptr, 16);
        if (!flags.contains(u"ALLOC"_s) || size == 0)
            continue;
        sections += {match.captured(1), match.captured(3).toULongLong(nullptr, 16), size, flags.contains(u"LOAD"_s),
                     !flags.contains(u"READONLY"_s)};
    }
    return sections;
}

QString sizeReport(const QList<SectionSize> &sections)
{
    quint64 flash = 0;
    quint64 ram = 0;
    QString text = tableLine(Text::tr("Section"), Text::tr("Address"), Text::tr("Bytes"), Text::tr("Memory"));
    for (const SectionSize &section : sections) {
        text += tableLine(section.name, u"0x"_s + QString::number(section.address, 16).rightJustified(8, u'0'),
                          QString::number(section.size), memoryOf(section));
        flash += section.inFlash ? section.size : 0;
        ram += section.inRam ? section.size : 0;
    }
    return text + Text::tr("Flash: %1 bytes, RAM: %2 bytes").arg(flash).arg(ram) + u'\n';
}

#include "regiontable.h"
#include <algorithm>
#include <functional>
#include <limits>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using Kind = TargetRegion::Kind;

const TargetRegion *RegionTable::at(quint64 address) const
{
    for (const TargetRegion &region : m_regions) {
        if (region.contains(address))
            return &region;
    }
    return nullptr;
}

namespace {
constexpr quint64 K = 1024;
constexpr quint64 M = K * 1024;

bool parseNumber(QString text, quint64 *value)
{
    quint64 factor = 1;
    if (text.endsWith(u'K', Qt::CaseInsensitive))
        factor = K;
    if (text.endsWith(u'M', Qt::CaseInsensitive))
        factor = M;
    if (factor > 1)
        text.chop(1);
    bool valid = false;
    *value = text.toULongLong(&valid, 0) * factor;
    return valid;
}

bool parseKind(const QString &text, Kind *kind)
{
    static const QMap<QString, Kind> kinds = {{u"ram"_s, Kind::Ram}, {u"rom"_s, Kind::Rom}, {u"io"_s, Kind::Io}};
    *kind = kinds.value(text.toLower(), Kind::Ram);
    return kinds.contains(text.toLower());
}

bool parseRegion(const QString &text, TargetRegion *region)
{
    const QStringList fields = text.split(u':');
    if (fields.size() != 4)
        return false;
    region->name = fields[0].trimmed();
    return !region->name.isEmpty() && parseNumber(fields[1].trimmed(), &region->start)
           && parseNumber(fields[2].trimmed(), &region->length) && region->length > 0
           && region->length <= std::numeric_limits<quint64>::max() - region->start
           && parseKind(fields[3].trimmed(), &region->kind);
}

/// Appends a region, or extends the last one if they are adjacent and alike.
void appendJoined(const TargetRegion &region, QList<TargetRegion> *regions)
{
    if (!regions->isEmpty() && regions->last().end() == region.start && regions->last().kind == region.kind
        && regions->last().name == region.name)
        regions->last().length += region.length;
    else
        regions->append(region);
}

/// Reads a region from each line that @p line matches: its first two groups are the start and the end in hexadecimal,
/// and
/// @p describe sets name and kind from the others.
RegionTable readRegions(const QString &text, const QRegularExpression &line,
                        const std::function<void(const QRegularExpressionMatch &, TargetRegion *)> &describe)
{
    QList<TargetRegion> regions;
    for (const QString &row : text.split(u'\n')) {
        const auto match = line.match(row);
        TargetRegion region;
        region.start = match.captured(1).toULongLong(nullptr, 16);
        const quint64 end = match.captured(2).toULongLong(nullptr, 16);
        if (!match.hasMatch() || end <= region.start)
            continue;
        region.length = end - region.start;
        describe(match, &region);
        regions.append(region);
    }
    return RegionTable(regions);
}

const TargetRegion SystemControl{u"System control"_s, 0xE0000000, 0x100000, Kind::Io};
} // namespace

RegionTable parseRegions(const QString &text, QStringList *bad)
{
    QList<TargetRegion> regions;
    for (const QString &entry : text.split(u';', Qt::SkipEmptyParts)) {
        TargetRegion region;
        if (parseRegion(entry, &region))
            regions.append(region);
        else if (!entry.trimmed().isEmpty())
            bad->append(entry.trimmed());
    }
    return RegionTable(regions);
}

RegionTable boardRegions(const QString &machine)
{
    static const QMap<QString, QList<TargetRegion>> boards = {
        {u"mps2-an385"_s,
         {{u"Code"_s, 0, 4 * M, Kind::Ram},
          {u"RAM"_s, 0x20000000, 4 * M, Kind::Ram},
          {u"Block RAM"_s, 0x01000000, 64 * K, Kind::Ram},
          {u"External RAM"_s, 0x21000000, 16 * M, Kind::Ram},
          {u"Peripherals"_s, 0x40000000, 0x30000, Kind::Io},
          {u"Ethernet"_s, 0x40200000, 0x100, Kind::Io},
          SystemControl}},
        {u"mps2-an505"_s,
         {{u"Code"_s, 0x10000000, 4 * M, Kind::Ram},
          {u"RAM"_s, 0x38000000, 2 * M, Kind::Ram},
          {u"Internal RAM"_s, 0x30000000, 128 * K, Kind::Ram},
          {u"Non-secure code"_s, 0, 4 * M, Kind::Ram},
          {u"Non-secure RAM"_s, 0x28000000, 2 * M, Kind::Ram},
          {u"Non-secure peripherals"_s, 0x40000000, 0x10000000, Kind::Io},
          {u"Peripherals"_s, 0x50000000, 0x10000000, Kind::Io},
          SystemControl}},
        {u"mps3-an547"_s,
         {{u"Code"_s, 0x10000000, 512 * K, Kind::Ram},
          {u"RAM"_s, 0x31000000, 2 * M, Kind::Ram},
          {u"Non-secure peripherals"_s, 0x40000000, 0x10000000, Kind::Io},
          {u"Peripherals"_s, 0x50000000, 0x10000000, Kind::Io},
          SystemControl}},
        {u"lm3s6965evb"_s,
         {{u"Flash"_s, 0, 256 * K, Kind::Rom},
          {u"RAM"_s, 0x20000000, 64 * K, Kind::Ram},
          {u"Peripherals"_s, 0x40000000, 0x100000, Kind::Io},
          SystemControl}},
        {u"netduinoplus2"_s,
         {{u"Flash"_s, 0x08000000, M, Kind::Rom},
          {u"RAM"_s, 0x20000000, 192 * K, Kind::Ram},
          {u"Flash alias"_s, 0, M, Kind::Rom},
          {u"Peripherals"_s, 0x40000000, 0x30000, Kind::Io},
          SystemControl}},
        {u"stm32vldiscovery"_s,
         {{u"Flash"_s, 0x08000000, 128 * K, Kind::Rom},
          {u"RAM"_s, 0x20000000, 8 * K, Kind::Ram},
          {u"Flash alias"_s, 0, 128 * K, Kind::Rom},
          {u"Peripherals"_s, 0x40000000, 0x30000, Kind::Io},
          SystemControl}},
        {u"microbit"_s,
         {{u"Flash"_s, 0, 256 * K, Kind::Rom},
          {u"RAM"_s, 0x20000000, 16 * K, Kind::Ram},
          {u"Peripherals"_s, 0x40000000, 0x20000, Kind::Io},
          {u"GPIO"_s, 0x50000000, 0x1000, Kind::Io},
          SystemControl}},
    };
    static const QMap<QString, QString> alike = {
        {u"mps2-an386"_s, u"mps2-an385"_s}, {u"mps2-an500"_s, u"mps2-an385"_s}, {u"mps2-an521"_s, u"mps2-an505"_s}};
    return RegionTable(boards.value(alike.value(machine, machine)));
}

RegionTable parseMemoryTree(const QString &text)
{
    static const QRegularExpression line(
        u"^\\s+([0-9a-f]{16})-([0-9a-f]{16}) \\(prio -?\\d+, (ram|rom|romd|i/o|nv-ram)\\): (.*?)( @[0-9a-f]{16})?\\s*$"_s);
    QList<TargetRegion> regions;
    bool processor = false;
    for (const QString &row : text.split(u'\n')) {
        if (row.contains("FlatView"_L1) && processor && !regions.isEmpty())
            break; // the regions of the first processor only
        if (row.contains("AS \"cpu-memory"_L1))
            processor = true;
        const auto match = processor ? line.match(row) : QRegularExpressionMatch();
        if (!match.hasMatch())
            continue;
        const quint64 start = match.captured(1).toULongLong(nullptr, 16);
        const quint64 last = match.captured(2).toULongLong(nullptr, 16);
        const QString kind = match.captured(3);
        appendJoined({match.captured(4), start, last - start + 1,
                      kind == u"i/o"              ? Kind::Io
                      : kind.startsWith("rom"_L1) ? Kind::Rom
                                                  : Kind::Ram},
                     &regions);
    }
    return RegionTable(regions);
}

RegionTable parseMemoryAttributes(const QString &text)
{
    static const QRegularExpression line(u"^\\d+\\s+y\\s+0x([0-9a-f]+)\\s+0x([0-9a-f]+)\\s+(\\w+)"_s);
    return readRegions(text, line, [](const QRegularExpressionMatch &match, TargetRegion *region) {
        const bool ram = match.captured(3) == u"rw";
        region->name = u"%1 0x%2"_s.arg(ram ? u"RAM"_s : u"Flash"_s, QString::number(region->start, 16));
        region->kind = ram ? Kind::Ram : Kind::Rom;
    });
}

RegionTable parseProcessMaps(const QString &text)
{
    static const QRegularExpression line(u"^([0-9a-f]+)-([0-9a-f]+) (r)(.)(.). \\S+ \\S+ \\S+\\s*(.*)$"_s);
    return readRegions(text, line, [](const QRegularExpressionMatch &match, TargetRegion *region) {
        const QString file = match.captured(6).isEmpty() ? u"anonymous"_s : QFileInfo(match.captured(6)).fileName();
        region->name = u"%1 0x%2"_s.arg(file, match.captured(1));
        region->kind = match.captured(4) == u"w" ? Kind::Ram : Kind::Rom;
    });
}

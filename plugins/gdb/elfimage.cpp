#include "elfimage.h"
#include "regularfile.h"
#include <algorithm>
#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
/// Reads numbers and texts at offsets of a file; 0 or empty beyond its end.
class Bytes
{
public:
    explicit Bytes(const QByteArray &bytes) : m_bytes(bytes), m_big(bytes.size() > 5 && bytes[5] == 2) {}

    [[nodiscard]] quint64 number(quint64 at, int size) const
    {
        if (at > quint64(m_bytes.size()) || quint64(size) > quint64(m_bytes.size()) - at)
            return 0;
        quint64 value = 0;
        for (int i = 0; i < size; ++i)
            value = value << 8 | uchar(m_bytes[qsizetype(at) + (m_big ? i : size - 1 - i)]);
        return value;
    }

    [[nodiscard]] QByteArray text(quint64 at) const
    {
        if (at >= quint64(m_bytes.size()))
            return {};
        return m_bytes.mid(qsizetype(at), 64).constData(); // up to the terminating 0
    }

private:
    const QByteArray &m_bytes;
    bool m_big;
};

struct Section
{
    quint64 name = 0;
    quint64 type = 0;
    quint64 flags = 0;
    quint64 offset = 0;
    quint64 size = 0;
};

constexpr int MostHeaders = 4096;
constexpr quint64 MostSymbols = 4'000'000;
constexpr int MostFiles = 20000; ///< that a search for a program examines
constexpr int SymbolTable = 2;
constexpr int WithoutContents = 8;
constexpr quint64 OccupiesMemory = 2;
constexpr int VariableSymbol = 1;
constexpr int FunctionSymbol = 2;
constexpr quint64 ReservedSections = 0xff00;

QList<Section> readSections(const Bytes &bytes, bool wide)
{
    const quint64 table = wide ? bytes.number(0x28, 8) : bytes.number(0x20, 4);
    const quint64 step = bytes.number(wide ? 0x3a : 0x2e, 2);
    const int count = std::min(int(bytes.number(wide ? 0x3c : 0x30, 2)), MostHeaders);
    QList<Section> sections;
    for (int i = 0; i < count; ++i) {
        const quint64 at = table + step * quint64(i);
        sections.append({bytes.number(at, 4), bytes.number(at + 4, 4), bytes.number(at + 8, wide ? 8 : 4),
                         bytes.number(at + (wide ? 24 : 16), wide ? 8 : 4),
                         bytes.number(at + (wide ? 32 : 20), wide ? 8 : 4)});
    }
    return sections;
}

QList<ElfImage::Segment> readSegments(const Bytes &bytes, bool wide)
{
    const quint64 table = wide ? bytes.number(0x20, 8) : bytes.number(0x1c, 4);
    const quint64 step = bytes.number(wide ? 0x36 : 0x2a, 2);
    const int count = std::min(int(bytes.number(wide ? 0x38 : 0x2c, 2)), MostHeaders);
    QList<ElfImage::Segment> segments;
    for (int i = 0; i < count; ++i) {
        const quint64 at = table + step * quint64(i);
        const quint64 flags = bytes.number(at + (wide ? 4 : 24), 4);
        const quint64 size = wide ? bytes.number(at + 40, 8) : bytes.number(at + 20, 4);
        if (bytes.number(at, 4) == 1 && size > 0)
            segments.append(
                {wide ? bytes.number(at + 16, 8) : bytes.number(at + 8, 4), size, (flags & 2) != 0, (flags & 1) != 0});
    }
    return segments;
}

void readSymbols(const Bytes &bytes, const QList<Section> &sections, quint64 addressMask, ElfImage &image)
{
    const bool wide = image.wide;
    QList<quint64> &functions = image.functions;
    const quint64 step = wide ? 24 : 16;
    for (const Section &table : sections) {
        if (table.type != SymbolTable)
            continue;
        const quint64 count = std::min(table.size / step, MostSymbols);
        for (quint64 i = 0; i < count; ++i) {
            const quint64 at = table.offset + i * step;
            const quint64 info = bytes.number(at + (wide ? 4 : 12), 1);
            const quint64 value = wide ? bytes.number(at + 8, 8) : bytes.number(at + 4, 4);
            const quint64 section = bytes.number(at + (wide ? 6 : 14), 2);
            if (section == 0 || section >= ReservedSections)
                continue; // of another program, or a number and no address
            if ((info & 15) == FunctionSymbol)
                functions.append(value & addressMask);
            else if ((info & 15) == VariableSymbol && value == 0)
                image.dataAtZero = true;
        }
    }
    std::sort(functions.begin(), functions.end());
    functions.erase(std::unique(functions.begin(), functions.end()), functions.end());
}

bool hasDebugInformation(const Bytes &bytes, const QList<Section> &sections)
{
    const quint64 names = bytes.number(bytes.number(4, 1) == 2 ? 0x3e : 0x32, 2);
    if (names >= quint64(sections.size()))
        return false;
    return std::any_of(sections.begin(), sections.end(), [&](const Section &section) {
        const QByteArray name = bytes.text(sections[qsizetype(names)].offset + section.name);
        return name == ".debug_info" || name == ".zdebug_info";
    });
}

/// By its name, such as "libm.so" or "libm.so.6": programs that are linked to any address have the same type of file.
bool isSharedLibrary(const QFileInfo &file)
{
    static const QRegularExpression name(uR"(\.so(\.[0-9]+)*$)"_s);
    return name.match(file.fileName()).hasMatch();
}

bool looksLikeProgram(const QFileInfo &info)
{
    QFile file(info.filePath());
    return !isSharedLibrary(info) && file.open(QIODevice::ReadOnly) && readElfImage(file.read(64)).program;
}

QString newestProgram(const QString &directory, const QString &name)
{
    QString best;
    std::pair<bool, QDateTime> bestRank;
    QDirIterator entries(directory, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    for (int seen = 0; seen < MostFiles && entries.hasNext(); ++seen) {
        const QFileInfo file(entries.next());
        const std::pair rank(file.completeBaseName() == name, file.lastModified());
        if ((best.isEmpty() || rank > bestRank) && looksLikeProgram(file)) {
            best = file.filePath();
            bestRank = rank;
        }
    }
    return best;
}
} // namespace

bool ElfImage::isNative() const
{
#if defined(__x86_64__)
    return machine == X86_64 || machine == I386;
#elif defined(__aarch64__)
    return machine == AArch64;
#else
    return false;
#endif
}

ElfImage readElfImage(const QByteArray &contents)
{
    ElfImage image;
    if (!contents.startsWith("\177ELF") || contents.size() < 52)
        return image;
    const Bytes bytes(contents);
    image.wide = contents[4] == 2;
    image.bigEndian = contents[5] == 2;
    image.machine = int(bytes.number(18, 2));
    const quint64 type = bytes.number(16, 2);
    image.program = type == 2 || type == 3;
    image.relocatable = type == 3;
    const quint64 addressMask = image.machine == ElfImage::Arm ? ~quint64(1) : ~quint64(0); // bit 0 marks Thumb code
    image.entry = bytes.number(24, image.wide ? 8 : 4) & addressMask;
    image.segments = readSegments(bytes, image.wide);
    const QList<Section> sections = readSections(bytes, image.wide);
    readSymbols(bytes, sections, addressMask, image);
    for (const Section &section : sections)
        image.loadSize += (section.flags & OccupiesMemory) && section.type != WithoutContents ? section.size : 0;
    image.debugInformation = hasDebugInformation(bytes, sections);
    return image;
}

ElfImage loadElfImage(const QString &fileName)
{
    QFile file(fileName);
    return openRegularFile(file) ? readElfImage(file.readAll()) : ElfImage();
}

QString findImage(const ImageSearch &search)
{
    const QDir base(search.basePath);
    const QString built = base.absoluteFilePath(search.buildDirectory);
    const QString &configuration = search.configuration;
    for (const QString &directory : {built + u'/' + search.project + u'/' + configuration, built + u'/' + configuration,
                                     base.absoluteFilePath(configuration), built, base.path()}) {
        QString image =
            QFileInfo(directory).isDir() ? newestProgram(QDir::cleanPath(directory), search.name) : QString();
        if (!image.isEmpty())
            return image;
    }
    return {};
}

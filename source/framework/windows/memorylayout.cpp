#include "memorylayout.h"
#include <algorithm>
#include <bit>
#include <limits>
#include <optional>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr int WidestWidth = 4;
constexpr quint64 LastAddress = std::numeric_limits<quint64>::max();

void appendHex(QString &text, quint64 value, int digits)
{
    for (int digit = digits - 1; digit >= 0; --digit)
        text += QLatin1Char("0123456789ABCDEF"[value >> (4 * digit) & 0xF]);
}

bool isShown(const MemoryCell &cell)
{
    return cell.status == IMemory::Success || cell.status == IMemory::Uninitialised;
}

QChar characterOf(const MemoryCell &cell)
{
    return cell.value < 0x20 || cell.value > 0x7F ? u'.' : QChar(cell.value);
}
} // namespace

MemoryCell MemoryCache::cell(int wantedRegion, int wantedMode, quint64 at, uint step) const
{
    if (wantedRegion != region || wantedMode != mode || at < address || (at - address) % step != 0)
        return {};
    const quint64 index = (at - address) / step;
    if (index >= quint64(block.size()))
        return {};
    return {block[qsizetype(index)].status, block[qsizetype(index)].value, false};
}

MemoryRegion64 wideRegion(const MemoryRegion &region)
{
    return {region.name, region.id, region.lowAddress, region.highAddress, region.readOnly, region.modes};
}

bool isNarrow(const MemoryRegion64 &region)
{
    return std::max(region.lowAddress, region.highAddress) <= std::numeric_limits<uint>::max();
}

// Widths ----------------------------------------------------------------------

int memoryMode(int width)
{
    switch (width) {
    case 1:
        return IMemory::Byte;
    case 2:
        return IMemory::Word16;
    case 3:
        return IMemory::Word24;
    case 4:
        return IMemory::Word32;
    default:
        qWarning("Undefined memory width");
        return IMemory::Byte;
    }
}

bool supportsWidth(const MemoryRegion64 &region, int width)
{
    return width >= 1 && width <= WidestWidth && (region.modes & uint(memoryMode(width))) != 0;
}

int widestWidth(const MemoryRegion64 &region)
{
    for (int width = WidestWidth; width >= 1; --width) {
        if (supportsWidth(region, width))
            return width;
    }
    qWarning("Unsupported memory mode");
    return 1;
}

uint memoryStep(const MemoryRegion64 &region, int width)
{
    if (!supportsWidth(region, width)) {
        qWarning("Unsupported memory mode");
        return 1;
    }
    if (region.modes & IMemory::Byte)
        return uint(width);
    return width == 4 && (region.modes & IMemory::Word16) ? 2 : 1;
}

uint maskedWord(uint value, int width)
{
    return width >= 1 && width < WidestWidth ? value & ((1U << (8 * width)) - 1) : value;
}

// Lines -----------------------------------------------------------------------

int addressDigits(const MemoryRegion64 &region)
{
    return int(QString::number(region.highAddress, 16).size());
}

int memoryColumns(int characters, int addressDigits, int width)
{
    const bool bytes = width == 1;
    const int cell = bytes ? 4 : 2 * width + 1; // each byte has a character in the column of text as well
    int columns = (characters - 3 - addressDigits) / cell;
    if (bytes && columns % 2 != 0)
        --columns;
    return columns < 1 ? 1 : int(std::bit_floor(uint(columns)));
}

MemoryEditRange memoryEditRange(int addressDigits, int columns, int width)
{
    const int first = addressDigits + 1;
    if (width < 1 || width > WidestWidth) {
        qWarning("MemoryWindow::editRange: unsupported memory mode");
        return {first, first - 1};
    }
    return {first, first + columns * (2 * width + 1) - 2};
}

QString memoryLineText(const MemoryLine &line, int addressDigits, int width)
{
    QString text;
    text.reserve(addressDigits + line.cells.size() * qsizetype(2 * width + 2) + 1);
    appendHex(text, line.address, addressDigits);
    for (const MemoryCell &cell : line.cells) {
        text += u' ';
        if (isShown(cell))
            appendHex(text, cell.value, 2 * width);
        else
            text.resize(text.size() + qsizetype(2) * width, u'?');
    }
    if (width != 1)
        return text;
    text += u' ';
    for (const MemoryCell &cell : line.cells)
        text += characterOf(cell);
    return text;
}

// Addresses -------------------------------------------------------------------

QString memoryAddressText(quint64 address, int digits)
{
    QString text = u"0x"_s;
    appendHex(text, address, digits);
    return text;
}

namespace {
/// Nothing if @p text is no number.
std::optional<quint64> addressIn(const QString &text)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(uR"(\s*(0x|0X|0)?([\da-fA-F]*))"_s));
    const QRegularExpressionMatch match = form.match(text);
    const QString prefix = match.captured(1);
    const quint64 base = prefix.isEmpty() ? 10 : prefix == u'0' ? 8 : 16;
    quint64 value = 0;
    for (const QChar character : match.captured(2)) {
        const auto digit = quint64(QString(character).toUInt(nullptr, 16));
        if (digit >= base)
            return {};
        value = value > (LastAddress - digit) / base ? LastAddress : value * base + digit;
    }
    return match.hasMatch() && !match.captured(0).trimmed().isEmpty() ? std::optional(value) : std::nullopt;
}
} // namespace

quint64 typedMemoryAddress(const QString &text)
{
    return addressIn(text).value_or(0);
}

bool isMemoryAddress(const QString &text)
{
    return addressIn(text).has_value();
}

quint64 addressInRegion(quint64 address, const MemoryRegion64 &region, int columns)
{
    const quint64 clamped = std::min(address, region.highAddress);
    if (clamped <= region.lowAddress || clamped - region.lowAddress < quint64(columns))
        return region.lowAddress;
    return clamped;
}

#include "disassemblerdocument.h"
#include "callplugin.h"
#include "environmentkey.h"
#include "iexecutionenvironment.h"
#include "imemory64.h"
#include "isymbols64.h"
#include "symboladdress.h"
#include "varnelassert.h"
#include <limits>
#include <QPointer>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
/// The region names addresses by 32 bits; those of a larger processor all have the same upper half there. Nothing if
/// it is not known.
std::optional<uint> upperHalfOf(QUnknownInterface *environment, const MemoryRegion &region)
{
    const auto wide = queryPlugin<IMemory64>(environment);
    if (!wide)
        return queryPlugin<ISymbols64>(environment) ? std::nullopt : std::optional(0u);
    for (const MemoryRegion64 &each : askPlugin<&IMemory64::regions>(wide)) {
        if (each.id == region.id && uint(each.lowAddress) == region.lowAddress)
            return uint(each.lowAddress >> 32);
    }
    return {};
}

std::optional<quint64> symbolAddress(uint key, const QString &symbol)
{
    const auto environment = shareInterface(key ? environmentOfKey(key) : nullptr);
    return symbolAddress(environment.get(), symbol);
}

std::optional<quint64> addressIn(uint key, const QString &text)
{
    static const QRegularExpression sum(u"^([^+]+?)\\s*\\+\\s*(0x)?([0-9a-fA-F]+)$"_s);
    if (text.isEmpty())
        return {};
    if (const auto address = symbolAddress(key, text))
        return address;
    if (const QRegularExpressionMatch match = sum.match(text); match.hasMatch()) {
        if (const auto base = addressIn(key, match.captured(1)))
            return *base + match.captured(3).toULongLong(nullptr, match.captured(2).isEmpty() ? 10 : 16);
    }
    bool isNumber = false;
    const quint64 address = text.toULongLong(&isNumber, 16);
    return isNumber ? std::optional(address) : std::nullopt;
}
} // namespace

DisassemblerDocument::DisassemblerDocument(DocumentTemplate *docTemplate) : Document(docTemplate) {}

DisassemblerDocument::~DisassemblerDocument() = default;

bool DisassemblerDocument::open(const QString &filename)
{
    if (!isDisassemblyName(filename))
        return false;
    m_filename = filename;
    m_name = processorOfDisassembly(filename);
    m_key = keyOfDisassembly(filename);
    const auto environment = shareInterface(m_key ? environmentOfKey(m_key) : nullptr);
    m_disassembly = queryPlugin<IDisassembly>(environment.get());
    m_address = queryPlugin<IDisassemblyAddress>(environment.get());
    m_fetch = queryPlugin<IDisassemblyFetch>(environment.get());
    m_region = readRegion(environment.get()).value_or(Region());
    return true;
}

/// Nothing if the environment cannot be asked.
std::optional<DisassemblerDocument::Region> DisassemblerDocument::readRegion(QUnknownInterface *environment)
{
    const auto regions = tryPlugin<&IMemory::regions>(queryPlugin<IMemory>(environment));
    if (!regions)
        return {};
    if (regions->isEmpty() || regions->first().highAddress < regions->first().lowAddress)
        return Region();
    const MemoryRegion &first = regions->first();
    const quint64 count = quint64(first.highAddress) - first.lowAddress + 1;
    return Region{first.lowAddress, int(std::min<quint64>(count, std::numeric_limits<int>::max())),
                  upperHalfOf(environment, first)};
}

void DisassemblerDocument::refreshRegion()
{
    const QPointer<DisassemblerDocument> self(this);
    const auto environment = shareInterface(m_key ? environmentOfKey(m_key) : nullptr);
    const std::optional<Region> region = readRegion(environment.get());
    if (!self || !region || *region == m_region)
        return;
    const Region before = std::exchange(m_region, *region);
    Q_EMIT regionChanged(qint64(before.lowAddress) - m_region.lowAddress);
}

bool DisassemblerDocument::create(const QString &)
{
    VARNEL_ASSERT(false);
    return false;
}

bool DisassemblerDocument::save()
{
    VARNEL_ASSERT(false);
    return false;
}

bool DisassemblerDocument::saveAs(const QString &)
{
    VARNEL_ASSERT(false);
    return false;
}

QDateTime DisassemblerDocument::lastModified()
{
    return QDateTime::currentDateTime();
}

QString DisassemblerDocument::title()
{
    return tr("Disassembly: ") + m_name;
}

QString DisassemblerDocument::objectNames() const
{
    static const QRegularExpression separators(u"[\\s.]"_s);
    return u"disassembly/"_s + QString(m_name).replace(separators, u"-"_s);
}

/// The document may be deleted when a call returns: a plug-in can have its view closed.
QStringList DisassemblerDocument::para(int index)
{
    if (index < 0 || index >= m_region.count)
        return {};
    QString text;
    QStringList lines;
    if (const auto address = shareInterface(m_address.get())) {
        text = askPlugin<&IDisassemblyAddress::text>(address, index);
        if (!text.isNull())
            lines = askPlugin<&IDisassemblyAddress::sourceLines>(address, index);
    } else if (const auto disassembly = shareInterface(m_disassembly.get())) {
        text = askPlugin<&IDisassembly::text>(disassembly, index);
    }
    if (!text.isNull())
        lines.append(text);
    return lines;
}

/// After an exception the text is not waited for.
bool DisassemblerDocument::fetch(int index, int milliseconds)
{
    const auto fetch = shareInterface(m_fetch.get());
    return tryPlugin<&IDisassemblyFetch::fetch>(fetch, index, milliseconds).value_or(true);
}

int DisassemblerDocument::lineOf(int para) const
{
    return lineOfAddress(m_region.lowAddress + uint(para));
}

int DisassemblerDocument::paraOf(int line) const
{
    return paraOfAddress(addressOfLine(line));
}

int DisassemblerDocument::paraOfAddress(quint64 address) const
{
    const auto upperHalf = uint(address >> 32);
    if (upperHalf != 0 && upperHalf != m_region.upperHalf.value_or(upperHalf))
        return -1;
    const uint index = uint(address) - m_region.lowAddress;
    return index < uint(m_region.count) ? int(index) : -1;
}

std::optional<quint64> DisassemblerDocument::addressOf(const QString &text) const
{
    return addressIn(m_key, text.trimmed());
}

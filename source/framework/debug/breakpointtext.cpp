#include "breakpointtext.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr auto patternOptions =
    QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
} // namespace

QString breakpointText(const BreakpointLocation &place)
{
    if (place.file.contains("disassembler:"_L1)) // the line of an address is the address plus 1
        return u"disassembler, 0x"_s + QString::number(uint(place.line) - 1, 16);
    return place.file + u", "_s + QString::number(place.line);
}

std::optional<BreakpointPlace> breakpointPlace(const QString &text)
{
    static const QRegularExpression source(u"^(.*),\\s*(\\d+)\\z"_s, patternOptions);
    static const QRegularExpression address(u"^disassembler,\\s*0x([0-9A-Fa-f]+)\\z"_s,
                                            patternOptions | QRegularExpression::CaseInsensitiveOption);
    bool fits = false; // a number may be too large
    if (const auto match = source.match(text); match.hasMatch()) {
        const int line = match.captured(2).toInt(&fits);
        return fits ? std::optional(BreakpointPlace{{match.captured(1), line}, false}) : std::nullopt;
    }
    const uint value = address.match(text).captured(1).toUInt(&fits, 16);
    return fits ? std::optional(BreakpointPlace{{u"disassembler:"_s, int(value + 1)}, true}) : std::nullopt;
}

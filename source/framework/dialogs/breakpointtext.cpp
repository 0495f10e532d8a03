#include "breakpointtext.h"
#include "programplace.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr auto patternOptions =
    QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
} // namespace

QString breakpointText(const BreakpointLocation &place)
{
    const ProgramPlace in = ProgramPlace::fromBreakpoint(place.file, place.line);
    if (in.isDisassembly())
        return u"disassembler, 0x"_s + QString::number(in.address(), 16);
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
    if (!fits)
        return std::nullopt;
    const ProgramPlace place = ProgramPlace::inDisassembly(value);
    return BreakpointPlace{{place.fileName(), place.line()}, true};
}

QString breakpointSymbol(const QString &text)
{
    static const QRegularExpression name(
        uR"(^(::)?(~?[A-Za-z_]\w*(<.*>)?::)*(~?[A-Za-z_]\w*(<.*>)?|operator\W+)(\(.*\)(\s*const)?)?\z)"_s,
        patternOptions);
    const QString trimmed = text.trimmed();
    return name.match(trimmed).hasMatch() ? trimmed : QString();
}

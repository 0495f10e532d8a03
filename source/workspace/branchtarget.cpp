#include "branchtarget.h"
#include <algorithm>
#include <array>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LongestLine = 300; ///< characters that are looked at

/// Instructions that begin like branches, and are none.
bool onlyLooksLikeABranch(QStringView name)
{
    static constexpr std::array Names{"bclr"_L1, "bext"_L1, "bf"_L1,    "bic"_L1,   "bif"_L1,  "binv"_L1,
                                      "bit"_L1,  "bkpt"_L1, "bld"_L1,   "bls1"_L1,  "blsi"_L1, "blsm"_L1,
                                      "blsr"_L1, "bnd"_L1,  "bound"_L1, "brk"_L1,   "bset"_L1, "bsf"_L1,
                                      "bsl"_L1,  "bsr"_L1,  "bst"_L1,   "bswap"_L1, "bt"_L1,   "bzhi"_L1};
    return std::ranges::any_of(Names, [name](QLatin1StringView known) { return name.startsWith(known); });
}

bool isBranch(QStringView name)
{
    static constexpr std::array Names{"call"_L1, "cbz"_L1,   "cbnz"_L1, "tbz"_L1,
                                      "tbnz"_L1, "rcall"_L1, "rjmp"_L1, "loop"_L1};
    if (std::ranges::any_of(Names, [name](QLatin1StringView known) { return name.startsWith(known); }))
        return true;
    return name.startsWith(u'j') || (name.startsWith(u'b') && !onlyLooksLikeABranch(name));
}

/// Of the parts instruction, address and symbol.
BranchTarget targetOf(const QRegularExpressionMatch &match)
{
    return {match.captured(2).toULongLong(nullptr, 16), int(match.capturedStart(1)), int(match.capturedEnd(3))};
}
} // namespace

std::optional<BranchTarget> branchTarget(const QString &line)
{
    // Some processors have the distance or the bare address in the operand, and the symbol in a comment.
    static const QRegularExpression relative(
        u"(?:^|\\s)([a-z]+)\\s+(?:\\.[+-][0-9]+|0x[0-9a-f]+)\\s*;\\s*0x([0-9a-f]{1,16})((?:\\s*<[^>]*>)?)"_s,
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression comment(u"\\s(?:;|//|@|#\\s)"_s);
    static const QRegularExpression instruction(
        u"(?:^|\\s)([a-z][a-z0-9.]*)\\s+(?:[^\\s,]+,\\s*)*(?:0x)?([0-9a-f]{1,16})((?:\\s*<.*>)?)\\s*$"_s,
        QRegularExpression::CaseInsensitiveOption);
    QString code = line.left(LongestLine);
    if (const QRegularExpressionMatch match = relative.match(code); isBranch(match.captured(1).toLower()))
        return targetOf(match);
    if (const qsizetype end = code.indexOf(comment); end >= 0)
        code.truncate(end);
    const QRegularExpressionMatch match = instruction.match(code);
    if (!isBranch(match.captured(1).toLower()))
        return {};
    return targetOf(match);
}

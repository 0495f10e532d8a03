#include "formattedexpression.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

FormattedExpression parseFormattedExpression(const QString &text)
{
    static const QRegularExpression form(u"^(.*\\S)\\s*,\\s*([xduotcs])\\s*\\z"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return {text, {}};
    return {match.captured(1), match.captured(2).front()};
}

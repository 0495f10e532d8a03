#pragma once
#include <QString>

/// An expression with the format that its value is shown in.
struct FormattedExpression
{
    QString expression;
    QChar format; ///< one of gdb's letters x d u o t c s; null for the usual format

    bool operator==(const FormattedExpression &) const = default;
};

/// Reads "EXPRESSION,FORMAT". Anything else than a letter of a format behind the last comma belongs to the expression.
[[nodiscard]] FormattedExpression parseFormattedExpression(const QString &text);

#pragma once
#include <QString>

/// The longest text of ASCII characters that is a part of every match of @p expression, so that a text without it has
/// no match. Without regard to case, it is to be looked for in the same way, by ASCII letters only. Empty if none is
/// found, as in expressions with alternatives.
[[nodiscard]] QString requiredText(QStringView expression, bool caseSensitive);

#pragma once
#include <QtGlobal>

/// Prints a failed assumption on the warning channel and continues: the user's unsaved work must not be lost for it.
#define VARNEL_ASSERT(expression) VARNEL_ASSERT_TEXT(expression, #expression)
/// The same with @p text printed in place of the expression.
#define VARNEL_ASSERT_TEXT(expression, text) \
    ((expression) ? void() : qWarning("ASSERT: \"%s\" in %s (%d)", text, __FILE__, __LINE__))

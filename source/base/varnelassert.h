#pragma once
#include <QtGlobal>

/// Prints a failed assumption on the warning channel and goes on: a program that people type into must not stop for it.
#define VARNEL_ASSERT(expression) \
    ((expression) ? void() : qWarning("ASSERT: \"%s\" in %s (%d)", #expression, __FILE__, __LINE__))

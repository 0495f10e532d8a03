#pragma once
#include "tablehighlighter.h"

/// Highlights C and C++.
class CppHighlighter : public TableHighlighter
{
public:
    explicit CppHighlighter(const FormatTable *formats = nullptr);

    /// The states, keywords and rules of the language, built on first use.
    [[nodiscard]] static const Language &language();
};

#pragma once
#include "tablehighlighter.h"

/// Highlights Python.
class PythonHighlighter : public TableHighlighter
{
public:
    explicit PythonHighlighter(const FormatTable *formats = nullptr);

    /// The states, keywords and rules of the language, built on first use.
    [[nodiscard]] static const Language &language();
};

#pragma once
#include "baseindent.h"

/// Indents Python: in smart mode one level deeper after a colon.
class PythonIndent : public BaseIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr, int *newIndent = nullptr) override;
};

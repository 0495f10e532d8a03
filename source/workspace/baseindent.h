#pragma once
#include "textindent.h"
#include <QString>

/// Indents plain text: a line without indentation gets that of the line above.
class BaseIndent : public TextIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr, int *newIndent = nullptr) override;

protected:
    /// The width in columns of the white space at the start of @p text, 0 if there is nothing else. A tab is tabSize()
    /// wide.
    [[nodiscard]] int indentation(const QString &text) const;
    /// Replaces the white space at the start of @p block by @p *newIndent columns of it, with tabs if keepTabs(). Sets
    /// @p *oldIndent to the number of characters removed and @p *newIndent to the number inserted.
    void setIndent(const QTextBlock &block, int *oldIndent, int *newIndent) const;
};

/// White space @p columns wide: blanks, or with @p keepTabs tabs of @p tabSize columns, then blanks.
[[nodiscard]] QString indentText(int columns, int tabSize, bool keepTabs);

#pragma once
#include "textindent.h"
#include <QString>

/// Indents plain text: a line without indentation gets that of the line above.
class BaseIndent : public TextIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr, int *newIndent = nullptr) override;

protected:
    /// The columns of white space that @p text starts with, 0 if it holds nothing else. A tab counts tabSize().
    [[nodiscard]] int indentation(const QString &text) const;
    /// Replaces the white space that @p block starts with by @p *newIndent columns of it, written as keepTabs() tells.
    /// @p *oldIndent becomes the number of characters taken away, @p *newIndent that of the new ones. A line of nothing
    /// but white space keeps one blank behind the new.
    void setIndent(const QTextBlock &block, int *oldIndent, int *newIndent) const;
};

/// The white space for @p columns columns: blanks, or with @p keepTabs tabs of @p tabSize columns and then blanks.
[[nodiscard]] QString indentText(int columns, int tabSize, bool keepTabs);

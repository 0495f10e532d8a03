#pragma once
#include "baseindent.h"
#include <functional>
#include <QStringList>

/// Indents C and C++: in smart mode by the shape of the code above the line.
class CppIndent : public BaseIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr, int *newIndent = nullptr) override;
};

/// The column at which the last of @p lines should start. @p lines holds the text from its first line to that one,
/// @p typedIn the character just typed, or null for "any", @p tabSize the columns of a tab and of a block level.
/// Looks back over some forty lines, not counting blank ones and comments. Never negative; 0 where nothing tells more.
[[nodiscard]] int indentForBottomLine(const QStringList &lines, QChar typedIn, int tabSize);

/// The same for the last of @p lineCount lines that are asked for one by one: @p lineAt gets 0 to lineCount - 1.
[[nodiscard]] int indentForBottomLine(const std::function<QString(int)> &lineAt, int lineCount, QChar typedIn,
                                      int tabSize);

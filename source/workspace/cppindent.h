#pragma once
#include "baseindent.h"
#include <functional>
#include <QStringList>

/// Indents C and C++. In smart mode the code above determines the indentation of a line.
class CppIndent : public BaseIndent
{
public:
    void indent(QTextDocument *document, QTextBlock block, int *oldIndent = nullptr, int *newIndent = nullptr) override;
    [[nodiscard]] bool changesIndent(const QString &start) const override;
};

/// The start column for the last of @p lines, which are the text from its first line to that one. @p typedIn is the
/// character just typed, or null for any, @p tabSize the columns of a tab and of a block level. Reads up to about forty
/// lines back, not counting blank lines and comments. Never negative; 0 if nothing else can be found.
[[nodiscard]] int indentForBottomLine(const QStringList &lines, QChar typedIn, int tabSize);

/// The same for the last of @p lineCount lines, which are read one by one: the argument of @p lineAt is 0 to lineCount
/// - 1.
[[nodiscard]] int indentForBottomLine(const std::function<QString(int)> &lineAt, int lineCount, QChar typedIn,
                                      int tabSize);

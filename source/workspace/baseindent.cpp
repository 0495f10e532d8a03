#include "baseindent.h"
#include <algorithm>
#include <QTextBlock>
#include <QTextCursor>

namespace {
bool isIndentation(QChar ch)
{
    return ch == u' ' || ch == u'\t';
}

int lengthOfIndentation(const QString &text)
{
    return int(std::ranges::find_if_not(text, isIndentation) - text.begin());
}

void replaceInBlock(const QTextBlock &block, int length, const QString &text)
{
    QTextCursor cursor(block);
    cursor.setPosition(block.position() + length, QTextCursor::KeepAnchor);
    cursor.insertText(text);
}
} // namespace

void BaseIndent::indent(QTextDocument *, QTextBlock block, int *oldIndent, int *newIndent)
{
    int before = indentation(block.text());
    int after = before;
    if (indentMode() > NoIndent && before == 0 && block.previous().isValid()) {
        after = indentation(block.previous().text());
        setIndent(block, &before, &after);
    }
    if (oldIndent)
        *oldIndent = before;
    if (newIndent)
        *newIndent = after;
}

int BaseIndent::indentation(const QString &text) const
{
    if (QStringView(text).trimmed().isEmpty())
        return 0;
    int columns = 0;
    for (const QChar ch : QStringView(text).first(lengthOfIndentation(text)))
        columns += ch == u'\t' ? tabSize() : 1;
    return columns;
}

void BaseIndent::setIndent(const QTextBlock &block, int *oldIndent, int *newIndent) const
{
    const QString text = block.text();
    const int length = lengthOfIndentation(text);
    const QString indentation = indentText(*newIndent, tabSize(), keepTabs());
    *oldIndent = length;
    *newIndent = int(indentation.size());
    if (QStringView(text).first(length) != indentation)
        replaceInBlock(block, length, indentation);
}

QString indentText(int columns, int tabSize, bool keepTabs)
{
    columns = std::max(columns, 0);
    const int tabs = keepTabs ? columns / tabSize : 0;
    return QString(tabs, u'\t') + QString(columns - tabs * tabSize, u' ');
}

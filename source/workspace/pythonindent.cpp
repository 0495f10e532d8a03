#include "pythonindent.h"
#include <QTextBlock>

void PythonIndent::indent(QTextDocument *document, QTextBlock block, int *oldIndent, int *newIndent)
{
    if (indentMode() != Smart) {
        BaseIndent::indent(document, block, oldIndent, newIndent);
        return;
    }
    int before = indentation(block.text());
    int after = before;
    if (before == 0) {
        const QString above = block.previous().text();
        after = indentation(above) + (above.trimmed().endsWith(u':') ? tabSize() : 0);
        setIndent(block, &before, &after);
    }
    if (oldIndent)
        *oldIndent = before;
    if (newIndent)
        *newIndent = after;
}

#include "lineedits.h"
#include <functional>
#include <limits>
#include <QTextBlock>
#include <QTextCursor>

namespace {
qsizetype leadingBlanks(const QString &line)
{
    qsizetype count = 0;
    while (count < line.size() && (line[count] == u' ' || line[count] == u'\t'))
        ++count;
    return count;
}

bool isBlank(const QString &line)
{
    return leadingBlanks(line) == line.size();
}

void forEachLine(const QTextCursor &selection,
                 const std::function<void(QTextCursor &cursor, const QString &line)> &change)
{
    const QTextDocument *text = selection.document();
    const QTextBlock first = text->findBlock(selection.selectionStart());
    QTextBlock last = text->findBlock(selection.selectionEnd());
    if (last != first && selection.selectionEnd() == last.position())
        last = last.previous();
    QTextCursor cursor(selection);
    cursor.beginEditBlock();
    for (QTextBlock line = first;; line = line.next()) {
        cursor.setPosition(line.position());
        change(cursor, line.text());
        if (line == last)
            break;
    }
    cursor.endEditBlock();
}

void remove(QTextCursor &cursor, qsizetype from, qsizetype length)
{
    const int start = cursor.block().position() + int(from);
    cursor.setPosition(start);
    cursor.setPosition(start + int(length), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}
} // namespace

void commentLines(const QTextCursor &selection, const QString &marker)
{
    qsizetype column = std::numeric_limits<qsizetype>::max();
    forEachLine(selection, [&](QTextCursor &, const QString &line) {
        if (!isBlank(line))
            column = std::min(column, leadingBlanks(line));
    });
    forEachLine(selection, [&](QTextCursor &cursor, const QString &line) {
        if (isBlank(line))
            return;
        cursor.setPosition(cursor.position() + int(column));
        cursor.insertText(marker + u' ');
    });
}

bool uncommentLines(const QTextCursor &selection, const QString &marker)
{
    bool found = false;
    forEachLine(selection, [&](QTextCursor &cursor, const QString &line) {
        const qsizetype start = leadingBlanks(line);
        const qsizetype behind = start + marker.size();
        if (!line.sliced(start).startsWith(marker))
            return;
        remove(cursor, start, marker.size() + (behind < line.size() && line[behind] == u' ' ? 1 : 0));
        found = true;
    });
    return found;
}

void indentLines(const QTextCursor &selection, const Indentation &indentation)
{
    const QString level = indentation.tabs ? QString(u'\t') : QString(indentation.width, u' ');
    forEachLine(selection, [&](QTextCursor &cursor, const QString &line) {
        if (!isBlank(line))
            cursor.insertText(level);
    });
}

void unindentLines(const QTextCursor &selection, const Indentation &indentation)
{
    forEachLine(selection, [&](QTextCursor &cursor, const QString &line) {
        qsizetype length = 0;
        while (length < line.size() && length < indentation.width && line[length] == u' ')
            ++length;
        if (length < line.size() && length < indentation.width && line[length] == u'\t')
            ++length; // a tab goes to the same column
        if (length > 0)
            remove(cursor, 0, length);
    });
}

bool selectsSeveralLines(const QTextCursor &selection)
{
    const QTextDocument *text = selection.document();
    return text->findBlock(selection.selectionStart()) != text->findBlock(selection.selectionEnd());
}

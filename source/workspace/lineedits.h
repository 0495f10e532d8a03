#pragma once
#include <QString>
class QTextCursor;

// Changes of the lines that a selection touches, or of the cursor's line without one. A line at whose start a selection
// ends is not touched. Each change is one step for undo, and the selection keeps its text.

/// Puts @p marker and a blank before each line that is not empty, all in the column of the line that is indented least.
void commentLines(const QTextCursor &selection, const QString &marker);
/// Removes the marker at the start of each line, and a blank behind it. Other lines stay. False if no line has one.
bool uncommentLines(const QTextCursor &selection, const QString &marker);

struct Indentation
{
    int width = 4;     ///< columns of a level and of a tab
    bool tabs = false; ///< written with tabs
};

/// Indents each line that is not empty by one level.
void indentLines(const QTextCursor &selection, const Indentation &indentation);
/// Removes one level, or what there is of it, from each line.
void unindentLines(const QTextCursor &selection, const Indentation &indentation);
/// Whether the selection extends over several lines.
[[nodiscard]] bool selectsSeveralLines(const QTextCursor &selection);

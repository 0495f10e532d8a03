#pragma once
#include "ibreakpoints.h"
#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QTextCursor>
#include <QTimer>
class Activity;
class Project;
class TextDocument;
class WindowServices;

/// Lines with breakpoints, by file.
using BreakpointFiles = QHash<QString, QList<int>>;

/// Moves breakpoints with the text while it is edited: the environments know lines only.
///
/// The program of a debug session was built from the text before the change, so an environment gets the new lines when
/// the session has ended; until then shownLine() and programLine() convert. A text that is closed without being saved
/// gives its breakpoints the lines of the file again. The breakpoint of a removed line goes to the next one, and comes
/// back with the line if that is undone.
class BreakpointLines : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    BreakpointLines(Activity &activity, WindowServices &window, QObject *parent = nullptr);
    ~BreakpointLines() override;

    /// From now on follows these lines in the open texts, and no others.
    void follow(const BreakpointFiles &files);
    /// The line of the text that was @p line of @p file when the program was built.
    [[nodiscard]] int shownLine(const QString &file, int line) const;
    [[nodiscard]] int programLine(const QString &file, int shown) const; ///< the reverse

    /// Where a breakpoint belongs the next time its file is opened.
    struct KeptLine
    {
        int line = 0;      ///< if the text is saved as it is now
        int fileLine = 0;  ///< in the file as it is now
        QDateTime savedAt; ///< the time stamp of that file; invalid if the text has no changes that move the line
    };
    [[nodiscard]] KeptLine lineToKeep(const QString &file, int line) const;

Q_SIGNALS:
    void moved(); ///< Breakpoints have other lines, or their markers are missing.

private:
    /// A change with which a line has lost its marker, probably because it was removed.
    struct Removal
    {
        int steps = 0; ///< QTextDocument::availableUndoSteps() after it
        int line = 0;  ///< before it
    };
    struct Line
    {
        QPointer<TextDocument> document; ///< null when it was closed
        QString file;
        int line = 0;       ///< that the environments know
        int savedLine = 0;  ///< in the file
        QDateTime savedAt;  ///< the time stamp of the file
        int shown = 0;      ///< in the text
        QTextCursor anchor; ///< at the start of that line
        int steps = 0;      ///< that can be undone in the text
        QList<Removal> removals;

        /// Where the environments should have it.
        [[nodiscard]] int target() const;
    };
    struct Move
    {
        QString file;
        int from = 0;
        int to = 0;
    };

    void watch(TextDocument *document);
    void followUndo(Line &line);
    void textChanged(const TextDocument *document, int from, int removed, int added);
    void saved(TextDocument *document);
    void schedule();
    void moveBreakpoints();
    bool moveToTargets();
    void moveBreakpoints(const Project &project, const QList<Move> &moves);

    Activity &m_activity;
    WindowServices &m_window;
    QList<Line> m_lines;
    QTimer m_timer;
    bool m_markerLost = false; ///< with a line that was removed
    bool m_moving = false;     ///< the environments are changed: their breakpoints are incomplete
};

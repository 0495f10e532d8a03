#pragma once
#include <QObject>
#include <QTimer>
class Activity;
class Breakpoints;
class WindowServices;

/// Shows the next statement of the current project's program: in its source, or in the disassembly.
class NextStatement : public QObject
{
    Q_OBJECT
public:
    /// All arguments outlive this object.
    NextStatement(Activity &activity, WindowServices &window, Breakpoints &breakpoints, QObject *parent = nullptr);

    /// Goes to the next statement and marks it. Shows a message if there is no place to go to.
    void show();
    /// In the disassembly, goes to the source of the next statement; in other views only updates the markers.
    void showSource();
    void setAtCursor();          ///< Makes the line of the cursor the next statement, without executing anything.
    void viewDisassembly();      ///< Opens it where a paused program is, or brings it to the front as it is.
    void refreshDisassemblies(); ///< Has the open ones read the instructions again.
    void refreshMarker();
    void clearMarker();
    /// The program runs, or has ended: removes the marker, unless keepMarker() follows within the time of a step.
    void clearMarkerSoon() { m_clearTimer.start(); }
    void keepMarker() { m_clearTimer.stop(); } ///< The program has stopped again.
    void closeOrphanedDisassemblies();         ///< Those of environments that environmentOfKey() does not find.

private:
    [[nodiscard]] bool goToLocation();
    void goToInstruction();
    [[nodiscard]] bool openSource(const QString &file);
    [[nodiscard]] QString currentFile() const;

    Activity &m_activity;
    WindowServices &m_window;
    Breakpoints &m_breakpoints;
    QTimer m_clearTimer{this};
};

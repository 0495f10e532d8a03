#pragma once
#include "breakpointlines.h"

/// The breakpoints of all projects, as the user sees and changes them: margins, tool tips and the dialog. The
/// execution environments keep them during the life of their project.
class Breakpoints : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    Breakpoints(Activity &activity, WindowServices &window, QObject *parent = nullptr);

    void edit();           ///< Shows the dialog with all breakpoints.
    void toggleAtCursor(); ///< As toggle(), for the cursor's line of the current view.
    /// Sets, then disables, then removes the breakpoint at a line, counted from 1, of the document in front.
    void toggle(int line);
    void refreshMarkers();
    [[nodiscard]] const BreakpointLines &lines() const { return m_lines; }
    /// Rich text with the state of the breakpoints at a line, counted from 1, in each project; may be empty.
    [[nodiscard]] QString toolTip(const QString &file, int line) const;

private:
    [[nodiscard]] Project *projectOfDocument(const QString &file) const;
    void inform(const QString &text) const;

    Activity &m_activity;
    WindowServices &m_window;
    BreakpointLines m_lines;
};

#pragma once
#include "externaltools.h"
class Activity;
class PopupMenu;
class Project;
class WindowServices;

/// The external tools of the Tools menu: keeps the list, fills the menu, and starts and stops the tools.
class ToolsCommands : public QObject
{
    Q_OBJECT
public:
    /// Loads the tools from the settings. Both arguments outlive this object.
    ToolsCommands(const Activity &activity, WindowServices &window, QObject *parent = nullptr);

    [[nodiscard]] ExternalTools &tools() { return m_tools; }
    /// Inserts the tools at the top of @p menu, and below them a "Stop" for each running one. Null is ignored.
    void updateMenu(PopupMenu *menu);
    /// Starts tool @p index of the list. Other numbers do nothing.
    void execute(int index);

Q_SIGNALS:
    void output(const QString &text); ///< the tools' output, and messages at their start and end

private:
    const Activity &m_activity;
    WindowServices &m_window;
    ExternalTools m_tools;
};

/// The macros for a tool's arguments: those of the current project, empty for null, and those of the path of the
/// current document, empty without one.
[[nodiscard]] ExternalTool::Macros toolMacros(const Project *project, const QString &documentPath);

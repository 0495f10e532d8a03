#pragma once
#include "externaltools.h"
class Activity;
class PopupMenu;
class Project;
class WindowServices;

/// The external tools of the Tools menu: the list, its entries in the menu, and running them.
class ToolsCommands : public QObject
{
    Q_OBJECT
public:
    /// Loads the tools from the settings. Both arguments outlive this object.
    ToolsCommands(const Activity &activity, WindowServices &window, QObject *parent = nullptr);

    [[nodiscard]] ExternalTools &tools() { return m_tools; }
    /// Puts the tools at the top of @p menu, and below them a "Stop" for each that runs. Null is ignored.
    void updateMenu(PopupMenu *menu);
    /// Starts tool @p index of the list. Other numbers do nothing.
    void execute(int index);

Q_SIGNALS:
    void output(const QString &text); ///< what the tools print, and when they start and end

private:
    const Activity &m_activity;
    WindowServices &m_window;
    ExternalTools m_tools;
};

/// The values that a tool gets in its arguments: the current project's, empty for null, and those of the path of the
/// current document, empty without one.
[[nodiscard]] ExternalTool::Macros toolMacros(const Project *project, const QString &documentPath);

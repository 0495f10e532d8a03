#pragma once
#include "externaltools.h"
#include <functional>
class PopupMenu;
class Project;

/// The external tools of the Tools menu: the list, its entries in the menu, and running them.
class ToolsCommands : public QObject
{
    Q_OBJECT
public:
    using Macros = ExternalTool::Macros;

    /// Loads the tools. @p macros gives the values for the arguments at the time a tool is started.
    ToolsCommands(const QSettings &settings, std::function<Macros()> macros, QObject *parent = nullptr);

    [[nodiscard]] ExternalTools &tools() { return m_tools; }
    /// Puts the tools at the top of @p menu, and below them a "Stop" for each that runs. Null is ignored.
    void updateMenu(PopupMenu *menu);
    /// Starts tool @p index of the list. Other numbers do nothing.
    void execute(int index);

Q_SIGNALS:
    void output(const QString &text); ///< what the tools print, and when they start and end

private:
    ExternalTools m_tools;
    const std::function<Macros()> m_macros;
};

/// The values that a tool gets in its arguments: the current project's, empty for null, and those of the path of the
/// current document, empty without one.
[[nodiscard]] ExternalTool::Macros toolMacros(const Project *project, const QString &documentPath);

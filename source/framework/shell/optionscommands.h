#pragma once
#include "ihost.h"
#include "optionvalues.h"
#include "shortcuts.h"
#include <functional>
#include <QDir>
#include <QObject>
#include <QPointer>
#include <vector>
class DebugOptions;
class OptionsDialog;
class QSettings;
class ToolsCommands;
class ToolsDialog;
class WindowServices;

/// The command that opens the options dialog, and applies the values when the user accepts it.
class OptionsCommands : public QObject
{
    Q_OBJECT
public:
    /// All arguments but @p config outlive this object. The dialog edits the settings and the last three arguments.
    /// @p config is the directory with the product's formats.
    OptionsCommands(WindowServices &window, const QDir &config, TextFormats &formats, DebugOptions &debugOptions,
                    ToolsCommands &tools, QObject *parent = nullptr);

    /// Shows the dialog until the user closes it, with the page of that object name in front. Only one is open at a
    /// time.
    void showOptions(const QString &page = {});

    /// The pages of plug-ins, which are asked for when the dialog is opened.
    void setPages(const std::function<std::vector<InterfacePtr<IOptionsPage>>()> &pages) { m_pages = pages; }

    /// Commands that the page of the keys lists besides those of the window.
    void setOfferedCommands(const OfferedCommands &offered) { m_shortcuts.setOffered(offered); }

Q_SIGNALS:
    /// The formats or the editor's settings have changed: all views must be refreshed in full.
    void appearanceChanged();

private:
    [[nodiscard]] OptionValues values() const;
    [[nodiscard]] OptionChoices choices() const;
    void connectTools(ToolsDialog *page);
    void apply(const OptionValues &before, const OptionValues &values);

    WindowServices &m_window;
    const QDir m_config;
    TextFormats &m_formats;
    DebugOptions &m_debugOptions;
    ToolsCommands &m_tools;
    std::function<std::vector<InterfacePtr<IOptionsPage>>()> m_pages;
    Shortcuts m_shortcuts;
    QPointer<OptionsDialog> m_dialog; ///< null while it is not shown
};

// How the options are stored in the settings.

[[nodiscard]] EditorOptions readEditorOptions(const QSettings &settings);
void writeEditorOptions(QSettings &settings, const EditorOptions &options);
[[nodiscard]] MoreOptions readMoreOptions(const QSettings &settings);
/// Writes what differs between @p before and @p after.
void writeMoreOptions(QSettings &settings, const MoreOptions &before, const MoreOptions &after);

#pragma once
#include "optionvalues.h"
#include <QObject>
#include <QPointer>
class DebugOptions;
class OptionsDialog;
class QSettings;
class ToolsCommands;
class WindowFormats;
class WindowServices;

/// The command that opens the options dialog, and what happens when the user accepts it.
class OptionsCommands : public QObject
{
    Q_OBJECT
public:
    /// All arguments outlive this object. The last three are what the dialog edits besides the settings.
    OptionsCommands(WindowServices &window, WindowFormats &formats, DebugOptions &debugOptions, ToolsCommands &tools,
                    QObject *parent = nullptr);

    /// Shows the dialog until the user closes it. There is one at a time.
    void showOptions();

private:
    [[nodiscard]] OptionValues values() const;
    [[nodiscard]] OptionChoices choices() const;
    void apply(const OptionValues &values);

    WindowServices &m_window;
    WindowFormats &m_formats;
    DebugOptions &m_debugOptions;
    ToolsCommands &m_tools;
    QPointer<OptionsDialog> m_dialog; ///< null while it is not shown
};

// How the options are kept in the settings.

[[nodiscard]] EditorOptions readEditorOptions(const QSettings &settings);
void writeEditorOptions(QSettings &settings, const EditorOptions &options);
[[nodiscard]] MoreOptions readMoreOptions(const QSettings &settings);
void writeMoreOptions(QSettings &settings, const MoreOptions &options);

#pragma once
#include "optionvalues.h"
#include <QDir>
#include <QObject>
#include <QPointer>
class DebugOptions;
class OptionsDialog;
class QSettings;
class ToolsCommands;
class Workspace;

/// The command that opens the options dialog, and what happens when the user accepts it.
class OptionsCommands : public QObject
{
    Q_OBJECT
public:
    /// What the dialog edits. All of it outlives this object.
    struct Subjects
    {
        QSettings &settings;
        QDir config; ///< the directory with the product's formats
        const Workspace &workspace;
        TextFormats &formats;
        DebugOptions &debugOptions;
        ToolsCommands &tools;
    };

    /// @p window is above the dialog, and owns this object.
    OptionsCommands(const Subjects &subjects, QWidget *window);

    /// Shows the dialog until the user closes it. There is one at a time.
    void showOptions();

Q_SIGNALS:
    /// The formats or the editor's settings have changed: all views must be refreshed in full.
    void appearanceChanged();

private:
    [[nodiscard]] OptionValues values() const;
    [[nodiscard]] OptionChoices choices() const;
    void apply(const OptionValues &values);

    const Subjects m_subjects;
    QWidget *const m_window;
    QPointer<OptionsDialog> m_dialog; ///< null while it is not shown
};

// How the options are kept in the settings.

[[nodiscard]] EditorOptions readEditorOptions(const QSettings &settings);
void writeEditorOptions(QSettings &settings, const EditorOptions &options);
[[nodiscard]] MoreOptions readMoreOptions(const QSettings &settings);
void writeMoreOptions(QSettings &settings, const MoreOptions &options);

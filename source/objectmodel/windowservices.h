#pragma once
#include <QIcon>
#include <QString>
class DockWindow;
class IPluginObject;
class LastDirectories;
class Navigator;
class OutputWindow;
class QAction;
class QSettings;
class QWidget;
class ViewManager;
class Workspace;

/// The services of the main window for the classes behind its commands and docks. They use this interface and the
/// Activity, and no other class of the window.
class WindowServices
{
public:
    // Parts of the window, which live as long as the receivers of this interface
    [[nodiscard]] virtual QWidget *dialogParent() = 0;
    [[nodiscard]] virtual Workspace *workspace() const = 0; ///< The open documents.
    [[nodiscard]] virtual ViewManager *viewManager() const = 0;
    [[nodiscard]] virtual Navigator *navigator() const = 0;
    [[nodiscard]] virtual OutputWindow *outputWindow() const = 0;
    [[nodiscard]] virtual int currentLine() const = 0; ///< Of the cursor, counted from 1.

    // The user interface file and the pictures
    [[nodiscard]] virtual QAction *action(const QString &name) const = 0; ///< Null if the file does not declare it.
    [[nodiscard]] virtual QIcon icon(const QString &name) const = 0;      ///< By file name, "treefolder.png".

    // Files and settings
    [[nodiscard]] virtual QSettings &settings() const = 0;
    [[nodiscard]] virtual LastDirectories &directories() = 0;
    [[nodiscard]] virtual QString sourceFilter() const = 0; ///< Of dialogs that ask for source files.
    /// Opens a file, or a document with another kind of name, in front. False, after a message, if that fails.
    virtual bool openFile(const QString &path, bool addToRecent) = 0;
    /// Saves all modified documents, projects and the workspace. False if the user or a file refuses.
    virtual bool fileSaveAll() = 0;
    /// Asks about documents whose files other programs have changed.
    virtual void checkFileChanges() = 0;

    // Docks
    /// A new empty dock window behind the others of its edge; the caller may delete it.
    [[nodiscard]] virtual DockWindow *addDock(const QString &objectName, const QString &caption,
                                              Qt::DockWidgetArea area) = 0;
    virtual void saveDockLayout() = 0;    ///< For the present state.
    virtual void restoreDockLayout() = 0; ///< For the present state.
    virtual void showOutputDock() = 0;    ///< Does nothing if it is visible.

    // The status bar
    /// Shows @p text at once, for @p milliseconds or, if that is 0, until it is replaced. An empty text clears it.
    virtual void showMessage(const QString &text, int milliseconds = 0) = 0;
    /// The same, but a message stays that is shown now and is not @p present.
    virtual void replaceMessage(const QString &present, const QString &text)
    {
        Q_UNUSED(present)
        showMessage(text);
    }
    /// Shows the status of a processor at @p position, 0 to 3; other positions are ignored.
    virtual void showStatusInfo(const QString &text, int position) = 0;

    // Plug-ins and scripts
    /// A new plug-in object with one reference for the caller; null if no plug-in offers @p feature.
    [[nodiscard]] virtual IPluginObject *createPlugin(const QString &feature) const = 0;
    virtual void runPyFile(const QString &path) = 0; ///< The path may be relative to the current project's directory.
    virtual void fireEvent(const QString &name) = 0; ///< Calls the script's handler of the event.

protected:
    ~WindowServices() = default;
};

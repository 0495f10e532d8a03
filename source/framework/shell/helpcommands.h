#pragma once
#include "helphost.h"
#include <QObject>
#include <QPointer>
class Activity;
class HelpSearchDialog;
class QDialog;
class HelpWidget;
class ProjectCommands;
class WindowServices;
struct ExampleCopy;
struct HelpFiles;

/// The help: adds its contents to the navigator, asks what to search for, and does what pages of the help ask for.
class HelpCommands : public QObject, public HelpHost
{
    Q_OBJECT
public:
    /// The references outlive this object.
    HelpCommands(const Activity &activity, WindowServices &window, ProjectCommands &projects, const HelpFiles &files,
                 QObject *parent = nullptr);

    /// Shows the dialog for a search, and searches. There is one dialog at a time.
    void search();
    /// Shows a page, which may end in an anchor, in the documents or, while a dialog blocks them, beside the dialog.
    /// @p page is relative to the directory "html" of the help.
    void showPage(const QString &page);
    /// Shows the about box of the branding library, if there is one, with the versions of everything.
    void about();
    /// Shows a report of a problem that the user completes and copies.
    void reportProblem();

    /// The name of an action, or "openWorkspace" with the path of a workspace, absolute or relative to the pages'
    /// directory. It is carried out when the link's event has been handled, since it may close the page. Examples that
    /// cannot be written are copied to the user's documents first, if the user agrees.
    bool runCommand(const QString &name, const QString &argument) override;
    /// Replaces "$(RecentWorkspaces)" by links to the workspaces that were opened last.
    [[nodiscard]] QString filledIn(const QString &page) override;

private:
    void openWorkspace(const QString &path);
    [[nodiscard]] QString editableExample(const QString &path);
    [[nodiscard]] bool completeCopy(const ExampleCopy &copy);
    [[nodiscard]] QString recentWorkspaces() const;
    void refreshPages() const;

    const Activity &m_activity;
    WindowServices &m_window;
    ProjectCommands &m_projects;
    const QString m_directory;
    QPointer<HelpWidget> m_contents; ///< owned by the navigator
    QPointer<HelpSearchDialog> m_dialog;
    QPointer<QDialog> m_versions; ///< the about box or a report, one at a time
};

#pragma once
#include "projecttemplate.h"
#include <functional>
#include <memory>
#include <QDialog>
#include <QIcon>
#include <QMap>
class ListViewItem;
class ProjectTreeItem;
class QListWidgetItem;
class QTreeWidgetItem;
namespace Ui {
class NewProjectDialogBase;
}

/// What the new-project dialog offers.
struct NewProjectChoices
{
    QList<TemplateFolder> folders;
    QList<ProjectTemplate> recent; ///< the templates that were used last, latest first
    QString location;              ///< where projects are created, unless the user changes it
    /// Loads the picture @p file of @p directory, or the picture of the product @p fallback if @p file is empty or
    /// missing.
    std::function<QIcon(const QString &directory, const QString &file, const QString &fallback)> picture;
};

/// Asks for the template, the name and the place of a new project. Accepting creates the project's folder.
class NewProjectDialog : public QDialog
{
    Q_OBJECT
public:
    NewProjectDialog(NewProjectChoices choices, QWidget *parent, const QString &name);
    ~NewProjectDialog() override;

    void setWorkspaceChoiceEnabled(bool enabled);
    [[nodiscard]] bool addToWorkspace() const;
    [[nodiscard]] QString projectName() const;
    [[nodiscard]] QString templateDir() const { return m_templateDir; }
    [[nodiscard]] QString projectPath() const { return m_projectPath; } ///< As typed, possibly relative.
    [[nodiscard]] QString location() const;                             ///< Likewise.

public Q_SLOTS:
    void accept() override;
    void templateFolderChanged(QTreeWidgetItem *item);
    void templateChanged(QListWidgetItem *item);
    void updateLocation();
    void browse();
    void projectPathChanged();

private:
    void addRecent();
    ProjectTreeItem *addFolder(const TemplateFolder &folder, ListViewItem *parent, ListViewItem *after);
    void fillTree();
    void selectCurrent(QListWidgetItem *item);
    void showTemplates(const QList<ProjectTemplate> &templates);
    void showDescription(const QString &text);
    [[nodiscard]] QString problemOfName() const;
    [[nodiscard]] bool locationExists();
    void createProjectFolder();
    void askAgainFor(QWidget *edit);

    const std::unique_ptr<Ui::NewProjectDialogBase> m_ui;
    const NewProjectChoices m_choices;
    QMap<QListWidgetItem *, ProjectTemplate> m_templates; ///< those that are shown
    QString m_templateDir;                                ///< the chosen template; empty for none
    QString m_projectPath;
    bool m_nameEdited = false;
};

#pragma once
#include <memory>
#include <QDialog>
#include <QPointer>
class Project;
namespace Ui {
class EditConfigurationsDialogBase;
}

/// Renames and removes configurations of a project. Changes take effect at once and cannot be undone.
class EditConfigurationsDialog : public QDialog
{
    Q_OBJECT
public:
    EditConfigurationsDialog(Project *project, QWidget *parent, const QString &name);
    ~EditConfigurationsDialog() override;

public Q_SLOTS:
    void rename();
    void remove();

private:
    const std::unique_ptr<Ui::EditConfigurationsDialogBase> m_ui;
    const QPointer<Project> m_project;
};

#include "editconfigurationsdialog.h"
#include "messages.h"
#include "newconfigurationdialog.h"
#include "project.h"
#include "questions.h"
#include "ui_editconfigurationsdialogbase.h"

EditConfigurationsDialog::EditConfigurationsDialog(Project *project, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::EditConfigurationsDialogBase>()), m_project(project)
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->ConfigList->addItems(project->properties()->configurations());
    m_ui->ConfigList->setCurrentRow(0);
    connect(m_ui->RenameButton, &QPushButton::clicked, this, &EditConfigurationsDialog::rename);
    connect(m_ui->RemoveButton, &QPushButton::clicked, this, &EditConfigurationsDialog::remove);
}

EditConfigurationsDialog::~EditConfigurationsDialog() = default;

void EditConfigurationsDialog::rename()
{
    QListWidgetItem *row = m_ui->ConfigList->currentItem();
    if (!row)
        return;
    const QString oldName = row->text();
    const QString label = tr("Enter a new name for configuration '%1':").arg(oldName);
    const QString newName = askForText(this, label, oldName).value_or(QString());
    if (newName.isEmpty() || !m_project)
        return;
    ProjectProperties *properties = m_project->properties();
    if (properties->configurations().contains(newName)) {
        showInformation(this, tr("A configuration with that name already exists."));
        return;
    }
    copyConfiguration(properties, oldName, newName);
    properties->removeConfiguration(oldName);
    if (oldName == m_project->currentConfiguration())
        m_project->setCurrentConfiguration(newName);
    row->setText(newName);
}

void EditConfigurationsDialog::remove()
{
    QListWidget *list = m_ui->ConfigList;
    if (list->count() <= 1) {
        showInformation(this, tr("The project must contain at least one configuration."));
        return;
    }
    const QString name = list->currentItem()->text();
    const QString question = tr("Are you sure that you want to remove configuration '%1'.").arg(name);
    if (showInformation(this, question, {QMessageBox::Ok, QMessageBox::No}) != QMessageBox::Ok || !m_project)
        return;
    m_project->properties()->removeConfiguration(name);
    delete list->takeItem(list->currentRow());
    if (name == m_project->currentConfiguration())
        m_project->setCurrentConfiguration(list->currentItem()->text());
}

#include "newconfigurationdialog.h"
#include "messages.h"
#include "projectproperties.h"
#include "ui_newconfigurationdialogbase.h"

void copyConfiguration(ProjectProperties *properties, const QString &base, const QString &name)
{
    properties->addConfiguration(name);
    for (const QString &key : properties->propertyKeys(base))
        properties->setProperty(key, properties->property(key, base, false), name);
}

NewConfigurationDialog::NewConfigurationDialog(ProjectProperties *properties, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::NewConfigurationDialogBase>()), m_properties(properties)
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->ConfigListBox->addItems(properties->configurations());
    m_ui->ConfigListBox->setCurrentRow(0);
}

NewConfigurationDialog::~NewConfigurationDialog() = default;

void NewConfigurationDialog::accept()
{
    if (!m_properties)
        return reject();
    const QString name = m_ui->ConfigNameEdit->text();
    if (name.isEmpty())
        return refuse(tr("Please enter a name for the new configuration."));
    if (m_properties->configurations().contains(name))
        return refuse(tr("A configuration with that name already exists."));
    if (const QListWidgetItem *base = m_ui->ConfigListBox->currentItem())
        copyConfiguration(m_properties.get(), base->text(), name);
    else
        m_properties->addConfiguration(name);
    QDialog::accept();
}

void NewConfigurationDialog::refuse(const QString &reason)
{
    showInformation(this, reason);
    m_ui->ConfigNameEdit->setFocus();
}

#pragma once
#include "projectproperties.h"
#include <memory>
#include <QDialog>
namespace Ui {
class NewConfigurationDialogBase;
}

/// Asks for the name of a new configuration and for the configuration whose values are copied, and adds it.
class NewConfigurationDialog : public QDialog
{
    Q_OBJECT
public:
    NewConfigurationDialog(ProjectProperties *properties, QWidget *parent, const QString &name);
    ~NewConfigurationDialog() override;

public Q_SLOTS:
    void accept() override;

private:
    void refuse(const QString &reason);

    const std::unique_ptr<Ui::NewConfigurationDialogBase> m_ui;
    const ModelPointer<ProjectProperties> m_properties; ///< null when the workspace was closed
};

/// Adds the configuration @p name with the values of @p base.
void copyConfiguration(ProjectProperties *properties, const QString &base, const QString &name);

#pragma once
#include "unknown.h"
#include <functional>
#include <memory>
#include <QDialog>
#include <QPointer>
class IBuildEnvironment;
class Project;
namespace Ui {
class BatchBuildDialogBase;
}

/// Asks for configurations of a project and starts their build, rebuild or clean. It is accepted only when that was
/// started.
class BatchBuildDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p project and @p buildEnvironment must not be null.
    BatchBuildDialog(const Project *project, IBuildEnvironment *buildEnvironment, QWidget *parent, const QString &name);
    ~BatchBuildDialog() override;

    [[nodiscard]] QStringList tickedConfigurations() const; ///< in the order of the list

public Q_SLOTS:
    void build();
    void rebuild();
    void clean();

Q_SIGNALS:
    void starting(); ///< The environment is called next.

private:
    void finish(bool started);

    const std::unique_ptr<Ui::BatchBuildDialogBase> m_ui;
    const QPointer<const Project> m_project;
    const InterfacePtr<IBuildEnvironment> m_buildEnvironment;
};

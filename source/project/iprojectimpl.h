#pragma once
#include "interfaceobject.h"
#include "iproject.h"
#include <QPointer>

class Project;

/// The interface of a project for plug-ins and scripts. It starts with no reference: take the first with
/// queryInterface<IProject>. It does not own the project; when the project was deleted, it returns empty values.
class IProjectImpl : public InterfaceObject<IProject>
{
public:
    explicit IProjectImpl(Project *object);
    ~IProjectImpl() override;
    [[nodiscard]] Project *object() const { return m_object; } ///< Null when the project was deleted.

    QString name() override;
    QString basePath() override;
    QList<IProjectFolder *> folders() override;
    QList<IProjectFile *> files() override;
    IProjectProperties *properties() override;
    QString currentConfiguration() override;
    bool isModified() override;
    bool save() override;
    void addFiles(QStringList paths) override;
    QString displayName() override;
    bool isActive() override;
    void setActive(bool active) override;

private:
    const QPointer<Project> m_object;
};

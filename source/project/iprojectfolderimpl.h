#pragma once
#include "interfaceobject.h"
#include "iprojectfolder.h"
#include "modelpointer.h"
#include "projectfolder.h"

/// The interface of a project folder for plug-ins and scripts; see IProjectImpl.
class IProjectFolderImpl : public InterfaceObject<IProjectFolder>
{
public:
    explicit IProjectFolderImpl(ProjectFolder *object) : InterfaceObject(0), m_object(object) {}
    [[nodiscard]] ProjectFolder *object() const { return m_object.get(); } ///< Null when it was deleted.
    /// The result of parent() and IProjectFile::folder(): a new wrapper, or null for null.
    [[nodiscard]] static IProjectFolder *ofParent(ProjectFolder *folder);

    QString name() override;
    QStringList extensions() override;
    QList<IProjectFolder *> folders() override;
    QList<IProjectFile *> files() override;
    IProjectFolder *parent() override;

private:
    const ModelPointer<ProjectFolder> m_object;
};

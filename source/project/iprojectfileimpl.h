#pragma once
#include "interfaceobject.h"
#include "iprojectfile.h"
#include "modelpointer.h"
#include "projectfile.h"

/// The interface of a project file for plug-ins and scripts; see IProjectImpl.
class IProjectFileImpl : public InterfaceObject<IProjectFile>
{
public:
    explicit IProjectFileImpl(ProjectFile *object) : InterfaceObject(0), m_object(object) {}
    [[nodiscard]] ProjectFile *object() const { return m_object.get(); } ///< Null when it was deleted.

    QString name() override;
    QString path() override;
    IProjectProperties *properties() override;
    IProjectFolder *folder() override;

private:
    const ModelPointer<ProjectFile> m_object;
};

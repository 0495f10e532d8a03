#pragma once
#include "interfaceobject.h"
#include "iprojectproperties.h"
#include "modelpointer.h"
#include "projectproperties.h"

/// The interface of the store of a project or file for plug-ins and scripts; see IProjectImpl.
class IProjectPropertiesImpl : public InterfaceObject<IProjectProperties>
{
public:
    explicit IProjectPropertiesImpl(ProjectProperties *object) : InterfaceObject(0), m_object(object) {}
    [[nodiscard]] ProjectProperties *object() const { return m_object.get(); } ///< Null when it was deleted.

    QString property(QString key, QString configuration, bool flag) override;
    void setProperty(QString key, QString value, QString configuration) override;
    QStringList configurations() override;
    QStringList propertyKeys(QString configuration) override;
    bool isModified() override;
    void setModified(bool modified) override;

private:
    const ModelPointer<ProjectProperties> m_object;
};

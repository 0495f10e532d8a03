#include "iprojectpropertiesimpl.h"
#include "projectproperties.h"

QString IProjectPropertiesImpl::property(QString key, QString configuration, bool flag)
{
    return m_object ? m_object->property(key, configuration, flag) : QString();
}

void IProjectPropertiesImpl::setProperty(QString key, QString value, QString configuration)
{
    if (m_object)
        m_object->setProperty(key, value, configuration);
}

QStringList IProjectPropertiesImpl::configurations()
{
    return m_object ? m_object->configurations() : QStringList();
}

QStringList IProjectPropertiesImpl::propertyKeys(QString configuration)
{
    return m_object ? m_object->propertyKeys(configuration) : QStringList();
}

bool IProjectPropertiesImpl::isModified()
{
    return m_object && m_object->isModified();
}

void IProjectPropertiesImpl::setModified(bool modified)
{
    if (m_object)
        m_object->setModified(modified);
}

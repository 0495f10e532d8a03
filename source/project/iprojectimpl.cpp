#include "iprojectimpl.h"
#include "handout.h"
#include "iprojectfileimpl.h"
#include "iprojectfolderimpl.h"
#include "iprojectpropertiesimpl.h"
#include "project.h"

IProjectImpl::IProjectImpl(Project *object) : InterfaceObject(0), m_object(object) {}

IProjectImpl::~IProjectImpl() = default;

QString IProjectImpl::name()
{
    return m_object ? m_object->name() : QString();
}

QString IProjectImpl::basePath()
{
    return m_object ? m_object->basePath() : QString();
}

QList<IProjectFolder *> IProjectImpl::folders()
{
    if (!m_object)
        return {};
    return handOutAll<IProjectFolder, IProjectFolderImpl>(m_object->folders());
}

QList<IProjectFile *> IProjectImpl::files()
{
    if (!m_object)
        return {};
    return handOutAll<IProjectFile, IProjectFileImpl>(m_object->rootFiles());
}

IProjectProperties *IProjectImpl::properties()
{
    return handOut<IProjectProperties, IProjectPropertiesImpl>(m_object ? m_object->properties() : nullptr);
}

QString IProjectImpl::currentConfiguration()
{
    return m_object ? m_object->currentConfiguration() : QString();
}

bool IProjectImpl::isModified()
{
    return m_object && m_object->isModified();
}

bool IProjectImpl::save()
{
    if (!m_object || !m_object->isNewerOnDisk())
        return m_object && m_object->save();
    Q_EMIT m_object->overwriteRefused(m_object->fileName()); // a question is no part of a plug-in's call
    return false;
}

void IProjectImpl::addFiles(QStringList paths)
{
    if (m_object)
        m_object->addFiles(paths, nullptr);
}

QString IProjectImpl::displayName()
{
    return m_object ? m_object->displayName() : QString();
}

bool IProjectImpl::isActive()
{
    return m_object && m_object->isActive();
}

void IProjectImpl::setActive(bool active)
{
    if (m_object)
        m_object->setActive(active);
}

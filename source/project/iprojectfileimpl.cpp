#include "iprojectfileimpl.h"
#include "handout.h"
#include "iprojectfolderimpl.h"
#include "iprojectpropertiesimpl.h"
#include "projectfile.h"
#include "projectfolder.h"

QString IProjectFileImpl::name()
{
    return m_object ? m_object->name() : QString();
}

QString IProjectFileImpl::path()
{
    return m_object ? m_object->path() : QString();
}

IProjectProperties *IProjectFileImpl::properties()
{
    return handOut<IProjectProperties, IProjectPropertiesImpl>(m_object ? m_object->properties() : nullptr);
}

IProjectFolder *IProjectFileImpl::folder()
{
    return m_object ? IProjectFolderImpl::ofParent(m_object->folder()) : nullptr;
}

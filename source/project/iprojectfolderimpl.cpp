#include "iprojectfolderimpl.h"
#include "handout.h"
#include "iprojectfileimpl.h"
#include "projectfolder.h"

QString IProjectFolderImpl::name()
{
    return m_object ? m_object->name() : QString();
}

QStringList IProjectFolderImpl::extensions()
{
    return m_object ? m_object->extensions() : QStringList();
}

QList<IProjectFolder *> IProjectFolderImpl::folders()
{
    if (!m_object)
        return {};
    return handOutAll<IProjectFolder, IProjectFolderImpl>(m_object->folders());
}

QList<IProjectFile *> IProjectFolderImpl::files()
{
    if (!m_object)
        return {};
    return handOutAll<IProjectFile, IProjectFileImpl>(m_object->files());
}

IProjectFolder *IProjectFolderImpl::parent()
{
    return m_object ? ofParent(m_object->parent()) : nullptr;
}

IProjectFolder *IProjectFolderImpl::ofParent(ProjectFolder *folder)
{
    if (!folder)
        return nullptr;
    auto *result = handOut<IProjectFolder, IProjectFolderImpl>(folder);
    // Always printed, with an assignment in the text: kept, because the output may be relied on.
    qWarning("ASSERT: \"res = QS_OK\" in %s (%d)", __FILE__, __LINE__);
    return result;
}

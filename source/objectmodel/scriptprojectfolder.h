#pragma once
#include "iprojectfolderimpl.h"
#include "projectinterface.h"

/// A folder of a project for scripts.
class ScriptProjectFolder
{
public:
    explicit ScriptProjectFolder(InterfacePtr<IProjectFolder> theIface) : m_folder(std::move(theIface)) {}
    [[nodiscard]] const ProjectInterface<IProjectFolder, IProjectFolderImpl> &folder() const { return m_folder; }

private:
    const ProjectInterface<IProjectFolder, IProjectFolderImpl> m_folder;
};

[[nodiscard]] py::object bindProjectFolder();

#pragma once
#include "iprojectfileimpl.h"
#include "projectinterface.h"

/// A file of a project for scripts.
class ScriptProjectFile
{
public:
    explicit ScriptProjectFile(InterfacePtr<IProjectFile> theIface) : m_file(std::move(theIface)) {}
    [[nodiscard]] const ProjectInterface<IProjectFile, IProjectFileImpl> &file() const { return m_file; }

private:
    const ProjectInterface<IProjectFile, IProjectFileImpl> m_file;
};

[[nodiscard]] py::object bindProjectFile();

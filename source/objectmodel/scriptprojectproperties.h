#pragma once
#include "iprojectpropertiesimpl.h"
#include "projectinterface.h"

/// The property store of a project or of one of its files for scripts.
class ScriptProjectProperties
{
public:
    explicit ScriptProjectProperties(InterfacePtr<IProjectProperties> theIface) : m_store(std::move(theIface)) {}
    [[nodiscard]] const ProjectInterface<IProjectProperties, IProjectPropertiesImpl> &store() const { return m_store; }

private:
    const ProjectInterface<IProjectProperties, IProjectPropertiesImpl> m_store;
};

[[nodiscard]] py::object bindProjectProperties();

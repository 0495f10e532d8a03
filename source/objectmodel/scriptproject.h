#pragma once
#include "iprojectimpl.h"
#include "project.h"
#include "projectinterface.h"
#include "scriptobject.h"

/// A project for scripts.
class ScriptProject : public ScriptObject
{
public:
    ScriptProject(ObjectModel &model, Project *project);

    [[nodiscard]] const ProjectInterface<IProject, IProjectImpl> &project() const { return m_project; }
    [[nodiscard]] QString name() const { return m_project->name(); }
    void build(int rebuild) const;
    void save() const;

private:
    const ProjectInterface<IProject, IProjectImpl> m_project;
};

[[nodiscard]] py::object bindProject();

#include "scriptproject.h"
#include "iprojectproperties.h"
#include "pythonerrors.h"
#include "scripthost.h"
#include "scriptprojectfile.h"
#include "scriptprojectfolder.h"
#include "scriptprojectproperties.h"

using namespace Qt::StringLiterals;

ScriptProject::ScriptProject(ObjectModel &model, Project *project)
    : ScriptObject(model), m_project(InterfacePtr<IProject>(handOut<IProject, IProjectImpl>(project)))
{}

/// Acts on the current project, whichever this is.
void ScriptProject::build(int rebuild) const
{
    (void)m_project.object();
    model().host().build(rebuild != 0);
}

/// The script continues after a failure; the error is shown when it has ended.
void ScriptProject::save() const
{
    Project &project = m_project.object();
    if (!model().saveProject(&project))
        deferPythonError(PyExc_OSError, u"Could not save project"_s);
}

namespace {
void defineAttributes(py::class_<ScriptProject> &type)
{
    type.def_property_readonly("name", &ScriptProject::name, "Returns the name of the project [R]");
    type.def_property_readonly(
        "basePath", [](const ScriptProject &self) { return self.project()->basePath(); },
        "Returns the base path of the project [R]");
    type.def_property_readonly(
        "properties",
        [](const ScriptProject &self) {
            return newScriptObject<ScriptProjectProperties>(
                InterfacePtr<IProjectProperties>(self.project()->properties()));
        },
        "Returns the ProjectProperties object [R]");
    type.def_property_readonly(
        "folders",
        [](const ScriptProject &self) { return newScriptObjects<ScriptProjectFolder>(self.project()->folders()); },
        "Returns list of ProjectFolder objects [R]");
    type.def_property_readonly(
        "files", [](const ScriptProject &self) { return newScriptObjects<ScriptProjectFile>(self.project()->files()); },
        "Returns a collection of files in the root of the project [R]");
    type.def_property_readonly(
        "configurations",
        [](const ScriptProject &self) {
            return InterfacePtr<IProjectProperties>(self.project()->properties())->configurations();
        },
        "Returns a list of configuration names [R]");
    type.def_property_readonly(
        "currentConfiguration", [](const ScriptProject &self) { return self.project()->currentConfiguration(); },
        "Returns current project configuration name [R]");
    type.def_property_readonly(
        "isModified", [](const ScriptProject &self) { return int(self.project()->isModified()); },
        "Returns 1 if project has been modified [R]");
}
} // namespace

py::object bindProject()
{
    auto type = newScriptType<ScriptProject>("Project", "Represents an Varnel project");
    type.def(
        "addFile", [](const ScriptProject &self, const QString &path) { self.project()->addFiles({path}); },
        py::arg("filename"), py::pos_only(), "AddFile(filename) - adds the file 'filename' to the project");
    type.def("build", &ScriptProject::build, py::arg("rebuild") = 0, py::pos_only(),
             "build() - Builds the current configuration of the project");
    type.def("save", &ScriptProject::save, "save() - Saves the current project");
    defineAttributes(type);
    return type;
}

#include "scriptprojectfolder.h"
#include "scriptprojectfile.h"

py::object bindProjectFolder()
{
    using Self = ScriptProjectFolder;
    auto type = newScriptType<Self>("ProjectFolder", "Represents a project folder");
    type.def(
        "test", [](const Self &, const QString &text) { return text; }, py::arg("text"), py::pos_only(), "test method");
    type.def_property_readonly(
        "name", [](const Self &self) { return self.folder()->name(); }, "Returns the name of the file [R]");
    type.def_property_readonly(
        "extensions", [](const Self &self) { return self.folder()->extensions(); },
        "List of extensions associated with this folder [R]");
    type.def_property_readonly(
        "folders", [](const Self &self) { return newScriptObjects<Self>(self.folder()->folders()); },
        "Returns a list of folders in the folder [R]");
    type.def_property_readonly(
        "files", [](const Self &self) { return newScriptObjects<ScriptProjectFile>(self.folder()->files()); },
        "Returns a list of files in the folder [R]");
    return type;
}

#include "scriptprojectfile.h"
#include "scriptprojectproperties.h"

py::object bindProjectFile()
{
    using Self = ScriptProjectFile;
    auto type = newScriptType<Self>("ProjectFile", "Represents a file contained in the project");
    type.def(
        "test", [](const Self &, const QString &text) { return text; }, py::arg("text"), py::pos_only(), "test method");
    type.def_property_readonly(
        "name", [](const Self &self) { return self.file()->name(); }, "Returns the name of the file [R]");
    type.def_property_readonly(
        "path", [](const Self &self) { return self.file()->path(); }, "Returns the relative path of the file [R]");
    type.def_property_readonly(
        "properties",
        [](const Self &self) {
            return newScriptObject<ScriptProjectProperties>(
                InterfacePtr<IProjectProperties>(self.file()->properties()));
        },
        "Returns the the peroperties of the page [R]");
    return type;
}

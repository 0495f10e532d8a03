#include "scriptprojectproperties.h"

py::object bindProjectProperties()
{
    using Self = ScriptProjectProperties;
    auto type =
        newScriptType<Self>("ProjectProperties", "Represents an object container for file and folder properties");
    type.def(
        "property",
        [](const Self &self, const QString &key, const QString &configuration) {
            return self.store()->property(key, configuration, false);
        },
        py::arg("propertyName"), py::arg("configName"), py::pos_only(),
        "property(propertName,configName) - Get the value of the specified property");
    type.def(
        "setProperty",
        [](const Self &self, const QString &key, const QString &value, const QString &configuration) {
            self.store()->setProperty(key, value, configuration);
        },
        py::arg("propertyName"), py::arg("value"), py::arg("configName"), py::pos_only(),
        "setProperty(propertyName,value,configName) - Set the value of a property");
    type.def(
        "propertyKeys",
        [](const Self &self, const QString &configuration) { return self.store()->propertyKeys(configuration); },
        py::arg("configName"), py::pos_only(),
        "propertyKeys(configName) - Returns a list of property key names for configuration 'configName'");
    return type;
}

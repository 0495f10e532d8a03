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
        "property(propertName,configName) - Get the value of the specified property");
    type.def(
        "setProperty",
        [](const Self &self, const QString &key, const QString &value, const QString &configuration) {
            self.store()->setProperty(key, value, configuration);
        },
        "setProperty(propertyName,value,configName) - Set the value of a property");
    type.def(
        "propertyKeys",
        [](const Self &self, const QString &configuration) { return self.store()->propertyKeys(configuration); },
        "propertyKeys(configName) - Returns a list of property key names for configuration 'configName'");
    return type;
}

#include "scriptmodule.h"
#include "processorcollection.h"
#include "projectcollection.h"
#include "scriptapp.h"
#include "scriptdebugger.h"
#include "scriptdocument.h"
#include "scripteditor.h"
#include "scriptmemory.h"
#include "scriptoutputwindow.h"
#include "scriptperipherals.h"
#include "scriptprocessor.h"
#include "scriptproject.h"
#include "scriptprojectfile.h"
#include "scriptprojectfolder.h"
#include "scriptprojectproperties.h"
#include "scriptregisters.h"
#include "scripttypes.h"
#include "scriptwidgets.h"

namespace {
struct TypeEntry
{
    const char *name; ///< in the module; null: not there
    py::object (*create)();
};

/// In the order in which they are created and listed.
constexpr TypeEntry Types[] = {
    {"App", bindApp},
    {"OutputWindow", bindOutputWindow},
    {"Editor", bindEditor},
    {"TextDocument", bindDocument},
    {"Project", bindProject},
    {"ProjectFolder", bindProjectFolder},
    {"ProjectFile", bindProjectFile},
    {"ProjectProperties", bindProjectProperties},
    {"Debugger", bindDebugger},
    {"Processor", bindProcessor},
    {"Registers", bindRegisters},
    {"Memory", bindMemory},
    {"Peripherals", bindPeripherals},
    {"Peripheral", bindPeripheral},
    {nullptr, bindQtWrapper},
    {nullptr, bindQtSlot},
    {nullptr, bindProjectCollection},
    {nullptr, bindProcessorCollection},
};

struct Constant
{
    const char *name;
    int value;
};

constexpr Constant Constants[] = {
    {"mbNone", 0},         {"mbOk", 1},          {"mbCancel", 2}, {"mbYes", 3},
    {"mbNo", 4},           {"mbAbort", 5},       {"mbRetry", 6},  {"mbIgnore", 7},
    {"mcBackward", 0},     {"mcForward", 1}, // mc...: TextView::CursorAction
    {"mcWordBackward", 2}, {"mcWordForward", 3}, {"mcUp", 4},     {"mcDown", 5},
    {"mcLineStart", 6},    {"mcLineEnd", 7},     {"mcHome", 8},   {"mcEnd", 9},
};

/// Never released: objects of scripts may exist until the end of the process.
std::vector<py::handle> createTypes()
{
    py::options options;
    options.disable_function_signatures(); // the documentation is the given text
    std::vector<py::handle> types;
    for (const TypeEntry &entry : Types)
        types.push_back(entry.create().release());
    return types;
}

py::handle createModule()
{
    static PyModuleDef definition;
    return py::module_::create_extension_module("varnel", nullptr, &definition).release();
}

PythonReference fillModule(ObjectModel &model)
{
    static const std::vector<py::handle> types = createTypes();
    static const py::handle module = createModule();
    PythonReference app = newScriptObject<ScriptApp>(model);
    py::setattr(module, "app", app.get());
    for (const Constant &constant : Constants)
        py::setattr(module, constant.name, py::int_(constant.value));
    for (size_t i = 0; i < types.size(); ++i) {
        if (Types[i].name)
            py::setattr(module, Types[i].name, types[i]);
    }
    PyDict_SetItemString(PyImport_GetModuleDict(), "varnel", module.ptr());
    return app;
}
} // namespace

PythonReference offerScriptModule(ObjectModel &model)
{
    try {
        return fillModule(model);
    } catch (const std::exception &error) {
        qWarning("offerScriptModule: %s", error.what());
        return nullptr;
    }
}

#include "scripttexts.h"
#include "producttext.h"
#include "scripttypes.h"

namespace {
py::handle createTextsModule()
{
    static PyModuleDef definition;
    py::module_ module = py::module_::create_extension_module("varneltexts", nullptr, &definition);
    py::options options;
    options.disable_function_signatures(); // the documentation is the given text
    module.def(
        "tr", [](const QString &text) { return productText("Scripts", text); }, py::arg("text"), py::pos_only(),
        "tr(text) - the text in the user's language; the text itself if there is no translation");
    return module.release();
}
} // namespace

void offerTexts()
{
    try {
        static const py::handle module = createTextsModule();
        PyDict_SetItemString(PyImport_GetModuleDict(), "varneltexts", module.ptr());
    } catch (const std::exception &error) {
        qWarning("offerTexts: %s", error.what());
    }
}

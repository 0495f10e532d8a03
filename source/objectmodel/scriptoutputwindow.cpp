#include "scriptoutputwindow.h"
#include "dockwindow.h"
#include "pythonoutputpanel.h"
#include "scripthost.h"

using namespace Qt::StringLiterals;

PythonOutputPanel &ScriptOutputWindow::panel() const
{
    return requireAlive(QPointer(model().host().pythonOutput()));
}

void ScriptOutputWindow::setShown(bool shown) const
{
    auto *dock = qobject_cast<DockWindow *>(panel().parentWidget());
    if (dock && shown)
        dock->bringUp();
    else if (dock)
        dock->hide();
}

/// A row with an empty text counts as unknown.
QString ScriptOutputWindow::item(const QString &name) const
{
    const QString value = panel().value(name);
    if (value.isEmpty())
        raisePython(PyExc_KeyError, u"Attempt to read unknown property '%1'"_s.arg(name));
    return value;
}

py::object bindOutputWindow()
{
    using Self = ScriptOutputWindow;
    auto type = newScriptType<Self>("OutputWindow", "UI element for displaying name/values pairs");
    type.def(
        "show", [](const Self &self) { self.setShown(true); }, "show() - Shows the python output window");
    type.def(
        "hide", [](const Self &self) { self.setShown(false); }, "hide() - Hides the python output window");
    type.def(
        "clear", [](const Self &self) { self.panel().clear(); }, "clear() - Clears the python output window");
    type.def(
        "clearProperty", [](const Self &self, const QString &name) { self.panel().remove(name); },
        py::arg("propertyName"), py::pos_only(),
        "clearProperty(propertyName) - Removes the property value 'proopetyName' from the Output Window");
    type.def("__getitem__", &Self::item);
    type.def("__setitem__",
             [](const Self &self, const QString &name, const QString &value) { self.panel().setValue(name, value); });
    return type;
}

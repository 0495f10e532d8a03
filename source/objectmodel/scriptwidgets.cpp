#include "scriptwidgets.h"
#include "dockedwidgets.h"
#include "pyqtwrapper.h"
#include "qtwrapper.h"
#include "scriptdirectories.h"
#include "scripthost.h"
#include "timer.h"
#include "uifile.h"
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QWidget>
using namespace Qt::StringLiterals;

namespace {
/// The wrapper of a new object. If a deleted object had the same address, its wrapper is returned, through which no
/// script can reach the new object: that is deleted.
PythonReference wrapperOfNew(QObject *object, bool owned)
{
    const QtWrapper *wrapper = QtWrapper::get(object, owned);
    if (wrapper->object() != object)
        delete object;
    return wrapper->pythonObject();
}

PythonReference loadUI(const ScriptApp &app, const QString &fileName)
{
    const QString path = QDir::cleanPath(app.model().host().scriptDirectories().file(fileName));
    QWidget *window = loadUiFile(path);
    if (!window)
        raisePython(PyExc_OSError, u"Failed to load UI from file %1"_s.arg(path));
    if (qobject_cast<QDialog *>(window)) // in front of the window, which it blocks
        window->setParent(app.model().host().dialogParent(), window->windowFlags());
    return wrapperOfNew(window, true);
}

PythonReference createUI(const ScriptApp &, const QString &className, const QString &name)
{
    requireMainThread();
    QWidget *widget = createUiWidget(className, name);
    if (!widget)
        raisePython(PyExc_TypeError, u"Failed to create widget %1"_s.arg(className));
    return wrapperOfNew(widget, true);
}

QWidget &requireWidget(const py::handle &object, const ObjectModel &model)
{
    if (!py::isinstance(object, pyQtWrapperType()))
        raisePython(PyExc_TypeError, u"Widget expected"_s);
    const QtWrapper *wrapper = QtWrapper::of(object.ptr());
    if (!wrapper || !wrapper->object())
        raiseDestroyed();
    auto *widget = qobject_cast<QWidget *>(wrapper->object());
    if (!widget || widget->isAncestorOf(model.host().dialogParent()))
        raisePython(PyExc_TypeError, u"Widget expected"_s);
    return *widget;
}

void dockUI(const ScriptApp &app, const py::handle &widget, long position)
{
    app.model().dockedWidgets().dock(&requireWidget(widget, app.model()),
                                     position >= 0 && position <= 3 ? int(position) : 1);
}

PythonReference createTimer(const ScriptApp &, const QString &name)
{
    requireMainThread();
    auto *timer = new Timer(QCoreApplication::instance()); // exists until the end of the process
    timer->setObjectName(name);
    return wrapperOfNew(timer, false);
}

} // namespace

void defineWidgetMethods(py::class_<ScriptApp> &type)
{
    type.def("loadUI", loadUI, py::arg("filename"), py::pos_only(), "loadUI(filename) - load UI definition from file");
    type.def("createUI", createUI, py::arg("className"), py::arg("name") = QString(), py::pos_only(),
             "createUI(class, [name]) - create new widget");
    type.def("dockUI", dockUI, py::arg("widget"), py::arg("position") = 1, py::pos_only(),
             "dockUI(widget, [position]) - dock a widget");
    type.def("createTimer", createTimer, py::arg("name") = QString(), py::pos_only(),
             "createTimer([name]) - create a new timer");
}

py::object bindQtWrapper()
{
    return py::reinterpret_borrow<py::object>(pyQtWrapperType());
}

py::object bindQtSlot()
{
    return py::reinterpret_borrow<py::object>(pySlotWrapperType());
}

#include "projectcollection.h"
#include "collectiontype.h"
#include "project.h"
#include "scriptproject.h"
using namespace Qt::StringLiterals;

namespace {
[[noreturn]] void refuseAttribute()
{
    raisePython(PyExc_AttributeError, u"Attribute not supported"_s);
}
} // namespace

const void *ProjectCollection::cacheKey(const Project &project) const
{
    return &project;
}

PythonReference ProjectCollection::createObject(Project &project)
{
    return newScriptObject<ScriptProject>(model(), &project);
}

py::object bindProjectCollection()
{
    auto type = newCollectionType<ProjectCollection>("projects-iterator", "Documentation for Projects Object");
    type.def("__setitem__", [](ProjectCollection &, py::handle, py::handle) { raiseNothing(); });
    type.def("__delitem__", [](ProjectCollection &, py::handle) { raiseNothing(); });
    // Only for names that the type does not have. "keys" is reserved.
    type.def("__getattr__", [](ProjectCollection &, const QString &name) {
        if (name == "keys"_L1)
            raiseNothing();
        raisePython(PyExc_AttributeError, name);
    });
    type.def("__setattr__", [](ProjectCollection &, py::handle, py::handle) { refuseAttribute(); });
    type.def("__delattr__", [](ProjectCollection &, py::handle) { refuseAttribute(); });
    return type;
}

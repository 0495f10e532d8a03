#include "processorcollection.h"
#include "collectiontype.h"
#include "project.h"
#include "scriptprocessor.h"
using namespace Qt::StringLiterals;

const void *ProcessorCollection::cacheKey(const Project &project) const
{
    return project.executionInterface();
}

PythonReference ProcessorCollection::createObject(Project &project)
{
    if (!project.executionInterface())
        return newPythonReference(Py_None);
    return newScriptObject<ScriptProcessor>(ScriptTarget(model(), &project));
}

py::object bindProcessorCollection()
{
    auto type = newCollectionType<ProcessorCollection>("processors-iterator", "Collection of processors");
    const auto refuse = [] { raisePython(PyExc_AttributeError, u"Attribute not supported"_s); };
    type.def("__setitem__", [=](ProcessorCollection &, py::handle, py::handle) { refuse(); });
    type.def("__delitem__", [=](ProcessorCollection &, py::handle) { refuse(); });
    return type;
}

#include "scriptcollection.h"
#include "activity.h"
#include "project.h"
#include "projectworkspace.h"
#include "scripttypes.h"
using namespace Qt::StringLiterals;

ScriptCollection::ScriptCollection(ObjectModel &model, ProjectWorkspace *workspace)
    : ScriptObject(model), m_workspace(workspace)
{}

ScriptCollection::~ScriptCollection() = default;

ProjectWorkspace *ScriptCollection::workspace() const
{
    return m_workspace;
}

int ScriptCollection::count() const
{
    requireMainThread();
    return m_workspace ? m_workspace->count() : 0;
}

PythonReference ScriptCollection::subscript(_object *key)
{
    requireMainThread();
    if (!m_workspace)
        raiseNothing();
    if (PyLong_Check(key)) {
        const long index = PyLong_AsLong(key); // -1 for numbers that are too large
        PyErr_Clear();
        if (index < 0 || index >= count())
            raisePython(PyExc_IndexError, u"Index out of range"_s);
        return item(int(index));
    }
    if (!PyUnicode_Check(key))
        raisePython(PyExc_TypeError,
                    u"expected string or int, '%1' found"_s.arg(QString::fromUtf8(Py_TYPE(key)->tp_name)));
    return objectOf(*find(fromPython(key)));
}

/// Every hit after the first is an error, also after an exact name.
Project *ScriptCollection::find(const QString &text) const
{
    Project *found = nullptr;
    for (Project *project : model().activity().projects()) { // those of this workspace, which is open
        if (!project->name().contains(text, Qt::CaseInsensitive))
            continue;
        if (found)
            raisePython(PyExc_KeyError, u"Key '%1' is ambiguous"_s.arg(text));
        found = project;
    }
    if (!found)
        raisePython(PyExc_KeyError, u"Key not found"_s);
    return found;
}

PythonReference ScriptCollection::item(int index)
{
    return objectOf(*m_workspace->project(index));
}

PythonReference ScriptCollection::objectOf(Project &project)
{
    requireMainThread();
    const void *key = cacheKey(project);
    if (!key)
        return createObject(project);
    // The key may be the address of a deleted object: the kept entry is used only if its project still has this key.
    const auto isCurrent = [&](const Entry &entry) { return entry.project && cacheKey(*entry.project) == key; };
    if (const auto found = m_objects.find(key); found != m_objects.end() && isCurrent(found->second))
        return newPythonReference(found->second.object.get());
    PythonReference object = createObject(project);
    Entry entry{&project, newPythonReference(object.get())};
    std::swap(m_objects[key], entry); // the old object, released at the end, may run code of a script
    return object;
}

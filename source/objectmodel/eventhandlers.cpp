#include "eventhandlers.h"
#include "pythoncall.h"
#include <Python.h>

bool EventHandlers::setHandler(const QString &name, _object *callable)
{
    if (callable != Py_None && !PyCallable_Check(callable))
        return false;
    PythonReference old; // its destructor may run Python code, which must find a consistent table
    if (const auto found = m_handlers.find(name); found != m_handlers.end()) {
        old = std::move(found->second);
        m_handlers.erase(found);
    }
    if (callable != Py_None)
        m_handlers.emplace(name, newPythonReference(callable));
    return true;
}

PythonReference EventHandlers::handler(const QString &name) const
{
    const auto found = m_handlers.find(name);
    return newPythonReference(found == m_handlers.end() ? Py_None : found->second.get());
}

void EventHandlers::fire(const QString &name) const
{
    const auto found = m_handlers.find(name);
    if (found == m_handlers.end())
        return;
    const PythonCall call;
    const PythonReference handler = newPythonReference(found->second.get()); // it may replace itself while it runs
    const PythonReference result(PyObject_CallNoArgs(handler.get()));
}

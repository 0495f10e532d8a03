#pragma once
#include "pythonreference.h"
#include <map>
#include <QString>

/// The Python callables that scripts want called on events of the program, by the name of the event. They belong to
/// the program: a workspace may come and go meanwhile.
class EventHandlers
{
public:
    /// None takes the handler away. False, and nothing changes, if @p callable is something else that cannot be called.
    bool setHandler(const QString &name, _object *callable);
    [[nodiscard]] PythonReference handler(const QString &name) const; ///< None if there is none.
    /// Calls the handler, if there is one, without arguments. What it raises is printed and goes no further.
    void fire(const QString &name) const;

private:
    std::map<QString, PythonReference> m_handlers;
};

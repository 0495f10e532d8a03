#pragma once
#include "pythonreference.h"
#include <map>
#include <QString>

/// The Python functions that scripts have registered for events of the program, by the name of the event. The program
/// owns them: they stay when workspaces are opened and closed.
class EventHandlers
{
public:
    /// None removes the handler. False, without a change, if @p callable is another object that cannot be called.
    bool setHandler(const QString &name, _object *callable);
    [[nodiscard]] PythonReference handler(const QString &name) const; ///< None if there is no handler.
    /// Calls the handler, if there is one, without arguments. Exceptions are printed and do not propagate.
    void fire(const QString &name) const;

private:
    std::map<QString, PythonReference> m_handlers;
};

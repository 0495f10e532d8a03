#pragma once
#include "callplugin.h"
#include "iexecutionenvironment.h"
#include "scriptobject.h"
class Project;

/// The target of a project, as objects of scripts refer to it. They may exist longer than the project: then each use
/// raises RuntimeError. They hold no reference to the plug-in, so that it ends with its project.
class ScriptTarget : public ScriptObject
{
public:
    ScriptTarget(ObjectModel &model, Project *project);

    [[nodiscard]] Project *project() const;
    [[nodiscard]] InterfacePtr<IExecutionEnvironment> environment() const;
    void requireActive() const; ///< Raises RuntimeError if the project takes no part in debugging.

    /// An optional interface; null if the environment does not offer it.
    template <typename T>
    [[nodiscard]] InterfacePtr<T> find() const
    {
        return queryPlugin<T>(environment());
    }
    /// One that it offered before.
    template <typename T>
    [[nodiscard]] InterfacePtr<T> get() const
    {
        InterfacePtr<T> found = find<T>();
        if (!found)
            raiseNoInterface();
        return found;
    }

private:
    [[noreturn]] static void raiseNoInterface();

    QPointer<Project> m_project;
};

/// Raises RuntimeError for a call in which the plug-in has thrown an exception.
[[noreturn]] void raisePluginFailed(const char *operation);

/// Calls Function of @p object, a plug-in's interface that is not null; raises RuntimeError if it throws.
template <auto Function, typename Object, typename... Arguments>
void runTarget(const Object &object, Arguments &&...arguments)
{
    if (!runPlugin<Function>(object, std::forward<Arguments>(arguments)...))
        raisePluginFailed(detail::operationName<Function>());
}

/// The same for a function with a result.
template <auto Function, typename Object, typename... Arguments>
[[nodiscard]] auto askTarget(const Object &object, Arguments &&...arguments)
{
    auto result = tryPlugin<Function>(object, std::forward<Arguments>(arguments)...);
    if (!result)
        raisePluginFailed(detail::operationName<Function>());
    return *std::move(result);
}

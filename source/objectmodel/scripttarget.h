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
        return queryInterface<T>(environment().get());
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

/// Makes a call into the target's plug-in; raises RuntimeError if it throws. @p operation is "Class::method".
template <typename Call>
void runTarget(const char *operation, const Call &call)
{
    if (!runPlugin(operation, call))
        raisePluginFailed(operation);
}

/// The same for a call with a result.
template <typename Call>
[[nodiscard]] auto askTarget(const char *operation, const Call &call)
{
    std::invoke_result_t<Call> result{};
    runTarget(operation, [&] { result = call(); });
    return result;
}

#pragma once
#include "scriptobject.h"
#include <map>
class Project;
class ProjectWorkspace;

/// A collection for scripts with one object for each project of a workspace, in the order of the workspace. Subclasses
/// decide what these objects are. An object is created when it is requested for the first time, and kept. When the
/// workspace has been closed, the collection is empty.
class ScriptCollection : public ScriptObject
{
public:
    ScriptCollection(ObjectModel &model, ProjectWorkspace *workspace);
    virtual ~ScriptCollection();
    Q_DISABLE_COPY_MOVE(ScriptCollection)

    [[nodiscard]] ProjectWorkspace *workspace() const; ///< Null when it was closed.
    [[nodiscard]] int count() const;
    /// The object at an index, which is not negative, or the one of the project whose name contains a text, without
    /// regard to case. Raises an exception if there is none or more than one.
    [[nodiscard]] PythonReference subscript(_object *key);
    [[nodiscard]] PythonReference item(int index); ///< Below count().
    [[nodiscard]] PythonReference objectOf(Project &project);

protected:
    /// Projects with the same key have the same object. With null, the object is not kept.
    [[nodiscard]] virtual const void *cacheKey(const Project &project) const = 0;
    [[nodiscard]] virtual PythonReference createObject(Project &project) = 0;

private:
    struct Entry
    {
        QPointer<Project> project; ///< for which the object was created; another one may get its address
        PythonReference object;
    };

    [[nodiscard]] Project *find(const QString &text) const;

    const QPointer<ProjectWorkspace> m_workspace;
    std::map<const void *, Entry> m_objects;
};

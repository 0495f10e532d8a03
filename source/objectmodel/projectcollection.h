#pragma once
#include "scriptcollection.h"
#include "scripttypes.h"

/// The projects of a workspace for scripts.
class ProjectCollection : public ScriptCollection
{
public:
    using ScriptCollection::ScriptCollection;

protected:
    [[nodiscard]] const void *cacheKey(const Project &project) const override;
    [[nodiscard]] PythonReference createObject(Project &project) override;
};

[[nodiscard]] py::object bindProjectCollection();

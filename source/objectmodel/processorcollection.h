#pragma once
#include "scriptcollection.h"
#include "scripttypes.h"

/// The processors of a workspace for scripts. Projects that share an execution environment have the same processor; one
/// without an environment has None in its place.
class ProcessorCollection : public ScriptCollection
{
public:
    using ScriptCollection::ScriptCollection;

protected:
    [[nodiscard]] const void *cacheKey(const Project &project) const override;
    [[nodiscard]] PythonReference createObject(Project &project) override;
};

[[nodiscard]] py::object bindProcessorCollection();

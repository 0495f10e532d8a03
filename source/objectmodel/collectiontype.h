#pragma once
#include "scriptcollection.h"
#include "scripttypes.h"

/// Walks over a ScriptCollection while its size may change.
template <typename Collection>
class CollectionIterator
{
public:
    explicit CollectionIterator(PythonReference collection) : m_collection(std::move(collection)) {}

    [[nodiscard]] PythonReference next()
    {
        if (m_collection) {
            auto &collection = py::cast<Collection &>(py::handle(m_collection.get()));
            if (m_position < collection.count())
                return collection.item(m_position++);
            m_collection.reset();
        }
        throw py::stop_iteration();
    }

private:
    PythonReference m_collection; ///< null at the end
    int m_position = 0;
};

/// The type of a subclass of ScriptCollection, and that of its iterators.
template <typename Collection>
py::class_<Collection> newCollectionType(const char *iteratorName, const char *documentation)
{
    using Iterator = CollectionIterator<Collection>;
    auto iterator = newScriptType<Iterator>(iteratorName, "");
    iterator.def("__iter__", [](py::object self) { return self; });
    iterator.def("__next__", &Iterator::next);
    iterator.def("next", &Iterator::next);
    auto type = newScriptType<Collection>("Projects", documentation);
    type.def("__len__", &Collection::count);
    type.def("__getitem__", [](Collection &self, py::handle key) { return self.subscript(key.ptr()); });
    type.def("__iter__",
             [](py::object self) { return newScriptObject<Iterator>(PythonReference(self.release().ptr())); });
    return type;
}

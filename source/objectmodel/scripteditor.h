#pragma once
#include "scriptobject.h"
#include "scripttypes.h"

/// The open documents for scripts.
class ScriptEditor : public ScriptObject
{
public:
    explicit ScriptEditor(ObjectModel &model) : ScriptObject(model) {}

    void openDocument(const QString &path) const;
    void newDocument(const QString &path, int addToProject) const;
    void saveAll(int modifiedOnly) const;
    [[nodiscard]] py::list documents() const;              ///< Text documents, in the order in which they were opened.
    [[nodiscard]] PythonReference currentDocument() const; ///< Null unless a text document is in front.
};

/// The file that a script names: relative names are those of files of the current project.
[[nodiscard]] QString absolutePath(const ObjectModel &model, const QString &name);
[[nodiscard]] py::object bindEditor();

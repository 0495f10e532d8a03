#pragma once
#include "scriptobject.h"
#include "scripttypes.h"
class PythonOutputPanel;

/// The panel "Python Output" for scripts: a mapping of names to texts.
class ScriptOutputWindow : public ScriptObject
{
public:
    explicit ScriptOutputWindow(ObjectModel &model) : ScriptObject(model) {}

    [[nodiscard]] PythonOutputPanel &panel() const;
    void setShown(bool shown) const;
    [[nodiscard]] QString item(const QString &name) const;
};

[[nodiscard]] py::object bindOutputWindow();

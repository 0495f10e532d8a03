#pragma once
#include "objectmodel.h"
#include <QPointer>

/// Base of the C++ side of script objects that use the program. Scripts may keep them longer than the main window.
class ScriptObject
{
public:
    /// Raises RuntimeError if the main window is gone, and in a thread of the script.
    [[nodiscard]] ObjectModel &model() const;

protected:
    explicit ScriptObject(ObjectModel &model) : m_model(&model) {}
    ~ScriptObject() = default;

private:
    QPointer<ObjectModel> m_model;
};

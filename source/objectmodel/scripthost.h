#pragma once
#include <QString>
class QAction;

/// What scripts ask of the main window.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;

    /// The program's action @p name, or null.
    [[nodiscard]] virtual QAction *action(const QString &name) = 0;
};

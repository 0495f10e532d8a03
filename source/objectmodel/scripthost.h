#pragma once
#include <QString>
class QAction;

/// The interface of the main window for scripts.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;

    /// The program's action @p name, or null.
    [[nodiscard]] virtual QAction *action(const QString &name) = 0;
};

#pragma once
#include <QString>

/// Where scripts of the product lie, and the user's own copies of them.
struct ScriptDirectories
{
    QString installed;
    QString user; ///< empty if the user has no directory of their own

    /// The path of @p name: the user's copy if there is one, else the installed file, whether it exists or not.
    [[nodiscard]] QString file(const QString &name) const;
};

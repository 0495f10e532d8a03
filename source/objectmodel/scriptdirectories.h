#pragma once
#include <QString>

/// The directories of the product's scripts and of the user's copies of them.
struct ScriptDirectories
{
    QString installed;
    QString user;                    ///< empty if the user has no such directory
    QString virtualEnvironment = {}; ///< whose packages scripts can import; empty for none

    /// The path of @p name: the user's copy if there is one, otherwise the installed file, which may not exist.
    [[nodiscard]] QString file(const QString &name) const;
};

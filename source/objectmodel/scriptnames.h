#pragma once
#include <QMap>
#include <QString>
struct QMetaObject;

/// The names under which scripts reach the members of a class, with the numbers of the members in its meta-object.
struct ScriptNames
{
    QMap<QString, int> methods;    ///< public slots, without their parameters; "exec" is "execute"
    QMap<QString, int> properties; ///< those for scripts
    QMap<QString, int> handlers;   ///< signals, "clicked" as "onClicked"
};

/// The names of @p meta and its base classes. Of overloads the last one declared has the name, and so has the form
/// without its default arguments, which the meta-object lists behind the full one.
[[nodiscard]] ScriptNames scriptNames(const QMetaObject &meta);

/// The same names, remembered for each class.
[[nodiscard]] ScriptNames cachedScriptNames(const QMetaObject &meta);

#pragma once
#include <QString>

/// One entry of the Tools menu as the user edits it.
struct ToolEntry
{
    QString name;
    QString command = {};    ///< taken as it stands
    QString arguments = {};  ///< with macros, divided at blanks
    QString initialDir = {}; ///< with macros
    int id = 0;              ///< names a tool of ExternalTools while its entry is edited; 0 for a new entry

    bool operator==(const ToolEntry &) const = default;
};

#pragma once
#include <QDomDocument>
#include <QString>

/// The file in the configuration directory that declares actions, tool bars and menus.
inline constexpr QLatin1StringView uiConfigFileName{"uiconfig.xml"};

/// Reads the file @p path, which declares the user interface, anew. A file that cannot be opened or parsed is reported
/// on the warning channel in the name of @p reader, and gives an empty document.
///
/// Elements nested deeper than 1000 levels count as unparsable: no menu needs them, and the document tree is
/// destroyed by recursion.
[[nodiscard]] QDomDocument readUiDocument(const QString &path, const char *reader);

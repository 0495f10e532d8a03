#pragma once
#include <QDomDocument>
#include <QString>

/// The file in the configuration directory that declares actions, tool bars and menus.
inline constexpr QLatin1StringView uiConfigFileName{"uiconfig.xml"};

/// Reads the file @p path, which declares the user interface. If it cannot be opened or parsed, prints a warning that
/// begins with @p reader, and returns a null document.
///
/// Elements nested deeper than 1000 levels count as unparsable: no menu needs them, and the document tree is
/// destroyed by recursion.
[[nodiscard]] QDomDocument readUiDocument(const QString &path, const char *reader);

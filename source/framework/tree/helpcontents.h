#pragma once
#include <optional>
#include <QList>
#include <QString>

/// An entry of a table of contents. The numbers are those of the rows in the navigator.
struct HelpEntry
{
    enum Kind { Document = 1000, Book = 1001, Page = 1002 };

    Kind kind = Document;
    QString title;
    QString path; ///< of a page, relative to the directory of the help
    QList<HelpEntry> children;
};

/// Reads a file with a table of contents; nothing if it is not well-formed. Elements that are neither books nor pages
/// are skipped with their children, and so are entries that are nested too deeply.
[[nodiscard]] std::optional<HelpEntry> readHelpContents(const QByteArray &xml);

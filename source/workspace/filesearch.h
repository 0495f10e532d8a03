#pragma once
#include <optional>
#include <QHash>
#include <QStringList>

/// What is searched for in which files.
struct FileSearch
{
    QString text;
    bool caseSensitive = true;
    bool wholeWord = false; ///< the text is a regular expression between two word boundaries
    bool regExp = false;

    QString folder = {};
    QString mask = {};                        ///< wildcards separated by ";" or else by blanks
    bool recursive = false;                   ///< the folders below as well
    std::optional<QStringList> files = {};    ///< searched instead of a folder; absolute paths
    QHash<QString, QString> editedTexts = {}; ///< of documents with unsaved changes, by path and by canonical path
};

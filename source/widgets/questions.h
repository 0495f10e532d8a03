#pragma once
#include <optional>
#include <QStringList>
class QWidget;

// Dialogs that ask for one thing and are gone.

/// Asks for a line of text under @p label, with @p text to begin with ("inputDialog"). Nothing if the user cancels.
[[nodiscard]] std::optional<QString> askForText(QWidget *parent, const QString &label, const QString &text);

/// What a file dialog shows. The filter has one entry behind another, as in "Python Files (*.py);;All Files (*.*)";
/// "*.*" stands for all files, with or without a dot.
struct FileQuestion
{
    QString objectName;
    QString caption;
    QString directory; ///< where it starts
    QString filter;
};

/// Asks for any number of files that exist. Empty if the user cancels.
[[nodiscard]] QStringList askForOpenFiles(QWidget *parent, const FileQuestion &question);
/// Asks for one file that exists. Empty if the user cancels.
[[nodiscard]] QString askForOpenFile(QWidget *parent, const FileQuestion &question);
/// Asks where to save a file; the user has agreed to overwrite one that exists. Empty if the user cancels.
[[nodiscard]] QString askForSaveFile(QWidget *parent, const FileQuestion &question);
/// Asks for a directory that exists. Empty if the user cancels.
[[nodiscard]] QString askForDirectory(QWidget *parent, const FileQuestion &question);

#pragma once
#include <optional>
#include <QStringList>
class QWidget;

// Dialogs that ask one question each.

/// Asks for a line of text under @p label, with the initial text @p text ("inputDialog"). Nothing if the user cancels.
/// A null caption stands for that of all messages.
[[nodiscard]] std::optional<QString> askForText(QWidget *parent, const QString &label, const QString &text,
                                                const QString &caption = {});

/// Asks for one of @p items, the first being selected ("inputDialog"). Nothing if the user cancels.
[[nodiscard]] std::optional<QString> askForItem(QWidget *parent, const QString &label, const QStringList &items);

/// The properties of a file dialog. The filter is a list of entries, as in "Python Files (*.py);;All Files (*.*)";
/// "*.*" means all files, with or without a dot.
struct FileQuestion
{
    QString objectName;
    QString caption;
    QString directory; ///< the initial directory; if it does not exist, the nearest one above it that does
    QString filter;
    QString selectedFilter = {}; ///< the entry of the filter to begin with; the first if it is empty
    QString fileName = {};       ///< what is proposed, without its directory
};

/// Asks for one or more existing files. Empty if the user cancels.
[[nodiscard]] QStringList askForOpenFiles(QWidget *parent, const FileQuestion &question);
/// Asks for one existing file. Empty if the user cancels.
[[nodiscard]] QString askForOpenFile(QWidget *parent, const FileQuestion &question);
/// Asks where to save a file; the dialog has confirmed that an existing file may be overwritten. Empty if the user
/// cancels.
[[nodiscard]] QString askForSaveFile(QWidget *parent, const FileQuestion &question);
/// Asks for a directory that exists. Empty if the user cancels.
[[nodiscard]] QString askForDirectory(QWidget *parent, const FileQuestion &question);

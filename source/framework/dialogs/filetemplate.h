#pragma once
#include <QList>
#include <QString>
class QDir;

/// A file that a template creates.
struct NewFile
{
    QString path;
    QString text;
    int cursor = 0; ///< an offset into the text

    bool operator==(const NewFile &) const = default;
};

/// A template for a new file, or for several that belong together: a directory with the files and a "template.xml".
///
/// In the names and the contents of the files, "$name$" stands for the name of the new file without its extension,
/// "$identifier$" for that name as an identifier of C, and "$IDENTIFIER$" for the same in upper case. "$cursor$" in the
/// contents is where the cursor is placed; the file that has it is opened in front.
struct FileTemplate
{
    QString directory;
    QString name;
    QString description;
    QString icon;      ///< a file name, relative to the directory
    QString extension; ///< of the file in front, without a dot
};

/// The templates in the subdirectories of @p directories, in this order. Those without a file are left out.
[[nodiscard]] QList<FileTemplate> findFileTemplates(const QStringList &directories);

/// The files that a template creates for the file @p path, which is the first of them. Empty if the files of the
/// template cannot be read.
[[nodiscard]] QList<NewFile> filesOf(const FileTemplate &fileTemplate, const QString &path);

/// @p name as an identifier of C: other characters become "_".
[[nodiscard]] QString identifierOf(const QString &name);

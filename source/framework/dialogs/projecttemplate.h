#pragma once
#include <optional>
#include <QList>
#include <QString>

/// What the file "template.xml" of a directory describes. Texts that the file does not have are null.
struct ProjectTemplate
{
    QString directory;
    QString type; ///< "folder": it only groups templates; "script": a Python function builds it; others are copied
    QString displayName;
    QString description;
    QString icon;                        ///< a file name, relative to the directory
    QString openIcon;                    ///< likewise, of a folder that is open
    std::optional<QString> scriptModule; ///< the Python module of the first script that the file names

    [[nodiscard]] bool isFolder() const;
    [[nodiscard]] bool isScript() const;
    [[nodiscard]] QString name() const; ///< the display name, or that of the directory
};

/// A directory that groups templates, and those directories below it that do so, too.
struct TemplateFolder
{
    ProjectTemplate info;
    QList<TemplateFolder> folders;
};

/// Reads the contents of a "template.xml". If it is no XML, all is null.
[[nodiscard]] ProjectTemplate parseTemplate(const QByteArray &xml);

/// Reads the "template.xml" of a directory. If there is none, or one that is too large, only the directory is set.
[[nodiscard]] ProjectTemplate readTemplate(const QString &directory);

/// The subdirectories of a folder that are shown as templates, in the order of their names.
[[nodiscard]] QList<ProjectTemplate> templatesIn(const QString &directory);

/// The folders of templates among @p directories and below them. A directory with files is a template and not searched,
/// unless its type is "folder". The search ends after some hundred directories, in case a path leads to a whole disk.
[[nodiscard]] QList<TemplateFolder> findTemplateFolders(const QStringList &directories);

/// The subdirectories of a directory, in the order of their names.
[[nodiscard]] QStringList subdirectories(const QString &directory);

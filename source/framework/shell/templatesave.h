#pragma once
#include "filecopier.h"
class Project;

/// A template that is made out of a project.
struct SavedTemplate
{
    QString name; ///< as it is shown
    QString description;
    QString directory; ///< is created
};

/// Writes the files of the project's directory and its project file into the template, in the place of those of an
/// older one. A failure or a cancellation before the last file was copied leaves the older one as it was.
[[nodiscard]] CopyOutcome saveTemplate(const Project &project, const SavedTemplate &saved,
                                       const CopyProgress &progress = {});

/// The text of the project file. Files that new projects do not get have absolute paths in it.
[[nodiscard]] QString templateProjectText(const Project &project);

/// The files of the project that new projects do not get, by their stored paths: those of other directories, and
/// pictures, which belong to the template itself.
[[nodiscard]] QStringList filesElsewhere(const Project &project);

/// The options with relative paths that lead out of the project's directory, as "key: value". They are stored as they
/// are, since a value can be more than a path.
[[nodiscard]] QStringList optionsElsewhere(const Project &project);

/// Whether the project lies in the directory of a template, whose files would replace its own.
[[nodiscard]] bool liesIn(const Project &project, const QString &directory);

/// Writes a "template.xml". A null type is left out.
[[nodiscard]] bool writeTemplateFile(const QString &directory, const QString &type, const QString &name,
                                     const QString &description);

/// @p name as the name of a directory.
[[nodiscard]] QString directoryNameOf(const QString &name);

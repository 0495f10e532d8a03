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

/// Writes the files of the project's directory and its project file into the template. Those written before a failure
/// or a cancellation stay.
[[nodiscard]] CopyOutcome saveTemplate(const Project &project, const SavedTemplate &saved,
                                       const CopyProgress &progress = {});

/// The text of the project file, with the files of other directories by their absolute paths, since only those of the
/// project's own directory are copied.
[[nodiscard]] QString templateProjectText(const Project &project);

/// The files of the project that are not in its directory, by their stored paths.
[[nodiscard]] QStringList filesElsewhere(const Project &project);

/// Writes a "template.xml". Null texts are left out.
[[nodiscard]] bool writeTemplateFile(const QString &directory, const QString &type, const QString &name,
                                     const QString &description);

/// @p name as the name of a directory.
[[nodiscard]] QString directoryNameOf(const QString &name);

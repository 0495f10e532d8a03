#pragma once
#include "builddescription.h"

/// A project whose library is built first, by its own Makefile.
struct UsedMakefile
{
    QString directory; ///< of that project, relative to the one that uses it
    QString file;      ///< the name of its Makefile
};

/// One configuration in a Makefile.
struct MakefilePart
{
    BuildDescription description;
    QList<UsedMakefile> used; ///< in build order
};

/// A Makefile for GNU make, in the directory of a project. It makes the same files as a build by ninja.
struct Makefile
{
    QString project;
    QString fileName;
    QList<MakefilePart> parts;

    [[nodiscard]] QString text() const;
};

/// The name of the Makefile of @p project, whose directory may contain other projects.
[[nodiscard]] QString makefileName(const QString &project, const QString &directory);

/// A sentence for each reason why @p part cannot be added to @p makefile: make does not support all characters in
/// names, and each of its targets needs a name of its own.
[[nodiscard]] QStringList makefileProblems(const Makefile &makefile, const MakefilePart &part);

/// Replaces paths in @p directory, which are absolute because they are those of another project, by relative ones.
void useRelativePaths(BuildDescription &description, const QString &directory);

/// Whether make supports @p text as the name of a file.
[[nodiscard]] bool isPossibleMakeName(const QString &text);

/// A file name, escaped as a target, as a prerequisite and in the value of a variable.
[[nodiscard]] QString makeTarget(const QString &name);
[[nodiscard]] QString makePrerequisite(const QString &name);
[[nodiscard]] QString makeValue(const QString &text);

#pragma once
#include "filecopier.h"

/// A template to be copied into a project's folder, and the name of the project.
struct TemplateCopy
{
    QString name;
    QString templateDir;
    QString projectPath;

    [[nodiscard]] QString projectFile() const; ///< The path of the new project file.
};

enum class OverwriteAnswer { Yes, YesToAll, Cancel };
/// Asks about a file that is in the project's folder already, by its name.
using OverwriteQuestion = std::function<OverwriteAnswer(const QString &file)>;

struct CopyResult
{
    CopyOutcome outcome = CopyOutcome::Done;
    QString file = {}; ///< the path of the file that failed
};

/// Whether new projects get a file of a template.
[[nodiscard]] bool isCopiedFromTemplate(const QFileInfo &file);

/// Copies the files of a template, but neither its subdirectories, its description nor its pictures, and renames the
/// project file. The files that were copied before a failure stay; an incomplete one is removed.
[[nodiscard]] CopyResult copyTemplate(const TemplateCopy &copy, const OverwriteQuestion &ask,
                                      const CopyProgress &progress = {});

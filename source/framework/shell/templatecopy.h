#pragma once
#include <functional>
#include <QString>

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

enum class CopyOutcome { Done, Cancelled, CannotRead, CannotWrite, CannotRename };
struct CopyResult
{
    CopyOutcome outcome = CopyOutcome::Done;
    QString file = {}; ///< the path of the file that failed
};

/// Copies the files of a template, but neither its subdirectories, its description nor its pictures, and renames the
/// project file. What was copied before a failure stays.
[[nodiscard]] CopyResult copyTemplate(const TemplateCopy &copy, const OverwriteQuestion &ask);

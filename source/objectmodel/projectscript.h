#pragma once
#include <functional>
#include <QString>

/// How the call of a template's Python function ended. Its errors have been printed.
struct ProjectScriptResult
{
    enum Outcome {
        NoModule,   ///< the module could not be imported
        NoFunction, ///< it has no function "createProject"
        Failed,     ///< the function raised an exception
        Nothing,    ///< it returned None
        Path,
        OtherType ///< it returned neither a string nor None
    };
    Outcome outcome = NoModule;
    QString path = {}; ///< if the outcome is Path
};

/// Imports the Python module @p module and calls its function `createProject(name, templateDirectory, projectPath)`.
/// The directory of the template is the first one in which modules are searched. The module and others from that
/// directory are forgotten afterwards, since templates may have modules of the same name. @p keepRunning is called
/// several times per second while Python code runs; when it returns false, KeyboardInterrupt is raised in the script.
[[nodiscard]] ProjectScriptResult runProjectScript(const QString &module, const QString &name,
                                                   const QString &templateDirectory, const QString &projectPath,
                                                   const std::function<bool()> &keepRunning = {});

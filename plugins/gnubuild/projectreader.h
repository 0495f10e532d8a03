#pragma once
#include "builddescription.h"
#include "propertyreader.h"
#include <functional>

class IProject;
class IProjectFile;

/// Reads from a project and its properties what a build of one configuration has to do.
class ProjectReader
{
public:
    /// The library that a project of the workspace makes in a configuration, by the project's name; nothing if there
    /// is no such project or it makes no library.
    using LibraryFinder = std::function<std::optional<QString>(const QString &project, const QString &configuration)>;

    /// @p option says which tools to take where no property does; see toolPrefix().
    ProjectReader(const ToolChain &toolChain, const QString &option, const LibraryFinder &findLibrary = {});

    /// @p problems gets a sentence for each thing that makes a build impossible.
    BuildDescription read(IProject *project, const QString &configuration, QStringList &problems) const;
    /// The same without the files and what hangs on them: enough to know where things go.
    BuildDescription readTarget(IProject *project, const QString &configuration) const;
    /// The absolute paths of all files of the project.
    [[nodiscard]] static QSet<QString> filePaths(IProject *project);
    /// The default value of an option.
    [[nodiscard]] QString defaultOf(const QString &key) const { return m_defaults.value(key); }
    [[nodiscard]] const QHash<QString, QString> &defaults() const { return m_defaults; }

private:
    void readTarget(IProject *project, const PropertyReader &options, BuildDescription &description) const;
    void readTools(const PropertyReader &options, BuildDescription &description) const;
    void readFiles(IProject *project, BuildDescription &description, QStringList &problems) const;
    void readFile(IProjectFile *file, BuildDescription &description, QStringList &problems) const;
    void readLinking(const PropertyReader &options, BuildDescription &description, QStringList &problems) const;
    QString sharedOutput(IProject *project, const BuildDescription &description) const;
    QStringList compileFlags(Language language, const PropertyReader &options) const;

    const ToolChain m_toolChain;
    const QString m_option;
    const LibraryFinder m_findLibrary;
    const QHash<QString, QString> m_defaults;
};

#pragma once
#include "builddescription.h"
#include "propertyreader.h"
#include <functional>

class IProject;
class IProjectFile;

/// Reads the build description of one configuration from a project and its properties.
class ProjectReader
{
public:
    /// A library that a project of the workspace builds, and what has to be linked with it.
    struct Library
    {
        QString file; ///< absolute
        QStringList usedProjects;
        QStringList libraries;   ///< as arguments of the linker; paths are absolute
        QStringList directories; ///< where these are searched for, absolute
    };
    /// Returns the library that a project of the workspace builds in a configuration, by the project's name; nothing if
    /// there is no such project or it does not build a library.
    using LibraryFinder = std::function<std::optional<Library>(const QString &project, const QString &configuration)>;

    /// @p option is the tool prefix for configurations that set none; see toolPrefix().
    ProjectReader(const ToolChain &toolChain, const QString &option, const LibraryFinder &findLibrary = {});

    /// Appends a sentence to @p problems for each reason why a build is impossible.
    BuildDescription read(IProject *project, const QString &configuration, QStringList &problems) const;
    /// The same without source files and flags: tools and output paths only.
    BuildDescription readTarget(IProject *project, const QString &configuration) const;
    /// What users of this library project have to link. Nothing if the project builds no library.
    std::optional<Library> readLibrary(IProject *project, const QString &configuration) const;
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
    /// The libraries that @p projects build and use, each before those that it uses itself.
    struct Libraries
    {
        QList<Library> list;
        QStringList visited;
        QStringList open; ///< projects whose used projects are being collected
        bool cyclic = false;
    };
    void collectLibraries(const QStringList &projects, const QString &configuration, Libraries &libraries,
                          QStringList &problems) const;
    void linkProjects(const QStringList &projects, BuildDescription &description, QStringList &problems) const;
    QString sharedOutput(IProject *project, const BuildDescription &description) const;
    QStringList compileFlags(Language language, const PropertyReader &options) const;

    const ToolChain m_toolChain;
    const QString m_option;
    const LibraryFinder m_findLibrary;
    const QHash<QString, QString> m_defaults;
};

/// Whether several projects lie in @p directory. They would take each other's files for their own old ones.
[[nodiscard]] bool sharesItsDirectory(const QString &directory);

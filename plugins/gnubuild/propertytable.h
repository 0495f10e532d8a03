#pragma once
#include <QHash>
#include <QStringList>

struct ToolChain;

/// The keys under which options stand in the property stores. Lists are separated by ";".
namespace PropertyKey {
inline const QString TargetType = QStringLiteral("buildTargetType"); ///< "program" or "library"
inline const QString OutputName = QStringLiteral("buildOutputName");
inline const QString BuildDirectory = QStringLiteral("buildDirectory");
inline const QString Image = QStringLiteral("buildImage"); ///< "none", "ihex" or "binary"
inline const QString ToolPrefix = QStringLiteral("buildToolPrefix");
inline const QString Machine = QStringLiteral("buildMachine");
inline const QString KeepGoing = QStringLiteral("buildKeepGoing");
inline const QString ShowCommands = QStringLiteral("buildShowCommands");
inline const QString Jobs = QStringLiteral("buildJobs");
inline const QString Launcher = QStringLiteral("buildLauncher"); ///< "none", "ccache", "distcc" or "both"
inline const QString DistccHosts = QStringLiteral("buildDistccHosts");
inline const QString Optimisation = QStringLiteral("buildOptimisation");         ///< what follows "-O"
inline const QString DebugInformation = QStringLiteral("buildDebugInformation"); ///< what follows "-g"
inline const QString RemoveUnused = QStringLiteral("buildRemoveUnused");
inline const QString Warnings = QStringLiteral("buildWarnings"); ///< "none", "default", "all" or "extra"
inline const QString WarningsAsErrors = QStringLiteral("buildWarningsAsErrors");
inline const QString CStandard = QStringLiteral("buildCStandard");
inline const QString CppStandard = QStringLiteral("buildCppStandard");
inline const QString Defines = QStringLiteral("buildDefines");
inline const QString Includes = QStringLiteral("buildIncludes");
inline const QString Flags = QStringLiteral("buildFlags");
inline const QString CFlags = QStringLiteral("buildCFlags");
inline const QString CppFlags = QStringLiteral("buildCppFlags");
inline const QString AssemblerFlags = QStringLiteral("buildAssemblerFlags");
inline const QString FileFlags = QStringLiteral("buildFileFlags");
inline const QString Exclude = QStringLiteral("buildExclude");
inline const QString LinkerScript = QStringLiteral("buildLinkerScript");
inline const QString Libraries = QStringLiteral("buildLibraries");
inline const QString LibraryDirectories = QStringLiteral("buildLibraryDirectories");
inline const QString LinkFlags = QStringLiteral("buildLinkFlags");
inline const QString UsedProjects = QStringLiteral("buildUsedProjects");
inline const QString PreBuild = QStringLiteral("buildPreBuild");
inline const QString PostBuild = QStringLiteral("buildPostBuild");
inline const QString Match = QStringLiteral("buildMatch");
inline const QString AutoPopulate = QStringLiteral("projectAutoPopulate");
inline const QString PopulateExtensions = QStringLiteral("buildPopulateExtensions");
inline const QString RunAtLoad = QStringLiteral("runAtProjectLoad");
} // namespace PropertyKey

/// One option as users edit it.
struct PropertyDefinition
{
    struct Choice
    {
        QString key;
        QString label;
    };
    QString key;
    QString name;
    QString type;
    QString defaultValue; ///< also what a missing value means to a build
    QString description;
    QList<Choice> choices = {};
    QStringList selectors = {}; ///< where it applies, if not wherever its page does
};

/// Options that stand together, and what they apply to: "project", or files with one of these extensions.
struct PropertyPage
{
    QString name;
    QStringList selectors;
    QList<PropertyDefinition> properties;
};

/// All options of a project with this tool chain. What users edit and what a build reads comes from here.
[[nodiscard]] QList<PropertyPage> propertyPages(const ToolChain &toolChain);

/// The pages as the property editor wants them.
[[nodiscard]] QString propertyDefinitionsXml(const QString &group, const QList<PropertyPage> &pages);

/// The default values of all options by their keys.
[[nodiscard]] QHash<QString, QString> propertyDefaults(const QList<PropertyPage> &pages);

#pragma once
#include "propertypages.h"
#include <QHash>

struct ToolChain;

/// The keys of the options in the property stores. Lists are separated by ";".
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

/// All options of a project with this tool chain, for the property editor and for builds.
[[nodiscard]] QList<PropertyPage> propertyPages(const ToolChain &toolChain);

/// The default values of all options by key.
[[nodiscard]] QHash<QString, QString> propertyDefaults(const QList<PropertyPage> &pages);

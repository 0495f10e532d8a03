#include "projectreader.h"
#include "iproject.h"
#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "propertytable.h"
#include <QCoreApplication>
#include <QDir>
using namespace Qt::StringLiterals;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

void appendFiles(const QList<IProjectFile *> &files, std::vector<InterfacePtr<IProjectFile>> &all)
{
    for (auto &file : takeInterfaces(files))
        all.push_back(std::move(file));
}

void appendFolders(const QList<IProjectFolder *> &folders, std::vector<InterfacePtr<IProjectFile>> &all)
{
    for (const auto &folder : takeInterfaces(folders)) {
        appendFolders(folder->folders(), all);
        appendFiles(folder->files(), all);
    }
}

std::vector<InterfacePtr<IProjectFile>> allFiles(IProject *project)
{
    std::vector<InterfacePtr<IProjectFile>> all;
    appendFolders(project->folders(), all);
    appendFiles(project->files(), all);
    return all;
}

bool isPreprocessed(Language language)
{
    return language != Language::Assembler;
}

bool isCompiled(Language language)
{
    return language == Language::C || language == Language::Cpp;
}

QStringList prefixed(const QString &prefix, const QStringList &list)
{
    QStringList result;
    for (const QString &each : list)
        result += prefix + each;
    return result;
}

QStringList warningFlags(const QString &choice)
{
    static const QHash<QString, QStringList> flags = {
        {u"none"_s, {u"-w"_s}}, {u"all"_s, {u"-Wall"_s}}, {u"extra"_s, {u"-Wall"_s, u"-Wextra"_s}}};
    return flags.value(choice);
}

QStringList standardFlags(const QString &choice)
{
    return choice.isEmpty() || choice == u"default" ? QStringList() : QStringList(u"-std="_s + choice);
}

QStringList launcherWords(const QString &choice)
{
    static const QHash<QString, QStringList> words = {{u"ccache"_s, {u"ccache"_s}},
                                                      {u"distcc"_s, {u"distcc"_s}},
                                                      {u"both"_s, {u"env"_s, u"CCACHE_PREFIX=distcc"_s, u"ccache"_s}}};
    return words.value(choice);
}

bool isLibraryFile(const QString &library)
{
    return library.contains(u'/') || library.endsWith(u".a"_s) || library.endsWith(u".o"_s);
}

/// The argument of the linker for an entry of the list of libraries: a name, a file, or the argument itself.
QString libraryArgument(const QString &library, const QString &directory)
{
    if (library.startsWith(u"-l"_s))
        return library;
    return isLibraryFile(library) ? withoutLeadingDash(library, directory) : u"-l"_s + library;
}

QString withPrefixAndSuffix(const QString &path, const QString &prefix, const QString &suffix)
{
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    const QString whole = path.first(name) + prefix + path.sliced(name);
    return whole.endsWith(suffix) ? whole : whole + suffix;
}

} // namespace

bool sharesItsDirectory(const QString &directory)
{
    return QDir(directory).entryList({u"*.vnp"_s}, QDir::Files).size() > 1;
}

ProjectReader::ProjectReader(const ToolChain &toolChain, const QString &option, const LibraryFinder &findLibrary)
    : m_toolChain(toolChain)
    , m_option(option)
    , m_findLibrary(findLibrary)
    , m_defaults(propertyDefaults(propertyPages(toolChain)))
{}

BuildDescription ProjectReader::read(IProject *project, const QString &configuration, QStringList &problems) const
{
    const InterfacePtr<IProjectProperties> store(project->properties());
    const PropertyReader options(store.get(), configuration, m_defaults, problems);
    BuildDescription description;
    description.configuration = configuration;
    readTarget(project, options, description);
    readTools(options, description);
    description.flags = {compileFlags(Language::C, options), compileFlags(Language::Cpp, options),
                         compileFlags(Language::Assembler, options),
                         compileFlags(Language::PreprocessedAssembler, options)};
    readFiles(project, description, problems);
    readLinking(options, description, problems);
    if (description.sources.isEmpty())
        problems += Text::tr("The project has no file that is compiled in the configuration '%1'.").arg(configuration);
    if (const QString other = sharedOutput(project, description); !other.isEmpty()) {
        problems +=
            Text::tr("The configurations '%1' and '%2' both build the file '%3'. Give one of them another output name.")
                .arg(configuration, other, description.output);
    }
    return description;
}

BuildDescription ProjectReader::readTarget(IProject *project, const QString &configuration) const
{
    QStringList ignored;
    const InterfacePtr<IProjectProperties> store(project->properties());
    const PropertyReader options(store.get(), configuration, m_defaults, ignored);
    BuildDescription description;
    description.configuration = configuration;
    readTarget(project, options, description);
    readTools(options, description);
    return description;
}

QSet<QString> ProjectReader::filePaths(IProject *project)
{
    QSet<QString> paths;
    const QDir directory(project->basePath());
    for (const auto &file : allFiles(project))
        paths += QDir::cleanPath(directory.absoluteFilePath(file->path()));
    return paths;
}

void ProjectReader::readTarget(IProject *project, const PropertyReader &options, BuildDescription &description) const
{
    using Target = BuildDescription::Target;
    using Image = BuildDescription::Image;
    description.project = project->name();
    description.directory = project->basePath();
    const QString directory = options.text(PropertyKey::BuildDirectory);
    description.buildDirectory =
        withoutLeadingDash(QDir::cleanPath(directory.isEmpty() ? defaultOf(PropertyKey::BuildDirectory) : directory),
                           description.directory);
    description.configurationDirectory = description.buildDirectory + u'/';
    if (sharesItsDirectory(description.directory))
        description.configurationDirectory += configurationDirectoryName(description.project) + u'/';
    description.configurationDirectory += configurationDirectoryName(description.configuration);
    description.target = options.text(PropertyKey::TargetType) == u"library" ? Target::Library : Target::Program;
    const QString image = options.text(PropertyKey::Image);
    description.image = image == u"ihex" ? Image::Hex : image == u"binary" ? Image::Binary : Image::None;
    description.makesMap = m_toolChain.isCross;
    description.makesEeprom = m_toolChain.isAvr;

    QString name = options.text(PropertyKey::OutputName);
    if (name.isEmpty())
        name = description.project;
    const bool isLibrary = description.target == Target::Library;
    const QString programSuffix = m_toolChain.isCross ? u".elf"_s : u""_s;
    name = withPrefixAndSuffix(name, isLibrary ? u"lib"_s : u""_s, isLibrary ? u".a"_s : programSuffix);
    const QDir configurationDirectory(description.configurationDirectory);
    description.output = QDir::cleanPath(QDir::isRelativePath(name) ? configurationDirectory.filePath(name) : name);
}

void ProjectReader::readTools(const PropertyReader &options, BuildDescription &description) const
{
    const QString wish = options.text(PropertyKey::ToolPrefix);
    description.prefix = toolPrefix(m_toolChain, wish.isEmpty() ? m_option : wish, description.directory);
    description.launcher = launcherWords(options.text(PropertyKey::Launcher));
    description.keepGoing = options.flag(PropertyKey::KeepGoing);
    description.showCommands = options.flag(PropertyKey::ShowCommands);
    description.jobs = std::max(0, options.number(PropertyKey::Jobs));
    const bool distributes = description.launcher.join(u' ').contains(u"distcc"_s);
    const QString hosts = options.text(PropertyKey::DistccHosts);
    if (!distributes || hosts.isEmpty())
        return;
    description.distccHosts = hosts;
    if (description.jobs == 0)
        description.jobs = distccSlots(hosts);
}

void ProjectReader::readFiles(IProject *project, BuildDescription &description, QStringList &problems) const
{
    QSet<QString> known;
    for (const auto &file : allFiles(project)) {
        const qsizetype count = description.sources.size();
        readFile(file.get(), description, problems);
        if (description.sources.size() == count)
            continue;
        const QString path = description.sources.constLast().path;
        if (known.contains(path))
            description.sources.removeLast(); // a file can be in several folders
        known.insert(path);
    }
}

void ProjectReader::readFile(IProjectFile *file, BuildDescription &description, QStringList &problems) const
{
    const QString path = withoutLeadingDash(QDir::cleanPath(file->path()), description.directory);
    const Language language = languageOf(path);
    if (language == Language::None)
        return;
    SourceFile source{path, language, objectFileName(description.configurationDirectory, path), {}};
    const InterfacePtr<IProjectProperties> store(file->properties());
    if (store->configurations().contains(description.configuration)) {
        const PropertyReader options(store.get(), description.configuration, m_defaults, problems);
        if (options.flag(PropertyKey::Exclude))
            return;
        const QStringList flags = compileFlags(language, options) + options.words(PropertyKey::FileFlags);
        if (flags != description.flags.of(language))
            source.flags = flags;
    }
    description.sources += source;
}

void ProjectReader::readLinking(const PropertyReader &options, BuildDescription &description,
                                QStringList &problems) const
{
    description.linkFlags = options.words(PropertyKey::Machine);
    if (options.flag(PropertyKey::RemoveUnused))
        description.linkFlags += u"-Wl,--gc-sections"_s;
    if (QString script = options.text(PropertyKey::LinkerScript); !script.isEmpty()) {
        script = withoutLeadingDash(script, description.directory);
        description.linkFlags += {u"-T"_s, script};
        description.linkInputs += script;
    }
    description.linkFlags += prefixed(u"-L"_s, options.list(PropertyKey::LibraryDirectories));
    description.linkFlags += options.words(PropertyKey::LinkFlags);
    linkProjects(options.list(PropertyKey::UsedProjects), description, problems);
    for (const QString &library : options.list(PropertyKey::Libraries)) {
        const QString argument = libraryArgument(library, description.directory);
        description.libraries += argument;
        if (!argument.startsWith(u"-l"_s))
            description.linkInputs += argument;
    }
    description.preBuild = options.text(PropertyKey::PreBuild);
    description.postBuild = options.text(PropertyKey::PostBuild);
}

void ProjectReader::linkProjects(const QStringList &projects, BuildDescription &description,
                                 QStringList &problems) const
{
    Libraries found;
    collectLibraries(projects, description.configuration, found, problems);
    QStringList arguments;
    for (const Library &library : std::as_const(found.list)) {
        arguments += library.file;
        description.linkInputs += library.file;
    }
    if (found.cyclic) // the linker searches them until it finds no further symbol
        arguments = QStringList(u"-Wl,--start-group"_s) + arguments + QStringList(u"-Wl,--end-group"_s);
    for (const Library &library : std::as_const(found.list)) {
        arguments += library.libraries;
        description.linkFlags += prefixed(u"-L"_s, library.directories);
    }
    description.libraries += arguments;
}

void ProjectReader::collectLibraries(const QStringList &projects, const QString &configuration, Libraries &libraries,
                                     QStringList &problems) const
{
    for (auto project = projects.rbegin(); project != projects.rend(); ++project) {
        libraries.cyclic = libraries.cyclic || libraries.open.contains(*project);
        if (libraries.visited.contains(*project))
            continue;
        libraries.visited += *project;
        const auto library = m_findLibrary ? m_findLibrary(*project, configuration) : std::nullopt;
        if (!library) {
            problems += Text::tr("The workspace has no library project '%1'.").arg(*project);
            continue;
        }
        libraries.open += *project;
        collectLibraries(library->usedProjects, configuration, libraries, problems);
        libraries.open.removeOne(*project);
        libraries.list.prepend(*library);
    }
}

std::optional<ProjectReader::Library> ProjectReader::readLibrary(IProject *project, const QString &configuration) const
{
    const BuildDescription target = readTarget(project, configuration);
    if (target.target != BuildDescription::Target::Library)
        return std::nullopt;
    QStringList ignored;
    const InterfacePtr<IProjectProperties> store(project->properties());
    const PropertyReader options(store.get(), configuration, m_defaults, ignored);
    Library library{target.absolute(target.output), options.list(PropertyKey::UsedProjects), {}, {}};
    for (const QString &each : options.list(PropertyKey::Libraries)) {
        const QString argument = libraryArgument(each, target.directory);
        library.libraries += argument.startsWith(u"-l"_s) ? argument : target.absolute(argument);
    }
    for (const QString &directory : options.list(PropertyKey::LibraryDirectories))
        library.directories += target.absolute(directory);
    return library;
}

QString ProjectReader::sharedOutput(IProject *project, const BuildDescription &description) const
{
    const InterfacePtr<IProjectProperties> store(project->properties());
    for (const QString &other : store->configurations()) {
        if (other != description.configuration
            && description.absolute(readTarget(project, other).output) == description.absolute(description.output))
            return other;
    }
    return {};
}

QStringList ProjectReader::compileFlags(Language language, const PropertyReader &options) const
{
    QStringList flags = options.words(PropertyKey::Machine);
    if (isCompiled(language))
        flags += u"-O"_s + options.text(PropertyKey::Optimisation);
    const QString level = options.text(PropertyKey::DebugInformation);
    if (m_toolChain.isAvr && level != u"0")
        flags += u"-gdwarf-2"_s; // its compilers write another format by default, which has no macros or ranges
    flags += u"-g"_s + level;
    if (isCompiled(language)) {
        flags += warningFlags(options.text(PropertyKey::Warnings));
        if (options.flag(PropertyKey::WarningsAsErrors))
            flags += u"-Werror"_s;
        flags +=
            standardFlags(options.text(language == Language::C ? PropertyKey::CStandard : PropertyKey::CppStandard));
        if (options.flag(PropertyKey::RemoveUnused))
            flags += {u"-ffunction-sections"_s, u"-fdata-sections"_s};
    }
    if (isPreprocessed(language)) {
        flags += prefixed(u"-D"_s, options.list(PropertyKey::Defines));
        flags += prefixed(u"-I"_s, options.list(PropertyKey::Includes));
    }
    flags += options.words(PropertyKey::Flags);
    const QString own = language == Language::C     ? PropertyKey::CFlags
                        : language == Language::Cpp ? PropertyKey::CppFlags
                                                    : PropertyKey::AssemblerFlags;
    return flags + options.words(own);
}

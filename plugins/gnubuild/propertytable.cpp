#include "propertytable.h"
#include "toolchain.h"
#include <QCoreApplication>
using namespace Qt::StringLiterals;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GnuBuild)
};

const QStringList Project = {u"project"_s};
const QStringList CFiles = extensionsOf(Language::C);
const QStringList CppFiles = extensionsOf(Language::Cpp);
const QStringList PreprocessedAssemblerFiles = extensionsOf(Language::PreprocessedAssembler);
const QStringList PreprocessedFiles = CFiles + CppFiles + PreprocessedAssemblerFiles;
const QStringList AssemblerFiles = PreprocessedAssemblerFiles + extensionsOf(Language::Assembler);
const QStringList SourceFiles = CFiles + CppFiles + AssemblerFiles;
const QStringList OtherFiles = {u"h"_s, u"hh"_s, u"hpp"_s, u"hxx"_s, u"ld"_s};

PropertyPage targetPage()
{
    using namespace PropertyKey;
    return {
        Text::tr("Target"),
        Project,
        {{TargetType,
          Text::tr("Target type"),
          u"list"_s,
          u"program"_s,
          Text::tr("The output of the build."),
          {{u"program"_s, Text::tr("Program")}, {u"library"_s, Text::tr("Static library")}}},
         {OutputName, Text::tr("Output name"), u"text"_s, u""_s,
          Text::tr("The name of the program or library without its suffix, relative to the configuration's directory. "
                   "Empty for the project's name.")},
         {BuildDirectory, Text::tr("Build directory"), u"directory"_s, u"build"_s,
          Text::tr("Contains a directory for each configuration. Relative to the project.")},
         {Image,
          Text::tr("Load image"),
          u"list"_s,
          u"none"_s,
          Text::tr("A further file that is built from the linked program."),
          {{u"none"_s, Text::tr("None")},
           {u"ihex"_s, Text::tr("Intel hex (.hex)")},
           {u"binary"_s, Text::tr("Binary (.bin)")}}}}};
}

PropertyPage toolsPage(const ToolChain &toolChain)
{
    using namespace PropertyKey;
    return {
        Text::tr("Tools"),
        Project,
        {{ToolPrefix, Text::tr("Tool prefix"), u"text"_s, u""_s,
          Text::tr(
              "Prefix of \"gcc\" in the compiler's path: a name prefix, a directory that ends in \"/\", or both. Empty "
              "for %1gcc on the search path.")
              .arg(toolChain.prefix)},
         {Machine, Text::tr("Processor options"), u"text"_s, u""_s,
          Text::tr("Options that choose the processor, for compiling and linking. Example: %1")
              .arg(toolChain.machineExample)},
         {Jobs, Text::tr("Parallel jobs"), u"integer"_s, u"0"_s,
          Text::tr("Number of files that are compiled in parallel. 0 for the number that suits the processors of this "
                   "computer or the hosts of distcc.")},
         {Launcher,
          Text::tr("Compiler launcher"),
          u"list"_s,
          u"none"_s,
          Text::tr("ccache caches results of compilations, distcc compiles on other computers."),
          {{u"none"_s, Text::tr("None")},
           {u"ccache"_s, u"ccache"_s},
           {u"distcc"_s, u"distcc"_s},
           {u"both"_s, Text::tr("ccache, then distcc")}}},
         {DistccHosts, Text::tr("Hosts for distcc"), u"text"_s, u""_s,
          Text::tr(
              "A list as in DISTCC_HOSTS. Example: localhost/2 builder/8. Empty for the value of the environment.")},
         {KeepGoing, Text::tr("Continue after errors"), u"boolean"_s, u"false"_s,
          Text::tr("Compiles all files, even if some fail.")},
         {ShowCommands, Text::tr("Show commands"), u"boolean"_s, u"false"_s,
          Text::tr("Shows each command in full instead of a short description.")}}};
}

PropertyPage codePage(const ToolChain &toolChain)
{
    using namespace PropertyKey;
    return {
        Text::tr("Code"),
        Project + SourceFiles,
        {{Optimisation,
          Text::tr("Optimisation"),
          u"list"_s,
          u"0"_s,
          Text::tr("The optimisation level of the compiler."),
          {{u"0"_s, Text::tr("None (-O0)")},
           {u"g"_s, Text::tr("For debugging (-Og)")},
           {u"1"_s, Text::tr("Some (-O1)")},
           {u"2"_s, Text::tr("Speed (-O2)")},
           {u"3"_s, Text::tr("More speed (-O3)")},
           {u"s"_s, Text::tr("Size (-Os)")}},
          Project + CFiles + CppFiles},
         {DebugInformation,
          Text::tr("Debug information"),
          u"list"_s,
          u"2"_s,
          Text::tr("The amount of information for the debugger."),
          {{u"0"_s, Text::tr("None (-g0)")},
           {u"1"_s, Text::tr("Functions (-g1)")},
           {u"2"_s, Text::tr("All (-g2)")},
           {u"3"_s, Text::tr("All and macros (-g3)")}}},
         {RemoveUnused,
          Text::tr("Remove unused code"),
          u"boolean"_s,
          toolChain.isCross ? u"true"_s : u"false"_s,
          Text::tr("Puts each function and variable into a section of its own, and links only those that are used."),
          {},
          Project + CFiles + CppFiles}}};
}

PropertyPage warningsPage()
{
    using namespace PropertyKey;
    return {Text::tr("Warnings"),
            Project + CFiles + CppFiles,
            {{Warnings,
              Text::tr("Warnings"),
              u"list"_s,
              u"all"_s,
              Text::tr("The warnings of the compiler."),
              {{u"none"_s, Text::tr("Nothing (-w)")},
               {u"default"_s, Text::tr("The compiler's default")},
               {u"all"_s, Text::tr("Most (-Wall)")},
               {u"extra"_s, Text::tr("More (-Wall -Wextra)")}}},
             {WarningsAsErrors, Text::tr("Warnings are errors"), u"boolean"_s, u"false"_s,
              Text::tr("A file with a warning is not compiled (-Werror).")}}};
}

PropertyPage preprocessorPage()
{
    using namespace PropertyKey;
    return {Text::tr("Preprocessor"),
            Project + PreprocessedFiles,
            {{Defines, Text::tr("Definitions"), u"text"_s, u""_s,
              Text::tr("Macros, separated by \";\". Example: DEBUG;BAUD=115200")},
             {Includes, Text::tr("Include directories"), u"directorylist"_s, u""_s,
              Text::tr("Where headers are searched for. Relative to the project.")}}};
}

PropertyDefinition::Choice standard(const QString &name)
{
    return {name, name};
}

PropertyPage flagsPage()
{
    using namespace PropertyKey;
    return {
        Text::tr("Language and flags"),
        Project + SourceFiles,
        {{CStandard,
          Text::tr("C standard"),
          u"list"_s,
          u"default"_s,
          Text::tr("The version of the C language."),
          {{u"default"_s, Text::tr("The compiler's default")},
           standard(u"c99"_s),
           standard(u"gnu99"_s),
           standard(u"c11"_s),
           standard(u"gnu11"_s),
           standard(u"c17"_s),
           standard(u"gnu17"_s)},
          Project + CFiles},
         {CppStandard,
          Text::tr("C++ standard"),
          u"list"_s,
          u"default"_s,
          Text::tr("The version of the C++ language."),
          {{u"default"_s, Text::tr("The compiler's default")},
           standard(u"c++11"_s),
           standard(u"c++14"_s),
           standard(u"c++17"_s),
           standard(u"gnu++17"_s),
           standard(u"c++20"_s),
           standard(u"gnu++20"_s)},
          Project + CppFiles},
         {Flags, Text::tr("Flags"), u"text"_s, u""_s,
          Text::tr(
              "More flags for all languages, as on a command line. The value of a file replaces that of the project.")},
         {CFlags, Text::tr("Flags for C"), u"text"_s, u""_s, Text::tr("More flags for C."), {}, Project + CFiles},
         {CppFlags,
          Text::tr("Flags for C++"),
          u"text"_s,
          u""_s,
          Text::tr("More flags for C++."),
          {},
          Project + CppFiles},
         {AssemblerFlags,
          Text::tr("Flags for assembler"),
          u"text"_s,
          u""_s,
          Text::tr("More flags for assembly language."),
          {},
          Project + AssemblerFiles}}};
}

PropertyPage filePage()
{
    using namespace PropertyKey;
    return {Text::tr("This file"),
            SourceFiles,
            {{FileFlags, Text::tr("Flags for this file"), u"text"_s, u""_s,
              Text::tr("Flags for this file only, added after those of the project.")},
             {Exclude, Text::tr("Exclude from build"), u"boolean"_s, u"false"_s,
              Text::tr("The file is neither compiled nor linked in this configuration.")}}};
}

PropertyPage linkerPage()
{
    using namespace PropertyKey;
    return {Text::tr("Linker"),
            Project,
            {{LinkerScript, Text::tr("Linker script"), u"file"_s, u""_s,
              Text::tr("Defines the memory addresses of code and data.")},
             {Libraries, Text::tr("Libraries"), u"text"_s, u""_s,
              Text::tr("Separated by \";\": names such as m for libm.a, or paths of library files.")},
             {LibraryDirectories, Text::tr("Library directories"), u"directorylist"_s, u""_s,
              Text::tr("Where libraries are searched for. Relative to the project.")},
             {LinkFlags, Text::tr("Flags for linking"), u"text"_s, u""_s,
              Text::tr("More flags for linking, as on a command line. Example: -nostdlib -nostartfiles")},
             {UsedProjects, Text::tr("Libraries of projects"), u"text"_s, u""_s,
              Text::tr("Names of library projects in the workspace, separated by \";\". They are built first, in the "
                       "configuration of the same name, and linked, together with the libraries that they use.")}}};
}

PropertyPage commandsPage()
{
    using namespace PropertyKey;
    const QString environment = Text::tr("The shell has the variables OUTPUT, BUILD_DIRECTORY and CONFIGURATION.");
    return {
        Text::tr("Commands"),
        Project,
        {{PreBuild, Text::tr("Command before the build"), u"text"_s, u""_s,
          Text::tr("Run by the shell in the project's directory before each build. ") + environment},
         {PostBuild, Text::tr("Command after the build"), u"text"_s, u""_s,
          Text::tr("Run by the shell in the project's directory when the output has changed. ") + environment},
         {Match, Text::tr("Error pattern"), u"text"_s,
          uR"((?:In file included from | +from |.*ld: [^ ]*\.o:|.*ld: |)(file):(line)[:,])"_s,
          Text::tr(
              "A regular expression for output lines that refer to a source line: \"(file)\" and \"(line)\" match its "
              "path and number.")}}};
}

PropertyPage filesPage()
{
    using namespace PropertyKey;
    return {Text::tr("Files"),
            Project,
            {{AutoPopulate, Text::tr("Find files on opening"), u"boolean"_s, u"false"_s,
              Text::tr("Adds new files below the project's directory when the workspace is opened.")},
             {PopulateExtensions, Text::tr("Extensions to find"), u"text"_s, (SourceFiles + OtherFiles).join(u';'),
              Text::tr("Extensions of the files that belong to the project, separated by \";\".")}}};
}

PropertyPage scriptPage()
{
    return {Text::tr("Script"),
            {u"py"_s},
            {{PropertyKey::RunAtLoad, Text::tr("Run on opening"), u"boolean"_s, u"false"_s,
              Text::tr("Runs the script after the workspace was opened.")}}};
}

} // namespace

QList<PropertyPage> propertyPages(const ToolChain &toolChain)
{
    return {targetPage(), toolsPage(toolChain), codePage(toolChain), warningsPage(), preprocessorPage(), flagsPage(),
            filePage(),   linkerPage(),         commandsPage(),      filesPage(),    scriptPage()};
}

QHash<QString, QString> propertyDefaults(const QList<PropertyPage> &pages)
{
    QHash<QString, QString> defaults;
    for (const PropertyPage &page : pages) {
        for (const PropertyDefinition &property : page.properties)
            defaults.insert(property.key, property.defaultValue);
    }
    return defaults;
}

#pragma once
#include "toolchain.h"
#include <QStringList>

/// One file that is compiled.
struct SourceFile
{
    QString path; ///< relative to the project's directory or absolute
    Language language = Language::None;
    QString object;                   ///< path of its object file
    std::optional<QStringList> flags; ///< its own flags; nothing for those of its language
};

/// The project's flags for each language.
struct LanguageFlags
{
    QStringList c;
    QStringList cpp;
    QStringList assembler;
    QStringList preprocessedAssembler;

    [[nodiscard]] const QStringList &of(Language language) const;
};

/// The build of one configuration as plain values. Paths are absolute or relative to the project's directory, in which
/// all commands run; flags are words without shell quotes.
struct BuildDescription
{
    enum class Target { Program, Library };
    enum class Image { None, Hex, Binary };

    QString project;                ///< its name
    QString directory;              ///< the project's, absolute
    QString configuration;          ///< its name
    QString buildDirectory;         ///< of all configurations
    QString configurationDirectory; ///< of this configuration, for all outputs
    Target target = Target::Program;
    QString output; ///< the program or library
    Image image = Image::None;
    bool makesMap = false;    ///< the linker writes a map file next to the program
    bool makesEeprom = false; ///< the contents of an EEPROM get a file of their own, next to the load image

    QString prefix; ///< of the names of all tools
    LanguageFlags flags;
    QList<SourceFile> sources;
    QStringList linkFlags;
    QStringList libraries;  ///< arguments after the objects
    QStringList linkInputs; ///< further files whose change requires linking
    QString preBuild;
    QString postBuild;

    QStringList launcher;   ///< words before a compiler
    QString distccHosts;    ///< null: use the environment variable
    int jobs = 0;           ///< 0 for the default
    bool keepGoing = false; ///< continue after an error
    bool showCommands = false;

    [[nodiscard]] QString ninjaFileName() const;
    [[nodiscard]] QString imageFileName() const;  ///< empty without an image
    [[nodiscard]] QString eepromFileName() const; ///< the same
    [[nodiscard]] QString mapFileName() const { return output + QStringLiteral(".map"); }
    [[nodiscard]] QString
    postBuildStamp() const; ///< a file whose time is that of the last run of the command after a build
    [[nodiscard]] QString compiler(Language language) const;
    [[nodiscard]] QString linker() const; ///< g++ if at least one file is C++
    [[nodiscard]] const QStringList &flagsOf(const SourceFile &source) const;
    /// The words of the command that compiles @p source, without launcher and dependency options.
    [[nodiscard]] QStringList compileCommand(const SourceFile &source) const;
    /// The words of the commands that make the load image and the EEPROM's file, without the names of both files.
    [[nodiscard]] QStringList imageCommand() const;
    [[nodiscard]] QStringList eepromCommand() const;
    /// A line for the shell that runs @p command, the one before or after a build, with its variables.
    [[nodiscard]] QString hookCommand(const QString &command) const;
    [[nodiscard]] QString absolute(const QString &path) const;
};

/// The path of the object file of @p source below @p directory: unique for each source, and without characters that
/// need quotes in a shell or a make file.
[[nodiscard]] QString objectFileName(const QString &directory, const QString &source);

/// The directory of a configuration below the build directory: its name with special characters of paths encoded.
[[nodiscard]] QString configurationDirectoryName(const QString &configuration);

/// @p path so that no tool takes it for an option: absolute if it begins with a dash.
[[nodiscard]] QString withoutLeadingDash(const QString &path, const QString &directory);

/// Whether @p path lies in @p directory, both absolute, when symbolic links of directories are followed.
[[nodiscard]] bool isInside(const QString &path, const QString &directory);

/// The number of parallel jobs on distcc hosts such as "localhost/2 builder/8,lzo"; 0 if unknown.
[[nodiscard]] int distccSlots(const QString &hosts);

#pragma once
#include "toolchain.h"
#include <QStringList>

/// One file that is compiled.
struct SourceFile
{
    QString path; ///< relative to the project's directory or absolute
    Language language = Language::None;
    QString object;                   ///< where its object file goes
    std::optional<QStringList> flags; ///< the words of its own; nothing for those of its language
};

/// Flags for each language that a project's files share.
struct LanguageFlags
{
    QStringList c;
    QStringList cpp;
    QStringList assembler;
    QStringList preprocessedAssembler;

    [[nodiscard]] const QStringList &of(Language language) const;
};

/// All that a build of one configuration does, as plain values. Paths are relative to the project's directory, where
/// every command is run, or absolute; flags are words, not yet quoted for any shell.
struct BuildDescription
{
    enum class Target { Program, Library };
    enum class Image { None, Hex, Binary };

    QString project;                ///< its name
    QString directory;              ///< the project's, absolute
    QString configuration;          ///< its name
    QString buildDirectory;         ///< of all configurations
    QString configurationDirectory; ///< of this one, for all that it makes
    Target target = Target::Program;
    QString output; ///< the program or library
    Image image = Image::None;
    bool makesMap = false; ///< the linker writes a map beside the program

    QString prefix; ///< ahead of the names of the compilers and their kin
    LanguageFlags flags;
    QList<SourceFile> sources;
    QStringList linkFlags;
    QStringList libraries;  ///< arguments behind the objects
    QStringList linkInputs; ///< files besides the objects whose change asks for a new link
    QString preBuild;
    QString postBuild;

    QStringList launcher;   ///< words ahead of a compiler
    QString distccHosts;    ///< null for those of the environment
    int jobs = 0;           ///< 0 for the default
    bool keepGoing = false; ///< also after an error
    bool showCommands = false;

    [[nodiscard]] QString ninjaFileName() const;
    [[nodiscard]] QString imageFileName() const; ///< empty without an image
    [[nodiscard]] QString compiler(Language language) const;
    [[nodiscard]] QString linker() const; ///< of C++ as soon as one file is
    [[nodiscard]] const QStringList &flagsOf(const SourceFile &source) const;
    /// Words of the command that compiles @p source, without a launcher and what concerns dependencies.
    [[nodiscard]] QStringList compileCommand(const SourceFile &source) const;
    [[nodiscard]] QString absolute(const QString &path) const;
};

/// Where the object file of @p source goes below @p directory: a different place for each source, in plain letters, so
/// that neither a shell nor a make file has to quote it.
[[nodiscard]] QString objectFileName(const QString &directory, const QString &source);

/// The directory of a configuration below the build directory: its name, with what means something in paths encoded.
[[nodiscard]] QString configurationDirectoryName(const QString &configuration);

/// How many compilers may run at once on hosts of distcc, as "localhost/2 builder/8,lzo"; 0 if that cannot be told.
[[nodiscard]] int distccSlots(const QString &hosts);

#pragma once
#include <QStringList>

/// A family of GNU tools for one kind of processor. Each is a feature of the plug-in library.
struct ToolChain
{
    QString feature;        ///< UUID text in project files
    QString name;           ///< name that users see
    QString prefix;         ///< prefix of "gcc" in the names of its programs
    QString machineExample; ///< example of options that select a processor
    bool isCross = true;    ///< builds programs for another computer
    bool isAvr = false;     ///< has memories that are not in the address space of the load image
};

/// All supported tool chains.
[[nodiscard]] const QList<ToolChain> &toolChains();

/// The tool chain with this feature, or null.
[[nodiscard]] const ToolChain *findToolChain(const QString &feature);

/// The prefix of "gcc" for the user's setting @p wish: a name prefix, a directory or both. If @p wish ends in "/", it
/// is a directory with tools of the default names; if it is empty, these are found on the search path. A relative
/// directory is relative to @p base.
[[nodiscard]] QString toolPrefix(const ToolChain &toolChain, const QString &wish, const QString &base);

/// The language of a file, from the last extension of its name.
enum class Language { None, C, Cpp, Assembler, PreprocessedAssembler };
[[nodiscard]] Language languageOf(QStringView path);

/// The extensions of the files of a language, in the order of their use.
[[nodiscard]] QStringList extensionsOf(Language language);

/// Whether there is an executable with this name on the search path, or with this absolute path.
[[nodiscard]] bool isProgram(const QString &program);

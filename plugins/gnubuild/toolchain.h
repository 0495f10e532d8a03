#pragma once
#include <QStringList>

/// A family of GNU tools for one kind of processor. Each is a feature of the plug-in library.
struct ToolChain
{
    QString feature;        ///< the UUID text by which projects name it
    QString name;           ///< what users know it by
    QString prefix;         ///< what stands ahead of "gcc" in the names of its programs
    QString machineExample; ///< options that choose a processor, as a hint for users
    bool isCross = true;    ///< makes programs for another machine
};

/// All that the library offers.
[[nodiscard]] const QList<ToolChain> &toolChains();

/// The one that @p feature names, or null.
[[nodiscard]] const ToolChain *findToolChain(const QString &feature);

/// What to put ahead of "gcc" when the user asks for @p wish: a prefix, a directory or both. A wish that ends in "/"
/// is a directory with tools of the usual names, an empty one means these tools on the search path. A relative
/// directory counts from @p base.
[[nodiscard]] QString toolPrefix(const ToolChain &toolChain, const QString &wish, const QString &base);

/// What a compiler of C, C++ or assembly language is to make of a file; by its name's last suffix.
enum class Language { None, C, Cpp, Assembler, PreprocessedAssembler };
[[nodiscard]] Language languageOf(QStringView path);

/// Whether a program of this name or absolute path can be run.
[[nodiscard]] bool isProgram(const QString &program);

#pragma once
#include <QStringList>

/// Performs the options of the command line.
class CommandLineTarget
{
public:
    virtual ~CommandLineTarget() = default;
    /// Starts the automation server; 0 lets the system choose a port.
    virtual void startServer(quint16 port) = 0;
    virtual void openProject(const QString &path) = 0;
    virtual void openWorkspace(const QString &path) = 0;
    /// @p path, without an option, is an existing file or directory.
    virtual void openNamed(const QString &path) = 0;
};

/// Handles the arguments after the program's name in order. Returns false if an option lacks its argument; the
/// arguments before it have been handled then.
///
/// Unknown arguments are skipped. Arguments after an option for a project or a workspace are ignored. Paths are made
/// absolute, since the working directory is the user's and not the project's.
bool walkCommandLine(const QStringList &arguments, CommandLineTarget &target);

/// What to print for "--help" and "--version", after which the program ends; null if neither is among the arguments. An
/// argument of an option is not read as one of them.
[[nodiscard]] QString commandLineAnswer(const QStringList &arguments, const QString &version);

/// The text of the warning for bad options.
[[nodiscard]] QString commandLineUsage();

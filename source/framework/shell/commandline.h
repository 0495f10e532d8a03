#pragma once
#include <QStringList>

/// What the options of the command line ask for.
class CommandLineTarget
{
public:
    virtual ~CommandLineTarget() = default;
    /// Starts the automation server; 0 lets the system choose a port.
    virtual void startServer(quint16 port) = 0;
    virtual void openProject(const QString &path) = 0;
    virtual void openWorkspace(const QString &path) = 0;
};

/// Walks the arguments behind the program's name and does what they ask for. Returns false if an option lacks its
/// argument; what stood before it has been done then.
///
/// Unknown arguments are skipped. A project or a workspace ends the walk: what follows it is ignored. Paths are made
/// absolute, since the working directory is the user's and not the project's.
bool walkCommandLine(const QStringList &arguments, CommandLineTarget &target);

/// The text of the warning for bad options.
[[nodiscard]] QString commandLineUsage();

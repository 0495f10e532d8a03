#pragma once
#include <functional>
#include <optional>
#include <QDir>
#include <QMap>

/// Names of the well-known directories. The numbers are fixed: scripts use them.
enum PathId {
    PathPlugInRoot = 0,    ///< the installation root; plugins, templates and images lie below it
    PathConfig = 1,        ///< uiconfig.xml, textformats.xml
    PathHelp = 2,          ///< help pages and their index
    PathData = 3,          ///< data of the product
    PathUserData = 4,      ///< application data of this user
    PathUserDocuments = 5, ///< the user's documents
    PathInstallRoot = 6,   ///< the same directory as PathPlugInRoot; bin and python are reached from it
    PathPython = 7         ///< startup.py, macros.py
};

/// Directories of the user, as the desktop system defines them.
struct UserDirectories
{
    QDir data;
    QDir documents;
};

/// Finds the user's directories; nothing if the system does not define them.
using UserDirectoryResolver = std::function<std::optional<UserDirectories>()>;

/// The desktop's own places: its application-data directory for Varnel, which is created, and the documents folder.
[[nodiscard]] std::optional<UserDirectories> standardUserDirectories();

/// The table of well-known directories. A value type; copies share their data.
class ApplicationPaths
{
public:
    /// The table for an installation below @p installRoot. When @p resolver finds nothing, both of the user's
    /// directories are the installation root.
    explicit ApplicationPaths(const QDir &installRoot, const UserDirectoryResolver &resolver = standardUserDirectories);

    /// The directory of @p id; the current directory for an unknown id.
    [[nodiscard]] QDir path(PathId id) const;

private:
    QMap<int, QDir> m_directories;
};

/// Where the program stores data of this user between two runs: sessions, copies of unsaved texts. The program's own
/// folder below $XDG_STATE_HOME, or below its default if that is not set.
[[nodiscard]] QDir stateDirectory();

/// The parent of the directory that holds the executable.
[[nodiscard]] QDir installRootOfExecutable();

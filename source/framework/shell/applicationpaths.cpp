#include "applicationpaths.h"
#include <QCoreApplication>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {
/// @p directory / @p name as a path, whether or not it exists: a missing directory must not turn into its parent.
QDir below(const QDir &directory, const QString &name)
{
    return QDir(directory.filePath(name));
}
} // namespace

std::optional<UserDirectories> standardUserDirectories()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (data.isEmpty() || documents.isEmpty())
        return std::nullopt;
    const QDir own = below(QDir(data), u"Ostrand Labs/Varnel"_s);
    own.mkpath(u"."_s); // an error is reported later, by the writer of a file
    return UserDirectories{own, QDir(documents)};
}

ApplicationPaths::ApplicationPaths(const QDir &installRoot, const UserDirectoryResolver &resolver)
{
    const UserDirectories user = resolver().value_or(UserDirectories{installRoot, installRoot});
    m_directories = {
        {PathPlugInRoot, installRoot},
        {PathConfig, below(installRoot, u"config"_s)},
        {PathHelp, below(installRoot, u"help"_s)},
        {PathData, below(installRoot, u"data"_s)},
        {PathUserData, user.data},
        {PathUserDocuments, user.documents},
        {PathInstallRoot, installRoot},
        {PathPython, below(installRoot, u"python"_s)},
    };
}

QDir ApplicationPaths::path(PathId id) const
{
    return m_directories.value(id);
}

QDir stateDirectory()
{
    const QString home = qEnvironmentVariable("XDG_STATE_HOME", QDir::homePath() + u"/.local/state"_s);
    return below(QDir(home), u"Ostrand Labs/Varnel"_s);
}

QDir installRootOfExecutable()
{
    QDir root(QCoreApplication::applicationDirPath());
    root.cdUp();
    return root;
}

#include "helphost.h"
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

bool HelpHost::start(const QString &path, const QString &directory)
{
    const QFileInfo file(path);
    if (file.isFile() && file.isExecutable())
        return QProcess::startDetached(path, {}, directory);
    return file.exists() && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool HelpHost::openExternally(const QUrl &url)
{
    return QDesktopServices::openUrl(url);
}

bool HelpHost::runCommand(const QString &, const QString &)
{
    return false;
}

bool HelpSite::trusts(const QString &page) const
{
    const QString root = QFileInfo(directory).canonicalFilePath();
    return !root.isEmpty() && QFileInfo(page).canonicalFilePath().startsWith(root + u'/');
}

#include "windowhosts.h"
#include "ideapplication.h"
#include "lastdirectories.h"
#include "uiconfig.h"

using namespace Qt::StringLiterals;

QAction *TreeWindowHost::action(const QString &name) const
{
    return m_ui.action(name);
}

QIcon TreeWindowHost::picture(const QString &name) const
{
    return IDEApplication::instance()->loadIcon(name);
}

QString TreeWindowHost::sourceFilter() const
{
    return ::sourceFilter(m_extensions);
}

QString TreeWindowHost::filesDirectory() const
{
    return m_directories.directory(u"Files"_s);
}

void TreeWindowHost::setFilesDirectory(const QString &directory)
{
    m_directories.setDirectory(u"Files"_s, directory);
}

QString EditorWindowHost::markerToolTip(const QString &filename, int line)
{
    return m_toolTips(filename, line);
}

QAction *EditorWindowHost::sharedAction(const QString &name)
{
    return m_ui.action(name);
}

QPixmap EditorWindowHost::picture(const QString &name)
{
    return IDEApplication::instance()->loadPixmap(name);
}

#include "recentfilelist.h"
#include <QSettings>

RecentFileList::RecentFileList(QString key, QSettings *settings, int maximum)
    : m_key(std::move(key)), m_maximum(maximum), m_settings(settings)
{}

void RecentFileList::add(const QString &path)
{
    const bool known = m_paths.removeAll(path) > 0;
    m_paths.prepend(path);
    if (!known && m_paths.size() > m_maximum)
        m_paths.removeLast();
}

void RecentFileList::remove(const QString &path)
{
    m_paths.removeAll(path);
}

void RecentFileList::load()
{
    m_paths.clear();
    for (;;) {
        const QString path = m_settings->value(m_key + QString::number(m_paths.size())).toString();
        if (path.isEmpty())
            return;
        m_paths.append(path);
    }
}

void RecentFileList::save() const
{
    for (int i = 0; i < m_paths.size(); ++i)
        m_settings->setValue(m_key + QString::number(i), m_paths[i]);
}

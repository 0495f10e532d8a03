#pragma once
#include <QStringList>
class QSettings;

/// The files or workspaces that were opened last, newest first, kept in the settings.
class RecentFileList
{
public:
    /// Entries are stored under @p key followed by their index, which counts from 0.
    RecentFileList(QString key, QSettings *settings, int maximum = 4);

    [[nodiscard]] const QStringList &paths() const { return m_paths; }
    /// Moves or inserts @p path at the front; removes the oldest entry if there are too many.
    void add(const QString &path);
    void remove(const QString &path);

    /// Reads entries until one is empty.
    void load();
    /// Writes the entries. Keys beyond their count stay, so a last entry that was removed comes back at the next start.
    void save() const;

private:
    const QString m_key;
    const int m_maximum;
    QSettings *const m_settings;
    QStringList m_paths;
};

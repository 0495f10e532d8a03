#pragma once
#include <QString>
class QSettings;

/// The directories that file dialogs begin in, kept in the group "Paths": "Files", "Workspaces" or "Projects". One that
/// was never stored, or that does not exist, is the user's documents folder.
class LastDirectories
{
public:
    LastDirectories(QSettings *settings, QString documents);

    [[nodiscard]] QString directory(const QString &kind) const;
    void setDirectory(const QString &kind, const QString &directory);
    /// Stores the directory that holds @p file.
    void remember(const QString &kind, const QString &file);

private:
    QSettings *const m_settings;
    const QString m_documents;
};

/// The filters that all dialogs for source files share; @p extensions are those that plug-ins have added.
[[nodiscard]] QString sourceFilter(const QStringList &extensions);

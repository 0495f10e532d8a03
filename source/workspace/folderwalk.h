#pragma once
#include "listedfile.h"
#include <atomic>
#include <functional>
#include <QRegularExpression>
#include <QSet>
#include <QString>

/// Lists the files of a folder, in the order of their names, and then those of the folders below, in the same way.
/// Hidden files and folders are skipped, and a folder that is reached through several links is visited once.
class FolderWalk
{
public:
    using Receiver = std::function<void(ListedFile file)>;

    /// The names of the files match @p mask: wildcards separated by ";" or else by blanks, case ignored.
    FolderWalk(const QString &mask, bool recursive);

    /// Ends soon after @p running has become false.
    void forEach(const QString &folder, const std::atomic<bool> &running, const Receiver &receive);
    [[nodiscard]] int skipped() const { return m_skipped; } ///< files that do not match

    [[nodiscard]] int unreadableFolders() const { return m_unreadable; }

private:
    struct Entries;
    void visit(const QString &folder, const QString &canonical, const std::atomic<bool> &running,
               const Receiver &receive);
    [[nodiscard]] bool matches(const QByteArray &name) const;

    QList<QRegularExpression> m_filters; ///< none: every name matches
    const bool m_recursive;
    int m_skipped = 0;
    QSet<QString> m_visited; ///< canonical paths
    int m_unreadable = 0;    ///< folders
};

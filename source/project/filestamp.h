#pragma once
#include <QDateTime>

/// What is known of a project or workspace file since it was read or written last.
struct FileStamp
{
    QDateTime modified;     ///< its time then; null before it was read or written
    bool isForeign = false; ///< it had content that is not written again

    /// Notes that the file at @p path has just been read or written.
    void take(const QString &path, bool foreign);
    /// Whether another program has written the file since.
    [[nodiscard]] bool isOlderThan(const QString &path) const;
};

/// Writes a project or workspace file. A foreign file is copied to NAME~ before. False if either fails.
[[nodiscard]] bool writeProjectFile(const QString &path, const QString &xml, FileStamp &stamp);

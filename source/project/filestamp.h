#pragma once
#include <QDateTime>

/// What is known of a project or workspace file since it was read or written last.
struct FileStamp
{
    QDateTime modified;     ///< its time before it was read or after it was written; null before that
    bool isForeign = false; ///< it had content that is not written again

    /// Whether another program has written the file since.
    [[nodiscard]] bool isOlderThan(const QString &path) const;
};

/// Writes a project or workspace file. A foreign file is copied to NAME~ before. False if either fails.
[[nodiscard]] bool writeProjectFile(const QString &path, const QString &xml, FileStamp &stamp);

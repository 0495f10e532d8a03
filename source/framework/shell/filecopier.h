#pragma once
#include <functional>
#include <QFileInfo>
class QFile;

enum class CopyOutcome { Done, Cancelled, CannotRead, CannotWrite, CannotRename };

/// Called between blocks with the part of all files that is done, in percent. False ends the copy.
using CopyProgress = std::function<bool(int percent)>;

/// Copies files one after the other, in blocks that take some milliseconds each.
class FileCopier
{
public:
    /// @p files are those that will be copied. @p progress may be empty.
    FileCopier(const QFileInfoList &files, CopyProgress progress);

    /// Overwrites @p to, which is executable if the source is. After a failure or a cancellation that file does not
    /// exist.
    [[nodiscard]] CopyOutcome copyFile(const QString &from, const QString &to);

private:
    CopyOutcome copyBlocks(QFile *source, QFile *target);

    const CopyProgress m_progress;
    qint64 m_total = 0; ///< bytes of all files
    qint64 m_done = 0;
};

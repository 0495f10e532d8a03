#pragma once
#include <QTemporaryDir>

/// A temporary directory that the next one removes if this process was killed.
class LockedDirectory
{
public:
    /// Creates "@p prefix-XXXXXX" in the system's directory for temporary files, and removes those of the same prefix
    /// whose processes have ended.
    explicit LockedDirectory(const QString &prefix);
    ~LockedDirectory();
    Q_DISABLE_COPY_MOVE(LockedDirectory)

    [[nodiscard]] bool isValid() const { return m_directory.isValid(); }
    [[nodiscard]] QString errorString() const { return m_directory.errorString(); }
    [[nodiscard]] QString path() const { return m_directory.path(); }

private:
    QTemporaryDir m_directory;
    int m_lock; ///< a file descriptor; the system releases the lock with the process. -1 if there is none
};

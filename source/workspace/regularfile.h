#pragma once
#include <QtGlobal>
class ListedFile;

/// A regular file that is read from its start. Nothing else, such as a pipe, is opened.
class RegularFile
{
public:
    explicit RegularFile(const ListedFile &file);
    ~RegularFile();
    Q_DISABLE_COPY_MOVE(RegularFile)

    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
    /// Whether it could not be opened, though it is no pipe or the like.
    [[nodiscard]] bool isUnreadable() const { return m_isUnreadable; }
    [[nodiscard]] int descriptor() const { return m_fd; }
    /// When it was opened. Some files of the system have 0, but have bytes.
    [[nodiscard]] qint64 size() const { return m_size; }
    /// The number of bytes that were read, 0 at the end of the file, -1 after an error.
    [[nodiscard]] qsizetype read(char *bytes, qsizetype size);

private:
    int m_fd;
    qint64 m_size = 0;
    bool m_isUnreadable = false;
};

#pragma once
#include <memory>
#include <QByteArray>
#include <QDateTime>
#include <QString>

/// A file that is read in blocks, from any thread. It may change, shrink or vanish meanwhile: what is no longer there
/// is not read. It is not mapped into memory, where a page that a shorter file has lost would end the program.
class LargeFile
{
public:
    enum class Change { None, Grown, Shrunk, Rewritten, Replaced, Gone };

    /// Null if @p path is no regular file that can be read.
    [[nodiscard]] static std::shared_ptr<LargeFile> open(const QString &path);
    ~LargeFile();
    Q_DISABLE_COPY_MOVE(LargeFile)

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] qint64 size() const { return m_size; } ///< when it was opened
    [[nodiscard]] QDateTime lastModified() const;        ///< when it was opened

    /// Reads up to @p length bytes into @p buffer; returns how many there were.
    qint64 read(qint64 offset, char *buffer, qint64 length) const;
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const;

    /// What has happened to the file since it was opened.
    [[nodiscard]] Change change() const;
    [[nodiscard]] qint64 presentSize() const;

private:
    struct Stamp
    {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 size = 0;
        qint64 modified = 0; ///< nanoseconds since 1970
    };

    LargeFile(const QString &path, int descriptor, const Stamp &stamp);

    const QString m_path;
    const int m_descriptor;
    const Stamp m_stamp;
    const qint64 m_size;
};

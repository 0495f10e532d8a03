#pragma once
#include <memory>
#include <QByteArray>
#include <QString>

/// A folder that stays open, so that its files are opened without a walk through its path.
class OpenFolder
{
public:
    /// @p descriptor is that of the folder, or another one that stands for no folder; it is duplicated.
    OpenFolder(const QString &path, int descriptor);
    ~OpenFolder();
    Q_DISABLE_COPY_MOVE(OpenFolder)

    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] int descriptor() const { return m_descriptor; } ///< -1 if there are too many

private:
    const QString m_path;
    const int m_descriptor;
};

/// A file by its name in a folder, or by its path. Many of them take little memory.
class ListedFile
{
public:
    explicit ListedFile(const QString &path);
    ListedFile(std::shared_ptr<const OpenFolder> folder, QByteArray name);

    [[nodiscard]] QString path() const;
    /// Opens the file for reading and returns its descriptor; -1 on failure.
    [[nodiscard]] int open(int flags) const;

private:
    std::shared_ptr<const OpenFolder> m_folder; ///< null: the name is a path
    QByteArray m_name;                          ///< as in the file system
};

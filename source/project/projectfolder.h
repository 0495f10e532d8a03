#pragma once
#include "modelpointer.h"
#include "projectchildren.h"
#include <QStringList>

class ProjectFile;
class ProjectXmlReader;
class ProjectXmlWriter;

/// A logical folder of a project, with subfolders and files. It is not a directory on disk.
class ProjectFolder : public ModelObject
{
public:
    /// Files with folders nested more deeply are refused, so that all code may recurse into folders.
    static constexpr int MaximumDepth = 1000;

    ProjectFolder() = default;
    explicit ProjectFolder(const QString &name) : m_name(name) {}
    /// Deletes the subfolders, then the files.
    virtual ~ProjectFolder();
    Q_DISABLE_COPY_MOVE(ProjectFolder)

    [[nodiscard]] QString name() const { return m_name; }
    /// Without dots. Files that are added to the project go to the first top-level folder with their extension.
    [[nodiscard]] QStringList extensions() const { return m_extensions; }
    [[nodiscard]] QList<ProjectFolder *> folders() const { return m_folders.items(); }
    [[nodiscard]] QList<ProjectFile *> files() const { return m_files.items(); }
    [[nodiscard]] Project *project() const { return m_project; }     ///< Null before it is added to a project.
    [[nodiscard]] ProjectFolder *parent() const { return m_parent; } ///< Null at the top level.
    [[nodiscard]] QList<ProjectFolder *> withSubfolders(); ///< Recursively; each folder before its subfolders.

    /// The project, if there is one, emits the signals. The caller owns a child that it removes.
    void addFolder(ProjectFolder *folder, bool prepend);
    void insertFolder(ProjectFolder *folder, qsizetype place); ///< Before the one that is there, or else at the end.
    void removeFolder(ProjectFolder *folder);
    void addFile(ProjectFile *file);
    void insertFile(ProjectFile *file, qsizetype place); ///< Likewise.
    void removeFile(ProjectFile *file);
    void rename(const QString &newName);
    void setExtensions(const QStringList &extensions);

    void setProject(Project *project); ///< For the whole subtree. Null is ignored.
    void setParent(ProjectFolder *parent) { m_parent = parent; }

    /// Calls ProjectFile::rebase() for all files below.
    void rebase(const QString &from, const Project &to, bool staysInOther);
    [[nodiscard]] quint32 listings() const { return m_listings; } ///< The number of lists that contain it.

    void read(ProjectXmlReader &xml); ///< The current element with its end tag. Too deep nesting is an error of @p xml.
    void write(ProjectXmlWriter &xml) const;

private:
    friend class Project;
    template <typename>
    friend class ProjectChildren;
    [[nodiscard]] bool isChildOf(const ProjectFolder *parent, const Project *project) const;
    void insert(ProjectFolder *folder, qsizetype place);
    void insert(ProjectFile *file, qsizetype place);

    QString m_name;
    QStringList m_extensions;
    ProjectChildren<ProjectFolder> m_folders;
    ProjectChildren<ProjectFile> m_files;
    Project *m_project = nullptr;
    ProjectFolder *m_parent = nullptr;
    quint32 m_listings = 0;
};

/// Whether @p folder cannot move into @p target because it is the target or contains it. A null target is the root of a
/// project, into which every folder can move.
[[nodiscard]] bool wouldContainItself(ProjectFolder *folder, const ProjectFolder *target);

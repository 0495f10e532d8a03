#pragma once
#include "projectproperties.h"

class ProjectFolder;

/// A file of a project: its path and its properties. A project may have many, so the size of this class matters.
class ProjectFile
{
public:
    ProjectFile() = default;
    ProjectFile(const QString &name, const QString &path); ///< @p name is the last part of @p path.
    virtual ~ProjectFile();
    Q_DISABLE_COPY_MOVE(ProjectFile)

    [[nodiscard]] QString name() const; ///< The last part of the path.
    /// As stored: relative to the project's directory where possible. Project::absolutePath() resolves it.
    [[nodiscard]] QString path() const { return m_path; }
    [[nodiscard]] ProjectProperties *properties() { return &m_properties; }
    [[nodiscard]] const ProjectProperties *properties() const { return &m_properties; }
    [[nodiscard]] Project *project() const { return m_properties.project(); } ///< Null before it is added to a project.
    [[nodiscard]] ProjectFolder *folder() const { return m_folder; }          ///< Null in the root of the project.

    void setProject(Project *project); ///< Null is ignored.
    void setFolder(ProjectFolder *folder) { m_folder = folder; }

    /// For a move from a project in the directory @p from to the project @p to: the path names the same file from
    /// there. It becomes absolute if the file @p staysInOther: it is listed in the former project, too.
    void rebase(const QString &from, const Project &to, bool staysInOther);
    [[nodiscard]] quint32 listings() const { return m_listings; } ///< The number of lists that contain it.

    void read(ProjectXmlReader &xml); ///< Reads the current element and its end tag.
    void write(ProjectXmlWriter &xml) const;

private:
    template <typename>
    friend class ProjectChildren;
    [[nodiscard]] bool isChildOf(const ProjectFolder *folder, const Project *project) const;

    QString m_path;
    ProjectFolder *m_folder = nullptr;
    [[no_unique_address]] ProjectProperties m_properties; ///< also stores the project
    quint32 m_listings = 0;
};

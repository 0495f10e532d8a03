#pragma once
#include "filestamp.h"
#include <memory>
#include <QDir>
#include <QObject>
#include <vector>

class Project;

/// The projects that are open together; one of them is the current one. Its file (*.vnw) contains only the list of
/// project files. It owns its projects.
class ProjectWorkspace : public QObject
{
    Q_OBJECT
public:
    explicit ProjectWorkspace(const QString &fileName = {});
    ~ProjectWorkspace() override;

    /// False if the file cannot be read or is not XML; then the workspace is empty. A project that could not be loaded
    /// is also in the list, with openedOK() false. No signal is emitted.
    bool load(const QString &fileName);
    /// Writes the list of projects, not the projects. False if the file cannot be written completely.
    /// A file with content that is not written again is copied to NAME~ the first time.
    bool save();
    [[nodiscard]] bool isNewerOnDisk() const; ///< Another program has written the file since it was read or written.

    [[nodiscard]] QString fileName() const { return m_fileName; }
    [[nodiscard]] QString name() const { return m_name; } ///< The name of the file without its last suffix.
    [[nodiscard]] QString relativePath(const QString &path) const;
    [[nodiscard]] bool isModified() const { return m_modified; } ///< Of the list; projects have their own marks.
    void setModified(bool modified);

    [[nodiscard]] int count() const { return int(m_projects.size()); }
    [[nodiscard]] Project *project(int index) const; ///< Outside 0 to count() - 1: null, with a failed assertion.
    [[nodiscard]] Project *currentProject() const;   ///< Null if there are no projects.
    [[nodiscard]] int currentProjectIndex() const { return m_current; } ///< -1 if there are no projects.
    void setCurrentProject(int index);
    void setCurrentProject(const Project *project);
    void addProject(Project *project);          ///< Owns it and makes it the current one.
    void removeProject(const Project *project); ///< Deletes it.
    /// In the order of the list, but the current project first if it contains the file.
    [[nodiscard]] QList<Project *> projectsContainingFile(const QString &path) const;

public Q_SLOTS:
    void slotProjectActivityChanged();

Q_SIGNALS:
    void currentProjectChanged();
    void projectRemoving(Project *project); ///< It is still in the list.
    void workspaceChanged();                ///< A project was added or removed.
    /// A project became active or inactive. An inactive project does not stay current if there is an active one.
    void projectActivityChanged();

private:
    void setLocation(const QString &fileName);
    void append(Project *project);
    void deleteProjects();
    [[nodiscard]] int indexOf(const Project *project) const;

    QString m_fileName;
    FileStamp m_stamp;
    QString m_name;
    QDir m_dir;
    bool m_modified = true;
    std::vector<std::unique_ptr<Project>> m_projects;
    int m_current = -1;
};

#pragma once
#include "filestamp.h"
#include "projectchildren.h"
#include "projectproperties.h"
#include "unknown.h"
#include <functional>
#include <QDir>
#include <QObject>

class IBuildEnvironment;
class IExecutionEnvironment;
class ProjectFile;
class ProjectFolder;
class QXmlStreamAttributes;

/// One unit to build: folders and files, configurations with properties, and the names of its plug-ins. It is stored in
/// an XML file (*.vnp). Paths are stored relative to the directory of that file where that is possible.
///
/// A folder or file has one parent; null means the root of the project. The signals of the project report all changes
/// below it, except during loading: viewers are created after that.
class Project : public QObject
{
    Q_OBJECT
public:
    Project(const QString &name, const QString &directory);
    /// Releases the execution environment, then the build environment, then deletes folders and files.
    ~Project() override;

    /// Replaces everything by the contents of the file at @p path. False if it cannot be read or is not XML; then the
    /// project is empty.
    bool load(const QString &path);
    [[nodiscard]] bool openedOK() const { return m_openedOK; } ///< The last load was successful.
    /// Replaces folders, files and configurations; the environments stay. False if @p text is not XML; then the project
    /// is empty.
    bool loadFromXml(const QString &text);
    /// Why loadFromXml() cannot read @p text; empty if it can.
    [[nodiscard]] static QString problemInXml(const QString &text);
    /// False if the file cannot be written completely, or if folders are nested too deeply to be loaded again; then the
    /// old file is unchanged. A file with content that is not written again is copied to NAME~ the first time.
    bool save();
    [[nodiscard]] bool isNewerOnDisk() const; ///< Another program has written the file since it was read or written.
    [[nodiscard]] QString toXml() const;      ///< The text that save() writes.

    [[nodiscard]] QString name() const { return m_name; } ///< The name of the file without its last suffix.
    [[nodiscard]] QString fileName() const { return m_fileName; }
    [[nodiscard]] QDir directory() const { return m_dir; } ///< As passed to the constructor, possibly relative.
    [[nodiscard]] QString basePath() const { return m_dir.absolutePath(); }
    [[nodiscard]] QString displayName() const;
    [[nodiscard]] QString relativePath(const QString &path) const; ///< The form in which an absolute path is stored.
    [[nodiscard]] QString absolutePath(const QString &storedPath) const;
    [[nodiscard]] QString buildEnvironment() const { return m_buildEnvironment; } ///< The text of a UUID, or empty.
    [[nodiscard]] QString buildEnvironmentName() const { return m_buildEnvironmentName; }
    [[nodiscard]] QString buildEnvironmentOption() const { return m_buildEnvironmentOption; }
    [[nodiscard]] QString executionEnvironment() const { return m_executionEnvironment; }
    [[nodiscard]] QString executionEnvironmentName() const { return m_executionEnvironmentName; }
    [[nodiscard]] QString executionEnvironmentOption() const { return m_executionEnvironmentOption; }

    [[nodiscard]] QList<ProjectFolder *> folders() const { return m_folders.items(); } ///< The top level.
    [[nodiscard]] QList<ProjectFile *> rootFiles() const { return m_files.items(); }   ///< The files in no folder.
    /// The files of @p folder, or of the root if it is null, then those of each subfolder, recursively. @p extensions
    /// are complete ones in lower case, separated by ";"; the null string means all files.
    [[nodiscard]] QList<ProjectFile *> files(const QString &extensions, ProjectFolder *folder) const;
    [[nodiscard]] bool containsFile(const QString &path) const;
    void addFolder(ProjectFolder *folder, bool prepend);
    void insertFolder(ProjectFolder *folder, qsizetype place); ///< Before the one that is there, or else at the end.
    void removeFolder(ProjectFolder *folder);
    void addFile(ProjectFile *file);
    void insertFile(ProjectFile *file, qsizetype place); ///< Likewise.
    void removeFile(ProjectFile *file);
    /// A folder moves to the front of @p target, a file to its end. Nothing happens if @p target is the folder or in
    /// it.
    void moveFolder(ProjectFolder *folder, ProjectFolder *target);
    void moveFile(ProjectFile *file, ProjectFolder *target);
    /// Adds files by absolute path: to @p folder or, if it is null, each to the first top-level folder that has its
    /// extension, otherwise to the root. Files that are in the project already are added a second time.
    void addFiles(const QStringList &paths, ProjectFolder *folder);

    [[nodiscard]] ProjectProperties *properties() { return &m_properties; }
    [[nodiscard]] const ProjectProperties *properties() const { return &m_properties; }
    [[nodiscard]] QString currentConfiguration() const { return m_currentConfiguration; }
    void setCurrentConfiguration(const QString &name);

    [[nodiscard]] bool isModified() const { return m_modified; }
    void setModified(bool modified);
    [[nodiscard]] bool isActive() const { return m_active; } ///< It takes part in debugging.
    void setActive(bool active);

    /// Setters keep a reference and release the old one; getters add none.
    void setBuildInterface(IBuildEnvironment *environment);
    void setExecutionInterface(IExecutionEnvironment *environment);
    [[nodiscard]] IBuildEnvironment *buildInterface() const { return m_buildInterface.get(); }
    [[nodiscard]] IExecutionEnvironment *executionInterface() const { return m_executionInterface.get(); }
    /// How often an execution environment was set: another one may have the address of a former one.
    [[nodiscard]] int executionBindings() const { return m_executionBindings; }
    void setBuildEnvironment(IBuildEnvironment *environment) { setBuildInterface(environment); }
    void setExecutionEnvironment(IExecutionEnvironment *environment) { setExecutionInterface(environment); }

Q_SIGNALS: // the first folder is the parent, null for the root
    void projectModified(bool modified);
    void folderAdded(ProjectFolder *parent, ProjectFolder *folder);
    void folderRemoved(ProjectFolder *parent, ProjectFolder *folder);
    void fileAdded(ProjectFolder *parent, ProjectFile *file);
    void fileRemoved(ProjectFolder *parent, ProjectFile *file);
    void folderRenamed(ProjectFolder *folder, const QString &newName);
    void activityChanged(bool active);
    /// One of its own or of a file's has another value, or has lost its value.
    void propertyChanged(const QString &key, const QString &configuration);
    void configurationChanged(const QString &name); ///< The current one.
    void configurationsChanged();                   ///< One was added or removed.
    void contentsReplaced();                        ///< By a load. No other signal reports what is different.
    void overwriteRefused(const QString &fileName); ///< A plug-in cannot save it, because its file is newer.

private:
    friend class ProjectProperties;
    friend class ProjectFile;
    friend class ProjectFolder;
    /// For the destructors of files and folders that are still in a list: removes them from all projects.
    static void forget(const ProjectFile *file);
    static void forget(const ProjectFolder *folder);

    struct RootAttribute;
    static const RootAttribute rootAttributes[6];

    void deleteChildren();
    [[nodiscard]] bool read(ProjectXmlReader &xml, QXmlStreamAttributes *attributes);
    void readChild(ProjectXmlReader &xml);
    void insert(ProjectFolder *folder, qsizetype place);
    void insert(ProjectFile *file, qsizetype place);
    [[nodiscard]] QList<ProjectFolder *> allFolders() const;
    [[nodiscard]] bool isTooDeep() const;
    [[nodiscard]] ProjectFolder *folderFor(const QString &extension) const;
    void batch(const std::function<void()> &work);

    QString m_name;
    QDir m_dir;
    QString m_fileName;
    FileStamp m_stamp;
    bool m_modified = false;
    bool m_openedOK = false;
    bool m_batching = false;     ///< during a move
    bool m_batchPending = false; ///< m_modified changed during a move
    QString m_buildEnvironment;
    QString m_buildEnvironmentName;
    QString m_buildEnvironmentOption;
    QString m_executionEnvironment;
    QString m_executionEnvironmentName;
    QString m_executionEnvironmentOption;
    ProjectChildren<ProjectFolder> m_folders;
    ProjectChildren<ProjectFile> m_files;
    ProjectProperties m_properties{this};
    QString m_currentConfiguration;
    InterfacePtr<IBuildEnvironment> m_buildInterface;
    InterfacePtr<IExecutionEnvironment> m_executionInterface;
    int m_executionBindings = 0;
    bool m_active = true;
};

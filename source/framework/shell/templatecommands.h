#pragma once
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>
class Activity;
class NewFileDialog;
class NewProjectDialog;
class Project;
class ProjectCommands;
class QDialog;
class WindowServices;
struct FileTemplate;
struct NewProjectChoices;
struct ProjectTemplate;
struct TemplateCopy;

/// Where templates lie.
struct TemplateDirectories
{
    QString installed; ///< of projects: each of its subdirectories is a folder of templates
    QString user;      ///< the user's own, one folder of templates; it need not exist
    QString files;     ///< of files
    QString userFiles; ///< the user's own; it need not exist
};

/// The commands that create projects and files from templates, and templates from projects.
class TemplateCommands : public QObject
{
    Q_OBJECT
public:
    /// The references outlive this object.
    TemplateCommands(Activity &activity, WindowServices &window, ProjectCommands &projects,
                     TemplateDirectories directories, QObject *parent = nullptr);

    /// Shows the dialog for a new project, and creates the project. There is one dialog at a time.
    void projectNew();
    /// The same for a new file.
    void fileNew();
    /// Makes a template of the user's out of the project, after asking for its name. Null is ignored.
    void saveAsTemplate(Project *project);

private:
    // Projects
    [[nodiscard]] NewProjectChoices choices() const;
    [[nodiscard]] QStringList folderPaths() const;
    [[nodiscard]] QList<ProjectTemplate> recentTemplates() const;
    void rememberChoice(const NewProjectDialog &dialog) const;
    void createProject(const TemplateCopy &order, bool add);
    [[nodiscard]] bool isOpen(const QString &projectFile) const;
    [[nodiscard]] bool mayReplaceWorkspace(const TemplateCopy &order, bool add) const;
    void copyProject(const TemplateCopy &order, bool add);
    void runScript(const TemplateCopy &order, const ProjectTemplate &info, bool add);
    void openResult(const TemplateCopy &order, const QString &path, bool add);
    void openProject(const TemplateCopy &order, const QString &projectFile, bool add);
    [[nodiscard]] bool mayReplaceTemplate(const QString &directory) const;
    void writeTemplate(const Project &project, const QString &name, const QString &directory);
    [[nodiscard]] QString notesOn(const Project &project) const;
    void reportTemplate(const QString &name, const QString &notes) const;

    // Files
    void createFiles(const NewFileDialog &choice);
    bool createDocument(const NewFileDialog &choice, const QString &path);
    bool createFromTemplate(const FileTemplate &chosen, const QString &path, QStringList *paths);
    bool closeDocument(const QString &path);

    [[nodiscard]] QIcon picture(const QString &directory, const QString &file, const QString &fallback) const;
    void warn(const QString &text) const;

    Activity &m_activity;
    WindowServices &m_window;
    ProjectCommands &m_projects;
    const TemplateDirectories m_directories;
    QPointer<QDialog> m_dialog; ///< null while none is shown
};

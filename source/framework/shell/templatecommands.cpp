#include "templatecommands.h"
#include "activity.h"
#include "document.h"
#include "lastdirectories.h"
#include "messages.h"
#include "newprojectdialog.h"
#include "pictures.h"
#include "project.h"
#include "projectcommands.h"
#include "projectscript.h"
#include "questions.h"
#include "recentfilelist.h"
#include "templatecopy.h"
#include "templatesave.h"
#include "windowservices.h"
#include "workprogress.h"
#include "workspace.h"
#include <QDir>
#include <QFileInfo>
#include <QSettings>

// The part of TemplateCommands for projects.

using namespace Qt::StringLiterals;

namespace {
constexpr int MostRecentTemplates = 6;
constexpr int MostListed = 10; // in a message
const auto NewProjectsKey = u"Paths/NewProjects"_s;
const auto TemplatesKey = u"Paths/Templates"_s;
const auto RecentKey = u"Templates/Recent"_s;

QString absolute(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

bool isTemplate(const QString &directory)
{
    return QFileInfo(directory).isDir() && !readTemplate(directory).isFolder();
}

/// A paragraph of a message: @p text with the first ones of a list; null for an empty list.
QString paragraph(const QString &text, const QStringList &items)
{
    return items.isEmpty() ? QString() : text.arg(items.mid(0, MostListed).join(u'\n'));
}

/// Why copying failed; null if there is nothing to say.
QString messageOf(const CopyResult &result)
{
    switch (result.outcome) {
    case CopyOutcome::CannotRead:
        return TemplateCommands::tr("Could not read from file '%1' .\n\nThe project has not been created");
    case CopyOutcome::CannotWrite:
        return TemplateCommands::tr("Could not write to file '%1' .\n\nThe project has not been created");
    case CopyOutcome::CannotRename:
        return TemplateCommands::tr("Could not rename the project file '%1' .\n\nThe project has not been created");
    case CopyOutcome::Done:
    case CopyOutcome::Cancelled:
        break;
    }
    return {};
}

/// Why a script has not led to a file; null if there is nothing to say.
QString messageOf(const ProjectScriptResult &result, const QString &module)
{
    const QString details = TemplateCommands::tr("\n\nSee Python Command Window for details");
    switch (result.outcome) {
    case ProjectScriptResult::NoModule:
        return TemplateCommands::tr("Error loading Python module '%1'.").arg(module) + details;
    case ProjectScriptResult::NoFunction:
        return TemplateCommands::tr("createProject Python function not found in module '%1'.").arg(module) + details;
    case ProjectScriptResult::Failed:
        return TemplateCommands::tr("Error in createProject Python function.") + details;
    case ProjectScriptResult::OtherType:
        return TemplateCommands::tr("createProject Python function must return:\n\n    path to project file (.vnp)\n\n"
                                    "    OR\n\n    path to workspace file (.vnw)\n\n    OR\n\n    Nothing");
    case ProjectScriptResult::Nothing:
    case ProjectScriptResult::Path:
        break;
    }
    return {};
}
} // namespace

TemplateCommands::TemplateCommands(Activity &activity, WindowServices &window, ProjectCommands &projects,
                                   TemplateDirectories directories, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_projects(projects)
    , m_directories(std::move(directories))
{}

void TemplateCommands::warn(const QString &text) const
{
    showWarning(m_window.dialogParent(), text);
}

QIcon TemplateCommands::picture(const QString &directory, const QString &file, const QString &fallback) const
{
    const PictureFiles files = file.isEmpty() ? PictureFiles() : findPicture(directory, file);
    return files.exists() ? pictureIcon(files) : m_window.icon(fallback);
}

// The dialog --------------------------------------------------------------

void TemplateCommands::projectNew()
{
    if (m_dialog)
        return m_dialog->raise(); // a script asks while it is open
    const QPointer<TemplateCommands> self(this);
    const QPointer<NewProjectDialog> dialog =
        new NewProjectDialog(choices(), m_window.dialogParent(), u"newProjectDialog"_s);
    m_dialog = dialog;
    const auto enableChoice = [this, dialog] { dialog->setWorkspaceChoiceEnabled(m_activity.workspace()); };
    enableChoice();
    connect(&m_activity, &Activity::workspaceOpened, dialog, enableChoice);
    connect(&m_activity, &Activity::workspaceClosed, dialog, enableChoice);

    const int result = dialog->exec();
    if (!self || !dialog)
        return; // the window was closed meanwhile
    std::unique_ptr<NewProjectDialog> owner(dialog);
    if (result != QDialog::Accepted)
        return;
    rememberChoice(*dialog);
    const TemplateCopy order{dialog->projectName(), dialog->templateDir(), absolute(dialog->projectPath())};
    const bool add = dialog->addToWorkspace();
    owner.reset(); // a script may show the next one, or close the window, which would delete it as well
    createProject(order, add);
}

NewProjectChoices TemplateCommands::choices() const
{
    return {
        .folders = findTemplateFolders(folderPaths()),
        .recent = recentTemplates(),
        .location =
            m_window.settings().value(NewProjectsKey, m_window.directories().directory(u"NewProjects"_s)).toString(),
        .picture = [this](const QString &directory, const QString &file, const QString &fallback) {
            return picture(directory, file, fallback);
        }};
}

QStringList TemplateCommands::folderPaths() const
{
    QStringList paths = subdirectories(m_directories.installed);
    for (const QString &path : m_window.settings().value(TemplatesKey).toString().split(u';')) {
        if (!path.trimmed().isEmpty())
            paths.append(path.trimmed());
    }
    return paths + QStringList(m_directories.user);
}

QList<ProjectTemplate> TemplateCommands::recentTemplates() const
{
    RecentFileList recent(RecentKey, &m_window.settings(), MostRecentTemplates);
    recent.load();
    QList<ProjectTemplate> templates;
    for (const QString &directory : recent.paths()) {
        if (isTemplate(directory))
            templates.append(readTemplate(directory));
    }
    return templates;
}

void TemplateCommands::rememberChoice(const NewProjectDialog &dialog) const
{
    LastDirectories &directories = m_window.directories();
    directories.setDirectory(u"NewProjects"_s, absolute(dialog.location()));
    directories.setDirectory(u"Projects"_s, absolute(dialog.projectPath()));
    directories.setDirectory(u"Files"_s, absolute(dialog.projectPath()));
    RecentFileList recent(RecentKey, &m_window.settings(), MostRecentTemplates);
    recent.load();
    recent.add(dialog.templateDir());
    recent.save();
}

// Creating ----------------------------------------------------------------

void TemplateCommands::createProject(const TemplateCopy &order, bool add)
{
    const QPointer<TemplateCommands> self(this);
    if (!add && !m_projects.closeWorkspace())
        return;
    if (!self)
        return;
    const ProjectTemplate info = readTemplate(order.templateDir);
    if (isOpen(order.projectFile())) // with the workspace that gets the project
        return warn(tr("The project '%1' is open. Remove it from the workspace before its file is replaced.")
                        .arg(QDir::toNativeSeparators(order.projectFile())));
    if (!info.isScript())
        copyProject(order, add);
    else if (info.scriptModule)
        runScript(order, info, add);
    else
        warn(tr("No script specified in template '%1' ").arg(order.templateDir));
}

bool TemplateCommands::isOpen(const QString &projectFile) const
{
    const QFileInfo file(projectFile);
    const QList<QPointer<Project>> projects = m_activity.projects();
    return std::any_of(projects.begin(), projects.end(), [&file](const QPointer<Project> &project) {
        return file.exists() && QFileInfo(project->fileName()) == file;
    });
}

/// A new project gets a new workspace file, except in a workspace that is open.
bool TemplateCommands::mayReplaceWorkspace(const TemplateCopy &order, bool add) const
{
    const QString file = order.name + u".vnw"_s;
    if ((add && m_activity.workspace()) || !QFileInfo(QDir(order.projectPath).filePath(file)).isFile())
        return true;
    const QString question = tr("The file '%1' already exists in the project folder.\n\n Do you want to overwrite it?");
    return showInformation(m_window.dialogParent(), question.arg(file), {QMessageBox::Yes, QMessageBox::Cancel})
           == QMessageBox::Yes;
}

void TemplateCommands::copyProject(const TemplateCopy &order, bool add)
{
    const QPointer<TemplateCommands> self(this);
    if (!mayReplaceWorkspace(order, add) || !self)
        return;
    const auto ask = [this](const QString &file) {
        const QString question =
            tr("The file '%1' already exists in the project folder.\n\n Do you want to overwrite it?");
        const auto answer = showInformation(m_window.dialogParent(), question.arg(file),
                                            {QMessageBox::Yes, QMessageBox::YesToAll, QMessageBox::Cancel});
        return answer == QMessageBox::Yes        ? OverwriteAnswer::Yes
               : answer == QMessageBox::YesToAll ? OverwriteAnswer::YesToAll
                                                 : OverwriteAnswer::Cancel;
    };
    WorkProgress progress(m_window.dialogParent(), tr("Copying the template..."));
    const CopyResult result = copyTemplate(order, ask, [&](int percent) { return progress.update(percent); });
    progress.end();
    if (!self)
        return;
    if (const QString message = messageOf(result); !message.isNull())
        return warn(message.arg(QDir::toNativeSeparators(result.file)));
    if (result.outcome == CopyOutcome::Done)
        openProject(order, order.projectFile(), add);
}

void TemplateCommands::openProject(const TemplateCopy &order, const QString &projectFile, bool add)
{
    if (add && m_activity.workspace())
        m_projects.addProject(projectFile);
    else if (m_projects.closeWorkspace()) // a script may have opened one
        m_projects.createWorkspace(QDir(order.projectPath).filePath(order.name + u".vnw"_s), projectFile);
}

// Scripts -----------------------------------------------------------------

void TemplateCommands::runScript(const TemplateCopy &order, const ProjectTemplate &info, bool add)
{
    const QPointer<TemplateCommands> self(this);
    WorkProgress progress(m_window.dialogParent(), tr("The template '%1' creates the project...").arg(info.name()));
    const ProjectScriptResult result = runProjectScript(*info.scriptModule, order.name, order.templateDir,
                                                        order.projectPath, [&] { return progress.update(); });
    progress.end();
    if (!self || !m_window.dialogParent()->isVisible())
        return; // the script has closed the window
    if (const QString message = messageOf(result, *info.scriptModule); !message.isNull())
        warn(message);
    else if (result.outcome == ProjectScriptResult::Path)
        openResult(order, result.path, add);
}

void TemplateCommands::openResult(const TemplateCopy &order, const QString &path, bool add)
{
    if (!QFileInfo::exists(path))
        return warn(tr("File returned from createProject Python function does not exist:\n\n%1").arg(path));
    const QString extension = QFileInfo(path).completeSuffix();
    if (extension == "vnp"_L1 && mayReplaceWorkspace(order, add))
        openProject(order, absolute(path), add);
    else if (extension == "vnp"_L1)
        return;
    else if (extension != "vnw"_L1)
        warn(tr("File returned from createProject Python function is not a workspace file (.vnw) or a project file "
                "(.vnp):\n\n%1")
                 .arg(path));
    else if (m_projects.closeWorkspace())
        m_projects.openWorkspace(absolute(path), true);
}

// Templates of the user's own ---------------------------------------------

void TemplateCommands::saveAsTemplate(Project *project)
{
    const QPointer<TemplateCommands> self(this);
    const QPointer<Project> alive(project);
    if (!alive)
        return;
    const std::optional<QString> answer =
        askForText(m_window.dialogParent(), tr("Name of the new project template:"), alive->name());
    const QString name = answer.value_or(QString()).simplified();
    if (!self || !alive || name.isEmpty())
        return;
    const QString directory = QDir(m_directories.user).filePath(directoryNameOf(name));
    const QList<QPointer<Project>> projects = m_activity.projects();
    if (std::any_of(projects.begin(), projects.end(), [&](const auto &each) { return liesIn(*each, directory); }))
        return warn(tr("The template '%1' cannot be replaced, because an open project lies in its folder. Please enter "
                       "another name.")
                        .arg(name));
    if (mayReplaceTemplate(directory) && self && alive)
        writeTemplate(*alive, name, directory);
}

bool TemplateCommands::mayReplaceTemplate(const QString &directory) const
{
    return !QFileInfo::exists(directory)
           || showInformation(m_window.dialogParent(),
                              tr("A template with that name exists already. Do you want to replace it?"),
                              {QMessageBox::Yes, QMessageBox::No})
                  == QMessageBox::Yes;
}

/// What the user has to know of a template of this project; empty if there is nothing.
QString TemplateCommands::notesOn(const Project &project) const
{
    QStringList unsaved;
    for (Document *document : m_window.workspace()->documents()) {
        if (document->modified() && QFileInfo(document->filename()).absolutePath() == project.basePath())
            unsaved.append(QFileInfo(document->filename()).fileName());
    }
    QStringList notes = {
        paragraph(tr("The template does not contain these files. New projects will use them where they are now:\n\n%1"),
                  filesElsewhere(project)),
        paragraph(tr("These options have paths that lead out of the project's folder. Please check them in new "
                     "projects:\n\n%1"),
                  optionsElsewhere(project)),
        paragraph(tr("The changes of these files are not saved, so the template does not have them:\n\n%1"), unsaved)};
    notes.removeAll(QString());
    return notes.join(u"\n\n"_s);
}

void TemplateCommands::writeTemplate(const Project &project, const QString &name, const QString &directory)
{
    const QPointer<TemplateCommands> self(this);
    const QString folderFile = QDir(m_directories.user).filePath(u"template.xml"_s);
    const QString description = tr("A project like %1.").arg(project.name());
    const QString notes = notesOn(project); // it may be closed during the copy
    const bool hasFolder = QDir().mkpath(m_directories.user)
                           && (QFileInfo::exists(folderFile)
                               || writeTemplateFile(m_directories.user, u"folder"_s, tr("My templates"),
                                                    tr("Templates that were made of your projects.")));
    WorkProgress progress(m_window.dialogParent(), tr("Saving the template..."));
    const CopyOutcome outcome = hasFolder ? saveTemplate(project, {name, description, directory},
                                                         [&](int percent) { return progress.update(percent); })
                                          : CopyOutcome::CannotWrite;
    progress.end();
    if (!self || outcome == CopyOutcome::Cancelled)
        return;
    if (outcome == CopyOutcome::Done)
        return reportTemplate(name, notes);
    warn(tr("The template could not be saved.\n\nPlease make sure that the folder '%1' can be written.")
             .arg(QDir::toNativeSeparators(directory)));
}

void TemplateCommands::reportTemplate(const QString &name, const QString &notes) const
{
    m_window.showMessage(
        tr("The template '%1' was saved. The folder \"My templates\" of the new-project dialog has it.").arg(name));
    if (!notes.isEmpty())
        showInformation(m_window.dialogParent(), notes);
}

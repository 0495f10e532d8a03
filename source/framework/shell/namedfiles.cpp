#include "namedfiles.h"
#include "folderproject.h"
#include "messages.h"
#include "projectcommands.h"
#include "questions.h"
#include "windowservices.h"
#include "workprogress.h"
#include <algorithm>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(NamedFiles)
};

/// Opens in the place of the text editor: a workspace, or what leads to one.
bool isWorkspaceLike(const QString &path)
{
    return QFileInfo(path).isDir() || isWorkspaceFile(path) || isProjectFile(path);
}
} // namespace

NamedFiles::NamedFiles(WindowServices &window, ProjectCommands &projects, QString templates)
    : m_window(window), m_projects(projects), m_templates(std::move(templates))
{}

void NamedFiles::open(const QStringList &paths)
{
    const QPointer<QWidget> window(m_window.dialogParent());
    const auto project = std::ranges::find_if(paths, isWorkspaceLike);
    if (project != paths.end())
        openProjectOf(*project);
    for (const QString &path : paths) {
        if (window && window->isVisible() && !isWorkspaceLike(path)) // it may have been closed during a question
            m_window.openFile(path, true);
    }
}

void NamedFiles::openProjectOf(const QString &path)
{
    if (QFileInfo(path).isDir())
        openDirectory(path);
    else if (isProjectFile(path))
        m_projects.openProject(path, true);
    else
        m_projects.openWorkspace(path, true);
}

void NamedFiles::openDirectory(const QString &directory)
{
    const QPointer<QWidget> window(m_window.dialogParent());
    const QStringList found = openableFiles(directory);
    if (found.isEmpty())
        return offerProject(directory);
    if (found.size() == 1)
        return openProjectOf(found.first());
    QStringList names;
    for (const QString &path : found)
        names.append(QFileInfo(path).fileName());
    const std::optional<QString> choice = askForItem(window, Text::tr("Which of these do you want to open?"), names);
    if (window && choice)
        openProjectOf(QDir(directory).absoluteFilePath(*choice));
}

void NamedFiles::offerProject(const QString &directory)
{
    const QPointer<QWidget> window(m_window.dialogParent());
    const QString shown = QDir::toNativeSeparators(directory);
    const auto answer = showInformation(window,
                                        Text::tr("There is no workspace and no project in the folder '%1'.\n\n"
                                                 "Do you want to create a project with the source files below it?")
                                            .arg(shown),
                                        {QMessageBox::Yes, QMessageBox::No});
    if (!window || answer != QMessageBox::Yes)
        return;
    WorkProgress progress(window, Text::tr("The source files of the folder are searched for..."));
    const QString project = createFolderProject(directory, m_templates, [&progress] { return progress.update(); });
    progress.end();
    if (!window)
        return;
    if (!project.isEmpty())
        m_projects.openProject(project, true);
    else
        showWarning(
            window,
            Text::tr("The project could not be created.\n\nPlease make sure that the folder '%1' can be written.")
                .arg(shown));
}

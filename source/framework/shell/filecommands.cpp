#include "filecommands.h"
#include "activity.h"
#include "disassemblerview.h"
#include "document.h"
#include "largetextview.h"
#include "lastdirectories.h"
#include "messages.h"
#include "newerfile.h"
#include "project.h"
#include "projectsaving.h"
#include "projectworkspace.h"
#include "questions.h"
#include "textfile.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QAction>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int NoticeTime = 5000; // milliseconds

/// The absolute path of a file that may be named relative to the current project's directory.
QString absoluteSource(const Activity &activity, const QString &path)
{
    const Project *project = activity.currentProject();
    return QDir::isRelativePath(path) && project ? QDir::cleanPath(QDir(project->basePath()).absoluteFilePath(path))
                                                 : path;
}

/// Views of these kinds read what is on the screen only: there is no text to print or to save.
bool hasWholeText(View *view)
{
    return view && !qobject_cast<LargeTextView *>(view) && !qobject_cast<DisassemblerView *>(view);
}

} // namespace

bool sourceExists(const Activity &activity, const WindowServices &window, const QString &path)
{
    const QString absolute = absoluteSource(activity, path);
    return !absolute.isEmpty() && (QFileInfo(absolute).isFile() || window.workspace()->findDocument(absolute));
}

FileCommands::FileCommands(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_changeCheck(window)
    , m_recentFiles(u"RecentFiles/File"_s, &window.settings())
{
    m_recentFiles.load();
}

bool FileCommands::openFile(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    const QString absolute = absoluteSource(m_activity, path);
    if (!m_window.workspace()->openDocument(absolute, true))
        return false;
    if (addToRecent)
        m_recentFiles.add(absolute);
    Q_EMIT fileOpened();
    return true;
}

void FileCommands::showSource(const QString &path, int line, int column)
{
    if (!path.isEmpty() && !sourceExists(m_activity, m_window, path))
        return m_window.showMessage(
            tr("The file %1 does not exist").arg(QDir::toNativeSeparators(absoluteSource(m_activity, path))),
            NoticeTime);
    if (!openFile(path, false))
        return;
    m_window.viewManager()->gotoLine(line, true);
    m_window.viewManager()->gotoColumn(column);
}

bool FileCommands::openAndRemember(const QString &path)
{
    if (!m_window.workspace()->openDocument(path, true))
        return false;
    m_recentFiles.add(path);
    Q_EMIT fileOpened();
    return true;
}

void FileCommands::open()
{
    const QStringList paths = askForOpenFiles(
        m_window.dialogParent(),
        {u"openFileDialog"_s, tr("Open File"), m_window.directories().directory(u"Files"_s), m_window.sourceFilter()});
    if (paths.isEmpty())
        return;
    m_window.directories().remember(u"Files"_s, paths.first());
    for (const QString &path : paths)
        openAndRemember(path);
}

void FileCommands::openRecent(int index)
{
    const QString path = m_recentFiles.paths().value(index);
    if (openAndRemember(path))
        return;
    showWarning(m_window.dialogParent(),
                tr("The file could not be opened.\n\nIt will be removed from the Recent Files list."));
    m_recentFiles.remove(path);
}

void FileCommands::close()
{
    m_window.viewManager()->closeCurrentDocument();
}

void FileCommands::closeAll()
{
    m_window.viewManager()->closeAll();
}

void FileCommands::revert()
{
    const QPointer<Document> document = m_window.viewManager()->currentDocument();
    if (!document)
        return;
    const QString path = document->filename();
    if (!m_window.workspace()->hasFile(document) || !mayRevert(path, document->modified()) || !document)
        return;
    m_window.workspace()->reopenDocument(path);
}

/// A command that loses changes is not what Return chooses.
bool FileCommands::mayRevert(const QString &path, bool modified) const
{
    QString question = tr("Are you sure that you want to revert to the saved version of:\n\n%1\n\n").arg(path);
    if (modified)
        question += tr("You will lose your changes that are not saved.");
    const auto preferred = modified ? QMessageBox::Cancel : QMessageBox::Ok;
    return ::showMessage(QMessageBox::Information, m_window.dialogParent(), question,
                         {QMessageBox::Ok, QMessageBox::Cancel}, messageCaption(), preferred)
           == QMessageBox::Ok;
}

void FileCommands::save()
{
    const QPointer<Document> document = m_window.viewManager()->currentDocument();
    if (!document)
        return;
    if (maySave(m_window.dialogParent(), document) && document)
        document->save();
}

void FileCommands::saveAs()
{
    const QPointer<Document> document = m_window.viewManager()->currentDocument();
    if (!document || !hasWholeText(m_window.viewManager()->currentView()))
        return;
    const QFileInfo present(document->filename());
    const QString path = askForSaveFile(m_window.dialogParent(),
                                        {u"saveFileDialog"_s,
                                         tr("Save File"),
                                         present.absolutePath(),
                                         tr("Source Files (*.c *.cpp *.h *.kor);;Python Files (*.py);;All Files (*.*)"),
                                         {},
                                         present.fileName()});
    const QPointer<Document> other =
        document && !path.isEmpty() ? m_window.workspace()->findOther(path, document) : nullptr;
    if (path.isEmpty() || (other && !mayDiscard(other, path)) || !document)
        return;
    if (document->saveAs(path) && other)
        discard(other); // only now: after a failed save, its changes would be nowhere
    m_window.directories().remember(u"Files"_s, path);
}

/// Two documents on one file would overwrite each other's changes.
bool FileCommands::mayDiscard(const Document *other, const QString &path)
{
    const QString question = other->modified()
                                 ? tr("The following file is open and has unsaved changes:\n\n%1\n\n"
                                      "Are you sure that you want to discard them and to overwrite the file?")
                                 : tr("The following file is open:\n\n%1\n\n"
                                      "Are you sure that you want to close it and to overwrite it?");
    return showInformation(m_window.dialogParent(), question.arg(QDir::toNativeSeparators(path)),
                           {QMessageBox::Ok, QMessageBox::Cancel})
           == QMessageBox::Ok;
}

void FileCommands::discard(Document *document)
{
    document->setModified(false); // its views would ask
    m_window.viewManager()->closeDocument(document);
}

/// A function of a plug-in's document may close views.
QList<QPointer<Document>> FileCommands::newerDocuments() const
{
    QList<QPointer<Document>> newer;
    for (const QPointer<View> &view : m_window.viewManager()->views().guarded()) {
        const QPointer<Document> document = view ? view->document() : nullptr;
        if (document && !newer.contains(document) && document->isNewerOnDisk())
            newer.append(document);
    }
    return newer;
}

bool FileCommands::mayOverwriteNewer()
{
    QStringList paths;
    for (const QPointer<Document> &document : newerDocuments()) {
        if (document)
            noteReported(document);
        if (document)
            paths.append(document->filename());
    }
    paths += newerProjectFiles();
    return ::mayOverwriteNewer(m_window.dialogParent(), paths);
}

/// Those that have changes, which saving all would write.
QStringList FileCommands::newerProjectFiles() const
{
    QStringList paths;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project->isModified() && project->isNewerOnDisk())
            paths.append(project->fileName());
    }
    const ProjectWorkspace *workspace = m_activity.workspace();
    if (workspace && workspace->isModified() && workspace->isNewerOnDisk())
        paths.append(workspace->fileName());
    return paths;
}

void FileCommands::viewActivated(View *view)
{
    for (const QString &name : {u"filePrint"_s, u"fileSaveAs"_s}) {
        if (QAction *action = m_window.action(name); action && !hasWholeText(view))
            action->setEnabled(false);
    }
}

void FileCommands::print()
{
    if (View *view = m_window.viewManager()->currentView())
        view->print();
}

void FileCommands::insertFile()
{
    const QString path =
        askForOpenFile(m_window.dialogParent(), {u"insertFileDialog"_s, tr("Insert File"),
                                                 m_window.directories().directory(u"Files"_s), tr("All Files (*.*)")});
    if (path.isEmpty())
        return;
    m_window.directories().remember(u"Files"_s, path);
    if (const std::optional<QByteArray> bytes = readFile(path))
        m_window.viewManager()->insertInCurrent(decodeText(*bytes).text);
    else
        showWarning(m_window.dialogParent(), tr("Could not open file:/n/n%1").arg(path));
}

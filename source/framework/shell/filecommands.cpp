#include "filecommands.h"
#include "activity.h"
#include "document.h"
#include "lastdirectories.h"
#include "messages.h"
#include "project.h"
#include "questions.h"
#include "textfile.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

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
    const Project *project = m_activity.currentProject();
    const QString absolute = QDir::isRelativePath(path) && project
                                 ? QDir::cleanPath(QDir(project->basePath()).absoluteFilePath(path))
                                 : path;
    if (!m_window.workspace()->openDocument(absolute, true))
        return false;
    if (addToRecent)
        m_recentFiles.add(absolute);
    Q_EMIT fileOpened();
    return true;
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
    const QString question = tr("Are you sure that you want to revert to the saved version of:\n\n%1\n\n");
    if (showInformation(m_window.dialogParent(), question.arg(document->filename()),
                        {QMessageBox::Ok, QMessageBox::Cancel})
            == QMessageBox::Ok
        && document)
        m_window.workspace()->reopenDocument(document->filename());
}

void FileCommands::save()
{
    const QPointer<Document> document = m_window.viewManager()->currentDocument();
    if (!document)
        return;
    if (document->isNewerOnDisk()) {
        m_changeCheck.noteReported(document);
        const QString question = tr("A newer version of this file exists on disk:\n\n%1\n\n"
                                    "Are you sure that you want to overwrite the newer version?");
        if (showInformation(m_window.dialogParent(), question.arg(document->filename()),
                            {QMessageBox::Ok, QMessageBox::Cancel})
            != QMessageBox::Ok)
            return;
    }
    if (document)
        document->save();
}

void FileCommands::saveAs()
{
    const QPointer<Document> document = m_window.viewManager()->currentDocument();
    if (!document)
        return;
    const QString path = askForSaveFile(
        m_window.dialogParent(), {u"saveFileDialog"_s, tr("Save File"), QFileInfo(document->filename()).absolutePath(),
                                  u"Source Files (*.c *.cpp *.h *.kor);;Python Files (*.py);;All Files (*.*)"_s});
    if (path.isEmpty() || !document)
        return;
    document->saveAs(path);
    m_window.directories().remember(u"Files"_s, path);
}

QList<Document *> FileCommands::newerDocuments() const
{
    QList<Document *> newer;
    for (const View *view : m_window.viewManager()->views()) {
        Document *document = view->document();
        if (document->isNewerOnDisk() && !newer.contains(document))
            newer.append(document);
    }
    return newer;
}

bool FileCommands::mayOverwriteNewer()
{
    QStringList paths;
    for (Document *document : newerDocuments()) {
        m_changeCheck.noteReported(document);
        paths.append(document->filename());
    }
    const QString question = tr("Newer versions of the following files exists on disk:\n\n%1\n\n"
                                "Are you sure that you want to overwrite them?");
    return paths.isEmpty()
           || showInformation(m_window.dialogParent(), question.arg(paths.join(u'\n')),
                              {QMessageBox::Ok, QMessageBox::Cancel})
                  == QMessageBox::Ok;
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
                                                 m_window.directories().directory(u"Files"_s), u"All Files (*.*)"_s});
    if (path.isEmpty())
        return;
    m_window.directories().remember(u"Files"_s, path);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        m_window.viewManager()->insertInCurrent(decodeText(file.readAll()).text);
    else
        showWarning(m_window.dialogParent(), tr("Could not open file:/n/n%1").arg(path));
}

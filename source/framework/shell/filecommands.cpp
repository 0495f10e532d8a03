#include "filecommands.h"
#include "document.h"
#include "filechangecheck.h"
#include "lastdirectories.h"
#include "messages.h"
#include "questions.h"
#include "recentfilelist.h"
#include "textfile.h"
#include "varnelassert.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

FileCommands::FileCommands(Context context, QObject *parent) : QObject(parent), m_context(std::move(context)) {}

bool FileCommands::openFile(const QString &path, bool addToRecent)
{
    VARNEL_ASSERT(!path.isEmpty());
    if (path.isEmpty())
        return false;
    const QString directory = m_context.projectDirectory();
    const QString absolute = QDir::isRelativePath(path) && !directory.isEmpty()
                                 ? QDir::cleanPath(QDir(directory).absoluteFilePath(path))
                                 : path;
    if (!m_context.workspace->openDocument(absolute, true))
        return false;
    if (addToRecent)
        m_context.recentFiles->add(absolute);
    Q_EMIT fileOpened();
    return true;
}

bool FileCommands::openAndRemember(const QString &path)
{
    if (!m_context.workspace->openDocument(path, true))
        return false;
    m_context.recentFiles->add(path);
    Q_EMIT fileOpened();
    return true;
}

void FileCommands::open()
{
    const QStringList paths =
        askForOpenFiles(m_context.window, {u"openFileDialog"_s, tr("Open File"),
                                           m_context.directories->directory(u"Files"_s), m_context.filter()});
    if (paths.isEmpty())
        return;
    m_context.directories->remember(u"Files"_s, paths.first());
    for (const QString &path : paths)
        openAndRemember(path);
}

void FileCommands::openRecent(int index)
{
    const QString path = m_context.recentFiles->paths().value(index);
    if (openAndRemember(path))
        return;
    showWarning(m_context.window,
                tr("The file could not be opened.\n\nIt will be removed from the Recent Files list."));
    m_context.recentFiles->remove(path);
}

void FileCommands::close()
{
    m_context.viewManager->closeCurrentDocument();
}

void FileCommands::closeAll()
{
    m_context.viewManager->closeAll();
}

void FileCommands::revert()
{
    const QPointer<Document> document = m_context.viewManager->currentDocument();
    if (!document)
        return;
    const QString question = tr("Are you sure that you want to revert to the saved version of:\n\n%1\n\n");
    if (showInformation(m_context.window, question.arg(document->filename()), {QMessageBox::Ok, QMessageBox::Cancel})
            == QMessageBox::Ok
        && document)
        m_context.workspace->reopenDocument(document->filename());
}

void FileCommands::save()
{
    const QPointer<Document> document = m_context.viewManager->currentDocument();
    if (!document)
        return;
    if (document->isNewerOnDisk()) {
        m_context.changeCheck->noteTold(document);
        const QString question = tr("A newer version of this file exists on disk:\n\n%1\n\n"
                                    "Are you sure that you want to overwrite the newer version?");
        if (showInformation(m_context.window, question.arg(document->filename()),
                            {QMessageBox::Ok, QMessageBox::Cancel})
            != QMessageBox::Ok)
            return;
    }
    if (document)
        document->save();
}

void FileCommands::saveAs()
{
    const QPointer<Document> document = m_context.viewManager->currentDocument();
    if (!document)
        return;
    const QString path = askForSaveFile(
        m_context.window, {u"saveFileDialog"_s, tr("Save File"), QFileInfo(document->filename()).absolutePath(),
                           u"Source Files (*.c *.cpp *.h *.kor);;Python Files (*.py);;All Files (*.*)"_s});
    if (path.isEmpty() || !document)
        return;
    document->saveAs(path);
    m_context.directories->remember(u"Files"_s, path);
}

QList<Document *> FileCommands::newerDocuments() const
{
    QList<Document *> newer;
    for (const View *view : m_context.viewManager->views()) {
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
        m_context.changeCheck->noteTold(document);
        paths.append(document->filename());
    }
    const QString question = tr("Newer versions of the following files exists on disk:\n\n%1\n\n"
                                "Are you sure that you want to overwrite them?");
    return paths.isEmpty()
           || showInformation(m_context.window, question.arg(paths.join(u'\n')), {QMessageBox::Ok, QMessageBox::Cancel})
                  == QMessageBox::Ok;
}

void FileCommands::print()
{
    if (View *view = m_context.viewManager->currentView())
        view->print();
}

void FileCommands::insertFile()
{
    const QString path =
        askForOpenFile(m_context.window, {u"insertFileDialog"_s, tr("Insert File"),
                                          m_context.directories->directory(u"Files"_s), u"All Files (*.*)"_s});
    if (path.isEmpty())
        return;
    m_context.directories->remember(u"Files"_s, path);
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        m_context.viewManager->insertInCurrent(decodeText(file.readAll()).text);
    else
        showWarning(m_context.window, tr("Could not open file:/n/n%1").arg(path));
}

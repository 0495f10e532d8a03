#include "activity.h"
#include "callplugin.h"
#include "document.h"
#include "documenttemplate.h"
#include "lastdirectories.h"
#include "newfiledialog.h"
#include "project.h"
#include "templatecommands.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QDir>
#include <QFileInfo>

// The part of TemplateCommands for new files.

using namespace Qt::StringLiterals;

namespace {
DocumentTemplate *kindOf(const Workspace &workspace, const QString &path)
{
    for (DocumentTemplate *each : workspace.templates()) {
        if (askPlugin<&DocumentTemplate::canCreate>(each) && askPlugin<&DocumentTemplate::canOpen>(each, path))
            return each;
    }
    return nullptr;
}

void fill(TextView *view, const NewFile &file)
{
    view->insertText(file.text);
    QTextCursor cursor(view->textDocument()->wholeText());
    cursor.setPosition(file.cursor);
    view->currentEdit()->setTextCursor(cursor);
}
} // namespace

void TemplateCommands::fileNew()
{
    if (m_dialog)
        return m_dialog->raise(); // a script asks while it is open
    const QPointer<TemplateCommands> self(this);
    const QPointer<NewFileDialog> dialog =
        new NewFileDialog(*m_window.workspace(), m_window.dialogParent(), u"newFileDialog"_s);
    m_dialog = dialog;
    dialog->addFileTemplates(
        findFileTemplates({m_directories.files, m_directories.userFiles}),
        [this](const FileTemplate &each) { return picture(each.directory, each.icon, u"textfile.png"_s); });
    dialog->setLocation(m_window.directories().directory(u"Files"_s));
    dialog->setProjectOpen(m_activity.currentProject());
    connect(&m_activity, &Activity::workspaceClosed, dialog, [dialog] { dialog->setProjectOpen(false); });

    const int result = dialog->exec();
    if (!self || !dialog)
        return; // the window was closed meanwhile
    const std::unique_ptr<NewFileDialog> owner(dialog);
    m_dialog = nullptr;
    if (result == QDialog::Accepted)
        createFiles(*dialog);
}

void TemplateCommands::createFiles(const NewFileDialog &choice)
{
    const QString path = QDir::cleanPath(QFileInfo(choice.filePath()).absoluteFilePath());
    QStringList paths = {path};
    const std::optional<FileTemplate> chosen = choice.fileTemplate();
    if (!closeDocument(path) || !(chosen ? createFromTemplate(*chosen, path, &paths) : createDocument(choice, path)))
        return;
    m_window.directories().remember(u"Files"_s, path);
    Project *project = m_activity.currentProject();
    if (!choice.addToProject() || !project)
        return;
    paths.removeIf([project](const QString &each) { return project->containsFile(each); });
    const bool wasSaved = !project->isModified() && project->openedOK() && !project->isNewerOnDisk();
    project->addFiles(paths, nullptr);
    if (wasSaved)
        project->save(); // the text is recovered after a crash; if this fails, it is saved later, with a message
}

/// A document of a file that is to be overwritten must not be saved over the new one. False if the user refuses.
bool TemplateCommands::closeDocument(const QString &path)
{
    if (Document *document = m_window.workspace()->findDocument(path))
        m_window.viewManager()->closeDocument(document);
    return !m_window.workspace()->findDocument(path);
}

bool TemplateCommands::createDocument(const NewFileDialog &choice, const QString &path)
{
    DocumentTemplate *kind = choice.documentTemplate();
    return kind && m_window.workspace()->newDocument(kind, path);
}

/// Opens the files of a template, the first one last and in front. The others do not replace files that exist.
bool TemplateCommands::createFromTemplate(const FileTemplate &chosen, const QString &path, QStringList *paths)
{
    const QList<NewFile> files = filesOf(chosen, path);
    QStringList present;
    for (auto file = files.crbegin(); file != files.crend(); ++file) {
        if (file->path != path && (QFileInfo::exists(file->path) || m_window.workspace()->findDocument(file->path))) {
            present.append(QDir::toNativeSeparators(file->path));
            continue;
        }
        DocumentTemplate *kind = kindOf(*m_window.workspace(), file->path);
        if (!kind || !m_window.workspace()->newDocument(kind, file->path))
            return false;
        if (auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView()))
            fill(view, *file);
        if (file->path != path)
            paths->append(file->path);
    }
    if (!present.isEmpty())
        m_window.showMessage(tr("This file exists already and was not changed: %1").arg(present.join(u", "_s)));
    if (files.isEmpty())
        warn(tr("The files of the template '%1' cannot be read.").arg(chosen.name));
    return !files.isEmpty();
}

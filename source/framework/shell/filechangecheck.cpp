#include "filechangecheck.h"
#include "document.h"
#include "messages.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QDir>
#include <QFileInfo>
#include <QScopedValueRollback>

void FileChangeCheck::run()
{
    if (m_running)
        return; // a message box gives the window the focus back
    const QScopedValueRollback<bool> running(m_running, true);
    QList<QPointer<View>> views;
    for (View *view : m_window.viewManager()->views())
        views.append(view);
    for (const QPointer<View> &view : std::as_const(views)) {
        if (!view || !isNews(view->document()))
            continue;
        noteTold(view->document());
        const QString path = view->document()->filename();
        const QString question =
            QObject::tr("%1\n\nThis file has been modified outside of the editor. Do you want to reload it?")
                .arg(QDir::toNativeSeparators(path));
        if (showMessage(QMessageBox::Question, m_window.dialogParent(), question, {QMessageBox::Yes, QMessageBox::No})
            == QMessageBox::Yes)
            m_window.workspace()->reopenDocument(path);
    }
}

void FileChangeCheck::noteTold(Document *document)
{
    const QString path = document->filename();
    m_fileTimes.insert(path, QFileInfo(path).lastModified());
}

bool FileChangeCheck::isNews(Document *document) const
{
    const QString path = document->filename();
    return document->isNewerOnDisk() && m_fileTimes.value(path) != QFileInfo(path).lastModified();
}

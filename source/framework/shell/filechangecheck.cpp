#include "filechangecheck.h"
#include "document.h"
#include "lostfile.h"
#include "messages.h"
#include "newerfile.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QDir>
#include <QScopedValueRollback>

void FileChangeCheck::run()
{
    if (m_running)
        return; // called again when a message box closes and the window becomes active
    const QScopedValueRollback<bool> running(m_running, true);
    noticeLostFiles();
    QList<QPointer<View>> views;
    for (View *view : m_window.viewManager()->views())
        views.append(view);
    for (const QPointer<View> &view : std::as_const(views)) {
        if (!view || !hasUnreportedFile(view->document()))
            continue;
        noteReported(view->document());
        const QString path = view->document()->filename();
        if (mayReload(path, view->document()->modified()))
            m_window.workspace()->reopenDocument(path);
    }
}

void FileChangeCheck::noticeLostFiles()
{
    QStringList lost;
    for (const QPointer<View> &view : m_window.viewManager()->views().guarded()) {
        if (view && noticeLostFile(view->document()))
            lost.append(QDir::toNativeSeparators(view->document()->filename()));
    }
    if (!lost.isEmpty())
        m_window.showMessage(
            QObject::tr("Deleted outside of the editor, still open here: %1").arg(lost.join(QStringLiteral(", "))));
}

/// A reload that would lose changes is not what Return chooses.
bool FileChangeCheck::mayReload(const QString &path, bool modified) const
{
    const QString question =
        modified ? QObject::tr("%1\n\nThis file has been modified outside of the editor. Do you want to reload it, "
                               "and to lose your changes that are not saved?")
                 : QObject::tr("%1\n\nThis file has been modified outside of the editor. Do you want to reload it?");
    const auto preferred = modified ? QMessageBox::No : QMessageBox::Yes;
    return showMessage(QMessageBox::Question, m_window.dialogParent(), question.arg(QDir::toNativeSeparators(path)),
                       {QMessageBox::Yes, QMessageBox::No}, messageCaption(), preferred)
           == QMessageBox::Yes;
}

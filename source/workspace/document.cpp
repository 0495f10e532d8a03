#include "document.h"
#include "messages.h"
#include "varnelassert.h"

Document::Document(DocumentTemplate *docTemplate) : m_template(docTemplate)
{
    VARNEL_ASSERT(docTemplate);
}

bool Document::isNewerOnDisk()
{
    return false;
}

void Document::setModified(bool modified)
{
    if (m_modified == modified)
        return;
    m_modified = modified;
    Q_EMIT documentModified(modified);
}

void Document::notifyViews(View *source, bool full)
{
    Q_EMIT updateViews(source, full);
}

bool mayOverwriteNewer(QWidget *parent, const QString &path)
{
    const QString question = Document::tr("A newer version of this file exists on disk:\n\n%1\n\n"
                                          "Are you sure that you want to overwrite the newer version?");
    return showInformation(parent, question.arg(path), {QMessageBox::Ok, QMessageBox::Cancel}) == QMessageBox::Ok;
}

QMessageBox::StandardButton showDocumentWarning(const QString &text, const QList<QMessageBox::StandardButton> &buttons)
{
    return showWarning(messageParent(), text, buttons);
}

#include "helpdocument.h"
#include "wholefile.h"
#include <cerrno>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

HelpDocument::HelpDocument(DocumentTemplate *docTemplate) : Document(docTemplate) {}

QString HelpDocument::title()
{
    return tr("Help");
}

bool HelpDocument::open(const QString &filename)
{
    const QFileInfo file(filename);
    const QString native = QDir::toNativeSeparators(filename);
    if (!file.exists()) {
        const QString question = tr("The following file does not exist:\n%1\n\nDo you want to create it?").arg(native);
        const QPointer<HelpDocument> self(this);
        return showDocumentWarning(question, {QMessageBox::Yes, QMessageBox::No}) == QMessageBox::Yes && self
               && create(filename);
    }
    if (!file.isFile() || !QFile(filename).open(QIODevice::ReadOnly)) {
        showDocumentWarning(tr("The following file could not be opened:\n%1").arg(native));
        return false;
    }
    m_filename = filename;
    m_lastModified = file.lastModified();
    return true;
}

bool HelpDocument::create(const QString &filename)
{
    m_filename = filename;
    return true;
}

bool HelpDocument::saveAs(const QString &filename)
{
    const std::optional<QByteArray> page = readFile(m_filename);
    errno = 0;
    if (page && writeFileSafely(filename, *page))
        return true;
    const QString reason = otherWriteFailure(errno);
    showDocumentWarning(tr("The following file could not be written:\n%1\n\nPlease check that this file is not "
                           "read-only and you have permission to write to it.")
                            .arg(QDir::toNativeSeparators(filename))
                        + reason);
    return false;
}

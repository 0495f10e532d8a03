#include "lostfile.h"
#include "swapfile.h"
#include "textdocument.h"
#include <QFileInfo>

namespace {
LostFile *lostFileOf(const Document *document)
{
    return document->findChild<LostFile *>(QString(), Qt::FindDirectChildrenOnly);
}
} // namespace

LostFile::LostFile(TextDocument *document)
    : QObject(document), m_document(document), m_cleanRevision(document->modified() ? -1 : document->text()->revision())
{
    connect(document, &Document::documentModified, this, [this](bool modified) { m_settled = m_settled || !modified; });
}

/// If another program has written a newer text and the user has changed nothing, the document becomes what it was: one
/// whose file was modified outside.
void LostFile::takeBack()
{
    setParent(nullptr);
    deleteLater();
    if (m_settled || m_document->adoptFile())
        return;
    const bool isUnchanged = m_cleanRevision == m_document->text()->revision();
    if (isUnchanged && m_document->isNewerOnDisk())
        m_document->setModified(false);
    else
        Q_EMIT m_document->documentModified(true); // views show that the file exists
}

bool noticeLostFile(Document *document)
{
    auto *text = qobject_cast<TextDocument *>(document);
    if (!text || !text->lastModified().isValid())
        return false; // there was no file yet
    LostFile *lost = lostFileOf(text);
    const bool exists = QFileInfo::exists(text->filename());
    if (lost && exists)
        lost->takeBack();
    if (lost || exists)
        return false;
    new LostFile(text);
    if (text->swapFile())
        text->swapFile()->textChanged();
    if (text->modified())
        Q_EMIT text->documentModified(true); // views show the title
    text->setModified(true);
    return true;
}

bool hasLostFile(const Document *document)
{
    const LostFile *lost = lostFileOf(document);
    return lost && !lost->isSettled() && document->modified();
}

#include "largetextdocumenttemplate.h"
#include "largetextdocument.h"
#include "largetextview.h"
#include "messages.h"
#include "textdocumenttemplate.h"
#include "textfile.h"
#include <QFileInfo>
#include <QPointer>

LargeTextDocumentTemplate::LargeTextDocumentTemplate(const QIcon &icon, const FormatTable *formats, QObject *parent)
    : DocumentTemplate({}, {}, icon, parent), m_formats(formats)
{}

bool LargeTextDocumentTemplate::canOpen(const QString &)
{
    return true;
}

Document *LargeTextDocumentTemplate::createDocument()
{
    return new LargeTextDocument(this);
}

View *LargeTextDocumentTemplate::createView(Document *document)
{
    const QPointer<Document> guarded(document);
    const bool isSmall = QFileInfo(document->filename()).size() <= TextDocumentTemplate::LargestFile;
    const QString message =
        isSmall && isBinaryFile(document->filename())
            ? tr("The file contains NUL bytes, so it is probably not a text.\n\nIt will be opened read-only.")
            : tr("The file is too large to open for editing.\n\nIt will be opened read-only.");
    showInformation(messageParent(), message, {QMessageBox::Ok}, tr("File Open"));
    if (!guarded)
        return nullptr;
    auto *view = new LargeTextView(static_cast<LargeTextDocument *>(document), m_formats, m_host);
    view->setWindowIcon(icon());
    return view;
}

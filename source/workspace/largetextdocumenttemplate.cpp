#include "largetextdocumenttemplate.h"
#include "largetextdocument.h"
#include "largetextview.h"
#include "messages.h"
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
    showInformation(messageParent(), tr("The file is too large to open for editing.\n\nIt will be opened read-only."),
                    {QMessageBox::Ok}, tr("File Open"));
    if (!guarded)
        return nullptr;
    auto *view = new LargeTextView(static_cast<LargeTextDocument *>(document), m_formats, m_host);
    view->setWindowIcon(icon());
    return view;
}

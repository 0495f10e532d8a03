#include "disassemblerdocumenttemplate.h"
#include "disassemblerdocument.h"
#include "disassemblerview.h"
#include "programplace.h"

DisassemblerDocumentTemplate::DisassemblerDocumentTemplate(const QString &name, const QString &description,
                                                           const QIcon &icon, const FormatTable *formats,
                                                           QObject *parent)
    : DocumentTemplate(name, description, icon, parent), m_formats(formats)
{}

bool DisassemblerDocumentTemplate::canOpen(const QString &filename)
{
    return isDisassemblyName(filename);
}

Document *DisassemblerDocumentTemplate::createDocument()
{
    return new DisassemblerDocument(this);
}

View *DisassemblerDocumentTemplate::createView(Document *document)
{
    auto *view = new DisassemblerView(document, m_formats, m_host);
    view->setWindowIcon(icon());
    return view;
}

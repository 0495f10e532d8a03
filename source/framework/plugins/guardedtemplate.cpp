#include "guardedtemplate.h"
#include "callplugin.h"
#include "guardeddocument.h"
#include "guardedview.h"
#include "textdocumenttemplate.h"

GuardedTemplate::GuardedTemplate(std::unique_ptr<DocumentTemplate> inner)
    : DocumentTemplate(inner->name(), inner->description(), inner->icon()), m_inner(std::move(inner))
{}

GuardedTemplate::~GuardedTemplate() = default;

bool GuardedTemplate::canCreate()
{
    return askPlugin<&DocumentTemplate::canCreate>(m_inner);
}

bool GuardedTemplate::canOpen(const QString &filename)
{
    return askPlugin<&DocumentTemplate::canOpen>(m_inner, filename);
}

Document *GuardedTemplate::createDocument()
{
    std::unique_ptr<Document> document(askPlugin<&DocumentTemplate::createDocument>(m_inner));
    return document ? new GuardedDocument(this, std::move(document)) : nullptr;
}

View *GuardedTemplate::createView(Document *document)
{
    auto *guarded = static_cast<GuardedDocument *>(document);
    const auto inUse = guarded->use();
    View *view = askPlugin<&DocumentTemplate::createView>(m_inner, guarded->inner());
    return view ? new GuardedView(guarded, view) : nullptr;
}

QString GuardedTemplate::extension()
{
    return askPlugin<&DocumentTemplate::extension>(m_inner);
}

std::unique_ptr<DocumentTemplate> guardedTemplate(std::unique_ptr<DocumentTemplate> inner)
{
    if (!inner || qobject_cast<TextDocumentTemplate *>(inner.get()))
        return inner;
    return std::make_unique<GuardedTemplate>(std::move(inner));
}

#pragma once
#include "documenttemplate.h"
#include "helphost.h"

/// The kind of document for HTML files.
class HelpDocumentTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    using DocumentTemplate::DocumentTemplate;

    /// Until this is called, pages can only link to other pages.
    void setSite(const HelpSite &site) { m_site = site; }

    [[nodiscard]] bool canOpen(const QString &filename) override;
    [[nodiscard]] Document *createDocument() override;
    [[nodiscard]] View *createView(Document *document) override;
    [[nodiscard]] QString extension() override;

private:
    HelpSite m_site;
};

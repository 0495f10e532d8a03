#pragma once
#include "documenttemplate.h"
#include <memory>

/// Stands for the template of a plug-in: its documents and views are a GuardedDocument and a GuardedView, so that the
/// program never calls those of the plug-in itself, which may throw.
class GuardedTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    explicit GuardedTemplate(std::unique_ptr<DocumentTemplate> inner);
    ~GuardedTemplate() override;

    bool canCreate() override;
    bool canOpen(const QString &filename) override;
    Document *createDocument() override; ///< Null if the plug-in creates none; so is a view.
    View *createView(Document *document) override;
    QString extension() override;

private:
    const std::unique_ptr<DocumentTemplate> m_inner;
};

/// The template that stands for @p inner, which may be null. A template of text documents represents itself: its
/// documents and views are those of the program, which know them by their types.
[[nodiscard]] std::unique_ptr<DocumentTemplate> guardedTemplate(std::unique_ptr<DocumentTemplate> inner);

#pragma once
#include "documenttemplate.h"
#include "syntaxhighlighter.h"
class EditorHost;

/// The kind of document that shows the instructions of a program that is debugged.
class DisassemblerDocumentTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    /// @p formats may be null; it outlives the documents.
    DisassemblerDocumentTemplate(const QString &name, const QString &description, const QIcon &icon,
                                 const FormatTable *formats, QObject *parent = nullptr);

    /// Where the views get their pictures from; it must outlive them. They do without if there is none.
    void setEditorHost(EditorHost *host) { m_host = host; }

    [[nodiscard]] bool canOpen(const QString &filename) override;
    [[nodiscard]] Document *createDocument() override;
    [[nodiscard]] View *createView(Document *document) override;
    [[nodiscard]] QString extension() override { return {}; }

private:
    const FormatTable *const m_formats;
    EditorHost *m_host = nullptr;
};

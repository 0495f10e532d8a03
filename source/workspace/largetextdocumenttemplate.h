#pragma once
#include "documenttemplate.h"
#include "syntaxhighlighter.h"
class EditorHost;

/// The kind of document that takes every file which no other kind has taken: those that are too large for the editor,
/// and those that are not texts.
class LargeTextDocumentTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    /// @p formats may be null; it outlives the documents.
    LargeTextDocumentTemplate(const QIcon &icon, const FormatTable *formats, QObject *parent = nullptr);

    /// Where the views get their pictures from; it must outlive them. They do without if there is none.
    void setEditorHost(EditorHost *host) { m_host = host; }
    [[nodiscard]] EditorHost *editorHost() const { return m_host; }
    [[nodiscard]] const FormatTable *formats() const { return m_formats; }

    [[nodiscard]] bool canOpen(const QString &filename) override;
    [[nodiscard]] Document *createDocument() override;
    /// Shows a message why the file cannot be edited, for each view. Null if the document was deleted after
    /// that.
    [[nodiscard]] View *createView(Document *document) override;
    [[nodiscard]] QString extension() override { return {}; }

private:
    const FormatTable *const m_formats;
    EditorHost *m_host = nullptr;
};

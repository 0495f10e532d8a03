#pragma once
#include "objectlist.h"
#include <QObject>
class Document;
class DocumentTemplate;
class TextDocument;
class ViewManager;
struct TextFileFormat;

/// Manages the open documents, and selects the kind of document that opens a file.
class Workspace : public QObject
{
    Q_OBJECT
public:
    explicit Workspace(QObject *parent = nullptr);
    ~Workspace() override;

    /// Must be called before the first document is opened. The workspace does not own the manager.
    void setViewManager(ViewManager *viewManager);

    /// Appends @p docTemplate and takes ownership. Templates are tried in the order in which they were added.
    void addTemplate(DocumentTemplate *docTemplate);
    [[nodiscard]] const QList<DocumentTemplate *> &templates() const { return m_templates; }
    [[nodiscard]] const QList<Document *> &documents() const { return m_documents; }

    /// Opens @p filename, or activates its first view if it is open; @p activate sets the focus to the view.
    bool openDocument(const QString &filename, bool activate);
    /// The document @p filename: the open one, otherwise the file, otherwise a new document without a question. Null if
    /// it cannot be opened.
    Document *openOrCreate(const QString &filename);
    /// Reloads an open document into a new view in the place of the old one. On failure the old one is unchanged. The
    /// name is passed by value, because the document that owns it is deleted.
    bool reopenDocument(QString filename);
    /// False, after a message, if the file of a text does not exist: its text may be the only copy left.
    [[nodiscard]] bool hasFile(Document *doc) const;
    /// Shows a page in the only help document.
    bool openHelp(const QString &filename);
    bool newDocument(DocumentTemplate *docTemplate, const QString &filename);

    /// Saves every document; continues after a failure. Returns whether all documents were saved.
    bool saveAll(bool onlyModified);
    void addDocument(Document *doc);
    void closeCurrentDocument();
    void closeAll();
    /// The first document with exactly that name, or null.
    [[nodiscard]] Document *findDocument(const QString &filename) const;
    /// Another document than @p document on the file that @p filename would be saved to, or null.
    [[nodiscard]] Document *findOther(const QString &filename, const Document *document) const;
    [[nodiscard]] bool anyModified() const;

Q_SIGNALS:
    /// A document was reloaded and has lost its markers.
    void documentReopened();
    /// A save has changed the encoding or the line ends of a file, which had the format @p before.
    void fileConverted(TextDocument *document, const TextFileFormat &before);
    void modificationChanged(); ///< A document was modified, saved or closed.

private Q_SLOTS:
    void documentDestroyed(QObject *doc);

private:
    enum class Placement { Append, InPlace };
    using Loader = bool (Document::*)(const QString &);

    [[nodiscard]] DocumentTemplate *templateFor(const QString &filename, const char *inherits) const;
    /// A loaded document without a view, or null.
    static std::unique_ptr<Document> create(DocumentTemplate *docTemplate, Loader loader, const QString &filename);
    bool load(DocumentTemplate *docTemplate, Loader loader, const QString &filename, bool activate);
    bool show(DocumentTemplate *docTemplate, std::unique_ptr<Document> loaded, bool activate, Placement placement);

    QList<DocumentTemplate *> m_templates;
    ObjectList<Document> m_documents;
    QPointer<ViewManager> m_viewManager;
};

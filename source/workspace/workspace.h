#pragma once
#include "objectlist.h"
#include <QObject>
class Document;
class DocumentTemplate;
class ViewManager;

/// The document manager: which documents are open, and which kind of document opens a file.
class Workspace : public QObject
{
    Q_OBJECT
public:
    explicit Workspace(QObject *parent = nullptr);
    ~Workspace() override;

    /// Must be called before the first document is opened. The workspace does not own the manager.
    void setViewManager(ViewManager *viewManager);

    /// Appends @p docTemplate and takes it over. Templates are asked in the order of their addition.
    void addTemplate(DocumentTemplate *docTemplate);
    [[nodiscard]] const QList<DocumentTemplate *> &templates() const { return m_templates; }
    [[nodiscard]] const QList<Document *> &documents() const { return m_documents; }

    /// Opens @p filename, or brings its first view to the front if it is open; @p activate gives the view the focus.
    bool openDocument(const QString &filename, bool activate);
    /// The document @p filename: one that is open, or else its file, or else a new one, about which nobody is asked.
    /// Null if it cannot be opened.
    Document *openOrCreate(const QString &filename);
    /// Loads an open document anew, into a new view that takes the old one's place. If that fails, the old one stays as
    /// it is. The name is taken by value: the document that owned it dies on the way.
    bool reopenDocument(QString filename);
    /// Shows a page in the one help document.
    bool openHelp(const QString &filename);
    bool newDocument(DocumentTemplate *docTemplate, const QString &filename);

    /// Saves every document, failures notwithstanding. Returns whether all saves succeeded.
    bool saveAll(bool onlyModified);
    void addDocument(Document *doc);
    void closeCurrentDocument();
    void closeAll();
    /// The first document with exactly that name, or null.
    [[nodiscard]] Document *findDocument(const QString &filename) const;
    [[nodiscard]] bool anyModified() const;

Q_SIGNALS:
    /// A document was loaded anew, without the markers that its lines had.
    void documentReopened();

private:
    enum class Placement { Append, InPlace };
    using Loader = bool (Document::*)(const QString &);

    void documentDestroyed(QObject *doc);
    [[nodiscard]] DocumentTemplate *templateFor(const QString &filename, const char *inherits) const;
    /// A loaded document without a view, or null.
    static std::unique_ptr<Document> create(DocumentTemplate *docTemplate, Loader loader, const QString &filename);
    bool load(DocumentTemplate *docTemplate, Loader loader, const QString &filename, bool activate);
    bool show(DocumentTemplate *docTemplate, std::unique_ptr<Document> loaded, bool activate, Placement placement);

    QList<DocumentTemplate *> m_templates;
    ObjectList<Document> m_documents;
    QPointer<ViewManager> m_viewManager;
};

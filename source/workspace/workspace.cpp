#include "workspace.h"
#include "callplugin.h"
#include "document.h"
#include "documenttemplate.h"
#include "lostfile.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textfile.h"
#include "varnelassert.h"
#include "view.h"
#include "viewmanager.h"
#include "viewplace.h"
#include <QDir>
#include <QFileInfo>

namespace {
void warnNotOpened(const QString &filename)
{
    showDocumentWarning(
        Workspace::tr("The following file could not be opened:\n%1").arg(QDir::toNativeSeparators(filename)));
}

QList<QPointer<View>> guardedViews(const QList<View *> &views, const Document *document)
{
    QList<QPointer<View>> guarded;
    for (View *view : views) {
        if (view->document() == document)
            guarded.append(view);
    }
    return guarded;
}

/// Null if no help page is open.
Document *helpDocument(const ObjectList<Document> &documents)
{
    const auto isHelp = [](Document *doc) { return doc->inherits("HelpDocument"); };
    const auto found = std::find_if(documents.cbegin(), documents.cend(), isHelp);
    return found == documents.cend() ? nullptr : *found;
}

/// One name for each file, whatever links lead to it. The file itself may be missing.
QString uniqueName(const QString &filename)
{
    const QFileInfo file(filename);
    if (file.exists())
        return file.canonicalFilePath();
    return file.dir().exists() ? file.dir().canonicalPath() + u'/' + file.fileName() : filename;
}
} // namespace

Workspace::Workspace(QObject *parent) : QObject(parent) {}

Workspace::~Workspace()
{
    if (!m_documents.isEmpty())
        qWarning("Workspace::~Workspace: documents still exist");
    qDeleteAll(m_templates);
}

void Workspace::setViewManager(ViewManager *viewManager)
{
    m_viewManager = viewManager;
}

void Workspace::addTemplate(DocumentTemplate *docTemplate)
{
    m_templates.append(docTemplate);
}

bool Workspace::openDocument(const QString &filename, bool activate)
{
    VARNEL_ASSERT(filename.length() > 0);
    if (Document *doc = findDocument(filename)) {
        m_viewManager->activateDocument(doc, activate);
        return true;
    }
    DocumentTemplate *docTemplate = templateFor(filename, "DocumentTemplate");
    if (docTemplate && docTemplate->inherits("HelpDocumentTemplate") && helpDocument(m_documents))
        return openHelp(filename); // there is one document for all help pages
    return docTemplate && load(docTemplate, &Document::open, filename, activate);
}

Document *Workspace::openOrCreate(const QString &filename)
{
    const auto create = [this, &filename] {
        DocumentTemplate *docTemplate = templateFor(filename, "DocumentTemplate");
        return docTemplate && newDocument(docTemplate, filename);
    };
    const bool exists = findDocument(filename) || QFileInfo::exists(filename);
    const bool opened = exists ? openDocument(filename, true) : create();
    return opened ? findDocument(filename) : nullptr;
}

bool Workspace::reopenDocument(QString filename) // NOLINT(performance-unnecessary-value-param): its owner is deleted
{
    const QPointer<Document> doc = findDocument(filename);
    if (!doc || !hasFile(doc))
        return false;
    DocumentTemplate *docTemplate = templateFor(filename, "DocumentTemplate");
    std::unique_ptr<Document> loaded = docTemplate ? create(docTemplate, &Document::open, filename) : nullptr;
    if (!loaded || !doc)
        return false;        // the open document may be the only copy left
    doc->setModified(false); // otherwise its last view would ask
    m_viewManager->activateDocument(doc, true);
    const QPointer<Document> fresh(loaded.get());
    const QPointer<View> active = m_viewManager->currentView();
    QPointer<View> activate;
    for (const QPointer<View> &old : guardedViews(m_viewManager->arrangedViews(), doc)) {
        if (!old)
            continue;
        const bool wasActive = old == active;
        const ViewPlace place = placeOf(old);
        old->close();
        const bool shown = loaded ? show(docTemplate, std::move(loaded), true, Placement::InPlace)
                                  : fresh && m_viewManager->addFurtherViewInPlace(fresh);
        if (!shown)
            break;
        restorePlace(m_viewManager->currentView(), place);
        if (wasActive)
            activate = m_viewManager->currentView();
    }
    if (!fresh)
        return false;
    if (activate && activate != m_viewManager->currentView())
        m_viewManager->activateView(activate, true);
    Q_EMIT documentReopened();
    return true;
}

/// Documents of other kinds may have the name of something that is not a file.
bool Workspace::hasFile(Document *doc) const
{
    if (!qobject_cast<TextDocument *>(doc) || QFileInfo::exists(doc->filename()))
        return true;
    noticeLostFile(doc);
    showDocumentWarning(tr("The following file does not exist:\n%1\n\nThe text stays open as it is.")
                            .arg(QDir::toNativeSeparators(doc->filename())));
    return false;
}

bool Workspace::openHelp(const QString &filename)
{
    if (const QPointer<Document> doc = helpDocument(m_documents)) {
        doc->open(filename);
        if (!doc)
            return true;
        m_viewManager->activateDocument(doc, true);
        doc->notifyViews(nullptr, false);
        return true;
    }
    DocumentTemplate *docTemplate = templateFor(filename, "HelpDocumentTemplate");
    return docTemplate && load(docTemplate, &Document::open, filename, true);
}

bool Workspace::newDocument(DocumentTemplate *docTemplate, const QString &filename)
{
    VARNEL_ASSERT(docTemplate);
    return docTemplate && load(docTemplate, &Document::create, filename, true);
}

bool Workspace::saveAll(bool onlyModified)
{
    bool allSaved = true;
    for (const QPointer<Document> &doc : m_documents.guarded()) {
        if (doc && (doc->modified() || !onlyModified))
            allSaved = doc->save() && allSaved;
    }
    return allSaved;
}

void Workspace::addDocument(Document *doc)
{
    VARNEL_ASSERT(doc);
    if (!doc)
        return;
    VARNEL_ASSERT(m_documents.find(doc) == -1);
    m_documents.append(doc);
    connect(doc, &QObject::destroyed, this, &Workspace::documentDestroyed);
    connect(doc, &Document::documentModified, this, &Workspace::modificationChanged);
    if (auto *text = qobject_cast<TextDocument *>(doc))
        connect(text, &TextDocument::fileConverted, this,
                [this, text](const TextFileFormat &before) { Q_EMIT fileConverted(text, before); });
}

void Workspace::documentDestroyed(QObject *doc)
{
    VARNEL_ASSERT(m_documents.find(doc) >= 0);
    if (const int index = m_documents.find(doc); index >= 0)
        m_documents.removeAt(index);
    Q_EMIT modificationChanged();
}

void Workspace::closeCurrentDocument()
{
    m_viewManager->closeCurrentDocument();
}

void Workspace::closeAll()
{
    m_viewManager->closeAll();
}

Document *Workspace::findDocument(const QString &filename) const
{
    const auto isNamed = [&filename](Document *doc) { return doc->filename() == filename; };
    auto found = std::find_if(m_documents.cbegin(), m_documents.cend(), isNamed);
    if (found == m_documents.cend()) { // it may be open by a path with or without a symbolic link
        const QString file = QFileInfo(filename).canonicalFilePath();
        const auto isSameFile = [&file](Document *doc) {
            return QFileInfo(doc->filename()).canonicalFilePath() == file;
        };
        if (!file.isEmpty())
            found = std::find_if(m_documents.cbegin(), m_documents.cend(), isSameFile);
    }
    return found == m_documents.cend() ? nullptr : *found;
}

Document *Workspace::findOther(const QString &filename, const Document *document) const
{
    const auto isSame = [document, name = uniqueName(filename)](Document *doc) {
        return doc != document && uniqueName(doc->filename()) == name;
    };
    const auto found = std::find_if(m_documents.cbegin(), m_documents.cend(), isSame);
    return found == m_documents.cend() ? nullptr : *found;
}

bool Workspace::anyModified() const
{
    return std::any_of(m_documents.cbegin(), m_documents.cend(), [](Document *doc) { return doc->modified(); });
}

DocumentTemplate *Workspace::templateFor(const QString &filename, const char *inherits) const
{
    DocumentTemplate *forText = nullptr;
    for (DocumentTemplate *docTemplate : m_templates) {
        const auto canOpen = [&] { return docTemplate->canOpen(filename); };
        if (!docTemplate->inherits(inherits) || !askPlugin("DocumentTemplate::canOpen", canOpen))
            continue;
        if (!qobject_cast<TextDocumentTemplate *>(docTemplate) || !isBinaryFile(filename))
            return docTemplate; // the editor would damage a binary file
        forText = forText ? forText : docTemplate;
    }
    if (forText)
        return forText;
    qWarning("Workspace::openDocument: No template found for document (%s)", qPrintable(filename));
    return nullptr;
}

std::unique_ptr<Document> Workspace::create(DocumentTemplate *docTemplate, Loader loader, const QString &filename)
{
    std::unique_ptr<Document> doc;
    bool loaded = false;
    const bool returned = runPlugin("DocumentTemplate::createDocument", [&] {
        doc.reset(docTemplate->createDocument());
        VARNEL_ASSERT(doc);
        loaded = doc && (doc.get()->*loader)(filename);
    });
    if (!returned || !doc)
        warnNotOpened(filename); // a document that could not be loaded has shown a message itself
    return loaded ? std::move(doc) : nullptr;
}

bool Workspace::load(DocumentTemplate *docTemplate, Loader loader, const QString &filename, bool activate)
{
    std::unique_ptr<Document> loaded = create(docTemplate, loader, filename);
    return loaded && show(docTemplate, std::move(loaded), activate, Placement::Append);
}

bool Workspace::show(DocumentTemplate *docTemplate, std::unique_ptr<Document> loaded, bool activate,
                     Placement placement)
{
    const QPointer<Document> doc = loaded.get();
    const QString filename = doc->filename();
    addDocument(loaded.release());
    View *view = askPlugin("DocumentTemplate::createView", [&] { return docTemplate->createView(doc); });
    VARNEL_ASSERT(view);
    if (!view) {
        delete doc; // a document without a view has no other owner
        warnNotOpened(filename);
        return false;
    }
    if (placement == Placement::InPlace)
        m_viewManager->addViewInPlace(view, activate);
    else
        m_viewManager->addView(view, activate);
    return doc; // it may be closed already
}

#include "guardeddocument.h"
#include "callplugin.h"
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QScopedValueRollback>

GuardedDocument::GuardedDocument(DocumentTemplate *docTemplate, std::unique_ptr<Document> inner)
    : Document(docTemplate), m_inner(std::move(inner))
{
    connect(m_inner.get(), &Document::documentModified, this, &GuardedDocument::followInner);
    connect(this, &Document::documentModified, this, &GuardedDocument::setInner);
}

GuardedDocument::~GuardedDocument() = default;

bool GuardedDocument::open(const QString &filename)
{
    const QPointer<GuardedDocument> self(this);
    const auto inUse = use();
    const auto opened = tryPlugin<&Document::open>(m_inner, filename);
    return self && load(opened, filename);
}

bool GuardedDocument::create(const QString &filename)
{
    const QPointer<GuardedDocument> self(this);
    const auto inUse = use();
    const auto created = tryPlugin<&Document::create>(m_inner, filename);
    return self && load(created, filename);
}

/// A document that returns false has shown a message itself.
bool GuardedDocument::load(std::optional<bool> loaded, const QString &filename)
{
    if (!loaded)
        showDocumentWarning(tr("The following file could not be opened:\n%1").arg(QDir::toNativeSeparators(filename)));
    if (loaded.value_or(false))
        m_filename = filename;
    return loaded.value_or(false);
}

bool GuardedDocument::save()
{
    const QPointer<GuardedDocument> self(this);
    const auto inUse = use();
    const auto saved = tryPlugin<&Document::save>(m_inner);
    if (!saved && self)
        showDocumentWarning(tr("The following file could not be saved:\n%1").arg(QDir::toNativeSeparators(filename())));
    return saved.value_or(false);
}

bool GuardedDocument::saveAs(const QString &filename)
{
    const QPointer<GuardedDocument> self(this);
    const auto inUse = use();
    const bool saved = askPlugin<&Document::saveAs>(m_inner, filename);
    if (saved && self)
        m_filename = filename;
    return saved;
}

QDateTime GuardedDocument::lastModified()
{
    const auto inUse = use();
    return askPlugin<&Document::lastModified>(m_inner);
}

QString GuardedDocument::filename()
{
    const QString before = m_filename;
    const auto inUse = use();
    return tryPlugin<&Document::filename>(m_inner).value_or(before);
}

QString GuardedDocument::title()
{
    const QString before = QFileInfo(m_filename).fileName();
    const auto inUse = use();
    return tryPlugin<&Document::title>(m_inner).value_or(before);
}

bool GuardedDocument::isNewerOnDisk()
{
    const auto inUse = use();
    return askPlugin<&Document::isNewerOnDisk>(m_inner);
}

/// The signal without a change updates titles.
void GuardedDocument::followInner(bool modified)
{
    if (m_following)
        return;
    const QScopedValueRollback following(m_following, true);
    if (modified == this->modified())
        Q_EMIT documentModified(modified);
    else
        setModified(modified);
}

void GuardedDocument::setInner()
{
    if (m_following)
        return;
    const QScopedValueRollback following(m_following, true);
    const auto inUse = use();
    runPlugin(
        "Document::documentModified", [this] { m_inner->setModified(modified()); }, m_inner.get());
}

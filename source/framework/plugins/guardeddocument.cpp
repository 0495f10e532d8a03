#include "guardeddocument.h"
#include "callplugin.h"
#include <QDir>
#include <QFileInfo>
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
    return load(tryPlugin<&Document::open>(m_inner, filename), filename);
}

bool GuardedDocument::create(const QString &filename)
{
    return load(tryPlugin<&Document::create>(m_inner, filename), filename);
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
    const auto saved = tryPlugin<&Document::save>(m_inner);
    if (!saved)
        showDocumentWarning(tr("The following file could not be saved:\n%1").arg(QDir::toNativeSeparators(filename())));
    return saved.value_or(false);
}

bool GuardedDocument::saveAs(const QString &filename)
{
    const bool saved = askPlugin<&Document::saveAs>(m_inner, filename);
    if (saved)
        m_filename = filename;
    return saved;
}

QDateTime GuardedDocument::lastModified()
{
    return askPlugin<&Document::lastModified>(m_inner);
}

QString GuardedDocument::filename()
{
    return tryPlugin<&Document::filename>(m_inner).value_or(m_filename);
}

QString GuardedDocument::title()
{
    return tryPlugin<&Document::title>(m_inner).value_or(QFileInfo(m_filename).fileName());
}

bool GuardedDocument::isNewerOnDisk()
{
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
    runPlugin(
        "Document::documentModified", [this] { m_inner->setModified(modified()); }, m_inner.get());
}

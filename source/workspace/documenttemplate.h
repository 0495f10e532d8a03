#pragma once
#include <QIcon>
#include <QObject>
class Document;
class View;

/// One kind of document: says which file names it opens, and makes its documents and views.
class DocumentTemplate : public QObject
{
    Q_OBJECT
public:
    /// @p name, @p description and @p icon are what the new-file dialog shows.
    DocumentTemplate(const QString &name, const QString &description, const QIcon &icon, QObject *parent = nullptr);

    /// Whether new files of this kind are offered.
    [[nodiscard]] virtual bool canCreate();
    [[nodiscard]] virtual bool canOpen(const QString &filename) = 0;
    /// A new empty document, owned by the caller until it is given a view.
    [[nodiscard]] virtual Document *createDocument() = 0;
    /// A new view on @p document without a parent, bearing the template's icon.
    [[nodiscard]] virtual View *createView(Document *document) = 0;
    /// The default extension of new files, without a dot.
    [[nodiscard]] virtual QString extension() = 0;

    [[nodiscard]] const QString &name() const { return m_name; }
    [[nodiscard]] const QString &description() const { return m_description; }
    [[nodiscard]] const QIcon &icon() const { return m_icon; }

private:
    const QString m_name;
    const QString m_description;
    const QIcon m_icon;
};

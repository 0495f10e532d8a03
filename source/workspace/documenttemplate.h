#pragma once
#include "editorversion.h"
#include <QIcon>
#include <QObject>
class Document;
class View;

/// One kind of document: decides which file names it opens, and creates its documents and views.
class DocumentTemplate : public QObject
{
    Q_OBJECT
public:
    /// The new-file dialog shows @p name, @p description and @p icon.
    DocumentTemplate(const QString &name, const QString &description, const QIcon &icon, QObject *parent = nullptr);

    /// Whether new files of this kind are offered.
    [[nodiscard]] virtual bool canCreate();
    [[nodiscard]] virtual bool canOpen(const QString &filename) = 0;
    /// A new empty document. The caller owns it until it has a view.
    [[nodiscard]] virtual Document *createDocument() = 0;
    /// A new view of @p document without a parent, with the template's icon.
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

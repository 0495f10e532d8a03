#pragma once
#include "document.h"
#include <memory>

/// Stands for the document of a plug-in. Both have the same state of modification.
class GuardedDocument : public Document
{
    Q_OBJECT
public:
    GuardedDocument(DocumentTemplate *docTemplate, std::unique_ptr<Document> inner);
    ~GuardedDocument() override;

    [[nodiscard]] Document *inner() const { return m_inner.get(); }

    bool open(const QString &filename) override; ///< Shows a message if the plug-in throws an exception.
    bool create(const QString &filename) override;
    bool save() override;
    bool saveAs(const QString &filename) override;
    QDateTime lastModified() override;
    QString filename() override; ///< If the plug-in throws an exception, the name that was opened or saved last.
    QString title() override;
    bool isNewerOnDisk() override;

private:
    bool load(std::optional<bool> loaded, const QString &filename);
    void followInner(bool modified);
    void setInner();

    const std::unique_ptr<Document> m_inner;
    QString m_filename;
    bool m_following = false; ///< while one of the two follows the other
};

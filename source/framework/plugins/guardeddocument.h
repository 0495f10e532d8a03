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
    /// To be kept while a function of the plug-in's document or of one of its views runs, which may run an event loop:
    /// their views do not close then.
    [[nodiscard]] std::shared_ptr<const void> use() const { return m_use; }
    [[nodiscard]] bool isInUse() const { return m_use.use_count() > 1; }

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
    const std::shared_ptr<const void> m_use = std::make_shared<char>();
    QString m_filename;
    bool m_following = false; ///< while one of the two follows the other
};

#pragma once
#include "document.h"

/// The page of the help that was opened last. The view reads it, and may go on to other pages by their links.
class HelpDocument : public Document
{
    Q_OBJECT
public:
    explicit HelpDocument(DocumentTemplate *docTemplate);

    /// Checks that the file can be read. A missing file leads to a question and, at the user's wish, to a page without
    /// a file.
    bool open(const QString &filename) override;
    bool create(const QString &filename) override;
    bool save() override { return true; }          ///< There is nothing to save.
    bool saveAs(const QString &filename) override; ///< Copies the page; the document stays the same.
    [[nodiscard]] QDateTime lastModified() override { return m_lastModified; }
    [[nodiscard]] QString filename() override { return m_filename; }
    [[nodiscard]] QString title() override;

private:
    QString m_filename;
    QDateTime m_lastModified;
};

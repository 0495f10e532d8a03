#pragma once
#include <QObject>
class Document;
class TextDocument;

/// Belongs to a text whose file was deleted by another program while it was open.
class LostFile : public QObject
{
    Q_OBJECT
public:
    explicit LostFile(TextDocument *document);

    /// The text was saved again or given up.
    [[nodiscard]] bool isSettled() const { return m_settled; }
    /// The file is there again.
    void takeBack();

private:
    TextDocument *const m_document;
    const int m_cleanRevision; ///< of the text when it was noticed; -1 if it had changes
    bool m_settled = false;
};

/// Looks whether the file that @p document was read from still exists. If it does not, the document counts as modified,
/// because its text may be the only copy left; the result is true the first time. If the file is there again and holds
/// the same text, the document counts as saved.
bool noticeLostFile(Document *document);
/// Whether noticeLostFile() found the file missing, and the text was neither saved nor given up since.
[[nodiscard]] bool hasLostFile(const Document *document);

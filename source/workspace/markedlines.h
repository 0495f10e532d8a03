#pragma once
#include <QHash>
#include <QObject>
#include <QTextBlock>
#include <QTextCursor>
class MarkedParagData;
class QTextDocument;

/// The markers of a text document's lines. They are stored in the ParagData of the lines and move with them; in
/// addition, this class knows which lines have markers, so that no operation searches the whole document.
///
/// It must outlive the document.
class MarkedLines : public QObject
{
    Q_OBJECT
public:
    explicit MarkedLines(QTextDocument *document);
    ~MarkedLines() override;

    /// Sets or clears bits of @p block. Setting a breakpoint's bits sets or clears the alternate bit as well.
    void set(const QTextBlock &block, quint32 mask, bool on, bool alternate);
    /// Clears bits of every line.
    void clear(quint32 mask);
    [[nodiscard]] static quint32 markers(const QTextBlock &block);

private:
    friend class MarkedParagData;
    struct Place
    {
        QTextBlock block;
        QTextCursor anchor; ///< at the start of the line's text, and moves with it
        int position = 0;   ///< start of the line at the last change
    };
    struct LostLine
    {
        Place place;
        quint32 marker;
    };

    MarkedParagData *ensureMarked(QTextBlock block);
    void contentsChanged(int from, int removed, int added);
    void moveWithText();
    void saveMarker(const LostLine &line, int from, int removed, int added);

    QHash<MarkedParagData *, Place> m_marked;
    /// Lines that the document has just removed. Their anchors are deleted later, not while the document changes.
    QList<LostLine> m_lost;
};

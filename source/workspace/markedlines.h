#pragma once
#include <QHash>
#include <QObject>
#include <QTextBlock>
#include <QTextCursor>
class MarkedParagData;
class QTextDocument;

/// The markers of a text document's lines. They lie in the ParagData of the lines and so ride on them; besides, this
/// class knows which lines bear any, so that nothing has to walk the document.
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
    /// Clears bits on every line.
    void clear(quint32 mask);
    [[nodiscard]] static quint32 markers(const QTextBlock &block);

private:
    friend class MarkedParagData;
    struct Place
    {
        QTextBlock block;
        QTextCursor anchor; ///< at the start of the line's text, and goes with it
    };

    MarkedParagData *ensureMarked(QTextBlock block);
    void moveWithText();

    QHash<MarkedParagData *, Place> m_marked;
    /// Of lines that are gone. They die later: the document does not allow it while it takes its lines away.
    QList<QTextCursor> m_looseAnchors;
};

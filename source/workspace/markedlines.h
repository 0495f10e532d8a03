#pragma once
#include <QObject>
#include <QSet>
#include <QTextDocument>
class MarkedParagData;

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
    MarkedParagData *ensureMarked(QTextBlock block);
    void moveWithText();

    QSet<MarkedParagData *> m_marked;
};

#pragma once
#include <memory>
#include <QPlainTextDocumentLayout>
class LongLine;
class LongLineStyle;

/// The layout of an editor's text, in which no line is wrapped. Short lines are laid out by the base class, on demand.
/// A long line (see LongLine) has no lines in its QTextLayout, so that the base classes neither paint it nor find
/// places in it; the panes ask this class.
///
/// An x is in pixels from the left edge of the text area.
class LineLayout : public QPlainTextDocumentLayout
{
    Q_OBJECT
public:
    explicit LineLayout(QTextDocument *document);
    ~LineLayout() override;

    [[nodiscard]] QSizeF documentSize() const override;
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &block) const override;

    [[nodiscard]] bool hasLongLines() const { return m_longWidth > 0; } ///< that were shown since they were set
    /// The layout of a long line.
    [[nodiscard]] const LongLine &longLine(const QTextBlock &block) const;
    /// @p index is in characters from the start of @p block.
    [[nodiscard]] qreal xOf(const QTextBlock &block, int index) const;
    [[nodiscard]] int indexAt(const QTextBlock &block, qreal x) const;

Q_SIGNALS:
    /// A long line looks different from @p x on. For short lines the base class emits updateBlock(), for which panes
    /// paint the whole line.
    void longLineChanged(const QTextBlock &block, qreal x);

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    void textChanged(int from, int removed, int added);
    void updateLongLine(const QTextBlock &block, int changedFrom);
    void keepGlyphsAround(const QTextBlock &line);
    void keepGlyphs(int first, bool keep) const;
    [[nodiscard]] qreal widthOf(const QTextBlock &block) const;
    void noteWidth(const QTextBlock &block) const;
    void findWidest();
    [[nodiscard]] const std::shared_ptr<const LongLineStyle> &style() const;

    int m_lineCount = 1;
    int m_firstKept = -1;                                 ///< the first of the lines whose glyphs are kept, -1 for none
    mutable std::shared_ptr<const LongLineStyle> m_style; ///< of the font and the tab stops when it was needed last
    mutable qreal m_longWidth = 0;                        ///< of the widest long line that was measured
    mutable int m_widest = -1;                            ///< its number
};

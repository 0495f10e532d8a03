#pragma once
#include "characterpictures.h"
#include <QAbstractTextDocumentLayout>
class QTextBlock;

/// Lays out a document whose lines are all one row high and never wrapped, as those of memory are. It looks as in the
/// usual layout, but a page is shown much sooner: only the lines with the cursor, a selection or changes are laid out,
/// the others are copied from pictures of their characters.
class MemoryTextLayout : public QAbstractTextDocumentLayout
{
    Q_OBJECT
public:
    static constexpr int LeftMargin = 4;

    explicit MemoryTextLayout(QTextDocument *document);

    void draw(QPainter *painter, const PaintContext &context) override;
    [[nodiscard]] int hitTest(const QPointF &point, Qt::HitTestAccuracy accuracy) const override;
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] QSizeF documentSize() const override;
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame *frame) const override;
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &block) const override;

protected:
    void documentChanged(int from, int charsRemoved, int charsAdded) override;

private:
    void measure();
    static void layOut(const QTextBlock &block);
    void drawBlock(QPainter &painter, const PaintContext &context, const QTextBlock &block);
    [[nodiscard]] bool drawPictures(QPainter &painter, const QPalette &palette, const QTextBlock &block);
    [[nodiscard]] QPointF placeOf(const QTextBlock &block) const;

    QFont m_font; ///< what is measured
    int m_rowHeight = 1;
    int m_charWidth = 1;
    qreal m_baseline = 0;
    CharacterPictures m_pictures;
};

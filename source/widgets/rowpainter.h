#pragma once
#include "characterpictures.h"
#include "rowtext.h"
#include <QCache>
#include <QFont>
#include <QPalette>
class QPainter;

/// The columns of a row that are selected.
struct SelectedColumns
{
    static constexpr int ToEnd = -1;

    int from = 0;
    int to = 0; ///< behind the last one; ToEnd for the whole rest of the row

    [[nodiscard]] bool isEmpty() const { return to != ToEnd && to <= from; }
};

/// Draws lines of rich text in rows, in a font whose characters all take charWidth() pixels.
class RowPainter
{
public:
    RowPainter();

    void setFont(const QFont &font);
    /// Rows are drawn on paper of the palette's base colour, and on nothing else: that takes less time.
    void setOnPaper(bool onPaper) { m_isOnPaper = onPaper; }
    [[nodiscard]] int lineHeight() const { return m_lineHeight; }
    [[nodiscard]] int charWidth() const { return m_charWidth; }

    /// Draws what lies between @p clip's left and right of a row whose first column is at @p left. The base colour of
    /// the palette is what is behind it.
    void draw(QPainter &painter, const QString &line, int left, const QRect &clip, SelectedColumns selected,
              const QPalette &palette);
    /// Converts between columns of the text and pixels from its left edge, also beyond the end of the text.
    [[nodiscard]] int xOf(const QString &line, int column);
    [[nodiscard]] int columnAt(const QString &line, int x);
    [[nodiscard]] int width(const QString &line);
    [[nodiscard]] RowText row(const QString &line);

private:
    void drawText(QPainter &painter, const RowText &row, int left, const QRect &clip, const QColor &colour,
                  const QColor &paper, bool withColours);
    void layOut(QTextLayout &layout, const QList<QTextLayout::FormatRange> &formats) const;

    QFont m_font;
    int m_lineHeight = 1;
    int m_charWidth = 1;
    int m_baseline = 0;
    bool m_isOnPaper = false;
    CharacterPictures m_pictures;
    QCache<QString, RowText> m_rich; ///< the rows of lines with markup, which take long to read
};

/// @p colour, made lighter or darker until it is readable on @p paper.
[[nodiscard]] QColor readableOn(const QColor &paper, const QColor &colour);
/// The colour of rows that count less than others but are to be read, such as values of an earlier time: that of
/// disabled rows, as far as it is readable.
[[nodiscard]] QColor fadedText(const QPalette &palette);

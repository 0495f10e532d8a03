#pragma once
#include <limits>
#include <memory>
#include <QFont>
#include <QTextBlock>
#include <QTextLayout>
#include <vector>
class QPainter;

/// How the characters of long lines are measured.
class LongLineStyle
{
public:
    LongLineStyle(const QFont &font, qreal tabDistance);

    [[nodiscard]] const QFont &font() const { return m_font; }
    [[nodiscard]] qreal givenTabDistance() const { return m_givenTabDistance; }
    [[nodiscard]] qreal tabDistance() const { return m_tabDistance; } ///< as rounded by layouts
    [[nodiscard]] qreal lineHeight() const { return m_lineHeight; }
    [[nodiscard]] qreal ascent() const { return m_ascent; }
    /// The width of @p c, or a negative number if its shape or width depends on the characters beside it.
    [[nodiscard]] qreal widthOf(QChar c) const
    {
        const float width = m_widths[c.unicode()];
        return width < Unknown ? width : measure(c);
    }
    [[nodiscard]] qreal nextTab(qreal x) const; ///< the tab stop behind @p x
    /// Whether text with @p format has the same widths.
    [[nodiscard]] bool hasSameWidths(const QTextCharFormat &format) const;

private:
    static constexpr float Unknown = std::numeric_limits<float>::infinity();

    [[nodiscard]] qreal measure(QChar c) const;
    [[nodiscard]] bool comparesWidths(const QTextCharFormat &format) const;

    const QFont m_font;
    const qreal m_givenTabDistance;
    const qreal m_tabDistance;
    qreal m_lineHeight;
    qreal m_ascent;
    mutable std::vector<std::pair<QTextCharFormat, bool>> m_formats; ///< the last answers
    mutable std::vector<float> m_widths;                             ///< by UTF-16 code
};

/// The layout of a line that is too long for a layout as a whole: with that, each key would take time in proportion to
/// the length of the line. The line is divided into pieces of a few hundred characters, of which only the widths are
/// kept; a change measures its piece again, and what is visible is laid out when it is painted.
///
/// All positions are in characters from the start of the line; text that an input method composes counts. All x are in
/// pixels from there. Each piece is laid out on its own, from left to right.
class LongLine
{
public:
    static constexpr int Limit = 10'000; ///< characters of lines that are laid out as a whole
    [[nodiscard]] static bool isLong(const QTextBlock &block) { return block.length() - 1 > Limit; }
    /// @p length characters of @p block from @p from on, in a time that does not depend on the length of the line.
    [[nodiscard]] static QString textOf(const QTextBlock &block, int from, int length);

    LongLine(const QTextBlock &block, std::shared_ptr<const LongLineStyle> style);

    [[nodiscard]] bool fits() const; ///< whether the line still has the length that was measured
    [[nodiscard]] const LongLineStyle &style() const { return *m_style; }
    void change(int from, int removed, int added); ///< @p removed characters at @p from were replaced by @p added.
    void updateFormats();                          ///< The formats may have changed.

    [[nodiscard]] qreal width() const;
    [[nodiscard]] qreal xOf(int position) const;
    [[nodiscard]] int positionAt(qreal x) const; ///< the nearest
    /// From where on the line looks different after a change of the character at @p position.
    [[nodiscard]] qreal changedX(int position) const;
    struct Paint
    {
        QPointF place; ///< of the start of the line
        QRectF clip;
        QList<QTextLayout::FormatRange> selections;
        int cursor = -1; ///< no cursor if negative
        int cursorWidth = 1;
    };
    void draw(QPainter &painter, const Paint &what) const;

private:
    struct Piece
    {
        int length;
        bool isSimple;   ///< the width of each character is that of the style
        qreal beforeTab; ///< the width of all, or of what is before the first tab
        qreal behindTab; ///< the width of what is behind the first tab, which starts at a tab stop; negative if none
    };
    struct Place
    {
        size_t piece;
        int start;
        qreal x;
    };
    struct Part
    {
        qsizetype from;
        qsizetype end;
        qreal x;
    };

    [[nodiscard]] QString text(int from, int length) const;
    [[nodiscard]] QString documentText(int from, int length) const;
    void changeText(int from, int removed, int added);
    [[nodiscard]] std::vector<Piece> divide(QStringView text, int start) const;
    [[nodiscard]] Piece measure(QStringView text, int start, bool sameWidths) const;
    [[nodiscard]] qreal endOf(const Piece &piece, qreal x) const;
    template <typename IsBefore>
    [[nodiscard]] Place lastPiece(IsBefore isBefore) const;
    [[nodiscard]] Place placeOf(int position) const;
    [[nodiscard]] Place placeAt(qreal x) const;
    [[nodiscard]] qreal advance(qreal x, QChar c) const;
    [[nodiscard]] Part partBetween(QStringView text, qreal x, qreal left, qreal right) const;
    [[nodiscard]] QList<QTextLayout::FormatRange> formatsIn(int start, int length) const;
    [[nodiscard]] bool hasSameWidths(int start, int length) const;
    [[nodiscard]] std::unique_ptr<QTextLayout> layOut(const QString &text, int start, qreal x) const;

    const QTextBlock m_block;
    const std::shared_ptr<const LongLineStyle> m_style;
    mutable QString m_text;      ///< a part of the line, because reading it from the document takes long
    mutable int m_textStart = 0; ///< the place of m_text in the line
    int m_length;
    QList<QTextLayout::FormatRange> m_formats; ///< for which it was measured
    bool m_formatsAscend;                      ///< they do not overlap and are in the order of the text
    bool m_hasOtherWidths;                     ///< whether with a format characters are wider than alone
    std::vector<Piece> m_pieces;
    mutable Place m_near{0, 0, 0}; ///< the answer to the last question
    mutable qreal m_width = -1;    ///< negative if not known
    mutable bool m_hasTabs = true; ///< whether a tab may be in the line; known with the width
};

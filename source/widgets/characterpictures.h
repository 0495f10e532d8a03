#pragma once
#include <QColor>
#include <QFont>
#include <QImage>
class QPainter;

/// Pictures of the printable ASCII characters of a fixed-pitch font, to draw much text on one paper.
///
/// Copying them gives the same pixels as drawing the text, in a fraction of the time. Where it would not, as with
/// ligatures, or on screens whose scale is neither 1 nor 2, nothing is drawn.
class CharacterPictures
{
public:
    struct Style
    {
        QFont font;         ///< with the letter spacing that makes its characters as wide as a cell
        QSize cell;         ///< of a character, in the painter's units
        qreal baseline = 0; ///< from the top of the cell
        QColor colour;
        QColor paper;

        bool operator==(const Style &) const = default;
    };

    [[nodiscard]] static bool canShow(QStringView text); ///< Whether it has no other characters.
    /// Draws the text and the paper below it, from the top left corner of its first cell on. Returns false if the text
    /// has to be drawn as text.
    bool draw(QPainter &painter, const QPoint &place, QStringView text, const Style &style);

private:
    struct Set
    {
        Style style;
        int scale = 1;
        QString largerCharacters; ///< those that reach into the cells beside
        QImage pictures;          ///< side by side, in pixels of the device; null if they cannot be used
    };
    const Set &setFor(const Style &style, int scale, int dotsPerInch);
    void composeLine(const Set &set, QStringView text);

    QList<Set> m_sets; ///< those that were used last
    QImage m_line;     ///< large enough for the longest line so far
};

/// The letter spacing that makes the characters of a fixed-pitch font a whole number of pixels wide, and @p width, the
/// same for all.
[[nodiscard]] QFont withPixelPitch(const QFont &font, int *width);

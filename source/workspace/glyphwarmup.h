#pragma once
#include "syntaxhighlighter.h"
#include <QBasicTimer>
#include <QFont>
#include <QImage>
#include <QObject>

/// Makes the pictures of letters, digits and signs in all fonts of the editor before they are typed. The toolkit makes
/// the picture of a character when it paints it first, once for each quarter of a pixel at which the character may
/// start, and keeps it with the font. A key that needs a new picture takes up to twice as long as others.
///
/// Works in slices of one millisecond while the program is idle.
class GlyphWarmUp : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Starts again, with the fonts of @p formats, for screens with @p pixelRatio pixels per unit. Fonts of more than
    /// LargestSize pixels are left out.
    void start(const FormatTable &formats, qreal pixelRatio);
    [[nodiscard]] const QList<QFont> &fonts() const { return m_fonts; } ///< whose pictures are not complete

    static constexpr int LargestSize = 64; ///< pixels; the toolkit does not keep larger pictures

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void paintNext();

    QList<QFont> m_fonts;
    QImage m_image;         ///< of the format of a window, so that the toolkit makes the same pictures
    char16_t m_character{}; ///< the next one of the last font
    QBasicTimer m_timer;
};

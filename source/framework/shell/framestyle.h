#pragma once
#include <QProxyStyle>

/// The style of the desktop with two additions.
///
/// A list, tree or table with the keyboard focus has a frame in the colour of selections: styles show the focus at the
/// current row only, and not every list has one.
///
/// Frames are seen on black: a style makes the colour of its frames by darkening that of the window, which leaves black
/// as it is.
class FrameStyle : public QProxyStyle
{
    Q_OBJECT
public:
    using QProxyStyle::QProxyStyle;

    /// Whether the frames of the style itself cannot be seen.
    [[nodiscard]] static bool isBlack(const QPalette &palette);

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;
};

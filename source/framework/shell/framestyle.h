#pragma once
#include <QProxyStyle>

/// The style of the desktop with two additions.
///
/// A list, tree or table with the keyboard focus has a frame in the colour of selections: styles show the focus at the
/// current row only, and not every list has one.
///
/// Frames are seen on black: a style makes the colour of its frames by darkening that of the window, which leaves black
/// as it is. On other dark windows boxes to be checked get their frames, which would hardly be seen as long as they are
/// empty.
class FrameStyle : public QProxyStyle
{
    Q_OBJECT
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;
};

#include "framestyle.h"
#include <QPainter>
#include <QStyleOption>

namespace {
constexpr int Black = 20;        ///< the greatest lightness, of 255, below which the eye sees no difference
constexpr double Strength = 0.6; ///< of the colour of texts

void drawFrame(const QStyleOption *option, QPainter *painter, bool isRound)
{
    if (!FrameStyle::isNeeded(option->palette))
        return;
    QColor colour = option->palette.color(QPalette::WindowText);
    colour.setAlphaF(float(Strength));
    painter->save();
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    const QRect frame = option->rect.adjusted(0, 0, -1, -1);
    if (isRound)
        painter->drawEllipse(frame);
    else
        painter->drawRect(frame);
    painter->restore();
}
} // namespace

bool FrameStyle::isNeeded(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() <= Black;
}

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
    case PE_FrameGroupBox:
    case PE_FrameLineEdit:
    case PE_FrameTabWidget:
    case PE_IndicatorCheckBox:
    case PE_PanelButtonCommand:
        drawFrame(option, painter, false);
        break;
    case PE_IndicatorRadioButton:
        drawFrame(option, painter, true);
        break;
    default:
        break;
    }
}

void FrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                    const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox)
        drawFrame(option, painter, false);
}

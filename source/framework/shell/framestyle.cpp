#include "framestyle.h"
#include <QPainter>
#include <QStyleOption>

namespace {
constexpr int Black = 20;        ///< the greatest lightness, of 255, below which the eye sees no difference
constexpr int Dark = 127;        ///< the greatest lightness of a dark window
constexpr double Strength = 0.6; ///< of the colour of texts

bool isUpTo(int lightness, const QStyleOption *option)
{
    return option->palette.color(QPalette::Window).lightness() <= lightness;
}

void drawFrame(const QStyleOption *option, QPainter *painter, bool isRound)
{
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
    return palette.color(QPalette::Window).lightness() <= Dark;
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
    case PE_PanelButtonCommand:
        if (isUpTo(Black, option))
            drawFrame(option, painter, false);
        break;
    case PE_IndicatorCheckBox: // also in rows of lists
    case PE_IndicatorRadioButton:
        if (isUpTo(Dark, option))
            drawFrame(option, painter, element == PE_IndicatorRadioButton);
        break;
    default:
        break;
    }
}

void FrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                    const QWidget *widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_ComboBox || control == CC_SpinBox) && isUpTo(Black, option))
        drawFrame(option, painter, false);
}

#include "framestyle.h"
#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace {
constexpr int Black = 20;        ///< the greatest lightness, of 255, below which the eye sees no difference
constexpr double Strength = 0.6; ///< of the colour of texts

void drawFrame(const QColor &colour, const QStyleOption *option, QPainter *painter, bool isRound = false)
{
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

void drawFrameOnBlack(const QStyleOption *option, QPainter *painter, bool isRound = false)
{
    if (!FrameStyle::isBlack(option->palette))
        return;
    QColor colour = option->palette.color(QPalette::WindowText);
    colour.setAlphaF(float(Strength));
    drawFrame(colour, option, painter, isRound);
}

bool isFocusedList(const QStyleOption &option, const QWidget *widget)
{
    return option.state.testFlag(QStyle::State_HasFocus) && qobject_cast<const QAbstractItemView *>(widget);
}
} // namespace

bool FrameStyle::isBlack(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() <= Black;
}

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
        if (isFocusedList(*option, widget))
            drawFrame(option->palette.color(QPalette::Highlight), option, painter);
        else
            drawFrameOnBlack(option, painter);
        break;
    case PE_FrameGroupBox:
    case PE_FrameLineEdit:
    case PE_FrameTabWidget:
    case PE_IndicatorCheckBox:
    case PE_PanelButtonCommand:
        drawFrameOnBlack(option, painter);
        break;
    case PE_IndicatorRadioButton:
        drawFrameOnBlack(option, painter, true);
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
        drawFrameOnBlack(option, painter);
}

#include "framestyle.h"
#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace {
constexpr int Black = 20;        ///< the greatest lightness, of 255, below which the eye sees no difference
constexpr int Dark = 127;        ///< the greatest lightness of a dark window
constexpr double Strength = 0.6; ///< of the colour of texts

void drawFrame(const QColor &colour, const QRect &place, QPainter *painter, bool isRound)
{
    painter->save();
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    const QRect frame = place.adjusted(0, 0, -1, -1);
    if (isRound)
        painter->drawEllipse(frame);
    else
        painter->drawRect(frame);
    painter->restore();
}

/// On windows that are not lighter than @p lightness.
void drawFrameOnDark(int lightness, const QStyleOption *option, QPainter *painter, bool isRound = false)
{
    if (option->palette.color(QPalette::Window).lightness() > lightness)
        return;
    QColor colour = option->palette.color(QPalette::WindowText);
    colour.setAlphaF(float(Strength));
    drawFrame(colour, option->rect, painter, isRound);
}

bool isFocusedList(const QStyleOption &option, const QWidget *widget)
{
    return option.state.testFlag(QStyle::State_HasFocus) && qobject_cast<const QAbstractItemView *>(widget);
}
} // namespace

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
    case PE_Frame:
        if (isFocusedList(*option, widget))
            drawFrame(option->palette.color(QPalette::Highlight), option->rect, painter, false);
        else
            drawFrameOnDark(Black, option, painter);
        break;
    case PE_FrameGroupBox:
    case PE_FrameLineEdit:
    case PE_FrameTabWidget:
    case PE_PanelButtonCommand:
        drawFrameOnDark(Black, option, painter);
        break;
    case PE_IndicatorCheckBox: // also in rows of lists
    case PE_IndicatorRadioButton:
        drawFrameOnDark(Dark, option, painter, element == PE_IndicatorRadioButton);
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
        drawFrameOnDark(Black, option, painter);
}

#pragma once
#include <QScrollBar>

/// The scroll bar of a TextParaView. Its value is a paragraph, but it scrolls by lines: a step does not change
/// the value but only emits a signal.
class ParaScrollBar : public QScrollBar
{
    Q_OBJECT
public:
    explicit ParaScrollBar(QWidget *parent = nullptr) : QScrollBar(Qt::Vertical, parent)
    {
        connect(this, &QAbstractSlider::actionTriggered, this, &ParaScrollBar::report);
    }

Q_SIGNALS:
    void nextLine();
    void prevLine();
    void nextPage();
    void prevPage();

private:
    void report(int action)
    {
        const int before = value();
        switch (action) {
        case SliderSingleStepAdd:
            setSliderPosition(before);
            Q_EMIT nextLine();
            break;
        case SliderSingleStepSub:
            setSliderPosition(before);
            Q_EMIT prevLine();
            break;
        case SliderPageStepAdd:
            setSliderPosition(before);
            Q_EMIT nextPage();
            break;
        case SliderPageStepSub:
            setSliderPosition(before);
            Q_EMIT prevPage();
            break;
        default:
            break;
        }
    }
};

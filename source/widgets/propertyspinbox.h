#pragma once
#include <QSpinBox>

/// A spin box in a row of a list: Up, Down, Page Up, Page Down and the wheel move in the list. The value is changed by
/// typing and by the buttons.
class PropertySpinBox : public QSpinBox
{
    Q_OBJECT
public:
    explicit PropertySpinBox(QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

#pragma once
#include <QComboBox>

/// A combo box in a row of a list: Up and Down without a modifier, and the wheel over a closed box, move in the list.
class PropertyComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit PropertyComboBox(QWidget *parent);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

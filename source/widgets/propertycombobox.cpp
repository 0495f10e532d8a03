#include "propertycombobox.h"
#include <QKeyEvent>
#include <QWheelEvent>

PropertyComboBox::PropertyComboBox(QWidget *parent) : QComboBox(parent)
{
    setFrame(false);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
}

void PropertyComboBox::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down))
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}

void PropertyComboBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

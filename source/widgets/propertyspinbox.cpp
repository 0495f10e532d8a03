#include "propertyspinbox.h"
#include <QKeyEvent>
#include <QWheelEvent>

PropertySpinBox::PropertySpinBox(QWidget *parent) : QSpinBox(parent)
{
    setFrame(false);
}

void PropertySpinBox::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        event->ignore();
        break;
    default:
        QSpinBox::keyPressEvent(event);
    }
}

void PropertySpinBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

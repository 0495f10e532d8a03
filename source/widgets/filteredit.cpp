#include "filteredit.h"
#include <QKeyEvent>

FilterEdit::FilterEdit(QWidget *parent) : QLineEdit(parent)
{
    setClearButtonEnabled(true);
}

void FilterEdit::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT listRequested();
        break;
    case Qt::Key_Escape:
        if (text().isEmpty())
            event->ignore();
        else
            clear();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

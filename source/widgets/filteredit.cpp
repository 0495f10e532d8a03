#include "filteredit.h"
#include <QKeyEvent>
#include <QToolButton>

FilterEdit::FilterEdit(QWidget *parent) : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    // The toolkit's button has a picture alone.
    if (auto *clearButton = findChild<QToolButton *>()) {
        clearButton->setAccessibleName(tr("Clear"));
        clearButton->setToolTip(tr("Clear"));
    }
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

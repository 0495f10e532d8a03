#include "filteredit.h"
#include <QAction>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>

namespace {
constexpr int PictureSize = 16; ///< logical pixels

/// A cross.
QIcon clearPicture(const QColor &colour, qreal ratio)
{
    QPixmap picture(QSize(PictureSize, PictureSize) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(4.5, 4.5), QPointF(11.5, 11.5));
    painter.drawLine(QPointF(11.5, 4.5), QPointF(4.5, 11.5));
    return picture;
}
} // namespace

FilterEdit::FilterEdit(QWidget *parent) : QLineEdit(parent)
{
    setClearButtonEnabled(true);
    // The toolkit's button has a picture alone.
    if (auto *clearButton = findChild<QToolButton *>()) {
        clearButton->setAccessibleName(tr("Clear"));
        clearButton->setToolTip(tr("Clear"));
    }
    drawClearButton();
}

/// The picture of a theme of icons may be black in a dark scheme.
void FilterEdit::drawClearButton()
{
    auto *clearButton = findChild<QToolButton *>();
    QAction *clear = clearButton ? clearButton->defaultAction() : nullptr;
    if (!clear)
        return;
    clear->setIcon(clearPicture(palette().color(QPalette::Text), devicePixelRatio()));
    if (text().isEmpty())
        clearButton->hide(); // a changed action shows its button
}

void FilterEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawClearButton();
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

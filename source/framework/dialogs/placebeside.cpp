#include "placebeside.h"
#include <QScreen>
#include <QWidget>

namespace {
constexpr int Gap = 20; // pixels between the area and the dialog, so that the lines next to the area are seen
}

void placeBeside(QWidget *dialog, const QRect &area)
{
    QRect frame = dialog->frameGeometry();
    if (!frame.intersects(area))
        return;
    const QRect available = dialog->screen()->availableGeometry();
    frame.moveTop(area.bottom() + Gap);
    if (frame.bottom() > available.bottom())
        frame.moveBottom(area.top() - Gap);
    if (frame.top() < available.top()) { // neither below nor above: on the right
        frame.moveTop(available.top());
        frame.moveRight(available.right());
    }
    dialog->move(frame.topLeft());
}

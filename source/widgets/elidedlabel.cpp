#include "elidedlabel.h"
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

using namespace Qt::StringLiterals;

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

QSize ElidedLabel::sizeHint() const
{
    return minimumSizeHint();
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool isShortened = shownText() != text();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       isShortened ? u"<p>"_s + text().toHtmlEscaped() : QString(), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shownText(),
                          QPalette::WindowText);
}

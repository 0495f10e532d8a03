#include "focuswithin.h"
#include <QApplication>
#include <QWidget>

bool hasFocusWithin(const QWidget *widget)
{
    const QWidget *focus = QApplication::focusWidget();
    return widget && focus && (widget == focus || widget->isAncestorOf(focus));
}

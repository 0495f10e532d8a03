#include "toolbarrows.h"
#include <QEvent>
#include <QMainWindow>
#include <QToolBar>

namespace {
constexpr auto Wrapped = "wrapped"; ///< a property of tool bars

void setWrapped(QMainWindow *window, QToolBar *bar, bool wrapped)
{
    if (wrapped == ToolBarRows::isWrapped(bar))
        return;
    if (wrapped)
        window->insertToolBarBreak(bar);
    else
        window->removeToolBarBreak(bar);
    bar->setProperty(Wrapped, wrapped);
}
} // namespace

ToolBarRows::ToolBarRows(QMainWindow *window) : QObject(window), m_window(window)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &ToolBarRows::arrange);
    window->installEventFilter(this);
}

/// A layout that was restored or changed by the user may have no break there any more.
bool ToolBarRows::isWrapped(const QToolBar *bar)
{
    auto *window = qobject_cast<QMainWindow *>(bar->parentWidget());
    return bar->property(Wrapped).toBool() && window && window->toolBarBreak(const_cast<QToolBar *>(bar));
}

QByteArray ToolBarRows::stateOf(QMainWindow *window)
{
    QList<QToolBar *> wrapped = window->findChildren<QToolBar *>(Qt::FindDirectChildrenOnly);
    wrapped.removeIf([](const QToolBar *bar) { return !isWrapped(bar); });
    for (QToolBar *bar : std::as_const(wrapped))
        setWrapped(window, bar, false);
    const QByteArray state = window->saveState();
    for (QToolBar *bar : std::as_const(wrapped))
        setWrapped(window, bar, true);
    return state;
}

bool ToolBarRows::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show)
        m_timer.start();
    return QObject::eventFilter(object, event);
}

/// In the order on the screen.
QList<QToolBar *> ToolBarRows::barsAtTheTop() const
{
    QList<QToolBar *> bars = m_window->findChildren<QToolBar *>(Qt::FindDirectChildrenOnly);
    bars.removeIf([this](QToolBar *bar) {
        return !bar->isVisible() || bar->isFloating() || m_window->toolBarArea(bar) != Qt::TopToolBarArea;
    });
    std::ranges::stable_sort(bars, {}, [](const QToolBar *bar) { return std::pair(bar->y(), bar->x()); });
    return bars;
}

void ToolBarRows::arrange()
{
    int x = 0;
    for (QToolBar *bar : barsAtTheTop()) {
        const int width = bar->sizeHint().width();
        const bool byUser = m_window->toolBarBreak(bar) && !isWrapped(bar);
        const bool wrap = !byUser && x > 0 && x + width > m_window->width();
        setWrapped(m_window, bar, wrap);
        x = wrap || byUser ? width : x + width;
    }
}

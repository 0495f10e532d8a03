#include "joineddocks.h"
#include "toolbarrows.h"
#include <algorithm>
#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QScopedValueRollback>
#include <QToolBar>
#include <tuple>

namespace {
bool isDocked(const QDockWidget *dock)
{
    return !dock->isHidden() && !dock->isFloating();
}

/// What the user may have changed since, and what a stored layout of the window would change back.
struct DockNow
{
    QDockWidget *dock = nullptr;
    Qt::DockWidgetArea area = Qt::NoDockWidgetArea;
    bool isHidden = false;
    bool isFloating = false;
    bool isInFront = false;
    QRect geometry;
};

struct BarNow
{
    QToolBar *bar = nullptr;
    Qt::ToolBarArea area = Qt::NoToolBarArea;
    bool isFirst = false; ///< of its row, by the user
    bool isHidden = false;
    bool isFloating = false;
    QPoint place;
};

QList<DockNow> stateOf(const QList<QDockWidget *> &docks, const QMainWindow &window)
{
    QList<DockNow> all;
    for (QDockWidget *dock : docks) {
        all.append({dock, window.dockWidgetArea(dock), dock->isHidden(), dock->isFloating(),
                    isDocked(dock) && !dock->visibleRegion().isEmpty(), dock->geometry()});
    }
    return all;
}

/// In the order on the screen.
QList<BarNow> barsOf(const QMainWindow &window)
{
    QList<BarNow> all;
    for (QToolBar *bar : window.findChildren<QToolBar *>(Qt::FindDirectChildrenOnly)) {
        const bool isFirst = window.toolBarBreak(bar) && !ToolBarRows::isWrapped(bar);
        all.append({bar, window.toolBarArea(bar), isFirst, bar->isHidden(), bar->isFloating(), bar->pos()});
    }
    std::ranges::stable_sort(all, {}, [](const BarNow &each) {
        const bool isAcross = each.area == Qt::TopToolBarArea || each.area == Qt::BottomToolBarArea;
        return isAcross ? std::tuple(each.isHidden, each.place.y(), each.place.x())
                        : std::tuple(each.isHidden, each.place.x(), each.place.y());
    });
    return all;
}

void restoreDocks(QMainWindow &window, const QList<DockNow> &docks)
{
    for (const DockNow &each : docks) {
        if (!each.isFloating && window.dockWidgetArea(each.dock) == Qt::NoDockWidgetArea) // newer than the layout
            window.addDockWidget(each.area == Qt::NoDockWidgetArea ? Qt::RightDockWidgetArea : each.area, each.dock);
        if (each.isFloating) {
            each.dock->setFloating(true);
            each.dock->setGeometry(each.geometry);
        }
        each.dock->setHidden(each.isHidden);
    }
    for (const DockNow &each : docks) {
        if (each.isInFront)
            each.dock->raise();
    }
}

void restoreBars(QMainWindow &window, const QList<BarNow> &bars)
{
    for (const BarNow &each : bars) {
        if (!each.isFloating && each.area != Qt::NoToolBarArea) {
            window.removeToolBarBreak(each.bar);
            if (each.isFirst)
                window.addToolBarBreak(each.area);
            window.addToolBar(each.area, each.bar);
        }
        each.bar->setHidden(each.isHidden);
    }
}
} // namespace

JoinedDocks::JoinedDocks(QMainWindow &window) : QObject(&window), m_window(window) {}

JoinedDocks &JoinedDocks::of(QMainWindow &window)
{
    for (QObject *child : window.children()) {
        if (auto *joined = dynamic_cast<JoinedDocks *>(child))
            return *joined;
    }
    return *new JoinedDocks(window); // owned by the window
}

QList<QDockWidget *> JoinedDocks::docks() const
{
    return m_window.findChildren<QDockWidget *>(Qt::FindDirectChildrenOnly);
}

qsizetype JoinedDocks::dockedCount() const
{
    return std::ranges::count_if(docks(), isDocked);
}

void JoinedDocks::join(Qt::Orientation orientation, const QSize &least, const std::function<void()> &join)
{
    const QScopedValueRollback<bool> arranging(m_isArranging, true);
    if (isEmpty()) {
        m_layout = ToolBarRows::stateOf(&m_window);
        for (const QDockWidget *dock : docks())
            connect(dock, &QDockWidget::dockLocationChanged, this, [this, dock] { relocated(*dock); });
    }
    m_count = dockedCount();
    if (orientation == Qt::Vertical)
        m_height = least.height();
    else
        m_width = least.width();
    join();
}

/// To where the user wants it. What the window looks like then is the user's layout.
void JoinedDocks::relocated(const QDockWidget &dock)
{
    if (!m_isArranging && !dock.isFloating())
        forget();
}

void JoinedDocks::forget()
{
    m_layout.clear();
    m_height = m_width = 0;
    for (const QDockWidget *dock : docks())
        dock->disconnect(this);
}

bool JoinedDocks::needsLess() const
{
    if (isEmpty())
        return false;
    return dockedCount() < m_count || (m_height > 0 && m_window.height() >= m_height)
           || (m_width > 0 && m_window.width() >= m_width);
}

void JoinedDocks::restoreOwn()
{
    const QScopedValueRollback<bool> arranging(m_isArranging, true);
    const QList<DockNow> docks = stateOf(this->docks(), m_window);
    const QList<BarNow> bars = barsOf(m_window);
    QLayout *layout = m_window.layout();
    const QLayout::SizeConstraint constraint = layout->sizeConstraint();
    layout->setSizeConstraint(QLayout::SetNoConstraint); // otherwise the window is enlarged
    m_window.restoreState(m_layout);
    restoreDocks(m_window, docks);
    restoreBars(m_window, bars);
    layout->activate();
    layout->setSizeConstraint(constraint);
}

void JoinedDocks::apply(const std::function<void()> &again)
{
    const QList<DockNow> before = stateOf(docks(), m_window);
    m_window.setUpdatesEnabled(false);
    restoreOwn();
    const QByteArray own = m_layout;
    forget();
    again();
    if (!isEmpty())
        m_layout = own; // the sizes are those of before, not as reduced
    for (const DockNow &each : before) {
        if (each.isInFront)
            each.dock->raise();
    }
    m_window.setUpdatesEnabled(true);
}

void JoinedDocks::withOwnLayout(const std::function<void()> &use)
{
    if (isEmpty()) {
        use();
        return;
    }
    const QByteArray joined = m_window.saveState();
    m_window.setUpdatesEnabled(false);
    restoreOwn();
    use();
    {
        const QScopedValueRollback<bool> arranging(m_isArranging, true);
        m_window.restoreState(joined);
        m_window.layout()->activate();
    }
    m_window.setUpdatesEnabled(true);
}

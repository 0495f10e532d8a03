#include "dockfit.h"
#include "joineddocks.h"
#include <algorithm>
#include <array>
#include <QDockWidget>
#include <QEvent>
#include <QLayout>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <utility>

namespace {
constexpr int TabHeight = 30; ///< pixels
constexpr int Separator = 6;  ///< pixels between two

using Group = QList<QDockWidget *>; ///< dock windows that share a place, as tabs

bool isDocked(const QDockWidget *dock)
{
    return !dock->isHidden() && !dock->isFloating();
}

/// By their places, which a window that has just been shown does not have yet: it comes last.
QList<Group> groupsAt(const QMainWindow &window, Qt::DockWidgetArea area, const QDockWidget *shown)
{
    QList<Group> groups;
    for (QDockWidget *dock : window.findChildren<QDockWidget *>(Qt::FindDirectChildrenOnly)) {
        const auto holds = [dock](const Group &group) { return group.contains(dock); };
        if (!isDocked(dock) || window.dockWidgetArea(dock) != area || std::ranges::any_of(groups, holds))
            continue;
        Group group{dock};
        for (QDockWidget *tab : window.tabifiedDockWidgets(dock)) {
            if (isDocked(tab))
                group.append(tab);
        }
        groups.append(group);
    }
    const bool isAcross = area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea;
    const auto place = [&](const Group &group) {
        QList<int> places;
        for (const QDockWidget *dock : group)
            places.append(dock == shown ? QWIDGETSIZE_MAX : isAcross ? dock->x() : dock->y());
        return std::ranges::max(places); // those behind another one lie outside the window
    };
    std::ranges::stable_sort(groups, {}, place);
    return groups;
}

int extentOf(const Group &group, Qt::Orientation orientation)
{
    int extent = 0;
    for (const QDockWidget *dock : group) {
        const QSize least = dock->minimumSizeHint().expandedTo(dock->minimumSize());
        extent = std::max(extent, orientation == Qt::Vertical ? least.height() : least.width());
    }
    return extent + (orientation == Qt::Vertical && group.size() > 1 ? TabHeight : 0);
}

int extentOf(const QList<Group> &groups, Qt::Orientation orientation)
{
    int sum = 0;
    for (const Group &group : groups)
        sum += extentOf(group, orientation) + Separator;
    return sum;
}

/// The groups beside each other that need the most room and can become one; none if there are none.
QList<Group> widestRow(const QMainWindow &window, Qt::Orientation orientation, const QDockWidget *shown)
{
    const auto areas = orientation == Qt::Vertical ? std::array{Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea}
                                                   : std::array{Qt::TopDockWidgetArea, Qt::BottomDockWidgetArea};
    QList<Group> widest;
    for (const Qt::DockWidgetArea area : areas) {
        const QList<Group> groups = groupsAt(window, area, shown);
        if (groups.size() > 1 && extentOf(groups, orientation) > extentOf(widest, orientation))
            widest = groups;
    }
    return widest;
}

QSize leastSize(const QMainWindow &window)
{
    window.layout()->invalidate();
    return window.layout()->minimumSize();
}

/// Joins the last two groups. False if there is nothing to join.
bool join(QMainWindow &window, Qt::Orientation orientation, const QDockWidget *shown)
{
    const QList<Group> groups = widestRow(window, orientation, shown);
    if (groups.size() < 2)
        return false;
    JoinedDocks::of(window).join(orientation, leastSize(window), [&] {
        QDockWidget *above = groups[groups.size() - 2].last();
        for (QDockWidget *dock : groups.last())
            window.tabifyDockWidget(above, dock);
    });
    return true;
}

void joinUntilFit(QMainWindow &window, QDockWidget *shown, const QSize &room)
{
    for (const Qt::Orientation orientation : {Qt::Vertical, Qt::Horizontal}) {
        const auto isTooLarge = [&] {
            const QSize least = leastSize(window);
            return orientation == Qt::Vertical ? least.height() > room.height() : least.width() > room.width();
        };
        while (isTooLarge() && join(window, orientation, shown)) {
        }
    }
    if (shown && isDocked(shown))
        shown->raise();
}

/// The toolkit lays out a row as long as its least size, even beyond the edge of the window, before it makes the column
/// at the left narrower.
void makeRoomForRows(QMainWindow &window)
{
    window.layout()->activate();
    int beyond = 0;
    QList<QDockWidget *> column;
    for (QDockWidget *dock : window.findChildren<QDockWidget *>(Qt::FindDirectChildrenOnly)) {
        if (isDocked(dock) && window.dockWidgetArea(dock) == Qt::LeftDockWidgetArea && dock->x() >= 0)
            column.append(dock);
        else if (isDocked(dock))
            beyond = std::max(beyond, dock->geometry().right() + 1 - window.width());
    }
    if (beyond > 0 && !column.isEmpty())
        window.resizeDocks({column.first()}, {column.first()->width() - beyond}, Qt::Horizontal);
}

/// As small as the window has been: dock windows that have returned to their places can be joined again.
void setSmallest(QMainWindow &window, const QSize &least)
{
    JoinedDocks &joined = JoinedDocks::of(window);
    if (!joined.isEmpty())
        joined.smallest = least;
    window.setMinimumSize(least.boundedTo(joined.smallest));
}

/// Contents and tabs have their least sizes only when they are laid out, which may enlarge the window.
void fitAgain(QMainWindow *window, const QPointer<QDockWidget> &shown, const QSize &room, int rounds)
{
    QTimer::singleShot(0, window, [window, shown, room, rounds] {
        const QSize least = leastSize(*window);
        if (least.width() > room.width() || least.height() > room.height()) {
            const QSize size = window->size(); // which may have been made larger for another reason
            const int width = size.width() > least.width() ? size.width() : room.width();
            const int height = size.height() > least.height() ? size.height() : room.height();
            joinUntilFit(*window, shown, room);
            window->layout()->activate();
            window->resize(width, height);
        }
        makeRoomForRows(*window); // which also hides the bars of tabs that have moved
        if (rounds > 1)
            fitAgain(window, shown, room, rounds - 1);
        else
            setSmallest(*window, leastSize(*window));
    });
}

/// Reacts to contents with another least size and to another size of the window. The toolkit must not enlarge the
/// window before that.
class DockFitter : public QObject
{
public:
    explicit DockFitter(QMainWindow &window) : QObject(&window), m_window(window)
    {
        window.layout()->setSizeConstraint(QLayout::SetNoConstraint);
        window.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool isLaidOut =
            event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show || event->type() == QEvent::Resize;
        if (!isLaidOut || !m_window.isVisible())
            return false;
        // The requester has invalidated the layout. Doing that here would lay out the window again and again.
        const QSize least = m_window.layout()->minimumSize();
        const bool isKnown = least == m_least && m_window.size() == m_size;
        m_least = least;
        m_size = m_window.size();
        JoinedDocks &joined = JoinedDocks::of(m_window);
        if (least.width() > m_window.width() || least.height() > m_window.height()) {
            if (!isKnown)
                fitDocks(m_window);
        } else {
            if (!isKnown)
                m_window.setMinimumSize(least.boundedTo(joined.smallest));
            if (joined.needsLess())
                separateSoon();
        }
        return false;
    }

private:
    /// The layout is being applied now.
    void separateSoon()
    {
        if (std::exchange(m_isSeparating, true))
            return;
        QTimer::singleShot(0, this, [this] {
            m_isSeparating = false;
            JoinedDocks &joined = JoinedDocks::of(m_window);
            if (joined.needsLess())
                joined.apply([this] { joinUntilFit(m_window, nullptr, m_window.size()); });
        });
    }

    QMainWindow &m_window;
    QSize m_least; ///< at the last layout, with the size of the window
    QSize m_size;
    bool m_isSeparating = false; ///< soon
};
} // namespace

void keepDocksFitting(QMainWindow &window)
{
    new DockFitter(window); // owned by the window
}

void fitDocks(QMainWindow &window, QDockWidget *shown)
{
    constexpr int Rounds = 3;
    const QSize room = window.size();
    joinUntilFit(window, shown, room);
    fitAgain(&window, shown, room, Rounds);
}

void withOwnDockLayout(QMainWindow &window, const std::function<void()> &use)
{
    JoinedDocks::of(window).withOwnLayout(use);
}

void takeDockLayout(QMainWindow &window)
{
    JoinedDocks::of(window).forget();
}

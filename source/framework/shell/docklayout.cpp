#include "docklayout.h"
#include "dockfit.h"
#include "dockwindow.h"
#include "toolbarrows.h"
#include <QGuiApplication>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {
using Placed = std::pair<QWidget *, DockPlacement>;

const auto StateKey = u"State"_s;

QString groupOf(ActivityState state)
{
    return isDebugState(state) ? u"Geometry/Debugger"_s : u"Geometry/Editor"_s;
}

/// Dock widget areas and tool bar areas have the same numbers.
int edgeOfArea(int area)
{
    switch (area) {
    case Qt::TopDockWidgetArea:
        return DockPlacement::Top;
    case Qt::BottomDockWidgetArea:
        return DockPlacement::Bottom;
    case Qt::RightDockWidgetArea:
        return DockPlacement::Right;
    case Qt::LeftDockWidgetArea:
        return DockPlacement::Left;
    default:
        return DockPlacement::Unmanaged;
    }
}

int areaOfEdge(int edge)
{
    switch (edge) {
    case DockPlacement::Top:
        return Qt::TopDockWidgetArea;
    case DockPlacement::Bottom:
        return Qt::BottomDockWidgetArea;
    case DockPlacement::Right:
        return Qt::RightDockWidgetArea;
    case DockPlacement::Left:
        return Qt::LeftDockWidgetArea;
    default:
        return Qt::NoDockWidgetArea;
    }
}

bool isAcross(int edge)
{
    return edge == DockPlacement::Top || edge == DockPlacement::Bottom;
}

bool isTornOff(QWidget *window)
{
    if (const auto *dock = qobject_cast<QDockWidget *>(window))
        return dock->isFloating();
    const auto *bar = qobject_cast<QToolBar *>(window);
    return bar && bar->isFloating();
}

void tearOff(QWidget *window, const DockPlacement &placement)
{
    if (auto *dock = qobject_cast<QDockWidget *>(window))
        dock->setFloating(true);
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    window->setGeometry(ontoDesktop(placement.geometry, desktop));
}

/// Rows or columns of dock windows at one edge, each in the order of offsets.
QList<QList<Placed>> linesAt(int edge, const QList<Placed> &docked)
{
    QList<QList<Placed>> lines;
    for (const Placed &placed : docked) {
        if (placed.second.edge != edge || !qobject_cast<QDockWidget *>(placed.first))
            continue;
        if (lines.isEmpty() || placed.second.newLine)
            lines.append(QList<Placed>());
        lines.last().append(placed);
    }
    for (QList<Placed> &line : lines)
        std::ranges::stable_sort(line, {}, [](const Placed &placed) { return placed.second.offset; });
    return lines;
}

QDockWidget *dockOf(const Placed &placed)
{
    return static_cast<QDockWidget *>(placed.first);
}

void placeDocks(QMainWindow *window, int edge, const QList<Placed> &docked)
{
    const QList<QList<Placed>> lines = linesAt(edge, docked);
    const Qt::Orientation along = isAcross(edge) ? Qt::Horizontal : Qt::Vertical;
    const Qt::Orientation across = isAcross(edge) ? Qt::Vertical : Qt::Horizontal;
    QDockWidget *lineBefore = nullptr;
    for (const QList<Placed> &line : lines) {
        QDockWidget *first = dockOf(line.first());
        first->setFloating(false);
        window->addDockWidget(Qt::DockWidgetArea(areaOfEdge(edge)), first);
        if (lineBefore)
            window->splitDockWidget(lineBefore, first, across);
        lineBefore = first;
    }
    for (const QList<Placed> &line : lines) {
        QList<QDockWidget *> docks;
        QList<int> lengths;
        QList<int> depths;
        for (const Placed &placed : line) {
            QDockWidget *dock = dockOf(placed);
            if (!docks.isEmpty()) {
                dock->setFloating(false);
                window->addDockWidget(Qt::DockWidgetArea(areaOfEdge(edge)), dock);
                window->splitDockWidget(docks.last(), dock, along);
            }
            docks.append(dock);
            const QSize extent = placed.second.extent;
            lengths.append(qMax(1, isAcross(edge) ? extent.width() : extent.height()));
            depths.append(qMax(1, isAcross(edge) ? extent.height() : extent.width()));
        }
        window->resizeDocks(docks, lengths, along);
        window->resizeDocks(docks, depths, across);
    }
}

void placeToolBar(QMainWindow *window, QToolBar *bar, const DockPlacement &placement)
{
    const auto area = Qt::ToolBarArea(areaOfEdge(placement.edge));
    if (placement.newLine)
        window->addToolBarBreak(area);
    window->addToolBar(area, bar);
}
} // namespace

QString DockPlacement::text() const
{
    const QList<int> numbers =
        edge == TornOff ? QList<int>{edge, geometry.x(), geometry.y(), geometry.width(), geometry.height(), visible}
                        : QList<int>{edge, offset, newLine, extent.width(), extent.height(), visible};
    QStringList fields;
    for (const int number : numbers)
        fields.append(QString::number(number));
    return u'[' + fields.join(u',') + u']';
}

DockPlacement DockPlacement::fromText(const QString &text)
{
    const QStringList fields = text.mid(1, text.size() - 2).split(u',');
    const auto number = [&fields](qsizetype i) { return fields.value(i).toInt(); };
    DockPlacement placement;
    placement.edge = number(0);
    if (placement.edge == TornOff) {
        placement.geometry = QRect(number(1), number(2), number(3), number(4));
    } else {
        placement.offset = number(1);
        placement.newLine = number(2) != 0;
        placement.extent = QSize(number(3), number(4));
    }
    placement.visible = fields.last().toInt() != 0;
    return placement;
}

QRect ontoDesktop(QRect geometry, QSize desktop)
{
    if (geometry.x() > desktop.width())
        geometry.translate(-desktop.width(), 0);
    if (geometry.y() > desktop.height())
        geometry.translate(0, -desktop.height());
    return geometry;
}

DockLayout::DockLayout(QMainWindow *window, QSettings *settings, Windows windows)
    : m_window(window), m_settings(settings), m_windows(std::move(windows))
{}

DockPlacement DockLayout::placementOf(QWidget *window) const
{
    DockPlacement placement;
    placement.visible = !window->isHidden(); // a window hidden behind another tab counts as visible
    if (isTornOff(window)) {
        placement.edge = DockPlacement::TornOff;
        placement.geometry = window->geometry();
        return placement;
    }
    if (auto *dock = qobject_cast<DockWindow *>(window)) {
        placement.edge = edgeOfArea(m_window->dockWidgetArea(dock));
        placement.newLine = dock->newLine();
    } else if (auto *bar = qobject_cast<QToolBar *>(window)) {
        placement.edge = edgeOfArea(m_window->toolBarArea(bar));
        placement.newLine = m_window->toolBarBreak(bar) && !ToolBarRows::isWrapped(bar);
    }
    placement.offset = isAcross(placement.edge) ? window->x() : window->y();
    if (window->testAttribute(Qt::WA_WState_Created) || window->isVisible())
        placement.extent = window->size();
    return placement;
}

void DockLayout::save(ActivityState state) const
{
    m_settings->beginGroup(groupOf(state));
    withOwnDockLayout(*m_window, [this] {
        for (QWidget *window : m_windows())
            m_settings->setValue(window->objectName(), placementOf(window).text());
        m_settings->setValue(StateKey, ToolBarRows::stateOf(m_window));
    });
    m_settings->endGroup();
}

bool DockLayout::isStored(ActivityState state) const
{
    m_settings->beginGroup(groupOf(state));
    const bool stored = !m_settings->childKeys().isEmpty();
    m_settings->endGroup();
    return stored;
}

void DockLayout::restore(ActivityState state) const
{
    m_settings->beginGroup(groupOf(state));
    QList<Placed> placed;
    for (QWidget *window : m_windows()) {
        const QString entry = m_settings->value(window->objectName()).toString();
        if (entry.isEmpty())
            break;
        placed.append({window, DockPlacement::fromText(entry)});
    }
    const QByteArray exact = m_settings->value(StateKey).toByteArray();
    m_settings->endGroup();
    QLayout *layout = m_window->layout();
    const QLayout::SizeConstraint constraint = layout->sizeConstraint();
    layout->setSizeConstraint(QLayout::SetNoConstraint); // on the way, docks side by side would enlarge the window
    takeDockLayout(*m_window);
    place(placed);
    m_window->restoreState(exact);
    if (m_window->isVisible())
        fitDocks(*m_window); // it may have been larger when the layout was stored
    layout->setSizeConstraint(constraint);
}

void DockLayout::place(const QList<Placed> &all) const
{
    for (const auto &[window, placement] : all) {
        if (placement.edge == DockPlacement::TornOff)
            tearOff(window, placement);
        else if (auto *bar = qobject_cast<QToolBar *>(window); bar && areaOfEdge(placement.edge))
            placeToolBar(m_window, bar, placement);
        else if (auto *dock = qobject_cast<DockWindow *>(window))
            dock->setNewLine(placement.newLine);
    }
    for (const int edge : {DockPlacement::Top, DockPlacement::Bottom, DockPlacement::Right, DockPlacement::Left})
        placeDocks(m_window, edge, all);
    for (const auto &[window, placement] : all)
        window->setVisible(placement.visible);
}

#include "debugwindows.h"
#include "activity.h"
#include "currentlocation.h"
#include "debugqueries.h"
#include "dockaction.h"
#include "dockwindow.h"
#include "multiwidget.h"
#include "windowservices.h"
#include <QAction>
#include <QMainWindow>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace {
constexpr int MessageMilliseconds = 20000; ///< time to read what was wrong with an entry
constexpr int TabHeight = 30;              ///< pixels, of the tabs of docks that lie one behind the other

/// A window's dock, and the action that shows and hides it.
struct Description
{
    const char *objectName;
    const char *caption;
    const char *action;
    Qt::DockWidgetArea area;
    bool newLine;
    // Of an action that the UI file does not declare
    const char *menuText = nullptr;
    const char *key = nullptr;
    const char *statusTip = nullptr;
};

constexpr std::array<Description, DebugWindows::WindowCount> Descriptions{{
    {"registerDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Registers"), "debugToggleRegisterWindow",
     Qt::RightDockWidgetArea, false},
    {"peripheralDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Peripherals"), "debugTogglePeripheralWindow",
     Qt::RightDockWidgetArea, false},
    {"watchDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Watches"), "debugToggleWatchWindow", Qt::RightDockWidgetArea,
     true},
    {"memoryDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Memory"), "debugToggleMemoryWindow", Qt::TopDockWidgetArea,
     true},
    {"callStackDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Call Stack"), "debugToggleCallStackWindow",
     Qt::RightDockWidgetArea, true, QT_TRANSLATE_NOOP("DebugWindows", "&Call Stack"), "Alt+9",
     QT_TRANSLATE_NOOP("DebugWindows", "Shows or hides the functions that were called")},
    {"variablesDockWindow", QT_TRANSLATE_NOOP("DebugWindows", "Variables"), "debugToggleVariablesWindow",
     Qt::RightDockWidgetArea, true, QT_TRANSLATE_NOOP("DebugWindows", "&Variables"), "Alt+0",
     QT_TRANSLATE_NOOP("DebugWindows", "Shows or hides the variables of the function")},
}};
} // namespace

DebugWindows::DebugWindows(const Activity &activity, WindowServices &services, QObject *parent)
    : QObject(parent), m_activity(activity), m_services(services)
{
    for (int i = 0; i < WindowCount; ++i) {
        const Description &description = Descriptions[size_t(i)];
        DockWindow *dock =
            services.addDock(QString::fromLatin1(description.objectName), tr(description.caption), description.area);
        dock->setNewLine(description.newLine);
        dock->hide();
        m_windows[size_t(i)].dock = dock;
        connect(dock, &QDockWidget::visibilityChanged, this,
                [this, i](bool visible) { visibilityChanged(Window(i), visible); });
        if (description.menuText && services.dialogParent())
            addDockAction(dock, services.dialogParent(),
                          {QString::fromLatin1(description.action), tr(description.menuText),
                           QString::fromLatin1(description.key), tr(description.statusTip)});
    }
    connect(&activity, &Activity::stateEntering, this, [this](ActivityState next) {
        DebugQueries::raiseGeneration();
        setPaused(next == StatePaused);
    });
}

void DebugWindows::showFirstLayout()
{
    auto *window = qobject_cast<QMainWindow *>(m_services.dialogParent());
    if (!window)
        return;
    const auto height = [this](Window each) { return dock(each)->minimumSizeHint().height() + TabHeight; };
    int room = (window->centralWidget() ? window->centralWidget() : window)->height() - height(CallStack);
    window->addDockWidget(Qt::RightDockWidgetArea, dock(CallStack));
    for (const auto &[above, each] : {std::pair(CallStack, Variables), std::pair(Variables, Watches)}) {
        room -= height(each);
        if (room >= 0)
            window->splitDockWidget(dock(above), dock(each), Qt::Vertical);
        else
            window->tabifyDockWidget(dock(above), dock(each)); // otherwise the window would grow
    }
    window->tabifyDockWidget(dock(Watches), dock(Registers));
    for (const Window each : {CallStack, Variables, Watches, Registers})
        dock(each)->show();
    dock(room < 0 ? Variables : Watches)->raise(); // in the group that contains both, watches are still empty
    if (window->tabifiedDockWidgets(dock(CallStack)).contains(dock(Variables)))
        dock(CallStack)->raise();
    window->resizeDocks({dock(CallStack)}, {window->width() / 4}, Qt::Horizontal);
    const int quarter = window->height() / 4;
    if (room >= 0) // most room for the variables
        window->resizeDocks({dock(CallStack), dock(Variables), dock(Watches)}, {quarter, 2 * quarter, quarter},
                            Qt::Vertical);
}

void DebugWindows::setContent(Window window, MultiWidget *content)
{
    Entry &entry = m_windows[window];
    entry.content = content;
    entry.dock->setWidget(content);
    content->setPaused(m_activity.state() == StatePaused);
    connect(content, &MultiWidget::doUpdate, this, [this, window] { updateOthers(window); });
    connect(content, &MultiWidget::message, this,
            [this](const QString &text) { m_services.showMessage(text, MessageMilliseconds); });
    connect(content, &MultiWidget::placeChosen, this, &DebugWindows::placeChosen);
}

void DebugWindows::setAppearance(const PaneAppearance &appearance)
{
    for (const Entry &entry : m_windows) {
        if (entry.content)
            entry.content->setAppearance(appearance);
    }
}

void DebugWindows::toggle(Window window)
{
    Entry &entry = m_windows[window];
    if (entry.dock->isHidden())
        entry.outdated = true;
    entry.dock->toggleVisible();
}

void DebugWindows::updateCheckMarks()
{
    for (int i = 0; i < WindowCount; ++i) {
        QAction *action = m_services.action(QString::fromLatin1(Descriptions[size_t(i)].action));
        if (!action)
            continue;
        const QSignalBlocker blocker(action); // the mark alone changes
        action->setChecked(m_windows[size_t(i)].dock->isVisible());
    }
}

void DebugWindows::updateRegisters()
{
    update(Registers);
}

void DebugWindows::updateData()
{
    for (const Window window : {Peripherals, Watches, Memory, CallStack, Variables})
        update(window);
}

void DebugWindows::update(Window window)
{
    Entry &entry = m_windows[window];
    entry.outdated = !entry.content || !entry.content->isVisible();
    if (entry.outdated)
        return;
    const QScopedValueRollback updating(m_updating, true);
    entry.content->update();
}

/// A pane of @p written has changed the target, and the other panes of that window have been refreshed.
void DebugWindows::updateOthers(Window written)
{
    if (m_updating)
        return;
    forgetCurrentLocations();
    for (int i = 0; i < WindowCount; ++i) {
        if (i != written)
            update(Window(i));
    }
    Q_EMIT valuesWritten();
}

void DebugWindows::visibilityChanged(Window window, bool visible)
{
    if (visible && m_windows[window].outdated)
        update(window);
}

void DebugWindows::setPaused(bool paused)
{
    for (const Entry &entry : m_windows) {
        if (entry.content)
            entry.content->setPaused(paused);
    }
}

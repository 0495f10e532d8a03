#include "editavailability.h"
#include "availabilitywindow.h"
#include "focuswithin.h"
#include "outputwindow.h"
#include "projecttree.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>

EditAvailability::EditAvailability(AvailabilityWindow &window, const WindowServices &services)
    : QObject(services.viewManager()), m_window(window), m_services(services)
{
    const ViewManager *views = services.viewManager();
    const auto pass = [this, views](auto viewSignal, auto windowSignal) {
        connect(views, viewSignal, this, [this, windowSignal](bool available) { report(available, windowSignal); });
    };
    pass(&ViewManager::undoAvailable, &AvailabilityWindow::undoAvailable);
    pass(&ViewManager::redoAvailable, &AvailabilityWindow::redoAvailable);
    pass(&ViewManager::copyAvailable, &AvailabilityWindow::copyAvailable);
    pass(&ViewManager::cutAvailable, &AvailabilityWindow::cutAvailable);
    pass(&ViewManager::pasteAvailable, &AvailabilityWindow::pasteAvailable);
    connect(views, &ViewManager::viewActivated, this, &EditAvailability::viewActivated);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { focusMoved(now); });
}

void EditAvailability::viewActivated(const View *view)
{
    if (!isElsewhere(QApplication::focusWidget()))
        Q_EMIT m_window.selectAllAvailable(view);
    if (view)
        return;
    Q_EMIT m_window.backAvailable(false);
    Q_EMIT m_window.forwardAvailable(false);
    if (isElsewhere(QApplication::focusWidget()))
        return;
    Q_EMIT m_window.undoAvailable(false);
    Q_EMIT m_window.redoAvailable(false);
    Q_EMIT m_window.copyAvailable(false);
    Q_EMIT m_window.cutAvailable(false);
    Q_EMIT m_window.pasteAvailable(false);
}

/// Menus and dialogs take the focus for a while, and their commands are for the widget that had it before.
bool EditAvailability::isElsewhere(const QWidget *focus) const
{
    const bool isPassing = !focus || qobject_cast<const QMenuBar *>(focus) || qobject_cast<const QMenu *>(focus)
                           || qobject_cast<const QDialog *>(focus->window());
    return !isPassing && !hasFocusWithin(m_services.viewManager());
}

void EditAvailability::report(bool available, void (AvailabilityWindow::*signal)(bool))
{
    if (!isElsewhere(QApplication::focusWidget()))
        Q_EMIT(m_window.*signal)(available);
}

/// Called after the widget has received the focus, and so after its reports.
void EditAvailability::focusMoved(const QWidget *focus)
{
    if (hasFocusWithin(m_services.viewManager()))
        Q_EMIT m_window.selectAllAvailable(m_services.viewManager()->currentView());
    if (!isElsewhere(focus))
        return;
    const bool isTree = qobject_cast<const ProjectTree *>(focus);
    const bool isOutput = hasFocusWithin(m_services.outputWindow());
    Q_EMIT m_window.selectAllAvailable(isOutput && m_services.outputWindow()->currentPage());
    if (!isTree) {
        Q_EMIT m_window.undoAvailable(false);
        Q_EMIT m_window.redoAvailable(false);
    }
    if (!isOutput)
        Q_EMIT m_window.copyAvailable(false);
    if (!isTree && !isOutput) {
        Q_EMIT m_window.cutAvailable(false);
        Q_EMIT m_window.pasteAvailable(false);
    }
}

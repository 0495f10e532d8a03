#pragma once
#include <QMap>
#include <QObject>
#include <QPointer>
class DockWindow;
class WindowServices;

/// The dock windows for widgets of scripts. They are deleted with their widgets.
class DockedWidgets : public QObject
{
    Q_OBJECT
public:
    explicit DockedWidgets(WindowServices &window);

    /// Puts @p widget into a new dock window at an edge: 0 top, 1 right, 2 bottom, 3 left, others right. If the
    /// stored layout contains the window, it is shown at the place stored there. A widget in such a window is moved to
    /// the edge with it.
    void dock(QWidget *widget, int position);

private:
    void createDock(QWidget *widget, Qt::DockWidgetArea area);
    static void moveDock(DockWindow *dock, Qt::DockWidgetArea area);
    [[nodiscard]] QString unusedName(const QString &name) const;
    void dockedWidgetDestroyed(QObject *widget);

    WindowServices &m_window;
    QMap<QObject *, QPointer<DockWindow>> m_docks; ///< by widget
};

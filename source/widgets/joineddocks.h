#pragma once
#include <functional>
#include <QByteArray>
#include <QList>
#include <QObject>
#include <QSize>
#include <QWidget>
class QDockWidget;
class QMainWindow;

/// The user's own layout of the dock windows of a main window, while some of them are joined to tabs for lack of room.
class JoinedDocks : public QObject
{
public:
    /// The one of @p window, which owns it.
    static JoinedDocks &of(QMainWindow &window);

    [[nodiscard]] bool isEmpty() const { return m_layout.isEmpty(); }
    /// Runs @p join, which joins two dock windows because the main window, of which @p least is the least size, is too
    /// small along @p orientation. The first time the layout before that is the user's own.
    void join(Qt::Orientation orientation, const QSize &least, const std::function<void()> &join);
    /// The present layout is the user's own.
    void forget();
    /// True if fewer dock windows would be joined now, as the main window is larger or shows fewer of them.
    [[nodiscard]] bool needsLess() const;
    /// Applies the user's own layout, whether or not there is room for it. Dock windows that the user has shown, hidden
    /// or torn off since stay that way, and tool bars stay in their places. @p again then joins what does not fit.
    void apply(const std::function<void()> &again);
    /// Runs @p use with the user's own layout, and applies the present one again.
    void withOwnLayout(const std::function<void()> &use);

    /// The least size to which the main window can be brought, by joining.
    QSize smallest{QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};

private:
    explicit JoinedDocks(QMainWindow &window);
    [[nodiscard]] QList<QDockWidget *> docks() const;
    [[nodiscard]] qsizetype dockedCount() const;
    void restoreOwn();
    void relocated(const QDockWidget &dock);

    QMainWindow &m_window;
    QByteArray m_layout;        ///< the user's own; empty if no dock windows are joined
    int m_height = 0;           ///< of the window, from which on fewer need to be joined; 0: none for lack of height
    int m_width = 0;            ///< likewise
    qsizetype m_count = 0;      ///< of docked windows, at the last join
    bool m_isArranging = false; ///< otherwise the user changes the layout
};

#pragma once
#include <QObject>
#include <QTimer>
class QMainWindow;
class QToolBar;

/// Begins a new row of tool bars at the top of a window where the window is too narrow for the next bar, which would
/// hide its last buttons otherwise. In a wider window the bar returns. Rows of the user stay as they are.
class ToolBarRows : public QObject
{
    Q_OBJECT
public:
    explicit ToolBarRows(QMainWindow *window);

    /// Whether @p bar begins a row because the window is narrow.
    [[nodiscard]] static bool isWrapped(const QToolBar *bar);
    /// The state of @p window as it is without these rows.
    [[nodiscard]] static QByteArray stateOf(QMainWindow *window);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void arrange();
    [[nodiscard]] QList<QToolBar *> barsAtTheTop() const;

    QMainWindow *const m_window;
    QTimer m_timer; ///< arranges the bars once after all changes of the layout
};

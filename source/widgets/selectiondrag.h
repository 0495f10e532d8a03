#pragma once
#include <QObject>
#include <QPoint>
#include <QTimer>
class QWidget;

/// A drag of the mouse that selects text in a view of lines. While the mouse is outside the view, timeout() is emitted
/// at intervals, so that the view scrolls and the selection grows.
class SelectionDrag : public QObject
{
    Q_OBJECT
public:
    SelectionDrag();

    void begin(const QPoint &position);
    /// Returns whether the mouse is inside @p viewport. Otherwise the steps are how far it is beyond an edge.
    bool moveTo(const QPoint &position, const QWidget &viewport, int charWidth, int lineHeight);
    void end();
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

    [[nodiscard]] const QPoint &start() const { return m_start; }
    [[nodiscard]] bool isOutside() const { return m_columns || m_lines; }
    [[nodiscard]] int columnStep() const { return m_columns; } ///< Negative to the left.
    [[nodiscard]] int lineStep() const { return m_lines; }     ///< Negative upwards.

Q_SIGNALS:
    void timeout();

private:
    QPoint m_start;
    int m_columns = 0;
    int m_lines = 0;
    QTimer m_timer;
};

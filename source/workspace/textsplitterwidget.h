#pragma once
#include <QWidget>

/// The small handle above the scroll bar of a pane. Dragging it down splits the pane.
class TextSplitterWidget : public QWidget
{
    Q_OBJECT
public:
    explicit TextSplitterWidget(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void dragStarted();
    void dragMoved(const QPoint &globalPosition);
    void dragFinished(const QPoint &globalPosition);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_dragging = false;
};

#pragma once
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
class View;

/// The frame around a view. It asks the view before it closes, and reports presses on its title bar, because a press on
/// the active frame does not change the focus.
class MDIFrame : public QMdiSubWindow
{
    Q_OBJECT
public:
    explicit MDIFrame(View *view);
    [[nodiscard]] View *view() const { return m_view; }

Q_SIGNALS:
    void titleBarClicked();

protected:
    void closeEvent(QCloseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    const QPointer<View> m_view;
};

/// The area that contains the frames.
class MDIWorkspace : public QMdiArea
{
    Q_OBJECT
public:
    using QMdiArea::QMdiArea;

    /// Creates a frame around @p view; it is not shown yet.
    MDIFrame *addFrame(View *view);
    /// The view of the active frame, or null.
    [[nodiscard]] View *activeView() const;
    [[nodiscard]] static MDIFrame *frameOf(View *view);

Q_SIGNALS:
    void titleBarClicked();
};

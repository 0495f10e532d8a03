#pragma once
#include <QAbstractScrollArea>

/// A scroll area whose contents have a size in pixels. They may be higher than the range of a scroll bar: one step of
/// the bar then stands for several pixels.
class ScrollView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    /// Which heights the vertical scroll bar stands for.
    enum class Vertical {
        Pixels,
        Own ///< those of a derived class, which updates the bar; the contents have no height then
    };
    explicit ScrollView(QWidget *parent = nullptr, Vertical vertical = Vertical::Pixels);

    void resizeContents(int width, qint64 height);
    [[nodiscard]] int contentsWidth() const { return m_width; }
    [[nodiscard]] qint64 contentsHeight() const { return m_height; }
    /// The place of the contents at the viewport's top left corner.
    [[nodiscard]] int contentsX() const { return m_x; }
    [[nodiscard]] qint64 contentsY() const { return m_y; }
    [[nodiscard]] int visibleWidth() const { return viewport()->width(); }
    [[nodiscard]] int visibleHeight() const { return viewport()->height(); }
    [[nodiscard]] qint64 bottomContentsY() const; ///< the greatest contentsY()

    /// Moves the contents so that @p x, @p y come to the top left corner, or as near to it as possible.
    void setContentsPos(int x, qint64 y);
    /// Scrolls only as far as necessary to show a place with margins around it.
    void ensureVisible(int x, qint64 y, int xMargin, qint64 yMargin);
    void setContentMargin(int left) { setViewportMargins(left, 0, 0, 0); } ///< Room for a margin beside the viewport.
    /// How far one click on an arrow scrolls.
    void setSteps(int columnWidth, int lineHeight);
    void scrollByWheel(QWheelEvent *event) { wheelEvent(event); }

Q_SIGNALS:
    void contentsMoving(int x, qint64 y); ///< the contents are about to move there

protected:
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateBars();
    void moveTo(int x, qint64 y);

    const Vertical m_vertical;
    int m_width = 0;
    qint64 m_height = 0;
    int m_x = 0;
    qint64 m_y = 0;
    qint64 m_scale = 1; ///< pixels that one step of the vertical bar stands for
    int m_lineHeight = 1;
    bool m_settingBars = false;
};

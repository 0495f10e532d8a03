#pragma once
#include "marktable.h"
#include <functional>
#include <QHash>
#include <QPixmap>
#include <QWidget>
class ScrollView;

/// The margin of a read-only view. It keeps the marks of the lines itself, by the numbers of the lines.
class MarkerWidget : public QWidget
{
    Q_OBJECT
public:
    static constexpr int Width = 18; ///< pixels
    using enum MarkTable::Bit;

    /// @p view is what the margin belongs to: it is scrolled by a wheel above the margin.
    explicit MarkerWidget(ScrollView *view, QWidget *parent = nullptr);

    /// Where the pictures come from, by their file names.
    void setPictures(const std::function<QPixmap(const QString &name)> &pictures);
    /// The tool tip of a line with a breakpoint.
    void setToolTips(const std::function<QString(int line)> &toolTips) { m_toolTips = toolTips; }
    void setLineHeight(int height);
    [[nodiscard]] int lineHeight() const { return m_lineHeight; }
    [[nodiscard]] qint64 offset() const { return m_offset; }

    /// Lines count from 1; the rest is as in MarkTable.
    void setMarker(int line, int mask, bool on, bool alternate);
    void clearMarkers(int mask);
    [[nodiscard]] bool hasMarker(int line, int mask) const;
    [[nodiscard]] const QMap<int, int> &markers() const { return m_markers.bits(); }
    void setMarkers(const QMap<int, int> &markers); ///< Replaces all marks.

public Q_SLOTS:
    void setPosition(int x, qint64 y); ///< Of the view's contents.

Q_SIGNALS:
    void toggleBreakpoint(int line); ///< counts from 1

protected:
    /// The line whose marks stand at a height of the widget, 0 for none.
    [[nodiscard]] virtual int lineAt(int y) const;
    virtual void paintMarkers(QPainter &painter);
    /// Draws the marks of a line in the row whose top is at @p top.
    void paintLine(QPainter &painter, int line, int top);

    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void drawPicture(QPainter &painter, const QString &name, int top);
    void showToolTip(const QPoint &position);

    ScrollView *const m_view;
    std::function<QPixmap(const QString &)> m_pictures;
    std::function<QString(int)> m_toolTips;
    QHash<QString, QPixmap> m_loaded;
    qreal m_loadedRatio = 0; ///< device pixels per pixel that the pictures were loaded for
    MarkTable m_markers;
    int m_lineHeight = 10;
    qint64 m_offset = 0;
};

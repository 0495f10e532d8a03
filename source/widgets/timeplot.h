#pragma once
#include "timeseries.h"
#include <memory>
#include <QPen>
#include <QWidget>

/// A plot of values over time. The time axis follows the present until the user looks at the past or pauses the plot;
/// recording goes on meanwhile.
///
/// The wheel zooms in time, with Ctrl in the values; a drag moves both; a double click shows the present again, with
/// all values. The keys: arrows, Page Up and Page Down move, "+" and "-" zoom in time, Shift+Up and Shift+Down in the
/// values, Home and End go to the first sample and to the present, Space pauses, Ctrl+Left and Ctrl+Right move the
/// reading line.
class TimePlot : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    struct Curve
    {
        QString name;
        int style = 0; ///< colour and dashes, see curvePen()
        std::shared_ptr<const TimeSeries> series;
    };
    static constexpr qint64 ShortestSpan = 100; ///< in ms
    static constexpr qint64 LongestSpan = qint64(7) * 24 * 3600 * 1000;

    explicit TimePlot(QWidget *parent = nullptr);

    void setCurves(const QList<Curve> &curves);
    [[nodiscard]] const QList<Curve> &curves() const { return m_curves; }
    void setNow(qint64 time); ///< The present. Repaints the plot.
    [[nodiscard]] qint64 now() const { return m_now; }

    [[nodiscard]] qint64 span() const { return m_span; } ///< The length of the time axis in ms.
    void setSpan(qint64 span);
    [[nodiscard]] qint64 end() const { return m_following ? m_now : m_end; } ///< The time at the right edge.
    void showAll();                                                          ///< All samples, up to the present.
    [[nodiscard]] bool isFollowing() const { return m_following; }
    void setFollowing(bool following);
    /// The range of the value axis that the user has chosen; nothing if it follows the values on screen.
    [[nodiscard]] std::optional<ValueRange> fixedRange() const { return m_fixedRange; }
    void setFixedRange(const std::optional<ValueRange> &range); ///< One that is empty or not finite is ignored.
    [[nodiscard]] ValueRange shownRange() const;

    /// The time of the reading line; nothing if there is none.
    [[nodiscard]] std::optional<qint64> readingTime() const { return m_reading; }
    void setReadingTime(const std::optional<qint64> &time);
    /// What the plot shows, for test drivers and assistive programs: its axes and the values of each curve.
    [[nodiscard]] QString text() const;

    /// The line of a curve on a light or dark @p base.
    [[nodiscard]] static QPen curvePen(int style, const QColor &base);
    /// Of the numbers at the scales.
    [[nodiscard]] static QColor scaleColour(const QPalette &palette);
    /// Behind the values at the reading line, and the colour in which that of a curve is written on it.
    [[nodiscard]] static QColor readingPaper(const QPalette &palette);
    [[nodiscard]] static QColor readingColour(int style, const QPalette &palette);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void viewChanged(); ///< By the user or by a function: span, end, following or the fixed range.

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    [[nodiscard]] QRect canvas() const; ///< without the scales
    [[nodiscard]] double xOf(qint64 time) const;
    [[nodiscard]] double yOf(double value, const ValueRange &range) const;
    [[nodiscard]] qint64 timeAt(double x) const;
    [[nodiscard]] double valueAtHeight(double y) const;
    void paintScales(QPainter &painter, const ValueRange &range) const;
    void paintCurve(QPainter &painter, const Curve &curve, const ValueRange &range) const;
    void paintReading(QPainter &painter) const;
    [[nodiscard]] QList<QList<QPointF>> lines(const TimeSeries &series, const ValueRange &range) const;
    void zoomTime(double factor, qint64 around);
    void zoomValues(double factor, double around);
    void moveTime(qint64 distance);
    void moveValues(double share);
    void goTo(qint64 end);
    bool moveByKey(int key);
    bool zoomByKey(const QKeyEvent &event);
    void moveReading(int direction);
    [[nodiscard]] std::optional<qint64> firstTime() const;
    void changed();

    QList<Curve> m_curves;
    qint64 m_now = 0;
    qint64 m_span = 30000;
    qint64 m_end = 0; ///< while not following
    bool m_following = true;
    std::optional<ValueRange> m_fixedRange;
    std::optional<qint64> m_reading;
    std::optional<QPoint> m_dragged; ///< where the mouse was during a drag
};

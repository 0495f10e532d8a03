#include "timeplot.h"
#include "accessibleviews.h"
#include "plotscale.h"
#include "rowpainter.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

using namespace Qt::StringLiterals;

namespace {
constexpr int Gap = 4;             ///< in pixels, between scales and canvas
constexpr int ScaleCharacters = 8; ///< that the scale of the values has room for
constexpr int HeightOfTick = 3;    ///< in lines of text
constexpr int WidthOfTick = 9;     ///< in characters
constexpr double LineWidth = 1.6;

// Hues that people with impaired colour vision can tell apart.
constexpr std::array LightColours{0xff0072b2U, 0xffd55e00U, 0xff007a5aU, 0xffb0468eU, 0xff8a6d00U, 0xff4b4bc8U};
constexpr std::array DarkColours{0xff56b4e9U, 0xffff9d4dU, 0xff3fcf9fU, 0xfff08cc8U, 0xfff0e442U, 0xffa6a6ffU};
constexpr std::array Dashes{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};

QColor mixed(const QColor &one, const QColor &other, double share)
{
    return QColor::fromRgbF(float(one.redF() * (1 - share) + other.redF() * share),
                            float(one.greenF() * (1 - share) + other.greenF() * share),
                            float(one.blueF() * (1 - share) + other.blueF() * share));
}

/// The values of the samples in one column of pixels.
struct PixelColumn
{
    int x = 0;
    double first = 0;
    double low = 0;
    double high = 0;
    double last = 0;
};

QString valueText(std::optional<double> value)
{
    return value ? QString::number(*value, 'g', 10) : TimePlot::tr("no value");
}
} // namespace

TimePlot::TimePlot(QWidget *parent) : QWidget(parent)
{
    installAccessibleViews();
    setAccessibleName(tr("Plot"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

QSize TimePlot::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(u'0') * 60, fontMetrics().height() * 14};
}

QSize TimePlot::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(u'0') * 24, fontMetrics().height() * 5};
}

void TimePlot::setCurves(const QList<Curve> &curves)
{
    m_curves = curves;
    update();
}

void TimePlot::setNow(qint64 time)
{
    m_now = time;
    update();
}

// The view ------------------------------------------------------------------------------------------------------------

void TimePlot::changed()
{
    update();
    Q_EMIT viewChanged();
}

void TimePlot::setSpan(qint64 span)
{
    m_span = std::clamp(span, ShortestSpan, LongestSpan);
    changed();
}

void TimePlot::setFollowing(bool following)
{
    if (following == m_following)
        return;
    m_end = m_now;
    m_following = following;
    changed();
}

void TimePlot::showAll()
{
    m_following = true;
    setSpan(m_now - firstTime().value_or(m_now));
}

void TimePlot::setFixedRange(const std::optional<ValueRange> &range)
{
    if (range && (!(range->low < range->high) || !std::isfinite(range->low) || !std::isfinite(range->high)))
        return;
    m_fixedRange = range;
    changed();
}

void TimePlot::setReadingTime(const std::optional<qint64> &time)
{
    m_reading = time;
    update();
}

ValueRange TimePlot::shownRange() const
{
    if (m_fixedRange)
        return *m_fixedRange;
    std::optional<ValueRange> all;
    for (const Curve &curve : m_curves) {
        const auto range = curve.series->range(end() - m_span, end());
        if (range)
            all = all ? ValueRange{std::min(all->low, range->low), std::max(all->high, range->high)} : *range;
    }
    return withMargin(all.value_or(ValueRange{0, 1}));
}

std::optional<qint64> TimePlot::firstTime() const
{
    std::optional<qint64> first;
    for (const Curve &curve : m_curves) {
        if (!curve.series->samples().isEmpty())
            first = std::min(first.value_or(m_now), curve.series->samples().constFirst().time);
    }
    return first;
}

/// Does not show times after the present or before the first sample.
void TimePlot::goTo(qint64 end)
{
    const qint64 first = firstTime().value_or(m_now);
    m_end = std::clamp(end, std::min(m_now, first + m_span), m_now);
    m_following = false;
    changed();
}

void TimePlot::moveTime(qint64 distance)
{
    goTo(end() + distance);
}

void TimePlot::moveValues(double share)
{
    const ValueRange range = shownRange();
    const double distance = (range.high - range.low) * share;
    setFixedRange(ValueRange{range.low + distance, range.high + distance});
}

/// While the plot follows the present, the present stays at its right edge.
void TimePlot::zoomTime(double factor, qint64 around)
{
    const qint64 span = std::clamp(qint64(double(m_span) * factor), ShortestSpan, LongestSpan);
    const double share = double(end() - around) / double(m_span);
    const qint64 newEnd = around + qint64(share * double(span));
    m_span = span;
    if (m_following)
        changed();
    else
        goTo(newEnd);
}

void TimePlot::zoomValues(double factor, double around)
{
    const ValueRange range = shownRange();
    setFixedRange(ValueRange{around - (around - range.low) * factor, around + (range.high - around) * factor});
}

// Painting ------------------------------------------------------------------------------------------------------------

QRect TimePlot::canvas() const
{
    const QFontMetrics metrics = fontMetrics();
    return rect().adjusted(metrics.horizontalAdvance(u'0') * ScaleCharacters + 2 * Gap, metrics.height() / 2 + Gap,
                           -metrics.horizontalAdvance(u'0') * 2, -metrics.height() - 2 * Gap);
}

double TimePlot::xOf(qint64 time) const
{
    const QRect area = canvas();
    return area.left() + double(time - (end() - m_span)) / double(m_span) * area.width();
}

/// Halves, since the range may be wider than the largest number.
double TimePlot::yOf(double value, const ValueRange &range) const
{
    const QRect area = canvas();
    const double share = (value / 2 - range.low / 2) / (range.high / 2 - range.low / 2);
    return area.top() + area.height() * (1 - std::clamp(share, -100.0, 100.0));
}

qint64 TimePlot::timeAt(double x) const
{
    const QRect area = canvas();
    return end() - m_span + qint64((x - area.left()) / std::max(1, area.width()) * double(m_span));
}

double TimePlot::valueAtHeight(double y) const
{
    const QRect area = canvas();
    const ValueRange range = shownRange();
    return range.low + (area.bottom() - y) / std::max(1, area.height()) * (range.high - range.low);
}

QPen TimePlot::curvePen(int style, const QColor &base)
{
    const bool dark = base.lightnessF() < 0.5;
    const auto count = LightColours.size();
    const size_t number = size_t(std::max(0, style));
    QPen pen(QColor::fromRgb(dark ? DarkColours[number % count] : LightColours[number % count]), LineWidth);
    pen.setStyle(Dashes[number / count % Dashes.size()]);
    return pen;
}

void TimePlot::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const ValueRange range = shownRange();
    paintScales(painter, range);
    painter.setClipRect(canvas().adjusted(0, -1, 1, 1));
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Curve &curve : m_curves)
        paintCurve(painter, curve, range);
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintReading(painter);
    painter.setClipping(false);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void TimePlot::paintCurve(QPainter &painter, const Curve &curve, const ValueRange &range) const
{
    const QPen pen = curvePen(curve.style, palette().color(QPalette::Base));
    const QPen dot(pen.color(), 2 * LineWidth, Qt::SolidLine, Qt::RoundCap);
    for (const QList<QPointF> &line : lines(*curve.series, range)) {
        painter.setPen(line.size() == 1 ? dot : pen); // a single sample between two gaps
        if (line.size() == 1)
            painter.drawPoint(line.constFirst());
        else
            painter.drawPolyline(line.constData(), int(line.size()));
    }
}

void TimePlot::paintScales(QPainter &painter, const ValueRange &range) const
{
    const QRect area = canvas();
    const QFontMetrics metrics = fontMetrics();
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QColor grid = mixed(base, text, 0.13);
    const QColor label = scaleColour(palette());
    const PlotTicks values = plotTicks(range, std::max(2, area.height() / (metrics.height() * HeightOfTick)));
    for (const double value : values.values) {
        const int y = int(std::lround(yOf(value, range)));
        painter.setPen(grid);
        painter.drawLine(area.left(), y, area.right(), y);
        painter.setPen(label);
        painter.drawText(QRect(Gap, y - metrics.height() / 2, area.left() - 2 * Gap, metrics.height()),
                         Qt::AlignRight | Qt::AlignVCenter, plotValueText(value, values.step));
    }
    const int tickWidth = metrics.horizontalAdvance(u'0') * WidthOfTick;
    const PlotTicks times = plotTimeTicks(end() - m_span, end(), area.width() / tickWidth);
    for (const double time : times.values) {
        if (time < 0)
            continue; // the recording is shorter than the scale
        const int x = int(std::lround(xOf(qint64(time))));
        painter.setPen(grid);
        painter.drawLine(x, area.top(), x, area.bottom());
        painter.setPen(label);
        const QString caption = plotTimeText(qint64(time), qint64(times.step));
        const int width = metrics.horizontalAdvance(caption);
        const int left = std::min(x - width / 2, rect().right() - width); // the last one is not cut off
        painter.drawText(left, area.bottom() + Gap + metrics.ascent(), caption);
    }
    painter.setPen(mixed(base, text, 0.35));
    painter.drawRect(area.adjusted(0, 0, -1, -1));
}

/// The lines of a curve between its gaps, with at most four points in a column of pixels.
QList<QList<QPointF>> TimePlot::lines(const TimeSeries &series, const ValueRange &range) const
{
    const QList<TimeSeries::Sample> &samples = series.samples();
    QList<QList<QPointF>> result{{}};
    std::optional<PixelColumn> column;
    const auto close = [&] {
        if (!column)
            return;
        for (const double value : {column->first, column->low, column->high, column->last}) {
            const QPointF point(column->x, yOf(value, range));
            if (result.constLast().isEmpty() || result.constLast().constLast() != point)
                result.last().append(point);
        }
        column.reset();
    };
    for (qsizetype i = std::max<qsizetype>(0, series.indexOf(end() - m_span) - 1); i < samples.size(); ++i) {
        const TimeSeries::Sample &sample = samples[i];
        const int x = int(std::clamp(xOf(sample.time), -1e6, 1e6));
        if (sample.isGap() || !column || column->x != x)
            close();
        if (sample.isGap())
            result.append(QList<QPointF>());
        else if (column)
            column = {x, column->first, std::min(column->low, sample.value), std::max(column->high, sample.value),
                      sample.value};
        else
            column = {x, sample.value, sample.value, sample.value, sample.value};
        if (sample.time > end())
            break; // the line leads out of the canvas
    }
    close();
    return result;
}

QColor TimePlot::readingPaper(const QPalette &palette)
{
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.08);
}

QColor TimePlot::scaleColour(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    return readableOn(base, mixed(base, palette.color(QPalette::Text), 0.75));
}

QColor TimePlot::readingColour(int style, const QPalette &palette)
{
    return readableOn(readingPaper(palette), curvePen(style, palette.color(QPalette::Base)).color());
}

void TimePlot::paintReading(QPainter &painter) const
{
    if (!m_reading || *m_reading > end() || *m_reading < end() - m_span)
        return;
    const QRect area = canvas();
    const QFontMetrics metrics = fontMetrics();
    const int x = int(xOf(*m_reading));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawLine(x, area.top(), x, area.bottom());
    QStringList rows{plotTimeText(*m_reading, 1)};
    int width = metrics.horizontalAdvance(rows.constFirst());
    for (const Curve &curve : m_curves) {
        rows.append(u"%1 = %2"_s.arg(curve.name, valueText(curve.series->valueAt(*m_reading))));
        width = std::max(width, metrics.horizontalAdvance(rows.constLast()));
    }
    QRect box(x + Gap, area.top() + Gap, width + 2 * Gap, int(rows.size()) * metrics.height() + 2 * Gap);
    if (box.right() > area.right())
        box.moveRight(x - Gap);
    painter.fillRect(box, readingPaper(palette()));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (i > 0)
            painter.setPen(readingColour(m_curves[i - 1].style, palette()));
        painter.drawText(box.left() + Gap, box.top() + Gap + int(i) * metrics.height() + metrics.ascent(), rows[i]);
    }
}

QString TimePlot::text() const
{
    const qint64 time = m_reading.value_or(end());
    const ValueRange range = shownRange();
    QString text = tr("%1 to %2, values from %3 to %4")
                       .arg(plotTimeText(std::max<qint64>(0, end() - m_span), 1), plotTimeText(end(), 1),
                            QString::number(range.low, 'g', 6), QString::number(range.high, 'g', 6));
    if (!m_following)
        text += tr(", paused");
    for (const Curve &curve : m_curves)
        text += tr("\n%1 = %2 at %3").arg(curve.name, valueText(curve.series->valueAt(time)), plotTimeText(time, 1));
    return text;
}

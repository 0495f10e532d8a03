#include "plotscale.h"
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {
constexpr double LargestPlain = 1e7;
constexpr double SmallestPlain = 1e-4;
constexpr double SmallestShare = 1e-12; ///< of a number; steps below it are lost in the rounding
constexpr double Rounding = 1e-9;
constexpr qint64 Second = 1000;
constexpr qint64 Minute = 60 * Second;
constexpr qint64 Hour = 60 * Minute;

PlotTicks ticksWithStep(const ValueRange &range, double step)
{
    PlotTicks ticks{{}, step};
    const double first = std::ceil(range.low / step - SmallestShare);
    for (int i = 0; (first + i) * step <= range.high + step * SmallestShare; ++i)
        ticks.values.append((first + i) * step);
    return ticks;
}

QString padded(qint64 number)
{
    return u"%1"_s.arg(number, 2, 10, QLatin1Char('0'));
}
} // namespace

PlotTicks plotTicks(const ValueRange &range, int most)
{
    const double length = range.high - range.low;
    const double largest = std::max(std::abs(range.low), std::abs(range.high));
    if (most < 1 || !std::isfinite(length) || length <= largest * SmallestShare)
        return {};
    const double least = length / most;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - Rounding))
            return ticksWithStep(range, factor * power);
    }
    return ticksWithStep(range, 10 * power);
}

QString plotValueText(double value, double step)
{
    const double largest = std::abs(value);
    const bool isZero = largest < step * Rounding; // and no "-0"
    if (isZero && step < SmallestPlain)
        return u"0"_s;
    if (largest >= LargestPlain || step < SmallestPlain) {
        const int digits = int(std::floor(std::log10(largest))) - int(std::floor(std::log10(step)));
        return QString::number(value, 'e', std::clamp(digits, 0, 12));
    }
    const int decimals = std::max(0, -int(std::floor(std::log10(step) + Rounding)));
    return QString::number(isZero ? 0.0 : value, 'f', decimals);
}

QString plotTimeText(qint64 time, qint64 step)
{
    const qint64 hours = time / Hour;
    QString text =
        hours > 0 ? u"%1:%2"_s.arg(QString::number(hours), padded(time / Minute % 60)) : QString::number(time / Minute);
    text += u':' + padded(time / Second % 60);
    if (step % Second != 0)
        text += u'.' + u"%1"_s.arg(time % Second, 3, 10, QLatin1Char('0')).left(step % 100 == 0 ? 1 : 3);
    return text;
}

PlotTicks plotTimeTicks(qint64 from, qint64 to, int most)
{
    static constexpr std::array Steps{qint64(1),   qint64(2),   qint64(5),   qint64(10), qint64(20), qint64(50),
                                      qint64(100), qint64(200), qint64(500), Second,     2 * Second, 5 * Second,
                                      10 * Second, 15 * Second, 30 * Second, Minute,     2 * Minute, 5 * Minute,
                                      10 * Minute, 15 * Minute, 30 * Minute, Hour,       2 * Hour,   6 * Hour,
                                      12 * Hour,   24 * Hour};
    if (most < 1 || to <= from)
        return {};
    for (const qint64 step : Steps) {
        if ((to - from) / step <= most)
            return ticksWithStep({double(from), double(to)}, double(step));
    }
    const qint64 days = (to - from) / (24 * Hour) / most + 1;
    return ticksWithStep({double(from), double(to)}, double(days * 24 * Hour));
}

ValueRange withMargin(const ValueRange &range)
{
    constexpr double Share = 0.05;
    const double length = range.high - range.low;
    const double largest = std::max(std::abs(range.low), std::abs(range.high));
    if (!std::isfinite(length))
        return {range.low, range.high};
    if (length <= largest * SmallestShare * 1000) {
        const double around = largest > 0 ? largest * 0.1 : 1;
        return {range.low - around, range.high + around};
    }
    return {range.low - Share * length, range.high + Share * length};
}

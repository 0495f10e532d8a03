#pragma once
#include "timeseries.h"
#include <QString>

// The scales of a plot.

/// Round numbers in a range, with equal distances of 1, 2 or 5 times a power of ten.
struct PlotTicks
{
    QList<double> values;
    double step = 0;
};

/// At most @p most ticks in a range. None for a range that is empty or too large for numbers.
[[nodiscard]] PlotTicks plotTicks(const ValueRange &range, int most);
/// A value on a scale whose ticks have this distance: with as many decimals as they need, large ones with an exponent.
[[nodiscard]] QString plotValueText(double value, double step);
/// A time in ms on a scale whose ticks have this distance in ms: "1:02.5", "1:00:00".
[[nodiscard]] QString plotTimeText(qint64 time, qint64 step);
/// Ticks for a scale of times in ms, whose distances are those of clocks: 1, 2, 5, 10, 15, 30 seconds and so on.
[[nodiscard]] PlotTicks plotTimeTicks(qint64 from, qint64 to, int most);
/// A range that a plot can show: one that is empty or small for its numbers gets wider, others get a margin.
[[nodiscard]] ValueRange withMargin(const ValueRange &range);

#include "timeseries.h"
#include <algorithm>
#include <cmath>

namespace {
constexpr qsizetype Group = 4; ///< samples of which the extremes stay

/// Appends the lowest and the highest of a group in the order of their times, and its first gap.
void appendExtremes(const TimeSeries::Sample *group, QList<TimeSeries::Sample> &result)
{
    const TimeSeries::Sample *low = nullptr;
    const TimeSeries::Sample *high = nullptr;
    const TimeSeries::Sample *gap = nullptr;
    for (const auto *sample = group; sample != group + Group; ++sample) {
        if (sample->isGap()) {
            gap = gap ? gap : sample;
            continue;
        }
        low = !low || sample->value < low->value ? sample : low;
        high = !high || sample->value >= high->value ? sample : high;
    }
    QList<const TimeSeries::Sample *> kept{low, high, gap};
    std::ranges::sort(kept);
    const auto repeated = std::ranges::unique(kept);
    kept.erase(repeated.begin(), repeated.end());
    for (const TimeSeries::Sample *sample : std::as_const(kept)) {
        if (sample)
            result.append(*sample);
    }
}
} // namespace

void TimeSeries::add(qint64 time, double value)
{
    if (!m_samples.isEmpty() && time < m_samples.constLast().time)
        return;
    const Sample sample{time, std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN()};
    if (sample.isGap() && (m_samples.isEmpty() || m_samples.constLast().isGap()))
        return;
    if (m_samples.size() >= MostSamples)
        thinOut();
    m_samples.append(sample);
}

/// The newest quarter stays as it is, because it is what the user looks at.
void TimeSeries::thinOut()
{
    const qsizetype old = m_samples.size() / 4 * 3 / Group * Group;
    QList<Sample> kept;
    kept.reserve(MostSamples);
    for (qsizetype i = 0; i < old; i += Group)
        appendExtremes(&m_samples.constData()[i], kept);
    kept.append(m_samples.sliced(old));
    m_samples = kept;
}

qsizetype TimeSeries::indexOf(qint64 time) const
{
    return std::ranges::lower_bound(m_samples, time, {}, &Sample::time) - m_samples.begin();
}

std::optional<ValueRange> TimeSeries::range(qint64 from, qint64 to) const
{
    std::optional<ValueRange> range;
    for (qsizetype i = indexOf(from); i < m_samples.size() && m_samples[i].time <= to; ++i) {
        const double value = m_samples[i].value;
        if (m_samples[i].isGap())
            continue;
        range =
            range ? ValueRange{std::min(range->low, value), std::max(range->high, value)} : ValueRange{value, value};
    }
    return range;
}

std::optional<double> TimeSeries::valueAt(qint64 time) const
{
    const auto after = std::ranges::upper_bound(m_samples, time, {}, &Sample::time);
    if (after == m_samples.begin() || (after - 1)->isGap())
        return {};
    return (after - 1)->value;
}

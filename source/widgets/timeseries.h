#pragma once
#include <limits>
#include <optional>
#include <QList>

/// The lowest and the highest of some values.
struct ValueRange
{
    double low = 0;
    double high = 0;

    bool operator==(const ValueRange &) const = default;
};

/// A value over time: samples in the order of their times, with gaps where no value was known.
///
/// The number of samples is limited. When the limit is reached, the older ones are thinned out: of each four, the
/// lowest and the highest stay, so that peaks remain visible. All samples that stay were recorded.
class TimeSeries
{
public:
    struct Sample
    {
        qint64 time = 0;  ///< in ms
        double value = 0; ///< not a number in a gap

        [[nodiscard]] bool isGap() const { return value != value; }
    };
    static constexpr qsizetype MostSamples = 32768;

    /// Adds a sample; one that is older than the last is ignored. A value that is not finite is a gap.
    void add(qint64 time, double value);
    void addGap(qint64 time) { add(time, std::numeric_limits<double>::quiet_NaN()); }

    [[nodiscard]] const QList<Sample> &samples() const { return m_samples; }
    /// The index of the first sample that is not older than @p time; the number of samples if there is none.
    [[nodiscard]] qsizetype indexOf(qint64 time) const;
    /// Of the values between two times, both included; nothing if there is none.
    [[nodiscard]] std::optional<ValueRange> range(qint64 from, qint64 to) const;
    /// The value at a time: that of the last sample before or at it. Nothing before the first sample and in a gap.
    [[nodiscard]] std::optional<double> valueAt(qint64 time) const;

private:
    void thinOut();

    QList<Sample> m_samples;
};

#include "timeseries.h"
#include <limits>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class TimeSeriesTest : public QObject
{
    Q_OBJECT

private:
    /// "time:value ...", "time:-" for a gap.
    static QString text(const TimeSeries &series)
    {
        QStringList texts;
        for (const TimeSeries::Sample &sample : series.samples())
            texts.append(u"%1:%2"_s.arg(sample.time).arg(sample.isGap() ? u"-"_s : QString::number(sample.value)));
        return texts.join(u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void emptySeriesHasNoValues()
    {
        const TimeSeries series;
        QVERIFY(!series.valueAt(0));
        QVERIFY(!series.range(0, 100));
        QCOMPARE(series.indexOf(0), 0);
    }

    void olderSamplesAreIgnored()
    {
        TimeSeries series;
        series.add(10, 1);
        series.add(5, 2);
        series.add(10, 3);
        QCOMPARE(text(series), u"10:1 10:3"_s);
    }

    void valuesThatAreNotFiniteAreGaps()
    {
        TimeSeries series;
        series.addGap(1); // a series does not begin with a gap
        series.add(2, 1);
        series.add(3, std::numeric_limits<double>::infinity());
        series.addGap(4); // and a gap is one sample
        series.add(5, 2);
        QCOMPARE(text(series), u"2:1 3:- 5:2"_s);
    }

    void valueAtIsThatOfTheLastSample()
    {
        TimeSeries series;
        series.add(10, 1);
        series.add(20, 2);
        series.addGap(30);
        series.add(40, 4);
        QVERIFY(!series.valueAt(9));
        QCOMPARE(series.valueAt(10), 1.0);
        QCOMPARE(series.valueAt(19), 1.0);
        QCOMPARE(series.valueAt(20), 2.0);
        QVERIFY(!series.valueAt(35));
        QCOMPARE(series.valueAt(1000), 4.0);
    }

    void rangeIsThatOfTheGivenTimes()
    {
        TimeSeries series;
        series.add(10, 7);
        series.add(20, -2);
        series.addGap(25);
        series.add(30, 5);
        series.add(40, 99);
        QCOMPARE(series.range(10, 30), (ValueRange{-2, 7}));
        QCOMPARE(series.range(30, 30), (ValueRange{5, 5}));
        QVERIFY(!series.range(21, 29));
    }

    void longRunsNeedNoMoreMemory()
    {
        TimeSeries series;
        for (qint64 i = 0; i < 10 * TimeSeries::MostSamples; ++i)
            series.add(i, double(i));
        QVERIFY(series.samples().size() <= TimeSeries::MostSamples);
        QVERIFY(series.samples().size() > TimeSeries::MostSamples / 4);
        QCOMPARE(series.samples().constFirst().time, 0);
        QCOMPARE(series.samples().constLast().value, 10.0 * TimeSeries::MostSamples - 1);
        for (const TimeSeries::Sample &sample : series.samples())
            QCOMPARE(sample.value, double(sample.time)); // as it was recorded
    }

    void peaksStayInLongRuns()
    {
        TimeSeries series;
        for (qint64 i = 0; i < 6 * TimeSeries::MostSamples; ++i)
            series.add(i, i == 777 ? 1000 : i == 778 ? -1000 : double(i % 10));
        QCOMPARE(series.range(0, 10000), (ValueRange{-1000, 1000}));
        QCOMPARE(series.range(20000, series.samples().constLast().time), (ValueRange{0, 9}));
    }

    void newestSamplesStayAsTheyAre()
    {
        TimeSeries series;
        for (qint64 i = 0; i <= TimeSeries::MostSamples; ++i)
            series.add(i, double(i % 3));
        const auto newest = series.samples().last(TimeSeries::MostSamples / 4);
        for (qsizetype i = 1; i < newest.size(); ++i)
            QCOMPARE(newest[i].time - newest[i - 1].time, 1);
    }

    void gapsStayInLongRunsAndDoNotFillThem()
    {
        TimeSeries series;
        for (qint64 i = 0; i < 4 * TimeSeries::MostSamples; ++i) {
            series.add(2 * i, 1);
            series.addGap(2 * i + 1);
        }
        QVERIFY(series.samples().size() <= TimeSeries::MostSamples);
        QVERIFY(std::ranges::count_if(series.samples(), &TimeSeries::Sample::isGap) > 1000);
        QCOMPARE(series.range(0, 10000), (ValueRange{1, 1}));
    }
};

QTEST_MAIN(TimeSeriesTest)
#include "tst_timeseries.moc"

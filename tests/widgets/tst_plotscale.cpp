#include "plotscale.h"
#include <cfloat>
#include <cmath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class PlotScaleTest : public QObject
{
    Q_OBJECT

private:
    static QString texts(const PlotTicks &ticks)
    {
        QStringList list;
        for (const double value : ticks.values)
            list.append(plotValueText(value, ticks.step));
        return list.join(u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void ticksAreRoundNumbers_data()
    {
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        QTest::addColumn<int>("most");
        QTest::addColumn<QString>("expected");
        QTest::newRow("tens") << 0.0 << 50.0 << 5 << u"0 10 20 30 40 50"_s;
        QTest::newRow("fifths") << -0.1 << 1.1 << 6 << u"0.0 0.2 0.4 0.6 0.8 1.0"_s;
        QTest::newRow("around zero") << -3.0 << 3.0 << 4 << u"-2 0 2"_s;
        QTest::newRow("small part of a large number")
            << 1000000.0 << 1000003.0 << 3 << u"1000000 1000001 1000002 1000003"_s;
        QTest::newRow("large") << 0.0 << 4294967295.0 << 4 << u"0 2e+09 4e+09"_s;
        QTest::newRow("tiny") << 0.0 << 4e-9 << 4 << u"0 1e-09 2e-09 3e-09 4e-09"_s;
        QTest::newRow("one tick") << 0.3 << 2.2 << 1 << u"2"_s;
        QTest::newRow("no room") << 0.0 << 1.0 << 0 << QString();
        QTest::newRow("empty range") << 5.0 << 5.0 << 5 << QString();
        QTest::newRow("smaller than the rounding") << 1e20 << 1e20 + 16384 << 5 << QString();
        QTest::newRow("wider than numbers") << -DBL_MAX << DBL_MAX << 5 << QString();
        QTest::newRow("no numbers") << std::nan("") << 1.0 << 5 << QString();
    }
    void ticksAreRoundNumbers()
    {
        QFETCH(double, low);
        QFETCH(double, high);
        QFETCH(int, most);
        QTEST(texts(plotTicks({low, high}, most)), "expected");
    }

    void timesAreThoseOfAClock_data()
    {
        QTest::addColumn<qint64>("from");
        QTest::addColumn<qint64>("to");
        QTest::addColumn<int>("most");
        QTest::addColumn<QString>("expected");
        QTest::newRow("seconds") << qint64(1500) << qint64(10000) << 5 << u"0:02 0:04 0:06 0:08 0:10"_s;
        QTest::newRow("parts of a second")
            << qint64(0) << qint64(500) << 5 << u"0:00.0 0:00.1 0:00.2 0:00.3 0:00.4 0:00.5"_s;
        QTest::newRow("milliseconds") << qint64(60000) << qint64(60040) << 4
                                      << u"1:00.000 1:00.010 1:00.020 1:00.030 1:00.040"_s;
        QTest::newRow("hours") << qint64(0) << qint64(7200000) << 2 << u"0:00 1:00:00 2:00:00"_s;
        QTest::newRow("weeks") << qint64(0) << qint64(14) * 86400000 << 2 << u"0:00 192:00:00"_s;
        QTest::newRow("no room") << qint64(0) << qint64(1000) << 0 << QString();
        QTest::newRow("no time") << qint64(1000) << qint64(1000) << 5 << QString();
    }
    void timesAreThoseOfAClock()
    {
        QFETCH(qint64, from);
        QFETCH(qint64, to);
        QFETCH(int, most);
        const PlotTicks ticks = plotTimeTicks(from, to, most);
        QStringList list;
        for (const double value : ticks.values)
            list.append(plotTimeText(qint64(value), qint64(ticks.step)));
        QTEST(list.join(u' '), "expected");
    }

    void marginsMakeARangeVisible()
    {
        QCOMPARE(withMargin({0, 100}), (ValueRange{-5, 105}));
        QCOMPARE(withMargin({0, 0}), (ValueRange{-1, 1}));
        QCOMPARE(withMargin({-50, -50}), (ValueRange{-55, -45}));
        QCOMPARE(withMargin({-DBL_MAX, DBL_MAX}), (ValueRange{-DBL_MAX, DBL_MAX}));
    }
};

QTEST_MAIN(PlotScaleTest)
#include "tst_plotscale.moc"

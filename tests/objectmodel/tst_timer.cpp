#include "timer.h"
#include <QSignalSpy>
#include <QTest>
using namespace Qt::StringLiterals;

class TimerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void intervalIsASecondUntilItIsSet()
    {
        Timer timer;
        QCOMPARE(timer.property("interval"), QVariant(1000));
        timer.start(false);
        QCOMPARE(static_cast<QTimer &>(timer).interval(), 1000);
        timer.setProperty("interval", 500); // a running timer changes at once
        QCOMPARE(static_cast<QTimer &>(timer).interval(), 500);
    }

    void intervalCanBeSetBeforeTheStart()
    {
        Timer timer;
        timer.setInterval(0);
        QVERIFY(!timer.isActive());
        QSignalSpy timeouts(&timer, &QTimer::timeout);
        timer.start(false);
        QTRY_VERIFY(timeouts.size() > 2);
        timer.stop();
        QVERIFY(!timer.isActive());
    }

    void singleShotEmitsOnce()
    {
        Timer timer;
        timer.setInterval(0);
        QSignalSpy timeouts(&timer, &QTimer::timeout);
        timer.start(true);
        QTRY_COMPARE(timeouts.size(), 1);
        QVERIFY(!timer.isActive());
        QCoreApplication::processEvents();
        QCOMPARE(timeouts.size(), 1);
        timer.start(false);
        QVERIFY(!timer.isSingleShot());
    }

    void negativeIntervalIsNone()
    {
        Timer timer;
        timer.setInterval(-5);
        QCOMPARE(timer.interval(), -5);
        timer.start(true);
        QCOMPARE(static_cast<QTimer &>(timer).interval(), 0);
        timer.setInterval(-6);
        QVERIFY(timer.isActive());
    }
};

QTEST_GUILESS_MAIN(TimerTest)
#include "tst_timer.moc"

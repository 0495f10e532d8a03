#include "backgroundtask.h"
#include <QSignalSpy>
#include <QTest>
#include <stdexcept>

using namespace Qt::StringLiterals;

/// Functions that are left while they wait.
class BackgroundTaskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void workWithoutAWaitEndsAtOnce()
    {
        BackgroundTask task;
        const QSignalSpy ended(&task, &BackgroundTask::ended);
        bool current = false;
        task.run([&] { current = task.isCurrent() && BackgroundTask::canPause(); });
        QVERIFY(current);
        QVERIFY(!task.isActive() && !task.isCurrent() && !BackgroundTask::canPause());
        QCOMPARE(ended.size(), 1);
    }

    void waitsLetTheEventLoopRun()
    {
        BackgroundTask task;
        QString order;
        const auto inner = [&] { // waits in any depth
            for (int i = 0; i < 3; ++i) {
                order += u"w"_s;
                QVERIFY(BackgroundTask::pause(0));
            }
        };
        task.run([&] { inner(); });
        QCOMPARE(order, u"w"_s);
        QTimer::singleShot(0, this, [&] { order += u"e"_s; });
        QTRY_VERIFY(!task.isActive());
        QVERIFY2(order.startsWith(u"w"_s) && order.contains(u"ew"_s), qPrintable(order));
        QCOMPARE(order.count(u'w'), 3);
    }

    void wakeEndsAWait()
    {
        BackgroundTask task;
        bool result = false;
        task.run([&] { result = BackgroundTask::pause(1000000); });
        QVERIFY(task.isActive());
        task.wake();
        QVERIFY(task.isActive()); // only from the event loop
        QTRY_VERIFY(!task.isActive());
        QVERIFY(result);
        task.wake(); // without a wait
    }

    void cancelEndsTheWorkBeforeItReturns()
    {
        BackgroundTask task;
        const QSignalSpy ended(&task, &BackgroundTask::ended);
        QList<bool> results;
        task.run([&] {
            results.append(BackgroundTask::pause(1000000));
            results.append(BackgroundTask::pause(1000000));
        });
        task.cancel();
        QCOMPARE(results, (QList<bool>{false, false}));
        QVERIFY(task.isCancelled() && !task.isActive());
        QCOMPARE(ended.size(), 1);
        task.run([&] { results.append(BackgroundTask::pause(0)); });
        QVERIFY(!task.isCancelled());
        QTRY_COMPARE(results, (QList<bool>{false, false, true}));
    }

    void secondWorkCancelsTheFirst()
    {
        BackgroundTask task;
        QString order;
        task.run([&] { order += BackgroundTask::pause(1000000) ? u"1"_s : u"cancelled "_s; });
        task.run([&] { order += u"2"_s; });
        QCOMPARE(order, u"cancelled 2"_s);
    }

    void deletedTaskEndsItsWork()
    {
        bool ended = false;
        {
            BackgroundTask task;
            task.run([&] {
                (void)BackgroundTask::pause(1000000);
                ended = true;
            });
            QVERIFY(!ended);
        }
        QVERIFY(ended);
    }

    void twoTasksWaitIndependently()
    {
        BackgroundTask first;
        BackgroundTask second;
        QString order;
        first.run([&] {
            (void)BackgroundTask::pause(1000000);
            order += u"first "_s;
        });
        second.run([&] {
            first.cancel(); // from another work
            order += u"second"_s;
        });
        QCOMPARE(order, u"first second"_s);
    }

    void wholePartIsNotLeft()
    {
        BackgroundTask task;
        QList<bool> possible;
        task.run([&] {
            {
                const BackgroundTask::Whole whole;
                possible.append(BackgroundTask::canPause());
            }
            possible.append(BackgroundTask::canPause());
        });
        QCOMPARE(possible, (QList<bool>{false, true}));
    }

    void exceptionReachesTheCaller()
    {
        BackgroundTask task;
        const QSignalSpy ended(&task, &BackgroundTask::ended);
        QVERIFY_EXCEPTION_THROWN(task.run([] { throw std::runtime_error("no"); }), std::runtime_error);
        QVERIFY(!task.isActive());
        QCOMPARE(ended.size(), 1);
    }
};

QTEST_GUILESS_MAIN(BackgroundTaskTest)
#include "tst_backgroundtask.moc"

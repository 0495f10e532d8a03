#include "backgroundtask.h"
#include <array>
#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <stdexcept>

using namespace Qt::StringLiterals;

/// Functions that are left while they wait.
class BackgroundTaskTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

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

    void nestedEventLoopOfTheWorkIsNotLeft()
    {
        BackgroundTask task;
        QList<bool> possible;
        task.run([&] {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                possible.append(BackgroundTask::canPause());
                loop.quit();
            });
            loop.exec();
            possible.append(BackgroundTask::canPause());
        });
        QCOMPARE(possible, (QList<bool>{false, true}));
    }

    void workThatRunsAnEventLoopIsNotEnteredAgain()
    {
        BackgroundTask first;
        BackgroundTask second;
        QString order;
        first.run([&] {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                second.run([&] {
                    first.cancel(); // its stack is in use below this one
                    order += first.isActive() ? u"active "_s : u"ended "_s;
                    (void)BackgroundTask::pause(1000000);
                    order += u"second "_s;
                });
                loop.quit();
            });
            loop.exec();
            order += BackgroundTask::pause(1000000) ? u"first "_s : u"cancelled "_s;
        });
        QVERIFY(!first.isActive() && second.isActive());
        second.cancel();
        QCOMPARE(order, u"active cancelled second "_s);
    }

    void workThatStartsAnotherOneGoesOn()
    {
        BackgroundTask task;
        bool started = false;
        task.run([&] {
            QTest::ignoreMessage(QtWarningMsg, "BackgroundTask::run: called by its own work");
            task.run([&] { started = true; });
            QVERIFY(task.isCancelled());
        });
        QVERIFY(!started && !task.isActive());
    }

    void taskMayBeDeletedWhenItHasEnded_data()
    {
        QTest::addColumn<bool>("cancels");
        QTest::newRow("by itself") << false;
        QTest::newRow("cancelled") << true;
    }
    void taskMayBeDeletedWhenItHasEnded()
    {
        QFETCH(bool, cancels);
        const QPointer<BackgroundTask> task = new BackgroundTask;
        connect(task, &BackgroundTask::ended, this, [&] { delete task; });
        task->run([] { (void)BackgroundTask::pause(1); });
        if (cancels)
            task->cancel();
        QTRY_VERIFY(!task);
    }

    void workWaitsWhileItHandlesAnException()
    {
        BackgroundTask task;
        QString text;
        task.run([&] {
            try {
                throw std::runtime_error("inner");
            } catch (const std::exception &) {
                (void)BackgroundTask::pause(1000000);
                try {
                    throw; // the one of this work
                } catch (const std::exception &exception) {
                    text += QString::fromLatin1(exception.what());
                }
            }
        });
        QVERIFY(!std::current_exception());
        try {
            throw std::logic_error("outer");
        } catch (const std::exception &) {
            task.cancel();
            try {
                throw;
            } catch (const std::exception &exception) {
                text += u' ' + QString::fromLatin1(exception.what());
            }
        }
        QCOMPARE(text, u"inner outer"_s);
    }

    void exceptionOfACancelledWorkIsPrinted()
    {
        BackgroundTask task;
        const QSignalSpy ended(&task, &BackgroundTask::ended);
        const auto failing = [] {
            if (!BackgroundTask::pause(1000000))
                throw std::runtime_error("no");
        };
        task.run(failing);
        QTest::ignoreMessage(QtWarningMsg, "BackgroundTask::cancel: no");
        task.cancel();
        QVERIFY(!task.isActive());
        QCOMPARE(ended.size(), 1);
        auto other = std::make_unique<BackgroundTask>();
        other->run([] {
            if (!BackgroundTask::pause(1000000))
                throw 1;
        });
        QTest::ignoreMessage(QtWarningMsg, "BackgroundTask::cancel: unknown exception");
        other.reset();
    }

    void deepWorkHasEnoughStack()
    {
        BackgroundTask task;
        const std::function<int(int)> deep = [&](int level) {
            std::array<volatile char, 4096> room{};
            room[0] = char(level);
            if (level == 0)
                (void)BackgroundTask::pause(0);
            return level == 0 ? int(room[0]) : deep(level - 1) + 1;
        };
        int levels = 0;
        task.run([&] { levels = deep(150); });
        QTRY_VERIFY(!task.isActive());
        QCOMPARE(levels, 150);
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

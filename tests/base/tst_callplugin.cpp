#include "afterevents.h"
#include "callplugin.h"
#include "ibreakpoints.h"
#include "imemoryverify.h"
#include "interfaceobject.h"
#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
/// A plug-in object whose functions do what a test says.
class Plugin : public InterfaceObject<IMemoryVerify, IBreakpoints>
{
public:
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        act();
        return InterfaceObject::queryInterface(id, out);
    }
    bool verify() override
    {
        act();
        return true;
    }
    void setVerify(bool) override { act(); }
    QList<BreakpointRecord> breakpoints() override
    {
        act();
        return {{}};
    }
    int setBreakpoint(const QString &, int line, int) override
    {
        act();
        return line;
    }

    unsigned long addRef() override
    {
        count();
        return InterfaceObject::addRef();
    }
    unsigned long release() override
    {
        count();
        return InterfaceObject::release();
    }

    std::function<void()> action;
    std::function<void()> counts; ///< in addRef() and release()

private:
    void count() const
    {
        if (const auto todo = counts)
            todo();
    }
    void act() const
    {
        if (action)
            action();
    }
};

void throwError()
{
    throw std::runtime_error("boom");
}

void expect(const char *text)
{
    QTest::ignoreMessage(QtWarningMsg, text);
}
} // namespace

/// Calls into plug-ins: exceptions, and reports that come from inside a call.
class CallPluginTest : public QObject
{
    Q_OBJECT

    InterfacePtr<Plugin> m_plugin;
    QStringList m_log;

    void report(const QByteArray &key, const std::function<void()> &action = {}) { reportStatus(key, {}, action); }
    /// Reports of a subject are statuses: the last one counts.
    void reportStatus(const QByteArray &subject, const QByteArray &status, const std::function<void()> &action = {})
    {
        afterPluginCall(this, {subject, status}, logging(subject + status, action));
    }
    std::function<void()> logging(const QByteArray &text, const std::function<void()> &action = {})
    {
        return [this, text, action] {
            m_log += QString::fromLatin1(text);
            if (action)
                action();
        };
    }
    void ask() { (void)askPlugin<&IMemoryVerify::verify>(m_plugin); }
    void call() { runPlugin<&IMemoryVerify::setVerify>(m_plugin, true); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_plugin.reset(new Plugin);
        m_log.clear();
    }
    void cleanup() { setPluginFailureHandler({}); }

    void resultsArePassedOn()
    {
        QVERIFY(askPlugin<&IMemoryVerify::verify>(m_plugin));
        QCOMPARE(askPlugin<&IBreakpoints::setBreakpoint>(m_plugin, u"main.c"_s, 7, 1), 7);
        QCOMPARE(tryPlugin<&IBreakpoints::setBreakpoint>(m_plugin.get(), u"main.c"_s, 7, 1), std::optional(7));
        int result = 0;
        QVERIFY(readPlugin<&IBreakpoints::setBreakpoint>(result, m_plugin, u"main.c"_s, 8, 1));
        QCOMPARE(result, 8);
        QVERIFY(runPlugin<&IMemoryVerify::setVerify>(m_plugin, true));
        QVERIFY(queryPlugin<IBreakpoints>(static_cast<IMemoryVerify *>(m_plugin.get())));
    }

    void exceptionGivesTheNeutralValueAndNamesTheCall()
    {
        m_plugin->action = throwError;
        expect("IMemoryVerify::verify: an exception has left the plug-in (boom)");
        QVERIFY(!askPlugin<&IMemoryVerify::verify>(m_plugin));
        expect("IBreakpoints::setBreakpoint: an exception has left the plug-in (boom)");
        QCOMPARE(tryPlugin<&IBreakpoints::setBreakpoint>(m_plugin, u"main.c"_s, 7, 1), std::nullopt);
        expect("IMemoryVerify::setVerify: an exception has left the plug-in (boom)");
        QVERIFY(!runPlugin<&IMemoryVerify::setVerify>(m_plugin, true));
        expect("QUnknownInterface::queryInterface: an exception has left the plug-in (boom)");
        QVERIFY(!queryPlugin<IBreakpoints>(static_cast<IMemoryVerify *>(m_plugin.get())));
        m_plugin->action = [] { throw 7; };
        expect("IMemoryVerify::verify: an exception has left the plug-in (unknown exception)");
        QVERIFY(!askPlugin<&IMemoryVerify::verify>(m_plugin));
    }

    void exceptionInReferenceCountingIsReported()
    {
        QStringList failures;
        setPluginFailureHandler([&](const PluginFailure &failure) { failures += failure.operation; });
        failures.clear(); // a new handler is called at once for failures of earlier tests
        m_plugin->counts = throwError;
        expect("QUnknownInterface::addRef: an exception has left the plug-in (boom)");
        QVERIFY(!shareInterface(m_plugin.get()));
        m_plugin->counts = {};
        auto shared = shareInterface(m_plugin.get());
        m_plugin->counts = throwError;
        expect("QUnknownInterface::release: an exception has left the plug-in (boom)");
        shared.reset();
        m_plugin->counts = {};
        m_plugin->release();
        QCOMPARE(failures, (QStringList{u"QUnknownInterface::addRef"_s, u"QUnknownInterface::release"_s}));
    }

    void reportFromReferenceCountingIsDeliveredLater()
    {
        m_plugin->counts = [this] {
            m_plugin->counts = {};
            report("a");
        };
        const auto shared = shareInterface(m_plugin.get());
        QVERIFY(shared);
        QCOMPARE(m_log, QStringList());
        QTRY_COMPARE(m_log, QStringList{u"a"_s});
    }

    /// The host's data about calls belong to its own thread.
    void referenceCountingInAnotherThreadIsNoCall()
    {
        QList<bool> running;
        m_plugin->counts = [&running] { running += isPluginCallRunning(); };
        const std::unique_ptr<QThread> thread(QThread::create([this] { (void)shareInterface(m_plugin.get()); }));
        thread->start();
        QVERIFY(thread->wait());
        QCOMPARE(running, QList<bool>(2));
        running.clear();
        (void)shareInterface(m_plugin.get());
        QCOMPARE(running, QList<bool>(2, true));
        m_plugin->counts = {};
    }

    void missingObjectGivesTheNeutralValueWithoutAReport()
    {
        const InterfacePtr<IMemoryVerify> none;
        QVERIFY(!askPlugin<&IMemoryVerify::verify>(none));
        QVERIFY(!runPlugin<&IMemoryVerify::setVerify>(none, true));
        QVERIFY(!queryPlugin<IBreakpoints>(none));
        QVERIFY(!queryPlugin<IBreakpoints>(nullptr));
    }

    void failureHandlerGetsCallAndText()
    {
        setPluginFailureHandler([this](const PluginFailure &failure) {
            m_log += failure.plugin + u'|' + failure.operation + u'|' + failure.text;
        });
        m_plugin->action = throwError;
        expect("IMemoryVerify::verify: an exception has left the plug-in (boom)");
        (void)askPlugin<&IMemoryVerify::verify>(m_plugin);
        QCOMPARE(m_log, QStringList(u"|IMemoryVerify::verify|boom"_s)); // the object is not in a known library
    }

    void firstFailuresAreKeptUntilThereIsAHandler()
    {
        setPluginFailureHandler([](const PluginFailure &) {}); // for those of earlier tests
        setPluginFailureHandler({});
        m_plugin->action = throwError;
        for (int i = 0; i < 30; ++i) {
            expect("IMemoryVerify::verify: an exception has left the plug-in (boom)");
            (void)askPlugin<&IMemoryVerify::verify>(m_plugin);
        }
        int kept = 0;
        setPluginFailureHandler([&kept](const PluginFailure &) { ++kept; });
        QCOMPARE(kept, 20);
    }

    void reportOutsideOfCallsIsDeliveredAtOnce()
    {
        report("a");
        QCOMPARE(m_log, QStringList(u"a"_s));
    }

    void reportInsideACallIsDeliveredWhenItReturns()
    {
        m_plugin->action = [this] {
            report("a");
            report("b");
            m_log += u"returns"_s;
        };
        call();
        QCOMPARE(m_log, (QStringList{u"returns"_s, u"a"_s, u"b"_s}));
    }

    void reportInsideANestedCallWaitsForTheOuterOne()
    {
        m_plugin->action = [this] {
            m_plugin->action = [this] { report("a"); };
            call();
            m_log += u"outer"_s;
        };
        call();
        QCOMPARE(m_log, (QStringList{u"outer"_s, u"a"_s}));
    }

    /// The call waits in an event loop for what a report causes, so both are delivered there.
    void reportInAnEventLoopOfACallIsDeliveredInIt()
    {
        QStringList inside;
        m_plugin->action = [&] {
            report("a");
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [this] { report("b", [this] { m_log += u"end"_s; }); });
            QTimer look;
            connect(&look, &QTimer::timeout, &loop, [&] { m_log.contains(u"end"_s) ? loop.quit() : void(); });
            look.start(1);
            QTimer::singleShot(5000, &loop, &QEventLoop::quit);
            loop.exec();
            inside = m_log;
        };
        call();
        QCOMPARE(inside, (QStringList{u"a"_s, u"b"_s, u"end"_s}));
        QCOMPARE(m_log.size(), 3);
    }

    void exceptionDoesNotLoseTheReport()
    {
        m_plugin->action = [this] {
            report("a");
            throwError();
        };
        expect("IMemoryVerify::setVerify: an exception has left the plug-in (boom)");
        call();
        QCOMPARE(m_log, QStringList(u"a"_s));
    }

    void equalReportThatItsOwnDeliveryCausesIsDropped()
    {
        m_plugin->action = [this] { report("a", [this] { ask(); }); };
        ask();
        QCoreApplication::processEvents();
        QCOMPARE(m_log, QStringList(u"a"_s));
        ask();
        QCOMPARE(m_log.size(), 2);
    }

    /// A command, for example a step, may end in the same state as the one that was reported before.
    void equalReportOfACommandIsDelivered()
    {
        int commands = 0;
        m_plugin->action = [&] { report("a", [&] { ++commands < 3 ? call() : void(); }); };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"a"_s, u"a"_s, u"a"_s}));
    }

    void reportsThatCauseEachOtherLeaveTimeForEvents()
    {
        bool first = false;
        m_plugin->action = [&] {
            first = !first;
            report(first ? "a" : "b", [this] { call(); });
        };
        bool eventSeen = false;
        QTimer::singleShot(0, this, [&] {
            eventSeen = true;
            m_plugin->action = {};
        });
        call();
        QTRY_VERIFY(eventSeen);
        deliverPluginReports(); // the last one
    }

    void reportsKeepTheirOrder()
    {
        m_plugin->action = [this] {
            report("a", [this] {
                m_plugin->action = [this] { report("c"); };
                call();
            });
            report("b");
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    }

    // Statuses: the receiver ends up with the one that was reported last

    void statusThatReturnsInsideAQuestionIsDeliveredLast()
    {
        m_plugin->action = [this] {
            for (const char *status : {"running", "paused", "running"})
                reportStatus("is ", status);
        };
        ask();
        QCOMPARE(m_log, (QStringList{u"is paused"_s, u"is running"_s}));
    }

    void statusThatReturnsInAQuestionOfItsDeliveryReplacesTheOthers()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] {
                    reportStatus("is ", "running");
                    report("other");
                    reportStatus("is ", "paused");
                };
                ask();
            });
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"is paused"_s, u"other"_s}));
    }

    void statusThatReturnsAfterOneOfACommandIsDelivered()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] { reportStatus("is ", "paused"); };
                ask();
            });
            reportStatus("is ", "running");
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"is paused"_s, u"is running"_s, u"is paused"_s}));
    }

    void statusThatReturnsAfterACommandOfItsDeliveryIsDelivered()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] {
                    reportStatus("is ", "running", [this] {
                        m_plugin->action = [this] { reportStatus("is ", "paused"); };
                        ask();
                    });
                };
                call();
            });
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"is paused"_s, u"is running"_s, u"is paused"_s}));
    }

    void statusThatReturnsInAnEventLoopOfItsDeliveryIsDelivered()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] { reportStatus("is ", "paused"); };
                QEventLoop loop;
                QTimer::singleShot(0, &loop, [&] {
                    reportStatus("is ", "running");
                    ask();
                    loop.quit();
                });
                loop.exec();
            });
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"is paused"_s, u"is running"_s, u"is paused"_s}));
    }

    /// Each delivery asks for the status, and the plug-in reports another one than before while it answers.
    void statusesThatAlternateInQuestionsOfTheirDeliveryEnd()
    {
        int asked = 0;
        m_plugin->action = [&] {
            const char *status = ++asked % 2 == 0 ? "running" : "paused";
            reportStatus("is ", status, [this] { ask(); });
        };
        ask();
        QTRY_COMPARE(asked, 3);
        deliverPluginReports(); // what has come of the last one
        QCOMPARE(m_log, (QStringList{u"is paused"_s, u"is running"_s}));
        QCOMPARE(asked, 3);
    }

    /// The same with a change of another subject between the two.
    void statusThatReturnsAfterAChangeOfAnotherSubjectIsDropped()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] {
                    report("other", [this] {
                        m_plugin->action = [this] { reportStatus("is ", "paused"); };
                        ask();
                        m_log += u"asked"_s;
                    });
                };
                call();
            });
        };
        call();
        QTRY_COMPARE(m_log, (QStringList{u"is paused"_s, u"other"_s, u"asked"_s}));
        deliverPluginReports();
        QCOMPARE(m_log.size(), 3);
    }

    /// Only another status of the same subject makes the one news that is being received.
    void statusThatReturnsAfterAnEventLoopOfItsDeliveryIsDropped_data()
    {
        QTest::addColumn<QByteArray>("subject");
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<bool>("isAnswer");
        QTest::newRow("the same status of a command") << QByteArray("is ") << QByteArray("paused") << false;
        QTest::newRow("another subject") << QByteArray("was ") << QByteArray("running") << false;
        QTest::newRow("another status of a question") << QByteArray("is ") << QByteArray("running") << true;
    }
    void statusThatReturnsAfterAnEventLoopOfItsDeliveryIsDropped()
    {
        QFETCH(const QByteArray, subject);
        QFETCH(const QByteArray, status);
        QFETCH(const bool, isAnswer);
        m_plugin->action = [&] {
            reportStatus("is ", "paused", [&] {
                QEventLoop loop;
                m_plugin->action = [&] { reportStatus(subject, status, [&loop] { loop.quit(); }); };
                QTimer::singleShot(0, &loop, [&] { isAnswer ? ask() : call(); });
                loop.exec();
                m_plugin->action = [this] { reportStatus("is ", "paused"); };
                ask();
            });
        };
        call();
        QCOMPARE(m_log, (QStringList{u"is paused"_s, QString::fromLatin1(subject + status)}));
        deliverPluginReports();
        QCOMPARE(m_log.size(), 2);
    }

    /// A change of another subject that waits is no newer status.
    void statusThatReturnsWhileAnotherSubjectWaitsIsDropped()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] { reportStatus("is ", "paused"); };
                ask();
            });
            report("other");
        };
        call();
        QCOMPARE(m_log, (QStringList{u"is paused"_s, u"other"_s}));
        deliverPluginReports();
        QCOMPARE(m_log.size(), 2);
    }

    /// While the event loop runs, what happens is no answer to the question any more.
    void statusThatReturnsInAnEventLoopOfAQuestionIsDelivered()
    {
        m_plugin->action = [this] {
            reportStatus("is ", "paused", [this] {
                m_plugin->action = [this] {
                    QEventLoop loop;
                    QTimer::singleShot(0, &loop, [&] { reportStatus("is ", "paused", [&loop] { loop.quit(); }); });
                    QTimer::singleShot(5000, &loop, &QEventLoop::quit); // if the report is lost
                    loop.exec();
                };
                ask();
            });
        };
        call();
        QCOMPARE(m_log, (QStringList{u"is paused"_s, u"is paused"_s}));
    }

    void reportInAnEventLoopOfADeliveryDoesNotOvertakeTheWaitingOnes()
    {
        m_plugin->action = [this] {
            report("a", [this] {
                QEventLoop loop;
                QTimer::singleShot(0, &loop, [&] { report("c", [&loop] { loop.quit(); }); });
                loop.exec();
            });
            report("b");
        };
        call();
        QCOMPARE(m_log, (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    }

    // Changes of the window

    void changeOutsideOfACallDoesNotOvertakeThoseOfACall()
    {
        m_plugin->action = [this] { afterEventsOfCall(this, "a", logging("a")); };
        call();
        afterEventsOfCall(this, "b", logging("b"));
        QCOMPARE(m_log, QStringList());
        QTRY_COMPARE(m_log, (QStringList{u"a"_s, u"b"_s}));
        afterEventsOfCall(this, "c", logging("c"));
        QCOMPARE(m_log.size(), 3);
    }

    void statusDoesNotWaitForChangesOfTheWindow()
    {
        m_plugin->action = [this] { afterEventsOfCall(this, "a", logging("a")); };
        call();
        report("b");
        QCOMPARE(m_log, QStringList(u"b"_s));
        QTRY_COMPARE(m_log, (QStringList{u"b"_s, u"a"_s}));
    }

    void equalChangesWithDifferentDetailsAreBothMade()
    {
        m_plugin->action = [this] {
            for (const char *detail : {"1", "2", "1"})
                afterEventsOfCall(this, {"a", {}, detail}, logging(detail));
        };
        ask();
        QTRY_COMPARE(m_log, (QStringList{u"2"_s, u"1"_s}));
    }

    void reportOfADeletedReceiverIsDropped()
    {
        auto *receiver = new QObject;
        m_plugin->action = [&] {
            afterPluginCall(receiver, "a", [this] { m_log += u"a"_s; });
            delete receiver;
        };
        call();
        QVERIFY(m_log.isEmpty());
    }

    void reportOfAnotherThreadIsDeliveredInThatOfTheReceiver()
    {
        QThread *where = nullptr;
        const std::unique_ptr<QThread> thread(
            QThread::create([&] { afterPluginCall(this, "a", [&] { where = QThread::currentThread(); }); }));
        thread->start();
        QVERIFY(thread->wait());
        QTRY_COMPARE(where, QThread::currentThread());
    }

    void equalReportsOfAnotherThreadAreDeliveredOnceAtTheLastPlace()
    {
        const std::unique_ptr<QThread> thread(QThread::create([this] {
            for (const char *key : {"a", "b", "a"})
                report(key);
        }));
        thread->start();
        QVERIFY(thread->wait());
        QCOMPARE(m_log, QStringList());
        QTRY_COMPARE(m_log, (QStringList{u"b"_s, u"a"_s}));
    }

    void equalReportsOfAnotherThreadWithDifferentDetailsAreDelivered()
    {
        const std::unique_ptr<QThread> thread(QThread::create([this] {
            for (const char *detail : {"one", "two", "one"})
                afterPluginCall(this, {"a", "", detail}, logging(detail));
        }));
        thread->start();
        QVERIFY(thread->wait());
        QTRY_COMPARE(m_log, (QStringList{u"two"_s, u"one"_s}));
    }

    void equalReportsOfAnotherThreadReachAllTheirReceivers()
    {
        QObject other;
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            afterPluginCall(this, "a", [this] { m_log += u"this"_s; });
            afterPluginCall(&other, "a", [this] { m_log += u"other"_s; });
        }));
        thread->start();
        QVERIFY(thread->wait());
        QTRY_COMPARE(m_log, (QStringList{u"this"_s, u"other"_s}));
    }

    void callRunsAlsoWhileItsEventLoopRuns()
    {
        QVERIFY(!isPluginCallRunning());
        m_plugin->action = [] {
            QVERIFY(isPluginCallRunning() && isInsidePluginCall());
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                QVERIFY(isPluginCallRunning() && !isInsidePluginCall());
                loop.quit();
            });
            loop.exec();
        };
        call();
        QVERIFY(!isPluginCallRunning());
    }

    void callThatRunsAnEventLoopGetsWhatItsReportsCause()
    {
        m_plugin->action = [this] {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] { report("a", [&] { loop.quit(); }); });
            loop.exec();
        };
        call();
        QCOMPARE(m_log, QStringList(u"a"_s));
    }

    void reportBeforeAnEventLoopOfACallWaitsForTheEndOfTheCall()
    {
        m_plugin->action = [this] {
            report("a");
            const auto counted = shareInterface(m_plugin.get()); // its reports would be delivered later
            QEventLoop loop;
            QTimer::singleShot(5, &loop, &QEventLoop::quit); // after the timer of the reports
            loop.exec();
            m_log += u"returns"_s;
        };
        call();
        QCOMPARE(m_log, (QStringList{u"returns"_s, u"a"_s}));
    }

    void reportOfACallInADeliveryIsDelivered()
    {
        m_plugin->action = [this] { report("b"); };
        report("a", [this] {
            call();
            m_log += u"returns"_s;
        });
        QCOMPARE(m_log, (QStringList{u"a"_s, u"returns"_s}));
        QTRY_COMPARE(m_log, (QStringList{u"a"_s, u"returns"_s, u"b"_s}));
    }

    void reportsOfACommandAfterAQuestionInItAreThoseOfACommand()
    {
        m_plugin->action = [this] {
            m_plugin->action = {};
            ask();
            report("a");
            report("a");
        };
        call();
        QCOMPARE(m_log, QStringList(2, u"a"_s));
    }

    void reportOfAnotherThreadForADeletedReceiverIsDropped()
    {
        auto receiver = std::make_unique<QObject>();
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            afterPluginCall(receiver.get(), "a", [this] { m_log += u"a"_s; });
            report("b");
        }));
        thread->start();
        QVERIFY(thread->wait());
        receiver.reset();
        QTRY_COMPARE(m_log, QStringList(u"b"_s));
    }

    void reportOfAnotherThreadMayComeDuringADelivery()
    {
        const auto reportInThread = [this](const QByteArray &key, const std::function<void()> &action) {
            const std::unique_ptr<QThread> thread(QThread::create([&] { report(key, action); }));
            thread->start();
            return thread->wait(10000);
        };
        QVERIFY(reportInThread("a", [&] { QVERIFY(reportInThread("b", {})); }));
        QTRY_COMPARE(m_log, (QStringList{u"a"_s, u"b"_s}));
    }

    void pluginIsKnownByTheLibraryOfItsFunctions()
    {
        QStringList asked;
        setPluginNames([&asked](const QString &library) {
            asked += library;
            return u"name"_s;
        });
        QCOMPARE(pluginOf(m_plugin.get()), u"name"_s);
        QCOMPARE(asked.size(), 1);
        QVERIFY(!asked.first().isEmpty());
        QCOMPARE(pluginOf(nullptr), QString());
        const void *const own = &asked;
        QCOMPARE(pluginOf(&own), QString()); // no address of a library
        QCOMPARE(asked.size(), 1);
        setPluginNames({});
        QCOMPARE(pluginOf(m_plugin.get()), QString());
    }

    void waitingHostDeliversReportsItself()
    {
        m_plugin->action = [this] {
            report("a");
            deliverPluginReports();
            m_log += u"returns"_s;
        };
        call();
        QCOMPARE(m_log, (QStringList{u"a"_s, u"returns"_s}));
    }
};

QTEST_GUILESS_MAIN(CallPluginTest)
#include "tst_callplugin.moc"

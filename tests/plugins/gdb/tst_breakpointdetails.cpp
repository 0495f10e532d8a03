#include "livesession.h"

using Env = IExecutionEnvironment;

/// Conditions, counts and texts of breakpoints, and breakpoints at data, in a native program.
class BreakpointDetailsTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_image;
    std::unique_ptr<LiveSession> m_session;
    InterfacePtr<IBreakpointDetails> m_details;

    static QString file() { return Programs::source(u"native.c"_s); }
    static int line(const QString &text) { return Programs::lineOf(u"native.c"_s, text); }
    static int inTwice() { return line(u"int result = value * 2"_s); }
    void setAtTwice() const
    {
        QCOMPARE(m_session->get<IBreakpoints>()->setBreakpoint(file(), inTwice(), BreakpointEnabled), 0);
    }
    /// Sets details of the breakpoint; returns the reason of a refusal.
    QString set(const BreakpointDetails &details) const
    {
        QString reason;
        return m_details->setDetails(file(), inTwice(), details, reason) ? QString() : reason;
    }
    BreakpointDetails get() const
    {
        BreakpointDetails details;
        return m_details->details(file(), inTwice(), details) ? details : BreakpointDetails{};
    }
    bool run() const
    {
        m_session->env->run();
        return m_session->waitFor(Env::ProgramBreakpointHit);
    }
    bool runToTheEnd() const
    {
        m_session->env->run();
        return m_session->waitFor(Env::ProgramFinished);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = m_programs.native(u"native"_s);
        QVERIFY(!m_image.isEmpty());
    }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_session = std::make_unique<LiveSession>(u"native:"_s + m_image);
        m_details = m_session->get<IBreakpointDetails>();
    }
    void cleanup()
    {
        m_details.reset();
        m_session.reset();
        QTRY_COMPARE(ownChildren(), QStringList());
    }

    void conditionSetBeforeTheSessionHolds()
    {
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"value == 2"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(m_session->start());
        QVERIFY(run());
        QCOMPARE(m_session->evaluate(u"value"_s), u"2"_s);
        QCOMPARE(get().hits, 1u);
        QCOMPARE(get().condition, u"value == 2"_s);
        QVERIFY(runToTheEnd());
    }

    void conditionSetWhilePausedHolds()
    {
        QVERIFY(m_session->start());
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"value > 2"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(run());
        QCOMPARE(m_session->evaluate(u"value"_s), u"3"_s);
        QCOMPARE(m_session->breakpoints(), u"[x] native.c, %1\n"_s.arg(inTwice()));
    }

    void conditionThatDoesNotHoldInTheProgramIsRefused()
    {
        QVERIFY(m_session->start());
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"nonsense > 2"_s;
        QVERIFY2(set(details).contains(u"nonsense"_s), qPrintable(set(details)));
        QCOMPARE(get().condition, QString());
        QVERIFY(run()); // the old one is still there
        QCOMPARE(m_session->evaluate(u"value"_s), u"0"_s);
    }

    void badConditionOfABreakpointIsReportedWhenTheSessionStarts()
    {
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"nonsense > 2"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(get().set);
        QVERIFY(m_session->start());
        QVERIFY(!get().set);
        QVERIFY2(get().problem.contains(u"nonsense"_s), qPrintable(get().problem));
        QVERIFY(m_session->events.text.contains(u"cannot be set"_s));
        QVERIFY(runToTheEnd());
    }

    void changeAfterASessionClearsTheProblem()
    {
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"nonsense > 2"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(m_session->start());
        m_session->env->stop();
        QVERIFY(!get().set && !get().problem.isEmpty());
        details = get();
        details.condition = u"value > 2"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(get().set);
        QCOMPARE(get().problem, QString());
    }

    void hitCountSkipsTheFirstHits()
    {
        setAtTwice();
        BreakpointDetails details;
        details.hitCount = 3;
        QCOMPARE(set(details), QString());
        QVERIFY(m_session->start());
        QVERIFY(run());
        QCOMPARE(m_session->evaluate(u"value"_s), u"2"_s);
        QCOMPARE(get().hits, 3u);
        QVERIFY(run()); // and all later ones
        QCOMPARE(m_session->evaluate(u"value"_s), u"3"_s);
    }

    void textIsPrintedAndTheProgramGoesOn()
    {
        setAtTwice();
        BreakpointDetails details;
        details.logText = u"value {value} of {origin}, 100%"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(m_session->start());
        QVERIFY(runToTheEnd());
        for (int value = 0; value < 4; ++value)
            QVERIFY2(m_session->events.text.contains(u"value %1 of {x = 3, y = 4}, 100%\n"_s.arg(value)),
                     qPrintable(m_session->events.text));
        QVERIFY(!m_session->events.text.contains(u"breakpoint>"_s));
    }

    void textWithABadExpressionIsRefused()
    {
        QVERIFY(m_session->start());
        setAtTwice();
        BreakpointDetails details;
        details.logText = u"{value} {nonsense}"_s;
        QVERIFY(set(details).contains(u"nonsense"_s));
        details.logText = u"{origin.x} {value + 1}"_s;
        QCOMPARE(set(details), QString());
        QVERIFY(runToTheEnd());
        QVERIFY2(m_session->events.text.contains(u"3 4\n"_s), qPrintable(m_session->events.text));
    }

    void temporaryBreakpointIsRemovedWhenItWasHit()
    {
        setAtTwice();
        BreakpointDetails details;
        details.temporary = true;
        QCOMPARE(set(details), QString());
        QVERIFY(m_session->start());
        QVERIFY(run());
        QTRY_COMPARE(m_session->breakpoints(), QString());
        QVERIFY(runToTheEnd());
    }

    void detailsSurviveASession()
    {
        setAtTwice();
        BreakpointDetails details;
        details.condition = u"value == 1"_s;
        QCOMPARE(set(details), QString());
        for (int i = 0; i < 2; ++i) {
            QVERIFY(m_session->start());
            QVERIFY(run());
            QCOMPARE(m_session->evaluate(u"value"_s), u"1"_s);
            m_session->env->stop();
        }
        QCOMPARE(get().condition, u"value == 1"_s);
    }

    void missingBreakpointHasNoDetails()
    {
        BreakpointDetails details;
        QString reason;
        QVERIFY(!m_details->details(file(), 1, details));
        QVERIFY(!m_details->setDetails(file(), 1, details, reason));
        QCOMPARE(reason, u"There is no breakpoint at this line."_s);
    }

    void programStopsWhenDataAreWritten()
    {
        DataBreakpoint point;
        point.expression = u"origin.x"_s;
        QString reason;
        QVERIFY2(m_details->setDataBreakpoint(point, reason), qPrintable(reason));
        QVERIFY(point.id != 0);
        QVERIFY(m_session->start());
        QCOMPARE(m_details->limits().dataUsed, 1);
        QVERIFY(run());
        QCOMPARE(m_session->evaluate(u"origin.x"_s), u"12"_s);
        QCOMPARE(m_details->dataBreakpoints().first().details.hits, 1u);
        point.state = BreakpointRemoved;
        QVERIFY(m_details->setDataBreakpoint(point, reason));
        QCOMPARE(m_details->dataBreakpoints().size(), 0);
        QVERIFY(runToTheEnd());
    }

    void dataBreakpointCanBeDisabledAndHaveACondition()
    {
        QVERIFY(m_session->start());
        DataBreakpoint point;
        point.expression = u"sum"_s; // a local variable
        QString reason;
        QVERIFY2(m_details->setDataBreakpoint(point, reason), qPrintable(reason));
        point.details.condition = u"sum > 5"_s;
        QVERIFY2(m_details->setDataBreakpoint(point, reason), qPrintable(reason));
        QVERIFY(run());
        QCOMPARE(m_session->evaluate(u"sum"_s), u"6"_s);
        point.state = BreakpointDisabled;
        QVERIFY2(m_details->setDataBreakpoint(point, reason), qPrintable(reason));
        QCOMPARE(m_details->limits().dataUsed, 0);
        QVERIFY(runToTheEnd());
    }

    void dataThatCannotBeWatchedAreRefused()
    {
        QVERIFY(m_session->start());
        DataBreakpoint point;
        QString reason;
        point.expression = u"nonsense"_s;
        QVERIFY(!m_details->setDataBreakpoint(point, reason));
        QVERIFY2(reason.contains(u"nonsense"_s), qPrintable(reason));
        point.expression = u"3"_s;
        QVERIFY(!m_details->setDataBreakpoint(point, reason));
        QVERIFY(!reason.isEmpty());
        point.id = 77;
        QVERIFY(!m_details->setDataBreakpoint(point, reason));
        QCOMPARE(m_details->dataBreakpoints().size(), 0);
    }

    void badDataBreakpointIsReportedWhenTheSessionStarts()
    {
        DataBreakpoint point;
        QString reason;
        point.expression = u"nonsense"_s;
        QVERIFY(m_details->setDataBreakpoint(point, reason));
        QVERIFY(m_session->start());
        QVERIFY(!m_details->dataBreakpoints().first().details.set);
        QVERIFY(m_session->events.text.contains(u"The data breakpoint 'nonsense' cannot be set"_s));
    }
};

QTEST_MAIN(BreakpointDetailsTest)
#include "tst_breakpointdetails.moc"

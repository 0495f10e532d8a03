#include "livesession.h"

using Env = IExecutionEnvironment;

/// Stops where exceptions are thrown and caught.
class ExceptionStopsTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_image;

    static QString at(const QString &text) { return u"throw.cpp, %1"_s.arg(Programs::lineOf(u"throw.cpp"_s, text)); }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = m_programs.cpp(u"throw"_s, u"throw.cpp"_s);
        QVERIFY(!m_image.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void throwIsShownAtItsPlace()
    {
        LiveSession session(u"native:"_s + m_image);
        const auto commands = session.get<IExtensionCommands>();
        commands->execute(u"throw"_s);
        QVERIFY(commands->commands().at(4).checked);
        for (int round = 0; round < 2; ++round) { // kept for the second session
            QVERIFY(session.start());
            session.env->run();
            QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
            QCOMPARE(session.location(), at(u"// here"_s));
            QCOMPARE(session.evaluate(u"value"_s), u"1"_s); // of the function that throws
            session.env->run();
            QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
            QCOMPARE(session.evaluate(u"value"_s), u"3"_s);
            session.env->run();
            QVERIFY(session.waitFor(Env::ProgramFinished));
            session.env->stop();
        }
    }

    void catchIsShownAtItsPlace()
    {
        LiveSession session(u"native:"_s + m_image);
        const auto commands = session.get<IExtensionCommands>();
        QVERIFY(session.start());
        commands->execute(u"catch"_s); // while paused
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(session.location(), at(u"// there"_s));
        commands->execute(u"catch"_s);
        QVERIFY(!commands->commands().at(5).checked);
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramFinished));
    }

    void withoutTheChoiceNothingStops()
    {
        LiveSession session(u"native:"_s + m_image);
        QVERIFY(session.start());
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramFinished));
    }

    void firmwareWithoutExceptionsStarts()
    {
        LiveSession session(u"qemu:mps2-an385;image="_s + m_programs.firmware(u"firmware.elf"_s));
        session.get<IExtensionCommands>()->execute(u"throw"_s);
        QVERIFY(session.start());
        QCOMPARE(session.events.serious, QString());
    }
};

QTEST_MAIN(ExceptionStopsTest)
#include "tst_exceptionstops.moc"

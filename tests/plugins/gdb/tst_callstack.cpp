#include "livesession.h"
#include "stackreplies.h"

using Env = IExecutionEnvironment;

/// Threads and frames of a native program.
class CallStackTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_image;
    std::unique_ptr<LiveSession> m_session;
    InterfacePtr<StackReplies> m_replies;
    InterfacePtr<ICallStack> m_stack;

    static QString file() { return Programs::source(u"threads.c"_s); }
    static int line(const QString &text) { return Programs::lineOf(u"threads.c"_s, text); }
    static QString at(const QString &text) { return u"threads.c, "_s + QString::number(line(text)); }
    /// The id of the thread that waits.
    qint64 waiting()
    {
        for (const ThreadInfo &thread : m_replies->askThreads(m_stack.get())) {
            if (thread.id != 1)
                return thread.id;
        }
        return 0;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = m_programs.threads(u"threads"_s);
        QVERIFY(!m_image.isEmpty());
    }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_replies = InterfacePtr<StackReplies>(new StackReplies);
        m_session = std::make_unique<LiveSession>(u"native:"_s + m_image);
        m_stack = m_session->get<ICallStack>();
        m_session->get<IBreakpoints>()->setBreakpoint(file(), line(u"the innermost call"_s), BreakpointEnabled);
        QVERIFY(m_session->start());
        m_session->env->run();
        QVERIFY(m_session->waitFor(Env::ProgramBreakpointHit));
    }
    void cleanup()
    {
        m_stack.reset();
        m_session.reset();
        m_replies.reset();
        QTRY_COMPARE(ownChildren(), QStringList());
    }

    void threadsHaveNamesAndAPlace()
    {
        const QList<ThreadInfo> threads = m_replies->askThreads(m_stack.get());
        QCOMPARE(threads.size(), 2);
        for (const ThreadInfo &thread : threads) {
            QCOMPARE(thread.name, u"threads"_s);
            QVERIFY(!thread.running);
        }
        StackPlace place;
        QVERIFY(m_stack->currentPlace(place));
        QCOMPARE(place.thread, 1);
        QCOMPARE(place.frame, 0);
    }

    void framesAreReadInPortions()
    {
        QList<StackFrame> frames = m_replies->askFrames(m_stack.get(), 1, 0, 100);
        QCOMPARE(frames.size(), 100);
        QVERIFY(m_replies->more);
        QCOMPARE(frames.first().level, 0);
        QCOMPARE(frames.first().function, u"descend"_s);
        QCOMPARE(frames.first().file, file());
        QCOMPARE(frames.first().line, line(u"the innermost call"_s));
        QVERIFY(frames.first().address != 0);
        QVERIFY(frames.first().address != frames.last().address);
        frames = m_replies->askFrames(m_stack.get(), 1, 299, 2);
        QCOMPARE(StackReplies::functions(frames), (QStringList{u"descend"_s, u"main"_s}));
        QCOMPARE(frames.last().level, 300);
        frames = m_replies->askFrames(m_stack.get(), 1, 300, 1);
        QCOMPARE(StackReplies::functions(frames), QStringList{u"main"_s});
        QVERIFY(!m_replies->more);
        QCOMPARE(m_replies->askFrames(m_stack.get(), 1, 5000, 10).size(), 0); // behind the end
        QVERIFY(!m_replies->more);
        QCOMPARE(m_replies->askFrames(m_stack.get(), 1, -1, 10).size(), 0);
        QCOMPARE(m_replies->askFrames(m_stack.get(), 1, 0, 0).size(), 0);
        QCOMPARE(m_replies->failures, QStringList());
    }

    void framesOfAnotherThreadDoNotChangeTheSelectedOne()
    {
        const QStringList functions = StackReplies::functions(m_replies->askFrames(m_stack.get(), waiting()));
        QVERIFY2(functions.contains(u"work"_s), qPrintable(functions.join(u' ')));
        QCOMPARE(m_session->evaluate(u"depth"_s), u"0"_s);
        QCOMPARE(m_session->location(), at(u"the innermost call"_s));
    }

    void chosenFrameIsTheCurrentPlace()
    {
        (void)m_replies->askFrames(m_stack.get(), 1);
        QVERIFY(m_stack->setCurrentPlace({1, 2}));
        StackPlace place;
        QVERIFY(m_stack->currentPlace(place));
        QCOMPARE(place.frame, 2);
        QCOMPARE(m_session->evaluate(u"depth"_s), u"2"_s);
        QCOMPARE(m_session->location(), at(u"descend(depth - 1)"_s));
        QVERIFY(m_stack->setCurrentPlace({1, 3})); // without reading the frames again
        QCOMPARE(m_session->evaluate(u"depth"_s), u"3"_s);
        QVERIFY(m_stack->setCurrentPlace({1, 0}));
        QCOMPARE(m_session->location(), at(u"the innermost call"_s));
        QCOMPARE(m_session->events.statuses, QList<LiveSession::Status>()); // the host needs no report
    }

    void frameOfAnotherThreadCanBeChosen()
    {
        const qint64 thread = waiting();
        const QStringList functions = StackReplies::functions(m_replies->askFrames(m_stack.get(), thread));
        QVERIFY(m_stack->setCurrentPlace({thread, int(functions.indexOf(u"work"_s))}));
        QCOMPARE(m_session->evaluate(u"kept"_s), u"42"_s);
        QCOMPARE(m_session->location(), at(u"pause();"_s));
        m_session->env->run();
        QVERIFY(m_session->waitFor(Env::ProgramFinished));
        StackPlace place;
        QVERIFY(!m_stack->currentPlace(place));
    }

    void innermostFrameIsCurrentAfterAStep()
    {
        (void)m_replies->askFrames(m_stack.get(), 1);
        QVERIFY(m_stack->setCurrentPlace({1, 2}));
        m_session->env->stepOver({});
        QVERIFY(m_session->waitFor(Env::ProgramPaused));
        StackPlace place;
        QVERIFY(m_stack->currentPlace(place));
        QCOMPARE(place.frame, 0);
        QVERIFY(!m_stack->setCurrentPlace({1, 1})); // of the earlier stop
    }

    void missingPlacesAreRefused()
    {
        (void)m_replies->askFrames(m_stack.get(), 1, 0, 10);
        QVERIFY(!m_stack->setCurrentPlace({1, 4000}));
        QVERIFY(!m_stack->setCurrentPlace({77, 0}));
        QCOMPARE(m_replies->askFrames(m_stack.get(), 77).size(), 0);
        QCOMPARE(m_replies->failures.size(), 1);
        QCOMPARE(m_session->location(), at(u"the innermost call"_s));
    }

    void runningProgramHasNoAnswers()
    {
        m_session->env->run();
        QVERIFY(m_session->waitFor(Env::ProgramFinished));
        QCOMPARE(m_replies->askThreads(m_stack.get()).size(), 0);
        QCOMPARE(m_replies->askFrames(m_stack.get(), 1).size(), 0);
        QCOMPARE(m_replies->failures, (QStringList{u"The program is not paused."_s, u"The program is not paused."_s}));
        QVERIFY(!m_stack->setCurrentPlace({1, 0}));
    }

    void endOfTheSessionAnswersOpenQuestions()
    {
        m_stack->requestThreads({1, 1}, m_replies.get());
        m_stack->requestFrames({2, 1}, 1, 0, 10, m_replies.get());
        QVERIFY(m_replies->numbers.isEmpty()); // they do not wait
        m_session->env->stop();
        QCOMPARE(m_replies->numbers.size(), 2);
    }
};

QTEST_MAIN(CallStackTest)
#include "tst_callstack.moc"

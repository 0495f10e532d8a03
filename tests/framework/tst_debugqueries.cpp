#include "callplugin.h"
#include "debugqueries.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The questions of a window to an environment.
class DebugQueriesTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<DebugQueries> m_queries;
    QStringList m_story;

    /// Asks a question whose answer is noted with @p name.
    DebugRequest ask(const QString &name)
    {
        return m_queries->ask({.threads = [=, this](const auto &) { m_story.append(name + u" threads"_s); },
                               .failed = [=, this](const QString &reason) { m_story.append(name + u' ' + reason); }});
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_queries = std::make_unique<DebugQueries>();
        m_story.clear();
    }

    void questionHasOneAnswer()
    {
        const DebugRequest request = ask(u"one"_s);
        QVERIFY(m_queries->isWaiting());
        m_queries->replies()->threads(request, {});
        m_queries->replies()->threads(request, {});
        m_queries->replies()->failed(request, u"late"_s);
        QCOMPARE(m_story, QStringList{u"one threads"_s});
        QVERIFY(!m_queries->isWaiting());
    }

    void answersMayComeInAnyOrder()
    {
        const DebugRequest one = ask(u"one"_s);
        const DebugRequest two = ask(u"two"_s);
        QVERIFY(one.number != two.number);
        QCOMPARE(one.generation, two.generation);
        m_queries->replies()->failed(two, u"failed"_s);
        m_queries->replies()->threads(one, {});
        QCOMPARE(m_story, (QStringList{u"two failed"_s, u"one threads"_s}));
    }

    void answersOfAnOlderGenerationAreIgnored()
    {
        const DebugRequest old = ask(u"old"_s);
        DebugQueries::raiseGeneration();
        const DebugRequest current = ask(u"new"_s);
        QVERIFY(current.generation > old.generation);
        m_queries->replies()->threads(old, {});
        m_queries->replies()->threads(current, {});
        QCOMPARE(m_story, QStringList{u"new threads"_s});
    }

    void cancelledQuestionsHaveNoAnswer()
    {
        const DebugRequest request = ask(u"one"_s);
        m_queries->cancel();
        m_queries->replies()->threads(request, {});
        QCOMPARE(m_story, QStringList());
    }

    void answersOfAnotherKindAreIgnored()
    {
        const DebugRequest request = ask(u"one"_s);
        m_queries->replies()->frames(request, {}, false);
        m_queries->replies()->threads({request.number + 1, request.generation}, {});
        QCOMPARE(m_story, QStringList());
    }

    void answerInsideACallComesAfterIt()
    {
        const DebugRequest request = ask(u"one"_s);
        runPlugin("IExample::call", [&] {
            m_queries->replies()->threads(request, {});
            m_story.append(u"call"_s);
        });
        QCOMPARE(m_story, (QStringList{u"call"_s, u"one threads"_s}));
    }

    void environmentMayKeepTheRepliesOfAWindowThatIsGone()
    {
        const DebugRequest request = ask(u"one"_s);
        const auto replies = shareInterface(m_queries->replies());
        m_queries.reset();
        replies->threads(request, {});
        QCOMPARE(m_story, QStringList());
    }

    void answerMayDeleteTheWindow()
    {
        const DebugRequest request = m_queries->ask({.failed = [this](const QString &) { m_queries.reset(); }});
        const auto replies = shareInterface(m_queries->replies());
        replies->failed(request, {});
        QVERIFY(!m_queries);
    }
};

QTEST_MAIN(DebugQueriesTest)
#include "tst_debugqueries.moc"

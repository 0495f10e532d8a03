#include "linesource.h"
#include "parasearch.h"
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {
/// Every fourth paragraph has two lines.
struct Paras : IParaSource
{
    QStringList para(int index) override
    {
        if (const auto ask = std::exchange(whenAsked, nullptr))
            ask();
        return index % 4 ? QStringList() : QStringList{u"source of %1"_s.arg(index), u"<b>code</b> %1"_s.arg(index)};
    }
    int paraCount() override { return count; }
    bool fetch(int index, int) override
    {
        fetched << index;
        return index < ready;
    }

    int count = 400;
    int ready = std::numeric_limits<int>::max(); ///< paragraphs below it take no time
    QList<int> fetched;
    std::function<void()> whenAsked;
};
} // namespace

class ParaSearchTest : public QObject
{
    Q_OBJECT

private:
    Paras m_source;
    std::unique_ptr<TextParaView> m_view;
    std::unique_ptr<ParaSearch> m_search;
    QString m_result; ///< "para,line,column", with an asterisk if the search went round

    /// Waits for the result of a search.
    QString find(const QString &text, const TextParaView::Place &from, bool forward = true)
    {
        m_result.clear();
        m_search->start({text, Qt::CaseSensitive, forward}, from);
        [[maybe_unused]] const bool ended = QTest::qWaitFor([this] { return !m_search->isRunning(); });
        return m_result;
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_source = {};
        m_result.clear();
        m_view = std::make_unique<TextParaView>(&m_source);
        m_search = std::make_unique<ParaSearch>(m_view.get(), &m_source);
        connect(m_search.get(), &ParaSearch::found, this, [this](const TextParaView::Place &place, bool wrapped) {
            m_result = u"%1,%2,%3"_s.arg(place.para).arg(place.line).arg(place.column) + (wrapped ? u"*"_s : QString());
            QVERIFY(!m_search->isRunning()); // it ends at the first one
        });
        connect(m_search.get(), &ParaSearch::notFound, this, [this] { m_result = u"not found"_s; });
    }

    void cleanup()
    {
        m_search.reset();
        m_view.reset();
    }

    void nearestMatchIsFoundAndTheSearchGoesRound_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("para");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("result");
        QTest::newRow("next line") << u"code"_s << 8 << 0 << 0 << true << u"8,1,4"_s;
        QTest::newRow("behind the column") << u"code"_s << 8 << 1 << 1 << true << u"12,1,4"_s;
        QTest::newRow("over the end") << u"of 4"_s << 200 << 0 << 0 << true << u"4,0,11*"_s;
        QTest::newRow("the same line, after a round") << u"source of 200"_s << 200 << 0 << 1 << true << u"200,0,13*"_s;
        QTest::newRow("line before") << u"source"_s << 8 << 1 << 0 << false << u"8,0,0"_s;
        QTest::newRow("before the first column") << u"source"_s << 8 << 0 << -1 << false << u"4,0,0"_s;
        QTest::newRow("behind the end of the line") << u"code"_s << 8 << 1 << 50 << false << u"8,1,0"_s;
        QTest::newRow("over the start") << u"of 396"_s << 8 << 0 << 0 << false << u"396,0,7*"_s;
        QTest::newRow("nowhere") << u"needle"_s << 8 << 0 << 0 << true << u"not found"_s;
        QTest::newRow("nowhere before") << u"needle"_s << 8 << 0 << 0 << false << u"not found"_s;
        QTest::newRow("markup is no text") << u"<b>"_s << 0 << 0 << 0 << true << u"not found"_s;
    }

    void nearestMatchIsFoundAndTheSearchGoesRound()
    {
        QFETCH(QString, text);
        QFETCH(int, para);
        QFETCH(int, line);
        QFETCH(int, column);
        QFETCH(bool, forward);
        QTEST(find(text, {para, line, column}, forward), "result");
    }

    void emptySourceHasNoMatch()
    {
        m_source.count = 0;
        QCOMPARE(find(u"a"_s, {}), u"not found"_s);
        QCOMPARE(find(u"a"_s, {}, false), u"not found"_s);
    }

    void longSearchLeavesTheEventLoopAndCanBeCancelled()
    {
        m_source.count = 2'000'000'000;
        QSignalSpy progress(m_search.get(), &ParaSearch::progress);
        m_search->start({u"needle"_s}, {1'000'000'000, 0, 0});
        QTRY_VERIFY(progress.size() > 1);
        QCOMPARE(progress.last(), QList<QVariant>{0});
        m_search->cancel();
        QVERIFY(!m_search->isRunning());
        QCOMPARE(m_result, QString());
    }

    void searchWaitsForParagraphsInTheEventLoop()
    {
        m_source.ready = 100;
        QSignalSpy progress(m_search.get(), &ParaSearch::progress);
        m_search->start({u"of 200"_s}, {});
        QTRY_VERIFY(m_source.fetched.count(100) > 2); // asked again and again
        QVERIFY(m_search->isRunning());
        QCOMPARE(progress.last(), QList<QVariant>{25});
        m_source.ready = 400;
        QTRY_COMPARE(m_result, u"200,0,13"_s);
    }

    void sourceMayEndOrReplaceTheSearchWhenItIsAsked()
    {
        m_source.whenAsked = [this] { m_search->start({u"code 12"_s}, {}); };
        QCOMPARE(find(u"code"_s, {}), u"12,1,7"_s);
        m_source.whenAsked = [this] { m_search->cancel(); };
        m_view->reload();
        QCOMPARE(find(u"code"_s, {}), QString());
        m_source.whenAsked = [this] { m_search.reset(); };
        m_view->reload();
        m_search->start({u"code"_s}, {});
        QTRY_VERIFY(!m_search);
    }
};

QTEST_MAIN(ParaSearchTest)
#include "tst_parasearch.moc"

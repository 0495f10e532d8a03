#include "../emptyenvironment.h"
#include "fakedebugenvironment.h"
#include "ilivememory.h"
#include "imemory64.h"
#include "listview.h"
#include "liveswitch.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include "watchwindow.h"
#include <limits>
#include <QElapsedTimer>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {
/// A processor with a counter at address 0 that grows with each read, and one region of 256 bytes.
class LiveEnvironment : public EmptyEnvironment<IMemory, ILiveMemory>
{
public:
    ProgramStatus programStatus() override { return status; }
    int evaluate(const QString &expression, QString &result) override
    {
        result = expression + (status == ProgramPaused ? u" paused"_s : u" error"_s);
        return 0;
    }

    QList<MemoryRegion> regions() override { return {{u"RAM"_s, 3, 0, 0, 0, 255, false, Byte}}; }
    int read(int, int, uint, uint *) override { return NoMemory; }
    int write(int, int, uint, uint, bool) override { return Success; }
    void readBlock(int, int, uint, int count, MemoryBlock &result) override
    {
        ++pausedReads;
        result.fill({0xee, Success}, count);
    }
    void writeBlock(int, int, uint, int, MemoryBlock &, bool) override {}

    bool canReadLive() override { return can; }
    bool readLive(int region, int mode, uint, int count, MemoryBlock &result) override
    {
        ++liveReads;
        if (onLive)
            onLive();
        result.fill({uint(0x10 * region + mode), Success}, count);
        return !fails;
    }
    bool prepareLive(const QString &expression) override
    {
        prepared.append(expression);
        return expression == u"counter";
    }
    bool evaluateLive(const QString &expression, QString &result) override
    {
        ++liveReads;
        if (onLive)
            onLive();
        result = QString::number(liveReads);
        return prepared.contains(expression) && expression == u"counter";
    }

    ProgramStatus status = ProgramRunning;
    bool can = true;
    bool fails = false;
    int pausedReads = 0;
    int liveReads = 0;
    QStringList prepared;
    std::function<void()> onLive;
};
/// 256 bytes above 32 bits.
class WideMemory : public InterfaceObject<IMemory64>
{
public:
    QList<MemoryRegion64> regions() override
    {
        return {{u"heap"_s, 4, 0x7fff00000000, 0x7fff000000ff, false, IMemory::Byte}};
    }
    int read(int, int, quint64, quint64 *) override { return IMemory::NoMemory; }
    int write(int, int, quint64, quint64, bool) override { return IMemory::Success; }
    void readBlock(int, int, quint64, int count, MemoryBlock64 &result) override
    {
        ++reads;
        result.fill({0x5a, IMemory::Success}, count);
    }
    void writeBlock(int, int, quint64, int, MemoryBlock64 &, bool) override {}

    int reads = 0;
};
} // namespace

/// Memory and watches that are read while the program runs.
class LiveWindowsTest : public QObject
{
    Q_OBJECT

private:
    InterfacePtr<LiveEnvironment> m_processor;
    std::unique_ptr<MemoryWindow> m_memory;
    std::unique_ptr<WatchWindow> m_watches;

    static LiveSwitch *liveOf(const QWidget &pane) { return pane.findChild<LiveSwitch *>(); }
    static void switchOn(const QWidget &pane)
    {
        liveOf(pane)->setRate(10);
        QTest::mouseClick(liveOf(pane), Qt::LeftButton, {}, {4, liveOf(pane)->height() / 2});
        QVERIFY(liveOf(pane)->isChecked());
    }
    /// Until another switch has asked for several refreshes.
    static void letTimePass()
    {
        const InterfacePtr<LiveEnvironment> processor(new LiveEnvironment);
        LiveSwitch clock;
        clock.setRate(10);
        clock.setEnvironment(processor.get());
        clock.show();
        clock.click();
        const QSignalSpy ticks(&clock, &LiveSwitch::refresh);
        QTRY_VERIFY(ticks.count() >= 3);
    }
    QString cells() const { return m_memory->findChild<MemoryEdit *>()->toPlainText(); }
    QString value(int row) const { return m_watches->findChild<ListView *>()->topLevelItem(row)->text(1); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_processor = InterfacePtr<LiveEnvironment>(new LiveEnvironment);
        m_processor->status = IExecutionEnvironment::ProgramPaused;
        m_memory = std::make_unique<MemoryWindow>();
        m_memory->resize(700, 200);
        m_memory->setInterface(m_processor.get());
        m_memory->setLive(m_processor.get());
        m_watches = std::make_unique<WatchWindow>();
        m_watches->setEnvironment(m_processor.get());
        m_watches->setWatches({u"counter"_s, u"local"_s});
        m_memory->show();
        m_watches->show();
        QCoreApplication::processEvents();
        m_processor->status = IExecutionEnvironment::ProgramPaused;
        m_watches->update();
        m_processor->status = IExecutionEnvironment::ProgramRunning;
    }
    void cleanup()
    {
        m_memory.reset();
        m_watches.reset();
        m_processor.reset();
    }

    void liveIsOffAtFirstAndHasThreeRates()
    {
        for (const QWidget *pane : {static_cast<QWidget *>(m_memory.get()), static_cast<QWidget *>(m_watches.get())}) {
            const LiveSwitch *live = liveOf(*pane);
            QVERIFY(live->isEnabled());
            QVERIFY(!live->isChecked());
            QStringList rates;
            for (QAction *action : live->menu()->actions()) {
                action->trigger();
                rates.append(QString::number(live->rate()));
            }
            QCOMPARE(rates.join(u' '), u"2 5 10"_s);
        }
        QTest::qWait(0);
        QCOMPARE(m_processor->liveReads, 0);
    }

    void theSwitchIsEnabledWhereTheTargetCanBeRead()
    {
        m_processor->can = false;
        m_memory->setPaused(false);
        m_watches->setPaused(false);
        QVERIFY(!liveOf(*m_memory)->isEnabled());
        QVERIFY(!liveOf(*m_watches)->isEnabled());
        m_processor->can = true;
        m_memory->setPaused(true);
        m_watches->setPaused(true);
        QVERIFY(liveOf(*m_memory)->isEnabled());
        QVERIFY(liveOf(*m_watches)->isEnabled());
        int alive = 0;
        const InterfacePtr<FakeDebugEnvironment> other(new FakeDebugEnvironment(&alive));
        m_memory->setLive(other.get());
        m_watches->setEnvironment(other.get());
        QVERIFY(!liveOf(*m_memory)->isEnabled());
        QVERIFY(!liveOf(*m_watches)->isEnabled());
        m_watches->setEnvironment(nullptr);
        m_memory->setLive(nullptr);
    }

    void memoryIsReadWhileTheProgramRuns()
    {
        switchOn(*m_memory);
        QTRY_VERIFY(cells().contains(u" 31 "_s)); // region 3, bytes
        QCOMPARE(m_processor->pausedReads, 0);
        QTRY_VERIFY(m_processor->liveReads > 2);
        m_processor->status = IExecutionEnvironment::ProgramPaused;
        QCoreApplication::processEvents();
        const int reads = m_processor->liveReads;
        letTimePass();
        QCOMPARE(m_processor->liveReads, reads);
    }

    void memoryAbove32BitsIsReadWhileTheProgramRuns()
    {
        const InterfacePtr<WideMemory> wide(new WideMemory);
        m_memory->setInterfaces(m_processor.get(), wide.get());
        switchOn(*m_memory);
        QTRY_VERIFY(cells().startsWith(u"7FFF00000000 5A"_s));
        QCOMPARE(m_processor->liveReads, 0);
        m_processor->can = false; // but the switch has not followed yet
        QCoreApplication::processEvents();
        const int reads = wide->reads;
        letTimePass();
        QCOMPARE(wide->reads, reads);
    }

    void aFailedReadKeepsWhatIsShown()
    {
        m_memory->setPaused(true);
        m_memory->userRefreshDisplay();
        QVERIFY(cells().contains(u" EE "_s, Qt::CaseInsensitive));
        m_processor->fails = true;
        switchOn(*m_memory);
        QTRY_VERIFY(m_processor->liveReads > 1);
        QVERIFY(cells().contains(u" EE "_s, Qt::CaseInsensitive));
    }

    void changesOfTheUserAreNotOverwritten()
    {
        m_memory->setPaused(true);
        m_memory->userRefreshDisplay();
        m_memory->hexChanged(0, int(cells().indexOf(u"ee"_s, 0, Qt::CaseInsensitive)), 7);
        const QString typed = cells();
        m_memory->setPaused(false);
        switchOn(*m_memory);
        letTimePass();
        QCOMPARE(m_processor->liveReads, 0);
        QCOMPARE(cells(), typed);
    }

    void watchesOfVariablesAreReadAndOthersKeepTheirValue()
    {
        switchOn(*m_watches);
        QTRY_VERIFY(value(0).toInt() > 2);
        QCOMPARE(value(1), u"local paused"_s);
        QCOMPARE(m_processor->prepared, (QStringList{u"counter"_s, u"local"_s})); // once each
    }

    void watchesArePreparedAtAStopOnlyWhileLiveIsOn()
    {
        m_processor->status = IExecutionEnvironment::ProgramPaused;
        m_watches->update();
        QCOMPARE(m_processor->prepared, QStringList());
        switchOn(*m_watches);
        m_watches->update();
        QCOMPARE(m_processor->prepared, (QStringList{u"counter"_s, u"local"_s}));
        m_watches->update(); // the next stop
        QCOMPARE(m_processor->prepared.size(), 4);
        QCOMPARE(value(0), u"counter paused"_s);
    }

    void watchAddedWhileTheProgramRunsBecomesLive()
    {
        m_watches->setWatches({u"local"_s});
        switchOn(*m_watches);
        letTimePass();
        m_watches->addItem(u"counter"_s);
        QTRY_VERIFY(value(1).toInt() > 0);
    }

    void renamedWatchBecomesLive()
    {
        m_watches->setWatches({u"local"_s});
        switchOn(*m_watches);
        letTimePass();
        auto *row = static_cast<ListViewItem *>(m_watches->findChild<ListView *>()->topLevelItem(0));
        row->setText(0, u"counter"_s);
        m_watches->itemRenamed(row, 0, u"counter"_s);
        QTRY_VERIFY(value(0).toInt() > 0);
    }

    void writeWhileTheProgramRunsKeepsWhatCannotBeRead()
    {
        m_watches->update(); // as after a write in another window
        QVERIFY(value(0).toInt() > 0);
        QCOMPARE(value(1), u"local paused"_s);
        m_processor->can = false;
        m_watches->setPaused(false);
        m_watches->update();
        QCOMPARE(value(1), u"local error"_s); // the text of the environment, where nothing can be read
    }

    void slowReadIsFollowedByARest()
    {
        QElapsedTimer sinceEnd;
        qint64 shortest = std::numeric_limits<qint64>::max();
        m_processor->onLive = [&] {
            if (sinceEnd.isValid())
                shortest = std::min(shortest, sinceEnd.elapsed());
            QThread::msleep(130); // longer than a period
            sinceEnd.start();
        };
        switchOn(*m_memory);
        QTRY_VERIFY(m_processor->liveReads >= 3);
        QVERIFY2(shortest >= 129, QByteArray::number(shortest));
    }

    void aHiddenPaneReadsNothing()
    {
        switchOn(*m_watches);
        QTRY_VERIFY(m_processor->liveReads > 0);
        m_watches->hide();
        const int reads = m_processor->liveReads;
        letTimePass();
        QCOMPARE(m_processor->liveReads, reads);
        m_watches->show();
        QTRY_VERIFY(m_processor->liveReads > reads);
    }

    void aPluginMayThrow()
    {
        m_processor->onLive = [this] {
            if (m_processor->liveReads <= 2)
                throw std::runtime_error("boom");
        };
        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg, "ILiveMemory::evaluateLive: an exception has left the plug-in (boom)");
        switchOn(*m_watches);
        QTRY_VERIFY(value(0).toInt() > 2);
    }

    void pluginThatDeletesThePanesDuringACallIsNotUsedAgain()
    {
        m_processor->onLive = [this] {
            m_watches.reset();
            m_memory.reset();
        };
        switchOn(*m_watches);
        QTRY_VERIFY(!m_watches);
        QVERIFY(!m_memory);
    }

    void pluginThatRemovesItsEnvironmentDuringACallIsNotUsedAgain()
    {
        m_processor->onLive = [this] {
            m_watches->releaseEnvironment();
            m_memory->releaseEnvironment();
        };
        switchOn(*m_memory);
        QTRY_VERIFY(!liveOf(*m_memory)->isEnabled());
        QVERIFY(!liveOf(*m_watches)->isEnabled());
        QVERIFY(m_watches->watches().isEmpty());
    }
};

QTEST_MAIN(LiveWindowsTest)
#include "tst_livewindows.moc"

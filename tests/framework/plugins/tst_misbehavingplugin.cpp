#include "misbehaviourtable.h"
#include "misbehaviourtest.h"
#include "outputpage.h"
#include "outputwindow.h"
#include <QDeadlineTimer>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {
/// Longer than the delays of the program's own timers, so that these are due when the call returns.
constexpr int SlowMilliseconds = 25;
/// Longer than all of these timers; for one call only.
constexpr int VerySlowMilliseconds = 5000;
} // namespace

/// A plug-in that does something wrong in each of its calls, while the user works, closes and exits.
class MisbehavingPluginTest : public MisbehaviourTest
{
    Q_OBJECT

    unsigned long m_slowness = SlowMilliseconds;
    QString m_shown;                           ///< on the output pages
    inline static QSet<QString> reportedCalls; ///< from which exceptions were caught

    /// The bad deed, the first time that the call is made in a story; exceptions are thrown each time.
    void act(const QString &call) override
    {
        if (!m_pending.contains(call))
            return;
        const bool first = !m_done.contains(call);
        if (m_depth > 0 || m_silent || (!first && m_deed != "throw"_L1))
            return;
        if (first)
            m_done.append(call);
        const bool hasWindow = f && f->window; // not while the program starts
        ++m_depth;
        const auto end = qScopeGuard([this] { --m_depth; });
        if (m_deed == "throw"_L1)
            throw std::runtime_error("bad deed");
        if (m_deed == "slow"_L1)
            QThread::msleep(m_slowness);
        if (m_deed == "null"_L1 || m_deed == "empty"_L1)
            stub()->hooks().result = m_deed == "null"_L1 ? StubHooks::Null : StubHooks::Empty;
        if (m_deed == "report"_L1)
            sendAllReports();
        if (m_deed == "host"_L1 && hasWindow)
            callAllServices(f->path(u"other.c"_s));
        m_silent = m_deed == "silent"_L1 && hasWindow;
        if (m_deed == "loop"_L1) {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
            loop.exec();
        }
        if (m_deed == "thread"_L1) {
            const std::unique_ptr<QThread> thread(QThread::create(&sendAllReports));
            thread->start();
            thread->wait();
        }
    }

    [[nodiscard]] QString output() const
    {
        const OutputWindow *output = f->window->findChild<OutputWindow *>();
        return output->page(OutputWindow::Build)->toPlainText() + output->page(OutputWindow::Debug)->toPlainText();
    }

    /// A user whom a silent plug-in keeps waiting stops what runs, and closes the workspace if that has no effect.
    void finishBuild() override
    {
        if (!m_silent)
            return MisbehaviourTest::finishBuild();
        QCoreApplication::processEvents();
        giveUp();
        m_silent = false;
    }

    void giveUp() const
    {
        MainWindow *window = f->window.get();
        cancelStart();
        if (window->activity().state() == StateBuilding)
            window->buildStopBuild();
        if (window->activity().state() == StateBuilding)
            window->closeWorkspace();
    }

    /// The result of a call in the words of the table.
    [[nodiscard]] QString resultOf(const QString &call) const
    {
        if (m_deed != "throw"_L1)
            return MisbehaviourCell::GoesOn;
        return reportedCalls.contains(call) ? u"reported"_s : u"not reported"_s;
    }

    static void noteException(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        static const QRegularExpression report(u"^(\\w+::\\w+)(?: \\(.*\\))?: an exception has left the plug-in"_s);
        if (const auto match = report.match(message); match.hasMatch())
            reportedCalls.insert(match.captured(1));
    }

    /// What the table of the documentation has to contain for the deed, by call.
    [[nodiscard]] QMap<QString, QString> column() const
    {
        using namespace MisbehaviourCell;
        QMap<QString, QString> cells;
        for (const PluginCallInfo &call : callsOfPlugins()) {
            const bool hasMeaning = m_deed == "null"_L1    ? call.hasPointer
                                    : m_deed == "empty"_L1 ? call.hasResult
                                                           : !call.isReserved;
            cells.insert(call.name, hasMeaning ? m_results.value(call.name, NotCalled) : NoMeaning);
        }
        return cells;
    }

    /// Commands that are not available now are skipped, as their actions are disabled.
    void take(bool debugging, const std::function<void()> &command) override
    {
        if (!f->window->projectWorkspace() || (debugging && !f->window->activity().isDebugging()))
            return;
        command();
        finishBuild();
        m_shown += output();
    }

    void opened() override { m_shown += output(); }

    void misbehaveInAStory()
    {
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        misbehaveInPendingCalls();
        reportedCalls.clear();
        m_shown.clear();
        story();
        m_shown += output();
        for (const QString &call : std::as_const(m_done)) {
            m_pending.remove(call);
            m_results[call] = resultOf(call);
        }
        const QString where = m_deed + u": "_s + m_done.join(u' ');
        if (m_deed == "throw"_L1 && !m_done.isEmpty())
            QVERIFY2(m_shown.contains(u"The plug-in 'Stub' has failed in "_s), qPrintable(where));
        QVERIFY2(f->read(u"main.c"_s).contains("typed") == m_typed, qPrintable(where));
        QCOMPARE(f->window->activity().state(), StateNoWorkspace);
        QVERIFY2(stub()->objectCount() == 0, qPrintable(where));
    }

    /// Misbehaves while the program starts.
    void misbehaveAtStart()
    {
        m_offered = OfferedInterfaces::Simple;
        f.reset();
        do {
            m_done.clear();
            reportedCalls.clear();
            prepareMisbehavingScripts(m_offered);
            stub()->hooks().onCall = [this](const QString &call) { act(call); };
            showSplashScreen();
            makeWindow();
            stub()->hooks() = {};
            QVERIFY2(f->window->isVisible(), qPrintable(m_done.join(u' ')));
            for (const QString &call : std::as_const(m_done)) {
                m_pending.remove(call);
                m_results[call] = resultOf(call);
            }
            f.reset();
        } while (!m_done.isEmpty() && !QTest::currentTestFailed());
    }

private Q_SLOTS:
    void init()
    {
        m_offered = OfferedInterfaces::Simple;
        m_cancels = false;
        m_attaches = false;
        m_silent = false;
        m_slowness = SlowMilliseconds;
        m_results.clear();
        prepareMisbehavingScripts(m_offered);
        makeWindow();
    }
    void cleanup()
    {
        stub()->hooks() = {};
        f.reset();
    }

    void tableContainsAllCalls()
    {
        QStringList calls;
        for (const PluginCallInfo &call : callsOfPlugins())
            calls.append(call.name);
        QVERIFY(calls.size() > 100);
        QCOMPARE(readMisbehaviourTable().calls, calls);
    }

    void programSurvives_data()
    {
        QTest::addColumn<QString>("deed");
        for (const PluginDeed &deed : pluginDeeds) {
            if (!deed.ends)
                QTest::newRow(deed.name) << QString::fromLatin1(deed.name);
        }
    }

    /// Repeats the story until no further call is made. The last one shows that the program can do everything again
    /// with a plug-in that behaves.
    void programSurvives()
    {
        QFETCH(QString, deed);
        const QtMessageHandler previous = qInstallMessageHandler(&MisbehavingPluginTest::noteException);
        const auto restore = qScopeGuard([&] { qInstallMessageHandler(previous); });
        m_deed = deed;
        m_attaches = m_deed == "throw"_L1;
        m_pending.clear();
        for (const PluginCallInfo &call : callsOfPlugins()) {
            if (deed == "null"_L1 ? call.hasPointer : deed == "empty"_L1 ? call.hasResult : true)
                m_pending.insert(call.name);
        }
        misbehaveAtStart();
        makeWindow();
        using enum OfferedInterfaces;
        for (const auto &[offered, cancels] : {std::pair(Simple, false), {Wide, false}, {Wide, true}}) {
            m_offered = offered;
            m_cancels = cancels;
            do
                misbehaveInAStory();
            while (!m_done.isEmpty() && !QTest::currentTestFailed());
        }
        compareWithMisbehaviourTable(m_deed, column());
    }

    void callOfFiveSecondsOnlyKeepsTheUserWaiting_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call : {"IExecutionEnvironment::currentLocation"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void callOfFiveSecondsOnlyKeepsTheUserWaiting()
    {
        QFETCH(QString, call);
        m_deed = u"slow"_s;
        m_slowness = VerySlowMilliseconds;
        m_pending = {call};
        misbehaveInAStory();
        QCOMPARE(m_done, QStringList{call});
    }

    void exitDuringAMisbehavingSessionEndsTheProgram_data() { programSurvives_data(); }

    void exitDuringAMisbehavingSessionEndsTheProgram()
    {
        QFETCH(QString, deed);
        QtMessageHandler previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        const auto restore = qScopeGuard([&] { qInstallMessageHandler(previous); });
        m_deed = deed;
        m_done.clear();
        QVERIFY(f->window->openWorkspace(workspaceFile(), false));
        startSession(false);
        stopAt(IExecutionEnvironment::ProgramPaused);
        QVERIFY(f->window->activity().isDebugging());
        m_pending = {u"IExecutionEnvironment::stop"_s, u"IExecutionEnvironment::canAttach"_s,
                     u"IBreakpoints::breakpoints"_s, u"IExecutionEnvironment::currentLocation"_s};
        stub()->hooks().onCall = [this](const QString &call) { act(call); };
        if (m_deed == "report"_L1) // a destructor must not throw
            stub()->script(u"{sim}"_s).on[u"delete"_s] = &sendAllReports;
        QVERIFY(f->window->close());
        QCOMPARE(stub()->objectCount(), 0);
    }
};

int main(int argc, char **argv)
{
    MisbehavingPluginTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_misbehavingplugin.moc"

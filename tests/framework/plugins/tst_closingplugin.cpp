#include "debugdecisions.h"
#include "misbehaviourtable.h"
#include "misbehaviourtest.h"
#include <QDeadlineTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int Slices = 3; ///< of the list of calls; a deed takes long, since the user has to open and start all again
constexpr int EndMilliseconds = 5000;
} // namespace

/// A plug-in in whose calls the workspace is closed, the program is ended, or a session or a build is stopped.
class ClosingPluginTest : public MisbehaviourTest
{
    Q_OBJECT

    QSet<QString> m_outside; ///< calls that were made without anything to close or to stop
    QStringList m_refused;   ///< calls after which it was not closed or stopped
    bool m_ending = false;   ///< what the deed closes or stops is not closed yet

    /// The user can stop something.
    [[nodiscard]] bool isWorking() const
    {
        const ActivityState state = f->window->activity().state();
        return state == StateBuilding || (f->window->activity().isDebugging() && mayStop(state))
               || f->window->findChild<QProgressDialog *>(u"startProgressDialog"_s);
    }

    /// There is something left that the deed closes or stops.
    [[nodiscard]] bool isOpen() const
    {
        if (m_deed == "userExits"_L1)
            return f->window->isVisible();
        return m_deed == "userStops"_L1 ? isWorking() : f->window->projectWorkspace() != nullptr;
    }

    /// The bad deed, the first time that the call is made in a story.
    void act(const QString &call) override
    {
        if (!f || !f->window || (m_deed == "userStops"_L1 && !isWorking())) {
            m_outside.insert(call);
            return;
        }
        if (!m_pending.contains(call) || m_depth > 0 || m_ending || m_done.contains(call))
            return;
        m_done.append(call);
        m_ending = isOpen();
        ++m_depth;
        const auto end = qScopeGuard([this] { --m_depth; });
        if (m_deed == "close"_L1)
            closeWorkspace();
        else
            actOfUser();
    }

    void actOfUser()
    {
        QEventLoop loop;
        QTimer::singleShot(0, f->window.get(), [this] {
            if (m_deed == "userCloses"_L1)
                closeWorkspace();
            if (m_deed == "userExits"_L1) {
                forgetChanges();
                f->window->close();
            }
            if (m_deed == "userStops"_L1)
                stopWork();
        });
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void closeWorkspace() const
    {
        forgetChanges();
        if (f->window->projectWorkspace())
            f->window->closeWorkspace();
    }

    /// So that there is no question whether projects are to be saved.
    void forgetChanges() const
    {
        if (ProjectWorkspace *workspace = f->window->projectWorkspace())
            workspace->setModified(false);
        for (const QPointer<Project> &project : f->window->activity().projects()) {
            if (project)
                project->setModified(false);
        }
    }

    void stopWork() const
    {
        cancelStart();
        if (f->window->activity().state() == StateBuilding)
            f->window->buildStopBuild();
        if (f->window->activity().isDebugging())
            f->window->debugStop();
    }

    /// What was closed or stopped in a call is so some time after it.
    void waitForEnd()
    {
        const QDeadlineTimer limit(EndMilliseconds);
        while (m_ending && isOpen() && !limit.hasExpired()) {
            if (m_deed == "userStops"_L1)
                finishBuild(); // the report of the plug-in that it has stopped
            QTest::qWait(1);
        }
        if (m_ending && isOpen())
            m_refused.append(m_done.last());
        m_ending = false;
    }

    void opened() override { waitForEnd(); }

    void typed() override
    {
        if (m_deed == "userExits"_L1)
            f->window->fileSaveAll(); // so that there is no question
    }

    /// Makes what was closed in a call available again, for the rest of the story.
    void reopen(bool debugging)
    {
        qsizetype done = -1;
        while (done != m_done.size() && !QTest::currentTestFailed()) {
            done = m_done.size();
            if (!f->window->isVisible())
                f->restart();
            if (!f->window->projectWorkspace())
                f->window->openWorkspace(workspaceFile(), false);
            waitForEnd();
            if (!f->view() && f->window->projectWorkspace())
                f->window->openFile(f->path(u"main.c"_s), false);
            waitForEnd();
            if (debugging && f->window->projectWorkspace() && !f->window->activity().isDebugging())
                startSession(false);
            waitForEnd();
            if (debugging && f->window->activity().isDebugging())
                stopAt(IExecutionEnvironment::ProgramPaused);
            waitForEnd();
        }
    }

    /// A step is repeated after each call in which something was closed.
    void take(bool debugging, const std::function<void()> &command) override
    {
        qsizetype done = -1;
        while (done != m_done.size() && !QTest::currentTestFailed()) {
            if (!f->window->projectWorkspace() || (debugging && !f->window->activity().isDebugging()))
                reopen(debugging);
            done = m_done.size();
            if (!f->window->projectWorkspace() || (debugging && !f->window->activity().isDebugging()))
                return;
            command();
            finishBuild();
            waitForEnd();
        }
    }

    void misbehaveInAStory()
    {
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        misbehaveInPendingCalls();
        story();
        for (const QString &call : std::as_const(m_done)) {
            m_pending.remove(call);
            m_results[call] = MisbehaviourCell::GoesOn;
        }
        const QString where = m_deed + u": "_s + m_done.join(u' ');
        if (m_deed == "userExits"_L1) {
            prepareMisbehavingScripts(m_offered);
            f->restart(); // as the user does
        }
        QVERIFY2(m_refused.isEmpty(), qPrintable(m_refused.join(u' ')));
        QVERIFY2(f->read(u"main.c"_s).contains("typed") == m_typed, qPrintable(where));
        QCOMPARE(f->window->activity().state(), StateNoWorkspace);
        QVERIFY2(stub()->objectCount() == 0, qPrintable(where));
    }

    /// The calls of one slice.
    static QSet<QString> callsOf(int slice)
    {
        QSet<QString> calls;
        const QList<PluginCallInfo> all = callsOfPlugins();
        for (qsizetype i = slice - 1; i < all.size(); i += Slices)
            calls.insert(all[i].name);
        return calls;
    }

    /// What the table of the documentation has to contain for the calls.
    [[nodiscard]] QMap<QString, QString> column(const QSet<QString> &calls) const
    {
        using namespace MisbehaviourCell;
        QMap<QString, QString> cells;
        for (const PluginCallInfo &call : callsOfPlugins()) {
            const QString other = call.isReserved || m_outside.contains(call.name) ? NoMeaning : NotCalled;
            if (calls.contains(call.name))
                cells.insert(call.name, m_results.value(call.name, other));
        }
        return cells;
    }

    static void addDeeds(const std::function<void(const char *deed)> &add)
    {
        for (const PluginDeed &deed : pluginDeeds) {
            if (deed.ends)
                add(deed.name);
        }
    }

private Q_SLOTS:
    void init()
    {
        m_offered = OfferedInterfaces::Simple;
        m_cancels = false;
        m_ending = false;
        m_outside.clear();
        m_refused.clear();
        m_results.clear();
        m_pending.clear();
        prepareMisbehavingScripts(m_offered);
        stub()->hooks().onCall = [this](const QString &call) { act(call); };
        showSplashScreen();
        makeWindow();
    }
    void cleanup()
    {
        stub()->hooks() = {};
        f.reset();
    }

    void programSurvives_data()
    {
        QTest::addColumn<QString>("deed");
        QTest::addColumn<int>("slice");
        addDeeds([](const char *deed) {
            for (int slice = 1; slice <= Slices; ++slice)
                QTest::addRow("%s-%d", deed, slice) << QString::fromLatin1(deed) << slice;
        });
    }

    /// Repeats the story until no further call is made. The last one shows that the program can do everything again
    /// with a plug-in that behaves.
    void programSurvives()
    {
        QFETCH(QString, deed);
        QFETCH(int, slice);
        m_deed = deed;
        const QSet<QString> calls = callsOf(slice);
        m_pending = calls;
        using enum OfferedInterfaces;
        for (const auto &[offered, cancels] : {std::pair(Simple, false), {Wide, false}, {Wide, true}}) {
            m_offered = offered;
            m_cancels = cancels;
            do
                misbehaveInAStory();
            while (!m_done.isEmpty() && !QTest::currentTestFailed());
        }
        if (!QTest::currentTestFailed())
            compareWithMisbehaviourTable(m_deed, column(calls));
    }

    void exitDuringAMisbehavingSessionEndsTheProgram_data()
    {
        QTest::addColumn<QString>("deed");
        addDeeds([](const char *deed) { QTest::newRow(deed) << QString::fromLatin1(deed); });
    }
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
        QVERIFY(f->window->close());
        QCOMPARE(stub()->objectCount(), 0);
    }
};

int main(int argc, char **argv)
{
    ClosingPluginTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_closingplugin.moc"

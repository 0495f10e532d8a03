#include "activitystate.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QStringList AllNames{u"projectOpen"_s,
                           u"projectRepopulate"_s,
                           u"workspaceEditing"_s,
                           u"projectEditing"_s,
                           u"build"_s,
                           u"building"_s,
                           u"run"_s,
                           u"stop"_s,
                           u"pause"_s,
                           u"start"_s,
                           u"restart"_s,
                           u"wakeup"_s,
                           u"showNext"_s,
                           u"attach"_s,
                           u"batchBuild"_s};

/// The names of the available commands, in the order of the fields.
QStringList names(const ActivityAvailability &can)
{
    const QList<bool> fields{can.projectOpen,
                             can.projectRepopulate,
                             can.workspaceEditing,
                             can.projectEditing,
                             can.build,
                             can.building,
                             can.run,
                             can.stop,
                             can.pause,
                             can.start,
                             can.restart,
                             can.wakeup,
                             can.showNext,
                             can.attach,
                             can.batchBuild};
    QStringList result;
    for (int i = 0; i < fields.size(); ++i) {
        if (fields[i])
            result.append(AllNames[i]);
    }
    return result;
}

constexpr ActivityContext Everything{
    .workspace = true, .project = true, .buildEnvironment = true, .executionEnvironment = true, .canAttach = true};
} // namespace

class ActivityStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void numbersAreFixed()
    {
        QCOMPARE(int(StateNoWorkspace), 0);
        QCOMPARE(int(StateIdle), 1);
        QCOMPARE(int(StateBuilding), 2);
        QCOMPARE(int(StateInitialising), 3);
        QCOMPARE(int(StateRunning), 4);
        QCOMPARE(int(StatePaused), 5);
        QCOMPARE(int(StateFinished), 6);
        QCOMPARE(int(StateUnknown), 7);
    }

    void availabilityFollowsFromTheState_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("possible");
        QTest::newRow("no workspace") << 0 << u"projectOpen projectRepopulate workspaceEditing projectEditing"_s;
        QTest::newRow("idle") << 1
                              << u"projectOpen projectRepopulate workspaceEditing projectEditing build run start "
                                 "restart attach batchBuild"_s;
        QTest::newRow("building") << 2 << u"building"_s;
        QTest::newRow("initialising") << 3 << QString();
        QTest::newRow("running") << 4 << u"stop pause wakeup"_s;
        QTest::newRow("paused") << 5 << u"run stop restart wakeup showNext"_s;
        QTest::newRow("finished") << 6 << u"stop restart"_s;
        QTest::newRow("unknown") << 7 << u"stop"_s;
    }

    void availabilityFollowsFromTheState()
    {
        QFETCH(int, state);
        QTEST(names(activityAvailability(ActivityState(state), Everything)).join(u' '), "possible");
    }

    void missingPartsDisableTheirCommands_data()
    {
        QTest::addColumn<ActivityContext>("context");
        QTest::addColumn<QString>("impossible");
        const QString ofTarget = u"run stop pause start restart wakeup showNext attach"_s;
        const QString ofProject = u"projectRepopulate projectEditing build building batchBuild"_s;
        ActivityContext context = Everything;
        QTest::newRow("everything there") << context << QString();
        context.canAttach = false;
        QTest::newRow("no attaching") << context << u"attach"_s;
        context.executionEnvironment = false;
        QTest::newRow("no execution environment") << context << ofTarget;
        context.canAttach = true;
        QTest::newRow("attaching without execution environment") << context << ofTarget;
        context = Everything;
        context.buildEnvironment = false;
        QTest::newRow("no build environment") << context << u"batchBuild"_s;
        context = {.workspace = true};
        QTest::newRow("no project") << context << ofTarget + u' ' + ofProject;
        context.workspace = false;
        QTest::newRow("no workspace") << context << ofTarget + u' ' + ofProject + u" workspaceEditing"_s;
    }

    void missingPartsDisableTheirCommands()
    {
        QFETCH(ActivityContext, context);
        QFETCH(QString, impossible);
        const QStringList gone = impossible.split(u' ');
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state) {
            QStringList expected = names(activityAvailability(ActivityState(state), Everything));
            expected.removeIf([&gone](const QString &name) { return gone.contains(name); });
            QCOMPARE(names(activityAvailability(ActivityState(state), context)), expected);
        }
    }

    /// Of a target, and only while it starts in the background.
    void startInTheBackgroundCanBeStopped()
    {
        ActivityContext context = Everything;
        context.startCancellable = true;
        for (int state = StateNoWorkspace; state <= StateUnknown; ++state) {
            QStringList expected = names(activityAvailability(ActivityState(state), Everything));
            if (state == StateInitialising)
                expected.append(u"stop"_s);
            QCOMPARE(names(activityAvailability(ActivityState(state), context)), expected);
        }
        context.executionEnvironment = false;
        QVERIFY(!activityAvailability(StateInitialising, context).stop);
    }

    void debugStatesHaveTheirOwnLayout_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("debug");
        for (int state = 0; state <= 7; ++state)
            QTest::addRow("%d", state) << state << (state >= 3);
    }

    void debugStatesHaveTheirOwnLayout()
    {
        QFETCH(int, state);
        QTEST(isDebugState(ActivityState(state)), "debug");
    }

    void captionShowsTheStateOfTheTarget_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("no workspace") << 0 << QString();
        QTest::newRow("idle") << 1 << QString();
        QTest::newRow("building") << 2 << QString();
        QTest::newRow("initialising") << 3 << QString();
        QTest::newRow("running") << 4 << u" [running]"_s;
        QTest::newRow("paused") << 5 << u" [paused]"_s;
        QTest::newRow("finished") << 6 << u" [finished]"_s;
        QTest::newRow("unknown") << 7 << u" [unknown]"_s;
    }

    void captionShowsTheStateOfTheTarget()
    {
        QFETCH(int, state);
        QTEST(captionSuffix(ActivityState(state)), "suffix");
    }
};

QTEST_APPLESS_MAIN(ActivityStateTest)
#include "tst_activitystate.moc"

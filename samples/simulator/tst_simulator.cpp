#include <ibreakpoints.h>
#include <iexecutionenvironment.h>
#include <iexecutionevents.h>
#include <imemory.h>
#include <imultiprocessorsync.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <iregisters.h>
#include <pluginfactory.h>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr const char *Program = "; counts\n"
                                "start:  load 5\n"
                                "again:  add 1\n"
                                "        store 16\n"
                                "        send\n"
                                "        jump again\n";

/// What Varnel would receive.
class Events : public InterfaceObject<IExecutionEvents>
{
public:
    void feedback(const QString &text, const QString &page, bool) override { output[page] += text; }
    void processorStatusChanged(IExecutionEnvironment::ProcessorStatus) override {}
    void programStatusChanged(IExecutionEnvironment::ProgramStatus status) override { statuses += status; }
    void statusInfo(const QString &text, int position) override
    {
        if (position == 1)
            reason = text;
    }
    void breakpointsChanged() override { ++changes; }

    QMap<QString, QString> output;
    QList<IExecutionEnvironment::ProgramStatus> statuses;
    QString reason;
    int changes = 0;
};

/// A project in a directory. The simulator only asks for its path.
class Project : public InterfaceObject<IProject>
{
public:
    explicit Project(const QString &path) : m_path(path) {}
    QString name() override { return u"test"_s; }
    QString basePath() override { return m_path; }
    QList<IProjectFolder *> folders() override { return {}; }
    QList<IProjectFile *> files() override { return {}; }
    IProjectProperties *properties() override { return nullptr; }
    QString currentConfiguration() override { return u"Debug"_s; }
    bool isModified() override { return false; }
    bool save() override { return false; }
    void addFiles(QStringList) override {}
    QString displayName() override { return u"test"_s; }
    bool isActive() override { return true; }
    void setActive(bool) override {}

private:
    const QString m_path;
};
} // namespace

class SimulatorTest : public QObject
{
    Q_OBJECT

    struct Instance
    {
        InterfacePtr<Events> events{new Events};
        InterfacePtr<IExecutionEnvironment> environment;
    };

    QTemporaryDir m_directory;

    [[nodiscard]] Instance create(const QString &program = u"count.acc"_s) const
    {
        auto *factory = qobject_cast<IPluginFactory *>(QPluginLoader(QStringLiteral(PLUGIN_LIBRARY)).instance());
        const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().constFirst()));
        Instance instance;
        instance.environment = queryInterface<IExecutionEnvironment>(object.get());
        const InterfacePtr<Project> project(new Project(m_directory.path()));
        instance.environment->initialise(project.get(), instance.events.get(), program);
        return instance;
    }
    [[nodiscard]] static int line(const Instance &instance)
    {
        QString file;
        int line = 0;
        return instance.environment->currentLocation(file, line) ? line : 0;
    }
    [[nodiscard]] static QString evaluate(const Instance &instance, const QString &expression)
    {
        QString result;
        return instance.environment->evaluate(expression, result) == 0 ? result : u"error: "_s + result;
    }
    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_directory.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private Q_SLOTS:
    void init() { write(u"count.acc"_s, Program); }

    void startReportsAPauseAtTheFirstInstruction()
    {
        const Instance one = create();
        QVERIFY(one.environment->start(false));
        QCOMPARE(one.events->statuses, QList{IExecutionEnvironment::ProgramPaused});
        QCOMPARE(line(one), 2);
    }

    void programWithAnErrorIsNotStarted()
    {
        write(u"wrong.acc"_s, "load 1\nfly 3\n");
        const Instance one = create(u"wrong.acc"_s);
        QVERIFY(!one.environment->start(false));
        QCOMPARE(one.events->output[QString()], u"Line 2: 'fly' is no instruction\n"_s);
        QVERIFY(!create(u"missing.acc"_s).environment->start(false));
    }

    void stepsReadAndWriteRegistersAndMemory()
    {
        const Instance one = create();
        QVERIFY(one.environment->start(false));
        for (int i = 0; i < 3; ++i)
            one.environment->stepInto({});
        QCOMPARE(line(one), 5);
        const auto registers = queryInterface<IRegisters>(one.environment.get());
        QCOMPARE(registers->value(u"acc"_s, 0), 6u);
        const auto memory = queryInterface<IMemory>(one.environment.get());
        MemoryBlock block;
        memory->readBlock(0, IMemory::Word32, 16, 2, block);
        QCOMPARE(block[0].value, 6u);
        QCOMPARE(memory->write(0, IMemory::Word32, 256, 1, true), int(IMemory::NoMemory));
        QCOMPARE(evaluate(one, u"@16"_s), u"6"_s);
        QCOMPARE(evaluate(one, u"acc = 0x10"_s), u"16"_s);
        QCOMPARE(evaluate(one, u"nothing"_s), u"error: 'nothing' is not known."_s);
    }

    void runStopsAtABreakpoint()
    {
        const Instance one = create();
        const auto breakpoints = queryInterface<IBreakpoints>(one.environment.get());
        QCOMPARE(breakpoints->setBreakpoint(m_directory.filePath(u"count.acc"_s), 6, BreakpointEnabled), 0);
        QCOMPARE(one.events->changes, 1);
        QVERIFY(one.environment->start(false));
        one.environment->run();
        QTRY_COMPARE(one.events->statuses.constLast(), IExecutionEnvironment::ProgramBreakpointHit);
        QCOMPARE(one.events->reason, u"Breakpoint"_s);
        QCOMPARE(line(one), 6);
        QCOMPARE(one.events->output[u"Simulator"_s], u"6\n"_s);
        QVERIFY(breakpoints->setBreakpoint(u"other.acc"_s, 6, BreakpointEnabled) != 0);
    }

    void twoInstancesRunAndPauseTogether()
    {
        const Instance one = create();
        const Instance two = create();
        QVERIFY(one.environment->start(false) && two.environment->start(false));
        const auto leader = queryInterface<IMultiProcessorSync>(one.environment.get());
        const auto follower = queryInterface<IMultiProcessorSync>(two.environment.get());
        QVERIFY(follower->supportedOperations(leader->groupId())
                & IMultiProcessorSync::RunOperation << IMultiProcessorSync::FollowShift);
        leader->syncRun();
        QTRY_VERIFY(!one.events->output.isEmpty() && !two.events->output.isEmpty());
        leader->syncPause();
        for (const Instance *instance : {&one, &two})
            QCOMPARE(instance->environment->programStatus(), IExecutionEnvironment::ProgramPaused);
    }

    void programThatHaltsIsFinished()
    {
        write(u"short.acc"_s, "load 1\nhalt\n");
        const Instance one = create(u"short.acc"_s);
        QVERIFY(one.environment->start(false));
        one.environment->run();
        QTRY_COMPARE(one.events->statuses.constLast(), IExecutionEnvironment::ProgramFinished);
        one.environment->restart();
        QCOMPARE(line(one), 1);
    }
};

QTEST_MAIN(SimulatorTest)
#include "tst_simulator.moc"

#include "machine.h"
#include <ibreakpoints.h>
#include <iexecutionenvironment.h>
#include <iexecutionevents.h>
#include <imemory.h>
#include <imultiprocessorsync.h>
#include <interfaceobject.h>
#include <iproject.h>
#include <iregisters.h>
#include <iwakeup.h>
#include <pluginfactory.h>
#include <QDir>
#include <QFile>
#include <QTimer>

using namespace Qt::StringLiterals;

/// Runs the program of a project on a Machine. The option of the execution environment is the path of the program,
/// relative to the project. All simulators of a workspace start and stop together.
class Simulator : public QObject,
                  public InterfaceObject<IPluginObject, IExecutionEnvironment, IBreakpoints, IMemory, IRegisters,
                                         IMultiProcessorSync, IWakeUp>
{
    Q_OBJECT
public:
    Simulator()
    {
        connect(&m_timer, &QTimer::timeout, this, &Simulator::runSlice);
        group().append(this);
    }
    ~Simulator() override { group().removeOne(this); }

    int type() override { return Environment; }

    // Session

    bool initialise(IProject *project, IExecutionEvents *events, const QString &option) override
    {
        m_events = shareInterface(events);
        m_directory = project->basePath();
        m_file = option;
        if (m_file.isEmpty())
            say(tr("The project's execution environment option is empty. It must be the path of a program.\n"));
        return !m_file.isEmpty();
    }
    bool start(bool attachOnly) override
    {
        QFile file(QDir(m_directory).filePath(m_file));
        if (!file.open(QIODevice::ReadOnly)) {
            say(tr("Cannot read '%1': %2\n").arg(file.fileName(), file.errorString()));
            return false;
        }
        if (attachOnly || !m_machine.load(QString::fromUtf8(file.readAll()))) {
            say(attachOnly ? tr("There is nothing to attach to.\n") : m_machine.error() + u'\n');
            return false;
        }
        m_started = true;
        report(ProgramPaused, tr("Loaded"));
        return true;
    }
    bool canAttach() override { return false; }
    void stop() override
    {
        m_timer.stop();
        m_started = false;
        m_status = ProgramFinished;
    }

    // Run control: each function returns at once, and the end is reported

    void run() override
    {
        if (!m_started)
            return;
        m_timer.start(0);
        report(ProgramRunning, {});
    }
    void runTo(const QString &file, int line) override
    {
        m_runTo = isProgram(file) ? line - 1 : -1;
        run();
    }
    void stepInto(const QString &) override
    {
        if (m_started)
            finishStep(m_machine.step());
    }
    void stepOver(const QString &file) override { stepInto(file); } // the machine has no calls
    void pause() override
    {
        if (m_timer.isActive())
            halt(ProgramPaused, tr("Paused"));
    }
    void restart() override
    {
        m_machine.reset();
        halt(ProgramPaused, tr("Restarted"));
    }
    void wakeUp() override {}
    bool canWakeUp() override { return false; } // the machine does not sleep

    ProcessorStatus processorStatus() override { return {}; }
    ProgramStatus programStatus() override { return m_status; }
    bool currentLocation(QString &file, int &line) override
    {
        if (!m_started || !m_machine.hasCode(m_machine.address()))
            return false;
        file = m_file;
        line = m_machine.address() + 1;
        return true;
    }
    /// "acc", "@16", or a label, which is its address; the first two can be assigned to: "acc=5".
    int evaluate(const QString &expression, QString &result) override
    {
        const QString name = expression.section(u'=', 0, 0).trimmed();
        quint32 *place = placeOf(name);
        bool isNumber = true;
        if (expression.contains(u'=')) {
            const quint32 value = expression.section(u'=', 1).trimmed().toUInt(&isNumber, 0);
            if (place && isNumber)
                *place = value;
        }
        if (isNumber && (place || m_machine.labels().contains(name))) {
            result = QString::number(place ? *place : quint32(m_machine.labels().value(name)));
            return 0;
        }
        result = tr("'%1' is not known.").arg(expression);
        return 1;
    }
    _object *pythonExtension() override { return nullptr; }

    // Breakpoints

    QList<BreakpointRecord> breakpoints() override
    {
        QList<BreakpointRecord> records;
        for (auto it = m_breakpoints.cbegin(); it != m_breakpoints.cend(); ++it)
            records.append({{{QDir(m_directory).filePath(m_file), it.key() + 1}}, it.value()});
        return records;
    }
    int setBreakpoint(const QString &file, int line, int state) override
    {
        if (!isProgram(file) || (m_started && !m_machine.hasCode(line - 1)))
            return 1;
        if (state == BreakpointRemoved)
            m_breakpoints.remove(line - 1);
        else
            m_breakpoints.insert(line - 1, state);
        m_events->breakpointsChanged();
        return 0;
    }

    // Memory: words of 32 bits

    QList<MemoryRegion> regions() override
    {
        return {{.name = tr("Data"), .id = 0, .highAddress = Machine::MemorySize - 1, .modes = Word32}};
    }
    int read(int, int, uint address, uint *value) override
    {
        if (address >= Machine::MemorySize)
            return NoMemory;
        *value = m_machine.memory[address];
        return Success;
    }
    int write(int, int, uint address, uint value, bool) override
    {
        if (address >= Machine::MemorySize)
            return NoMemory;
        m_machine.memory[address] = value;
        return Success;
    }
    void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) override
    {
        result.resize(count);
        for (int i = 0; i < count; ++i)
            result[i].status = read(region, mode, address + uint(i), &result[i].value);
    }
    void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) override
    {
        for (int i = 0; i < count; ++i)
            cells[i].status = write(region, mode, address + uint(i), cells[i].value, flush);
    }

    // Registers

    QList<RegisterInfo> registers() override
    {
        const uint formats = SignedDecimal | UnsignedDecimal | Hexadecimal | Binary;
        return {{.name = u"pc"_s,
                 .width = 16,
                 .choices = {},
                 .defaultFormat = UnsignedDecimal,
                 .formats = formats,
                 .group = {}},
                {.name = u"acc"_s,
                 .width = 32,
                 .choices = {},
                 .defaultFormat = UnsignedDecimal,
                 .formats = formats,
                 .group = {}}};
    }
    uint value(const QString &name, int word) override
    {
        if (word > 0)
            return 0;
        return name == "pc"_L1 ? uint(m_machine.address()) : m_machine.accumulator;
    }
    void setValue(const QString &name, uint value, int word) override
    {
        if (word == 0 && name == "pc"_L1)
            m_machine.setAddress(int(value));
        else if (word == 0)
            m_machine.accumulator = value;
    }

    // All simulators together

    QString groupId() override { return u"simulators"_s; }
    int supportedOperations(const QString &groupId) override
    {
        const int operations = RunOperation | PauseOperation | RestartOperation;
        return groupId == this->groupId() ? operations | operations << FollowShift : 0;
    }
    void syncRun() override { callAll(&Simulator::run); }
    void syncPause() override { callAll(&Simulator::pause); }
    void syncRestart() override { callAll(&Simulator::restart); }
    void syncWakeup() override {}

private:
    static QList<Simulator *> &group()
    {
        static QList<Simulator *> simulators;
        return simulators;
    }
    static void callAll(void (Simulator::*function)())
    {
        const QList<Simulator *> simulators = group();
        for (Simulator *simulator : simulators) {
            if (simulator->m_started)
                (simulator->*function)();
        }
    }

    /// A part of the run that is so short that the window stays usable.
    void runSlice()
    {
        constexpr int instructions = 10000;
        for (int i = 0; i < instructions; ++i) {
            const Machine::Event event = m_machine.step();
            if (event != Machine::Stepped)
                return finishStep(event);
            if (m_breakpoints.value(m_machine.address()) == BreakpointEnabled)
                return halt(ProgramBreakpointHit, tr("Breakpoint"));
            if (m_machine.address() == m_runTo)
                return halt(ProgramPaused, tr("Reached the line"));
        }
        showOutput();
    }
    void finishStep(Machine::Event event)
    {
        if (event == Machine::Halted)
            halt(ProgramFinished, tr("Finished"));
        else
            halt(ProgramPaused, event == Machine::Failed ? tr("The program has no instruction here") : tr("Stepped"));
    }
    void halt(ProgramStatus status, const QString &reason)
    {
        m_timer.stop();
        m_runTo = -1;
        showOutput();
        report(status, reason);
    }
    void showOutput()
    {
        if (const QString output = m_machine.takeOutput(); !output.isEmpty())
            m_events->feedback(output, tr("Simulator"), false);
    }
    /// The reason of a stop must be set before the stop is reported.
    void report(ProgramStatus status, const QString &reason)
    {
        m_status = status;
        m_events->statusInfo(reason, 1);
        m_events->programStatusChanged(status);
    }
    void say(const QString &text) { m_events->feedback(text, {}, false); }
    [[nodiscard]] bool isProgram(const QString &file) const
    {
        const QDir directory(m_directory);
        return QDir::cleanPath(directory.absoluteFilePath(file)) == QDir::cleanPath(directory.absoluteFilePath(m_file));
    }
    quint32 *placeOf(const QString &name)
    {
        if (name == "acc"_L1)
            return &m_machine.accumulator;
        bool isNumber = false;
        const uint address = name.mid(1).toUInt(&isNumber, 0);
        return name.startsWith(u'@') && isNumber && address < Machine::MemorySize ? &m_machine.memory[address]
                                                                                  : nullptr;
    }

    InterfacePtr<IExecutionEvents> m_events;
    QString m_directory;
    QString m_file;
    Machine m_machine;
    QTimer m_timer;
    QMap<int, int> m_breakpoints; ///< the states by address
    int m_runTo = -1;
    bool m_started = false;
    ProgramStatus m_status = ProgramFinished;
};

/// The root object of the plug-in library.
class SimulatorFactory : public QObject, public InterfaceObject<IPluginFactory>
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID VarnelPluginFactoryIid)
    Q_INTERFACES(IPluginFactory)
public:
    QStringList featureList() override { return {u"{3d1c8f0a-6f2b-4d0e-9f57-2f4a8b1c7e60}"_s}; }
    IPluginObject *create(const QString &feature) override
    {
        return featureList().contains(feature) ? new Simulator : nullptr;
    }
    QString name() override { return u"Accumulator Simulator"_s; }
    QPixmap logo() override
    {
        QPixmap picture(32, 32);
        picture.fill(Qt::darkMagenta);
        return picture;
    }
};

#include "simulator.moc"

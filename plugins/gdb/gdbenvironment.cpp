#include "gdbenvironment.h"
#include "disassemblyplace.h"
#include "formattedexpression.h"
#include "propertytext.h"
#include "sourcepaths.h"
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr int EvaluateLimit = 3000;
} // namespace

GdbEnvironment::GdbEnvironment(const ProcessorGroup::Registry &processors)
    : m_symbols(&m_session, static_cast<IPluginObject *>(this))
    , m_wideSymbols(&m_symbols, static_cast<IPluginObject *>(this))
    , m_breakpoints(&m_session, &m_symbols, static_cast<IPluginObject *>(this))
    , m_memory(&m_session, static_cast<IPluginObject *>(this))
    , m_wideMemory(&m_memory, static_cast<IPluginObject *>(this))
    , m_live(&m_session, &m_memory, static_cast<IPluginObject *>(this))
    , m_registers(&m_session, static_cast<IPluginObject *>(this))
    , m_requests(
          &m_session, &m_memory, &m_registers,
          [this](const QString &expression, QString &result) { return evaluate(expression, result); },
          static_cast<IPluginObject *>(this))
    , m_peripherals(&m_memory, static_cast<IPluginObject *>(this))
    , m_disassembler(&m_session, &m_symbols, &m_memory, static_cast<IPluginObject *>(this))
    , m_variables(&m_session, static_cast<IPluginObject *>(this))
    , m_callStack(&m_session, static_cast<IPluginObject *>(this))
    , m_group(
          processors, &m_session, [this] { restart(); }, static_cast<IPluginObject *>(this))
    , m_docks(&m_session, static_cast<IPluginObject *>(this))
    , m_rtt(&m_session)
    , m_faults(&m_session)
    , m_exceptions(&m_session) // NOLINT(bugprone-throw-keyword-missing): it is no exception
    , m_facets({&m_symbols, &m_wideSymbols, &m_breakpoints, &m_memory, &m_wideMemory, &m_live, &m_registers,
                &m_requests, &m_peripherals, &m_disassembler, &m_variables, &m_callStack, &m_group, &m_docks})
{
    connectParts();
}

GdbEnvironment::~GdbEnvironment()
{
    m_session.disconnect(this); // the host expects no events after its last release()
    m_session.end();
    if (m_progress)
        m_progress->finished(false, {});
}

void GdbEnvironment::connectParts()
{
    connect(&m_session, &GdbSession::changed, this, &GdbEnvironment::reportState);
    connect(&m_session, &GdbSession::message, this, &GdbEnvironment::showMessage);
    connect(&m_session, &GdbSession::progress, this, &GdbEnvironment::showProgress);
    connect(m_session.task(), &BackgroundTask::ended, this, &GdbEnvironment::backgroundEnded);
    connect(&m_session, &GdbSession::symbolsLoaded, this, [this] { m_breakpoints.insertAll(); });
    connect(&m_session, &GdbSession::programLoaded, this, [this] {
        loadTargetTables();
        m_breakpoints.readLimits();
        const BackgroundTask::Whole whole; // until the start ends, so that no breakpoint changes after catchUp()
        m_breakpoints.catchUp();
        m_breakpoints.insertAllData();
        m_rtt.begin(options().rtt, m_memory.wholeTable());
    });
    connect(&m_rtt, &RttChannel::output, &m_session, &GdbSession::output);
    connect(&m_rtt, &RttChannel::message, this, &GdbEnvironment::showMessage);
    connect(&m_docks, &DebugDocks::outputUnseen, this, [this] {
        showMessage(tr("The program writes to the window \"Target console\": choose \"Debug Windows\" in the menu "
                       "\"Debug\" to open it.\n"),
                    false);
    });
    m_docks.setInputTaker([this](const QByteArray &bytes) { return m_rtt.write(bytes); });
    connect(&m_session, &GdbSession::stopText, this, [this](const QString &text) {
        const BackgroundTask::Whole whole;
        if (m_events)
            m_events->statusInfo(text, 1);
    });
    connect(&m_symbols, &SymbolTable::message, this, &GdbEnvironment::showMessage);
    connect(&m_breakpoints, &BreakpointList::message, this, &GdbEnvironment::showMessage);
    connect(&m_peripherals, &PeripheralAccess::message, this, &GdbEnvironment::showMessage);
    connect(&m_faults, &FaultCatcher::message, this, &GdbEnvironment::showMessage);
    connect(&m_callStack, &CallStack::message, this, &GdbEnvironment::showMessage);
    connect(&m_exceptions, &ExceptionStops::message, this, &GdbEnvironment::showMessage);
    connect(&m_breakpoints, &BreakpointList::changed, this, [this] {
        const BackgroundTask::Whole whole;
        if (m_events)
            m_events->breakpointsChanged();
    });
    connect(m_session.gdb(), &MiConnection::dialogue, this, &GdbEnvironment::logDialogue);
}

QRESULT GdbEnvironment::queryInterface(const QUuid &id, QUnknownInterface **out)
{
    if (InterfaceObject::queryInterface(id, out) == QS_OK)
        return QS_OK;
    for (FacetBase *facet : m_facets) {
        *out = facet->offer(id);
        if (!*out)
            continue;
        addRef();
        return QS_OK;
    }
    return QE_NOINTERFACE;
}

unsigned long GdbEnvironment::release()
{
    if (!m_session.task()->isCurrent())
        return InterfaceObject::release();
    QMetaObject::invokeMethod(
        qApp, [this] { InterfaceObject::release(); }, Qt::QueuedConnection);
    return 1;
}

bool GdbEnvironment::initialise(IProject *project, IExecutionEvents *events, const QString &option)
{
    m_project = shareInterface(project);
    m_events = shareInterface(events);
    m_optionText = option;
    m_breakpoints.setBasePath(project->basePath());
    m_symbols.setBasePath(project->basePath());
    TargetOptions ignored;
    QString error;
    const bool understood = applyOptionText(option, &ignored, &error);
    if (!understood)
        showMessage(error + u'\n', true);
    setExpectedTarget();
    return understood;
}

// Sessions ------------------------------------------------------------------------------------------------------------

bool GdbEnvironment::start(bool attachOnly)
{
    if (!m_project)
        return false;
    const TargetOptions now = options();
    Target::Program program{findProgram(now), {}};
    program.elf = loadElfImage(program.file);
    if (!attachOnly && !program.elf.isValid()) {
        showMessage(program.file.isEmpty()
                        ? tr("There is no program to be debugged: build the project, or set the project property "
                             "\"Program\".\n")
                        : tr("'%1' is not a program that can be debugged.\n").arg(program.file),
                    true);
        return false;
    }
    m_instructionView.clear();
    m_symbols.reset();
    m_disassembler.reset();
    m_breakpoints.forget();
    m_symbols.setSources([this] { return projectFiles(); }, now.sourceDirectories.split(u';', Qt::SkipEmptyParts));
    setExpectedTarget();
    m_docks.clear();
    m_faults.reset(now.catchFaults);
    if (!m_session.start(now, program, attachOnly)) {
        m_breakpoints.forget();
        return false;
    }
    return true;
}

void GdbEnvironment::startInBackground(bool attachOnly, IStartProgress *progress)
{
    m_session.task()->cancel();
    m_progress = shareInterface(progress);
    m_session.task()->run([this, attachOnly] { m_started = start(attachOnly); });
}

/// A start or a restart has ended. The session reports the state of the program itself, if there is one.
void GdbEnvironment::backgroundEnded()
{
    if (const auto progress = std::exchange(m_progress, {}))
        progress->finished(m_started, {});
    else if (!m_session.isStopped() && !m_session.task()->isCancelled() && m_events)
        m_events->programStatusChanged(programStatus());
}

void GdbEnvironment::showProgress(const QString &step, int percent)
{
    const BackgroundTask::Whole whole;
    if (m_progress)
        m_progress->progress(step, percent);
    else if (m_events && m_session.task()->isActive())
        m_events->statusInfo(percent < 0 ? step : step + u" %1 %"_s.arg(percent), 0);
}

/// Called when the program is loaded and its addresses are final.
void GdbEnvironment::loadTargetTables()
{
    m_live.reset();
    m_variables.reset();
    m_symbols.reset();
    m_disassembler.reset();
    const TargetOptions now = options();
    m_callStack.reset(now.tasks);
    QStringList bad;
    RegionTable table = parseRegions(now.regions, &bad);
    for (const QString &entry : bad)
        showMessage(tr("The memory region '%1' is invalid; the format is name:start:length:kind.\n").arg(entry), false);
    if (table.isEmpty())
        table = m_session.target()->regions(m_session.gdb());
    m_memory.setTable(table);
    showCodeRegion();
    m_registers.load();
}

/// A program can stop outside its own code, such as in a library or a boot loader.
void GdbEnvironment::showCodeRegion()
{
    m_memory.setCodeAddress(m_session.frame().address);
    if (const TargetRegion *region = m_memory.codeRegion())
        m_symbols.setShown(*region);
}

bool GdbEnvironment::canAttach()
{
    if (!m_project)
        return false;
    const TargetOptions now = options();
    return now.kind == TargetOptions::Kind::Remote || now.processId > 0;
}

void GdbEnvironment::stop()
{
    m_session.end();
    m_breakpoints.forget();
    m_reportedProcessor = TargetState::Absent;
}

/// Until it has ended, the program counts as running.
void GdbEnvironment::restart()
{
    if (m_session.task()->isActive())
        return;
    if (m_session.refuseRestart()) {
        if (!m_session.isStopped()) // the host sets its state to paused
            m_events->programStatusChanged(programStatus());
        return;
    }
    inBackground([this] { restartSession(); });
}

/// Runs work in the background within the present session of the host.
void GdbEnvironment::inBackground(const std::function<void()> &work)
{
    m_session.task()->run(work);
    if (m_session.task()->isActive())
        m_events->programStatusChanged(ProgramRunning);
}

void GdbEnvironment::restartSession()
{
    m_instructionView.clear();
    m_docks.clear();
    if (!m_session.gdb()->isOpen())
        m_breakpoints.forget();
    m_session.restart();
}

void GdbEnvironment::run()
{
    m_instructionView.clear();
    m_session.resume();
}

void GdbEnvironment::runTo(const QString &file, int line)
{
    m_instructionView = isDisassembly(file) ? file : QString();
    if (isDisassembly(file))
        m_session.runTo(u"*0x"_s + QString::number(m_symbols.widen(addressOfLine(line)), 16));
    else
        m_session.runTo(u"--source "_s + QString::fromUtf8(miQuoted(m_symbols.gdbFile(absolute(file)))) + u" --line "_s
                        + QString::number(line));
}

bool GdbEnvironment::setNextStatement(const QString &file, int line)
{
    uint address = addressOfLine(line);
    QString problem;
    if (!m_session.isStopped())
        problem = tr("The next statement cannot be set, because the program is not paused.\n");
    else if (!isDisassembly(file) && !m_symbols.addressOf(absolute(file), line, address))
        problem = tr("The next statement cannot be set: line %1 has no code.\n").arg(line);
    else if (!m_session.moveTo(m_symbols.widen(address)))
        problem = tr("The next statement cannot be set: gdb refuses it.\n");
    if (!problem.isEmpty())
        showMessage(problem, true);
    return problem.isEmpty();
}

void GdbEnvironment::stepInto(const QString &file)
{
    step(file, "-exec-step", "-exec-step-instruction");
}

void GdbEnvironment::stepOver(const QString &file)
{
    step(file, "-exec-next", "-exec-next-instruction");
}

/// Code without source lines is stepped by instructions, even if a source file is the current document.
void GdbEnvironment::step(const QString &file, const QByteArray &bySource, const QByteArray &byInstruction)
{
    m_instructionView = isDisassembly(file) ? file : QString();
    const bool instruction = isDisassembly(file) || m_session.frame().line == 0;
    m_session.step(instruction ? byInstruction : bySource);
}

IExecutionEnvironment::ProcessorStatus GdbEnvironment::processorStatus()
{
    return ProcessorStatus(m_session.state().phase);
}

bool GdbEnvironment::currentLocation(QString &file, int &line)
{
    if (!m_session.isStopped())
        return false;
    const GdbSession::Frame frame = m_session.frame();
    const QString local = frame.line > 0 ? m_symbols.localFile(frame.file) : QString();
    const QString instructionView = isDisassembly(file) ? file : m_instructionView;
    if (instructionView.isEmpty() && !local.isEmpty()) {
        file = projectPath(local, m_project->basePath());
        line = frame.line;
        return true;
    }
    file = instructionView.isEmpty() ? anyDisassembly() : instructionView;
    line = lineOfAddress(frame.address);
    return true;
}

int GdbEnvironment::evaluate(const QString &expression, QString &result)
{
    if (!m_session.isAlive()) {
        result = tr("no program is being debugged");
        return 1;
    }
    const FormattedExpression parts = parseFormattedExpression(expression);
    MiRecord answer;
    if (parts.format.isNull()) {
        answer = m_session.gdb()->ask("-data-evaluate-expression " + miQuoted(expression), EvaluateLimit);
        result = answer.results.text(u"value");
    } else { // the other command has no formats
        QString line = u"output/%1 %2"_s.arg(QString(parts.format), parts.expression);
        result.clear();
        answer = m_session.gdb()->askConsole(line.replace(u'\n', u' '), &result, EvaluateLimit);
    }
    if (!answer.isDone())
        result = answer.errorText().section(u'\n', 0, 0);
    if (answer.isDone() && expression.contains(u'='))
        m_session.targetChanged();
    return answer.isDone() ? 0 : 1;
}

// Events for the host -------------------------------------------------------------------------------------------------

void GdbEnvironment::reportState()
{
    const TargetState state = m_session.state();
    if (!m_events || state.phase == TargetState::Absent)
        return; // the host ended the session itself
    if (m_session.isStopped())
        showCodeRegion();
    if (std::exchange(m_reportedProcessor, state.phase) != state.phase)
        m_events->processorStatusChanged(ProcessorStatus(state.phase));
    m_events->programStatusChanged(::programStatus(state));
    if (m_session.target()) // each time, because builds of other projects clear the status bar
        m_events->statusInfo(m_session.target()->title(), 0);
}

void GdbEnvironment::showMessage(const QString &text, bool serious)
{
    if (!m_events)
        return;
    const BackgroundTask::Whole whole;
    const bool alone = m_group.groupId().isEmpty();
    m_events->feedback(alone ? text : u"%1: %2"_s.arg(m_project->name(), text), {}, serious);
}

void GdbEnvironment::logDialogue(const QString &line, bool fromUs)
{
    const BackgroundTask::Whole whole;
    if (m_logging && m_events)
        m_events->feedback((fromUs ? u"> "_s : u"< "_s) + line + u'\n', u"gdb"_s, false);
}

// Commands ------------------------------------------------------------------------------------------------------------

QList<ExtensionCommand> GdbEnvironment::commands()
{
    const bool stopped = m_session.isStopped();
    return {
        {u"stepOut"_s, tr("Step Out"), tr("Runs until the current function returns to its caller."), stopped, false},
        {u"stepInstruction"_s, tr("Step Instruction"), tr("Executes one instruction of the processor."), stopped,
         false},
        {u"reload"_s, tr("Reload Program"),
         tr("Loads the last build of the program and pauses it at its start. Breakpoints stay."),
         m_session.isAlive() || m_session.state().phase == TargetState::Ended, false},
        {u"loadSymbols"_s, tr("Load Symbols..."), tr("Adds the symbols of another program, such as a boot loader."),
         m_session.isAlive(), false},
        {u"throw"_s, tr("Stop Where Exceptions Are Thrown"),
         tr("Pauses a C++ program at each throw expression, also in later sessions."), true,
         m_exceptions.isOn(u"throw"_s)},
        {u"catch"_s, tr("Stop Where Exceptions Are Caught"),
         tr("Pauses a C++ program where a handler catches an exception, also in later sessions."), true,
         m_exceptions.isOn(u"catch"_s)},
        {u"log"_s, tr("Log the Dialogue with gdb"),
         tr("Shows every line sent to gdb and received from it on the output page \"gdb\"."), true, m_logging},
    };
}

void GdbEnvironment::execute(const QString &id)
{
    if (id == u"stepOut") {
        m_session.step("-exec-finish");
    } else if (id == u"stepInstruction") {
        m_session.step("-exec-step-instruction");
    } else if (id == u"reload") {
        inBackground([this] { (void)start(false); });
    } else if (id == u"throw" || id == u"catch") {
        m_exceptions.toggle(id);
    } else if (id == u"log") {
        m_logging = !m_logging;
    } else if (id == u"loadSymbols") {
        askForSymbols();
    }
}

/// The session, the window and this object may be gone when the dialog is closed.
void GdbEnvironment::askForSymbols()
{
    const QPointer<QFileDialog> dialog =
        new QFileDialog(QApplication::activeWindow(), tr("Load Symbols"), m_project->basePath());
    dialog->setObjectName(u"loadSymbolsDialog"_s);
    dialog->setOption(QFileDialog::DontUseNativeDialog); // test drivers find the widgets of this one only
    dialog->setFileMode(QFileDialog::ExistingFile);
    const QPointer<GdbEnvironment> alive(this);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    const QString file = accepted ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    if (!file.isEmpty() && alive && m_session.isAlive())
        loadSymbols(file);
}

void GdbEnvironment::loadSymbols(const QString &file)
{
    QString error;
    if (!m_session.addSymbols(file, &error))
        showMessage(error, true);
    m_symbols.reset();
    m_disassembler.reset();
}

QString GdbEnvironment::propertyDefinitions()
{
    return gdbPropertyDefinitions();
}

void GdbEnvironment::setQueryInterface(IQueryPluginInterface *query)
{
    m_query = shareInterface(query);
}

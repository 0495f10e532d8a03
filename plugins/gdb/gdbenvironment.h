#pragma once
#include "breakpointlist.h"
#include "callstack.h"
#include "debugdocks.h"
#include "disassembler.h"
#include "exceptionstops.h"
#include "faultcatcher.h"
#include "gdbsession.h"
#include "iexecutionevents.h"
#include "iextensioncommands.h"
#include "inextstatement.h"
#include "interfaceobject.h"
#include "iprogressivestart.h"
#include "iproject.h"
#include "ipropertydefinitions.h"
#include "iqueryplugininterface.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "livememory.h"
#include "memoryaccess.h"
#include "peripheralaccess.h"
#include "pluginfactory.h"
#include "processorgroup.h"
#include "registeraccess.h"
#include "rttchannel.h"
#include "symboltable.h"
#include "valuerequests.h"
#include "variables.h"
#include "widememory.h"
#include "widesymbols.h"

/// The execution environment of one project: passes the host's calls to the parts, and events of the session to the
/// host.
class GdbEnvironment
    : public QObject,
      public InterfaceObject<IPluginObject, IExecutionEnvironment, IExtensionCommands, IPropertyDefinitions,
                             IWorkspaceClient, INextStatement, IProgressiveStart, IWakeUp>
{
    Q_OBJECT
public:
    explicit GdbEnvironment(const ProcessorGroup::Registry &processors);
    ~GdbEnvironment() override;

    using InterfaceObject::queryInterface;
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override;
    unsigned long release() override; ///< Later, if it is called by work of this object that runs in the background.
    int type() override { return Environment; }

    bool initialise(IProject *project, IExecutionEvents *events, const QString &option) override;
    bool start(bool attachOnly) override;
    bool canAttach() override;
    void run() override;
    void runTo(const QString &file, int line) override;
    void stepInto(const QString &file) override;
    void stepOver(const QString &file) override;
    void pause() override { m_session.pause(); }
    void stop() override;
    void restart() override;
    void wakeUp() override { m_session.wakeUp(); }
    bool canWakeUp() override { return m_session.canWakeUp(); }
    ProcessorStatus processorStatus() override;
    ProgramStatus programStatus() override { return ::programStatus(m_session.state()); }
    bool currentLocation(QString &file, int &line) override;
    int evaluate(const QString &expression, QString &result) override;
    _object *pythonExtension() override { return nullptr; }

    QList<ExtensionCommand> commands() override;
    void execute(const QString &id) override;
    QString propertyDefinitions() override;
    void setQueryInterface(IQueryPluginInterface *query) override;
    void workspaceChanged() override {}
    bool setNextStatement(const QString &file, int line) override;
    void startInBackground(bool attachOnly, IStartProgress *progress) override;
    void cancelStart() override { m_session.task()->cancel(); }

    GdbSession *session() { return &m_session; }
    void loadSymbols(const QString &file); ///< Adds the symbols of a further program.

private:
    void connectParts();
    void backgroundEnded();
    void showProgress(const QString &step, int percent);
    void inBackground(const std::function<void()> &work);
    void restartSession();
    TargetOptions options() const;
    QString findProgram(const TargetOptions &options) const;
    QString absolute(const QString &path) const;
    QStringList projectFiles() const;
    void setExpectedTarget();
    void loadTargetTables();
    void showCodeRegion();
    void reportState();
    void askForSymbols();
    void showMessage(const QString &text, bool serious);
    void step(const QString &file, const QByteArray &bySource, const QByteArray &byInstruction);
    void logDialogue(const QString &line, bool fromUs);

    InterfacePtr<IProject> m_project;
    InterfacePtr<IExecutionEvents> m_events;
    InterfacePtr<IQueryPluginInterface> m_query;
    InterfacePtr<IStartProgress> m_progress; ///< of a start in the background; null during a restart
    bool m_started = false;                  ///< the result of that start
    QString m_optionText;
    QString m_instructionView; ///< the disassembly in which the user steps; empty while the user steps in the source
    bool m_logging = false;
    long m_reportedProcessor = TargetState::Absent;

    GdbSession m_session;
    SymbolTable m_symbols;
    WideSymbols m_wideSymbols;
    BreakpointList m_breakpoints;
    MemoryAccess m_memory;
    WideMemory m_wideMemory;
    LiveMemory m_live;
    RegisterAccess m_registers;
    ValueRequests m_requests;
    PeripheralAccess m_peripherals;
    Disassembler m_disassembler;
    Variables m_variables;
    CallStack m_callStack;
    ProcessorGroup m_group;
    DebugDocks m_docks;
    RttChannel m_rtt;
    FaultCatcher m_faults;
    ExceptionStops m_exceptions;
    const QList<FacetBase *> m_facets;
};

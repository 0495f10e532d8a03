#pragma once
#include "ibreakpointdetails.h"
#include "ibuildenvironment.h"
#include "icallstack.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idockextension.h"
#include "imemoryverify.h"
#include "imultiprocessorsync.h"
#include "inextstatement.h"
#include "interfaceobject.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "itextdocumentplugin.h"
#include "ivariables.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "stub.h"

/// An object that implements all interfaces and offers those in its script.
class StubObject
    : public StubObjectState,
      public InterfaceObject<IPluginObject, IBuildEnvironment, IExecutionEnvironment, IBreakpointDetails, IBreakpoints,
                             ICallStack, IVariables, ICustomDocumentPlugin, IDebugBuild, IDisassembly,
                             IDisassemblyAddress, IDockExtension, IExtensionCommands, IMemory, IMemoryVerify,
                             IMultiProcessorSync, INextStatement, IPeripherals, IProgressiveStart, IProjectPopulate,
                             IPropertyDefinitions, IRegisters, ISourceMapping, ISymbolLookup, ISymbols64,
                             ITextDocumentPlugin, IWakeUp, IWorkspaceClient>
{
public:
    /// The calls of all objects, and the existing objects.
    struct Log
    {
        QStringList calls;
        QList<StubObject *> objects;
    };

    StubObject(const std::shared_ptr<StubScript> &script, Log &log);
    ~StubObject() override;

    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override;
    int type() override { return m_script->type; }

    // IBuildEnvironment
    bool initialise(IBuildEvents *events, const QString &option) override;
    void setProject(IProject *givenProject) override;
    void compile(const QString &file, const QString &configuration) override;
    bool canCompile(const QString &file, const QString &configuration) override;
    void build(const QStringList &configurations, bool rebuild) override;
    void clean(const QStringList &configurations) override;
    void stop() override; // also IExecutionEnvironment
    bool isUpToDate(const QString &configuration) override;
    // IExecutionEnvironment
    bool initialise(IProject *givenProject, IExecutionEvents *events, const QString &option) override;
    bool start(bool attachOnly) override;
    bool canAttach() override;
    void run() override;
    void runTo(const QString &file, int line) override;
    bool setNextStatement(const QString &file, int line) override; // INextStatement
    void stepInto(const QString &file) override;
    void stepOver(const QString &file) override;
    void pause() override;
    void restart() override;
    void wakeUp() override;
    bool canWakeUp() override;
    ProcessorStatus processorStatus() override;
    ProgramStatus programStatus() override;
    bool currentLocation(QString &file, int &line) override;
    int evaluate(const QString &expression, QString &result) override;
    _object *pythonExtension() override;
    // The optional interfaces
    QList<BreakpointRecord> breakpoints() override;
    int setBreakpoint(const QString &file, int line, int state) override;
    int features() override; // IBreakpointDetails
    bool details(const QString &file, int line, BreakpointDetails &details) override;
    bool setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason) override;
    QList<DataBreakpoint> dataBreakpoints() override;
    bool setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason) override;
    BreakpointLimits limits() override;
    void requestThreads(const DebugRequest &request, IDebugReplies *replies) override;
    void requestFrames(const DebugRequest &request, qint64 thread, int first, int count,
                       IDebugReplies *replies) override;
    bool currentPlace(StackPlace &place) override;
    bool setCurrentPlace(const StackPlace &place) override;
    int formats() override;
    int scopes() override;
    void requestScope(const DebugRequest &request, const StackPlace &place, int scope, int first, int count, int format,
                      IDebugReplies *replies) override;
    void requestChildren(const DebugRequest &request, const StackPlace &place, const QString &expression, int first,
                         int count, int format, IDebugReplies *replies) override;
    void requestValue(const DebugRequest &request, const StackPlace &place, const QString &expression, int format,
                      IDebugReplies *replies) override;
    void assign(const DebugRequest &request, const StackPlace &place, const QString &expression, const QString &value,
                int format, IDebugReplies *replies) override;
    void buildForDebug(const QString &configuration) override;
    QString disassemble(uint address, int region) override;
    QString text(int index) override; // IDisassembly and IDisassemblyAddress
    QStringList sourceLines(int index) override;
    QList<QWidget *> widgets() override;
    QList<ExtensionCommand> commands() override;
    void execute(const QString &id) override;
    QList<MemoryRegion> regions() override;
    int read(int region, int mode, uint address, uint *value) override;
    int write(int region, int mode, uint address, uint value, bool flush) override;
    void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) override;
    void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) override;
    bool verify() override;
    void setVerify(bool verify) override;
    QString groupId() override;
    int supportedOperations(const QString &groupId) override;
    void syncRun() override;
    void syncPause() override;
    void syncRestart() override;
    void syncWakeup() override;
    QList<PeripheralInfo> peripherals() override;
    uint value(const QString &peripheral, const QString &registerName) override;
    void setValue(const QString &peripheral, const QString &registerName, uint value) override;
    QString description(const QString &peripheral, const QString &registerName) override;
    void startInBackground(bool attachOnly, IStartProgress *givenProgress) override;
    void cancelStart() override;
    void populate(const QString &configuration) override;
    QString propertyDefinitions() override;
    QList<RegisterInfo> registers() override;
    uint value(const QString &name, int word) override;
    void setValue(const QString &name, uint value, int word) override;
    bool symbolAddress(const QString &name, uint &address) override;
    bool sourceLocation(uint address, int kind, QString &file, int &line) override;
    bool symbolAddress(const QString &name, quint64 &address) override;
    bool sourceLocation(quint64 address, int kind, QString &file, int &line) override;
    bool addressOf(const QString &file, int line, quint64 &address) override;
    bool symbolAt(quint64 address, int region, QString &name) override;
    void reserved1() override;
    void reserved2() override;
    bool addressOf(const QString &file, int line, uint &address) override;
    bool symbolAt(uint address, int region, QString &name) override;
    void setQueryInterface(IQueryPluginInterface *givenQuery) override;
    void workspaceChanged() override;
    // Documents
    DocumentTemplate *documentTemplate() override;
    QString title() override;
    QString description() override;
    QStringList extensions() override;
    QPixmap icon() override;
    SyntaxHighlighter *syntaxHighlighter() override;
    TextIndent *indenter() override;

private:
    template <typename... Values>
    void record(const QString &call, const Values &...arguments);
    void act(const QString &call) const; ///< Runs what the script has for a call.
    void reply(const DebugRequest &request, IDebugReplies *replies,
               const std::function<void(IDebugReplies &replies)> &answer);
    void replyVariables(const DebugRequest &request, IDebugReplies *replies, const QList<VariableInfo> &all, int first,
                        int count);
    VariableInfo *variable(const QString &expression);

    [[nodiscard]] int statusOf(uint address) const;

    const std::shared_ptr<StubScript> m_script;
    Log &m_log;
};

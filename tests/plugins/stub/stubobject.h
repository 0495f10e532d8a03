#pragma once
#include "ibreakpointdetails.h"
#include "ibuildenvironment.h"
#include "icallstack.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idisassemblyfetch.h"
#include "idockextension.h"
#include "ilivememory.h"
#include "imakefilegenerator.h"
#include "imemoryverify.h"
#include "imultiprocessorsync.h"
#include "inextstatement.h"
#include "interfaceobject.h"
#include "iperipheralfields.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "itextdocumentplugin.h"
#include "ivaluerequests.h"
#include "ivariables.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "stub.h"
#include <memory>
#include <type_traits>

// Arguments as the log contains them
inline QString stubText(bool argument)
{
    return argument ? QStringLiteral("true") : QStringLiteral("false");
}
inline QString stubText(const QString &argument)
{
    return argument;
}
inline QString stubText(const QStringList &argument)
{
    return u'[' + argument.join(u' ') + u']';
}
template <typename Number>
QString stubText(const Number &argument)
{
    return QString::number(argument);
}

/// An object that implements all interfaces and offers those in its script.
class StubObject
    : public StubObjectState,
      public InterfaceObject<IPluginObject, IBuildEnvironment, IExecutionEnvironment, IBreakpointDetails, IBreakpoints,
                             IEvaluationRequests, IMemoryRequests, IRegisterRequests, ICallStack, IVariables,
                             ICustomDocumentPlugin, IDebugBuild, IDisassembly, IDisassemblyAddress, IDisassemblyFetch,
                             IDockExtension, IExtensionCommands, ILiveMemory, IMakefileGenerator, IMemory,
                             IMemoryVerify, IMultiProcessorSync, INextStatement, IPeripheralFields, IPeripherals,
                             IProgressiveStart, IProjectPopulate, IPropertyDefinitions, IRegisters, ISourceMapping,
                             ISymbolLookup, ISymbols64, ITextDocumentPlugin, IWakeUp, IWorkspaceClient>
{
public:
    /// The calls of all objects, and the existing objects.
    struct Log
    {
        QStringList calls;
        QList<StubObject *> objects;
        StubHooks hooks;
    };

    StubObject(const std::shared_ptr<StubScript> &script, Log &log);
    ~StubObject() override;

    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override;
    unsigned long addRef() override;
    unsigned long release() override;
    int type() override;
    [[nodiscard]] const StubScript &script() const { return *m_script; }
    [[nodiscard]] int statusOf(uint address) const; ///< of an access to its memory
    /// Notes a call, "Class::function", in the log, and runs what the script has for it.
    template <typename... Values>
    void record(const QString &call, const Values &...arguments) const
    {
        note(call, QStringList{stubText(arguments)...});
    }
    [[nodiscard]] bool givesNothing() const { return m_log.hooks.take() != StubHooks::All; }
    /// The result of a call.
    template <typename T>
    [[nodiscard]] T given(const T &value) const
    {
        return givesNothing() ? T() : value;
    }

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
    void requestMemory(const DebugRequest &request, int region, int mode, quint64 address, int count,
                       IValueReplies *replies) override;
    void requestRegisters(const DebugRequest &request, const QStringList &names, IValueReplies *replies) override;
    void requestEvaluation(const DebugRequest &request, const QString &expression, IValueReplies *replies) override;
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
    bool fetch(int index, int milliseconds) override; // IDisassemblyFetch
    bool canReadLive() override;
    bool readLive(int region, int mode, uint address, int count, MemoryBlock &result) override;
    bool prepareLive(const QString &expression) override;
    bool evaluateLive(const QString &expression, QString &result) override;
    PeripheralRegisterDetails details(const QString &peripheral, const QString &registerName) override;
    uint readNow(const QString &peripheral, const QString &registerName) override;
    QList<GeneratedFile> makefiles() override;
    // Documents
    DocumentTemplate *documentTemplate() override;
    QString title() override;
    QString description() override;
    QStringList extensions() override;
    QPixmap icon() override;
    SyntaxHighlighter *syntaxHighlighter() override;
    TextIndent *indenter() override;

private:
    void note(const QString &call, const QStringList &arguments) const;
    void act(const QString &call) const; ///< A call that is only noted if all are.
    void run(const QString &call) const; ///< Runs what the script and the hooks have for a call, "Class::function".
    /// Answers a question now or, if the script says so, later.
    template <typename Replies>
    void reply(const DebugRequest &request, Replies *replies,
               const std::type_identity_t<std::function<void(Replies &replies)>> &answer)
    {
        const auto kept = std::shared_ptr<Replies>(shareInterface(replies));
        const bool fails = givesNothing() || !m_script->failure.isEmpty();
        const auto give = [request, kept, answer, fails, failure = m_script->failure] {
            fails ? kept->failed(request, failure) : answer(*kept);
        };
        if (m_script->answersLater)
            m_script->answers.append(give);
        else
            give();
    }
    void replyVariables(const DebugRequest &request, IDebugReplies *replies, const QList<VariableInfo> &all, int first,
                        int count);
    VariableInfo *variable(const QString &expression);

    const std::shared_ptr<StubScript> m_script;
    Log &m_log;
};

#pragma once
#include "../../plugins/stub/stub.h"
#include "ibuildenvironment.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idisassemblyfetch.h"
#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include "imemoryverify.h"
#include "imultiprocessorsync.h"
#include "inextstatement.h"
#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "iprojectpopulate.h"
#include "iprojectproperties.h"
#include "ipropertydefinitions.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "itextdocumentplugin.h"
#include "ivaluerequests.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include <QFileInfo>
#include <QPluginLoader>

/// What a plug-in does in a call.
struct PluginDeed
{
    const char *name;
    const char *text;  ///< in the documentation
    bool ends = false; ///< something is closed or stopped in the call
};
inline const QList<PluginDeed> pluginDeeds{
    {"throw", "throws an exception"},
    {"null", "returns null"},
    {"empty", "returns an empty result"},
    {"slow", "answers late"},
    {"loop", "runs an event loop of its own"},
    {"host", "calls all services of the program"},
    {"report", "sends all reports, with an unreadable project among them"},
    {"thread", "sends reports from another thread"},
    {"silent", "reports nothing until the user gives up"},
    {"close", "closes the workspace", true},
    {"userCloses", "runs an event loop, in which the user closes the workspace", true},
    {"userExits", "runs an event loop, in which the user ends the program", true},
    {"userStops", "runs an event loop, in which the user stops the session or the build", true}};

inline StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

/// Each story runs once with each of these sets of interfaces: one with values by question and answer, and one with
/// whole addresses, a start in the background and several processors.
enum class OfferedInterfaces { Simple, Wide };

/// The interfaces of the stub's features "{sim}", "{two}" (a second processor), "{cc}", "{language}" and "{kind}", with
/// something to show in each window.
inline void prepareMisbehavingScripts(OfferedInterfaces offered)
{
    using namespace Qt::StringLiterals;
    stub()->reset();
    StubScript &sim = stub()->script(u"{sim}"_s);
    sim.label = u"sim"_s;
    sim.offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid,      ISourceMapping::Iid,   ISymbolLookup::Iid,
                  IDisassembly::Iid,          IMemory::Iid,           IMemoryVerify::Iid,    IRegisters::Iid,
                  IPeripherals::Iid,          IPeripheralFields::Iid, ICallStack::Iid,       IVariables::Iid,
                  IBreakpointDetails::Iid,    INextStatement::Iid,    IDockExtension::Iid,   IExtensionCommands::Iid,
                  IPropertyDefinitions::Iid,  IWakeUp::Iid,           IWorkspaceClient::Iid, ILiveMemory::Iid};
    if (offered == OfferedInterfaces::Simple)
        sim.offers += {IMemoryRequests::Iid, IRegisterRequests::Iid, IEvaluationRequests::Iid};
    else
        sim.offers += {IMemory64::Iid,         ISymbols64::Iid,        IDisassemblyAddress::Iid,
                       IDisassemblyFetch::Iid, IProgressiveStart::Iid, IMultiProcessorSync::Iid};
    sim.canAttach = true;
    sim.usesHost = true;
    sim.readsLive = true;
    sim.location = {u"main.c"_s, 2};
    sim.regions = {{u"RAM"_s, 1, 0, 0, 0x100, 0x1ff, false, IMemory::Byte}};
    sim.wideRegions = {{u"RAM"_s, 1, 0x100, 0x1ff, false, IMemory::Byte}};
    for (uint address = 0x100; address < 0x200; ++address)
        sim.memory.insert(address, address & 0xff);
    sim.registers = {{u"r0"_s, 32, {}, 4, 4, {}, false}};
    sim.peripherals = {{u"UART"_s, {{u"DR"_s, 32, false}}}};
    sim.instructions = {{0, u"nop"_s}};
    sim.values = {{u"counter"_s, u"1"_s}};
    sim.breakpoints = {{{{u"main.c"_s, 1}}, BreakpointEnabled}};
    sim.details[u"main.c:1"_s].condition = u"counter == 1"_s;
    sim.dataBreakpoints = {{1, u"counter"_s, 0x100, 4, DataBreakpoint::Write, BreakpointEnabled, {}}};
    sim.sourceLines = {{0x100, {u"main.c"_s, 2}}};
    sim.symbols = {{u"main"_s, 0x100}};
    sim.wideSymbols = {{u"main"_s, 0x100}};
    sim.wideLines = {{0x100, {u"main.c"_s, 2}}};
    sim.place = StackPlace{1, 0};
    sim.threads = {{1, u"main"_s, {}, false}, {2, u"idle"_s, {}, false}};
    sim.frames[1] = {{0, 0x100, u"main"_s, u"main.c"_s, 2, {}}};
    sim.scopeVariables[IVariables::Locals] = {{u"i"_s, u"i"_s, u"int"_s, u"1"_s, true, true, 0, 0},
                                              {u"p"_s, u"p"_s, u"Point"_s, u"{...}"_s, true, false, 1, 0}};
    sim.members[u"p"_s] = {{u"x"_s, u"p.x"_s, u"int"_s, u"1"_s, true, true, 0, 0}};
    sim.detailFeatures = IBreakpointDetails::Condition | IBreakpointDetails::DataWrite;
    sim.group = u"probe"_s;
    sim.syncOperations = 0xf000f;
    StubScript &two = stub()->script(u"{two}"_s);
    two.label = u"two"_s;
    two.offers = {IExecutionEnvironment::Iid, IMultiProcessorSync::Iid};
    two.group = sim.group;
    two.syncOperations = sim.syncOperations;
    StubScript &tools = stub()->script(u"{cc}"_s);
    tools.label = u"cc"_s;
    tools.offers = {IBuildEnvironment::Iid,    IDebugBuild::Iid,      IProjectPopulate::Iid,  IExtensionCommands::Iid,
                    IPropertyDefinitions::Iid, IWorkspaceClient::Iid, IMakefileGenerator::Iid};
    for (StubScript *script : {&sim, &tools})
        script->commands = {{u"id"_s, u"Command"_s, {}, true, false}};
    StubScript &language = stub()->script(u"{language}"_s);
    language.type = IPluginObject::TextDocument;
    language.offers = {ITextDocumentPlugin::Iid};
    language.title = u"Language"_s;
    language.extensions = QStringList{u"lang"_s};
    StubScript &kind = stub()->script(u"{kind}"_s);
    kind.type = IPluginObject::CustomDocument;
    kind.offers = {ICustomDocumentPlugin::Iid};
}

/// All reports of the environments.
inline void sendAllReports()
{
    using namespace Qt::StringLiterals;
    if (StubObjectState *sim = stub()->object(u"sim"_s); sim && sim->executionEvents) {
        const auto events = shareInterface(sim->executionEvents.get());
        events->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        events->statusInfo(u"text"_s, 1);
        events->breakpointsChanged();
        events->processorStatusChanged({});
        events->feedback(u"feedback\n"_s, {}, false);
    }
    if (StubObjectState *tools = stub()->object(u"cc"_s); tools && tools->buildEvents) {
        const auto events = shareInterface(tools->buildEvents.get());
        events->xmlFeedback(u"<project"_s);
        events->feedback(u"feedback\n"_s);
        events->buildFinished(false);
    }
}

/// Calls what IProject, IProjectProperties, IProjectFile, IQueryPluginInterface and IHost offer.
inline void callAllServices(const QString &file)
{
    using namespace Qt::StringLiterals;
    for (const QString &label : {u"sim"_s, u"cc"_s}) {
        const StubObjectState *object = stub()->object(label);
        if (!object)
            continue;
        if (const auto project = shareInterface(object->project.get())) {
            (void)(project->name() + project->displayName() + project->basePath() + project->currentConfiguration());
            (void)takeInterfaces(project->folders());
            for (const auto &each : takeInterfaces(project->files()))
                (void)(each->name() + each->path());
            const InterfacePtr<IProjectProperties> properties(project->properties());
            properties->setProperty(u"plugin"_s, u"1"_s, u"Debug"_s);
            (void)properties->property(u"plugin"_s, u"Debug"_s, true);
            (void)(properties->configurations() + properties->propertyKeys(u"Debug"_s));
            project->addFiles({file, QString()});
            project->setActive(!project->isActive());
            (void)(project->isModified() && project->save());
        }
        const auto query = shareInterface(object->query.get());
        if (!query)
            continue;
        QUnknownInterface *found = nullptr;
        if (query->interfaceCount(IExecutionEnvironment::Iid) > 0
            && query->queryInterface(IExecutionEnvironment::Iid, &found, 0) == QS_OK)
            (void)InterfacePtr<QUnknownInterface>(found);
        const auto host = queryInterface<IHost>(query.get());
        (void)host->hostVersion();
        (void)host->openFile(file, 1, 1);
        host->output(u"Stub"_s, u"text\n"_s);
        host->outputLink(u"Stub"_s, u"text"_s, file, 1, 1);
        host->setDiagnostics(u"Stub"_s, {{Diagnostic::Error, file, 1, 1, u"text"_s, {}}});
        host->showOutput(u"Stub"_s);
        host->clearOutput(u"Stub"_s);
        host->showMessage(u"text"_s, 0);
        const int progress = host->beginProgress(u"text"_s, nullptr);
        host->setProgress(progress, 1);
        host->endProgress(progress);
        host->setSetting(u"key"_s, host->setting(u"key"_s, 1));
        (void)host->icon(u"build.png"_s);
    }
}

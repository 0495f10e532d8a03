// The binary contract of plug-in libraries: names of interfaces, slots of functions, layouts of records. The slots are
// read from pointers to functions and from objects in the layout of the Itanium C++ ABI.
#include "ibreakpointdetails.h"
#include "ibreakpoints.h"
#include "ibuildenvironment.h"
#include "ibuildevents.h"
#include "icallstack.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idisassemblyfetch.h"
#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "iexecutionevents.h"
#include "iextensioncommands.h"
#include "ihost.h"
#include "ilivememory.h"
#include "imakefilegenerator.h"
#include "imemory.h"
#include "imemory64.h"
#include "imemoryverify.h"
#include "imultiprocessorsync.h"
#include "interfaceobject.h"
#include "iperipheralfields.h"
#include "iperipherals.h"
#include "iprogressivestart.h"
#include "iproject.h"
#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "iprojectpopulate.h"
#include "iprojectproperties.h"
#include "ipropertydefinitions.h"
#include "iqueryplugininterface.h"
#include "iregisters.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "itextdocumentplugin.h"
#include "ivaluerequests.h"
#include "ivariables.h"
#include "iwakeup.h"
#include "iworkspaceclient.h"
#include "pluginfactory.h"
#include <cstddef>
#include <cstring>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

template <typename Function>
int slotOf(Function function)
{
    std::ptrdiff_t offset = 0; // in bytes; its lowest bit may mark the function as virtual
    std::memcpy(&offset, &function, sizeof offset);
    return int((offset & ~std::ptrdiff_t(1)) / std::ptrdiff_t(sizeof(void *)));
}

/// The number of slots of the functions of T: the index of the next one.
template <typename T>
int slotCount()
{
    struct Next : T
    {
        virtual void next() = 0;

    protected:
        ~Next() = default; // NOLINT(modernize-use-override): some have no virtual one
    };
    return slotOf(&Next::next);
}

/// The interfaces whose last function is a virtual destructor, which takes two slots.
template <typename T>
constexpr int destructorSlots =
    std::is_same_v<
        T,
        IProject> || std::is_same_v<T, IProjectFolder> || std::is_same_v<T, IProjectFile> || std::is_same_v<T, IProjectProperties>
        ? 2
        : 0;

struct Function
{
    QString name;
    int slot;
};
#define FUNCTION(Interface, name) \
    Function \
    { \
        QStringLiteral(#name), slotOf(&Interface::name) \
    }

/// A row for T: its UUID and its functions in the documented order.
template <typename T>
void contract(const char *name, const char *uuid, const QList<Function> &functions)
{
    static_assert(std::is_base_of_v<QUnknownInterface, T> && sizeof(T) == sizeof(void *));
    static_assert(std::has_virtual_destructor_v<T> == (destructorSlots<T> > 0));
    QTest::newRow(name) << T::Iid << QString::fromLatin1(uuid) << functions << slotCount<T>() - destructorSlots<T>;
}

template <typename... Offsets>
constexpr bool areInOrder(Offsets... offsets)
{
    std::size_t next = 0;
    return ((offsets >= next ? (next = offsets + 1, true) : false) && ...);
}

} // namespace

static_assert(sizeof(void *) == 8 && sizeof(QString) == 24 && sizeof(QList<int>) == 24);

static_assert(std::is_standard_layout_v<GeneratedFile> && sizeof(GeneratedFile) == 48);
static_assert(areInOrder(offsetof(GeneratedFile, path), offsetof(GeneratedFile, text)));
static_assert(std::is_standard_layout_v<ExtensionCommand> && sizeof(ExtensionCommand) == 80);
static_assert(areInOrder(offsetof(ExtensionCommand, id), offsetof(ExtensionCommand, text),
                         offsetof(ExtensionCommand, whatsThis), offsetof(ExtensionCommand, enabled),
                         offsetof(ExtensionCommand, checked)));

static_assert(std::is_standard_layout_v<BreakpointLocation> && sizeof(BreakpointLocation) == 32);
static_assert(areInOrder(offsetof(BreakpointLocation, file), offsetof(BreakpointLocation, line)));
static_assert(std::is_standard_layout_v<BreakpointRecord> && sizeof(BreakpointRecord) == 32);
static_assert(areInOrder(offsetof(BreakpointRecord, locations), offsetof(BreakpointRecord, state)));

static_assert(std::is_standard_layout_v<MemoryRegion> && sizeof(MemoryRegion) == 56);
static_assert(areInOrder(offsetof(MemoryRegion, name), offsetof(MemoryRegion, id), offsetof(MemoryRegion, reserved),
                         offsetof(MemoryRegion, flag), offsetof(MemoryRegion, lowAddress),
                         offsetof(MemoryRegion, highAddress), offsetof(MemoryRegion, readOnly),
                         offsetof(MemoryRegion, modes)));
static_assert(std::is_same_v<decltype(MemoryRegion::reserved), int> && sizeof(MemoryRegion::flag) == 1);
static_assert(std::is_standard_layout_v<MemoryBlockCell> && sizeof(MemoryBlockCell) == 8);
static_assert(areInOrder(offsetof(MemoryBlockCell, value), offsetof(MemoryBlockCell, status)));

static_assert(std::is_standard_layout_v<RegisterInfo> && sizeof(RegisterInfo) == 96);
static_assert(areInOrder(offsetof(RegisterInfo, name), offsetof(RegisterInfo, width), offsetof(RegisterInfo, choices),
                         offsetof(RegisterInfo, defaultFormat), offsetof(RegisterInfo, formats),
                         offsetof(RegisterInfo, group), offsetof(RegisterInfo, readOnly)));

static_assert(std::is_standard_layout_v<PeripheralInfo> && sizeof(PeripheralInfo) == 48);
static_assert(areInOrder(offsetof(PeripheralInfo, name), offsetof(PeripheralInfo, registers)));
static_assert(std::is_standard_layout_v<PeripheralRegisterInfo> && sizeof(PeripheralRegisterInfo) == 32);
static_assert(areInOrder(offsetof(PeripheralRegisterInfo, name), offsetof(PeripheralRegisterInfo, bits),
                         offsetof(PeripheralRegisterInfo, readOnly)));
static_assert(std::is_same_v<decltype(PeripheralRegisterInfo::bits), int>);

static_assert(std::is_standard_layout_v<PeripheralValueName> && sizeof(PeripheralValueName) == 32);
static_assert(areInOrder(offsetof(PeripheralValueName, value), offsetof(PeripheralValueName, name)));
static_assert(std::is_standard_layout_v<PeripheralFieldInfo> && sizeof(PeripheralFieldInfo) == 88);
static_assert(areInOrder(offsetof(PeripheralFieldInfo, name), offsetof(PeripheralFieldInfo, lowBit),
                         offsetof(PeripheralFieldInfo, width), offsetof(PeripheralFieldInfo, readable),
                         offsetof(PeripheralFieldInfo, writable), offsetof(PeripheralFieldInfo, values),
                         offsetof(PeripheralFieldInfo, description)));
static_assert(std::is_standard_layout_v<PeripheralRegisterDetails> && sizeof(PeripheralRegisterDetails) == 32);
static_assert(areInOrder(offsetof(PeripheralRegisterDetails, fields),
                         offsetof(PeripheralRegisterDetails, readingChanges),
                         offsetof(PeripheralRegisterDetails, onesClear),
                         offsetof(PeripheralRegisterDetails, readable)));

static_assert(std::is_standard_layout_v<DebugRequest> && sizeof(DebugRequest) == 16);
static_assert(areInOrder(offsetof(DebugRequest, number), offsetof(DebugRequest, generation)));

static_assert(std::is_standard_layout_v<StackPlace> && sizeof(StackPlace) == 16);
static_assert(areInOrder(offsetof(StackPlace, thread), offsetof(StackPlace, frame)));

static_assert(std::is_standard_layout_v<ThreadInfo> && sizeof(ThreadInfo) == 64);
static_assert(areInOrder(offsetof(ThreadInfo, id), offsetof(ThreadInfo, name), offsetof(ThreadInfo, state),
                         offsetof(ThreadInfo, running)));

static_assert(std::is_standard_layout_v<StackFrame> && sizeof(StackFrame) == 96);
static_assert(areInOrder(offsetof(StackFrame, level), offsetof(StackFrame, address), offsetof(StackFrame, function),
                         offsetof(StackFrame, file), offsetof(StackFrame, line), offsetof(StackFrame, module)));

static_assert(std::is_standard_layout_v<VariableInfo> && sizeof(VariableInfo) == 112);
static_assert(areInOrder(offsetof(VariableInfo, name), offsetof(VariableInfo, expression), offsetof(VariableInfo, type),
                         offsetof(VariableInfo, value), offsetof(VariableInfo, available),
                         offsetof(VariableInfo, writable), offsetof(VariableInfo, children),
                         offsetof(VariableInfo, address)));

static_assert(std::is_standard_layout_v<BreakpointDetails> && sizeof(BreakpointDetails) == 104);
static_assert(areInOrder(offsetof(BreakpointDetails, condition), offsetof(BreakpointDetails, hitCount),
                         offsetof(BreakpointDetails, logText), offsetof(BreakpointDetails, thread),
                         offsetof(BreakpointDetails, temporary), offsetof(BreakpointDetails, hits),
                         offsetof(BreakpointDetails, set), offsetof(BreakpointDetails, problem)));

static_assert(std::is_standard_layout_v<DataBreakpoint> && sizeof(DataBreakpoint) == 160);
static_assert(areInOrder(offsetof(DataBreakpoint, id), offsetof(DataBreakpoint, expression),
                         offsetof(DataBreakpoint, address), offsetof(DataBreakpoint, size),
                         offsetof(DataBreakpoint, access), offsetof(DataBreakpoint, state),
                         offsetof(DataBreakpoint, details)));

static_assert(std::is_standard_layout_v<BreakpointLimits> && sizeof(BreakpointLimits) == 20);
static_assert(areInOrder(offsetof(BreakpointLimits, hardware), offsetof(BreakpointLimits, hardwareUsed),
                         offsetof(BreakpointLimits, data), offsetof(BreakpointLimits, dataUsed),
                         offsetof(BreakpointLimits, dataSize)));

static_assert(std::is_standard_layout_v<Diagnostic> && sizeof(Diagnostic) == 88);
static_assert(areInOrder(offsetof(Diagnostic, severity), offsetof(Diagnostic, file), offsetof(Diagnostic, line),
                         offsetof(Diagnostic, column), offsetof(Diagnostic, text), offsetof(Diagnostic, code)));

static_assert(std::is_standard_layout_v<MemoryRegion64> && sizeof(MemoryRegion64) == 56);
static_assert(areInOrder(offsetof(MemoryRegion64, name), offsetof(MemoryRegion64, id),
                         offsetof(MemoryRegion64, lowAddress), offsetof(MemoryRegion64, highAddress),
                         offsetof(MemoryRegion64, readOnly), offsetof(MemoryRegion64, modes)));

static_assert(std::is_standard_layout_v<MemoryBlockCell64> && sizeof(MemoryBlockCell64) == 16);
static_assert(areInOrder(offsetof(MemoryBlockCell64, value), offsetof(MemoryBlockCell64, status)));

static_assert(QS_OK == 0 && QE_NOINTERFACE == 0x80000004);
static_assert(IPluginObject::CustomDocument == 0 && IPluginObject::TextDocument == 4);
static_assert(IExecutionEnvironment::ProgramPaused == 0 && IExecutionEnvironment::ProgramRunning == 1
              && IExecutionEnvironment::ProgramSleeping == 2 && IExecutionEnvironment::ProgramUnknown == 3
              && IExecutionEnvironment::ProgramFinished == 4 && IExecutionEnvironment::ProgramBreakpointHit == 5);
static_assert(
    std::is_same_v<std::underlying_type_t<IExecutionEnvironment::ProgramStatus>,
                   long> && std::is_same_v<std::underlying_type_t<IExecutionEnvironment::ProcessorStatus>, long>);
static_assert(BreakpointRemoved == 0 && BreakpointEnabled == 1 && BreakpointDisabled == 2 && BreakpointMultiple == 3);
static_assert(IMemory::Byte == 1 && IMemory::Word16 == 2 && IMemory::Word24 == 8 && IMemory::Word32 == 4);
static_assert(IMemory::Success == 0 && IMemory::BadPointer == 1 && IMemory::NoMemory == 2 && IMemory::Uninitialised == 3
              && IMemory::WriteToRom == 4);
static_assert(IRegisters::SignedDecimal == 1 && IRegisters::UnsignedDecimal == 2 && IRegisters::Hexadecimal == 4
              && IRegisters::Binary == 8 && IRegisters::Fractional == 16);
static_assert(IMultiProcessorSync::RunOperation == 1 && IMultiProcessorSync::PauseOperation == 2
              && IMultiProcessorSync::RestartOperation == 4 && IMultiProcessorSync::WakeupOperation == 8
              && IMultiProcessorSync::FollowShift == 16);

class tst_InterfaceContract : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void interfaceHasItsNameAndSlots_data()
    {
        QTest::addColumn<QUuid>("iid");
        QTest::addColumn<QString>("uuid");
        QTest::addColumn<QList<Function>>("functions");
        QTest::addColumn<int>("slotCount");
#define F(name) FUNCTION(I, name)
        {
            using I = IPluginFactory;
            contract<I>("IPluginFactory", "{bab36220-f804-44c1-856e-0e01cd1b28d0}",
                        {F(featureList), F(create), F(name), F(logo)});
        }
        {
            using I = IPluginObject;
            contract<I>("IPluginObject", "{1d8518cd-e8f5-4366-99e8-879fd7e482de}", {F(type)});
        }
        {
            using I = IBuildEnvironment;
            contract<I>(
                "IBuildEnvironment", "{a3fe91f5-14d3-4e95-a8d9-9eb1208dbe52}",
                {F(initialise), F(setProject), F(compile), F(canCompile), F(build), F(clean), F(stop), F(isUpToDate)});
        }
        {
            using I = IExecutionEnvironment;
            contract<I>("IExecutionEnvironment", "{5d9e60b4-a7b6-491b-86f3-5b04bbec45c0}",
                        {F(initialise), F(start), F(canAttach), F(run), F(runTo), F(stepInto), F(stepOver), F(pause),
                         F(stop), F(restart), F(wakeUp), F(processorStatus), F(programStatus), F(currentLocation),
                         F(evaluate), F(pythonExtension)});
        }
        {
            using I = IBuildEvents;
            contract<I>("IBuildEvents", "{af3be0f2-35b0-4c73-b44f-849c83aecf5d}",
                        {F(buildFinished), F(feedback), F(xmlFeedback)});
        }
        {
            using I = IExecutionEvents;
            contract<I>("IExecutionEvents", "{173a5254-ed2a-4d70-80aa-c23db8dfc64e}",
                        {F(feedback), F(processorStatusChanged), F(programStatusChanged), F(statusInfo),
                         F(breakpointsChanged)});
        }
        {
            using I = IProject;
            contract<I>("IProject", "{65250485-f686-4068-a819-543da962e858}",
                        {F(name), F(basePath), F(folders), F(files), F(properties), F(currentConfiguration),
                         F(isModified), F(save), F(addFiles), F(displayName), F(isActive), F(setActive)});
        }
        {
            using I = IProjectFolder;
            contract<I>("IProjectFolder", "{fe949fd3-7f41-4e61-bf7b-4434348aba52}",
                        {F(name), F(extensions), F(folders), F(files), F(parent)});
        }
        {
            using I = IProjectFile;
            contract<I>("IProjectFile", "{b51ef992-2842-4286-ac64-bd368d03e310}",
                        {F(name), F(path), F(properties), F(folder)});
        }
        {
            using I = IProjectProperties;
            contract<I>(
                "IProjectProperties", "{3077e9bd-d47d-4d8e-833a-22f4c2013b3b}",
                {F(property), F(setProperty), F(configurations), F(propertyKeys), F(isModified), F(setModified)});
        }
        {
            using I = IQueryPluginInterface;
            QRESULT (I::*const indexed)(const QUuid &, QUnknownInterface **, int) = &I::queryInterface;
            contract<I>("IQueryPluginInterface", "{ec1b6b12-d5ce-4961-9637-8eca013a44a5}",
                        {{u"queryInterface"_s, slotOf(indexed)}, F(interfaceCount)});
        }
        {
            using I = IWorkspaceClient;
            contract<I>("IWorkspaceClient", "{b6835d9e-6712-4d30-bc45-24513d7d451d}",
                        {F(setQueryInterface), F(workspaceChanged)});
        }
        {
            using I = IExtensionCommands;
            contract<I>("IExtensionCommands", "{d17144b7-c14d-4e92-a7e7-b81262cc5a4a}", {F(commands), F(execute)});
        }
        {
            using I = IDockExtension;
            contract<I>("IDockExtension", "{9b2b71de-02a4-453c-8372-22b2122d1603}", {F(widgets)});
        }
        {
            using I = IProjectPopulate;
            contract<I>("IProjectPopulate", "{e788f8a7-053d-11d8-be02-0050dadfe87d}", {F(populate)});
        }
        {
            using I = IMakefileGenerator;
            contract<I>("IMakefileGenerator", "{b2d5e4a7-31c8-4f0e-9a6d-7e5218c40b93}", {F(makefiles)});
        }
        {
            using I = IDebugBuild;
            contract<I>("IDebugBuild", "{83145d50-0544-11d8-be02-0050dadfe87d}", {F(buildForDebug)});
        }
        {
            using I = IPropertyDefinitions;
            contract<I>("IPropertyDefinitions", "{5a1f0c52-6c1e-4f43-9d3b-0e5a7c1b9f10}", {F(propertyDefinitions)});
        }
        {
            using I = IMultiProcessorSync;
            contract<I>("IMultiProcessorSync", "{2d4be442-da3f-477f-a170-50f8415518d5}",
                        {F(groupId), F(supportedOperations), F(syncRun), F(syncPause), F(syncRestart), F(syncWakeup)});
        }
        {
            using I = IBreakpoints;
            contract<I>("IBreakpoints", "{b83aaef0-6c5b-4082-a0c0-3da18e11a089}", {F(breakpoints), F(setBreakpoint)});
        }
        {
            using I = ISourceMapping;
            contract<I>("ISourceMapping", "{f316292b-95c6-4814-83dc-e05f0482712f}",
                        {F(symbolAddress), F(sourceLocation)});
        }
        {
            using I = ISymbolLookup;
            contract<I>("ISymbolLookup", "{fe07c9f5-3efc-45f0-9fd4-164a55cdcaeb}",
                        {F(reserved1), F(reserved2), F(addressOf), F(symbolAt)});
        }
        {
            using I = IDisassembly;
            contract<I>("IDisassembly", "{c1931575-6147-4a4f-8dc5-bed67c164d4b}", {F(disassemble), F(text)});
        }
        {
            using I = IDisassemblyAddress;
            contract<I>("IDisassemblyAddress", "{37660f94-ce88-4cb2-8a2b-617524a915fe}", {F(text), F(sourceLines)});
        }
        {
            using I = IDisassemblyFetch;
            contract<I>("IDisassemblyFetch", "{5c0f5f6e-9b1a-4a39-9d0c-3e6127d458b1}", {F(fetch)});
        }
        {
            using I = IMemory;
            contract<I>("IMemory", "{ce81cf33-ffe6-4d5c-9c28-d779e567a8fc}",
                        {F(regions), F(read), F(write), F(readBlock), F(writeBlock)});
        }
        {
            using I = ILiveMemory;
            contract<I>("ILiveMemory", "{1a641ed1-cbd3-428b-a2db-cccc285153a6}",
                        {F(canReadLive), F(readLive), F(prepareLive), F(evaluateLive)});
        }
        {
            using I = IMemoryVerify;
            contract<I>("IMemoryVerify", "{91f0f91a-a23e-45cc-941f-6859e5e6cb23}", {F(verify), F(setVerify)});
        }
        {
            using I = IRegisters;
            contract<I>("IRegisters", "{0f879c81-00c4-47a6-9243-abdc54df58d1}", {F(registers), F(value), F(setValue)});
        }
        {
            using I = IPeripherals;
            contract<I>("IPeripherals", "{3e864d1e-a61b-11d7-bded-0050dadfe87d}",
                        {F(peripherals), F(value), F(setValue), F(description)});
        }
        {
            using I = IPeripheralFields;
            contract<I>("IPeripheralFields", "{6d9ecac3-2513-4291-9ec2-b8961bffafa1}", {F(details), F(readNow)});
        }
        {
            using I = ICustomDocumentPlugin;
            contract<I>("ICustomDocumentPlugin", "{f6f44f26-efa7-407a-b613-e9996084b7a2}", {F(documentTemplate)});
        }
        {
            using I = ITextDocumentPlugin;
            contract<I>("ITextDocumentPlugin", "{c07debd1-07d2-48d7-99cb-8c13e0876768}",
                        {F(title), F(description), F(extensions), F(icon), F(syntaxHighlighter), F(indenter)});
        }
        {
            using I = IDebugReplies;
            contract<I>("IDebugReplies", "{99e50432-a0c6-4477-8ed4-6e7434e3f695}",
                        {F(threads), F(frames), F(variables), F(value), F(failed)});
        }
        {
            using I = ICallStack;
            contract<I>("ICallStack", "{4a452e87-451b-4633-9202-f35089719e3b}",
                        {F(requestThreads), F(requestFrames), F(currentPlace), F(setCurrentPlace)});
        }
        {
            using I = IVariables;
            contract<I>("IVariables", "{8a4db1b6-f766-40d7-b6f7-34b941c92aac}",
                        {F(formats), F(scopes), F(requestScope), F(requestChildren), F(requestValue), F(assign)});
        }
        {
            using I = IValueReplies;
            contract<I>("IValueReplies", "{3f1b5c0e-8a64-4e0d-9c57-21e60d93b84a}",
                        {F(memory), F(registers), F(evaluated), F(failed)});
        }
        {
            using I = IMemoryRequests;
            contract<I>("IMemoryRequests", "{d4a0c7f3-6b1e-49d2-83fa-5e70c91a46b5}", {F(requestMemory)});
        }
        {
            using I = IRegisterRequests;
            contract<I>("IRegisterRequests", "{917e2ab6-40cd-4f38-a60b-d25f73881ce9}", {F(requestRegisters)});
        }
        {
            using I = IEvaluationRequests;
            contract<I>("IEvaluationRequests", "{5ce83d17-b92a-4a61-8f04-771be26d50c3}", {F(requestEvaluation)});
        }
        {
            using I = IBreakpointDetails;
            contract<I>("IBreakpointDetails", "{571e7cba-d2fa-4635-a2a2-e8d75e4e7116}",
                        {F(features), F(details), F(setDetails), F(dataBreakpoints), F(setDataBreakpoint), F(limits)});
        }
        {
            using I = IStartProgress;
            contract<I>("IStartProgress", "{f1f258e9-789a-430a-bcd6-6f1620af3bdb}", {F(progress), F(finished)});
        }
        {
            using I = IProgressiveStart;
            contract<I>("IProgressiveStart", "{8b5db87b-5bf5-4dc6-9113-e18feccdcee9}",
                        {F(startInBackground), F(cancelStart)});
        }
        {
            using I = IProgressCancel;
            contract<I>("IProgressCancel", "{aa618f20-ea2c-4139-9f47-d5ac3269f1b2}", {F(cancelled)});
        }
        {
            using I = IOptionsPage;
            contract<I>("IOptionsPage", "{06174df2-9ed3-4384-a97c-05d87716a4a0}", {F(title), F(createPage), F(apply)});
        }
        {
            using I = IHostEvents;
            contract<I>("IHostEvents", "{8443750a-2fdc-4791-b2c5-8ce367a1dcf1}",
                        {F(filesChanged), F(propertyChanged), F(configurationChanged), F(currentProjectChanged)});
        }
        {
            using I = IHost;
            contract<I>("IHost", "{7efe86d3-cb13-46ed-be8b-b8841ababda1}",
                        {F(hostVersion), F(openFile), F(output), F(outputLink), F(clearOutput), F(showOutput),
                         F(showMessage), F(beginProgress), F(setProgress), F(endProgress), F(setDiagnostics),
                         F(setting), F(setSetting), F(addOptionsPage), F(icon), F(addEvents), F(removeEvents)});
        }
        {
            using I = IMemory64;
            contract<I>("IMemory64", "{506da068-e182-4b0e-8290-9217bfd5b18c}",
                        {F(regions), F(read), F(write), F(readBlock), F(writeBlock)});
        }
        {
            using I = ISymbols64;
            contract<I>("ISymbols64", "{d1d601c5-ff22-4bb0-83ad-ca1188846beb}",
                        {F(symbolAddress), F(sourceLocation), F(addressOf), F(symbolAt)});
        }
        {
            using I = IWakeUp;
            contract<I>("IWakeUp", "{becc6e3b-339b-4c92-a3a5-5df8f0d09fc6}", {F(canWakeUp)});
        }
#undef F
    }

    void interfaceHasItsNameAndSlots()
    {
        QFETCH(QUuid, iid);
        QFETCH(QString, uuid);
        QFETCH(QList<Function>, functions);
        QFETCH(int, slotCount);
        QCOMPARE(iid.toString(), uuid);
        QStringList found;
        QStringList expected;
        for (const Function &function : functions) {
            found += u"%1 %2"_s.arg(QString::number(function.slot), function.name);
            expected += u"%1 %2"_s.arg(QString::number(expected.size() + 3), function.name);
        }
        QCOMPARE(found, expected);
        QCOMPARE(slotCount, functions.size() + 3); // no documented function is missing, and the destructor is last
    }

    void commonFunctionsHaveTheFirstSlots()
    {
        QCOMPARE(QUnknownInterface::Iid.toString(), u"{1d8518cd-e8f5-4366-99e8-879fd7e482de}"_s);
        QCOMPARE(slotOf(&QUnknownInterface::queryInterface), 0);
        QCOMPARE(slotOf(&QUnknownInterface::addRef), 1);
        QCOMPARE(slotOf(&QUnknownInterface::release), 2);
        QCOMPARE(slotCount<QUnknownInterface>(), 3);
    }

    void callsThroughSlotsReachTheFunctions()
    {
        struct Object : InterfaceObject<IPluginObject, IMemoryVerify>
        {
            int type() override { return 7; }
            bool verify() override { return m_verify; }
            void setVerify(bool verify) override { m_verify = verify; }
            bool m_verify = false;
        };
        const InterfacePtr<Object> object(new Object);
        const auto slot = [](void *interface, int index) { return (*static_cast<void ***>(interface))[index]; };
        void *plugin = static_cast<IPluginObject *>(object.get());
        void *verify = static_cast<IMemoryVerify *>(object.get());
        QCOMPARE(reinterpret_cast<int (*)(void *)>(slot(plugin, 3))(plugin), 7);
        reinterpret_cast<void (*)(void *, bool)>(slot(verify, 4))(verify, true);
        QVERIFY(reinterpret_cast<bool (*)(void *)>(slot(verify, 3))(verify));
    }
};

QTEST_GUILESS_MAIN(tst_InterfaceContract)
#include "tst_interfacecontract.moc"

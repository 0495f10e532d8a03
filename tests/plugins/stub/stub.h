#pragma once
#include "ibreakpointdetails.h"
#include "ibuildevents.h"
#include "icallstack.h"
#include "iexecutionevents.h"
#include "iextensioncommands.h"
#include "ihost.h"
#include "imakefilegenerator.h"
#include "imemory64.h"
#include "iperipheralfields.h"
#include "iperipherals.h"
#include "iprogressivestart.h"
#include "iproject.h"
#include "iqueryplugininterface.h"
#include "iregisters.h"
#include "ivariables.h"
#include "pluginfactory.h"
#include <functional>
#include <optional>
#include <QHash>
#include <QMap>
#include <QSet>
#include <utility>

class DocumentTemplate;
class QWidget;
class SyntaxHighlighter;
class TextIndent;

/// What all calls of the stub plug-in do, of whatever object.
struct StubHooks
{
    /// What a call returns: what its script says, or a null or an empty result.
    enum Result { All, Null, Empty };

    std::function<void(const QString &call)> onCall; ///< run in each call, with its name as "Class::function"
    bool recordsAll = false;                         ///< also the calls that most tests do not count
    Result result = All;                             ///< of the running call; set by the function above

    void act(const QString &call) const
    {
        if (const std::function<void(const QString &)> action = onCall)
            action(call);
    }
    [[nodiscard]] Result take() { return std::exchange(result, All); } ///< Of the running call only.
};

/// The return values of the objects of one feature of the stub plug-in.
struct StubScript
{
    QString label; ///< prefix of the recorded calls of these objects
    int type = IPluginObject::Environment;
    QSet<QUuid> offers; ///< the interfaces that queryInterface() returns
    /// Actions by the name of a call, run after it was recorded. They may throw.
    QHash<QString, std::function<void()>> on;

    // Both environments
    bool initialised = true;
    QList<ExtensionCommand> commands;
    QString propertyDefinitions;
    // IBuildEnvironment
    bool canCompile = true;
    bool upToDate = true;
    // IExecutionEnvironment
    bool started = true;
    bool canAttach = false;
    IExecutionEnvironment::ProcessorStatus processorStatus{};
    IExecutionEnvironment::ProgramStatus programStatus = IExecutionEnvironment::ProgramPaused;
    BreakpointLocation location;                      ///< none without a file
    QHash<QString, BreakpointLocation> locationsFrom; ///< the same for calls with this file as argument
    QHash<QString, QString> values;                   ///< of expressions; other expressions fail
    std::function<_object *()> extension;             ///< a Python object with a reference for the caller
    // The optional interfaces of an execution environment
    std::function<QList<QWidget *>()> widgets;
    QList<BreakpointRecord> breakpoints;
    bool keepsBreakpoints = false; ///< setBreakpoint() changes the list above
    int setBreakpointResult = 0;
    bool nextStatementResult = true;
    QHash<QString, uint> symbols;        ///< names to addresses
    QHash<QString, quint64> wideSymbols; ///< the same for ISymbols64
    QMap<quint64, BreakpointLocation> wideLines;
    bool canWakeUp = true;
    QMap<uint, BreakpointLocation> sourceLines; ///< addresses to places
    QMap<int, QString> instructions;            ///< indices to texts
    QMap<int, QStringList> instructionSources;  ///< indices to source lines
    QList<MemoryRegion> regions;
    QList<MemoryRegion64> wideRegions;
    QMap<uint, uint> memory;        ///< addresses to values; other addresses have no memory
    QMap<uint, int> memoryStatuses; ///< addresses whose access answers another status
    int missingCells = 0;           ///< by which blocks that are read are too short
    bool verify = false;
    QList<RegisterInfo> registers;
    QHash<QString, QMap<int, uint>> registerValues; ///< words by number
    QList<PeripheralInfo> peripherals;
    QHash<QString, uint> peripheralValues; ///< by the name of the register
    QHash<QString, QString> peripheralDescriptions;
    QHash<QString, PeripheralRegisterDetails> peripheralDetails; ///< by the name of the register
    bool readsLive = false;
    QList<GeneratedFile> makefiles;
    bool usesHost = false; ///< shows progress that can be cancelled, adds a page of options and receives events
    QString group;
    int syncOperations = 0;
    // ICallStack, IVariables. Requests are answered at once, or, if answersLater is set, by answerAll() of this script.
    bool answersLater = false;
    QList<std::function<void()>> answers; ///< that are due
    QString failure;                      ///< if it is not empty, all requests fail for this reason
    QList<ThreadInfo> threads;
    QHash<qint64, QList<StackFrame>> frames; ///< by thread
    std::optional<StackPlace> place;         ///< the current one
    bool placeAccepted = true;
    int formats = 0;
    int scopes = 1;
    QMap<int, QList<VariableInfo>> scopeVariables;
    QHash<QString, QList<VariableInfo>> members; ///< by expression; also holds values, which assign() changes
    // IBreakpointDetails
    int detailFeatures = 0;
    QHash<QString, BreakpointDetails> details; ///< by "file:line"
    QList<DataBreakpoint> dataBreakpoints;
    BreakpointLimits limits;
    QString refusal; ///< if it is not empty, changes are refused for this reason

    void answerAll()
    {
        for (const std::function<void()> &answer : std::exchange(answers, {}))
            answer();
    }
    // Documents
    std::function<DocumentTemplate *()> documentTemplate;
    QString title;
    QString description;
    QStringList extensions;
    std::function<QPixmap()> icon;
    std::function<SyntaxHighlighter *()> syntaxHighlighter;
    std::function<TextIndent *()> indenter;
};

/// The interfaces that an object of the stub was given and holds a reference to.
struct StubObjectState
{
    QString label;
    InterfacePtr<IBuildEvents> buildEvents;
    InterfacePtr<IExecutionEvents> executionEvents;
    InterfacePtr<IProject> project;
    InterfacePtr<IQueryPluginInterface> query;
    InterfacePtr<IStartProgress> progress;
};

/// The interface of the stub plug-in for tests: sets return values and reads recorded calls. Implemented by the root
/// object of the library.
class StubControl
{
public:
    virtual ~StubControl() = default;

    /// Clears scripts and recorded calls. Existing objects keep their scripts.
    virtual void reset() = 0;
    /// The script of a feature. Adds the feature to the library; a PluginManager reads the features when it is created.
    virtual StubScript &script(const QString &feature) = 0;
    /// The calls since the last time, in order, as "label.call(arguments)". queryInterface(), addRef(), release() and
    /// type() are not recorded.
    virtual QStringList takeCalls() = 0;
    /// The newest existing object with that label, or null.
    virtual StubObjectState *object(const QString &label) = 0;
    virtual StubHooks &hooks() = 0;
    virtual int objectCount() = 0; ///< Number of existing objects: 0 when all references were released.
};

#define StubControlIid "io.varnel.tests.StubControl"
Q_DECLARE_INTERFACE(StubControl, StubControlIid)

#pragma once
#include "ibreakpoints.h"
#include "ibuildevents.h"
#include "iexecutionevents.h"
#include "iextensioncommands.h"
#include "imemory.h"
#include "iperipherals.h"
#include "iproject.h"
#include "iqueryplugininterface.h"
#include "iregisters.h"
#include "pluginfactory.h"
#include <functional>
#include <QHash>
#include <QMap>
#include <QSet>

class DocumentTemplate;
class QWidget;
class SyntaxHighlighter;
class TextIndent;

/// What the objects of one feature of the stub plug-in answer.
struct StubScript
{
    QString label; ///< what the calls of these objects begin with
    int type = IPluginObject::Environment;
    QSet<QUuid> offers; ///< the interfaces that they have
    /// Done in the call of that name, after it has been written down. It may throw.
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
    QHash<QString, BreakpointLocation> locationsFrom; ///< the same for who asks with such a file
    QHash<QString, QString> values;                   ///< of expressions; others fail
    // The optional interfaces of an execution environment
    std::function<QList<QWidget *>()> widgets;
    QList<BreakpointRecord> breakpoints;
    int setBreakpointResult = 0;
    QHash<QString, uint> symbols;               ///< names to addresses
    QMap<uint, BreakpointLocation> sourceLines; ///< addresses to places
    QMap<int, QString> instructions;            ///< indices to texts
    QMap<int, QStringList> instructionSources;  ///< indices to source lines
    QList<MemoryRegion> regions;
    QMap<uint, uint> memory; ///< addresses to values; others do not answer
    bool verify = false;
    QList<RegisterInfo> registers;
    QHash<QString, QMap<int, uint>> registerValues; ///< words by number
    QList<PeripheralInfo> peripherals;
    QHash<QString, uint> peripheralValues; ///< by the name of the register
    QHash<QString, QString> peripheralDescriptions;
    QString group;
    int syncOperations = 0;
    // Documents
    std::function<DocumentTemplate *()> documentTemplate;
    QString title;
    QString description;
    QStringList extensions;
    std::function<QPixmap()> icon;
    std::function<SyntaxHighlighter *()> syntaxHighlighter;
    std::function<TextIndent *()> indenter;
};

/// What an object of the stub was given and keeps a reference on.
struct StubObjectState
{
    QString label;
    InterfacePtr<IBuildEvents> buildEvents;
    InterfacePtr<IExecutionEvents> executionEvents;
    InterfacePtr<IProject> project;
    InterfacePtr<IQueryPluginInterface> query;
};

/// A test's side of the stub plug-in: loads the answers, reads what was called. The root object of the library.
class StubControl
{
public:
    virtual ~StubControl() = default;

    /// Forgets answers and calls. Objects that are still alive keep their answers.
    virtual void reset() = 0;
    /// The answers of a feature, which the library has from then on. Its list is read when a PluginManager is made.
    virtual StubScript &script(const QString &feature) = 0;
    /// The calls since the last time, as "label.call(arguments)", in their order. Queries, references and type() are
    /// not among them.
    virtual QStringList takeCalls() = 0;
    /// The living object with that label that was made last, or null.
    virtual StubObjectState *object(const QString &label) = 0;
    virtual int objectCount() = 0; ///< How many objects are alive: 0 when every reference has been given back.
};

#define StubControlIid "io.varnel.tests.StubControl"
Q_DECLARE_INTERFACE(StubControl, StubControlIid)

#include "stubobject.h"
#include <algorithm>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace {
QString textOf(bool argument)
{
    return argument ? u"true"_s : u"false"_s;
}

QString textOf(quint64 argument)
{
    return QString::number(argument);
}

QString textOf(int argument)
{
    return QString::number(argument);
}

QString textOf(qint64 argument)
{
    return QString::number(argument);
}

QString textOf(uint argument)
{
    return QString::number(argument);
}

QString textOf(const QString &argument)
{
    return argument;
}

QString textOf(const QStringList &argument)
{
    return u'[' + argument.join(u' ') + u']';
}
} // namespace

StubObject::StubObject(const std::shared_ptr<StubScript> &script, Log &log) : m_script(script), m_log(log)
{
    label = script->label;
    m_log.objects.append(this);
}

StubObject::~StubObject()
{
    m_log.objects.removeOne(this);
    if (m_script->on.contains(u"delete"_s))
        m_script->on.value(u"delete"_s)();
}

template <typename... Values>
void StubObject::record(const QString &call, const Values &...arguments)
{
    m_log.calls.append(label + u'.' + call + u'(' + QStringList{textOf(arguments)...}.join(u", "_s) + u')');
    act(call);
}

void StubObject::act(const QString &call) const
{
    if (const std::function<void()> action = m_script->on.value(call))
        action();
}

QRESULT StubObject::queryInterface(const QUuid &id, QUnknownInterface **out)
{
    *out = nullptr;
    act(u"queryInterface"_s);
    if (id != QUnknownInterface::Iid && !m_script->offers.contains(id))
        return QE_NOINTERFACE;
    return InterfaceObject::queryInterface(id, out);
}

bool StubObject::initialise(IBuildEvents *events, const QString &option)
{
    buildEvents = shareInterface(events);
    record(u"initialise"_s, option);
    return m_script->initialised;
}

void StubObject::setProject(IProject *givenProject)
{
    project = shareInterface(givenProject);
    record(u"setProject"_s, project->name());
}

void StubObject::compile(const QString &file, const QString &configuration)
{
    record(u"compile"_s, file, configuration);
}

bool StubObject::canCompile(const QString &file, const QString &configuration)
{
    record(u"canCompile"_s, file, configuration);
    return m_script->canCompile;
}

void StubObject::build(const QStringList &configurations, bool rebuild)
{
    record(u"build"_s, configurations, rebuild);
}

void StubObject::clean(const QStringList &configurations)
{
    record(u"clean"_s, configurations);
}

void StubObject::stop()
{
    record(u"stop"_s);
}

bool StubObject::isUpToDate(const QString &configuration)
{
    record(u"isUpToDate"_s, configuration);
    return m_script->upToDate;
}

bool StubObject::initialise(IProject *givenProject, IExecutionEvents *events, const QString &option)
{
    project = shareInterface(givenProject);
    executionEvents = shareInterface(events);
    record(u"initialise"_s, project->name(), option);
    return m_script->initialised;
}

bool StubObject::start(bool attachOnly)
{
    record(u"start"_s, attachOnly);
    return m_script->started;
}

bool StubObject::canWakeUp()
{
    act(u"canWakeUp"_s);
    return m_script->canWakeUp;
}

bool StubObject::canAttach()
{
    record(u"canAttach"_s);
    return m_script->canAttach;
}

void StubObject::run()
{
    record(u"run"_s);
}

void StubObject::runTo(const QString &file, int line)
{
    record(u"runTo"_s, file, line);
}

void StubObject::stepInto(const QString &file)
{
    record(u"stepInto"_s, file);
}

void StubObject::stepOver(const QString &file)
{
    record(u"stepOver"_s, file);
}

void StubObject::pause()
{
    record(u"pause"_s);
}

void StubObject::restart()
{
    record(u"restart"_s);
}

void StubObject::wakeUp()
{
    record(u"wakeUp"_s);
}

StubObject::ProcessorStatus StubObject::processorStatus()
{
    record(u"processorStatus"_s);
    return m_script->processorStatus;
}

StubObject::ProgramStatus StubObject::programStatus()
{
    record(u"programStatus"_s);
    return m_script->programStatus;
}

bool StubObject::currentLocation(QString &file, int &line)
{
    record(u"currentLocation"_s);
    const BreakpointLocation place = m_script->locationsFrom.value(file, m_script->location);
    file = place.file;
    line = place.line;
    return !file.isEmpty();
}

int StubObject::evaluate(const QString &expression, QString &result)
{
    record(u"evaluate"_s, expression);
    result = m_script->values.value(expression, u"No symbol '%1'"_s.arg(expression));
    return m_script->values.contains(expression) ? 0 : 1;
}

_object *StubObject::pythonExtension()
{
    record(u"pythonExtension"_s);
    return m_script->extension ? m_script->extension() : nullptr;
}

QList<BreakpointRecord> StubObject::breakpoints()
{
    record(u"breakpoints"_s);
    return m_script->breakpoints;
}

int StubObject::setBreakpoint(const QString &file, int line, int state)
{
    record(u"setBreakpoint"_s, file, line, state);
    if (m_script->keepsBreakpoints) {
        const auto isThere = [&](const BreakpointRecord &record) {
            return record.locations.first().file == file && record.locations.first().line == line;
        };
        m_script->breakpoints.removeIf(isThere);
        if (state != BreakpointRemoved)
            m_script->breakpoints.append({{{file, line}}, state});
    }
    return m_script->setBreakpointResult;
}

int StubObject::features()
{
    act(u"features"_s);
    return m_script->detailFeatures;
}

bool StubObject::details(const QString &file, int line, BreakpointDetails &details)
{
    act(u"details"_s);
    const auto found = m_script->details.constFind(u"%1:%2"_s.arg(file, QString::number(line)));
    if (found == m_script->details.cend())
        return false;
    details = *found;
    return true;
}

bool StubObject::setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason)
{
    record(u"setDetails"_s, file, line, details.condition, details.hitCount, details.logText);
    reason = m_script->refusal;
    if (reason.isEmpty())
        m_script->details.insert(u"%1:%2"_s.arg(file, QString::number(line)), details);
    return reason.isEmpty();
}

QList<DataBreakpoint> StubObject::dataBreakpoints()
{
    act(u"dataBreakpoints"_s);
    return m_script->dataBreakpoints;
}

bool StubObject::setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason)
{
    record(u"setDataBreakpoint"_s, breakpoint.id, breakpoint.expression, breakpoint.access, breakpoint.state);
    reason = m_script->refusal;
    if (!reason.isEmpty())
        return false;
    QList<DataBreakpoint> &all = m_script->dataBreakpoints;
    all.removeIf([&](const DataBreakpoint &each) { return each.id == breakpoint.id; });
    if (breakpoint.id == 0)
        breakpoint.id = int(all.size()) + 1;
    if (breakpoint.state != BreakpointRemoved)
        all.append(breakpoint);
    return true;
}

BreakpointLimits StubObject::limits()
{
    act(u"limits"_s);
    return m_script->limits;
}

void StubObject::reply(const DebugRequest &request, IDebugReplies *replies,
                       const std::function<void(IDebugReplies &replies)> &answer)
{
    const auto kept = std::shared_ptr<IDebugReplies>(shareInterface(replies));
    const auto give = [request, kept, answer, failure = m_script->failure] {
        failure.isEmpty() ? answer(*kept) : kept->failed(request, failure);
    };
    if (m_script->answersLater)
        m_script->answers.append(give);
    else
        give();
}

void StubObject::requestThreads(const DebugRequest &request, IDebugReplies *replies)
{
    record(u"requestThreads"_s);
    reply(request, replies,
          [request, threads = m_script->threads](IDebugReplies &to) { to.threads(request, threads); });
}

void StubObject::requestFrames(const DebugRequest &request, qint64 thread, int first, int count, IDebugReplies *replies)
{
    record(u"requestFrames"_s, thread, first, count);
    const QList<StackFrame> all = m_script->frames.value(thread);
    reply(request, replies,
          [=](IDebugReplies &to) { to.frames(request, all.mid(first, count), qsizetype(first) + count < all.size()); });
}

bool StubObject::currentPlace(StackPlace &place)
{
    act(u"currentPlace"_s);
    place = m_script->place.value_or(StackPlace());
    return m_script->place.has_value();
}

bool StubObject::setCurrentPlace(const StackPlace &place)
{
    record(u"setCurrentPlace"_s, place.thread, place.frame);
    if (m_script->placeAccepted)
        m_script->place = place;
    return m_script->placeAccepted;
}

int StubObject::formats()
{
    return m_script->formats;
}

int StubObject::scopes()
{
    return m_script->scopes;
}

void StubObject::replyVariables(const DebugRequest &request, IDebugReplies *replies, const QList<VariableInfo> &all,
                                int first, int count)
{
    reply(request, replies, [=](IDebugReplies &to) {
        to.variables(request, all.mid(first, count), qsizetype(first) + count < all.size());
    });
}

void StubObject::requestScope(const DebugRequest &request, const StackPlace &, int scope, int first, int count,
                              int format, IDebugReplies *replies)
{
    record(u"requestScope"_s, scope, first, count, format);
    replyVariables(request, replies, m_script->scopeVariables.value(scope), first, count);
}

void StubObject::requestChildren(const DebugRequest &request, const StackPlace &, const QString &expression, int first,
                                 int count, int format, IDebugReplies *replies)
{
    record(u"requestChildren"_s, expression, first, count, format);
    replyVariables(request, replies, m_script->members.value(expression), first, count);
}

VariableInfo *StubObject::variable(const QString &expression)
{
    const auto search = [&expression](auto &lists) -> VariableInfo * {
        for (QList<VariableInfo> &list : lists) {
            const auto found = std::ranges::find(list, expression, &VariableInfo::expression);
            if (found != list.end())
                return &*found;
        }
        return nullptr;
    };
    VariableInfo *found = search(m_script->scopeVariables);
    return found ? found : search(m_script->members);
}

void StubObject::requestValue(const DebugRequest &request, const StackPlace &, const QString &expression, int format,
                              IDebugReplies *replies)
{
    record(u"requestValue"_s, expression, format);
    const VariableInfo *found = variable(expression);
    const VariableInfo info = found ? *found : VariableInfo();
    reply(request, replies, [request, info](IDebugReplies &to) {
        info.expression.isEmpty() ? to.failed(request, u"No symbol in current context."_s) : to.value(request, info);
    });
}

void StubObject::assign(const DebugRequest &request, const StackPlace &, const QString &expression,
                        const QString &value, int format, IDebugReplies *replies)
{
    record(u"assign"_s, expression, value, format);
    VariableInfo *found = variable(expression);
    if (found && m_script->failure.isEmpty())
        found->value = value;
    reply(request, replies,
          [request, info = found ? *found : VariableInfo()](IDebugReplies &to) { to.value(request, info); });
}

void StubObject::buildForDebug(const QString &configuration)
{
    record(u"buildForDebug"_s, configuration);
}

QString StubObject::disassemble(uint address, int region)
{
    record(u"disassemble"_s, address, region);
    return m_script->instructions.value(int(address));
}

QString StubObject::text(int index)
{
    record(u"text"_s, index);
    return m_script->instructions.value(index);
}

QStringList StubObject::sourceLines(int index)
{
    record(u"sourceLines"_s, index);
    return m_script->instructionSources.value(index);
}

QList<QWidget *> StubObject::widgets()
{
    record(u"widgets"_s);
    return m_script->widgets ? m_script->widgets() : QList<QWidget *>();
}

QList<ExtensionCommand> StubObject::commands()
{
    record(u"commands"_s);
    return m_script->commands;
}

void StubObject::execute(const QString &id)
{
    record(u"execute"_s, id);
}

QList<MemoryRegion> StubObject::regions()
{
    record(u"regions"_s);
    return m_script->regions;
}

int StubObject::statusOf(uint address) const
{
    return m_script->memoryStatuses.value(address, m_script->memory.contains(address) ? Success : NoMemory);
}

int StubObject::read(int region, int mode, uint address, uint *value)
{
    record(u"read"_s, region, mode, address);
    *value = m_script->memory.value(address);
    return statusOf(address);
}

int StubObject::write(int region, int mode, uint address, uint value, bool flush)
{
    record(u"write"_s, region, mode, address, value, flush);
    const int status = statusOf(address);
    if (status == Success)
        m_script->memory[address] = value;
    return status;
}

void StubObject::readBlock(int region, int mode, uint address, int count, MemoryBlock &result)
{
    record(u"readBlock"_s, region, mode, address, count);
    result.clear();
    for (uint cell = address; cell != address + uint(count); ++cell)
        result.append({m_script->memory.value(cell), statusOf(cell)});
    result.resize(std::max<qsizetype>(0, result.size() - m_script->missingCells));
}

void StubObject::writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush)
{
    record(u"writeBlock"_s, region, mode, address, count, flush);
    for (int i = 0; i < count; ++i) {
        const uint cell = address + uint(i);
        cells[i].status = statusOf(cell);
        if (cells[i].status == Success)
            m_script->memory[cell] = cells[i].value;
    }
}

bool StubObject::verify()
{
    record(u"verify"_s);
    return m_script->verify;
}

void StubObject::setVerify(bool verify)
{
    record(u"setVerify"_s, verify);
    m_script->verify = verify;
}

QString StubObject::groupId()
{
    record(u"groupId"_s);
    return m_script->group;
}

int StubObject::supportedOperations(const QString &groupId)
{
    record(u"supportedOperations"_s, groupId);
    return m_script->syncOperations;
}

void StubObject::syncRun()
{
    record(u"syncRun"_s);
}

void StubObject::syncPause()
{
    record(u"syncPause"_s);
}

void StubObject::syncRestart()
{
    record(u"syncRestart"_s);
}

void StubObject::syncWakeup()
{
    record(u"syncWakeup"_s);
}

QList<PeripheralInfo> StubObject::peripherals()
{
    record(u"peripherals"_s);
    return m_script->peripherals;
}

uint StubObject::value(const QString &peripheral, const QString &registerName)
{
    record(u"value"_s, peripheral, registerName);
    return m_script->peripheralValues.value(registerName);
}

void StubObject::setValue(const QString &peripheral, const QString &registerName, uint value)
{
    record(u"setValue"_s, peripheral, registerName, value);
    m_script->peripheralValues[registerName] = value;
}

QString StubObject::description(const QString &peripheral, const QString &registerName)
{
    record(u"description"_s, peripheral, registerName);
    return m_script->peripheralDescriptions.value(registerName.isEmpty() ? peripheral : registerName);
}

void StubObject::startInBackground(bool attachOnly, IStartProgress *givenProgress)
{
    progress = shareInterface(givenProgress);
    record(u"startInBackground"_s, attachOnly);
}

void StubObject::cancelStart()
{
    record(u"cancelStart"_s);
}

void StubObject::populate(const QString &configuration)
{
    record(u"populate"_s, configuration);
}

bool StubObject::setNextStatement(const QString &file, int line)
{
    record(u"setNextStatement"_s, file, line);
    return m_script->nextStatementResult;
}

QString StubObject::propertyDefinitions()
{
    record(u"propertyDefinitions"_s);
    return m_script->propertyDefinitions;
}

QList<RegisterInfo> StubObject::registers()
{
    record(u"registers"_s);
    return m_script->registers;
}

uint StubObject::value(const QString &name, int word)
{
    record(u"value"_s, name, word);
    return m_script->registerValues.value(name).value(word);
}

void StubObject::setValue(const QString &name, uint value, int word)
{
    record(u"setValue"_s, name, value, word);
    m_script->registerValues[name][word] = value;
}

bool StubObject::symbolAddress(const QString &name, uint &address)
{
    record(u"symbolAddress"_s, name);
    address = m_script->symbols.value(name);
    return m_script->symbols.contains(name);
}

bool StubObject::sourceLocation(uint address, int kind, QString &file, int &line)
{
    record(u"sourceLocation"_s, address, kind);
    const BreakpointLocation place = m_script->sourceLines.value(address);
    file = place.file;
    line = place.line;
    return m_script->sourceLines.contains(address);
}

void StubObject::reserved1()
{
    record(u"reserved1"_s);
}

void StubObject::reserved2()
{
    record(u"reserved2"_s);
}

bool StubObject::addressOf(const QString &file, int line, uint &address)
{
    record(u"addressOf"_s, file, line);
    const auto isPlace = [&](const BreakpointLocation &place) { return place.file == file && place.line == line; };
    const auto found = std::ranges::find_if(std::as_const(m_script->sourceLines), isPlace);
    if (found == m_script->sourceLines.cend())
        return false;
    address = found.key();
    return true;
}

bool StubObject::symbolAt(uint address, int region, QString &name)
{
    record(u"symbolAt"_s, address, region);
    name = m_script->symbols.key(address);
    return !name.isEmpty();
}

bool StubObject::symbolAddress(const QString &name, quint64 &address)
{
    record(u"symbolAddress"_s, name);
    address = m_script->wideSymbols.value(name);
    return m_script->wideSymbols.contains(name);
}

bool StubObject::sourceLocation(quint64 address, int kind, QString &file, int &line)
{
    record(u"sourceLocation"_s, address, kind);
    const BreakpointLocation place = m_script->wideLines.value(address);
    file = place.file;
    line = place.line;
    return !file.isEmpty();
}

bool StubObject::addressOf(const QString &file, int line, quint64 &address)
{
    record(u"addressOf"_s, file, line);
    for (auto place = m_script->wideLines.cbegin(); place != m_script->wideLines.cend(); ++place) {
        if (place->file == file && place->line == line) {
            address = place.key();
            return true;
        }
    }
    return false;
}

bool StubObject::symbolAt(quint64 address, int region, QString &name)
{
    record(u"symbolAt"_s, address, region);
    name = m_script->wideSymbols.key(address);
    return !name.isEmpty();
}

void StubObject::setQueryInterface(IQueryPluginInterface *givenQuery)
{
    query = shareInterface(givenQuery);
    record(u"setQueryInterface"_s);
}

void StubObject::workspaceChanged()
{
    record(u"workspaceChanged"_s);
}

DocumentTemplate *StubObject::documentTemplate()
{
    record(u"documentTemplate"_s);
    return m_script->documentTemplate ? m_script->documentTemplate() : nullptr;
}

QString StubObject::title()
{
    record(u"title"_s);
    return m_script->title;
}

QString StubObject::description()
{
    record(u"description"_s);
    return m_script->description;
}

QStringList StubObject::extensions()
{
    record(u"extensions"_s);
    return m_script->extensions;
}

QPixmap StubObject::icon()
{
    record(u"icon"_s);
    return m_script->icon ? m_script->icon() : QPixmap();
}

SyntaxHighlighter *StubObject::syntaxHighlighter()
{
    record(u"syntaxHighlighter"_s);
    return m_script->syntaxHighlighter ? m_script->syntaxHighlighter() : nullptr;
}

TextIndent *StubObject::indenter()
{
    record(u"indenter"_s);
    return m_script->indenter ? m_script->indenter() : nullptr;
}

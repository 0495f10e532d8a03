#include "stubobject.h"
#include "stubfacets.h"
#include <algorithm>
#include <QPixmap>

using namespace Qt::StringLiterals;

StubObject::StubObject(const std::shared_ptr<StubScript> &script, Log &log) : m_script(script), m_log(log)
{
    label = script->label;
    m_log.objects.append(this);
}

unsigned long StubObject::addRef()
{
    act(u"QUnknownInterface::addRef"_s);
    return InterfaceObject::addRef();
}

/// The object may be deleted when this runs.
unsigned long StubObject::release()
{
    Log &log = m_log;
    const unsigned long left = InterfaceObject::release();
    log.hooks.act(u"QUnknownInterface::release"_s);
    return left;
}

int StubObject::type()
{
    act(u"IPluginObject::type"_s);
    return given(m_script->type);
}

StubObject::~StubObject()
{
    m_log.objects.removeOne(this);
    if (m_script->on.contains(u"delete"_s))
        m_script->on.value(u"delete"_s)();
}

void StubObject::note(const QString &call, const QStringList &arguments) const
{
    m_log.calls.append(label + u'.' + call.section(u"::"_s, 1) + u'(' + arguments.join(u", "_s) + u')');
    run(call);
}

void StubObject::act(const QString &call) const
{
    if (m_log.hooks.recordsAll && !call.startsWith(u"QUnknownInterface"_s) && !call.startsWith(u"IPluginObject"_s))
        note(call, {});
    else
        run(call);
}

void StubObject::run(const QString &call) const
{
    if (const std::function<void()> action = m_script->on.value(call.section(u"::"_s, 1)))
        action();
    m_log.hooks.act(call);
}

QRESULT StubObject::queryInterface(const QUuid &id, QUnknownInterface **out)
{
    *out = nullptr;
    act(u"QUnknownInterface::queryInterface"_s);
    if (const StubHooks::Result result = m_log.hooks.take(); result != StubHooks::All)
        return result == StubHooks::Null ? QS_OK : QE_NOINTERFACE;
    if (id == IMemory64::Iid && m_script->offers.contains(id)) {
        *out = new StubMemory64(this);
        return QS_OK;
    }
    if (id != QUnknownInterface::Iid && !m_script->offers.contains(id))
        return QE_NOINTERFACE;
    return InterfaceObject::queryInterface(id, out);
}

bool StubObject::initialise(IBuildEvents *events, const QString &option)
{
    buildEvents = shareInterface(events);
    record(u"IBuildEnvironment::initialise"_s, option);
    return given(m_script->initialised);
}

void StubObject::setProject(IProject *givenProject)
{
    project = shareInterface(givenProject);
    record(u"IBuildEnvironment::setProject"_s, project->name());
}

void StubObject::compile(const QString &file, const QString &configuration)
{
    record(u"IBuildEnvironment::compile"_s, file, configuration);
}

bool StubObject::canCompile(const QString &file, const QString &configuration)
{
    record(u"IBuildEnvironment::canCompile"_s, file, configuration);
    return given(m_script->canCompile);
}

void StubObject::build(const QStringList &configurations, bool rebuild)
{
    record(u"IBuildEnvironment::build"_s, configurations, rebuild);
}

void StubObject::clean(const QStringList &configurations)
{
    record(u"IBuildEnvironment::clean"_s, configurations);
}

void StubObject::stop()
{
    record(m_script->offers.contains(IBuildEnvironment::Iid) ? u"IBuildEnvironment::stop"_s
                                                             : u"IExecutionEnvironment::stop"_s);
}

bool StubObject::isUpToDate(const QString &configuration)
{
    record(u"IBuildEnvironment::isUpToDate"_s, configuration);
    return given(m_script->upToDate);
}

bool StubObject::initialise(IProject *givenProject, IExecutionEvents *events, const QString &option)
{
    project = shareInterface(givenProject);
    executionEvents = shareInterface(events);
    record(u"IExecutionEnvironment::initialise"_s, project->name(), option);
    return given(m_script->initialised);
}

bool StubObject::start(bool attachOnly)
{
    record(u"IExecutionEnvironment::start"_s, attachOnly);
    return given(m_script->started);
}

bool StubObject::canWakeUp()
{
    act(u"IWakeUp::canWakeUp"_s);
    return given(m_script->canWakeUp);
}

bool StubObject::canAttach()
{
    record(u"IExecutionEnvironment::canAttach"_s);
    return given(m_script->canAttach);
}

void StubObject::run()
{
    record(u"IExecutionEnvironment::run"_s);
}

void StubObject::runTo(const QString &file, int line)
{
    record(u"IExecutionEnvironment::runTo"_s, file, line);
}

void StubObject::stepInto(const QString &file)
{
    record(u"IExecutionEnvironment::stepInto"_s, file);
}

void StubObject::stepOver(const QString &file)
{
    record(u"IExecutionEnvironment::stepOver"_s, file);
}

void StubObject::pause()
{
    record(u"IExecutionEnvironment::pause"_s);
}

void StubObject::restart()
{
    record(u"IExecutionEnvironment::restart"_s);
}

void StubObject::wakeUp()
{
    record(u"IExecutionEnvironment::wakeUp"_s);
}

StubObject::ProcessorStatus StubObject::processorStatus()
{
    record(u"IExecutionEnvironment::processorStatus"_s);
    return given(m_script->processorStatus);
}

StubObject::ProgramStatus StubObject::programStatus()
{
    record(u"IExecutionEnvironment::programStatus"_s);
    return given(m_script->programStatus);
}

bool StubObject::currentLocation(QString &file, int &line)
{
    record(u"IExecutionEnvironment::currentLocation"_s);
    if (givesNothing())
        return true;
    const BreakpointLocation place = m_script->locationsFrom.value(file, m_script->location);
    file = place.file;
    line = place.line;
    return !file.isEmpty();
}

int StubObject::evaluate(const QString &expression, QString &result)
{
    record(u"IExecutionEnvironment::evaluate"_s, expression);
    if (givesNothing())
        return 0;
    result = m_script->values.value(expression, u"No symbol '%1'"_s.arg(expression));
    return m_script->values.contains(expression) ? 0 : 1;
}

_object *StubObject::pythonExtension()
{
    record(u"IExecutionEnvironment::pythonExtension"_s);
    return given(m_script->extension ? m_script->extension() : nullptr);
}

QList<BreakpointRecord> StubObject::breakpoints()
{
    record(u"IBreakpoints::breakpoints"_s);
    return given(m_script->breakpoints);
}

int StubObject::setBreakpoint(const QString &file, int line, int state)
{
    record(u"IBreakpoints::setBreakpoint"_s, file, line, state);
    if (m_script->keepsBreakpoints) {
        const auto isThere = [&](const BreakpointRecord &record) {
            return record.locations.first().file == file && record.locations.first().line == line;
        };
        m_script->breakpoints.removeIf(isThere);
        if (state != BreakpointRemoved)
            m_script->breakpoints.append({{{file, line}}, state});
    }
    return given(m_script->setBreakpointResult);
}

int StubObject::features()
{
    act(u"IBreakpointDetails::features"_s);
    return given(m_script->detailFeatures);
}

bool StubObject::details(const QString &file, int line, BreakpointDetails &details)
{
    act(u"IBreakpointDetails::details"_s);
    if (givesNothing())
        return true;
    const auto found = m_script->details.constFind(u"%1:%2"_s.arg(file, QString::number(line)));
    if (found == m_script->details.cend())
        return false;
    details = *found;
    return true;
}

bool StubObject::setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason)
{
    record(u"IBreakpointDetails::setDetails"_s, file, line, details.condition, details.hitCount, details.logText);
    if (givesNothing())
        return false;
    reason = m_script->refusal;
    if (reason.isEmpty())
        m_script->details.insert(u"%1:%2"_s.arg(file, QString::number(line)), details);
    return reason.isEmpty();
}

QList<DataBreakpoint> StubObject::dataBreakpoints()
{
    act(u"IBreakpointDetails::dataBreakpoints"_s);
    return given(m_script->dataBreakpoints);
}

bool StubObject::setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason)
{
    record(u"IBreakpointDetails::setDataBreakpoint"_s, breakpoint.id, breakpoint.expression, breakpoint.access,
           breakpoint.state);
    if (givesNothing())
        return false;
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
    act(u"IBreakpointDetails::limits"_s);
    return given(m_script->limits);
}

void StubObject::requestThreads(const DebugRequest &request, IDebugReplies *replies)
{
    record(u"ICallStack::requestThreads"_s);
    reply(request, replies,
          [request, threads = m_script->threads](IDebugReplies &to) { to.threads(request, threads); });
}

void StubObject::requestFrames(const DebugRequest &request, qint64 thread, int first, int count, IDebugReplies *replies)
{
    record(u"ICallStack::requestFrames"_s, thread, first, count);
    const QList<StackFrame> all = m_script->frames.value(thread);
    reply(request, replies,
          [=](IDebugReplies &to) { to.frames(request, all.mid(first, count), qsizetype(first) + count < all.size()); });
}

bool StubObject::currentPlace(StackPlace &place)
{
    act(u"ICallStack::currentPlace"_s);
    if (givesNothing())
        return true;
    place = m_script->place.value_or(StackPlace());
    return m_script->place.has_value();
}

bool StubObject::setCurrentPlace(const StackPlace &place)
{
    record(u"ICallStack::setCurrentPlace"_s, place.thread, place.frame);
    if (givesNothing())
        return false;
    if (m_script->placeAccepted)
        m_script->place = place;
    return m_script->placeAccepted;
}

int StubObject::formats()
{
    act(u"IVariables::formats"_s);
    return given(m_script->formats);
}

int StubObject::scopes()
{
    act(u"IVariables::scopes"_s);
    return given(m_script->scopes);
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
    record(u"IVariables::requestScope"_s, scope, first, count, format);
    replyVariables(request, replies, m_script->scopeVariables.value(scope), first, count);
}

void StubObject::requestChildren(const DebugRequest &request, const StackPlace &, const QString &expression, int first,
                                 int count, int format, IDebugReplies *replies)
{
    record(u"IVariables::requestChildren"_s, expression, first, count, format);
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
    record(u"IVariables::requestValue"_s, expression, format);
    const VariableInfo *found = variable(expression);
    const VariableInfo info = found ? *found : VariableInfo();
    reply(request, replies, [request, info](IDebugReplies &to) {
        info.expression.isEmpty() ? to.failed(request, u"No symbol in current context."_s) : to.value(request, info);
    });
}

void StubObject::assign(const DebugRequest &request, const StackPlace &, const QString &expression,
                        const QString &value, int format, IDebugReplies *replies)
{
    record(u"IVariables::assign"_s, expression, value, format);
    VariableInfo *found = variable(expression);
    if (found && m_script->failure.isEmpty())
        found->value = value;
    reply(request, replies,
          [request, info = found ? *found : VariableInfo()](IDebugReplies &to) { to.value(request, info); });
}

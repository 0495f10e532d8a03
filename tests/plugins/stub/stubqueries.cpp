#include "stubfacets.h"
#include "stubobject.h"
#include <algorithm>
#include <QPixmap>

using namespace Qt::StringLiterals;

void StubObject::requestMemory(const DebugRequest &request, int region, int mode, quint64 address, int count,
                               IValueReplies *replies)
{
    record(u"IMemoryRequests::requestMemory"_s, region, mode, address, count);
    MemoryBlock64 cells;
    for (quint64 cell = address; cell != address + quint64(count); ++cell)
        cells.append({m_script->memory.value(uint(cell)), statusOf(uint(cell))});
    reply(request, replies, [=](IValueReplies &to) { to.memory(request, cells); });
}

void StubObject::requestRegisters(const DebugRequest &request, const QStringList &names, IValueReplies *replies)
{
    record(u"IRegisterRequests::requestRegisters"_s, names);
    QList<RegisterValue> values;
    for (const QString &name : names)
        values.append({name, m_script->registerValues.value(name).values()});
    reply(request, replies, [=](IValueReplies &to) { to.registers(request, values); });
}

void StubObject::requestEvaluation(const DebugRequest &request, const QString &expression, IValueReplies *replies)
{
    record(u"IEvaluationRequests::requestEvaluation"_s, expression);
    const bool known = m_script->values.contains(expression);
    const QString text = m_script->values.value(expression, u"No symbol '%1'"_s.arg(expression));
    reply(request, replies, [=](IValueReplies &to) { known ? to.evaluated(request, text) : to.failed(request, text); });
}

void StubObject::buildForDebug(const QString &configuration)
{
    record(u"IDebugBuild::buildForDebug"_s, configuration);
}

QString StubObject::disassemble(uint address, int region)
{
    record(u"IDisassembly::disassemble"_s, address, region);
    return given(m_script->instructions.value(int(address)));
}

QString StubObject::text(int index)
{
    record(m_script->offers.contains(IDisassemblyAddress::Iid) ? u"IDisassemblyAddress::text"_s
                                                               : u"IDisassembly::text"_s,
           index);
    return given(m_script->instructions.value(index));
}

QStringList StubObject::sourceLines(int index)
{
    record(u"IDisassemblyAddress::sourceLines"_s, index);
    return given(m_script->instructionSources.value(index));
}

QList<QWidget *> StubObject::widgets()
{
    record(u"IDockExtension::widgets"_s);
    const StubHooks::Result result = m_log.hooks.take();
    if (result != StubHooks::All)
        return QList<QWidget *>(result == StubHooks::Null ? 1 : 0, nullptr);
    return m_script->widgets ? m_script->widgets() : QList<QWidget *>();
}

QList<ExtensionCommand> StubObject::commands()
{
    record(u"IExtensionCommands::commands"_s);
    return given(m_script->commands);
}

void StubObject::execute(const QString &id)
{
    record(u"IExtensionCommands::execute"_s, id);
}

QList<MemoryRegion> StubObject::regions()
{
    record(u"IMemory::regions"_s);
    return given(m_script->regions);
}

int StubObject::statusOf(uint address) const
{
    return m_script->memoryStatuses.value(address, m_script->memory.contains(address) ? Success : NoMemory);
}

int StubObject::read(int region, int mode, uint address, uint *value)
{
    record(u"IMemory::read"_s, region, mode, address);
    if (givesNothing())
        return Success;
    *value = m_script->memory.value(address);
    return statusOf(address);
}

int StubObject::write(int region, int mode, uint address, uint value, bool flush)
{
    record(u"IMemory::write"_s, region, mode, address, value, flush);
    if (givesNothing())
        return Success;
    const int status = statusOf(address);
    if (status == Success)
        m_script->memory[address] = value;
    return status;
}

void StubObject::readBlock(int region, int mode, uint address, int count, MemoryBlock &result)
{
    record(u"IMemory::readBlock"_s, region, mode, address, count);
    if (givesNothing())
        return result.clear();
    result.clear();
    for (uint cell = address; cell != address + uint(count); ++cell)
        result.append({m_script->memory.value(cell), statusOf(cell)});
    result.resize(std::max<qsizetype>(0, result.size() - m_script->missingCells));
}

void StubObject::writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush)
{
    record(u"IMemory::writeBlock"_s, region, mode, address, count, flush);
    if (givesNothing())
        return cells.clear();
    for (int i = 0; i < count; ++i) {
        const uint cell = address + uint(i);
        cells[i].status = statusOf(cell);
        if (cells[i].status == Success)
            m_script->memory[cell] = cells[i].value;
    }
}

bool StubObject::verify()
{
    record(u"IMemoryVerify::verify"_s);
    return given(m_script->verify);
}

void StubObject::setVerify(bool verify)
{
    record(u"IMemoryVerify::setVerify"_s, verify);
    m_script->verify = verify;
}

QString StubObject::groupId()
{
    record(u"IMultiProcessorSync::groupId"_s);
    return given(m_script->group);
}

int StubObject::supportedOperations(const QString &groupId)
{
    record(u"IMultiProcessorSync::supportedOperations"_s, groupId);
    return given(m_script->syncOperations);
}

void StubObject::syncRun()
{
    record(u"IMultiProcessorSync::syncRun"_s);
}

void StubObject::syncPause()
{
    record(u"IMultiProcessorSync::syncPause"_s);
}

void StubObject::syncRestart()
{
    record(u"IMultiProcessorSync::syncRestart"_s);
}

void StubObject::syncWakeup()
{
    record(u"IMultiProcessorSync::syncWakeup"_s);
}

QList<PeripheralInfo> StubObject::peripherals()
{
    record(u"IPeripherals::peripherals"_s);
    return given(m_script->peripherals);
}

uint StubObject::value(const QString &peripheral, const QString &registerName)
{
    record(u"IPeripherals::value"_s, peripheral, registerName);
    return given(m_script->peripheralValues.value(registerName));
}

void StubObject::setValue(const QString &peripheral, const QString &registerName, uint value)
{
    record(u"IPeripherals::setValue"_s, peripheral, registerName, value);
    m_script->peripheralValues[registerName] = value;
}

QString StubObject::description(const QString &peripheral, const QString &registerName)
{
    record(u"IPeripherals::description"_s, peripheral, registerName);
    return given(m_script->peripheralDescriptions.value(registerName.isEmpty() ? peripheral : registerName));
}

void StubObject::startInBackground(bool attachOnly, IStartProgress *givenProgress)
{
    progress = shareInterface(givenProgress);
    record(u"IProgressiveStart::startInBackground"_s, attachOnly);
}

void StubObject::cancelStart()
{
    record(u"IProgressiveStart::cancelStart"_s);
}

void StubObject::populate(const QString &configuration)
{
    record(u"IProjectPopulate::populate"_s, configuration);
}

bool StubObject::setNextStatement(const QString &file, int line)
{
    record(u"INextStatement::setNextStatement"_s, file, line);
    return given(m_script->nextStatementResult);
}

QString StubObject::propertyDefinitions()
{
    record(u"IPropertyDefinitions::propertyDefinitions"_s);
    return given(m_script->propertyDefinitions);
}

QList<RegisterInfo> StubObject::registers()
{
    record(u"IRegisters::registers"_s);
    return given(m_script->registers);
}

uint StubObject::value(const QString &name, int word)
{
    record(u"IRegisters::value"_s, name, word);
    return given(m_script->registerValues.value(name).value(word));
}

void StubObject::setValue(const QString &name, uint value, int word)
{
    record(u"IRegisters::setValue"_s, name, value, word);
    m_script->registerValues[name][word] = value;
}

bool StubObject::symbolAddress(const QString &name, uint &address)
{
    record(u"ISourceMapping::symbolAddress"_s, name);
    if (givesNothing())
        return true;
    address = m_script->symbols.value(name);
    return m_script->symbols.contains(name);
}

bool StubObject::sourceLocation(uint address, int kind, QString &file, int &line)
{
    record(u"ISourceMapping::sourceLocation"_s, address, kind);
    if (givesNothing())
        return true;
    const BreakpointLocation place = m_script->sourceLines.value(address);
    file = place.file;
    line = place.line;
    return m_script->sourceLines.contains(address);
}

void StubObject::reserved1()
{
    record(u"ISymbolLookup::reserved1"_s);
}

void StubObject::reserved2()
{
    record(u"ISymbolLookup::reserved2"_s);
}

bool StubObject::addressOf(const QString &file, int line, uint &address)
{
    record(u"ISymbolLookup::addressOf"_s, file, line);
    if (givesNothing())
        return true;
    const auto isPlace = [&](const BreakpointLocation &place) { return place.file == file && place.line == line; };
    const auto found = std::ranges::find_if(std::as_const(m_script->sourceLines), isPlace);
    if (found == m_script->sourceLines.cend())
        return false;
    address = found.key();
    return true;
}

bool StubObject::symbolAt(uint address, int region, QString &name)
{
    record(u"ISymbolLookup::symbolAt"_s, address, region);
    if (givesNothing())
        return true;
    name = m_script->symbols.key(address);
    return !name.isEmpty();
}

bool StubObject::symbolAddress(const QString &name, quint64 &address)
{
    record(u"ISymbols64::symbolAddress"_s, name);
    if (givesNothing())
        return true;
    address = m_script->wideSymbols.value(name);
    return m_script->wideSymbols.contains(name);
}

bool StubObject::sourceLocation(quint64 address, int kind, QString &file, int &line)
{
    record(u"ISymbols64::sourceLocation"_s, address, kind);
    if (givesNothing())
        return true;
    const BreakpointLocation place = m_script->wideLines.value(address);
    file = place.file;
    line = place.line;
    return !file.isEmpty();
}

bool StubObject::addressOf(const QString &file, int line, quint64 &address)
{
    record(u"ISymbols64::addressOf"_s, file, line);
    if (givesNothing())
        return true;
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
    record(u"ISymbols64::symbolAt"_s, address, region);
    if (givesNothing())
        return true;
    name = m_script->wideSymbols.key(address);
    return !name.isEmpty();
}

void StubObject::setQueryInterface(IQueryPluginInterface *givenQuery)
{
    query = shareInterface(givenQuery);
    record(u"IWorkspaceClient::setQueryInterface"_s);
    if (m_script->usesHost && query)
        StubHostClient::attach(::queryInterface<IHost>(query.get()).get(), m_log);
}

void StubObject::workspaceChanged()
{
    record(u"IWorkspaceClient::workspaceChanged"_s);
}

DocumentTemplate *StubObject::documentTemplate()
{
    record(u"ICustomDocumentPlugin::documentTemplate"_s);
    return given(m_script->documentTemplate ? m_script->documentTemplate() : nullptr);
}

QString StubObject::title()
{
    record(u"ITextDocumentPlugin::title"_s);
    return given(m_script->title);
}

QString StubObject::description()
{
    record(u"ITextDocumentPlugin::description"_s);
    return given(m_script->description);
}

QStringList StubObject::extensions()
{
    record(u"ITextDocumentPlugin::extensions"_s);
    return given(m_script->extensions);
}

QPixmap StubObject::icon()
{
    record(u"ITextDocumentPlugin::icon"_s);
    return given(m_script->icon ? m_script->icon() : QPixmap());
}

SyntaxHighlighter *StubObject::syntaxHighlighter()
{
    record(u"ITextDocumentPlugin::syntaxHighlighter"_s);
    return given(m_script->syntaxHighlighter ? m_script->syntaxHighlighter() : nullptr);
}

TextIndent *StubObject::indenter()
{
    record(u"ITextDocumentPlugin::indenter"_s);
    return given(m_script->indenter ? m_script->indenter() : nullptr);
}

// Reading without a stop or a wait
// -------------------------------------------------------------------------------------

bool StubObject::fetch(int index, int milliseconds)
{
    record(u"IDisassemblyFetch::fetch"_s, index, milliseconds);
    return given(true);
}

bool StubObject::canReadLive()
{
    record(u"ILiveMemory::canReadLive"_s);
    return given(m_script->readsLive);
}

bool StubObject::readLive(int region, int mode, uint address, int count, MemoryBlock &result)
{
    record(u"ILiveMemory::readLive"_s, region, mode, address, count);
    if (givesNothing())
        return true;
    result.clear();
    for (uint cell = address; cell != address + uint(count); ++cell)
        result.append({m_script->memory.value(cell), statusOf(cell)});
    return m_script->readsLive;
}

bool StubObject::prepareLive(const QString &expression)
{
    record(u"ILiveMemory::prepareLive"_s, expression);
    return given(m_script->readsLive && m_script->values.contains(expression));
}

bool StubObject::evaluateLive(const QString &expression, QString &result)
{
    record(u"ILiveMemory::evaluateLive"_s, expression);
    if (givesNothing())
        return true;
    result = m_script->values.value(expression);
    return m_script->values.contains(expression);
}

// Fields and Makefiles
// -------------------------------------------------------------------------------------------------

PeripheralRegisterDetails StubObject::details(const QString &peripheral, const QString &registerName)
{
    record(u"IPeripheralFields::details"_s, peripheral, registerName);
    return given(m_script->peripheralDetails.value(registerName));
}

uint StubObject::readNow(const QString &peripheral, const QString &registerName)
{
    record(u"IPeripheralFields::readNow"_s, peripheral, registerName);
    return given(m_script->peripheralValues.value(registerName));
}

QList<GeneratedFile> StubObject::makefiles()
{
    record(u"IMakefileGenerator::makefiles"_s);
    return given(m_script->makefiles);
}

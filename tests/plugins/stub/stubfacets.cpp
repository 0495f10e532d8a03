#include "stubfacets.h"
#include "imemory.h"
#include <QLineEdit>

using namespace Qt::StringLiterals;

StubMemory64::StubMemory64(StubObject *object)
    : m_kept(shareInterface(static_cast<IPluginObject *>(object))), m_object(object)
{}

QList<MemoryRegion64> StubMemory64::regions()
{
    m_object->record(u"IMemory64::regions"_s);
    return m_object->given(m_object->script().wideRegions);
}

int StubMemory64::read(int region, int mode, quint64 address, quint64 *value)
{
    m_object->record(u"IMemory64::read"_s, region, mode, address);
    if (m_object->givesNothing())
        return IMemory::Success;
    *value = m_object->script().memory.value(uint(address));
    return m_object->statusOf(uint(address));
}

int StubMemory64::write(int region, int mode, quint64 address, quint64 value, bool flush)
{
    m_object->record(u"IMemory64::write"_s, region, mode, address, value, flush);
    return m_object->given(m_object->statusOf(uint(address)));
}

void StubMemory64::readBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &result)
{
    m_object->record(u"IMemory64::readBlock"_s, region, mode, address, count);
    result.clear();
    if (m_object->givesNothing())
        return;
    for (quint64 cell = address; cell != address + quint64(count); ++cell)
        result.append({m_object->script().memory.value(uint(cell)), m_object->statusOf(uint(cell))});
}

void StubMemory64::writeBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &cells, bool flush)
{
    m_object->record(u"IMemory64::writeBlock"_s, region, mode, address, count, flush);
    if (m_object->givesNothing())
        cells.clear();
}

void StubHostClient::attach(IHost *host, StubObject::Log &log)
{
    if (!host)
        return;
    const InterfacePtr<StubHostClient> client(new StubHostClient(log));
    host->addEvents(client.get());
    host->addOptionsPage(client.get());
    host->beginProgress(u"Working"_s, client.get());
}

void StubHostClient::note(const QString &call, const QString &argument) const
{
    m_log.calls.append(u"host."_s + call.section(u"::"_s, 1) + u'(' + argument + u')');
    m_log.hooks.act(call);
}

void StubHostClient::propertyChanged(const QString &key, const QString &configuration)
{
    note(u"IHostEvents::propertyChanged"_s, key + u", "_s + configuration);
}

void StubHostClient::configurationChanged(const QString &configuration)
{
    note(u"IHostEvents::configurationChanged"_s, configuration);
}

void StubHostClient::currentProjectChanged(bool own)
{
    note(u"IHostEvents::currentProjectChanged"_s, stubText(own));
}

QString StubHostClient::title()
{
    note(u"IOptionsPage::title"_s);
    return m_log.hooks.take() == StubHooks::All ? u"Stub"_s : QString();
}

QWidget *StubHostClient::createPage()
{
    note(u"IOptionsPage::createPage"_s);
    return m_log.hooks.take() == StubHooks::All ? new QLineEdit : nullptr;
}

void StubHostClient::apply(QWidget *)
{
    note(u"IOptionsPage::apply"_s);
}

void StubHostClient::cancelled(int progress)
{
    note(u"IProgressCancel::cancelled"_s, QString::number(progress));
}

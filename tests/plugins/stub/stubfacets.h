#pragma once
#include "ihost.h"
#include "imemory64.h"
#include "stubobject.h"
#include <memory>

/// The memory of an object with whole addresses: an object of its own, because its functions have the names of IMemory.
class StubMemory64 : public InterfaceObject<IMemory64>
{
public:
    explicit StubMemory64(StubObject *object);

    QList<MemoryRegion64> regions() override;
    int read(int region, int mode, quint64 address, quint64 *value) override;
    int write(int region, int mode, quint64 address, quint64 value, bool flush) override;
    void readBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &result) override;
    void writeBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &cells, bool flush) override;

private:
    const InterfacePtr<IPluginObject> m_kept;
    StubObject *const m_object; ///< the same
};

/// Follows the host for an object: receives events, has a page of options, and shows progress that can be cancelled.
class StubHostClient : public InterfaceObject<IHostEvents, IOptionsPage, IProgressCancel>
{
public:
    explicit StubHostClient(StubObject::Log &log) : m_log(log) {}
    static void attach(IHost *host, StubObject::Log &log); ///< Not if @p host is null.

    void filesChanged() override { note(QStringLiteral("IHostEvents::filesChanged")); }
    void propertyChanged(const QString &key, const QString &configuration) override;
    void configurationChanged(const QString &configuration) override;
    void currentProjectChanged(bool own) override;
    QString title() override;
    QWidget *createPage() override;
    void apply(QWidget *page) override;
    void cancelled(int progress) override;

private:
    void note(const QString &call, const QString &argument = {}) const;

    StubObject::Log &m_log;
};

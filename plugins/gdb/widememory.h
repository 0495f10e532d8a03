#pragma once
#include "facet.h"
#include "imemory64.h"
class MemoryAccess;

/// The target's memory with whole addresses, for the host's windows. Regions have the ids of MemoryAccess.
///
/// A block of device registers is read for a limited time only, because windows read while they are redrawn. Scripts,
/// which need whole blocks, read by MemoryAccess.
class WideMemory : public Facet<IMemory64>
{
public:
    WideMemory(MemoryAccess *memory, QUnknownInterface *whole) : Facet(whole), m_memory(memory) {}

    QList<MemoryRegion64> regions() override;
    int read(int region, int mode, quint64 address, quint64 *value) override;
    int write(int region, int mode, quint64 address, quint64 value, bool flush) override;
    void readBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &result) override;
    void writeBlock(int region, int mode, quint64 address, int count, MemoryBlock64 &cells, bool flush) override;

private:
    MemoryAccess *const m_memory;
};

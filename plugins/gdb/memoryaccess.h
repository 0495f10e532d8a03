#pragma once
#include "facet.h"
#include "imemory.h"
#include "imemoryverify.h"
#include "memorycell.h"
#include "regiontable.h"
class GdbSession;

/// The target's memory. The status of an access follows from the table of regions, because debug servers do not report
/// it reliably. A block ends where its region ends.
///
/// While the program runs, memory is read if the target supports that; otherwise accesses have the status NoMemory. The
/// host's addresses have 32 bits; all addresses of a region on a 64-bit target have the same upper half.
class MemoryAccess : public Facet<IMemory, IMemoryVerify>
{
public:
    MemoryAccess(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    void setTable(const RegionTable &table);
    [[nodiscard]] const RegionTable &table() const { return m_table; }
    /// Puts the region of an address first in regions(), if there is one. The regions keep their ids.
    void setCodeAddress(quint64 address);
    /// That region, or the first one; null if there are none. The disassembly window shows it.
    [[nodiscard]] const TargetRegion *codeRegion() const { return regionOf(m_codeRegion); }

    QList<MemoryRegion> regions() override;
    int read(int region, int mode, uint address, uint *value) override;
    int write(int region, int mode, uint address, uint value, bool flush) override;
    void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) override;
    void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) override;
    bool verify() override { return m_verify; }
    void setVerify(bool verify) override { m_verify = verify; }

    /// Reads a device register in one access of 1, 2 or 4 bytes. False if that fails.
    bool readWord(quint64 address, int width, uint *value);
    bool writeWord(quint64 address, int width, uint value);
    /// Reads bytes of one region, up to the first that cannot be read.
    [[nodiscard]] QByteArray readBytes(quint64 address, int length);

private:
    [[nodiscard]] const TargetRegion *regionOf(int id) const;
    QByteArray readCells(const TargetRegion &region, quint64 address, int width, int count);
    bool writeBytes(quint64 address, const QByteArray &bytes);
    [[nodiscard]] QByteArray readByGdb(quint64 address, int length);
    bool writeByGdb(quint64 address, const QByteArray &bytes);
    int writeCell(const TargetRegion *region, quint64 address, int width, uint value);
    [[nodiscard]] bool gdbReaches() const;
    [[nodiscard]] bool isBigEndian() const;

    GdbSession *const m_session;
    RegionTable m_table;
    int m_codeRegion = 0; ///< its id
    bool m_verify = false;
};

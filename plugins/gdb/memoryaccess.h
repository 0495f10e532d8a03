#pragma once
#include "facet.h"
#include "imemory.h"
#include "imemoryverify.h"
#include "memorycell.h"
#include "regiontable.h"
#include <functional>
#include <QDeadlineTimer>
class GdbSession;
struct MiRecord;

/// The target's memory. The status of an access follows from the table of regions, because debug servers do not report
/// it reliably. A block ends where its region ends.
///
/// While the program runs, memory is read if the target supports that; otherwise accesses have the status NoMemory. The
/// addresses of IMemory have 32 bits; all addresses of a region on a 64-bit target have the same upper half.
/// WideMemory has whole addresses.
class MemoryAccess : public Facet<IMemory, IMemoryVerify>
{
public:
    MemoryAccess(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    void setTable(const RegionTable &table);
    [[nodiscard]] const RegionTable &table() const { return m_table; }
    [[nodiscard]] const RegionTable &wholeTable() const { return m_wholeTable; } ///< Without a limit of 32 bits.
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

    /// Reads words of a region, which may be null. Device registers are read one by one until @p limit; those that
    /// were not read in time have the status NoMemory.
    [[nodiscard]] MemoryBlock readCells(const TargetRegion *region, quint64 address, int mode, int count,
                                        const QDeadlineTimer &limit = QDeadlineTimer::Forever);
    /// Passes the same words to @p use, which is called later if gdb reads them. Device registers, and what is read
    /// without gdb, are read at once, until @p limit.
    void requestCells(const TargetRegion *region, quint64 address, int mode, int count, const QDeadlineTimer &limit,
                      const std::function<void(const MemoryBlock &cells)> &use);
    /// Writes a word; returns a Status.
    int writeCell(const TargetRegion *region, quint64 address, int mode, uint value);
    /// A time limit for a window that is redrawn.
    [[nodiscard]] static QDeadlineTimer redrawLimit();
    /// Where a block of a region begins that the host asks for by a 32-bit address.
    [[nodiscard]] static quint64 wholeAddress(const TargetRegion &region, uint address);
    [[nodiscard]] const TargetRegion *regionOf(int id) const; ///< Null if there is none.
    /// Reads a device register in one access of 1, 2 or 4 bytes. False if that fails.
    bool readWord(quint64 address, int width, uint *value);
    bool writeWord(quint64 address, int width, uint value);
    /// Reads bytes of one region, up to the first that cannot be read.
    [[nodiscard]] QByteArray readBytes(quint64 address, int length);

private:
    /// Bytes that could be read.
    struct Range
    {
        quint64 address = 0;
        QByteArray bytes;
    };

    void readDevices(quint64 address, int width, const QDeadlineTimer &limit, MemoryBlock *cells);
    void readMemory(quint64 address, int width, MemoryBlock *cells);
    void setCells(const QList<Range> &ranges, quint64 address, int width, MemoryBlock *cells) const;
    [[nodiscard]] static QByteArray readCommand(quint64 address, int length);
    [[nodiscard]] static QList<Range> rangesIn(const MiRecord &answer);
    [[nodiscard]] QList<Range> readRanges(quint64 address, int length);
    bool writeBytes(quint64 address, const QByteArray &bytes);
    [[nodiscard]] QList<Range> readByGdb(quint64 address, int length);
    bool writeByGdb(quint64 address, const QByteArray &bytes);
    [[nodiscard]] static QByteArray bytesFrom(const QList<Range> &ranges, quint64 address, int length);
    [[nodiscard]] bool gdbReaches() const;
    [[nodiscard]] bool isBigEndian() const;

    GdbSession *const m_session;
    RegionTable m_table; ///< each region within 32 bits
    RegionTable m_wholeTable;
    int m_codeRegion = 0; ///< its id
    bool m_verify = false;
};

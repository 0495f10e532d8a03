#pragma once
#include "facet.h"
#include "imemory.h"
#include "imemoryverify.h"
#include "regiontable.h"
class GdbSession;

/// The target's memory. What an access came to is told from the table of regions, since the target's own word is not to
/// be relied on; blocks are split where regions end.
///
/// While the program runs memory is read where the target has a way, and no memory answers where it has none. The
/// host's addresses have 32 bits; a region of a wider target has one upper half for all of its addresses.
class MemoryAccess : public Facet<IMemory, IMemoryVerify>
{
public:
    MemoryAccess(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session) {}

    void setTable(const RegionTable &table);
    [[nodiscard]] const RegionTable &table() const { return m_table; }

    QList<MemoryRegion> regions() override;
    int read(int region, int mode, uint address, uint *value) override;
    int write(int region, int mode, uint address, uint value, bool flush) override;
    void readBlock(int region, int mode, uint address, int count, MemoryBlock &result) override;
    void writeBlock(int region, int mode, uint address, int count, MemoryBlock &cells, bool flush) override;
    bool verify() override { return m_verify; }
    void setVerify(bool verify) override { m_verify = verify; }

    /// Reads a device's register in one access of 1, 2 or 4 bytes; false if nothing answers.
    bool readWord(quint64 address, int width, uint *value);
    bool writeWord(quint64 address, int width, uint value);
    /// Reads bytes of one region, as many from the front as can be had.
    [[nodiscard]] QByteArray readBytes(quint64 address, int length);

private:
    [[nodiscard]] const TargetRegion *regionOf(int id) const;
    QByteArray readCells(const TargetRegion &region, quint64 address, int width, int count);
    bool writeBytes(quint64 address, const QByteArray &bytes);
    int writeCell(const TargetRegion *region, quint64 address, int width, uint value);
    [[nodiscard]] bool gdbReaches() const;
    [[nodiscard]] bool isBigEndian() const;

    GdbSession *const m_session;
    RegionTable m_table;
    bool m_verify = false;
};

/// Bytes of a word of a mode of IMemory; 0 for what is no mode.
[[nodiscard]] int memoryCellWidth(int mode);
[[nodiscard]] uint memoryCellValue(QByteArrayView bytes, bool bigEndian);
[[nodiscard]] QByteArray memoryCellBytes(uint value, int width, bool bigEndian);

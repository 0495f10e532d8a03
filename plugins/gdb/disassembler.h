#pragma once
#include "facet.h"
#include "idisassembly.h"
#include "idisassemblyaddress.h"
#include "idisassemblyfetch.h"
#include <memory>
#include <QHash>
#include <QMap>
#include <QStringList>
class GdbSession;
struct MiRecord;
class MemoryAccess;
class SymbolTable;

/// The program's instructions and the source lines above them.
///
/// Code is decoded in pieces that start at a function or a source line, so that instructions of different lengths are
/// decoded correctly. While a target runs whose memory cannot be read meanwhile, only instructions decoded before are
/// shown.
class Disassembler : public Facet<IDisassembly, IDisassemblyAddress, IDisassemblyFetch>
{
public:
    Disassembler(GdbSession *session, SymbolTable *symbols, MemoryAccess *memory, QUnknownInterface *whole);

    void reset(); ///< Called when another program is loaded.

    QString disassemble(uint address, int region) override;
    QString text(int index) override;
    QStringList sourceLines(int index) override;
    bool fetch(int index, int milliseconds) override;

    /// How many instructions are kept at least before all are forgotten; a search can pass through all of the memory.
    void setLimit(qsizetype instructions) { m_limit = instructions; }
    [[nodiscard]] qsizetype instructionCount() const { return m_instructions.size(); } ///< kept in memory

private:
    struct Instruction
    {
        QString bytes;
        QString text;
        QString place; ///< "main+4"
    };

    /// A piece of code that gdb is decoding.
    struct Request
    {
        quint64 start = 0;
        quint64 end = 0;
        int generation = 0;
        bool isAnswered = false;
        bool isLate = false; ///< gdb has not answered in time and is not waited for again
    };

    const Instruction *at(quint64 address);
    bool needsDecoding(quint64 address);
    void decode(quint64 address);
    void request(quint64 address);
    bool waitForRequest(int milliseconds);
    void take(const Request &request, const MiRecord &answer);
    quint64 endFor(quint64 start, quint64 address) const;
    quint64 startFor(quint64 address);
    QStringList sourceOf(const QString &file);
    quint64 addressOf(int index) const;

    GdbSession *const m_session;
    SymbolTable *const m_symbols;
    MemoryAccess *const m_memory;
    qsizetype m_limit = 200'000;
    int m_generation = -1;
    QMap<quint64, Instruction> m_instructions;
    QMap<quint64, quint64> m_decoded;   ///< from start address to end address of a piece
    quint64 m_lastEnd = 0;              ///< of the piece decoded last
    quint64 m_piece = 0;                ///< minimum number of bytes to decode
    std::shared_ptr<Request> m_request; ///< null while gdb decodes nothing
    QList<quint64> m_starts;            ///< addresses at which an instruction is known to start, ascending
    QHash<QString, QStringList> m_sources;
};

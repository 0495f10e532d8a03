#include "disassembler.h"
#include "gdbsession.h"
#include "memoryaccess.h"
#include "regularfile.h"
#include "symboltable.h"
#include <algorithm>
#include <QDeadlineTimer>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {
constexpr quint64 Piece = 256;         ///< minimum number of bytes to decode
constexpr quint64 LargestPiece = 4096; ///< the same for a caller that reads on and on, such as a search
constexpr quint64 Furthest = 2048;     ///< maximum distance in bytes between the start of decoding and an instruction
constexpr quint64 Nearby = 64;         ///< bytes decoded together before known instructions, if no start is known there
constexpr int AnswerLimit = 3000;      ///< milliseconds
constexpr qsizetype MnemonicWidth = 7; ///< columns, of most mnemonics
constexpr qsizetype CodeWidth = 32;    ///< columns, of most instructions with their operands
constexpr int MostSourceLines = 12;

QString rich(const QString &text)
{
    return text.toHtmlEscaped().replace(u'\t', u' ').replace(u' ', u"&nbsp;"_s);
}

/// Mnemonic and operands, which gdb separates by a tab, in columns.
QString inColumns(const QString &instruction)
{
    const qsizetype tab = instruction.indexOf(u'\t');
    return tab < 0 ? instruction
                   : instruction.first(tab).leftJustified(MnemonicWidth) + u' ' + instruction.sliced(tab + 1);
}

/// The columns for the bytes of most instructions.
qsizetype bytesWidth(const ElfImage &elf)
{
    const bool isLong = elf.machine == ElfImage::X86_64 || elf.machine == ElfImage::I386;
    return isLong ? 24 : 12;
}
} // namespace

Disassembler::Disassembler(GdbSession *session, SymbolTable *symbols, MemoryAccess *memory, QUnknownInterface *whole)
    : Facet(whole), m_session(session), m_symbols(symbols), m_memory(memory)
{}

void Disassembler::reset()
{
    m_instructions.clear();
    m_decoded.clear();
    m_starts.clear();
    m_sources.clear();
    m_request.reset();
    m_generation = -1;
}

quint64 Disassembler::addressOf(int index) const
{
    const TargetRegion *region = m_memory->codeRegion();
    return region ? region->start + uint(index) : uint(index);
}

QString Disassembler::disassemble(uint address, int region)
{
    const QList<TargetRegion> &regions = m_memory->table().regions();
    const quint64 base = region >= 0 && region < regions.size() ? regions[region].start & ~quint64(0xffffffff) : 0;
    const Instruction *instruction = at(base | address);
    return instruction ? rich(instruction->text) : QString();
}

QString Disassembler::text(int index)
{
    const quint64 address = addressOf(index);
    const Instruction *instruction = at(address);
    if (!instruction)
        return {};
    const QString digits = QString::number(address, 16).toUpper().rightJustified(8, u'0');
    const QString bytes = instruction->bytes.leftJustified(bytesWidth(m_session->program().elf)) + u' ';
    const QString code = inColumns(instruction->text);
    const QString line = u"<font color=\"#0000ff\">"_s + digits + u"</font>&nbsp;"_s;
    if (instruction->place.isEmpty())
        return line + rich(bytes + code);
    return line + rich(bytes + code.leftJustified(CodeWidth)) + u"<font color=\"#808080\">"_s
           + rich(u"  ; "_s + instruction->place) + u"</font>"_s;
}

QStringList Disassembler::sourceLines(int index)
{
    const quint64 address = addressOf(index);
    const LineTable &lines = m_symbols->lines();
    const LineTable::Row *row = lines.at(address);
    if (!row || row->address != address)
        return {};
    const QString file = lines.files().at(row->file);
    const LineTable::Row *before = address > 0 ? lines.at(address - 1) : nullptr;
    const QList<quint64> &functions = m_session->program().elf.functions;
    const bool begins = std::binary_search(functions.begin(), functions.end(), address);
    if (!begins && before && before->file == row->file && before->line == row->line)
        return {}; // shown above an instruction before
    const bool follows = !begins && before && before->file == row->file && before->line < row->line;
    const int first = follows ? std::max(before->line + 1, row->line - MostSourceLines + 1) : row->line;
    const QStringList source = sourceOf(file);
    QStringList result;
    for (int line = first; line <= row->line && line <= source.size(); ++line)
        result.append(u"<font color=\"#006000\">%1</font>"_s.arg(
            rich(QString::number(line).rightJustified(5) + u"  "_s + source[line - 1])));
    return result;
}

QStringList Disassembler::sourceOf(const QString &file)
{
    if (const auto known = m_sources.constFind(file); known != m_sources.constEnd())
        return *known;
    QFile source(m_symbols->localFile(file));
    QStringList lines;
    if (openRegularFile(source, QIODevice::ReadOnly | QIODevice::Text))
        lines = QString::fromUtf8(source.readAll()).split(u'\n');
    m_sources.insert(file, lines);
    return lines;
}

/// Whether gdb has to be asked for an address. It shows wrong instructions if the memory of a running target cannot be
/// read.
bool Disassembler::needsDecoding(quint64 address)
{
    if (!m_session->isAlive())
        return false;
    if (m_session->isStopped() && m_generation != m_session->generation()) {
        m_generation = m_session->generation();
        m_instructions.clear();
        m_decoded.clear();
    }
    const auto piece = m_decoded.upperBound(address);
    const bool isDecoded = piece != m_decoded.begin() && std::prev(piece).value() > address;
    return !isDecoded && (m_session->isStopped() || m_session->target()->readsWhileRunning());
}

const Disassembler::Instruction *Disassembler::at(quint64 address)
{
    if (needsDecoding(address))
        decode(address);
    const auto found = m_session->isAlive() ? m_instructions.constFind(address) : m_instructions.constEnd();
    return found == m_instructions.constEnd() ? nullptr : &*found;
}

/// Each answer adds some known addresses; the requested one may not be among them.
bool Disassembler::fetch(int index, int milliseconds)
{
    const QDeadlineTimer end(milliseconds);
    if (!m_symbols->fetchLines(milliseconds))
        return false;
    const quint64 address = addressOf(index);
    while (needsDecoding(address)) {
        if (!m_request)
            request(address);
        if (!waitForRequest(int(end.remainingTime())))
            return !m_session->isAlive();
    }
    return true;
}

/// The nearest address, up to @p address, at which an instruction is known to start.
quint64 Disassembler::startFor(quint64 address)
{
    if (m_starts.isEmpty()) {
        m_starts = m_symbols->lines().starts();
        if (!m_session->program().elf.relocatable)
            m_starts += m_session->program().elf.functions;
        std::sort(m_starts.begin(), m_starts.end());
    }
    quint64 start = address & ~quint64(3);
    const quint64 counter = m_session->isStopped() ? m_session->frame().address : 0; // also where symbols are missing
    const auto known = std::upper_bound(m_starts.begin(), m_starts.end(), address);
    const auto piece = m_decoded.upperBound(address);
    if (known != m_starts.begin() && address - *std::prev(known) <= Furthest)
        start = *std::prev(known);
    else if (counter != 0 && counter <= address && address - counter <= Furthest)
        start = counter;
    else if (piece != m_decoded.end() && piece.key() - start <= Nearby) // the caller reads backwards
        start = piece.key() - std::min(piece.key(), Nearby);
    if (piece != m_decoded.begin())
        start = std::max(start, std::prev(piece).value());
    return start;
}

quint64 Disassembler::endFor(quint64 start, quint64 address) const
{
    const auto known = std::lower_bound(m_starts.begin(), m_starts.end(), address + m_piece);
    quint64 end = known != m_starts.end() && *known - address <= Furthest ? *known : address + m_piece;
    if (const TargetRegion *region = m_memory->table().at(address))
        end = std::min(end, region->end());
    if (const auto next = m_decoded.upperBound(start); next != m_decoded.end())
        end = std::min(end, next.key());
    return end;
}

void Disassembler::request(quint64 address)
{
    const quint64 start = startFor(address);
    m_piece = start == m_lastEnd ? std::min(m_piece * 2, LargestPiece) : Piece;
    const auto request = std::make_shared<Request>();
    request->start = start;
    request->end = endFor(start, address);
    request->generation = m_session->generation();
    m_request = request;
    m_session->gdb()->send("-data-disassemble -s 0x" + QByteArray::number(start, 16) + " -e 0x"
                               + QByteArray::number(request->end, 16) + " -- 2",
                           [this, request](const MiRecord &answer) {
                               request->isAnswered = true;
                               if (request == m_request && request->generation == m_session->generation())
                                   take(*request, answer);
                           });
}

/// Whether the answer has arrived in time.
bool Disassembler::waitForRequest(int milliseconds)
{
    const std::shared_ptr<Request> request = m_request;
    m_session->gdb()->waitUntil([request] { return request->isAnswered; }, milliseconds);
    if (request->isAnswered && request == m_request)
        m_request.reset();
    return request->isAnswered;
}

/// A gdb that does not answer is waited for once.
void Disassembler::decode(quint64 address)
{
    while (needsDecoding(address)) {
        if (!m_request)
            request(address);
        if (waitForRequest(m_request->isLate ? 0 : AnswerLimit))
            continue;
        if (m_request)
            m_request->isLate = true;
        return;
    }
}

/// What cannot be read counts as decoded as well, so that it is tried once.
void Disassembler::take(const Request &request, const MiRecord &answer)
{
    if (m_instructions.size() > m_limit) {
        m_instructions.clear();
        m_decoded.clear();
    }
    quint64 end = request.end;
    for (const MiValue &row : answer.results[u"asm_insns"].items()) {
        const QString function = row.text(u"func-name");
        const QString offset = row.text(u"offset");
        m_instructions.insert(row.address(u"address"), {row.text(u"opcodes"), row.text(u"inst"),
                                                        offset == u"0"       ? function
                                                        : function.isEmpty() ? function
                                                                             : function + u'+' + offset});
        const auto length = quint64(row.text(u"opcodes").count(u' ') + 1);
        end = std::max(end, row.address(u"address") + length); // the last one may reach over the end
    }
    m_decoded.insert(request.start, end);
    m_lastEnd = end;
}

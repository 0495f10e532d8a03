#include "rttchannel.h"
#include "gdbsession.h"
#include "memorycell.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int Interval = 50;                       // milliseconds, as the next one
constexpr int SearchInterval = 500;                ///< between two searches
constexpr int MostByGdb = 256;                     ///< bytes of one access: the next command of the user waits for it
constexpr quint64 MostSearched = quint64(1) << 20; ///< of a region, if the program does not name its variables' place
constexpr qsizetype MostInput = 65536;
} // namespace

RttChannel::RttChannel(GdbSession *session) : m_session(session)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RttChannel::poll);
}

void RttChannel::begin(bool enabled, const RegionTable &regions)
{
    ++m_program;
    m_regions = regions;
    m_open = 0;
    m_idleAt = -1;
    m_complained = false;
    m_input.clear();
    searchAgain();
    findSpans();
    if (enabled)
        m_timer.start(0);
    else
        m_timer.stop();
}

/// The RAM in which the program has its variables; without a program all RAM.
void RttChannel::findSpans()
{
    m_spans.clear();
    for (const ElfImage::Segment &segment : m_session->program().elf.segments) {
        if (segment.writable && isRam(segment.address, segment.size))
            m_spans.append({{}, segment.address, segment.size, TargetRegion::Kind::Ram});
    }
    if (!m_spans.isEmpty())
        return;
    for (TargetRegion region : m_regions.regions()) {
        region.length = std::min(region.length, MostSearched);
        if (region.kind == TargetRegion::Kind::Ram)
            m_spans.append(region);
    }
}

void RttChannel::searchAgain()
{
    m_span = 0;
    m_position = 0;
    m_block = 0;
    m_hasInput = false;
}

bool RttChannel::canAccess() const
{
    const Target *target = m_session->target();
    return m_session->isAlive() && (target->readsDirectly() || target->readsWhileRunning() || m_session->isStopped());
}

int RttChannel::most() const
{
    const Target *target = m_session->target();
    return target->readsDirectly() ? target->largestAccess() : MostByGdb;
}

RttLayout RttChannel::layout() const
{
    const ElfImage &elf = m_session->program().elf;
    return {elf.wide ? 8 : 4, elf.bigEndian};
}

bool RttChannel::isRam(quint64 address, quint64 length) const
{
    const TargetRegion *region = m_regions.at(address);
    return region && region->kind == TargetRegion::Kind::Ram && length > 0 && length <= region->end() - address;
}

/// Does the next step. While the program is paused, nothing changes by itself.
void RttChannel::poll()
{
    if (!m_session->target())
        return; // the session has ended
    m_timer.start(Interval);
    const bool isIdle = m_session->isStopped() && m_idleAt == m_session->generation();
    if (m_open > 0 || !canAccess() || isIdle)
        return;
    m_soon = false;
    if (m_block == 0)
        search();
    else
        read(m_block, m_length, [this](const QByteArray &bytes) { transfer(bytes); });
}

/// There may be more to do.
void RttChannel::soon()
{
    m_soon = true;
    m_timer.start(0);
}

void RttChannel::answered()
{
    if (m_soon)
        m_timer.start(0);
}

// Search --------------------------------------------------------------------------------------------------------------

/// Pieces overlap, so that an identifier at the end of one is found.
void RttChannel::search()
{
    if (m_span >= m_spans.size()) {
        searchAgain();
        m_idleAt = m_searchedAt;
        m_timer.start(SearchInterval);
        return;
    }
    if (m_span == 0 && m_position == 0)
        m_searchedAt = m_session->generation();
    const TargetRegion &span = m_spans.at(m_span);
    const quint64 address = span.start + m_position;
    const auto length = int(std::min(quint64(most()), span.length - m_position));
    read(address, length, [this, address](const QByteArray &bytes) { searchIn(address, bytes); });
}

void RttChannel::searchIn(quint64 address, const QByteArray &bytes)
{
    const TargetRegion &span = m_spans.at(m_span);
    const qsizetype found = bytes.indexOf(rttIdentifier());
    const qsizetype overlap = rttIdentifier().size() - 1;
    if (found >= 0) {
        m_position += quint64(found) + 1;
        return examine(address + quint64(found));
    }
    m_position += quint64(bytes.size() - overlap);
    if (bytes.size() <= overlap || address + quint64(bytes.size()) >= span.end()) {
        ++m_span;
        m_position = 0;
    }
    soon();
}

void RttChannel::examine(quint64 address)
{
    soon();
    read(address, RttHeaderLength, [this, address](const QByteArray &header) {
        if (const std::optional<int> length = rttLength(header, layout()))
            read(address, *length, [this, address, length = *length](const QByteArray &bytes) {
                const std::optional<RttBlock> block = parseRttBlock(bytes, address, layout());
                if (block && isUsable(*block)) {
                    m_block = address;
                    m_length = length;
                    m_hasInput = block->down && block->down->size > 0;
                } else if (!std::exchange(m_complained, true)) {
                    Q_EMIT message(tr("The RTT control block at 0x%1 has invalid values and is not used.\n")
                                       .arg(QString::number(address, 16)),
                                   false);
                }
            });
    });
}

/// The program may have been reset, or may have overwritten it.
bool RttChannel::isUsable(const RttBlock &block) const
{
    const auto isGood = [this](const RttBuffer &buffer) {
        return buffer.isValid() && isRam(buffer.start, buffer.size);
    };
    return isGood(block.up) && (!block.down || block.down->size == 0 || isGood(*block.down));
}

// Transfer ------------------------------------------------------------------------------------------------------------

void RttChannel::transfer(const QByteArray &bytes)
{
    const std::optional<RttBlock> block = parseRttBlock(bytes, m_block, layout());
    if (!block || !isUsable(*block))
        return searchAgain();
    m_idleAt = m_session->generation();
    takeOutput(block->up);
    if (block->down && block->down->size > 0)
        sendInput(*block->down);
}

void RttChannel::takeOutput(const RttBuffer &up)
{
    const uint count = std::min(up.readable(), uint(most()));
    if (count == 0)
        return;
    m_idleAt = -1;
    soon();
    read(up.start + up.readOffset, int(count), [this, up](const QByteArray &bytes) {
        if (bytes.isEmpty())
            return;
        writeOffset(up.readOffsetAddress, up.advanced(up.readOffset, uint(bytes.size())),
                    [this, bytes] { Q_EMIT output(bytes); });
    });
}

void RttChannel::sendInput(const RttBuffer &down)
{
    const QByteArray bytes =
        m_input.first(std::min(m_input.size(), qsizetype(std::min(down.writable(), uint(most())))));
    if (bytes.isEmpty())
        return;
    m_idleAt = -1;
    soon();
    write(down.start + down.writeOffset, bytes, [this, down, count = bytes.size()] {
        writeOffset(down.writeOffsetAddress, down.advanced(down.writeOffset, uint(count)),
                    [this, count] { m_input.remove(0, count); });
    });
}

bool RttChannel::write(const QByteArray &bytes)
{
    if (m_block == 0 || !m_hasInput || !m_session->isAlive())
        return false;
    if (m_input.size() < MostInput)
        m_input += bytes;
    m_idleAt = -1;
    return true;
}

// Memory --------------------------------------------------------------------------------------------------------------

/// False for an answer to a question of an earlier program or session.
bool RttChannel::takeAnswer(int program)
{
    if (program != m_program || !m_session->target())
        return false;
    --m_open;
    return true;
}

void RttChannel::read(quint64 address, int length, const Bytes &done)
{
    const auto take = [this, done, program = m_program](const QByteArray &bytes) {
        if (!takeAnswer(program))
            return;
        done(bytes);
        answered();
    };
    ++m_open;
    if (m_session->target()->readsDirectly())
        return m_session->target()->readLater(address, length, take);
    m_session->gdb()->send("-data-read-memory-bytes 0x" + QByteArray::number(address, 16) + ' '
                               + QByteArray::number(length),
                           [take, address](const MiRecord &answer) {
                               const MiValue first = answer.results[u"memory"].items().value(0);
                               const bool isThere = answer.isDone() && first.address(u"begin") == address;
                               take(isThere ? QByteArray::fromHex(first.text(u"contents").toLatin1()) : QByteArray());
                           });
}

void RttChannel::writeOffset(quint64 address, uint offset, const std::function<void()> &done)
{
    write(address, memoryCellBytes(offset, 4, layout().bigEndian), done);
}

void RttChannel::write(quint64 address, const QByteArray &bytes, const std::function<void()> &done)
{
    const auto take = [this, done, program = m_program](bool success) {
        if (!takeAnswer(program))
            return;
        if (success)
            done();
        answered();
    };
    ++m_open;
    if (m_session->target()->readsDirectly())
        return m_session->target()->writeLater(address, bytes, take);
    m_session->gdb()->send("-data-write-memory-bytes 0x" + QByteArray::number(address, 16) + ' ' + bytes.toHex(),
                           [take](const MiRecord &answer) { take(answer.isDone()); });
}

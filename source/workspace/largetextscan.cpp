#include "largetextscan.h"
#include "largefile.h"

namespace {
constexpr qint64 BlockSize = 131'072; ///< bytes
constexpr qint64 Around = 8;          ///< bytes of a character, and of the one beside it

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}
} // namespace

LargeTextScan::LargeTextScan(std::shared_ptr<const LargeFile> file, qint64 size, const BytePattern &pattern)
    : m_file(std::move(file)), m_size(size), m_search(pattern)
{}

/// What is read around a block begins and ends between two characters: half a character would make all of it invalid.
void LargeTextScan::read(Block &block, qint64 from, qint64 end) const
{
    block.next = end;
    block.offset = std::max<qint64>(0, from - Around);
    const qint64 last = std::min(m_size, end + m_search.longestMatch() + Around);
    block.bytes.resize(last - block.offset);
    block.bytes.truncate(m_file->read(block.offset, block.bytes.data(), block.bytes.size()));
    qsizetype cut = 0;
    while (block.offset > 0 && cut < 3 && cut < block.bytes.size() && continuesCharacter(block.bytes[cut]))
        ++cut;
    block.bytes.remove(0, cut);
    block.offset += cut;
    qsizetype rest = block.bytes.size();
    if (last < m_size) {
        for (int i = 0; i < 3 && rest > 0 && continuesCharacter(block.bytes[rest - 1]); ++i)
            --rest;
        block.bytes.truncate(rest - 1); // without the first byte of that character
    }
    block.from = from - block.offset;
    block.end = std::min(end - block.offset, block.bytes.size());
}

std::optional<ByteMatch> LargeTextScan::next(qint64 from, qint64 end, const GoOn &goOn) const
{
    end = std::min(end, m_size);
    Block part;
    for (qint64 at = std::max<qint64>(0, from); at < end && goOn(at);) {
        read(part, at, std::min(at + BlockSize, end));
        if (const auto match = m_search.first(part.bytes, part.from, part.end))
            return ByteMatch{part.offset + match->offset, match->length};
        at = part.next;
    }
    return {};
}

std::optional<ByteMatch> LargeTextScan::previous(qint64 from, qint64 end, const GoOn &goOn) const
{
    Block part;
    for (qint64 at = std::min(end, m_size); at > from && goOn(at);) {
        read(part, std::max(from, at - BlockSize), at);
        if (const auto match = m_search.last(part.bytes, part.from, part.end))
            return ByteMatch{part.offset + match->offset, match->length};
        at = std::max(from, at - BlockSize);
    }
    return {};
}

void LargeTextScan::forEach(const GoOn &goOn, const Receiver &receive) const
{
    Block part;
    qint64 from = 0;
    while (from < m_size && goOn(from)) {
        read(part, from, std::min(from + BlockSize, m_size));
        from = part.next;
        m_search.forEach(part.bytes, part.from, part.end, ByteSearch::Step::BehindMatch, [&](ByteMatch match) {
            match.offset += part.offset;
            from = std::max(from, match.offset + match.length);
            receive(match);
            return true;
        });
    }
}

#include "lineindex.h"
#include <algorithm>
#include <bit>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {
constexpr int InLineBits = 10;
constexpr quint64 InLineMask = (1 << InLineBits) - 1;
static_assert(LongestLine <= qint64(InLineMask));
constexpr qint64 Word = 64; ///< bytes that are looked at in one go

constexpr qint64 pieces(qint64 length)
{
    return (length + LongestLine - 1) / LongestLine;
}

/// A bit for each line end among 64 bytes.
quint64 lineEnds(const char *bytes)
{
    quint64 found = 0;
#ifdef __SSE2__
    const __m128i wanted = _mm_set1_epi8('\n');
    for (int i = 0; i < 4; ++i) {
        const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i *>(bytes + std::ptrdiff_t(16) * i));
        found |= quint64(quint32(_mm_movemask_epi8(_mm_cmpeq_epi8(part, wanted)))) << 16 * i;
    }
#else
    for (int i = 0; i < Word; ++i)
        found |= quint64(bytes[i] == '\n') << i;
#endif
    return found;
}
} // namespace

void LineIndex::append(std::string_view bytes)
{
    while (!bytes.empty()) {
        const qint64 inBlock = m_size % BlockSize;
        if (inBlock == 0) {
            const auto inLine = quint64((m_size - m_lineStart) % LongestLine);
            m_blocks.push_back(quint64(linesBefore(m_size)) << InLineBits | inLine);
        }
        const qint64 length = std::min<qint64>(qint64(bytes.size()), BlockSize - inBlock);
        count(bytes.data(), length);
        bytes.remove_prefix(size_t(length));
    }
}

void LineIndex::count(const char *bytes, qint64 length)
{
    qint64 i = 0;
    for (; i + Word <= length; i += Word) {
        const quint64 ends = lineEnds(bytes + i);
        if (!ends)
            continue;
        lineEndsAt(m_size + i + std::countr_zero(ends)); // only the first of them can end a line of several pieces
        m_lines += std::popcount(ends) - 1;
        m_lineStart = m_size + i + Word - std::countl_zero(ends);
    }
    for (; i < length; ++i) {
        if (bytes[i] == '\n')
            lineEndsAt(m_size + i);
    }
    m_size += length;
}

void LineIndex::lineEndsAt(qint64 offset)
{
    m_lines += pieces(offset + 1 - m_lineStart);
    m_lineStart = offset + 1;
}

/// @p offset must not lie before the last line end.
qint64 LineIndex::linesBefore(qint64 offset) const
{
    return m_lines + pieces(offset - m_lineStart);
}

LineIndex::Start LineIndex::start(size_t block) const
{
    if (block >= m_blocks.size())
        return {};
    return {qint64(block) * BlockSize, qint64(m_blocks[block] >> InLineBits), int(m_blocks[block] & InLineMask)};
}

LineIndex::Start LineIndex::startForLine(qint64 line) const
{
    const auto isBehind = [](qint64 wanted, quint64 block) { return wanted < qint64(block >> InLineBits); };
    const auto behind = std::upper_bound(m_blocks.begin(), m_blocks.end(), line, isBehind);
    return start(behind == m_blocks.begin() ? 0 : size_t(behind - m_blocks.begin()) - 1);
}

LineIndex::Start LineIndex::startForOffset(qint64 offset) const
{
    const qint64 last = std::max<qint64>(0, qint64(m_blocks.size()) - 1);
    return start(size_t(std::clamp<qint64>(offset / BlockSize, 0, last)));
}

qint64 lineLength(std::string_view bytes, int inLine)
{
    const size_t longest = std::min(bytes.size(), size_t(LongestLine - inLine));
    const void *end = longest ? std::memchr(bytes.data(), '\n', longest) : nullptr;
    return end ? static_cast<const char *>(end) - bytes.data() + 1 : qint64(longest);
}

#include "bytesearch.h"
#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace {
bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// A rough frequency of a byte in logs and sources; greater values are more frequent.
int frequency(char byte)
{
    static constexpr std::string_view Common =
        " etaoinsrlhdcu0m1p2fg.-_,wyb34578k69:/=vT\"xES\tA\n()\r"; // first = most
    const size_t place = Common.find(byte);
    return place == std::string_view::npos ? 0 : int(Common.size() - place);
}

/// Whether a byte can be part of a word. All bytes of letters outside ASCII can.
bool isWordByte(char c)
{
    return isAsciiLetter(c) || (c >= '0' && c <= '9') || c == '_' || (static_cast<unsigned char>(c) & 0x80);
}

/// A character of a word in decoded text.
bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}
} // namespace

ByteSearch::ByteSearch(const BytePattern &pattern)
    : m_pattern(pattern)
    , m_isAscii(std::ranges::all_of(pattern.text, [](QChar c) { return c.unicode() < 0x80; }))
    , m_needle(pattern.text.toUtf8())
    , m_masks(m_needle.size(), '\0')
{
    if (!isEmpty())
        prepareNeedle();
}

void ByteSearch::prepareNeedle()
{
    for (qsizetype i = 0; i < m_needle.size() && !m_pattern.caseSensitive; ++i) {
        if (isAsciiLetter(m_needle[i])) {
            m_masks[i] = 0x20;
            m_needle[i] = char(m_needle[i] | 0x20);
        }
    }
    const auto isRarer = [this](qsizetype a, qsizetype b) { return frequency(m_needle[a]) < frequency(m_needle[b]); };
    for (qsizetype i = 1; i < m_needle.size(); ++i) {
        if (isRarer(i, m_rare))
            m_rare = i;
    }
    m_rare2 = m_rare == 0 ? m_needle.size() - 1 : 0;
    for (qsizetype i = 0; i < m_needle.size(); ++i) {
        if (i != m_rare && isRarer(i, m_rare2))
            m_rare2 = i;
    }
}

/// A character has 4 bytes at most, and another case of it may have more than itself.
qsizetype ByteSearch::longestMatch() const
{
    return m_isAscii ? m_needle.size() : m_pattern.text.size() * 4;
}

bool ByteSearch::matchesAt(const char *bytes) const
{
    for (qsizetype i = 0; i < m_needle.size(); ++i) {
        if ((bytes[i] | m_masks[i]) != m_needle[i])
            return false;
    }
    return true;
}

#ifdef __SSE2__
/// Compares two bytes of the needle with 32 places at a time; where both match, the whole needle. Ends at a match, or
/// at the first place that has less than 32 places before @p end.
__attribute__((target("avx2"))) qsizetype ByteSearch::findWide(const char *data, qsizetype from, qsizetype end) const
{
    const __m256i first = _mm256_set1_epi8(m_needle[m_rare]);
    const __m256i second = _mm256_set1_epi8(m_needle[m_rare2]);
    const __m256i firstMask = _mm256_set1_epi8(m_masks[m_rare]);
    const __m256i secondMask = _mm256_set1_epi8(m_masks[m_rare2]);
    const char *firstData = data + m_rare;
    const char *secondData = data + m_rare2;
    qsizetype i = from;
    for (; i + 32 <= end; i += 32) {
        const __m256i one = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(firstData + i));
        const __m256i two = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(secondData + i));
        const __m256i both = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_or_si256(one, firstMask), first),
                                              _mm256_cmpeq_epi8(_mm256_or_si256(two, secondMask), second));
        auto hits = unsigned(_mm256_movemask_epi8(both));
        for (; hits; hits &= hits - 1) {
            const qsizetype at = i + std::countr_zero(hits);
            if (matchesAt(data + at))
                return at;
        }
    }
    return i;
}
#endif

/// Compares two bytes of the needle with 16 places at a time; where both match, the whole needle.
qsizetype ByteSearch::findBytes(QByteArrayView bytes, qsizetype from) const
{
    const qsizetype end = bytes.size() - m_needle.size() + 1; // behind the last place of a match
    const char *data = bytes.data();
    qsizetype i = from;
#ifdef __SSE2__
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        i = findWide(data, from, end); // a match is found once more below
    const __m128i first = _mm_set1_epi8(m_needle[m_rare]);
    const __m128i second = _mm_set1_epi8(m_needle[m_rare2]);
    const __m128i firstMask = _mm_set1_epi8(m_masks[m_rare]);
    const __m128i secondMask = _mm_set1_epi8(m_masks[m_rare2]);
    const auto load = [data](qsizetype at) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(data + at)); };
    for (; i + 16 <= end; i += 16) {
        const __m128i one = _mm_cmpeq_epi8(_mm_or_si128(load(i + m_rare), firstMask), first);
        const __m128i two = _mm_cmpeq_epi8(_mm_or_si128(load(i + m_rare2), secondMask), second);
        auto hits = unsigned(_mm_movemask_epi8(_mm_and_si128(one, two)));
        for (; hits; hits &= hits - 1) {
            const qsizetype at = i + std::countr_zero(hits);
            if (matchesAt(data + at))
                return at;
        }
    }
#endif
    for (; i < end; ++i) {
        if (matchesAt(data + i))
            return i;
    }
    return -1;
}

bool ByteSearch::isWhole(QByteArrayView bytes, qsizetype match) const
{
    if (!m_pattern.wholeWord)
        return true;
    const qsizetype behind = match + m_needle.size();
    return (match == 0 || !isWordByte(bytes[match - 1])) && (behind >= bytes.size() || !isWordByte(bytes[behind]));
}

void ByteSearch::forEach(QByteArrayView bytes, qsizetype from, qsizetype end, Step step, const Receiver &receive) const
{
    if (isEmpty())
        return;
    if (!m_isAscii) {
        forEachDecoded(bytes, from, end, step, receive);
        return;
    }
    const QByteArrayView searched =
        bytes.first(std::min(bytes.size(), end + m_needle.size())); // and a byte for isWhole
    for (qsizetype at = findBytes(searched, from); at >= 0 && at < end;) {
        const bool counts = isWhole(bytes, at);
        if (counts && !receive({at, m_needle.size()}))
            return;
        at = findBytes(searched, at + (counts && step == Step::BehindMatch ? m_needle.size() : 1));
    }
}

/// Decodes all bytes at once or, if some are not valid UTF-8, line by line.
bool ByteSearch::forEachDecoded(QByteArrayView bytes, qsizetype from, qsizetype end, Step step,
                                const Receiver &receive) const
{
    const bool isUtf8 = bytes.isValidUtf8();
    if (!isUtf8 && bytes.indexOf('\n') >= 0 && bytes.indexOf('\n') < bytes.size() - 1) {
        qsizetype line = 0;
        while (line < bytes.size() && line < end) {
            const qsizetype lineEnd = bytes.indexOf('\n', line);
            const qsizetype next = lineEnd < 0 ? bytes.size() : lineEnd + 1;
            const auto inFile = [&](ByteMatch match) { return receive({match.offset + line, match.length}); };
            if (next > from
                && !forEachDecoded(bytes.sliced(line, next - line), std::max<qsizetype>(0, from - line), end - line,
                                   step, inFile))
                return false;
            line = next;
        }
        return true;
    }
    const QString text = isUtf8 ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
    const auto encodedSize = [&](QStringView part) { return isUtf8 ? part.toUtf8().size() : part.size(); };
    const auto sensitivity = m_pattern.caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    qsizetype known = 0; // a place in the text, and in the bytes
    qsizetype knownByte = 0;
    for (qsizetype at = 0; (at = text.indexOf(m_pattern.text, at, sensitivity)) >= 0;) {
        const qsizetype behind = at + m_pattern.text.size();
        knownByte += encodedSize(QStringView(text).sliced(known, at - known));
        known = at;
        const bool whole =
            (at == 0 || !isWordCharacter(text[at - 1])) && (behind >= text.size() || !isWordCharacter(text[behind]));
        const bool counts = knownByte >= from && (whole || !m_pattern.wholeWord);
        if (knownByte >= end)
            break;
        if (counts && !receive({knownByte, encodedSize(QStringView(text).sliced(at, m_pattern.text.size()))}))
            return false;
        at = counts && step == Step::BehindMatch ? behind : at + 1;
    }
    return true;
}

std::optional<ByteMatch> ByteSearch::first(QByteArrayView bytes, qsizetype from, qsizetype end) const
{
    std::optional<ByteMatch> found;
    forEach(bytes, from, end, Step::BehindMatch, [&](const ByteMatch &match) {
        found = match;
        return false;
    });
    return found;
}

std::optional<ByteMatch> ByteSearch::last(QByteArrayView bytes, qsizetype from, qsizetype end) const
{
    std::optional<ByteMatch> found;
    forEach(bytes, from, end, Step::NextByte, [&](const ByteMatch &match) {
        found = match;
        return true;
    });
    return found;
}

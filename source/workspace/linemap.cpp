#include "linemap.h"
#include "largefile.h"
#include <cmath>
#include <cstring>
#include <limits>

namespace {
constexpr qint64 CacheBlock = 65536; ///< bytes
constexpr size_t CachedBlocks = 16;
constexpr size_t Windows = 4; ///< for the top of the screen, the cursor and both ends of the selection
constexpr size_t LongestWindow = 8192;
constexpr qint64 Near = 1024;               ///< lines that are walked to instead of being looked up
constexpr qint64 FurthestLineEnd = 1 << 20; ///< bytes that are looked through for the start of a line
} // namespace

LineMap::LineMap(std::shared_ptr<const LargeFile> file, qint64 size, std::shared_ptr<const SharedIndex> index)
    : m_file(std::move(file)), m_index(std::move(index)), m_size(size)
{
    takeIndex();
}

void LineMap::setSize(qint64 size)
{
    m_size = size;
    m_blocks.clear();
    takeIndex();
}

void LineMap::takeIndex()
{
    {
        const QMutexLocker lock(&m_index->mutex);
        m_exactBytes = m_index->index.size();
        m_exactLines = m_index->index.lineCount();
    }
    m_windows.clear();
    m_lineCount = estimate();
}

int LineMap::estimate() const
{
    const double rest = double(std::max<qint64>(0, m_size - m_exactBytes)) / bytesPerLine();
    return int(std::min<double>(double(m_exactLines) + std::ceil(rest), std::numeric_limits<int>::max() - 1));
}

double LineMap::bytesPerLine() const
{
    if (m_exactLines > 0)
        return double(m_exactBytes) / double(m_exactLines);
    const QByteArray sample = m_file->read(0, std::min(m_size, CacheBlock));
    LineIndex lines;
    lines.append({sample.data(), size_t(sample.size())});
    return lines.lineCount() ? double(sample.size()) / double(lines.lineCount()) : 1;
}

/// The estimated length of a line whose number is not exact: that of the lines counted so far, or more if the numbers
/// would not suffice for the file.
double LineMap::bytesPerNumber() const
{
    return double(m_size - m_exactBytes) / double(std::max<qint64>(1, m_lineCount - m_exactLines));
}

QByteArray LineMap::bytesAt(qint64 offset, qint64 length)
{
    QByteArray bytes;
    length = std::min(length, m_size - offset);
    while (bytes.size() < length) {
        const qint64 at = offset + bytes.size();
        const qint64 block = at - at % CacheBlock;
        auto found = std::ranges::find(m_blocks, block, &Block::offset);
        if (found == m_blocks.end()) {
            if (m_blocks.size() >= CachedBlocks)
                m_blocks.pop_back();
            m_blocks.push_front({block, m_file->read(block, CacheBlock)});
            found = m_blocks.begin();
        }
        const QByteArray part = found->bytes.mid(at - block, length - bytes.size());
        if (part.isEmpty())
            break; // the file has become shorter
        bytes += part;
    }
    return bytes;
}

// Places of single lines --------------------------------------------------

qint64 LineMap::nextStart(qint64 start)
{
    const QByteArray bytes = bytesAt(start, LongestLine);
    return bytes.isEmpty() ? m_size : start + lineLength({bytes.data(), size_t(bytes.size())}, 0);
}

/// The start of the line of the file that contains the byte at @p offset; lines of the view are pieces of it. A line
/// that is too long to be read for that counts as one that begins with the file.
qint64 LineMap::startOfLineAround(qint64 offset)
{
    qint64 end = offset;
    while (end > 0 && offset - end < FurthestLineEnd) {
        const qint64 from = (end - 1) - (end - 1) % CacheBlock;
        const QByteArray bytes = bytesAt(from, end - from);
        if (const void *found = memrchr(bytes.data(), '\n', size_t(bytes.size())))
            return from + (static_cast<const char *>(found) - bytes.data()) + 1;
        end = from;
    }
    return 0;
}

qint64 LineMap::previousStart(qint64 start)
{
    const qint64 piece = std::max<qint64>(0, start - LongestLine);
    const QByteArray before = bytesAt(piece, start - piece);
    if (!before.endsWith('\n'))
        return piece + before.lastIndexOf('\n') + 1;
    const qint64 whole = startOfLineAround(start - 1);
    return whole + (start - 1 - whole) / LongestLine * LongestLine;
}

qint64 LineMap::exactStart(qint64 line)
{
    QMutexLocker lock(&m_index->mutex);
    const LineIndex::Start from = m_index->index.startForLine(line);
    lock.unlock();
    const QByteArray bytes = bytesAt(from.offset, LineIndex::BlockSize + LongestLine);
    std::string_view rest(bytes.data(), size_t(bytes.size()));
    qint64 number = from.inLine ? from.line - 1 : from.line;
    int inLine = from.inLine;
    while (number < line && !rest.empty()) { // the file may have become shorter
        rest.remove_prefix(size_t(lineLength(rest, inLine)));
        inLine = 0;
        ++number;
    }
    return from.offset + bytes.size() - qint64(rest.size());
}

int LineMap::exactLineAt(qint64 offset)
{
    QMutexLocker lock(&m_index->mutex);
    const LineIndex::Start from = m_index->index.startForOffset(offset);
    lock.unlock();
    const QByteArray bytes = bytesAt(from.offset, offset - from.offset + LongestLine);
    std::string_view rest(bytes.data(), size_t(bytes.size()));
    qint64 number = from.inLine ? from.line - 1 : from.line;
    int inLine = from.inLine;
    qint64 next = from.offset;
    while (!rest.empty()) {
        const qint64 length = lineLength(rest, inLine);
        next += length;
        if (next > offset)
            break;
        rest.remove_prefix(size_t(length));
        inLine = 0;
        ++number;
    }
    return int(std::min<qint64>(number, m_lineCount - 1));
}

// Windows -----------------------------------------------------------------

qint64 LineMap::startOf(int line)
{
    if (line < 0 || line >= m_lineCount)
        return m_size;
    Window *window = windowFor(line);
    if (!window)
        window = openWindow(line);
    while (line >= window->end() && extendDown(*window)) {
    }
    while (line < window->first && extendUp(*window)) {
    }
    return line >= window->first && line < window->end() ? window->starts[size_t(line - window->first)] : m_size;
}

/// A window with that line, or with one near it. Lines that have exact numbers do not follow from estimated ones.
LineMap::Window *LineMap::windowFor(qint64 line)
{
    const auto distance = [this, line](const Window &window) {
        if (line < m_exactLines && window.first >= m_exactLines)
            return std::numeric_limits<qint64>::max();
        return line < window.first ? (window.first - line) * 2 : std::max<qint64>(0, line - window.end() + 1);
    };
    const auto nearest = std::ranges::min_element(m_windows, {}, distance);
    if (nearest == m_windows.end() || distance(*nearest) > Near)
        return nullptr;
    std::rotate(m_windows.begin(), nearest, nearest + 1);
    return &m_windows.front();
}

LineMap::Window *LineMap::addWindow(qint64 line, qint64 start)
{
    if (m_windows.size() >= Windows)
        m_windows.pop_back();
    m_windows.push_front({line, {start}});
    return &m_windows.front();
}

LineMap::Window *LineMap::openWindow(qint64 line)
{
    if (line < m_exactLines) {
        const qint64 first = std::max<qint64>(0, line - 100); // one often scrolls up from there
        return addWindow(first, exactStart(first));
    }
    if (line < m_exactLines + Near && m_exactLines > 0)
        return addWindow(m_exactLines - 1, exactStart(m_exactLines - 1));
    if (m_exactLines == 0 && line < Near)
        return addWindow(0, 0);
    if (line >= m_lineCount - Near)
        return addWindow(m_lineCount - 1, previousStart(m_size));
    const auto offset = m_exactBytes + qint64(double(line - m_exactLines) * bytesPerNumber());
    qint64 start = std::min(offset, m_size - 1);
    const qint64 whole = startOfLineAround(start);
    start = whole + (start - whole) / LongestLine * LongestLine;
    return addWindow(line, start);
}

bool LineMap::extendDown(Window &window)
{
    const qint64 next = nextStart(window.starts.back());
    if (next >= m_size)
        return false;
    window.starts.push_back(next);
    if (window.starts.size() > LongestWindow) {
        window.starts.pop_front();
        ++window.first;
    }
    return true;
}

bool LineMap::extendUp(Window &window)
{
    if (window.first == 0 || window.starts.front() == 0)
        return false;
    window.starts.push_front(previousStart(window.starts.front()));
    --window.first;
    if (window.starts.size() > LongestWindow)
        window.starts.pop_back();
    return true;
}

int LineMap::lineAt(qint64 offset)
{
    offset = std::clamp<qint64>(offset, 0, std::max<qint64>(0, m_size - 1));
    if (offset < m_exactBytes)
        return exactLineAt(offset);
    for (Window &window : m_windows) {
        if (offset >= window.starts.front() && offset < nextStart(window.starts.back()))
            return int(window.first + (std::ranges::upper_bound(window.starts, offset) - window.starts.begin()) - 1);
    }
    const qint64 whole = startOfLineAround(offset);
    const qint64 start = whole + (offset - whole) / LongestLine * LongestLine;
    if (start < m_exactBytes) // the last counted line, which goes on behind the counted bytes
        return exactLineAt(offset);
    qint64 line =
        std::min<qint64>(m_exactLines + qint64(double(start - m_exactBytes) / bytesPerNumber()), m_lineCount - 1);
    if (m_size - start <= CacheBlock) { // counted back from the last line, which has the last number
        line = m_lineCount - 1;
        for (qint64 next = nextStart(start); next < m_size; next = nextStart(next))
            --line;
    }
    line = std::max(m_exactLines, line);
    addWindow(line, start);
    return int(line);
}

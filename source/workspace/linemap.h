#pragma once
#include "lineindex.h"
#include <deque>
#include <memory>
#include <QByteArray>
#include <QMutex>
class LargeFile;

/// The index of a file that a thread is still making.
struct SharedIndex
{
    mutable QMutex mutex;
    LineIndex index; ///< guarded by the mutex
};

/// Where each line of a large file begins.
///
/// As far as the index has come, the numbers are exact. Beyond it they are estimated from the length of the lines so
/// far: a number that is asked for there is tied to a line near that part of the file, and its neighbours follow in the
/// order of the file. So any part can be shown before the index is ready. Numbers keep their meaning until takeIndex().
class LineMap
{
public:
    LineMap(std::shared_ptr<const LargeFile> file, qint64 size, std::shared_ptr<const SharedIndex> index);

    /// Takes over how far the index has come. Lines that were numbered by an estimate may get other numbers.
    void takeIndex();
    void setSize(qint64 size); ///< The file has grown; the index goes on with the rest.
    [[nodiscard]] bool isExact() const { return m_exactBytes >= m_size; }
    [[nodiscard]] bool isExact(int line) const { return isExact() || line < m_exactLines; }
    [[nodiscard]] qint64 size() const { return m_size; }
    [[nodiscard]] qint64 exactBytes() const { return m_exactBytes; }

    [[nodiscard]] int lineCount() const { return m_lineCount; }
    /// Where a line begins; the end of the file if there is no such line.
    [[nodiscard]] qint64 startOf(int line);
    /// The line that holds the byte at @p offset.
    [[nodiscard]] int lineAt(qint64 offset);
    [[nodiscard]] QByteArray bytesAt(qint64 offset, qint64 length); ///< through a small cache

private:
    /// Neighbouring lines whose places are known.
    struct Window
    {
        qint64 first = 0; ///< the number of the first one
        std::deque<qint64> starts;
        [[nodiscard]] qint64 end() const { return first + qint64(starts.size()); }
    };

    [[nodiscard]] int estimate() const;
    [[nodiscard]] double bytesPerLine() const;
    [[nodiscard]] double bytesPerNumber() const;
    [[nodiscard]] Window *windowFor(qint64 line);
    Window *addWindow(qint64 line, qint64 start);
    [[nodiscard]] Window *openWindow(qint64 line);
    bool extendDown(Window &window);
    bool extendUp(Window &window);
    [[nodiscard]] qint64 exactStart(qint64 line);
    [[nodiscard]] int exactLineAt(qint64 offset);
    [[nodiscard]] qint64 startOfLineAround(qint64 offset);
    [[nodiscard]] qint64 previousStart(qint64 start);
    [[nodiscard]] qint64 nextStart(qint64 start);

    const std::shared_ptr<const LargeFile> m_file;
    const std::shared_ptr<const SharedIndex> m_index;
    qint64 m_size;
    qint64 m_exactBytes = 0; ///< how far the numbers are exact
    qint64 m_exactLines = 0; ///< the lines that begin there
    int m_lineCount = 0;
    std::deque<Window> m_windows; ///< the one used last comes first

    struct Block
    {
        qint64 offset;
        QByteArray bytes;
    };
    std::deque<Block> m_blocks; ///< the one used last comes first
};

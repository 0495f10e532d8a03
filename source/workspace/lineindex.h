#pragma once
#include <QtGlobal>
#include <string_view>
#include <vector>

// Lines of a large file as fgets() reads them into a buffer of 1,000 bytes: a line end closes one, and so do 999 bytes.

constexpr qint64 LongestLine = 999; ///< bytes, the line end included

/// Counts the lines of a file that is read once from its start to its end, and remembers how many there are before each
/// of its blocks. One number of 64 bits stands for all lines of a block, so the size of the index depends on the size
/// of the file, and not on how long its lines are.
class LineIndex
{
public:
    static constexpr qint64 BlockSize = 16384; ///< bytes

    /// Goes on with the next bytes of the file.
    void append(std::string_view bytes);

    [[nodiscard]] qint64 size() const { return m_size; } ///< bytes that have been counted
    /// The lines that begin in the counted bytes.
    [[nodiscard]] qint64 lineCount() const { return linesBefore(m_size); }
    [[nodiscard]] qint64 memory() const { return qint64(sizeof(quint64)) * qint64(m_blocks.capacity()); } ///< bytes

    /// A place from which lines can be counted on.
    struct Start
    {
        qint64 offset = 0; ///< where a block begins
        qint64 line = 0;   ///< the number of the first line that begins there or behind it
        int inLine = 0;    ///< bytes of the line that covers the offset which lie before it; 0 if a line begins there
    };
    /// The last block before which no more than @p line lines begin.
    [[nodiscard]] Start startForLine(qint64 line) const;
    [[nodiscard]] Start startForOffset(qint64 offset) const; ///< The block that holds an offset.

private:
    void count(const char *bytes, qint64 length);
    void lineEndsAt(qint64 offset);
    [[nodiscard]] qint64 linesBefore(qint64 offset) const;
    [[nodiscard]] Start start(size_t block) const;

    std::vector<quint64> m_blocks; ///< lines before the block, and in the lowest 10 bits Start::inLine
    qint64 m_size = 0;
    qint64 m_lines = 0;     ///< that begin before m_lineStart
    qint64 m_lineStart = 0; ///< behind the last line end
};

/// How many of @p bytes belong to the line whose first @p inLine bytes are before them, up to and including its line
/// end.
[[nodiscard]] qint64 lineLength(std::string_view bytes, int inLine);

#pragma once
#include "bytesearch.h"
#include <memory>
class LargeFile;

/// Looks for a text in a large file, block by block.
class LargeTextScan
{
public:
    /// Called before each block with the place that the search has reached; the result false ends the search.
    using GoOn = std::function<bool(qint64 offset)>;
    using Receiver = std::function<void(const ByteMatch &match)>;

    LargeTextScan(std::shared_ptr<const LargeFile> file, qint64 size, const BytePattern &pattern);

    /// The first match that begins between @p from and @p end.
    [[nodiscard]] std::optional<ByteMatch> next(qint64 from, qint64 end, const GoOn &goOn) const;
    /// The last match that begins between @p from and @p end.
    [[nodiscard]] std::optional<ByteMatch> previous(qint64 from, qint64 end, const GoOn &goOn) const;
    /// Reports every match; none of them overlap.
    void forEach(const GoOn &goOn, const Receiver &receive) const;

private:
    /// A block of the file with what is around it.
    struct Block
    {
        qint64 offset = 0; ///< of the bytes in the file
        QByteArray bytes;
        qsizetype from = 0; ///< where the block itself begins and ends
        qsizetype end = 0;
        qint64 next = 0; ///< where the block behind it begins
    };
    void read(Block &block, qint64 from, qint64 end) const; ///< into the memory that the last block has left

    const std::shared_ptr<const LargeFile> m_file;
    const qint64 m_size;
    const ByteSearch m_search;
};

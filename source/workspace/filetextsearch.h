#pragma once
#include "filesearch.h"
#include <atomic>
#include <functional>
#include <memory>
#include <QByteArray>
class ByteSearch;
class ExpressionSearch;
class ListedFile;
class RegularFile;
class SearchPattern;
struct TextPiece;

/// Finds the lines of one file after the other in which a text or an expression matches. An object is used by one
/// thread at a time.
class FileTextSearch
{
public:
    /// Gets the first match of a line, and returns whether to go on.
    using Receiver = std::function<bool(int line, const QString &text)>;
    enum class Result { Whole, TooManySteps, ReadError, NotOpened };

    explicit FileTextSearch(const FileSearch &search);
    ~FileTextSearch();
    Q_DISABLE_COPY_MOVE(FileTextSearch)

    [[nodiscard]] QString error() const; ///< of the expression; empty if there is none

    /// Searches a file; a binary file, one with a null byte near its start, gives one line that says so. A pipe or
    /// the like has no lines. Ends soon after @p running has become false, unless a read blocks.
    Result search(const ListedFile &listed, const std::atomic<bool> &running, const Receiver &receive);
    Result searchText(const QString &text, const std::atomic<bool> &running, const Receiver &receive);

private:
    struct Piece;
    void readBlock(RegularFile &file, qsizetype size);
    Result searchPieces(RegularFile &file, const std::atomic<bool> &running, const Receiver &receive);
    Result searchWide(RegularFile &file, const std::atomic<bool> &running, const Receiver &receive);
    bool searchBytes(const Piece &piece, const std::atomic<bool> &running, const Receiver &receive);
    bool searchDecoded(const TextPiece &piece, int firstLine, const std::atomic<bool> &running,
                       const Receiver &receive);
    [[nodiscard]] qsizetype findBytes(const Piece &piece, qsizetype from, const std::atomic<bool> &running);

    std::unique_ptr<SearchPattern> m_pattern;       ///< for decoded text
    std::unique_ptr<ByteSearch> m_text;             ///< for UTF-8; null for expressions
    std::unique_ptr<ExpressionSearch> m_expression; ///< for UTF-8; null for texts
    std::unique_ptr<ByteSearch> m_required;         ///< bytes without it have no match; null if there is none
    QByteArray m_bytes;                             ///< what is searched at a time; the memory is used for all files
    bool m_atEnd = false;                           ///< of the file
    bool m_isBroken = false;                        ///< by an error of the file
    bool m_hitLimit = false;                        ///< a search in the file or text needed too many steps
};

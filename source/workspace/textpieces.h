#pragma once
#include <atomic>
#include <optional>
#include <QByteArray>
#include <QString>
class QIODevice;

/// A part of a file's text. Its lines end in "\n".
struct TextPiece
{
    QString text;        ///< valid UTF-16
    bool isStart = true; ///< whether it begins with the start of a line
    bool isEnd = true;
};

/// Reads the text of a file of any size, decoded as by decodeText(), in pieces that fit into memory. A piece ends after
/// a line end, unless a line is longer than a piece.
class TextPieces
{
public:
    /// Reads about @p size bytes at a time, 8 at least.
    TextPieces(QIODevice &file, qsizetype size);

    /// The next piece; nothing after the last one, or when @p running becomes false.
    [[nodiscard]] std::optional<TextPiece> next(const std::atomic<bool> &running);

private:
    [[nodiscard]] bool fill(QByteArray &bytes, const std::atomic<bool> &running);
    [[nodiscard]] qsizetype lengthOfLines(QByteArrayView bytes) const;

    QIODevice &m_file;
    const qsizetype m_size;
    QByteArray m_rest;         ///< read already, part of the next piece
    QByteArray m_mark;         ///< prefix of every piece in encodings whose line end has two bytes
    bool m_atStart = true;     ///< of the file
    bool m_atLineStart = true; ///< the next piece
    bool m_atEnd = false;
};

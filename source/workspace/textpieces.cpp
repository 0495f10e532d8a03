#include "textpieces.h"
#include "textfile.h"
#include <QIODevice>

namespace {
constexpr qsizetype BlockSize = 1 << 20; ///< bytes between two checks for cancellation

QByteArray wideMark(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF") ? bytes.first(2) : QByteArray();
}

bool continuesCharacter(char byte)
{
    return (uchar(byte) & 0xC0) == 0x80;
}
} // namespace

TextPieces::TextPieces(QIODevice &file, qsizetype size) : m_file(file), m_size(size) {}

std::optional<TextPiece> TextPieces::next(const std::atomic<bool> &running)
{
    QByteArray bytes = std::exchange(m_rest, {});
    if (m_atEnd || !fill(bytes, running))
        return std::nullopt;
    const bool isFirst = std::exchange(m_atStart, false);
    if (isFirst)
        m_mark = wideMark(bytes);
    if (!m_atEnd) {
        const qsizetype length = lengthOfLines(bytes);
        m_rest = m_mark + bytes.sliced(length);
        bytes.truncate(length);
    }
    TextPiece piece{decodeText(bytes).text, false, m_atEnd};
    piece.isStart = m_atLineStart && (isFirst || !piece.text.isEmpty()); // no line starts behind the last line end
    m_atLineStart = piece.text.endsWith(u'\n');
    if (!m_mark.isEmpty() && !piece.text.isValidUtf16())
        piece.text = QString::fromUtf8(piece.text.toUtf8());
    return piece;
}

bool TextPieces::fill(QByteArray &bytes, const std::atomic<bool> &running)
{
    while (!m_atEnd && bytes.size() <= m_size && running) {
        const QByteArray block = m_file.read(std::min(m_size, BlockSize));
        m_atEnd = block.isEmpty();
        bytes += block;
    }
    return running;
}

/// Returns the part up to the last line end, or else up to the last character.
qsizetype TextPieces::lengthOfLines(QByteArrayView bytes) const
{
    if (m_mark.isEmpty()) {
        if (const qsizetype end = bytes.lastIndexOf('\n'); end >= 0)
            return end + 1;
        qsizetype last = bytes.size() - 1;
        while (last > bytes.size() - 4 && continuesCharacter(bytes[last]))
            --last;
        return last;
    }
    const QByteArrayView lineEnd(m_mark[0] == '\xFF' ? "\n\0" : "\0\n", 2);
    for (qsizetype end = bytes.lastIndexOf(lineEnd); end > 0; end = bytes.lastIndexOf(lineEnd, end - 1)) {
        if (end % 2 == 0)
            return end + 2;
    }
    return bytes.size() / 2 * 2;
}

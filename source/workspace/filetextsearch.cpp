#include "filetextsearch.h"
#include "bytesearch.h"
#include "expressionsearch.h"
#include "searchpattern.h"
#include "textfile.h"
#include "textpieces.h"
#include <QFile>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype PieceSize = 16 << 20;     ///< bytes
constexpr qsizetype BlockSize = 1 << 20;      ///< bytes read between two checks for cancellation
constexpr qsizetype BinaryStart = 8192;       ///< bytes in which a null byte makes a file binary
constexpr qsizetype LineLength = 100;         ///< characters reported of a line
constexpr qsizetype LastLineLength = 100'000; ///< of the last line without a line end: as much as a window can show

bool isWide(QByteArrayView start)
{
    return start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF");
}

/// Whether "\r" ends lines by itself, as on very old systems.
bool hasLoneReturns(QByteArrayView bytes)
{
    for (qsizetype at = bytes.indexOf('\r'); at >= 0; at = bytes.indexOf('\r', at + 1)) {
        if (at + 1 == bytes.size() || bytes[at + 1] != '\n')
            return true;
    }
    return false;
}

/// A character has 4 bytes at most.
QString lineText(QByteArrayView bytes, qsizetype length)
{
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    return decodeText(bytes.first(std::min(bytes.size(), length * 4)).toByteArray()).text.left(length);
}

/// Reports each line of @p text, the first of which has the number @p line, in which @p find has a match at or after a
/// place; the report gets how much of the line is wanted. The line that ends the text belongs to the next piece of the
/// file if it is empty, unless @p isEnd. Returns whether to go on.
template <typename View, typename Unit, typename Find, typename Report>
bool reportLines(View text, Unit newLine, bool isEnd, int line, const std::atomic<bool> &running, const Find &find,
                 const Report &report)
{
    qsizetype lastLineStart = 0;
    for (qsizetype at = find(0); at >= 0 && running;) {
        if (at == text.size() && !isEnd)
            return true;
        const qsizetype lineStart = at == 0 ? 0 : text.lastIndexOf(newLine, at - 1) + 1;
        line += int(text.sliced(lastLineStart, lineStart - lastLineStart).count(newLine));
        lastLineStart = lineStart;
        const qsizetype lineEnd = text.indexOf(newLine, at);
        const View found = text.sliced(lineStart, (lineEnd < 0 ? text.size() : lineEnd) - lineStart);
        if (!report(line, found, lineEnd < 0 && isEnd ? LastLineLength : LineLength))
            return false;
        if (lineEnd < 0)
            return true;
        at = find(lineEnd + 1); // one result for each line
    }
    return running;
}
} // namespace

/// A part of a file that begins with a line.
struct FileTextSearch::Piece
{
    QByteArrayView bytes;
    bool isStart = true; ///< of the file
    bool isEnd = true;
    int firstLine = 1;
};

FileTextSearch::FileTextSearch(const FileSearch &search)
{
    const bool isExpression = search.regExp || search.wholeWord;
    const QString text = search.wholeWord ? u"\\b"_s + search.text + u"\\b"_s : search.text;
    m_pattern = std::make_unique<SearchPattern>(text, search.caseSensitive, isExpression);
    if (isExpression)
        m_expression = std::make_unique<ExpressionSearch>(SearchPattern::accepted(text), search.caseSensitive);
    else
        m_bytes = std::make_unique<ByteSearch>(BytePattern{text, search.caseSensitive, false});
}

FileTextSearch::~FileTextSearch() = default;

QString FileTextSearch::error() const
{
    return m_pattern->error();
}

FileTextSearch::Result FileTextSearch::search(const QString &path, const std::atomic<bool> &running,
                                              const Receiver &receive)
{
    QFile file(path);
    if (!m_pattern->isValid() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Result::Whole;
    const QByteArray start = file.read(std::clamp<qsizetype>(file.size() + 1, BinaryStart, BlockSize));
    if (!isWide(start) && !start.first(std::min(start.size(), BinaryStart)).contains('\0'))
        return searchPieces(file, start, running, receive);

    const bool isBinary = !isWide(start);
    const auto once = [&](int, const QString &) {
        receive(1, QObject::tr("Binary file matches"));
        return false;
    };
    if (isBinary)
        return searchPieces(file, start, running, once);
    file.seek(0);
    TextPieces pieces(file, PieceSize);
    int firstLine = 1;
    while (const std::optional<TextPiece> piece = pieces.next(running)) {
        if (!searchDecoded(*piece, firstLine, running, receive))
            break;
        firstLine += int(piece->text.count(u'\n'));
    }
    return m_pattern->hitStepLimit() ? Result::TooManySteps : Result::Whole;
}

FileTextSearch::Result FileTextSearch::searchText(const QString &text, const std::atomic<bool> &running,
                                                  const Receiver &receive)
{
    searchDecoded({text}, 1, running, receive);
    return m_pattern->hitStepLimit() ? Result::TooManySteps : Result::Whole;
}

FileTextSearch::Result FileTextSearch::searchPieces(QIODevice &file, QByteArray first, const std::atomic<bool> &running,
                                                    const Receiver &receive)
{
    QByteArray bytes = std::move(first);
    Piece piece;
    for (bool atEnd = false; !atEnd && running;) {
        while (!atEnd && bytes.size() < PieceSize && running) {
            const QByteArray block = file.read(BlockSize);
            atEnd = block.isEmpty();
            bytes += block;
        }
        const qsizetype lineEnd = atEnd ? -1 : bytes.lastIndexOf('\n');
        const qsizetype length = lineEnd < 0 ? bytes.size() : lineEnd + 1; // a longer line is cut
        piece.bytes = QByteArrayView(bytes).first(length);
        piece.isEnd = atEnd;
        if (!searchBytes(piece, running, receive))
            break;
        piece.isStart = false;
        if (!atEnd)
            piece.firstLine += int(piece.bytes.count('\n'));
        bytes.remove(0, length);
    }
    if (m_pattern->hitStepLimit() || (m_expression && m_expression->hitStepLimit()))
        return Result::TooManySteps;
    return static_cast<QFile &>(file).error() == QFile::NoError ? Result::Whole : Result::ReadError;
}

qsizetype FileTextSearch::findBytes(const Piece &piece, qsizetype from, const std::atomic<bool> &running) const
{
    if (m_bytes) {
        const auto match = m_bytes->first(piece.bytes, from, piece.bytes.size());
        return match ? qsizetype(match->offset) : -1;
    }
    return m_expression->find(piece.bytes, from, piece.isStart, piece.isEnd, [&running] { return running.load(); });
}

bool FileTextSearch::searchBytes(const Piece &piece, const std::atomic<bool> &running, const Receiver &receive) const
{
    const QByteArrayView bytes = piece.bytes;
    if (hasLoneReturns(bytes) || (m_expression && !bytes.isValidUtf8()))
        return searchDecoded({decodeText(bytes.toByteArray()).text, piece.isStart, piece.isEnd}, piece.firstLine,
                             running, receive);
    const auto find = [&](qsizetype from) { return findBytes(piece, from, running); };
    const auto report = [&](int line, QByteArrayView found, qsizetype length) {
        return receive(line, lineText(found, length));
    };
    return reportLines(bytes, '\n', piece.isEnd, piece.firstLine, running, find, report);
}

bool FileTextSearch::searchDecoded(const TextPiece &piece, int firstLine, const std::atomic<bool> &running,
                                   const Receiver &receive) const
{
    const auto find = [&](qsizetype from) { return m_pattern->find(piece, from, running); };
    const auto report = [&](int line, QStringView found, qsizetype length) {
        return receive(line, found.left(length).toString());
    };
    return reportLines(QStringView(piece.text), u'\n', piece.isEnd, firstLine, running, find, report);
}

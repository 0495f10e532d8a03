#include "filetextsearch.h"
#include "bytesearch.h"
#include "expressionsearch.h"
#include "regularfile.h"
#include "requiredtext.h"
#include "searchpattern.h"
#include "textfile.h"
#include "textpieces.h"
#include <algorithm>
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

/// Whether a text has the same bytes in all encodings but the wide ones, and no line end.
bool isPrintable(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7F; });
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

/// A part of a file; all but those of a line that is longer than a piece begin with a line.
struct FileTextSearch::Piece
{
    QByteArrayView bytes;
    bool isStart = true; ///< whether it begins with the start of a line
    bool isEnd = true;
    int firstLine = 1;
};

FileTextSearch::FileTextSearch(const FileSearch &search)
{
    const bool isExpression = search.regExp || search.wholeWord;
    const QString text = search.wholeWord ? u"\\b"_s + search.text + u"\\b"_s : search.text;
    m_pattern = std::make_unique<SearchPattern>(text, search.caseSensitive, isExpression);
    QString required = text;
    if (isExpression) {
        const QString accepted = SearchPattern::accepted(text);
        m_expression = std::make_unique<ExpressionSearch>(accepted, search.caseSensitive);
        required = requiredText(accepted, search.caseSensitive);
    } else {
        m_text = std::make_unique<ByteSearch>(BytePattern{text, search.caseSensitive, false});
    }
    if (!required.isEmpty() && isPrintable(required))
        m_required = std::make_unique<ByteSearch>(BytePattern{required, search.caseSensitive, false});
}

FileTextSearch::~FileTextSearch() = default;

QString FileTextSearch::error() const
{
    return m_pattern->error();
}

FileTextSearch::Result FileTextSearch::search(const ListedFile &listed, const std::atomic<bool> &running,
                                              const Receiver &receive)
{
    RegularFile file(listed);
    if (!file.isOpen())
        return file.isUnreadable() ? Result::NotOpened : Result::Whole;
    m_bytes.resize(0);
    m_bytes.reserve(std::min<qsizetype>(file.size(), PieceSize) + BlockSize);
    m_atEnd = m_isBroken = m_hitLimit = false;
    // One byte more than the file has, so that its end is seen by the first read.
    while (!m_atEnd && m_bytes.size() < BinaryStart && running)
        readBlock(file, std::clamp<qsizetype>(file.size() + 1, BinaryStart, BlockSize));
    if (isWide(m_bytes))
        return searchWide(file, running, receive);
    const auto once = [&](int, const QString &) {
        receive(1, QObject::tr("Binary file matches"));
        return false;
    };
    const bool isBinary = QByteArrayView(m_bytes).first(std::min(m_bytes.size(), BinaryStart)).contains('\0');
    return searchPieces(file, running, isBinary ? Receiver(once) : receive);
}

/// Appends to the bytes to be searched, with few calls of the system for a small file.
void FileTextSearch::readBlock(RegularFile &file, qsizetype size)
{
    const qsizetype before = m_bytes.size();
    m_bytes.resize(before + size);
    const qsizetype count = file.read(m_bytes.data() + before, size);
    m_bytes.resize(before + std::max<qsizetype>(count, 0));
    m_isBroken = count < 0;
    m_atEnd = count <= 0 || (count < size && m_bytes.size() == file.size());
}

FileTextSearch::Result FileTextSearch::searchWide(RegularFile &file, const std::atomic<bool> &running,
                                                  const Receiver &receive)
{
    QFile device;
    if (!device.open(file.descriptor(), QIODevice::ReadOnly | QIODevice::Unbuffered) || !device.seek(0))
        return Result::ReadError;
    TextPieces pieces(device, PieceSize);
    int firstLine = 1;
    while (const std::optional<TextPiece> piece = pieces.next(running)) {
        if (!searchDecoded(*piece, firstLine, running, receive))
            break;
        firstLine += int(piece->text.count(u'\n'));
    }
    return m_hitLimit ? Result::TooManySteps : Result::Whole;
}

FileTextSearch::Result FileTextSearch::searchText(const QString &text, const std::atomic<bool> &running,
                                                  const Receiver &receive)
{
    m_hitLimit = false;
    searchDecoded({text}, 1, running, receive);
    return m_hitLimit ? Result::TooManySteps : Result::Whole;
}

FileTextSearch::Result FileTextSearch::searchPieces(RegularFile &file, const std::atomic<bool> &running,
                                                    const Receiver &receive)
{
    Piece piece;
    bool isLineStart = true;
    for (bool isEnd = false; !isEnd && running;) {
        while (!m_atEnd && m_bytes.size() < PieceSize && running)
            readBlock(file, BlockSize);
        isEnd = m_atEnd;
        const qsizetype lineEnd = isEnd ? -1 : m_bytes.lastIndexOf('\n');
        const qsizetype length = lineEnd < 0 ? m_bytes.size() : lineEnd + 1; // a longer line is cut
        piece.bytes = QByteArrayView(m_bytes).first(length);
        piece.isStart = isLineStart && (length > 0 || piece.firstLine == 1); // none behind the last line end
        piece.isEnd = isEnd;
        if (!searchBytes(piece, running, receive))
            break;
        isLineStart = lineEnd >= 0;
        if (!isEnd) {
            piece.firstLine += int(piece.bytes.count('\n'));
            m_bytes.remove(0, length);
        }
    }
    if (m_hitLimit)
        return Result::TooManySteps;
    return m_isBroken ? Result::ReadError : Result::Whole;
}

qsizetype FileTextSearch::findBytes(const Piece &piece, qsizetype from, const std::atomic<bool> &running)
{
    if (m_text) {
        const auto match = m_text->first(piece.bytes, from, piece.bytes.size());
        return match ? qsizetype(match->offset) : -1;
    }
    const qsizetype found =
        m_expression->find(piece.bytes, from, piece.isStart, piece.isEnd, [&running] { return running.load(); });
    m_hitLimit = m_hitLimit || m_expression->hitStepLimit();
    return found;
}

bool FileTextSearch::searchBytes(const Piece &piece, const std::atomic<bool> &running, const Receiver &receive)
{
    const QByteArrayView bytes = piece.bytes;
    if (m_required && !m_required->first(bytes, 0, bytes.size()))
        return running;
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
                                   const Receiver &receive)
{
    const auto find = [&](qsizetype from) {
        const qsizetype found = m_pattern->find(piece, from, running);
        m_hitLimit = m_hitLimit || m_pattern->hitStepLimit();
        return found;
    };
    const auto report = [&](int line, QStringView found, qsizetype length) {
        return receive(line, found.left(length).toString());
    };
    return reportLines(QStringView(piece.text), u'\n', piece.isEnd, firstLine, running, find, report);
}

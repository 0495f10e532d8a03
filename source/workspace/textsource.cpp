#include "textsource.h"
#include "standins.h"
#include <QStringConverter>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {
struct ByteKinds
{
    bool beyondAscii = false;
    bool returns = false;
};

/// Blocks of a constant size are compared many bytes at a time.
ByteKinds kindsOf(QByteArrayView bytes)
{
    constexpr qsizetype Block = 4096;
    quint8 all = 0;
    quint8 returns = 0;
    const auto *next = reinterpret_cast<const quint8 *>(bytes.data());
    const auto *end = next + bytes.size();
    for (; end - next >= Block; next += Block) {
        for (qsizetype i = 0; i < Block; ++i) {
            all |= next[i];
            returns |= quint8(next[i] == '\r');
        }
    }
    for (; next != end; ++next) {
        all |= *next;
        returns |= quint8(*next == '\r');
    }
    return {all >= 0x80, returns != 0};
}

/// Whether a text in UTF-8 has U+2029, U+FDD0, U+FDD1 or a neighbour of these.
bool mayNeedStandIns(const QByteArray &bytes)
{
    const std::string_view text(bytes.constData(), size_t(bytes.size()));
    return text.find("\xE2\x80\xA9") != text.npos || text.find("\xEF\xB7") != text.npos;
}
} // namespace

TextSource::TextSource(const QByteArray &bytes, StandIns &standIns)
{
    m_format = markedFormat(bytes);
    m_next = byteOrderMark(m_format).size();
    const ByteKinds kinds = kindsOf(bytes);
    m_hasReturns = kinds.returns;
    if (m_format.encoding == TextFileFormat::Utf8 && kinds.beyondAscii
        && !QByteArrayView(bytes).sliced(m_next).isValidUtf8()) {
        m_format = newTextFileFormat();
        m_format.encoding = TextFileFormat::Latin1;
        m_next = 0;
    }
    const bool isUtf8 = m_format.encoding == TextFileFormat::Utf8;
    if (m_format.encoding == TextFileFormat::Latin1 || (isUtf8 && (!kinds.beyondAscii || !mayNeedStandIns(bytes)))) {
        m_bytes = bytes;
        findLineEnds();
        return;
    }
    DecodedText decoded = decodeText(bytes);
    standIns.putInto(decoded.text);
    m_format = decoded.format;
    m_text = decoded.text;
    m_isDecoded = true;
    m_next = 0;
}

void TextSource::findLineEnds()
{
    LineEndCount count;
    if (!m_hasReturns) {
        count.feeds = m_bytes.contains('\n') ? 1 : 0;
    } else {
        char previous = 0;
        for (const char c : std::as_const(m_bytes)) {
            count.returns += c == '\r' ? 1 : 0;
            count.feeds += c == '\n' ? 1 : 0;
            count.pairs += c == '\n' && previous == '\r' ? 1 : 0;
            previous = c;
        }
    }
    setLineEnds(m_format, count);
}

int TextSource::percent() const
{
    return size() == 0 ? 100 : int(m_next * 100 / size());
}

QString TextSource::take(qsizetype length)
{
    const qsizetype begin = m_next;
    const qsizetype from = begin + std::max<qsizetype>(length, 1) - 1;
    const qsizetype lineEnd = from >= size() ? -1
                              : m_isDecoded  ? m_text.indexOf(u'\n', from)
                                             : m_bytes.indexOf('\n', from);
    m_next = lineEnd < 0 ? size() : lineEnd + 1;
    if (m_isDecoded)
        return m_text.sliced(begin, m_next - begin);
    const QByteArrayView part = QByteArrayView(m_bytes).sliced(begin, m_next - begin);
    QString text;
    if (m_format.encoding == TextFileFormat::Latin1) {
        text = QString::fromLatin1(part);
    } else {
        QStringDecoder decoder(QStringConverter::Utf8, // a mark at the start of a part belongs to the text
                               QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
        text = decoder(part);
    }
    if (m_hasReturns) {
        text.replace(u"\r\n"_s, u"\n"_s);
        text.replace(u'\r', u'\n');
    }
    return text;
}

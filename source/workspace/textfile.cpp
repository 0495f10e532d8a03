#include "textfile.h"
#include <QFile>
#include <QFileInfo>
#include <QStringConverter>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 BinaryStart = 8000; ///< bytes; where other files than texts have NUL bytes as a rule

QStringConverter::Encoding converterEncoding(TextFileFormat::Encoding encoding)
{
    switch (encoding) {
    case TextFileFormat::Utf16LE:
        return QStringConverter::Utf16LE;
    case TextFileFormat::Utf16BE:
        return QStringConverter::Utf16BE;
    case TextFileFormat::Latin1:
        return QStringConverter::Latin1;
    case TextFileFormat::Utf8:
        break;
    }
    return QStringConverter::Utf8;
}

/// Whether decoded text encodes to the original bytes.
bool keepsBytes(const QByteArray &bytes, qsizetype mark, const QString &text, TextFileFormat::Encoding encoding)
{
    if (encoding == TextFileFormat::Utf8)
        return true; // the decoder finds every invalid byte
    QStringEncoder encoder(converterEncoding(encoding));
    return QByteArray(encoder(text)) == QByteArrayView(bytes).sliced(mark);
}

void normaliseLineEnds(QString &text, TextFileFormat &format)
{
    const qsizetype returns = text.count(u'\r');
    if (returns == 0) {
        setLineEnds(format, {0, text.contains(u'\n') ? 1 : 0, 0});
        return;
    }
    setLineEnds(format, {returns, text.count(u'\n'), text.count(u"\r\n"_s)});
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
}
} // namespace

TextFileFormat newTextFileFormat()
{
    TextFileFormat format;
#ifdef Q_OS_WIN
    format.crlf = true;
#endif
    return format;
}

QByteArrayView byteOrderMark(const TextFileFormat &format)
{
    if (!format.byteOrderMark)
        return {};
    switch (format.encoding) {
    case TextFileFormat::Utf8:
        return "\xEF\xBB\xBF";
    case TextFileFormat::Utf16LE:
        return "\xFF\xFE";
    case TextFileFormat::Utf16BE:
        return "\xFE\xFF";
    case TextFileFormat::Latin1:
        break;
    }
    return {};
}

TextFileFormat markedFormat(const QByteArray &bytes)
{
    for (const auto encoding : {TextFileFormat::Utf8, TextFileFormat::Utf16LE, TextFileFormat::Utf16BE}) {
        TextFileFormat format = newTextFileFormat();
        format.encoding = encoding;
        format.byteOrderMark = true;
        if (bytes.startsWith(byteOrderMark(format)))
            return format;
    }
    return newTextFileFormat();
}

void setLineEnds(TextFileFormat &format, const LineEndCount &count)
{
    const bool uniform = count.pairs == count.returns && (count.returns == 0 || count.pairs == count.feeds);
    format.mixed = !uniform;
    if (count.returns > 0)
        format.crlf = uniform || newTextFileFormat().crlf;
    else
        format.crlf = newTextFileFormat().crlf && count.feeds == 0;
}

DecodedText decodeText(const QByteArray &bytes)
{
    DecodedText result;
    result.format = markedFormat(bytes);
    const qsizetype mark = byteOrderMark(result.format).size();
    QStringDecoder decoder(converterEncoding(result.format.encoding),
                           QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
    result.text = decoder(QByteArrayView(bytes).sliced(mark));
    if (decoder.hasError() || !keepsBytes(bytes, mark, result.text, result.format.encoding)) {
        result.format = newTextFileFormat();
        result.format.encoding = TextFileFormat::Latin1;
        result.text = QString::fromLatin1(bytes);
    }
    normaliseLineEnds(result.text, result.format);
    return result;
}

bool isBinaryFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false; // reading a pipe or a device may never end
    const QByteArray start = file.read(BinaryStart);
    return start.contains('\0') && !markedFormat(start).byteOrderMark;
}

QByteArray encodeText(QStringView text, TextFileFormat &format)
{
    const auto beyondLatin1 = [](QChar c) { return c.unicode() > 0xFF; };
    if (format.encoding == TextFileFormat::Latin1 && std::any_of(text.begin(), text.end(), beyondLatin1))
        format.encoding = TextFileFormat::Utf8;
    QString withLineEnds;
    if (format.crlf) {
        withLineEnds = text.toString().replace(u'\n', u"\r\n"_s);
        text = withLineEnds;
    }
    QStringEncoder encoder(converterEncoding(format.encoding));
    QByteArray bytes = byteOrderMark(format).toByteArray();
    bytes += QByteArray(encoder(text));
    return bytes;
}

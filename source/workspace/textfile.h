#pragma once
#include "wholefile.h"
#include <QByteArray>
#include <QString>

/// The encoding and line ends of a file: as found when it was read, or the default for new files.
struct TextFileFormat
{
    enum Encoding { Utf8, Utf16LE, Utf16BE, Latin1 };

    Encoding encoding = Utf8;
    bool byteOrderMark = false;
    bool crlf = false;  ///< lines end in "\r\n"
    bool mixed = false; ///< not all lines of the file end so; they will when it is saved

    bool operator==(const TextFileFormat &other) const = default;
};

/// The format of new files on this platform.
[[nodiscard]] TextFileFormat newTextFileFormat();

/// The bytes before the text of a file in @p format; none if it has no byte order mark.
[[nodiscard]] QByteArrayView byteOrderMark(const TextFileFormat &format);
/// The format of a file by its byte order mark, UTF-8 without one. Its line ends are those of the platform.
[[nodiscard]] TextFileFormat markedFormat(const QByteArray &bytes);

/// How often the characters of line ends are in a text.
struct LineEndCount
{
    qsizetype returns = 0; ///< "\r"
    qsizetype feeds = 0;   ///< "\n"; it need not be exact without "\r"
    qsizetype pairs = 0;   ///< "\r\n"
};

/// Sets how lines end in the format of such a text.
void setLineEnds(TextFileFormat &format, const LineEndCount &count);

struct DecodedText
{
    QString text; ///< lines end in "\n"
    TextFileFormat format;
};

/// Decodes @p bytes by their byte order mark, otherwise as UTF-8. Bytes that are not valid are decoded as Latin-1, in
/// which all bytes are valid. The format is crlf if all lines end in "\r\n"; for mixed line ends it is that of the
/// platform.
[[nodiscard]] DecodedText decodeText(const QByteArray &bytes);

/// Whether the file @p path has NUL bytes near its beginning, and no byte order mark that explains them. Such a file
/// would not keep its bytes if it was edited as a text.
[[nodiscard]] bool isBinaryFile(const QString &path);

/// Encodes @p text in @p format. A text with characters that are not in Latin-1 becomes UTF-8, and so does @p format.
[[nodiscard]] QByteArray encodeText(QStringView text, TextFileFormat &format);

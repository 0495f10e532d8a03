#pragma once
#include "wholefile.h"
#include <QByteArray>
#include <QString>

/// How the text of a file is written in bytes: what a file had when it was read, or the default of new files.
struct TextFileFormat
{
    enum Encoding { Utf8, Utf16LE, Utf16BE, Latin1 };

    Encoding encoding = Utf8;
    bool byteOrderMark = false;
    bool crlf = false; ///< lines end in "\r\n"

    bool operator==(const TextFileFormat &other) const = default;
};

/// The format of new files on this platform.
[[nodiscard]] TextFileFormat newTextFileFormat();

struct DecodedText
{
    QString text; ///< lines end in "\n"
    TextFileFormat format;
};

/// Reads @p bytes as the encoding that their byte order mark tells, or as UTF-8. Bytes that are not valid in it are
/// read as Latin-1, which any bytes are. Where all lines end in "\r\n" the format says so; where line ends are mixed it
/// has the platform's.
[[nodiscard]] DecodedText decodeText(const QByteArray &bytes);

/// Writes @p text in @p format. A text that Latin-1 has no characters for becomes UTF-8, and @p format says so.
[[nodiscard]] QByteArray encodeText(QStringView text, TextFileFormat &format);

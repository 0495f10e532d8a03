#pragma once
#include "textfile.h"
class StandIns;

/// The text of a file, decoded as by decodeText(), but in parts when they are needed: the first lines of a large file
/// are there at once.
class TextSource
{
public:
    TextSource() = default;
    /// Puts @p standIns for the characters of the text that need some.
    TextSource(const QByteArray &bytes, StandIns &standIns);

    [[nodiscard]] const TextFileFormat &format() const { return m_format; }
    [[nodiscard]] bool atEnd() const { return m_next == size(); }
    [[nodiscard]] int percent() const; ///< how much was taken
    /// The next @p length bytes or more: the last line is whole, so that neither the two characters of a line end nor
    /// those of a character beyond 16 bits are divided.
    [[nodiscard]] QString take(qsizetype length);

private:
    [[nodiscard]] qsizetype size() const { return m_isDecoded ? m_text.size() : m_bytes.size(); }
    void findLineEnds();

    TextFileFormat m_format = newTextFileFormat();
    QByteArray m_bytes;
    QString m_text; ///< all of it, if it cannot be decoded in parts
    bool m_isDecoded = false;
    bool m_hasReturns = false;
    qsizetype m_next = 0; ///< in bytes, or in characters of the decoded text
};

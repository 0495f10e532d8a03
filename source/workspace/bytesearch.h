#pragma once
#include <functional>
#include <optional>
#include <QByteArray>
#include <QString>

/// What is looked for in the bytes of a text.
struct BytePattern
{
    QString text;
    bool caseSensitive = true;
    bool wholeWord = false; ///< no letter, digit or "_" right before or behind
};

/// Where a match lies, in bytes.
struct ByteMatch
{
    qint64 offset = 0;
    qint64 length = 0;

    bool operator==(const ByteMatch &other) const = default;
};

/// Looks for a text in the bytes of another one: UTF-8, or Latin-1 in lines that are not valid UTF-8. A text of ASCII
/// characters is looked for without decoding anything; without regard to case its letters then match those of ASCII
/// only.
class ByteSearch
{
public:
    enum class Step { BehindMatch, NextByte }; ///< where the search goes on after a match
    /// Gets a match, and returns whether to go on.
    using Receiver = std::function<bool(const ByteMatch &match)>;

    explicit ByteSearch(const BytePattern &pattern);

    [[nodiscard]] bool isEmpty() const { return m_pattern.text.isEmpty(); }
    /// No match has more bytes than these.
    [[nodiscard]] qsizetype longestMatch() const;
    /// Reports, in their order, the matches that begin between @p from and @p end, which must lie between two
    /// characters. The characters around them decide about whole words.
    void forEach(QByteArrayView bytes, qsizetype from, qsizetype end, Step step, const Receiver &receive) const;
    [[nodiscard]] std::optional<ByteMatch> first(QByteArrayView bytes, qsizetype from, qsizetype end) const;
    [[nodiscard]] std::optional<ByteMatch> last(QByteArrayView bytes, qsizetype from, qsizetype end) const;

private:
    void prepareNeedle();
    [[nodiscard]] bool matchesAt(const char *bytes) const;
    [[nodiscard]] qsizetype findBytes(QByteArrayView bytes, qsizetype from) const;
    [[nodiscard]] qsizetype findWide(const char *data, qsizetype from, qsizetype end) const;
    [[nodiscard]] bool isWhole(QByteArrayView bytes, qsizetype match) const;
    bool forEachDecoded(QByteArrayView bytes, qsizetype from, qsizetype end, Step step, const Receiver &receive) const;

    const BytePattern m_pattern;
    const bool m_isAscii;
    QByteArray m_needle;  ///< in lower case if it is searched without regard to case
    QByteArray m_masks;   ///< what each byte is combined with before it is compared: 0x20 for a letter, else 0
    qsizetype m_rare = 0; ///< the two bytes of the needle that are likely to be rare
    qsizetype m_rare2 = 0;
};

#pragma once
#include <array>
#include <functional>
#include <QByteArrayView>

/// Splits the text of an HTML page into words: runs of letters and digits of Latin-1 outside tags, in lower case.
///
/// A word has 2 to 63 characters. The character after 63 ends the word and is lost, and the rest is another word.
class HtmlWords
{
public:
    static constexpr qsizetype LongestWord = 63;

    /// The bytes of @p found are valid during the call only.
    explicit HtmlWords(std::function<void(QByteArrayView word)> found);

    /// Reads the next bytes of the page. The last byte of the page is not a part of any word: leave it out.
    void read(QByteArrayView bytes);
    void finish(); ///< The page has ended, and so has its last word.

private:
    void endWord();

    const std::function<void(QByteArrayView word)> m_found;
    std::array<char, LongestWord> m_word = {};
    qsizetype m_length = 0;
    bool m_inTag = false;
};

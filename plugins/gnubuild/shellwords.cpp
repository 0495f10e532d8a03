#include "shellwords.h"
using namespace Qt::StringLiterals;

namespace {

/// Splits a command line into words.
class WordReader
{
public:
    explicit WordReader(QStringView text) : m_text(text) {}

    std::optional<QStringList> read()
    {
        while (m_index < m_text.size()) {
            if (!readCharacter())
                return std::nullopt;
        }
        endWord();
        return m_words;
    }

private:
    /// False if a quote that starts here is not closed.
    bool readCharacter()
    {
        const QChar c = m_text[m_index++];
        if (c.isSpace()) {
            endWord();
            return true;
        }
        m_inWord = true;
        if (c == u'\'' || c == u'"')
            return readQuoted(c);
        m_word += c == u'\\' && m_index < m_text.size() ? m_text[m_index++] : c;
        return true;
    }

    bool readQuoted(QChar quote)
    {
        while (m_index < m_text.size()) {
            const QChar c = m_text[m_index++];
            if (c == quote)
                return true;
            const bool escapes =
                c == u'\\' && quote == u'"' && m_index < m_text.size() && u"\"\\$`"_s.contains(m_text[m_index]);
            m_word += escapes ? m_text[m_index++] : c;
        }
        return false;
    }

    void endWord()
    {
        if (m_inWord)
            m_words += std::exchange(m_word, {});
        m_inWord = false;
    }

    QStringView m_text;
    qsizetype m_index = 0;
    QString m_word;
    bool m_inWord = false; ///< true also in an empty quoted word
    QStringList m_words;
};

bool isPlain(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9')
           || u"_-+=./,:@%"_s.contains(c);
}

} // namespace

std::optional<QStringList> splitShellWords(const QString &text)
{
    return WordReader(text).read();
}

QString quoteShellWord(const QString &word)
{
    if (!word.isEmpty() && std::all_of(word.begin(), word.end(), isPlain))
        return word;
    QString quoted = word;
    quoted.replace(u'\'', u"'\\''"_s);
    return u'\'' + quoted + u'\'';
}

QString joinShellWords(const QStringList &words)
{
    QStringList quoted;
    for (const QString &word : words)
        quoted += quoteShellWord(word);
    return quoted.join(u' ');
}

#include "requiredtext.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
/// Reads an expression from its start to its end. What it does not know makes the result empty.
class Reader
{
public:
    Reader(QStringView expression, bool caseSensitive) : m_expression(expression), m_caseSensitive(caseSensitive) {}

    QString read()
    {
        while (m_at < m_expression.size()) {
            if (!readNext())
                return {};
        }
        endRun();
        return m_depth == 0 ? m_longest : QString();
    }

private:
    bool readNext()
    {
        const QChar c = m_expression[m_at++];
        switch (c.unicode()) {
        case u'\\':
            return readEscape();
        case u'[':
            return readClass();
        case u'(':
            return readGroup();
        case u')':
            return m_depth-- > 0;
        case u'|':
            return m_depth > 0;
        case u'*':
        case u'?':
            return readRepetition(false);
        case u'+':
            return readRepetition(true);
        case u'{':
            return readBrace();
        case u'.':
        case u'^':
        case u'$':
            endRun();
            return true;
        default:
            add(c);
            return true;
        }
    }

    void add(QChar c)
    {
        // Without regard to case, K and S also match a letter outside ASCII.
        const bool hasOtherForm = !m_caseSensitive && u"ksKS"_s.contains(c);
        if (m_depth > 0 || c.unicode() < 0x20 || c.unicode() >= 0x7F || hasOtherForm)
            endRun();
        else
            m_run += c;
    }

    void endRun()
    {
        if (m_run.size() > m_longest.size())
            m_longest = m_run;
        m_run.clear();
    }

    bool readEscape()
    {
        if (m_at == m_expression.size())
            return false;
        const QChar c = m_expression[m_at++];
        if (!c.isLetterOrNumber()) {
            add(c);
            return true;
        }
        endRun();
        return u"bBdDwWsSAZzntr"_s.contains(c);
    }

    bool readClass()
    {
        endRun();
        // A "]" at the start is a member, and so are names such as [:alpha:].
        static const QRegularExpression rest(uR"(\G\^?\]?(?:\[([:.=])[^]]*\1\]|\\[^QE]|[^]\\])*\])"_s);
        const QRegularExpressionMatch match = rest.match(m_expression, m_at);
        m_at = match.capturedEnd();
        return match.hasMatch();
    }

    bool readGroup()
    {
        endRun();
        static const QRegularExpression start(uR"(\G(?:\?(?:[:=!>]|<[=!])|(?![?*])))"_s);
        const QRegularExpressionMatch match = start.match(m_expression, m_at);
        m_at = match.capturedEnd();
        ++m_depth;
        return match.hasMatch();
    }

    /// Of the last character.
    bool readRepetition(bool atLeastOnce)
    {
        if (!atLeastOnce)
            m_run.chop(1);
        endRun();
        if (m_at < m_expression.size() && (m_expression[m_at] == u'?' || m_expression[m_at] == u'+'))
            ++m_at;
        return true;
    }

    bool readBrace()
    {
        static const QRegularExpression numbers(uR"(\G\d*(?:,\d*)?\})"_s);
        const QRegularExpressionMatch match = numbers.match(m_expression, m_at);
        if (match.hasMatch()) {
            m_at = match.capturedEnd();
            return readRepetition(false);
        }
        endRun(); // a character
        return true;
    }

    const QStringView m_expression;
    const bool m_caseSensitive;
    qsizetype m_at = 0;
    int m_depth = 0; ///< of groups
    QString m_run;   ///< the characters that follow each other here
    QString m_longest;
};
} // namespace

QString requiredText(QStringView expression, bool caseSensitive)
{
    return Reader(expression, caseSensitive).read();
}

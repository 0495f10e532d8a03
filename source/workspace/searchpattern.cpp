#include "searchpattern.h"
#include "expressionengine.h"
#include <array>

QString SearchPattern::accepted(const QString &expression)
{
    QString result;
    for (qsizetype i = 0; i < expression.size(); ++i) {
        const QChar c = expression[i];
        result += c;
        if (c == u'\\' && i + 1 < expression.size())
            result += expression[++i];
        else if (c == u'{' && i + 2 < expression.size() && expression[i + 1] == u',' && expression[i + 2].isDigit())
            result += u'0';
    }
    return result;
}

struct SearchPattern::Engine : ExpressionEngine<16>
{
    using ExpressionEngine<16>::ExpressionEngine;
};

namespace {
constexpr quint32 Groups = 10; ///< the match and the groups that a replacement can name

ExpressionEngine<16>::Text textOf(const QString &text, bool isStart = true, bool isEnd = true)
{
    return {reinterpret_cast<const char16_t *>(text.utf16()), text.size(), isStart, isEnd};
}
} // namespace

SearchPattern::SearchPattern(const QString &text, bool caseSensitive, bool regExp) : m_isExpression(regExp)
{
    const QString pattern = regExp ? accepted(text) : text;
    const quint32 options =
        (regExp ? PCRE2_MULTILINE | PCRE2_UCP : PCRE2_LITERAL) | (caseSensitive ? 0 : PCRE2_CASELESS);
    m_engine = std::make_unique<Engine>(textOf(pattern).units, pattern.size(), options, PCRE2_NEWLINE_LF, Groups);
}

SearchPattern::~SearchPattern() = default;

bool SearchPattern::isValid() const
{
    return m_engine->isValid();
}

QString SearchPattern::error() const
{
    if (isValid())
        return {};
    std::array<PCRE2_UCHAR16, 256> message{};
    pcre2_get_error_message_16(m_engine->error(), message.data(), message.size());
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(message.data()));
}

bool SearchPattern::hitStepLimit() const
{
    return m_engine->hitStepLimit();
}

qsizetype SearchPattern::find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const
{
    return find(piece, from, piece.text.size() + 1, [&running] { return running.load(); }).position;
}

SearchPattern::Match SearchPattern::find(const TextPiece &piece, qsizetype from, qsizetype end, const GoOn &goOn) const
{
    const auto match = m_engine->find(textOf(piece.text, piece.isStart, piece.isEnd), from,
                                      std::min(end, piece.text.size() + 1), m_isExpression, goOn);
    return {match.position, match.length};
}

QString SearchPattern::expanded(const QString &text, qsizetype position, const QString &replacement) const
{
    const size_t *bounds = nullptr;
    const int groups = m_engine->matchAt(textOf(text), position, &bounds);
    QString result;
    for (qsizetype i = 0; i < replacement.size(); ++i) {
        const QChar next = i + 1 < replacement.size() ? replacement[i + 1] : QChar();
        if (replacement[i] != u'\\' || next.isNull()) {
            result += replacement[i];
            continue;
        }
        ++i;
        const int group = next.unicode() - u'0';
        if (group >= 0 && group <= 9) {
            const size_t start = group < groups ? bounds[2 * group] : PCRE2_UNSET;
            if (start != PCRE2_UNSET)
                result += QStringView(text).sliced(qsizetype(start), qsizetype(bounds[2 * group + 1] - start));
        } else {
            result += next == u'n' ? QChar(u'\n') : next == u't' ? QChar(u'\t') : next;
        }
    }
    return result;
}

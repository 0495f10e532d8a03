#include "searchpattern.h"
#include "matchstretch.h"
#define PCRE2_CODE_UNIT_WIDTH 16
#include <array>
#include <pcre2.h>

// The toolkit's expressions use the same library, but their matches cannot be interrupted.

namespace {
constexpr quint32 MatchLimit = 32'000'000; ///< steps at one position: about 0.1 s
constexpr size_t FirstStack = 32 << 10;    ///< bytes
constexpr size_t LargestStack = 64 << 20;

struct Free
{
    void operator()(pcre2_code *code) const { pcre2_code_free(code); }
    void operator()(pcre2_compile_context *context) const { pcre2_compile_context_free(context); }
    void operator()(pcre2_match_context *context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_match_data *data) const { pcre2_match_data_free(data); }
    void operator()(pcre2_jit_stack *stack) const { pcre2_jit_stack_free(stack); }
};

PCRE2_SPTR units(const QString &text)
{
    return reinterpret_cast<PCRE2_SPTR>(text.utf16());
}

} // namespace

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

struct SearchPattern::Engine
{
    bool isExpression = false;
    QString error;
    bool hitLimit = false;
    std::unique_ptr<pcre2_code, Free> code;
    std::unique_ptr<pcre2_match_context, Free> context{pcre2_match_context_create(nullptr)};
    std::unique_ptr<pcre2_match_data, Free> data{pcre2_match_data_create(10, nullptr)};
    std::unique_ptr<pcre2_jit_stack, Free> stack{pcre2_jit_stack_create(FirstStack, LargestStack, nullptr)};
};

SearchPattern::SearchPattern(const QString &text, bool caseSensitive, bool regExp)
    : m_engine(std::make_unique<Engine>())
{
    quint32 options = PCRE2_UTF | PCRE2_USE_OFFSET_LIMIT;
    options |= regExp ? PCRE2_MULTILINE | PCRE2_UCP : PCRE2_LITERAL;
    options |= caseSensitive ? 0 : PCRE2_CASELESS;
    const QString pattern = regExp ? accepted(text) : text;
    const std::unique_ptr<pcre2_compile_context, Free> settings(pcre2_compile_context_create(nullptr));
    pcre2_set_newline(settings.get(), PCRE2_NEWLINE_LF);
    int error = 0;
    size_t errorOffset = 0;
    m_engine->code.reset(
        pcre2_compile(units(pattern), size_t(pattern.size()), options, &error, &errorOffset, settings.get()));
    if (!m_engine->code) {
        std::array<char16_t, 256> message{};
        pcre2_get_error_message(error, reinterpret_cast<PCRE2_UCHAR *>(message.data()), message.size());
        m_engine->error = QString::fromUtf16(message.data());
        return;
    }
    m_engine->isExpression = regExp;
    pcre2_jit_compile(m_engine->code.get(), PCRE2_JIT_COMPLETE); // optional: without it matching is only slower
    pcre2_jit_stack_assign(m_engine->context.get(), nullptr, m_engine->stack.get());
    pcre2_set_match_limit(m_engine->context.get(), MatchLimit);
}

SearchPattern::~SearchPattern() = default;

bool SearchPattern::isValid() const
{
    return m_engine->code != nullptr;
}

QString SearchPattern::error() const
{
    return m_engine->error;
}

bool SearchPattern::hitStepLimit() const
{
    return m_engine->hitLimit;
}

qsizetype SearchPattern::find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const
{
    return find(piece, from, piece.text.size() + 1, [&running] { return running.load(); }).position;
}

SearchPattern::Match SearchPattern::find(const TextPiece &piece, qsizetype from, qsizetype end, const GoOn &goOn) const
{
    const QString &text = piece.text;
    const quint32 options = PCRE2_NO_UTF_CHECK | (piece.isStart ? 0 : PCRE2_NOTBOL) | (piece.isEnd ? 0 : PCRE2_NOTEOL);
    end = std::min(end, text.size() + 1);
    MatchStretch stretch;
    while (isValid() && from < end && goOn()) {
        qsizetype next = m_engine->isExpression ? std::min(from + stretch.length(), end) : end;
        if (next < text.size() && text[next].isLowSurrogate())
            ++next; // do not start inside a character
        pcre2_set_offset_limit(m_engine->context.get(), size_t(next - 1));
        stretch.begin();
        const int result = pcre2_match(m_engine->code.get(), units(text), size_t(text.size()), size_t(from), options,
                                       m_engine->data.get(), m_engine->context.get());
        stretch.end();
        if (result >= 0) {
            const size_t *bounds = pcre2_get_ovector_pointer(m_engine->data.get());
            return {qsizetype(bounds[0]), qsizetype(bounds[1] - std::min(bounds[0], bounds[1]))};
        }
        if (result != PCRE2_ERROR_NOMATCH) {
            m_engine->hitLimit = true;
            return {};
        }
        from = next;
    }
    return {};
}

QString SearchPattern::expanded(const QString &text, qsizetype position, const QString &replacement) const
{
    const int groups = pcre2_match(m_engine->code.get(), units(text), size_t(text.size()), size_t(position),
                                   PCRE2_NO_UTF_CHECK | PCRE2_ANCHORED, m_engine->data.get(), nullptr);
    const size_t *bounds = pcre2_get_ovector_pointer(m_engine->data.get());
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

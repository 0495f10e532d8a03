#include "searchpattern.h"
#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

// The toolkit's expressions use the same library, but their matches cannot be interrupted.

namespace {
constexpr qsizetype Stretch = 32; ///< positions at which an expression is tried between two checks for cancellation
constexpr quint32 MatchLimit = 32'000'000; ///< steps at one position: about 0.1 s
constexpr size_t FirstStack = 32 << 10;    ///< bytes
constexpr size_t LargestStack = 64 << 20;

struct Free
{
    void operator()(pcre2_code *code) const { pcre2_code_free(code); }
    void operator()(pcre2_match_context *context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_match_data *data) const { pcre2_match_data_free(data); }
    void operator()(pcre2_jit_stack *stack) const { pcre2_jit_stack_free(stack); }
};

PCRE2_SPTR units(const QString &text)
{
    return reinterpret_cast<PCRE2_SPTR>(text.utf16());
}

/// Writes "{,3}" as "{0,3}", the form that this library accepts.
QString withLowerBounds(const QString &expression)
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
} // namespace

struct SearchPattern::Engine
{
    qsizetype stretch;
    std::unique_ptr<pcre2_code, Free> code;
    std::unique_ptr<pcre2_match_context, Free> context{pcre2_match_context_create(nullptr)};
    std::unique_ptr<pcre2_match_data, Free> data{pcre2_match_data_create(1, nullptr)};
    std::unique_ptr<pcre2_jit_stack, Free> stack{pcre2_jit_stack_create(FirstStack, LargestStack, nullptr)};
};

SearchPattern::SearchPattern(const QString &text, bool caseSensitive, bool regExp)
    : m_engine(std::make_unique<Engine>())
{
    quint32 options = PCRE2_UTF | PCRE2_USE_OFFSET_LIMIT;
    options |= regExp ? PCRE2_DOTALL | PCRE2_UCP : PCRE2_LITERAL;
    options |= caseSensitive ? 0 : PCRE2_CASELESS;
    const QString pattern = regExp ? withLowerBounds(text) : text;
    int error = 0;
    size_t errorOffset = 0;
    m_engine->code.reset(pcre2_compile(units(pattern), size_t(pattern.size()), options, &error, &errorOffset, nullptr));
    if (!m_engine->code)
        return;
    m_engine->stretch = regExp ? Stretch : std::numeric_limits<qint32>::max(); // a plain text needs no such checks
    pcre2_jit_compile(m_engine->code.get(), PCRE2_JIT_COMPLETE); // optional: without it matching is only slower
    pcre2_jit_stack_assign(m_engine->context.get(), nullptr, m_engine->stack.get());
    pcre2_set_match_limit(m_engine->context.get(), MatchLimit);
}

SearchPattern::~SearchPattern() = default;

bool SearchPattern::isValid() const
{
    return m_engine->code != nullptr;
}

qsizetype SearchPattern::find(const TextPiece &piece, qsizetype from, const std::atomic<bool> &running) const
{
    const QString &text = piece.text;
    const quint32 options = PCRE2_NO_UTF_CHECK | (piece.isStart ? 0 : PCRE2_NOTBOL) | (piece.isEnd ? 0 : PCRE2_NOTEOL);
    while (isValid() && from <= text.size() && running) {
        qsizetype next = std::min(from + m_engine->stretch, text.size() + 1);
        if (next < text.size() && text[next].isLowSurrogate())
            ++next; // do not start inside a character
        pcre2_set_offset_limit(m_engine->context.get(), size_t(next - 1));
        const int result = pcre2_match(m_engine->code.get(), units(text), size_t(text.size()), size_t(from), options,
                                       m_engine->data.get(), m_engine->context.get());
        if (result >= 0)
            return qsizetype(pcre2_get_ovector_pointer(m_engine->data.get())[0]);
        if (result != PCRE2_ERROR_NOMATCH)
            return -1;
        from = next;
    }
    return -1;
}

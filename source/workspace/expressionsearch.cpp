#include "expressionsearch.h"
#include "matchstretch.h"
#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

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

bool continuesCharacter(char byte)
{
    return (uchar(byte) & 0xC0) == 0x80;
}
} // namespace

struct ExpressionSearch::Engine
{
    bool hitLimit = false;
    std::unique_ptr<pcre2_code, Free> code;
    std::unique_ptr<pcre2_match_context, Free> context{pcre2_match_context_create(nullptr)};
    std::unique_ptr<pcre2_match_data, Free> data{pcre2_match_data_create(1, nullptr)};
    std::unique_ptr<pcre2_jit_stack, Free> stack{pcre2_jit_stack_create(FirstStack, LargestStack, nullptr)};
};

ExpressionSearch::ExpressionSearch(const QString &expression, bool caseSensitive) : m_engine(std::make_unique<Engine>())
{
    const quint32 options =
        PCRE2_UTF | PCRE2_USE_OFFSET_LIMIT | PCRE2_MULTILINE | PCRE2_UCP | (caseSensitive ? 0 : PCRE2_CASELESS);
    const std::unique_ptr<pcre2_compile_context, Free> settings(pcre2_compile_context_create(nullptr));
    pcre2_set_newline(settings.get(), PCRE2_NEWLINE_ANYCRLF);
    const QByteArray pattern = expression.toUtf8();
    int error = 0;
    size_t errorOffset = 0;
    m_engine->code.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.constData()), size_t(pattern.size()),
                                       options, &error, &errorOffset, settings.get()));
    if (!m_engine->code)
        return;
    pcre2_jit_compile(m_engine->code.get(), PCRE2_JIT_COMPLETE); // optional: without it matching is only slower
    pcre2_jit_stack_assign(m_engine->context.get(), nullptr, m_engine->stack.get());
    pcre2_set_match_limit(m_engine->context.get(), MatchLimit);
}

ExpressionSearch::~ExpressionSearch() = default;

bool ExpressionSearch::hitStepLimit() const
{
    return m_engine->hitLimit;
}

qsizetype ExpressionSearch::find(QByteArrayView utf8, qsizetype from, bool isStart, bool isEnd, const GoOn &goOn) const
{
    const quint32 options = PCRE2_NO_UTF_CHECK | (isStart ? 0 : PCRE2_NOTBOL) | (isEnd ? 0 : PCRE2_NOTEOL);
    MatchStretch stretch;
    while (m_engine->code && from <= utf8.size() && goOn()) {
        qsizetype next = std::min(from + stretch.length(), utf8.size() + 1);
        while (next < utf8.size() && continuesCharacter(utf8[next]))
            ++next; // do not start inside a character
        pcre2_set_offset_limit(m_engine->context.get(), size_t(next - 1));
        stretch.begin();
        const int result =
            pcre2_match(m_engine->code.get(), reinterpret_cast<PCRE2_SPTR>(utf8.data()), size_t(utf8.size()),
                        size_t(from), options, m_engine->data.get(), m_engine->context.get());
        stretch.end();
        if (result >= 0)
            return qsizetype(pcre2_get_ovector_pointer(m_engine->data.get())[0]);
        if (result != PCRE2_ERROR_NOMATCH) {
            m_engine->hitLimit = true;
            return -1;
        }
        from = next;
    }
    return -1;
}

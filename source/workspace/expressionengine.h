#pragma once
#include "matchstretch.h"
#include <functional>
#include <memory>
#define PCRE2_CODE_UNIT_WIDTH 0 // the types and functions of all widths, with suffixes
#include <pcre2.h>

// The toolkit's expressions use the same library, but their matches cannot be interrupted.

/// The library for texts of units of 8 bits, in UTF-8, or of 16 bits, in UTF-16.
template <int Width>
struct Pcre2;

#define VARNEL_PCRE2(width, unit) \
    template <> \
    struct Pcre2<width> \
    { \
        using Unit = unit; \
        using Text = PCRE2_SPTR##width; \
        using Code = pcre2_code_##width; \
        using CompileContext = pcre2_compile_context_##width; \
        using MatchContext = pcre2_match_context_##width; \
        using MatchData = pcre2_match_data_##width; \
        using JitStack = pcre2_jit_stack_##width; \
        static constexpr auto compile = pcre2_compile_##width; \
        static constexpr auto createCompileContext = pcre2_compile_context_create_##width; \
        static constexpr auto setNewline = pcre2_set_newline_##width; \
        static constexpr auto jitCompile = pcre2_jit_compile_##width; \
        static constexpr auto createMatchContext = pcre2_match_context_create_##width; \
        static constexpr auto createMatchData = pcre2_match_data_create_##width; \
        static constexpr auto createJitStack = pcre2_jit_stack_create_##width; \
        static constexpr auto assignJitStack = pcre2_jit_stack_assign_##width; \
        static constexpr auto setMatchLimit = pcre2_set_match_limit_##width; \
        static constexpr auto setOffsetLimit = pcre2_set_offset_limit_##width; \
        static constexpr auto match = pcre2_match_##width; \
        static constexpr auto bounds = pcre2_get_ovector_pointer_##width; \
        void operator()(Code *code) const { pcre2_code_free_##width(code); } \
        void operator()(CompileContext *context) const { pcre2_compile_context_free_##width(context); } \
        void operator()(MatchContext *context) const { pcre2_match_context_free_##width(context); } \
        void operator()(MatchData *data) const { pcre2_match_data_free_##width(data); } \
        void operator()(JitStack *stack) const { pcre2_jit_stack_free_##width(stack); } \
    };
VARNEL_PCRE2(8, char)
VARNEL_PCRE2(16, char16_t)
#undef VARNEL_PCRE2

/// A compiled expression with the limits of all searches. An object is used by one thread at a time.
template <int Width>
class ExpressionEngine
{
    using Library = Pcre2<Width>;

public:
    using Unit = typename Library::Unit;
    /// Called often during a long search, which ends without a match soon after it has returned false.
    using GoOn = std::function<bool()>;
    struct Match
    {
        qsizetype position = -1; ///< -1: there is none
        qsizetype length = 0;
    };
    struct Text
    {
        const Unit *units;
        qsizetype size;
        bool isStart = true; ///< whether its ends are ends of lines by themselves
        bool isEnd = true;
    };

    /// @p options and @p newline are those of the library, @p groups the number of groups whose places are kept.
    ExpressionEngine(const Unit *pattern, qsizetype length, quint32 options, quint32 newline, quint32 groups);

    [[nodiscard]] bool isValid() const { return m_code != nullptr; }
    [[nodiscard]] int error() const { return m_error; } ///< of the library, for an invalid expression
    /// Whether the expression needed too many steps in the last find(): it then has no match from there on.
    [[nodiscard]] bool hitStepLimit() const { return m_hitLimit; }
    /// The first match that starts at or after @p from and before @p end, which is not beyond the end of the text by
    /// more than 1. An expression that may take long is searched for @p inStretches.
    [[nodiscard]] Match find(const Text &text, qsizetype from, qsizetype end, bool inStretches, const GoOn &goOn);
    /// Matches at @p position only. Returns the number of groups that took part, and sets @p bounds to their places.
    int matchAt(const Text &text, qsizetype position, const size_t **bounds);

private:
    static constexpr quint32 MatchLimit = 32'000'000; ///< steps at one position: about 0.1 s
    static constexpr size_t FirstStack = 32 << 10;    ///< bytes
    static constexpr size_t LargestStack = 64 << 20;

    /// Whether a unit is not the first one of its character.
    [[nodiscard]] static bool isInner(Unit unit)
    {
        if constexpr (Width == 8)
            return (unit & 0xC0) == 0x80;
        else
            return (unit & 0xFC00) == 0xDC00;
    }
    [[nodiscard]] static typename Library::Text units(const Unit *text)
    {
        return reinterpret_cast<typename Library::Text>(text);
    }

    std::unique_ptr<typename Library::Code, Library> m_code;
    std::unique_ptr<typename Library::MatchContext, Library> m_context{Library::createMatchContext(nullptr)};
    std::unique_ptr<typename Library::MatchData, Library> m_data;
    std::unique_ptr<typename Library::JitStack, Library> m_stack{
        Library::createJitStack(FirstStack, LargestStack, nullptr)};
    int m_error = 0;
    bool m_hitLimit = false;
};

template <int Width>
ExpressionEngine<Width>::ExpressionEngine(const Unit *pattern, qsizetype length, quint32 options, quint32 newline,
                                          quint32 groups)
    : m_data(Library::createMatchData(groups, nullptr))
{
    const std::unique_ptr<typename Library::CompileContext, Library> settings(Library::createCompileContext(nullptr));
    Library::setNewline(settings.get(), newline);
    size_t errorOffset = 0;
    m_code.reset(Library::compile(units(pattern), size_t(length), options | PCRE2_UTF | PCRE2_USE_OFFSET_LIMIT,
                                  &m_error, &errorOffset, settings.get()));
    if (!m_code)
        return;
    Library::jitCompile(m_code.get(), PCRE2_JIT_COMPLETE); // optional: without it matching is only slower
    Library::assignJitStack(m_context.get(), nullptr, m_stack.get());
    Library::setMatchLimit(m_context.get(), MatchLimit);
}

template <int Width>
typename ExpressionEngine<Width>::Match ExpressionEngine<Width>::find(const Text &text, qsizetype from, qsizetype end,
                                                                      bool inStretches, const GoOn &goOn)
{
    const quint32 options = PCRE2_NO_UTF_CHECK | (text.isStart ? 0 : PCRE2_NOTBOL) | (text.isEnd ? 0 : PCRE2_NOTEOL);
    MatchStretch stretch;
    m_hitLimit = false;
    while (isValid() && from < end && goOn()) {
        qsizetype next = inStretches ? std::min(from + stretch.length(), end) : end;
        while (next < text.size && isInner(text.units[next]))
            ++next; // do not start inside a character
        Library::setOffsetLimit(m_context.get(), size_t(next - 1));
        stretch.begin();
        const int result = Library::match(m_code.get(), units(text.units), size_t(text.size), size_t(from), options,
                                          m_data.get(), m_context.get());
        stretch.end();
        if (result >= 0) {
            const size_t *bounds = Library::bounds(m_data.get());
            return {qsizetype(bounds[0]), qsizetype(bounds[1] - std::min(bounds[0], bounds[1]))};
        }
        if (result != PCRE2_ERROR_NOMATCH) {
            m_hitLimit = true;
            return {};
        }
        from = next;
    }
    return {};
}

template <int Width>
int ExpressionEngine<Width>::matchAt(const Text &text, qsizetype position, const size_t **bounds)
{
    const int groups = Library::match(m_code.get(), units(text.units), size_t(text.size), size_t(position),
                                      PCRE2_NO_UTF_CHECK | PCRE2_ANCHORED, m_data.get(), nullptr);
    *bounds = Library::bounds(m_data.get());
    return groups;
}

#include "pythonhighlighter.h"

namespace {
using namespace FormatId;

enum State { InStandard, InComment, StringStart, InString, StringEnd, String2Start, String2, String2End, InNumber };

// clang-format off
constexpr StateRow States[] = {
    //                      _  1  *  /  (  ' ' # "  '  ;   painted      n  at the end  brackets
    /* 0 InStandard   */ {{0, 8, 0, 0, 0, 0, 1, 2, 5, 0}, Standard,  1, InStandard, true},
    /* 1 InComment    */ {{1, 1, 1, 1, 1, 1, 1, 1, 1, 1}, Comment,   1, InStandard, false},
    /* 2 StringStart  */ {{3, 3, 3, 3, 3, 3, 3, 4, 3, 3}, Standard,  1, InStandard, false},
    /* 3 InString     */ {{3, 3, 3, 3, 3, 3, 3, 4, 3, 3}, String,    1, InString,   false},
    /* 4 StringEnd    */ {{0, 0, 0, 0, 0, 0, 1, 2, 5, 0}, Standard,  1, InStandard, true},
    /* 5 String2Start */ {{6, 6, 6, 6, 6, 6, 6, 6, 7, 6}, Standard,  1, InStandard, false},
    /* 6 String2      */ {{6, 6, 6, 6, 6, 6, 6, 6, 7, 6}, String,    1, String2,    false},
    /* 7 String2End   */ {{0, 0, 0, 0, 0, 0, 1, 2, 5, 0}, Standard,  1, InStandard, true},
    /* 8 InNumber     */ {{8, 8, 0, 0, 0, 0, 1, 2, 5, 0}, Number,    1, InStandard, true},
};
// clang-format on
} // namespace

PythonHighlighter::PythonHighlighter(const FormatTable *formats) : TableHighlighter(language(), formats) {}

const Language &PythonHighlighter::language()
{
    static const Language language{States,
                                   {u"and",  u"del",    u"for",    u"is",    u"raise", u"assert",  u"elif",
                                    u"from", u"lambda", u"return", u"break", u"else",  u"global",  u"not",
                                    u"try",  u"class",  u"except", u"if",    u"or",    u"while",   u"continue",
                                    u"exec", u"import", u"pass",   u"yield", u"def",   u"finally", u"in"},
                                   false};
    return language;
}

#include "cpphighlighter.h"

namespace {
using namespace FormatId;

enum State {
    InStandard,
    CommentStart1,
    CCommentStart2,
    CppCommentStart2,
    CComment,
    CppComment,
    CCommentEnd1,
    CCommentEnd2,
    StringStart,
    InString,
    StringEnd,
    String2Start,
    String2,
    String2End,
    InNumber,
    InPreProcessor
};

// clang-format off
constexpr StateRow States[] = {
    //                         _   1   *   /   (  ' '  #   "   '   ;   painted       n  at the end  brackets
    /* 0  InStandard       */ {{ 0, 14,  0,  1,  0,  0, 15,  8, 11,  0}, Standard,     1, InStandard, true},
    /* 1  CommentStart1    */ {{ 0, 14,  2,  3,  0,  0, 15,  8, 11,  0}, Standard,     1, InStandard, false},
    /* 2  CCommentStart2   */ {{ 4,  4,  6,  4,  4,  4,  4,  4,  4,  4}, Comment,      2, InStandard, false},
    /* 3  CppCommentStart2 */ {{ 5,  5,  5,  5,  5,  5,  5,  5,  5,  5}, Comment,      2, InStandard, false},
    /* 4  CComment         */ {{ 4,  4,  6,  4,  4,  4,  4,  4,  4,  4}, Comment,      1, CComment,   false},
    /* 5  CppComment       */ {{ 5,  5,  5,  5,  5,  5,  5,  5,  5,  5}, Comment,      1, InStandard, false},
    /* 6  CCommentEnd1     */ {{ 4,  4,  6,  7,  4,  4,  4,  4,  4,  4}, Comment,      1, CComment,   true},
    /* 7  CCommentEnd2     */ {{ 0, 14,  0,  1,  0,  0, 15,  8, 11,  0}, Comment,      1, InStandard, true},
    /* 8  StringStart      */ {{ 9,  9,  9,  9,  9,  9,  9, 10,  9,  9}, Standard,     1, InStandard, false},
    /* 9  InString         */ {{ 9,  9,  9,  9,  9,  9,  9, 10,  9,  9}, String,       1, InString,   false},
    /* 10 StringEnd        */ {{ 0,  0,  0,  1,  0,  0, 15,  8, 11,  0}, Standard,     1, InStandard, true},
    /* 11 String2Start     */ {{12, 12, 12, 12, 12, 12, 12, 12, 13, 12}, Standard,     1, InStandard, false},
    /* 12 String2          */ {{12, 12, 12, 12, 12, 12, 12, 12, 13, 12}, String,       1, String2,    false},
    /* 13 String2End       */ {{ 0,  0,  0,  1,  0,  0, 15,  8, 11,  0}, Standard,     1, InStandard, true},
    /* 14 InNumber         */ {{14, 14,  0,  1,  0,  0, 15,  8, 11,  0}, Number,       1, InStandard, true},
    /* 15 InPreProcessor   */ {{15,  0,  0,  1,  0,  0, 15,  8, 11,  0}, PreProcessor, 1, InStandard, true},
};
// clang-format on
} // namespace

CppHighlighter::CppHighlighter(const FormatTable *formats) : TableHighlighter(language(), formats) {}

const Language &CppHighlighter::language()
{
    static const Language language{
        States,
        {u"and",        u"and_eq",   u"asm",       u"auto",      u"bitand",   u"bitor",       u"bool",
         u"break",      u"case",     u"catch",     u"char",      u"class",    u"compl",       u"const",
         u"const_cast", u"continue", u"default",   u"delete",    u"do",       u"double",      u"dynamic_cast",
         u"else",       u"enum",     u"explicit",  u"export",    u"extern",   u"false",       u"FALSE",
         u"float",      u"for",      u"friend",    u"goto",      u"if",       u"inline",      u"int",
         u"long",       u"mutable",  u"namespace", u"new",       u"not",      u"not_eq",      u"operator",
         u"or",         u"or_eq",    u"private",   u"protected", u"public",   u"register",    u"reinterpret_cast",
         u"return",     u"short",    u"signed",    u"sizeof",    u"static",   u"static_cast", u"struct",
         u"switch",     u"template", u"this",      u"throw",     u"true",     u"TRUE",        u"try",
         u"typedef",    u"typeid",   u"typename",  u"union",     u"unsigned", u"using",       u"virtual",
         u"void",       u"volatile", u"wchar_t",   u"while",     u"xor",      u"xor_eq"},
        true};
    return language;
}

#include "expressionsearch.h"
#include "expressionengine.h"

struct ExpressionSearch::Engine : ExpressionEngine<8>
{
    using ExpressionEngine<8>::ExpressionEngine;
};

ExpressionSearch::ExpressionSearch(const QString &expression, bool caseSensitive)
{
    const QByteArray pattern = expression.toUtf8();
    m_engine = std::make_unique<Engine>(pattern.constData(), pattern.size(),
                                        PCRE2_MULTILINE | PCRE2_UCP | (caseSensitive ? 0 : PCRE2_CASELESS),
                                        PCRE2_NEWLINE_ANYCRLF, 1);
}

ExpressionSearch::~ExpressionSearch() = default;

bool ExpressionSearch::hitStepLimit() const
{
    return m_engine->hitStepLimit();
}

qsizetype ExpressionSearch::find(QByteArrayView utf8, qsizetype from, bool isStart, bool isEnd, const GoOn &goOn) const
{
    return m_engine->find({utf8.data(), utf8.size(), isStart, isEnd}, from, utf8.size() + 1, true, goOn).position;
}

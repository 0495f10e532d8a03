#include "lookuppattern.h"
using namespace Qt::StringLiterals;

namespace {
/// The column in "main.c:3:14: error" and "main.c(3,14) : error", for the end of the line number; 0 if there is none.
int columnBehind(const QString &text, qsizetype end)
{
    static const QRegularExpression column(uR"([:,](\d{1,6})\b)"_s);
    const auto match =
        column.match(text, end, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    return match.captured(1).toInt();
}
} // namespace

LookupPattern::LookupPattern()
{
    set({}, false);
}

bool LookupPattern::set(const QString &pattern, bool greedy)
{
    const bool valid = pattern.count("(file)"_L1) == 1 && pattern.count("(line)"_L1) == 1;
    if (!valid) {
        m_fileCapture = 1;
        m_lineCapture = 2;
        setExpression(uR"((.+)\((\d+)\))"_s, false);
        return false;
    }
    const bool lineFirst = pattern.indexOf("(line)"_L1) < pattern.indexOf("(file)"_L1);
    m_lineCapture = lineFirst ? 1 : 2;
    m_fileCapture = lineFirst ? 2 : 1;
    QString expression = pattern;
    expression.replace("(line)"_L1, R"((\d+))"_L1).replace("(file)"_L1, "(.+)"_L1);
    if (!greedy && (pattern.endsWith("(line)"_L1) || pattern.endsWith("(file)"_L1)))
        expression.insert(expression.size() - 1, u'?'); // inverted: at the very end a match is one character at least
    setExpression(expression, greedy);
    return true;
}

void LookupPattern::setExpression(const QString &expression, bool greedy)
{
    QRegularExpression::PatternOptions options =
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
    options.setFlag(QRegularExpression::InvertedGreedinessOption, !greedy);
    m_lookup = QRegularExpression(expression, options);
}

std::optional<LookupPlace> LookupPattern::find(const QString &text, qsizetype *length) const
{
    if (!m_lookup.isValid())
        return std::nullopt;
    const QRegularExpressionMatch match = m_lookup.match(text);
    if (!match.hasMatch() || match.capturedStart() != 0)
        return std::nullopt;
    if (length)
        *length = match.capturedEnd();
    return LookupPlace{match.captured(m_fileCapture).trimmed(), match.captured(m_lineCapture).trimmed().toInt(),
                       columnBehind(text, match.capturedEnd(m_lineCapture))};
}

#include "expressionat.h"

namespace {
bool isNamePart(QChar letter)
{
    return letter.isLetterOrNumber() || letter == u'_' || letter == u'$';
}

qsizetype skipBlanksLeft(const QString &line, qsizetype end)
{
    while (end > 0 && line[end - 1].isSpace())
        --end;
    return end;
}

qsizetype nameStart(const QString &line, qsizetype end)
{
    while (end > 0 && isNamePart(line[end - 1]))
        --end;
    return end;
}

/// The start of the brackets that end before @p end; -1 if their beginning is in another line.
qsizetype bracketStart(const QString &line, qsizetype end)
{
    int depth = 0;
    for (qsizetype i = end - 1; i >= 0; --i) {
        if (line[i] == u']')
            ++depth;
        else if (line[i] == u'[' && --depth == 0)
            return i;
        else if (line[i] == u'(' || line[i] == u'=') // a call or an assignment inside
            return -1;
    }
    return -1;
}

/// The length of the operator before @p end that joins a member to what it belongs to.
int joinLength(const QString &line, qsizetype end)
{
    const QStringView text = QStringView(line).first(end);
    if (text.endsWith(u"->") || text.endsWith(u"::"))
        return 2;
    return text.endsWith(u'.') && !text.endsWith(u"..") ? 1 : 0;
}
} // namespace

QString expressionAt(const QString &line, int column)
{
    qsizetype end = column;
    if (column < 0 || column > line.size())
        return {};
    while (end < line.size() && isNamePart(line[end]))
        ++end;
    qsizetype start = nameStart(line, end);
    if (start == end || line[start].isDigit() || QStringView(line).mid(end).trimmed().startsWith(u'('))
        return {};
    for (qsizetype before = skipBlanksLeft(line, start); joinLength(line, before) > 0;
         before = skipBlanksLeft(line, start)) {
        qsizetype owner = skipBlanksLeft(line, before - joinLength(line, before));
        const bool isGlobal =
            joinLength(line, before) == 2 && line[before - 1] == u':' && (owner == 0 || !isNamePart(line[owner - 1]));
        if (isGlobal)
            return line.mid(before - 2, end - before + 2);
        while (owner > 0 && line[owner - 1] == u']') {
            owner = bracketStart(line, owner);
            if (owner < 0)
                return {};
            owner = skipBlanksLeft(line, owner);
        }
        start = nameStart(line, owner);
        if (start == owner || line[start].isDigit())
            return {};
    }
    return line.mid(start, end - start);
}

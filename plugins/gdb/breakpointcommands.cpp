#include "breakpointcommands.h"
#include "mirecord.h"
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
QByteArray options(const BreakpointDetails &details, bool enabled)
{
    QByteArray text;
    if (!enabled)
        text += "-d ";
    if (details.temporary)
        text += "-t ";
    if (!details.condition.isEmpty())
        text += "-c " + miQuoted(details.condition) + ' ';
    if (details.hitCount > 1)
        text += "-i " + QByteArray::number(details.hitCount - 1) + ' ';
    if (details.thread > 0)
        text += "-p " + QByteArray::number(details.thread) + ' ';
    return text;
}

/// The C type of that size.
QString unitOf(uint size)
{
    switch (size) {
    case 2:
        return u"unsigned short"_s;
    case 4:
        return u"unsigned int"_s;
    case 8:
        return u"unsigned long long"_s;
    default:
        return u"unsigned char"_s;
    }
}
} // namespace

LogFormat logFormat(const QString &text)
{
    static const QRegularExpression braces(u"\\{\\s*([^{}\\s][^{}]*)\\}"_s);
    LogFormat log{LogMark, {}};
    const auto addText = [&log](QString part) { log.format += part.replace(u'%', u"%%"_s); };
    qsizetype end = 0;
    for (auto match = braces.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch brace = match.next();
        addText(text.mid(end, brace.capturedStart() - end));
        log.format += u"%s"_s;
        log.expressions.append(brace.captured(1).trimmed());
        end = brace.capturedEnd();
    }
    addText(text.mid(end));
    log.format.replace(u'\n', u' ');
    log.format += u'\n';
    return log;
}

/// The values are converted by a function of gdb, as the types of the expressions are not known. A variable of gdb
/// takes the result: any other text is copied into the memory of the program before it is printed, which needs its
/// malloc().
QByteArray insertCommand(const BreakpointDetails &details, bool enabled, const QByteArray &location)
{
    if (details.logText.isEmpty())
        return "-break-insert " + options(details, enabled) + location;
    const LogFormat log = logFormat(details.logText);
    QByteArray command = "-dprintf-insert " + options(details, enabled) + location + ' ' + miQuoted(log.format);
    for (qsizetype i = 0; i < log.expressions.size(); ++i) {
        const QString variable = u"$varnel_text%1"_s.arg(i);
        command +=
            ' ' + miQuoted(u'(' + variable + u" = $_as_string("_s + log.expressions[i] + u"), "_s + variable + u')');
    }
    return command;
}

/// The location option makes gdb watch the place in memory that the expression denotes now, also of a local variable.
QString watchCommand(const DataBreakpoint &breakpoint)
{
    const QString command = breakpoint.access == DataBreakpoint::Read        ? u"rwatch"_s
                            : breakpoint.access == DataBreakpoint::ReadWrite ? u"awatch"_s
                                                                             : u"watch"_s;
    if (!breakpoint.expression.isEmpty())
        return command + u" -l "_s + QString(breakpoint.expression).replace(u'\n', u' ');
    return u"%1 *(%2 *) 0x%3"_s.arg(command, unitOf(breakpoint.size), QString::number(breakpoint.address, 16));
}

QList<int> refusedBreakpoints(const QString &text)
{
    static const QRegularExpression refusal(
        u"(?:Cannot insert|Could not insert) (?:hardware )?(?:breakpoint|watchpoint) (\\d+)"_s);
    QList<int> numbers;
    for (auto match = refusal.globalMatch(text); match.hasNext();)
        numbers.append(match.next().captured(1).toInt());
    return numbers;
}

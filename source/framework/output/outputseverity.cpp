#include "outputseverity.h"
#include <QPalette>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

OutputSeverity outputSeverity(const QString &message, bool hasPlace)
{
    static const QRegularExpression word(uR"(\b(error|warning|note|remark)\b)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression start(uR"(^(?:[\w.+/-]+: )?(?:fatal )?(error|warning)[: ])"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression linker(u"\\bundefined reference to\\b|\\bmultiple definition of\\b"_s);
    const QString found = (hasPlace ? word : start).match(message).captured(1).toLower();
    if (found == u"error"_s || (found.isEmpty() && linker.match(message).hasMatch()))
        return OutputSeverity::Error;
    return found == u"warning"_s ? OutputSeverity::Warning : OutputSeverity::None;
}

QColor outputColour(OutputSeverity severity, const QPalette &palette)
{
    const bool dark = palette.color(QPalette::Base).lightnessF() < 0.5;
    switch (severity) {
    case OutputSeverity::Error:
        return dark ? QColor(255, 138, 128) : QColor(176, 0, 32);
    case OutputSeverity::Warning:
        return dark ? QColor(255, 204, 128) : QColor(138, 83, 0);
    case OutputSeverity::None:
        break;
    }
    return {};
}

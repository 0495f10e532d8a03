#include "diagnostics.h"
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
using namespace Qt::StringLiterals;

QString Diagnostics::take(const QString &line, const QString &directory)
{
    static const QRegularExpression place(
        uR"(^(?:In file included from | +from |.*?ld: [^ ]*?\.o:|.*?ld: |)([^:\s][^:]*):\d+[:,])"_s);
    static const QRegularExpression kind(uR"(: (?:(fatal error|error|Error)|warning|Warning): )"_s);
    if (const auto match = kind.match(line); match.hasMatch())
        ++(match.hasCaptured(1) ? m_errors : m_warnings);
    const auto match = place.match(line);
    if (!match.hasMatch() || QDir::isAbsolutePath(match.captured(1)))
        return line;
    const QString path = QDir::cleanPath(QDir(directory).filePath(match.captured(1)));
    if (!QFileInfo::exists(path))
        return line;
    return QString(line).replace(match.capturedStart(1), match.capturedLength(1), path);
}

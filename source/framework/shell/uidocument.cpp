#include "uidocument.h"
#include "wholefile.h"
#include <QXmlStreamReader>

namespace {
constexpr int MaximumDepth = 1000;

bool isShallow(const QByteArray &content)
{
    if (content.count('<') - content.count("</") <= MaximumDepth)
        return true; // it does not have enough start tags for more levels
    QXmlStreamReader reader(content);
    for (int depth = 0; !reader.atEnd();) {
        reader.readNext();
        if (reader.isStartElement() && ++depth > MaximumDepth)
            return false;
        if (reader.isEndElement())
            --depth;
    }
    return true; // the parser reports other errors
}

/// The parsed @p content; a null document if it cannot be parsed. The last one is cached, because start-up reads the
/// same file several times.
QDomDocument parsed(const QByteArray &content)
{
    static auto &last = *new QPair<QByteArray, QDomDocument>; // never deleted: static objects may use it at exit
    if (last.second.isNull() || last.first != content) {
        QDomDocument document;
        const bool isGood = isShallow(content) && document.setContent(content);
        last = {content, isGood ? document : QDomDocument()};
    }
    return last.second;
}
} // namespace

QDomDocument readUiDocument(const QString &path, const char *reader)
{
    const std::optional<QByteArray> content = readFile(path);
    if (!content)
        qWarning("%s: Cannot open ui config file (%s)", reader, qPrintable(path));
    const QDomDocument document = parsed(content.value_or(QByteArray()));
    if (document.isNull())
        qWarning("%s: Cannot parse ui config file (%s)", reader, qPrintable(path));
    return document;
}

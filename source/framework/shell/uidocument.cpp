#include "uidocument.h"
#include <QFile>
#include <QXmlStreamReader>

namespace {
constexpr int MaximumDepth = 200;

bool isShallow(const QByteArray &content)
{
    QXmlStreamReader reader(content);
    for (int depth = 0; !reader.atEnd();) {
        reader.readNext();
        if (reader.isStartElement() && ++depth > MaximumDepth)
            return false;
        if (reader.isEndElement())
            --depth;
    }
    return true; // what else is wrong with it the parser says
}
} // namespace

QDomDocument readUiDocument(const QString &path, const char *reader)
{
    QFile file(path);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly))
        content = file.readAll();
    else
        qWarning("%s: Cannot open ui config file (%s)", reader, qPrintable(path));
    QDomDocument document;
    if (!isShallow(content) || !document.setContent(content)) {
        qWarning("%s: Cannot parse ui config file (%s)", reader, qPrintable(path));
        return {};
    }
    return document;
}

#include "projectxmlreader.h"
using namespace Qt::StringLiterals;

namespace {
bool hasComments(QByteArrayView bytes)
{
    const qsizetype instruction = bytes.lastIndexOf("<?");
    return bytes.contains("<!--") || (instruction >= 0 && !bytes.sliced(instruction).startsWith("<?xml "));
}
} // namespace

ProjectXmlReader::ProjectXmlReader(const QByteArray &bytes) : QXmlStreamReader(bytes), m_hasComments(hasComments(bytes))
{
    setNamespaceProcessing(false);
}

ProjectXmlReader::ProjectXmlReader(const QString &text) : QXmlStreamReader(text)
{
    setNamespaceProcessing(false);
}

QStringView ProjectXmlReader::valueOf(const QXmlStreamAttributes &attributes, QLatin1StringView name)
{
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.qualifiedName() == name)
            return attribute.value().isNull() ? QStringView(u"") : attribute.value();
    }
    return {};
}

QString ProjectXmlReader::attribute(QLatin1StringView name)
{
    const QXmlStreamAttributes all = attributes();
    const QStringView value = valueOf(all, name);
    noteForeignAttributes(value.isNull() ? 0 : 1);
    return value.toString();
}

void ProjectXmlReader::noteForeignAttributes(qsizetype known)
{
    m_foreign = m_foreign || attributes().size() > known;
}

QString ProjectXmlReader::sharedAttribute(QLatin1StringView name)
{
    const QXmlStreamAttributes all = attributes();
    const QStringView value = valueOf(all, name);
    noteForeignAttributes(value.isNull() ? 0 : 1);
    const auto known = m_shared.constFind(QString::fromRawData(value.data(), value.size()));
    return known != m_shared.constEnd() ? *known : *m_shared.insert(value.toString());
}

void ProjectXmlReader::skipForeignElement()
{
    m_foreign = true;
    skipCurrentElement();
}

void ProjectXmlReader::readRoot(QLatin1StringView tag)
{
    m_foreign = !readNextStartElement() || !isAt(tag) || m_hasComments;
}

QString ProjectXmlReader::elementText()
{
    QString result = u""_s;
    for (int depth = 1; depth > 0 && !hasError();) {
        switch (readNext()) {
        case StartElement:
            ++depth;
            break;
        case EndElement:
            --depth;
            break;
        case Characters:
            if (!isWhitespace())
                result += text();
            break;
        default:
            break;
        }
    }
    return result;
}

bool ProjectXmlReader::finish()
{
    while (!atEnd())
        readNext();
    return !hasError();
}

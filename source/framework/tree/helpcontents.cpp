#include "helpcontents.h"
#include <QCoreApplication>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
constexpr int DeepestLevel = 100;

QList<HelpEntry> readChildren(QXmlStreamReader &xml, int level)
{
    QList<HelpEntry> entries;
    while (xml.readNextStartElement()) {
        const bool isPage = xml.name() == "page"_L1;
        if ((!isPage && xml.name() != "book"_L1) || level > DeepestLevel) {
            xml.skipCurrentElement();
            continue;
        }
        HelpEntry entry;
        entry.kind = isPage ? HelpEntry::Page : HelpEntry::Book;
        entry.title = xml.attributes().value(isPage ? "name"_L1 : "title"_L1).toString();
        if (isPage)
            entry.path = xml.attributes().value("path"_L1).toString();
        entry.children = readChildren(xml, level + 1);
        entries.append(entry);
    }
    return entries;
}
} // namespace

std::optional<HelpEntry> readHelpContents(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    if (!reader.readNextStartElement())
        return {};
    HelpEntry document;
    document.title = reader.attributes().hasAttribute("name"_L1)
                         ? reader.attributes().value("name"_L1).toString()
                         : QCoreApplication::translate("HelpWidget", "Help Documents");
    document.children = readChildren(reader, 1);
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? std::nullopt : std::optional(document);
}

#include "propertypages.h"
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {
void writeSelectors(QXmlStreamWriter &xml, const QStringList &selectors)
{
    for (const QString &selector : selectors) {
        xml.writeEmptyElement(u"appliesto"_s);
        xml.writeAttribute(u"selector"_s, selector);
    }
}

void writeProperty(QXmlStreamWriter &xml, const PropertyDefinition &property)
{
    xml.writeStartElement(u"property"_s);
    xml.writeAttribute(u"key"_s, property.key);
    xml.writeAttribute(u"name"_s, property.name);
    xml.writeAttribute(u"type"_s, property.type);
    xml.writeAttribute(u"defaultvalue"_s, property.defaultValue);
    if (property.maximum)
        xml.writeAttribute(u"maximum"_s, QString::number(*property.maximum));
    writeSelectors(xml, property.selectors);
    xml.writeTextElement(u"description"_s, property.description.toHtmlEscaped());
    for (const PropertyDefinition::Choice &choice : property.choices) {
        xml.writeStartElement(u"option"_s);
        xml.writeAttribute(u"key"_s, choice.key);
        xml.writeCharacters(choice.label);
        xml.writeEndElement();
    }
    xml.writeEndElement();
}
} // namespace

QString propertyDefinitionsXml(const QString &group, const QStringList &selectors, const QList<PropertyPage> &pages)
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(u"properties"_s);
    xml.writeStartElement(u"group"_s);
    xml.writeAttribute(u"name"_s, group);
    writeSelectors(xml, selectors);
    for (const PropertyPage &page : pages) {
        xml.writeStartElement(u"propertygroup"_s);
        xml.writeAttribute(u"name"_s, page.name);
        writeSelectors(xml, page.selectors);
        for (const PropertyDefinition &property : page.properties)
            writeProperty(xml, property);
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return text;
}

#include "propertydefinitions.h"
#include "propertybooleanitem.h"
#include <QCoreApplication>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
constexpr int MaximumDepth = 100;

/// An element with all that is in it.
struct Element
{
    QString tag;
    QXmlStreamAttributes attributes;
    QString text; ///< also that of the elements in it
    std::vector<Element> children;

    [[nodiscard]] QString attribute(QLatin1StringView name) const { return attributes.value(name).toString(); }
    [[nodiscard]] int number(QLatin1StringView name, int missing) const
    {
        bool isNumber = false;
        const int number = attributes.value(name).toInt(&isNumber);
        return isNumber ? number : missing;
    }
};

/// Reads what is in the current element. False if it is broken or too deep.
bool read(QXmlStreamReader &xml, Element &element, int depth)
{
    element.tag = xml.name().toString();
    element.attributes = xml.attributes();
    while (xml.readNext() != QXmlStreamReader::EndElement) {
        if (xml.hasError() || depth == MaximumDepth)
            return false;
        if (xml.isCharacters() && !xml.isWhitespace())
            element.text += xml.text();
        if (!xml.isStartElement())
            continue;
        Element &child = element.children.emplace_back();
        if (!read(xml, child, depth + 1))
            return false;
        element.text += child.text;
    }
    return true;
}

std::optional<Element> readRoot(const QString &text)
{
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    Element root;
    if (!xml.readNextStartElement() || !read(xml, root, 0))
        return {};
    while (!xml.atEnd())
        xml.readNext(); // something after the root may be wrong as well
    return xml.hasError() ? std::nullopt : std::optional(root);
}

bool applies(const Element &element, const QString &selector)
{
    bool isLimited = false;
    for (const Element &child : element.children) {
        if (child.tag != "appliesto"_L1)
            continue;
        if (!child.attributes.hasAttribute("selector"_L1) || child.attribute("selector"_L1) == selector)
            return true;
        isLimited = true;
    }
    return !isLimited;
}

int typeOf(const QString &name)
{
    static const QStringList names = {u"text"_s,     u"integer"_s,      u"file"_s,      u"directory"_s,
                                      u"list"_s,     u"integercombo"_s, u"textcombo"_s, u"boolean"_s,
                                      u"filelist"_s, u"directorylist"_s};
    const int type = int(names.indexOf(name)) + 1;
    if (type == UnknownProperty)
        qWarning("PropertyEditor::fillTree: Invalid property type '%s'", qPrintable(name));
    return type;
}

QVariant defaultValue(int type, const QString &text)
{
    switch (type) {
    case IntegerProperty:
    case IntegerComboProperty:
    case TextComboProperty:
        return text.toInt();
    case BooleanProperty:
        return text == "true"_L1 || text == "1"_L1;
    default:
        return text;
    }
}

/// Options stand at any depth below the property.
void readOptions(const Element &element, PropertyRecord &record)
{
    for (const Element &child : element.children) {
        if (child.tag == "option"_L1) {
            const QString key = child.attribute("key"_L1);
            record.m_keys += key.isEmpty() ? QString::number(record.m_keys.size()) : key;
            record.m_labels += child.text;
        }
        readOptions(child, record);
    }
}

/// A pattern that cannot be used forbids nothing.
QRegularExpression readPattern(const QString &text)
{
    if (text.isEmpty())
        return {};
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(text));
    if (pattern.isValid())
        return pattern;
    qWarning("PropertyEditor: Invalid pattern '%s'", qPrintable(text));
    return {};
}

PropertyRecord readRecord(const Element &element)
{
    PropertyRecord record;
    record.m_key = element.attribute("key"_L1);
    record.m_name = element.attribute("name"_L1);
    record.m_type = typeOf(element.attribute("type"_L1));
    record.m_default = defaultValue(record.m_type, element.attribute("defaultvalue"_L1));
    record.m_value = record.m_loaded = record.m_default;
    record.m_pattern = readPattern(element.attribute("pattern"_L1));
    record.m_invalidText = element.attribute("invalidtext"_L1);
    const int minimum = element.number("minimum"_L1, record.m_minimum);
    const int maximum = element.number("maximum"_L1, std::max(minimum, record.m_maximum));
    std::tie(record.m_minimum, record.m_maximum) = std::minmax(minimum, maximum);
    const auto isDescription = [](const Element &child) { return child.tag == "description"_L1; };
    const auto description = std::ranges::find_if(element.children, isDescription);
    if (description != element.children.end())
        record.m_description = description->text;
    readOptions(element, record);
    return record;
}

void readNodes(const Element &element, const QString &selector, std::vector<PropertyNode> &nodes)
{
    for (const Element &child : element.children) {
        const bool isPage = child.tag == "propertygroup"_L1;
        if ((!isPage && child.tag != "group"_L1) || !applies(child, selector))
            continue;
        PropertyNode &node = nodes.emplace_back(PropertyNode{child.attribute("name"_L1), isPage, {}, {}});
        if (!isPage) {
            readNodes(child, selector, node.children);
            continue;
        }
        for (const Element &property : child.children) {
            if (property.tag == "property"_L1 && applies(property, selector))
                node.records.push_back(readRecord(property));
        }
    }
}
} // namespace

std::optional<std::vector<PropertyNode>> readPropertyDefinitions(const QString &text, const QString &selector)
{
    const std::optional<Element> root = readRoot(text);
    if (!root)
        return {};
    std::vector<PropertyNode> nodes;
    readNodes(*root, selector, nodes);
    return nodes;
}

bool PropertyRecord::differsFromDefault() const
{
    if (m_type == BooleanProperty && m_value.isValid())
        return isYes(m_value) != isYes(m_default);
    return !sameValue(m_value, m_default);
}

bool PropertyRecord::contains(const QString &text) const
{
    const auto isIn = [&](const QString &where) { return where.contains(text, Qt::CaseInsensitive); };
    return isIn(m_name) || isIn(m_key) || isIn(m_description) || std::ranges::any_of(m_labels, isIn);
}

bool PropertyRecord::isMarkedAsChanged() const
{
    return m_reset || (m_changed && !sameValue(m_value, m_loaded));
}

QString PropertyRecord::problem() const
{
    if (m_pattern.pattern().isEmpty() || !m_value.isValid() || m_pattern.match(m_value.toString()).hasMatch())
        return {};
    if (!m_invalidText.isEmpty())
        return m_invalidText;
    return QCoreApplication::translate("PropertyEditor", "This value is not possible here.");
}

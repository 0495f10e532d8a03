#pragma once
#include <QDomDocument>
#include <QFile>
#include <QStringList>

/// The rows of the table of properties in docs/projects.md for XML definitions: key, page and name in the editor, type,
/// values, default, meaning.
inline QStringList propertyRows(const QString &definitions)
{
    using namespace Qt::StringLiterals;
    const auto cell = [](QString text) {
        text.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&quot;"_s, u"\""_s);
        return text.replace(u"&amp;"_s, u"&"_s).replace(u'|', u"\\|"_s);
    };
    const auto code = [&](const QString &text) { return text.isEmpty() ? QString() : u'`' + cell(text) + u'`'; };
    QDomDocument document;
    document.setContent(definitions);
    QStringList rows;
    const QDomNodeList properties = document.elementsByTagName(u"property"_s);
    for (int i = 0; i < properties.size(); ++i) {
        const QDomElement property = properties.at(i).toElement();
        const QString page = property.parentNode().toElement().attribute(u"name"_s);
        QStringList values;
        for (QDomElement option = property.firstChildElement(u"option"_s); !option.isNull();
             option = option.nextSiblingElement(u"option"_s))
            values += code(option.attribute(u"key"_s));
        const QString type = property.attribute(u"type"_s);
        rows += u"| `%1` | %2: %3 | %4 | %5 | %6 |"_s.arg(
            property.attribute(u"key"_s), cell(page), cell(property.attribute(u"name"_s)),
            values.isEmpty() ? type : values.join(u", "_s), code(property.attribute(u"defaultvalue"_s)),
            cell(property.firstChildElement(u"description"_s).text()));
    }
    return rows;
}

/// The rows of docs/projects.md below the line @p heading, up to the next heading.
inline QStringList documentedRows(const QString &heading)
{
    using namespace Qt::StringLiterals;
    QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/projects.md"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList rows;
    bool inside = false;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(u'#'))
            inside = line == heading;
        else if (inside && line.startsWith("| `"_L1))
            rows += line;
    }
    return rows;
}

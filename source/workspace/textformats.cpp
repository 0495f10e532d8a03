#include "textformats.h"
#include "fontshaping.h"
#include "wholefile.h"
#include <algorithm>

#include <QSettings>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {
constexpr auto SettingsGroup = "TextFormats"_L1;
constexpr QRgb RgbMask = 0xffffff;
constexpr int LargestFont = 500; // points: larger fonts exhaust the font engine

QColor colourOf(QStringView hexadecimal)
{
    return QColor::fromRgb(hexadecimal.toUInt(nullptr, 16) & RgbMask);
}

QString storedColour(const QColor &colour)
{
    return QString::number(colour.rgb() & RgbMask, 16);
}

// The index of the entry with the given name, or 0.
template <typename Entries>
qsizetype indexOf(const Entries &entries, const QString &name)
{
    const auto found = std::ranges::find_if(entries, [&name](const auto &entry) { return entry.name == name; });
    return found != entries.end() ? found - entries.begin() : 0;
}

template <typename Entries>
QStringList namesOf(const Entries &entries)
{
    QStringList names;
    for (const auto &entry : entries)
        names.append(entry.name);
    return names;
}

// Settings sort their keys as text, "10:" before "2:".
QStringList byNumber(QStringList keys)
{
    std::ranges::stable_sort(keys, {}, [](const QString &key) { return key.section(u':', 0, 0).toInt(); });
    return keys;
}

QString nameInKey(const QString &key)
{
    return key.section(u':', 1, -1);
}

QString keyOf(qsizetype index, const QString &name)
{
    return QString::number(index) + u':' + name;
}
} // namespace

bool TextFormats::loadFromFile(const QString &fileName)
{
    const std::optional<QByteArray> bytes = readFile(fileName);
    if (!bytes) {
        qWarning("TextFormats::loadFromFile: Cannot open config file (%s)", qPrintable(fileName));
        return false;
    }
    QXmlStreamReader reader(*bytes);
    reader.setNamespaceProcessing(false);
    const QList<Section> sections = readSections(reader);
    if (reader.hasError()) {
        qWarning("TextFormats::loadFromFile: Cannot parse config file (%s)", qPrintable(fileName));
        return false;
    }
    m_sections = sections;
    return true;
}

QList<TextFormats::Section> TextFormats::readSections(QXmlStreamReader &reader)
{
    QList<Section> sections;
    reader.readNextStartElement();
    while (reader.readNextStartElement()) {
        sections.append({reader.attributes().value("name"_L1).toString(), {}});
        while (reader.readNextStartElement()) {
            sections.last().formats.append(readFormat(reader));
            reader.skipCurrentElement();
        }
    }
    while (!reader.atEnd()) // the text after the document element must be well-formed too
        reader.readNext();
    return sections;
}

TextFormats::Format TextFormats::readFormat(const QXmlStreamReader &reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    Format format;
    format.name = attributes.value("name"_L1).toString();
    format.fontFamily = attributes.value("fontFamily"_L1).toString();
    format.fontSize = attributes.value("fontSize"_L1).toInt();
    format.bold = attributes.hasAttribute("bold"_L1);
    format.italic = attributes.hasAttribute("italic"_L1);
    format.hasBackground = attributes.hasAttribute("bgColour"_L1);
    format.fgColour = colourOf(attributes.value("fgColour"_L1));
    if (format.hasBackground)
        format.bgColour = colourOf(attributes.value("bgColour"_L1));
    return format;
}

bool TextFormats::loadFromSettings(QSettings &settings)
{
    settings.beginGroup(SettingsGroup);
    QList<Section> sections;
    bool complete = true;
    const QStringList keys = byNumber(settings.childGroups());
    for (const QString &key : keys) {
        sections.append({nameInKey(key), {}});
        settings.beginGroup(key);
        complete = complete && readSection(settings, sections.last());
        settings.endGroup();
    }
    settings.endGroup();
    if (!complete || sections.isEmpty())
        return false;
    m_sections = sections;
    return true;
}

bool TextFormats::readSection(QSettings &settings, Section &section)
{
    const QStringList keys = byNumber(settings.childKeys());
    for (const QString &key : keys) {
        // A hand-written list without quotes is a list already.
        const QStringList fields = settings.value(key).toStringList().join(u',').split(u',');
        Format format;
        format.name = nameInKey(key);
        if (!readFormat(fields, format))
            return false;
        section.formats.append(format);
    }
    return !keys.isEmpty();
}

bool TextFormats::readFormat(const QStringList &fields, Format &format)
{
    if (fields.size() < 5)
        return false;
    format.fontFamily = fields[0];
    format.fontSize = fields[1].toInt();
    format.bold = fields[2].toInt() != 0;
    format.italic = fields[3].toInt() != 0;
    format.fgColour = colourOf(fields[4]);
    format.hasBackground = fields.size() > 5;
    if (format.hasBackground)
        format.bgColour = colourOf(fields[5]);
    return true;
}

void TextFormats::saveToSettings(QSettings &settings) const
{
    if (m_sections.isEmpty())
        return;
    settings.remove(SettingsGroup);
    settings.beginGroup(SettingsGroup);
    for (qsizetype i = 0; i < m_sections.size(); ++i) {
        settings.beginGroup(keyOf(i, m_sections[i].name));
        const QList<Format> &formats = m_sections[i].formats;
        for (qsizetype j = 0; j < formats.size(); ++j)
            settings.setValue(keyOf(j, formats[j].name), storedFormat(formats[j]));
        settings.endGroup();
    }
    settings.endGroup();
}

QString TextFormats::storedFormat(const Format &format)
{
    QStringList fields{format.fontFamily, QString::number(format.fontSize), QString::number(int(format.bold)),
                       QString::number(int(format.italic)), storedColour(format.fgColour)};
    if (format.hasBackground)
        fields.append(storedColour(format.bgColour));
    return fields.join(u',');
}

QStringList TextFormats::sections() const
{
    return namesOf(m_sections);
}

QStringList TextFormats::formats(const QString &section) const
{
    return namesOf(sectionOf(section).formats);
}

QString TextFormats::fontFamily(const QString &section, const QString &format) const
{
    return formatOf(section, format).fontFamily;
}

int TextFormats::fontSize(const QString &section, const QString &format) const
{
    return formatOf(section, format).fontSize;
}

bool TextFormats::bold(const QString &section, const QString &format) const
{
    return formatOf(section, format).bold;
}

bool TextFormats::italic(const QString &section, const QString &format) const
{
    return formatOf(section, format).italic;
}

bool TextFormats::hasBackground(const QString &section, const QString &format) const
{
    return formatOf(section, format).hasBackground;
}

QColor TextFormats::fgColour(const QString &section, const QString &format) const
{
    return formatOf(section, format).fgColour;
}

QColor TextFormats::bgColour(const QString &section, const QString &format) const
{
    return formatOf(section, format).bgColour;
}

void TextFormats::setFontFamily(const QString &section, const QString &format, const QString &family)
{
    set(section, format, &Format::fontFamily, family);
}

void TextFormats::setFontSize(const QString &section, const QString &format, int points)
{
    set(section, format, &Format::fontSize, points);
}

void TextFormats::setBold(const QString &section, const QString &format, bool bold)
{
    set(section, format, &Format::bold, bold);
}

void TextFormats::setItalic(const QString &section, const QString &format, bool italic)
{
    set(section, format, &Format::italic, italic);
}

void TextFormats::setFgColour(const QString &section, const QString &format, const QColor &colour)
{
    set(section, format, &Format::fgColour, QColor::fromRgb(colour.rgb() & RgbMask));
}

void TextFormats::setBgColour(const QString &section, const QString &format, const QColor &colour)
{
    set(section, format, &Format::bgColour, QColor::fromRgb(colour.rgb() & RgbMask));
}

FormatTable TextFormats::formatTable() const
{
    FormatTable table;
    if (m_sections.isEmpty() || m_sections.first().formats.isEmpty())
        return table;
    const QList<Format> &formats = m_sections.first().formats;
    table[FormatId::Background].setForeground(formats.first().bgColour);
    table[FormatId::Background].setBackground(formats.first().bgColour);
    for (qsizetype i = 0; i < formats.size(); ++i)
        table.insert(int(i) + FormatId::Standard, charFormat(formats[i]));
    table[FormatId::Standard].clearBackground(); // the paper has this background
    return table;
}

QTextCharFormat TextFormats::charFormat(const Format &format)
{
    QTextCharFormat charFormat;
    if (!format.fontFamily.isEmpty())
        charFormat.setFontFamilies({format.fontFamily});
    if (format.fontSize > 0)
        charFormat.setFontPointSize(std::min(format.fontSize, LargestFont));
    charFormat.setFontWeight(format.bold ? QFont::Bold : QFont::Normal);
    charFormat.setFontItalic(format.italic);
    if (looksTheSameUnshaped(charFormat.font()))
        charFormat.setFontStyleStrategy(QFont::PreferNoShaping); // typing is faster
    charFormat.setForeground(format.fgColour);
    if (format.hasBackground)
        charFormat.setBackground(format.bgColour);
    return charFormat;
}

TextFormats::Section TextFormats::sectionOf(const QString &name) const
{
    return m_sections.value(indexOf(m_sections, name));
}

TextFormats::Format TextFormats::formatOf(const QString &section, const QString &format) const
{
    const QList<Format> formats = sectionOf(section).formats;
    return formats.value(indexOf(formats, format));
}

template <typename Member>
void TextFormats::set(const QString &section, const QString &format, Member Format::*member, const Member &value)
{
    if (m_sections.isEmpty())
        return;
    QList<Format> &formats = m_sections[indexOf(m_sections, section)].formats;
    if (!formats.isEmpty())
        formats[indexOf(formats, format)].*member = value;
}

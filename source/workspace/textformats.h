#pragma once
#include "syntaxhighlighter.h"
#include <QColor>
#include <QStringList>

class QSettings;
class QXmlStreamReader;

/// The fonts and colours that the user has chosen, as sections of formats in a fixed order. A value: copies are cheap.
///
/// Formats are found by the names of section and format; of equal names the first is used. An unknown name means the
/// first section, or the first format of its section. If there is none, getters return the values of an empty format
/// and setters do nothing.
class TextFormats
{
public:
    /// Reads an XML file. On failure prints a warning, returns false and keeps the old formats.
    bool loadFromFile(const QString &fileName);
    /// Reads the group "TextFormats". Returns false and keeps the old formats if it has no section, or a value that is
    /// not a format.
    bool loadFromSettings(QSettings &settings);
    /// Replaces the group "TextFormats". An empty table is not written.
    void saveToSettings(QSettings &settings) const;

    [[nodiscard]] QStringList sections() const;
    [[nodiscard]] QStringList formats(const QString &section) const;

    [[nodiscard]] QString fontFamily(const QString &section, const QString &format) const;
    [[nodiscard]] int fontSize(const QString &section, const QString &format) const; ///< in points, 0 if not specified
    [[nodiscard]] bool bold(const QString &section, const QString &format) const;
    [[nodiscard]] bool italic(const QString &section, const QString &format) const;
    /// Whether the format has its own background colour.
    [[nodiscard]] bool hasBackground(const QString &section, const QString &format) const;
    [[nodiscard]] QColor fgColour(const QString &section, const QString &format) const;
    [[nodiscard]] QColor bgColour(const QString &section, const QString &format) const; ///< white if not specified

    void setFontFamily(const QString &section, const QString &format, const QString &family);
    void setFontSize(const QString &section, const QString &format, int points);
    void setBold(const QString &section, const QString &format, bool bold);
    void setItalic(const QString &section, const QString &format, bool italic);
    void setFgColour(const QString &section, const QString &format, const QColor &colour);
    void setBgColour(const QString &section, const QString &format, const QColor &colour);

    /// The formats of the editor: those of the first section with the identifiers 1, 2, 3..., and with identifier 0 one
    /// whose two colours are the background of the first format.
    [[nodiscard]] FormatTable formatTable() const;

    bool operator==(const TextFormats &) const = default;

private:
    struct Format
    {
        QString name;
        QString fontFamily;
        int fontSize = 0;
        bool bold = false;
        bool italic = false;
        bool hasBackground = false;
        QColor fgColour = Qt::black;
        QColor bgColour = Qt::white;

        bool operator==(const Format &) const = default;
    };
    struct Section
    {
        QString name;
        QList<Format> formats;

        bool operator==(const Section &) const = default;
    };

    static QList<Section> readSections(QXmlStreamReader &reader);
    static Format readFormat(const QXmlStreamReader &reader);
    static bool readFormat(const QStringList &fields, Format &format);
    static bool readSection(QSettings &settings, Section &section);
    static QString storedFormat(const Format &format);
    static QTextCharFormat charFormat(const Format &format);

    [[nodiscard]] Section sectionOf(const QString &name) const;
    [[nodiscard]] Format formatOf(const QString &section, const QString &format) const;
    template <typename Member>
    void set(const QString &section, const QString &format, Member Format::*member, const Member &value);

    QList<Section> m_sections;
};

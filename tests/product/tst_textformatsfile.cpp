#include <QColor>
#include <QDomDocument>
#include <QFontDatabase>
#include <QFontInfo>
#include <QTest>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

struct Format
{
    QString section;
    QString name;
    QString family;
    int size = 0;
    bool bold = false;
    bool italic = false;
    QColor foreground;
    QColor background; ///< invalid if the format has no background
};

using Formats = QList<Format>;
using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

/// A colour in the notation of formats files: six hexadecimal digits. Invalid for any other text.
QColor colour(const QString &text)
{
    static const QRegularExpression digits(u"\\A[0-9a-f]{6}\\z"_s);
    return digits.match(text).hasMatch() ? QColor(u'#' + text) : QColor();
}

Format formatOf(const QDomElement &element)
{
    return {.section = element.parentNode().toElement().attribute(u"name"_s),
            .name = element.attribute(u"name"_s),
            .family = element.attribute(u"fontFamily"_s),
            .size = element.attribute(u"fontSize"_s).toInt(),
            .bold = element.hasAttribute(u"bold"_s),
            .italic = element.hasAttribute(u"italic"_s),
            .foreground = colour(element.attribute(u"fgColour"_s)),
            .background = colour(element.attribute(u"bgColour"_s))};
}

Formats readFormats(const QString &fileName)
{
    QFile file(u"" VARNEL_SOURCE_DIR "/config/"_s + fileName);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return {};
    Formats formats;
    const QDomNodeList nodes = document.elementsByTagName(u"format"_s);
    for (int i = 0; i < nodes.count(); ++i)
        formats.append(formatOf(nodes.at(i).toElement()));
    return formats;
}

/// The background of the formats of a section: that of its first format.
QColor paper(const Formats &formats, const QString &section)
{
    for (const Format &format : formats) {
        if (format.section == section)
            return format.background;
    }
    return {};
}

/// The linear intensity of each primary, 0 to 1 (IEC 61966-2-1).
Vector linear(const QColor &colour)
{
    const auto light = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return {light(colour.redF()), light(colour.greenF()), light(colour.blueF())};
}

Vector product(const Matrix &matrix, const Vector &vector)
{
    Vector result{};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column)
            result[row] += matrix[row][column] * vector[column];
    }
    return result;
}

/// Contrast ratio, 1 to 21 (Web Content Accessibility Guidelines 2.1, "contrast ratio" and "relative luminance").
double contrast(const QColor &one, const QColor &other)
{
    const auto luminance = [](const QColor &colour) {
        const Vector light = linear(colour);
        return 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
    };
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// CIE 1976 L*a*b* of linear sRGB under D65. A distance of about 2 is the least that is visible.
Vector lab(const Vector &light)
{
    const Matrix toXyz{{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    const Vector xyz = product(toXyz, light);
    const double y = f(xyz[1]);
    return {116 * y - 16, 500 * (f(xyz[0] / 0.9505) - y), 200 * (y - f(xyz[2] / 1.089))};
}

double difference(const QColor &one, const QColor &other, const Matrix &vision)
{
    const auto seen = [&vision](const QColor &colour) {
        Vector light = product(vision, linear(colour));
        for (double &value : light)
            value = std::clamp(value, 0.0, 1.0);
        return lab(light);
    };
    const Vector a = seen(one);
    const Vector b = seen(other);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

} // namespace

/// The product files with fonts and colours: they contain the formats that Varnel uses, and are readable.
class TestTextFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void formatsAreInTheExpectedOrder_data() { schemes(); }
    void formatsAreInTheExpectedOrder();
    void schemesHaveTheSameStructure();
    void schemesHaveLightAndDarkPaper();
    void everyColourIsSpecified_data() { schemes(); }
    void everyColourIsSpecified();
    void onlyFirstFormatsHaveABackground_data() { schemes(); }
    void onlyFirstFormatsHaveABackground();
    void fontIsInstalledAndHasFixedPitch_data() { schemes(); }
    void fontIsInstalledAndHasFixedPitch();
    void textIsReadable_data() { schemes(); }
    void textIsReadable();
    void lightTextIsReadableOnTheBracketBackground();
    void formatsDifferForColourBlindUsers_data();
    void formatsDifferForColourBlindUsers();
    void stylesAreUsedSparingly_data() { schemes(); }
    void stylesAreUsedSparingly();

private:
    static void schemes();
};

void TestTextFormats::schemes()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("light") << u"textformats.xml"_s;
    QTest::newRow("dark") << u"textformats-dark.xml"_s;
}

void TestTextFormats::formatsAreInTheExpectedOrder()
{
    QFETCH(QString, file);
    QStringList found;
    for (const Format &format : readFormats(file))
        found.append(format.section + u": "_s + format.name);
    const QStringList expected{u"Text editor: Standard text"_s, u"Text editor: Comment"_s,
                               u"Text editor: Number"_s,        u"Text editor: String"_s,
                               u"Text editor: Reserved"_s,      u"Text editor: Keyword"_s,
                               u"Text editor: Preprocessor"_s,  u"Text editor: Label"_s,
                               u"Output window: Normal text"_s, u"Workspace: Normal text"_s};
    QCOMPARE(found, expected);
}

void TestTextFormats::schemesHaveTheSameStructure()
{
    const Formats light = readFormats(u"textformats.xml"_s);
    const Formats dark = readFormats(u"textformats-dark.xml"_s);
    QCOMPARE(light.size(), dark.size());
    for (qsizetype i = 0; i < light.size(); ++i) {
        QCOMPARE(light.at(i).section, dark.at(i).section);
        QCOMPARE(light.at(i).name, dark.at(i).name);
        QCOMPARE(light.at(i).family, dark.at(i).family);
        QCOMPARE(light.at(i).size, dark.at(i).size);
        QCOMPARE(light.at(i).bold, dark.at(i).bold);
        QCOMPARE(light.at(i).italic, dark.at(i).italic);
        QCOMPARE(light.at(i).background.isValid(), dark.at(i).background.isValid());
    }
}

void TestTextFormats::schemesHaveLightAndDarkPaper()
{
    for (const QString &section : {u"Text editor"_s, u"Output window"_s, u"Workspace"_s}) {
        QVERIFY(paper(readFormats(u"textformats.xml"_s), section).lightness() > 200);
        QVERIFY(paper(readFormats(u"textformats-dark.xml"_s), section).lightness() < 55);
    }
}

void TestTextFormats::everyColourIsSpecified()
{
    QFETCH(QString, file);
    for (const Format &format : readFormats(file))
        QVERIFY2(format.foreground.isValid(), qPrintable(format.name));
}

void TestTextFormats::onlyFirstFormatsHaveABackground()
{
    QFETCH(QString, file);
    QString section;
    for (const Format &format : readFormats(file)) {
        QCOMPARE(format.background.isValid(), format.section != section);
        section = format.section;
    }
}

void TestTextFormats::fontIsInstalledAndHasFixedPitch()
{
    QFETCH(QString, file);
    for (const Format &format : readFormats(file)) {
        QCOMPARE(format.size, 10);
        QVERIFY(QFontDatabase::isFixedPitch(format.family));
        QCOMPARE(QFontInfo(QFont(format.family, format.size)).family(), format.family);
    }
}

void TestTextFormats::textIsReadable()
{
    QFETCH(QString, file);
    const Formats formats = readFormats(file);
    for (const Format &format : formats) {
        const bool standard = format.name == u"Standard text" || format.name == u"Normal text";
        QVERIFY2(contrast(format.foreground, paper(formats, format.section)) >= (standard ? 7.0 : 4.5),
                 qPrintable(format.name));
    }
}

// The editor uses this background for the text between two matching brackets.
void TestTextFormats::lightTextIsReadableOnTheBracketBackground()
{
    for (const Format &format : readFormats(u"textformats.xml"_s))
        QVERIFY2(contrast(format.foreground, QColor(u"lightcyan"_s)) >= 4.5, qPrintable(format.name));
}

// The matrices for complete defects are from Machado, Oliveira and Fernandes: A Physiologically-based Model for
// Simulation of Color Vision Deficiency, 2009.
void TestTextFormats::formatsDifferForColourBlindUsers_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<Matrix>("vision");
    const std::array<std::pair<const char *, Matrix>, 4> visions{
        {{"full colour", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
         {"without red",
          {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
         {"without green",
          {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
         {"without blue",
          {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}}}};
    for (const auto &[name, vision] : visions) {
        QTest::addRow("light, %s", name) << u"textformats.xml"_s << vision;
        QTest::addRow("dark, %s", name) << u"textformats-dark.xml"_s << vision;
    }
}

void TestTextFormats::formatsDifferForColourBlindUsers()
{
    QFETCH(QString, file);
    QFETCH(Matrix, vision);
    Formats painted;
    for (const Format &format : readFormats(file)) {
        if (format.section == u"Text editor" && format.name != u"Reserved")
            painted.append(format);
    }
    QCOMPARE(painted.size(), 7);
    for (const Format &one : painted) {
        for (const Format &other : painted) {
            const bool same = one.name == other.name;
            QVERIFY2(same || difference(one.foreground, other.foreground, vision) >= 20,
                     qPrintable(one.name + u" and "_s + other.name));
        }
    }
}

void TestTextFormats::stylesAreUsedSparingly()
{
    QFETCH(QString, file);
    QStringList styled;
    for (const Format &format : readFormats(file)) {
        if (format.bold || format.italic)
            styled.append(format.name);
    }
    QCOMPARE(styled, (QStringList{u"Comment"_s, u"Keyword"_s}));
}

QTEST_MAIN(TestTextFormats)
#include "tst_textformatsfile.moc"

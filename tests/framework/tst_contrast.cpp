#include "editorcolours.h"
#include "helpbrowser.h"
#include "listview.h"
#include "memoryedit.h"
#include "outputseverity.h"
#include "projecttreeitem.h"
#include "propertylist.h"
#include "readablepalette.h"
#include "rowpainter.h"
#include "textformats.h"
#include "textmarkerwidget.h"
#include "timeplot.h"
#include <cmath>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr double Least = 4.5;

/// Contrast ratio, 1 to 21 (Web Content Accessibility Guidelines 2.1).
double contrast(const QColor &one, const QColor &two)
{
    const auto luminance = [](const QColor &colour) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(one), luminance(two)});
    return (light + 0.05) / (dark + 0.05);
}

/// @p colour as it looks over @p paper.
QColor over(const QColor &paper, const QColor &colour)
{
    const auto mix = [&](int below, int above) { return below + (above - below) * colour.alpha() / 255; };
    return {mix(paper.red(), colour.red()), mix(paper.green(), colour.green()), mix(paper.blue(), colour.blue())};
}

TextFormats formatsOf(const QString &scheme)
{
    TextFormats formats;
    formats.loadFromFile(QStringLiteral(VARNEL_SOURCE_DIR "/config/") + scheme);
    return formats;
}

QColor paperOf(const TextFormats &formats, const QString &section)
{
    return formats.bgColour(section, formats.formats(section).value(0));
}

/// A palette as a desktop of that lightness has it, with the colours of a section of the formats.
QPalette paletteOf(const TextFormats &formats, const QString &section)
{
    QPalette palette(paperOf(formats, section).lightness() < 128 ? QColor(0x35, 0x35, 0x38) : QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Base, paperOf(formats, section));
    palette.setColor(QPalette::Text, formats.fgColour(section, formats.formats(section).value(0)));
    return palette;
}

void compare(const QColor &text, const QColor &paper, const QString &what)
{
    const double ratio = contrast(text, paper);
    QVERIFY2(ratio >= Least,
             qPrintable(u"%1: %2 on %3 is %4"_s.arg(what, text.name(), paper.name(), QString::number(ratio))));
}
} // namespace

/// All colours that text is painted in can be read on what is painted behind it, in both schemes of the product.
class ContrastTest : public QObject
{
    Q_OBJECT

private:
    static void schemes()
    {
        QTest::addColumn<QString>("scheme");
        QTest::newRow("light") << u"textformats.xml"_s;
        QTest::newRow("dark") << u"textformats-dark.xml"_s;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void everyFormatIsReadableOnPaperBandsAndMarks_data() { schemes(); }
    void everyFormatIsReadableOnPaperBandsAndMarks()
    {
        QFETCH(const QString, scheme);
        const TextFormats formats = formatsOf(scheme);
        QVERIFY(!formats.sections().isEmpty());
        for (const QString &section : formats.sections()) {
            const QColor paper = paperOf(formats, section);
            const EditorColours colours = editorColours(paper);
            for (const QString &format : formats.formats(section)) {
                const QColor text = formats.fgColour(section, format);
                compare(text, paper, format);
                compare(text, over(paper, colours.currentLine), format + u" in the line of the cursor"_s);
                compare(text, colours.bracket, format + u" in brackets"_s);
                compare(text, colours.match, format + u" that is found"_s);
                compare(text, colours.statement, format + u" in the next statement"_s);
                compare(text, colours.caller, format + u" in the line of a caller"_s);
            }
        }
    }

    void marksDifferFromThePaper_data() { schemes(); }
    void marksDifferFromThePaper()
    {
        QFETCH(const QString, scheme);
        const TextFormats formats = formatsOf(scheme);
        const QColor paper = paperOf(formats, formats.sections().value(0));
        const EditorColours colours = editorColours(paper);
        QVERIFY(over(paper, colours.currentLine) != paper);
        QVERIFY(colours.bracket != paper);
        QVERIFY(contrast(colours.matchFrame, paper) > 1.5);
    }

    void errorsAndWarningsOfTheOutputAreReadable_data() { schemes(); }
    void errorsAndWarningsOfTheOutputAreReadable()
    {
        QFETCH(const QString, scheme);
        const QPalette palette = paletteOf(formatsOf(scheme), u"Output window"_s);
        const QColor paper = palette.color(QPalette::Base);
        compare(outputColour(OutputSeverity::Error, palette), paper, u"error"_s);
        compare(outputColour(OutputSeverity::Warning, palette), paper, u"warning"_s);
    }

    void addressesAndChangedBytesOfMemoryAreReadable_data() { schemes(); }
    void addressesAndChangedBytesOfMemoryAreReadable()
    {
        QFETCH(const QString, scheme);
        MemoryEdit edit;
        edit.setPalette(paletteOf(formatsOf(scheme), u"Workspace"_s));
        edit.showLines({{0, {{0, 1, false}, {0, 2, true}}}}, 8, 2, 1);
        QTextCursor cursor(edit.document());
        int coloured = 0;
        while (!cursor.atEnd()) {
            cursor.movePosition(QTextCursor::NextCharacter);
            if (!cursor.charFormat().hasProperty(QTextFormat::ForegroundBrush))
                continue;
            ++coloured;
            compare(cursor.charFormat().foreground().color(), edit.palette().color(QPalette::Base),
                    u"character %1"_s.arg(cursor.position()));
        }
        QVERIFY(coloured > 2);
    }

    void warningsOfPropertiesAreReadable_data() { schemes(); }
    void warningsOfPropertiesAreReadable()
    {
        QFETCH(const QString, scheme);
        PropertyList list(u"Property"_s, u"Value"_s);
        list.setPalette(paletteOf(formatsOf(scheme), u"Workspace"_s));
        compare(list.warningColor(), list.palette().color(QPalette::Base), u"warning"_s);
    }

    /// The colours of the addresses, places and source lines in a disassembly.
    void coloursOfRowsAreMadeReadable_data() { schemes(); }
    void coloursOfRowsAreMadeReadable()
    {
        QFETCH(const QString, scheme);
        const QColor base = paperOf(formatsOf(scheme), u"Text editor"_s);
        const EditorColours colours = editorColours(base);
        for (const QColor &paper : {base, colours.statement, colours.caller}) {
            for (const char *colour : {"#0000ff", "#808080", "#006000", "#ff0000", "#ffffff", "#000000"})
                compare(readableOn(paper, QColor(QLatin1StringView(colour))), paper, QLatin1StringView(colour));
        }
    }

    void numbersOfLinesAreReadable_data() { schemes(); }
    void numbersOfLinesAreReadable()
    {
        QFETCH(const QString, scheme);
        QPalette palette = paletteOf(formatsOf(scheme), u"Text editor"_s);
        const QColor paper = palette.color(QPalette::Button);
        compare(TextMarkerWidget::numberColour(palette), paper, u"number"_s);
        palette.setColor(QPalette::ButtonText, Qt::gray); // of a desktop with weak colours
        compare(TextMarkerWidget::numberColour(palette), paper, u"weak number"_s);
    }

    void scalesOfAPlotAreReadable_data() { schemes(); }
    void scalesOfAPlotAreReadable()
    {
        QFETCH(const QString, scheme);
        QPalette palette = paletteOf(formatsOf(scheme), u"Workspace"_s);
        const QColor paper = palette.color(QPalette::Base);
        compare(TimePlot::scaleColour(palette), paper, u"scale"_s);
        palette.setColor(QPalette::Text, paper.lightness() < 128 ? QColor(0xaa, 0xaa, 0xaa) : QColor(0x55, 0x55, 0x55));
        compare(TimePlot::scaleColour(palette), paper, u"weak scale"_s);
    }

    void valuesAtTheReadingLineOfAPlotAreReadable_data() { schemes(); }
    void valuesAtTheReadingLineOfAPlotAreReadable()
    {
        QFETCH(const QString, scheme);
        const QPalette palette = paletteOf(formatsOf(scheme), u"Workspace"_s);
        for (int style = 0; style < 12; ++style)
            compare(TimePlot::readingColour(style, palette), TimePlot::readingPaper(palette), u"curve %1"_s.arg(style));
    }

    /// Old values, files that are missing, projects that are not loaded.
    void fadedRowsAreReadable_data()
    {
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<QColor>("disabled");
        QTest::newRow("light") << u"textformats.xml"_s << QColor(190, 190, 190);
        QTest::newRow("light, transparent") << u"textformats.xml"_s << QColor(0, 0, 0, 90);
        QTest::newRow("dark") << u"textformats-dark.xml"_s << QColor(90, 90, 90);
    }

    void fadedRowsAreReadable()
    {
        QFETCH(const QString, scheme);
        QFETCH(const QColor, disabled);
        QPalette palette = paletteOf(formatsOf(scheme), u"Workspace"_s);
        palette.setColor(QPalette::Disabled, QPalette::Text, disabled);
        const QColor paper = palette.color(QPalette::Base);
        compare(fadedText(palette), paper, u"old value"_s);
        QVERIFY(contrast(fadedText(palette), paper) < contrast(palette.color(QPalette::Text), paper));
        ListView list;
        ProjectTreeItem row(&list, nullptr, u"missing.c"_s, nullptr, nullptr, 0, false);
        row.setFaded(true);
        QStyleOptionViewItem option;
        option.palette = palette;
        row.initStyleOption(&option, 0);
        compare(option.palette.color(QPalette::Text), paper, u"missing file"_s);
    }

    void placeholdersAreReadable_data() { schemes(); }
    void placeholdersAreReadable()
    {
        QFETCH(const QString, scheme);
        QPalette palette = paletteOf(formatsOf(scheme), u"Workspace"_s);
        QColor weak = palette.color(QPalette::Text);
        weak.setAlpha(128);
        palette.setColor(QPalette::PlaceholderText, weak);
        const QPalette mended = readablePalette(palette);
        const QColor paper = mended.color(QPalette::Base);
        compare(over(paper, mended.color(QPalette::PlaceholderText)), paper, u"placeholder"_s);
    }

    void textsOfTheHelpAreReadable_data() { schemes(); }
    void textsOfTheHelpAreReadable()
    {
        QFETCH(const QString, scheme);
        const QPalette palette = paletteOf(formatsOf(scheme), u"Text editor"_s);
        const QString style = helpStyleSheet(palette);
        static const QRegularExpression link(u"a \\{ color: (#\\w+)"_s);
        static const QRegularExpression background(u"background-color: (#\\w+)"_s);
        const QColor linkColour(link.match(style).captured(1));
        QVERIFY(linkColour.isValid());
        QList<QColor> papers{palette.color(QPalette::Base)};
        for (const QRegularExpressionMatch &match : background.globalMatch(style))
            papers.append(QColor(match.captured(1)));
        QVERIFY(papers.size() > 2);
        for (const QColor &paper : papers) {
            compare(palette.color(QPalette::Text), paper, u"text"_s);
            compare(linkColour, paper, u"link"_s);
        }
    }
};

QTEST_MAIN(ContrastTest)
#include "tst_contrast.moc"

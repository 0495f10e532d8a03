#include "glyphwarmup.h"
#include "textformats.h"
#include <algorithm>
#include <QTest>

using namespace Qt::StringLiterals;

class GlyphWarmUpTest : public QObject
{
    Q_OBJECT

private:
    static QTextCharFormat formatOf(const QFont &font)
    {
        QTextCharFormat format;
        format.setFont(font);
        return format;
    }

private Q_SLOTS:
    void everyFontOfTheFormatsIsPaintedOnce()
    {
        TextFormats formats;
        QVERIFY(formats.loadFromFile(QStringLiteral(VARNEL_SOURCE_DIR "/config/textformats.xml")));
        GlyphWarmUp glyphs;
        glyphs.start(formats.formatTable(), 1);
        QStringList faces;
        for (const QFont &font : glyphs.fonts()) {
            QCOMPARE(font.family(), u"DejaVu Sans Mono"_s);
            QCOMPARE(font.pointSize(), 10);
            faces.append((font.bold() ? u"bold"_s : u"normal"_s) + (font.italic() ? u" italic"_s : QString()));
        }
        faces.sort();
        QCOMPARE(faces, (QStringList{u"bold"_s, u"normal"_s, u"normal italic"_s}));
        QTRY_VERIFY(glyphs.fonts().isEmpty());
    }

    /// A format that names only its weight is painted in the family and size of standard text.
    void standardTextCompletesOtherFormats()
    {
        FormatTable table{{FormatId::Standard, formatOf(QFont(u"DejaVu Sans Mono"_s, 12))}};
        table[FormatId::Keyword].setFontWeight(QFont::Bold);
        GlyphWarmUp glyphs;
        glyphs.start(table, 1);
        QCOMPARE(glyphs.fonts().size(), 2);
        const auto bold = std::ranges::find_if(glyphs.fonts(), [](const QFont &font) { return font.bold(); });
        QVERIFY(bold != glyphs.fonts().cend());
        QCOMPARE(bold->family(), u"DejaVu Sans Mono"_s);
        QCOMPARE(bold->pointSize(), 12);
    }

    void pixelsCountForTheLargestFont()
    {
        QFont font(u"DejaVu Sans Mono"_s);
        font.setPixelSize(GlyphWarmUp::LargestSize);
        GlyphWarmUp glyphs;
        glyphs.start({{FormatId::Standard, formatOf(font)}}, 1);
        QCOMPARE(glyphs.fonts().size(), 1);
        glyphs.start({{FormatId::Standard, formatOf(font)}}, 1.25);
        QVERIFY(glyphs.fonts().isEmpty());
        font.setPixelSize(GlyphWarmUp::LargestSize + 1);
        glyphs.start({{FormatId::Standard, formatOf(font)}}, 1);
        QVERIFY(glyphs.fonts().isEmpty());
    }

    void newFormatsReplaceWhatIsLeft()
    {
        GlyphWarmUp glyphs;
        glyphs.start({{FormatId::Standard, formatOf(QFont(u"DejaVu Sans Mono"_s, 30))}}, 2);
        glyphs.start({{FormatId::Standard, formatOf(QFont(u"DejaVu Sans Mono"_s, 8))}}, 1);
        QCOMPARE(glyphs.fonts().size(), 1);
        QCOMPARE(glyphs.fonts().first().pointSize(), 8);
        QTRY_VERIFY(glyphs.fonts().isEmpty());
        glyphs.start({{FormatId::Standard, formatOf(QFont(u"DejaVu Sans Mono"_s, 9))}}, 1);
        QTRY_VERIFY(glyphs.fonts().isEmpty());
    }

    void withoutFormatsThereIsNothingToDo()
    {
        GlyphWarmUp glyphs;
        glyphs.start({}, 1);
        QVERIFY(glyphs.fonts().isEmpty());
        QCoreApplication::processEvents();
        QVERIFY(glyphs.fonts().isEmpty());
    }
};

QTEST_MAIN(GlyphWarmUpTest)
#include "tst_glyphwarmup.moc"

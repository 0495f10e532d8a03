#include "linelayout.h"
#include "longline.h"
#include "paragdata.h"
#include <cmath>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
const QString MarkedE = u"e\u0301"_s;   // two characters, one place
const QString Face = u"\U0001F600"_s;   // two code units
const QString Wide = u"\u4DC0\u4DC1"_s; // two characters of another font that are wider than the letters

QFont testFont()
{
    QFont font(u"DejaVu Sans Mono"_s, 10);
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

/// A document with the layout of the editor.
std::unique_ptr<QTextDocument> documentOf(const QString &text)
{
    auto document = std::make_unique<QTextDocument>();
    document->setDocumentLayout(new LineLayout(document.get()));
    document->setDefaultFont(testFont());
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(33.4);
    document->setDefaultTextOption(option);
    document->setPlainText(text);
    return document;
}

LineLayout &layoutOf(const QTextDocument &document)
{
    return *qobject_cast<LineLayout *>(document.documentLayout());
}

/// The same line, laid out as a whole.
class WholeLayout
{
public:
    explicit WholeLayout(const QTextDocument &document, const QTextBlock &block)
        : m_layout(block.text(), document.defaultFont())
    {
        QTextOption option = document.defaultTextOption();
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        m_layout.setTextOption(option);
        m_layout.setFormats(block.layout()->formats());
        m_layout.setCacheEnabled(true);
        m_layout.beginLayout();
        QTextLine line = m_layout.createLine();
        line.setLeadingIncluded(true);
        line.setLineWidth(1e7);
        line.setPosition({document.documentMargin(), 0});
        m_layout.endLayout();
    }
    [[nodiscard]] QTextLine line() const { return m_layout.lineAt(0); }
    [[nodiscard]] const QTextLayout &layout() const { return m_layout; }

private:
    QTextLayout m_layout;
};

/// Empty, or what is wrong with the places of the first line: about @p samples of them are looked at.
QString differenceToWhole(const QTextDocument &document, int samples)
{
    const QTextBlock block = document.firstBlock();
    const WholeLayout whole(document, block);
    const LineLayout &layout = layoutOf(document);
    const int length = block.length() - 1;
    for (int i = 0; i <= samples; ++i) {
        const int index = int(qint64(length) * i / samples);
        if (!whole.layout().isValidCursorPosition(index))
            continue;
        const qreal expected = whole.line().cursorToX(index);
        if (const qreal x = layout.xOf(block, index); std::abs(x - expected) > 0.05)
            return u"character %1 is at %2 instead of %3"_s.arg(index).arg(x).arg(expected);
        if (const int found = layout.indexAt(block, expected + 0.1); found != whole.line().xToCursor(expected + 0.1))
            return u"at %1 is character %2 instead of %3"_s.arg(expected).arg(found).arg(index);
    }
    return {};
}

QImage picture(const std::function<void(QPainter &)> &draw)
{
    QImage image(600, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    draw(painter);
    return image;
}
} // namespace

/// The places in long lines are those of a layout of the whole line, and the pictures are the same.
class LongLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placesAreThoseOfTheWholeLine_data();
    void placesAreThoseOfTheWholeLine();
    void placesStayRightAfterChanges_data() { placesAreThoseOfTheWholeLine_data(); }
    void placesStayRightAfterChanges();
    void formatsWithOtherWidthsCount();
    void everyPropertyThatChangesWidthsCounts_data();
    void everyPropertyThatChangesWidthsCounts();
    void overlappingFormatsAreThoseOfTheWholeLine();
    void manyFormatsAreMeasured();
    void replacementOfTheSameLengthIsMeasured();
    void longInsertionIsMeasured();
    void changeOverTwoLinesIsMeasured();
    void lineThatWasNotShownHasNoPartInTheWidth();
    void fontAndTabsOfTheDocumentCount();
    void lineOfFiveMillions();
    void pictureIsThatOfTheWholeLine_data() { placesAreThoseOfTheWholeLine_data(); }
    void pictureIsThatOfTheWholeLine();
    void composedTextIsShown();
    void lineThatBecomesShortIsLaidOutAsAWhole_data();
    void lineThatBecomesShortIsLaidOutAsAWhole();
    void documentIsAsWideAsItsWidestLine();
    void textOfPartsIsThatOfTheLine();
};

void LongLineTest::placesAreThoseOfTheWholeLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << u"int value_x = some(call, 12); "_s.repeated(700);
    QTest::newRow("one word") << QString(20'000, u'x');
    QTest::newRow("tabs") << u"a\tbcd\t\tefghijklm\t"_s.repeated(1200);
    QTest::newRow("tabs only") << QString(20'000, u'\t');
    QTest::newRow("few tabs") << (u"abcde "_s.repeated(500) + u'\t').repeated(7);
    QTest::newRow("wide") << (u"abc"_s + Wide).repeated(4200);
    QTest::newRow("combining") << (u"ab"_s + MarkedE).repeated(5100);
    QTest::newRow("combining only") << MarkedE.repeated(10'100);
    QTest::newRow("surrogates") << (u"a "_s + Face).repeated(5100);
    QTest::newRow("surrogates only") << Face.repeated(10'100);
    QTest::newRow("letters")
        << u"\u0441\u043B\u043E\u0432\u043E \u03BB\u03CC\u03B3\u03BF\u03C2 \u00E4\u00DF\u00E9 "_s.repeated(1500);
    QTest::newRow("all") << (u"x = 1;\t"_s + Wide + u" \t"_s + MarkedE + Face + u"\u20AC"_s).repeated(1300);
}

void LongLineTest::placesAreThoseOfTheWholeLine()
{
    QFETCH(const QString, text);
    QVERIFY(text.size() > 20'000 - 2000);
    const auto document = documentOf(text);
    QCOMPARE(differenceToWhole(*document, 997), u""_s);
    QCOMPARE(document->firstBlock().layout()->lineCount(), 0);
    const LongLine &line = layoutOf(*document).longLine(document->firstBlock());
    QVERIFY(std::abs(line.width() - WholeLayout(*document, document->firstBlock()).line().horizontalAdvance()) < 0.05);
}

void LongLineTest::placesStayRightAfterChanges()
{
    QFETCH(const QString, text);
    const auto document = documentOf(text);
    const bool isComparable = !text.contains(Face); // a layout of the whole line divides some of them
    QRandomGenerator random(7);
    const QStringList inserted{u"x"_s, u"\t"_s, Wide, MarkedE, Face, QString(700, u'y'), QString(QChar(0x301)), u""_s};
    QVERIFY(layoutOf(*document).xOf(document->firstBlock(), 5000) > 0); // measures it
    for (int round = 0; round < 60; ++round) {
        QTextCursor cursor(document.get());
        const int length = document->firstBlock().length() - 1;
        const auto between = [&](int position) { // characters
            return document->characterAt(position).isLowSurrogate() ? position - 1 : position;
        };
        const int drawn = round % 3 ? random.bounded(length) : (round % 2 ? length : 256 * random.bounded(60));
        const int position = between(drawn);
        cursor.setPosition(position);
        cursor.setPosition(between(std::min(length, position + (round % 2 ? random.bounded(300) : 0))),
                           QTextCursor::KeepAnchor);
        cursor.insertText(inserted[round % inserted.size()]);
        if (isComparable && round % 20 == 19)
            QCOMPARE(differenceToWhole(*document, 97), u""_s);
        const LongLine &line = layoutOf(*document).longLine(document->firstBlock());
        const LongLine measuredAgain(document->firstBlock(),
                                     std::make_shared<LongLineStyle>(document->defaultFont(), 33.4));
        QCOMPARE(line.width(), measuredAgain.width());
        QCOMPARE(line.xOf(position), measuredAgain.xOf(position));
    }
    while (document->isUndoAvailable())
        document->undo();
    QVERIFY(document->toPlainText() == text);
    QCOMPARE(differenceToWhole(*document, 97), u""_s);
}

void LongLineTest::formatsWithOtherWidthsCount()
{
    const auto document = documentOf(u"int value_x = some(call, 12); "_s.repeated(700));
    QTextCharFormat large;
    large.setFontPointSize(17);
    QTextCharFormat red;
    red.setForeground(Qt::red);
    document->firstBlock().layout()->setFormats({{10, 300, red}, {400, 77, large}, {1000, 500, red}});
    QCOMPARE(differenceToWhole(*document, 4000), u""_s);
}

void LongLineTest::everyPropertyThatChangesWidthsCounts_data()
{
    QTest::addColumn<QTextCharFormat>("format");
    const auto row = [](const char *name, const auto &change) {
        QTextCharFormat format;
        change(format);
        QTest::newRow(name) << format;
    };
    row("family", [](QTextCharFormat &format) { format.setFontFamilies({u"DejaVu Sans Mono"_s}); });
    row("point size", [](QTextCharFormat &format) { format.setFontPointSize(17); });
    row("pixel size", [](QTextCharFormat &format) { format.setProperty(QTextFormat::FontPixelSize, 30); });
    row("weight", [](QTextCharFormat &format) { format.setFontWeight(QFont::Bold); });
    row("stretch", [](QTextCharFormat &format) { format.setFontStretch(200); });
    row("letter spacing", [](QTextCharFormat &format) {
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(3);
    });
    row("word spacing", [](QTextCharFormat &format) { format.setFontWordSpacing(5); });
}

void LongLineTest::everyPropertyThatChangesWidthsCounts()
{
    QFETCH(const QTextCharFormat, format);
    const auto document = documentOf(u"int value_x = some(call, 12); "_s.repeated(700));
    QFont font(u"DejaVu Sans"_s);
    font.setPixelSize(13);
    font.setStyleStrategy(QFont::PreferNoShaping);
    document->setDefaultFont(font);
    const QTextBlock block = document->firstBlock();
    const qreal before = layoutOf(*document).xOf(block, 400);
    block.layout()->setFormats({{10, 300, format}});
    document->markContentsDirty(0, 1);
    QVERIFY(std::abs(layoutOf(*document).xOf(block, 400) - before) > 1);
    QCOMPARE(differenceToWhole(*document, 997), u""_s);
    block.layout()->clearFormats();
    document->markContentsDirty(0, 1);
    QCOMPARE(layoutOf(*document).xOf(block, 400), before);
}

void LongLineTest::overlappingFormatsAreThoseOfTheWholeLine()
{
    const auto document = documentOf(u"int value_x = some(call, 12); "_s.repeated(700));
    QTextCharFormat large;
    large.setFontPointSize(17);
    QTextCharFormat red;
    red.setForeground(Qt::red);
    document->firstBlock().layout()->setFormats({{10, 5000, large}, {20, 20, red}, {30, 10, large}});
    QCOMPARE(differenceToWhole(*document, 4000), u""_s);
}

void LongLineTest::manyFormatsAreMeasured()
{
    const auto document = documentOf(u"int value_x = some(call, 12); "_s.repeated(700));
    QList<QTextLayout::FormatRange> formats;
    for (int i = 0; i < 80; ++i) {
        QTextCharFormat format;
        format.setFontPointSize(10 + (i * 7) % 40);
        formats.append({i * 100, 50, format});
    }
    document->firstBlock().layout()->setFormats(formats);
    QCOMPARE(differenceToWhole(*document, 4000), u""_s);
}

void LongLineTest::replacementOfTheSameLengthIsMeasured()
{
    const auto document = documentOf(QString(20'000, u'x'));
    const QTextBlock block = document->firstBlock();
    const qreal before = layoutOf(*document).xOf(block, 20'000);
    QTextCursor cursor(document.get());
    cursor.setPosition(12'000);
    cursor.setPosition(12'002, QTextCursor::KeepAnchor);
    cursor.insertText(Wide);
    QVERIFY(layoutOf(*document).xOf(block, 20'000) > before + 1);
    QCOMPARE(differenceToWhole(*document, 997), u""_s);
}

// The text around a place that was asked for is kept.
void LongLineTest::longInsertionIsMeasured()
{
    const auto document = documentOf(QString(20'000, u'x'));
    QVERIFY(layoutOf(*document).xOf(document->firstBlock(), 12'000) > 0);
    QTextCursor cursor(document.get());
    cursor.setPosition(11'900);
    cursor.insertText(Wide.repeated(1000));
    QCOMPARE(differenceToWhole(*document, 997), u""_s);
    QVERIFY(layoutOf(*document).xOf(document->firstBlock(), 12'010) > 0);
    cursor.setPosition(100);
    cursor.insertText(QString(20'000, u'y')); // moves what is kept
    QCOMPARE(differenceToWhole(*document, 2000), u""_s);
}

/// The first line is as long as before.
void LongLineTest::changeOverTwoLinesIsMeasured()
{
    const auto document = documentOf(QString(20'000, u'x') + u'\n' + QString(100, u'y'));
    QCOMPARE(differenceToWhole(*document, 97), u""_s);
    QTextCursor cursor(document.get());
    cursor.setPosition(10'000);
    cursor.setPosition(20'001 + 50, QTextCursor::KeepAnchor);
    cursor.insertText(Wide.repeated(4'975));
    QCOMPARE(document->firstBlock().length(), 20'001);
    QCOMPARE(differenceToWhole(*document, 97), u""_s);
}

void LongLineTest::lineThatWasNotShownHasNoPartInTheWidth()
{
    const auto document = documentOf(QString(20'000, u'x') + u'\n' + QString(30'000, u'x') + u"\nshort"_s);
    LineLayout &layout = layoutOf(*document);
    QCOMPARE(layout.indexAt(document->lastBlock(), layout.xOf(document->lastBlock(), 2)), 2);
    QVERIFY(!layout.hasLongLines());
    QVERIFY(layout.blockBoundingRect(document->firstBlock()).height() > 5);
    QVERIFY(ensureParagData(document->findBlockByNumber(1))); // as if it was highlighted
    const qreal width = layout.documentSize().width();
    QTextCursor cursor(document.get());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(u"short"_s); // the other long line is not measured for it
    QVERIFY(!layout.hasLongLines());
    QVERIFY(layout.documentSize().width() < width);
}

void LongLineTest::fontAndTabsOfTheDocumentCount()
{
    const auto document = documentOf(u"int value_x = some(call, 12);\t"_s.repeated(700));
    const QTextBlock block = document->firstBlock();
    const qreal before = layoutOf(*document).xOf(block, 15'000);
    QTextOption option = document->defaultTextOption();
    option.setTabStopDistance(300);
    document->setDefaultTextOption(option);
    const qreal wideTabs = layoutOf(*document).xOf(block, 15'000);
    QVERIFY(wideTabs > before);
    QCOMPARE(differenceToWhole(*document, 97), u""_s);
    QFont font = testFont();
    font.setPointSize(20);
    document->setDefaultFont(font);
    QVERIFY(layoutOf(*document).xOf(block, 20) > 250);
    QVERIFY(layoutOf(*document).blockBoundingRect(block).height() > 30);
}

// Layouts of the toolkit end at 33 million pixels.
void LongLineTest::lineOfFiveMillions()
{
    const auto document = documentOf(QString(5'000'000, u'x'));
    const QTextBlock block = document->firstBlock();
    const LineLayout &layout = layoutOf(*document);
    const qreal width = layout.xOf(block, 1) - layout.xOf(block, 0);
    QCOMPARE(layout.xOf(block, 5'000'000), 4 + width * 5'000'000);
    QCOMPARE(layout.indexAt(block, 4 + width * 4'999'990 + 1), 4'999'990);
    QTextCursor cursor(document.get());
    cursor.setPosition(2'500'000);
    cursor.insertText(Wide);
    const qreal wide = layout.xOf(block, 2'500'002) - layout.xOf(block, 2'500'000);
    QVERIFY(wide > 2 * width);
    QCOMPARE(layout.xOf(block, 5'000'002), 4 + width * 5'000'000 + wide);
}

void LongLineTest::pictureIsThatOfTheWholeLine()
{
    QFETCH(const QString, text);
    const auto document = documentOf(text);
    const QTextBlock block = document->firstBlock();
    QTextCharFormat red;
    red.setForeground(Qt::red);
    block.layout()->setFormats({{5, 40, red}, {4000, 10, red}});
    QTextCharFormat selected;
    selected.setBackground(Qt::blue);
    selected.setForeground(Qt::white);
    const WholeLayout whole(*document, block);
    const LineLayout &layout = layoutOf(*document);
    for (const int index : {0, 4000, 4096, 9992, block.length() - 1}) { // 4096: between two pieces of plain text
        int shown = index;
        while (!whole.layout().isValidCursorPosition(shown))
            --shown;
        const qreal left = 200 - std::floor(layout.xOf(block, shown));
        const qreal above = layout.longLine(block).style().ascent() - whole.line().ascent();
        QList<QTextLayout::FormatRange> selections{{std::max(0, shown - 9), 6, selected}};
        if (above != 0) // a font of another height makes the whole line higher, and what is selected in it
            selections.clear();
        const QImage expected = picture([&](QPainter &painter) {
            whole.layout().draw(&painter, {left, 2 + above}, selections);
            if (above == 0)
                whole.layout().drawCursor(&painter, {left, 2}, shown, 2);
        });
        const QImage image = picture([&](QPainter &painter) {
            layout.longLine(block).draw(painter,
                                        {{left + 4, 2}, {0, 0, 600, 30}, selections, above == 0 ? shown : -1, 2});
        });
        QCOMPARE(image, expected);
        QVERIFY(image != picture([](QPainter &) {}));
    }
}

void LongLineTest::composedTextIsShown()
{
    const auto document = documentOf(QString(20'000, u'x'));
    const QTextBlock block = document->firstBlock();
    const LineLayout &layout = layoutOf(*document);
    const qreal width = layout.longLine(block).width();
    block.layout()->setPreeditArea(12'000, u"abc"_s);
    QCOMPARE(layout.longLine(block).width(), width / 20'000 * 20'003);
    const auto drawn = [&] {
        return picture([&](QPainter &painter) {
            layout.longLine(block).draw(painter, {{300 - width / 20'000 * 12'000, 2}, {0, 0, 600, 30}, {}});
        });
    };
    const QImage composing = drawn();
    block.layout()->setPreeditArea(-1, {});
    const QImage before = drawn();
    QVERIFY(composing != before);
    QTextCursor cursor(document.get());
    cursor.setPosition(12'000);
    cursor.insertText(u"abc"_s);
    QCOMPARE(drawn(), composing);
}

void LongLineTest::lineThatBecomesShortIsLaidOutAsAWhole_data()
{
    QTest::addColumn<QString>("behind");
    QTest::newRow("first line") << u"\nend"_s;
    QTest::newRow("last line") << QString();
}

void LongLineTest::lineThatBecomesShortIsLaidOutAsAWhole()
{
    QFETCH(const QString, behind);
    const auto document = documentOf(QString(LongLine::Limit, u'x') + behind);
    const QTextBlock block = document->firstBlock();
    const LineLayout &layout = layoutOf(*document);
    const qreal before = layout.xOf(block, 9000);
    const qreal height = layout.blockBoundingRect(block).height();
    QCOMPARE(block.layout()->lineCount(), 1);
    QTextCursor cursor(document.get());
    cursor.insertText(u"y"_s);
    QVERIFY(LongLine::isLong(block));
    QCOMPARE(layout.xOf(block, 9000), before);
    QCOMPARE(layout.blockBoundingRect(block).height(), height);
    QCOMPARE(block.layout()->lineCount(), 0);
    cursor.deletePreviousChar();
    QCOMPARE(layout.xOf(block, 9000), before);
    QCOMPARE(block.layout()->lineCount(), 1);
    QCOMPARE(layout.blockBoundingRect(block).height(), height);
}

void LongLineTest::documentIsAsWideAsItsWidestLine()
{
    const auto document = documentOf(u"short\n"_s + QString(20'000, u'x') + u'\n' + QString(30'000, u'x'));
    LineLayout &layout = layoutOf(*document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        QVERIFY(layout.blockBoundingRect(block).height() > 5); // as when they become visible
    const qreal width = layout.longLine(document->lastBlock()).width();
    QVERIFY(layout.documentSize().width() >= width && layout.documentSize().width() < width + 300);
    QTextCursor cursor(document->lastBlock());
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.insertText(u"last"_s);
    const qreal rest = layout.longLine(document->findBlockByNumber(1)).width();
    QVERIFY(layout.documentSize().width() >= rest && layout.documentSize().width() < rest + 300);
    document->setPlainText(u"abc"_s);
    QVERIFY(layout.documentSize().width() < 300);
}

void LongLineTest::textOfPartsIsThatOfTheLine()
{
    const QString text = u"int value_x = some(call, 12); "_s.repeated(1000);
    const auto document = documentOf(u"first\n"_s + text);
    QTextCursor cursor(document.get());
    cursor.setPosition(500);
    cursor.insertText(u"!"_s); // the text is not in one part of memory any more
    const QString line = document->lastBlock().text();
    for (const auto &[from, length] : {std::pair(0, 20), {480, 40}, {100, 16'000}, {100, 20'000}, {29'990, 11}})
        QCOMPARE(LongLine::textOf(document->lastBlock(), from, length), line.mid(from, length));
}

QTEST_MAIN(LongLineTest)
#include "tst_longline.moc"

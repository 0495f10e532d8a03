#include "fontshaping.h"
#include "painted.h"
#include "textformats.h"
#include <QFont>
#include <QTest>

using namespace Qt::StringLiterals;

class FontShapingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fontsWithLigaturesAndKerningNeedShaping()
    {
        QVERIFY(looksTheSameUnshaped(QFont(u"DejaVu Sans Mono"_s, 10)));
        QVERIFY(!looksTheSameUnshaped(QFont(u"DejaVu Sans"_s, 10))); // joins "fi", moves "AV" together
    }

    void shapingCanBeSwitchedOnAgain()
    {
        QFont font(u"DejaVu Sans Mono"_s, 10);
        font.setStyleStrategy(QFont::PreferNoShaping);
        QCOMPARE(withShaping(font), QFont(u"DejaVu Sans Mono"_s, 10));
    }

    /// Accents are combined with their letters only by shaping.
    void onlyLinesOfSimpleCharactersAreUnshaped()
    {
        TextFormats formats;
        QVERIFY(formats.loadFromFile(QStringLiteral(VARNEL_SOURCE_DIR "/config/textformats.xml")));
        const FormatTable table = formats.formatTable();
        SyntaxHighlighter highlighter(&table);
        const auto document = plainDocument(u"int caf\u00e9;\ncafe\u0301\n\u4e2d"_s);
        const auto isUnshaped = [&](int line) {
            const QTextBlock block = document->findBlockByNumber(line);
            highlighter.process(document.get(), block, 0);
            return block.layout()->formats().value(0).format.fontStyleStrategy() == QFont::PreferNoShaping;
        };
        QVERIFY(isUnshaped(0));
        QVERIFY(!isUnshaped(1));
        QVERIFY(!isUnshaped(2));
    }
};

QTEST_MAIN(FontShapingTest)
#include "tst_fontshaping.moc"

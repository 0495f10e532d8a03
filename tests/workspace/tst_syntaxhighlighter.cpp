#include "cpphighlighter.h"
#include "painted.h"
#include "pythonhighlighter.h"
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Golden = QStringLiteral(VARNEL_SOURCE_DIR "/tests/workspace/golden/highlighting/");

std::unique_ptr<SyntaxHighlighter> highlighterFor(const QString &language, const FormatTable &formats)
{
    if (language == u"cpp")
        return std::make_unique<CppHighlighter>(&formats);
    return std::make_unique<PythonHighlighter>(&formats);
}

void processAll(SyntaxHighlighter &highlighter, QTextDocument &document)
{
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
        highlighter.process(&document, block, 0);
}

// The lines of a golden file's section that contain source text.
QString sourceOf(const QString &section)
{
    const QStringList lines = section.split(u'\n', Qt::SkipEmptyParts);
    QStringList source;
    for (qsizetype i = 0; i < lines.size(); i += 3)
        source.append(lines[i].mid(1));
    return source.join(u'\n');
}

QList<int> states(const QTextDocument &document)
{
    QList<int> states;
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
        states.append(block.userState());
    return states;
}

void insert(QTextDocument &document, int position, const QString &text)
{
    QTextCursor cursor(&document);
    cursor.setPosition(position);
    cursor.insertText(text);
}
} // namespace

class tst_SyntaxHighlighter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void highlightingEqualsTheGoldenFiles_data();
    void highlightingEqualsTheGoldenFiles();
    void keywordTablesAreComplete_data();
    void keywordTablesAreComplete();
    void plainTextIsStandardText();
    void lineStartsWithTheEndStateAbove();
    void longLineIsStandardTextBehindItsStart();
    void longLineHasNoLigatures();
    void onlyTextOfTheFirst256CharactersIsLaidOutWithoutShaping();
    void linesWithoutStateAboveAreRunFirst();
    void manyLinesWithoutStateNeedNoRecursion();
    void changedEndStateMarksTheNextLine();
    void unchangedEndStateMarksNoLine();
    void runWithoutInvalidateMarksNoLine();
    void secondRunReplacesTheBrackets();
    void markersAreKeptByARun();
    void missingFormatIsReplacedByTheBackground();
    void missingTableFailsAnAssertionAndGivesEmptyFormats();
    void formatTableCanBeSetLater();
    void composedTextKeepsItsFormats();
};

// Each line of a file starts with "|"; below it are the format identifier of each character, and then "=", the end
// state and the brackets with their positions. A line "--" starts a new document.
void tst_SyntaxHighlighter::highlightingEqualsTheGoldenFiles_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("path");
    for (const QString &language : {u"cpp"_s, u"python"_s}) {
        const QFileInfoList files = QDir(Golden + language).entryInfoList(QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &file : files)
            QTest::newRow(qPrintable(language + u'/' + file.fileName())) << language << file.filePath();
    }
}

void tst_SyntaxHighlighter::highlightingEqualsTheGoldenFiles()
{
    QFETCH(QString, language);
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const FormatTable formats = readableFormats();
    const auto highlighter = highlighterFor(language, formats);
    const QStringList sections = QString::fromUtf8(file.readAll()).split(u"--\n"_s);
    for (const QString &section : sections) {
        const auto document = plainDocument(sourceOf(section));
        processAll(*highlighter, *document);
        QCOMPARE(painted(*document), section);
    }
}

void tst_SyntaxHighlighter::keywordTablesAreComplete_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("keywords");
    QTest::addColumn<QStringList>("words");
    QTest::newRow("C")
        << u"cpp"_s
        << u"and and_eq asm auto bitand bitor bool break case catch char class compl const const_cast "
           u"continue default delete do double dynamic_cast else enum explicit export extern false FALSE "
           u"float for friend goto if inline int long mutable namespace new not not_eq operator or or_eq "
           u"private protected public register reinterpret_cast return short signed sizeof static "
           u"static_cast struct switch template this throw true TRUE try typedef typeid typename union "
           u"unsigned using virtual void volatile wchar_t while xor xor_eq"_s.split(u' ')
        << u"nullptr override final True None constexpr Int ints i reinterpret_cast_ oi fo reinterpret_casts "_s.split(
               u' ');
    QTest::newRow("Python") << u"python"_s
                            << u"and del for is raise assert elif from lambda return break else global not try class "
                               u"except if or while continue exec import pass yield def finally in"_s.split(u' ')
                            << u"None True with as print nonlocal async int"_s.split(u' ');
}

void tst_SyntaxHighlighter::keywordTablesAreComplete()
{
    QFETCH(QString, language);
    QFETCH(QStringList, keywords);
    QFETCH(QStringList, words);
    QCOMPARE(keywords.size(), language == u"cpp" ? 76 : 28);
    const KeywordTable &table =
        (language == u"cpp" ? CppHighlighter::language() : PythonHighlighter::language()).keywords;
    for (const QString &keyword : keywords)
        QVERIFY(table.contains(keyword));
    for (const QString &word : words)
        QVERIFY(!table.contains(word));
}

void tst_SyntaxHighlighter::plainTextIsStandardText()
{
    const FormatTable formats = readableFormats();
    SyntaxHighlighter highlighter(&formats);
    const auto document = plainDocument(u"int (x); /* \n\nb"_s);
    processAll(highlighter, *document);
    QCOMPARE(painted(*document), u"|int (x); /* \n|111111111111\n=0\n|\n|\n=0\n|b\n|1\n=0\n"_s);
    QVERIFY(!paragDataOf(document->firstBlock()));
}

void tst_SyntaxHighlighter::lineStartsWithTheEndStateAbove()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"int x;\nint y;"_s);
    document->firstBlock().setUserState(4);
    highlighter.process(document.get(), document->lastBlock(), 0);
    QCOMPARE(painted(document->lastBlock()), u"222222"_s);
    QCOMPARE(document->lastBlock().userState(), 4);
    QCOMPARE(painted(document->firstBlock()), u"......"_s);
}

// The string at the start, a number before and behind the limit; the comment that is open there ends with its line.
void tst_SyntaxHighlighter::longLineIsStandardTextBehindItsStart()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const QString start = u"\"s\" "_s + QString(9990, u'a') + u" 1 "_s;
    const auto document = plainDocument(start + QString(5000, u'a') + u" 1 /* b\nint"_s);
    processAll(highlighter, *document);
    const QString formatted = painted(document->firstBlock());
    QCOMPARE(formatted.left(4), u"1411"_s);
    QCOMPARE(formatted[start.size() - 2], u'3');
    QCOMPARE(formatted.sliced(TableHighlighter::LongestPart),
             QString(formatted.size() - TableHighlighter::LongestPart, u'1'));
    QCOMPARE(states(*document), (QList<int>{0, 0}));
    QCOMPARE(painted(document->lastBlock()), u"666"_s);
}

void tst_SyntaxHighlighter::longLineHasNoLigatures()
{
    const FormatTable formats = readableFormats();
    CppHighlighter coloured(&formats);
    SyntaxHighlighter plain(&formats);
    for (SyntaxHighlighter *highlighter : {static_cast<SyntaxHighlighter *>(&coloured), &plain}) {
        const auto document = plainDocument(u"int short;\n"_s + u"int x; "_s.repeated(2000));
        processAll(*highlighter, *document);
        for (const auto &range : document->firstBlock().layout()->formats())
            QVERIFY(!range.format.hasProperty(QTextFormat::FontStyleStrategy));
        const auto ranges = document->lastBlock().layout()->formats();
        QVERIFY(!ranges.isEmpty());
        for (const auto &range : ranges)
            QCOMPARE(range.format.fontStyleStrategy(), QFont::PreferNoShaping);
    }
}

// Shaping combines characters, such as a letter and a mark.
void tst_SyntaxHighlighter::onlyTextOfTheFirst256CharactersIsLaidOutWithoutShaping()
{
    FormatTable formats = readableFormats();
    for (QTextCharFormat &format : formats)
        format.setFontStyleStrategy(QFont::PreferNoShaping);
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"int \u00e4;\nint e\u0301;"_s);
    processAll(highlighter, *document);
    const auto strategies = [](const QTextBlock &block) {
        QStringList found;
        for (const auto &range : block.layout()->formats())
            found << range.format.property(QTextFormat::FontStyleStrategy).toString();
        return found;
    };
    const QString without = QString::number(QFont::PreferNoShaping);
    QCOMPARE(strategies(document->firstBlock()), (QStringList{without, without}));
    QCOMPARE(strategies(document->lastBlock()), (QStringList{QString(), QString()}));
}

void tst_SyntaxHighlighter::linesWithoutStateAboveAreRunFirst()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"/* a\nb\nc */ d\ne"_s);
    highlighter.process(document.get(), document->findBlockByNumber(2), 0);
    QCOMPARE(states(*document), (QList<int>{4, 4, 0, -1}));
    QCOMPARE(painted(document->findBlockByNumber(1)), u"2"_s);
}

void tst_SyntaxHighlighter::manyLinesWithoutStateNeedNoRecursion()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"/*"_s + QString(300'000, u'\n'));
    highlighter.process(document.get(), document->lastBlock(), 0);
    QCOMPARE(document->lastBlock().userState(), 4);
}

void tst_SyntaxHighlighter::changedEndStateMarksTheNextLine()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"a\nb\nc"_s);
    processAll(highlighter, *document);
    QCOMPARE(states(*document), (QList<int>{0, 0, 0}));
    insert(*document, 0, u"/*"_s);
    highlighter.process(document.get(), document->firstBlock(), 0);
    QCOMPARE(states(*document), (QList<int>{4, -1, 0}));
    highlighter.process(document.get(), document->findBlockByNumber(1), 0);
    QCOMPARE(states(*document), (QList<int>{4, 4, -1}));
}

void tst_SyntaxHighlighter::unchangedEndStateMarksNoLine()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"a\nb"_s);
    processAll(highlighter, *document);
    insert(*document, 0, u"\"x\" /* y */ "_s);
    highlighter.process(document.get(), document->firstBlock(), 0);
    QCOMPARE(states(*document), (QList<int>{0, 0}));
    document->firstBlock().setUserState(-1); // marked, but the state of the last run is still stored below
    highlighter.process(document.get(), document->firstBlock(), 0);
    QCOMPARE(states(*document), (QList<int>{0, 0}));
}

void tst_SyntaxHighlighter::runWithoutInvalidateMarksNoLine()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"a\nb"_s);
    processAll(highlighter, *document);
    insert(*document, 0, u"/*"_s);
    highlighter.process(document.get(), document->firstBlock(), 0, false);
    QCOMPARE(states(*document), (QList<int>{4, 0}));
}

void tst_SyntaxHighlighter::secondRunReplacesTheBrackets()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"f(x)"_s);
    processAll(highlighter, *document);
    QCOMPARE(paragDataOf(document->firstBlock())->parenList,
             (QList<ParenEntry>{{ParenEntry::Open, u'(', 1}, {ParenEntry::Close, u')', 3}}));
    insert(*document, 1, u"[]"_s);
    processAll(highlighter, *document);
    QCOMPARE(stateAndBrackets(document->firstBlock()), u"0 [1 ]2 (3 )5"_s);
}

void tst_SyntaxHighlighter::markersAreKeptByARun()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"f();"_s);
    ParagData *data = ensureParagData(document->firstBlock());
    data->marker = 0x8001;
    processAll(highlighter, *document);
    QCOMPARE(paragDataOf(document->firstBlock()), data);
    QCOMPARE(data->marker, 0x8001u);
}

void tst_SyntaxHighlighter::missingFormatIsReplacedByTheBackground()
{
    FormatTable formats = readableFormats();
    formats.remove(FormatId::Comment);
    const SyntaxHighlighter highlighter(&formats);
    QCOMPARE(highlighter.format(FormatId::Comment), formats[FormatId::Background]);
    QCOMPARE(highlighter.format(FormatId::Keyword), formats[FormatId::Keyword]);
    formats.clear();
    QCOMPARE(highlighter.format(FormatId::Keyword), QTextCharFormat());
}

void tst_SyntaxHighlighter::missingTableFailsAnAssertionAndGivesEmptyFormats()
{
    const SyntaxHighlighter highlighter;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"m_formats\" in "_s));
    QCOMPARE(highlighter.format(FormatId::Standard), QTextCharFormat());
}

void tst_SyntaxHighlighter::formatTableCanBeSetLater()
{
    const FormatTable formats = readableFormats();
    PythonHighlighter highlighter;
    highlighter.setFormats(&formats);
    const auto document = plainDocument(u"pass # x"_s);
    processAll(highlighter, *document);
    QCOMPARE(painted(document->firstBlock()), u"66661222"_s);
}

void tst_SyntaxHighlighter::composedTextKeepsItsFormats()
{
    const FormatTable formats = readableFormats();
    CppHighlighter highlighter(&formats);
    const auto document = plainDocument(u"int x"_s);
    QTextLayout *layout = document->firstBlock().layout();
    QTextCharFormat underlined;
    underlined.setFontUnderline(true);
    layout->setPreeditArea(2, u"ab"_s);
    const QTextCharFormat &old = formats[FormatId::Comment];
    layout->setFormats({{0, 2, old}, {2, 2, underlined}, {4, 3, old}});
    processAll(highlighter, *document);
    QCOMPARE(layout->formats(),
             (QList<QTextLayout::FormatRange>{
                 {0, 5, formats[FormatId::Keyword]}, {5, 2, formats[FormatId::Standard]}, {2, 2, underlined}}));
    layout->setPreeditArea(4, u"ab"_s); // behind the word
    layout->setFormats({{4, 2, underlined}});
    processAll(highlighter, *document);
    QCOMPARE(layout->formats(),
             (QList<QTextLayout::FormatRange>{
                 {0, 3, formats[FormatId::Keyword]}, {3, 4, formats[FormatId::Standard]}, {4, 2, underlined}}));
}

QTEST_MAIN(tst_SyntaxHighlighter)
#include "tst_syntaxhighlighter.moc"

#include "textformats.h"
#include <QFile>
#include <QFont>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const auto Small = R"(<?xml version="1.0"?>
<!DOCTYPE formats>
<formats>
  <!-- the editor -->
  <section name="Text editor">
    text
    <format name="Standard text" fontFamily="Courier" fontSize="10" fgColour="102030" bgColour="fffff0"/>
    <entry name="Comment" fontFamily="Courier" fontSize="10" italic="false" fgColour="0000ff"><more name="x"/></entry>
    <format name="Keyword" bold=""/>
  </section>
  <any name="Empty"/>
  <any name="Output">
    <format/>
  </any>
</formats>
)";

// Every field of every format as text.
QString asText(const TextFormats &formats)
{
    QString text;
    for (const QString &section : formats.sections()) {
        text += u'[' + section + u"]\n"_s;
        for (const QString &format : formats.formats(section)) {
            text += u"%1: %2 %3%4%5 %6 on %7%8\n"_s.arg(
                format, formats.fontFamily(section, format), QString::number(formats.fontSize(section, format)),
                formats.bold(section, format) ? u" bold"_s : QString(),
                formats.italic(section, format) ? u" italic"_s : QString(), formats.fgColour(section, format).name(),
                formats.bgColour(section, format).name(),
                formats.hasBackground(section, format) ? u" own"_s : QString());
        }
    }
    return text;
}

const QString SmallText = u"[Text editor]\n"
                          "Standard text: Courier 10 #102030 on #fffff0 own\n"
                          "Comment: Courier 10 italic #0000ff on #ffffff\n"
                          "Keyword:  0 bold #000000 on #ffffff\n"
                          "[Empty]\n"
                          "[Output]\n"
                          ":  0 #000000 on #ffffff\n"_s;
} // namespace

class tst_TextFormats : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void readsAFile();
    void readsNumbers_data();
    void readsNumbers();
    void missingFileIsReportedAndKeepsTheTable();
    void badFileIsReportedAndKeepsTheTable_data();
    void badFileIsReportedAndKeepsTheTable();
    void hugeFileIsRead();
    void deeplyNestedFileIsRead();
    void settingsStoreAndRestoreTheFormats();
    void settingsHaveTheDocumentedForm();
    void settingsAreReadByNumber();
    void settingsWithoutQuotesAreRead();
    void unusableSettingsKeepTheTable_data();
    void unusableSettingsKeepTheTable();
    void savingRemovesTheOldTable();
    void emptyTableIsNotSaved();
    void unknownNamesMeanTheFirstEntry();
    void emptyTableGivesAnEmptyFormat();
    void setterChangesOneFieldOfOneCopy();
    void editorUsesTheFirstSection();
    void hugeFontSizesAreLimited();
    void emptyTableHasNoFormats();

private:
    bool load(TextFormats &formats, const QByteArray &xml);
    std::unique_ptr<QSettings> settings(const QByteArray &ini = {});

    QTemporaryDir m_directory;
    int m_files = 0;
};

bool tst_TextFormats::load(TextFormats &formats, const QByteArray &xml)
{
    QFile file(m_directory.filePath(u"textformats.xml"_s));
    return file.open(QIODevice::WriteOnly) && file.write(xml) == xml.size() && file.flush()
           && formats.loadFromFile(file.fileName());
}

std::unique_ptr<QSettings> tst_TextFormats::settings(const QByteArray &ini)
{
    QFile file(m_directory.filePath(u"settings%1.ini"_s.arg(++m_files)));
    if (file.open(QIODevice::WriteOnly))
        file.write(ini);
    file.close();
    return std::make_unique<QSettings>(file.fileName(), QSettings::IniFormat);
}

void tst_TextFormats::readsAFile()
{
    TextFormats formats;
    QVERIFY(load(formats, Small));
    QCOMPARE(asText(formats), SmallText);
}

void tst_TextFormats::readsNumbers_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QByteArray() << u":  0 #000000 on #ffffff\n"_s;
    QTest::newRow("short colour") << QByteArray("fgColour='ff'") << u":  0 #0000ff on #ffffff\n"_s;
    QTest::newRow("capital colour") << QByteArray("fgColour='FFAA00'") << u":  0 #ffaa00 on #ffffff\n"_s;
    QTest::newRow("colour of 32 bits") << QByteArray("fgColour='80112233'") << u":  0 #112233 on #ffffff\n"_s;
    QTest::newRow("colour of more") << QByteArray("fgColour='1112223334'") << u":  0 #000000 on #ffffff\n"_s;
    QTest::newRow("no colour") << QByteArray("fgColour='red'") << u":  0 #000000 on #ffffff\n"_s;
    QTest::newRow("invalid background") << QByteArray("bgColour=''") << u":  0 #000000 on #000000 own\n"_s;
    QTest::newRow("invalid size") << QByteArray("fontSize='ten'") << u":  0 #000000 on #ffffff\n"_s;
    QTest::newRow("size beyond an int") << QByteArray("fontSize='99999999999'") << u":  0 #000000 on #ffffff\n"_s;
    QTest::newRow("bold by presence of the attribute")
        << QByteArray("bold='0' italic='no'") << u":  0 bold italic #000000 on #ffffff\n"_s;
}

void tst_TextFormats::readsNumbers()
{
    QFETCH(QByteArray, attributes);
    TextFormats formats;
    QVERIFY(load(formats, "<f><s name='a'><f " + attributes + "/></s></f>"));
    QTEST(asText(formats).section(u'\n', 1), "expected");
}

void tst_TextFormats::missingFileIsReportedAndKeepsTheTable()
{
    TextFormats formats;
    QVERIFY(load(formats, Small));
    QTest::ignoreMessage(QtWarningMsg, "TextFormats::loadFromFile: Cannot open config file (/nowhere/formats.xml)");
    QVERIFY(!formats.loadFromFile(u"/nowhere/formats.xml"_s));
    QCOMPARE(asText(formats), SmallText);
}

void tst_TextFormats::badFileIsReportedAndKeepsTheTable_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("hello");
    QTest::newRow("cut off") << QByteArray(Small).chopped(12);
    QTest::newRow("wrong end tag") << QByteArray("<a><b></a></b>");
    QTest::newRow("two roots") << QByteArray("<a/><b/>");
    QTest::newRow("attribute twice") << QByteArray("<a><b name='x' name='y'/></a>");
    QTest::newRow("null bytes") << QByteArray(100, '\0');
    QTest::newRow("entities that expand")
        << QByteArray("<!DOCTYPE a [<!ENTITY b '0123456789'><!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'>"
                      "<!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'><!ENTITY e '&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;'>]>"
                      "<a><s name='&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;'/></a>");
}

void tst_TextFormats::badFileIsReportedAndKeepsTheTable()
{
    QFETCH(QByteArray, xml);
    TextFormats formats;
    QVERIFY(load(formats, Small));
    const QString path = m_directory.filePath(u"textformats.xml"_s);
    QTest::ignoreMessage(QtWarningMsg,
                         qPrintable(u"TextFormats::loadFromFile: Cannot parse config file (%1)"_s.arg(path)));
    QVERIFY(!load(formats, xml));
    QCOMPARE(asText(formats), SmallText);
}

void tst_TextFormats::hugeFileIsRead()
{
    TextFormats formats;
    const QByteArray name(10'000'000, 'x');
    QVERIFY(load(formats, "<f><s name='a'><f name='" + name + "'/></s></f>"));
    QCOMPARE(formats.formats(u"a"_s).value(0).size(), name.size());
    QVERIFY(load(formats, "<f><s name='a'>" + QByteArray("<f name='x'/>").repeated(300'000) + "</s></f>"));
    QCOMPARE(formats.formats(u"a"_s).size(), 300'000);
}

void tst_TextFormats::deeplyNestedFileIsRead()
{
    TextFormats formats;
    QVERIFY(load(formats, QByteArray("<a>").repeated(200'000) + QByteArray("</a>").repeated(200'000)));
    QCOMPARE(formats.sections(), QStringList(QString()));
    QCOMPARE(formats.formats(QString()), QStringList(QString()));
}

void tst_TextFormats::settingsStoreAndRestoreTheFormats()
{
    TextFormats formats;
    QVERIFY(
        load(formats,
             "<f><s name='a b'>"
                 + QByteArray("<f name='x:y' fontFamily='Noto Sans' bold='' fgColour='a' bgColour='b'/>").repeated(12)
                 + "</s><s name='10%'><f name='&#xe9;'/></s></f>"));
    const auto stored = settings();
    formats.saveToSettings(*stored);
    stored->sync();
    QSettings again(stored->fileName(), QSettings::IniFormat);
    TextFormats loaded;
    QVERIFY(loaded.loadFromSettings(again));
    QCOMPARE(asText(loaded), asText(formats));
}

void tst_TextFormats::settingsHaveTheDocumentedForm()
{
    TextFormats formats;
    QVERIFY(load(formats, Small));
    const auto stored = settings();
    formats.saveToSettings(*stored);
    QCOMPARE(stored->allKeys(),
             (QStringList{u"TextFormats/0:Text editor/0:Standard text"_s, u"TextFormats/0:Text editor/1:Comment"_s,
                          u"TextFormats/0:Text editor/2:Keyword"_s, u"TextFormats/2:Output/0:"_s}));
    QCOMPARE(stored->value(u"TextFormats/0:Text editor/0:Standard text"_s).toString(),
             u"Courier,10,0,0,102030,fffff0"_s);
    QCOMPARE(stored->value(u"TextFormats/0:Text editor/1:Comment"_s).toString(), u"Courier,10,0,1,ff"_s);
    QCOMPARE(stored->value(u"TextFormats/0:Text editor/2:Keyword"_s).toString(), u",0,1,0,0"_s);
}

void tst_TextFormats::settingsAreReadByNumber()
{
    TextFormats formats;
    const auto stored = settings("[TextFormats]\n"
                                 "10%3Atenth\\0%3Aa=\"F,1,0,0,0\"\n"
                                 "2%3Asecond%3Aname\\10%3Ac=\"F,1,0,0,0\"\n"
                                 "2%3Asecond%3Aname\\9%3Ab%3Ab=\"F,1,0,0,0\"\n");
    QVERIFY(formats.loadFromSettings(*stored));
    QCOMPARE(formats.sections(), (QStringList{u"second:name"_s, u"tenth"_s}));
    QCOMPARE(formats.formats(u"second:name"_s), (QStringList{u"b:b"_s, u"c"_s}));
}

void tst_TextFormats::settingsWithoutQuotesAreRead()
{
    TextFormats formats;
    const auto stored = settings("[TextFormats]\n0%3Aa\\0%3Ab=Courier, 12, 1, 1, ff00, 123456, more\n");
    QVERIFY(formats.loadFromSettings(*stored));
    QCOMPARE(asText(formats), u"[a]\nb: Courier 12 bold italic #00ff00 on #123456 own\n"_s);
}

void tst_TextFormats::unusableSettingsKeepTheTable_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("other groups") << QByteArray("[Editor]\nTabSize=4\n");
    QTest::newRow("formats without a section") << QByteArray("[TextFormats]\n0%3Aa=\"F,1,0,0,0\"\n");
    QTest::newRow("section without formats")
        << QByteArray("[TextFormats]\n0%3Aa\\0%3Ab=\"F,1,0,0,0\"\n1%3Ac\\sub\\key=\"F,1,0,0,0\"\n");
    QTest::newRow("four fields") << QByteArray("[TextFormats]\n0%3Aa\\0%3Ab=\"F,1,0,0,0\"\n0%3Aa\\1%3Ac=\"F,1,0,0\"\n");
    QTest::newRow("four fields in the first section")
        << QByteArray("[TextFormats]\n0%3Aa\\0%3Ab=\"F,1,0,0\"\n1%3Ac\\0%3Ad=\"F,1,0,0,0\"\n");
    QTest::newRow("empty value") << QByteArray("[TextFormats]\n0%3Aa\\0%3Ab=\n");
}

void tst_TextFormats::unusableSettingsKeepTheTable()
{
    QFETCH(QByteArray, ini);
    TextFormats formats;
    QVERIFY(load(formats, Small));
    const auto stored = settings(ini);
    QVERIFY(!formats.loadFromSettings(*stored));
    QCOMPARE(asText(formats), SmallText);
    QVERIFY(stored->group().isEmpty());
}

void tst_TextFormats::savingRemovesTheOldTable()
{
    const auto stored = settings("[TextFormats]\n0%3Aold\\0%3Aolder=\"F,1,0,0,0\"\n[Editor]\nTabSize=4\n");
    TextFormats formats;
    QVERIFY(load(formats, "<f><s name='new'><f name='a'/></s></f>"));
    formats.saveToSettings(*stored);
    QCOMPARE(stored->allKeys(), (QStringList{u"Editor/TabSize"_s, u"TextFormats/0:new/0:a"_s}));
}

void tst_TextFormats::emptyTableIsNotSaved()
{
    const auto stored = settings("[TextFormats]\n0%3Aold\\0%3Aolder=\"F,1,0,0,0\"\n");
    TextFormats().saveToSettings(*stored);
    QCOMPARE(stored->allKeys().size(), 1);
}

void tst_TextFormats::unknownNamesMeanTheFirstEntry()
{
    TextFormats formats;
    QVERIFY(load(formats, Small));
    QCOMPARE(formats.formats(u"unknown"_s), formats.formats(u"Text editor"_s));
    QCOMPARE(formats.fgColour(u"unknown"_s, u"Comment"_s), QColor(0, 0, 0xff));
    QCOMPARE(formats.fgColour(u"Text editor"_s, u"unknown"_s), QColor(0x10, 0x20, 0x30));
    formats.setFontSize(u"unknown"_s, u"unknown"_s, 33);
    QCOMPARE(formats.fontSize(u"Text editor"_s, u"Standard text"_s), 33);
}

void tst_TextFormats::emptyTableGivesAnEmptyFormat()
{
    TextFormats formats;
    formats.setBold(u"a"_s, u"b"_s, true);
    QVERIFY(!formats.bold(u"a"_s, u"b"_s));
    QCOMPARE(formats.bgColour(u"a"_s, u"b"_s), QColor(Qt::white));
    QVERIFY(formats.sections().isEmpty());
    QVERIFY(formats.formats(u"a"_s).isEmpty());
    QVERIFY(load(formats, Small));
    formats.setBold(u"Empty"_s, u"b"_s, true);
    QCOMPARE(asText(formats), SmallText);
}

void tst_TextFormats::setterChangesOneFieldOfOneCopy()
{
    TextFormats original;
    QVERIFY(load(original, Small));
    TextFormats copy = original;
    copy.setFontFamily(u"Text editor"_s, u"Comment"_s, u"Mono"_s);
    copy.setFontSize(u"Text editor"_s, u"Comment"_s, 7);
    copy.setBold(u"Text editor"_s, u"Comment"_s, true);
    copy.setItalic(u"Text editor"_s, u"Comment"_s, false);
    copy.setFgColour(u"Text editor"_s, u"Comment"_s, QColor(1, 2, 3, 4));
    copy.setBgColour(u"Text editor"_s, u"Standard text"_s, QColor(5, 6, 7));
    QCOMPARE(asText(original), SmallText);
    QString expected = SmallText;
    expected.replace(u"Courier 10 italic #0000ff"_s, u"Mono 7 bold #010203"_s).replace(u"fffff0"_s, u"050607"_s);
    QCOMPARE(asText(copy), expected);
}

void tst_TextFormats::editorUsesTheFirstSection()
{
    TextFormats formats;
    QVERIFY(load(formats, Small));
    const FormatTable table = formats.formatTable();
    QCOMPARE(table.size(), 4);
    QCOMPARE(table[FormatId::Background].foreground().color(), QColor(0xff, 0xff, 0xf0));
    QCOMPARE(table[FormatId::Background].background().color(), QColor(0xff, 0xff, 0xf0));
    QCOMPARE(table[FormatId::Standard].foreground().color(), QColor(0x10, 0x20, 0x30));
    QCOMPARE(table[FormatId::Standard].font().families(), QStringList(u"Courier"_s));
    QCOMPARE(table[FormatId::Standard].fontPointSize(), 10);
    QVERIFY(!table[FormatId::Standard].hasProperty(QTextFormat::BackgroundBrush));
    QVERIFY(table[FormatId::Comment].fontItalic());
    QCOMPARE(table[FormatId::Comment].fontWeight(), int(QFont::Normal));
    QCOMPARE(table[FormatId::Number].fontWeight(), int(QFont::Bold));
    QVERIFY(!table[FormatId::Number].hasProperty(QTextFormat::FontPointSize));
}

void tst_TextFormats::hugeFontSizesAreLimited()
{
    TextFormats formats;
    QVERIFY(load(formats, "<f><s name='a'><f fontSize='2000000000'/><f fontSize='-5'/></s></f>"));
    QCOMPARE(formats.fontSize(u"a"_s, {}), 2'000'000'000);
    QCOMPARE(formats.formatTable()[1].fontPointSize(), 500);
    QVERIFY(!formats.formatTable()[2].hasProperty(QTextFormat::FontPointSize));
}

void tst_TextFormats::emptyTableHasNoFormats()
{
    TextFormats formats;
    QVERIFY(formats.formatTable().isEmpty());
    QVERIFY(load(formats, "<f><s/></f>"));
    QVERIFY(formats.formatTable().isEmpty());
}

QTEST_MAIN(tst_TextFormats)
#include "tst_textformats.moc"

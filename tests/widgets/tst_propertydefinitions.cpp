#include "propertydefinitions.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
void draw(const std::vector<PropertyNode> &nodes, int depth, QString &text)
{
    for (const PropertyNode &node : nodes) {
        text += QString(2 * depth, u' ') + (node.isPage ? u"page "_s : u"group "_s) + node.name + u'\n';
        draw(node.children, depth + 1, text);
        for (const PropertyRecord &record : node.records)
            text += QString(2 * depth + 2, u' ') + record.m_key + u'\n';
    }
}

QString drawn(const QString &text, const QString &selector)
{
    const auto nodes = readPropertyDefinitions(text, selector);
    if (!nodes)
        return u"broken"_s;
    QString drawing;
    draw(*nodes, 0, drawing);
    return drawing;
}

/// The record of a definition's only property.
PropertyRecord recordOf(const QString &property)
{
    const auto nodes =
        readPropertyDefinitions(u"<x><group><propertygroup>%1</propertygroup></group></x>"_s.arg(property), {});
    return nodes ? nodes->at(0).children.at(0).records.at(0) : PropertyRecord();
}
} // namespace

class PropertyDefinitionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void groupsNestAndPagesHoldProperties()
    {
        const QString text = uR"(<anything><group name="A"><group name="B"><propertygroup name="P">
            <property key="k1" type="text"/><stranger><property key="no" type="text"/></stranger>
            <property key="k2" type="text"/></propertygroup></group><propertygroup name="Q"/></group>
            <stranger/><group name="C"/><propertygroup name="R"/></anything>)"_s;
        QCOMPARE(drawn(text, u"project"_s), u"group A\n"
                                            "  group B\n"
                                            "    page P\n"
                                            "      k1\n"
                                            "      k2\n"
                                            "  page Q\n"
                                            "group C\n"
                                            "page R\n"_s);
    }

    void selectorsLimitEachLevel_data()
    {
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QString>("keys");
        QTest::newRow("project") << u"project"_s << u"any project deep"_s;
        QTest::newRow("file") << u"c"_s << u"any source"_s;
        QTest::newRow("another case") << u"C"_s << u"any"_s;
        QTest::newRow("complete extension") << u"tar.gz"_s << u"any archive"_s;
    }

    void selectorsLimitEachLevel()
    {
        QFETCH(QString, selector);
        const QString text = uR"(<x><group><propertygroup>
            <property key="any" type="text"/>
            <property key="project" type="text"><appliesto selector="project"/></property>
            <property key="source" type="text"><appliesto selector="c"/><appliesto selector="h"/></property>
            <property key="archive" type="text"><appliesto selector="tar.gz"/></property>
            </propertygroup></group>
            <group><appliesto selector="project"/><propertygroup><property key="deep" type="text"/></propertygroup>
            </group></x>)"_s;
        QStringList keys;
        const auto nodes = readPropertyDefinitions(text, selector);
        for (const PropertyNode &group : *nodes) {
            for (const PropertyRecord &record : group.children.at(0).records)
                keys += record.m_key;
        }
        QTEST(keys.join(u' '), "keys");
    }

    void appliestoWithoutSelectorMatchesEverything()
    {
        QCOMPARE(drawn(u"<x><group name=\"A\"><appliesto selector=\"c\"/><appliesto/></group></x>"_s, u"h"_s),
                 u"group A\n"_s);
    }

    void deeperAppliestoDoesNotLimit()
    {
        QCOMPARE(drawn(u"<x><group name=\"A\"><y><appliesto selector=\"c\"/></y></group></x>"_s, u"h"_s),
                 u"group A\n"_s);
    }

    void typesHaveTheirNumbersAndDefaults_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("text") << u"text"_s << u"x"_s << 1 << QVariant(u"x"_s);
        QTest::newRow("integer") << u"integer"_s << u"010"_s << 2 << QVariant(10);
        QTest::newRow("no integer") << u"integer"_s << u"0x10"_s << 2 << QVariant(0);
        QTest::newRow("file") << u"file"_s << u"a/b"_s << 3 << QVariant(u"a/b"_s);
        QTest::newRow("directory") << u"directory"_s << u"a"_s << 4 << QVariant(u"a"_s);
        QTest::newRow("list") << u"list"_s << u"k"_s << 5 << QVariant(u"k"_s);
        QTest::newRow("integercombo") << u"integercombo"_s << u"7"_s << 6 << QVariant(7);
        QTest::newRow("textcombo is read as a number") << u"textcombo"_s << u"word"_s << 7 << QVariant(0);
        QTest::newRow("textcombo with a number") << u"textcombo"_s << u"3"_s << 7 << QVariant(3);
        QTest::newRow("boolean true") << u"boolean"_s << u"true"_s << 8 << QVariant(true);
        QTest::newRow("boolean 1") << u"boolean"_s << u"1"_s << 8 << QVariant(true);
        QTest::newRow("boolean in another case") << u"boolean"_s << u"True"_s << 8 << QVariant(false);
        QTest::newRow("filelist") << u"filelist"_s << u"a;b"_s << 9 << QVariant(u"a;b"_s);
        QTest::newRow("directorylist") << u"directorylist"_s << u"a"_s << 10 << QVariant(u"a"_s);
    }

    void typesHaveTheirNumbersAndDefaults()
    {
        QFETCH(QString, type);
        QFETCH(QString, text);
        const PropertyRecord record =
            recordOf(u"<property key=\"k\" name=\"N\" type=\"%1\" defaultvalue=\"%2\"/>"_s.arg(type, text));
        QTEST(record.m_type, "number");
        QTEST(record.m_default, "value");
        QCOMPARE(record.m_value, record.m_default);
        QCOMPARE(record.m_loaded, record.m_default);
        QVERIFY(!record.m_changed);
        QVERIFY(!record.differsFromDefault());
        QCOMPARE(record.m_name, u"N"_s);
    }

    void unknownTypeIsWarnedOfAndKept()
    {
        QTest::ignoreMessage(QtWarningMsg, "PropertyEditor::fillTree: Invalid property type 'colour'");
        const PropertyRecord record = recordOf(u"<property key=\"k\" type=\"colour\"/>"_s);
        QCOMPARE(record.m_type, 0);
        QCOMPARE(record.m_key, u"k"_s);
    }

    void optionsAreFoundAtAnyDepth()
    {
        const PropertyRecord record = recordOf(uR"(<property type="list"><option key="a">Alpha</option>
            <more><option>Beta</option></more><option key="">Gamma</option></property>)"_s);
        QCOMPARE(record.m_labels, QStringList({u"Alpha"_s, u"Beta"_s, u"Gamma"_s}));
        QCOMPARE(record.m_keys, QStringList({u"a"_s, u"1"_s, u"2"_s})); // the index where there is no key
    }

    void descriptionIsTheFirstOne()
    {
        const PropertyRecord record = recordOf(
            u"<property type=\"text\"><description>See <b>this</b> &lt;i&gt;</description><description>no</description>"
            "</property>"_s);
        QCOMPARE(record.m_description, u"See this <i>"_s);
    }

    void missingAttributesAreEmpty()
    {
        const PropertyRecord record = recordOf(u"<property type=\"text\"/>"_s);
        QVERIFY(record.m_key.isEmpty() && record.m_name.isEmpty() && record.m_description.isEmpty());
        QCOMPARE(record.m_default, QString());
        QCOMPARE(record.m_minimum, 0);
        QCOMPARE(record.m_maximum, 32767);
    }

    void textThatIsNoXmlIsRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("words") << u"no xml"_s;
        QTest::newRow("cut off") << u"<x><group>"_s;
        QTest::newRow("crossed") << u"<x><a><b></a></b></x>"_s;
        QTest::newRow("something behind the root") << u"<x/><y/>"_s;
        QTest::newRow("very deep") << QString(u"<group>"_s).repeated(100000) + QString(u"</group>"_s).repeated(100000);
        QTest::newRow("entities without end")
            << u"<!DOCTYPE x [<!ENTITY a \"&b;&b;\"><!ENTITY b \"&a;&a;\">]><x>&a;</x>"_s;
    }

    void textThatIsNoXmlIsRefused()
    {
        QFETCH(QString, text);
        QVERIFY(!readPropertyDefinitions(text, u"project"_s));
    }

    void megabytesAreRead()
    {
        QString text = u"<x><group name=\"G\">"_s;
        for (int i = 0; i < 20000; ++i)
            text += u"<propertygroup><property key=\"k%1\" name=\"n\" type=\"text\"><description>A "
                    u"description.</description>"
                    "</property></propertygroup>"_s.arg(i);
        const auto nodes = readPropertyDefinitions(text + u"</group></x>"_s, {});
        QVERIFY(nodes);
        QCOMPARE(nodes->at(0).children.size(), 20000u);
    }

    void exampleOfTheDocumentationGivesThePagesNamedThere()
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/property-definitions.md"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString example = QString::fromUtf8(file.readAll()).section(u"```xml\n"_s, 1, 1).section(u"```"_s, 0, 0);
        QCOMPARE(drawn(example, u"project"_s), u"group Assembler\n"
                                               "  page Code\n"
                                               "    asmLevel\n"
                                               "    asmWarnings\n"
                                               "    asmDefines\n"
                                               "  page Listing\n"
                                               "    asmListing\n"
                                               "    asmColumns\n"_s);
        QCOMPARE(drawn(example, u"asm"_s), u"group Assembler\n"
                                           "  page Code\n"
                                           "    asmLevel\n"
                                           "    asmWarnings\n"
                                           "    asmDefines\n"
                                           "    asmExclude\n"_s);
        QCOMPARE(drawn(example, u"c"_s), u"group Assembler\n"_s);
        auto nodes = readPropertyDefinitions(example, u"project"_s);
        PropertyRecord &symbols = nodes->at(0).children.at(0).records.at(2);
        for (const QString &valid : {QString(), u"DEBUG"_s, u"DEBUG;FAST"_s}) {
            symbols.m_value = valid;
            QCOMPARE(symbols.problem(), QString());
        }
        symbols.m_value = u"debug"_s;
        QCOMPARE(symbols.problem(), u"Names in capital letters, separated by semicolons."_s);
        QCOMPARE(nodes->at(0).children.at(1).records.at(1).m_maximum, 132);
    }

    void valueOutsideThePatternIsExplained()
    {
        PropertyRecord record = recordOf(
            u"<property type=\"text\" defaultvalue=\"1\" pattern=\"[0-9]+|\" invalidtext=\"Digits only.\"/>"_s);
        QCOMPARE(record.problem(), QString());
        record.m_value = u"1a"_s;
        QCOMPARE(record.problem(), u"Digits only."_s);
        record.m_value = QString();
        QCOMPARE(record.problem(), QString());
        record.m_value = QVariant(); // several values
        QCOMPARE(record.problem(), QString());
        record.m_value = u"x"_s;
        record.m_invalidText.clear();
        QCOMPARE(record.problem(), u"This value is not possible here."_s);
    }

    void brokenPatternAllowsEverything()
    {
        QTest::ignoreMessage(QtWarningMsg, "PropertyEditor: Invalid pattern '['"); // once, when it is read
        const PropertyRecord record = recordOf(u"<property type=\"text\" defaultvalue=\"x\" pattern=\"[\"/>"_s);
        QCOMPARE(record.problem(), QString());
        QCOMPARE(record.problem(), QString());
    }

    void rangeOfAnIntegerCanBeSet()
    {
        const PropertyRecord record = recordOf(u"<property type=\"integer\" minimum=\"-5\" maximum=\"100000\"/>"_s);
        QCOMPARE(record.m_minimum, -5);
        QCOMPARE(record.m_maximum, 100000);
        QCOMPARE(recordOf(u"<property type=\"integer\" maximum=\"many\"/>"_s).m_maximum, 32767);
        const PropertyRecord swapped = recordOf(u"<property type=\"integer\" minimum=\"9\" maximum=\"4\"/>"_s);
        QCOMPARE(swapped.m_minimum, 4);
        QCOMPARE(swapped.m_maximum, 9);
        QCOMPARE(recordOf(u"<property type=\"integer\" minimum=\"40000\"/>"_s).m_maximum, 40000);
    }

    void valueDiffersFromTheDefaultByItsMeaning()
    {
        PropertyRecord record = recordOf(u"<property type=\"boolean\" defaultvalue=\"true\"/>"_s);
        for (const QVariant &value : {QVariant(1), QVariant(u"1"_s), QVariant(u"true"_s)}) {
            record.m_value = value;
            QVERIFY(!record.differsFromDefault());
        }
        record.m_value = u"0"_s;
        QVERIFY(record.differsFromDefault());
        record.m_value = QVariant();
        QVERIFY(record.differsFromDefault());
        record = recordOf(u"<property type=\"integer\" defaultvalue=\"5\"/>"_s);
        record.m_value = u"5"_s;
        QVERIFY(!record.differsFromDefault());
    }
};

QTEST_MAIN(PropertyDefinitionsTest)
#include "tst_propertydefinitions.moc"

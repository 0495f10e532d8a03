#include "../propertydocs.h"
#include "propertytable.h"
#include "toolchain.h"
#include <QTest>
#include <QXmlStreamReader>
using namespace Qt::StringLiterals;

namespace {
/// Finds the keys that the property editor shows for a selector: an element with selectors applies to these, one
/// without to all.
class Chooser
{
public:
    explicit Chooser(const QString &selector) : m_selector(selector) {}

    QStringList keys(const QString &xml)
    {
        QXmlStreamReader reader(xml);
        reader.readNextStartElement();
        m_wellFormed = reader.name() == u"properties";
        walk(reader);
        m_wellFormed = m_wellFormed && !reader.hasError();
        return m_keys;
    }
    bool isWellFormed() const { return m_wellFormed; }

private:
    /// Reads the children of an element. Returns whether it applies.
    bool walk(QXmlStreamReader &reader)
    {
        bool limited = false;
        bool applies = false;
        while (reader.readNextStartElement()) {
            if (reader.name() == u"appliesto") {
                limited = true;
                applies = applies || reader.attributes().value(u"selector"_s) == m_selector;
                reader.skipCurrentElement();
            } else {
                const QString key =
                    reader.name() == u"property" ? reader.attributes().value(u"key"_s).toString() : QString();
                const qsizetype before = m_keys.size();
                const bool child = walk(reader);
                if (!child)
                    m_keys.resize(before);
                else if (!key.isEmpty())
                    m_keys += key;
            }
        }
        return !limited || applies;
    }

    const QString m_selector;
    QStringList m_keys;
    bool m_wellFormed = false;
};
} // namespace

class TestPropertyTable : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void keysAreDistinctAndTypesKnown()
    {
        const QStringList types = {u"text"_s,         u"integer"_s,   u"file"_s,    u"directory"_s, u"list"_s,
                                   u"integercombo"_s, u"textcombo"_s, u"boolean"_s, u"filelist"_s,  u"directorylist"_s};
        for (const ToolChain &toolChain : toolChains()) {
            QSet<QString> keys;
            for (const PropertyPage &page : propertyPages(toolChain)) {
                for (const PropertyDefinition &property : page.properties) {
                    QVERIFY2(!keys.contains(property.key), qPrintable(property.key));
                    QVERIFY2(types.contains(property.type), qPrintable(property.type));
                    QCOMPARE(property.type == u"list", !property.choices.isEmpty());
                    keys += property.key;
                }
            }
        }
    }

    void defaultsOfListsAreAmongTheirChoices()
    {
        for (const PropertyPage &page : propertyPages(toolChains().first())) {
            for (const PropertyDefinition &property : page.properties) {
                const auto isDefault = [&](const auto &choice) { return choice.key == property.defaultValue; };
                QVERIFY(property.choices.isEmpty()
                        || std::any_of(property.choices.begin(), property.choices.end(), isDefault));
            }
        }
    }

    void optionsDependOnTheFileType_data()
    {
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QStringList>("has");
        QTest::addColumn<QStringList>("hasNot");
        using namespace PropertyKey;
        QTest::newRow("project") << u"project"_s
                                 << QStringList{TargetType, Defines, CFlags, LinkerScript, Match, AutoPopulate}
                                 << QStringList{Exclude, FileFlags, RunAtLoad};
        QTest::newRow("C") << u"c"_s << QStringList{Optimisation, Defines, CFlags, CStandard, Exclude, FileFlags}
                           << QStringList{TargetType, CppFlags, AssemblerFlags, LinkerScript};
        QTest::newRow("C++") << u"cpp"_s << QStringList{Optimisation, CppFlags, Exclude}
                             << QStringList{CFlags, CStandard};
        QTest::newRow("assembler") << u"s"_s << QStringList{DebugInformation, AssemblerFlags, Exclude}
                                   << QStringList{Optimisation, Warnings, Defines, CFlags};
        QTest::newRow("preprocessed assembler")
            << u"S"_s << QStringList{Defines, Includes, AssemblerFlags, Exclude} << QStringList{Optimisation, Warnings};
        QTest::newRow("header") << u"h"_s << QStringList() << QStringList{Optimisation, Exclude};
        QTest::newRow("script") << u"py"_s << QStringList{RunAtLoad} << QStringList{Exclude};
    }

    void optionsDependOnTheFileType()
    {
        QFETCH(QString, selector);
        QFETCH(QStringList, has);
        QFETCH(QStringList, hasNot);
        Chooser chooser(selector);
        const QStringList keys =
            chooser.keys(propertyDefinitionsXml(u"Build <&>"_s, {}, propertyPages(toolChains().at(1))));
        QVERIFY(chooser.isWellFormed());
        for (const QString &key : has)
            QVERIFY2(keys.contains(key), qPrintable(key));
        for (const QString &key : hasNot)
            QVERIFY2(!keys.contains(key), qPrintable(key));
    }

    void tableIsWrittenAsXml()
    {
        const QList<PropertyPage> pages = {
            {u"P & Q"_s,
             {u"c"_s},
             {{u"k"_s, u"<name>"_s, u"list"_s, u"a"_s, u"x < y"_s, {{u"a"_s, u"A & B"_s}}, {u"s"_s}}}}};
        QCOMPARE(
            propertyDefinitionsXml(u"G"_s, {u"project"_s}, pages),
            u"<properties><group name=\"G\"><appliesto selector=\"project\"/><propertygroup name=\"P &amp; "
            u"Q\"><appliesto selector=\"c\"/>"
            "<property key=\"k\" name=\"&lt;name&gt;\" type=\"list\" defaultvalue=\"a\"><appliesto selector=\"s\"/>"
            "<description>x &amp;lt; y</description><option key=\"a\">A &amp; B</option></property>"
            "</propertygroup></group></properties>\n"_s);
        QCOMPARE(propertyDefaults(pages), (QHash<QString, QString>{{u"k"_s, u"a"_s}}));
    }

    void everyPropertyIsInTheDocumentation()
    {
        const auto rowsOf = [](int toolChain) {
            return propertyRows(propertyDefinitionsXml(u"G"_s, {}, propertyPages(toolChains().at(toolChain))));
        };
        const QStringList rows = rowsOf(1); // GNU Arm
        QVERIFY(rows.size() > 30);
        QCOMPARE(documentedRows(u"### GNU Build"_s), rows);
        for (int i = 0; i < toolChains().size(); ++i)
            QCOMPARE(rowsOf(i).size(), rows.size()); // the same keys, some with other examples and defaults
    }
};

QTEST_GUILESS_MAIN(TestPropertyTable)
#include "tst_propertytable.moc"

#include "toolchain.h"
#include <QTest>
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(Language)

class TestToolChain : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void featuresAreDistinctUuids()
    {
        QSet<QString> features;
        for (const ToolChain &each : toolChains()) {
            QCOMPARE(QUuid(each.feature).toString(), each.feature);
            QCOMPARE(findToolChain(each.feature), &each);
            features += each.feature;
        }
        QCOMPARE(features.size(), 4);
        QVERIFY(!findToolChain(u"{red}"_s));
    }

    void prefixFollowsTheSetting_data()
    {
        QTest::addColumn<QString>("wish");
        QTest::addColumn<QString>("prefix");
        QTest::newRow("none") << u""_s << u"arm-none-eabi-"_s;
        QTest::newRow("prefix") << u"arm-linux-gnueabihf-"_s << u"arm-linux-gnueabihf-"_s;
        QTest::newRow("directory") << u"/opt/arm/bin/"_s << u"/opt/arm/bin/arm-none-eabi-"_s;
        QTest::newRow("both") << u"/opt/bin/my-"_s << u"/opt/bin/my-"_s;
        QTest::newRow("relative directory") << u"tools/"_s << u"/project/tools/arm-none-eabi-"_s;
        QTest::newRow("blanks") << u" my- "_s << u"my-"_s;
    }

    void prefixFollowsTheSetting()
    {
        QFETCH(QString, wish);
        QTEST(toolPrefix(toolChains().at(1), wish, u"/project"_s), "prefix");
    }

    void languageFollowsTheLastExtension_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Language>("language");
        QTest::newRow("C") << u"src/a.c"_s << Language::C;
        QTest::newRow("C++") << u"a.cpp"_s << Language::Cpp;
        QTest::newRow("C++ by a capital") << u"a.C"_s << Language::Cpp;
        QTest::newRow("assembler") << u"a.s"_s << Language::Assembler;
        QTest::newRow("assembler for the preprocessor") << u"a.S"_s << Language::PreprocessedAssembler;
        QTest::newRow("several dots") << u"a.test.c"_s << Language::C;
        QTest::newRow("header") << u"a.h"_s << Language::None;
        QTest::newRow("none") << u"src.c/makefile"_s << Language::None;
        QTest::newRow("empty") << u""_s << Language::None;
    }

    void languageFollowsTheLastExtension()
    {
        QFETCH(QString, path);
        QTEST(languageOf(path), "language");
    }
};

QTEST_GUILESS_MAIN(TestToolChain)
#include "tst_toolchain.moc"

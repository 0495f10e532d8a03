#include "../propertydocs.h"
#include "propertytext.h"
#include "sourcepaths.h"
#include "targetoptions.h"
#include <QDomDocument>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using Kind = TargetOptions::Kind;

class tst_TargetOptions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void optionTextIsRead();
    void invalidOptionIsRefused_data();
    void invalidOptionIsRefused();
    void propertiesOverrideTheOptionText();
    void everyKeyHasAPropertyWithItsDefault();
    void everyPropertyIsInTheDocumentation();
    void movedSourceMatchesTheLongestCommonEnd_data();
    void movedSourceMatchesTheLongestCommonEnd();
};

void tst_TargetOptions::optionTextIsRead()
{
    TargetOptions options;
    QString error;
    QVERIFY(applyOptionText(QString(), &options, &error));
    QVERIFY(options == TargetOptions());
    QVERIFY(applyOptionText(u" qemu : lm3s6965evb ; image = out/a b.elf;uart=2;semihosting=0;TIMELIMIT=3"_s, &options,
                            &error));
    QCOMPARE(options.kind, Kind::Qemu);
    QCOMPARE(options.machine, u"lm3s6965evb"_s);
    QCOMPARE(options.image, u"out/a b.elf"_s);
    QCOMPARE(options.uart, 2);
    QCOMPARE(options.semihosting, false);
    QCOMPARE(options.timeLimit, 3);
    options = {};
    QVERIFY(applyOptionText(u"remote:127.0.0.1:3333;resetCommand=reset halt"_s, &options, &error));
    QCOMPARE(options.address, u"127.0.0.1:3333"_s);
    QCOMPARE(options.resetCommand, u"reset halt"_s);
    options = {};
    QVERIFY(applyOptionText(u"native:demo"_s, &options, &error));
    QCOMPARE(options.image, u"demo"_s);
}

void tst_TargetOptions::invalidOptionIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("kind") << u"jtag"_s;
    QTest::newRow("key") << u"colour=red"_s;
    QTest::newRow("number") << u"uart=first"_s;
}

void tst_TargetOptions::invalidOptionIsRefused()
{
    QFETCH(QString, text);
    TargetOptions options;
    QString error;
    QVERIFY(!applyOptionText(u"qemu;"_s + text, &options, &error));
    QCOMPARE(error, u"The debugger option '%1' is invalid."_s.arg(text));
}

void tst_TargetOptions::propertiesOverrideTheOptionText()
{
    TargetOptions options;
    QString error;
    QVERIFY(applyOptionText(u"qemu:microbit;runTo=start"_s, &options, &error));
    const QMap<QString, QString> values = {
        {u"gdbTarget"_s, u"remote"_s}, {u"gdbRunTo"_s, u""_s}, {u"gdbLoad"_s, u"0"_s}};
    applyProperties([&values](const QString &key) { return values.value(key); }, &options);
    QCOMPARE(options.kind, Kind::Remote);
    QCOMPARE(options.machine, u"microbit"_s); // unchanged without a property
    QCOMPARE(options.runTo, QString());
    QCOMPARE(options.load, false);
}

void tst_TargetOptions::everyKeyHasAPropertyWithItsDefault()
{
    QDomDocument document;
    QVERIFY(document.setContent(gdbPropertyDefinitions()));
    QMap<QString, QString> defaults;
    const QDomNodeList properties = document.elementsByTagName(u"property"_s);
    for (int i = 0; i < properties.size(); ++i) {
        const QDomElement property = properties.at(i).toElement();
        defaults.insert(property.attribute(u"key"_s), property.attribute(u"defaultvalue"_s));
        QVERIFY(!property.attribute(u"name"_s).isEmpty());
    }
    for (const QString &key : optionKeys())
        QVERIFY2(defaults.contains(u"gdb"_s + key.at(0).toUpper() + key.mid(1)), qPrintable(key));
    TargetOptions options;
    applyProperties([&defaults](const QString &key) { return defaults.value(key); }, &options);
    QVERIFY(options == TargetOptions()); // the defaults in the property editor are those of the plug-in
}

void tst_TargetOptions::everyPropertyIsInTheDocumentation()
{
    const QStringList rows = propertyRows(gdbPropertyDefinitions());
    QVERIFY(rows.size() > 20);
    QCOMPARE(documentedRows(u"### gdb"_s), rows);
}

void tst_TargetOptions::movedSourceMatchesTheLongestCommonEnd_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("same name") << u"/old/main.c"_s << u"/new/a/main.c"_s;
    QTest::newRow("same folder wins") << u"/old/b/main.c"_s << u"/new/b/main.c"_s;
    QTest::newRow("from another system") << u"C:\\old\\b\\main.c"_s << u"/new/b/main.c"_s;
    QTest::newRow("end of a name is not enough") << u"/old/remain.c"_s << QString();
}

void tst_TargetOptions::movedSourceMatchesTheLongestCommonEnd()
{
    QFETCH(QString, path);
    path.replace(u'\\', u'/');
    QTEST(bestPathMatch(path, {u"/new/a/main.c"_s, u"/new/b/main.c"_s, u"/new/uart.c"_s}), "expected");
}

QTEST_APPLESS_MAIN(tst_TargetOptions)
#include "tst_targetoptions.moc"

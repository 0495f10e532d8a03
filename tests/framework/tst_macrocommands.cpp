#include "macrocommands.h"
#include <QTest>
using namespace Qt::StringLiterals;

class MacroCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sourceFitsTheScript_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        const auto body = u"\n\ndef %1():\n    pass\n\n\napp.addMacro(%1, \"%2\")\n"_s;
        const auto import = u"\nfrom varnel import app\n"_s;
        const QString first = body.arg(u"macro1"_s, u"Macro 1"_s);
        const QString second = body.arg(u"macro2"_s, u"Macro 2"_s);
        QTest::newRow("empty") << QString() << QString(import + first);
        QTest::newRow("import exists") << u"from varnel import app\n"_s << first;
        QTest::newRow("import in a comment") << u"# from varnel import app\n"_s << QString(import + first);
        QTest::newRow("indented import") << u"  from varnel import app\n"_s << QString(import + first);
        QTest::newRow("no final line break") << u"from varnel import app"_s << QString(u'\n' + first);
        QTest::newRow("name is used") << u"from varnel import app\ndef macro1(): pass\n"_s << second;
        QTest::newRow("name in a comment") << u"from varnel import app\n# macro1\n"_s << second;
        QTest::newRow("longer name is used") << u"from varnel import app\nmacro10\n"_s << first;
    }

    void sourceFitsTheScript()
    {
        QFETCH(QString, script);
        QTEST(newMacroSource(script), "expected");
    }
};

QTEST_GUILESS_MAIN(MacroCommandsTest)
#include "tst_macrocommands.moc"

#include "recordedscript.h"
#include <QDir>
#include <QTest>
using namespace Qt::StringLiterals;

class RecordedScriptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void literals_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("literal");
        QTest::newRow("empty") << QString() << u"\"\""_s;
        QTest::newRow("letters") << u"main.c"_s << u"\"main.c\""_s;
        QTest::newRow("umlauts") << u"Gerät größer"_s << u"\"Gerät größer\""_s;
        QTest::newRow("quotes") << u"a\"b'c"_s << u"\"a\\\"b'c\""_s;
        QTest::newRow("backslash at the end") << u"C:\\new\\"_s << u"\"C:\\\\new\\\\\""_s;
        QTest::newRow("line breaks") << u"a\nb\r\tc"_s << u"\"a\\nb\\r\\tc\""_s;
        QTest::newRow("line separator") << u"a\u2028b"_s << u"\"a\\u2028b\""_s;
        QTest::newRow("escape") << u"\x1b"_s << u"\"\\u001b\""_s;
        QTest::newRow("character of two units") << u"\U0001f600"_s << u"\"\U0001f600\""_s;
        QTest::newRow("half a character") << QString(QChar(0xd800)) << u"\"\\ud800\""_s;
        QTest::newRow("half a character before another") << QChar(0xd800) + u"a"_s << u"\"\\ud800a\""_s;
    }

    void literals()
    {
        QFETCH(QString, text);
        QTEST(pythonLiteral(text), "literal");
    }

    void paths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("expected");
        const auto folder = u"/home/me/work"_s;
        QTest::newRow("in the folder") << u"/home/me/work/src/main.c"_s << folder << u"replay.path(\"src/main.c\")"_s;
        QTest::newRow("beside it") << u"/home/me/work2/main.c"_s << folder << u"\"/home/me/work2/main.c\""_s;
        QTest::newRow("above it") << u"/home/me"_s << folder << u"\"/home/me\""_s;
        QTest::newRow("name that begins with dots")
            << u"/home/me/work/..a.c"_s << folder << u"replay.path(\"..a.c\")"_s;
        QTest::newRow("no workspace") << u"/home/me/work/main.c"_s << QString() << u"\"/home/me/work/main.c\""_s;
        QTest::newRow("relative") << u"main.c"_s << folder << u"\"main.c\""_s;
        QTest::newRow("file of the working directory, no folder")
            << QDir::current().filePath(u"a.c"_s) << QString() << pythonLiteral(QDir::current().filePath(u"a.c"_s));
    }

    void paths()
    {
        QFETCH(QString, path);
        QFETCH(QString, folder);
        QTEST(pythonPath(path, folder), "expected");
    }

    void processorsAreNamedIfOneProjectContainsTheName()
    {
        const QStringList names{u"fw"_s, u"dsp"_s, u"DSP boot"_s};
        QCOMPARE(pythonProcessor(names, 0), u"app.debugger.processors[\"fw\"]"_s);
        QCOMPARE(pythonProcessor(names, 1), u"app.debugger.processors[1]"_s);
        QCOMPARE(pythonProcessor(names, 2), u"app.debugger.processors[\"DSP boot\"]"_s);
    }

    void sourceOpensTheWorkspaceFirst()
    {
        RecordedScript script;
        QVERIFY(script.isEmpty());
        QVERIFY(script.source(u"r"_s, {}).endsWith(u"\n\n\ndef r():\n    pass\n"_s));
        script.add(u"app.closeWorkspace()"_s);
        QVERIFY(
            script.source(u"r"_s, u"/a\"b.vnw"_s)
                .endsWith(u"\n\n\ndef r():\n    replay.useWorkspace(\"/a\\\"b.vnw\")\n    app.closeWorkspace()\n"_s));
        script.clear();
        QVERIFY(script.isEmpty());
    }
};

QTEST_GUILESS_MAIN(RecordedScriptTest)
#include "tst_recordedscript.moc"

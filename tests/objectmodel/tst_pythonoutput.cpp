#include "pythonoutput.h"
#include "pythonruntime.h"
#include <Python.h>
#include <QSignalSpy>
#include <QTest>
using namespace Qt::StringLiterals;

class TestPythonOutput : public QObject
{
    Q_OBJECT
private:
    static QStringList texts(const QSignalSpy &spy)
    {
        QStringList texts;
        for (const QList<QVariant> &arguments : spy)
            texts.append(arguments.at(0).toString());
        return texts;
    }
    static void run(const QByteArray &script) { QCOMPARE(PyRun_SimpleString(script.constData()), 0); }

private Q_SLOTS:
    void initTestCase() { QVERIFY(startPython()); }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void partsAreJoined_data()
    {
        QTest::addColumn<QStringList>("pieces");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("a line") << QStringList{u"a"_s, u" "_s, u"b"_s, u"\n"_s} << QStringList{u"a b\n"_s};
        QTest::newRow("nothing") << QStringList{u""_s} << QStringList{};
        QTest::newRow("a line that replaces one")
            << QStringList{u"a"_s, u"\rb"_s, u"c"_s} << QStringList{u"a"_s, u"\rbc"_s};
        QTest::newRow("rich text is not joined")
            << QStringList{u"a"_s, u"<html>b</html>"_s, u"\n"_s} << QStringList{u"a"_s, u"<html>b</html>"_s, u"\n"_s};
        QTest::newRow("rich text in capitals is not joined")
            << QStringList{u"a"_s, u"<HTML>b</HTML>"_s, u"\n"_s} << QStringList{u"a"_s, u"<HTML>b</HTML>"_s, u"\n"_s};
        QTest::newRow("joined parts do not become rich text")
            << QStringList{u"<html>"_s, u"b</html>"_s} << QStringList{u"<html>"_s, u"b</html>"_s};
        QTest::newRow("a tag inside is not rich text")
            << QStringList{u"x<html>"_s, u"b</html>"_s} << QStringList{u"x<html>b</html>"_s};
    }
    void partsAreJoined()
    {
        QFETCH(QStringList, pieces);
        QFETCH(QStringList, shown);
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        for (const QString &piece : pieces)
            output.write(piece);
        output.flush();
        QCOMPARE(texts(spy), shown);
    }

    void hugeOutputIsForwardedInBatches()
    {
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        run("for i in range(100000): print('line', i)");
        output.flush();
        const QStringList shown = texts(spy);
        QVERIFY2(shown.size() > 1 && shown.size() < 100, qPrintable(QString::number(shown.size())));
        QString expected;
        for (int i = 0; i < 100000; ++i)
            expected += u"line %1\n"_s.arg(i);
        QVERIFY(shown.join(QString()) == expected);
    }

    void outputIsForwardedWhenEventsAreProcessed()
    {
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        for (const char *script : {"print('first')", "print('second')"}) {
            run(script);
            QCoreApplication::processEvents();
        }
        QCOMPARE(texts(spy), (QStringList{u"first\n"_s, u"second\n"_s}));
    }

    void outputIsForwardedBeforeLaterEvents()
    {
        PythonOutput output(1);
        QStringList order;
        connect(&output, &PythonOutput::written, this, [&order](const QString &text) { order.append(text); });
        run("print('text', end='')");
        QTimer::singleShot(0, this, [&order] { order.append(u"event"_s); });
        QTRY_COMPARE(order, (QStringList{u"text"_s, u"event"_s}));
    }

    void streamsDifferOnlyInFlush()
    {
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        run("import sys\n"
            "print('out')\n"
            "print('err', file=sys.stderr)\n"
            "print(sys.stdout.flush(), hasattr(sys.stderr, 'flush'))\n"
            "print(sys.stdout.write('w'))\n");
        output.flush();
        QCOMPARE(texts(spy), QStringList{u"out\nerr\nNone False\nwNone\n"_s});
    }

    void namesOfTheRedirectionAreInMain()
    {
        const PythonOutput output(4711);
        run("import sys, tarnoutput\n"
            "assert target == sys.stdout.target == sys.stderr.target == 4711\n"
            "assert type(sys.stdout) is tarnoutput_stdout and type(sys.stderr) is tarnoutput_stderr\n"
            "assert tarnoutput.stdout.__doc__ is None and tarnoutput.stderr.__doc__ is None\n"
            "assert tarnoutput.stdout('', target) is None\n");
    }

    void writingOtherThanTextIsRefused_data()
    {
        QTest::addColumn<QByteArray>("call");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("bytes") << "stdout(b'x', target)"_ba
                               << "TypeError"_ba;
        QTest::newRow("no target") << "stdout('x')"_ba
                                   << "TypeError"_ba;
        QTest::newRow("target of another type") << "stderr('x', 'y')"_ba
                                                << "TypeError"_ba;
        QTest::newRow("target beyond 64 bits") << "stderr('x', 1 << 64)"_ba
                                               << "OverflowError"_ba;
        QTest::newRow("null character") << "stdout('a\\0b', target)"_ba
                                        << "ValueError"_ba;
    }
    void writingOtherThanTextIsRefused()
    {
        QFETCH(QByteArray, call);
        QFETCH(QByteArray, error);
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        run("import tarnoutput\nerror = ''\ntry: tarnoutput." + call
            + "\nexcept Exception as e: error = type(e).__name__\n"
              "print(error)");
        output.flush();
        QCOMPARE(texts(spy), QStringList{QString::fromUtf8(error) + u'\n'});
    }

    void textOfAnyLanguageIsForwarded()
    {
        PythonOutput output(1);
        const QSignalSpy spy(&output, &PythonOutput::written);
        run("print('\\xe4\\u03a9\\U0001F40D' + chr(0xdc80))");
        output.flush();
        QCOMPARE(texts(spy), QStringList{u"äΩ\U0001F40D"_s + QChar(0xdc80) + u'\n'});
    }

    void writingToADeletedReceiverDoesNothing()
    {
        {
            const PythonOutput output(1);
            run("import sys; old = sys.stdout");
        }
        run("print('nobody')");
        PythonOutput output(2);
        const QSignalSpy spy(&output, &PythonOutput::written);
        run("old.write('stale')\nsys.stdout.write('fresh')");
        output.flush();
        QCOMPARE(texts(spy), QStringList{u"fresh"_s});
    }
};

QTEST_GUILESS_MAIN(TestPythonOutput)
#include "tst_pythonoutput.moc"

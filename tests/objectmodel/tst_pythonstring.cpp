#include "pythonruntime.h"
#include "pythonstring.h"
#include <Python.h>
#include <QTest>
using namespace Qt::StringLiterals;

class TestPythonString : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(startPython()); }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void convertedTextIsUnchanged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("characters");
        QTest::newRow("empty") << u""_s << 0;
        QTest::newRow("ASCII") << u"path/to"_s << 7;
        QTest::newRow("Latin-1") << u"Zähler"_s << 6;
        QTest::newRow("beyond Latin-1") << u"µΩ→"_s << 3;
        QTest::newRow("beyond 16 bits") << u"a\U0001F40D!"_s << 3;
        QTest::newRow("null character inside") << u"a\0b"_s << 3;
        QTest::newRow("lone surrogate") << u"a"_s + QChar(0xd800) + u'b' << 3;
        QTest::newRow("lone surrogate beside a pair") << u"\U0001F40D"_s + QChar(0xdcff) << 2;
        QTest::newRow("byte order mark") << u"\uFEFFx"_s << 2;
    }
    void convertedTextIsUnchanged()
    {
        QFETCH(QString, text);
        QFETCH(int, characters);
        const PythonReference string = toPython(text);
        QVERIFY(string);
        QCOMPARE(PyUnicode_GET_LENGTH(string.get()), characters);
        QCOMPARE(fromPython(string.get()), text);
    }

    void nullTextIsAnEmptyString()
    {
        const PythonReference string = toPython(QString());
        QVERIFY(string && PyUnicode_Check(string.get()));
        QCOMPARE(PyUnicode_GET_LENGTH(string.get()), 0);
    }

    void referenceIsReleased()
    {
        const PythonReference string = toPython(u"something of its own"_s);
        const auto before = Py_REFCNT(string.get());
        {
            const PythonReference another = newPythonReference(string.get());
            QCOMPARE(Py_REFCNT(string.get()), before + 1);
        }
        QCOMPARE(Py_REFCNT(string.get()), before);
        QVERIFY(!newPythonReference(nullptr));
    }
};

QTEST_APPLESS_MAIN(TestPythonString)
#include "tst_pythonstring.moc"

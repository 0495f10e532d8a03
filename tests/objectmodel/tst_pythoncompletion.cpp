#include "pythoncompletion.h"
#include "pythonreference.h"
#include "pythonruntime.h"
#include <Python.h>
#include <QTest>
using namespace Qt::StringLiterals;

class TestPythonCompletion : public QObject
{
    Q_OBJECT
private:
    PythonReference m_globals;

    QStringList completions(const QString &beginning) const { return pythonCompletions(m_globals.get(), beginning); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(startPython());
        m_globals.reset(PyDict_New());
        PyDict_SetItemString(m_globals.get(), "__builtins__", PyEval_GetBuiltins());
        const PythonReference result(PyRun_String("class Counter:\n"
                                                  "    def advance(self): raise SystemExit(9)\n"
                                                  "    def __getattr__(self, name): raise RuntimeError(name)\n"
                                                  "    def __dir__(self): return ['advance', 'broken']\n"
                                                  "class Plain: start = stop = 0\n"
                                                  "counter = Counter(); plain = Plain(); zähler = plain\n",
                                                  Py_file_input, m_globals.get(), m_globals.get()));
        QVERIFY(result);
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QVERIFY(!PyErr_Occurred()); }

    void namesAreCompleted_data()
    {
        QTest::addColumn<QString>("beginning");
        QTest::addColumn<QString>("names");
        QTest::newRow("name of the console") << u"plai"_s << u"plain"_s;
        QTest::newRow("function") << u"prin"_s << u"print("_s;
        QTest::newRow("keyword") << u"whil"_s << u"while "_s;
        QTest::newRow("attributes, sorted") << u"plain.st"_s << u"plain.start plain.stop"_s;
        QTest::newRow("attribute of a text's name beyond ASCII") << u"zähler.sta"_s << u"zähler.start"_s;
        QTest::newRow("unknown name") << u"nosuchthing"_s << u""_s;
        QTest::newRow("attribute of an unknown name") << u"nosuchthing.a"_s << u""_s;
        QTest::newRow("attribute that raises") << u"counter.b"_s << u""_s;
        QTest::newRow("nothing") << u""_s << u""_s;
        QTest::newRow("white space") << u" "_s << u""_s;
        QTest::newRow("a call is not made") << u"counter.advance()."_s << u""_s;
    }
    void namesAreCompleted()
    {
        QFETCH(QString, beginning);
        QFETCH(QString, names);
        QCOMPARE(completions(beginning).join(u' '), names);
    }

    void lineEditorOfTheTerminalIsNotConfigured()
    {
        QCOMPARE(completions(u"plai"_s), QStringList{u"plain"_s});
        PyObject *modules = PyImport_GetModuleDict();
        QVERIFY(PyDict_GetItemString(modules, "rlcompleter"));
        QVERIFY(!PyDict_GetItemString(modules, "readline"));
    }

    void cleanupTestCase() { m_globals.reset(); }
};

QTEST_APPLESS_MAIN(TestPythonCompletion)
#include "tst_pythoncompletion.moc"

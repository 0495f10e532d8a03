#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonoutput.h"
#include "pythonreference.h"
#include "pythonruntime.h"
#include <Python.h>
#include <QTest>
using namespace Qt::StringLiterals;

class TestPythonCall : public QObject
{
    Q_OBJECT
private:
    QString m_shown;

    /// Runs a script. Its functions stopHere, fail and pump represent actions of the program while a script waits.
    void run(const QByteArray &script)
    {
        const PythonCall call;
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        const PythonReference result(PyRun_String(script.constData(), Py_file_input, globals, globals));
    }

    static PyObject *breakFunction(PyObject *, PyObject *)
    {
        breakPython();
        Py_RETURN_NONE;
    }
    static PyObject *breakOften(PyObject *, PyObject *)
    {
        for (int i = 0; i < 100; ++i)
            breakPython();
        Py_RETURN_NONE;
    }
    static PyObject *deferFunction(PyObject *, PyObject *text)
    {
        deferPythonError(PyExc_OSError, QString::fromUtf8(PyUnicode_AsUTF8(text)));
        Py_RETURN_NONE;
    }
    static PyObject *nestFunction(PyObject *, PyObject *script)
    {
        s_test->run(PyUnicode_AsUTF8(script));
        Py_RETURN_NONE;
    }
    static PyObject *lateBreak(PyObject *, void *)
    {
        breakPython();
        Py_RETURN_NONE;
    }
    static void addFunctions()
    {
        static PyMethodDef functions[] = {{"stop", breakFunction, METH_NOARGS, nullptr},
                                          {"stopOften", breakOften, METH_NOARGS, nullptr},
                                          {"defer", deferFunction, METH_O, nullptr},
                                          {"nest", nestFunction, METH_O, nullptr},
                                          {nullptr, nullptr, 0, nullptr}};
        PyModule_AddFunctions(PyImport_AddModule("__main__"), functions);
        static PyGetSetDef attributes[] = {{"value", lateBreak, nullptr, nullptr, nullptr},
                                           {nullptr, nullptr, nullptr, nullptr, nullptr}};
        static PyType_Slot slots[] = {{Py_tp_getset, attributes}, {0, nullptr}};
        static PyType_Spec spec = {"Late", sizeof(PyObject), 0, Py_TPFLAGS_DEFAULT, slots};
        PyModule_AddObject(PyImport_AddModule("__main__"), "Late", PyType_FromSpec(&spec));
    }
    static inline TestPythonCall *s_test = nullptr;
    std::unique_ptr<PythonOutput> m_output;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(startPython());
        s_test = this;
        m_output = std::make_unique<PythonOutput>(1);
        connect(m_output.get(), &PythonOutput::written, this, [this](const QString &text) { m_shown += text; });
        addFunctions();
    }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_shown.clear();
    }
    void cleanup() { QVERIFY(!PyErr_Occurred() && !PythonCall::isRunning()); }

    void isRunningDuringACall()
    {
        QVERIFY(!PythonCall::isRunning());
        {
            const PythonCall outer;
            {
                const PythonCall inner;
                QVERIFY(PythonCall::isRunning());
            }
            QVERIFY(PythonCall::isRunning());
        }
        QVERIFY(!PythonCall::isRunning());
    }

    void outputAndErrorsArePrinted_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing") << "pass"_ba << u""_s;
        QTest::newRow("output is shown when the call ends") << "print('x')"_ba << u"x\n"_s;
        QTest::newRow("an exception") << "1/0"_ba
                                      << u"Traceback (most recent call last):\n  File \"<string>\", line 1, in "
                                         "<module>\nZeroDivisionError: division by zero\n"_s;
        QTest::newRow("a stored error is printed after the script has continued")
            << "defer('not saved'); print('on')"_ba << u"on\nOSError: not saved\n"_s;
        QTest::newRow("a stored error cannot be caught")
            << "try: defer('not saved')\nexcept OSError: print('caught')"_ba << u"OSError: not saved\n"_s;
        QTest::newRow("a later one replaces it") << "defer('first'); defer('second')"_ba << u"OSError: second\n"_s;
        QTest::newRow("it is printed before the exception that ends the script")
            << "defer('not saved')\nraise SystemError('end') from None"_ba
            << u"OSError: not saved\nTraceback (most recent call last):\n  File \"<string>\", line 2, in "
               "<module>\nSystemError: end\n"_s;
        QTest::newRow("a nested call prints the stored error of the outer one")
            << "defer('not saved'); nest('print(1)'); print(2)"_ba << u"1\nOSError: not saved\n2\n"_s;
        QTest::newRow("an exception of a nested call does not propagate")
            << "nest('raise SystemError(\"inside\") from None'); print('on')"_ba
            << u"Traceback (most recent call last):\n  File \"<string>\", line 1, in <module>\nSystemError: inside\non\n"_s;
    }
    void outputAndErrorsArePrinted()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, shown);
        run(script);
        QCOMPARE(m_shown, shown);
    }

    void interruptEndsAnEndlessLoop()
    {
        run("while True: stop()");
        QVERIFY2(m_shown.endsWith(u"\nKeyboardInterrupt\n"_s), qPrintable(m_shown));
    }
    void interruptCanBeCaughtInTheScript()
    {
        run("try:\n while True: stop()\nexcept KeyboardInterrupt: print('caught')");
        QCOMPARE(m_shown, u"caught\n"_s);
    }
    void interruptsBeforeTheScriptContinuesCountOnce()
    {
        run("try:\n  stopOften()\n  while True: pass\nexcept KeyboardInterrupt: print('once')\n"
            "for i in range(1000): pass\nprint('on')");
        QCOMPARE(m_shown, u"once\non\n"_s);
    }
    void interruptStopsTheInnerScript()
    {
        run("nest('try:\\n while True: stop()\\nexcept KeyboardInterrupt: print(\"inner\")')\nprint('outer')");
        QCOMPARE(m_shown, u"inner\nouter\n"_s);
    }
    void lateInterruptIsPrintedAndDoesNotStopTheNextScript()
    {
        run("late = Late(); print('whole'); late.value");
        QCOMPARE(m_shown, u"whole\nKeyboardInterrupt\n"_s);
        m_shown.clear();
        run("for i in range(1000): pass\nprint('untouched')");
        QCOMPARE(m_shown, u"untouched\n"_s);
    }
    void interruptWithoutScriptIsPrintedAfterTheNextScript()
    {
        breakPython();
        QCOMPARE(m_shown, QString());
        run("for i in range(1000): pass\nprint('whole')");
        QCOMPARE(m_shown, u"whole\nKeyboardInterrupt\n"_s);
    }

    void cleanupTestCase() { m_output.reset(); }
};

QTEST_GUILESS_MAIN(TestPythonCall)
#include "tst_pythoncall.moc"

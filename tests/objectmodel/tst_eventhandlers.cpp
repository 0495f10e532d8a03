#include "eventhandlers.h"
#include "pythoncall.h"
#include "pythonoutput.h"
#include "pythonreference.h"
#include "pythonruntime.h"
#include <Python.h>
#include <QTest>
using namespace Qt::StringLiterals;

class TestEventHandlers : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<PythonOutput> m_output;
    std::unique_ptr<EventHandlers> m_handlers;
    QString m_shown;

    static PyObject *globals() { return PyModule_GetDict(PyImport_AddModule("__main__")); }
    static PythonReference value(const QByteArray &expression)
    {
        PythonReference result(PyRun_String(expression.constData(), Py_eval_input, globals(), globals()));
        if (!result)
            PyErr_Print();
        return result;
    }
    static void run(const QByteArray &script)
    {
        const PythonReference result(PyRun_String(script.constData(), Py_file_input, globals(), globals()));
        if (!result)
            PyErr_Print();
    }

    bool set(const QString &name, const QByteArray &expression)
    {
        return m_handlers->setHandler(name, value(expression).get());
    }
    /// The Python list in which handlers record their calls.
    static QString calls()
    {
        const PythonReference text(value("' '.join(calls)"));
        run("calls.clear()");
        return QString::fromUtf8(PyUnicode_AsUTF8(text.get()));
    }

    static EventHandlers *s_handlers;
    static PyObject *setFunction(PyObject *, PyObject *callable)
    {
        return PyBool_FromLong(s_handlers->setHandler(u"onStopped"_s, callable));
    }
    static PyObject *fireFunction(PyObject *, PyObject *name)
    {
        s_handlers->fire(QString::fromUtf8(PyUnicode_AsUTF8(name)));
        Py_RETURN_NONE;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(startPython());
        static PyMethodDef functions[] = {{"set", setFunction, METH_O, nullptr},
                                          {"fire", fireFunction, METH_O, nullptr},
                                          {nullptr, nullptr, 0, nullptr}};
        PyModule_AddFunctions(PyImport_AddModule("__main__"), functions);
        m_output = std::make_unique<PythonOutput>(1);
        connect(m_output.get(), &PythonOutput::written, this, [this](const QString &text) { m_shown += text; });
    }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_handlers = std::make_unique<EventHandlers>();
        s_handlers = m_handlers.get();
        run("calls = []");
        m_shown.clear();
    }

    void cleanup()
    {
        m_handlers.reset();
        s_handlers = nullptr;
        QVERIFY(!PyErr_Occurred());
        QVERIFY(!PythonCall::isRunning());
    }

    void eventCallsItsHandlerWithoutArguments()
    {
        QVERIFY(set(u"onStopped"_s, "lambda *given: calls.append('stopped%d' % len(given))"));
        QVERIFY(set(u"onAttach"_s, "lambda: calls.append('attached')"));
        m_handlers->fire(u"onStopped"_s);
        m_handlers->fire(u"onStopped"_s);
        m_handlers->fire(u"onAttach"_s);
        QCOMPARE(calls(), u"stopped0 stopped0 attached"_s);
    }

    void eventWithoutHandlerDoesNothing()
    {
        m_handlers->fire(u"onStopped"_s);
        m_handlers->fire(QString());
        QCOMPARE(m_shown, QString());
    }

    void onlyCallableObjectsAreAccepted_data()
    {
        QTest::addColumn<QByteArray>("expression");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("function") << QByteArray("lambda: None") << true;
        QTest::newRow("built-in function") << QByteArray("globals") << true;
        QTest::newRow("method") << QByteArray("[].clear") << true;
        QTest::newRow("class") << QByteArray("list") << true;
        QTest::newRow("object with __call__") << QByteArray("type('C', (), {'__call__': lambda self: None})()") << true;
        QTest::newRow("None") << QByteArray("None") << true;
        QTest::newRow("number") << QByteArray("0") << false;
        QTest::newRow("text") << QByteArray("'print'") << false;
        QTest::newRow("object") << QByteArray("object()") << false;
    }

    void onlyCallableObjectsAreAccepted()
    {
        QFETCH(QByteArray, expression);
        QFETCH(bool, accepted);
        QVERIFY(set(u"onStopped"_s, "lambda: calls.append('old')"));
        QCOMPARE(set(u"onStopped"_s, expression), accepted);
        m_handlers->fire(u"onStopped"_s);
        QCOMPARE(calls(), accepted ? QString() : u"old"_s); // a refused object keeps the old one
    }

    void noneRemovesAHandler()
    {
        QVERIFY(m_handlers->handler(u"onStopped"_s).get() == Py_None);
        QVERIFY(set(u"onStopped"_s, "lambda: calls.append('stopped')"));
        QVERIFY(set(u"onStopped"_s, "None"));
        QVERIFY(m_handlers->handler(u"onStopped"_s).get() == Py_None);
        QVERIFY(set(u"onStopped"_s, "None"));
        m_handlers->fire(u"onStopped"_s);
        QCOMPARE(calls(), QString());
    }

    void handlerReturnsTheObjectThatWasSet()
    {
        run("def stopped(): pass");
        const PythonReference stopped = value("stopped");
        QVERIFY(set(u"onStopped"_s, "stopped"));
        QVERIFY(m_handlers->handler(u"onStopped"_s).get() == stopped.get());
        QVERIFY(m_handlers->handler(u"onAttach"_s).get() == Py_None);
    }

    void referencesAreReleased()
    {
        run("def stopped(): pass");
        const PythonReference stopped = value("stopped");
        const Py_ssize_t before = Py_REFCNT(stopped.get());
        QVERIFY(set(u"onStopped"_s, "stopped"));
        QCOMPARE(Py_REFCNT(stopped.get()), before + 1);
        m_handlers->fire(u"onStopped"_s);
        (void)m_handlers->handler(u"onStopped"_s);
        QCOMPARE(Py_REFCNT(stopped.get()), before + 1);
        QVERIFY(set(u"onStopped"_s, "len"));
        QCOMPARE(Py_REFCNT(stopped.get()), before);
        QVERIFY(set(u"onStopped"_s, "stopped"));
        m_handlers.reset();
        QCOMPARE(Py_REFCNT(stopped.get()), before);
    }

    void exceptionIsPrintedAndDoesNotPropagate()
    {
        QVERIFY(set(u"onStopped"_s, "lambda: 1 / 0"));
        m_handlers->fire(u"onStopped"_s);
        QVERIFY(!PyErr_Occurred());
        QVERIFY(m_shown.startsWith(u"Traceback (most recent call last):"_s));
        QVERIFY(m_shown.endsWith(u"ZeroDivisionError: division by zero\n"_s));
        QCOMPARE(m_shown.count(u"ZeroDivisionError"_s), 1);
        QVERIFY(set(u"onStopped"_s, "lambda needed: None"));
        m_shown.clear();
        m_handlers->fire(u"onStopped"_s);
        QVERIFY(m_shown.contains(u"TypeError"_s));
    }

    void scriptIsRunningDuringTheCall()
    {
        QVERIFY(set(u"onStopped"_s, "lambda: None"));
        run("def stopped():\n"
            "  fire('onAttach')\n"
            "  calls.append('stopped')\n"
            "def attached(): calls.append('attached')\n");
        QVERIFY(set(u"onStopped"_s, "stopped"));
        QVERIFY(set(u"onAttach"_s, "attached"));
        m_handlers->fire(u"onStopped"_s);
        QCOMPARE(calls(), u"attached stopped"_s);
    }

    void handlerMayReplaceItselfWhileItRuns_data()
    {
        QTest::addColumn<QByteArray>("by");
        QTest::addColumn<QString>("second");
        QTest::newRow("by another") << QByteArray("lambda: calls.append('next')") << u"next"_s;
        QTest::newRow("by none") << QByteArray("None") << QString();
    }

    void handlerMayReplaceItselfWhileItRuns()
    {
        QFETCH(QByteArray, by);
        run("import weakref\n"
            "class Handler:\n"
            "  def __call__(self):\n"
            "    set("
            + by
            + ")\n"
              "    calls.append(self.name)\n"
              "  name = 'first'\n");
        QVERIFY(set(u"onStopped"_s, "Handler()")); // the only reference
        m_handlers->fire(u"onStopped"_s);
        QCOMPARE(calls(), u"first"_s);
        m_handlers->fire(u"onStopped"_s);
        QTEST(calls(), "second");
    }

    /// The destructor of a handler may run script code, which must find a consistent table.
    void destructorOfAHandlerMaySetAnother()
    {
        run("class Last:\n"
            "  def __call__(self): pass\n"
            "  def __del__(self):\n"
            "    calls.append('gone')\n"
            "    set(lambda: calls.append('from the end'))\n");
        QVERIFY(set(u"onStopped"_s, "Last()"));
        QVERIFY(set(u"onStopped"_s, "None"));
        QCOMPARE(calls(), u"gone"_s);
        m_handlers->fire(u"onStopped"_s);
        QCOMPARE(calls(), u"from the end"_s);
    }
};

EventHandlers *TestEventHandlers::s_handlers = nullptr;

QTEST_GUILESS_MAIN(TestEventHandlers)
#include "tst_eventhandlers.moc"

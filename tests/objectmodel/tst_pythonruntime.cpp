#include "pythonreference.h"
#include "pythonruntime.h"
#include "pythonstring.h"
#include <clocale>
#include <Python.h>
#include <QProcess>
#include <QTest>
using namespace Qt::StringLiterals;

// Python starts once in a process, so each case runs in a child process: this program, with an expression as its
// argument.

class TestPythonRuntime : public QObject
{
    Q_OBJECT
private:
    static QString valueInChild(const QString &expression, bool environmentUsed, const QString &variable,
                                const QString &value)
    {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!variable.isEmpty())
            environment.insert(variable, value);
        child.setProcessEnvironment(environment);
        child.start(QCoreApplication::applicationFilePath(),
                    {u"--value"_s, expression, environmentUsed ? u"used"_s : u"ignored"_s});
        child.waitForFinished();
        return QString::fromUtf8(child.readAllStandardOutput() + child.readAllStandardError());
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void pythonHasTheConfiguredProperties_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<bool>("used");
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &expression, const QString &expected, bool used = false,
                            const QString &variable = {}, const QString &value = {}) {
            QTest::newRow(name) << expression << used << variable << value << expected;
        };
        const QString signalsTaken = u"__import__('signal') and [int(line[7:], 16) & 1 << 1 "
                                     "for line in open('/proc/self/status') if line.startswith('SigCgt')][0]"_s;
        const QString noInput = u"Traceback (most recent call last):\n  File \"<string>\", line 1, in <module>\n"
                                "RuntimeError: input(): lost sys.stdin\n"_s;
        row("is in UTF-8 mode", u"__import__('sys').flags.utf8_mode"_s, u"1"_s);
        row("writes files as UTF-8 in any locale", u"open('/dev/null').encoding"_s, u"utf-8"_s, false, u"LC_ALL"_s,
            u"C"_s);
        row("is UTF-8 in any locale with the environment in use", u"__import__('sys').flags.utf8_mode"_s, u"1"_s, true,
            u"LC_ALL"_s, u"C"_s);
        row("has site", u"'site' in __import__('sys').modules"_s, u"True"_s);
        row("ignores PYTHONPATH", u"'/extra' in __import__('sys').path"_s, u"False"_s, false, u"PYTHONPATH"_s,
            u"/extra"_s);
        row("uses PYTHONPATH on request", u"'/extra' in __import__('sys').path"_s, u"True"_s, true, u"PYTHONPATH"_s,
            u"/extra"_s);
        row("ignores PYTHONHOME", u"__import__('sys').prefix"_s, u"/usr"_s, false, u"PYTHONHOME"_s, u"/nowhere"_s);
        row("ignores PATH", u"__import__('sys').prefix"_s, u"/usr"_s, false, u"PATH"_s, u"/nowhere"_s);
        row("has no path of the current directory", u"'' in __import__('sys').path"_s, u"False"_s);
        row("has no arguments of the program", u"__import__('sys').argv"_s, u"['']"_s);
        row("does not handle interrupts when a script imports signal", signalsTaken, u"0"_s);
        row("does not change the program's locale", u"__import__('locale').setlocale(0)"_s, u"C"_s, false, u"LC_ALL"_s,
            u"C.UTF-8"_s);
        row("does not wait for input", u"input()"_s, noInput);
        row("has no packages of the user", u"__import__('site').ENABLE_USER_SITE"_s, u"False"_s);
        row("has the user's packages on request", u"__import__('site').ENABLE_USER_SITE"_s, u"True"_s, true);
        row("does not change the environment of child processes", u"__import__('os').environ['LC_ALL']"_s, u"C"_s,
            false, u"LC_ALL"_s, u"C"_s);
    }
    void pythonHasTheConfiguredProperties()
    {
        QFETCH(QString, expression);
        QFETCH(bool, used);
        QFETCH(QString, variable);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        QCOMPARE(valueInChild(expression, used, variable, value), expected);
    }

    void secondStartDoesNothing()
    {
        QVERIFY(startPython());
        QVERIFY(startPython(PythonEnvironment::Used));
        QVERIFY(Py_IsInitialized());
    }

    void failedStartPrintsPythonsMessage()
    {
        const QString output = valueInChild(u"1"_s, true, u"PYTHONHASHSEED"_s, u"many"_s);
        QVERIFY2(output.contains(u"startPython: Cannot start Python (PYTHONHASHSEED must be"_s), qPrintable(output));
        QVERIFY2(output.endsWith(u"not started"_s), qPrintable(output));
    }
};

static int printValue(const QString &expression, bool environmentUsed)
{
    std::setlocale(LC_ALL,
                   "C"); // not the locale of the environment, so that a second look at the environment would be visible
    if (!startPython(environmentUsed ? PythonEnvironment::Used : PythonEnvironment::Ignored)) {
        fputs("not started", stderr);
        return 1;
    }
    const PythonReference globals(PyDict_New());
    const PythonReference value(
        PyRun_String(expression.toUtf8().constData(), Py_eval_input, globals.get(), globals.get()));
    if (!value)
        PyErr_Print();
    else
        fputs(qPrintable(fromPython(PythonReference(PyObject_Str(value.get())).get())), stdout);
    return 0;
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc == 4 && qstrcmp(argv[1], "--value") == 0)
        return printValue(QString::fromUtf8(argv[2]), qstrcmp(argv[3], "used") == 0);
    TestPythonRuntime test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pythonruntime.moc"

#include "projectscript.h"
#include "pythoncall.h"
#include "pythonoutput.h"
#include "pythonreference.h"
#include "pythonruntime.h"
#include <Python.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
using namespace Qt::StringLiterals;

/// The Python functions of templates.
class ProjectScriptTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<PythonOutput> m_output;
    QString m_shown;
    std::unique_ptr<QTemporaryDir> m_directory;

    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_directory->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    ProjectScriptResult run(const QByteArray &script)
    {
        write(u"builder.py"_s, script);
        return runProjectScript(u"builder"_s, u"n\u00e4me"_s, m_directory->path(), u"/projects/n\u00e4me"_s);
    }

    static QString value(const char *expression)
    {
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        const PythonReference result(PyRun_String(expression, Py_eval_input, globals, globals));
        return result ? QString::fromUtf8(PyUnicode_AsUTF8(result.get())) : u"error"_s;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(startPython());
        PyRun_SimpleString("import sys");
        m_output = std::make_unique<PythonOutput>(1);
        connect(m_output.get(), &PythonOutput::written, this, [this](const QString &text) { m_shown += text; });
    }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        PyRun_SimpleString("import importlib\nimportlib.invalidate_caches()");
        m_shown.clear();
    }
    void cleanup()
    {
        QVERIFY(!PyErr_Occurred());
        QVERIFY(!PythonCall::isRunning());
    }

    void functionGetsNameTemplateAndPath()
    {
        const ProjectScriptResult result = run("def createProject(*given): return '|'.join(given)");
        QCOMPARE(result.outcome, ProjectScriptResult::Path);
        QCOMPARE(result.path, u"n\u00e4me|"_s + m_directory->path() + u"|/projects/n\u00e4me"_s);
    }

    void outcomeDependsOnTheScript_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<ProjectScriptResult::Outcome>("outcome");
        QTest::addColumn<QString>("printed");
        using enum ProjectScriptResult::Outcome;
        const QByteArray head = "def createProject(name, template, path): ";
        QTest::newRow("None") << head + "pass" << Nothing << QString();
        QTest::newRow("empty string") << head + "return ''" << Path << QString();
        QTest::newRow("exit") << head + "raise SystemExit(3)" << Failed
                              << u"RuntimeError: The script has called exit()\n"_s;
        QTest::newRow("exit on import") << QByteArray("import sys; sys.exit()") << NoModule
                                        << u"RuntimeError: The script has called exit()\n"_s;
        QTest::newRow("number") << head + "return 7" << OtherType << QString();
        QTest::newRow("bytes") << head + "return b'x.vnp'" << OtherType << QString();
        QTest::newRow("false") << head + "return False" << OtherType << QString();
        QTest::newRow("exception") << head + "raise OSError('no room')" << Failed << u"OSError: no room\n"_s;
        QTest::newRow("wrong arguments")
            << QByteArray("def createProject(): pass") << Failed
            << u"TypeError: createProject() takes 0 positional arguments but 3 were given\n"_s;
        QTest::newRow("no function") << QByteArray("x = 1") << NoFunction << QString();
        QTest::newRow("not callable") << QByteArray("createProject = 'x.vnp'") << NoFunction << QString();
        QTest::newRow("syntax error") << QByteArray("def createProject(:") << NoModule << u"SyntaxError"_s;
        QTest::newRow("exception while importing") << QByteArray("1 / 0") << NoModule << u"ZeroDivisionError"_s;
        QTest::newRow("replaces the search path")
            << QByteArray("import sys\nsys.path = sys.path[1:] + ['x']\n") + head + "return 'a'" << Path << QString();
        QTest::newRow("is no module") << QByteArray("import sys\nsys.modules['builder'] = 5") << NoFunction
                                      << QString();
    }

    void outcomeDependsOnTheScript()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, printed);
        QTEST(run(script).outcome, "outcome");
        QVERIFY2(printed.isEmpty() ? m_shown.isEmpty() : m_shown.contains(printed), qPrintable(m_shown));
    }

    void missingModuleIsAnError()
    {
        using Outcome = ProjectScriptResult::Outcome;
        QCOMPARE(runProjectScript(u"no_such_module"_s, {}, {}, {}).outcome, Outcome::NoModule);
        QVERIFY(m_shown.contains(u"ModuleNotFoundError"_s));
        QCOMPARE(runProjectScript(QString(), {}, {}, {}).outcome, Outcome::NoModule);
        QCOMPARE(runProjectScript(u"../evil"_s, {}, {}, {}).outcome, Outcome::NoModule);
    }

    void searchPathAndModulesAreAsBefore()
    {
        const QString path = value("'|'.join(sys.path)");
        run("import sys\ndef createProject(*given): return sys.path[0]");
        QCOMPARE(value("'|'.join(sys.path)"), path);
        QCOMPARE(value("str('builder' in sys.modules)"), u"False"_s);
        QCOMPARE(value("str(sys.dont_write_bytecode)"), u"False"_s);
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList(u"builder.py"_s));
    }

    void changedScriptIsReadAgain()
    {
        QCOMPARE(run("def createProject(*given): return 'one'").path, u"one"_s);
        QCOMPARE(run("def createProject(*given): return 'second'").path, u"second"_s);
    }

    void scriptThatRunsForEverIsInterrupted_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<ProjectScriptResult::Outcome>("outcome");
        using enum ProjectScriptResult::Outcome;
        const QByteArray head = "def createProject(name, template, path):\n ";
        QTest::newRow("function") << head + "while True: pass" << Failed;
        QTest::newRow("module") << QByteArray("while True: pass") << NoModule;
        QTest::newRow("ignores the first interrupt")
            << head + "try:\n  while True: pass\n except KeyboardInterrupt:\n  while True: pass" << Failed;
    }

    void scriptThatRunsForEverIsInterrupted()
    {
        QFETCH(QByteArray, script);
        write(u"builder.py"_s, script);
        int calls = 0;
        const ProjectScriptResult result =
            runProjectScript(u"builder"_s, u"n"_s, m_directory->path(), u"/n"_s, [&] { return ++calls < 3; });
        QTEST(result.outcome, "outcome");
        QVERIFY(calls >= 3);
        QVERIFY2(m_shown.contains(u"KeyboardInterrupt"_s), qPrintable(m_shown));
    }

    void watchEndsWithTheScript()
    {
        write(u"builder.py"_s, "import time\ndef createProject(*given):\n end = time.monotonic() + 0.2\n"
                               " while time.monotonic() < end: pass\n return 'x'");
        int calls = 0;
        const auto count = [&] { return ++calls > 0; };
        QCOMPARE(runProjectScript(u"builder"_s, u"n"_s, m_directory->path(), u"/n"_s, count).path, u"x"_s);
        QVERIFY(calls > 0);
        const int before = calls;
        QCOMPARE(value("str(sum(x for x in range(2000000)))"), u"1999999000000"_s); // takes longer than the interval
        QCOMPARE(calls, before);
    }

    void moduleThatWasImportedBeforeIsUsedAndStays()
    {
        PyRun_SimpleString("import types\nsys.modules['builder'] = types.ModuleType('builder')\n"
                           "sys.modules['builder'].createProject = lambda *given: 'present'");
        QCOMPARE(run("def createProject(*given): return 'file'").path, u"present"_s);
        QCOMPARE(value("str('builder' in sys.modules)"), u"True"_s);
        PyRun_SimpleString("del sys.modules['builder']");
    }
};

QTEST_GUILESS_MAIN(ProjectScriptTest)
#include "tst_projectscript.moc"

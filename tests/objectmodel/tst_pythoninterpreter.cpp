#include "commandlinewindow.h"
#include "pythoninterpreter.h"
#include "pythonruntime.h"
#include "pythonstring.h"
#include "scriptdirectories.h"
#include <Python.h>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <sys/stat.h>
using namespace Qt::StringLiterals;

/// A main window that counts how often it was closed.
class ClosedWindow : public QMainWindow
{
public:
    ClosedWindow() { show(); }
    int closed = 0;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        ++closed;
        QMainWindow::closeEvent(event);
    }
};

class TestPythonInterpreter : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;
    std::unique_ptr<PythonInterpreter> m_interpreter;
    QString m_shown;

    /// The console's output for these lines, entered one after the other.
    QString shown(const QStringList &lines)
    {
        m_shown.clear();
        for (const QString &line : lines)
            m_interpreter->inputLine(line);
        return m_shown;
    }
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_directory.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("The script cannot be written.");
        return file.fileName();
    }
    void create(const ScriptDirectories &directories)
    {
        m_interpreter = std::make_unique<PythonInterpreter>(directories);
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, this,
                [this](const QString &text) { m_shown += text; });
        m_shown.clear();
    }
    static QString sysPathTail(int count)
    {
        const PythonReference tail(PyRun_String(("'|'.join(sys.path[-" + QByteArray::number(count) + ":])").constData(),
                                                Py_eval_input, PyModule_GetDict(PyImport_AddModule("__main__")),
                                                PyModule_GetDict(PyImport_AddModule("__main__"))));
        return tail ? fromPython(tail.get()) : QString();
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(startPython()); }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        create({m_directory.path(), QString()});
    }
    void cleanup()
    {
        m_interpreter.reset();
        QVERIFY(!PyErr_Occurred());
    }

    void packagesOfTheVirtualEnvironmentCanBeImported()
    {
        const QString venv = m_directory.filePath(u"my venv"_s);
        const QString packages = venv + u"/lib/python%1.%2/site-packages"_s.arg(PY_MAJOR_VERSION).arg(PY_MINOR_VERSION);
        QVERIFY(QDir().mkpath(packages));
        QFile module(packages + u"/answers.py"_s);
        QVERIFY(module.open(QIODevice::WriteOnly) && module.write("answer = 42\n") > 0);
        module.close();
        create({m_directory.path(), QString(), venv});
        QCOMPARE(shown({u"import answers; answers.answer"_s}), u"42\n>>> "_s);
        m_interpreter->start({});
        QVERIFY(!m_shown.contains(u"virtual environment"_s));
    }

    void virtualEnvironmentWithoutPackagesIsReported()
    {
        create({m_directory.path(), QString(), u"/nowhere"_s});
        m_interpreter->start({});
        QVERIFY(m_shown.endsWith(
            u"The virtual environment '/nowhere' has no packages for Python %1.%2.\n>>> "_s.arg(PY_MAJOR_VERSION)
                .arg(PY_MINOR_VERSION)));
    }

    void linesAreExecuted_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QStringList &lines, const QString &expected) {
            QTest::newRow(name) << lines << expected;
        };
        row("an empty line brings a new prompt", {u""_s}, u">>> "_s);
        row("a simple first line runs at once", {u"print('a')"_s}, u"a\n>>> "_s);
        row("the value of an expression is shown", {u"'a' + 'b'"_s}, u"'ab'\n>>> "_s);
        row("None is not shown", {u"None"_s}, u">>> "_s);
        row("a compound statement runs after an empty line", {u"if 1:"_s, u"\tprint('a')"_s, u""_s},
            u"... ... a\n>>> "_s);
        row("a compound statement that is whole in its first line runs at once", {u"if 1: print('a')"_s}, u"a\n>>> "_s);
        row("a block of several lines", {u"for i in (1, 2):"_s, u"\tif i:"_s, u"\t\tprint(i)"_s, u""_s},
            u"... ... ... 1\n2\n>>> "_s);
        row("an empty line ends no open bracket", {u"print("_s, u""_s, u"1)"_s, u""_s}, u"... ... ... 1\n>>> "_s);
        row("a bracket waits for an empty line once continued", {u"print("_s, u"1)"_s, u""_s}, u"... ... 1\n>>> "_s);
        row("a text of several lines", {u"'''a"_s, u"b'''"_s, u""_s}, u"... ... 'a\\nb'\n>>> "_s);
        row("a backslash", {u"1 + \\"_s, u"2"_s, u""_s}, u"... ... 3\n>>> "_s);
        row("a decorator", {u"@staticmethod"_s, u"def f():"_s, u"\tpass"_s, u""_s}, u"... ... ... >>> "_s);
        row("else, try and with",
            {u"try:"_s, u"\t1/0"_s, u"except ZeroDivisionError:"_s, u"\tprint('z')"_s, u"else:"_s, u"\tpass"_s, u""_s},
            u"... ... ... ... ... ... z\n>>> "_s);
        row("a comment belongs to the statement that follows", {u"# a"_s, u""_s, u"1"_s, u""_s},
            u"... ... ... 1\n>>> "_s);
        row("a syntax error", {u"1 +"_s},
            u"  File \"<stdin>\", line 1\n    1 +\n       ^\nSyntaxError: invalid syntax\n>>> "_s);
        row("a syntax error in a block discards the block", {u"if 1:"_s, u"\tprint('a')"_s, u"\t1 +"_s, u""_s},
            u"... ...   File \"<stdin>\", line 3\n    1 +\n       ^\nSyntaxError: invalid syntax\n>>> >>> "_s);
        row("a line that should be indented discards the block", {u"if 1:"_s, u"print('a')"_s, u""_s},
            u"...   File \"<stdin>\", line 2\n    print('a')\n    ^\nIndentationError: expected an indented block "
            u"after "
            "'if' statement on line 1\n>>> >>> "_s);
        row("text of any language", {u"'äΩ\U0001F40D'"_s}, u"'äΩ\U0001F40D'\n>>> "_s);
        row("a coding line does not change what was typed", {u"# coding: latin-1"_s, u"print('ä')"_s, u""_s},
            u"... ... ä\n>>> "_s);
        row("an exception", {u"1/0"_s},
            u"Traceback (most recent call last):\n  File \"<stdin>\", line 1, in <module>\nZeroDivisionError: division "
            "by zero\n>>> "_s);
        row("the console continues after an exception", {u"undefined"_s, u"1"_s},
            u"Traceback (most recent call last):\n  File \"<stdin>\", line 1, in <module>\nNameError: name 'undefined' "
            "is not defined\n>>> 1\n>>> "_s);
        row("the old print statement", {u"print 'x'"_s},
            u"  File \"<stdin>\", line 1\n    print 'x'\n    ^^^^^^^^^\nSyntaxError: Missing parentheses in call to "
            "'print'. Did you mean print(...)?\n>>> "_s);
        row("names at the prompt", {u"sorted(globals()), __name__"_s},
            u"(['__builtins__', '__name__'], '__main__')\n>>> "_s);
        row("names are kept from line to line", {u"a = 6"_s, u"a * 7"_s}, u">>> 42\n>>> "_s);
    }
    void linesAreExecuted()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, expected);
        QCOMPARE(shown(lines), expected);
    }

    void warningOfAStatementIsPrintedOnce()
    {
        const QString text = shown({u"def f():"_s, u"  return 1 is 1"_s, u""_s});
        QCOMPARE(text.count(u"SyntaxWarning"_s), 1);
        QVERIFY(!shown({u"def g():"_s, u"  x = 1 is 1"_s}).contains(u"SyntaxWarning"_s)); // it is not complete
        shown({u""_s});
    }

    void scriptReadsALineOfTheConsole()
    {
        m_interpreter->setInputAvailable([] { return true; });
        QStringList requests;
        connect(m_interpreter.get(), &PythonInterpreter::inputRequested, this, [&] {
            requests << m_shown;
            QTimer::singleShot(0, m_interpreter.get(), [&] { m_interpreter->inputLine(u"blue"_s); });
        });
        QCOMPARE(shown({u"print(input('colour? '), input())"_s}), u"colour? blue blue\n>>> "_s);
        QCOMPARE(requests.first(), u"colour? "_s); // before the user has to answer
        QCOMPARE(requests.size(), 2);
    }

    void interruptEndsTheWaitForALine()
    {
        m_interpreter->setInputAvailable([] { return true; });
        connect(m_interpreter.get(), &PythonInterpreter::inputRequested, this,
                [this] { QTimer::singleShot(0, m_interpreter.get(), &PythonInterpreter::interrupt); });
        const QString text = shown({u"input()"_s});
        QVERIFY2(text.contains(u"KeyboardInterrupt"_s) && text.endsWith(u">>> "_s), qPrintable(text));
    }

    void interpreterMayEndWhileAScriptWaitsForALine()
    {
        m_interpreter->setInputAvailable([] { return true; });
        connect(m_interpreter.get(), &PythonInterpreter::inputRequested, this,
                [this] { QTimer::singleShot(0, this, [this] { m_interpreter.reset(); }); });
        PythonInterpreter *interpreter = m_interpreter.get();
        interpreter->inputLine(u"input()"_s);
        QVERIFY(!m_interpreter);
    }

    void scriptFindsTheEndOfTheInputWithoutAUser()
    {
        QVERIFY(shown({u"input()"_s}).contains(u"EOFError"_s));
        m_interpreter->setInputAvailable([] { return false; });
        QVERIFY(shown({u"input()"_s}).contains(u"EOFError"_s));
    }

    void threadsOfAScriptCannotReadLines()
    {
        m_interpreter->setInputAvailable([] { return true; });
        const QString text =
            shown({u"import threading"_s, u"t = threading.Thread(target=input); t.start(); t.join()"_s});
        QVERIFY2(text.contains(u"RuntimeError: Only the main thread of a script can wait for input"_s),
                 qPrintable(text));
    }

    void interactiveHelpReadsItsTopics()
    {
        m_interpreter->setInputAvailable([] { return true; });
        QStringList answers{u"len"_s, u"quit"_s};
        connect(m_interpreter.get(), &PythonInterpreter::inputRequested, this, [&] {
            QTimer::singleShot(0, m_interpreter.get(), [&] { m_interpreter->inputLine(answers.takeFirst()); });
        });
        const QString text = shown({u"help()"_s});
        QVERIFY2(text.contains(u"help> "_s) && text.contains(u"Return the number of items in a container"_s),
                 qPrintable(text));
        QVERIFY(answers.isEmpty());
        QVERIFY(text.endsWith(u">>> "_s));
    }

    void helpIsPrinted() { QVERIFY(shown({u"help(len)"_s}).contains(u"Return the number of items in a container"_s)); }

    void interruptWithoutAScriptDropsTheStatement()
    {
        m_interpreter->inputLine(u"if 1:"_s);
        m_shown.clear();
        m_interpreter->interrupt();
        QCOMPARE(m_shown, u"\nKeyboardInterrupt\n>>> "_s);
        QCOMPARE(shown({u"1 + 1"_s}), u"2\n>>> "_s);
    }

    void loopThatProcessesNoEventsCanBeInterrupted()
    {
        m_interpreter->setInputAvailable([] { return true; });
        QList<bool> running;
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            running << on;
            if (on)
                QTimer::singleShot(0, m_interpreter.get(), &PythonInterpreter::interrupt);
        });
        const QString text = shown({u"while True: pass"_s, u""_s});
        QVERIFY2(text.contains(u"KeyboardInterrupt"_s), qPrintable(text));
        QCOMPARE(running, (QList<bool>{true, false}));
    }

    void callThatWaitsCanBeInterrupted_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::newRow("sleep") << u"import time; time.sleep(600)"_s;
        QTest::newRow("lock") << u"import threading; l = threading.Lock(); l.acquire(); l.acquire()"_s;
        QTest::newRow("condition") << u"import threading; threading.Event().wait()"_s;
        QTest::newRow("process") << u"import subprocess; subprocess.run(['sleep', '600'])"_s;
        QTest::newRow("connection") << u"import socket; a, b = socket.socketpair(); a.recv(1)"_s;
    }

    void callThatWaitsCanBeInterrupted()
    {
        QFETCH(const QString, statement);
        m_interpreter->setInputAvailable([] { return true; });
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            if (on)
                QTimer::singleShot(0, m_interpreter.get(), &PythonInterpreter::interrupt);
        });
        const QString text = shown({statement});
        QVERIFY2(text.contains(u"KeyboardInterrupt"_s) && text.endsWith(u">>> "_s), qPrintable(text));
        QCOMPARE(shown({u"1 + 1"_s}), u"2\n>>> "_s);
    }

    void sleepLastsAsLongAsItShould()
    {
        m_interpreter->setInputAvailable([] { return true; });
        const QString text = shown({u"import time; start = time.monotonic()"_s, u"time.sleep(0.8)"_s,
                                    u"print(time.monotonic() - start >= 0.8)"_s});
        QVERIFY2(text.contains(u"True"_s), qPrintable(text));
    }

    void fileCanBeInterrupted()
    {
        m_interpreter->setInputAvailable([] { return true; });
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [this](bool on) {
            if (on)
                QTimer::singleShot(0, m_interpreter.get(), &PythonInterpreter::interrupt);
        });
        QVERIFY(!m_interpreter->runFile(write(u"loop.py"_s, "while True:\n    pass\n")));
        QVERIFY2(m_shown.contains(u"KeyboardInterrupt"_s), qPrintable(m_shown));
    }

    void userInputWaitsWhileAStatementRuns()
    {
        QLineEdit edit;
        QPushButton stop;
        edit.show();
        stop.show();
        m_interpreter->setInputAvailable([] { return true; });
        m_interpreter->addInterruptWidget(&stop);
        connect(&stop, &QPushButton::clicked, m_interpreter.get(), &PythonInterpreter::interrupt);
        const QSignalSpy refused(m_interpreter.get(), &PythonInterpreter::inputRefused);
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            if (!on)
                return;
            QTimer::singleShot(0, &edit, [&] {
                QTest::keyClick(&edit, Qt::Key_A);
                QTest::mouseClick(&stop, Qt::LeftButton);
            });
        });
        QVERIFY(shown({u"while True: pass"_s, u""_s}).contains(u"KeyboardInterrupt"_s));
        QCOMPARE(edit.text(), QString());
        QCOMPARE(refused.size(), 1);
    }

    /// Ctrl+Z means undo in other widgets.
    void keysInterruptAStatementInTheConsoleOnly()
    {
        m_interpreter->setInputAvailable([] { return true; });
        QLineEdit edit;
        edit.insert(u"text"_s);
        CommandLineWindow console;
        edit.show();
        console.show();
        connect(&console, &CommandLineWindow::interruptRequested, m_interpreter.get(), &PythonInterpreter::interrupt);
        QString text;
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            if (!on)
                return;
            QTimer::singleShot(0, &edit, [&] {
                QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
                text = edit.text();
                QTest::keyClick(&console, Qt::Key_C, Qt::ControlModifier);
            });
        });
        QVERIFY(shown({u"while True: pass"_s, u""_s}).contains(u"KeyboardInterrupt"_s));
        QCOMPARE(text, u"text"_s);
    }

    void endOfTheProgramInterruptsTheScriptFirst_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("the window's button") << false;
        QTest::newRow("the key") << true;
    }

    void endOfTheProgramInterruptsTheScriptFirst()
    {
        QFETCH(const bool, byKey);
        m_interpreter->setInputAvailable([] { return true; });
        ClosedWindow window;
        QAction exit;
        exit.setObjectName(u"fileExit"_s);
        connect(&exit, &QAction::triggered, &window, &QWidget::close);
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            if (!on)
                return;
            QTimer::singleShot(0, &window, [&] {
                QShortcutEvent key(QKeySequence(u"Ctrl+Q"_s), 1);
                byKey ? (void)QCoreApplication::sendEvent(&exit, &key) : (void)window.close();
            });
        });
        const QString text = shown({u"while True: pass"_s, u""_s});
        QVERIFY2(text.contains(u"KeyboardInterrupt"_s), qPrintable(text));
        QVERIFY(window.isVisible());
        QCOMPARE(window.closed, 0);
        QTRY_COMPARE(window.closed, 1);
        QVERIFY(!window.isVisible());
    }

    void secondEndOfTheProgramDoesNotWaitForTheScript_data() { endOfTheProgramInterruptsTheScriptFirst_data(); }

    void secondEndOfTheProgramDoesNotWaitForTheScript()
    {
        QFETCH(const bool, byKey);
        m_interpreter->setInputAvailable([] { return true; });
        ClosedWindow window;
        QAction exit;
        exit.setObjectName(u"fileExit"_s);
        connect(&exit, &QAction::triggered, &window, &QWidget::close);
        QList<int> closed;
        connect(m_interpreter.get(), &PythonInterpreter::runningChanged, this, [&](bool on) {
            if (!on)
                return;
            QTimer::singleShot(0, &window, [&] {
                for (int i = 0; i < 2; ++i) {
                    QShortcutEvent key(QKeySequence(u"Ctrl+Q"_s), 1);
                    byKey ? (void)QCoreApplication::sendEvent(&exit, &key) : (void)window.close();
                    closed += window.closed;
                }
            });
        });
        (void)shown({u"while True: pass"_s, u""_s});
        QCOMPARE(closed, (QList<int>{0, 1}));
        QCoreApplication::processEvents();
        QCOMPARE(window.closed, 1); // not again after the script
    }

    void threadsRunWhileThePromptWaits()
    {
        shown({u"import threading, time"_s, u"counted = [0]"_s, u"def count():"_s, u"  while counted[0] < 50:"_s,
               u"    counted[0] += 1; time.sleep(0)"_s, u""_s,
               u"thread = threading.Thread(target=count); thread.start()"_s});
        const auto hasThreads = [] {
            return PyThreadState_Next(PyInterpreterState_ThreadHead(PyInterpreterState_Get()));
        };
        QTRY_VERIFY(!hasThreads());
        QCOMPARE(shown({u"counted[0]"_s}), u"50\n>>> "_s);
    }

    void namespaceIsNotTheModuleMain()
    {
        QCOMPARE(shown({u"import __main__; __main__.__dict__ is globals()"_s}), u"False\n>>> "_s);
    }

    void startPrintsBannerAndPrompt()
    {
        m_interpreter->start(m_directory.filePath(u"missing.py"_s));
        QCOMPARE(m_shown, u"Varnel Command Line (Python %1 on %2)\n>>> "_s.arg(QString::fromUtf8(Py_GetVersion()),
                                                                               QString::fromUtf8(Py_GetPlatform())));
    }
    void startRunsTheStartupFile()
    {
        const QString path = write(u"begin.py"_s, "greeting = 'hello'\nprint(greeting)");
        m_interpreter->start(path);
        QVERIFY2(m_shown.endsWith(u")\nRunning file '%1'...\nhello\nOK\n>>> "_s.arg(path)), qPrintable(m_shown));
        QCOMPARE(shown({u"greeting"_s}), u"'hello'\n>>> "_s);
    }

    void filesRunInTheNamespaceOfTheConsole()
    {
        shown({u"number = 20"_s});
        m_shown.clear();
        const QString path = write(u"run.py"_s, "number += 1\nprint(__name__)\n5");
        QVERIFY(m_interpreter->runFile(path));
        QCOMPARE(m_shown, u"Running file '%1'...\n__main__\nOK\n"_s.arg(path));
        QCOMPARE(shown({u"number"_s}), u"21\n>>> "_s);
    }
    void fileWithNonAsciiNameRuns()
    {
        const QString path = write(u"Zähler %2 Ω.py"_s, "print('ä')");
        QVERIFY(m_interpreter->runFile(path));
        QCOMPARE(m_shown, u"Running file '"_s + path + u"'...\nä\nOK\n"_s);
    }
    void fileWithAnExceptionReturnsFalse()
    {
        const QString path = write(u"raises.py"_s, "print('a')\nraise ValueError('no')\n");
        QVERIFY(!m_interpreter->runFile(path));
        QCOMPARE(m_shown, u"Running file '%1'...\na\nTraceback (most recent call last):\n  File \"%1\", line 2, in "
                          "<module>\n    raise ValueError('no')\nValueError: no\n"_s.arg(path));
    }
    void fileThatDoesNotCompileReturnsFalse_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("lastLine");
        QTest::newRow("syntax") << "1 +\n"_ba << u"SyntaxError: invalid syntax\n"_s;
        QTest::newRow("Latin-1 without a coding line")
            << "print('\xe4')\n"_ba
            << u"SyntaxError: (unicode error) 'utf-8' codec can't decode byte 0xe4 in position 7: unexpected end of data\n"_s;
    }
    void fileThatDoesNotCompileReturnsFalse()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, lastLine);
        QVERIFY(!m_interpreter->runFile(write(u"bad.py"_s, content)));
        QVERIFY2(m_shown.endsWith(lastLine) || m_shown.contains(u"SyntaxError: Non-UTF-8 code"_s), qPrintable(m_shown));
    }
    void codingLineOfAFileIsUsed()
    {
        QVERIFY(m_interpreter->runFile(write(u"latin.py"_s, "# coding: latin-1\nprint('\xe4')\n")));
        QVERIFY2(m_shown.endsWith(u"ä\nOK\n"_s), qPrintable(m_shown));
    }
    void fileThatCannotBeOpenedReturnsTrue_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << m_directory.filePath(u"nowhere.py"_s);
        QTest::newRow("a directory") << m_directory.path();
        const QString pipe = m_directory.filePath(u"pipe.py"_s);
        QVERIFY(QFileInfo::exists(pipe) || ::mkfifo(QFile::encodeName(pipe).constData(), 0600) == 0);
        QTest::newRow("a pipe") << pipe;
    }
    void fileThatCannotBeOpenedReturnsTrue()
    {
        QFETCH(QString, path);
        QVERIFY(m_interpreter->runFile(path));
        QCOMPARE(m_shown, u"Startup file '%1' could not be opened.\n"_s.arg(path));
    }

    void threadsOfAScriptMayPrint()
    {
        QThread *receiver = nullptr;
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, this,
                [&] { receiver = QThread::currentThread(); });
        const QString path = write(u"thread.py"_s, "import threading\n"
                                                   "def work():\n"
                                                   "    for i in range(3): print('\\r', i, sep='')\n"
                                                   "thread = threading.Thread(target=work)\n"
                                                   "thread.start()\n"
                                                   "thread.join()\n");
        QVERIFY(m_interpreter->runFile(path));
        QTRY_COMPARE(m_shown.count(u'\r'), 3);
        QCOMPARE(receiver, thread());
        QVERIFY2(m_shown.contains(u"\r0\n"_s) && m_shown.contains(u"\r2\n"_s), qPrintable(m_shown));
    }

    void statementEnteredWhileAScriptProcessesEventsRunsNested()
    {
        // the script processes an event that enters the next line, like a key press
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, m_interpreter.get(), [this](const QString &text) {
            if (text == u"<html>pump</html>"_s) // rich text is shown at once
                m_interpreter->inputLine(u"print('inner')"_s);
        });
        QCOMPARE(shown({u"import sys"_s}), u">>> "_s);
        m_shown.clear();
        m_interpreter->inputLine(u"for i in range(1):"_s);
        m_interpreter->inputLine(u"\tprint('<html>pump</html>')"_s);
        m_interpreter->inputLine(u"\tprint('outer')"_s);
        QVERIFY(m_shown.endsWith(u"... "_s));
        m_interpreter->inputLine(QString());
        QVERIFY2(m_shown.endsWith(u"<html>pump</html>inner\n>>> \nouter\n>>> "_s), qPrintable(m_shown));
    }

    void nestedBlockContinuesTheCurrentStatement()
    {
        bool nested = false;
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, m_interpreter.get(), [&](const QString &text) {
            if (text == u"<html>1</html>"_s && !std::exchange(nested, true))
                m_interpreter->inputLine(u"if 1:"_s); // the script still runs
        });
        m_interpreter->inputLine(u"print('<html>1</html>'); print('outer goes on')"_s);
        QCOMPARE(m_shown, u"<html>1</html>... \nouter goes on\n... "_s);
        QCOMPARE(shown({u"\tprint('block')"_s, u""_s}), u"... block\n>>> "_s);
    }

    void interruptWithoutScriptIsPrintedAfterTheNextStatement()
    {
        m_interpreter->breakExecution();
        QCOMPARE(shown({u""_s, u"print('whole')"_s, u"1"_s}), u">>> whole\nKeyboardInterrupt\n>>> 1\n>>> "_s);
    }
    void interruptStopsAnEndlessLoopThatProcessesEvents()
    {
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, m_interpreter.get(), [this](const QString &text) {
            if (text.contains(u"step"_s))
                m_interpreter->breakExecution();
        });
        m_interpreter->inputLine(u"while True: print('<html>step</html>', end='')"_s);
        QVERIFY2(m_shown.endsWith(u"KeyboardInterrupt\n>>> "_s), qPrintable(m_shown));
        QCOMPARE(shown({u"1"_s}), u"1\n>>> "_s);
    }

    void scriptMayDeleteItsInterpreter_data()
    {
        QTest::addColumn<bool>("file");
        QTest::newRow("at the prompt") << false;
        QTest::newRow("in a file") << true;
    }
    void scriptMayDeleteItsInterpreter()
    {
        QFETCH(bool, file);
        connect(m_interpreter.get(), &PythonInterpreter::outputLine, this, [this](const QString &text) {
            if (text == u"<html>end</html>"_s)
                m_interpreter.reset();
        });
        const QString script = u"print('<html>end</html>'); leftover = 1"_s;
        if (file)
            QVERIFY(m_interpreter->runFile(write(u"end.py"_s, script.toUtf8())));
        else
            m_interpreter->inputLine(script);
        QVERIFY(!m_interpreter);
        QVERIFY2(m_shown.endsWith(u"<html>end</html>"_s), qPrintable(m_shown));
    }

    void installedDirectoryIsAppendedToTheModulePath_data()
    {
        QTest::addColumn<QString>("installed");
        QTest::newRow("plain") << u"/opt/varnel/python"_s;
        QTest::newRow("quote") << u"/opt/user's/python"_s;
        QTest::newRow("both quotes") << u"/opt/user's \"own\"/python"_s;
        QTest::newRow("backslash") << u"C:\\new\\python"_s;
        QTest::newRow("place marker") << u"/opt/%1/python"_s;
        QTest::newRow("any language") << u"/opt/Zähler Ω\U0001F40D"_s;
        QTest::newRow("line break") << u"/opt/a\nb"_s;
    }
    void installedDirectoryIsAppendedToTheModulePath()
    {
        QFETCH(QString, installed);
        create({installed, QString()});
        QCOMPARE(sysPathTail(1), installed);
    }
    void modulesOfTheUserReplaceInstalledOnes()
    {
        create({u"/installed"_s, u"/user"_s});
        QCOMPARE(sysPathTail(2), u"/user|/installed"_s);
    }

    void completesNamesOfTheConsole()
    {
        shown({u"wheel_count = 4"_s});
        QCOMPARE(m_interpreter->completions(u"wheel"_s), QStringList{u"wheel_count"_s});
    }

    void productScriptsRun_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("startup.py") << u"startup.py"_s;
        QTest::newRow("macros.py") << u"macros.py"_s;
    }
    void productScriptsRun()
    {
        QFETCH(QString, name);
        const QString path = QStringLiteral(VARNEL_SOURCE_DIR) + u"/python/"_s + name;
        QVERIFY(m_interpreter->runFile(path));
        QCOMPARE(m_shown, u"Running file '%1'...\nOK\n"_s.arg(path));
    }
    void examplesInProductScriptsCompile()
    {
        for (const QString &name : {u"startup.py"_s, u"macros.py"_s}) {
            QFile file(QStringLiteral(VARNEL_SOURCE_DIR) + u"/python/"_s + name);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QString text = QString::fromUtf8(file.readAll());
            text.replace(QRegularExpression(u"^# ?"_s, QRegularExpression::MultilineOption), QString());
            const PythonReference code(Py_CompileString(text.toUtf8().constData(), qPrintable(name), Py_file_input));
            if (!code)
                PyErr_Print();
            QVERIFY2(code, qPrintable(m_shown));
        }
    }

    void exitEndsTheProcess_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("code");
        QTest::newRow("sys.exit") << u"import sys; sys.exit(7)"_s << 7;
        QTest::newRow("SystemExit") << u"raise SystemExit"_s << 0;
        QTest::newRow("quit") << u"quit()"_s << 0;
        QTest::newRow("text") << u"raise SystemExit('no')"_s << 1;
    }
    void exitEndsTheProcess()
    {
        QFETCH(QString, line);
        QFETCH(int, code);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--line"_s, line});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), code);
        QCOMPARE(child.readAllStandardOutput(), "before\n");
    }

    void withoutPythonLinesDoNothing()
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {u"--without-python"_s});
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QVERIFY(child.readAllStandardError().contains("ASSERT: \"Py_IsInitialized()\" in "));
        QCOMPARE(child.readAllStandardOutput(), "Startup file 'x.py' could not be opened.\n>>> ");
    }
};

static int runInChild(const QString &line)
{
    if (!line.isNull() && !startPython())
        return 100;
    PythonInterpreter interpreter({});
    QObject::connect(&interpreter, &PythonInterpreter::outputLine, [](const QString &text) {
        fputs(qPrintable(text), stdout);
        fflush(stdout);
    });
    if (line.isNull()) {
        interpreter.runFile(u"x.py"_s);
        interpreter.inputLine(u"1"_s);
        return 0;
    }
    interpreter.sendOutput(u"before\n"_s);
    interpreter.inputLine(line);
    fputs("after\n", stdout);
    return 101;
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--line") == 0)
        return runInChild(QString::fromUtf8(argv[2]));
    if (argc == 2 && qstrcmp(argv[1], "--without-python") == 0)
        return runInChild(QString());
    TestPythonInterpreter test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pythoninterpreter.moc"

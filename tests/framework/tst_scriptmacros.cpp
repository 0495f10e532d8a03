#include "../objectmodel/pythonscope.h"
#include "popupmenu.h"
#include "windowfixture.h"
#include <QLabel>
#include <QMenuBar>
#include <QTextBlock>
#include <QToolBar>
#include <QToolButton>
using namespace Qt::StringLiterals;

/// Macros of scripts in the window of the program, and the commands for the file of macros.
class ScriptMacrosTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WindowFixture> m_fixture;
    std::unique_ptr<PythonScope> m_python;

    QString run(const QByteArray &script) { return m_python->run(script); }
    QString value(const QByteArray &expression) { return m_python->value(expression); }
    QString error(const QByteArray &script) { return m_python->error(script); }
    [[nodiscard]] MainWindow &window() const { return *m_fixture->window; }
    [[nodiscard]] PopupMenu *menu() const { return window().findChild<PopupMenu *>(u"toolMacroMenu"_s); }
    [[nodiscard]] QString items() const
    {
        QStringList texts;
        for (const QAction *action : menu()->actions())
            texts.append(action->text() + u':' + action->shortcut().toString() + u':' + action->whatsThis());
        return texts.join(u' ');
    }
    [[nodiscard]] QList<QToolButton *> buttons() const
    {
        QList<QToolButton *> buttons;
        const auto *bar = window().findChild<QToolBar *>(u"macroToolbar"_s);
        for (QAction *action : bar->actions())
            buttons.append(qobject_cast<QToolButton *>(bar->widgetForAction(action)));
        return buttons;
    }
    void start(const QByteArray &uiConfig)
    {
        m_fixture->installation.write(u"config/uiconfig.xml"_s, uiConfig);
        m_fixture->restart();
        m_python = std::make_unique<PythonScope>();
        QCOMPARE(run("from varnel import app\ncalls = []\ndef f(): calls.append('f')\ndef g(): calls.append('g')"),
                 QString());
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_fixture = std::make_unique<WindowFixture>();
        start("<ui><actions><action name='toolsMacroNew'><text>New</text></action>"
              "<action name='fileExit'><text>Exit</text></action>"
              "<action name='toolsOptions' accel='Ctrl+Alt+O'><text>Options</text></action></actions>"
              "<menus><menu name='toolsMenu' displayname='Tools'><action name='toolsOptions'/>"
              "<menu name='toolMacroMenu' displayname='Macros'/></menu></menus>"
              "<toolbars><toolbar name='macroToolbar' displayname='Macros'/></toolbars></ui>");
    }

    void cleanup()
    {
        m_python.reset();
        m_fixture.reset();
    }

    void scriptAddsAndRemovesMacros()
    {
        QCOMPARE(run("print(app.addMacro(f, 'x'))\n"
                     "app.addMacro(g, 'y', 'Does y', 'Ctrl+Alt+Y', 'appicon.png')\n"
                     "app.addMacro(g, 'x', '', '')"),
                 u"None\n"_s);
        QCOMPARE(items(), u"x:: y:Ctrl+Alt+Y:Does y x::"_s);
        QCOMPARE(buttons().size(), 3);
        QCOMPARE(buttons().first()->text(), u"x"_s);
        QVERIFY(!buttons()[1]->icon().isNull());
        QTest::mouseClick(buttons().first(), Qt::LeftButton);
        QTest::mouseClick(buttons().last(), Qt::LeftButton);
        menu()->actions().first()->trigger();
        QCOMPARE(value("calls"), u"['f', 'g', 'f']"_s);
        run("app.clearMacro('x')");
        QCOMPARE(items(), u"y:Ctrl+Alt+Y:Does y"_s);
        run("app.clearMacro('unknown'); app.clearMacro(f); app.clearMacro(g)");
        QCOMPARE(items(), QString());
        run("app.addMacro(f, 'x'); app.addMacro(f, 'y'); app.clearMacros(); app.clearMacros()");
        QCOMPARE(items(), QString());
        QVERIFY(buttons().isEmpty());
    }

    void argumentsBehindANameAreNotLookedAt()
    {
        QCOMPARE(run("app.addMacro(f, 'x'); app.clearMacro('x', 5, None)"), QString());
        QCOMPARE(items(), QString());
        QCOMPARE(run("app.addMacro(f, 'x')"), QString());
        QVERIFY(error("app.clearMacro(f, 'x')").startsWith(u"TypeError: "_s));
        QCOMPARE(items(), u"x::"_s);
        QCOMPARE(run("class S(str): pass\napp.clearMacro(S('x'))"), QString());
        QCOMPARE(items(), QString());
    }

    void onlyFunctionsAreMacros()
    {
        for (const char *other :
             {"len", "None", "5", "'f'", "print", "calls.clear", "type('C', (), {'__call__': f})()"})
            QVERIFY2(error("app.addMacro("_ba + other + ", 'x')").startsWith(u"TypeError: "_s), other);
        for (const char *call :
             {"app.addMacro(f)", "app.addMacro()", "app.addMacro(f, 5)", "app.addMacro(f, 'x', None)",
              "app.addMacro(f, 'x', '', '', '', '')", "app.clearMacro()", "app.clearMacro(5)", "app.clearMacro(len)",
              "app.clearMacros('x')", "app.addMacro(f, name='x')"})
            QVERIFY2(error(call).startsWith(u"TypeError: "_s), call);
        QCOMPARE(items(), QString());
        run("app.addMacro(lambda: calls.append(1), 'x')");
        menu()->actions().first()->trigger();
        QCOMPARE(value("calls"), u"[1]"_s);
    }

    void missingIconWarnsAndLeavesAnEmptyButton()
    {
        QTest::ignoreMessage(QtWarningMsg, "IDEApplication::loadPixmap: cannot find pixmap (missing.png)");
        run("app.addMacro(f, 'x', '', '', 'missing.png')");
        QCOMPARE(buttons().size(), 1);
        QVERIFY(buttons().first()->icon().isNull());
    }

    void keyThatIsTakenStaysWithItsAction()
    {
        const QString warning = run("app.addMacro(f, 'x', '', 'Ctrl+Alt+O')");
        QVERIFY2(warning.contains(u"UserWarning: The shortcut Ctrl+Alt+O of the macro 'x' is in use"_s),
                 qPrintable(warning));
        QCOMPARE(items(), u"x::"_s);
        run("app.addMacro(f, 'y', '', 'Ctrl+Alt+P')");
        run("app.clearMacro('y'); app.addMacro(f, 'z', '', 'Ctrl+Alt+P')"); // the key is free again at once
        QCOMPARE(items(), u"x:: z:Ctrl+Alt+P:"_s);
        QCOMPARE(error("import warnings; warnings.simplefilter('error')\napp.addMacro(f, 'w', '', 'Ctrl+Alt+O')"),
                 u"UserWarning: The shortcut Ctrl+Alt+O of the macro 'w' is in use"_s);
        run("warnings.resetwarnings()");
        QCOMPARE(items(), u"x:: z:Ctrl+Alt+P:"_s);
    }

    void errorInAMacroLeavesTheMenuUsable()
    {
        run("def bad(): raise ValueError('bad')\napp.addMacro(bad, 'bad')\napp.addMacro(f, 'x')");
        menu()->actions().first()->trigger();
        QVERIFY(m_python->shown().endsWith(u"ValueError: bad\n"_s));
        menu()->actions().last()->trigger();
        QCOMPARE(value("calls"), u"['f']"_s);
    }

    void failedSaveInAMacroIsReportedAfterIt()
    {
        m_fixture->writeProject(u"one.vnp"_s);
        QVERIFY(m_fixture->window->openWorkspace(m_fixture->writeWorkspace(u"one.vnw"_s, {u"one.vnp"_s}), false));
        QVERIFY(QFile::remove(m_fixture->path(u"one.vnp"_s)));
        QVERIFY(QDir().mkdir(m_fixture->path(u"one.vnp"_s)));
        run("def save():\n    app.projects[0].save()\n    print('on')\napp.addMacro(save, 'x')");
        menu()->actions().first()->trigger();
        QCOMPARE(m_python->shown(), u"on\nOSError: Could not save project\n"_s);
    }

    void macroMayCloseTheProgram()
    {
        run("app.addMacro(lambda: (app.doAction('fileExit'), calls.append('end')), 'x')");
        QTest::mouseClick(buttons().first(), Qt::LeftButton);
        QVERIFY(!window().isVisible());
        QCOMPARE(value("calls"), u"['end']"_s);
    }

    void startUpScriptMayAddMacros()
    {
        m_fixture->installation.write(u"python/startup.py"_s, "from varnel import app\n"
                                                              "def m(): pass\n"
                                                              "app.addMacro(m, 'From the start')\n");
        m_fixture->restart();
        QCOMPARE(items(), u"From the start::"_s);
    }

    void macrosAreNeitherLoadedNorSaved()
    {
        m_fixture->installation.write(u"python/macros.py"_s,
                                      "from varnel import app\napp.addMacro(lambda: 0, 'file')\n");
        run("app.addMacro(f, 'x')");
        m_fixture->restart();
        QCOMPARE(items(), QString());
    }

    void menuAndToolBarMayBeMissing()
    {
        start("<ui/>");
        QCOMPARE(run("app.addMacro(f, 'x', 'd', 'Ctrl+Alt+X', 'appicon.png')\napp.clearMacro('x')\napp.clearMacros()"),
                 QString());
    }

    void windowDoesNotReleaseFunctions()
    {
        run("app.addMacro(f, 'x')");
        const PythonReference function = m_python->get("f");
        const Py_ssize_t before = Py_REFCNT(function.get());
        m_fixture->restart();
        QCOMPARE(Py_REFCNT(function.get()), before);
    }

    // The file of macros

    void newMacroIsAppendedToTheFile()
    {
        m_fixture->installation.write(u"python/macros.py"_s, "# mine\n");
        window().toolsMacroNew();
        QCOMPARE(m_fixture->document()->filename(), m_fixture->installation.path(u"python/macros.py"_s));
        const auto expected = u"# mine\n\nfrom varnel import app\n\n\ndef macro1():\n    pass\n\n\n"
                              "app.addMacro(macro1, \"Macro 1\")\n"_s;
        QCOMPARE(m_fixture->text(), expected);
        QVERIFY(m_fixture->document()->modified());
        m_fixture->view()->selectAll();
        window().viewManager()->activateView(m_fixture->view(), true);
        window().toolsMacroNew();
        QCOMPARE(m_fixture->text(),
                 expected + u"\n\ndef macro2():\n    pass\n\n\napp.addMacro(macro2, \"Macro 2\")\n"_s);
        QCOMPARE(m_fixture->view()->textDocument()->text()->findBlockByNumber(13).text(), u"    pass"_s);
        QVERIFY(window().findChild<QLabel *>(u"cursorLabel"_s)->property("text").toString().startsWith(u" Ln 14,"_s));
    }

    void newMacroRunsWhenTheFileIsImported()
    {
        m_fixture->installation.write(u"python/macros.py"_s, "");
        window().toolsMacroNew();
        QVERIFY(m_fixture->document()->save());
        QCOMPARE(run("import sys; sys.modules.pop('macros', None); import macros"), QString());
        QCOMPARE(items(), u"Macro 1::"_s);
        menu()->actions().first()->trigger();
        QCOMPARE(m_python->shown(), QString());
    }

    void newMacroWithoutAFileWarns()
    {
        QTest::ignoreMessage(QtWarningMsg, "Slot not implemented: toolsMacroNew");
        window().toolsMacroNew();
        m_fixture->installation.write(u"python/macros.py/a"_s, "");
        QTest::ignoreMessage(QtWarningMsg, "Slot not implemented: toolsMacroNew");
        window().toolsMacroNew();
    }

    void editOpensTheInstalledFile()
    {
        m_fixture->installation.write(u"python/macros.py"_s, "# installed\n");
        window().toolsMacroEdit();
        QCOMPARE(m_fixture->text(), u"# installed\n"_s);
    }
};

int main(int argc, char **argv)
{
    ScriptMacrosTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptmacros.moc"

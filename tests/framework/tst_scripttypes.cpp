#include "scriptfixture.h"
#include <QTest>
#include <QTranslator>
using namespace Qt::StringLiterals;

/// The types, constants and documentation of the module, compared with the tables in tests/objectmodel/data and with
/// the stub file for editors.
class ScriptTypesTest : public QObject
{
    Q_OBJECT

    static constexpr const char *Load =
        "import importlib.util\n"
        "def load(name):\n"
        "    spec = importlib.util.spec_from_file_location(name, directory + name + '.py')\n"
        "    module = importlib.util.module_from_spec(spec)\n"
        "    spec.loader.exec_module(module)\n"
        "    return module\n"
        "sys.dont_write_bytecode = True\n";
    static QByteArray directory() { return "directory = '" VARNEL_SOURCE_DIR "/tests/objectmodel/data/'\n"; }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void typesAreThoseOfTheTable()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.openFile(u"a.txt"_s);
        QCOMPARE(f.run(directory() + Load
                       + "for difference in load('checktypes').check(directory + 'scripttypes.tsv'):\n"
                         "    print(difference)\n"),
                 QString());
    }

    void textsOfScriptsAreTranslated()
    {
        class German : public QTranslator
        {
        public:
            [[nodiscard]] bool isEmpty() const override { return false; }
            [[nodiscard]] QString translate(const char *context, const char *text, const char *, int) const override
            {
                const bool isKnown = qstrcmp(context, "Scripts") == 0 && qstrcmp(text, "Gr\u00f6\u00dfe {}") == 0;
                return isKnown ? u"\u00c4 {}"_s : QString();
            }
        };
        ScriptFixture f;
        German german;
        QCoreApplication::installTranslator(&german);
        QCOMPARE(f.run("from varneltexts import tr\n"
                       "print(tr('Gr\u00f6\u00dfe {}').format(5), tr('other'), repr(tr('')))\n"),
                 u"\u00c4 5 other ''\n"_s);
        QCoreApplication::removeTranslator(&german);
    }

    void stubFileDescribesTheTypes()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.openFile(u"a.txt"_s);
        QCOMPARE(f.run(directory() + Load
                       + "folder = '" VARNEL_SOURCE_DIR "/python'\n"
                         "for difference in load('checkstub').check(folder, directory + 'scripttypes.tsv', load):\n"
                         "    print(difference)\n"),
                 QString());
    }

    void constants_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("values");
        QTest::newRow("buttons") << u"mb"_s
                                 << u"mbNone=0 mbOk=1 mbCancel=2 mbYes=3 mbNo=4 mbAbort=5 mbRetry=6 mbIgnore=7"_s;
        QTest::newRow("cursor movements")
            << u"mc"_s
            << u"mcBackward=0 mcForward=1 mcWordBackward=2 mcWordForward=3 mcUp=4 mcDown=5 mcLineStart=6 mcLineEnd=7 mcHome=8 mcEnd=9"_s;
    }
    void constants()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, values);
        ScriptFixture f;
        const QByteArray script =
            "print(*(f'{n}={v}' for n, v in vars(varnel).items() if n.startswith('" + prefix.toUtf8() + "')))";
        QCOMPARE(f.run(script), values + u'\n');
    }

    void objectsCannotBeCreatedOrCopied_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("result");
        QTest::newRow("call") << u"varnel.App()"_s << u"TypeError: cannot create 'App' instances"_s;
        QTest::newRow("type named unlike its place")
            << u"varnel.TextDocument()"_s << u"TypeError: cannot create 'Document' instances"_s;
        QTest::newRow("allocation") << u"varnel.App.__new__(varnel.App)"_s << u"TypeError"_s;
        QTest::newRow("allocation by the base") << u"varnel.App.__mro__[1].__new__(varnel.App)"_s << u"TypeError"_s;
        QTest::newRow("object's allocation") << u"object.__new__(varnel.App)"_s << u"TypeError"_s;
        QTest::newRow("copy") << u"__import__('copy').copy(app)"_s << u"TypeError"_s;
        QTest::newRow("initialisation of a live object") << u"app.__init__()"_s << u"TypeError"_s;
        QTest::newRow("method of another type") << u"varnel.App.doAction(app.editor, 'x')"_s << u"TypeError"_s;
        QTest::newRow("method without object") << u"varnel.App.doAction()"_s << u"TypeError"_s;
        QTest::newRow("argument by name") << u"app.doAction(name='x')"_s << u"TypeError"_s;
        QTest::newRow("optional argument by name") << u"app.processEvents(time=0)"_s << u"TypeError"_s;
        QTest::newRow("null character") << u"app.doAction('a\\0b')"_s << u"ValueError: embedded null character"_s;
        QTest::newRow("new attribute") << u"app.mine = 1"_s << u"AttributeError"_s;
        QTest::newRow("attribute without setter") << u"app.state = 1"_s << u"AttributeError"_s;
    }
    void objectsCannotBeCreatedOrCopied()
    {
        QFETCH(QString, code);
        QFETCH(QString, result);
        ScriptFixture f;
        const QString actual = f.attempt(code);
        QCOMPARE(result.contains(u':') ? actual : actual.section(u':', 0, 0), result);
        QCOMPARE(f.attempt(u"app.state"_s), u"0"_s);
    }

    void moduleIsImportedByName()
    {
        ScriptFixture f;
        QCOMPARE(f.attempt(u"__import__('varnel').app is app and sys.modules['varnel'] is varnel"_s), u"True"_s);
        QCOMPARE(f.attempt(u"app"_s).section(u" at "_s, 0, 0), u"<varnel.App object"_s);
    }

    void textsOfAllCharactersSurvive()
    {
        ScriptFixture f;
        for (const char *text : {"'\\xe4\\u20ac\\U0001f600'", "'\\ud800x'", "'a\\nb\\t'"})
            QCOMPARE(f.run(QByteArray("app.outputWindow[") + text + "] = " + text + "\nprint(app.outputWindow[" + text
                           + "] == " + text + ")"),
                     u"True\n"_s);
    }

    void nextWindowHasAnAppOfItsOwn()
    {
        ScriptFixture f;
        f.run("first, kept = app, (app.editor, app.outputWindow)");
        f.run("del varnel.app, varnel.mbOk, sys.modules['varnel']");
        f.restart();
        QCOMPARE(f.attempt(u"sys.modules['varnel'] is varnel and varnel.mbOk"_s), u"1"_s);
        QCOMPARE(f.attempt(u"varnel.app is first"_s), u"False"_s);
        QCOMPARE(f.attempt(u"varnel.app.state"_s), u"0"_s);
        for (const QString &code :
             {u"first.state"_s, u"first.projects"_s, u"first.doAction('x')"_s, u"first.closeWorkspace()"_s,
              u"first.onWorkspaceLoaded"_s, u"first.onWorkspaceLoaded = print"_s, u"first.messageBox('a', 'b', 1)"_s,
              u"kept[0].documents"_s, u"kept[1].show()"_s, u"kept[1]['a']"_s})
            QCOMPARE(f.attempt(code), u"RuntimeError: Object has been destroyed"_s);
    }

    void lookupsDoNotAddReferences()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.openFile(u"a.txt"_s);
        QCOMPARE(f.run(R"py(
def touch():
    app.state, app.editor.documents, app.editor.currentDocument.path, app.outputWindow
    app.projects[0].folders[0].files[0].name
    app.projects[0].files[0].properties.propertyKeys('Debug')
    [project.name for project in app.projects]
    app.projects['sample'].configurations, app.currentProject
    app.onWorkspaceLoaded = print
    app.onWorkspaceLoaded = app.onWorkspaceLoaded
    app.outputWindow['a'] = 'b'
    app.outputWindow['a']
    attempt("app.projects[9]"), attempt("app.doAction(1)"), attempt("app.outputWindow['x']")
watched = [None, app, print, app.projects, app.projects[0], varnel.Project, varnel.TextDocument, 'a']
def counts():
    gc.collect()
    return [sys.getrefcount(each) for each in watched]
for i in range(10): touch()
before, objects = counts(), len(gc.get_objects())
for i in range(10000): touch()
growth = [now - then for now, then in zip(counts(), before)]
print([value for value in growth if abs(value) > 5], abs(len(gc.get_objects()) - objects) < 50)
)py"),
                 u"[] True\n"_s);
    }

    void completionOfTheConsoleListsTheMembers()
    {
        ScriptFixture f;
        QCOMPARE(f.attempt(u"[name for name in dir(app) if name.startswith('open')]"_s),
                 u"['openFileDialog', 'openWorkspace']"_s);
    }
};

QTEST_APPLESS_MAIN(ScriptTypesTest)
#include "tst_scripttypes.moc"

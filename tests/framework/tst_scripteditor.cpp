#include "fakeservices.h"
#include "objectmodel.h"
#include "scriptfixture.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QTest>
using namespace Qt::StringLiterals;

namespace {
/// A window without kinds of documents.
class NoKinds : public FakeServices
{
public:
    Workspace *workspace() const override { return m_workspace.get(); }

private:
    std::unique_ptr<Workspace> m_workspace = std::make_unique<Workspace>();
};
} // namespace

/// The script objects of the editor and its documents.
class ScriptEditorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void withoutDocuments()
    {
        ScriptFixture f;
        QCOMPARE(f.attempt(u"app.editor.documents"_s), u"[]"_s);
        QCOMPARE(f.attempt(u"app.editor.currentDocument"_s), u"None"_s);
        QCOMPARE(f.attempt(u"app.editor.saveAll()"_s), u"None"_s);
        QCOMPARE(f.attempt(u"app.editor is app.editor"_s), u"False"_s);
    }

    void opensDocuments()
    {
        ScriptFixture f;
        f.write(u"a.txt"_s, "a");
        QCOMPARE(f.run("app.editor.openDocument(" + f.quoted(u"a.txt"_s) + ")"), QString());
        QCOMPARE(f.openFiles(), QStringList{u"a.txt"_s});
        f.openFile(u"b.txt"_s);
        QCOMPARE(f.run("app.editor.openDocument(" + f.quoted(u"a.txt"_s)
                       + ")\n"
                         "print([d.title for d in app.editor.documents], app.editor.currentDocument.title)"),
                 u"['a.txt', 'b.txt'] a.txt\n"_s);
    }

    void failedOpenIsAnError()
    {
        ScriptFixture f;
        QCOMPARE(f.attempt(u"app.editor.openDocument('')"_s), u"OSError: Error opening document ''."_s);
        f.answers->press(QMessageBox::No);
        const QString path = f.path(u"a.txt"_s);
        QCOMPARE(f.attempt(u"app.editor.openDocument('%1')"_s.arg(path)),
                 u"OSError: Error opening document '%1'."_s.arg(path));
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.openFiles(), QStringList());
    }

    void fileThatDoesNotExistIsCreatedIfTheUserAgrees()
    {
        ScriptFixture f;
        f.answers->press(QMessageBox::Yes);
        QCOMPARE(f.run("app.editor.openDocument(" + f.quoted(u"a.txt"_s) + ")"), QString());
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.openFiles().size(), 1);
    }

    void relativePathBelongsToTheCurrentProject()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.write(u"a.txt"_s, "a");
        QCOMPARE(f.attempt(u"app.editor.openDocument('a.txt')"_s), u"None"_s);
        QCOMPARE(f.document()->filename(), f.path(u"a.txt"_s));
    }

    void newDocuments()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.run("app.editor.newDocument(" + f.quoted(u"n.txt"_s) + ")"), QString());
        QCOMPARE(f.openFiles(), QStringList{u"n.txt *"_s});
        QVERIFY(!QFileInfo::exists(f.path(u"n.txt"_s)));
        QCOMPARE(f.run("app.editor.newDocument(" + f.quoted(u"n.c"_s)
                       + ", 1)\n"
                         "print([file.path for file in app.projects[0].folders[0].files])"),
                 u"['main.c', 'n.c']\n"_s);
    }

    void newDocumentDoesNotReplaceAFile()
    {
        ScriptFixture f;
        f.write(u"keep.txt"_s, "important");
        const QString error = u"OSError: Document '%1' could not be created."_s;
        const QString path = f.path(u"keep.txt"_s);
        QCOMPARE(f.attempt(u"app.editor.newDocument('%1')"_s.arg(path)), error.arg(path));
        QCOMPARE(f.openFiles(), QStringList());
        QCOMPARE(f.attempt(u"app.editor.newDocument('%1')"_s.arg(f.path(u"n.txt"_s))), u"None"_s);
        QCOMPARE(f.attempt(u"app.editor.newDocument('%1')"_s.arg(f.path(u"n.txt"_s))), error.arg(f.path(u"n.txt"_s)));
        QCOMPARE(f.openFiles(), QStringList{u"n.txt *"_s});
        QCOMPARE(f.read(u"keep.txt"_s), "important"_ba);
    }

    void relativeNewDocumentBelongsToTheCurrentProject()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.attempt(u"app.editor.newDocument('lib/../q.c', 1)"_s), u"None"_s);
        QCOMPARE(f.document()->filename(), f.path(u"q.c"_s));
        QCOMPARE(f.attempt(u"app.editor.currentDocument.save()"_s), u"None"_s);
        QVERIFY(QFileInfo::exists(f.path(u"q.c"_s)));
        QCOMPARE(f.attempt(u"[file.path for file in app.projects[0].folders[0].files]"_s), u"['main.c', 'q.c']"_s);
        f.write(u"old.c"_s, "old");
        QCOMPARE(f.attempt(u"app.editor.newDocument('old.c')"_s), u"OSError: Document 'old.c' could not be created."_s);
    }

    void relativeNewDocumentWithoutAProjectBelongsToTheWorkingDirectory()
    {
        ScriptFixture f;
        QCOMPARE(f.attempt(u"app.editor.newDocument('no_such_file.txt')"_s), u"None"_s);
        QCOMPARE(f.document()->filename(), QDir::current().absoluteFilePath(u"no_such_file.txt"_s));
    }

    void newDocumentOfAnUnknownKindIsAnError()
    {
        Activity activity;
        NoKinds host;
        ObjectModel model(activity, host);
        QVERIFY(model.startScripting());
        const PythonReference globals(PyDict_New());
        const PythonReference result(PyRun_String("import varnel\n"
                                                  "try: varnel.app.editor.newDocument('a.txt', 1)\n"
                                                  "except ValueError as error: text = str(error)",
                                                  Py_file_input, globals.get(), globals.get()));
        QVERIFY(result);
        QCOMPARE(QString::fromUtf8(PyUnicode_AsUTF8(PyDict_GetItemString(globals.get(), "text"))),
                 u"No document template for 'a.txt' could not be found."_s);
    }

    void documentThatCannotBeCreatedIsAnError()
    {
        ScriptFixture f;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"false\""_s));
        const QString result = f.attempt(u"app.editor.newDocument('disassembler:x')"_s);
        QCOMPARE(result, u"OSError: Document 'disassembler:x' could not be created."_s);
    }

    void attributes()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument");
        QCOMPARE(f.attempt(u"d.path == %1"_s.arg(QString::fromUtf8(f.quoted(u"a.txt"_s)))), u"True"_s);
        QCOMPARE(f.attempt(u"d.title, d.isModified, d.selectedText"_s), u"('a.txt', 0, '')"_s);
        f.run("d.insert('ä€'); d.moveCursor(mcLineStart, 1)");
        QCOMPARE(f.attempt(u"d.isModified, d.selectedText"_s), u"(1, 'ä€')"_s);
    }

    void editing_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("selected");
        QTest::newRow("insert") << u"d.insert('x')"_s << u"xone\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("insert replaces nothing at the start") << u"d.insert('')"_s << u"one\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("to the end") << u"d.moveCursor(mcEnd, 1)"_s << u"one\ntwo\nthree\n"_s << u"one\ntwo\nthree\n"_s;
        QTest::newRow("to the end of the line")
            << u"d.moveCursor(mcForward); d.moveCursor(mcLineEnd, 1)"_s << u"one\ntwo\nthree\n"_s << u"ne"_s;
        QTest::newRow("unknown movement")
            << u"d.moveCursor(10, 1); d.moveCursor(-1, 1); d.moveCursor(2**40)"_s << u"one\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("go to a line") << u"d.gotoLine(2); d.insert('x')"_s << u"one\nxtwo\nthree\n"_s << u""_s;
        QTest::newRow("select all") << u"d.selectAll()"_s << u"one\ntwo\nthree\n"_s << u"one\ntwo\nthree\n"_s;
        QTest::newRow("cut and paste") << u"d.selectAll(); d.cut(); d.insert('['); d.paste()"_s
                                       << u"[one\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("copy") << u"d.moveCursor(mcLineEnd, 1); d.copy(); d.moveCursor(mcHome); d.paste()"_s
                              << u"oneone\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("undo") << u"d.insert('x'); d.undo()"_s << u"one\ntwo\nthree\n"_s << u""_s;
        QTest::newRow("redo") << u"d.insert('x'); d.undo(); d.redo()"_s << u"xone\ntwo\nthree\n"_s << u""_s;
    }
    void editing()
    {
        QFETCH(QString, code);
        QFETCH(QString, selected);
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        QCOMPARE(f.run("d = app.editor.currentDocument\n" + code.toUtf8()), QString());
        QTEST(f.text(), "text");
        if (!selected.isEmpty())
            QCOMPARE(f.attempt(u"d.selectedText"_s), u'\'' + selected.replace(u'\n', u"\\n"_s) + u'\'');
    }

    /// Whatever document they are called on.
    void editMethodsActOnTheViewInFront()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.openFile(u"b.txt"_s);
        f.run("a, b = app.editor.documents; a.insert('x')");
        QCOMPARE(f.text(), u"xone\ntwo\nthree\n"_s);
        QCOMPARE(f.document()->title(), u"b.txt"_s);
        QCOMPARE(f.attempt(u"a.isModified, b.isModified"_s), u"(0, 1)"_s);
        f.run("a.activate()");
        QCOMPARE(f.document()->title(), u"a.txt"_s);
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void saves()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument; d.insert('x'); d.save()");
        QCOMPARE(f.read(u"a.txt"_s), "xone\ntwo\nthree\n"_ba);
        QCOMPARE(f.run("d.saveAs(" + f.quoted(u"c.txt"_s) + "); print(d.title, d.isModified)"), u"c.txt 0\n"_s);
        QCOMPARE(f.read(u"c.txt"_s), "xone\ntwo\nthree\n"_ba);
    }

    void relativeNameToSaveAsBelongsToTheCurrentProject()
    {
        ScriptFixture f;
        f.openWorkspace();
        QVERIFY(QDir().mkdir(f.path(u"lib"_s)));
        f.openFile(u"a.txt"_s);
        QCOMPARE(f.attempt(u"app.editor.currentDocument.saveAs('lib/../rel.c')"_s), u"None"_s);
        QCOMPARE(f.document()->filename(), f.path(u"rel.c"_s));
        QCOMPARE(f.read(u"rel.c"_s), "one\ntwo\nthree\n"_ba);
        QCOMPARE(f.attempt(u"app.editor.currentDocument.path"_s), u"'"_s + f.path(u"rel.c"_s) + u"'"_s);
    }

    void saveAsOnAnOpenFileIsAnError_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("exists");
        QTest::newRow("its name") << u"b.txt"_s << true;
        QTest::newRow("through a link") << u"link/b.txt"_s << true;
        QTest::newRow("not saved yet") << u"b.txt"_s << false;
        QTest::newRow("not saved yet, through a link") << u"link/b.txt"_s << false;
    }
    void saveAsOnAnOpenFileIsAnError()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, exists);
        ScriptFixture f;
        QVERIFY(QFile::link(QFileInfo(f.path(u"b.txt"_s)).path(), f.path(u"link"_s)));
        if (exists)
            f.openFile(u"b.txt"_s);
        else
            f.run("app.editor.newDocument(" + f.quoted(u"b.txt"_s) + ")");
        f.run("app.editor.currentDocument.insert('mine ')");
        f.openFile(u"a.txt"_s);
        const QByteArray before = f.read(u"b.txt"_s);
        QCOMPARE(f.attempt(u"app.editor.currentDocument.saveAs('%1')"_s.arg(f.path(name))),
                 u"OSError: Could not save file '%1'."_s.arg(f.path(name)));
        QCOMPARE(f.read(u"b.txt"_s), before);
        QCOMPARE(f.document()->filename(), f.path(u"a.txt"_s));
        QCOMPARE(f.openFiles(), (QStringList{u"b.txt *"_s, u"a.txt"_s}));
    }

    void failedSaveIsAnError()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument; d.insert('x')");
        QVERIFY(QFile::remove(f.path(u"a.txt"_s)));
        QVERIFY(QDir().mkdir(f.path(u"a.txt"_s)));
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(f.attempt(u"d.save()"_s), u"OSError: Could not save file '%1'."_s.arg(f.path(u"a.txt"_s)));
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(f.attempt(u"d.saveAs('/nowhere/b.txt')"_s), u"OSError: Could not save file '/nowhere/b.txt'."_s);
    }

    void saveAllSavesModifiedDocuments()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.openFile(u"b.txt"_s);
        f.run("app.editor.currentDocument.insert('x')");
        QVERIFY(QFile::remove(f.path(u"a.txt"_s)));
        QCOMPARE(f.attempt(u"app.editor.saveAll()"_s), u"None"_s);
        QCOMPARE(f.read(u"b.txt"_s), "xone\ntwo\nthree\n"_ba);
        QVERIFY(!QFileInfo::exists(f.path(u"a.txt"_s)));
        QCOMPARE(f.attempt(u"app.editor.saveAll(0)"_s), u"None"_s);
        QVERIFY(QFileInfo::exists(f.path(u"a.txt"_s)));
    }

    void newerFileIsNotOverwrittenWithoutQuestion_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::newRow("one document") << u"d.save()"_s;
        QTest::newRow("one document under its own name") << u"d.saveAs(d.path)"_s;
        QTest::newRow("all documents") << u"app.editor.saveAll()"_s;
    }
    void newerFileIsNotOverwrittenWithoutQuestion()
    {
        QFETCH(const QString, statement);
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument; d.insert('x')");
        f.changeOutside(u"a.txt"_s, "other");
        f.answers->press(QMessageBox::Cancel);
        QCOMPARE(f.attempt(statement), u"OSError: Could not save file '%1'."_s.arg(f.path(u"a.txt"_s)));
        QVERIFY(f.answers->shown.value(0).startsWith(u"A newer version of this file exists on disk:"_s));
        QCOMPARE(f.read(u"a.txt"_s), "other"_ba);
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(f.attempt(statement), u"None"_s);
        QCOMPARE(f.read(u"a.txt"_s), "xone\ntwo\nthree\n"_ba);
        QVERIFY(f.answers->allGiven());
    }

    void newerFileThatIsNotSavedShowsNoQuestion()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.changeOutside(u"a.txt"_s, "other");
        QCOMPARE(f.attempt(u"app.editor.saveAll()"_s), u"None"_s);
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.read(u"a.txt"_s), "other"_ba);
    }

    void closedDocumentIsDestroyed()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument");
        f.window->viewManager()->closeAll();
        f.openFile(u"b.txt"_s);
        for (const char *code :
             {"d.title", "d.path", "d.isModified", "d.selectedText", "d.activate()", "d.save()", "d.saveAs('x')",
              "d.undo()", "d.insert('x')", "d.gotoLine(1)", "d.moveCursor(1)", "d.selectAll()"})
            QCOMPARE(f.attempt(QString::fromLatin1(code)), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void helpPageIsNoTextDocument()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument");
        f.window->openHelp(f.write(u"page.html"_s, "<p>help</p>"));
        QCOMPARE(f.attempt(u"app.editor.currentDocument"_s), u"None"_s);
        QCOMPARE(f.attempt(u"[d.title for d in app.editor.documents]"_s), u"['a.txt']"_s);
        QCOMPARE(f.run("d.insert('x'); d.moveCursor(mcEnd); d.gotoLine(3); d.undo(); d.cut()"), QString());
        f.run("d.activate()");
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void documentMayCloseWhileItsMessageIsShown()
    {
        ScriptFixture f;
        f.openFile(u"a.txt"_s);
        f.run("d = app.editor.currentDocument");
        QVERIFY(QFile::remove(f.path(u"a.txt"_s)));
        QVERIFY(QDir().mkdir(f.path(u"a.txt"_s)));
        f.answers->meet([&f](QDialog *dialog) {
            f.window->viewManager()->closeAll();
            dialog->reject();
        });
        QCOMPARE(f.attempt(u"d.save()"_s), u"OSError: Could not save file '%1'."_s.arg(f.path(u"a.txt"_s)));
    }
};

QTEST_APPLESS_MAIN(ScriptEditorTest)
#include "tst_scripteditor.moc"

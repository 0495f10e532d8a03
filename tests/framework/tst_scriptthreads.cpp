#include "processorscriptfixture.h"

// Scripts may start threads, but only their main thread can use the program.

using namespace Qt::StringLiterals;

class ScriptThreadsTest : public QObject
{
    Q_OBJECT

private:
    /// What `threaded(code)` answers: the value or the exception of an expression that another thread evaluates.
    static constexpr auto Threaded = R"py(
import threading
def threaded(code):
    found = []
    def work():
        try: found.append(repr(eval(code, globals())))
        except Exception as error: found.append(type(error).__name__ + ': ' + str(error))
    thread = threading.Thread(target=work)
    thread.start()
    thread.join()
    return found[0]
editor, output, project, processors = app.editor, app.outputWindow, app.projects[0], debugger.processors
properties, file, registers, peripherals = project.properties, project.files[0], p.registers, p.peripherals
uart, iterator, projects = peripherals['UART'], iter(app.projects), app.projects
editor.newDocument('new.txt')
document = editor.currentDocument
button = app.createUI('QPushButton', 'button')
click = button.click
clicks = []
button.onClicked = clicks.append
from varnelreplay import replay
)py";

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void threadCannotUseTheProgram_data()
    {
        QTest::addColumn<QByteArray>("code");
        for (const char *code : {"app.state",
                                 "app.processEvents()",
                                 "app.processEvents(10)",
                                 "app.doAction('x')",
                                 "app.projects",
                                 "app.currentProject",
                                 "setattr(app, 'currentProject', project)",
                                 "app.editor",
                                 "app.onWorkspaceLoaded",
                                 "app.messageBox('a', 'b', 1)",
                                 "app.closeWorkspace()",
                                 "app.createUI('QLabel')",
                                 "app.createTimer()",
                                 "app.loadUI('x.ui')",
                                 "app.dockUI(button)",
                                 "app.addMacro(threaded, 'x')",
                                 "app.clearMacros()",
                                 "len(projects)",
                                 "projects[0]",
                                 "projects['fw']",
                                 "next(iterator)",
                                 "list(processors)",
                                 "project.name",
                                 "project.files",
                                 "project.save()",
                                 "project.build()",
                                 "properties.setProperty('a', 'b', 'Debug')",
                                 "file.path",
                                 "editor.documents",
                                 "editor.openDocument('a')",
                                 "document.title",
                                 "document.insert('x')",
                                 "document.save()",
                                 "output.show()",
                                 "output['a']",
                                 "output.__setitem__('a', 'b')",
                                 "debugger.attach()",
                                 "debugger.uiUpdatesEnabled",
                                 "debugger.currentProcessor",
                                 "p.run()",
                                 "p.evaluate('1+1')",
                                 "p.memory",
                                 "p.project",
                                 "m[0x100]",
                                 "m[0x100:0x102]",
                                 "m.__setitem__(0x100, 1)",
                                 "len(m)",
                                 "m.regions",
                                 "registers['r0']",
                                 "registers.keys",
                                 "peripherals['UART']",
                                 "len(uart)",
                                 "uart['DATA']",
                                 "button.text",
                                 "setattr(button, 'text', 'x')",
                                 "setattr(button, 'onClicked', print)",
                                 "button.click()",
                                 "click()",
                                 "dir(button)",
                                 "button.children",
                                 "replay.trigger('x')",
                                 "replay.path('x')",
                                 "replay.waitFor('idle')"})
            QTest::newRow(code) << QByteArray(code);
    }

    void threadCannotUseTheProgram()
    {
        QFETCH(QByteArray, code);
        const ProcessorScriptFixture f;
        QCOMPARE(f.run(Threaded), QString());
        f.stub()->takeCalls();
        const qsizetype widgets = QApplication::allWidgets().size();
        QCOMPARE(f.eval("threaded(" + quoted(code) + ')'),
                 u"'RuntimeError: Only the main thread of a script can use the program'"_s);
        QCOMPARE(f.stub()->takeCalls(), QStringList());
        QCOMPARE(QApplication::allWidgets().size(), widgets);
        QCOMPARE(f.eval("button.text, clicks, document.isModified, app.state"), u"('', [], 1, 0)"_s);
    }

    void objectsCanBeShownAndDroppedInAThread()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run(Threaded), QString());
        QCOMPARE(f.eval("threaded('button')"), u"'<Object of the main thread>'"_s);
        QVERIFY(f.eval("threaded('(app, project, p, m)')").startsWith(u"'(<varnel.App object"_s));
        QCOMPARE(f.run("kept = [project.folders, project.files, p.registers]\nthreaded('kept.clear()')"), QString());
        QCOMPARE(f.eval("project.files[0].path, p.registers.keys"), u"('main.c', ['r0', 'pc'])"_s);
    }

    void workOfThreadsReachesTheMainThreadByAQueue()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run(Threaded), QString());
        QCOMPARE(f.run("import queue\nwork = queue.Queue()\n"
                       "thread = threading.Thread(target=lambda: work.put(lambda: setattr(button, 'text', 'done')))\n"
                       "thread.start()\nthread.join()\nwork.get()()"),
                 QString());
        QCOMPARE(f.eval("button.text"), u"'done'"_s);
    }

private:
    static QByteArray quoted(const QByteArray &code) { return "\"" + code + '"'; }
};

int main(int argc, char **argv)
{
    ScriptThreadsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptthreads.moc"

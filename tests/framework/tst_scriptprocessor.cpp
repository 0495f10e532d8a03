#include "fakedebugenvironment.h"
#include "isymbols64.h"
#include "scriptrows.h"
#include <QTranslator>

// Processors and their collection in scripts, in the whole program.

using namespace Qt::StringLiterals;

class ScriptProcessorTest : public QObject
{
    Q_OBJECT
private:
    SharedScripts m_scripts;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_scripts.init();
    }

    void values_data()
    {
        addScriptRows({
            {"evaluate", "", "p.evaluate('1+1')", "'2'"},
            {"evaluate fails", "", "p.evaluate('x%1')", "ValueError: Could not evaluate expression: No symbol 'x%1'"},
            {"evaluate without an expression", "", "p.evaluate()", "TypeError:"},
            {"evaluate a number", "", "p.evaluate(1)", "TypeError:"},
            {"evaluate with a null character", "", "p.evaluate('a\\0b')", "ValueError:"},
            {"run with an argument", "", "p.run(1)", "TypeError:"},
            {"commands return None", "",
             "(p.run(), p.pause(), p.wakeUp(), p.stepInto('a'), p.stepOver('a'), "
             "p.runTo('a', 1))",
             "(None, None, None, None, None, None)"},
            {"processor status", "", "p.processorStatus", "6"},
            {"program status", "", "p.programStatus", "4"},
            {"location", "", "p.currentProgramLocation", "('main.c', 2)"},
            {"status is read only", "", "setattr(p, 'programStatus', 0)", "AttributeError:"},
            {"symbol address", "", "p.getSymbolAddress('main')", "2147483664"},
            {"symbol address of an unknown one", "", "p.getSymbolAddress('%1')", "ValueError: Symbol '%1' not found"},
            {"symbol", "", "p.getSymbol(0x80000010)", "'main'"},
            {"symbol of an unknown address", "", "p.getSymbol(0xABCD)",
             "ValueError: No symbol found at address 0xabcd"},
            {"symbol of a text", "", "p.getSymbol('main')", "TypeError:"},
            {"source lines", "", "p.getSourceLines(0x80000010)", "[('main.c', 2), ('main.c', 2), ('main.c', 2)]"},
            {"no source lines", "", "p.getSourceLines(5)", "[]"},
            {"source address", "", "p.getSourceAddress('main.c', 2)", "2147483664"},
            {"no source address", "", "p.getSourceAddress('main.c', 3)",
             "ValueError: Source line does not map to address"},
            {"breakpoint at an unknown address", "", "p.setBreakpointAtAddress(5)",
             "ValueError: Could not set breakpoint"},
            {"breakpoint at an unknown symbol", "", "p.setBreakpointAtSymbol('x')",
             "ValueError: Could not set breakpoint"},
            {"breakpoint at a huge line", "", "p.setBreakpoint('main.c', 2**32)", "OverflowError:"},
            {"breakpoint without a line", "", "p.setBreakpoint('main.c')", "TypeError:"},
            {"project", "", "p.project is app.projects[0], p.project.name", "(True, 'fw')"},
            {"extension", "", "p.extension", "None"},
            {"current processor", "", "debugger.currentProcessor is p", "True"},
            {"type", "", "type(p) is varnel.Processor, type(p).__doc__",
             "(True, 'Provides access to an individual processor associated with an Varnel project')"},
            {"documentation", "", "p.evaluate.__doc__",
             "\"evaluate(expression) - evaluetes 'expression' returning the result as a string\""},
            {"documentation of an attribute", "", "varnel.Processor.breakpoints.__doc__",
             "'Returns a list of tuples - one for each breakpoint [R]'"},
            {"cannot be created", "", "varnel.Processor()", "TypeError:"},
        });
    }
    void values()
    {
        QFETCH(QByteArray, setUp);
        QFETCH(QByteArray, expression);
        QFETCH(QString, result);
        const ProcessorScriptFixture &f = m_scripts.fixture();
        f.scriptOf(u"fw"_s).processorStatus = IExecutionEnvironment::ProcessorStatus(6);
        f.scriptOf(u"fw"_s).programStatus = IExecutionEnvironment::ProgramFinished;
        QCOMPARE(f.run(setUp), QString());
        const QString value = f.eval(expression);
        QCOMPARE(result.endsWith(u':') ? value.section(u':', 0, 0) + u':' : value, result);
    }

    // Calls

    void commandsReachTheEnvironment()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("p.run()\np.runTo('main.c', 3)\np.pause()\np.stepInto('a.c')\np.stepOver('')\np.wakeUp()\n"),
                 QString());
        QCOMPARE(f.calls(), u"fw.run() fw.runTo(main.c, 3) fw.pause() fw.stepInto(a.c) fw.stepOver() fw.wakeUp()"_s);
    }

    void breakpointsReachTheEnvironment()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("p.setBreakpoint('main.c', 3)\np.setBreakpoint('disassembler:', 15)\n"
                       "p.setBreakpoint('disassembler:', 0xFFFFFFFE)\np.disableBreakpoint('main.c', 3)\n"
                       "p.removeBreakpoint('main.c', 3)\n"),
                 QString());
        QCOMPARE(f.calls(), u"fw.setBreakpoint(main.c, 3, 1) fw.setBreakpoint(disassembler:, 16, 1) "
                            "fw.setBreakpoint(disassembler:, -1, 1) fw.setBreakpoint(main.c, 3, 2) "
                            "fw.setBreakpoint(main.c, 3, 0)"_s);
    }

    void onlySettingABreakpointExaminesTheResult()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).setBreakpointResult = 1;
        QCOMPARE(f.run("p.setBreakpoint('main.c', 3)"), u"ValueError: Could not set breakpoint"_s);
        QCOMPARE(f.run("p.setBreakpointAtSymbol('main')"), u"ValueError: Could not set breakpoint"_s);
        QCOMPARE(f.run("p.disableBreakpoint('main.c', 3)\np.removeBreakpoint('main.c', 3)"), QString());
    }

    void breakpointAtAnAddressTriesKindsInOrder()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("p.setBreakpointAtAddress(0x80000010)"), QString());
        QCOMPARE(f.calls(), u"fw.sourceLocation(2147483664, 1) fw.setBreakpoint(main.c, 2, 1)"_s);
        f.run("try: p.setBreakpointAtAddress(5)\nexcept ValueError: pass");
        QCOMPARE(f.calls(), u"fw.sourceLocation(5, 1) fw.sourceLocation(5, 2) fw.sourceLocation(5, 0) "
                            "fw.sourceLocation(5, 3)"_s);
        QCOMPARE(f.run("p.setBreakpointAtSymbol('main')"), QString());
        QCOMPARE(f.calls(), u"fw.symbolAddress(main) fw.sourceLocation(2147483664, 1) "
                            "fw.setBreakpoint(main.c, 2, 1)"_s);
        f.run("p.getSourceLines(5)");
        QCOMPARE(f.calls(), u"fw.sourceLocation(5, 0) fw.sourceLocation(5, 1) fw.sourceLocation(5, 2)"_s);
    }

    void breakpointsAreListedByTheirFirstLocation()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).breakpoints = {{{{u"main.c"_s, 3}, {u"other.c"_s, 4}}, BreakpointDisabled},
                                           {{}, BreakpointEnabled},
                                           {{{u"disassembler:"_s, 16}}, BreakpointEnabled},
                                           {{{u"disassembler:0x00000001:fw"_s, int(0x80000001)}}, BreakpointMultiple}};
        QCOMPARE(f.eval("p.breakpoints"), u"[('main.c', 3, 2), ('disassembler:', 15, 1), "
                                          "('disassembler:0x00000001:fw', 2147483648, 3)]"_s);
    }

    void breakpointInTheDisassemblyIsListedByItsAddress()
    {
        const ProcessorScriptFixture f;
        StubScript &script = f.scriptOf(u"fw"_s);
        script.keepsBreakpoints = true;
        QCOMPARE(f.run("p.setBreakpoint('disassembler:', 15)\np.setBreakpoint('main.c', 15)"), QString());
        QCOMPARE(script.breakpoints.first().locations.first().line, 16);
        QCOMPARE(f.eval("p.breakpoints"), u"[('disassembler:', 15, 1), ('main.c', 15, 1)]"_s);
    }

    void symbolIsLookedUpInTheRegionOfTheMemoryObject()
    {
        const ProcessorScriptFixture f;
        f.run("p.getSymbol(0x80000010)");
        QVERIFY(f.calls().contains(u"fw.symbolAt(2147483664, 7)"_s));
        f.run("m.currentRegion = 'DATA'\np.getSymbol(0x80000010)");
        QVERIFY(f.calls().contains(u"fw.symbolAt(2147483664, 8)"_s));
        f.run("n = debugger.processors[1]");
        f.scriptOf(u"dsp"_s).offers.remove(IMemory::Iid);
        f.run("n.getSymbol(0x80000010)");
        QVERIFY(f.calls().contains(u"dsp.symbolAt(2147483664, 0)"_s));
    }

    void missingInterfaces()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).offers = {IExecutionEnvironment::Iid};
        const auto noSymbols = u"The debugger that you are using does not export symbol information"_s;
        QCOMPARE(f.eval("p.getSymbolAddress('main')"), u"ValueError: "_s + noSymbols);
        QCOMPARE(f.eval("p.getSymbol(0)"), u"ValueError: "_s + noSymbols);
        QCOMPARE(f.eval("p.getSourceLines(0)"), u"ValueError: "_s + noSymbols);
        QCOMPARE(f.eval("p.getSourceAddress('a', 1)"), u"RuntimeError: "_s + noSymbols);
        QCOMPARE(f.eval("p.setBreakpoint('a', 1)"), u"ValueError: Could not set breakpoint"_s);
        QCOMPARE(f.eval("p.setBreakpointAtAddress(0)"), u"ValueError: Could not set breakpoint"_s);
        QCOMPARE(f.eval("p.setBreakpointAtSymbol('main')"), u"ValueError: Could not set breakpoint"_s);
        QCOMPARE(f.eval("p.disableBreakpoint('a', 1)"), u"ValueError: Could not disable breakpoint"_s);
        QCOMPARE(f.eval("p.removeBreakpoint('a', 1)"), u"ValueError: Could not remove breakpoint"_s);
        QCOMPARE(f.eval("p.breakpoints"), u"[]"_s);
    }

    void locationThatIsNotKnownIsEmpty()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).location = {};
        QCOMPARE(f.eval("p.currentProgramLocation"), u"('', 0)"_s);
    }

    void extensionIsAskedForOnce()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.eval("p.extension, p.extension"), u"(None, None)"_s);
        QCOMPARE(f.calls(), u"fw.pythonExtension()"_s);
    }

    void extensionOfThePluginIsKept()
    {
        const ProcessorScriptFixture f;
        f.run("class E: pass\nextension = E()");
        PyObject *object = PyDict_GetItemString(PyModule_GetDict(PyImport_AddModule("__main__")), "extension");
        f.scriptOf(u"fw"_s).extension = [object] {
            Py_INCREF(object);
            return object;
        };
        QCOMPARE(f.eval("p.extension is extension, p.extension is extension"), u"(True, True)"_s);
        QCOMPARE(f.calls(), u"fw.pythonExtension()"_s);
    }

    void errorOfAnExtensionIsRaised()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).extension = []() -> PyObject * {
            PyErr_SetString(PyExc_ImportError, "no module");
            return nullptr;
        };
        QCOMPARE(f.eval("p.extension"), u"ImportError: no module"_s);
        f.scriptOf(u"fw"_s).extension = nullptr;
        QCOMPARE(f.eval("p.extension"), u"None"_s);
    }

    // Activity

    void inactiveProjectIsReportedBeforeArguments_data()
    {
        QTest::addColumn<QByteArray>("expression");
        for (const char *expression : {"p.evaluate()",
                                       "p.run(1, 2)",
                                       "p.runTo()",
                                       "p.pause()",
                                       "p.stepInto()",
                                       "p.stepOver()",
                                       "p.wakeUp()",
                                       "p.setBreakpoint()",
                                       "p.setBreakpointAtAddress()",
                                       "p.setBreakpointAtSymbol()",
                                       "p.disableBreakpoint()",
                                       "p.removeBreakpoint()",
                                       "p.getSymbolAddress()",
                                       "p.getSourceLines()",
                                       "p.getSourceAddress()",
                                       "p.getSymbol()",
                                       "p.processorStatus",
                                       "p.programStatus",
                                       "p.currentProgramLocation",
                                       "p.registers",
                                       "p.peripherals",
                                       "p.memory",
                                       "p.extension",
                                       "p.breakpoints",
                                       "p.project"})
            QTest::newRow(expression) << QByteArray(expression);
    }

    void inactiveProjectIsReportedBeforeArguments()
    {
        QFETCH(QByteArray, expression);
        const ProcessorScriptFixture &f = m_scripts.fixture();
        f.window->activity().projects().first()->setActive(false);
        f.stub()->takeCalls();
        QCOMPARE(f.eval(expression), u"RuntimeError: Project associated with processor is not active"_s);
        QCOMPARE(f.calls(), QString());
    }

    void memoryOfAnInactiveProjectWorks()
    {
        const ProcessorScriptFixture f;
        f.window->activity().projects().first()->setActive(false);
        QCOMPARE(f.eval("m[0x101], debugger.processors[0] is p"), u"(1, True)"_s);
    }

    // The collection

    void collection_data()
    {
        addScriptRows({
            {"length", "", "len(debugger.processors)", "2"},
            {"is always the same", "", "debugger.processors is debugger.processors", "True"},
            {"processors are always the same", "", "debugger.processors[1] is debugger.processors['dsp']", "True"},
            {"part of a name", "", "debugger.processors['W'] is p", "True"},
            {"part of two names", "", "debugger.processors['']", "KeyError: Key '' is ambiguous"},
            {"unknown name", "", "debugger.processors['x']", "KeyError: Key not found"},
            {"index out of range", "", "debugger.processors[2]", "IndexError: Index out of range"},
            {"negative index", "", "debugger.processors[-1]", "IndexError: Index out of range"},
            {"iteration", "", "[q.project.name for q in debugger.processors]", "['fw', 'dsp']"},
            {"iterator", "", "type(iter(debugger.processors)).__name__", "'processors-iterator'"},
            {"type", "", "type(debugger.processors).__name__, type(debugger.processors).__doc__",
             "('Projects', 'Collection of processors')"},
            {"assignment", "", "debugger.processors.__setitem__(0, 1)", "AttributeError: Attribute not supported"},
        });
    }
    void collection() { m_scripts.checkRow(); }

    void projectWithoutAnEnvironmentIsNone()
    {
        const ProcessorScriptFixture f;
        f.window->activity().projects().last()->setExecutionEnvironment(nullptr);
        QCOMPARE(f.eval("[q and q.project.name for q in debugger.processors]"), u"['fw', None]"_s);
        f.window->projectWorkspace()->setCurrentProject(f.window->activity().projects().last());
        QCOMPARE(f.eval("debugger.currentProcessor"), u"None"_s);
    }

    void projectsWithOneEnvironmentShareTheirProcessor()
    {
        const ProcessorScriptFixture f;
        const QList<QPointer<Project>> projects = f.window->activity().projects();
        projects.last()->setExecutionEnvironment(projects.first()->executionInterface());
        QCOMPARE(f.eval("debugger.processors[1] is p, len(debugger.processors)"), u"(True, 2)"_s);
        QCOMPARE(f.eval("debugger.processors[1].project.name"), u"'fw'"_s);
    }

    /// The addresses of environments are reused: the object of one must not serve the project that gets it later.
    void processorBelongsToTheProjectThatHasTheEnvironmentNow()
    {
        const ProcessorScriptFixture f;
        const QList<QPointer<Project>> projects = f.window->activity().projects();
        const auto environment = shareInterface(projects.first()->executionInterface());
        projects.first()->setExecutionEnvironment(nullptr);
        projects.last()->setExecutionEnvironment(environment.get());
        QCOMPARE(f.eval("debugger.processors[1].project.name, debugger.processors[1] is p"), u"('dsp', False)"_s);
        QCOMPARE(f.eval("debugger.processors[0]"), u"None"_s);
        int alive = 0;
        const InterfacePtr<FakeDebugEnvironment> other(new FakeDebugEnvironment(&alive));
        projects.first()->setExecutionEnvironment(other.get());
        QCOMPARE(f.eval("debugger.processors[0].project.name, debugger.processors[1].project.name"),
                 u"('fw', 'dsp')"_s);
    }

    void objectsOfAFormerEnvironmentAreNotKept()
    {
        const ProcessorScriptFixture f;
        Project *project = f.window->activity().projects().first();
        f.run("class E: pass\nextension = E()");
        PyObject *object = PyDict_GetItemString(PyModule_GetDict(PyImport_AddModule("__main__")), "extension");
        f.scriptOf(u"fw"_s).extension = [object] { return Py_NewRef(object); };
        QCOMPARE(f.eval("p.extension is extension, p.memory is m"), u"(True, True)"_s);
        const auto environment = shareInterface(project->executionInterface());
        f.scriptOf(u"fw"_s).extension = nullptr;
        project->setExecutionEnvironment(environment.get()); // a new one at the same address
        QCOMPARE(f.eval("p.extension, p.memory is m, p.memory is p.memory"), u"(None, False, True)"_s);
    }

    void processorThatLosesItsEnvironmentIsStale()
    {
        const ProcessorScriptFixture f;
        f.window->activity().projects().first()->setExecutionEnvironment(nullptr);
        for (const char *use : {"p.run()", "p.memory", "m[0]", "p.breakpoints"})
            QCOMPARE(f.eval(use), u"RuntimeError: Object has been destroyed"_s);
    }

    void processorsAreStaleWithoutTheirWorkspace()
    {
        const ProcessorScriptFixture f;
        f.run("everything = debugger.processors");
        QVERIFY(f.window->closeWorkspace());
        QCOMPARE(f.stub()->objectCount(), 0);
        for (const char *use :
             {"p.run()", "p.evaluate('1+1')", "p.project", "p.memory", "p.extension", "p.breakpoints"})
            QCOMPARE(f.eval(use), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(f.eval("len(everything), list(everything), app.debugger"), u"(0, [], None)"_s);
        QCOMPARE(f.eval("debugger.currentProcessor, len(debugger.processors)"), u"(None, 0)"_s);
    }

    void processorsAreStaleWithoutTheirWindow()
    {
        ProcessorScriptFixture f;
        f.restart();
        QCOMPARE(f.eval("debugger.stop()"), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(f.eval("p.run()"), u"RuntimeError: Object has been destroyed"_s);
    }

    // Exceptions

    void exceptionsAreNotTranslated_data()
    {
        addScriptRows({
            {"workspace", "", "app.openWorkspace('/none.vnw')", "OSError: Cannot open workspace '/none.vnw'"},
            {"project", "", "setattr(app, 'currentProject', 5)", "TypeError: Project expected"},
            {"document", "", "app.editor.openDocument('')", "OSError: Error opening document ''."},
            {"output", "", "app.outputWindow['x']", "KeyError: Attempt to read unknown property 'x'"},
            {"form", "", "app.loadUI('/none.ui')", "OSError: Failed to load UI from file /none.ui"},
            {"widget", "", "app.createUI('None')", "TypeError: Failed to create widget None"},
            {"expression", "", "p.evaluate('x')", "ValueError: Could not evaluate expression: No symbol 'x'"},
            {"symbol", "", "p.getSymbolAddress('x')", "ValueError: Symbol 'x' not found"},
            {"slice", "", "m[3:1]", "IndexError: Index error"},
            {"mode", "", "setattr(m, 'currentMode', 'x')", "ValueError: Attempt to set unknown memory mode"},
            {"register", "", "p.registers['x']", "KeyError: Attempt to read unknown register 'x'"},
            {"peripheral", "", "p.peripherals['x']", "KeyError: Unknown peripheral 'x'"},
            {"replay", "from varnelreplay import replay", "replay.trigger('x')", "KeyError: There is no command 'x'"},
        });
    }

    /// Scripts compare their texts.
    void exceptionsAreNotTranslated()
    {
        /// Translates every text.
        class Translator : public QTranslator
        {
        public:
            [[nodiscard]] bool isEmpty() const override { return false; }
            [[nodiscard]] QString translate(const char *context, const char *, const char *, int) const override
            {
                // The toolkit's own warnings go to the log.
                return QByteArrayView(context).endsWith("FormBuilder") ? QString() : u"übersetzt"_s;
            }
        };
        QFETCH(QByteArray, setUp);
        QFETCH(QByteArray, expression);
        const ProcessorScriptFixture &f = m_scripts.fixture();
        QCOMPARE(f.run(setUp), QString());
        if (QByteArray(QTest::currentDataTag()) == "widget")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"QFormBuilder"_s));
        Translator translator;
        QCoreApplication::installTranslator(&translator);
        QCOMPARE(QObject::tr("a"), u"übersetzt"_s);
        QTEST(f.eval(expression), "result");
        QCoreApplication::removeTranslator(&translator);
    }

    // Plug-ins

    void exceptionOfThePluginIsAnErrorOfTheScript_data()
    {
        addScriptRows({
            {"evaluate", "IExecutionEnvironment", "p.evaluate('x')", ""},
            {"run", "IExecutionEnvironment", "p.run()", ""},
            {"runTo", "IExecutionEnvironment", "p.runTo('a', 1)", ""},
            {"pause", "IExecutionEnvironment", "p.pause()", ""},
            {"stepInto", "IExecutionEnvironment", "p.stepInto('a')", ""},
            {"stepOver", "IExecutionEnvironment", "p.stepOver('a')", ""},
            {"wakeUp", "IExecutionEnvironment", "p.wakeUp()", ""},
            {"processorStatus", "IExecutionEnvironment", "p.processorStatus", ""},
            {"programStatus", "IExecutionEnvironment", "p.programStatus", ""},
            {"currentLocation", "IExecutionEnvironment", "p.currentProgramLocation", ""},
            {"pythonExtension", "IExecutionEnvironment", "p.extension", ""},
            {"setBreakpoint", "IBreakpoints", "p.setBreakpoint('a', 1)", ""},
            {"setBreakpoint to remove", "IBreakpoints", "p.removeBreakpoint('a', 1)", ""},
            {"breakpoints", "IBreakpoints", "p.breakpoints", ""},
            {"symbolAddress", "ISourceMapping", "p.getSymbolAddress('main')", ""},
            {"symbolAddress of a breakpoint", "ISourceMapping", "p.setBreakpointAtSymbol('main')", ""},
            {"sourceLocation", "ISourceMapping", "p.getSourceLines(1)", ""},
            {"sourceLocation of a breakpoint", "ISourceMapping", "p.setBreakpointAtAddress(1)", ""},
            {"symbolAt", "ISymbolLookup", "p.getSymbol(1)", ""},
            {"addressOf", "ISymbolLookup", "p.getSourceAddress('a', 1)", ""},
        });
    }

    void addressesOfWideSymbolsAreWhole()
    {
        const ProcessorScriptFixture f;
        StubScript &script = f.scriptOf(u"fw"_s);
        script.offers += ISymbols64::Iid;
        script.wideSymbols = {{u"start"_s, 0xffffffff80001000}};
        script.wideLines = {{0xffffffff80001000, {u"main.c"_s, 2}}};
        QCOMPARE(f.eval("hex(p.getSymbolAddress('start'))"), u"'0xffffffff80001000'"_s);
        QCOMPARE(f.eval("p.getSymbol(0xffffffff80001000)"), u"'start'"_s);
        QCOMPARE(f.eval("hex(p.getSourceAddress('main.c', 2))"), u"'0xffffffff80001000'"_s);
        QCOMPARE(f.eval("p.getSourceLines(0xffffffff80001000)[0]"), u"('main.c', 2)"_s);
        QCOMPARE(f.eval("p.getSymbol(0x80001000)"), u"ValueError: No symbol found at address 0x80001000"_s);
        f.calls();
        QCOMPARE(f.run("p.setBreakpointAtSymbol('start')"), QString());
        QVERIFY(f.calls().contains(u"fw.setBreakpoint(main.c, 2, 1)"_s));
        QCOMPARE(f.eval("p.getSymbolAddress('main')"), u"ValueError: Symbol 'main' not found"_s);
    }

    void exceptionOfThePluginIsAnErrorOfTheScript()
    {
        QFETCH(QByteArray, setUp);
        QFETCH(QByteArray, expression);
        const QByteArray call = QByteArray(QTest::currentDataTag()).split(' ').first();
        const QByteArray operation = setUp + "::" + call;
        const ProcessorScriptFixture &f = m_scripts.fixture();
        f.scriptOf(u"fw"_s).on[QString::fromLatin1(call)] = [] { throw std::runtime_error("boom"); };
        QTest::ignoreMessage(QtWarningMsg, (operation + ": an exception has left the plug-in (boom)").constData());
        QCOMPARE(f.eval(expression), u"RuntimeError: The plug-in has failed in "_s + QString::fromLatin1(operation));
        f.scriptOf(u"fw"_s).on.clear();
    }

    void pluginMayCloseTheWorkspaceDuringACall()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).on[u"run"_s] = [&] { f.window->closeWorkspace(); };
        QCOMPARE(f.eval("p.run()"), u"None"_s);
        QTRY_VERIFY(!f.window->projectWorkspace()); // closes after the call
        QCOMPARE(f.eval("p.run()"), u"RuntimeError: Object has been destroyed"_s);
    }
};

int main(int argc, char **argv)
{
    ScriptProcessorTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptprocessor.moc"

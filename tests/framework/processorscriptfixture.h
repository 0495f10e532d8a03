#pragma once
#include "../plugins/stub/stub.h"
#include "ibuildenvironment.h"
#include "idisassembly.h"
#include "iexecutionenvironment.h"
#include "imemoryverify.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "pythoncall.h"
#include "pythonerrors.h"
#include "pythonstring.h"
#include "windowfixture.h"
#include <Python.h>
#include <QPluginLoader>

/// The stub plug-in with processors "fw" and "dsp", which have memory, registers, peripherals, breakpoints and symbols,
/// and the tool chain "cc".
struct ScriptedProcessors
{
    ScriptedProcessors()
    {
        setProcessors();
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }

    static void setProcessors()
    {
        using namespace Qt::StringLiterals;
        stub()->reset();
        for (const QString &name : {u"fw"_s, u"dsp"_s}) {
            StubScript &script = scriptOf(name);
            script.label = name;
            script.offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid, IMemory::Iid,       IRegisters::Iid,
                             IPeripherals::Iid,          IDisassembly::Iid, IMemoryVerify::Iid, ISourceMapping::Iid,
                             ISymbolLookup::Iid};
            script.canAttach = true;
            script.location = {u"main.c"_s, 2};
            script.regions = {{u"RAM"_s, 7, 0, 0, 0x100, 0x1FF, false, AllModes},
                              {u"DATA"_s, 8, 0, 0, 0, 0xFFFF, false, IMemory::Word16 | IMemory::Word32}};
            for (uint address = 0x100; address < 0x200; ++address)
                script.memory[address] = address & 0xFF;
            script.registers = {{u"r0"_s, 32, {}, 4, 4, {}, false}, {u"pc"_s, 32, {}, 4, 4, {}, false}};
            script.registerValues = {{u"r0"_s, {{0, 0xFFFFFFFF}, {1, 5}}}, {u"pc"_s, {{0, 8}}}};
            script.peripherals = {{u"UART"_s, {{u"DATA"_s, 8, false}, {u"STATE"_s, 8, true}}}, {u"TIMER"_s, {}}};
            script.peripheralValues = {{u"DATA"_s, 0x41}, {u"STATE"_s, 3}};
            script.symbols = {{u"main"_s, 0x80000010}};
            script.sourceLines = {{0x80000010, {u"main.c"_s, 2}}};
            script.values = {{u"1+1"_s, u"2"_s}};
        }
        scriptOf(u"cc"_s).label = u"cc"_s; // features are read once, when the first window is made
        scriptOf(u"cc"_s).offers = {IBuildEnvironment::Iid};
    }

    static constexpr uint AllModes = IMemory::Byte | IMemory::Word16 | IMemory::Word24 | IMemory::Word32;

    static StubControl *stub()
    {
        return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
    }
    static StubScript &scriptOf(const QString &label) { return stub()->script(u'{' + label + u'}'); }
};

/// A main window with these processors and the open workspace "all", in which scripts run. They find the objects `app`,
/// `debugger`, `p` (the processor "fw") and `m` (its memory).
class ProcessorScriptFixture : public ScriptedProcessors, public WindowFixture
{
public:
    explicit ProcessorScriptFixture(int projects = 2)
    {
        using namespace Qt::StringLiterals;
        settings()->setValue(u"Geometry/Debugger/stored"_s, true); // a first session shows windows, which read
        openWorkspace(projects);
    }
    ~ProcessorScriptFixture() { clearNames(); }

    /// Opens the workspace again, with processors and names as at the beginning. This is much faster than a new
    /// fixture.
    void reopen()
    {
        clearNames();
        discard();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        setProcessors();
        openWorkspace(2);
    }

    /// Writes and opens the workspace, whose projects use the first @p projects processors.
    void openWorkspace(int projects)
    {
        using namespace Qt::StringLiterals;
        write(u"main.c"_s, "one\ntwo\nthree\n");
        QStringList files;
        for (const QString &name : QStringList{u"fw"_s, u"dsp"_s}.first(projects)) {
            files += name + u".vnp"_s;
            write(files.last(), "<project executionenvironment='{" + name.toLatin1()
                                    + "}'><file path='main.c'/><properties currentconfiguration='Debug'>"
                                      "<configuration name='Debug'/></properties></project>");
        }
        QVERIFY(window->openWorkspace(writeWorkspace(u"all.vnw"_s, files), false));
        useNames();
        stub()->takeCalls();
    }

    /// Sets the names that scripts use.
    static void useNames()
    {
        run("import varnel\napp = varnel.app\ndebugger = app.debugger\n"
            "p = debugger.processors[0] if debugger else None\nm = p.memory if p else None\nevents = []\n");
    }
    static void clearNames()
    {
        run("import gc\nfor name in [n for n in globals() if n[0] != '_']: del globals()[name]\n");
        PyGC_Collect();
    }

    /// Runs statements. Returns the error, "Class: text", or an empty string.
    static QString run(const QByteArray &statements) { return execute(statements, Py_file_input); }
    /// The `repr` of the value of an expression, or its error.
    static QString eval(const QByteArray &expression) { return execute(expression, Py_eval_input); }

    /// The calls of plug-ins since the last call, without those that only ask.
    static QString calls()
    {
        using namespace Qt::StringLiterals;
        QStringList calls = stub()->takeCalls();
        calls.removeIf([](const QString &call) {
            const QStringList questions{u"breakpoints"_s, u"currentLocation"_s, u"canAttach"_s,   u"programStatus"_s,
                                        u"regions"_s,     u"registers"_s,       u"peripherals"_s, u"commands"_s};
            return questions.contains(call.section(u'.', 1).section(u'(', 0, 0));
        });
        return calls.join(u' ');
    }

    static void report(const QString &name, IExecutionEnvironment::ProgramStatus status)
    {
        stub()->object(name)->executionEvents->programStatusChanged(status);
    }

private:
    static PyObject *globals()
    {
        PyObject *globals = PyModule_GetDict(PyImport_AddModule("__main__"));
        return globals;
    }

    static QString execute(const QByteArray &code, int kind)
    {
        const PythonCall call;
        const PythonReference result(PyRun_String(code.constData(), kind, globals(), globals()));
        if (!result)
            return takeError();
        return kind == Py_eval_input ? fromPython(PythonReference(PyObject_Repr(result.get())).get()) : QString();
    }

    static QString takeError()
    {
        const PythonException exception = takePythonException();
        const PythonReference first(PyObject_GetAttrString(exception.value.get(), "args"));
        const PythonReference text(PyTuple_GET_SIZE(first.get()) > 0 ? PyObject_Str(PyTuple_GET_ITEM(first.get(), 0))
                                                                     : PyUnicode_FromString(""));
        return QString::fromUtf8(reinterpret_cast<PyTypeObject *>(exception.type.get())->tp_name) + QStringLiteral(": ")
               + fromPython(text.get());
    }
};

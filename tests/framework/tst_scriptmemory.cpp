#include "debugwindows.h"
#include "dockwindow.h"
#include "scriptrows.h"

// The objects of scripts for memory, registers and peripherals, in the whole program.

using namespace Qt::StringLiterals;

class ScriptMemoryTest : public QObject
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

    // Memory

    void memoryReads_data()
    {
        addScriptRows({
            {"length leaves out the highest address", "", "len(m)", "255"},
            {"length of another region", "m.currentRegion = 'DATA'", "len(m)", "65535"},
            {"word", "", "m[0x1FF]", "255"},
            {"bool is an int", "", "m[True]", "OSError: No memory at address"},
            {"subclass of int", "class I(int): pass", "m[I(0x101)]", "1"},
            {"no memory", "", "m[0x200]", "OSError: No memory at address"},
            {"text as index", "", "m['a']", "IndexError: Index must be an integer"},
            {"float as index", "", "m[1.0]", "IndexError: Index must be an integer"},
            {"tuple as index", "", "m[1, 2]", "IndexError: Index must be an integer"},
            {"slice", "", "m[0x100:0x104]", "[0, 1, 2, 3]"},
            {"slice of words of 16 bits", "m.currentMode = 'Word16'", "len(m[0x100:0x104])", "2"},
            {"slice of words of 24 bits", "m.currentMode = 'Word24'", "len(m[0x100:0x107])", "2"},
            {"slice of words of 32 bits", "m.currentMode = 'Word32'", "len(m[0x100:0x107])", "1"},
            {"slice from a negative bound", "", "m[-5:0x102]", "[0, 1]"},
            {"slice in the wrong order", "", "m[3:1]", "IndexError: Index error"},
            {"slice before the region", "", "m[1:3]", "[]"},
            {"slice without bounds", "", "len(m[:])", "255"},
            {"slice with huge bounds", "", "len(m[-10**30:10**30])", "255"},
            {"slice without its end", "", "m[0x1FD:]", "[253, 254]"},
            {"slice without its begin", "", "m[:0x102]", "[0, 1]"},
            {"slice with a step", "", "m[0x100:0x104:2]", "IndexError: Index must be an integer"},
            {"slice with a text", "", "m['a':]", "IndexError: Index must be an integer"},
            {"slice with a float", "", "m[:1.5]", "IndexError: Index must be an integer"},
            {"no iteration", "", "list(m)", "[]"},
            {"no concatenation", "", "m + m", "IndexError: Memory concat not implemented"},
            {"no repetition", "", "m * 3", "IndexError: Memory repeat not implemented"},
            {"no repetition from the right", "", "3 * m", "IndexError: Memory repeat not implemented"},
            {"no membership", "", "1 in m", "IndexError: Memory contains not implemented"},
            {"no sequence items",
             "import ctypes\nitem = ctypes.pythonapi.PySequence_GetItem\n"
             "item.restype = ctypes.py_object\nitem.argtypes = [ctypes.py_object, ctypes.c_ssize_t]",
             "item(m, 0)", "IndexError: Memory item not implemented"},
            {"no assignment to sequence items",
             "import ctypes\nitem = ctypes.pythonapi.PySequence_SetItem\n"
             "item.argtypes = [ctypes.py_object, ctypes.c_ssize_t, ctypes.py_object]",
             "item(m, 0, 1)", "IndexError: Memory ass_item not implemented"},
            {"is always the same", "", "p.memory is m", "True"},
            {"type", "", "type(m) is varnel.Memory, type(m).__name__, type(m).__doc__",
             "(True, 'Memory', 'Provides access to memory')"},
            {"slots are attributes", "", "m.__getitem__(0x101), m.__len__()", "(1, 255)"},
            {"cannot be created", "", "varnel.Memory()", "TypeError:"},
        });
    }
    void memoryReads() { m_scripts.checkRow(); }

    void memoryAttributes_data()
    {
        addScriptRows({
            {"regions", "", "m.regions", "['RAM', 'DATA']"},
            {"region at first", "", "m.currentRegion, m.lowAddress, m.highAddress", "('RAM', 256, 511)"},
            {"mode at first", "", "m.currentMode", "'Byte'"},
            {"modes", "", "m.modes", "['Byte', 'Word16', 'Word24', 'Word32']"},
            {"modes of another region", "m.currentRegion = 'DATA'", "m.modes", "['Word16', 'Word32']"},
            {"mode in any case", "m.currentMode = 'WORD16'", "m.currentMode", "'Word16'"},
            {"unsupported mode is replaced by the first", "m.currentRegion = 'DATA'", "m.currentMode", "'Word16'"},
            {"supported mode stays", "m.currentMode = 'word32'; m.currentRegion = 'DATA'", "m.currentMode", "'Word32'"},
            {"unknown mode", "", "setattr(m, 'currentMode', 'word8')",
             "ValueError: Attempt to set unknown memory mode"},
            {"mode that the region lacks", "m.currentRegion = 'DATA'", "setattr(m, 'currentMode', 'byte')",
             "ValueError: That mode is not valid"},
            {"unknown region", "", "setattr(m, 'currentRegion', 'ram')",
             "ValueError: Attempt to set unknown memory region"},
            {"verify at first", "", "m.verify", "0"},
            {"verify is set", "m.verify = 5", "m.verify", "1"},
            {"verify is cleared", "m.verify = 1; m.verify = 0.5", "m.verify", "0"},
            {"verify is no text", "", "setattr(m, 'verify', 'x')", "TypeError:"},
            {"addresses are read only", "", "setattr(m, 'lowAddress', 0)", "AttributeError:"},
            {"documentation", "", "type(m).verify.__doc__",
             "'Set to 1 to enable varification of memory reads and writes [RW]'"},
            {"documentation of disassemble", "", "m.disassemble.__doc__",
             "\"disassemble(address) - Disassemble specified 'address'\""},
        });
    }
    void memoryAttributes() { m_scripts.checkRow(); }

    void memoryWrites_data()
    {
        addScriptRows({
            {"word", "m[0x100] = 0x1FF", "m[0x100]", "511"},
            {"more than 32 bits", "m[0x100] = 2**40 + 7", "m[0x100]", "7"},
            {"negative", "m[0x100] = -1", "m[0x100]", "4294967295"},
            {"no int as value", "", "m.__setitem__(0x100, 'a')", "ValueError: Value must be an integer"},
            {"float as value", "", "m.__setitem__(0x100, 1.0)", "ValueError: Value must be an integer"},
            {"no int as index", "", "m.__setitem__('a', 'a')", "IndexError: Index must be an integer"},
            {"no memory", "", "m.__setitem__(0x200, 1)", "OSError: No memory at address"},
            {"deletion", "", "m.__delitem__(0x100)", "TypeError: Memory object doesn't support item deletion"},
            {"slice", "m[0x100:0x103] = [7, 8, 9]", "m[0x100:0x104]", "[7, 8, 9, 3]"},
            {"empty slice", "m[0x100:0x100] = []", "m[0x100]", "0"},
            {"slice before the region", "m[1:3] = []", "m[0x100]", "0"},
            {"slice in the wrong order", "", "m.__setitem__(slice(3, 1), [])", "IndexError: Index error"},
            {"deletion of a slice", "", "m.__delitem__(slice(0, 1))",
             "TypeError: Memory object doesn't support slice deletion"},
            {"no list", "", "m.__setitem__(slice(0x100, 0x102), (1, 2))",
             "IndexError: Memory slice assignment must be a list"},
            {"list too short", "", "m.__setitem__(slice(0x100, 0x102), [1])",
             "IndexError: Memory slice assignment is wrong size"},
            {"list too long", "", "m.__setitem__(slice(0x100, 0x102), [1, 2, 3])",
             "IndexError: Memory slice assignment is wrong size"},
            {"list is clipped like the slice", "", "m.__setitem__(slice(0x1FE, 0x300), [1, 2])",
             "IndexError: Memory slice assignment is wrong size"},
            {"as many items as addresses", "m.currentMode = 'Word16'; m[0x100:0x104] = [7, 8, 'not used', 'neither']",
             "m[0x100], m[0x101], m[0x102]", "(7, 8, 2)"},
            {"as many items as words are too few", "m.currentMode = 'Word16'",
             "m.__setitem__(slice(0x100, 0x104), [7, 8])", "IndexError: Memory slice assignment is wrong size"},
            {"no int in the list", "", "m.__setitem__(slice(0x100, 0x103), [7, 'x', 9])",
             "IndexError: Memory slice assignment must be a list of integers"},
            {"cell without memory", "p.memory.currentRegion = 'DATA'", "m.__setitem__(slice(0x1FF, 0x202), [1, 2, 3])",
             "OSError: No memory at address 0x200"},
            {"in-place concatenation", "", "__import__('operator').iadd(m, [1])",
             "IndexError: Memory inplace_concat not implemented"},
            {"in-place repetition", "", "__import__('operator').imul(m, 3)",
             "IndexError: Memory inplace_repeat not implemented"},
        });
    }
    void memoryWrites() { m_scripts.checkRow(); }

    void itemsThatAreNoIntsAreConvertedAndWritten()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("class Four:\n"
                       "    def __int__(self): items.clear(); return 4\n"
                       "class Bad:\n"
                       "    def __int__(self): raise KeyError\n"
                       "items = [2.9, Four(), Bad(), 'x', None, 6]\n"
                       "m[0x100:0x106] = items\n"),
                 u"IndexError: Memory slice assignment must be a list of integers"_s);
        QCOMPARE(f.eval("m[0x100:0x106]"), u"[2, 4, 4294967295, 4294967295, 4294967295, 6]"_s);
    }

    void callsPassRegionModeAndFlush()
    {
        const ProcessorScriptFixture f;
        f.run("m.currentMode = 'Word16'");
        f.calls();
        f.run("m[0x102]\nm[0x102] = 5\nm[0x100:0x105]\nm[0x100:0x102] = [1, 2]\n");
        QCOMPARE(f.calls(), u"fw.read(7, 2, 258) fw.write(7, 2, 258, 5, true) fw.readBlock(7, 2, 256, 2) "
                            "fw.writeBlock(7, 2, 256, 1, false)"_s);
        f.run("m[0x100:0x100]\nm[0x100:0x100] = []");
        QCOMPARE(f.calls(), QString());
    }

    void statusesBecomeTexts_data()
    {
        QTest::addColumn<uint>("address");
        QTest::addColumn<QString>("error");
        QTest::newRow("hexadecimal digits are upper case") << 0x1ABu << u"OSError: No memory at address 0x1AB"_s;
        QTest::newRow("first cell") << 0x100u << u"OSError: No memory at address 0x100"_s;
        QTest::newRow("last cell") << 0x1FEu << u"OSError: No memory at address 0x1FE"_s;
    }

    void statusesBecomeTexts()
    {
        QFETCH(uint, address);
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).memory.remove(address);
        QTEST(f.eval("m[:]"), "error");
    }

    void statusOfEachAccess_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("errors"); // of m[i], m[i] = v, m[a:b], m[a:b] = list
        const auto row = [](const char *name, int status, const QString &word, const QString &written,
                            const QString &block) {
            QTest::newRow(name) << status << QStringList{word, written, block, block};
        };
        row("bad pointer", 1, u"Bad pointer"_s, u"Bad pointer"_s, u"Bad pointer returned for address 0x101"_s);
        row("no memory", 2, u"No memory at address"_s, u"No memory at address"_s, u"No memory at address 0x101"_s);
        row("uninitialised", 3, u"Uninitialised memory at address"_s, u"Uninitialised memory at address"_s,
            u"Uninitialised memory at address 0x101"_s);
        row("ROM", 4, u"Unknown memory error"_s, u"Attempt to write to ROM"_s,
            u"Unknown memory error at address 0x101"_s);
        row("other", 9, u"Unknown memory error"_s, u"Unknown memory error"_s,
            u"Unknown memory error at address 0x101"_s);
    }

    void statusOfEachAccess()
    {
        QFETCH(int, status);
        QFETCH(QStringList, errors);
        const ProcessorScriptFixture f;
        f.window->activity().setState(StatePaused);
        f.window->findChild<DockWindow *>(u"peripheralDockWindow"_s)->show();
        QCoreApplication::processEvents();
        f.stub()->takeCalls();
        const auto refreshed = [&] { return f.stub()->takeCalls().contains(u"fw.value(, UART)"_s); };
        f.scriptOf(u"fw"_s).memoryStatuses = {{0x101, status}};
        const QStringList accesses{u"m[0x101]"_s, u"m.__setitem__(0x101, 5)"_s, u"m[0x100:0x103]"_s,
                                   u"m.__setitem__(slice(0x100, 0x103), [7, 8, 9])"_s};
        for (int i = 0; i < accesses.size(); ++i)
            QCOMPARE(f.eval(accesses[i].toUtf8()), u"OSError: "_s + errors[i]);
        QVERIFY(!refreshed());
        QCOMPARE(f.run("m[0x100] = 1"), QString());
        QVERIFY(refreshed());
    }

    void blockWithTooFewCellsIsAnError()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).missingCells = 2;
        QCOMPARE(f.eval("m[0x100:0x104]"), u"OSError: Unknown memory error at address 0x102"_s);
        f.scriptOf(u"fw"_s).missingCells = 9;
        QCOMPARE(f.eval("m[0x100:0x104]"), u"OSError: Unknown memory error at address 0x100"_s);
    }

    void errorOfASliceCountsCells()
    {
        const ProcessorScriptFixture f;
        f.run("m.currentMode = 'Word32'");
        f.scriptOf(u"fw"_s).memory.remove(0x102); // the third cell of the stub
        QCOMPARE(f.eval("m[0x100:0x110]"), u"OSError: No memory at address 0x102"_s);
    }

    void upperBitsOfAnAddressAreCutOff()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.eval("m[0x500000100:0x500000104] == m[0x100:0x104]"), u"True"_s);
        QCOMPARE(f.eval("m[0x500000100] == m[0x100]"), u"True"_s);
    }

    void sliceOfAllAddressesIsRefused()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).regions = {{u"ALL"_s, 0, 0, 0, 0, 0xFFFFFFFF, false, IMemory::Byte}};
        QCOMPARE(f.eval("len(m)"), u"4294967295"_s);
        QCOMPARE(f.eval("m[:]"), u"MemoryError: Memory slice is too large"_s);
        QCOMPARE(f.eval("m[-1]"), u"OSError: No memory at address"_s);
    }

    void targetWithoutRegionsHasNoMemory()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).regions.clear();
        QCOMPARE(f.eval("m.regions, m.currentRegion, len(m), m.modes"), u"([], '', 0, [])"_s);
        QCOMPARE(f.eval("m[0]"), u"RuntimeError: The memory region does not exist"_s);
        QCOMPARE(f.eval("m[0:1]"), u"RuntimeError: The memory region does not exist"_s);
        QCOMPARE(f.run("m[0] = 1"), u"RuntimeError: The memory region does not exist"_s);
    }

    void regionThatComesLaterGetsItsFirstMode()
    {
        ProcessorScriptFixture f;
        f.scriptOf(u"dsp"_s).regions.clear();
        f.run("n = debugger.processors[1].memory");
        QCOMPARE(f.eval("n.currentMode"), u"'Unknown'"_s);
        f.scriptOf(u"dsp"_s).regions = {{u"X"_s, 0, 0, 0, 0, 9, false, IMemory::Word24}};
        QCOMPARE(f.eval("n.currentMode"), u"'Word24'"_s);
    }

    void regionThatIsGoneHasNoMemory()
    {
        const ProcessorScriptFixture f;
        f.run("m.currentRegion = 'DATA'");
        f.scriptOf(u"fw"_s).regions.removeLast();
        QCOMPARE(f.eval("m.currentRegion"), u"''"_s);
        QCOMPARE(f.eval("m[0]"), u"RuntimeError: The memory region does not exist"_s);
        QCOMPARE(f.run("m.currentRegion = 'RAM'"), QString());
        QCOMPARE(f.eval("m[0x101]"), u"1"_s);
    }

    void disassemblyIsPlainText()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).instructions = {{0x104, u"&nbsp;<b>mov</b>&nbsp;r0, <i>r1</i>"_s}};
        QCOMPARE(f.eval("m.disassemble(0x104)"), u"'mov r0, r1'"_s);
        QVERIFY(f.calls().endsWith(u"fw.disassemble(260, 7)"_s));
        QCOMPARE(f.eval("m.disassemble('x')").section(u':', 0, 0), u"TypeError"_s);
        f.scriptOf(u"fw"_s).offers.remove(IDisassembly::Iid);
        QCOMPARE(f.eval("m.disassemble(0x104)"), u"''"_s);
    }

    void memoryWithoutVerification()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).offers.remove(IMemoryVerify::Iid);
        QCOMPARE(f.eval("m.verify"), u"AttributeError: Memory does not support verify mode"_s);
        QCOMPARE(f.run("m.verify = 1"), u"AttributeError: Memory does not support verify mode"_s);
    }

    // Registers

    void registers_data()
    {
        addScriptRows({
            {"keys", "", "p.registers.keys", "['r0', 'pc']"},
            {"length", "", "len(p.registers)", "2"},
            {"lowest word", "", "p.registers['r0']", "4294967295"},
            {"exact names", "", "p.registers['R0']", "KeyError: Attempt to read unknown register 'R0'"},
            {"write", "p.registers['r0'] = 6", "p.registers['r0']", "6"},
            {"write more than 32 bits", "p.registers['r0'] = 2**32 + 6", "p.registers['r0']", "6"},
            {"write a text", "", "p.registers.__setitem__('r0', '6')", "ValueError: Value must be an integer"},
            {"write a text to an unknown one", "", "p.registers.__setitem__('x', '6')",
             "ValueError: Value must be an integer"},
            {"write an unknown one", "", "p.registers.__setitem__('x', 6)",
             "KeyError: Attempt to write unknown register 'x'"},
            {"placeholder in a name", "", "p.registers['%1']", "KeyError: Attempt to read unknown register '%1'"},
            {"new object", "", "p.registers is p.registers", "False"},
            {"type", "", "type(p.registers) is varnel.Registers, type(p.registers).__doc__",
             "(True, 'Provides access to processor registers')"},
        });
    }
    void registers() { m_scripts.checkRow(); }

    // Peripherals

    void peripherals_data()
    {
        addScriptRows({
            {"keys", "", "p.peripherals.keys", "['UART', 'TIMER']"},
            {"length", "", "len(p.peripherals)", "2"},
            {"unknown", "", "p.peripherals['uart']", "KeyError: Unknown peripheral 'uart'"},
            {"registers", "", "p.peripherals['UART'].keys", "['DATA', 'STATE']"},
            {"number of registers", "", "len(p.peripherals['UART']), len(p.peripherals['TIMER'])", "(2, 0)"},
            {"read", "", "p.peripherals['UART']['DATA']", "65"},
            {"read unknown", "", "p.peripherals['UART']['data']", "KeyError: Attempt to read unknown register 'data'"},
            {"write", "p.peripherals['UART']['DATA'] = 0x42", "p.peripherals['UART']['DATA']", "66"},
            {"write unknown", "", "p.peripherals['UART'].__setitem__('data', 1)",
             "KeyError: Attempt to write unknown register 'data'"},
            {"write a text", "", "p.peripherals['UART'].__setitem__('DATA', 'x')",
             "ValueError: Value must be an integer"},
            {"new object", "", "p.peripherals['UART'] is p.peripherals['UART']", "False"},
            {"documentation", "", "varnel.Peripherals.__doc__, varnel.Peripheral.__doc__",
             "('Provides access to peripheral registers', 'Provides access to a single peripheral and its "
             "registers')"},
        });
    }
    void peripherals() { m_scripts.checkRow(); }

    void peripheralsHaveNoItemAssignment()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("p.peripherals['UART'] = 1").section(u':', 0, 0), u"TypeError"_s);
    }

    void peripheralNamesItselfToThePlugin()
    {
        const ProcessorScriptFixture f;
        f.run("u = p.peripherals['UART']\nu['DATA']\nu['DATA'] = 9");
        QCOMPARE(f.calls(), u"fw.value(UART, DATA) fw.setValue(UART, DATA, 9)"_s);
    }

    void peripheralsAreReadAgainForEachAccess()
    {
        const ProcessorScriptFixture f;
        f.run("u = p.peripherals['TIMER']");
        f.scriptOf(u"fw"_s).peripherals[1].registers = {{u"COUNT"_s, 8, false}};
        QCOMPARE(f.eval("u.keys"), u"['COUNT']"_s);
        f.scriptOf(u"fw"_s).peripherals.removeLast();
        QCOMPARE(f.eval("u.keys, len(u)"), u"([], 0)"_s);
        QCOMPARE(f.eval("u['COUNT']"), u"KeyError: Attempt to read unknown register 'COUNT'"_s);
    }

    // Plug-ins

    void missingInterfacesAreNone()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"dsp"_s).offers = {IExecutionEnvironment::Iid};
        QCOMPARE(f.run("p = debugger.processors[1]"), QString());
        QCOMPARE(f.eval("p.memory, p.registers, p.peripherals"), u"(None, None, None)"_s);
        f.scriptOf(u"dsp"_s).offers.insert(IMemory::Iid);
        QCOMPARE(f.eval("type(p.memory)"), u"<class 'varnel.Memory'>"_s);
    }

    void interfaceThatIsGoneIsAnError()
    {
        const ProcessorScriptFixture f;
        f.run("r = p.registers\nq = p.peripherals\nu = q['UART']");
        f.scriptOf(u"fw"_s).offers = {IExecutionEnvironment::Iid};
        for (const char *use : {"m[0]", "len(m)", "m.regions", "m.verify", "r['r0']", "r.keys", "q.keys", "u.keys"})
            QCOMPARE(f.eval(use), u"RuntimeError: Object has been destroyed"_s);
    }

    void exceptionOfThePluginIsAnErrorOfTheScript_data()
    {
        addScriptRows({
            {"read", "read", "m[0x100]", "RuntimeError: The plug-in has failed in IMemory::read"},
            {"write", "write", "m.__setitem__(0x100, 1)", "RuntimeError: The plug-in has failed in IMemory::write"},
            {"readBlock", "readBlock", "m[0x100:0x102]", "RuntimeError: The plug-in has failed in IMemory::readBlock"},
            {"writeBlock", "writeBlock", "m.__setitem__(slice(0x100, 0x101), [1])",
             "RuntimeError: The plug-in has failed in IMemory::writeBlock"},
            {"regions", "regions", "len(m)", "RuntimeError: The plug-in has failed in IMemory::regions"},
            {"verify", "verify", "m.verify", "RuntimeError: The plug-in has failed in IMemoryVerify::verify"},
            {"disassemble", "disassemble", "m.disassemble(0)",
             "RuntimeError: The plug-in has failed in IDisassembly::disassemble"},
            {"registers", "registers", "p.registers.keys",
             "RuntimeError: The plug-in has failed in IRegisters::registers"},
            {"register", "value", "p.registers['r0']", "RuntimeError: The plug-in has failed in IRegisters::value"},
            {"write a register", "setValue", "p.registers.__setitem__('r0', 1)",
             "RuntimeError: The plug-in has failed in IRegisters::setValue"},
            {"peripherals", "peripherals", "p.peripherals.keys",
             "RuntimeError: The plug-in has failed in IPeripherals::peripherals"},
            {"peripheral", "value", "p.peripherals['UART']['DATA']",
             "RuntimeError: The plug-in has failed in IPeripherals::value"},
        });
    }

    void exceptionOfThePluginIsAnErrorOfTheScript()
    {
        QFETCH(QByteArray, setUp);
        QFETCH(QByteArray, expression);
        QFETCH(QString, result);
        const ProcessorScriptFixture &f = m_scripts.fixture();
        f.scriptOf(u"fw"_s).on[QString::fromLatin1(setUp)] = [] { throw std::runtime_error("boom"); };
        const QByteArray operation = result.section(u' ', -1).toLatin1() + ": an exception has left the plug-in (boom)";
        QTest::ignoreMessage(QtWarningMsg, operation.constData());
        QCOMPARE(f.eval(expression), result);
        f.scriptOf(u"fw"_s).on.clear();
        QCOMPARE(f.eval("m[0x101]"), u"1"_s);
    }

    void pluginMayCloseTheWorkspaceDuringARead()
    {
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).on[u"read"_s] = [&] { f.window->closeWorkspace(); };
        QCOMPARE(f.eval("m[0x101]"), u"1"_s);
        QTRY_VERIFY(!f.window->projectWorkspace()); // closes after the call
        QCOMPARE(f.eval("m[0x101]"), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(f.stub()->objectCount(), 0);
    }

    void objectsAreStaleWithoutTheirWorkspace()
    {
        const ProcessorScriptFixture f;
        f.run("r = p.registers\nq = p.peripherals\nu = q['UART']");
        QVERIFY(f.window->closeWorkspace());
        QCOMPARE(f.stub()->objectCount(), 0);
        for (const char *use :
             {"m[0]", "m[0:1]", "len(m)", "m.regions", "m.currentMode", "m.verify", "m.disassemble(0)", "r['r0']",
              "len(r)", "r.keys", "q.keys", "q['UART']", "u.keys", "u['DATA']"})
            QCOMPARE(f.eval(use), u"RuntimeError: Object has been destroyed"_s);
        QCOMPARE(f.run("m[0] = 1"), u"RuntimeError: Object has been destroyed"_s);
    }

    // Windows

    void writesRefreshTheWindows_data()
    {
        QTest::addColumn<QByteArray>("statement");
        QTest::addColumn<QString>("refreshed");
        QTest::newRow("word") << QByteArray("m[0x100] = 1") << u"data"_s;
        QTest::newRow("slice") << QByteArray("m[0x100:0x101] = [1]") << u"data"_s;
        QTest::newRow("register") << QByteArray("p.registers['r0'] = 1") << u"registers"_s;
        QTest::newRow("peripheral") << QByteArray("p.peripherals['UART']['DATA'] = 1") << u"data"_s;
        QTest::newRow("failed word") << QByteArray("try: m[0x200] = 1\nexcept OSError: pass") << QString();
        QTest::newRow("failed slice") << QByteArray("m.currentRegion = 'DATA'\n"
                                                    "try: m[0x200:0x201] = [1]\nexcept OSError: pass")
                                      << QString();
        QTest::newRow("slice with a text")
            << QByteArray("try: m[0x100:0x101] = ['x']\nexcept IndexError: pass") << u"data"_s;
        QTest::newRow("failed register") << QByteArray("try: p.registers['x'] = 1\nexcept KeyError: pass") << QString();
        QTest::newRow("reading") << QByteArray("m[0x100]; m[:]; p.registers['r0']") << QString();
        QTest::newRow("updates switched off") << QByteArray("debugger.uiUpdatesEnabled = 0\nm[0x100] = 1\n"
                                                            "p.registers['r0'] = 1")
                                              << QString();
        QTest::newRow("updates switched off twice")
            << QByteArray("debugger.uiUpdatesEnabled = 0\ndebugger.uiUpdatesEnabled = 0") << QString();
        QTest::newRow("updates switched on again")
            << QByteArray("debugger.uiUpdatesEnabled = 0\nm[0x100] = 1\ndebugger.uiUpdatesEnabled = 1")
            << u"registers data next"_s;
        QTest::newRow("updates were on") << QByteArray("debugger.uiUpdatesEnabled = 1") << QString();
    }

    void writesRefreshTheWindows()
    {
        QFETCH(QByteArray, statement);
        const ProcessorScriptFixture f;
        f.window->activity().setState(StatePaused);
        for (const char *name : {"registerDockWindow", "peripheralDockWindow"})
            f.window->findChild<DockWindow *>(QString::fromLatin1(name))->show();
        QCoreApplication::processEvents();
        f.stub()->takeCalls();
        QCOMPARE(f.run(statement), QString());
        const QStringList calls = f.stub()->takeCalls();
        QStringList refreshed;
        if (calls.contains(u"fw.value(pc, 0)"_s))
            refreshed += u"registers"_s;
        if (calls.contains(u"fw.value(, UART)"_s)) // the first row of the peripheral window
            refreshed += u"data"_s;
        if (calls.contains(u"fw.currentLocation()"_s))
            refreshed += u"next"_s;
        QTEST(refreshed.join(u' '), "refreshed");
    }
};

int main(int argc, char **argv)
{
    ScriptMemoryTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptmemory.moc"

#include "boardfirmware.h"
#include "stackreplies.h"
#include "targetconsole.h"
#include <QLineEdit>

using Env = IExecutionEnvironment;

/// Sessions with firmware on emulated boards.
class tst_BoardSession : public QObject, private BoardFirmware
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void sessionStartsAtMainAndShowsOutputInTheConsole();
    void consoleInputIsSentToTheProgram();
    void stepsFollowTheCurrentDocument();
    void runStopsAtSourceAndAddressBreakpoints();
    void breakpointSetWhileRunningIsHit();
    void textOfABreakpointIsPrintedWithoutMemoryOfTheProgram();
    void stepOverAnEndlessLoopCanBePaused();
    void functionCallsNeedTheOption();
    void breakpointInFaultHandlerShowsTheFaultingCaller();
    void faultStopsInItsHandlerAndIsExplained();
    void faultHandlersRunIfFaultsAreNotCaught();
    void restartWorksTenTimes();
    void memoryIsReadAndWrittenInAllModes();
    void cellsBeyondTheRegionHaveNoMemory();
    void memoryAndLinesAreAvailableWhileRunning();
    void writeToRomIsRefused();
    void registersBeforeTheSessionEqualThoseOfGdb_data();
    void registersBeforeTheSessionEqualThoseOfGdb();
    void registersOf32And64BitsAreWritten();
    void disassemblyShowsSourceLines();
    void peripheralsAreReadAndWritten();
    void fieldsOfPeripheralsAreKnown();
    void wakeUpEndsSleep();
    void selectedCallerChangesExpressions();
    void semihostingOutputIsShownAndExitEndsTheProgram();
    void logCommandShowsCommandsAndAnswers();
    void reloadKeepsBreakpoints();
};

namespace {
/// Whether the program reaches its endless loop within 10 s.
bool isInItsLoop(const LiveSession &session)
{
    uint address = 0;
    uint loops = 0;
    const auto memory = session.get<IMemory>();
    return session.get<ISourceMapping>()->symbolAddress(u"loops"_s, address)
           && QTest::qWaitFor(
               [&] { return memory->read(1, IMemory::Word32, address, &loops) == IMemory::Success && loops > 0; },
               10000);
}
} // namespace

void tst_BoardSession::initTestCase()
{
    QVERIFY(build());
}

void tst_BoardSession::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

void tst_BoardSession::cleanup()
{
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_BoardSession::sessionStartsAtMainAndShowsOutputInTheConsole()
{
    LiveSession session(option());
    const QList<QWidget *> widgets = session.get<IDockExtension>()->widgets();
    QCOMPARE(widgets.size(), 1);
    QCOMPARE(widgets[0]->windowTitle(), u"Target console"_s);
    QVERIFY(session.start());
    QCOMPARE(session.location(), atMain());
    QCOMPARE(session.events.infos.last(), u"mps2-an385"_s);
    session.env->run();
    QTRY_COMPARE(static_cast<TargetConsole *>(widgets[0])->text(), u"ready\n"_s);
    QCOMPARE(session.env->programStatus(), Env::ProgramRunning);
    QCOMPARE(session.events.text, closedConsole());
    qDeleteAll(widgets);
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
}

void tst_BoardSession::consoleInputIsSentToTheProgram()
{
    LiveSession session(option());
    const QList<QWidget *> widgets = session.get<IDockExtension>()->widgets();
    auto *console = static_cast<TargetConsole *>(widgets[0]);
    QVERIFY(console->property("namedByProject").toBool()); // each processor has a console
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"command=2"_s), u"2"_s);
    session.env->run();
    QTRY_COMPARE(console->text(), u"ready\n"_s);
    auto *input = console->findChild<QLineEdit *>(u"InputEdit"_s);
    input->setText(u"HAL"_s);
    QTest::keyClick(input, Qt::Key_Return);
    QTRY_COMPARE(console->text(), u"ready\nHAL\nIBM\v"_s);
    qDeleteAll(widgets);
}

void tst_BoardSession::stepsFollowTheCurrentDocument()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->runTo(file(), line(u"sum = sum + twice"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->stepInto(u"firmware.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.env->session()->frame().function, u"twice"_s);
    const QString view = u"disassembler:0x00000007:demo"_s;
    const quint64 address = session.env->session()->frame().address;
    session.env->stepOver(view);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), view + u", %1"_s.arg(address + 2 + 1));
    session.env->runTo(view, int(address + 4 + 1));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.env->session()->frame().address, address + 4);
    session.env->stepOver(u"firmware.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY(session.location().startsWith(u"firmware.c, "_s));
    QCOMPARE(session.location(view), view + u", %1"_s.arg(session.env->session()->frame().address + 1));
}

void tst_BoardSession::runStopsAtSourceAndAddressBreakpoints()
{
    LiveSession session(option());
    const auto breakpoints = session.get<IBreakpoints>();
    breakpoints->setBreakpoint(file(), line(u"origin.x = sum"_s), BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), at(u"origin.x = sum"_s));
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"spin"_s, address));
    QCOMPARE(breakpoints->setBreakpoint(u"disassembler:0x00000001:demo"_s, int(address + 1), BreakpointEnabled), 0);
    QCOMPARE(session.breakpoints().section(u'\n', 1, 1), u"[x] disassembler:, %1"_s.arg(address + 1));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.env->session()->frame().address, quint64(address));
    QCOMPARE(breakpoints->setBreakpoint(u"disassembler:"_s, int(address + 1), BreakpointMultiple), 0);
    QCOMPARE(breakpoints->setBreakpoint(u"disassembler:"_s, int(address + 1), BreakpointRemoved), 0);
    QCOMPARE(breakpoints->breakpoints().size(), 1);
}

void tst_BoardSession::breakpointSetWhileRunningIsHit()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QVERIFY(isInItsLoop(session));
    const auto breakpoints = session.get<IBreakpoints>();
    QCOMPARE(breakpoints->setBreakpoint(file(), line(u"int result"_s), BreakpointEnabled), 0);
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QCOMPARE(breakpoints->setBreakpoint(file(), line(u"loops = loops + 1"_s), BreakpointEnabled), 0);
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), at(u"loops = loops + 1"_s));
    QCOMPARE(session.events.text, QString());
}

void tst_BoardSession::textOfABreakpointIsPrintedWithoutMemoryOfTheProgram()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int place = line(u"int result = value * 2"_s);
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(file(), place, BreakpointEnabled), 0);
    BreakpointDetails details;
    details.logText = u"{value} of {origin}"_s;
    QString reason;
    QVERIFY2(session.get<IBreakpointDetails>()->setDetails(file(), place, details, reason), qPrintable(reason));
    session.env->run();
    QTRY_VERIFY2(session.events.text.contains(u"3 of {x = 3, y = 4}\n"_s), qPrintable(session.events.text));
    QCOMPARE(session.env->programStatus(), Env::ProgramRunning);
}

void tst_BoardSession::stepOverAnEndlessLoopCanBePaused()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->runTo(file(), line(u"/* for ever */"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->stepOver(u"firmware.c"_s);
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QVERIFY(isInItsLoop(session));
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.env->session()->frame().function, u"spin"_s);
}

void tst_BoardSession::functionCallsNeedTheOption()
{
    LiveSession refused(option());
    QVERIFY(refused.start());
    QVERIFY2(refused.evaluate(u"twice(21)"_s).startsWith(u"error: "_s), qPrintable(refused.evaluate(u"twice(21)"_s)));
    LiveSession allowed(option(u";callFunctions=1"_s));
    QVERIFY(allowed.start());
    QCOMPARE(allowed.evaluate(u"twice(21)"_s), u"42"_s);
}

void tst_BoardSession::breakpointInFaultHandlerShowsTheFaultingCaller()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"startup.c"_s),
                                               Programs::lineOf(u"startup.c"_s, u"void faultHandler"_s) + 2,
                                               BreakpointEnabled);
    QCOMPARE(session.evaluate(u"command=1"_s), u"1"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.env->session()->frame().function, u"faultHandler"_s);
    QVERIFY(selectFrame(session.get<ICallStack>().get(), 1, 2)); // frame 1 is gdb's marker of a handler
    QCOMPARE(session.env->session()->frame().function, u"crash"_s);
    QVERIFY2(session.location().startsWith(u"firmware.c, "_s), qPrintable(session.location()));
}

void tst_BoardSession::faultStopsInItsHandlerAndIsExplained()
{
    LiveSession session(option());
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"command=1"_s), u"1"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.env->session()->frame().function, u"faultHandler"_s);
    const QString text = session.events.text;
    QVERIFY2(text.startsWith(u"HardFault, escalated from another fault at 0x"_s), qPrintable(text));
    QVERIFY2(text.contains(u", crash (firmware.c, %1)\n"_s.arg(line(u"0x60000000 = 1"_s)))
                 || text.contains(u", crash (firmware.c, %1)\n"_s.arg(line(u"*(volatile uint32_t *)0x60000000"_s))),
             qPrintable(text));
    QVERIFY2(text.contains(u"    PRECISERR: data was accessed at an address without memory or device\n"
                           "    BFAR: the address was 0x60000000\n"_s),
             qPrintable(text));
    session.env->stepOver({}); // within the handler
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.events.text, text);      // explained once
    QVERIFY(session.breakpoints().isEmpty()); // the user has set none
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"command=1"_s), u"1"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.events.text, text + text);
}

void tst_BoardSession::faultHandlersRunIfFaultsAreNotCaught()
{
    LiveSession session(option(u";catchFaults=0"_s));
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"command=1"_s), u"1"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.events.text, QString());
}

void tst_BoardSession::restartWorksTenTimes()
{
    LiveSession session(option());
    const auto breakpoints = session.get<IBreakpoints>();
    breakpoints->setBreakpoint(file(), line(u"origin.x = sum"_s), BreakpointEnabled);
    QVERIFY(session.start());
    for (int round = 0; round < 10; ++round) {
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(session.evaluate(u"sum"_s), u"12"_s);
        session.env->restart();
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QCOMPARE(session.location(), atMain());
    }
    QCOMPARE(ownChildren().size(), 2);
    QCOMPARE(session.events.text, QString());
}

void tst_BoardSession::memoryIsReadAndWrittenInAllModes()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    QStringList names;
    for (const MemoryRegion &region : memory->regions())
        names.append(region.name);
    QCOMPARE(names.mid(0, 2), (QStringList{u"Code"_s, u"RAM"_s}));
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"buffer"_s, address));
    MemoryBlock block;
    memory->readBlock(1, IMemory::Byte, address, 4, block);
    QCOMPARE(block.size(), 4);
    QCOMPARE(block[3].value, 4u);
    uint value = 0;
    QCOMPARE(memory->read(1, IMemory::Word24, address + 1, &value), int(IMemory::Success));
    QCOMPARE(value, 0x040302u);
    QCOMPARE(memory->write(1, IMemory::Word24, address, 0xABCDEF, true), int(IMemory::Success));
    QCOMPARE(memory->read(1, IMemory::Word32, address, &value), int(IMemory::Success));
    QCOMPARE(value, 0x04ABCDEFu);
    QCOMPARE(memory->read(1, IMemory::Word32, address, nullptr), int(IMemory::BadPointer));
    QCOMPARE(memory->read(99, IMemory::Byte, address, &value), int(IMemory::NoMemory));
    const auto verify = queryInterface<IMemoryVerify>(memory.get());
    QVERIFY(!verify->verify());
    verify->setVerify(true);
    QCOMPARE(memory->write(1, IMemory::Word16, address, 0x55AA, true), int(IMemory::Success));
}

void tst_BoardSession::cellsBeyondTheRegionHaveNoMemory()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    MemoryBlock block;
    memory->readBlock(1, IMemory::Word16, 0x203FFFFA, 5, block);
    QString statuses;
    for (const MemoryBlockCell &cell : block)
        statuses += QString::number(cell.status);
    QCOMPARE(statuses, u"00022"_s);
    block.fill({1, 0}, 3);
    memory->writeBlock(1, IMemory::Word32, 0x203FFFFC, 3, block, true);
    QCOMPARE(block[0].status, int(IMemory::Success));
    QCOMPARE(block[1].status, int(IMemory::NoMemory));
    QCOMPARE(block[2].status, int(IMemory::NoMemory));
}

void tst_BoardSession::memoryAndLinesAreAvailableWhileRunning()
{
    LiveSession session(option());
    QVERIFY(session.start());
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"loops"_s, address));
    const auto memory = session.get<IMemory>();
    const auto seen = session.env->session()->frame().address;
    QVERIFY(!session.get<IDisassembly>()->text(int(seen)).isNull());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    uint value = 0;
    QTRY_VERIFY(memory->read(1, IMemory::Word32, address, &value) == IMemory::Success && value > 0);
    QVERIFY(session.evaluate(u"loops"_s).startsWith(u"error: "_s));
    uint code = 0;
    QVERIFY(session.get<ISymbolLookup>()->addressOf(file(), line(u"int result"_s), code));
    QVERIFY(session.get<IDisassembly>()->text(int(code)).isNull()); // not decoded before the program continued
    QVERIFY(!session.get<IDisassembly>()->text(int(seen)).isNull());
    QVERIFY(!session.events.statuses.contains(Env::ProgramPaused));
}

void tst_BoardSession::writeToRomIsRefused()
{
    const QString image = m_programs.firmware(u"rom.elf"_s, u"lm3s.ld"_s);
    LiveSession session(u"qemu:lm3s6965evb;image="_s + image);
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    const MemoryRegion flash = memory->regions().first();
    QCOMPARE(flash.name, u"Flash"_s);
    QVERIFY(flash.readOnly);
    uint before = 0;
    QCOMPARE(memory->read(0, IMemory::Word32, 0, &before), int(IMemory::Success));
    QCOMPARE(memory->write(0, IMemory::Word32, 0, ~before, true), int(IMemory::WriteToRom));
    uint after = 0;
    QCOMPARE(memory->read(0, IMemory::Word32, 0, &after), int(IMemory::Success));
    QCOMPARE(after, before);
}

void tst_BoardSession::registersBeforeTheSessionEqualThoseOfGdb_data()
{
    QTest::addColumn<QString>("board");
    QTest::newRow("without floating point") << u"mps2-an385"_s;
    QTest::newRow("with floating point") << u"mps2-an386"_s;
}

void tst_BoardSession::registersBeforeTheSessionEqualThoseOfGdb()
{
    QFETCH(QString, board);
    LiveSession session(u"qemu:%1;image=%2"_s.arg(board, m_image));
    const auto names = [&session] {
        QStringList list;
        for (const RegisterInfo &info : session.get<IRegisters>()->registers())
            list.append(u"%1 %2 %3"_s.arg(info.group, info.name).arg(info.width));
        return list.join(u'\n');
    };
    const QString before = names();
    QVERIFY(session.start());
    QCOMPARE(names(), before); // the window may have been built before the session
    QCOMPARE(session.get<IRegisters>()->value(u"pc"_s, 0), uint(session.env->session()->frame().address));
}

void tst_BoardSession::registersOf32And64BitsAreWritten()
{
    LiveSession session(u"qemu:mps2-an386;image="_s + m_image);
    QVERIFY(session.start());
    const auto registers = session.get<IRegisters>();
    registers->setValue(u"r4"_s, 0xCAFE0001, 0);
    QCOMPARE(registers->value(u"r4"_s, 0), 0xCAFE0001u);
    QCOMPARE(registers->value(u"r4"_s, 1), 0u);
    registers->setValue(u"d3"_s, 0x11223344, 0);
    registers->setValue(u"d3"_s, 0x55667788, 1);
    registers->setValue(u"nothing"_s, 1, 0);
    QCOMPARE(registers->value(u"d3"_s, 0), 0x11223344u);
    QCOMPARE(registers->value(u"d3"_s, 1), 0x55667788u);
    QCOMPARE(registers->value(u"s7"_s, 0), 0x55667788u);
    QCOMPARE(registers->value(u"none"_s, 0), 0u);
}

void tst_BoardSession::disassemblyShowsSourceLines()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int index = int(session.env->session()->frame().address);
    const auto lines = session.get<IDisassemblyAddress>();
    QCOMPARE(lines->sourceLines(index).size(), 1);
    QVERIFY2(lines->text(index).contains(QString::number(index, 16).toUpper().rightJustified(8, u'0')),
             qPrintable(lines->text(index)));
    QVERIFY2(lines->sourceLines(index).join(u'\n').contains(u"{"_s), qPrintable(lines->sourceLines(index).join(u'\n')));
    QVERIFY(lines->text(index + 1).isNull());
    QVERIFY(lines->sourceLines(index + 1).isEmpty());
    QVERIFY(lines->sourceLines(0).isEmpty()); // the vectors are no code
}

void tst_BoardSession::peripheralsAreReadAndWritten()
{
    LiveSession session(option(u";svdFile="_s + Programs::source(u"board.svd"_s)));
    const auto devices = session.get<IPeripherals>();
    QCOMPARE(devices->peripherals().size(), 3);
    QStringList names;
    const PeripheralInfo second = devices->peripherals().at(1);
    for (const PeripheralRegisterInfo &info : second.registers)
        names.append(u"%1 %2%3"_s.arg(info.name).arg(info.bits).arg(info.readOnly ? u" r"_s : QString()));
    QCOMPARE(names,
             (QStringList{u"UART1.DATA 8"_s, u"UART1.STATE 32 r"_s, u"UART1.INTCLEAR 32"_s, u"UART1.BAUDDIV 32"_s}));
    QCOMPARE(devices->value(u"UART0"_s, u"BAUDDIV"_s), 0u); // no session
    QVERIFY(session.start());
    session.env->runTo(file(), line(u"print(banner)"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(devices->value(u"UART0"_s, u"UART0.BAUDDIV"_s), 16u);
    QCOMPARE(devices->value(u"UART0"_s, u"BAUDDIV"_s), 16u);
    devices->setValue(u"UART1.BAUDDIV"_s, u"UART1.BAUDDIV"_s, 99);
    QCOMPARE(devices->value(u"UART1"_s, u"UART1.BAUDDIV"_s), 99u);
    QCOMPARE(devices->value({}, u"UART1"_s), 0u); // the row of the peripheral itself
    devices->setValue(u"BLOCK1.LOAD"_s, u"BLOCK1.LOAD"_s, 0x71234);
    QCOMPARE(devices->value(u"DUALTIMER"_s, u"BLOCK1.LOAD"_s), 0x71234u);
    session.get<IPeripherals>()->value(u"UART0"_s, u"UART0.STATE"_s);
    QVERIFY2(devices->description(u"UART0"_s, u"UART0.STATE"_s).contains(u"[1] RXFULL = 0 Empty: A letter has come"_s),
             qPrintable(devices->description(u"UART0"_s, u"UART0.STATE"_s)));
    QVERIFY(devices->description(u"UART0"_s, u"UART0.DATA"_s).contains(u"only on request"_s));
    QCOMPARE(devices->description(u"UART1"_s, {}), u"Serial port"_s);
    QCOMPARE(devices->description(u"UART9"_s, {}), QString());
}

void tst_BoardSession::fieldsOfPeripheralsAreKnown()
{
    LiveSession session(option(u";svdFile="_s + Programs::source(u"board.svd"_s)));
    const auto fields = session.get<IPeripheralFields>();
    QVERIFY(fields);
    QStringList texts;
    for (const PeripheralFieldInfo &info : fields->details(u"UART0"_s, u"UART0.STATE"_s).fields) {
        texts.append(u"%1 %2+%3 %4%5"_s.arg(info.name)
                         .arg(info.lowBit)
                         .arg(info.width)
                         .arg(info.writable ? u"w"_s : u"r"_s, info.description));
        for (const PeripheralValueName &value : info.values)
            texts.last() += u" %1=%2"_s.arg(value.name).arg(value.value);
    }
    QCOMPARE(texts, (QStringList{u"TXFULL 0+1 r"_s, u"RXFULL 1+1 rA letter has come Empty=0"_s}));
    QVERIFY(fields->details(u"UART0"_s, u"UART0.DATA"_s).readingChanges);
    QVERIFY(!fields->details(u"UART0"_s, u"UART0.STATE"_s).readingChanges);
    QVERIFY(fields->details(u"UART0"_s, u"UART0.STATE"_s).readable);
    QVERIFY(!fields->details(u"UART0"_s, u"UART0.INTCLEAR"_s).readable);
    QVERIFY(fields->details(u"UART0"_s, u"nothing"_s).fields.isEmpty());
    QVERIFY(session.start());
    session.env->runTo(file(), line(u"print(banner)"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(fields->readNow(u"UART0"_s, u"UART0.BAUDDIV"_s), 16u);
    QCOMPARE(fields->readNow(u"UART0"_s, u"nothing"_s), 0u);
}

void tst_BoardSession::wakeUpEndsSleep()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->runTo(file(), line(u"if (command == 3)"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"command=4"_s), u"4"_s);
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"doze"_s, address));
    QVERIFY(!session.evaluate(u"$pc=doze"_s).startsWith(u"error"_s));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    uint counter = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"ticks"_s, counter));
    uint value = 1;
    const auto memory = session.get<IMemory>();
    QCOMPARE(memory->read(1, IMemory::Word32, counter, &value), int(IMemory::Success));
    QCOMPARE(value, 0u);
    session.env->wakeUp();
    QTRY_VERIFY(memory->read(1, IMemory::Word32, counter, &value) == IMemory::Success && value == 1);
}

void tst_BoardSession::selectedCallerChangesExpressions()
{
    LiveSession session(option());
    session.get<IBreakpoints>()->setBreakpoint(file(), line(u"return result"_s), BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    const auto stack = session.get<ICallStack>();
    const InterfacePtr<StackReplies> replies(new StackReplies);
    QCOMPARE(StackReplies::functions(replies->askFrames(stack.get(), 1)), (QStringList{u"twice"_s, u"main"_s}));
    QVERIFY(session.evaluate(u"sum"_s).startsWith(u"error"_s));
    QVERIFY(stack->setCurrentPlace({1, 1}));
    QCOMPARE(session.location(), at(u"sum = sum + twice"_s));
    QVERIFY(!session.evaluate(u"sum"_s).startsWith(u"error"_s));
}

void tst_BoardSession::semihostingOutputIsShownAndExitEndsTheProgram()
{
    LiveSession session(option());
    QByteArray output;
    connect(session.env->session(), &GdbSession::output, this, [&output](const QByteArray &bytes) { output += bytes; });
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"command=5"_s), u"5"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QTRY_VERIFY2(output.contains("by semihosting\n"), output.constData());
    QTRY_VERIFY2(output.contains("by a stream\n"), output.constData());
    QTRY_VERIFY2(session.events.text.contains(u"ended with code 5."_s), qPrintable(session.events.text));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), atMain());
}

void tst_BoardSession::logCommandShowsCommandsAndAnswers()
{
    LiveSession session(option());
    const auto commands = session.get<IExtensionCommands>();
    QStringList texts;
    for (const ExtensionCommand &command : commands->commands())
        texts.append(command.text + (command.enabled ? u" +"_s : QString()) + (command.checked ? u" x"_s : QString()));
    QCOMPARE(texts, (QStringList{u"Step Out"_s, u"Step Instruction"_s, u"Reload Program"_s, u"Load Symbols..."_s,
                                 u"Stop Where Exceptions Are Thrown +"_s, u"Stop Where Exceptions Are Caught +"_s,
                                 u"Log the Dialogue with gdb +"_s}));
    commands->execute(u"log"_s);
    QVERIFY(commands->commands().last().checked);
    QVERIFY(session.start());
    QVERIFY2(session.events.text.contains(u"-break-insert -t \"main\"\n"_s), qPrintable(session.events.text));
    QVERIFY(session.events.text.contains(u"< (gdb)"_s));
    commands->execute(u"stepInstruction"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->loadSymbols(m_image);
    QVERIFY(session.events.serious.isEmpty());
}

void tst_BoardSession::reloadKeepsBreakpoints()
{
    LiveSession session(option());
    session.get<IBreakpoints>()->setBreakpoint(file(), line(u"origin.x = sum"_s), BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    session.env->execute(u"reload"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), atMain());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
}

QTEST_MAIN(tst_BoardSession)
#include "tst_boardsession.moc"

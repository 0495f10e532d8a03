#include "fakegdb.h"
#include "livesession.h"
#include "nativetarget.h"
#include "nativeterminal.h"
#include "qemumachine.h"
#include "stackreplies.h"
#include <csignal>
#include <QSignalSpy>
#include <sys/resource.h>
#include <sys/stat.h>

using Env = IExecutionEnvironment;

/// What the user reads when something fails. Most of it is provoked by a program that answers instead of gdb.
class tst_GdbMessages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void failedStartIsExplained_data();
    void failedStartIsExplained();
    void problemOfAStartIsExplained_data();
    void problemOfAStartIsExplained();
    void programThatDoesNotReachMainIsExplained();
    void programThatDoesNotStopIsExplained();
    void interruptedStepIsExplained();
    void lostProgramIsExplained();
    void refusedNextStatementIsExplained();
    void socketThatCannotBeMadeIsExplained();
    void missingTerminalIsExplained();
    void lostInputIsExplained();
    void deviceDescriptionIsExplained_data();
    void deviceDescriptionIsExplained();
    void pipeIsNoDeviceDescription();
    void commandsHaveDescriptions();
    void missingProgramIsExplained();
    void programThatEndsBeforeItsStartIsExplained();
    void breakpointOfALibraryIsExplained();
    void refusedBreakpointIsExplained();
    void refusedDataBreakpointIsExplained();
    void refusedRunToCursorIsExplained();
    void impossibleNextStatementIsExplained();
    void refusedExceptionStopIsExplained();
    void emulatorThatDoesNotAnswerIsExplained();
    void endOfAnEmulatorIsExplained();
    void sensitiveRegisterIsExplained();
    void wakeUpOfAProgramOfThisComputerIsExplained();
    void endOfTheSessionAnswersOpenQuestions();

private:
    Programs m_programs;
    QString m_native;
    QString m_firmware;

    QString native(const FakeGdb &gdb, const QString &more = {}) const
    {
        return u"native:%1;gdb=%2"_s.arg(m_native, gdb.path()) + more;
    }
};

void tst_GdbMessages::initTestCase()
{
    m_native = m_programs.native(u"demo"_s);
    m_firmware = m_programs.firmware(u"firmware.elf"_s);
    QVERIFY(!m_native.isEmpty() && !m_firmware.isEmpty());
}

void tst_GdbMessages::failedStartIsExplained_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<bool>("attach");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QString &option, bool attach, const QString &command,
                        const QString &message) { QTest::newRow(name) << option << attach << command << message; };
    row("program", u"native:NATIVE"_s, false, u"-file-exec-and-symbols"_s, u"'NATIVE' cannot be loaded: no reason"_s);
    row("process", u"native:NATIVE;processId=77"_s, true, u"-target-attach"_s,
        u"Cannot attach to process 77: no reason"_s);
    row("connection", u"remote:host%1:1;image=FIRMWARE"_s, false, u"-target-select"_s,
        u"gdb cannot connect to 'host%1:1': no reason\nIs the target's server running, and no other debugger on it?"_s);
    row("download", u"remote:host:1;image=FIRMWARE"_s, false, u"-target-download"_s,
        u"The program cannot be loaded into 'host:1': no reason"_s);
    row("reset", u"remote:host:1;image=FIRMWARE;resetCommand=reset halt"_s, false,
        u"-interpreter-exec console \"monitor reset halt"_s, u"'host:1' cannot be reset: no reason"_s);
    row("no address", u"remote;image=FIRMWARE"_s, false, u"-nothing"_s,
        u"The project property \"Address\" of the target is empty."_s);
    row("second core", u"qemu:mps2-an521;image=FIRMWARE;secondImage=FIRMWARE"_s, false, u"-add-inferior"_s,
        u"The second core of 'mps2-an521' cannot be connected: no reason"_s);
    row("emulator", u"qemu:mps2-an385;image=FIRMWARE"_s, false, u"-target-select"_s,
        u"gdb cannot connect to 'mps2-an385': no reason"_s);
    row("first instruction", u"native:NATIVE"_s, false, u"-exec-run"_s, u"The program cannot continue: no reason"_s);
}

void tst_GdbMessages::failedStartIsExplained()
{
    QFETCH(QString, option);
    QFETCH(bool, attach);
    QFETCH(QString, command);
    QFETCH(QString, message);
    const FakeGdb gdb({FakeGdb::error(command, u"no reason"_s)});
    const auto filled = [this](QString text) {
        return text.replace(u"NATIVE"_s, m_native).replace(u"FIRMWARE"_s, m_firmware);
    };
    LiveSession session(filled(option) + u";gdb="_s + gdb.path());
    QVERIFY(session.initialised);
    QVERIFY(!session.env->start(attach));
    QVERIFY2(session.events.serious.startsWith(filled(message)), qPrintable(session.events.serious));
    QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
}

void tst_GdbMessages::problemOfAStartIsExplained_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("message");
    QTest::newRow("symbols") << u"gdbSymbolFiles"_s << u"/no/boot%1.elf"_s
                             << u"-interpreter-exec console \"add-symbol-file"_s
                             << u"The symbols of '/no/boot%1.elf' cannot be loaded: no reason\n"_s;
    QTest::newRow("command") << u"gdbCommands"_s << u"set nonsense %2"_s
                             << u"-interpreter-exec console \"set nonsense"_s
                             << u"The gdb command 'set nonsense %2' failed: no reason\n"_s;
    QTest::newRow("function") << u"gdbRunTo"_s << u"begin"_s << u"-break-insert -t \"begin\""_s
                              << u"The program cannot be run to 'begin': no reason\n"_s;
    QTest::newRow("region") << u"gdbRegions"_s << u"RAM:0:1K:ram;Flash:0"_s << u"-nothing"_s
                            << u"The memory region 'Flash:0' is invalid; the format is name:start:length:kind.\n"_s;
    QTest::newRow("breakpoint") << QString() << QString() << u"-break-insert --source"_s
                                << u"The breakpoint at /x/%1.c, 3 cannot be set: no reason\n"_s;
}

void tst_GdbMessages::problemOfAStartIsExplained()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, command);
    QFETCH(QString, message);
    const FakeGdb gdb({FakeGdb::error(command, u"no reason"_s),
                       FakeGdb::error(u"-break-insert -f"_s, u"no reason"_s),
                       {u"-interpreter-exec console starti"_s,
                        FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"end-stepping-range\""_s)}},
                       {u"-interpreter-exec console \"starti"_s,
                        FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"end-stepping-range\""_s)}}});
    LiveSession session(native(gdb), {{key, value}});
    if (key.isEmpty())
        session.get<IBreakpoints>()->setBreakpoint(u"/x/%1.c"_s, 3, BreakpointEnabled);
    QVERIFY(session.start()); // nevertheless
    QCOMPARE(session.events.text, message);
    QCOMPARE(session.events.serious, QString());
}

void tst_GdbMessages::programThatDoesNotReachMainIsExplained()
{
    const FakeGdb gdb({{u"-exec-run"_s, FakeGdb::running()}});
    LiveSession session(native(gdb, u";timeLimit=1"_s));
    QVERIFY(session.start());
    QCOMPARE(session.events.text,
             u"'main' was not reached within 1 s; the program is paused at its current location.\n"_s);
}

void tst_GdbMessages::programThatDoesNotStopIsExplained()
{
    const FakeGdb gdb({{u"-exec-interrupt"_s, {u"TOKEN^done"_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QVERIFY(session.get<IBreakpoints>()->setBreakpoint(u"/x/a.c"_s, 3, BreakpointEnabled) != 0);
    QCOMPARE(session.events.text, u"'demo' did not stop within 3 s.\n"
                                  "No breakpoint can be set at /x/a.c, 3: the program cannot be paused\n"_s);
    QCOMPARE(session.events.serious, u"'demo' did not stop within 3 s.\n"_s);
}

void tst_GdbMessages::interruptedStepIsExplained()
{
    const FakeGdb gdb;
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(u"/x/a.c"_s, 3, BreakpointEnabled), 0);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.events.text, u"The step was interrupted.\n"_s);
}

void tst_GdbMessages::lostProgramIsExplained()
{
    const FakeGdb gdb({{u"-exec-continue"_s, FakeGdb::running() + QStringList{u"&\"Remote connection closed\\n\""_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QCOMPARE(session.events.serious, u"'demo' has ended.\n"_s);
}

void tst_GdbMessages::refusedNextStatementIsExplained()
{
    const FakeGdb gdb({FakeGdb::error(u"-data-evaluate-expression \"$pc"_s, u"no reason"_s)});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    QVERIFY(!session.get<INextStatement>()->setNextStatement(u"disassembler:"_s, 5));
    QCOMPARE(session.events.serious, u"The next statement cannot be set: gdb refuses it.\n"_s);
}

void tst_GdbMessages::socketThatCannotBeMadeIsExplained()
{
    const QByteArray before = qgetenv("TMPDIR");
    const QString directory = m_programs.directory()
                              + u"/a directory with a name that is too long for sockets, which "
                                "have about one hundred characters only"_s;
    QVERIFY(QDir().mkpath(directory));
    const FakeGdb gdb;
    LiveSession session(u"qemu:mps2-an385;image=%1;gdb=%2"_s.arg(m_firmware, gdb.path()));
    qputenv("TMPDIR", directory.toUtf8());
    const bool started = session.env->start(false);
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QVERIFY(!started);
    QVERIFY2(session.events.serious.startsWith(u"Cannot make the socket '"_s + directory),
             qPrintable(session.events.serious));
}

void tst_GdbMessages::missingTerminalIsExplained()
{
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{3, before.rlim_max};
    NativeTarget target(TargetOptions(), {m_native, {}});
    QString error;
    setrlimit(RLIMIT_NOFILE, &none); // no more files can be opened
    const bool up = target.bringUp(&error);
    setrlimit(RLIMIT_NOFILE, &before);
    QVERIFY(!up);
    QCOMPARE(error, u"No terminal is available for the program."_s);
}

void tst_GdbMessages::lostInputIsExplained()
{
    NativeTerminal terminal;
    QByteArray output;
    connect(&terminal, &NativeTerminal::output, this, [&output](const QByteArray &bytes) { output += bytes; });
    terminal.write("short\n");
    QCOMPARE(output, QByteArray());
    for (int i = 0; i < 5000 && output.isEmpty(); ++i)
        terminal.write(QByteArray(60, 'a') + '\n'); // no program reads it
    QCOMPARE(output, QByteArray("[part of the input was lost]\n"));
}

void tst_GdbMessages::deviceDescriptionIsExplained_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no XML") << QByteArray("<device><name>") << u"line 1: "_s;
    QTest::newRow("another document") << QByteArray("<html/>") << u"it does not describe a device"_s;
    QTest::newRow("deep document") << QByteArray("<device>").repeated(30) << u"line 1: too much in it"_s;
    const QByteArray array = "<register><dim>4096</dim><dimIncrement>4</dimIncrement><name>R%s</name>"
                             "<addressOffset>0</addressOffset></register>";
    QTest::newRow("many registers") << "<device><peripherals><peripheral><name>P</name><baseAddress>0</baseAddress>"
                                       "<registers>"
                                           + array.repeated(50) + "</registers></peripheral></peripherals></device>"
                                    << u"it describes too many registers"_s;
}

void tst_GdbMessages::deviceDescriptionIsExplained()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, reason);
    QFile file(m_programs.directory() + u"/board.svd"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.close();
    LiveSession session(u"native:%1;svdFile=%2"_s.arg(m_native, file.fileName()));
    const QString start = u"The device description '%1' cannot be read: "_s.arg(file.fileName());
    QVERIFY2(session.events.text.startsWith(start + reason), qPrintable(session.events.text));
}

void tst_GdbMessages::pipeIsNoDeviceDescription()
{
    const QString path = m_programs.directory() + u"/pipe.svd"_s;
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    LiveSession session(u"native:%1;svdFile=%2"_s.arg(m_native, path));
    const QString message = u"The device description '%1' cannot be read: It is not a file.\n"_s.arg(path);
    QVERIFY2(session.events.text.startsWith(message), qPrintable(session.events.text));
}

void tst_GdbMessages::commandsHaveDescriptions()
{
    LiveSession session(u"native:"_s + m_native);
    QStringList texts;
    for (const ExtensionCommand &command : session.get<IExtensionCommands>()->commands())
        texts += command.whatsThis;
    QCOMPARE(texts,
             (QStringList{u"Runs until the current function returns to its caller."_s,
                          u"Executes one instruction of the processor."_s,
                          u"Loads the last build of the program and pauses it at its start. Breakpoints stay."_s,
                          u"Adds the symbols of another program, such as a boot loader."_s,
                          u"Pauses a C++ program at each throw expression, also in later sessions."_s,
                          u"Pauses a C++ program where a handler catches an exception, also in later sessions."_s,
                          u"Shows every line sent to gdb and received from it on the output page \"gdb\"."_s}));
}

void tst_GdbMessages::missingProgramIsExplained()
{
    LiveSession session(u"native"_s);
    const QTemporaryDir empty;
    session.project.path = empty.path();
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious, u"There is no program to be debugged: build the project, or set the project "
                                     "property \"Program\".\n"_s);
}

void tst_GdbMessages::programThatEndsBeforeItsStartIsExplained()
{
    const FakeGdb gdb({{u"-exec-run"_s, FakeGdb::running() + QStringList{u"*stopped,reason=\"exited-normally\""_s}}});
    LiveSession session(native(gdb));
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious, u"The program ended before it could be debugged.\n"_s);
}

void tst_GdbMessages::breakpointOfALibraryIsExplained()
{
    const FakeGdb gdb({FakeGdb::error(u"-break-insert --source"_s, u"no reason"_s)});
    LiveSession session(native(gdb));
    session.get<IBreakpoints>()->setBreakpoint(u"/x/%1.c"_s, 3, BreakpointEnabled);
    QVERIFY(session.start());
    QCOMPARE(session.events.text,
             u"The breakpoint at /x/%1.c, 3 waits until the program loads a library with this line.\n"_s);
}

void tst_GdbMessages::refusedBreakpointIsExplained()
{
    const FakeGdb gdb({{u"-exec-continue"_s,
                        FakeGdb::running() + QStringList{u"TOKEN^error,msg=\"Cannot insert breakpoint 2.\""_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(u"/x/a.c"_s, 3, BreakpointEnabled), 0);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.events.serious, u"The program cannot continue: Cannot insert breakpoint 2.\n"_s);
    BreakpointDetails details;
    QVERIFY(session.get<IBreakpointDetails>()->details(u"/x/a.c"_s, 3, details));
    QVERIFY(!details.set);
    QCOMPARE(details.problem, u"The target cannot set it: Cannot insert breakpoint 2."_s);
    BreakpointDetails changed;
    QString reason;
    QVERIFY(!session.get<IBreakpointDetails>()->setDetails(u"/x/other.c"_s, 3, changed, reason));
    QCOMPARE(reason, u"There is no breakpoint at this line."_s);
}

void tst_GdbMessages::refusedDataBreakpointIsExplained()
{
    const FakeGdb gdb({{u"-interpreter-exec console \"watch"_s, {u"~\"Watchpoint 3: -l x\\n\""_s, u"TOKEN^done"_s}},
                       {u"-exec-interrupt"_s, {u"TOKEN^done"_s, u"*stopped,reason=\"exited-normally\""_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    const auto details = session.get<IBreakpointDetails>();
    DataBreakpoint point;
    point.expression = u"x"_s;
    QString reason;
    QVERIFY(!details->setDataBreakpoint(point, reason)); // gdb would execute instruction by instruction
    QCOMPARE(reason, u"The target cannot watch these data."_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QVERIFY(!details->setDataBreakpoint(point, reason));
    QCOMPARE(reason, u"The program cannot be paused."_s);
    point.id = 99;
    QVERIFY(!details->setDataBreakpoint(point, reason));
    QCOMPARE(reason, u"There is no such breakpoint."_s);
}

void tst_GdbMessages::refusedRunToCursorIsExplained()
{
    const FakeGdb gdb({FakeGdb::error(u"-break-insert -t --source"_s, u"no reason"_s)});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    session.env->runTo(u"native.c"_s, 3);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.events.serious, u"The program cannot be run to the cursor: no reason\n"_s);
}

void tst_GdbMessages::impossibleNextStatementIsExplained()
{
    const FakeGdb gdb;
    LiveSession session(native(gdb));
    const auto next = session.get<INextStatement>();
    QVERIFY(!next->setNextStatement(u"native.c"_s, 3));
    QCOMPARE(session.events.serious, u"The next statement cannot be set, because the program is not paused.\n"_s);
    session.events.serious.clear();
    QVERIFY(session.start());
    QVERIFY(!next->setNextStatement(u"native.c"_s, 3));
    QCOMPARE(session.events.serious, u"The next statement cannot be set: line 3 has no code.\n"_s);
}

void tst_GdbMessages::refusedExceptionStopIsExplained()
{
    const FakeGdb gdb({FakeGdb::error(u"-catch-throw"_s, u"no reason"_s)});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    session.get<IExtensionCommands>()->execute(u"throw"_s);
    QCOMPARE(session.events.text, u"The program cannot be stopped at exceptions: no reason\n"_s);
}

void tst_GdbMessages::emulatorThatDoesNotAnswerIsExplained()
{
    QemuMachine::Setup setup;
    setup.program = m_programs.directory() + u"/silent"_s;
    setup.machine = u"board"_s;
    setup.startLimit = 1000;
    QFile script(setup.program);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\nexec sleep 100\n");
    script.close();
    QVERIFY(script.setPermissions(script.permissions() | QFile::ExeUser));
    QemuMachine machine(setup);
    QString error;
    QVERIFY(!machine.start(&error));
    QCOMPARE(error, u"'%1' did not bring up 'board' within 1 s."_s.arg(setup.program));
    QVERIFY(!machine.isRunning());
}

void tst_GdbMessages::endOfAnEmulatorIsExplained()
{
    QemuMachine machine({u"qemu-system-arm"_s, u"mps2-an385"_s, m_firmware, {}, 0, false, {}});
    QString error;
    QVERIFY2(machine.start(&error), qPrintable(error));
    const QString directory = QFileInfo(machine.gdbAddress()).path();
    QVERIFY(QFileInfo(directory).isDir());
    const QSignalSpy died(&machine, &QemuMachine::died);
    ::kill(pid_t(machine.processId()), SIGKILL);
    QTRY_COMPARE(died.size(), 1);
    QCOMPARE(died[0][0].toString(), u"'qemu-system-arm' was ended by a signal."_s);
    QCOMPARE(machine.gdbAddress(), QString()); // its sockets are gone
    QVERIFY(!QFileInfo::exists(directory));
}

void tst_GdbMessages::sensitiveRegisterIsExplained()
{
    LiveSession missing(u"native:%1;svdFile=/no/board.svd"_s.arg(m_native));
    QVERIFY2(missing.events.text.startsWith(u"The device description '/no/board.svd' cannot be read: "_s),
             qPrintable(missing.events.text));
    LiveSession session(u"native:%1;svdFile=%2"_s.arg(m_native, Programs::source(u"board.svd"_s)));
    const QString sensitive = u"The register changes when read, so it is read only on request."_s;
    QStringList explained;
    const auto devices = session.get<IPeripherals>();
    for (const PeripheralInfo &device : devices->peripherals()) {
        for (const PeripheralRegisterInfo &info : device.registers) {
            if (devices->description(device.name, info.name).contains(sensitive))
                explained += info.name;
        }
    }
    QVERIFY(!explained.isEmpty());
    QVERIFY(devices->description(explained.first(), {}).contains(sensitive)); // its name alone
    for (const QString &name : std::as_const(explained))
        QVERIFY2(name.endsWith(u"DATA"_s), qPrintable(name));
}

void tst_GdbMessages::wakeUpOfAProgramOfThisComputerIsExplained()
{
    const FakeGdb gdb;
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    QVERIFY(!session.get<IWakeUp>()->canWakeUp());
    session.env->wakeUp();
    QCOMPARE(session.events.serious, u"'demo' does not support waking up its processor.\n"_s);
}

void tst_GdbMessages::endOfTheSessionAnswersOpenQuestions()
{
    const FakeGdb gdb({{u"-thread-info"_s, {u"SLEEP 0.3"_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    const InterfacePtr<StackReplies> replies(new StackReplies);
    session.get<ICallStack>()->requestThreads({1, 1}, replies.get());
    session.env->stop();
    QCOMPARE(replies->failures, QStringList(u"The debug session has ended."_s));
    session.get<ICallStack>()->requestThreads({2, 1}, replies.get());
    QCOMPARE(replies->failures.last(), u"The program is not paused."_s);
}

QTEST_MAIN(tst_GdbMessages)
#include "tst_gdbmessages.moc"

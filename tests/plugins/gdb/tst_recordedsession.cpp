#include "fakegdb.h"
#include "livesession.h"
#include "mirecord.h"
#include "nativetarget.h"
#include "nativeterminal.h"
#include "remotetarget.h"
#include <optional>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

using Env = IExecutionEnvironment;

/// Sessions in which a program answers instead of gdb, so that each command can be seen.
class tst_RecordedSession : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }
    void placeToRunToIsForgottenAtAnotherStop();
    void placeToRunToIsNotForgottenTwice();
    void runningTargetIsPausedAtTheEnd_data();
    void runningTargetIsPausedAtTheEnd();
    void secondBreakpointAtALineIsTheSame();
    void movedBreakpointIsReportedOnce();
    void refusedBreakpointIsNotMovedByOthers();
    void otherLinesOfGdbAreOutputOfTheProgram();
    void registersAreReadOnceForAStop();
    void targetsWithoutOtherAccessToMemoryAnswer();
    void newSymbolsEndASearchForLines();
    void fileOfSymbolsIsChosenInANamedDialog();
    void endOfTheSessionWhileSymbolsAreChosen();
    void allCoresOfABoardContinue_data();
    void allCoresOfABoardContinue();
    void writtenMemoryIsVerified();
    void unknownMemoryIsShownWhole();
    void breakpointsOfTheProcessorAreCounted();

private:
    Programs m_programs;
    QString m_native;
    QString m_firmware;

    /// The commands that a session has sent since the last call.
    class Commands
    {
    public:
        explicit Commands(const LiveSession &session)
        {
            QObject::connect(session.env->session()->gdb(), &MiConnection::dialogue, &m_context,
                             [this](const QString &line, bool fromUs) {
                                 if (fromUs)
                                     m_lines += line.mid(line.indexOf(u'-'));
                             });
        }
        [[nodiscard]] QStringList take() { return std::exchange(m_lines, {}); }
        [[nodiscard]] QStringList takeFrom(const QString &start)
        {
            return take().filter(QRegularExpression(u'^' + QRegularExpression::escape(start)));
        }

    private:
        QStringList m_lines;
        QObject m_context;
    };

    [[nodiscard]] QString native(const FakeGdb &gdb) const { return u"native:%1;gdb=%2"_s.arg(m_native, gdb.path()); }
    [[nodiscard]] QString remote(const FakeGdb &gdb, const QString &more = {}) const
    {
        return u"remote:host:1;image=%1;gdb=%2"_s.arg(m_firmware, gdb.path()) + more;
    }
};

void tst_RecordedSession::initTestCase()
{
    m_native = m_programs.native(u"demo"_s);
    m_firmware = m_programs.firmware(u"firmware.elf"_s);
    QVERIFY(!m_native.isEmpty() && !m_firmware.isEmpty());
}

void tst_RecordedSession::placeToRunToIsForgottenAtAnotherStop()
{
    const FakeGdb gdb(
        {{u"-break-insert -t --source"_s, {u"TOKEN^done,bkpt={number=\"7\",addr=\"0x1010\"}"_s}},
         {u"-exec-continue"_s,
          FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"breakpoint-hit\",disp=\"keep\",bkptno=\"2\""_s)}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    Commands commands(session);
    session.env->runTo(u"native.c"_s, 30);
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(commands.takeFrom(u"-break-delete"_s), QStringList(u"-break-delete 7"_s));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(commands.takeFrom(u"-break-delete"_s), QStringList());
}

void tst_RecordedSession::placeToRunToIsNotForgottenTwice()
{
    const FakeGdb gdb(
        {{u"-break-insert -t --source"_s, {u"TOKEN^done,bkpt={number=\"7\",addr=\"0x1010\"}"_s}},
         {u"-exec-continue"_s,
          FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"breakpoint-hit\",disp=\"del\",bkptno=\"7\""_s)}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    Commands commands(session);
    session.env->runTo(u"native.c"_s, 30);
    QVERIFY(session.waitFor(Env::ProgramPaused)); // at the place itself, where gdb removes the breakpoint
    QCOMPARE(commands.takeFrom(u"-break-delete"_s), QStringList());
}

void tst_RecordedSession::runningTargetIsPausedAtTheEnd_data()
{
    QTest::addColumn<bool>("running");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("expected");
    const QString pause = u"-exec-interrupt --all"_s;
    QTest::newRow("running, left running") << true << QString() << QStringList{pause, u"-target-detach"_s};
    QTest::newRow("running, left stopped")
        << true << u";leaveRunning=0"_s << QStringList{pause, u"-target-disconnect"_s};
    QTest::newRow("paused, left running") << false << QString() << QStringList{u"-target-detach"_s};
    QTest::newRow("paused, left stopped") << false << u";leaveRunning=0"_s << QStringList{u"-target-disconnect"_s};
}

void tst_RecordedSession::runningTargetIsPausedAtTheEnd()
{
    QFETCH(bool, running);
    QFETCH(QString, option);
    const FakeGdb gdb;
    LiveSession session(remote(gdb, option + u";runTo="_s));
    QVERIFY(session.start());
    if (running) {
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramRunning));
    }
    Commands commands(session);
    session.env->stop();
    QTEST(commands.take().mid(0, running ? 2 : 1), "expected");
}

void tst_RecordedSession::secondBreakpointAtALineIsTheSame()
{
    const FakeGdb gdb; // which puts each breakpoint into line 21
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    const auto breakpoints = session.get<IBreakpoints>();
    const QString file = Programs::source(u"native.c"_s);
    QCOMPARE(breakpoints->setBreakpoint(file, 20, BreakpointEnabled), 0);
    QCOMPARE(session.breakpoints(), u"[x] native.c, 21\n"_s); // it has moved
    Commands commands(session);
    QCOMPARE(breakpoints->setBreakpoint(file, 19, BreakpointDisabled), 0);
    QCOMPARE(session.breakpoints(), u"[ ] native.c, 21\n"_s);
    const QStringList sent = commands.take();
    QVERIFY2(sent.contains(u"-break-delete 2"_s), qPrintable(sent.join(u'\n')));
    QVERIFY2(sent.contains(u"-break-disable 2"_s), qPrintable(sent.join(u'\n')));
    QCOMPARE(breakpoints->setBreakpoint(file, 20, BreakpointRemoved), 0); // by its first line, too
    QCOMPARE(session.breakpoints(), QString());
}

void tst_RecordedSession::movedBreakpointIsReportedOnce()
{
    const QString hit =
        u"=breakpoint-modified,bkpt={number=\"2\",addr=\"0x1010\",fullname=\"%1\",line=\"21\",times=\"1\"}"_s;
    const QString moved = u"=breakpoint-modified,bkpt={number=\"2\",addr=\"0x2020\",fullname=\"%1\",line=\"25\"}"_s;
    const QString file = Programs::source(u"native.c"_s);
    const FakeGdb gdb({{u"-exec-continue"_s, FakeGdb::running() + QStringList{hit.arg(file), moved.arg(file)}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(file, 21, BreakpointEnabled), 0);
    const int before = session.events.breakpointChanges;
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTRY_COMPARE(session.breakpoints(), u"[x] native.c, 25\n"_s);
    QTRY_COMPARE(session.events.breakpointChanges, before + 1); // a hit is no change
}

/// gdb has no number for it. Parts of other breakpoints have numbers such as "1.2".
void tst_RecordedSession::refusedBreakpointIsNotMovedByOthers()
{
    const QString part =
        u"=breakpoint-modified,bkpt={number=\"1.2\",addr=\"0x2020\",fullname=\"/x/other.c\",line=\"25\",times=\"3\"}"_s;
    const FakeGdb gdb({FakeGdb::error(u"-break-insert --source"_s, u"no reason"_s),
                       FakeGdb::error(u"-break-insert -f"_s, u"no reason"_s),
                       {u"-exec-continue"_s, FakeGdb::running() + QStringList{part, u"@\"moved\""_s}}});
    LiveSession session(native(gdb));
    QByteArray output;
    connect(session.env->session(), &GdbSession::output, this, [&output](const QByteArray &bytes) { output += bytes; });
    session.get<IBreakpoints>()->setBreakpoint(u"/x/a.c"_s, 3, BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QTRY_COMPARE(output, QByteArray("moved"));
    QCOMPARE(session.breakpoints(), u"[x] a.c, 3\n"_s);
    BreakpointDetails details;
    QVERIFY(session.get<IBreakpointDetails>()->details(u"/x/a.c"_s, 3, details));
    QCOMPARE(details.hits, 0u);
}

/// A program that was attached to has no terminal of ours, and may write to that of gdb.
void tst_RecordedSession::otherLinesOfGdbAreOutputOfTheProgram()
{
    const FakeGdb gdb({{u"-exec-continue"_s, FakeGdb::running() + QStringList{u"ready = 1"_s}}});
    LiveSession session(native(gdb));
    QByteArray output;
    connect(session.env->session(), &GdbSession::output, this, [&output](const QByteArray &bytes) { output += bytes; });
    QVERIFY(session.start());
    session.env->run();
    QTRY_COMPARE(output, QByteArray("ready = 1\n"));
}

void tst_RecordedSession::registersAreReadOnceForAStop()
{
    const QString table = u"~\" Name Nr Rel Offset Size Type Groups\\n\""_s;
    const QString row = u"~\" r%1 %1 %1 %2 4 int general,all\\n\""_s;
    const FakeGdb gdb(
        {{u"-interpreter-exec console \"maint print register-groups"_s,
          {table, row.arg(0).arg(0), row.arg(1).arg(4), u"TOKEN^done"_s}},
         {u"-data-list-register-values"_s,
          {u"TOKEN^done,register-values=[{number=\"0\",value=\"0x00000011\"},{number=\"1\",value=\"0x00000022\"}]"_s}}});
    LiveSession session(remote(gdb, u";runTo="_s));
    QVERIFY(session.start());
    const auto registers = session.get<IRegisters>();
    Commands commands(session);
    QCOMPARE(registers->value(u"r0"_s, 0), 0x11u);
    QCOMPARE(registers->value(u"r1"_s, 0), 0x22u);
    QCOMPARE(commands.takeFrom(u"-data-list-register-values"_s).size(), 1);
    registers->setValue(u"r1"_s, 5, 0);
    QCOMPARE(commands.takeFrom(u"-data-write-register-values"_s),
             QStringList(u"-data-write-register-values x 1 0x5"_s));
    QCOMPARE(registers->value(u"r0"_s, 0), 0x11u); // the target may have changed others, too
    QCOMPARE(registers->value(u"r1"_s, 0), 0x22u);
    QCOMPARE(commands.takeFrom(u"-data-list-register-values"_s).size(), 1);
}

void tst_RecordedSession::targetsWithoutOtherAccessToMemoryAnswer()
{
    RemoteTarget remote(TargetOptions(), {});
    NativeTarget native(TargetOptions(), {});
    QStringList answers;
    for (Target *target : {static_cast<Target *>(&remote), static_cast<Target *>(&native)}) {
        target->readLater(0x10, 4, [&answers](const QByteArray &bytes) { answers += QString::number(bytes.size()); });
        target->writeLater(0x10, "abcd", [&answers](bool success) { answers += success ? u"yes"_s : u"no"_s; });
    }
    QCOMPARE(answers, (QStringList{u"0"_s, u"no"_s, u"0"_s, u"no"_s}));
}

void tst_RecordedSession::newSymbolsEndASearchForLines()
{
    const FakeGdb gdb({{u"-file-list-exec-source-files"_s, {u"SLEEP 0.2"_s, u"TOKEN^done,files=[]"_s}}});
    LiveSession session(native(gdb));
    QVERIFY(session.start());
    std::optional<bool> found;
    BackgroundTask task;
    task.run([&] {
        uint address = 0;
        found = session.get<ISymbolLookup>()->addressOf(u"/x/a.c"_s, 3, address);
    });
    QVERIFY(!found.has_value());
    session.env->loadSymbols(u"/x/boot.elf"_s);
    QTRY_VERIFY(found.has_value());
    QVERIFY(!*found);
}

void tst_RecordedSession::fileOfSymbolsIsChosenInANamedDialog()
{
    const FakeGdb gdb;
    LiveSession session(native(gdb));
    session.env->execute(u"log"_s);
    QVERIFY(session.start());
    QWidget window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QString name;
    QWidget *parent = nullptr;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        name = dialog->objectName();
        parent = dialog->parentWidget();
        dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(m_native);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    session.env->execute(u"loadSymbols"_s);
    QCOMPARE(name, u"loadSymbolsDialog"_s);
    QCOMPARE(parent, &window);
    QVERIFY2(session.events.text.contains(u"add-symbol-file"_s), qPrintable(session.events.text));
}

void tst_RecordedSession::endOfTheSessionWhileSymbolsAreChosen()
{
    const FakeGdb gdb;
    LiveSession session(native(gdb));
    session.env->execute(u"log"_s);
    QVERIFY(session.start());
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        session.env->stop();
        dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(m_native);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    session.env->execute(u"loadSymbols"_s);
    QVERIFY2(!session.events.text.contains(u"add-symbol-file"_s), qPrintable(session.events.text));
    QCOMPARE(session.events.serious, QString());
}

void tst_RecordedSession::allCoresOfABoardContinue_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("command");
    QTest::newRow("one core") << u"qemu:mps2-an385"_s << u"-exec-continue"_s;
    QTest::newRow("two cores") << u"qemu:mps2-an521;secondImage="_s + m_firmware << u"-exec-continue --all"_s;
}

void tst_RecordedSession::allCoresOfABoardContinue()
{
    QFETCH(QString, target);
    QFETCH(QString, command);
    const FakeGdb gdb(
        {{u"-exec-continue"_s,
          FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"breakpoint-hit\",disp=\"del\",bkptno=\"1\""_s)}}});
    LiveSession session(target + u";catchFaults=0;image=%1;gdb=%2"_s.arg(m_firmware, gdb.path()));
    Commands commands(session);
    QVERIFY(session.start());
    QCOMPARE(commands.takeFrom(u"-exec-continue"_s), QStringList(command));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(commands.takeFrom(u"-exec-continue"_s), QStringList(command));
}

void tst_RecordedSession::writtenMemoryIsVerified()
{
    const FakeGdb gdb({{u"-data-read-memory-bytes"_s,
                        {u"TOKEN^done,memory=[{begin=\"0x0000000000000010\",offset=\"0x0\",end=\"0x0000000000000012\","
                         "contents=\"3412\"}]"_s}}});
    LiveSession session(remote(gdb, u";runTo=;regions=RAM:0:1K:ram"_s));
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    QCOMPARE(memory->write(0, IMemory::Word16, 0x10, 0x9999, true), int(IMemory::Success)); // not verified
    queryInterface<IMemoryVerify>(memory.get())->setVerify(true);
    QCOMPARE(memory->write(0, IMemory::Word16, 0x10, 0x1234, true), int(IMemory::Success));
    QCOMPARE(memory->write(0, IMemory::Word16, 0x10, 0x9999, true), int(IMemory::NoMemory));
}

void tst_RecordedSession::unknownMemoryIsShownWhole()
{
    const FakeGdb gdb;
    LiveSession session(remote(gdb, u";runTo="_s));
    QVERIFY(session.start());
    QStringList names;
    for (const MemoryRegion &region : session.get<IMemory>()->regions())
        names += region.name;
    names.sort(); // the region of the code, where the program is paused, comes first
    QCOMPARE(names, (QStringList{u"Memory below 0x80000000"_s, u"Memory from 0x80000000"_s, u"Program"_s}));
}

void tst_RecordedSession::breakpointsOfTheProcessorAreCounted()
{
    const auto word = [](const char *address, const char *bytes) {
        return QStringList{u"TOKEN^done,memory=[{begin=\"%1\",offset=\"0x0\",end=\"%1\",contents=\"%2\"}]"_s.arg(
            QLatin1String(address), QLatin1String(bytes))};
    };
    const FakeGdb gdb(
        {{u"-data-read-memory-bytes 0xe0002000"_s, word("0xe0002000", "60020010")},
         {u"-data-read-memory-bytes 0xe0001000"_s, word("0xe0001000", "01000040")},
         {u"-break-insert --source \"/x/ram.c"_s, {u"TOKEN^done,bkpt={number=\"5\",addr=\"0x20000010\"}"_s}},
         {u"-break-insert"_s, {u"TOKEN^done,bkpt={number=\"6\",addr=\"0x80\"}"_s}}});
    LiveSession session(remote(gdb, u";runTo="_s));
    const auto details = session.get<IBreakpointDetails>();
    QCOMPARE(details->limits().hardware, -1);
    QVERIFY(session.start());
    const auto breakpoints = session.get<IBreakpoints>();
    QCOMPARE(breakpoints->setBreakpoint(u"/x/ram.c"_s, 3, BreakpointEnabled), 0); // an instruction there
    QCOMPARE(details->limits().hardwareUsed, 0);
    QCOMPARE(breakpoints->setBreakpoint(u"/x/flash.c"_s, 3, BreakpointEnabled), 0);
    QCOMPARE(details->limits().hardware, 6);
    QCOMPARE(details->limits().hardwareUsed, 1);
    QCOMPARE(details->limits().data, 4);
    QCOMPARE(breakpoints->setBreakpoint(u"/x/flash.c"_s, 3, BreakpointDisabled), 0);
    QCOMPARE(details->limits().hardwareUsed, 0);
}

QTEST_MAIN(tst_RecordedSession)
#include "tst_recordedsession.moc"

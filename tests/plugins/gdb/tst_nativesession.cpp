#include "livesession.h"
#include <csignal>

using Env = IExecutionEnvironment;

/// Sessions with native programs.
class tst_NativeSession : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void sessionStartsAtMain();
    void emptyRunToStartsAtTheFirstInstruction();
    void stepOverAndStepIntoStopAtTheNextLine();
    void stepOutStopsInTheCaller();
    void runToCursorStopsThere();
    void breakpointSetBeforeTheSessionIsHit();
    void breakpointOnLineWithoutCodeMovesToTheNextLine();
    void disabledBreakpointDoesNotStop();
    void breakpointSetWhileRunningIsHit();
    void endlessLoopCanBePaused();
    void breakpointSetDuringAPauseLeavesTheProgramPaused();
    void pauseOfAPausedProgramHasNoEffect();
    void expressionsAreEvaluatedAndAssigned();
    void valuesAreShownInTheFormatBehindTheExpression();
    void exitCodeIsReported();
    void crashPausesWithItsSignal();
    void restartWorksTenTimes();
    void breakpointThatCannotBeInsertedLeavesTheProgramPaused();
    void tooManyHardwareBreakpointsLeaveTheProgramPaused();
    void restartWithAnOverwrittenProgramEndsAsFinished();
    void restartOfAnAttachedProgramIsRefused();
    void outputBeforeMainDoesNotBlockTheStart();
    void environmentAndEndOfInputReachTheProgram();
    void nextStatementCanBeMoved();
    void projectOpenedThroughALinkKeepsItsPaths();
    void attachedProgramContinuesAfterStop();
    void programHasItsOwnTerminal();
    void symbolsAndLinesAreFound();
    void linesOfAProgramBehindALinkAreFound();
    void symbolsAndLinesHaveWholeAddresses();
    void functionsOfClassesAreFound();
    void registersAreReadAndWritten();
    void memoryIsReadAndWrittenWhileRunning();
    void disassemblyShowsInstructionsAndLines();
    void pauseInALibraryShowsItsInstructions();
    void killedGdbWhilePausedIsReportedAndRestartWorks();
    void killedGdbWhileRunningEndsTheProgram();
    void programWithoutDebugInformationShowsDisassembly();
    void missingProgramIsReported();
    void missingGdbIsReported();
    void programThatIsNotGdbIsReported();
    void movedSourceIsFoundInTheSourceDirectories();
    void missingSourceShowsDisassembly();
    void releaseDuringASessionReleasesAllReferences();

private:
    Programs m_programs;
    QString m_image;
    QString option(const QString &more = {}) const { return u"native:"_s + m_image + more; }
};

void tst_NativeSession::initTestCase()
{
    m_image = m_programs.native(u"demo"_s);
    QVERIFY(!m_image.isEmpty());
}

void tst_NativeSession::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

void tst_NativeSession::cleanup()
{
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_NativeSession::sessionStartsAtMain()
{
    LiveSession session(option());
    QVERIFY(session.initialised);
    QVERIFY(session.start());
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"int sum = 0"_s)));
    QCOMPARE(session.env->programStatus(), Env::ProgramPaused);
    QCOMPARE(session.events.serious, QString());
    session.env->stop();
    QCOMPARE(session.env->programStatus(), Env::ProgramUnknown);
    QCOMPARE(session.location(), QString());
}

void tst_NativeSession::emptyRunToStartsAtTheFirstInstruction()
{
    LiveSession session(option(u";runTo="_s));
    QVERIFY(session.start());
    QVERIFY2(session.location().startsWith(u"disassembler:, "_s), qPrintable(session.location()));
}

void tst_NativeSession::stepOverAndStepIntoStopAtTheNextLine()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int call = Programs::lineOf(u"native.c"_s, u"sum + twice"_s);
    session.env->runTo(Programs::source(u"native.c"_s), call);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(call));
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(call - 1));
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->stepInto(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"int result"_s)));
}

void tst_NativeSession::stepOutStopsInTheCaller()
{
    LiveSession session(option());
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s),
                                               Programs::lineOf(u"native.c"_s, u"int result"_s), BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    session.env->execute(u"stepOut"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"sum + twice"_s)));
}

void tst_NativeSession::runToCursorStopsThere()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int line = Programs::lineOf(u"native.c"_s, u"origin.x = sum"_s);
    session.env->runTo(Programs::source(u"native.c"_s), line);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(line));
    QCOMPARE(session.breakpoints(), QString());
}

void tst_NativeSession::breakpointSetBeforeTheSessionIsHit()
{
    LiveSession session(option());
    const int line = Programs::lineOf(u"native.c"_s, u"return result"_s);
    const auto breakpoints = session.get<IBreakpoints>();
    QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointEnabled), 0);
    QCOMPARE(session.breakpoints(), u"[x] native.c, %1\n"_s.arg(line));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(line));
    const QList<BreakpointLocation> places = breakpoints->breakpoints().first().locations;
    QCOMPARE(places.size(), 2); // also its line in the disassembly
    QCOMPARE(places.last().file, u"disassembler:"_s);
    session.env->stop();
    QCOMPARE(session.breakpoints(), u"[x] native.c, %1\n"_s.arg(line));
}

void tst_NativeSession::breakpointOnLineWithoutCodeMovesToTheNextLine()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto breakpoints = session.get<IBreakpoints>();
    const int brace = Programs::lineOf(u"native.c"_s, u"int twice"_s) + 1;
    QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"native.c"_s), brace - 2, BreakpointEnabled), 0);
    const QString moved = session.breakpoints();
    QVERIFY2(!moved.contains(QString::number(brace - 2)), qPrintable(moved));
    QCOMPARE(breakpoints->setBreakpoint(Programs::source(u"native.c"_s), brace - 2, BreakpointRemoved), 0);
    QCOMPARE(session.breakpoints(), QString());
    QVERIFY(breakpoints->setBreakpoint(u"/nowhere/other.c"_s, 3, BreakpointEnabled) != 0);
    QVERIFY2(session.events.text.contains(u"No breakpoint can be set at /nowhere/other.c, 3"_s),
             qPrintable(session.events.text));
}

void tst_NativeSession::disabledBreakpointDoesNotStop()
{
    LiveSession session(option());
    const auto breakpoints = session.get<IBreakpoints>();
    const QString file = Programs::source(u"native.c"_s);
    const int first = Programs::lineOf(u"native.c"_s, u"int result"_s);
    const int second = Programs::lineOf(u"native.c"_s, u"origin.x = sum"_s);
    breakpoints->setBreakpoint(file, first, BreakpointDisabled);
    QVERIFY(session.start());
    breakpoints->setBreakpoint(file, second, BreakpointEnabled);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(second));
    QCOMPARE(session.breakpoints(), u"[ ] native.c, %1\n[x] native.c, %2\n"_s.arg(first).arg(second));
}

void tst_NativeSession::breakpointSetWhileRunningIsHit()
{
    LiveSession session(option(u";arguments=spin"_s));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    const int line = Programs::lineOf(u"native.c"_s, u"loops = loops + 1"_s);
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointEnabled), 0);
    QVERIFY(!session.events.statuses.contains(Env::ProgramPaused));
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(line));
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointRemoved);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line + 20, BreakpointDisabled),
             0);
    QVERIFY(session.waitFor(Env::ProgramRunning)); // it continues
    QCOMPARE(session.env->programStatus(), Env::ProgramRunning);
}

void tst_NativeSession::endlessLoopCanBePaused()
{
    LiveSession session(option(u";arguments=spin"_s));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTRY_VERIFY(session.evaluate(u"loops"_s).toInt() > 0);
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY2(session.location().startsWith(u"native.c, "_s), qPrintable(session.location()));
}

void tst_NativeSession::breakpointSetDuringAPauseLeavesTheProgramPaused()
{
    LiveSession session(option(u";arguments=spin"_s));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTRY_VERIFY(session.evaluate(u"loops"_s).toInt() > 0);
    session.env->pause();
    const int line = Programs::lineOf(u"native.c"_s, u"return result"_s);
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointEnabled), 0);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.env->programStatus(), Env::ProgramPaused);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTest::qWait(0);
    QCOMPARE(session.env->programStatus(), Env::ProgramRunning); // no second signal stops it
}

void tst_NativeSession::pauseOfAPausedProgramHasNoEffect()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->pause();
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"sum"_s), u"0"_s);
}

void tst_NativeSession::expressionsAreEvaluatedAndAssigned()
{
    LiveSession session(option());
    QCOMPARE(session.evaluate(u"origin"_s), u"error: no program is being debugged"_s);
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"origin"_s), u"{x = 3, y = 4}"_s);
    QCOMPARE(session.evaluate(u"origin.y=9"_s), u"9"_s);
    QCOMPARE(session.evaluate(u"origin.y * 2"_s), u"18"_s);
    QCOMPARE(session.evaluate(u"nothing"_s), u"error: No symbol \"nothing\" in current context."_s);
}

void tst_NativeSession::valuesAreShownInTheFormatBehindTheExpression()
{
    LiveSession session(option());
    QCOMPARE(session.evaluate(u"origin.x,x"_s), u"error: no program is being debugged"_s);
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"origin.x = 65"_s), u"65"_s);
    QStringList values;
    for (const QChar format : u"xduotc"_s)
        values += session.evaluate(u"origin.x,"_s + format);
    QCOMPARE(values.join(u' '), u"0x41 65 65 0101 1000001 65 'A'"_s);
    QVERIFY(session.evaluate(u"arguments[0] , s"_s).endsWith(u"/demo\""_s));
    QCOMPARE(session.evaluate(u"origin,x"_s), u"{x = 0x41, y = 0x4}"_s);
    QCOMPARE(session.evaluate(u"origin.x +\n1,x"_s), u"0x42"_s);
    QCOMPARE(session.evaluate(u"nothing,x"_s), u"error: No symbol \"nothing\" in current context."_s);
    QCOMPARE(session.evaluate(u"twice(2,x"_s).section(u':', 0, 0), u"error"_s);
}

void tst_NativeSession::exitCodeIsReported()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QVERIFY2(session.events.text.contains(u"The program ended with code 7."_s), qPrintable(session.events.text));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"int sum = 0"_s)));
}

void tst_NativeSession::crashPausesWithItsSignal()
{
    LiveSession session(option(u";arguments=crash"_s));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY2(session.events.text.contains(u"SIGSEGV"_s), qPrintable(session.events.text));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"*(volatile int *)0"_s)));
}

void tst_NativeSession::restartWorksTenTimes()
{
    LiveSession session(option());
    const int line = Programs::lineOf(u"native.c"_s, u"return result"_s);
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointEnabled);
    QVERIFY(session.start());
    for (int round = 0; round < 10; ++round) {
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        QCOMPARE(session.location(), u"native.c, %1"_s.arg(line));
        QCOMPARE(session.evaluate(u"value"_s), u"0"_s);
        session.env->restart();
        QVERIFY(session.waitFor(Env::ProgramPaused));
    }
    QCOMPARE(session.events.serious, QString());
}

void tst_NativeSession::breakpointThatCannotBeInsertedLeavesTheProgramPaused()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto breakpoints = session.get<IBreakpoints>();
    QCOMPARE(breakpoints->setBreakpoint(u"disassembler:"_s, 2, BreakpointEnabled), 0); // no memory there
    const QString before = session.location();
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY2(session.events.serious.contains(u"The program cannot continue: "_s)
                 && session.events.serious.contains(u"Cannot insert breakpoint"_s),
             qPrintable(session.events.serious));
    QCOMPARE(session.location(), before);
    QCOMPARE(breakpoints->setBreakpoint(u"disassembler:"_s, 2, BreakpointRemoved), 0);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
}

void tst_NativeSession::tooManyHardwareBreakpointsLeaveTheProgramPaused()
{
    LiveSession session(option());
    QVERIFY(session.start());
    for (int i = 0; i < 5; ++i) // a processor of a PC has four
        QVERIFY(session.env->session()->gdb()->ask("-break-insert -h *main+" + QByteArray::number(i)).isDone());
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY2(session.events.serious.contains(u"too many hardware breakpoints"_s), qPrintable(session.events.serious));
    QVERIFY(session.env->session()->gdb()->ask("-break-delete").isDone());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramFinished));
}

void tst_NativeSession::restartWithAnOverwrittenProgramEndsAsFinished()
{
    const QString image = m_programs.native(u"overwritten"_s);
    LiveSession session(u"native:"_s + image);
    QVERIFY(session.start());
    QVERIFY(QFile::remove(image));
    QFile file(image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no program\n");
    file.close();
    QVERIFY(file.setPermissions(file.permissions() | QFile::ExeUser));
    session.events.statuses.clear();
    session.env->restart();
    QVERIFY(!session.events.statuses.isEmpty()); // the host sets the state to paused after the call otherwise
    QVERIFY(session.waitFor({Env::ProgramFinished, Env::ProgramUnknown}));
    QVERIFY2(!session.events.serious.isEmpty(), qPrintable(session.events.text));
}

void tst_NativeSession::restartOfAnAttachedProgramIsRefused()
{
    QProcess program;
    program.start(m_image, {u"spin"_s});
    QVERIFY(program.waitForReadyRead());
    LiveSession session(option(u";processId="_s + QString::number(program.processId())));
    QVERIFY(session.start(true));
    const QString before = session.location();
    session.env->restart();
    QCOMPARE(session.events.serious, u"A program that was attached to cannot be started again.\n"_s);
    QCOMPARE(session.env->programStatus(), Env::ProgramPaused);
    QCOMPARE(session.location(), before);
    QVERIFY(session.evaluate(u"loops"_s).toInt() > 0);
    session.env->stop();
    QCOMPARE(program.state(), QProcess::Running);
    program.kill();
    QVERIFY(program.waitForFinished());
}

void tst_NativeSession::outputBeforeMainDoesNotBlockTheStart()
{
    LiveSession session(option(u";environment=FILL=20000"_s));
    qsizetype written = 0;
    connect(session.env->session(), &GdbSession::output, this,
            [&written](const QByteArray &bytes) { written += bytes.size(); });
    QVERIFY(session.start());
    QCOMPARE(session.events.text, QString()); // no time limit was exceeded
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(Programs::lineOf(u"native.c"_s, u"int sum = 0"_s)));
    QVERIFY2(written > 65536, qPrintable(QString::number(written)));
}

void tst_NativeSession::environmentAndEndOfInputReachTheProgram()
{
    qputenv("GREETING", "inherited");
    const auto outputOf = [this](const QString &environment) {
        LiveSession session(option(u";arguments=read"_s), {{u"gdbEnvironment"_s, environment}});
        QByteArray output;
        connect(session.env->session(), &GdbSession::output, this,
                [&output](const QByteArray &bytes) { output += bytes; });
        if (!session.start())
            return QByteArray("not started");
        session.env->run();
        session.env->session()->target()->writeInput("abc\n");
        session.env->session()->target()->writeInput("\x04");
        return session.waitFor(Env::ProgramFinished) ? output : QByteArray("not finished");
    };
    QCOMPARE(outputOf(u"OTHER=1;GREETING=a = \"b\" %1"_s), QByteArray("ready\n4 letters, a = \"b\" %1\n"));
    QCOMPARE(outputOf({}), QByteArray("ready\n4 letters, inherited\n"));
    QCOMPARE(outputOf(u"GREETING"_s), QByteArray("ready\n4 letters, none\n"));
    qunsetenv("GREETING");
}

void tst_NativeSession::nextStatementCanBeMoved()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int target = Programs::lineOf(u"native.c"_s, u"origin.x = sum"_s);
    const auto mover = session.get<INextStatement>();
    QVERIFY(mover);
    QVERIFY(mover->setNextStatement(u"native.c"_s, target));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(target));
    QVERIFY(!mover->setNextStatement(u"native.c"_s, 1)); // no code
    QVERIFY2(session.events.serious.contains(u"has no code"_s), qPrintable(session.events.serious));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(target));
    QVERIFY(mover->setNextStatement(u"disassembler:"_s, int(uint(session.env->session()->frame().address) + 1)));
    session.env->stop();
    QVERIFY(!mover->setNextStatement(u"native.c"_s, target));
    QVERIFY2(session.events.serious.contains(u"is not paused"_s), qPrintable(session.events.serious));
}

void tst_NativeSession::projectOpenedThroughALinkKeepsItsPaths()
{
    const QString link = m_programs.directory() + u"/link %2"_s; // a name with a place marker
    QVERIFY(QFile::link(QStringLiteral(PROGRAM_DIRECTORY), link));
    LiveSession session(option());
    session.project.path = link;
    QVERIFY(session.env->initialise(&session.project, &session.events, option()));
    const int line = Programs::lineOf(u"native.c"_s, u"return result"_s);
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(link + u"/native.c"_s, line, BreakpointEnabled), 0);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(line)); // relative to the link
    QCOMPARE(session.get<IBreakpoints>()->breakpoints().first().locations.first().file, link + u"/native.c"_s);
    const int target = Programs::lineOf(u"native.c"_s, u"origin.x = sum"_s);
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(link + u"/native.c"_s, line, BreakpointRemoved), 0);
    session.env->runTo(link + u"/native.c"_s, target);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(target));
}

void tst_NativeSession::attachedProgramContinuesAfterStop()
{
    QProcess program;
    program.start(m_image, {u"spin"_s});
    QVERIFY(program.waitForReadyRead());
    LiveSession session(option(u";processId="_s + QString::number(program.processId())));
    QVERIFY(session.env->canAttach());
    QVERIFY(session.start(true));
    QVERIFY2(session.location().startsWith(u"native.c, "_s), qPrintable(session.location()));
    QVERIFY(session.evaluate(u"loops"_s).toInt() > 0);
    session.env->stop();
    QCOMPARE(program.state(), QProcess::Running); // it continues
    QVERIFY(!program.waitForFinished(0));
    program.kill();
    QVERIFY(program.waitForFinished());
}

void tst_NativeSession::programHasItsOwnTerminal()
{
    LiveSession session(option(u";arguments=echo"_s));
    QByteArray output;
    connect(session.env->session(), &GdbSession::output, this, [&output](const QByteArray &bytes) { output += bytes; });
    QVERIFY(session.start());
    session.env->run();
    QTRY_COMPARE(output, QByteArray("ready\n"));
    session.env->session()->target()->writeInput("hello\n");
    QVERIFY(session.waitFor(Env::ProgramFinished));
    QTRY_COMPARE(output, QByteArray("ready\ngot hello\n"));
}

void tst_NativeSession::functionsOfClassesAreFound()
{
    LiveSession session(u"native:"_s + m_programs.tree(u"tree"_s));
    QVERIFY(session.start());
    const auto mapping = session.get<ISourceMapping>();
    uint address = 0;
    QVERIFY(!mapping->symbolAddress(u"Shape::nothing"_s, address));
    QVERIFY(!mapping->symbolAddress(u"Nothing::sum"_s, address));
    QVERIFY(!mapping->symbolAddress(u"Shape::sum'"_s, address));
    QVERIFY(mapping->symbolAddress(u"Shape::sum"_s, address));
    QString file;
    int line = 0;
    QVERIFY(mapping->sourceLocation(address, 1, file, line));
    QCOMPARE(file, Programs::source(u"tree.cpp"_s));
    QCOMPARE(line, Programs::lineOf(u"tree.cpp"_s, u"int sum() const"_s));
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(file, line, BreakpointEnabled), 0);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.env->session()->frame().function, u"Shape::sum"_s);
    QCOMPARE(session.evaluate(u"this->hidden"_s), u"11"_s); // behind the entry code
}

void tst_NativeSession::symbolsAndLinesAreFound()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto mapping = session.get<ISourceMapping>();
    const auto lookup = session.get<ISymbolLookup>();
    uint address = 0;
    QVERIFY(mapping->symbolAddress(u"twice"_s, address));
    QVERIFY(!mapping->symbolAddress(u"nothing"_s, address));
    QVERIFY(mapping->symbolAddress(u"twice"_s, address));
    QString file;
    int line = 0;
    QVERIFY(mapping->sourceLocation(address, 0, file, line));
    QCOMPARE(file, Programs::source(u"native.c"_s));
    QCOMPARE(line, Programs::lineOf(u"native.c"_s, u"int twice"_s) + 1);
    QString name;
    QVERIFY(lookup->symbolAt(address + 4, 0, name));
    QCOMPARE(name, u"twice + 4"_s);
    uint lineAddress = 0;
    QVERIFY(lookup->addressOf(file, line, lineAddress));
    QCOMPARE(lineAddress, address);
    QVERIFY(!lookup->addressOf(file, 1, lineAddress));
}

/// gdb names a program by its real path.
void tst_NativeSession::linesOfAProgramBehindALinkAreFound()
{
    const QString link = m_programs.directory() + u"/latest"_s;
    QVERIFY(QFile::link(m_image, link));
    LiveSession session(u"native:"_s + link);
    QVERIFY(session.start());
    uint address = 0;
    QVERIFY(session.get<ISymbolLookup>()->addressOf(Programs::source(u"native.c"_s),
                                                    Programs::lineOf(u"native.c"_s, u"return result"_s), address));
    QVERIFY(address != 0);
}

/// A position-independent program is loaded above the addresses of 32 bits.
void tst_NativeSession::symbolsAndLinesHaveWholeAddresses()
{
    LiveSession session(option());
    const auto symbols = session.get<ISymbols64>();
    QVERIFY(symbols);
    quint64 address = 1;
    QString file;
    int line = 0;
    QString name = u"old"_s;
    QVERIFY(!symbols->symbolAddress(u"twice"_s, address)); // there is no session
    QVERIFY(!symbols->symbolAt(0, 0, name));
    QVERIFY(session.start());
    QVERIFY(symbols->symbolAddress(u"twice"_s, address));
    QVERIFY(address > 0xffffffff);
    QCOMPARE(session.evaluate(u"(unsigned long)&twice"_s), QString::number(address));
    for (const quint64 each : {address, address & 0xffffffff}) { // the disassembly has the second one
        QVERIFY(symbols->sourceLocation(each, 1, file, line));
        QCOMPARE(file, Programs::source(u"native.c"_s));
        QCOMPARE(line, Programs::lineOf(u"native.c"_s, u"int twice"_s) + 1);
        QVERIFY(symbols->symbolAt(each + 4, 0, name));
        QCOMPARE(name, u"twice + 4"_s);
    }
    quint64 ofLine = 0;
    QVERIFY(symbols->addressOf(file, line, ofLine));
    QCOMPARE(ofLine, address);
    QVERIFY(!symbols->addressOf(file, 1, ofLine));
    QVERIFY(!symbols->symbolAddress(u"nothing"_s, address));
    QVERIFY(!symbols->sourceLocation(~quint64(0) - 8, 1, file, line));
    QVERIFY(!symbols->symbolAt(~quint64(0) - 8, 0, name));
    QCOMPARE(name, u"twice + 4"_s);
}

void tst_NativeSession::registersAreReadAndWritten()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto registers = session.get<IRegisters>();
    QStringList names;
    for (const RegisterInfo &info : registers->registers())
        names.append(info.name);
    QVERIFY(names.contains(u"rip"_s) && names.contains(u"xmm3"_s) && !names.contains(u"al"_s)
            && !names.contains(u"zmm1"_s));
    const quint64 pc = registers->value(u"rip"_s, 0) | quint64(registers->value(u"rip"_s, 1)) << 32;
    QCOMPARE(pc, session.env->session()->frame().address);
    QCOMPARE(registers->value(u"rip"_s, 2), 0u);
    registers->setValue(u"rbx"_s, 0x11223344, 0);
    registers->setValue(u"rbx"_s, 0x55667788, 1);
    QCOMPARE(session.evaluate(u"$rbx"_s), QString::number(0x5566778811223344));
}

void tst_NativeSession::memoryIsReadAndWrittenWhileRunning()
{
    LiveSession session(option(u";arguments=spin"_s));
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"origin"_s, address));
    int region = -1;
    for (const MemoryRegion &candidate : memory->regions()) {
        if (candidate.name.startsWith(u"demo"_s) && address >= candidate.lowAddress && address <= candidate.highAddress)
            region = candidate.id;
    }
    QVERIFY(region >= 0);
    uint value = 0;
    QCOMPARE(memory->read(region, IMemory::Word32, address, &value), int(IMemory::Success));
    QCOMPARE(value, 3u);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTRY_COMPARE((memory->read(region, IMemory::Word32, address, &value), value), 12u);
    QCOMPARE(memory->write(region, IMemory::Word16, address, 0x1234, true), int(IMemory::Success));
    QCOMPARE(memory->read(region, IMemory::Word24, address, &value), int(IMemory::Success));
    QCOMPARE(value, 0x1234u);
}

void tst_NativeSession::disassemblyShowsInstructionsAndLines()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    const auto lines = session.get<IDisassemblyAddress>();
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"twice"_s, address));
    const int index = int(address - memory->regions().first().lowAddress);
    QVERIFY2(lines->text(index).contains(u"twice"_s), qPrintable(lines->text(index)));
    QVERIFY(lines->text(index + 2).isNull()); // inside an instruction of four bytes
    QCOMPARE(lines->sourceLines(index).size(), 1);
    QVERIFY(lines->sourceLines(index).first().contains(u"{"_s));
    QVERIFY(!session.get<IDisassembly>()->disassemble(address, memory->regions().first().id).isEmpty());
}

void tst_NativeSession::pauseInALibraryShowsItsInstructions()
{
    LiveSession session(u"native:"_s + m_programs.native(u"shared"_s, {u"-g"_s}) + u";arguments=read"_s);
    QVERIFY(session.start());
    const auto memory = session.get<IMemory>();
    const MemoryRegion program = memory->regions().first();
    QVERIFY2(program.name.startsWith(u"shared 0x"_s), qPrintable(program.name));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QTRY_VERIFY(session.evaluate(u"origin.x"_s) == u"12"_s); // it reads its input next
    session.env->pause();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QString file;
    int line = 0;
    QVERIFY(session.env->currentLocation(file, line));
    QCOMPARE(file, u"disassembler:"_s);
    const MemoryRegion library = memory->regions().first();
    QVERIFY2(!library.name.startsWith(u"shared 0x"_s), qPrintable(library.name));
    const uint address = uint(line) - 1;
    QVERIFY(address >= library.lowAddress && address <= library.highAddress);
    QVERIFY(!session.get<IDisassemblyAddress>()->text(int(address - library.lowAddress)).isEmpty());
    const QList<MemoryRegion> regions = memory->regions();
    const auto sameId = [&](const MemoryRegion &region) { return region.id == program.id; };
    QCOMPARE(std::ranges::find_if(regions, sameId)->name, program.name);
    const auto lines = session.get<IDisassemblyAddress>();
    int next = int(address - library.lowAddress) + 1; // the instruction after the one where the program is
    while (next < int(library.highAddress - library.lowAddress) && lines->text(next).isEmpty())
        ++next;
    line = int(library.lowAddress) + next + 1;
    QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(file, line, BreakpointEnabled), 0);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    session.env->session()->target()->writeInput("abc\n");
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit)); // it was set in the library, not in the program
    QCOMPARE(session.location(), u"disassembler:, %1"_s.arg(line));
}

void tst_NativeSession::killedGdbWhilePausedIsReportedAndRestartWorks()
{
    LiveSession session(option());
    QVERIFY(session.start());
    ::kill(pid_t(session.env->session()->gdb()->processId()), SIGKILL);
    QVERIFY(session.waitFor(Env::ProgramUnknown));
    QVERIFY2(session.events.serious.contains(u"gdb has ended unexpectedly."_s), qPrintable(session.events.serious));
    QVERIFY(session.evaluate(u"1"_s).startsWith(u"error"_s));
    session.env->restart();
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"origin.x"_s), u"3"_s);
}

void tst_NativeSession::killedGdbWhileRunningEndsTheProgram()
{
    LiveSession session(option(u";arguments=spin"_s));
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    ::kill(pid_t(session.env->session()->gdb()->processId()), SIGKILL);
    QVERIFY(session.waitFor(Env::ProgramUnknown));
    session.env->pause();
    session.env->run();
    session.env->stop();
    QTRY_COMPARE(ownChildren(), QStringList());
}

void tst_NativeSession::programWithoutDebugInformationShowsDisassembly()
{
    const QString image = m_programs.native(u"bare"_s, {u"-s"_s});
    LiveSession session(u"native:"_s + image + u";runTo="_s);
    QVERIFY(session.start());
    QCOMPARE(session.events.text, u"'%1' has no debug information: there are no source lines and no variables. "
                                  "Compile with -g.\n"_s.arg(image));
    QVERIFY(session.location().startsWith(u"disassembler:"_s));
    session.env->stepOver(u"native.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
}

void tst_NativeSession::missingProgramIsReported()
{
    LiveSession session(u"native:/nowhere/demo"_s);
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious, u"'/nowhere/demo' is not a program that can be debugged.\n"_s);
}

void tst_NativeSession::missingGdbIsReported()
{
    LiveSession session(option(u";gdb=/nowhere/gdb"_s));
    QVERIFY(!session.env->start(false));
    QVERIFY2(session.events.serious.startsWith(u"Cannot run '/nowhere/gdb': "_s), qPrintable(session.events.serious));
}

void tst_NativeSession::programThatIsNotGdbIsReported()
{
    LiveSession session(option(u";gdb=true"_s));
    QVERIFY(!session.env->start(false));
    QCOMPARE(session.events.serious, u"'true' does not answer like gdb.\n"_s);
}

void tst_NativeSession::movedSourceIsFoundInTheSourceDirectories()
{
    QTemporaryDir old;
    QVERIFY(QFile::copy(Programs::source(u"native.c"_s), old.filePath(u"native.c"_s)));
    const QString image = old.filePath(u"demo"_s);
    QCOMPARE(QProcess::execute(u"gcc"_s, {u"-g"_s, old.filePath(u"native.c"_s), u"-o"_s, image}), 0);
    QVERIFY(QFile::remove(old.filePath(u"native.c"_s)));
    LiveSession session(u"native:"_s + image, {{u"gdbSourceDirectories"_s, QStringLiteral(PROGRAM_DIRECTORY)}});
    const int line = Programs::lineOf(u"native.c"_s, u"return result"_s);
    session.get<IBreakpoints>()->setBreakpoint(Programs::source(u"native.c"_s), line, BreakpointEnabled);
    QVERIFY(session.start());
    QVERIFY2(session.location().startsWith(u"native.c, "_s), qPrintable(session.location()));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.location(), u"native.c, %1"_s.arg(line));
    QCOMPARE(session.breakpoints(), u"[x] native.c, %1\n"_s.arg(line));
}

void tst_NativeSession::missingSourceShowsDisassembly()
{
    QTemporaryDir old;
    QVERIFY(QFile::copy(Programs::source(u"native.c"_s), old.filePath(u"lost.c"_s)));
    const QString image = old.filePath(u"demo"_s);
    QCOMPARE(QProcess::execute(u"gcc"_s, {u"-g"_s, old.filePath(u"lost.c"_s), u"-o"_s, image}), 0);
    QVERIFY(QFile::remove(old.filePath(u"lost.c"_s)));
    LiveSession session(u"native:"_s + image);
    QVERIFY(session.start());
    QVERIFY2(session.location().startsWith(u"disassembler:, "_s), qPrintable(session.location()));
    QCOMPARE(session.location(), session.location());
    QCOMPARE(session.events.text,
             u"The source file '%1' does not exist; the disassembly is shown instead. To find it elsewhere, set the "
             "project property \"Source directories\".\n"_s.arg(old.filePath(u"lost.c"_s)));
}

void tst_NativeSession::releaseDuringASessionReleasesAllReferences()
{
    LiveSession session(option());
    QVERIFY(session.start());
    {
        const auto memory = session.get<IMemory>();
        QCOMPARE(session.get<IRegisters>().get(), queryInterface<IRegisters>(memory.get()).get());
    }
    session.env->addRef();
    session.env->release();
    QCOMPARE(session.env->release(), 0ul); // in the middle of a session
    session.env = nullptr;
    QCOMPARE(session.project.references, 0);
    QCOMPARE(session.events.references, 0);
}

QTEST_MAIN(tst_NativeSession)
#include "tst_nativesession.moc"

#include "livesession.h"
#include "stackreplies.h"
#include <QDomDocument>

using Env = IExecutionEnvironment;

/// Sessions with the example of two tasks that share an emulated processor.
class tst_Tasks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }
    void stepOverASwitchEndsInTheSameTask();
    void callStackIsThatOfTheTaskThatRuns();
    void callStacksOfBothTasksAreSeenInOneRound();
    void stepIntoTheSwitchEndsInTheOtherTask();
    void faultInATaskIsExplained();
    void tasksThatWaitHaveACallStack();
    void functionOfATaskThatWaitsIsShown();
    void tasksThatAreNotKnownAreExplained_data();
    void tasksThatAreNotKnownAreExplained();

private:
    QTemporaryDir m_directory;
    QString m_image = m_directory.filePath(u"tasks.elf"_s);

    static QString source(const QString &name) { return QStringLiteral(VARNEL_SOURCE_DIR "/examples/tasks/") + name; }
    static int lineOf(const QString &name, const QString &text)
    {
        QFile file(source(name));
        const QStringList lines =
            file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n') : QStringList();
        for (int i = 0; i < lines.size(); ++i) {
            if (lines[i].contains(text))
                return i + 1;
        }
        return 0;
    }
    [[nodiscard]] QString option() const { return u"qemu:mps2-an385;image="_s + m_image; }
    /// The property of the example's project.
    static QMap<QString, QString> tasks()
    {
        QDomDocument project;
        QFile file(source(u"tasks.vnp"_s));
        if (!file.open(QIODevice::ReadOnly) || !project.setContent(&file))
            return {};
        const QDomNodeList properties = project.elementsByTagName(u"property"_s);
        for (int i = 0; i < properties.size(); ++i) {
            const QDomElement property = properties.at(i).toElement();
            if (property.attribute(u"key"_s) == u"gdbTasks"_s)
                return {{u"gdbTasks"_s, property.text()}};
        }
        return {};
    }
    /// "number name", and what it waits for.
    static QStringList threads(const LiveSession &session, StackReplies *replies)
    {
        QStringList rows;
        for (const ThreadInfo &thread : replies->askThreads(session.get<ICallStack>().get()))
            rows += u"%1 %2 %3"_s.arg(QString::number(thread.id), thread.name, thread.state).trimmed();
        return rows;
    }
    static QString allRegisters(const LiveSession &session)
    {
        const MiRecord answer = session.env->session()->gdb()->ask("-data-list-register-values x");
        QString text;
        for (const MiValue &row : answer.results[u"register-values"].items())
            text += row.text(u"number") + u'=' + row.text(u"value") + u' ';
        return text;
    }
    /// The functions that the window "Call Stack" shows, with the line of each caller.
    static QStringList shown(const LiveSession &session)
    {
        const InterfacePtr<StackReplies> replies(new StackReplies);
        const auto stack = session.get<ICallStack>();
        StackPlace place;
        if (!stack->currentPlace(place))
            return {};
        QStringList rows;
        for (const StackFrame &frame : replies->askFrames(stack.get(), place.thread))
            rows += u"%1 %2"_s.arg(frame.function, QString::number(frame.line));
        return rows;
    }
    /// The functions of the call stack, from the innermost.
    static QStringList functions(const LiveSession &session)
    {
        QStringList names;
        const MiRecord answer = session.env->session()->gdb()->ask("-stack-list-frames");
        for (const MiValue &frame : answer.results[u"stack"].items())
            names += frame.text(u"func");
        return names;
    }
};

void tst_Tasks::initTestCase()
{
    const QString board = QStringLiteral(VARNEL_SOURCE_DIR "/examples/mps2/");
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    compiler.start(u"arm-none-eabi-gcc"_s,
                   {u"-mcpu=cortex-m3"_s, u"-mthumb"_s, u"-ffreestanding"_s, u"-Og"_s, u"-g3"_s, u"-nostdlib"_s,
                    u"-nostartfiles"_s, u"-I"_s + board, u"-T"_s, board + u"mps2.ld"_s, u"-o"_s, m_image,
                    source(u"main.c"_s), source(u"scheduler.c"_s), board + u"startup.c"_s, board + u"uart.c"_s,
                    u"-lgcc"_s});
    QVERIFY(compiler.waitForFinished(60000) && compiler.exitCode() == 0);
}

void tst_Tasks::stepOverASwitchEndsInTheSameTask()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int line = lineOf(u"main.c"_s, u"wait(100)"_s);
    session.env->runTo(source(u"main.c"_s), line);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"current"_s), u"1"_s);
    const QString stack = session.evaluate(u"$sp"_s);
    session.env->stepOver({}); // the other task runs a hundred times
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.env->session()->frame().function, u"blink"_s);
    QCOMPARE(session.evaluate(u"$sp"_s), stack);
    QCOMPARE(session.evaluate(u"current"_s), u"1"_s);
    QVERIFY(session.events.serious.isEmpty());
}

void tst_Tasks::callStackIsThatOfTheTaskThatRuns()
{
    LiveSession session(option());
    const auto breakpoints = session.get<IBreakpoints>();
    const int toggle = lineOf(u"main.c"_s, u"changes = changes + 1"_s);
    const int report = lineOf(u"main.c"_s, u"uart_text(\"changes \")"_s);
    breakpoints->setBreakpoint(source(u"main.c"_s), toggle, BreakpointEnabled);
    breakpoints->setBreakpoint(source(u"main.c"_s), report, BreakpointEnabled);
    QVERIFY(session.start());
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(functions(session).mid(0, 3), (QStringList{u"lamp_toggle"_s, u"blink"_s, u"task_begin"_s}));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(functions(session).mid(0, 1), QStringList(u"main"_s));
    QCOMPARE(session.evaluate(u"reported"_s), u"1"_s);
}

/// Each task stops in the function in which it gives up the processor.
void tst_Tasks::callStacksOfBothTasksAreSeenInOneRound()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.get<IBreakpoints>()->setBreakpoint(
        source(u"scheduler.c"_s), lineOf(u"scheduler.c"_s, u"INTERRUPT_CONTROL = PEND_SWITCH"_s), BreakpointEnabled);
    const int waiting = lineOf(u"main.c"_s, u"task_yield()"_s);
    const QString row = u"%1 %2"_s;
    QMap<QString, QStringList> stacks; // by the number of the task
    for (int stop = 0; stop < 6; ++stop) {
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
        const QStringList rows = shown(session).mid(1); // without the function itself
        const QString task = session.evaluate(u"current"_s);
        QVERIFY(!stacks.contains(task) || stacks[task] == rows);
        stacks.insert(task, rows);
    }
    QCOMPARE(stacks.keys(), (QStringList{u"0"_s, u"1"_s}));
    QCOMPARE(stacks[u"0"_s].size(), 1);
    QVERIFY(stacks[u"0"_s].first().startsWith(u"main "_s));
    QCOMPARE(stacks[u"1"_s].mid(0, 2), (QStringList{row.arg(u"wait"_s).arg(waiting),
                                                    row.arg(u"blink"_s).arg(lineOf(u"main.c"_s, u"wait(100)"_s))}));
    QVERIFY(stacks[u"1"_s].value(2).startsWith(u"task_begin "_s));
}

/// Its handler returns to the stack of the other task.
void tst_Tasks::stepIntoTheSwitchEndsInTheOtherTask()
{
    LiveSession session(option());
    QVERIFY(session.start());
    session.env->runTo(source(u"main.c"_s), lineOf(u"main.c"_s, u"wait(100)"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    const int end = lineOf(u"scheduler.c"_s, u"return tasks[current]->top"_s);
    session.env->runTo(source(u"scheduler.c"_s), end);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(session.evaluate(u"current"_s), u"0"_s);
    QCOMPARE(functions(session).mid(0, 2), (QStringList{u"next_stack"_s, u"PendSV_Handler"_s}));
    session.env->runTo(source(u"main.c"_s), lineOf(u"main.c"_s, u"if (changes != reported)"_s));
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QCOMPARE(functions(session).value(0), u"main"_s);
    QVERIFY(session.events.serious.isEmpty());
}

void tst_Tasks::faultInATaskIsExplained()
{
    LiveSession session(option());
    QVERIFY(session.start());
    QCOMPARE(session.evaluate(u"fault = 1"_s), u"1"_s);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QVERIFY2(session.events.text.startsWith(u"HardFault, escalated from another fault at 0x"_s)
                 && session.events.text.contains(u", lamp_toggle (main.c, "_s),
             qPrintable(session.events.text));
    const QStringList names = functions(session);
    QCOMPARE(names.value(0), u"Fault_Handler"_s);
    QCOMPARE(names.mid(2, 3), (QStringList{u"lamp_toggle"_s, u"blink"_s, u"task_begin"_s}));
}

void tst_Tasks::tasksThatWaitHaveACallStack()
{
    LiveSession session(option(), tasks());
    const auto breakpoints = session.get<IBreakpoints>();
    const int toggle = lineOf(u"main.c"_s, u"changes = changes + 1"_s);
    const int report = lineOf(u"main.c"_s, u"uart_text(\"changes \")"_s);
    breakpoints->setBreakpoint(source(u"main.c"_s), toggle, BreakpointEnabled);
    breakpoints->setBreakpoint(source(u"main.c"_s), report, BreakpointEnabled);
    const InterfacePtr<StackReplies> replies(new StackReplies);
    QVERIFY(session.start());
    const auto stack = session.get<ICallStack>();
    QCOMPARE(threads(session, replies.get()),
             QStringList(u"1 program CPU#0 [running]"_s)); // it has not added the other one
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    const QString registers = allRegisters(session);
    QCOMPARE(threads(session, replies.get()), (QStringList{u"1 blinker CPU#0 [running]"_s, u"1000 program waits"_s}));
    QCOMPARE(StackReplies::functions(replies->askFrames(stack.get(), 1)).mid(0, 3),
             (QStringList{u"lamp_toggle"_s, u"blink"_s, u"task_begin"_s}));
    QCOMPARE(StackReplies::functions(replies->askFrames(stack.get(), 1000)), (QStringList{u"task_yield"_s, u"main"_s}));
    QVERIFY(!replies->more);
    QCOMPARE(allRegisters(session), registers);
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramBreakpointHit));
    QCOMPARE(session.evaluate(u"reported"_s), u"1"_s); // the program was not disturbed
    QCOMPARE(threads(session, replies.get()), (QStringList{u"1 program CPU#0 [running]"_s, u"1001 blinker waits"_s}));
    const QList<StackFrame> frames = replies->askFrames(stack.get(), 1001);
    QCOMPARE(StackReplies::functions(frames).mid(0, 4),
             (QStringList{u"task_yield"_s, u"wait"_s, u"blink"_s, u"task_begin"_s}));
    QCOMPARE(frames[2].line, lineOf(u"main.c"_s, u"wait(100)"_s));
    QCOMPARE(StackReplies::functions(replies->askFrames(stack.get(), 1001, 1, 2)),
             (QStringList{u"wait"_s, u"blink"_s}));
    QVERIFY(replies->more);
    QVERIFY(session.events.text.isEmpty());
}

/// Its variables are not shown: they would be those of the task that runs.
void tst_Tasks::functionOfATaskThatWaitsIsShown()
{
    LiveSession session(option(), tasks());
    const int report = lineOf(u"main.c"_s, u"uart_text(\"changes \")"_s);
    QVERIFY(session.start());
    session.env->runTo(source(u"main.c"_s), report);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    session.env->stepInto(u"main.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    const auto stack = session.get<ICallStack>();
    const InterfacePtr<StackReplies> replies(new StackReplies);
    QVERIFY(selectFrame(stack.get(), 1, 1)); // main(), the caller
    (void)replies->askFrames(stack.get(), 1001);
    QCOMPARE(session.evaluate(u"reported"_s), u"1"_s); // it is still selected
    QVERIFY(stack->setCurrentPlace({1001, 2}));
    StackPlace place;
    QVERIFY(stack->currentPlace(place));
    QCOMPARE(place.thread, 1001);
    QCOMPARE(place.frame, 2);
    const int waiting = lineOf(u"main.c"_s, u"wait(100)"_s);
    QVERIFY2(session.location().endsWith(u"tasks/main.c, %1"_s.arg(waiting)), qPrintable(session.location()));
    session.get<IVariables>()->requestScope({1, 1}, place, IVariables::Locals, 0, 10, 0, replies.get());
    session.get<IVariables>()->requestValue({2, 1}, place, u"changes"_s, 0, replies.get());
    const QString reason = u"Variables are shown for the task that runs."_s;
    QCOMPARE(replies->failures, (QStringList{reason, reason}));
    QVERIFY(stack->setCurrentPlace({1, 1}));
    QVERIFY(stack->currentPlace(place));
    QCOMPARE(place.thread, 1);
    QVERIFY2(session.location().endsWith(u"tasks/main.c, %1"_s.arg(report)), qPrintable(session.location()));
    QVERIFY(stack->setCurrentPlace({1001, 2}));
    session.env->stepOver(u"main.c"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY(stack->currentPlace(place)); // that of the task that runs
    QCOMPARE(place.thread, 1);
    QCOMPARE(session.env->session()->frame().function, u"uart_text"_s);
    (void)replies->askFrames(stack.get(), 1);
    QVERIFY(stack->currentPlace(place));
    QCOMPARE(place.thread, 1);
    QVERIFY(!stack->setCurrentPlace({1001, 2})); // of an earlier stop
}

void tst_Tasks::tasksThatAreNotKnownAreExplained_data()
{
    QTest::addColumn<QString>("expressions");
    QTest::addColumn<QString>("reason");
    const QString form = u"it is not \"number of tasks; running task; stack pointer; name\""_s;
    QTest::newRow("no such variable") << u"number;current;0"_s << u"No symbol \"number\" in current context."_s;
    QTest::newRow("running task") << u"count;nobody;0"_s << u"No symbol \"nobody\" in current context."_s;
    QTest::newRow("too few") << u"count;current"_s << form;
    QTest::newRow("no number") << u"tasks;current;0"_s << form;
    QTest::newRow("too many") << u"1000000;current;0"_s << form;
}

void tst_Tasks::tasksThatAreNotKnownAreExplained()
{
    QFETCH(QString, expressions);
    QFETCH(QString, reason);
    LiveSession session(option(), {{u"gdbTasks"_s, expressions}});
    QVERIFY(session.start());
    const InterfacePtr<StackReplies> replies(new StackReplies);
    QCOMPARE(threads(session, replies.get()).size(), 1);
    QCOMPARE(threads(session, replies.get()).size(), 1);
    QCOMPARE(session.events.text, u"The tasks of the program are not known: %1\n"_s.arg(reason)); // once
}

QTEST_MAIN(tst_Tasks)
#include "tst_tasks.moc"

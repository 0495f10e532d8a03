#include "boardfirmware.h"
#include "livememory.h"
#include <chrono>
#include <QSignalSpy>

using Env = IExecutionEnvironment;
using std::chrono::steady_clock;

/// Memory and variables that are read while a program runs.
class LiveMemoryTest : public QObject, private BoardFirmware
{
    Q_OBJECT

private:
    static constexpr quint64 Timer = 0x40000000; ///< control, value and reload, 32 bits each; counts down at 25 MHz
    static constexpr int TickTime = 40;          ///< in ns

    static uint timerValue(const LiveSession &session)
    {
        QByteArray bytes;
        if (!session.env->session()->target()->readDirectly(Timer + 4, 4, &bytes))
            qWarning("The timer cannot be read.");
        return memoryCellValue(bytes, false);
    }
    static void startTimer(const LiveSession &session)
    {
        for (const quint64 reg : {Timer + 8, Timer + 4})
            QVERIFY(session.env->session()->target()->writeDirectly(reg, memoryCellBytes(0xffffffff, 4, false)));
        QVERIFY(session.env->session()->target()->writeDirectly(Timer, memoryCellBytes(1, 4, false)));
    }

    /// For how long the board stood still while @p work was done, in ns: its timer does not count then. Never more than
    /// the true time, and as exact as one access to the timer.
    template <typename Work>
    static qint64 standstill(const LiveSession &session, const Work &work)
    {
        const uint before = timerValue(session);
        const auto begin = steady_clock::now();
        work();
        const auto end = steady_clock::now();
        const qint64 counted = qint64(before - timerValue(session)) * TickTime;
        return std::chrono::nanoseconds(end - begin).count() - counted;
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(build()); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void kindOfAType_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("kind");
        constexpr int none = -1;
        QTest::newRow("unsigned") << u"volatile unsigned int\n"_s << int(LiveKind::Unsigned);
        QTest::newRow("signed") << u"const short"_s << int(LiveKind::Signed);
        QTest::newRow("byte") << u"unsigned char"_s << int(LiveKind::UnsignedCharacter);
        QTest::newRow("character") << u"char"_s << int(LiveKind::SignedCharacter);
        QTest::newRow("boolean") << u"_Bool"_s << int(LiveKind::Boolean);
        QTest::newRow("float") << u"float"_s << int(LiveKind::Float);
        QTest::newRow("pointer") << u"char *"_s << none;
        QTest::newRow("structure") << u"struct Point {\n    int x;\n}"_s << none;
        QTest::newRow("enumeration") << u"volatile enum Mode {OFF, ON = 4}\n"_s << int(LiveKind::Enumeration);
        QTest::newRow("double") << u"double"_s << int(LiveKind::Float);
        QTest::newRow("pointer to an enumeration") << u"enum Mode {OFF, ON} *"_s << none;
        QTest::newRow("structure with an enumeration") << u"struct {enum {A, B} mode;}"_s << none;
        QTest::newRow("reference") << u"int &"_s << none;
        QTest::newRow("array") << u"int [4]"_s << none;
        QTest::newRow("nothing") << QString() << none;
    }
    void kindOfAType()
    {
        QFETCH(QString, type);
        QFETCH(int, kind);
        LiveKind found{};
        QCOMPARE(liveKindOf(type, &found) ? int(found) : -1, kind);
    }

    void enumeratorsHaveTheirValues()
    {
        const QMap<qint64, QString> expected{{-1, u"NONE"_s}, {0, u"OFF"_s}, {4, u"ON"_s}, {5, u"LAST"_s}};
        QCOMPARE(liveEnumerators(u"enum Mode : int {NONE = -1, OFF, ON = 4, SAME = 4, LAST}"_s), expected);
        QCOMPARE(liveEnumerators(u"int"_s), (QMap<qint64, QString>()));
    }

    void onlyNamesAndMembersArePlainVariables()
    {
        for (const QString &plain : {u"ticks"_s, u" origin.x "_s, u"Motor::speed"_s, u"::a.b.c"_s})
            QVERIFY2(isPlainVariable(plain), qPrintable(plain));
        for (const QString &other : {u""_s, u"a+b"_s, u"*p"_s, u"p->x"_s, u"a[i]"_s, u"f()"_s, u"a=1"_s, u"1"_s,
                                     u"$pc"_s, u"a\n-exec-continue"_s, u"a.1"_s})
            QVERIFY2(!isPlainVariable(other), qPrintable(other));
    }

    void valuesAreWrittenAsByGdb_data()
    {
        QTest::addColumn<quint64>("value");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QChar>("format");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, quint64 value, int size, LiveKind kind, char format,
                            const QString &text) {
            QTest::newRow(name) << value << size << int(kind) << (format ? QChar(QLatin1Char(format)) : QChar())
                                << text;
        };
        row("unsigned", 4000000000, 4, LiveKind::Unsigned, 0, u"4000000000"_s);
        row("negative word", 0xfffe, 2, LiveKind::Signed, 0, u"-2"_s);
        row("negative long word", 0xffffffff, 4, LiveKind::Signed, 0, u"-1"_s);
        row("letter", 65, 1, LiveKind::UnsignedCharacter, 0, u"65 'A'"_s);
        row("no letter", 255, 1, LiveKind::SignedCharacter, 0, u"-1 '\\377'"_s);
        row("escape", 10, 1, LiveKind::SignedCharacter, 0, u"10 '\\n'"_s);
        row("quote", 39, 1, LiveKind::SignedCharacter, 0, u"39 '\\''"_s);
        row("zero", 0, 1, LiveKind::UnsignedCharacter, 0, u"0 '\\000'"_s);
        row("true", 1, 1, LiveKind::Boolean, 0, u"true"_s);
        row("float", 0x3fc00000, 4, LiveKind::Float, 0, u"1.5"_s);
        row("double", 0x3fb999999999999a, 8, LiveKind::Float, 0, u"0.10000000000000001"_s);
        row("eight bytes", 0xfffffffffffffffe, 8, LiveKind::Signed, 0, u"-2"_s);
        row("eight bytes without sign", 0xffffffffffffffff, 8, LiveKind::Unsigned, 0, u"18446744073709551615"_s);
        row("unknown enumerator", 9, 4, LiveKind::Enumeration, 0, u"9"_s);
        row("hexadecimal", 0xff, 1, LiveKind::SignedCharacter, 'x', u"0xff"_s);
        row("signed decimal", 0xff, 1, LiveKind::UnsignedCharacter, 'd', u"-1"_s);
        row("unsigned decimal", 0xffff, 2, LiveKind::Signed, 'u', u"65535"_s);
        row("octal", 8, 2, LiveKind::Signed, 'o', u"010"_s);
        row("binary", 5, 2, LiveKind::Signed, 't', u"101"_s);
    }
    void valuesAreWrittenAsByGdb()
    {
        QFETCH(quint64, value);
        QFETCH(int, size);
        QFETCH(int, kind);
        QFETCH(QChar, format);
        QTEST(liveValueText(value, size, LiveKind(kind), format), "text");
    }

    /// The same texts as gdb's own, for all variables of the firmware that can be followed.
    void preparedVariablesOfAStoppedBoardHaveTheValuesOfGdb()
    {
        const LiveSession session(option());
        QVERIFY(!session.get<ILiveMemory>()->canReadLive());
        LiveSession live(option());
        QVERIFY(live.start());
        const auto memory = live.get<ILiveMemory>();
        QVERIFY(memory->canReadLive());
        for (const QString &expression :
             {u"ticks"_s, u"loops,x"_s, u"origin.y"_s, u"command"_s, u"origin.x,t"_s, u"loops,o"_s, u"ticks,d"_s}) {
            QVERIFY2(memory->prepareLive(expression), qPrintable(expression));
            QString value;
            QVERIFY(memory->evaluateLive(expression, value));
            QCOMPARE(value, live.evaluate(expression));
        }
        for (const QString &expression : {u"sum"_s, u"origin"_s, u"buffer"_s, u"loops+1"_s, u"nothing"_s, u"loops,c"_s})
            QVERIFY2(!memory->prepareLive(expression), qPrintable(expression));
        QString value;
        QVERIFY(!memory->evaluateLive(u"sum"_s, value));
    }

    void aRunningBoardIsReadWithoutStoppingIt()
    {
        LiveSession session(option());
        QVERIFY(session.start());
        const auto live = session.get<ILiveMemory>();
        QVERIFY(live->prepareLive(u"loops"_s));
        uint address = 0;
        QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"loops"_s, address));
        startTimer(session);
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramRunning));
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        const uint first = timerValue(session);
        QTRY_VERIFY(timerValue(session) != first);
        QString before;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, before) && before != u"0"_s);
        const qint64 lost = standstill(session, [&] {
            for (int i = 0; i < 300; ++i) {
                MemoryBlock block;
                QString value;
                QVERIFY(live->readLive(1, IMemory::Word32, address & ~uint(255), 64, block));
                QCOMPARE(block.size(), 64);
                QCOMPARE(block.first().status, int(IMemory::Success));
                QVERIFY(live->evaluateLive(u"loops"_s, value));
            }
        });
        QVERIFY2(lost < 1000, QByteArray::number(lost)); // 1 us: the ends of the clocks' readings
        QString after;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, after) && after != before);
        for (const QList<QVariant> &line : dialogue) { // the answer to the run command may still come
            QVERIFY2(!line[1].toBool(), qPrintable(line[0].toString()));
            QVERIFY2(!line[0].toString().contains(u"*stopped"_s), qPrintable(line[0].toString()));
        }
        QVERIFY(!session.events.statuses.contains(Env::ProgramPaused));
        // The measurement itself: a pause is seen.
        const qint64 paused = standstill(session, [&] {
            session.env->pause();
            QVERIFY(session.waitFor(Env::ProgramPaused));
            session.env->run();
            QVERIFY(session.waitFor(Env::ProgramRunning));
        });
        QVERIFY2(paused > 1000, QByteArray::number(paused));
    }

    void aRunningNativeProgramIsRead()
    {
        const QString image = m_programs.native(u"demo"_s);
        LiveSession session(u"native:"_s + image + u";arguments=spin"_s);
        QVERIFY(session.start());
        const auto live = session.get<ILiveMemory>();
        QVERIFY(live->prepareLive(u"loops"_s));
        QVERIFY(!live->prepareLive(u"sum"_s)); // on the stack
        session.env->run();
        QVERIFY(session.waitFor(Env::ProgramRunning));
        QString before;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, before) && before != u"0"_s);
        QString after;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, after) && after != before);
        QVERIFY(!session.events.statuses.contains(Env::ProgramPaused));
    }

    void variablesAreFoundWhileTheProgramRuns_data()
    {
        QTest::addColumn<QString>("session");
        QTest::newRow("board") << option();
        QTest::newRow("native") << u"native:"_s + m_programs.native(u"found"_s) + u";arguments=spin"_s;
    }
    void variablesAreFoundWhileTheProgramRuns()
    {
        QFETCH(QString, session);
        LiveSession running(session);
        QVERIFY(running.start());
        running.env->run();
        QVERIFY(running.waitFor(Env::ProgramRunning));
        const auto live = running.get<ILiveMemory>();
        QVERIFY(live->prepareLive(u"loops"_s));
        QString value;
        QTRY_VERIFY(live->evaluateLive(u"loops"_s, value) && value != u"0"_s);
        QVERIFY(!live->prepareLive(u"sum"_s));
        QVERIFY(!running.events.statuses.contains(Env::ProgramPaused));
        running.env->pause();
        QVERIFY(running.waitFor(Env::ProgramPaused));
    }

    void knownVariableCostsOneCommandAtTheNextStop()
    {
        LiveSession session(option());
        QVERIFY(session.start());
        const auto live = session.get<ILiveMemory>();
        QVERIFY(live->prepareLive(u"loops"_s));
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        QVERIFY(live->prepareLive(u"loops"_s));
        const auto sent = std::ranges::count_if(dialogue, [](const QList<QVariant> &line) { return line[1].toBool(); });
        QCOMPARE(int(sent), 1);
        QString value;
        QVERIFY(live->evaluateLive(u"loops"_s, value));
    }

    void neighboursAreReadTogether()
    {
        LiveSession session(option());
        QVERIFY(session.start());
        const auto live = session.get<ILiveMemory>();
        const QStringList expressions{u"ticks"_s, u"loops"_s, u"origin.x"_s, u"origin.y"_s, u"command"_s};
        for (const QString &expression : expressions)
            QVERIFY(live->prepareLive(expression));
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        QString value;
        for (const QString &expression : expressions)
            QVERIFY(live->evaluateLive(expression, value));
        const auto sent = std::ranges::count_if(dialogue, [](const QList<QVariant> &line) { return line[1].toBool(); });
        QVERIFY2(sent <= 2, QByteArray::number(sent)); // of zeroed and of initialised variables
    }

    void withoutASessionNothingIsRead()
    {
        LiveSession session(option());
        QVERIFY(session.start());
        const auto live = session.get<ILiveMemory>();
        QVERIFY(live->prepareLive(u"loops"_s));
        session.env->stop();
        QVERIFY(!live->canReadLive());
        MemoryBlock block;
        QString value;
        QVERIFY(!live->readLive(0, IMemory::Byte, 0, 4, block));
        QVERIFY(!live->evaluateLive(u"loops"_s, value));
        QVERIFY(!live->prepareLive(u"loops"_s));
    }
};

QTEST_MAIN(LiveMemoryTest)
#include "tst_livememory.moc"

#include "disassembler.h"
#include "gdbsession.h"
#include "livesession.h"
#include "memoryaccess.h"
#include "symboltable.h"
#include <QSignalSpy>

using Env = IExecutionEnvironment;

namespace {
constexpr int Empty = 0x20000; ///< an index where the board's memory holds zeros, far from the program

/// Counts the requests for instructions.
class Requests
{
public:
    explicit Requests(const LiveSession &session) : m_lines(session.env->session()->gdb(), &MiConnection::dialogue) {}

    int count(const QString &command = u"-data-disassemble"_s) const
    {
        int found = 0;
        for (const QVariantList &line : m_lines)
            found += line[1].toBool() && line[0].toString().contains(command);
        return found;
    }

private:
    QSignalSpy m_lines;
};

/// A program in C++ whose names are mangled.
QString mangledProgram(const Programs &programs)
{
    const QString source = programs.directory() + u"/names.cpp"_s;
    QFile file(source);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write("namespace shapes {\n"
               "struct Box { int side; };\n"
               "__attribute__((noinline)) int area(const Box &box, int factor) { return box.side * factor; }\n"
               "template <typename T> __attribute__((noinline)) T twice(T value) { return value + value; }\n"
               "}\n"
               "int main() { return shapes::area(shapes::Box{2}, 3) + shapes::twice<int>(4); }\n");
    file.close();
    const QString image = programs.directory() + u"/names"_s;
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    compiler.start(u"g++"_s, {u"-g"_s, u"-O0"_s, u"-static-pie"_s, source, u"-o"_s, image});
    return compiler.waitForFinished(60000) && compiler.exitCode() == 0 ? image : QString();
}
} // namespace

/// What the disassembly window gets from gdb.
class tst_Disassembler : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void fetchReturnsAtOnceAndTheTextFollows();
    void eachLineOfAFunctionIsShownOnce();
    void textDuringAFetchWaitsForItsAnswer();
    void fetchDoesNotWaitWithoutAReadableTarget();
    void stepForgetsTheInstructions();
    void readingBackwardsDecodesSeveralInstructionsAtOnce();
    void instructionsAreKeptUpToALimit();
    void namesAreDemangled();

private:
    QString option() const { return u"qemu:mps2-an385;image="_s + m_image; }

    Programs m_programs;
    QString m_image;
};

void tst_Disassembler::initTestCase()
{
    m_image = m_programs.firmware(u"firmware.elf"_s);
    QVERIFY(!m_image.isEmpty());
}

void tst_Disassembler::init()
{
    QTest::failOnWarning(QRegularExpression(u".?"_s));
}

/// Above its first instruction, and not again above the following ones.
void tst_Disassembler::eachLineOfAFunctionIsShownOnce()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto lines = session.get<IDisassemblyAddress>();
    const auto mapping = session.get<ISourceMapping>();
    const auto begin = uint(session.env->session()->frame().address);
    QString last;
    int shown = 0;
    for (uint address = begin; address < begin + 64; address += 2) {
        const QStringList source = lines->sourceLines(int(address));
        if (source.isEmpty())
            continue;
        QString file;
        int line = 0;
        QVERIFY(mapping->sourceLocation(address, 1, file, line));
        QVERIFY2(source.last().contains(u"&nbsp;%1&nbsp;&nbsp;"_s.arg(line)), qPrintable(source.last()));
        QVERIFY2(source.last() != last, qPrintable(last));
        last = source.last();
        ++shown;
    }
    QVERIFY2(shown >= 3, QByteArray::number(shown));
}

void tst_Disassembler::fetchReturnsAtOnceAndTheTextFollows()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const int index = int(session.env->session()->frame().address);
    const auto fetch = session.get<IDisassemblyFetch>();
    const auto lines = session.get<IDisassemblyAddress>();
    const Requests requests(session);
    QVERIFY(!fetch->fetch(index, 0)); // the line table is not read yet
    QTRY_VERIFY(fetch->fetch(index, 0));
    QCOMPARE(requests.count(), 1);
    QVERIFY(!lines->text(index).isNull());
    QCOMPARE(lines->sourceLines(index).size(), 1);
    QCOMPARE(requests.count({}), requests.count() + 1 + requests.count(u"-symbol-list-lines"_s)); // no further commands
    QVERIFY(!fetch->fetch(Empty, 0));
    QVERIFY(fetch->fetch(Empty, 5000)); // waits for the answer
    QVERIFY(!lines->text(Empty).isNull());
}

void tst_Disassembler::textDuringAFetchWaitsForItsAnswer()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto fetch = session.get<IDisassemblyFetch>();
    QVERIFY(fetch->fetch(0, 5000));
    const Requests requests(session);
    QVERIFY(!fetch->fetch(Empty, 0));
    QVERIFY(!session.get<IDisassembly>()->text(Empty).isNull());
    QCOMPARE(requests.count(), 1);
    QVERIFY(!fetch->fetch(2 * Empty, 0));
    QVERIFY(!session.get<IDisassembly>()->text(3 * Empty).isNull()); // waits for both
    QCOMPARE(requests.count(), 3);
    QVERIFY(fetch->fetch(2 * Empty, 0));
}

void tst_Disassembler::fetchDoesNotWaitWithoutAReadableTarget()
{
    LiveSession session(option());
    const auto fetch = session.get<IDisassemblyFetch>();
    QVERIFY(fetch->fetch(0, 0)); // no session
    QVERIFY(session.start());
    QVERIFY(fetch->fetch(0, 5000));
    session.env->run();
    QVERIFY(session.waitFor(Env::ProgramRunning));
    QVERIFY(fetch->fetch(Empty, 0)); // gdb cannot read it now
    QVERIFY(session.get<IDisassembly>()->text(Empty).isNull());
}

void tst_Disassembler::stepForgetsTheInstructions()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto fetch = session.get<IDisassemblyFetch>();
    QVERIFY(fetch->fetch(Empty, 5000));
    session.env->stepInto(u"disassembler:"_s);
    QVERIFY(session.waitFor(Env::ProgramPaused));
    QVERIFY(!fetch->fetch(Empty, 0));
    session.env->stepInto(u"disassembler:"_s); // while gdb decodes
    QVERIFY(session.waitFor(Env::ProgramPaused));
    const Requests requests(session);
    QTRY_VERIFY(fetch->fetch(Empty, 0));
    QCOMPARE(requests.count(), 1); // the old answer does not count
}

void tst_Disassembler::readingBackwardsDecodesSeveralInstructionsAtOnce()
{
    LiveSession session(option());
    QVERIFY(session.start());
    const auto text = session.get<IDisassembly>();
    QVERIFY(!text->text(Empty).isNull());
    const Requests requests(session);
    for (int index = Empty - 2; index >= Empty - 256; index -= 2)
        QVERIFY(!text->text(index).isNull());
    QCOMPARE(requests.count(), 4);
}

void tst_Disassembler::instructionsAreKeptUpToALimit()
{
    LiveSession session(option());
    QVERIFY(session.start());
    auto *whole = static_cast<IPluginObject *>(session.env);
    SymbolTable symbols(session.env->session(), whole);
    MemoryAccess memory(session.env->session(), whole);
    memory.setTable(boardRegions(u"mps2-an385"_s));
    Disassembler disassembler(session.env->session(), &symbols, &memory, whole);
    disassembler.setLimit(1000);
    qsizetype most = 0;
    for (int index = Empty; index < Empty + 0x4000; index += 2) {
        QVERIFY(!disassembler.text(index).isNull());
        most = std::max(most, disassembler.instructionCount());
    }
    QVERIFY2(most > 1000 && most < 4000, qPrintable(QString::number(most))); // of 8192
    QVERIFY(!disassembler.text(Empty).isNull());                             // is read again
}

void tst_Disassembler::namesAreDemangled()
{
    const QString image = mangledProgram(m_programs);
    QVERIFY(!image.isEmpty());
    LiveSession session(u"native:"_s + image);
    QVERIFY(session.start());
    const auto lines = session.get<IDisassemblyAddress>();
    const uint low = session.get<IMemory>()->regions().first().lowAddress;
    uint address = 0;
    QVERIFY(session.get<ISourceMapping>()->symbolAddress(u"shapes::area"_s, address));
    const QString area = u"shapes::area(shapes::Box&nbsp;const&amp;,&nbsp;int)"_s;
    const QString text = lines->text(int(address - low));
    QVERIFY2(text.contains(area), qPrintable(text));
    QString calls;
    const int main = int(uint(session.env->session()->frame().address) - low);
    for (int index = main; index < main + 128; ++index)
        calls += lines->text(index);
    QVERIFY2(calls.contains(u"&lt;"_s + area + u"&gt;"_s), qPrintable(calls));
    QVERIFY2(calls.contains(u"&lt;shapes::twice&lt;int&gt;(int)&gt;"_s)
                 || calls.contains(u"&lt;int&nbsp;shapes::twice&lt;int&gt;(int)&gt;"_s),
             qPrintable(calls));
    QVERIFY2(!calls.contains(u"_ZN"_s), qPrintable(calls));
}

QTEST_GUILESS_MAIN(tst_Disassembler)
#include "tst_disassembler.moc"

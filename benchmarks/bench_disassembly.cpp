// The disassembly of a paused program on several processors. The peer is the bare request to gdb for the instructions
// that are then on screen. The counter "bare_ms" is the time of the request, "first_ms" that of the first opening in a
// session, which also reads the line table; times are medians.
#include "disassemblerdocument.h"
#include "disassemblerdocumenttemplate.h"
#include "disassemblerview.h"
#include "environmentkey.h"
#include "livesession.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QElapsedTimer>

namespace {
using Env = IExecutionEnvironment;
constexpr int Rounds = 30;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

const Programs &programs()
{
    static const Programs compiled;
    return compiled;
}

QString cortexM()
{
    return u"qemu:mps2-an385;image="_s + programs().firmware(u"firmware.elf"_s);
}

QString avr()
{
    const QString image = programs().avr(u"avr.elf"_s);
    return u"remote:127.0.0.1:1234;load=0;server=simavr -m atmega328p -f 16000000 -g $(Program);image="_s + image;
}

QString riscV()
{
    const QString board = QStringLiteral(BOARD_DIRECTORY "/riscv/");
    const QString image = programs().directory() + u"/riscv.elf"_s;
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    compiler.start(u"riscv64-unknown-elf-gcc"_s,
                   {u"-march=rv32imac_zicsr"_s, u"-mcmodel=medany"_s, u"-nostartfiles"_s, u"-mabi=ilp32"_s, u"-g"_s,
                    u"-Og"_s, u"-ffreestanding"_s, u"-nostdlib"_s, u"-T"_s, board + u"board.ld"_s, u"-o"_s, image,
                    board + u"startup.S"_s, board + u"board.c"_s, board + u"main.c"_s, u"-lgcc"_s});
    require(compiler.waitForFinished(60000) && compiler.exitCode() == 0, "The program was not built.");
    return u"qemu:virt;qemuArguments=-bios none;image="_s + image;
}

QString native()
{
    return u"native;image="_s + programs().native(u"native"_s);
}

/// A session with a document that is opened as often as needed.
class Disassembly
{
public:
    explicit Disassembly(const QString &option) : m_session(option), m_template({}, {}, {}, nullptr)
    {
        require(m_session.start(), "The session did not start.");
        m_name = disassemblyName(m_session.env, u"demo"_s);
    }
    ~Disassembly()
    {
        m_view.reset();
        m_document.reset();
        m_session.env->stop();
        keepEnvironments({});
    }
    Q_DISABLE_COPY_MOVE(Disassembly)

    /// Steps to the next instruction, after which nothing is known any more of what was decoded.
    void step()
    {
        m_session.env->stepInto(m_name);
        require(m_session.waitFor(Env::ProgramPaused), "The step did not end.");
    }
    void close()
    {
        m_view.reset();
        m_document.reset();
    }
    /// Opens the view at the program's place, and paints it.
    void open()
    {
        m_document = std::make_unique<DisassemblerDocument>(&m_template);
        require(m_document->open(m_name), "The document was not opened.");
        m_view = std::make_unique<DisassemblerView>(m_document.get(), nullptr, nullptr);
        m_view->resize(900, 700);
        QString file = m_name;
        int line = 0;
        require(m_session.env->currentLocation(file, line), "The location is unknown.");
        m_view->show();
        m_view->gotoLine(line);
        paint();
        require(m_view->paraView()->hasText(), "There are no instructions.");
    }
    void pageDown()
    {
        QKeyEvent down(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view->paraView(), &down);
        paint();
    }
    /// The milliseconds of a request for what is on screen, until its answer has arrived.
    double bareRequest()
    {
        MiConnection *gdb = m_session.env->session()->gdb();
        const uint from = uint(m_document->lineOf(rowPara(0))) - 1;
        const uint to = uint(m_document->lineOf(rowPara(m_view->paraView()->rowCount() - 1))) - 1;
        const quint64 high = m_session.env->session()->frame().address & ~quint64(0xffffffff);
        const QByteArray command = "-data-disassemble -s 0x" + QByteArray::number(high | from, 16) + " -e 0x"
                                   + QByteArray::number((high | to) + 1, 16) + " -- 2";
        QElapsedTimer timer;
        double taken = 0;
        const auto watch = QObject::connect(gdb, &MiConnection::dialogue, gdb, [&](const QString &line, bool fromUs) {
            if (!fromUs && line.contains(u"^done"_s))
                taken = milliseconds(timer);
        });
        timer.start();
        require(gdb->ask(command).isDone(), "The request failed.");
        QObject::disconnect(watch);
        return taken;
    }

private:
    void paint()
    {
        while (m_view->paraView()->isWaiting())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        m_view->repaint();
    }
    int rowPara(int row) const
    {
        int para = 0;
        int line = 0;
        require(m_view->paraView()->rowToPara(row, &para, &line), "There is no such row.");
        return para;
    }

    LiveSession m_session;
    DisassemblerDocumentTemplate m_template;
    QString m_name;
    std::unique_ptr<DisassemblerDocument> m_document;
    std::unique_ptr<DisassemblerView> m_view;
};

void setCounters(benchmark::State &state, const QList<double> &ours, const QList<double> &bare)
{
    state.counters["median_ms"] = median(ours);
    state.counters["bare_ms"] = median(bare);
    state.counters["more_ms"] = median(ours) - median(bare);
}

void opening(benchmark::State &state, QString (*option)())
{
    Disassembly disassembly(option());
    QElapsedTimer timer;
    timer.start();
    disassembly.open();
    state.counters["first_ms"] = milliseconds(timer);
    QList<double> ours;
    QList<double> bare;
    for ([[maybe_unused]] auto round : state) {
        disassembly.close();
        disassembly.step();
        timer.start();
        disassembly.open();
        ours.append(milliseconds(timer));
        state.SetIterationTime(ours.last() / 1e3);
        disassembly.step();
        bare.append(disassembly.bareRequest());
    }
    setCounters(state, ours, bare);
}

void pageDown(benchmark::State &state, QString (*option)())
{
    Disassembly disassembly(option());
    QElapsedTimer timer;
    QList<double> ours;
    QList<double> bare;
    for ([[maybe_unused]] auto round : state) {
        disassembly.close();
        disassembly.step();
        disassembly.open();
        timer.start();
        disassembly.pageDown();
        ours.append(milliseconds(timer));
        state.SetIterationTime(ours.last() / 1e3);
        disassembly.step();
        bare.append(disassembly.bareRequest());
    }
    setCounters(state, ours, bare);
}

void compare(const char *processor, QString (*option)())
{
    const std::string name(processor);
    using Run = void (*)(benchmark::State &, QString(*)());
    const std::pair<std::string, Run> runs[]{{"open the disassembly, ", opening}, {"page down, ", pageDown}};
    for (const auto &[action, run] : runs)
        benchmark::RegisterBenchmark((action + name).c_str(), run, option)
            ->UseManualTime()
            ->Iterations(Rounds)
            ->Unit(benchmark::kMillisecond);
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    compare("Cortex-M", cortexM);
    compare("AVR", avr);
    compare("RISC-V", riscV);
    compare("x86-64", native);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

// The automation server: commands per second over the loopback device, one at a time and many at once, on a window with
// 1,000 objects. The peer of the first is an echo server. Also the processor time of an idle server.
#include "../tests/framework/fakeservices.h"
#include "activity.h"
#include "objectmodel.h"
#include "qtrunnerserver.h"
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTcpSocket>
#include <QThread>
#include <sys/resource.h>
using namespace Qt::StringLiterals;

namespace {
constexpr int ObjectCount = 1000;
constexpr int CommandsPerRound = 1000;
constexpr int SoakRounds = 100; // of a thousand commands each
const QByteArray Command = "GETPROPERTY edit text\n";
const QByteArray Reply = "OK 3 some text\r\n";

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// A window in which the edit is the last of many objects.
class Window : public QWidget
{
public:
    Window()
    {
        for (int i = 0; i < ObjectCount; ++i)
            (new QObject(this))->setObjectName(u"object%1"_s.arg(i));
        auto *edit = new QLineEdit(u"some text"_s, this);
        edit->setObjectName(u"edit"_s);
    }

    FakeServices host;
    Activity activity;
    ObjectModel model{activity, host};
    QtRunnerServer server{0, QHostAddress::LocalHost, &model, this};
};

class EchoServer : public QTcpServer
{
public:
    EchoServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QIODevice::readyRead, socket, [socket] { socket->write(socket->readAll()); });
        });
    }
};

/// Sends @p command in @p rounds rounds of @p together commands, from another thread.
void converse(quint16 port, int rounds, int together, const QByteArray &command, const QByteArray &reply)
{
    QEventLoop loop;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        QTcpSocket driver;
        driver.connectToHost(QHostAddress::LocalHost, port);
        require(driver.waitForConnected(), "Cannot connect.");
        driver.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        const QByteArray expected = reply.repeated(together);
        for (int i = 0; i < rounds; ++i) {
            driver.write(command.repeated(together));
            while (driver.bytesAvailable() < expected.size())
                require(driver.waitForReadyRead(), "No answer.");
            require(driver.readAll() == expected, "The reply is wrong.");
        }
    }));
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec();
    thread->wait();
}

qint64 timeOf(quint16 port, int rounds, int together, const QByteArray &command, const QByteArray &reply)
{
    QElapsedTimer timer;
    timer.start();
    converse(port, rounds, together, command, reply);
    return timer.nsecsElapsed();
}

void oneAtATime(benchmark::State &state)
{
    const Window window;
    const EchoServer echo;
    const qint64 bare = timeOf(echo.serverPort(), CommandsPerRound, 1, Command, Command);
    qint64 total = 0;
    for ([[maybe_unused]] auto _ : state) {
        const qint64 time = timeOf(window.server.serverPort(), CommandsPerRound, 1, Command, Reply);
        total += time;
        state.SetIterationTime(double(time) * 1e-9);
    }
    state.counters["times_echo"] = double(total) / double(state.iterations()) / double(bare);
    state.SetItemsProcessed(int64_t(state.iterations()) * CommandsPerRound);
}
BENCHMARK(oneAtATime)->UseManualTime()->Unit(benchmark::kMillisecond);

void manyAtOnce(benchmark::State &state)
{
    const Window window;
    for ([[maybe_unused]] auto _ : state) {
        const qint64 time = timeOf(window.server.serverPort(), 10, CommandsPerRound, Command, Reply);
        state.SetIterationTime(double(time) * 1e-9);
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * 10 * CommandsPerRound);
}
BENCHMARK(manyAtOnce)->UseManualTime()->Unit(benchmark::kMillisecond);

/// A hundred thousand commands on one connection, and the growth of memory.
void soak(benchmark::State &state)
{
    const Window window;
    converse(window.server.serverPort(), 10, CommandsPerRound, Command, Reply);
    double growth = 0;
    for ([[maybe_unused]] auto _ : state) {
        const size_t before = mallinfo2().uordblks;
        const qint64 time = timeOf(window.server.serverPort(), SoakRounds, CommandsPerRound, Command, Reply);
        growth = double(mallinfo2().uordblks) - double(before);
        state.SetIterationTime(double(time) * 1e-9);
    }
    state.counters["bytes_more"] = growth;
    state.SetItemsProcessed(int64_t(state.iterations()) * SoakRounds * CommandsPerRound);
}
BENCHMARK(soak)->UseManualTime()->Unit(benchmark::kMillisecond);

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) * 1e-6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The processor time of half a second with ten connected drivers.
void idle(benchmark::State &state)
{
    const Window window;
    std::vector<std::unique_ptr<QTcpSocket>> drivers;
    while (drivers.size() < 10) {
        drivers.push_back(std::make_unique<QTcpSocket>());
        drivers.back()->connectToHost(QHostAddress::LocalHost, window.server.serverPort());
        drivers.back()->write("RECORD ON\n");
        while (!drivers.back()->bytesAvailable())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    double used = 0;
    double passed = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double before = processorSeconds();
        QEventLoop loop;
        QTimer::singleShot(500, &loop, &QEventLoop::quit);
        loop.exec();
        used += processorSeconds() - before;
        passed += 0.5;
    }
    state.counters["processor_percent"] = 100 * used / passed;
}
BENCHMARK(idle)->Iterations(4)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type != QtDebugMsg)
            fprintf(stderr, "%s\n", qPrintable(text));
    });
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#pragma once
#include "livesession.h"
#include "qemumachine.h"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <QElapsedTimer>

// Sessions with an emulated board, and a bare client of gdb as their peer.

inline void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

inline const QString &image()
{
    static const Programs programs;
    static const QString file = programs.firmware(u"firmware.elf"_s);
    return file;
}

inline double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0 : values[values.size() / 2];
}

inline double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// A client that only writes commands to gdb and reads lines.
class BareClient
{
public:
    BareClient() : m_board({u"qemu-system-arm"_s, u"mps2-an385"_s, image(), {}, 0, false, {}})
    {
        QString error;
        require(m_board.start(&error), qPrintable(error));
        connect(image(), m_board.gdbAddress());
        ask("-break-insert -t main", "^done");
        ask("-exec-continue", "*stopped");
    }
    /// A client of a board that another program has started.
    BareClient(const QString &program, const QString &address) : m_board({}) { connect(program, address); }
    ~BareClient()
    {
        m_gdb.write("-target-disconnect\n-gdb-exit\n"); // else gdb ends the board
        m_gdb.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(BareClient)

    /// Sends a command and reads lines until one starts with @p end, which is returned.
    QByteArray ask(const QByteArray &command, const QByteArray &end)
    {
        m_gdb.write(command + '\n');
        for (;;) {
            while (!m_gdb.canReadLine())
                require(m_gdb.waitForReadyRead(10000), command.constData());
            const QByteArray line = m_gdb.readLine();
            if (line.startsWith(end))
                return line;
            require(!line.startsWith("^error"), line.constData());
        }
    }

private:
    void connect(const QString &program, const QString &address)
    {
        m_gdb.start(u"gdb-multiarch"_s, {u"--nx"_s, u"--quiet"_s, u"--interpreter=mi3"_s});
        for (const char *command : {"-gdb-set mi-async on", "-gdb-set confirm off", "-gdb-set width 0"})
            ask(command, "^done");
        ask("-file-exec-and-symbols " + program.toUtf8(), "^done");
        ask("-target-select remote " + address.toUtf8(), "^connected");
    }

    QemuMachine m_board;
    QProcess m_gdb;
};

inline QString option(const QString &more = {})
{
    return u"qemu:mps2-an385;image="_s + image() + more;
}

inline void setPeer(benchmark::State &state, const QList<double> &ours, const QList<double> &bare)
{
    state.counters["median_ms"] = median(ours);
    state.counters["bare_ms"] = median(bare);
    state.counters["ratio"] = median(bare) > 0 ? median(ours) / median(bare) : 0;
}

/// Measures both alternately, so that the load of the machine is the same for both.
template <typename Ours, typename Bare>
void compare(benchmark::State &state, Ours ours, Bare bare)
{
    QList<double> ourTimes;
    QList<double> bareTimes;
    QElapsedTimer timer;
    for ([[maybe_unused]] auto round : state) {
        timer.start();
        ours();
        ourTimes.append(milliseconds(timer));
        state.SetIterationTime(ourTimes.last() / 1e3);
        timer.start();
        bare();
        bareTimes.append(milliseconds(timer));
    }
    setPeer(state, ourTimes, bareTimes);
}

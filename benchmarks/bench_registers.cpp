// A register pane of 100 registers, all changed by each stop, from the stop to the painted values, beside the bare
// calls of the plug-in; and the same for a peripheral pane with 4,000 registers, of which those on the screen are read.
#include "interfaceobject.h"
#include "peripheralwidget.h"
#include "registerwidget.h"
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
constexpr int RegisterCount = 100;
constexpr int DeviceRegisterCount = 4000;

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/// A processor and a device whose registers have another value at each stop.
class Target : public InterfaceObject<IRegisters, IPeripherals>
{
public:
    QList<RegisterInfo> registers() override
    {
        QList<RegisterInfo> infos;
        for (int i = 0; i < RegisterCount; ++i)
            infos.append({u"r%1"_s.arg(i), i % 10 ? 32u : 64u, {}, Hexadecimal, 31, u"Group %1"_s.arg(i / 25), false});
        return infos;
    }
    uint value(const QString &, int word) override { return uint(stop + word); }
    void setValue(const QString &, uint, int) override {}

    QList<PeripheralInfo> peripherals() override
    {
        PeripheralInfo device{u"DEVICE"_s, {}};
        for (int i = 0; i < DeviceRegisterCount; ++i)
            device.registers.append({u"REGISTER%1"_s.arg(i), 32, false});
        return {device};
    }
    uint value(const QString &, const QString &) override { return uint(stop); }
    void setValue(const QString &, const QString &, uint) override {}
    QString description(const QString &, const QString &) override { return {}; }

    int stop = 0;
};

void showOnScreen(QWidget &pane)
{
    pane.resize(400, 1100);
    pane.show();
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

void stopToPainted(benchmark::State &state, DebugPane &pane, Target &target)
{
    showOnScreen(pane);
    auto *list = pane.findChild<QTreeWidget *>();
    for ([[maybe_unused]] auto _ : state) {
        ++target.stop;
        pane.update();
        list->viewport()->repaint();
    }
}

void registersFromStopToPainted(benchmark::State &state)
{
    const InterfacePtr<Target> target(new Target);
    RegisterWidget pane;
    pane.setRegisters(target.get());
    stopToPainted(state, pane, *target);
    require(pane.text().contains(u"r1 = 0x%1"_s.arg(QString::number(target->stop, 16).toUpper(), 8, u'0')),
            "The registers are not shown.");
}
BENCHMARK(registersFromStopToPainted)->Unit(benchmark::kMicrosecond);

/// The calls that the pane makes at each stop.
void registersBareCalls(benchmark::State &state)
{
    const InterfacePtr<Target> target(new Target);
    for ([[maybe_unused]] auto _ : state) {
        uint sum = 0;
        for (const RegisterInfo &info : target->registers()) {
            for (uint word = 0; word <= info.width / 32 - (info.width == 32); ++word)
                sum += target->value(info.name, int(word));
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(registersBareCalls)->Unit(benchmark::kMicrosecond);

void peripheralsFromStopToPainted(benchmark::State &state)
{
    const InterfacePtr<Target> target(new Target);
    PeripheralWidget pane;
    pane.setPeripherals(target.get());
    stopToPainted(state, pane, *target);
    require(pane.text().startsWith(u"REGISTER0 = 0x%1"_s.arg(QString::number(target->stop, 16).toUpper(), 8, u'0')),
            "The registers are not shown.");
}
BENCHMARK(peripheralsFromStopToPainted)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

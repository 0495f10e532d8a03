#include "qemutarget.h"
#include "memorycell.h"
#include "miconnection.h"
#include "qemumachine.h"
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
constexpr int ConnectLimit = 5000;
constexpr quint64 InterruptControl = 0xE000ED04;
constexpr uint PendSysTick = 1u << 26;

QString emulatorFor(const ElfImage &elf)
{
    switch (elf.machine) {
    case ElfImage::AArch64:
        return u"qemu-system-aarch64"_s;
    case ElfImage::RiscV:
        return elf.wide ? u"qemu-system-riscv64"_s : u"qemu-system-riscv32"_s;
    case ElfImage::Avr:
        return u"qemu-system-avr"_s;
    case ElfImage::X86_64:
    case ElfImage::I386:
        return u"qemu-system-x86_64"_s;
    default:
        return u"qemu-system-arm"_s;
    }
}
} // namespace

QemuTarget::QemuTarget(const TargetOptions &options, const Program &program) : Target(options, program)
{
    QemuMachine::Setup setup;
    setup.program = options.qemu.isEmpty() ? emulatorFor(program.elf) : options.qemu;
    setup.machine = options.machine;
    setup.image = program.file;
    if (QFileInfo(options.secondImage) != QFileInfo(program.file)) // else the program of both cores is loaded already
        setup.secondImage = options.secondImage;
    setup.uart = options.uart;
    setup.semihosting = options.semihosting;
    setup.arguments = QProcess::splitCommand(options.qemuArguments);
    m_machine = std::make_unique<QemuMachine>(setup);
    connect(m_machine.get(), &QemuMachine::output, this, &Target::output);
    connect(m_machine.get(), &QemuMachine::complaint, this, &Target::complaint);
    connect(m_machine.get(), &QemuMachine::died, this, &Target::died);
}

QemuTarget::~QemuTarget() = default;

bool QemuTarget::bringUp(QString *error)
{
    return m_machine->start(error);
}

bool QemuTarget::connectGdb(MiConnection *gdb, bool, QString *error)
{
    const QByteArray kind = severalCores() ? "extended-remote " : "remote ";
    const MiRecord answer = gdb->ask("-target-select " + kind + m_machine->gdbAddress().toUtf8(), ConnectLimit);
    *error = tr("gdb cannot connect to '%1': %2").arg(title(), answer.errorText());
    return answer.isDone() && (!severalCores() || connectSecondCore(gdb, error));
}

/// gdb treats the second core as a second process. Without the query of the thread list and the selection of the first
/// thread, gdb loses the next stop and waits for ever.
bool QemuTarget::connectSecondCore(MiConnection *gdb, QString *error)
{
    const QList<QByteArray> commands = {"-gdb-set schedule-multiple on",
                                        "-add-inferior",
                                        "-target-attach --thread-group i2 2",
                                        "-thread-info",
                                        "-file-exec-and-symbols --thread-group i2 " + miQuoted(m_options.secondImage),
                                        "-thread-select 1"};
    for (const QByteArray &command : commands) {
        const MiRecord answer = gdb->ask(command, ConnectLimit);
        *error = tr("The second core of '%1' cannot be connected: %2").arg(title(), answer.errorText());
        if (answer.isError())
            return false;
    }
    return true;
}

bool QemuTarget::rewind(MiConnection *gdb, QString *error)
{
    (void)gdb->ask("-target-disconnect");
    m_machine->end();
    return m_machine->start(error) && connectGdb(gdb, false, error);
}

QByteArray QemuTarget::startCommand(bool toFunction) const
{
    if (!toFunction)
        return {};
    return severalCores() ? "-exec-continue --all" : "-exec-continue";
}

void QemuTarget::end(MiConnection *)
{
    m_machine->end();
}

RegionTable QemuTarget::regions(MiConnection *) const
{
    const RegionTable known = boardRegions(m_options.machine);
    return known.isEmpty() ? parseMemoryTree(m_machine->monitor(u"info mtree -f"_s)) : known;
}

bool QemuTarget::readDirectly(quint64 address, int length, QByteArray *bytes)
{
    uint value = 0;
    if (length != 1 && length != 2 && length != 4) {
        *bytes = m_machine->read(address, length);
        return !bytes->isEmpty();
    }
    if (!m_machine->readWord(address, length, &value))
        return false;
    *bytes = memoryCellBytes(value, length, m_program.elf.bigEndian);
    return true;
}

bool QemuTarget::writeDirectly(quint64 address, const QByteArray &bytes)
{
    const int length = int(bytes.size());
    if (length != 1 && length != 2 && length != 4)
        return m_machine->write(address, bytes);
    return m_machine->writeWord(address, length, memoryCellValue(bytes, m_program.elf.bigEndian));
}

bool QemuTarget::canWakeUp() const
{
    return boardRegions(m_options.machine).at(InterruptControl) != nullptr;
}

void QemuTarget::wakeUp()
{
    m_machine->writeWord(InterruptControl, 4, PendSysTick);
}

void QemuTarget::writeInput(const QByteArray &bytes)
{
    m_machine->writeSerial(bytes);
}

qint64 QemuTarget::processId() const
{
    return m_machine->processId();
}

bool QemuTarget::readOutput()
{
    return m_machine->readOutput();
}

#include "remotetarget.h"
#include "debugserver.h"
#include "miconnection.h"
#include "openocdport.h"
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
constexpr int ConnectLimit = 5000;
constexpr int EndLimit = 2000;
constexpr int PacketLimit = 2; // seconds, gdb's default
constexpr quint64 UpperHalf = 0x80000000;

/// The host of "host:port"; this computer for the path of a socket.
QString hostOf(const QString &address)
{
    const QString host = address.contains(u'/') ? QString() : address.left(address.lastIndexOf(u':'));
    return host.isEmpty() ? u"127.0.0.1"_s : host;
}
} // namespace

RemoteTarget::RemoteTarget(const TargetOptions &options, const Program &program)
    : Target(options, program), m_address(options.address), m_tclPort(options.tclPort)
{
    if (!options.server.isEmpty())
        prepareServer();
}

RemoteTarget::~RemoteTarget() = default;

/// Each argument is replaced by itself, so that a path may contain blanks. OpenOCD gets a port for its memory in front
/// of its other arguments, which may set another one.
void RemoteTarget::prepareServer()
{
    const QString port = QString::number(freePort());
    m_address.replace(u"$(Port)"_s, port);
    QStringList command = QProcess::splitCommand(m_options.server);
    for (QString &argument : command)
        argument.replace(u"$(Port)"_s, port).replace(u"$(Program)"_s, m_program.file);
    const bool isOpenOcd = QFileInfo(command.value(0)).fileName() == u"openocd";
    if (isOpenOcd && m_tclPort == 0) {
        do
            m_tclPort = freePort();
        while (m_tclPort == port.toInt());
        command = command.first(1) + QStringList{u"-c"_s, u"tcl_port %1"_s.arg(m_tclPort)} + command.sliced(1);
    }
    m_server =
        std::make_unique<DebugServer>(DebugServer::Setup{command, m_options.workingDirectory, m_address, isOpenOcd});
    connect(m_server.get(), &DebugServer::output, this, &Target::output);
    connect(m_server.get(), &DebugServer::complaint, this, &Target::complaint);
    connect(m_server.get(), &DebugServer::died, this, &Target::died);
}

bool RemoteTarget::bringUp(QString *error)
{
    if (m_address.isEmpty()) {
        *error = tr("The project property \"Address\" of the target is empty.");
        return false;
    }
    return !m_server || m_server->start(error);
}

bool RemoteTarget::connectGdb(MiConnection *gdb, bool attachOnly, QString *error)
{
    if (m_server) {
        if (!connectServer(gdb, error))
            return false;
        openMemory();
        return attachOnly || !loads() || load(gdb, error);
    }
    const MiRecord answer = gdb->ask("-target-select remote " + m_address.toUtf8(), ConnectLimit);
    if (answer.isError()) {
        *error = tr("gdb cannot connect to '%1': %2\nIs the target's server running, and no other debugger on it?")
                     .arg(title(), answer.errorText());
        return false;
    }
    openMemory();
    return attachOnly || !loads() || load(gdb, error);
}

void RemoteTarget::openMemory()
{
    if (m_tclPort <= 0)
        return;
    m_memory = std::make_unique<OpenOcdPort>(hostOf(m_address), quint16(m_tclPort), m_program.elf.bigEndian);
    connect(m_memory.get(), &OpenOcdPort::failed, this, [this](const QString &reason) {
        Q_EMIT complaint(tr("The memory is not read while the program runs, because there is no connection to the Tcl "
                            "port %1 of OpenOCD: %2\n")
                             .arg(QString::number(m_tclPort), reason));
    });
}

bool RemoteTarget::connectServer(MiConnection *gdb, QString *error)
{
    return m_server->connectGdb(gdb, m_options.timeLimit * 1000, error);
}

/// A native server runs its program already, and AVR simulators get theirs on the command line.
bool RemoteTarget::loads() const
{
    return m_options.load && !m_program.elf.isNative() && m_program.elf.machine != ElfImage::Avr;
}

bool RemoteTarget::load(MiConnection *gdb, QString *error)
{
    const int slowest = std::max(m_options.timeLimit, PacketLimit); // a slow probe may need seconds for one packet
    gdb->send("-gdb-set remotetimeout " + QByteArray::number(slowest));
    const MiRecord answer = gdb->ask("-target-download", m_options.timeLimit * 1000, MiConnection::Limit::Silence);
    gdb->send("-gdb-set remotetimeout " + QByteArray::number(PacketLimit));
    *error = tr("The program cannot be loaded into '%1': %2").arg(title(), answer.errorText());
    return answer.isDone() && (m_options.resetCommand.isEmpty() || reset(gdb, error));
}

bool RemoteTarget::reset(MiConnection *gdb, QString *error)
{
    QString output;
    const MiRecord answer = gdb->askConsole(u"monitor "_s + m_options.resetCommand, &output, ConnectLimit);
    *error = tr("'%1' cannot be reset: %2").arg(title(), answer.errorText());
    gdb->send("-interpreter-exec console \"maint flush register-cache\""); // gdb does not notice that the reset has
                                                                           // changed registers
    return answer.isDone();
}

bool RemoteTarget::canRewind(QString *reason) const
{
    const bool possible = !m_options.resetCommand.isEmpty() || m_server || !m_program.elf.isNative();
    if (!possible)
        *reason = tr("'%1' cannot start its program again.").arg(title());
    return possible;
}

bool RemoteTarget::rewind(MiConnection *gdb, QString *error)
{
    if (!m_options.resetCommand.isEmpty())
        return reset(gdb, error);
    if (m_server) { // a server that starts again resets its devices as well
        m_memory.reset();
        (void)gdb->ask("-target-disconnect", EndLimit);
        m_server->end();
        return m_server->start(error) && connectGdb(gdb, false, error);
    }
    if (!canRewind(error))
        return false;
    if (loads())
        return load(gdb, error);
    const MiRecord answer = gdb->ask("-data-evaluate-expression $pc=" + QByteArray::number(m_program.elf.entry));
    *error = tr("'%1' cannot be reset: %2").arg(title(), answer.errorText());
    return answer.isDone();
}

void RemoteTarget::end(MiConnection *gdb)
{
    m_memory.reset();
    if (gdb->isOpen())
        (void)gdb->ask(m_options.leaveRunning ? "-target-detach" : "-target-disconnect", EndLimit);
    if (m_server)
        m_server->end();
}

RegionTable RemoteTarget::regions(MiConnection *gdb) const
{
    QString text;
    (void)gdb->askConsole(u"info mem"_s, &text);
    RegionTable reported = parseMemoryAttributes(text);
    if (!reported.isEmpty())
        return reported;
    QList<TargetRegion> regions; // only the addresses of the program are known; the user can set the regions
    for (const ElfImage::Segment &segment : m_program.elf.segments) {
        if (segment.executable)
            regions.append({tr("Program"), segment.address, segment.size, TargetRegion::Kind::Ram});
    }
    if (!m_program.elf.wide) { // the disassembly window can show no more than half of it
        regions.append({tr("Memory below 0x80000000"), 0, UpperHalf, TargetRegion::Kind::Ram});
        regions.append({tr("Memory from 0x80000000"), UpperHalf, UpperHalf, TargetRegion::Kind::Ram});
    }
    return RegionTable(regions);
}

bool RemoteTarget::readsDirectly() const
{
    return m_memory && m_memory->isUsable();
}

bool RemoteTarget::readDirectly(quint64 address, int length, QByteArray *bytes)
{
    return m_memory && m_memory->readNow(address, length, bytes);
}

bool RemoteTarget::writeDirectly(quint64 address, const QByteArray &bytes)
{
    return m_memory && m_memory->writeNow(address, bytes);
}

void RemoteTarget::readLater(quint64 address, int length, const std::function<void(const QByteArray &)> &done)
{
    if (m_memory)
        m_memory->read(address, length, done);
    else
        done({});
}

void RemoteTarget::writeLater(quint64 address, const QByteArray &bytes, const std::function<void(bool)> &done)
{
    if (m_memory)
        m_memory->write(address, bytes, done);
    else
        done(false);
}

bool RemoteTarget::readOutput()
{
    return m_server && m_server->readOutput();
}

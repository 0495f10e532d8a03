#include "target.h"
#include "nativetarget.h"
#include "qemutarget.h"
#include "remotetarget.h"

Target::Target(const TargetOptions &options, const Program &program, QObject *parent)
    : QObject(parent), m_options(options), m_program(program)
{}

std::unique_ptr<Target> Target::create(const TargetOptions &options, const Program &program)
{
    TargetOptions::Kind kind = options.kind;
    if (kind == TargetOptions::Kind::Automatic)
        kind = program.elf.isNative() ? TargetOptions::Kind::Native : TargetOptions::Kind::Qemu;
    if (kind == TargetOptions::Kind::Native)
        return std::make_unique<NativeTarget>(options, program);
    if (kind == TargetOptions::Kind::Remote)
        return std::make_unique<RemoteTarget>(options, program);
    return std::make_unique<QemuTarget>(options, program);
}

bool Target::bringUp(QString *)
{
    return true;
}

bool Target::canRewind(QString *) const
{
    return true;
}

QByteArray Target::startCommand(bool toFunction) const
{
    return toFunction ? "-exec-continue" : "";
}

bool Target::readDirectly(quint64, int, QByteArray *)
{
    return false;
}

bool Target::writeDirectly(quint64, const QByteArray &)
{
    return false;
}

void Target::readLater(quint64 address, int length, const std::function<void(const QByteArray &)> &done)
{
    QByteArray bytes;
    (void)readDirectly(address, length, &bytes);
    done(bytes);
}

void Target::writeLater(quint64 address, const QByteArray &bytes, const std::function<void(bool)> &done)
{
    done(writeDirectly(address, bytes));
}

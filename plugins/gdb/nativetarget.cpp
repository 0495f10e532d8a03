#include "nativetarget.h"
#include "miconnection.h"
#include "nativeterminal.h"
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int AttachLimit = 10000;
constexpr int EndLimit = 2000;

qint64 inferiorId(MiConnection *gdb)
{
    const MiRecord answer = gdb->ask("-list-thread-groups");
    for (const MiValue &group : answer.results[u"groups"].items()) {
        if (group.contains(u"pid"))
            return group.text(u"pid").toLongLong();
    }
    return 0;
}
} // namespace

NativeTarget::NativeTarget(const TargetOptions &options, const Program &program) : Target(options, program) {}

NativeTarget::~NativeTarget() = default;

QString NativeTarget::title() const
{
    return QFileInfo(m_program.file).fileName();
}

bool NativeTarget::bringUp(QString *error)
{
    m_terminal = std::make_unique<NativeTerminal>();
    connect(m_terminal.get(), &NativeTerminal::output, this, &Target::output);
    if (m_terminal->name().isEmpty())
        *error = tr("No terminal is available for the program.");
    return !m_terminal->name().isEmpty();
}

bool NativeTarget::connectGdb(MiConnection *gdb, bool attachOnly, QString *error)
{
    m_attached = attachOnly;
    if (attachOnly) {
        const MiRecord answer = gdb->ask("-target-attach " + QByteArray::number(m_options.processId), AttachLimit);
        *error = tr("Cannot attach to process %1: %2").arg(m_options.processId).arg(answer.errorText());
        return answer.isDone();
    }
    gdb->send("-inferior-tty-set " + miQuoted(m_terminal->name()));
    if (!m_options.workingDirectory.isEmpty())
        gdb->send("-environment-cd " + miQuoted(m_options.workingDirectory));
    if (!m_options.arguments.isEmpty())
        gdb->send("-exec-arguments " + m_options.arguments.toUtf8());
    return true;
}

bool NativeTarget::rewind(MiConnection *, QString *error)
{
    if (m_attached)
        *error = tr("A program that was attached to cannot be started again.");
    return !m_attached;
}

QByteArray NativeTarget::startCommand(bool toFunction) const
{
    return toFunction ? "-exec-run" : "-interpreter-exec console starti";
}

void NativeTarget::end(MiConnection *gdb)
{
    if (gdb->isOpen())
        (void)gdb->ask(m_attached ? "-target-detach" : "-interpreter-exec console kill", EndLimit);
    m_terminal.reset();
}

RegionTable NativeTarget::regions(MiConnection *gdb) const
{
    QFile maps(u"/proc/%1/maps"_s.arg(inferiorId(gdb)));
    return maps.open(QIODevice::ReadOnly) ? parseProcessMaps(QString::fromLocal8Bit(maps.readAll())) : RegionTable();
}

void NativeTarget::writeInput(const QByteArray &bytes)
{
    if (m_terminal)
        m_terminal->write(bytes);
}

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
        *error = tr("Cannot attach to process %1: %2").arg(QString::number(m_options.processId), answer.errorText());
        return answer.isDone();
    }
    gdb->send("-inferior-tty-set " + miQuoted(m_terminal->name()));
    if (!m_options.workingDirectory.isEmpty())
        gdb->send("-environment-cd " + miQuoted(m_options.workingDirectory));
    if (!m_options.arguments.isEmpty())
        gdb->send("-exec-arguments " + m_options.arguments.toUtf8());
    setEnvironment(gdb);
    return true;
}

/// Removes a variable of Varnel's own environment from that of the program if no value is given.
void NativeTarget::setEnvironment(MiConnection *gdb) const
{
    for (const QString &variable : m_options.environment.split(u';', Qt::SkipEmptyParts)) {
        const QString name = variable.section(u'=', 0, 0).trimmed();
        const QString line = variable.contains(u'=') ? u"set environment %1 = %2"_s.arg(name, variable.section(u'=', 1))
                                                     : u"unset environment "_s + name;
        if (!name.isEmpty())
            gdb->send("-interpreter-exec console " + miQuoted(line));
    }
}

bool NativeTarget::canRewind(QString *reason) const
{
    if (m_attached)
        *reason = tr("A program that was attached to cannot be started again.");
    return !m_attached;
}

bool NativeTarget::rewind(MiConnection *, QString *error)
{
    return canRewind(error);
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

bool NativeTarget::readOutput()
{
    return m_terminal && m_terminal->readAvailable();
}

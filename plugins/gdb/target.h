#pragma once
#include "elfimage.h"
#include "regiontable.h"
#include "targetoptions.h"
#include <memory>
#include <QObject>
class MiConnection;

/// What gdb debugs: how it is brought up, connected, put back to its start and ended.
class Target : public QObject
{
    Q_OBJECT
public:
    struct Program
    {
        QString file; ///< absolute; empty if there is none
        ElfImage elf;
    };

    Target(const TargetOptions &options, const Program &program, QObject *parent = nullptr);
    /// The target that @p options ask for.
    [[nodiscard]] static std::unique_ptr<Target> create(const TargetOptions &options, const Program &program);

    [[nodiscard]] virtual QString title() const = 0; ///< Names it to the user.
    /// Starts what is ours to start. False with @p error set if that fails, as with the following.
    virtual bool bringUp(QString *error);
    /// Connects gdb, which has the program loaded. After it a program to be attached to is stopped; others are stopped
    /// at their start, or wait for startCommand().
    virtual bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) = 0;
    /// Puts the program, which is stopped, back to its start. A native one begins anew by startCommand().
    virtual bool rewind(MiConnection *gdb, QString *error) = 0;
    /// What sets the program going from its start; @p toFunction if a breakpoint will stop it, otherwise it has to stop
    /// at its first instruction. Empty if it stands there already.
    [[nodiscard]] virtual QByteArray startCommand(bool toFunction) const;
    virtual void end(MiConnection *gdb) = 0; ///< Ends what bringUp() and connectGdb() began; no signal follows.

    [[nodiscard]] virtual bool severalCores() const { return false; }
    [[nodiscard]] virtual RegionTable regions(MiConnection *gdb) const = 0;
    /// Whether gdb reads memory while the program runs.
    [[nodiscard]] virtual bool readsWhileRunning() const { return false; }
    /// Reads and writes past gdb, running or not: 1, 2 or 4 bytes as a device sees them, or any number of them. False
    /// where there is no such way.
    virtual bool readDirectly(quint64 address, int length, QByteArray *bytes);
    virtual bool writeDirectly(quint64 address, const QByteArray &bytes);
    [[nodiscard]] virtual bool canWakeUp() const { return false; }
    virtual void wakeUp() {}
    virtual void writeInput(const QByteArray &) {} ///< For the program's serial port or terminal.
    /// Whether a stop record tells of the program's end, and the other records of it are of no account.
    [[nodiscard]] virtual bool stopsAtItsEnd() const { return false; }
    /// What the loss of gdb's connection means: the target has ended, if it is ours.
    [[nodiscard]] virtual bool endsWithConnection() const { return false; }

Q_SIGNALS:
    void output(const QByteArray &bytes);
    void complaint(const QString &text);
    void died(const QString &reason);

protected:
    const TargetOptions m_options;
    const Program m_program;
};

#pragma once
#include "elfimage.h"
#include "regiontable.h"
#include "targetoptions.h"
#include <functional>
#include <memory>
#include <QObject>
class MiConnection;

/// What gdb debugs: how it is started, connected, taken back to its start and ended.
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
    /// The kind of target that @p options select.
    [[nodiscard]] static std::unique_ptr<Target> create(const TargetOptions &options, const Program &program);

    [[nodiscard]] virtual QString title() const = 0; ///< The name that the user sees.
    /// Starts the processes of the target. False with @p error set if that fails; the same for the next functions.
    virtual bool bringUp(QString *error);
    /// Connects gdb, which has loaded the symbols. Afterwards an attached program is stopped where it was; others are
    /// stopped at their start, or are started by startCommand().
    virtual bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) = 0;
    /// Whether rewind() is possible. If not, @p reason is set to a message for the user.
    [[nodiscard]] virtual bool canRewind(QString *reason) const;
    /// Takes the stopped program back to its start. A native program is run again by startCommand().
    virtual bool rewind(MiConnection *gdb, QString *error) = 0;
    /// The command that runs the program from its start. Without @p toFunction there is no breakpoint, and the program
    /// must stop at its first instruction. Empty if it is stopped there already.
    [[nodiscard]] virtual QByteArray startCommand(bool toFunction) const;
    /// Whether startCommand() creates the program: if it fails, there is none.
    [[nodiscard]] virtual bool isCreatedByStartCommand() const { return false; }
    virtual void end(MiConnection *gdb) = 0; ///< Ends what bringUp() and connectGdb() began; no signal follows.

    [[nodiscard]] virtual bool severalCores() const { return false; }
    /// Whether the number of breakpoints is not limited by the processor.
    [[nodiscard]] virtual bool isEmulated() const { return false; }
    [[nodiscard]] virtual RegionTable regions(MiConnection *gdb) const = 0;
    /// Whether gdb can read memory while the program runs.
    [[nodiscard]] virtual bool readsWhileRunning() const { return false; }
    /// Whether readDirectly() is supported.
    [[nodiscard]] virtual bool readsDirectly() const { return false; }
    /// Reads and writes without gdb, also while the program runs: 1, 2 or 4 bytes in one access, or any other number.
    /// False if the target does not support that.
    virtual bool readDirectly(quint64 address, int length, QByteArray *bytes);
    virtual bool writeDirectly(quint64 address, const QByteArray &bytes);
    /// The same without waiting for the end: @p done gets the bytes, none after a failure. It is not called if the
    /// target is deleted before.
    virtual void readLater(quint64 address, int length, const std::function<void(const QByteArray &bytes)> &done);
    virtual void writeLater(quint64 address, const QByteArray &bytes, const std::function<void(bool success)> &done);
    /// How many bytes such an access may have without keeping others waiting for long.
    [[nodiscard]] virtual int largestAccess() const { return 8192; }
    [[nodiscard]] virtual bool canWakeUp() const { return false; }
    virtual void wakeUp() {}
    virtual void writeInput(const QByteArray &) {} ///< To the program's serial port or terminal.
    /// Emits what the program has written so far, without the event loop. False if there was nothing.
    virtual bool readOutput() { return false; }
    /// Whether the end of the program is reported by a stop record, so that other records about it are ignored.
    [[nodiscard]] virtual bool stopsAtItsEnd() const { return false; }
    /// Whether a lost connection means that the target has ended, because it belongs to the session.
    [[nodiscard]] virtual bool endsWithConnection() const { return false; }
    /// Whether a running program has to be paused before end().
    [[nodiscard]] virtual bool isPausedToEnd() const { return !endsWithConnection(); }

Q_SIGNALS:
    void output(const QByteArray &bytes);
    void complaint(const QString &text);
    void died(const QString &reason);

protected:
    const TargetOptions m_options;
    const Program m_program;
};

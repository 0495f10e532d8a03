#pragma once
#include "backgroundtask.h"
#include "miconnection.h"
#include "target.h"
#include "targetstate.h"
#include <memory>
#include <optional>
#include <QObject>
#include <QTimer>

/// One debug session: a gdb, its target, and the state and location of the program.
///
/// Commands that run the program return at once; changed() reports the result later, from the event loop. Functions
/// that query gdb wait with a time limit and do not run the event loop.
class GdbSession : public QObject
{
    Q_OBJECT
public:
    /// A frame of the call stack: the current function or one of its callers.
    struct Frame
    {
        quint64 address = 0;
        QString function;
        QString file; ///< as gdb reports it: the absolute path at build time; empty if unknown
        int line = 0;
        int level = 0;
    };

    explicit GdbSession(QObject *parent = nullptr);
    ~GdbSession() override;

    /// Starts target and gdb and takes the program to its start. False after a failure, which message() has reported.
    bool start(const TargetOptions &options, const Target::Program &program, bool attachOnly);
    /// True if restart() is impossible, which message() has reported. Nothing has changed then.
    bool refuseRestart();
    void restart(); ///< Takes the program back to its start. After a failure, which message() reports, it has ended.
    void end();

    void resume();
    void step(const QByteArray &command); ///< One of gdb's stepping commands: "-exec-next" and so on.
    void runTo(const QString &location);  ///< "--source FILE --line N" or "*ADDRESS".
    /// Moves the stopped program to an address without executing anything. False if that fails.
    bool moveTo(quint64 address);
    void pause();
    [[nodiscard]] bool canWakeUp() const;
    void wakeUp();

    /// In which start() and restart() can run without blocking. Until it has ended, isStopped() and isAlive() return
    /// false to all other callers.
    [[nodiscard]] BackgroundTask *task() { return &m_task; }
    [[nodiscard]] bool isBusy() const { return m_task.isActive() && !m_task.isCurrent(); }

    [[nodiscard]] TargetState state() const { return m_state; }
    [[nodiscard]] bool isStopped() const { return m_state.phase == TargetState::Stopped && !isBusy(); }
    [[nodiscard]] bool isAlive() const { return exists() && !isBusy(); }
    [[nodiscard]] Frame frame() const { return m_shown.value_or(m_frame); }
    [[nodiscard]] int selectedLevel() const { return m_frame.level; } ///< of gdb's frame, also if another one is shown
    [[nodiscard]] QString threadId() const { return m_thread; }
    [[nodiscard]] static Frame frameOf(const MiValue &frame);
    /// Selects a frame of the stopped program, as gdb has reported it, without waiting for gdb.
    void selectFrame(const QString &threadId, const Frame &frame);
    /// Makes a frame that gdb cannot select the location of the stopped program, until another one is selected.
    void showFrame(const Frame &frame);
    /// A number that grows with each stop, and with each other change to memory or registers of the target.
    [[nodiscard]] int generation() const { return m_generation; }
    void targetChanged() { ++m_generation; }
    [[nodiscard]] int stopNumber() const { return m_stopNumber; } ///< Grows with each stop.

    [[nodiscard]] MiConnection *gdb() { return &m_gdb; }
    [[nodiscard]] Target *target() { return m_target.get(); } ///< null without a session
    [[nodiscard]] const Target::Program &program() const { return m_program; }
    [[nodiscard]] QStringList programFiles() const; ///< The program and the further symbol files.
    /// Adds the symbols of a further program. False with @p error set to a message if that fails.
    bool addSymbols(const QString &file, QString *error);
    /// Reads four bytes of a little-endian target through gdb.
    bool readWord(quint64 address, uint *value);
    /// Calls @p work while the program is stopped. A running program is paused for it and resumed, which the host does
    /// not see. False if the program cannot be paused.
    bool whilePaused(const std::function<void()> &work);

    /// Resumes or pauses every session of a list. The commands do not wait for answers.
    static void resumeAll(const QList<GdbSession *> &sessions);
    static void pauseAll(const QList<GdbSession *> &sessions);

Q_SIGNALS:
    void changed();                                  ///< the state or the location; emitted from the event loop
    void progress(const QString &step, int percent); ///< of start() and restart(); -1 if it is not known
    void symbolsLoaded();                            ///< breakpoints can be set
    void programLoaded();                            ///< addresses are final
    void message(const QString &text, bool serious);
    void stopText(const QString &text);            ///< the reason of a stop; empty if the user knows it
    void output(const QByteArray &bytes);          ///< of the program
    void breakpointRecord(const MiRecord &record); ///< gdb changed or deleted a breakpoint

private:
    [[nodiscard]] bool exists() const; ///< a program, stopped or running
    [[nodiscard]] bool wasCancelled() const { return m_task.isCurrent() && m_task.isCancelled(); }
    void reportDownload(const MiValue &progress);
    bool openGdb(QString *error);
    void rewindTarget();
    bool loadSymbols(QString *error);
    bool bringUp(QString *error);
    bool beginProgram(QString *error);
    void runToFunction();
    void fail(const QString &text);
    void handleAsync(const MiRecord &record);
    void handleStop(const MiRecord &record);
    void handleGroupExit(const MiRecord &record);
    void handleError(const QString &text);
    void targetDied(const QString &reason);
    void gdbClosed();
    void apply(TargetEvent event);
    void request(RunEvent event);
    void announce();
    void go(const QByteArray &command, TargetEvent ifRefused = TargetEvent::Stopped);
    void runRefused(const QString &error, TargetEvent event);
    void takeLog(const QString &text);
    void clearTemporary(int hit);
    bool interrupt();
    bool waitForStop();
    void endOwnPause();
    void reportFailedPause();
    void takeFrame(const MiValue &frame);

    BackgroundTask m_task;
    MiConnection m_gdb;
    std::shared_ptr<Target> m_target; ///< shared with start() and restart(), which may process events
    TargetOptions m_options;
    Target::Program m_program;
    bool m_attached = false;
    TargetState m_state;
    RunRequest m_request;
    Frame m_frame;
    std::optional<Frame> m_shown; ///< instead of that
    QString m_thread;
    double m_sectionsBefore = 0; ///< bytes of the sections whose download has begun
    int m_generation = 0;
    int m_stopNumber = 0;
    int m_temporary = 0;  ///< gdb's number of the breakpoint that runTo() set; 0 for none
    QString m_runLog;     ///< what gdb has logged since the last run command
    QTimer m_changeTimer; ///< active while changed() is due
};

#pragma once
#include "miconnection.h"
#include "target.h"
#include "targetstate.h"
#include <memory>
#include <QObject>

/// One debug session: a gdb, its target, and where the program stands.
///
/// Commands that set the program going return at once; changed() tells what became of them, later and from the event
/// loop. What asks gdb waits with a time limit, without running the event loop.
class GdbSession : public QObject
{
    Q_OBJECT
public:
    /// Where the program stands, or one of its callers.
    struct Frame
    {
        quint64 address = 0;
        QString function;
        QString file; ///< as gdb gives it: absolute, as it was when the program was built; empty if not known
        int line = 0;
        int level = 0;
    };

    explicit GdbSession(QObject *parent = nullptr);
    ~GdbSession() override;

    /// Brings up target and gdb, and the program to its start. False after a failure, which message() has told.
    bool start(const TargetOptions &options, const Target::Program &program, bool attachOnly);
    bool restart(); ///< The program stopped at its start anew. False after a failure, which message() has told.
    void end();

    void resume();
    void step(const QByteArray &command); ///< One of gdb's commands that run for a while: "-exec-next" and so on.
    void runTo(const QString &location);  ///< "--source FILE --line N" or "*ADDRESS".
    void pause();
    void wakeUp();

    [[nodiscard]] TargetState state() const { return m_state; }
    [[nodiscard]] bool isStopped() const { return m_state.phase == TargetState::Stopped; }
    [[nodiscard]] bool isAlive() const { return isStopped() || m_state.phase == TargetState::Running; }
    [[nodiscard]] Frame frame() const { return m_frame; }
    [[nodiscard]] QString threadId() const { return m_thread; }
    bool selectFrame(int level);                ///< A caller of the function that the program stands in.
    bool selectThread(const QString &threadId); ///< Its innermost frame becomes the one that counts.
    /// Counts the stops, and all else that may change what the target's memory and registers hold.
    [[nodiscard]] int generation() const { return m_generation; }
    void targetChanged() { ++m_generation; }

    [[nodiscard]] MiConnection *gdb() { return &m_gdb; }
    [[nodiscard]] Target *target() { return m_target.get(); } ///< null without a session
    [[nodiscard]] const Target::Program &program() const { return m_program; }
    [[nodiscard]] QStringList programFiles() const; ///< The program and what was loaded beside it.
    /// Does @p work while the program is stopped, for an instant and unnoticed if it runs. False if it cannot be
    /// stopped.
    bool whilePaused(const std::function<void()> &work);

    /// Has every session of a list run, or pause: all are told before the first answer is awaited.
    static void resumeAll(const QList<GdbSession *> &sessions);
    static void pauseAll(const QList<GdbSession *> &sessions);

Q_SIGNALS:
    void changed();       ///< the state, or the place where the program stands; from the event loop
    void symbolsLoaded(); ///< breakpoints can be set
    void programLoaded(); ///< addresses are final
    void message(const QString &text, bool serious);
    void stopText(const QString &text);            ///< why the program stopped; empty where that is plain
    void output(const QByteArray &bytes);          ///< of the program
    void breakpointRecord(const MiRecord &record); ///< gdb changed or deleted a breakpoint

private:
    bool openGdb(QString *error);
    bool loadSymbols(QString *error);
    bool beginProgram(QString *error);
    void runToFunction();
    void fail(const QString &text);
    void setUp();
    void handleAsync(const MiRecord &record);
    void handleStop(const MiRecord &record);
    void handleGroupExit(const MiRecord &record);
    void handleError(const QString &text);
    void targetDied(const QString &reason);
    void gdbClosed();
    void apply(TargetEvent event);
    void announce();
    void go(const QByteArray &command);
    void clearTemporary(int hit);
    void showSelection();
    bool interrupt();
    void takeFrame(const MiValue &frame);

    MiConnection m_gdb;
    std::unique_ptr<Target> m_target;
    TargetOptions m_options;
    Target::Program m_program;
    bool m_attached = false;
    TargetState m_state;
    Frame m_frame;
    QString m_thread;
    int m_generation = 0;
    int m_temporary = 0; ///< gdb's number of the breakpoint that runTo() set
    bool m_stepping = false;
    bool m_pausing = false;    ///< asked for by the user, and not yet come
    bool m_hidingStop = false; ///< a stop that we asked for is nobody's business
    bool m_stopHidden = false; ///< the last stop was such a one
    bool m_announced = false;  ///< changed() is due
};

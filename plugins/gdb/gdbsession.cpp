#include "gdbsession.h"
#include "debugserver.h"
#include "gdbsetup.h"
#include <algorithm>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
constexpr int LoadLimit = 30000;
constexpr int ExitLimit = 300;

QStringList parts(const QString &list)
{
    return list.split(u';', Qt::SkipEmptyParts);
}
} // namespace

GdbSession::GdbSession(QObject *parent) : QObject(parent)
{
    connect(&m_gdb, &MiConnection::asyncRecord, this, &GdbSession::handleAsync);
    connect(&m_gdb, &MiConnection::failed, this, &GdbSession::handleError);
    connect(&m_gdb, &MiConnection::logText, this, &GdbSession::takeLog);
    connect(&m_gdb, &MiConnection::closed, this, &GdbSession::gdbClosed);
    connect(&m_gdb, &MiConnection::targetText, this, [this, line = OpenLine()](const QString &text) mutable {
        const bool repeatsAnswers = // OpenOCD also sends gdb what it answers on its Tcl port
            m_options.kind == TargetOptions::Kind::Remote && m_target && m_target->readsDirectly();
        const QString shown = repeatsAnswers ? withoutNumbers(text, &line) : text;
        if (!shown.isEmpty())
            Q_EMIT output(shown.toUtf8());
    });
    connect(&m_gdb, &MiConnection::dialogue, &m_task, &BackgroundTask::wake);
    connect(&m_task, &BackgroundTask::ended, this, &GdbSession::announce);
    m_gdb.setWorkWhileWaiting([this] { return m_target && m_target->readOutput(); });
    m_changeTimer.setSingleShot(true);
    connect(&m_changeTimer, &QTimer::timeout, this, &GdbSession::changed);
    connect(&m_gdb, &MiConnection::strayText, this, [this](const QString &text) { Q_EMIT output(text.toUtf8()); });
}

GdbSession::~GdbSession()
{
    blockSignals(true);
    end();
}

// Start and end -------------------------------------------------------------------------------------------------------

bool GdbSession::start(const TargetOptions &options, const Target::Program &program, bool attachOnly)
{
    end();
    m_options = options;
    m_program = program;
    m_attached = attachOnly;
    const std::shared_ptr<Target> target(Target::create(options, program).release(),
                                         [](Target *each) { each->deleteLater(); }); // it may call what deletes it
    m_target = target;
    connect(m_target.get(), &Target::output, this, &GdbSession::output);
    connect(m_target.get(), &Target::output, &m_gdb, &MiConnection::noteSignOfLife);
    connect(m_target.get(), &Target::complaint, this, [this](const QString &text) { Q_EMIT message(text, false); });
    connect(m_target.get(), &Target::died, this, &GdbSession::targetDied);
    QString error;
    if (openGdb(&error) && loadSymbols(&error) && bringUp(&error) && m_target == target && beginProgram(&error))
        return true;
    if (m_target == target) // else the session was ended meanwhile
        fail(error);
    return false;
}

bool GdbSession::openGdb(QString *error)
{
    if (!m_gdb.open(gdbFor(m_options, m_program.elf), error))
        return false;
    for (const QByteArray &command : gdbSettings(m_options, m_program.elf))
        m_gdb.send(command);
    return true;
}

bool GdbSession::bringUp(QString *error)
{
    Q_EMIT progress(tr("Starting '%1'...").arg(m_target->title()), -1);
    m_sectionsBefore = 0;
    return m_target->bringUp(error);
}

bool GdbSession::loadSymbols(QString *error)
{
    if (m_program.file.isEmpty())
        return true;
    Q_EMIT progress(tr("Reading the symbols of '%1'...").arg(QFileInfo(m_program.file).fileName()), -1);
    const MiRecord answer = m_gdb.ask("-file-exec-and-symbols " + miQuoted(m_program.file), LoadLimit);
    if (answer.isError()) {
        *error = tr("'%1' cannot be loaded: %2").arg(m_program.file, answer.errorText());
        return false;
    }
    for (const QString &file : parts(m_options.symbolFiles)) {
        QString symbolError;
        if (!addSymbols(file, &symbolError))
            Q_EMIT message(symbolError, false);
    }
    if (!m_program.elf.debugInformation)
        Q_EMIT message(tr("'%1' has no debug information: there are no source lines and no variables. "
                          "Compile with -g.\n")
                           .arg(m_program.file),
                       false);
    return true;
}

bool GdbSession::addSymbols(const QString &file, QString *error)
{
    const MiRecord answer =
        m_gdb.ask("-interpreter-exec console " + miQuoted(u"add-symbol-file \"%1\""_s.arg(file)), LoadLimit);
    *error = tr("The symbols of '%1' cannot be loaded: %2\n").arg(file, answer.errorText());
    return answer.isDone();
}

bool GdbSession::beginProgram(QString *error)
{
    const std::shared_ptr<Target> target = m_target;
    Q_EMIT progress(tr("Connecting to '%1'...").arg(target->title()), -1);
    if (!target->connectGdb(&m_gdb, m_attached, error))
        return false;
    for (const QString &command : parts(m_options.commands)) {
        const MiRecord answer = m_gdb.ask("-interpreter-exec console " + miQuoted(command.trimmed()));
        if (answer.isError())
            Q_EMIT message(tr("The gdb command '%1' failed: %2\n").arg(command.trimmed(), answer.errorText()), false);
    }
    apply(TargetEvent::Connected);
    Q_EMIT symbolsLoaded();
    if (!m_attached && !wasCancelled())
        runToFunction();
    if (wasCancelled())
        return false;
    if (!isAlive()) {
        *error = tr("The program ended before it could be debugged.");
        return false;
    }
    if (m_frame.address == 0)
        takeFrame(m_gdb.ask("-stack-info-frame").results[u"frame"]);
    Q_EMIT programLoaded();
    return !wasCancelled();
}

/// Runs the program from its start to the function at which the user wants to start.
void GdbSession::runToFunction()
{
    MiRecord inserted;
    if (!m_options.runTo.isEmpty() && !m_program.file.isEmpty())
        inserted = m_gdb.ask("-break-insert -t " + miQuoted(m_options.runTo));
    if (inserted.isError())
        Q_EMIT message(tr("The program cannot be run to '%1': %2\n").arg(m_options.runTo, inserted.errorText()), false);
    const bool toFunction = inserted.isDone();
    const QByteArray command = m_target->startCommand(toFunction);
    if (command.isEmpty())
        return;
    m_temporary = inserted.results[u"bkpt"].number(u"number");
    if (toFunction)
        Q_EMIT progress(tr("Running to '%1'...").arg(m_options.runTo), -1);
    go(command, m_target->isCreatedByStartCommand() ? TargetEvent::Exited : TargetEvent::Stopped);
    if (m_gdb.waitUntil([this] { return m_state.phase != TargetState::Running; }, m_options.timeLimit * 1000,
                        MiConnection::Limit::Silence)
        || wasCancelled())
        return;
    interrupt();
    Q_EMIT message(tr("'%1' was not reached within %2 s; the program is paused at its current location.\n")
                       .arg(m_options.runTo, QString::number(m_options.timeLimit)),
                   false);
}

void GdbSession::restart()
{
    if (!m_target)
        return;
    if (!m_gdb.isOpen() || m_target->severalCores() || !isAlive()
        || (m_state.phase == TargetState::Running && !interrupt()))
        (void)start(TargetOptions(m_options), Target::Program(m_program), false);
    else
        rewindTarget();
}

/// A server whose program has ended may have been started again by the user.
bool GdbSession::refuseRestart()
{
    QString reason;
    const bool refused = m_target && (isAlive() || m_attached) && !m_target->canRewind(&reason);
    if (refused)
        Q_EMIT message(reason + u'\n', true);
    return refused;
}

void GdbSession::rewindTarget()
{
    m_state = {}; // later events belong to the new program
    m_sectionsBefore = 0;
    QString error;
    const std::shared_ptr<Target> target = m_target;
    if (!target->rewind(&m_gdb, &error)) {
        if (m_target == target) // else the session was ended meanwhile
            fail(error);
        return;
    }
    apply(TargetEvent::Connected);
    runToFunction();
    if (wasCancelled())
        return end();
    if (isAlive())
        Q_EMIT programLoaded();
    if (wasCancelled())
        end();
}

void GdbSession::fail(const QString &text)
{
    if (wasCancelled())
        Q_EMIT message(tr("The start was cancelled.\n"), false);
    else
        Q_EMIT message(text + u'\n', true);
    end();
}

void GdbSession::end()
{
    if (!m_task.isCurrent())
        m_task.cancel();
    if (m_state.phase == TargetState::Running && m_target->isPausedToEnd())
        interrupt(); // a running target does not accept a disconnection
    apply(TargetEvent::Closed);
    if (m_target) {
        m_target->disconnect(this);
        m_target->end(&m_gdb);
        m_target.reset();
    }
    m_gdb.close();
    takeFrame({});
    m_temporary = 0;
    m_request = {};
}

QStringList GdbSession::programFiles() const
{
    QStringList files = parts(m_options.symbolFiles) + QStringList{m_program.file, m_options.secondImage};
    for (const QString &file : QStringList(files))
        files.append(QFileInfo(file).canonicalFilePath());
    files.removeAll(QString());
    return files;
}

bool GdbSession::readWord(quint64 address, uint *value)
{
    const MiRecord answer = m_gdb.ask("-data-read-memory-bytes 0x" + QByteArray::number(address, 16) + " 4");
    const QByteArray bytes =
        QByteArray::fromHex(answer.results[u"memory"].items().value(0).text(u"contents").toLatin1());
    if (bytes.size() != 4)
        return false;
    *value = 0;
    for (int i = 3; i >= 0; --i)
        *value = *value << 8 | uchar(bytes[i]);
    return true;
}

// Events of gdb and the target ----------------------------------------------------------------------------------------

void GdbSession::handleAsync(const MiRecord &record)
{
    if (record.kind == MiRecord::Kind::Exec && record.className == u"stopped")
        handleStop(record);
    else if (record.kind == MiRecord::Kind::Status && record.className == u"download")
        reportDownload(record.results.items().value(0));
    else if (record.className == u"running" || record.className == u"memory-changed")
        ++m_generation;
    else if (record.className == u"thread-group-exited")
        handleGroupExit(record);
    else if (record.className.startsWith("breakpoint-"_L1))
        Q_EMIT breakpointRecord(record);
}

/// gdb reports the sum twice a second; at the beginning of a section it names only the section and its size. Its
/// "total-size" includes debug information, which is not sent.
void GdbSession::reportDownload(const MiValue &download)
{
    const auto total = double(m_program.elf.loadSize);
    double sent = download.text(u"total-sent").toDouble();
    if (!download.contains(u"total-sent")) {
        sent = m_sectionsBefore;
        m_sectionsBefore += download.text(u"section-size").toDouble();
    }
    if (total > 0)
        Q_EMIT progress(tr("Loading '%1'...").arg(QFileInfo(m_program.file).fileName()),
                        std::min(int(100 * sent / total), 100));
}

bool GdbSession::exists() const
{
    return m_state.phase == TargetState::Stopped || m_state.phase == TargetState::Running;
}

void GdbSession::handleStop(const MiRecord &record)
{
    ++m_generation;
    ++m_stopNumber;
    takeFrame(record.results[u"frame"]);
    if (record.results.contains(u"thread-id"))
        m_thread = record.results.text(u"thread-id");
    if (!exists())
        return;
    StopReason reason = stopReason(record);
    if (reason.temporary && reason.breakpoint != m_temporary)
        reason.event = TargetEvent::BreakpointHit; // one of the user's
    request(reason.isPause ? RunEvent::Paused : RunEvent::Stopped);
    if (m_request.pause == RunRequest::Pause::Hidden) {
        m_state = nextState(m_state, reason.event);
        return;
    }
    clearTemporary(reason.breakpoint);
    Q_EMIT stopText(reason.text);
    if (!reason.text.isEmpty())
        Q_EMIT message(reason.text + u'\n', false);
    apply(reason.event);
}

/// Deletes the breakpoint of runTo() when another reason stops the program.
void GdbSession::clearTemporary(int hit)
{
    if (m_temporary == 0)
        return;
    if (hit != m_temporary)
        m_gdb.send("-break-delete " + QByteArray::number(m_temporary));
    m_temporary = 0;
}

void GdbSession::handleGroupExit(const MiRecord &record)
{
    ++m_generation;
    if (!exists() || m_target->stopsAtItsEnd())
        return;
    if (record.results.contains(u"exit-code")) {
        const StopReason reason = exitReason(record);
        Q_EMIT stopText(reason.text);
        Q_EMIT message(reason.text + u'\n', false);
        apply(reason.event);
    } else if (m_target->endsWithConnection()) {
        apply(TargetEvent::Exited);
    } else { // a record about the signal that ended the program may follow
        QTimer::singleShot(ExitLimit, m_target.get(), [this] { handleError(u"Remote connection closed"_s); });
    }
}

void GdbSession::takeLog(const QString &text)
{
    constexpr qsizetype most = 2000;
    if (m_runLog.size() < most)
        m_runLog += text;
    handleError(text);
}

void GdbSession::handleError(const QString &text)
{
    if (!exists() || !reportsLostTarget(text))
        return;
    const bool ended = m_target->endsWithConnection();
    Q_EMIT message(ended ? tr("'%1' has ended.\n").arg(m_target->title())
                         : tr("The connection to '%1' is lost.\n").arg(m_target->title()),
                   true);
    apply(ended ? TargetEvent::Exited : TargetEvent::LinkLost);
}

void GdbSession::targetDied(const QString &reason)
{
    Q_EMIT message(reason + u'\n', exists());
    apply(TargetEvent::Exited);
}

void GdbSession::gdbClosed()
{
    if (!m_target || m_state.phase == TargetState::Absent)
        return; // start() reports its failures itself
    Q_EMIT message(tr("gdb has ended unexpectedly.\n"), true);
    apply(TargetEvent::LinkLost);
    m_target->end(&m_gdb); // an emulator cannot be used without its debugger
}

GdbSession::Frame GdbSession::frameOf(const MiValue &frame)
{
    return {frame.address(u"addr"), frame.text(u"func"), frame.text(u"fullname"), frame.number(u"line"),
            frame.number(u"level")};
}

void GdbSession::takeFrame(const MiValue &frame)
{
    m_frame = frameOf(frame);
    m_shown.reset();
}

void GdbSession::selectFrame(const QString &threadId, const Frame &frame)
{
    if (!isStopped())
        return;
    m_gdb.send("-thread-select " + threadId.toUtf8());
    m_gdb.send("-stack-select-frame " + QByteArray::number(frame.level));
    m_thread = threadId;
    m_frame = frame;
    m_shown.reset();
    targetChanged();
}

void GdbSession::showFrame(const Frame &frame)
{
    m_shown = frame;
    targetChanged();
}

void GdbSession::apply(TargetEvent event)
{
    m_state = nextState(m_state, event);
    announce();
}

void GdbSession::request(RunEvent event)
{
    m_request = nextRequest(m_request, event);
}

/// Emits changed() from the event loop: its receivers query the session, which may be inside one of their calls now.
/// Several changes in a row are reported once; those of a start in the background when it has ended.
void GdbSession::announce()
{
    if (!m_task.isActive())
        m_changeTimer.start();
}
